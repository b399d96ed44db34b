// SPDX-License-Identifier: MIT
#include "tender/split.h"

#include <cstdio>
#include <cstdlib>

#include "core/state.h"
#include "core/text.h"
#include "devices/pole.h"
#include "platform/platform.h"
#include "sale/commit.h"
#include "sale/pricing.h"
#include "tender/eft.h"
#include "tender/tender_view.h"

namespace tilo {
namespace {

// The typed cash part as a number: no point typed, the last two digits are the
// pence, and one digit is pence too.
double Cashpart(const std::string& typed) {
  const std::string text = Amounttext(typed, false);
  SetField(G().amount_text, text);
  return std::atof(text.c_str());
}

// A money amount as its two-decimal text reads back.
double TwoDecimals(double value) {
  char text[64];
  std::snprintf(text, sizeof text, "%.2f", value);
  return std::atof(text);
}

bool EmptyBasket() {
  if (G().basket.line_count > 0) return false;
  Message("Please select items", "Problem");
  tender_view().focus_item_box();
  return true;
}

// Stamps a sale paid by cheque or split: the moment, the number it commits
// under, the clerk.
void Stamp(double change_due, double amount_tendered) {
  State& g = G();
  Stampbasket();
  g.tender_form_open = 0;
  g.change_due = change_due;
  g.amount_tendered = amount_tendered;
  g.basket.transaction_number = g.settings.transaction_number;
  g.basket.clerk = int32_t(g.settings.clerk_number);
}

void Close() {
  Closetender();
  Finishsale();
  if (G().settings.sound_off == 0) platform().play_sound(8004);
  tender_view().focus_item_box();
}

}  // namespace

bool Startsplit() {
  if (EmptyBasket()) return false;
  State& g = G();
  if (g.tender_form_open != 0) return false;
  // The pole is told of the total only when the sale closes.
  g.tender_form_open = 2;
  SetField(g.amount_text, "");
  return true;
}

std::string Splitrest(const std::string& typed, float total) {
  const float cash = float(Cashpart(typed));
  if (!(total > cash)) return "";
  return MoneyText(total - cash);
}

bool Splitok(const std::string& typed, SplitOther other) {
  Basket& b = G().basket;
  const double amount = Cashpart(typed);
  if (amount > TwoDecimals(b.total)) {
    Message("Cash exceeds total", "Problem");
    return false;
  }
  b.tender_cash = float(amount);
  // Only the part ticked is written: the other keeps what it held.
  if (other == SplitOther::Cheque)
    b.tender_ch = b.total - b.tender_cash;
  else
    b.tender_eft = b.total - b.tender_cash;
  return true;
}

void Cancelsplit() {
  State& g = G();
  g.basket.tender_cash = 0;
  g.basket.tender_ch = 0;
  g.basket.tender_eft = 0;
  g.tender_form_open = 0;
  tender_view().focus_item_box();
}

std::optional<CashSettled> Splitcashok(const std::string& typed, const std::string& change_shown) {
  const Basket& b = G().basket;
  std::optional<CashSettled> settled = Cashok(typed, change_shown, b.tender_cash);
  if (settled) settled->amount_tendered += double(b.tender_ch) + double(b.tender_eft);
  return settled;
}

void Paysplit(const CashSettled& settled) {
  const State& g = G();
  const bool charge = g.settings.eft_active == 2.0 && Tocents(g.basket.tender_eft) > 0;
  if (charge && !Eftexchange(g.basket.tender_eft)) {
    // The terminal has told why; the basket waits for another tender.
    Cancelsplit();
    return;
  }
  Finishsplit(settled);
}

void Finishsplit(const CashSettled& settled) {
  Stamp(settled.change_due, settled.amount_tendered);
  // The cash part stays what the operator split off, not the total.
  SetField(G().basket.payment_type, "Split");
  Close();
}

void Chsale() {
  if (EmptyBasket()) return;
  State& g = G();
  if (g.tender_form_open != 0) return;
  Basket& b = g.basket;
  Stamp(0, b.total);
  b.tender_ch = b.total;
  SetField(b.payment_type, "CH");
  if (g.settings.pole_enabled) Poletotal(b.total);
  Close();
}

}  // namespace tilo
