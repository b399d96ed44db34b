// SPDX-License-Identifier: MIT
// Customer accounts at the till. A sale can go on a customer's account within
// the credit limit, or be tied to the customer and paid in cash, CH or EFT; a
// customer pays the account down by cash, CH or EFT, found by name or by one of
// their transactions. The customer's balance in member.dat is the only ledger:
// a payment appends its own record to the day's sales log and leaves the sale it
// pays for as it was.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/customer_file.h"
#include "core/history.h"

namespace tilo {

// The buttons of "Customer transaction", by the number the sale records them
// under.
enum CustomerTender : int {
  kTenderCancel = 0,
  kTenderEft = 2,
  kTenderCredit = 4,
  kTenderCash = 8,
  kTenderCh = 12,
};

// How a balance payment is made.
enum PaymentMethod : int { kPayCash = 0, kPayCh = 1, kPayEft = 2 };

// One read-only field of a form: its label and its text (UTF-8).
using AccountField = std::pair<std::string, std::string>;

// What "Payment" shows.
struct PaymentShown {
  std::vector<AccountField> fields;  // "Number", "Customer", "Transactions", ...
  std::vector<std::string> transactions;
};

// What the operator settled on "Payment": the amount as typed, and the method.
struct PaymentEntry {
  std::string pay;
  int method = kPayCash;
};

// The account forms as the logic sees them. Without a screen (tests) both are
// given up, so nothing reaches an account by accident.
class AccountView {
 public:
  virtual ~AccountView() = default;
  // "Customer transaction", modal: the button pressed, kTenderCancel for "Cancel".
  virtual int customer_transaction(const std::vector<AccountField>&) { return kTenderCancel; }
  // "Payment", modal: nullopt for "Cancel".
  virtual std::optional<PaymentEntry> payment(const PaymentShown&) { return std::nullopt; }
};

AccountView& account_view();
// nullptr puts back the one without a screen.
void install_account_view(AccountView* view);

// What "Customer transaction" shows for the basket as stamped and customer `m`,
// in order. A customer not taxed sees the taxes blank and the total, the
// transaction and the new balance without them.
std::vector<AccountField> Customertransactionfields(const MemberRecord& m);

// Takes the taxes off the basket, totals and lines alike: what was taxable is
// sold untaxed.
void Taxfreebasket();

// "Customer credit F6": the basket on the customer's account, or paid in cash,
// CH or EFT by the customer.
void Creditsale();

// The amount typed on "Payment": digits with at most one point, read the same
// in every locale, at two decimals; nullopt for an empty, negative or
// non-numeric text.
std::optional<float> Payamount(const std::string& typed);
// The message and title an unreadable amount gets.
inline constexpr const char* kBadAmountText =
    "Please type the amount paid with a point before the pence, for example 12.50";
inline constexpr const char* kBadAmountTitle = "Payment";

// The customer's transactions in the history range, newest last, one line each:
// number, date, payment type, total. nullopt when the operator cancelled the walk.
std::optional<std::vector<std::string>> Customertransactions(int64_t customer);

// "Balance payment": the customer asked for by number or name.
void Balancepayment();
// "Balance pay on transaction": the customer of a transaction found by number
// or from the list.
void Balanceontransaction();

}  // namespace tilo
