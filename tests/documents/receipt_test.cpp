// SPDX-License-Identifier: MIT
#include "documents/receipt.h"

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
    SetField(h.site_telephone, "TEL 123");
    SetField(S().currency_symbol, "$");
    S().clerk_number = 3;
    B().transaction_number = 42;
    SetField(B().sale_time, "10:15");
    SetField(B().sale_date, "Fri 1 Mar 24");
    SetField(B().payment_type, "Cash");
  }
  static Basket& B() { return G().basket; }
  static SettingsRecord& S() { return G().settings; }

  // A line with 20% tax on top when `taxed`.
  static void Line(int64_t number, const std::string& description, float net, bool taxed = true) {
    Basket& b = B();
    const int i = b.line_count++;
    b.number[i] = number;
    SetField(b.description[i], description);
    const float tax = taxed ? net * 0.2f : 0;
    (taxed ? b.taxable : b.non_taxable)[i] = net;
    b.line_total[i] = net + tax;
    b.subtotal += net;
    b.total_tax1 += tax;
    b.total += net + tax;
  }
  // The receipt's calls, text_out ones as "x y text".
  static std::vector<std::string> Calls(int kind) {
    RecordingTarget target;
    Printreceipt(target, kind);
    std::vector<std::string> out;
    for (const std::string& c : target.calls())
      out.push_back(c.rfind("text_out ", 0) == 0 ? c.substr(9) : c);
    return out;
  }
  static std::vector<std::string> Texts(int kind) {
    std::vector<std::string> texts;
    for (const std::string& c : Calls(kind))
      if (c[0] >= '0' && c[0] <= '9') texts.push_back(c);
    return texts;
  }
  static bool Has(const std::vector<std::string>& calls, const std::string& call) {
    return std::find(calls.begin(), calls.end(), call) != calls.end();
  }
  static std::string At(int x, int row, const std::string& text) {
    return std::to_string(x) + " " + std::to_string(row * kRow) + " " + text;
  }
};

TEST_F(ReceiptTest, StandardReceiptCollapsesRepeatsAndPutsTheTaxMemoBelowThePayment) {
  Line(5, "WIDGET", 1.0f);
  Line(5, "WIDGET", 1.0f);
  Line(7, "GADGET", 2.5f, false);
  G().change_due = 0.5;
  const std::vector<std::string> expected = {
      At(1200, 1, "CORNER STORE"), At(1200, 2, "1 HIGH ST"), At(1200, 3, "TOWN"),
      At(1200, 4, "TEL 123"), At(1200, 6, "========================"), At(1200, 7, "Receipt: 42"),
      At(1200, 8, "10:15  Fri 1 Mar 24"), At(1200, 9, "3, Clerk 3"),
      At(1200, 10, "------------------------"),
      // Two widgets at one price: one entry of two rows, the second row's
      // line taken back so the gadget follows at once.
      At(60, 12, "WIDGET"), At(60, 13, "2 @ 1.20"), At(2350, 13, "2.40"), At(60, 14, "GADGET"),
      At(2350, 14, "2.50"), At(1200, 16, "Total: $4.90"), At(1200, 17, "========================"),
      At(1200, 19, "Payment: Cash"), At(1200, 20, "Cash change: 0.50"),
      At(1200, 21, "TAX 1: 0.40 (20.00%)"), At(1200, 23, "Always happy to help!"),
      At(1200, 24, "  ")};
  EXPECT_EQ(Texts(kTillReceipt), expected);

  // The same item at another price stands apart; centred items take one row each.
  Line(5, "WIDGET", 2.0f);
  S().receipt_centred = 2;
  const std::vector<std::string> texts = Texts(kTillReceipt);
  EXPECT_EQ(texts[9], At(1200, 12, "2 WIDGET, 2.40"));
  EXPECT_EQ(texts[11], At(1200, 14, "WIDGET, 2.40"));
  EXPECT_EQ(Collapselines(B()), (std::vector<int>{2, 0, 1, 1}));
}

