// SPDX-License-Identifier: MIT
#include "core/history.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>

#include "core/clock.h"
#include "core/state.h"
#include "core/text.h"
#include "platform/files.h"
#include "platform/platform.h"

namespace tilo {
namespace {

constexpr int32_t kHighestTransaction = 200000000;

// A folder that stands already without the base.dat that marks it complete was
// left by a start or a purge cut short: it is completed, not refused, or the
// shop could never open on that day again. A file in the way still fails.
bool CreateNewFolder(const std::string& path) {
  return MakeFolder(path);
}

std::string ClockText() {
  char text[16];
  std::snprintf(text, sizeof text, "%02d:%02d", G().now.hour, G().now.minute);
  return text;
}

// Writes a new base.dat whole under its name, so that a till stopped on the way
// leaves none rather than one without its header. False when it can't be written.
bool StartBaseFile(const std::string& path, std::string_view bytes) {
  return ReplaceFile(path, bytes);
}

// Reads a file of fixed records whole; a record cut short at the end is kept
// with its missing bytes zero.
template <typename Record>
std::vector<Record> ReadRecords(const std::string& path, int64_t skip = 0) {
  std::vector<Record> records;
  auto bytes = ReadWholeFile(path);
  if (!bytes || int64_t(bytes->size()) <= skip) return records;
  const size_t body = bytes->size() - size_t(skip);
  records.resize((body + sizeof(Record) - 1) / sizeof(Record));
  std::memset(static_cast<void*>(records.data()), 0, records.size() * sizeof(Record));
  std::memcpy(static_cast<void*>(records.data()), bytes->data() + skip, body);
  return records;
}

bool AppendBytes(const std::string& path, const void* data, size_t size) {
  File f(path, File::Mode::Append);
  return f && f.write(data, int64_t(size)) && f.sync();
}

const char* WeekdayName(int weekday) {
  static const char* names[] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                "Thursday", "Friday", "Saturday"};
  return names[((weekday % 7) + 7) % 7];
}

}  // namespace

std::string YearFolder(int year) {
  return std::to_string(year);
}
std::string MonthFolder(int year, int month) {
  return YearFolder(year) + "/" + std::to_string(month);
}
std::string DayFolder(int year, int month, int day) {
  return MonthFolder(year, month) + "/" + std::to_string(day);
}
std::string YearBasePath(int year) {
  return YearFolder(year) + "/base.dat";
}
std::string MonthBasePath(int year, int month) {
  return MonthFolder(year, month) + "/base.dat";
}
std::string DayBasePath(int year, int month, int day) {
  return DayFolder(year, month, day) + "/base.dat";
}
std::string SalesLogPath(int year, int month, int day) {
  return DayFolder(year, month, day) + "/saleslog.dat";
}
std::string ItemsLogPath(int year, int month, int day) {
  return DayFolder(year, month, day) + "/itemslog.dat";
}
std::string DailySummaryPath(int year, int month, int day) {
  return DayFolder(year, month, day) + "/thedaily.dat";
}
std::string StockInPath(int year, int month, int day) {
  return DayFolder(year, month, day) + "/ininvent.dat";
}

void Makelogdirs() {
  Datestamp();
  const int year = G().now.year, month = G().now.month, day = G().now.day;
  if (FileExists(DayBasePath(year, month, day))) return;

  if (!FileExists(YearBasePath(year))) {
    if (!CreateNewFolder(YearFolder(year))) {
      Message("Unable to create year log directory", "Fatal error");
      return;
    }
    const int32_t header = 0;
    if (!StartBaseFile(YearBasePath(year),
                       std::string_view(reinterpret_cast<const char*>(&header), sizeof header)))
      Message("Unable to open base.dat in year log.", "Problem");
  }
  if (!FileExists(MonthBasePath(year, month))) {
    if (!CreateNewFolder(MonthFolder(year, month))) {
      Message("Unable to create month log directory", "Fatal error");
      return;
    }
    Timestamp();
    if (!StartBaseFile(MonthBasePath(year, month), ClockText()))
      Message("Unable to open base.dat in month log.", "Problem");
  }
  if (!FileExists(DayBasePath(year, month, day))) {
    if (!CreateNewFolder(DayFolder(year, month, day))) {
      Message("Unable to create day log directory", "Fatal error");
      return;
    }
    if (!StartBaseFile(DayBasePath(year, month, day), ClockText()))
      Message("Unable to open base.dat in day log.", "Problem");
  }
  SyncFolder(".");
}

bool AppendBaseRecord(int year, const BaseRecord& record) {
  File f(YearBasePath(year), File::Mode::Write);
  if (!f) return false;
  return f.seek(f.size()) && f.write(&record, sizeof record) && f.sync();
}

bool AppendSalesLog(int year, int month, int day, const SalesLogRecord& record) {
  return AppendBytes(SalesLogPath(year, month, day), &record, sizeof record);
}

bool AppendItemsLog(int year, int month, int day, const std::vector<ItemsLogRecord>& lines) {
  return AppendBytes(ItemsLogPath(year, month, day), lines.data(),
                     lines.size() * sizeof(ItemsLogRecord));
}

std::vector<BaseRecord> ReadBaseFile(int year) {
  return ReadRecords<BaseRecord>(YearBasePath(year), sizeof(BaseFileHeader));
}

std::vector<SalesLogRecord> ReadSalesLog(int year, int month, int day) {
  return ReadRecords<SalesLogRecord>(SalesLogPath(year, month, day));
}

std::vector<ItemsLogRecord> ReadItemsLog(int year, int month, int day) {
  return ReadRecords<ItemsLogRecord>(ItemsLogPath(year, month, day));
}

