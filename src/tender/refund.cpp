// SPDX-License-Identifier: MIT
#include "tender/refund.h"

#include <cstdio>
#include <cstring>
#include <string>

#include "core/activity_log.h"
#include "core/clock.h"
#include "core/customer_file.h"
#include "core/film_record.h"
#include "core/history.h"
#include "core/number_index.h"
#include "core/settings.h"
#include "core/state.h"
#include "core/text.h"
#include "customers/customer_find.h"
#include "devices/drawer.h"
#include "platform/files.h"
#include "platform/platform.h"
#include "sale/commands.h"
#include "sale/commit.h"
#include "sale/pricing.h"
#include "tender/cash.h"
#include "tender/eft.h"
#include "tender/printdocument.h"
#include "tender/tender_view.h"

namespace tilo {
namespace {

constexpr const char* kProblem = "Problem";
constexpr const char* kFatal = "Fatal error";
constexpr int64_t kNonInventoryCategory = 18;

RefundView default_view;
RefundView* current_view = &default_view;

std::string Decimal(int64_t n) {
  return std::to_string(static_cast<long long>(n));
}

// A new log's name reaches the disk only with its folder, and a new folder's with
// the folders above it.
void SyncNewLog(int year, int month, int day) {
  for (const std::string& folder :
       {DayFolder(year, month, day), MonthFolder(year, month), YearFolder(year), std::string(".")})
    SyncFolder(folder);
}

std::string CustomerText(const Basket& b) {
  return Cp1252ToUtf8(Decimal(b.customer_number) + " " + FieldText(b.customer_name));
}

// The credit refund's customer: asked for, confirmed, and credited with the
// basket total before anything else is written. False when the operator gives up.
bool CreditCustomer() {
  if (PromptCustomer("Customer") == 0) return false;
  MemberRecord& m = G().member;
  const std::string title = Cp1252ToUtf8(Decimal(m.number) + " Name: " + FieldText(m.name));
  if (Message("Credit this customer?", title, Buttons::OkCancel) != Answer::Ok) return false;
  m.balance -= G().basket.total;
  Timestamp();
  SetField(m.last_used, G().stamp_text);
  Rewritemember();
  Basket& b = G().basket;
  b.customer_number = m.number;
  SetField(b.customer_name, FieldText(m.name));
  return true;
}

// The card refund, when the shop takes cards through the card application.
bool CardRefundApproved() {
  const SettingsRecord& s = G().settings;
  if (s.eft_active != 2.0) return true;
  bool not_present = false;
  if (s.eft_permit_cnp_refund != 0) {
    const CardRefund how = refund_view().card_refund_box();
    if (how == CardRefund::Cancel) return false;
    not_present = how == CardRefund::NotPresent;
  }
  // The card is refunded the total as it stands, before the refund makes it negative.
  return Eftrefund(G().basket.total, not_present);
}

// Subtracted from nothing, so a figure of 0 stays 0 rather than turning "-0.00".
void Negate(Basket& b) {
  for (float* f : {&b.total_non_taxable, &b.total_taxable, &b.subtotal, &b.total_tax1,
                   &b.total_tax2, &b.total_cost, &b.total, &b.total_discount})
    *f = 0.0f - *f;
}

void AddToTotals(const Basket& b, int method) {
  SettingsRecord& s = G().settings;
  if (method != kCreditRefund) s.till_takings += double(b.total);
  s.sales_non_taxable += double(b.total_non_taxable);
  s.sales_taxable += double(b.total_taxable);
  s.sales_subtotal += double(b.subtotal);
  s.sales_tax1 += double(b.total_tax1);
  s.sales_tax2 += double(b.total_tax2);
  s.cost_of_sales += double(b.total_cost);
  s.sales_discounts += double(b.total_discount);
  s.sales_total += double(b.total);
  switch (method) {
    case kCashRefund:
      s.cash_refunds += double(b.tender_cash);
      s.count_cash_refunds += 1.0f;
      break;
    case kChRefund:
      s.ch_refunds += double(b.tender_ch);
      s.count_ch_refunds += 1.0f;
      break;
    case kEftRefund:
      s.eft_refunds += double(b.tender_eft) + double(b.tender_eft_extra);
      s.count_eft_refunds += 1.0f;
      break;
    default:
      s.credit_refunds += double(b.total);
      s.count_credit_refunds += 1.0f;
      break;
  }
}

// A line coming back: the category figures fall, and the stock rises unless the
// goods are faulty. The sold count stays: the sale did happen. Returns the
// category for the items log, or -1 when the refund must stop.
int64_t ReturnLine(File& film, int i, bool faulty) {
  State& g = G();
  const Basket& b = g.basket;
  const size_t slot = Findnumber(g.films.index, b.number[i]);
  if (slot >= g.films.index.size() || g.films.index[slot].number != b.number[i]) {
    Message("Invalid entry", kProblem);
    return -1;
  }
  const int64_t offset = g.films.index[slot].position * int64_t(sizeof(FilmRecord));
  if (!film) film.open(kFilmFile, File::Mode::Write);
  if (!film || !film.seek(offset) ||
      film.read(&g.film, sizeof(FilmRecord)) != int64_t(sizeof(FilmRecord))) {
    Message("Data file: film.dat, not present.", kFatal);
    return -1;
  }
  FilmRecord& item = g.film;
  SettingsRecord& s = g.settings;
  const int32_t c = item.display_category;
  // The second block of counters is kept from 0, as the sale counts it.
  if (c >= 0 && c <= 8) {
    --s.category_units_day_a[c];
    --s.category_units_month_a[c];
  } else if (c >= 9 && c <= 17) {
    --s.category_units_day_b[c - 9];
    --s.category_units_month_b[c - 9];
  }
  if (c >= 0 && c <= 17) s.category_total_today[c] -= double(b.line_total[i]);
  if (!faulty) {
    ++item.quantity;
    Timestamp();
    SetField(item.last_used, g.stamp_text);
    if (!film.seek(offset) || !film.write(&item, sizeof item)) Message("Film.dat", kProblem);
    if (g.films.on_record) g.films.on_record(g.films.index[slot].position, &item);
  }
  return c;
}

ItemsLogRecord LogLine(const Basket& b, int i, int64_t category) {
  ItemsLogRecord line{};
  line.transaction_number = b.transaction_number;
  line.category = category;
  line.customer_number = b.customer_number;
  line.number = b.number[i];
  std::memcpy(line.description, b.description[i], sizeof line.description);
  line.non_taxable = b.non_taxable[i];
  line.taxable = b.taxable[i];
  line.tax1 = b.tax1[i];
  line.tax2 = b.tax2[i];
  line.cost = b.cost[i];
  line.discount = b.discount[i];
  line.line_total = b.line_total[i];
  line.clerk = b.clerk;
  return line;
}

// The lines: stock back and the items log. False when an item is gone or
// film.dat can't be read; the lines before it are logged.
bool ReturnLines(bool faulty, int year, int month, int day) {
  const Basket& b = G().basket;
  std::vector<ItemsLogRecord> lines;
  File film;
  bool whole = true;
  for (int i = 0; i < b.line_count && whole; ++i) {
    int64_t category = kNonInventoryCategory;
    if (b.number[i] != 0) category = ReturnLine(film, i, faulty);
    if (category < 0)
      whole = false;
    else
      lines.push_back(LogLine(b, i, category));
  }
  if (film) film.sync();
  const bool created = !FileExists(ItemsLogPath(year, month, day));
  if (!lines.empty() && !AppendItemsLog(year, month, day, lines))
    Message("Unable to open items log.", kProblem);
  if (created) SyncNewLog(year, month, day);
  return whole;
}

void LogRefund(const Basket& b, int method) {
  std::string entry = Basketlogentry(b, "Refund");
  static const char* const kForms[] = {"Form: Cash", "Form: CH", "Form: EFT", "Form: Credit"};
  entry += kForms[method];
  entry +=
      "\r\nCustomer: " + Decimal(b.customer_number) + " " + FieldText(b.customer_name) + "\r\n";
  if (!AppendToLog(entry)) Message("Data file: bun4.dat, not present.", kProblem);
}

// Writes the refund from the numbered, negated basket. False when it stopped
// at a line, the basket still showing.
bool WriteRefund(const RefundChoice& choice) {
  State& g = G();
  Basket& b = g.basket;
  Makelogdirs();
  const int year = g.now.year, month = g.now.month, day = g.now.day;
  const BaseRecord entry{int32_t(b.transaction_number), day, month};
  if (!AppendBaseRecord(year, entry)) Message("Unable to open invoice log.", kProblem);
  const bool created = !FileExists(SalesLogPath(year, month, day));
  if (!AppendSalesLog(year, month, day, SalesLogRecordOf(b)))
    Message("Unable to open sales log.", kProblem);
  if (created) SyncNewLog(year, month, day);
  if (!ReturnLines(choice.faulty, year, month, day)) return false;
  LogRefund(b, choice.method);
  return true;
}

}  // namespace

RefundView& refund_view() {
  return *current_view;
}
void install_refund_view(RefundView* view) {
  current_view = view ? view : &default_view;
}

std::vector<std::pair<std::string, std::string>> Refundformfields() {
  Basket& b = G().basket;
  // The date is stamped for the form only: a refund given up leaves the basket as it was.
  char time[sizeof b.sale_time], date[sizeof b.sale_date];
  std::memcpy(time, b.sale_time, sizeof time);
  std::memcpy(date, b.sale_date, sizeof date);
  Stampbasket();
  const std::string today = Cp1252ToUtf8(FieldText(b.sale_date));
  std::memcpy(b.sale_time, time, sizeof time);
  std::memcpy(b.sale_date, date, sizeof date);
  return {{"Transaction", std::to_string(G().settings.transaction_number)},
          {"Date", today},
          {"Customer", CustomerText(b)},
          {"Items", std::to_string(b.line_count)},
          {"Non taxable", MoneyText(b.total_non_taxable)},
          {"Taxable", MoneyText(b.total_taxable)},
          {"Subtotal", MoneyText(b.subtotal)},
          {"Tax 1", MoneyText(b.total_tax1)},
          {"Tax 2", MoneyText(b.total_tax2)},
          {"Total", MoneyText(b.total)}};
}

void Refundbasket() {
  State& g = G();
  Basket& b = g.basket;
  SettingsRecord& s = g.settings;
  if (b.line_count <= 0) {
    Message("No items", kProblem);
    return;
  }
  const std::optional<RefundChoice> choice = refund_view().refund_form();
  if (!choice) return;
  if (choice->method == kCreditRefund && !CreditCustomer()) return;

  Stampbasket();
  b.clerk = int32_t(s.clerk_number);
  b.transaction_number = s.transaction_number;
  if (choice->method == kEftRefund && !CardRefundApproved()) return;

  // The number is taken before anything is written: a failure further on leaves
  // a gap rather than two transactions under one number.
  ++s.today_transactions;
  ++s.transaction_number;
  b.day_sequence = s.today_transactions;
  Negate(b);
  SetField(b.payment_type, "Refund");
  if (choice->method == kCashRefund) b.tender_cash = b.total;
  if (choice->method == kChRefund) b.tender_ch = b.total;
  if (choice->method == kEftRefund) b.tender_eft = b.total;
  AddToTotals(b, choice->method);
  // No log keeps the money handed over: the receipt shows the refund as paid out
  // exactly.
  g.amount_tendered = b.total;
  g.change_due = 0;

  const bool whole = WriteRefund(*choice);
  // The number and the totals reach the disk now, so a crash can't give this
  // refund's number to the next sale.
  if (!Savesettings()) Message("Data file: wr.cfg, not present.", kFatal);

  // A refund stopped at a line is on file up to there: its basket is emptied
  // all the same, so it can't be tendered as a negative sale afterwards.
  if (whole && choice->print) Printdocument(kTillReceipt);
  ClearBasketList();
  std::memset(&b, 0, sizeof b);
  Refreshtotals();
  if (whole && s.drawer_enabled > 0) Opendrawer();
}

}  // namespace tilo
