// SPDX-License-Identifier: MIT
#include "documents/receipt.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "core/settings.h"
#include "core/state.h"
#include "core/text.h"
#include "documents/recording_target.h"
#include "documents/wording.h"
#include "sale/basket.h"
#include "support/shop_fixture.h"
#include "tender/printdocument.h"

namespace tilo {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// The recording device's stock font is 40 high with a leading of 2: rows are
// 42 units apart. The page is 2400 wide (half 1200) with a margin of 50.
constexpr int kRow = 42;

class ReceiptTest : public ShopTest {
 protected:
  void SetUp() override {
    ShopTest::SetUp();
    MakeFreshShop();
    ASSERT_TRUE(Opensettings());
    Defaultwording(0, G().language);
    HeadingLines& h = G().heading;
    SetField(h.site_name, "CORNER STORE");
    SetField(h.site_road, "1 HIGH ST");
    SetField(h.site_area, "TOWN");
    SetField(h.site_county, "COUNTY");
    SetField(h.site_postcode, "PC1");
    SetField(h.site_telephone, "TEL 123");
    SetField(S().currency_symbol, "$");
    S().clerk_number = 3;
    Basket& b = B();
    b.transaction_number = 42;
    SetField(b.sale_time, "10:15");
    SetField(b.sale_date, "Fri 1 Mar 24");
    SetField(b.payment_type, "Cash");
  }

  static Basket& B() { return G().basket; }
  static SettingsRecord& S() { return G().settings; }

  // A line with the tax of 20% on top when `taxed`.
  static void Line(int64_t number, const std::string& description, float net, bool taxed = true) {
    Basket& b = B();
    const int i = b.line_count++;
    b.number[i] = number;
    SetField(b.description[i], description);
    const float tax = taxed ? net * 0.2f : 0;
    (taxed ? b.taxable : b.non_taxable)[i] = net;
    b.tax1[i] = tax;
    b.line_total[i] = net + tax;
    b.subtotal += net;
    b.total_tax1 += tax;
    b.total += net + tax;
    (taxed ? b.total_taxable : b.total_non_taxable) += net;
  }

