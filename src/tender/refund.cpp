// SPDX-License-Identifier: MIT
#include "tender/refund.h"

#include <cstdio>
#include <cstring>
#include <map>
#include <string>

#include "core/activity_log.h"
#include "core/clock.h"
#include "core/customer_file.h"
#include "core/film_record.h"
#include "core/history.h"
#include "core/number_index.h"
#include "core/record_batch.h"
#include "core/settings.h"
#include "core/state.h"
#include "core/text.h"
#include "core/write_batch.h"
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

std::string CustomerText(const Basket& b) {
  return Cp1252ToUtf8(Decimal(b.customer_number) + " " + FieldText(b.customer_name));
}

// The credit refund's customer: asked for, confirmed, and credited with the
// basket total in G().member, written with the refund. False when the operator
// gives up.
bool CreditCustomer(MemberRecord* before) {
  if (PromptCustomer("Customer") == 0) return false;
  MemberRecord& m = G().member;
  *before = m;
  const std::string title = Cp1252ToUtf8(Decimal(m.number) + " Name: " + FieldText(m.name));
  if (Message("Credit this customer?", title, Buttons::OkCancel) != Answer::Ok) return false;
  m.balance -= G().basket.total;
  Timestamp();
  SetField(m.last_used, G().stamp_text);
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
// goods are faulty. The sold count stays: the sale did happen. `stock` holds the
// records changed so far, by position. Returns the category for the items log,
// or -1 when the refund must stop.
int64_t ReturnLine(File& film, std::map<int64_t, FilmRecord>& stock, int i, bool faulty) {
  State& g = G();
  const Basket& b = g.basket;
  const int64_t position = PositionOf(g.films, b.number[i]);
  if (position < 0) {
    Message("Invalid entry", kProblem);
    return -1;
  }
  auto held = stock.find(position);
  if (held == stock.end()) {
    if (!film) film.open(kFilmFile, File::Mode::Read);
    FilmRecord read{};
    if (!film || !film.seek(position * int64_t(sizeof read)) ||
        film.read(&read, sizeof read) != int64_t(sizeof read)) {
      Message("Data file: film.dat, not present.", kFatal);
      return -1;
    }
    held = stock.emplace(position, read).first;
  }
  FilmRecord& item = held->second;
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
  }
  g.film = item;
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

// The lines: stock back and the items log, into the batch. False when an item
// is gone or film.dat can't be read.
bool ReturnLines(WriteBatch& batch, std::map<int64_t, FilmRecord>& stock, bool faulty, int year,
                 int month, int day) {
  const Basket& b = G().basket;
  std::string lines;
  File film;
  for (int i = 0; i < b.line_count; ++i) {
    int64_t category = kNonInventoryCategory;
    if (b.number[i] != 0) category = ReturnLine(film, stock, i, faulty);
    if (category < 0) return false;
    const ItemsLogRecord line = LogLine(b, i, category);
    lines.append(reinterpret_cast<const char*>(&line), sizeof line);
  }
  batch.Append(ItemsLogPath(year, month, day), lines, "Unable to open items log.", kProblem);
  if (!faulty)
    for (const auto& [position, item] : stock)
      batch.Put(kFilmFile, position * int64_t(sizeof item), &item, sizeof item, "Film.dat",
                kProblem);
  return true;
}

void LogRefund(WriteBatch& batch, const Basket& b, int method) {
  std::string entry = Basketlogentry(b, "Refund");
  static const char* const kForms[] = {"Form: Cash", "Form: CH", "Form: EFT", "Form: Credit"};
  entry += kForms[method];
  entry +=
      "\r\nCustomer: " + Decimal(b.customer_number) + " " + FieldText(b.customer_name) + "\r\n";
  batch.Append(kActivityLog, entry, "Data file: bun4.dat, not present.", kProblem);
}

// Writes the refund from the numbered, negated basket, with the credited
// customer and the settings, all or nothing. False when nothing was written.
bool WriteRefund(const RefundChoice& choice) {
  State& g = G();
  Basket& b = g.basket;
  Makelogdirs();
  const int year = g.now.year, month = g.now.month, day = g.now.day;
  WriteBatch batch;
  BatchTransaction(batch, SalesLogRecordOf(b), year, month, day);
  std::map<int64_t, FilmRecord> stock;
  if (!ReturnLines(batch, stock, choice.faulty, year, month, day)) return false;
  LogRefund(batch, b, choice.method);
  if (choice.method == kCreditRefund) {
    const int64_t position = PositionOf(g.members, g.member.number);
    if (position < 0) {
      Message("Invalid number.", kProblem);
      return false;
    }
    batch.Put(kMemberFile, position * kMemberRecordSize, &g.member, kMemberRecordSize,
              "Not able to write member.dat", kProblem);
  }
  // The number and the totals reach the disk with the refund, so a crash can't
  // give this refund's number to the next sale.
  BatchSettings(batch, g.settings);
  if (!batch.Commit()) return false;
  if (g.films.on_record && !choice.faulty)
    for (const auto& [position, item] : stock) g.films.on_record(position, &item);
  if (choice.method == kCreditRefund && g.members.on_record)
    g.members.on_record(PositionOf(g.members, g.member.number), &g.member);
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
  MemberRecord kept_member = g.member;
  if (choice->method == kCreditRefund && !CreditCustomer(&kept_member)) return;

  Stampbasket();
  b.clerk = int32_t(s.clerk_number);
  b.transaction_number = s.transaction_number;
  if (choice->method == kEftRefund && !CardRefundApproved()) return;

  // Everything is worked out on the state itself, and put back when the refund
  // can't be written: the basket stays as it was, to be refunded again.
  const Basket kept_basket = b;
  const SettingsRecord kept_settings = s;
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

  if (!WriteRefund(*choice)) {
    b = kept_basket;
    s = kept_settings;
    g.member = kept_member;
    return;
  }
  if (choice->print) Printdocument(kTillReceipt);
  ClearBasketList();
  std::memset(&b, 0, sizeof b);
  Refreshtotals();
  if (s.drawer_enabled > 0) Opendrawer();
}

}  // namespace tilo
