// SPDX-License-Identifier: MIT
#include <charconv>
#include <cstdio>
#include <cstring>
#include <string>

#include "core/activity_log.h"
#include "core/clock.h"
#include "core/customer_file.h"
#include "core/history.h"
#include "core/record_batch.h"
#include "core/settings.h"
#include "core/state.h"
#include "core/text.h"
#include "core/write_batch.h"
#include "customers/customer_find.h"
#include "documents/invoice.h"
#include "documents/statement.h"
#include "platform/files.h"
#include "platform/platform.h"
#include "sale/basket.h"
#include "sale/commit.h"
#include "sale/pricing.h"
#include "sale/sale_events.h"
#include "tender/account.h"
#include "tender/browse.h"
#include "tender/cash.h"

namespace tilo {
namespace {

constexpr const char* kProblem = "Problem";
constexpr const char* kFatal = "Fatal error";
constexpr int32_t kHighestTransaction = 200000000;
// More digits than a float keeps pennies for.
constexpr size_t kLongestAmount = 12;

std::string Text(const char* field, size_t width) {
  return Cp1252ToUtf8(FieldText(field, width));
}
template <size_t N>
std::string Text(const char (&field)[N]) {
  return Text(field, N);
}

std::string Decimal(int64_t n) {
  return std::to_string(static_cast<long long>(n));
}

// A stamp "%02d:%02d%02d/%02d/%d" as people read it; empty stays empty.
std::string Stamptext(const char (&stamp)[16]) {
  const std::string s = FieldText(stamp);
  if (s.size() < 5) return Cp1252ToUtf8(s);
  return Cp1252ToUtf8(s.substr(0, 2) + ":" + s.substr(3, 2) + " " + s.substr(5));
}

PaymentShown Paymentshown(const MemberRecord& m, const std::optional<TransactionRecords>& last,
                          std::vector<std::string> transactions) {
  const SettingsRecord& s = G().settings;
  std::string purchase;
  if (last)
    purchase = Text(last->sale.sale_date) + "  " + MoneyText(last->sale.total) + "  " +
               Text(last->sale.payment_type);
  PaymentShown shown;
  shown.fields = {{"Number", Decimal(m.number)},
                  {"Customer", Text(m.name)},
                  {"Transactions", std::to_string(m.transactions)},
                  {"Last purchase", purchase},
                  {"Last payment", Stamptext(m.last_payment)},
                  {"Terms", Cp1252ToUtf8(Standardterms(s, m.terms))},
                  {"Balance", MoneyText(m.balance)}};
  shown.transactions = std::move(transactions);
  return shown;
}

const char* Methodname(int method) {
  static const char* const kNames[] = {"Cash", "CH", "EFT"};
  return kNames[method];
}

void Logactivity(WriteBatch& batch, const SalesLogRecord& r, const MemberRecord& m, int method) {
  const SettingsRecord& s = G().settings;
  Timestamp();
  const char* t = G().stamp_text;
  std::string entry = "\r\n";
  entry += {t[0], t[1], ':', t[3], t[4], ' '};
  entry += std::string(t + 5) + " Payment: " + Decimal(r.transaction_number) +
           ", Total: " + MoneyText(r.total) + "\r\n";
  entry += "Clerk: " + std::to_string(r.clerk) + ", " + ClerkName(s, s.clerk_number) + "\r\n";
  entry += std::string("Payment type: ") + Methodname(method) + "\r\n";
  entry += "Customer: " + Decimal(m.number) + " " + FieldText(m.name) + "\r\n";
  batch.Append(kActivityLog, entry, "Data file: bun4.dat, not present.", kFatal);
}

void Addtotakings(SettingsRecord& s, float amount, int method) {
  s.till_takings += double(amount);
  switch (method) {
    case kPayCash:
      s.count_balance_cash += 1.0f;
      s.balance_cash += double(amount);
      break;
    case kPayCh:
      s.count_balance_ch += 1.0f;
      s.balance_ch += double(amount);
      break;
    default:
      s.count_balance_eft += 1.0f;
      s.balance_eft += double(amount);
      break;
  }
}

// Books a payment settled on the form, on the customer as the file holds them now.
void Takepayment(int64_t customer, float amount, int method) {
  State& g = G();
  SettingsRecord& s = g.settings;
  if (Fetchmember(customer) != customer) {
    Message("Invalid number.", kProblem);
    return;
  }
  MemberRecord m = g.member;
  const float before = Roundmoney(m.balance);
  if (MoneyAbove(amount, before) &&
      Message("Exceeds amount due", "Continue", Buttons::OkCancel) != Answer::Ok)
    return;
  const float after = Roundmoney(double(before) - double(amount));

  // The payment, the account and the totals are written together or not at all.
  SettingsRecord next = s;
  ++next.today_transactions;
  SalesLogRecord r{};
  r.transaction_number = next.transaction_number;
  r.day_sequence = next.today_transactions;
  r.customer_number = m.number;
  r.clerk = int32_t(next.clerk_number);
  r.total = amount;
  if (method == kPayCash) r.tender_cash = amount;
  if (method == kPayCh) r.tender_ch = amount;
  if (method == kPayEft) r.tender_eft = amount;
  r.credit_before = before;
  r.credit_after = after;
  // The time and date as a sale takes them, stamped without touching the basket.
  Basket& b = g.basket;
  char time[sizeof b.sale_time], date[sizeof b.sale_date];
  std::memcpy(time, b.sale_time, sizeof time);
  std::memcpy(date, b.sale_date, sizeof date);
  Stampbasket();
  std::memcpy(r.sale_time, b.sale_time, sizeof r.sale_time);
  std::memcpy(r.sale_date, b.sale_date, sizeof r.sale_date);
  std::memcpy(b.sale_time, time, sizeof time);
  std::memcpy(b.sale_date, date, sizeof date);
  SetField(r.payment_type, std::string("Payment (") +
                               (method == kPayCash ? "cash"
                                : method == kPayCh ? "ch"
                                                   : "eft") +
                               ")");
  WriteBatch batch;
  Makelogdirs();
  BatchTransaction(batch, r, g.now.year, g.now.month, g.now.day);

  m.balance = after;
  m.last_transaction = next.transaction_number;
  Timestamp();
  SetField(m.last_payment, g.stamp_text);
  const int64_t position = PositionOf(g.members, m.number);
  batch.Put(kMemberFile, position * kMemberRecordSize, &m, kMemberRecordSize,
            "Not able to write member.dat", kProblem);

  Logactivity(batch, r, m, method);
  Addtotakings(next, amount, method);
  ++next.transaction_number;
  // The number and the totals reach the disk with the payment, as after a sale,
  // so a crash can't give this payment's number to the next sale.
  BatchSettings(batch, next);
  if (!batch.Commit()) return;
  s = next;
  g.member = m;
  if (g.members.on_record) g.members.on_record(position, &m);
  sale_events().totals_changed();
  Message("Updated", "Customer");
}

// The payment form for customer `m`, then the payment.
void Paymentform(const MemberRecord& m, const std::optional<TransactionRecords>& last) {
  auto transactions = Customertransactions(m.number);
  if (!transactions) return;
  const auto entry = account_view().payment(Paymentshown(m, last, std::move(*transactions)));
  if (!entry) return;
  const auto amount = Payamount(entry->pay);
  if (!amount || entry->method < kPayCash || entry->method > kPayEft) {
    Message(kBadAmountText, kBadAmountTitle);
    return;
  }
  Takepayment(m.number, *amount, entry->method);
}

std::optional<TransactionRecords> Readnumber(int64_t number) {
  if (number < 1 || number > kHighestTransaction) return std::nullopt;
  const auto place = Findtransaction(int32_t(number));
  if (!place) return std::nullopt;
  return Readtransaction(place->year, place->month, place->day, int32_t(number));
}

}  // namespace

std::optional<float> Payamount(const std::string& typed) {
  const size_t first = typed.find_first_not_of(" \t");
  if (first == std::string::npos) return std::nullopt;
  const std::string text = typed.substr(first, typed.find_last_not_of(" \t") - first + 1);
  if (text.size() > kLongestAmount) return std::nullopt;
  size_t digits = 0, points = 0;
  for (char c : text) {
    if (c >= '0' && c <= '9')
      ++digits;
    else if (c == '.')
      ++points;
    else
      return std::nullopt;
  }
  if (digits == 0 || points > 1) return std::nullopt;
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return Roundmoney(value);
}

std::optional<std::vector<std::string>> Customertransactions(int64_t customer) {
  // The statement's walk, under a busy box of the payment's own.
  auto progress = platform().begin_progress("Reading the customer's transactions", "Payment");
  const auto entries = Customertransactions(
      customer, Historystart(), Today(),
      [&](int64_t done, int64_t total) { return progress->step(done, total); });
  if (!entries) return std::nullopt;
  std::vector<std::string> lines;
  for (const StatementEntry& e : *entries) {
    char line[160];
    std::snprintf(line, sizeof line, "%lld  %02d/%02d/%d  %s  %s",
                  static_cast<long long>(e.transaction_number), e.day.day, e.day.month, e.day.year,
                  e.payment_type.c_str(), MoneyText(e.total).c_str());
    lines.push_back(Cp1252ToUtf8(line));
  }
  return lines;
}

void Balancepayment() {
  if (PromptCustomer("Customer") == 0) return;
  const MemberRecord m = G().member;
  std::optional<TransactionRecords> last;
  if (m.last_transaction != 0) last = Readnumber(m.last_transaction);
  Paymentform(m, last);
}

void Balanceontransaction() {
  const auto reply =
      platform().prompt("Transaction number (Enter to list)", "Balance pay on transaction");
  if (!reply) return;
  int64_t number = LeadingNumber(*reply);
  if (reply->empty()) {
    const auto lines = Transactionlist({});
    if (!lines) return;
    const auto picked = browse_view().invoice_list(*lines);
    if (!picked) return;
    number = LeadingNumber(*picked);
  }
  const auto t = Readnumber(number);
  if (!t) return;
  const int64_t customer = t->sale.customer_number;
  if (customer == 0 || Fetchmember(customer) != customer) {
    Message("No customer associated with transaction", kProblem);
    return;
  }
  Paymentform(G().member, t);
}

}  // namespace tilo
