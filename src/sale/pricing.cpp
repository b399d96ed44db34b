// SPDX-License-Identifier: MIT
#include "sale/pricing.h"

#include <charconv>
#include <cmath>
#include <string>

#include "core/film_record.h"
#include "core/state.h"
#include "core/text.h"
#include "platform/platform.h"
#include "sale/basket.h"

namespace tilo {
namespace {

// Room for the longest fixed-point text of a double.
constexpr size_t kTextRoom = 400;

// Fixed-point text of a value, exactly as printf's "%.Nf" in the C locale.
char* PrintFixed(char* buffer, double value, int decimals) {
  auto result =
      std::to_chars(buffer, buffer + kTextRoom, value, std::chars_format::fixed, decimals);
  return result.ptr;
}

// The text read back as a float, as strtof does it in the C locale.
float ParseFloat(const char* begin, const char* end, double fallback) {
  float out = 0.0f;
  auto result = std::from_chars(begin, end, out);
  if (result.ec != std::errc()) return float(fallback);
  return out;
}

}  // namespace

float Roundmoney(double value) {
  if (!std::isfinite(value)) return float(value);
  char text[kTextRoom];
  char* end = PrintFixed(text, value, 2);
  return ParseFloat(text, end, value);
}

float Roundtax(float value, int32_t no_tax_rounding) {
  if (!std::isfinite(value)) return value;
  char text[kTextRoom];
  char* end = PrintFixed(text, value, 3);
  // The third decimal alone decides. Writing 9 over a 5 keeps a value such as
  // 1.235, which has no exact binary form, from being rounded down by the printer.
  const bool up = end[-1] > '4';
  if (up) end[-1] = '9';
  float t = ParseFloat(text, end, value);
  end = PrintFixed(text, t, 2);
  t = ParseFloat(text, end, t);
  if (up && no_tax_rounding != 0) t = float(double(t) - 0.01);
  return t;
}

float Roundtax(float value, const FilmRecord& item) {
  return Roundtax(value, item.no_tax_rounding);
}

std::string MoneyText(double value) {
  char text[kTextRoom];
  if (!std::isfinite(value)) return std::isnan(value) ? "nan" : (value < 0 ? "-inf" : "inf");
  return std::string(text, PrintFixed(text, value, 2));
}

std::string ThreeDecimalText(double value) {
  char text[kTextRoom];
  if (!std::isfinite(value)) return std::isnan(value) ? "nan" : (value < 0 ? "-inf" : "inf");
  return std::string(text, PrintFixed(text, value, 3));
}

bool MoneyAbove(double a, double b) {
  return Roundmoney(a) > Roundmoney(b);
}

bool Lineprice(const FilmRecord& item, int mode, float* price) {
  const SettingsRecord& s = G().settings;
  float p = item.retail_price;
  if (s.trade_mode == 2) {
    if (s.trade_discount_mode == 0) {
      if (!(item.trade_price > 0.0f)) {
        Message("Trade price option active, no trade price", "Problem");
        return false;
      }
      p = item.trade_price;
    } else if (s.trade_percent != 0.0f) {
      p = Roundmoney(double(p) - double(s.trade_percent) / 100.0 * double(p));
    }
  }
  if (mode == kEntryFree) p = 0.0f;
  if (item.buy_one_get_one == 2 && Basketparity(item.number) != 0) p = 0.0f;
  *price = p;
  return true;
}

void Taxline(Basket& b, int i, float p, int32_t tax, int32_t no_tax_rounding) {
  if (p == 0.0f) return;
  const SettingsRecord& s = G().settings;
  if (tax == 0) {
    b.non_taxable[i] = p;
    b.total_non_taxable = Roundmoney(double(b.total_non_taxable) + p);
    b.total = Roundmoney(double(b.total) + p);
    return;
  }

  float t1 = 0.0f;
  if (s.tax1_switch != 0 && s.tax1_rate > 0 && tax != 3) {
    const bool threshold = s.tax1_threshold_on == 2;
    const double with_line = double(p) + double(b.total_taxable);
    t1 = float(double(s.tax1_rate) * double(p) / 10000.0);
    // The line that carries the taxable total over the threshold pays tax 1 for
    // all the taxable lines before it as well.
    if (threshold && MoneyAbove(s.tax1_threshold, b.total_taxable) &&
        MoneyAbove(with_line, s.tax1_threshold))
      t1 = float(double(s.tax1_rate) * with_line / 10000.0);
    t1 = Roundtax(t1, no_tax_rounding);
    if (threshold && !MoneyAbove(with_line, s.tax1_threshold)) t1 = 0.0f;
    b.total_tax1 = Roundmoney(double(b.total_tax1) + t1);
    b.tax1[i] = t1;
  }
  b.taxable[i] = p;
  b.total_taxable = Roundmoney(double(b.total_taxable) + p);

  float t2 = 0.0f;
  if (s.tax2_switch != 0 && s.tax2_rate > 0 && tax != 2) {
    const double base = s.tax_on_tax == 0 ? double(p) : double(p) + double(t1);
    t2 = Roundtax(float(double(s.tax2_rate) * base / 10000.0), no_tax_rounding);
    b.total_tax2 = Roundmoney(double(b.total_tax2) + t2);
    b.tax2[i] = t2;
  }
  b.total = Roundmoney(double(b.total) + double(p) + double(t1) + double(t2));
  b.line_total[i] = float(double(p) + double(t1) + double(t2));
}

float Priceincludingtax(bool without_tax) {
  const FilmRecord& item = G().film;
  const SettingsRecord& s = G().settings;
  const float p = item.retail_price;
  if (without_tax || item.tax == 0) return p;
  float t1 = 0.0f;
  if (s.tax1_switch != 0 && s.tax1_rate > 0 && item.tax != 3) {
    t1 = Roundtax(float(double(s.tax1_rate) * double(p) / 10000.0), item.no_tax_rounding);
    if (s.tax1_threshold_on == 2 && !MoneyAbove(p, s.tax1_threshold)) t1 = 0.0f;
  }
  float t2 = 0.0f;
  if (s.tax2_switch != 0 && s.tax2_rate > 0 && item.tax != 2) {
    const double base = s.tax_on_tax == 0 ? double(p) : double(p) + double(t1);
    t2 = Roundtax(float(double(s.tax2_rate) * base / 10000.0), item.no_tax_rounding);
  }
  return float(double(p) + double(t1) + double(t2));
}

TotalsPanel Totalspanel() {
  const Basket& b = G().basket;
  const SettingsRecord& s = G().settings;
  TotalsPanel panel;
  panel.transaction = "Transaction: " + std::to_string(s.transaction_number);
  if (b.line_count < 1) return panel;
  panel.show = true;
  panel.taxable = MoneyText(b.total_taxable);
  panel.non_taxable = MoneyText(b.total_non_taxable);
  panel.subtotal = MoneyText(b.subtotal);
  panel.tax1 = MoneyText(b.total_tax1);
  panel.tax2 = MoneyText(b.total_tax2);
  panel.total = MoneyText(b.total);
  if (b.total_discount != 0.0f) panel.discount = "(" + MoneyText(b.total_discount) + ")";
  if (s.second_currency_on == 2 && s.second_currency_rate > 0.0)
    panel.second_currency = Cp1252ToUtf8(FieldText(s.second_currency_symbol)) +
                            MoneyText(double(b.total) * s.second_currency_rate);
  return panel;
}

}  // namespace tilo
