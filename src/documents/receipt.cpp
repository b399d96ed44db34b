// SPDX-License-Identifier: MIT
#include "documents/receipt.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include <unistd.h>

#include "core/clock.h"
#include "core/packed.h"
#include "core/state.h"
#include "core/text.h"
#include "documents/print_job.h"
#include "documents/wording.h"
#include "platform/files.h"
#include "platform/platform.h"
#include "sale/basket.h"
#include "sale/pricing.h"
#include "tender/printdocument.h"

namespace tilo {
namespace {

constexpr const char* kDoubleRule = "========================";
constexpr const char* kSingleRule = "------------------------";
// A last row of two spaces gives the printer something to feed to.
constexpr const char* kFeedRow = "  ";

// Barcode geometry in hundredths of a millimetre.
constexpr int kModule = 40;
constexpr int kBarHeight = 1000;
constexpr int kCharacterModules = 12;
constexpr int kCharacterPitch = 13;

std::string Money(double value) {
  return MoneyText(value);
}

std::string Number(int64_t value) {
  return std::to_string(value);
}

bool On(int32_t flag) {
  return flag == 2;
}

std::string Heading(const char (&line)[42]) {
  return FieldText(line);
}

// The description of a basket line, cut to 20 characters when the shop asks.
std::string Description(const Basket& b, int i) {
  std::string d = FieldText(b.description[i]);
  if (On(G().settings.limit_description_20) && d.size() > 20) d.resize(20);
  return d;
}

std::string ClerkText() {
  const SettingsRecord& s = G().settings;
  return Number(s.clerk_number) + ", " + ClerkName(s, s.clerk_number);
}

// The wording of the payment line: cash unless a later rule says otherwise.
std::string PaymentText(const Basket& b) {
  std::string text = Wording(kPaymentCash);
  if (b.tender_cash == 0 && b.tender_ch != 0) text = Wording(kPaymentCheque);
  if (b.tender_cash == 0 && b.tender_eft != 0) text = Wording(kPaymentEft);
  if (b.tender_cash == 0 && b.tender_eft != 0 && b.cash_back > 0)
    text = Wording(kPaymentEft) + " (CB: " + Money(b.cash_back) + ")";
  if (b.tender_cash == 0 && FieldText(b.payment_type) == "Credit") text = Wording(kPaymentCredit);
  if (b.tender_cash > 0 && b.tender_ch > 0) text = Wording(kPaymentChWithCash);
  if (b.tender_cash > 0 && b.tender_eft > 0) text = Wording(kPaymentEftWithCash);
  return text;
}

std::string TaxText(const char (&name)[6], float amount, int64_t rate) {
  const double percent = rate != 0 ? rate / 100.0 : 0;
  return FieldText(name) + ": " + Money(amount) + " (" + Money(percent) + "%)";
}

// The moment of printing: "HH:MM" and the date as "MMM d yyyy".
std::string PrintingMoment() {
  Timestamp();
  const State& g = G();
  char time[8];
  std::snprintf(time, sizeof time, "%c%c:%c%c", g.stamp_text[0], g.stamp_text[1], g.stamp_text[3],
                g.stamp_text[4]);
  return std::string(time) + " " +
         Utf8ToCp1252(platform().month_date(g.now.year, g.now.month, g.now.day));
}

// The text of an element; `by_line` when it is placed by its line number.
// Returns false when the element prints nothing at all.
bool ElementText(int element, bool by_line, std::string* text) {
  const State& g = G();
  const SettingsRecord& s = g.settings;
  const Basket& b = g.basket;
  const HeadingLines& h = g.heading;
  switch (element) {
    case 0:
      *text = Heading(h.site_name);
      return true;
    case 1:
      *text = Heading(h.site_road);
      return true;
    case 2:
      *text = Heading(h.site_area);
      return true;
    case 3:
      *text = Heading(h.site_county);
      return true;
    case 4:
      *text = Heading(h.site_postcode);
      return true;
    case 5:
      *text = Heading(h.site_telephone);
      return true;
    case 6:
      *text = PrintingMoment();
      return true;
    case 7:
      *text = FieldText(s.receipt_footer);
      return true;
    case 8:
      *text = Wording(kCustomer) + ": " + Number(g.member.number);
      return true;
    case 9:
      *text = FieldText(b.customer_name);
      return true;
    case 10:
      *text = Wording(kNonTaxable) + ": " + Money(b.total_non_taxable);
      return true;
    case 11:
      *text = Wording(kTaxable) + ": " + Money(b.total_taxable);
      return true;
    case 12:
      *text = TaxText(s.tax1_name, b.total_tax1, s.tax1_rate);
      return true;
    case 13:
      *text = TaxText(s.tax2_name, b.total_tax2, s.tax2_rate);
      return true;
    case 14: {
      const std::string symbol = FieldText(s.currency_symbol);
      if (by_line && On(s.custom_second_currency) && s.second_currency_on > 0 &&
          s.second_currency_rate > 0) {
        *text = Wording(kTotal) + " " + symbol + Money(b.total) + "  " +
                FieldText(s.second_currency_symbol) + Money(b.total * s.second_currency_rate);
      } else {
        *text = Wording(kTotal) + ": " + symbol + Money(b.total);
      }
      return true;
    }
    case 15:
      *text = ClerkText();
      return true;
    case 16: {
      const bool refund = FieldText(b.payment_type) == "Refund";
      *text = Wording(refund ? kRefund : kReceipt) + ": " + Number(b.transaction_number);
      return true;
    }
    case 17:
      *text = Wording(kTendered) + ": " + Money(g.amount_tendered);
      return true;
    case 18:
      if (FieldText(b.payment_type) == "Refund") return false;
      *text = Wording(kCashChange) + ": " + Money(g.change_due);
      return true;
    case 19:
      *text = FieldText(s.custom_text1);
      return true;
    case 20:
      *text = FieldText(s.custom_text2);
      return true;
    case 21:
      *text = FieldText(s.custom_text3);
      return true;
    case 22:
      *text = PaymentText(b);
      return true;
    case 23:
      *text = FieldText(b.customer_road);
      return true;
    case 24:
      *text = FieldText(b.customer_area);
      return true;
    case 25:
      *text = FieldText(b.customer_town);
      return true;
    case 26:
      *text = FieldText(b.customer_postcode);
      return true;
    case 27:
      *text = FieldText(b.customer_telephone);
      return true;
    default:
      return false;
  }
}

// Code 39 characters: bar, space, bar... nine elements, '1' for a wide one.
struct Code39Character {
  char character;
  const char* elements;
};
constexpr Code39Character kCode39[] = {
    {'0', "000110100"}, {'1', "100100001"}, {'2', "001100001"}, {'3', "101100000"},
    {'4', "000110001"}, {'5', "100110000"}, {'6', "001110000"}, {'7', "000100101"},
    {'8', "100100100"}, {'9', "001100100"}, {'*', "010010100"},
};

// What a receipt needs of the page, read once at the start.
struct Page {
  PrintTarget& target;
  int line_height = 0;
  int half = 0;
  int offset = 0;
  int base = 0;

