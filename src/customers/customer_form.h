// SPDX-License-Identifier: MIT
// Form 802, the customer's card, as the logic sees it: the boxes in screen
// order with their limits, the typed texts, and how they go into and come out of
// a MemberRecord. The same boxes, read-only, make the customer view.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "core/customer_file.h"

namespace tilo {

enum CustomerBox {
  kBoxNumber,
  kBoxName,
  kBoxRoad,
  kBoxArea,
  kBoxTown,
  kBoxPostcode,
  kBoxEmail,
  kBoxTelephone,
  kBoxExtension,
  kBoxTelephone2,
  kBoxFax,
  kBoxContact,
  kBoxTaxable,  // a list: "0", "1"
  kBoxGroup,
  kBoxComment,
  kBoxComment2,
  kBoxCard1,
  kBoxCard1Expiry,
  kBoxCard2,
  kBoxCard2Expiry,
  kBoxBalance,  // hidden when amending
  kBoxCreditLimit,
  kBoxShipping1,
  kBoxShipping2,
  kBoxShipping3,
  kBoxShipping4,
  kBoxShipping5,
  kBoxNotes,  // several lines
  kBoxTerms,  // a list of eight rows: the text holds the row, "1" to "8"
  kBoxTransactions,
  kBoxTotalPurchases,
  kCustomerBoxes
};

struct CustomerBoxSpec {
  const char* label;  // empty: a line below the one before ("Shipping")
  int limit;          // characters taken; 0 for the lists and the figures
  bool upper;         // folded to upper case on entry
};
const std::array<CustomerBoxSpec, kCustomerBoxes>& CustomerBoxes();

// The texts of the boxes as on screen (UTF-8).
using CustomerEntries = std::array<std::string, kCustomerBoxes>;

// How the form opens: a new customer, a new one reopened after a refusal (in
// the amend layout, the balance hidden but kept), an amendment, or the view.
enum class CustomerLayout { New, Reopened, Amend, View };
enum class FormButton { Ok, Next, Cancel };

// The title of the form in a layout.
const char* CustomerFormTitle(CustomerLayout layout);
// True when "Balance" and its label show; "&Next" shows in the same layout only.
bool ShowsBalance(CustomerLayout layout);

// The boxes of a blank new customer: the offered number (empty when the
// settings say not to offer one), "1" for Taxable and Group, "0" balance, "2000"
// credit limit, terms row 1, "0" transactions and purchases.
CustomerEntries BlankCustomer();
// The boxes showing `record`. The fax reads on into the shipping name as far as
// its terminator (at most 29 characters).
CustomerEntries EntriesOf(const MemberRecord& record);
// Stores the boxes into `record`, folding the upper-case ones; the bytes the
// form doesn't show stay. The shipping name goes first and the fax after it, so
// a fax of more than 19 characters runs on into the shipping name. The balance
// is stored only when `with_balance`.
void StoreEntries(const CustomerEntries& entries, MemberRecord& record, bool with_balance);

// The number offered to a new customer: from last_customer_number plus 1 (a
// base below 1 resets the setting and gives 1), the first free number of the
// run of taken numbers that starts there.
int64_t NextFreeCustomer();

// Row t of the terms: the days text straight followed by the discount text
// ("30 days, 10% disc"), from the settings' two tables.
std::string TermsText(int terms);

// "%c%c:%c%c " and the local long date of a stamp text, or the stored date when
// it isn't one; "NEW" and other short texts as they are.
std::string StampShown(const char* stamp, size_t width);

}  // namespace tilo