TEST_F(ReceiptTest, SubTotalShowsForExclusivePricesWithTaxOrForADiscountWithoutTax) {
  auto subtotal = [] {
    for (const std::string& t : Texts(kTillReceipt))
      if (t.find("Sub total") != std::string::npos) return true;
    return false;
  };
  Line(5, "WIDGET", 10.0f);
  EXPECT_FALSE(subtotal());
  B().total_discount = 1.0f;
  EXPECT_FALSE(subtotal());  // inclusive, taxed, discounted
  B().total_discount = 0;
  S().receipt_items_excl_tax = 2;
  const std::vector<std::string> texts = Texts(kTillReceipt);
  EXPECT_EQ(texts[10], At(2350, 12, "10.00"));  // the net price
  EXPECT_EQ(texts[11], At(1200, 14, "Sub total: 10.00"));
  EXPECT_EQ(texts[12], At(1200, 15, "TAX 1: 2.00"));  // no rate above the total
  EXPECT_EQ(texts[13], At(1200, 16, "Total: $12.00"));

  B() = Basket{};
  Line(7, "GADGET", 3.0f, false);
  EXPECT_FALSE(subtotal());
  B().total_discount = 0.5f;
  EXPECT_TRUE(subtotal());
}

TEST_F(ReceiptTest, PaymentLineFollowsTheLastMatchingRuleAndRefundsSayRefund) {
  struct Case {
    float cash, ch, eft, cash_back;
    const char* type;
    const char* expected;
  };
  const Case cases[] = {
      {5, 0, 0, 0, "Cash", "Payment: Cash"},
      {0, 5, 0, 0, "CH", "Payment: Cheque"},
      {0, 5, 5, 0, "Split", "Payment: EFT"},
      {0, 0, 5, 10, "EFT", "Payment: EFT (CB: 10.00)"},
      {0, 0, 5, 0, "Credit", "Payment: Credit"},
      {2, 3, 0, 0, "Split", "Payment: CH with cash"},
      {2, 3, 3, 0, "Split", "Payment: EFT with cash"},
  };
  auto element = [](int e) {
    RecordingTarget target;
    Printelement(target, e, kRow, 1200, 1, kElementAtRow);
    const std::vector<std::string> texts = target.texts();
    return texts.empty() ? std::string("<none>") : texts[0];
  };
  for (const Case& c : cases) {
    B().tender_cash = c.cash;
    B().tender_ch = c.ch;
    B().tender_eft = c.eft;
    B().cash_back = c.cash_back;
    SetField(B().payment_type, c.type);
    EXPECT_EQ(element(22), c.expected) << c.cash << " " << c.ch << " " << c.eft;
  }
  G().change_due = 1;
  SetField(B().payment_type, "Refund");
  EXPECT_EQ(element(16), "Refund: 42");
  EXPECT_EQ(element(18), "<none>");

  // Placed by its line, the total may carry the second currency.
  B().total = 10;
  S().custom_second_currency = S().second_currency_on = 2;
  S().second_currency_rate = 1.5;
  SetField(S().second_currency_symbol, "E");
  RecordingTarget target;
  Printelement(target, 14, kRow, 1200, 5, kElementByLine);
  Printelement(target, 14, kRow, 1200, 5, kElementAtRow);
  EXPECT_EQ(target.texts(), (std::vector<std::string>{"Total $10.00  E15.00", "Total: $10.00"}));
}

TEST_F(ReceiptTest, CustomReceiptCountsOnlyTheHeaderLinesItPrints) {
  Line(5, "WIDGET", 1.0f);
  Line(8, "SOAP", 2.0f, false);
  Line(8, "SOAP", 2.0f, false);
  S().custom_line_customer_name = 30;  // no customer: neither printed nor counted
  S().custom_mark_exempt = 2;
  std::vector<std::string> texts = Texts(kCustomReceipt);
  // The fresh settings put the clerk lowest, on line 8: items from row 10.
  EXPECT_EQ(texts[5], At(1200, 7, "10:15  Fri 1 Mar 24"));
  EXPECT_EQ(texts[6], At(1200, 8, "3, Clerk 3"));
  EXPECT_EQ(texts[7], At(20, 10, "WIDGET"));
  EXPECT_EQ(texts[10], At(20, 12, "2 @ 2.00"));
  EXPECT_EQ(texts[11], At(2380, 12, "E  4.00"));
  // The footer counts from the row after the items (13): by line 12, total 10,
  // and one blank row after the lowest.
  EXPECT_EQ(texts[12], At(1200, 25, "Always happy to help!"));
  EXPECT_EQ(texts[13], At(1200, 23, "Total: $5.20"));
  EXPECT_EQ(texts.back(), At(1200, 27, "  "));

  // A customer's lines count; a date on line 0 still prints, on the top row.
  B().customer_number = 9;
  SetField(B().customer_name, "ANN");
  S().custom_line_date = 0;
  S().custom_blank_lines = 1;
  SetField(B().note, "LEAVE AT DOOR");
  S().custom_line_note = 14;
  texts = Texts(kCustomReceipt);
  EXPECT_EQ(texts[5], At(1200, 0, "10:15  Fri 1 Mar 24"));
  EXPECT_TRUE(Has(texts, At(1200, 30, "ANN")));
  EXPECT_TRUE(Has(texts, At(20, 32, "WIDGET")));
  EXPECT_TRUE(Has(texts, At(1200, 49, "LEAVE AT DOOR")));
  EXPECT_EQ(texts.back(), At(1200, 52, "  "));
}

