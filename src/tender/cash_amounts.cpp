// SPDX-License-Identifier: MIT
// The arithmetic of the cash form: what the buttons offer and what they settle.
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "tender/cash.h"

namespace tilo {
namespace {

// A money amount as its two-decimal text reads back.
double TwoDecimals(double value) {
  char text[64];
  std::snprintf(text, sizeof text, "%.2f", value);
  return std::atof(text);
}

}  // namespace

int64_t Tocents(float value) {
  if (value <= 0) return 0;
  char text[64];
  std::snprintf(text, sizeof text, "%.2f", double(value * 10000.0f / 100.0f));
  return std::atoll(text);  // the integer part: the digits before the point
}

std::array<double, 3> Notebuttons(float total) {
  std::array<double, 3> b{5.00, 10.00, 20.00};
  if (total > 5.00f) {
    b[0] = std::ceil(total / 5.0) * 5;
    b[1] = std::ceil(total / 10.0) * 10;
    // The third steps in fifties, although its label starts at twenty.
    b[2] = std::ceil(total / 50.0) * 50;
    // A total that is itself a note moves every button one note up, so none
    // offers the exact money twice.
    if (double(total) == b[0]) {
      b[0] += 5;
      b[1] += 10;
      b[2] += 50;
    }
    if (b[1] == b[0]) b[1] += 10;
    if (b[2] == b[1]) b[2] += 50;
  }
  return b;
}

std::string Amounttext(const std::string& typed, bool on_ok) {
  const std::string digits = typed.substr(0, 19);
  if (digits.empty()) return digits;
  if (digits.size() == 1) return (on_ok ? "." : ".0") + digits;
  return digits.substr(0, digits.size() - 2) + "." + digits.substr(digits.size() - 2);
}

ChangeShown Livechange(const std::string& typed, float total) {
  const std::string text = Amounttext(typed, false);
  const double amount = std::atof(text.c_str());
  const int64_t due = Tocents(total);
  const int64_t given = Tocents(float(amount));
  if (due > given) return {true, ""};
  if (due == given) return {false, "0.00"};
  char change[64];
  std::snprintf(change, sizeof change, "%.2f", amount - double(total));
  return {false, change};
}

std::optional<CashSettled> Cashok(const std::string& typed, const std::string& change_shown,
                                  float total) {
  if (typed.empty()) return std::nullopt;
  const double amount = std::atof(Amounttext(typed, true).c_str());
  if (TwoDecimals(total) > amount) return std::nullopt;
  CashSettled s;
  s.change_due = std::atof(change_shown.c_str());
  s.amount_tendered = double(total) + s.change_due;
  return s;
}

std::optional<CashSettled> Cashnote(double note, float total) {
  if (double(total) > note) return std::nullopt;
  return CashSettled{note - TwoDecimals(total), note};
}

CashSettled Cashexact(float total) {
  return {0, double(total)};
}

}  // namespace tilo
