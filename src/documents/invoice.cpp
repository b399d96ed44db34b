// SPDX-License-Identifier: MIT
#include "documents/invoice.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

#include "core/customer_file.h"
#include "core/settings.h"
#include "core/state.h"
#include "core/text.h"
#include "documents/receipt.h"
#include "documents/wording.h"
#include "platform/platform.h"
#include "sale/basket.h"
#include "sale/pricing.h"
#include "tender/printdocument.h"

namespace tilo {
namespace {

constexpr const char* kDots = "...................";

// The discount wording of codes 1 to 8, and the days of credit of codes 2 to 8.
constexpr const char* kDiscountText[] = {"Nett",     "2% disc",  "5% disc",  "10% disc",
                                         "20% disc", "30% disc", "40% disc", "50% disc"};
constexpr const char* kDaysText[] = {"10 days", "20 days",  "30 days", "60 days",
                                     "90 days", "120 days", "180 days"};

const char* DiscountText(int64_t code) {
  return code >= 1 && code <= 8 ? kDiscountText[code - 1] : nullptr;
}
const char* DaysText(int64_t code) {
  return code >= 2 && code <= 8 ? kDaysText[code - 2] : nullptr;
}

bool IsBand(int32_t terms) {
  // Band 0 would read the fields in front of the tables.
  return terms >= 1 && terms <= 8;
}

std::string Money(double value) {
  return MoneyText(value);
}

int TenPoints(PrintTarget& target) {
  return -int(std::lround(10.0 * target.dpi_y() / 72.0));
}

// What every invoice needs of the page, read once after the font is chosen.
struct Sheet {
  PrintTarget& target;
  FontDescription body;  // the font the page goes back to after a title
  int line = 1;
  int half = 0;
  int bottom = 0;
  int left = 0;
  int right = 0;
  int W = 0;  // average character width
  int D = 0;  // device units per inch, downwards

  // y of a row, and of the half row below it.
  int Y(int row) const { return row * line; }
  int Ymid(int row) const { return row * line + line / 2; }

  void Text(TextAlign align, int x, int y, const std::string& text) const {
    target.set_text_align(align);
    target.text_out(x, y, text);
  }
  void Left(int x, int y, const std::string& text) const { Text(TextAlign::Left, x, y, text); }
  void Right(int x, int y, const std::string& text) const { Text(TextAlign::Right, x, y, text); }
  void Centre(int x, int y, const std::string& text) const { Text(TextAlign::Centre, x, y, text); }

