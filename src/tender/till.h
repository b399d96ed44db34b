// SPDX-License-Identifier: MIT
// Cashing up: what the drawer should hold, from today's running totals alone
// (the logs are never read for it); the closeout that prints it, writes it to
// the activity log and logs the clerk off; and petty cash taken from the drawer.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "documents/print_target.h"

namespace tilo {

// The figures of the till. Credit sales and credit refunds are left out;
// customer balance payments are in. Refunds are held negative.
struct TillFigures {
  double initial = 0;       // the float the day started with
  double cash = 0;          // cash sales and balance payments in cash
  double cash_refunds = 0;  // negative
  double petty_cash = 0;    // taken out: positive
  double cash_back = 0;     // given out: positive
  double total_cash = 0;
  double ch = 0;
  double ch_refunds = 0;
  double eft = 0;
  double eft_refunds = 0;
  double till_total = 0;
};
TillFigures Tillfigures();

// The eleven figures as label and "%.2f" text. The forms show petty cash and
// cash back as the amounts they take away (negative); the activity log and the
// printout show them as they were paid out.
using TillRows = std::vector<std::pair<std::string, std::string>>;
TillRows Tillrows(bool paid_out_negative);

inline constexpr const char* kTillNote =
    "The figures include customer balance payments and exclude credit sales and credit "
    "refunds.";
inline constexpr const char* kDailyResetNote =
    "Note: The daily totals are automatically reset at the start of each day.";

// "HH:MM" and the date of the clock's present reading in the short form, as the
// closeout prints them.
std::string Closeoutmoment();

// The closeout's entry in the activity log. False, after "Fatal error", when
// the log can't be opened.
bool Logcloseout();
// The closeout page: the store's name, the moment, the clerk and the figures.
void Printcloseout(PrintTarget& target);
// "Print, close and log off": the printer dialog and one page. False when the
// operator cancels the dialog.
bool Printcloseoutjob();

// "Till closeout". `form` shows the figures and answers how it was left (a
// print has already happened when it answers Close after "Print").
enum class CloseoutChoice { Cancel, Close };
using CloseoutFormRunner = std::function<CloseoutChoice()>;
void Tillcloseout(const CloseoutFormRunner& form);

// "Petty cash payment": asks for the amount and adds it to today's petty cash.
void Pettycash();

}  // namespace tilo
