// SPDX-License-Identifier: MIT
#include "mail/upload_files.h"

#include <cstdio>

#include "core/film_record.h"
#include "core/film_scan.h"
#include "core/state.h"
#include "core/text.h"
#include "inventory/stock_lists.h"
#include "platform/files.h"
#include "reports/activity_summary.h"
#include "reports/report_walk.h"

namespace tilo {
namespace {

std::string StoreName() {
  return FieldText(G().heading.site_name);
}

// Writes a file whole under a temporary name and renames it into place, so an
// upload still sending the last one reads either file entire. The files are
// made afresh from the records each time, so they skip the flush to disk the
// record files have: a power cut costs nothing that can't be written again.
bool WriteWhole(const std::string& path, const std::string& text) {
  if (IsDirectory(path)) return false;
  const std::string temp = path + ".new";
  File f(temp, File::Mode::Create);
  const bool written = f && f.write(text);
  f.close();
  if (written && std::rename(temp.c_str(), path.c_str()) == 0) return true;
  RemoveFile(temp);
  return false;
}

// The local file a name stands for: names are kept in Windows-1252, the
// folder's names are UTF-8.
std::string LocalName(const UploadSetup& setup, UploadFile f) {
  return Cp1252ToUtf8(UploadName(setup, f));
}

bool WriteOverview(const std::string& path) {
  if (WriteWhole(path, UploadOverviewText(platform().now()))) return true;
  Message("Unable to produce report file.", "Problem");
  return false;
}

bool WriteItems(const std::string& path) {
  const LocalTime now = platform().now();
  std::string text;
  switch (UploadItemsText({now.year, now.month, now.day}, text)) {
    case ExportDay::NoSalesLog:
      Message("No items for that day.", "Problem");
      return false;
    case ExportDay::NoItemsLog:
      return false;
    case ExportDay::Done:
      break;
  }
  if (WriteWhole(path, text)) return true;
  Message("Unable to produce items file.", "Problem");
  return false;
}

bool WriteReorder(const std::string& path) {
  const std::optional<std::string> text = UploadReorderText();
  if (!text) return false;
  if (WriteWhole(path, *text)) return true;
  Message("Unable to produce reorder file.", "Problem");
  return false;
}

}  // namespace

UploadFlags CurrentUploadFlags() {
  const SettingsRecord& s = G().settings;
  // Ticked is 2; any other non-zero value shows ticked on the form and counts so.
  return UploadFlags{{s.upload_report != 0, s.upload_items != 0, s.upload_reorder != 0}};
}

std::string UploadOverviewText(const LocalTime& now) {
  const State& g = G();
  const SettingsRecord& s = g.settings;
  const std::string date = Utf8ToCp1252(platform().long_date(now.year, now.month, now.day));
  std::string t =
      Format("%s  %02d:%02d %s", StoreName().c_str(), now.hour, now.minute, date.c_str());
  t += Format("\r\nToday's till takings: %.2f", s.till_takings);
  t += Format("\r\nOntime: %02d:%02d  Transaction number: %d", g.start_hour, g.start_minute,
              s.transaction_number);
  t += Format("\r\nInventory on the system: %d, Customers on the system: %d", int(g.films.live),
              int(g.members.live));
  t += Format("\r\nToday transactions: %lld Items: %lld", (long long)s.today_transactions,
              (long long)s.today_items);
  t += Format("\r\nYesterday transactions: %lld Items: %lld", (long long)s.yesterday_transactions,
              (long long)s.yesterday_items);
  t += Format("\r\nToday vs. last %s: ", WeekdayText(now.day_of_week)) +
       Percentage(s.till_takings, s.takings_history[7]);
  t += Format("\r\nNew customers: %lld", (long long)s.new_customers_today);

  t += Format("\r\n\r\nCash sales (%d): %.2f", int(s.count_cash_sales), s.cash_sales);
  t += Format("\r\nCH sales (%d): %.2f", int(s.count_ch_sales), s.ch_sales);
  t += Format("\r\nEFT sales (%d): %.2f", int(s.count_eft_sales), s.eft_sales);
  t += Format("\r\nCredit sales (%d): %.2f", int(s.count_credit_sales), s.credit_sales);
  t += Format("\r\nTotal: %.2f", s.cash_sales + s.ch_sales + s.eft_sales + s.credit_sales);

  t += Format("\r\n\r\nCash refunds (%d): %.2f", int(s.count_cash_refunds), s.cash_refunds);
  t += Format("\r\nCH refunds (%d): %.2f", int(s.count_ch_refunds), s.ch_refunds);
  t += Format("\r\nEFT refunds (%d): %.2f", int(s.count_eft_refunds), s.eft_refunds);
  t += Format("\r\nCredit refunds (%d): %.2f", int(s.count_credit_refunds), s.credit_refunds);
  t +=
      Format("\r\nTotal: (%.2f)", s.cash_refunds + s.ch_refunds + s.eft_refunds + s.credit_refunds);

  t += Format("\r\n\r\nNontaxable sales: %.2f", s.sales_non_taxable);
  t += Format("\r\nTaxable sales: %.2f", s.sales_taxable);
  t += Format("\r\nSub total: %.2f", s.sales_subtotal);
  t += Format("\r\nTax 1: %.2f", s.sales_tax1);
  t += Format("\r\nTax 2: %.2f", s.sales_tax2);
  t += Format("\r\nTotal: %.2f", s.sales_total);

  t +=
      Format("\r\n\r\nBalance payments cash (%d): %.2f", int(s.count_balance_cash), s.balance_cash);
  t += Format("\r\nBalance payments CH (%d): %.2f", int(s.count_balance_ch), s.balance_ch);
  t += Format("\r\nBalance payments EFT (%d): %.2f", int(s.count_balance_eft), s.balance_eft);
  t += Format("\r\nTotal: %.2f", s.balance_cash + s.balance_ch + s.balance_eft);
  t += Format("\r\n(Excludes petty cash payments: %.2f)", s.petty_cash_today);
  t += Format("\r\n(Excludes cash back: %.2f)", s.cashback_today);

  const double net_sales = s.sales_non_taxable + s.sales_taxable;
  t += Format("\r\n\r\nNet sales: %.2f", net_sales);
  t += Format("\r\nCost of sales: %.2f", s.cost_of_sales);
  t += Format("\r\nGross profit: %.2f", net_sales - s.cost_of_sales);
  return t;
}

ExportDay UploadItemsText(const CalendarDate& day, std::string& out) {
  std::vector<std::string> rows;
  const ExportDay end = Dayitemrows(day, false, rows);
  if (end != ExportDay::Done) return end;
  out = "Daily item list: " + StoreName() + "\r\n";
  out += "Item, Description, Ntx, Tx, T1, T2, Cost, Total, ID, Assoc, Payment\r\n";
  for (const std::string& row : rows) out += row + "\r\n";
  return ExportDay::Done;
}

std::optional<std::string> UploadReorderText() {
  if (!FileExists(kFilmFile)) {
    Message("Data file film.dat, not present.", "Fatal error");
    return std::nullopt;
  }
  const LocalTime today = platform().now();
  std::string t = "Reorder list: " + StoreName() + "\r\n";
  t += "Item, Restock level, In stock, On order, Order quantity, Order code\r\n";
  // Room for a short row per item up front, so the text isn't copied as it grows.
  t.reserve(t.size() + size_t(FileSize(kFilmFile).value_or(0) / int64_t(sizeof(FilmRecord))) * 48);
  const ScanEnd end = Scanfilms("Reorder list", [&](const FilmRecord& r) {
    if (!Onstocklist(StockList::Reorder, r, today)) return;
    t += Stocklistrow(StockList::Reorder, r);
    t += "\r\n";
  });
  if (end == ScanEnd::Unreadable) Message("Unable to read film.dat", "Problem");
  if (end != ScanEnd::Finished) return std::nullopt;
  return t;
}

int Writeuploadfiles(const UploadSetup& setup, const UploadFlags& flags) {
  for (UploadFile f : kUploadFiles) {
    if (!flags[f]) continue;
    const std::string path = LocalName(setup, f);
    bool written = false;
    switch (f) {
      case UploadFile::Report:
        written = WriteOverview(path);
        break;
      case UploadFile::Items:
        written = WriteItems(path);
        break;
      case UploadFile::Reorder:
        written = WriteReorder(path);
        break;
    }
    if (!written) return 2;
  }
  return 0;
}

}  // namespace tilo