TEST_F(ReceiptTest, BarcodeIsCode39OfTheNumberAndAWrappedFooterPushesItDown) {
  EXPECT_EQ(Barcodetext(42), "0042");
  EXPECT_EQ(Barcodetext(123456), "123456");
  // The start and stop character and a zero, as the standard writes them.
  EXPECT_EQ(Code39modules("0"),
            "100101101101"
            "0"
            "101001101101"
            "0"
            "100101101101");

  Line(5, "WIDGET", 1.0f);
  SetField(S().receipt_footer, std::string(251, 'x'));
  S().footer_wordwrap = 2;
  S().receipt_barcode = 2;
  const std::vector<std::string> calls = Calls(kTillReceipt);
  EXPECT_TRUE(Has(calls, "draw_wrapped 0 840 2400 1008 " + std::string(251, 'x')));
  // Three lines of 40 take two rows more: the bars start at row 2 + 2 + 19 + 2
  // (1050 units, 88.90 mm down), six characters of 5.20 mm about the middle.
  EXPECT_TRUE(Has(calls, "rectangle 8600 -8890 8640 -9890"));
  const std::string modules = Code39modules("0042");
  EXPECT_EQ(std::count_if(calls.begin(), calls.end(),
                          [](const std::string& c) { return c.rfind("rectangle", 0) == 0; }),
            std::count(modules.begin(), modules.end(), '1'));
  EXPECT_EQ(calls.back(), "set_text_align centre");

  RecordingDevice blind;
  blind.dpi_x = 0;
  RecordingTarget no_dpi(blind);
  Printbarcode(no_dpi, 3);
  EXPECT_EQ(platform_.shown(), std::vector<std::string>{"Problem: Unable to get printer"});
  EXPECT_EQ(no_dpi.calls().back(), "use_device_units");
}

TEST_F(ReceiptTest, ThePickedLogoMovesTheRowsDownAndTheForcedFontIsTenPointArial) {
  Line(5, "WIDGET", 1.0f);
  std::string bmp(54, '\0');  // a header is all that is read: 200 x 100
  bmp[0] = 'B', bmp[1] = 'M', bmp[14] = 40, bmp[18] = char(200), bmp[22] = 100;
  WriteBytes("picked.bmp", bmp);
  platform_.queue_file("picked.bmp");
  Selectlogo();
  EXPECT_EQ(Bytes(kLogoFile), bmp);
  EXPECT_EQ(platform_.shown(), std::vector<std::string>{"Logo picture: Updated."});
  S().receipt_logo = 2;
  S().force_10pt = 2;
  const std::vector<std::string> calls = Calls(kTillReceipt);
  // 10 points at 300 dpi is 41.67, rounded; half the page wide, (600 + 20) / 44 rows.
  EXPECT_EQ(calls[0], "select_font Arial -42 0 400");
  EXPECT_EQ(calls[1], "draw_image 200x100 600 10 1200 600");
  EXPECT_EQ(calls[3], "1200 660 CORNER STORE");
  S().custom_no_logo = 2;
  EXPECT_FALSE(Has(Calls(kCustomReceipt), "draw_image 200x100 600 10 1200 600"));
}

}  // namespace
}  // namespace tilo
