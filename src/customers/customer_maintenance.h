// SPDX-License-Identifier: MIT
// The Customers menu's Add, Amend, Delete and Prune, the customer view, and the
// list by address. The rules of each loop live here; the forms only show the
// boxes and give back what was typed, through CustomerView.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "customers/customer_form.h"
#include "reports/screen_list.h"

namespace tilo {

// The read-only page of one customer: the card's boxes and what only the view
// shows.
struct CustomerPage {
  CustomerEntries entries;
  std::string last_used;
  std::string last_payment;
  std::string origination;
  std::string terms;
};
CustomerPage PageOf(const MemberRecord& record);
// "Next" on the view: the customer with the next higher number, into G().member
// and `page`; false at the end of the customers.
bool NextCustomerPage(CustomerPage& page);

class CustomerView {
 public:
  virtual ~CustomerView() = default;
  // Form 802, modal, in `layout` on `entries`; they come back as typed. Without
  // a screen the form is cancelled.
  virtual FormButton edit(CustomerLayout layout, CustomerEntries& entries);
  // View 803, modal, on `page` (the customer in G().member).
  virtual void view(CustomerPage& page);
};
CustomerView& customer_view();
// nullptr puts back the one without a screen.
void install_customer_view(CustomerView* view);

// The message of the first check a new customer fails, or nullptr.
const char* CheckNewCustomer(const MemberRecord& record);

// The possible doubles of a new customer, at most 13 of each in number order:
// the customers whose name is the new one in full, and those whose road starts
// with the new road (an empty road: everyone).
struct Doubles {
  std::vector<ListRow> by_name;
  std::vector<ListRow> by_address;
};
Doubles FindDoubles(const MemberRecord& record);

// Add: the card, the checks (a refusal reopens it with what was typed), the
// lists of possible doubles, "Store record?", the insert; "&Next" starts again.
void Addcustomer();
// Amend of the customer in G().member: the card in the amend layout, the
// checks, the rewrite, and the before and after entry in the activity log.
void Amendfoundcustomer();
// The prompts of Amend and Delete ("Number / name") and the customer find.
void Amendcustomer();
void Deletecustomer();
// Deletes the customer in G().member (found by the last lookup) and logs it.
bool Removecustomer();
// Offers, one by one, the non-taxable customers not used for six months.
void Prunecustomers();
// The view of customer `number`, when there is one.
void Viewcustomer(int64_t number);
// "By address": the customers whose road starts with a text, 13 at a time.
void Customersbyaddress();

// The cut-off of Prune: today's month and year less six months.
struct MonthYear {
  int month;
  int year;
};
MonthYear PruneCutoff(int month, int year);

// The Customers menu's commands.
void InstallCustomerCommands();

}  // namespace tilo
