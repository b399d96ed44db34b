// SPDX-License-Identifier: MIT
#include "customers/customer_form.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "core/inventory.h"
#include "core/state.h"
#include "core/text.h"
#include "sale/basket.h"
#include "sale/pricing.h"

namespace tilo {
namespace {

// The boxes that are plain text fields of the record, with their place in it.
struct TextBox {
  CustomerBox box;
  size_t offset;
  size_t width;
};

#define TILO_FIELD(box, field)                                      \
  TextBox {                                                         \
    box, offsetof(MemberRecord, field), sizeof(MemberRecord::field) \
  }
// The fax is stored apart, after the shipping name.
const TextBox kTextBoxes[] = {
    TILO_FIELD(kBoxName, name),
    TILO_FIELD(kBoxRoad, road),
    TILO_FIELD(kBoxArea, area),
    TILO_FIELD(kBoxTown, town),
    TILO_FIELD(kBoxPostcode, postcode),
    TILO_FIELD(kBoxEmail, email),
    TILO_FIELD(kBoxTelephone, telephone),
    TILO_FIELD(kBoxExtension, telephone_extension),
    TILO_FIELD(kBoxTelephone2, telephone2),
    TILO_FIELD(kBoxContact, contact),
    TILO_FIELD(kBoxComment, comment),
    TILO_FIELD(kBoxComment2, comment2),
    TILO_FIELD(kBoxCard1, credit_card),
    TILO_FIELD(kBoxCard1Expiry, credit_card_expiry),
    TILO_FIELD(kBoxCard2, credit_card2),
    TILO_FIELD(kBoxCard2Expiry, credit_card2_expiry),
    TILO_FIELD(kBoxShipping1, shipping_address_1),
    TILO_FIELD(kBoxShipping2, shipping_address_2),
    TILO_FIELD(kBoxShipping3, shipping_address_3),
    TILO_FIELD(kBoxShipping4, shipping_address_4),
    TILO_FIELD(kBoxShipping5, shipping_address_5),
    TILO_FIELD(kBoxNotes, notes),
};
#undef TILO_FIELD

char* At(MemberRecord& r, size_t offset) {
  return reinterpret_cast<char*>(&r) + offset;
}
const char* At(const MemberRecord& r, size_t offset) {
  return reinterpret_cast<const char*>(&r) + offset;
}

// The text of a box as it goes into the record: Windows-1252, folded when the
// box folds, cut to what the box takes.
std::string Typed(const CustomerEntries& e, CustomerBox box) {
  const CustomerBoxSpec& spec = CustomerBoxes()[box];
  std::string text = Utf8ToCp1252(e[box]);
  if (spec.upper) text = UpperCase(text);
  if (spec.limit > 0 && text.size() > size_t(spec.limit)) text.resize(size_t(spec.limit));
  return text;
}

// Writes `text` and its terminator at `offset`, zeroing the rest of `width`
// bytes, or running on past them when the text is longer.
void Put(MemberRecord& r, size_t offset, size_t width, const std::string& text) {
  std::memcpy(At(r, offset), text.data(), text.size());
  At(r, offset)[text.size()] = '\0';
  if (text.size() + 1 < width)
    std::memset(At(r, offset) + text.size() + 1, 0, width - text.size() - 1);
}

float Money(const std::string& text) {
  return Roundmoney(std::strtod(text.c_str(), nullptr));
}

}  // namespace

const std::array<CustomerBoxSpec, kCustomerBoxes>& CustomerBoxes() {
  static const std::array<CustomerBoxSpec, kCustomerBoxes> boxes{{
      {"Number", 19, false},
      {"Name", 29, true},
      {"Road", 29, true},
      {"Area", 29, true},
      {"Town", 19, true},
      {"Zip / Post", 9, true},
      {"Email", 39, false},
      {"Telephone", 19, true},
      {"Ext", 19, true},
      {"Telephone 2", 19, true},
      {"Fax", 29, true},
      {"Contact", 29, true},
      {"Taxable", 0, false},
      {"Group", 9, false},
      {"Comment", 29, true},
      {"Comment 2", 29, true},
      {"Credit card 1", 39, true},
      {"Exp", 7, true},
      {"Credit card 2", 29, true},
      {"Exp", 9, true},
      {"Balance", 12, false},
      {"Credit limit", 12, false},
      {"Shipping", 55, true},
      {"", 29, true},
      {"", 29, true},
      {"", 29, true},
      {"", 9, true},
      {"Notes", 79, true},
      {"Terms", 0, false},
      {"Transactions", 9, false},
      {"Total purchases", 12, false},
  }};
  return boxes;
}

const char* CustomerFormTitle(CustomerLayout layout) {
  switch (layout) {
    case CustomerLayout::New:
      return "NEW CUSTOMER";
    case CustomerLayout::View:
      return "CUSTOMER";
    default:
      return "Amend customer";
  }
}

bool ShowsBalance(CustomerLayout layout) {
  return layout == CustomerLayout::New || layout == CustomerLayout::View;
}

int64_t NextFreeCustomer() {
  int64_t base = G().settings.last_customer_number + 1;
  if (base < 1) {
    G().settings.last_customer_number = 0;
    base = 1;
  }
  const NumberIndex& index = G().members.index;
  size_t slot = Findnumber(index, base);
  if (slot >= index.size() || index[slot].number != base) return base;
  int64_t offered = base + 1;
  for (++slot; slot < index.size() && index[slot].number == offered; ++slot) ++offered;
  return offered;
}

CustomerEntries BlankCustomer() {
  CustomerEntries e;
  if (G().settings.no_offer_new_customer != 1) e[kBoxNumber] = std::to_string(NextFreeCustomer());
  e[kBoxTaxable] = "1";
  e[kBoxGroup] = "1";
  e[kBoxBalance] = "0";
  e[kBoxCreditLimit] = "2000";
  e[kBoxTerms] = "1";
  e[kBoxTransactions] = "0";
  e[kBoxTotalPurchases] = "0";
  return e;
}

CustomerEntries EntriesOf(const MemberRecord& r) {
  CustomerEntries e;
  e[kBoxNumber] = std::to_string(r.number);
  for (const TextBox& t : kTextBoxes) e[t.box] = Cp1252ToUtf8(FieldText(At(r, t.offset), t.width));
  // The fax the form wrote may run on into the shipping name.
  e[kBoxFax] = Cp1252ToUtf8(FieldText(r.fax, size_t(CustomerBoxes()[kBoxFax].limit)));
  e[kBoxTaxable] = std::to_string(r.tax);
  e[kBoxGroup] = std::to_string(r.group);
  e[kBoxBalance] = MoneyText(r.balance);
  e[kBoxCreditLimit] = MoneyText(r.credit_limit);
  e[kBoxTerms] = std::to_string(r.terms >= 1 && r.terms <= 8 ? r.terms : 1);
  e[kBoxTransactions] = std::to_string(r.transactions);
  e[kBoxTotalPurchases] = MoneyText(r.total_purchases);
  return e;
}

void StoreEntries(const CustomerEntries& e, MemberRecord& r, bool with_balance) {
  r.number = LeadingNumber(e[kBoxNumber]);
  for (const TextBox& t : kTextBoxes) Put(r, t.offset, t.width, Typed(e, t.box));
  // After the shipping name, so that a long fax runs on into it.
  Put(r, offsetof(MemberRecord, fax), sizeof r.fax, Typed(e, kBoxFax));
  r.tax = LeadingNumber(e[kBoxTaxable]) == 0 ? 0 : 1;
  r.group = int32_t(LeadingNumber(e[kBoxGroup]));
  if (with_balance) r.balance = Money(e[kBoxBalance]);
  r.credit_limit = Money(e[kBoxCreditLimit]);
  const int64_t terms = LeadingNumber(e[kBoxTerms]);
  r.terms = int32_t(terms >= 1 && terms <= 8 ? terms : 1);
  r.transactions = int32_t(LeadingNumber(e[kBoxTransactions]));
  r.total_purchases = Money(e[kBoxTotalPurchases]);
}

std::string TermsText(int terms) {
  static const char* kDays[] = {"No credit, ", "No credit, ", "10 days, ",
                                "20 days, ",   "30 days, ",   "60 days, ",
                                "90 days, ",   "120 days, ",  "180 days, "};
  static const char* kDiscount[] = {"",         "Nett",     "2% disc",  "5% disc", "10% disc",
                                    "20% disc", "30% disc", "40% disc", "50% disc"};
  if (terms < 1 || terms > 8) return {};
  const SettingsRecord& s = G().settings;
  const int64_t days = s.band_credit_period[terms - 1];
  const int32_t discount = s.band_discount[terms - 1];
  std::string text = kDays[days >= 1 && days <= 8 ? days : 0];
  if (discount >= 1 && discount <= 8) text += kDiscount[discount];
  return text;
}

std::string StampShown(const char* stamp, size_t width) {
  const std::string text = FieldText(stamp, width);
  if (text.size() < 15) return Cp1252ToUtf8(text);
  const int day = std::atoi(text.substr(5, 2).c_str());
  const int month = std::atoi(text.substr(8, 2).c_str());
  const int year = std::atoi(text.substr(11).c_str());
  std::string shown = text.substr(0, 2) + ":" + text.substr(3, 2) + " ";
  if (day >= 1 && day <= 31 && month >= 1 && month <= 12 && year > 0)
    return shown + platform().long_date(year, month, day);
  return shown + Cp1252ToUtf8(text.substr(5));
}

}  // namespace tilo