std::optional<TransactionPlace> Findtransaction(int32_t number) {
  if (number < 1 || number > kHighestTransaction) return std::nullopt;
  Timestamp();
  const int present = G().now.year;
  // Each year's index is read front to back, the years in ascending order, so
  // the earliest use of a number wins (numbers repeat after a wrap).
  for (int year = G().settings.history_from_year; year <= present; ++year) {
    for (const BaseRecord& r : ReadBaseFile(year))
      if (r.transaction_number == number) return TransactionPlace{year, r.month, r.day};
  }
  return std::nullopt;
}

std::optional<TransactionRecords> Readtransaction(int year, int month, int day, int32_t number) {
  if (!FileExists(SalesLogPath(year, month, day))) {
    Message("Unable to open sales log.", "Problem");
    return std::nullopt;
  }
  TransactionRecords found;
  bool hit = false;
  for (const SalesLogRecord& r : ReadSalesLog(year, month, day)) {
    if (r.transaction_number == number) {
      found.sale = r;
      hit = true;
      break;
    }
  }
  if (!hit) return std::nullopt;
  for (const ItemsLogRecord& line : ReadItemsLog(year, month, day))
    if (line.transaction_number == number) found.lines.push_back(line);
  return found;
}

namespace {
// A count kept as a float in wr.cfg, shown whole; one no int can hold (only a
// damaged file has one) shows as 0 rather than as what the conversion makes of it.
int Count(float value) {
  return value >= -2147483648.0f && value < 2147483648.0f ? int(value) : 0;
}
}  // namespace

std::string DailySummaryText() {
  const State& g = G();
  const SettingsRecord& s = g.settings;
  std::string out;
  char line[512];
  auto add = [&](const char* format, auto... values) {
    std::snprintf(line, sizeof line, format, values...);
    out += line;
  };
  // The time of the close, not of the start; the long date is the locale's.
  const std::string long_date =
      Utf8ToCp1252(platform().long_date(g.now.year, g.now.month, g.now.day));
  add("%s  %02d:%02d %s", FieldText(g.heading.site_name).c_str(), g.now.hour, g.now.minute,
      long_date.c_str());
  add("\r\nToday's till takings: %.2f", s.till_takings);
  add("\r\nOntime: %02d:%02d  Transaction number: %d", g.start_hour, g.start_minute,
      s.transaction_number);
  add("\r\nInventory on the system: %d, Customers on the system: %d", int(g.films.live),
      int(g.members.live));
  add("\r\nToday transactions: %lld Items: %lld", static_cast<long long>(s.today_transactions),
      static_cast<long long>(s.today_items));
  add("\r\nYesterday transactions: %lld Items: %lld",
      static_cast<long long>(s.yesterday_transactions), static_cast<long long>(s.yesterday_items));
  add("\r\nToday vs. last %s: ", WeekdayName(g.start_weekday));
  // Same weekday last week is slot 7 of the takings history.
  const double last_week = s.takings_history[7];
  if (s.till_takings == 0 || last_week == 0)
    out += "0.00%";
  else
    add("%.2f%%", s.till_takings * 100 / last_week);
  add("\r\nNew customers: %lld", static_cast<long long>(s.new_customers_today));

  add("\r\n\r\nCash sales (%d): %.2f", Count(s.count_cash_sales), s.cash_sales);
  add("\r\nCH sales (%d): %.2f", Count(s.count_ch_sales), s.ch_sales);
  add("\r\nEFT sales (%d): %.2f", Count(s.count_eft_sales), s.eft_sales);
  add("\r\nCredit sales (%d): %.2f", Count(s.count_credit_sales), s.credit_sales);
  add("\r\nTotal: %.2f", s.cash_sales + s.ch_sales + s.eft_sales + s.credit_sales);

  add("\r\n\r\nCash refunds (%d): %.2f", Count(s.count_cash_refunds), s.cash_refunds);
  add("\r\nCH refunds (%d): %.2f", Count(s.count_ch_refunds), s.ch_refunds);
  add("\r\nEFT refunds (%d): %.2f", Count(s.count_eft_refunds), s.eft_refunds);
  add("\r\nCredit refunds (%d): %.2f", Count(s.count_credit_refunds), s.credit_refunds);
  add("\r\nTotal: (%.2f)", s.cash_refunds + s.ch_refunds + s.eft_refunds + s.credit_refunds);

  add("\r\n\r\nNontaxable sales: %.2f", s.sales_non_taxable);
  add("\r\nTaxable sales: %.2f", s.sales_taxable);
  add("\r\nSub total: %.2f", s.sales_subtotal);
  add("\r\nTax 1: %.2f", s.sales_tax1);
  add("\r\nTax 2: %.2f", s.sales_tax2);
  add("\r\nTotal: %.2f", s.sales_total);

  add("\r\n\r\nBalance payments cash (%d): %.2f", Count(s.count_balance_cash), s.balance_cash);
  add("\r\nBalance payments CH (%d): %.2f", Count(s.count_balance_ch), s.balance_ch);
  add("\r\nBalance payments EFT (%d): %.2f", Count(s.count_balance_eft), s.balance_eft);
  add("\r\nTotal: %.2f", s.balance_cash + s.balance_ch + s.balance_eft);
  add("\r\n(Excludes petty cash payments: %.2f)", s.petty_cash_today);
  add("\r\n(Excludes cash back: %.2f)", s.cashback_today);

  const double net_sales = s.sales_non_taxable + s.sales_taxable;
  add("\r\n\r\nNet sales: %.2f", net_sales);
  add("\r\nCost of sales: %.2f", s.cost_of_sales);
  add("\r\nGross profit: %.2f", net_sales - s.cost_of_sales);
  return out;
}

bool WriteDailySummary(const std::string& path) {
  return ReplaceFile(path, DailySummaryText());
}

}  // namespace tilo
