// SPDX-License-Identifier: MIT
// The cash tender, the shortest way to pay and the pattern of the others: the
// cash form's rules (the quick note buttons, the change shown while typing, the
// checks of its buttons), the filling of the basket, and Closetender, the closing
// step every tender shares: drawer, pole, document, before the commit.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace tilo {

// A float amount in whole cents, untroubled by float noise: at or below zero 0,
// else the integer part of "%.2f" of value x 10000 / 100.
int64_t Tocents(float value);

// The values of the three quick note buttons for a basket total.
std::array<double, 3> Notebuttons(float total);

// The typed digits (at most 19 used) with the point put in, as the change shown
// while typing reads them: one digit d is ".0d", more digits have the last two
// after a point. On "OK" (`on_ok`) one digit d is ".d", tenths.
std::string Amounttext(const std::string& typed, bool on_ok);

// What "Change" shows while the operator types.
struct ChangeShown {
  bool short_of_total = false;  // empty on red; else the change on pale yellow
  std::string text;
};
ChangeShown Livechange(const std::string& typed, float total);

// What a button of the cash form settles: the change and the money tendered.
struct CashSettled {
  double change_due = 0;
  double amount_tendered = 0;
};
// "OK" with the typed digits and the text "Change" shows: nullopt when the money
// is short (an empty field is short even of nothing). The change is the number
// the form shows, so a figure typed short of the total there counts as none.
std::optional<CashSettled> Cashok(const std::string& typed, const std::string& change_shown,
                                  float total);
// A quick note button of value `note`: nullopt when the total is above it.
std::optional<CashSettled> Cashnote(double note, float total);
// "Exact amount".
CashSettled Cashexact(float total);

// "Cash F5": false (after "Please select items" for an empty basket) when the
// form is not to open; otherwise shows the total on the pole, sets
// tender_form_open and works out the note buttons.
bool Starttender();
// The form closed without payment: the basket is untouched.
void Canceltender();
// Takes a settled payment: stamps and fills the basket, Closetender, the
// commit, the sale sound.
void Finishcash(const CashSettled& settled);
// Drawer, pole, then the summary box or the automatic prints, then the kitchen copy.
void Closetender();

// The time and date texts of a sale stamped at `now` ("%02d:%02d", the short
// date or "D:%2d M:%2d Y:%d").
void Stampbasket();

}  // namespace tilo
