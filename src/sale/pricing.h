// SPDX-License-Identifier: MIT
// The money of a sale. Amounts are 32-bit floats; every running sum passes
// through its two-decimal text and back (Roundmoney), every tax through the
// third-decimal rule (Roundtax). The text is always the C locale's, whatever
// locale the process runs in: a comma decimal separator changes no total.
#pragma once

#include <cstdint>
#include <string>

namespace tilo {

struct Basket;
struct FilmRecord;

// The value printed with two decimals and read back as a float.
float Roundmoney(double value);
// A tax amount rounded on its third decimal alone: 0 to 4 down, 5 to 9 up. With
// `no_tax_rounding` set, a rounding up is taken back by a penny.
float Roundtax(float value, int32_t no_tax_rounding);
float Roundtax(float value, const FilmRecord& item);

// "%.2f" of the value, with a point as the decimal separator in every locale.
std::string MoneyText(double value);
// "%.3f", the same way.
std::string ThreeDecimalText(double value);
// True when a is above b, both taken at two decimals.
bool MoneyAbove(double a, double b);

// The price of a new line, before the limit test: the retail price, the trade
// price or the trade percentage in trade mode, 0 for a free component (mode 2)
// and for the free one of a buy-one-get-one pair. False after "Trade price option
// active, no trade price": the entry is given up.
bool Lineprice(const FilmRecord& item, int mode, float* price);

// Tax and totals of line `line` of the basket at price p, for an item with tax code
// `tax` and its `no_tax_rounding`. A price of 0 takes no tax and changes nothing.
// Does not touch the cost or the sub total: the caller adds those for every line.
void Taxline(Basket& basket, int line, float p, int32_t tax, int32_t no_tax_rounding);

// The price a label prints for the item in the FilmRecord buffer, with both taxes
// on top unless `without_tax` (or the item is not taxed).
float Priceincludingtax(bool without_tax);

// The figures of the totals panel, as text ready to draw. `show` is false for an
// empty basket, which shows no numbers at all.
struct TotalsPanel {
  bool show = false;
  std::string taxable, non_taxable, subtotal, tax1, tax2, total;
  std::string discount;         // "(%.2f)", empty when there is no discount
  std::string second_currency;  // symbol and amount, empty when not shown (UTF-8)
  std::string transaction;      // "Transaction: %d", the number the next sale takes
};
TotalsPanel Totalspanel();

}  // namespace tilo
