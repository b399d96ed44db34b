// SPDX-License-Identifier: MIT
#include "tender/adjust.h"

#include <charconv>
#include <cstdio>
#include <cstring>

#include "core/film_record.h"
#include "core/inventory.h"
#include "core/state.h"
#include "core/text.h"
#include "devices/pole.h"
#include "platform/platform.h"
#include "sale/pricing.h"
#include "sale/sale_events.h"
#include "tender/cash.h"
#include "tender/tender_view.h"

namespace tilo {
namespace {

constexpr const char* kProblem = "Problem";
// The highest amended price of a line, and the highest total of a basket.
constexpr double kPriceLimit = 20000.00;
constexpr double kTransactionLimit = 99999.99;

AdjustView default_view;
AdjustView* current_view = &default_view;

// The whole text as a number, in any locale; nothing when it is not one.
std::optional<double> Number(const std::string& text) {
  double value = 0;
  const char* end = text.data() + text.size();
  auto [ptr, ec] = std::from_chars(text.data(), end, value);
  if (text.empty() || ec != std::errc() || ptr != end) return std::nullopt;
  return value;
}

// The digits of an amount box, with the point put in before the last two.
double Typedamount(const std::string& digits) {
  return Number(Amounttext(digits, false)).value_or(0);
}

// The two taxes on a price for a tax code: 1 both, 2 tax 1 only, 3 tax 2 only.
void Taxesfor(double p, int32_t code, int32_t no_tax_rounding, float* t1, float* t2) {
  const SettingsRecord& s = G().settings;
  *t1 = *t2 = 0;
  if (s.tax1_switch != 0 && s.tax1_rate > 0 && (code == 1 || code == 2))
    *t1 = Roundmoney(Roundtax(float(double(s.tax1_rate) * p / 10000.0), no_tax_rounding));
  if (s.tax2_switch != 0 && s.tax2_rate > 0 && (code == 1 || code == 3)) {
    const double base = s.tax_on_tax != 0 ? p + double(*t1) : p;
    *t2 = Roundmoney(Roundtax(float(double(s.tax2_rate) * base / 10000.0), no_tax_rounding));
  }
}

bool PoleOn() {
  return G().settings.pole_enabled == 2;
}

// The form's work is done: the commands are free again and the focus goes home.
void Endform() {
  G().tender_form_open = 0;
  tender_view().focus_item_box();
}

bool Withinlimit(double new_total) {
  if (!MoneyAbove(new_total, kTransactionLimit)) return true;
  Message("Transaction limit 100000.00", kProblem);
  return false;
}

// Adds the change of every figure shown that is a number to the basket, and
// keeps the new figure on the line. Nett changes move the sub total too.
void Takefigures(const LineAdjust& a) {
  Basket& b = G().basket;
  const int i = a.line;
  struct Slot {
    const std::string& text;
    float& line;
    float& sum;
    bool nett;
  } slots[] = {
      {a.shown.non_taxable, b.non_taxable[i], b.total_non_taxable, true},
      {a.shown.taxable, b.taxable[i], b.total_taxable, true},
      {a.shown.tax1, b.tax1[i], b.total_tax1, false},
      {a.shown.tax2, b.tax2[i], b.total_tax2, false},
      {a.shown.total, b.line_total[i], b.total, false},
  };
  for (Slot& s : slots) {
    const std::optional<double> value = Number(s.text);
    if (!value || *value < 0) continue;
    const float now = Roundmoney(*value);
    const double change = double(now) - double(s.line);
    s.sum = Roundmoney(double(s.sum) + change);
    if (s.nett) b.subtotal = Roundmoney(double(b.subtotal) + change);
    s.line = now;
  }
}

// The adjusted line's row. Here the number leads only when the list otherwise
// shows descriptions alone, the reverse of a row added by a scan.
void Rewriterow(const LineAdjust& a) {
  const Basket& b = G().basket;
  BasketList& list = G().basket_list;
  if (list.rows.empty()) return;
  std::string row = Cp1252ToUtf8(FieldText(b.description[a.line], 40)) + " (" +
                    std::to_string(a.stock) + ")  " + MoneyText(b.line_total[a.line]);
  if (G().settings.cart_description_only == 2) row = a.number + "  " + row;
  list.rows.back() = row;
  sale_events().basket_list_changed();
}

// Steps shared by both adjust forms once the new figures are accepted.
bool Commitline(const LineAdjust& a) {
  const Basket& b = G().basket;
  const double new_total = Number(a.shown.total).value_or(b.line_total[a.line]);
  if (!Withinlimit(double(b.total) - double(b.line_total[a.line]) + new_total)) return false;
  Takefigures(a);
  Rewriterow(a);
  Refreshtotals();
  Endform();
  return true;
}

bool Lastlineininventory(const char* none_message) {
  const Basket& b = G().basket;
  if (b.line_count <= 0) {
    if (none_message) Message(none_message, kProblem);
    return false;
  }
  if (b.number[b.line_count - 1] == 0) {
    Message("Non inventory item", kProblem);
    return false;
  }
  return true;
}

std::string Money(float value) {
  return MoneyText(value);
}

}  // namespace

AdjustView& adjust_view() {
  return *current_view;
}
void install_adjust_view(AdjustView* view) {
  current_view = view ? view : &default_view;
}

void Adjustprice() {
  if (Lastlineininventory(nullptr)) adjust_view().open_price_form();
}

void Adjustweight() {
  if (Lastlineininventory("No items")) adjust_view().open_weight_form();
}

void Discountform() {
  if (G().basket.line_count <= 0) return;
  adjust_view().open_discount_form(G().settings.discount_on_total == 2);
}

void Noninventorysale() {
  // The form is not worth filling in when the line could not be added.
  if (G().basket.line_count >= kBasketLines) {
    Message("Transaction limit 400 items", kProblem);
    return;
  }
  if (std::optional<BasketLine> line = adjust_view().non_inventory_form()) Addnoninventory(*line);
}

bool Costvisible() {
  const SettingsRecord& s = G().settings;
  return s.clerk_number == 1 || s.clerk_number == 2 || s.hide_cost != 2;
}

Figures Linefigures(int i) {
  const Basket& b = G().basket;
  return {Money(b.non_taxable[i]), Money(b.taxable[i]), Money(b.tax1[i]), Money(b.tax2[i]),
          Money(b.line_total[i])};
}

LineAdjust Openadjust() {
  LineAdjust a;
  const Basket& b = G().basket;
  a.line = b.line_count - 1;
  if (a.line < 0) return a;
  const int64_t number = b.number[a.line];
  // Fetchfilm tells of a film.dat it can't read; either way the form opens blank.
  if (!G().films.Contains(number) || Fetchfilm(number) == 0) return a;
  const FilmRecord& item = G().film;
  a.found = true;
  a.tax = item.tax;
  a.no_tax_rounding = item.no_tax_rounding;
  a.stock = item.quantity;
  a.retail_price = item.retail_price;
  a.number = std::to_string(static_cast<long long>(number));
  a.description = Cp1252ToUtf8(FieldText(b.description[a.line], 40));
  a.cost = Costvisible() ? Money(item.cost_price) : "";
  a.list_price = Money(item.retail_price);
  a.shown = Linefigures(a.line);
  return a;
}

bool Amendprice(LineAdjust& a, const std::string& digits) {
  if (!a.found) return true;
  const double amount = Typedamount(digits);
  if (MoneyAbove(amount, kPriceLimit)) {
    a.shown = Linefigures(a.line);
    Message("Invalid price, limit 20000.00", kProblem);
    return false;
  }
  if (amount > 0) Showamount(a, amount, a.tax == 0);
  return true;
}

void Showamount(LineAdjust& a, double p, bool untaxed) {
  a.shown.total = MoneyText(p);
  if (untaxed) {
    a.shown.non_taxable = MoneyText(p);
    return;
  }
  float t1 = 0, t2 = 0;
  Taxesfor(p, a.tax, a.no_tax_rounding, &t1, &t2);
  a.shown.taxable = MoneyText(p);
  a.shown.tax1 = Money(t1);
  a.shown.tax2 = Money(t2);
  a.shown.total = Money(Roundmoney(p + double(t1) + double(t2)));
}

bool Adjustok(LineAdjust& a, const std::string& digits) {
  if (!a.found) {
    Endform();
    return true;
  }
  if (Typedamount(digits) < 0) {
    Message("Invalid price", kProblem);
    return false;
  }
  const Basket& b = G().basket;
  const double new_total = Number(a.shown.total).value_or(b.line_total[a.line]);
  // A discount already given must still fit inside the sale.
  if (b.total_discount > 0 &&
      Roundmoney(double(b.total) - (double(b.line_total[a.line]) - new_total)) < 0) {
    Message("Discount exceeds transaction", kProblem);
    return false;
  }
  return Commitline(a);
}

bool Adjustzero(LineAdjust& a) {
  if (a.found) a.shown = {"0", "0", "0", "0", "0"};
  return Adjustok(a, "0");
}

std::string Weightprice(const LineAdjust& a, int64_t weight) {
  // In the float arithmetic of the price itself, so the pennies match the list price.
  return MoneyText(a.retail_price / 100.0f * float(weight));
}

std::optional<int64_t> Typedweight(const std::string& text) {
  if (text.empty() || text.size() > 6) return std::nullopt;
  int64_t w = 0;
  for (char c : text) {
    if (c < '0' || c > '9') return std::nullopt;
    w = w * 10 + (c - '0');
  }
  if (w < 1 || w > 100000) return std::nullopt;
  return w;
}

void Weightchanged(LineAdjust& a, const std::string& price) {
  if (!a.found) return;
  const std::optional<double> p = Number(price);
  if (p) Showamount(a, *p, G().basket.non_taxable[a.line] > 0);
}

bool Weightok(LineAdjust& a, const std::string& price) {
  if (!a.found) {
    Endform();
    return true;
  }
  if (Number(price).value_or(0) < 0) {
    Message("Invalid price", kProblem);
    return false;
  }
  return Commitline(a);
}

std::string PercentText(int index) {
  if (index == 0) return "0.00";
  return MoneyText(index * 0.5);
}

DiscountAdjust Opendiscount() {
  const State& g = G();
  const Basket& b = g.basket;
  DiscountAdjust d;
  d.on_total = g.settings.discount_on_total == 2;
  d.opening_discount = b.total_discount;
  d.opening_subtotal = b.subtotal;
  d.opening_total = b.total;
  d.basket = {Money(b.total_non_taxable), Money(b.total_taxable), Money(b.total_tax1),
              Money(b.total_tax2), Money(b.total)};
  const int32_t rate = g.settings.discount_button_rate;
  const float base =
      d.on_total ? b.total : Roundmoney(double(b.total_non_taxable) + b.total_taxable);
  if (rate > 0 && rate <= 80 && base > 0) {
    d.percent_index = 2 * rate;
    char text[64];
    std::snprintf(text, sizeof text, "%.f", double(base) * rate);
    d.discount = text;
  }
  return d;
}

std::string Percentdiscount(const DiscountAdjust& d, int index) {
  const Basket& b = G().basket;
  const float base = d.on_total ? b.total : float(double(b.total_non_taxable) + b.total_taxable);
  // Whole cents of base x 0.5 x index, cut down; counted in cents so that float
  // noise never loses a penny of an exact result.
  return std::to_string(static_cast<long long>(Tocents(base) * index / 200));
}

std::string Amendedtotal(const DiscountAdjust& d, const std::string& digits) {
  const double D = Typedamount(digits);
  const Basket& b = G().basket;
  if (!(D > 0)) return "";
  if (d.on_total) {
    if (MoneyAbove(D, b.total)) return "";
    return MoneyText(double(d.opening_discount) + d.opening_total - D);
  }
  if (!MoneyAbove(b.subtotal, D)) return "";
  return MoneyText(double(d.opening_subtotal) - D);
}

bool Discountok(const DiscountAdjust& d, const std::string& digits) {
  Basket& b = G().basket;
  const double D = Typedamount(digits);
  const double nett =
      d.on_total ? b.total : Roundmoney(double(b.total_non_taxable) + b.total_taxable);
  if (MoneyAbove(D, nett)) {
    Message("Invalid discount", kProblem);
    return false;
  }
  if (D >= 0) {
    if (d.on_total) {
      // The discount replaces any earlier one; tax is not touched.
      b.total_discount = Roundmoney(D);
      b.total = Roundmoney(double(d.opening_total) + d.opening_discount - D);
    } else {
      Applydiscount(Roundmoney(D));
    }
    Refreshtotals();
  }
  Endform();
  return true;
}

void Applydiscount(float D) {
  Basket& b = G().basket;
  const SettingsRecord& s = G().settings;
  float& N = b.total_non_taxable;
  float& T = b.total_taxable;
  float& S = b.subtotal;
  const float old_t = T;
  b.total_discount = Roundmoney(double(b.total_discount) + D);
  if (N == 0 && T != 0) {
    T = Roundmoney(double(T) - D);
  } else if (N != 0 && T != 0) {
    const float old_n = N;
    // The nett parts share the discount in proportion.
    if (S != 0) N = Roundmoney(double(N) - double(N) / double(S) * D);
    T = Roundmoney(double(T) - (double(D) - (double(old_n) - double(N))));
  } else {
    N = Roundmoney(double(N) - D);
    S = Roundmoney(double(S) - D);
    b.total = Roundmoney(double(b.total) - D);
    return;
  }
  S = Roundmoney(double(S) - D);
  // Tax follows the taxable part down, and goes when it falls to the threshold.
  if (b.total_tax1 > 0) {
    if (s.tax1_threshold_on == 2 && !MoneyAbove(T, s.tax1_threshold))
      b.total_tax1 = 0;
    else
      b.total_tax1 = Roundmoney(double(b.total_tax1) / double(old_t) * double(T));
  }
  if (b.total_tax2 > 0) b.total_tax2 = Roundmoney(double(b.total_tax2) / double(old_t) * double(T));
  b.total = Roundmoney(double(S) + b.total_tax1 + b.total_tax2);
}

std::optional<BasketLine> Noninventoryline(const std::string& description, const std::string& price,
                                           bool tax1, bool tax2) {
  const std::optional<double> p = Number(price);
  if (!p || *p < 0) return std::nullopt;
  BasketLine line;
  std::string text = Utf8ToCp1252(description);
  if (text.size() > sizeof line.description - 1) text.resize(sizeof line.description - 1);
  std::memcpy(line.description, text.data(), text.size());
  const float amount = Roundmoney(*p);
  if (!tax1 && !tax2) {
    line.non_taxable = line.line_total = amount;
    return line;
  }
  line.taxable = amount;
  Taxesfor(amount, tax1 && tax2 ? 1 : tax1 ? 2 : 3, 0, &line.tax1, &line.tax2);
  line.line_total = Roundmoney(double(amount) + line.tax1 + line.tax2);
  return line;
}

bool Addnoninventory(const BasketLine& line) {
  State& g = G();
  Basket& b = g.basket;
  if (b.line_count >= kBasketLines) {
    Message("Transaction limit 400 items", kProblem);
    return false;
  }
  if (!Withinlimit(double(b.total) + line.line_total)) return false;
  const int i = b.line_count;
  SetLine(b, i, line);
  b.number[i] = 0;
  b.total_cost = float(double(b.total_cost) + line.cost);
  b.subtotal = Roundmoney(double(b.subtotal) + line.non_taxable + line.taxable);
  // The line counts in the totals as any other, so the sale is paid for it.
  b.total_non_taxable = Roundmoney(double(b.total_non_taxable) + line.non_taxable);
  b.total_taxable = Roundmoney(double(b.total_taxable) + line.taxable);
  b.total_tax1 = Roundmoney(double(b.total_tax1) + line.tax1);
  b.total_tax2 = Roundmoney(double(b.total_tax2) + line.tax2);
  b.total = Roundmoney(double(b.total) + line.line_total);
  AddBasketRow(Cp1252ToUtf8(FieldText(b.description[i], 40)) + "  " + Money(b.line_total[i]));
  ++b.line_count;
  Refreshtotals();
  if (PoleOn()) Poleitem(b.description[i], b.line_total[i]);
  return true;
}

}  // namespace tilo
