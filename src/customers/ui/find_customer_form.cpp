// SPDX-License-Identifier: MIT
#include "customers/ui/find_customer_form.h"

#include <cstdio>

#include "core/state.h"
#include "core/text.h"
#include "inventory/ui/find_forms.h"

namespace tilo {
namespace {

QString T(const char* field, size_t width) {
  return QString::fromStdString(Cp1252ToUtf8(FieldText(field, width)));
}
template <size_t N>
QString T(const char (&field)[N]) {
  return T(field, N);
}
// The discount half of the terms text.
QString DiscountText(int code) {
  static const char* const texts[] = {"Nett",     "2% disc",  "5% disc",  "10% disc",
                                      "20% disc", "30% disc", "40% disc", "50% disc"};
  return code >= 1 && code <= 8 ? texts[code - 1] : "";
}
QString Money(float value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.2f", double(value));
  return text;
}

}  // namespace

FindChoice ShowFindCustomer(QWidget* parent, const MemberRecord& m) {
  const SettingsRecord& s = G().settings;
  const int terms = m.terms >= 1 && m.terms <= 8 ? m.terms : 1;
  const QList<QPair<QString, QString>> rows = {
      {"Number", QString::number(m.number)},
      {"Customer", T(m.name)},
      {"Road", T(m.road)},
      {"Area", T(m.area)},
      {"Town", T(m.town)},
      {"Postcode", T(m.postcode)},
      {"Telephone", T(m.telephone)},
      {"Comment", T(m.comment)},
      {"Credit card", T(m.credit_card)},
      {"Taxable", m.tax == 1 ? "Yes" : "No"},
      {"Origination", T(m.origination)},
      {"Discount", DiscountText(BandDiscount(s, terms))},
      {"Last used", T(m.last_used)},
      {"Transactions", QString::number(m.transactions)},
      {"Group", QString::number(m.group)},
      {"Credit limit", Money(m.credit_limit)},
      {"Notes", T(m.notes)},
      {"Total purchases", Money(m.total_purchases)},
      {"Balance", Money(m.balance)},
  };
  FindRecordForm form(parent, "FIND CUSTOMER", rows);
  form.setObjectName("form804");
  const int r = form.exec();
  return r == 1 ? FindChoice::Ok : r == 2 ? FindChoice::Next : FindChoice::Cancel;
}

}  // namespace tilo
