// SPDX-License-Identifier: MIT
#include <cstring>
#include <memory>
#include <string>

#include "core/clock.h"
#include "core/customer_file.h"
#include "core/history.h"
#include "core/record_batch.h"
#include "core/settings.h"
#include "core/state.h"
#include "core/text.h"
#include "customers/customer_find.h"
#include "platform/files.h"
#include "platform/platform.h"
#include "sale/commit.h"
#include "sale/pricing.h"
#include "tender/account.h"
#include "tender/cash.h"
#include "tender/tender_view.h"

namespace tilo {
namespace {

AccountView default_view;
AccountView* current_view = &default_view;

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

// The total of the basket as the customer pays it: without the taxes when the
// customer is not taxed.
float Customertotal(const Basket& b, const MemberRecord& m) {
  if (m.tax != 0) return b.total;
  return Roundmoney(double(b.total) - double(b.total_tax1) - double(b.total_tax2));
}

// The customer's side of the sale, from the record as it stands on disk now;
// false when the customer is no longer on file.
bool Chargedcustomer(int64_t customer, int tender, float total, int64_t number, MemberRecord* m) {
  State& g = G();
  const MemberRecord shown = g.member;
  const bool found = Fetchmember(customer) == customer;
  *m = g.member;
  g.member = shown;
  if (!found) return false;
  ++m->transactions;
  Timestamp();
  SetField(m->last_used, g.stamp_text);
  m->total_purchases = Roundmoney(double(m->total_purchases) + double(total));
  m->last_transaction = int32_t(number);
  if (tender == kTenderCredit) m->balance = Roundmoney(double(m->balance) + double(total));
  return true;
}

const char* Paymenttype(int tender) {
  switch (tender) {
    case kTenderEft:
      return "EFT";
    case kTenderCash:
      return "Cash";
    case kTenderCh:
      return "CH";
    default:
      return "Credit";
  }
}

// The basket takes the customer and the stamp the form shows.
void Stampcustomer(const MemberRecord& m) {
  State& g = G();
  Basket& b = g.basket;
  b.transaction_number = g.settings.transaction_number;
  b.customer_number = m.number;
  SetField(b.customer_name, FieldText(m.name));
  SetField(b.customer_road, FieldText(m.road));
  SetField(b.customer_area, FieldText(m.area));
  SetField(b.customer_town, FieldText(m.town));
  SetField(b.customer_postcode, FieldText(m.postcode));
  SetField(b.customer_telephone, FieldText(m.telephone));
  Stampbasket();
  b.clerk = int32_t(g.settings.clerk_number);
}

}  // namespace

AccountView& account_view() {
  return *current_view;
}
void install_account_view(AccountView* view) {
  current_view = view ? view : &default_view;
}

std::vector<AccountField> Customertransactionfields(const MemberRecord& m) {
  const State& g = G();
  const Basket& b = g.basket;
  const SettingsRecord& s = g.settings;
  const bool taxed = m.tax != 0;
  const float total = Customertotal(b, m);
  return {
      {"Number", Decimal(b.transaction_number)},
      {"Time", Text(b.sale_time)},
      {"Date", Text(b.sale_date)},
      {"Clerk", std::to_string(b.clerk) + ", " + Cp1252ToUtf8(ClerkName(s, b.clerk))},
      {"Sub Total", MoneyText(b.subtotal)},
      {"Tax 1", taxed ? MoneyText(b.total_tax1) : ""},
      {"Tax 2", taxed ? MoneyText(b.total_tax2) : ""},
      {"Total", MoneyText(total)},
      {"Customer", Decimal(m.number)},
      {"Name", Text(m.name)},
      {"Road", Text(m.road)},
      {"Area", Text(m.area)},
      {"Town", Text(m.town)},
      {"Zip / Post", Text(m.postcode)},
      {"Telephone", Text(m.telephone)},
      {"Comment", Text(m.comment)},
      {"Comment 2", Text(m.comment2)},
      {"Credit limit", MoneyText(m.credit_limit)},
      {"Tax code", Decimal(m.tax)},
      {"Transactions", std::to_string(m.transactions)},
      {"Notes", Text(m.notes)},
      {"Previous balance", MoneyText(m.balance)},
      {"Transaction", MoneyText(total)},
      {"Balance", MoneyText(Roundmoney(double(m.balance) + double(total)))},
  };
}

void Taxfreebasket() {
  Basket& b = G().basket;
  b.total_non_taxable = Roundmoney(double(b.total_non_taxable) + double(b.total_taxable));
  b.total_taxable = 0;
  b.total = Roundmoney(double(b.total) - double(b.total_tax1) - double(b.total_tax2));
  b.total_tax1 = 0;
  b.total_tax2 = 0;
  // Every line, so the lines still add up to the totals.
  for (int i = 0; i < b.line_count; ++i) {
    if (b.taxable[i] == 0.0f && b.tax1[i] == 0.0f && b.tax2[i] == 0.0f) continue;
    b.non_taxable[i] = Roundmoney(double(b.non_taxable[i]) + double(b.taxable[i]));
    b.taxable[i] = 0;
    b.line_total[i] = Roundmoney(double(b.line_total[i]) - double(b.tax1[i]) - double(b.tax2[i]));
    b.tax1[i] = 0;
    b.tax2[i] = 0;
  }
}

void Creditsale() {
  State& g = G();
  Basket& b = g.basket;
  if (b.line_count <= 0) {
    Message("Please first select the items", "Payment by customer credit");
    tender_view().focus_item_box();
    return;
  }
  if (g.tender_form_open != 0) return;
  const int64_t customer = PromptCustomer("Customer");
  if (customer == 0) return;
  // The buffer is every lookup's: the customer is kept apart from here on.
  const MemberRecord m = g.member;
  const float total = Customertotal(b, m);
  if (MoneyAbove(double(Roundmoney(double(m.balance) + double(total))), double(m.credit_limit)) &&
      Message("Exceeded", "Credit limit", Buttons::OkCancel) != Answer::Ok)
    return;

  // "Cancel" gives the basket back as it was, customer and stamp included.
  auto before = std::make_unique<Basket>(b);
  Stampcustomer(m);
  const int tender = account_view().customer_transaction(Customertransactionfields(m));
  if (tender != kTenderCredit && tender != kTenderCash && tender != kTenderCh &&
      tender != kTenderEft) {
    b = *before;
    tender_view().focus_item_box();
    return;
  }

  SetField(b.payment_type, Paymenttype(tender));
  g.change_due = 0;
  if (m.tax == 0) Taxfreebasket();
  g.amount_tendered = b.total;
  if (tender == kTenderEft) b.tender_eft = b.total;
  if (tender == kTenderCash) b.tender_cash = b.total;
  if (tender == kTenderCh) b.tender_ch = b.total;
  b.credit_before = m.balance;
  b.credit_after =
      tender == kTenderCredit ? Roundmoney(double(m.balance) + double(b.total)) : m.balance;

  const float sold = b.total;
  const int64_t number = b.transaction_number;
  Closetender();
  // The account moves with the sale, in the same write: a sale given up or
  // refused by the disk leaves the balance alone.
  // A customer who can't be read is not sold to: the sale stays in the basket.
  MemberRecord charged{};
  if (!Chargedcustomer(customer, tender, sold, number, &charged)) {
    Message("Invalid number.", "Problem");
    tender_view().focus_item_box();
    return;
  }
  const int64_t position = PositionOf(g.members, customer);
  const bool sold_it = Finishsale([&](WriteBatch& batch) {
    batch.Put(kMemberFile, position * kMemberRecordSize, &charged, kMemberRecordSize,
              "Not able to write member.dat", "Problem");
  });
  if (sold_it) {
    g.member = charged;
    if (g.members.on_record) g.members.on_record(position, &charged);
  }
  if (g.settings.sound_off == 0) platform().play_sound(8004);
  tender_view().focus_item_box();
}

}  // namespace tilo
