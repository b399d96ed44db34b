// SPDX-License-Identifier: MIT
// The one-page letters to a customer: the two debtor letters (a reminder and a
// final notice of the balance owed) and the printed customer details.
#pragma once

#include <string>

#include "documents/print_target.h"

namespace tilo {

struct MemberRecord;

inline constexpr int kDebtorLetter1 = 10;
inline constexpr int kDebtorLetter2 = 12;
inline constexpr int kCustomerDetails = 16;

// Draws the letter or details of `kind` for `customer` on the open page. The
// page number is left alone: each copy is one page.
void Printletter(PrintTarget& target, int kind, const MemberRecord& customer);

// The terms as the details print them: the credit period, then the discount
// ("30 days, Nett"); nothing for a band outside 1 to 8.
std::string Detailterms(int32_t terms);
// A last used / last payment stamp as "hh:mm dd/mm/yyyy"; empty unless it
// holds a real time and date ("NEW" and blanks print nothing).
std::string Stamptext(const char* stamp, size_t width);

// The commands: asks for the customer, refuses a letter when nothing is owed,
// and prints through the printer dialog with the abort box.
void Debtorletter(int kind);

}  // namespace tilo