  // A light grey band across the page from half a line below row `from` to half
  // a line below row `to`.
  void Band(int from, int to) const { Fill(Ymid(from), Ymid(to)); }
  void Fill(int top, int bottom_y) const {
    target.select_brush(Brush::LightGrey);
    target.rectangle(left + 10, top, right - 20, bottom_y);
    target.select_brush(Brush::White);
  }
  void Rule(int y) const { target.line(left + 10, y, right - 20, y); }
  void Element(int element, int row, int x) const {
    Printelement(target, element, line, x, row, kElementAtRow);
  }
};

// One printed entry of the item table: the first basket line of a group and
// how many units the group holds.
struct Entry {
  int index;
  int count;
};

std::vector<Entry> Entries(const Basket& b) {
  const std::vector<int> count = Collapselines(b, true);
  std::vector<Entry> entries;
  for (size_t i = 0; i < count.size(); ++i)
    if (count[i] != 0) entries.push_back({int(i), count[i]});
  return entries;
}

// Rows the table takes: two for an entry of several units, one otherwise.
int TableRows(const std::vector<Entry>& entries) {
  int rows = 0;
  for (const Entry& e : entries) rows += e.count > 1 ? 2 : 1;
  return rows;
}

// The amount of one unit, without tax.
float Unit(const Basket& b, int i) {
  return b.non_taxable[i] + b.taxable[i];
}

std::string Quantity(const Basket& b, const Entry& e) {
  return std::to_string(e.count) + " @ " + Money(Unit(b, e.index));
}

std::string Amount(const Basket& b, const Entry& e) {
  return Money(float(e.count) * Unit(b, e.index));
}

std::string ItemNumber(int64_t number) {
  return number == 0 ? "-" : std::to_string(number);
}

std::string Labelled(int slot, const std::string& value) {
  return Wording(slot) + ": " + value;
}

std::string TotalText() {
  const Basket& b = G().basket;
  return Labelled(kTotalCaps, FieldText(G().settings.currency_symbol) + Money(b.total));
}

std::string SaleMoment() {
  const Basket& b = G().basket;
  return FieldText(b.sale_time) + "  " + FieldText(b.sale_date);
}

std::string Associate() {
  return Labelled(kAssociate, ClerkName(G().settings, G().basket.clerk));
}

// The terms band of the sale's own customer, read afresh: the customer buffer
// may hold anyone by now (on a reprint, whoever was looked up last).
int32_t CustomerTerms() {
  State& g = G();
  const int64_t number = g.basket.customer_number;
  if (number == 0) return 0;
  MemberRecord customer{};
  const int64_t position = g.members.position;
  const int64_t found = g.members.Fetch(number, &customer);
  g.members.position = position;
  return found != 0 ? customer.terms : 0;
}

// The letter logo, 12 rows tall at the top left; nothing when it is missing.
void Logo(const Sheet& p) {
  std::optional<Bitmap> bitmap = LoadBitmap(kLetterLogoFile);
  if (!bitmap || bitmap->width == 0 || bitmap->height == 0) return;
  const int height = 12 * p.line;
  const int width = int(int64_t(height) * bitmap->width / bitmap->height);
  p.target.draw_image(*bitmap, p.left + 10, 10, width, height);
}

// The big bold title, then back to the page's font.
void Title(const Sheet& p, TextAlign align, int x, const std::string& text) {
  const int page_height = p.target.page_height();
  p.target.select_font({"Arial", page_height / 40, page_height / 64, 700});
  p.Text(align, x, 3 * p.line, text);
  p.target.select_font(p.body);
}

void Bold(Sheet& p) {
  FontDescription bold{"Arial", TenPoints(p.target), 0, 700};
  if (p.target.select_font(bold)) p.body = bold;
}

// "Authorized" (or the left-hand words) and "Received" over their dotted lines.
void Signatures(const Sheet& p, const std::string& left_top, const std::string& left_bottom,
                bool received) {
  const int upper = p.bottom - 10 - 4 * p.line;
  const int lower = p.bottom - (5 * p.line) / 2;
  p.Left(p.left + 60, upper, left_top);
  p.Left(p.left + 60, lower, left_bottom);
  if (!received) return;
  p.Right(p.right - 60, upper, Wording(kReceived));
  p.Right(p.right - 60, lower, kDots);
}

// The grey bands and frame the standard invoice and the delivery note share.
void Frame(const Sheet& p, bool summary_divider) {
  p.Band(12, 14);
  p.Fill(p.bottom - 2 * p.D, p.bottom - 2 * p.D + 20);
  p.Fill(p.bottom - p.D, p.bottom - p.D + 20);
  if (summary_divider) p.target.line(p.half, p.bottom - 2 * p.D, p.half, p.bottom - p.D + 20);
}

void TableFrame(const Sheet& p, int rows) {
  p.Band(17, 19);
  p.Rule(p.Ymid(12));
  p.Rule(p.Ymid(17));
  p.Rule(p.bottom - 10);
  p.target.line(p.left + 10, p.Ymid(12), p.left + 10, p.bottom - 10);
  p.target.line(p.right - 20, p.Ymid(12), p.right - 20, p.bottom - 10);
  p.Band(19, 20 + rows);
}

// The table's closing rules: under the last row, and the column rule.
void CloseTable(const Sheet& p, int heading_row, int last_row) {
  const int below = p.Ymid(last_row + 1);
  p.Rule(below);
  const int x = p.left + 41 * p.W + 80;
  p.target.line(x, p.Ymid(heading_row - 1), x, below);
}

// The items with the amount in the column at `amount_x`; the "n @ price" row
// of a group at `quantity_x`. Answers the rows used.
int Items(const Sheet& p, const std::vector<Entry>& entries, int first_row, int amount_x,
          int quantity_x) {
  const Basket& b = G().basket;
  int k = 0;
  for (const Entry& e : entries) {
    const int row = first_row + k;
    p.Left(p.left + 80, p.Y(row), FieldText(b.description[e.index]));
    p.Left(amount_x, p.Y(row), Amount(b, e));
    ++k;
    if (e.count > 1) {
      p.Left(quantity_x, p.Y(row + 1), Quantity(b, e));
      ++k;
    }
  }
  return k;
}

// Name and the four address lines from `row`, one a row.
void Address(const Sheet& p, int row) {
  const Basket& b = G().basket;
  const std::string lines[] = {FieldText(b.customer_name), FieldText(b.customer_road),
                               FieldText(b.customer_area), FieldText(b.customer_town),
                               FieldText(b.customer_postcode)};
  for (const std::string& text : lines) p.Left(p.left + 40, p.Y(row++), text);
}

void Balances(const Sheet& p, int row) {
  const Basket& b = G().basket;
  p.Left(p.left + 40, p.Y(row), "Previous balance: " + Money(b.credit_before));
  p.Centre(p.half, p.Y(row), "Balance: " + Money(b.credit_after));
}

// The customer band and block below the table of the standard invoice and the
// delivery note; `custom_terms` picks the wording, `balances` adds the two
// balance lines.
void CustomerBlock(const Sheet& p, int lines, bool custom_terms, bool balances) {
  const Basket& b = G().basket;
  p.Fill(p.Ymid(lines + 23), p.Ymid(lines + 24));
  if (b.customer_number == 0) return;
  p.Left(p.left + 40, p.Ymid(lines + 23),
         Labelled(kCustomerNoCaps, std::to_string(b.customer_number)));
  Address(p, lines + 25);
  p.Rule(p.Ymid(lines + 30));
  const int32_t terms = CustomerTerms();
  const SettingsRecord& s = G().settings;
  p.Left(p.left + 40, p.Y(lines + 31),
         Labelled(kTerms, custom_terms ? Customterms(s, terms) : Standardterms(s, terms)));
  if (balances) Balances(p, lines + 32);
}

void StandardInvoice(Sheet& p, bool logo) {
  const Basket& b = G().basket;
  const SettingsRecord& s = G().settings;
  if (logo) Logo(p);
  Title(p, TextAlign::Right, p.right - 20, Wording(kInvoiceTitle));
  p.Element(0, 5, p.half);
  p.Element(1, 6, p.half);
  p.Element(2, 7, p.half);
  p.Element(5, 8, p.half);
  Printbarcode(p.target, 0);
  Signatures(p, Wording(kAuthorized), kDots, true);

  const std::vector<Entry> entries = Entries(b);
  const int rows = TableRows(entries);
  Frame(p, true);
  Bold(p);
  p.Left(p.left + 40, p.Y(13), Labelled(kInvoiceNumber, std::to_string(b.transaction_number)));
  TableFrame(p, rows);
  const int number_x = p.left + 42 * p.W + 80;
  p.Left(p.left + 40, p.Y(18), Wording(kDescriptionHeading));
  p.Left(number_x, p.Y(18), Wording(kItemNoHeading));
  p.Right(p.right - 60, p.Y(18), Wording(kNetTotalHeading));
  p.Left(p.left + 40, p.Y(15), SaleMoment());
  p.Left(p.left + 40, p.Y(16), Associate());

  int k = 0;
  for (const Entry& e : entries) {
    const int row = 20 + k;
    p.Left(p.left + 80, p.Y(row), FieldText(b.description[e.index]));
    p.Left(number_x, p.Y(row), ItemNumber(b.number[e.index]));
    if (e.count > 1) {
      p.Left(p.left + 80, p.Y(row + 1), Quantity(b, e));
      p.Right(p.right - 60, p.Y(row + 1), Amount(b, e));
      k += 2;
    } else {
      p.Right(p.right - 60, p.Y(row), Amount(b, e));
      k += 1;
    }
  }
  CloseTable(p, 18, 19 + k);

  // The summary zone keeps its place at the foot, whatever the table's length.
  const int y0 = p.bottom - 2 * p.D + 40;
  const bool customer = b.customer_number != 0;
  const int c1 = p.left + 60, c2 = p.half / 2, c3 = p.half + 30;
  const int c4 = (p.half * 3) / 2 - 40, c5 = (p.half * 3) / 2 + 40, c6 = p.right - 60;
  const struct {
    int label;
    std::string value;
    int middle;
    float middle_value;
  } zone[] = {
      {kCustomerNoCaps, customer ? std::to_string(b.customer_number) : "Not Applicable", kNonTxCaps,
       b.total_non_taxable},
      {kCustomerCaps, customer ? FieldText(b.customer_name) : "", kTaxableCaps, b.total_taxable},
      {kTelephoneCaps, customer ? FieldText(b.customer_telephone) : "", kDiscountCaps,
       b.total_discount},
      {kItemsCaps, std::to_string(b.line_count), kSubtotalCaps, b.subtotal},
  };
  for (int r = 0; r < 4; ++r) {
    const int y = y0 + r * p.line;
    p.Left(c1, y, Wording(zone[r].label));
    p.Left(c2, y, zone[r].value);
    p.Left(c3, y, Wording(zone[r].middle));
    p.Right(c4, y, Money(zone[r].middle_value));
  }
  p.Left(c5, y0, FieldText(s.tax1_name));
  p.Right(c6, y0, Money(b.total_tax1));
  p.Left(c5, y0 + p.line, FieldText(s.tax2_name));
  p.Right(c6, y0 + p.line, Money(b.total_tax2));

  p.Left(p.left + 40, p.Y(k + 22),
         Labelled(kSubtotalCaps, FieldText(s.currency_symbol) + Money(b.subtotal)));
  p.Right(p.right - 60, p.bottom - p.D + 20 - (p.line * 3) / 2, TotalText());
  CustomerBlock(p, k, false, false);
}

void CustomInvoice(Sheet& p) {
  const Basket& b = G().basket;
  const SettingsRecord& s = G().settings;
  const bool box = s.invoice_box != 0;
  if (s.invoice_logo != 0) Logo(p);
  if (s.invoice_barcode != 0) Printbarcode(p.target, 0);
  if (box) {
    Signatures(p, Wording(kAuthorized), kDots, true);
    p.Fill(p.bottom - p.D, p.bottom - p.D + 20);
  }
  Title(p, TextAlign::Centre, p.half, Wording(kInvoiceTitle));

  // The store's lines, in the header font when the shop chose one.
  const int32_t store_lines[] = {s.invoice_line_store_name,     s.invoice_line_store_address1,
                                 s.invoice_line_store_address2, s.invoice_line_store_address3,
                                 s.invoice_line_store_address4, s.invoice_line_store_telephone};
  const bool header_font = s.invoice_use_header_font != 0 && p.target.select_font(Headerfont(s));
  for (int e = 0; e <= 5; ++e)
    if (store_lines[e] != 0) p.Element(e, store_lines[e], p.half);
  if (header_font) p.target.select_font(p.body);

  if (const int r = s.invoice_line_invoice; r != 0) {
    if (box) p.Band(r - 1, r + 1);
    p.Left(p.left + 40, p.Y(r), Labelled(kInvoiceNumber, std::to_string(b.transaction_number)));
  }
  if (const int r = s.invoice_line_items; r != 0) {
    const std::vector<Entry> entries = Entries(b);
    const int amount_x = p.left + 42 * p.W + 80;
    if (box) p.Band(r - 1, r + 1);
    p.Left(p.left + 40, p.Y(r), Wording(kDescriptionHeading));
    p.Left(amount_x, p.Y(r), Wording(kNetTotalHeading));
    const int rows = Items(p, entries, r + 2, amount_x, p.left + 80);
    if (box) CloseTable(p, r + 2, r + 1 + rows);
  }
  if (const int r = s.invoice_line_date; r != 0) p.Left(p.left + 40, p.Y(r), SaleMoment());
  if (const int r = s.invoice_line_clerk; r != 0) p.Left(p.left + 40, p.Y(r), Associate());

  // Everything from here follows the table down the page.
  const int shift = b.line_count;
  auto at = [&](int32_t line) { return p.Y(line + shift); };
  if (const int r = s.invoice_line_net_total; r != 0)
    p.Left(p.left + 40, at(r), Labelled(kNetTotalHeading, Money(b.subtotal)));
  if (const int r = s.invoice_line_tax; r != 0) {
    if (b.total_tax1 != 0)
      p.Left(p.left + 40, at(r), FieldText(s.tax1_name) + ": " + Money(b.total_tax1));
    if (b.total_tax2 != 0)
      p.Left(p.left + 40, at(r + 1), FieldText(s.tax2_name) + ": " + Money(b.total_tax2));
  }
  if (const int r = s.invoice_line_discount; r != 0 && b.total_discount != 0)
    p.Left(p.left + 40, at(r), Labelled(kDiscountCaps, "(" + Money(b.total_discount) + ")"));
  if (const int r = s.invoice_line_total; r != 0) {
    p.Left(p.left + 40, at(r), TotalText());
    // A thin band on the boundary with the next row, clear of its words.
    if (box) p.Fill(at(r + 1) - 6, at(r + 1) + 2);
  }
  if (const int r = s.invoice_line_note; r != 0 && b.note[0] != '\0')
    p.Left(p.left + 40, at(r), FieldText(b.note));

  if (b.customer_number == 0) return;
  if (const int r = s.invoice_line_customer_id; r != 0)
    p.Left(p.left + 40, at(r), Labelled(kCustomerNoCaps, std::to_string(b.customer_number)));
  if (const int r = s.invoice_line_customer_detail; r != 0) {
    Address(p, r + shift);
    p.Rule(p.Ymid(r + shift + 5));
  }
  if (const int r = s.invoice_line_customer_terms; r != 0)
    p.Left(p.left + 40, at(r), Labelled(kTerms, Customterms(s, CustomerTerms())));
  if (const int r = s.invoice_line_balance; r != 0) Balances(p, r + shift);
}

void DeliveryNote(Sheet& p) {
  const Basket& b = G().basket;
  const SettingsRecord& s = G().settings;
  Logo(p);
  Title(p, TextAlign::Centre, p.half, "Delivery Note");
  p.Element(0, 7, p.half);
  p.Element(1, 8, p.half);
  p.Element(2, 9, p.half);
  p.Element(5, 10, p.half);
  Printbarcode(p.target, 0);
  Signatures(p, "Shortages must be", "notified within 3 days", false);
  p.Right(p.right - 60, p.bottom - 10 - 4 * p.line, Wording(kAuthorized));
  p.Right(p.right - 60, p.bottom - (5 * p.line) / 2, kDots);

  const std::vector<Entry> entries = Entries(b);
  const int rows = TableRows(entries);
  Frame(p, false);
  Bold(p);
  p.Left(p.left + 40, p.Y(13), "Transaction reference: " + std::to_string(b.transaction_number));
  TableFrame(p, rows);
  const int amount_x = p.left + 42 * p.W + 80;
  p.Left(p.left + 40, p.Y(18), Wording(kDescriptionHeading));
  p.Left(amount_x, p.Y(18), Wording(kUnitPrice));
  p.Left(p.left + 40, p.Y(15), SaleMoment());
  p.Left(p.left + 40, p.Y(16), Associate());
  const int k = Items(p, entries, 20, amount_x, amount_x);
  CloseTable(p, 18, 19 + k);

  // The figures start a row below the table's closing rule, and the total and
  // the customer block make room for as many as there are.
  int row = k + 21;
  const bool taxed = b.total_tax1 != 0 || b.total_tax2 != 0;
  const std::string net = Labelled(kNetTotalHeading, Money(b.subtotal));
  if (taxed) {
    p.Left(p.left + 40, p.Y(row++), net);
    if (b.total_tax1 != 0)
      p.Left(p.left + 40, p.Y(row++), FieldText(s.tax1_name) + ": " + Money(b.total_tax1));
    if (b.total_tax2 != 0)
      p.Left(p.left + 40, p.Y(row++), FieldText(s.tax2_name) + ": " + Money(b.total_tax2));
  }
  if (b.total_discount != 0) {
    if (!taxed) p.Left(p.left + 40, p.Y(row++), net);
    p.Left(p.left + 40, p.Y(row++), Labelled(kDiscountCaps, "(" + Money(b.total_discount) + ")"));
  }
  const int extra = std::max(0, row - (k + 22));
  p.Left(p.left + 40, p.Y(k + 22 + extra), TotalText());
  CustomerBlock(p, k + extra, true, true);
}

}  // namespace

std::string Standardterms(const SettingsRecord& s, int32_t terms) {
  if (!IsBand(terms)) return {};
  std::string text;
  if (const char* discount = DiscountText(BandDiscount(s, terms))) text = discount;
  if (const char* days = DaysText(BandCreditPeriod(s, terms))) text += std::string(", ") + days;
  return text;
}

std::string Customterms(const SettingsRecord& s, int32_t terms) {
  if (!IsBand(terms)) return {};
  std::string text;
  if (const char* discount = DiscountText(BandDiscount(s, terms)))
    text = std::string(discount) + ", ";
  if (const char* days = DaysText(BandCreditPeriod(s, terms))) text += days;
  return text;
}

FontDescription Headerfont(const SettingsRecord& s) {
  FontDescription f;
  f.face = FieldText(s.invoice_font_face);
  if (f.face.empty()) f.face = "Arial";
  f.height = s.invoice_font_height;
  f.width = s.invoice_font_width;
  f.weight = s.invoice_font_weight;
  f.italic = s.invoice_font_italic != 0;
  f.underline = s.invoice_font_underline != 0;
  f.strikeout = s.invoice_font_strikeout != 0;
  return f;
}

int32_t Headerfontheight(int dpi_y, int points) {
  return -int32_t(std::lround(double(int64_t(dpi_y) * points) / 72.0));
}

void Printinvoice(PrintTarget& target, int kind) {
  FontDescription body{"Arial", TenPoints(target), 0, 400};
  const bool font_made = target.select_font(body);
  if (!font_made) {
    Message("Unable set font", "Problem");
    body = target.stock_font();
  }
  const TextMetrics m = target.text_metrics();
  Sheet p{target, body};
  p.line = std::max(1, m.height + m.external_leading);
  p.half = target.page_width() / 2;
  p.bottom = target.page_height() - target.offset_y();
  p.left = target.offset_x();
  p.right = 2 * p.half - target.offset_x();
  p.W = m.average_char_width;
  p.D = target.dpi_y();

  const SettingsRecord& s = G().settings;
  switch (kind) {
    case kStandardInvoice:
      StandardInvoice(p, s.invoice_no_standard_logo == 0);
      break;
    case kCustomInvoice:
      CustomInvoice(p);
      break;
    case kDeliveryNote:
      DeliveryNote(p);
      break;
    default:
      break;
  }
  target.set_text_align(TextAlign::Left);
  if (font_made || p.body != body) target.select_font(target.stock_font());
}

}  // namespace tilo