  // The text_out calls of a receipt, "x y text" each.
  static std::vector<std::string> Texts(int kind, RecordingDevice device = {}) {
    RecordingTarget target(device);
    Printreceipt(target, kind);
    std::vector<std::string> out;
    for (const std::string& c : target.calls())
      if (c.rfind("text_out ", 0) == 0) out.push_back(c.substr(9));
    return out;
  }
  static std::string At(int x, int row, const std::string& text) {
    return std::to_string(x) + " " + std::to_string(row * kRow) + " " + text;
  }
  static std::string Element(int element, int mode = kElementAtRow, int row = 0) {
    RecordingTarget target;
    Printelement(target, element, kRow, 1200, row, mode);
    for (const std::string& c : target.calls())
      if (c.rfind("text_out ", 0) == 0) return c.substr(9);
    return "<none>";
  }
};

TEST_F(ReceiptTest, StandardReceiptCollapsesRepeatedLinesAndShowsTaxAsAMemoBelowThePayment) {
  Line(5, "WIDGET", 1.0f);
  Line(5, "WIDGET", 1.0f);
  Line(7, "GADGET", 2.5f, false);
  G().change_due = 0.5;
  std::vector<std::string> expected = {
      At(1200, 1, "CORNER STORE"),
      At(1200, 2, "1 HIGH ST"),
      At(1200, 3, "TOWN"),
      At(1200, 4, "TEL 123"),
      At(1200, 6, "========================"),
      At(1200, 7, "Receipt: 42"),
      At(1200, 8, "10:15  Fri 1 Mar 24"),
      At(1200, 9, "3, Clerk 3"),
      At(1200, 10, "------------------------"),
      // Two widgets at one price: one entry of two rows.
      At(60, 12, "WIDGET"),
      At(60, 13, "2 @ 1.20"),
      At(2350, 13, "2.40"),
      // The second widget's row is taken back, so the gadget follows at once.
      At(60, 14, "GADGET"),
      At(2350, 14, "2.50"),
      At(1200, 16, "Total: $4.90"),
      At(1200, 17, "========================"),
      At(1200, 19, "Payment: Cash"),
      At(1200, 20, "Cash change: 0.50"),
      At(1200, 21, "TAX 1: 0.40 (20.00%)"),
      At(1200, 23, "Always happy to help!"),
      At(1200, 24, "  "),
  };
  EXPECT_EQ(Texts(kTillReceipt), expected);

  // The same item at another price stands apart; centred items print one row each.
  Line(5, "WIDGET", 2.0f);
  S().receipt_centred = 2;
  std::vector<std::string> texts = Texts(kTillReceipt);
  EXPECT_EQ(texts[9], At(1200, 12, "2 WIDGET, 2.40"));
  EXPECT_EQ(texts[10], At(1200, 13, "GADGET, 2.50"));
  EXPECT_EQ(texts[11], At(1200, 14, "WIDGET, 2.40"));
}

TEST_F(ReceiptTest, CollapseNeedsTheSameNumberAndExactlyTheSameAmount) {
  Line(5, "A", 1.0f);
  Line(6, "B", 1.0f);
  Line(5, "A", 1.0f);
  Line(5, "A", 0.9f);  // discounted: stands apart
  Line(6, "B", 1.0f);
  Line(5, "A", 1.0f);
  EXPECT_EQ(Collapselines(B()), (std::vector<int>{3, 2, 0, 1, 0, 0}));
}

TEST_F(ReceiptTest, SubTotalAndTaxLinesFollowTheTaxAndDiscountRules) {
  auto has = [](const std::vector<std::string>& texts, const std::string& part) {
    for (const std::string& t : texts)
      if (t.find(part) != std::string::npos) return true;
    return false;
  };
  Line(5, "WIDGET", 10.0f);
  // Inclusive with tax: no sub total, the tax as a memo with its rate.
  std::vector<std::string> texts = Texts(kTillReceipt);
  EXPECT_FALSE(has(texts, "Sub total"));
  EXPECT_TRUE(has(texts, "TAX 1: 2.00 (20.00%)"));

  // Inclusive with tax and a discount: still no sub total.
  B().total_discount = 1.0f;
  texts = Texts(kTillReceipt);
  EXPECT_FALSE(has(texts, "Sub total"));
  EXPECT_TRUE(has(texts, "Discount: (1.00)"));

  // Exclusive: net prices, then sub total and the tax without a rate above the total.
  B().total_discount = 0;
  S().receipt_items_excl_tax = 2;
  texts = Texts(kTillReceipt);
  EXPECT_EQ(texts[10], At(2350, 12, "10.00"));
  EXPECT_EQ(texts[11], At(1200, 14, "Sub total: 10.00"));
  EXPECT_EQ(texts[12], At(1200, 15, "TAX 1: 2.00"));
  EXPECT_EQ(texts[13], At(1200, 16, "Total: $12.00"));
  EXPECT_FALSE(has(texts, "(20.00%)"));

  // No tax at all: no sub total unless there is a discount.
  B() = Basket{};
  SetField(B().payment_type, "Cash");
  Line(7, "GADGET", 3.0f, false);
  EXPECT_FALSE(has(Texts(kTillReceipt), "Sub total"));
  S().receipt_items_excl_tax = 0;
  B().total_discount = 0.5f;
  texts = Texts(kTillReceipt);
  EXPECT_EQ(texts[11], At(1200, 14, "Sub total: 3.00"));
  EXPECT_EQ(texts[12], At(1200, 15, "Discount: (0.50)"));
}

TEST_F(ReceiptTest, PaymentLineFollowsTheLastMatchingRule) {
  struct Case {
    float cash, ch, eft, cash_back;
    const char* type;
    const char* expected;
  };
  const Case cases[] = {
      {5, 0, 0, 0, "Cash", "Payment: Cash"},
      {0, 5, 0, 0, "CH", "Payment: Cheque"},
      {0, 0, 5, 0, "EFT", "Payment: EFT"},
      {0, 5, 5, 0, "Split", "Payment: EFT"},
      {0, 0, 5, 10, "EFT", "Payment: EFT (CB: 10.00)"},
      {0, 0, 0, 0, "Credit", "Payment: Credit"},
      {0, 0, 5, 0, "Credit", "Payment: Credit"},
      {2, 3, 0, 0, "Split", "Payment: CH with cash"},
      {2, 0, 3, 0, "Split", "Payment: EFT with cash"},
      {2, 3, 3, 0, "Split", "Payment: EFT with cash"},
  };
  for (const Case& c : cases) {
    B().tender_cash = c.cash;
    B().tender_ch = c.ch;
    B().tender_eft = c.eft;
    B().cash_back = c.cash_back;
    SetField(B().payment_type, c.type);
    EXPECT_EQ(Element(22), At(1200, 0, c.expected))
        << c.cash << " " << c.ch << " " << c.eft << " " << c.type;
  }
}

TEST_F(ReceiptTest, ElementsTellRefundsCustomersAndTheSecondCurrency) {
  G().amount_tendered = 20;
  G().change_due = 3.5;
  EXPECT_EQ(Element(17), At(1200, 0, "Tendered: 20.00"));
  EXPECT_EQ(Element(18), At(1200, 0, "Cash change: 3.50"));
  SetField(B().payment_type, "Refund");
  EXPECT_EQ(Element(16), At(1200, 0, "Refund: 42"));
  EXPECT_EQ(Element(18), "<none>");
  EXPECT_EQ(Element(28), "<none>");

  G().member.number = 1234;
  EXPECT_EQ(Element(8), At(1200, 0, "Customer: 1234"));
  S().tax2_rate = 0;
  SetField(S().tax2_name, "TAX 2");
  B().total_tax2 = 0;
  EXPECT_EQ(Element(13), At(1200, 0, "TAX 2: 0.00 (0.00%)"));

  // By line number the total may show the second currency too.
  B().total = 10;
  S().custom_line_total = 3;
  S().custom_second_currency = 2;
  S().second_currency_on = 2;
  S().second_currency_rate = 1.5;
  SetField(S().second_currency_symbol, "E");
  EXPECT_EQ(Element(14, kElementByLine, 5), At(1200, 8, "Total $10.00  E15.00"));
  EXPECT_EQ(Element(14, kElementAtRow, 5), At(1200, 5, "Total: $10.00"));
  S().second_currency_rate = 0;
  EXPECT_EQ(Element(14, kElementByLine, 5), At(1200, 8, "Total: $10.00"));
  // A line number below 1 leaves an element out.
  S().custom_line_total = 0;
  EXPECT_EQ(Element(14, kElementByLine, 5), "<none>");

  // The moment of printing, not the sale's.
  platform_.set_now(2024, 3, 9, 7, 5);
  EXPECT_EQ(Element(6), At(1200, 0, "07:05 Mar 9 2024"));
}

TEST_F(ReceiptTest, ElementsSetCentreAlignmentButTenderedAndChangeKeepTheirs) {
  RecordingTarget target;
  target.set_text_align(TextAlign::Right);
  Printelement(target, 17, kRow, 1200, 1, kElementAtRow);
  Printelement(target, 0, kRow, 1200, 2, kElementAtRow);
  EXPECT_THAT(target.calls(),
              ElementsAre("set_text_align right", "text_out 1200 42 Tendered: 0.00",
                          "set_text_align centre", "text_out 1200 84 CORNER STORE"));
}

TEST_F(ReceiptTest, LongWrappedFooterPushesTheBarcodeDown) {
  Line(5, "WIDGET", 1.0f);
  SetField(S().receipt_footer, std::string(250, 'x') + "y");
  S().footer_wordwrap = 2;
  S().receipt_barcode = 2;
  RecordingTarget target;
  Printreceipt(target, kTillReceipt);
  // k = 2 after the tax memo: the footer box spans rows 20 to 24.
  const std::vector<std::string>& calls = target.calls();
  auto wrapped = std::find_if(calls.begin(), calls.end(),
                              [](const std::string& c) { return c.rfind("draw_wrapped", 0) == 0; });
  ASSERT_NE(wrapped, calls.end());
  EXPECT_EQ(*wrapped, "draw_wrapped 0 840 2400 1008 " + std::string(250, 'x') + "y");
  EXPECT_EQ(*(wrapped - 1), "set_text_align left");
  // 251 characters at 120 a line take three lines of 40: two rows more, so the
  // bars start at row 0 + 2 + 2 + 19 + 2 = 25 (1050 units, 88.90 mm down).
  auto bar = std::find_if(calls.begin(), calls.end(),
                          [](const std::string& c) { return c.rfind("rectangle", 0) == 0; });
  ASSERT_NE(bar, calls.end());
  EXPECT_EQ(*bar, "rectangle 8600 -8890 8640 -9890");
}

TEST_F(ReceiptTest, BarcodeIsCode39OfTheTransactionNumberAcrossTheMiddle) {
  EXPECT_EQ(Barcodetext(42), "0042");
  EXPECT_EQ(Barcodetext(123456), "123456");
  // The start and stop character, and a zero, as the standard writes them.
  EXPECT_EQ(Code39modules(""),
            "100101101101"
            "0"
            "100101101101");
  EXPECT_EQ(Code39modules("0"),
            "100101101101"
            "0"
            "101001101101"
            "0"
            "100101101101");
  const std::string modules = Code39modules("0042");
  EXPECT_EQ(modules.size(), 6u * 13 - 1);

  RecordingTarget target;
  Printbarcode(target, 0);
  std::vector<std::string> bars;
  for (const std::string& c : target.calls())
    if (c.rfind("rectangle", 0) == 0) bars.push_back(c);
  EXPECT_EQ(int(bars.size()), int(std::count(modules.begin(), modules.end(), '1')));
  // The middle of the page is 101.60 mm in; six characters of 5.20 mm centre on it.
  // Row 0: 0.54 inch above the foot, 3300 - 162 - 50 - 10 = 3078 units down.
  EXPECT_EQ(bars.front(), "rectangle 8600 -26060 8640 -27060");
  EXPECT_EQ(target.calls().front(), "use_hundredths_of_mm");
  EXPECT_THAT(std::vector<std::string>(target.calls().end() - 3, target.calls().end()),
              ElementsAre("select_brush white", "use_device_units", "set_text_align centre"));

  RecordingDevice blind;
  blind.dpi_x = 0;
  RecordingTarget no_dpi(blind);
  Printbarcode(no_dpi, 3);
  EXPECT_EQ(platform_.shown(), std::vector<std::string>{"Problem: Unable to get printer"});
  EXPECT_EQ(no_dpi.calls().back(), "use_device_units");
}

TEST_F(ReceiptTest, CustomReceiptCountsOnlyThePrintedHeaderLines) {
  Line(5, "WIDGET", 1.0f);
  Line(8, "SOAP", 2.0f, false);
  // Lines of customer elements count only when the sale has a customer.
  S().custom_line_customer_name = 30;
  S().custom_line_address1 = 35;
  S().custom_mark_exempt = 2;
  std::vector<std::string> texts = Texts(kCustomReceipt);
  // The fresh settings put the clerk lowest, on line 8: items from row 10.
  EXPECT_EQ(texts[0], At(1200, 1, "CORNER STORE"));
  EXPECT_EQ(texts[4], At(1200, 5, "TEL 123"));
  EXPECT_EQ(texts[5], At(1200, 7, "10:15  Fri 1 Mar 24"));
  EXPECT_EQ(texts[6], At(1200, 8, "3, Clerk 3"));
  EXPECT_EQ(texts[7], At(20, 10, "WIDGET"));
  EXPECT_EQ(texts[8], At(2380, 10, "1.20"));
  EXPECT_EQ(texts[9], At(20, 11, "SOAP"));
  EXPECT_EQ(texts[10], At(2380, 11, "E  2.00"));
  // Footer lines count from the row after the last item (12): total on 10, by
  // line on 12, then one blank line's "  " at 12 + 12 + 2.
  EXPECT_EQ(texts[11], At(1200, 24, "Always happy to help!"));
  EXPECT_EQ(texts[12], At(1200, 22, "Total: $3.20"));
  EXPECT_EQ(texts.back(), At(1200, 26, "  "));
  EXPECT_EQ(texts.size(), 14u);

  // With a customer the address line is the lowest; a date on line 0 still prints.
  B().customer_number = 9;
  SetField(B().customer_road, "2 LOW ROAD");
  S().custom_line_date = 0;
  S().custom_blank_lines = 2;
  SetField(B().note, "LEAVE AT DOOR");
  S().custom_line_note = 14;
  texts = Texts(kCustomReceipt);
  EXPECT_EQ(texts[5], At(1200, 0, "10:15  Fri 1 Mar 24"));
  EXPECT_NE(std::find(texts.begin(), texts.end(), At(1200, 35, "2 LOW ROAD")), texts.end());
  EXPECT_NE(std::find(texts.begin(), texts.end(), At(20, 37, "WIDGET")), texts.end());
  // The note is lowest in the footer: three blank rows from 39 + 14 + 2.
  EXPECT_NE(std::find(texts.begin(), texts.end(), At(1200, 53, "LEAVE AT DOOR")), texts.end());
  EXPECT_THAT(std::vector<std::string>(texts.end() - 3, texts.end()),
              ElementsAre(At(1200, 55, "  "), At(1200, 56, "  "), At(1200, 57, "  ")));
}

TEST_F(ReceiptTest, CustomReceiptCollapsesAndPutsTheDiscountUnderTheItems) {
  for (int i = 0; i < 10; ++i) Line(5, "A VERY LONG DESCRIPTION OF A WIDGET", 1.0f);
  B().total_discount = 2;
  S().limit_description_20 = 2;
  S().custom_items_excl_tax = 2;
  std::vector<std::string> texts = Texts(kCustomReceipt);
  EXPECT_EQ(texts[7], At(20, 10, "A VERY LONG DESCRIPT"));
  EXPECT_EQ(texts[8], At(20, 11, "10 @ 1.00"));
  EXPECT_EQ(texts[9], At(2380, 11, "10.00"));
  // Ten lines, nine of them counted on the first: the items end at row 11.
  EXPECT_EQ(texts[10], At(20, 12, "(Discount: 2.00)"));

  S().custom_centred = 2;
  texts = Texts(kCustomReceipt);
  EXPECT_EQ(texts[7], At(1200, 10, "10 A VERY LONG DESCRIPT, 10.00"));
  EXPECT_EQ(texts[8], At(20, 11, "(Discount: 2.00)"));
}

TEST_F(ReceiptTest, LogoTakesItsRowsAndTheForcedFontIsArialOfTenPoints) {
  Line(5, "WIDGET", 1.0f);
  // A bitmap header is all the receipt reads of the picture: 200 x 100.
  std::string bmp(54, '\0');
  bmp[0] = 'B';
  bmp[1] = 'M';
  bmp[14] = 40;
  bmp[18] = char(200);
  bmp[22] = 100;
  WriteBytes(kLogoFile, bmp);
  S().receipt_logo = 2;
  S().force_10pt = 2;
  RecordingTarget target;
  Printreceipt(target, kTillReceipt);
  const std::vector<std::string>& calls = target.calls();
  // 10 points at 300 dots an inch: 41.67, rounded to 42.
  EXPECT_EQ(calls[0], "select_font Arial -42 0 400");
  // Half the page wide at a quarter of the page: 1200 x 600, and (600 + 20) / 44
  // rows taken (the forced font is 42 high with a leading of 2).
  EXPECT_EQ(calls[1], "draw_image 200x100 600 10 1200 600");
  EXPECT_EQ(calls[3], "text_out 1200 660 CORNER STORE");
  EXPECT_EQ(calls.back(), "select_font Courier New 40 20 400");

  // The custom receipt takes the logo unless told not to, at page width if asked.
  S().print_page_width = 2;
  S().force_10pt = 0;
  RecordingTarget custom;
  Printreceipt(custom, kCustomReceipt);
  EXPECT_EQ(custom.calls()[0], "draw_image 200x100 0 10 2400 1200");
  S().custom_no_logo = 2;
  RecordingTarget none;
  Printreceipt(none, kCustomReceipt);
  EXPECT_EQ(none.calls()[0].rfind("draw_image", 0), std::string::npos);

  // A font the device refuses: said once, and the receipt goes on.
  S().force_10pt = 2;
  RecordingDevice refusing;
  refusing.font_fails = true;
  platform_.clear_record();
  const std::vector<std::string> texts = Texts(kTillReceipt, refusing);
  EXPECT_EQ(platform_.shown(), std::vector<std::string>{"Problem: Unable set font"});
  EXPECT_FALSE(texts.empty());
}

TEST_F(ReceiptTest, AMissingLogoIsNoError) {
  Line(5, "WIDGET", 1.0f);
  S().receipt_logo = 2;
  EXPECT_EQ(Texts(kTillReceipt)[0], At(1200, 1, "CORNER STORE"));
  EXPECT_THAT(platform_.shown(), IsEmpty());
}

}  // namespace
}  // namespace tilo
