// SPDX-License-Identifier: MIT
// Changing money in the basket before it is paid: a new price for the last
// line, a price by weight, a discount on the whole sale (off the nett amount,
// tax following it, or off the total, tax untouched), and a line for something
// not kept in the inventory. The forms only collect figures; every rule of
// theirs is here, and each form's state is a plain struct its rules work on.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "sale/basket.h"

namespace tilo {

// The forms as the logic sees them. The screen installs the real ones; without
// one (tests, tools) nothing opens and the non-inventory form is cancelled.
class AdjustView {
 public:
  virtual ~AdjustView() = default;
  // "Adjust item price" and "Adjust by weight", modeless over the till.
  virtual void open_price_form() {}
  virtual void open_weight_form() {}
  // "Discount total", on the nett amount or (`on_total`) on the total.
  virtual void open_discount_form(bool /*on_total*/) {}
  // "Non inventory sale", modal: the line to add, or nothing on Cancel.
  virtual std::optional<BasketLine> non_inventory_form() { return std::nullopt; }
};
AdjustView& adjust_view();
// nullptr puts back the one without a screen.
void install_adjust_view(AdjustView* view);

// The four commands. Each opens its form when the basket allows it; the
// dispatcher has already kept them from a form that is open.
void Adjustprice();
void Adjustweight();
void Discountform();
void Noninventorysale();

// The five money figures of a line or of the basket as a form shows them.
struct Figures {
  std::string non_taxable, taxable, tax1, tax2, total;
};

// The last line as the price and weight forms hold it while they are open.
struct LineAdjust {
  bool found = false;  // the item is in the index and its record was read
  int line = -1;       // the basket line: always the last
  int32_t tax = 0;     // the item's tax code
  int32_t no_tax_rounding = 0;
  int32_t stock = 0;  // the item's quantity, for the list row
  float retail_price = 0;
  // The read-only block: number, description (UTF-8), cost (blank when the
  // clerk may not see it) and list price.
  std::string number, description, cost, list_price;
  Figures shown;  // what the five figure boxes show now
};

// Reads the last line and its item; a line not in the index opens blank.
LineAdjust Openadjust();
// The line's own figures, as they stand in the basket.
Figures Linefigures(int line);
// "Cost price" shows for clerks 1 and 2, and for everyone unless costs are hidden.
bool Costvisible();

// Each change of "Amended price" (the digits typed). False when the amount is
// above 20000.00: the figures are back to the line's, the box is to be emptied.
bool Amendprice(LineAdjust& a, const std::string& digits);
// The figures for amount `p` (from "Total" on): untaxed shows it as "Non taxable".
void Showamount(LineAdjust& a, double p, bool untaxed);
// "OK" on the price form: true when the basket took the figures and the form
// is to close.
bool Adjustok(LineAdjust& a, const std::string& digits);
// "Zero": every figure 0, then OK at once.
bool Adjustzero(LineAdjust& a);

// The weight form: "Price before tax" for a weight in hundredths of the unit
// priced, "%.2f".
std::string Weightprice(const LineAdjust& a, int64_t weight);
// A weight typed in its box: a whole number from 1 to 100000, else nothing.
std::optional<int64_t> Typedweight(const std::string& text);
// Each change of "Price before tax": an untaxed line keeps the price untaxed.
void Weightchanged(LineAdjust& a, const std::string& price);
// "OK" on the weight form: true when the basket took the figures.
bool Weightok(LineAdjust& a, const std::string& price);

// The discount form, as it stood when it opened.
struct DiscountAdjust {
  bool on_total = false;  // the discount comes off the total, tax untouched
  float opening_discount = 0, opening_subtotal = 0, opening_total = 0;
  Figures basket;         // the read-only figures
  int percent_index = 0;  // the list's entry at opening
  std::string discount;   // the digits "Discount" holds at opening
};
inline constexpr int kPercentEntries = 161;  // "0.00", then 0.50 to 80.00
std::string PercentText(int index);

DiscountAdjust Opendiscount();
// The digits a pick of the percent list writes into "Discount".
std::string Percentdiscount(const DiscountAdjust& d, int index);
// What "Amended total before tax" (or "Amended total") shows for the digits.
std::string Amendedtotal(const DiscountAdjust& d, const std::string& digits);
// "OK": true when the form is to close.
bool Discountok(const DiscountAdjust& d, const std::string& digits);
// Spreads a discount over the basket's nett amounts; tax follows the taxable part.
void Applydiscount(float amount);

// The line the non-inventory form makes of its boxes: the description typed
// (UTF-8), the price as typed with its point, and the two tax ticks. Nothing
// when the price is not a number.
std::optional<BasketLine> Noninventoryline(const std::string& description, const std::string& price,
                                           bool tax1, bool tax2);
// Adds a line made by the form; false after a refusal (a full basket or the
// transaction limit).
bool Addnoninventory(const BasketLine& line);

}  // namespace tilo