  void Centred(int row, const std::string& text) const {
    target.set_text_align(TextAlign::Centre);
    target.text_out(half, row * line_height, text);
  }
  void Left(int x, int row, const std::string& text) const {
    target.set_text_align(TextAlign::Left);
    target.text_out(x, row * line_height, text);
  }
  void Right(int x, int row, const std::string& text) const {
    target.set_text_align(TextAlign::Right);
    target.text_out(x, row * line_height, text);
  }
  void Element(int element, int row, int mode) const {
    Printelement(target, element, line_height, half, row, mode);
  }
};

// The 10-point font when the shop forces it; true when one was made.
bool ForceFont(PrintTarget& target) {
  if (!On(G().settings.force_10pt)) return false;
  // Ten points at the device's resolution, rounded to the nearest unit.
  const int height = int(std::lround(10.0 * target.dpi_y() / 72.0));
  if (!target.select_font({"Arial", -height, 0, 400})) {
    Message("Unable set font", "Problem");
    return false;
  }
  return true;
}

// Draws receipt.bmp at the top and answers how many rows it takes.
int Logo(PrintTarget& target, int half, int line_height) {
  std::optional<Bitmap> bitmap = LoadBitmap(kLogoFile);
  if (!bitmap || half == 0 || bitmap->width == 0) return 0;
  const bool full = On(G().settings.print_page_width);
  const int x = full ? 0 : half / 2;
  const int width = full ? 2 * half : half;
  const int height = int(int64_t(width) * bitmap->height / bitmap->width);
  target.draw_image(*bitmap, x, 10, width, height);
  return (height + 20) / line_height;
}

void StandardReceipt(Page& p, const std::vector<int>& count) {
  const SettingsRecord& s = G().settings;
  const Basket& b = G().basket;
  const bool exclusive = On(s.receipt_items_excl_tax);

  p.Element(0, p.base + 1, kElementAtRow);
  p.Element(1, p.base + 2, kElementAtRow);
  p.Element(2, p.base + 3, kElementAtRow);
  p.Element(5, p.base + 4, kElementAtRow);
  p.Centred(p.base + 6, kDoubleRule);
  p.Element(16, p.base + 7, kElementAtRow);
  p.Centred(p.base + 8, FieldText(b.sale_time) + "  " + FieldText(b.sale_date));
  p.Element(15, p.base + 9, kElementAtRow);
  p.Centred(p.base + 10, kSingleRule);

  const int right = 2 * p.half - p.offset;
  for (int i = 0; i < b.line_count; ++i) {
    const int n = count[i];
    if (n == 0) {  // counted on an earlier row: close the gap
      --p.base;
      continue;
    }
    const float unit = exclusive ? b.non_taxable[i] + b.taxable[i] : b.line_total[i];
    const float amount = float(n) * unit;
    const std::string description = Description(b, i);
    if (On(s.receipt_centred)) {
      if (n == 1)
        p.Centred(p.base + i + 12, description + ", " + Money(unit));
      else
        p.Centred(p.base + i + 12, Number(n) + " " + description + ", " + Money(amount));
      continue;
    }
    p.Left(p.offset + 10, p.base + i + 12, description);
    if (n == 1) {
      p.Right(right, p.base + i + 12, Money(unit));
    } else {
      ++p.base;
      p.Left(p.offset + 10, p.base + i + 12, Number(n) + " @ " + Money(unit));
      p.Right(right, p.base + i + 12, Money(amount));
    }
  }

  p.target.set_text_align(TextAlign::Centre);
  int k = b.line_count;
  const bool taxed = b.total_tax1 != 0 || b.total_tax2 != 0;
  const std::string subtotal = Wording(kSubTotal) + ": " + Money(b.subtotal);
  if (exclusive && taxed) {
    p.Centred(p.base + ++k + 12, subtotal);
    if (b.total_tax1 != 0)
      p.Centred(p.base + ++k + 12, FieldText(s.tax1_name) + ": " + Money(b.total_tax1));
    if (b.total_tax2 != 0)
      p.Centred(p.base + ++k + 12, FieldText(s.tax2_name) + ": " + Money(b.total_tax2));
  }
  if (b.total_discount != 0) {
    if (!taxed) p.Centred(p.base + ++k + 12, subtotal);
    p.Centred(p.base + ++k + 12, Wording(kDiscount) + ": (" + Money(b.total_discount) + ")");
  }
  p.Element(14, p.base + k + 13, kElementAtRow);
  p.Centred(p.base + k + 14, kDoubleRule);
  p.Element(22, p.base + k + 16, kElementAtRow);
  if (G().change_due > 0) p.Element(18, p.base + ++k + 16, kElementAtRow);
  if (!exclusive) {
    // Tax included in the prices: a memo line with the rate below the payment.
    if (b.total_tax1 != 0) p.Element(12, p.base + ++k + 16, kElementAtRow);
    if (b.total_tax2 != 0) p.Element(13, p.base + ++k + 16, kElementAtRow);
  }

  if (On(s.footer_wordwrap)) {
    p.target.set_text_align(TextAlign::Left);
    const Rect area{0, (p.base + k + 18) * p.line_height, 2 * p.half,
                    (p.base + k + 22) * p.line_height};
    const int used = p.target.draw_wrapped(FieldText(s.receipt_footer), area);
    // A footer of several lines pushes what follows down.
    if (used > p.line_height) p.base += used / p.line_height;
  } else {
    p.Element(7, p.base + k + 18, kElementAtRow);
  }

  if (On(s.receipt_barcode))
    Printbarcode(p.target, p.base + k + 19);
  else
    p.Centred(p.base + k + 19, kFeedRow);
}

void CustomReceipt(Page& p, const std::vector<int>& count) {
  const SettingsRecord& s = G().settings;
  const Basket& b = G().basket;
  const bool customer = b.customer_number != 0;

  // The header: each element on its own line counted from the top.
  int top = 0;
  for (int e = 0; e <= kLastElement; ++e) {
    const bool header = e <= 5 || e == 8 || e == 9 || e == 15 || e == 16 || e == 19;
    const bool address = e >= 23;
    if (e == 6) {
      // The date has no "omit": a line of 0 puts it on the top row.
      top = std::max(top, int32_t(s.custom_line_date));
      p.target.text_out(p.half, (p.base + s.custom_line_date) * p.line_height,
                        FieldText(b.sale_time) + "  " + FieldText(b.sale_date));
      continue;
    }
    if (!header && !address) continue;
    if ((e == 8 || e == 9 || address) && !customer) continue;
    top = std::max(top, Elementline(e));
    p.Element(e, p.base, kElementByLine);
  }
  p.base += 2 + top;

  const bool exclusive = s.custom_items_excl_tax == 2;
  const int right = 2 * p.half - 20;
  for (int i = 0; i < b.line_count; ++i) {
    const int n = count[i];
    if (n == 0) {
      --p.base;
      continue;
    }
    const float unit = exclusive ? b.non_taxable[i] + b.taxable[i] : b.line_total[i];
    const float amount = float(n) * unit;
    const std::string mark = On(s.custom_mark_exempt) && b.taxable[i] == 0 ? "E  " : "";
    const std::string description = Description(b, i);
    if (On(s.custom_centred)) {
      if (n == 1)
        p.Centred(p.base + i, description + ", " + mark + Money(unit));
      else
        p.Centred(p.base + i, Number(n) + " " + description + ", " + mark + Money(amount));
      continue;
    }
    p.Left(20, p.base + i, description);
    if (n == 1) {
      p.Right(right, p.base + i, mark + Money(unit));
    } else {
      ++p.base;
      p.Left(20, p.base + i, Number(n) + " @ " + Money(unit));
      p.Right(right, p.base + i, mark + Money(amount));
    }
  }
  p.base += b.line_count;

  if (b.total_discount != 0) {
    p.Left(20, p.base, "(" + Wording(kDiscount) + ": " + Money(b.total_discount) + ")");
    ++p.base;
  }

  // The footer: each element on its own line counted from the last item.
  top = 0;
  for (int e : {7, 10, 11, 12, 13, 14, 17, 18, 20, 21, 22}) {
    top = std::max(top, Elementline(e));
    p.Element(e, p.base, kElementByLine);
  }
  const std::string note = FieldText(b.note);
  if (s.custom_line_note != 0 && !note.empty()) {
    p.Centred(p.base + s.custom_line_note, note);
    top = std::max(top, int32_t(s.custom_line_note));
  }

  if (On(s.custom_barcode)) {
    Printbarcode(p.target, top + p.base + 2);
  } else {
    const int blank = std::clamp(int(s.custom_blank_lines), 0, 19);
    for (int j = 0; j <= blank; ++j) p.Centred(top + p.base + 2 + j, kFeedRow);
  }
}

}  // namespace

int Elementline(int element) {
  static constexpr int32_t SettingsRecord::*kLines[kLastElement + 1] = {
      &SettingsRecord::custom_line_store_name,
      &SettingsRecord::custom_line_store_address1,
      &SettingsRecord::custom_line_store_address2,
      &SettingsRecord::custom_line_store_address3,
      &SettingsRecord::custom_line_store_address4,
      &SettingsRecord::custom_line_store_telephone,
      &SettingsRecord::custom_line_date,
      &SettingsRecord::custom_line_by_line,
      &SettingsRecord::custom_line_customer_number,
      &SettingsRecord::custom_line_customer_name,
      &SettingsRecord::custom_line_non_taxable,
      &SettingsRecord::custom_line_taxable,
      &SettingsRecord::custom_line_tax1,
      &SettingsRecord::custom_line_tax2,
      &SettingsRecord::custom_line_total,
      &SettingsRecord::custom_line_clerk,
      &SettingsRecord::custom_line_receipt,
      &SettingsRecord::custom_line_total_tendered,
      &SettingsRecord::custom_line_cash_change,
      &SettingsRecord::custom_line_text1,
      &SettingsRecord::custom_line_text2,
      &SettingsRecord::custom_line_text3,
      &SettingsRecord::custom_line_payment,
      &SettingsRecord::custom_line_address1,
      &SettingsRecord::custom_line_address2,
      &SettingsRecord::custom_line_address3,
      &SettingsRecord::custom_line_address4,
      &SettingsRecord::custom_line_customer_phone,
  };
  if (element < 0 || element > kLastElement) return 0;
  return FieldOf(G().settings, kLines[element]);
}

std::vector<int> Collapselines(const Basket& b, bool same_description) {
  const int lines = std::clamp(b.line_count, 0, kBasketLines);
  std::vector<int> count(size_t(lines), 1);
  for (int i = 0; i < lines; ++i) {
    if (count[i] == 0) continue;
    for (int j = i + 1; j < lines; ++j) {
      if (count[j] != 0 && b.number[j] == b.number[i] && b.line_total[j] == b.line_total[i] &&
          (!same_description || FieldText(b.description[j]) == FieldText(b.description[i]))) {
        ++count[i];
        count[j] = 0;
      }
    }
  }
  return count;
}

void Printelement(PrintTarget& target, int element, int line_height, int centre_x, int row,
                  int mode) {
  if (element < 0 || element > kLastElement) return;
  if (mode == kElementByLine) {
    const int line = Elementline(element);
    if (line < 1) return;
    row += line;
  }
  std::string text;
  if (!ElementText(element, mode == kElementByLine, &text)) return;
  if (element != 17 && element != 18) target.set_text_align(TextAlign::Centre);
  target.text_out(centre_x, row * line_height, text);
}

std::string Barcodetext(int64_t transaction_number) {
  std::string text = std::to_string(transaction_number);
  if (text.size() < 4) text.insert(0, 4 - text.size(), '0');
  return text;
}

std::string Code39modules(const std::string& text) {
  const std::string framed = "*" + text + "*";
  std::string modules;
  for (size_t c = 0; c < framed.size(); ++c) {
    const char* elements = nullptr;
    for (const Code39Character& k : kCode39)
      if (k.character == framed[c]) elements = k.elements;
    if (!elements) elements = "000000000";
    for (int e = 0; e < 9; ++e) {
      // Even elements are bars, odd ones spaces; a wide element is two modules.
      const char module = e % 2 == 0 ? '1' : '0';
      modules.append(elements[e] == '1' ? 2 : 1, module);
    }
    if (c + 1 < framed.size()) modules += '0';
  }
  return modules;
}

void Printbarcode(PrintTarget& target, int row) {
  // The page in device units, before the unit changes.
  const int line_height = Lineheight(target);
  const int page_width = target.page_width();
  const int page_height = target.page_height();
  const int offset_y = target.offset_y();
  const int dpi_x = target.dpi_x();
  const int dpi_y = target.dpi_y();

  target.use_hundredths_of_mm();
  if (dpi_x == 0 || dpi_y == 0) {
    Message("Unable to get printer", "Problem");
    target.use_device_units();
    return;
  }
  const std::string text = Barcodetext(G().basket.transaction_number);
  const int top_device =
      row != 0 ? (row + 2) * line_height : int(page_height - 0.54 * dpi_y - offset_y - 10);
  // Below the top of the page y is negative in hundredths of a millimetre.
  const int top = -int(int64_t(top_device) * 2540 / dpi_y);
  const int centre = int(int64_t(page_width / 2) * 2540 / dpi_x);
  const int length = int(text.size());
  const int left = centre - ((length + 2) * kModule * kCharacterPitch) / 2;

  const std::string modules = Code39modules(text);
  target.select_brush(Brush::Black);
  for (size_t m = 0; m < modules.size(); ++m) {
    if (modules[m] != '1') continue;
    const int x = left + int(m) * kModule;
    target.rectangle(x, top, x + kModule, top - kBarHeight);
  }
  target.select_brush(Brush::White);
  target.use_device_units();
  target.set_text_align(TextAlign::Centre);
  static_assert(kCharacterModules + 1 == kCharacterPitch);
}

void Printreceipt(PrintTarget& target, int kind) {
  const SettingsRecord& s = G().settings;
  const bool font_made = ForceFont(target);
  Page p{target};
  p.line_height = std::max(1, Lineheight(target));
  p.half = target.page_width() / 2;
  p.offset = target.offset_x();
  p.base = 0;

  const std::vector<int> count = Collapselines(G().basket);
  const bool logo = kind == kCustomReceipt ? s.custom_no_logo == 0 : On(s.receipt_logo);
  if (logo) p.base = Logo(target, p.half, p.line_height);

  if (kind == kCustomReceipt)
    CustomReceipt(p, count);
  else
    StandardReceipt(p, count);

  if (font_made) target.select_font(target.stock_font());
}

void Selectlogo(const char* logo_file) {
  // The file dialog may wander: the shop's folder is noted first and returned to.
  char folder[4096];
  if (!getcwd(folder, sizeof folder)) {
    Message("Unable to locate directory.", "Problem");
    return;
  }
  std::optional<std::string> path =
      platform().choose_file("Select logo bitmap file", false, "Bitmaps (*.bmp)");
  if (chdir(folder) != 0 || !path) return;
  std::optional<std::string> picture = ReadWholeFile(*path);
  if (!picture || !ReplaceFile(logo_file, *picture)) return;
  Message("Updated.", "Logo picture");
}

}  // namespace tilo
