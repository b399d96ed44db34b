// SPDX-License-Identifier: MIT
#include "documents/debtor_letter.h"

#include <cstdio>
#include <cstdlib>
#include <optional>

#include "core/clock.h"
#include "core/customer_file.h"
#include "core/settings.h"
#include "core/state.h"
#include "core/text.h"
#include "customers/customer_find.h"
#include "documents/invoice.h"
#include "documents/print_job.h"
#include "platform/platform.h"
#include "reports/report_walk.h"

namespace tilo {
namespace {

// The fax box takes 29 characters, so a long number runs on into the
// shipping address behind the field.
constexpr size_t kFaxLength = 29;

constexpr const char* kDaysWording[] = {"No credit, ", "10 days, ", "20 days, ",  "30 days, ",
                                        "60 days, ",   "90 days, ", "120 days, ", "180 days, "};
constexpr const char* kDiscountWording[] = {"Nett",     "2% disc",  "5% disc",  "10% disc",
                                            "20% disc", "30% disc", "40% disc", "50% disc"};

struct Page {
  PrintTarget& t;
  int line = 1;
  int row = 2;

  void Text(TextAlign align, int x, const std::string& text) const {
    t.set_text_align(align);
    t.text_out(x, row * line, text);
  }
  void Left(const std::string& text) { Text(TextAlign::Left, 0, text), ++row; }
  void Rule() {
    const int y = row * line + line / 2;
    t.line(0, y, t.page_width(), y);
    ++row;
  }
};

// The longest fixed line of the letters; the font must fit it across the page.
constexpr const char* kWidestLine =
    "If payment has been made in the last few days please disregard this letter.";

// The device's own font at a fortieth of the page in height and a sixty-fourth
// in width, made smaller (proportions kept) on a page too narrow for the
// letters' longest line: a narrow portrait page would otherwise cut the text off.
Page Open(PrintTarget& t) {
  FontDescription font = t.stock_font();
  const int height = t.page_height();
  font.height = height / 40;
  font.width = height / 64;
  t.select_font(font);
  const int room = t.page_width() - 10;
  const int wide = t.text_extent(kWidestLine);
  if (wide > room && room > 0) {
    font.height = int(int64_t(font.height) * room / wide);
    font.width = int(int64_t(font.width) * room / wide);
    t.select_font(font);
  }
  return Page{t, Lineheight(t), 2};
}

void Heading(Page& p) {
  const int half = p.t.page_width() / 2;
  const HeadingLines& h = G().heading;
  const char* lines[] = {h.site_name,   h.site_road,     h.site_area,
                         h.site_county, h.site_postcode, h.site_telephone};
  std::optional<Bitmap> logo = LoadBitmap(kLetterLogoFile);
  const bool has_logo = logo && logo->width != 0 && logo->height != 0;
  if (has_logo) {
    const int width = half / 2;
    p.t.draw_image(*logo, 10, 10, width, int(int64_t(width) * logo->height / logo->width));
  }
  for (int i = 0; i < 6; ++i) {
    p.row = 2 + i;
    if (has_logo)
      p.Text(TextAlign::Left, half / 2 + 30, FieldText(lines[i], 42));
    else
      p.Text(TextAlign::Centre, half, FieldText(lines[i], 42));
  }
  p.row = 2;
}

void Letter(Page& p, int kind, const MemberRecord& c) {
  const int half = p.t.page_width() / 2;
  Heading(p);
  p.row += 12;
  p.Left(FieldText(c.name));
  const std::string address[] = {FieldText(c.road), FieldText(c.area), FieldText(c.town),
                                 FieldText(c.postcode)};
  for (int i = 0; i < 4; ++i) {
    if (address[i].empty()) continue;
    p.Left(address[i]);
    if (i == 3) p.row += 3;
  }
  const LocalTime now = platform().now();
  p.Text(TextAlign::Right, 2 * half,
         Utf8ToCp1252(platform().month_date(now.year, now.month, now.day)));
  p.row += 6;
  const bool final_notice = kind == kDebtorLetter2;
  if (final_notice) {
    p.Text(TextAlign::Centre, half, "FINAL NOTICE");
    p.row += 2;
  }
  p.Text(TextAlign::Left, 0, "Dear Sir / Madam,");
  p.Text(TextAlign::Centre, half,
         Format("Customer reference: %lld", static_cast<long long>(c.number)));
  p.row += 2;
  const double balance = c.balance;
  if (final_notice) {
    p.Left("Despite our previous reminder(s) the following amount");
    p.Left(Format("is still overdue: %.2f", balance));
    ++p.row;
    p.Left("Please remit the amount by return.");
    ++p.row;
    p.Left("Please note that delay may incur further costs.");
  } else {
    p.Left("According to our records the following amount is");
    p.Left(Format("now overdue: %.2f", balance));
    ++p.row;
    p.Left("Please remit at your earliest convenience. Thank you.");
    ++p.row;
    p.Left("If payment has been made in the last few days please disregard this letter.");
  }
  ++p.row;
  p.Left("Yours sincerely,");
  p.row += 3;
  p.Left("---------------------");
  p.Left("Manager");
}

void Details(Page& p, const MemberRecord& c) {
  const auto& bytes = reinterpret_cast<const char(&)[sizeof(MemberRecord)]>(c);
  p.Rule();
  p.Left(Format("Customer: %lld", static_cast<long long>(c.number)));
  p.Left(FieldText(c.name));
  p.Rule();
  p.Left("Billing");
  for (const std::string& s :
       {FieldText(c.road), FieldText(c.area), FieldText(c.town), FieldText(c.postcode)})
    p.Left(s);
  p.Left("Shipping");
  for (const std::string& s : {FieldText(c.shipping_address_1), FieldText(c.shipping_address_2),
                               FieldText(c.shipping_address_3), FieldText(c.shipping_address_4),
                               FieldText(c.shipping_address_5)})
    p.Left(s);
  p.Rule();
  p.Left(Format("Tel. %s ext. %s", FieldText(c.telephone).c_str(),
                FieldText(c.telephone_extension).c_str()));
  p.Left("Email: " + FieldText(c.email));
  p.Left("Fax: " + FieldText(bytes + offsetof(MemberRecord, fax), kFaxLength));
  p.Left("Contact: " + FieldText(c.contact));
  p.Rule();
  p.Left(Format("Tax code: %d", int(c.tax)));
  p.Left("Comment 1: " + FieldText(c.comment));
  p.Left("Comment 2: " + FieldText(c.comment2));
  p.Left("Credit card 1: " + FieldText(c.credit_card));
  p.Left("Expiry: " + FieldText(c.credit_card_expiry));
  p.Left("Credit card 2: " + FieldText(c.credit_card2));
  p.Left("Expiry: " + FieldText(c.credit_card2_expiry));
  p.Left(Format("Transactions: %d", c.transactions));
  p.Left("Origination: " + FieldText(c.origination));
  p.Left(Format("Credit limit: %.2f", double(c.credit_limit)));
  p.Left(Format("Balance: %.2f", double(c.balance)));
  p.Left(Format("Total purchases: %.2f", double(c.total_purchases)));
  p.Left(Format("Group: %d", c.group));
  p.Left("Last used: " + Stamptext(c.last_used, sizeof c.last_used));
  p.Left("Last payment: " + Stamptext(c.last_payment, sizeof c.last_payment));
  p.Left("Terms: " + Detailterms(c.terms));
  p.Rule();
}

}  // namespace

std::string Detailterms(int32_t terms) {
  if (terms < 1 || terms > 8) return {};
  const SettingsRecord& s = G().settings;
  std::string text;
  const int64_t days = BandCreditPeriod(s, terms);
  if (days >= 1 && days <= 8) text = kDaysWording[days - 1];
  const int32_t discount = BandDiscount(s, terms);
  if (discount >= 1 && discount <= 8) text += kDiscountWording[discount - 1];
  return text;
}

std::string Stamptext(const char* stamp, size_t width) {
  const std::string text = FieldText(stamp, width);
  int hour, minute, day, month, year, used = 0;
  if (std::sscanf(text.c_str(), "%2d:%2d%2d/%2d/%4d%n", &hour, &minute, &day, &month, &year,
                  &used) != 5 ||
      size_t(used) != text.size() || text.size() < 5)
    return {};
  if (hour < 0 || hour > 23 || minute < 0 || minute > 59 || month < 1 || month > 12 || day < 1 ||
      day > DaysInMonth(month, year))
    return {};
  return Format("%c%c:%c%c %s", text[0], text[1], text[3], text[4], text.c_str() + 5);
}

void Printletter(PrintTarget& target, int kind, const MemberRecord& customer) {
  Page page = Open(target);
  if (kind == kCustomerDetails)
    Details(page, customer);
  else
    Letter(page, kind, customer);
}

void Debtorletter(int kind) {
  if (PromptCustomer("Please enter the customer") == 0) return;
  const MemberRecord customer = G().member;
  // Owed means above zero at two decimals: a balance of 0.004 owes nothing.
  const double owed = std::strtod(Format("%.2f", double(customer.balance)).c_str(), nullptr);
  if (kind != kCustomerDetails && owed <= 0) {
    Message("No amount is outstanding", "Problem");
    return;
  }
  Runpagedjob([&customer, kind](PrintTarget& t) { Printletter(t, kind, customer); });
}

}  // namespace tilo
