// SPDX-License-Identifier: MIT
#include "tender/browse.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>

#include "core/clock.h"
#include "core/settings.h"
#include "core/state.h"
#include "core/text.h"
#include "platform/platform.h"
#include "sale/basket.h"
#include "sale/pricing.h"
#include "sale/sale_events.h"

namespace tilo {
namespace {

constexpr int32_t kHighestTransaction = 200000000;
constexpr const char* kBusyTitle = "Transactions";

BrowseView default_view;
BrowseView* current_view = &default_view;

// The fields of the packed records are copied as bytes: bound to a reference
// of their own type they could sit at an address that type does not allow.
#define CopyField(to, from)                    \
  do {                                         \
    static_assert(sizeof(to) == sizeof(from)); \
    std::memcpy(&(to), &(from), sizeof(to));   \
  } while (0)

std::string Money(float value) {
  return MoneyText(value);
}

std::string Text(const char* field, size_t width) {
  return Cp1252ToUtf8(FieldText(field, width));
}
template <size_t N>
std::string Text(const char (&field)[N]) {
  return Text(field, N);
}

std::string ListLine(int64_t number, int day, int month, int year) {
  char line[96];
  std::snprintf(line, sizeof line, "%lld on day %d of month %d, %d", static_cast<long long>(number),
                day, month, year);
  return line;
}

bool TooMany(const std::vector<std::string>& lines) {
  if (lines.size() <= kListLimit) return false;
  Message("Reduce the history on the Configuration menu", "Problem, too many transactions");
  return true;
}

// A whole number typed at a prompt within [low, high]; none for anything else.
std::optional<int> Ask(const std::string& text, const std::string& title, int low, int high) {
  const auto reply = platform().prompt(text, title);
  if (!reply || reply->empty()) return std::nullopt;
  const int64_t value = LeadingNumber(*reply);
  if (value < low || value > high) return std::nullopt;
  return int(value);
}

void EmptyBasket() {
  std::memset(&G().basket, 0, sizeof G().basket);
  ClearBasketList();
  sale_events().totals_changed();
}

void ShowNumber(int32_t number, bool discounted) {
  TransactionBrowser browser(discounted);
  if (!browser.Open(number)) return;
  browse_view().transaction_form(browser);
}

void ShowPicked(const std::optional<std::vector<std::string>>& lines, bool discounted) {
  if (!lines) return;
  const auto picked = browse_view().invoice_list(*lines);
  if (!picked) return;
  const int64_t number = LeadingNumber(*picked);
  if (number < 1 || number > kHighestTransaction) return;
  ShowNumber(int32_t(number), discounted);
}

}  // namespace

std::optional<std::vector<std::string>> Transactionlist(const BrowseFilter& filter) {
  const SettingsRecord& s = G().settings;
  Timestamp();
  const int first = s.history_from_year, present = G().now.year;
  auto progress = platform().begin_progress("Reading the transactions", kBusyTitle);
  std::vector<std::string> lines;
  for (int year = first; year <= present; ++year) {
    if (!progress->step(year - first, present - first + 1)) return std::nullopt;
    if (filter.year != 0 && year != filter.year) continue;
    for (const BaseRecord& r : ReadBaseFile(year)) {
      // The first year starts at the history date.
      if (year == first && (r.month < s.history_from_month ||
                            (r.month == s.history_from_month && r.day < s.history_from_day)))
        continue;
      if (filter.month != 0 && r.month != filter.month) continue;
      if (filter.day != 0 && r.day != filter.day) continue;
      lines.push_back(ListLine(r.transaction_number, r.day, r.month, year));
      if (TooMany(lines)) return std::nullopt;
    }
  }
  return lines;
}

std::optional<std::vector<std::string>> Discountedlist() {
  const SettingsRecord& s = G().settings;
  Timestamp();
  const LocalTime today = G().now;
  const auto key = [](int y, int m, int d) { return (int64_t(y) * 12 + m) * 31 + d; };
  const int64_t end = key(today.year, today.month, today.day);
  int year = s.history_from_year, month = std::clamp(int(s.history_from_month), 1, 12);
  int day = std::max(int(s.history_from_day), 1);
  const int64_t start = key(year, month, day);
  auto progress = platform().begin_progress("Looking for discounted transactions", kBusyTitle);
  std::vector<std::string> lines;
  while (key(year, month, day) <= end) {
    if (!progress->step(key(year, month, day) - start, end - start + 1)) return std::nullopt;
    for (const SalesLogRecord& r : ReadSalesLog(year, month, day)) {
      if (r.total_discount == 0.0f) continue;
      lines.push_back(ListLine(r.transaction_number, day, month, year));
      if (TooMany(lines)) return std::nullopt;
    }
    if (++day > DaysInMonth(month, year)) {
      day = 1;
      if (++month > 12) {
        month = 1;
        ++year;
      }
    }
  }
  return lines;
}

TransactionShown Showntransaction(const TransactionRecords& t) {
  const SalesLogRecord& r = t.sale;
  const SettingsRecord& s = G().settings;
  TransactionShown out;
  const std::string payment = Text(r.payment_type);
  out.type = payment;
  if (payment == "Cash" || payment == "CH" || payment == "EFT" || payment == "Credit")
    out.type += " sale";
  out.payment = payment;
  if (payment == "Split")
    out.payment = "Cash: " + Money(r.tender_cash) + "  CH: " + Money(r.tender_ch) +
                  "  EFT: " + Money(r.tender_eft);
  out.number = std::to_string(static_cast<long long>(r.transaction_number));
  out.clerk = std::to_string(r.clerk) + ": " + Cp1252ToUtf8(ClerkName(s, r.clerk));
  out.date = Text(r.sale_date);
  out.time = Text(r.sale_time);
  out.items = r.line_count == 0 ? "N/A" : std::to_string(r.line_count);
  out.discount = Money(r.total_discount);
  out.customer =
      r.customer_number == 0 ? "N/A" : std::to_string(static_cast<long long>(r.customer_number));
  out.non_taxable = Money(r.total_non_taxable);
  out.taxable = Money(r.total_taxable);
  out.subtotal = Money(r.subtotal);
  out.tax1 = Money(r.total_tax1);
  out.tax2 = Money(r.total_tax2);
  out.total = Money(r.total);
  out.cash_back = Money(r.cash_back);
  out.notes = Text(r.note);
  for (const ItemsLogRecord& line : t.lines)
    out.lines.push_back(std::to_string(static_cast<long long>(line.number)) + " " +
                        Text(line.description) + "  " + Money(line.line_total));
  return out;
}

void Loadtransaction(const TransactionRecords& t) {
  State& g = G();
  Basket& b = g.basket;
  const SalesLogRecord& r = t.sale;
  std::memset(&b, 0, sizeof b);
  b.transaction_number = r.transaction_number;
  b.day_sequence = r.day_sequence;
  b.customer_number = r.customer_number;
  b.clerk = r.clerk;
  b.total_non_taxable = r.total_non_taxable;
  b.total_taxable = r.total_taxable;
  b.subtotal = r.subtotal;
  b.total_tax1 = r.total_tax1;
  b.total_tax2 = r.total_tax2;
  b.total_cost = r.total_cost;
  b.total = r.total;
  b.total_discount = r.total_discount;
  CopyField(b.reserved_amounts, r.reserved_64);
  b.cash_back = r.cash_back;
  b.tender_cash = r.tender_cash;
  b.tender_eft = r.tender_eft;
  b.tender_eft_extra = r.tender_eft_extra;
  b.tender_ch = r.tender_ch;
  CopyField(b.reserved_amounts2, r.reserved_104);
  b.credit_before = r.credit_before;
  b.credit_after = r.credit_after;
  b.reserved_amount3 = r.reserved_120;
  CopyField(b.sale_time, r.sale_time);
  CopyField(b.sale_date, r.sale_date);
  CopyField(b.customer_name, r.customer_name);
  CopyField(b.customer_road, r.customer_road);
  CopyField(b.customer_area, r.customer_area);
  CopyField(b.customer_town, r.customer_town);
  CopyField(b.customer_postcode, r.customer_postcode);
  CopyField(b.customer_telephone, r.customer_telephone);
  CopyField(b.payment_type, r.payment_type);
  CopyField(b.reserved_text1, r.reserved_394);
  CopyField(b.reserved_text2, r.reserved_594);
  CopyField(b.reserved_text3, r.reserved_614);
  CopyField(b.reserved_text4, r.reserved_694);
  CopyField(b.reserved_text5, r.reserved_774);
  CopyField(b.reserved_words, r.reserved_854);
  CopyField(b.note, r.note);
  // The lines as they were logged; the count the printers go by is theirs.
  int n = 0;
  for (const ItemsLogRecord& line : t.lines) {
    if (n == kBasketLines) break;
    b.number[n] = line.number;
    CopyField(b.description[n], line.description);
    b.non_taxable[n] = line.non_taxable;
    b.taxable[n] = line.taxable;
    b.tax1[n] = line.tax1;
    b.tax2[n] = line.tax2;
    b.cost[n] = line.cost;
    b.discount[n] = line.discount;
    b.line_total[n] = line.line_total;
    ++n;
  }
  b.line_count = n;
  g.amount_tendered = r.total;
  g.change_due = 0;
}

TransactionBrowser::~TransactionBrowser() {
  EmptyBasket();
}

void TransactionBrowser::Show(const TransactionRecords& t) {
  number_ = int32_t(t.sale.transaction_number);
  Loadtransaction(t);
  shown_ = Showntransaction(t);
}

bool TransactionBrowser::Open(int32_t number) {
  const auto place = Findtransaction(number);
  if (!place) return false;
  const auto t = Readtransaction(place->year, place->month, place->day, number);
  if (!t) return false;
  Show(*t);
  return true;
}

bool TransactionBrowser::BuildIndex() {
  Timestamp();
  const int first = G().settings.history_from_year, present = G().now.year;
  auto progress = platform().begin_progress("Reading the transactions", kBusyTitle);
  index_.clear();
  for (int year = first; year <= present; ++year) {
    if (!progress->step(year - first, present - first + 1)) return false;
    for (const BaseRecord& r : ReadBaseFile(year))
      index_.push_back({r.transaction_number, int16_t(year), int8_t(r.month), int8_t(r.day)});
  }
  // By number; a number used twice keeps its earliest place first.
  std::stable_sort(index_.begin(), index_.end(),
                   [](const Entry& a, const Entry& b) { return a.number < b.number; });
  indexed_ = true;
  return true;
}

const SalesLogRecord* TransactionBrowser::DaySale(const Entry& e, int32_t number) {
  if (e.year != cached_year_ || e.month != cached_month_ || e.day != cached_day_) {
    day_ = ReadSalesLog(e.year, e.month, e.day);
    cached_year_ = e.year;
    cached_month_ = e.month;
    cached_day_ = e.day;
  }
  for (const SalesLogRecord& r : day_)
    if (r.transaction_number == number) return &r;
  return nullptr;
}

bool TransactionBrowser::Next() {
  if (!indexed_ && !BuildIndex()) return false;
  auto progress = platform().begin_progress("Looking for the next transaction", kBusyTitle);
  const auto by_number = [](const Entry& e, int32_t n) { return e.number < n; };
  // A number missing from the index, or from its day's log, is passed over.
  int64_t wanted = int64_t(number_) + 1;
  auto it = std::lower_bound(index_.begin(), index_.end(), wanted, by_number);
  for (; it != index_.end(); it = std::lower_bound(it, index_.end(), wanted, by_number)) {
    if (!progress->step(it - index_.begin(), int64_t(index_.size()))) return false;
    const int32_t number = it->number;
    wanted = int64_t(number) + 1;
    const SalesLogRecord* sale = DaySale(*it, number);
    if (!sale || (discounted_ && sale->total_discount == 0.0f)) continue;
    TransactionRecords t;
    t.sale = *sale;
    for (const ItemsLogRecord& line : ReadItemsLog(it->year, it->month, it->day))
      if (line.transaction_number == number) t.lines.push_back(line);
    Show(t);
    return true;
  }
  Message("End of list.", "Problem");
  return false;
}

BrowseView& browse_view() {
  return *current_view;
}
void install_browse_view(BrowseView* view) {
  current_view = view ? view : &default_view;
}

void Browse(Command command) {
  const CommandEntry* entry = FindCommand(command);
  const std::string title = entry ? entry->entry : "Transaction";
  const auto day = [&] { return Ask("Please enter the day (1-31)", title, 1, 31); };
  const auto month = [&] { return Ask("Please enter the month (1-12)", title, 1, 12); };
  const auto year = [&] { return Ask("Please enter the year (yyyy)", title, 2000, 4000); };
  switch (command) {
    case Command::ReprintLast:
      if (G().settings.transaction_number > 1)
        ShowNumber(G().settings.transaction_number - 1, false);
      return;
    case Command::DisplayTransaction: {
      const auto reply = platform().prompt("Transaction number (Enter to list)", title);
      if (!reply) return;
      if (reply->empty()) return ShowPicked(Transactionlist({}), false);
      const int64_t number = LeadingNumber(*reply);
      if (number >= 1 && number <= kHighestTransaction) ShowNumber(int32_t(number), false);
      return;
    }
    case Command::FindTransaction:
      return ShowPicked(Transactionlist({}), false);
    case Command::TransactionsInDay: {
      const auto d = day();
      if (!d) return;
      const auto m = month();
      if (!m) return;
      const auto y = year();
      if (!y) return;
      return ShowPicked(Transactionlist({*d, *m, *y}), false);
    }
    case Command::TransactionsInMonth: {
      const auto m = month();
      if (!m) return;
      const auto y = year();
      if (!y) return;
      return ShowPicked(Transactionlist({0, *m, *y}), false);
    }
    case Command::TransactionsInYear: {
      const auto y = year();
      if (!y) return;
      return ShowPicked(Transactionlist({0, 0, *y}), false);
    }
    case Command::DiscountedTransactions:
      return ShowPicked(Discountedlist(), true);
    default:
      return;
  }
}

}  // namespace tilo
