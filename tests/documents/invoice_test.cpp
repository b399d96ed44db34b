// SPDX-License-Identifier: MIT
#include "documents/invoice.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "core/customer_file.h"
#include "core/settings.h"
#include "core/state.h"
#include "core/text.h"
#include "documents/receipt.h"
#include "documents/recording_target.h"
#include "documents/wording.h"
#include "sale/basket.h"
#include "support/shop_fixture.h"
#include "tender/printdocument.h"

namespace tilo {
namespace {

// Ten-point Arial on the recording device is 42 high with a leading of 2, 21
// wide: rows 44 apart. The page is 2400 x 3300 with margins of 50, so left 50,
// right 2350, bottom 3250; descriptions at 130, item numbers at 1012, amounts
// right aligned at 2290.
constexpr int kRow = 44;

class InvoiceTest : public ShopTest {
 protected:
  void SetUp() override {
    ShopTest::SetUp();
    MakeFreshShop();
    ASSERT_TRUE(Opensettings());
    ASSERT_TRUE(LoadCustomerIndex());
    Defaultwording(0, G().language);
    SetField(G().heading.site_name, "CORNER STORE");
    SetField(S().currency_symbol, "$");
    B().transaction_number = 42;
    B().clerk = 1;
    SetField(B().sale_time, "10:15");
    SetField(B().sale_date, "Fri 1 Mar 24");
  }
  static Basket& B() { return G().basket; }
  static SettingsRecord& S() { return G().settings; }

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
  // Customer 7 on file with the given terms, on the sale; the customer buffer
  // holds somebody else, as it may on a reprint.
  static void Customer(int32_t terms) {
    MemberRecord m{};
    m.number = 7;
    SetField(m.name, "ANN SMITH");
    m.terms = terms;
    CompleteNewMember(m);
    ASSERT_TRUE(Insertmember(m));
    G().member = MemberRecord{};
    G().member.terms = 2;
    B().customer_number = 7;
    SetField(B().customer_name, "ANN SMITH");
    SetField(B().customer_road, "1 LANE");
    SetField(B().customer_area, "NORTH");
    SetField(B().customer_town, "BURY");  // and no fourth line
  }
  static std::vector<std::string> Calls(int kind) {
    RecordingTarget target;
    Printinvoice(target, kind);
    return target.calls();
  }
  static std::vector<std::string> Texts(int kind) {
    RecordingTarget target;
    Printinvoice(target, kind);
    return target.texts();
  }
  static bool Has(const std::vector<std::string>& calls, const std::string& call) {
    return std::find(calls.begin(), calls.end(), call) != calls.end();
  }
  static std::string At(int x, int y, const std::string& text) {
    return "text_out " + std::to_string(x) + " " + std::to_string(y) + " " + text;
  }
  static bool Mentions(const std::vector<std::string>& calls, const std::string& part) {
    return std::any_of(calls.begin(), calls.end(),
                       [&](const std::string& c) { return c.find(part) != std::string::npos; });
  }
};

TEST_F(InvoiceTest, StandardInvoiceListsNetAmountsKeepingDescriptionsApart) {
  Line(5, "WIDGET", 1.0f);
  Line(5, "WIDGET", 1.0f);
  Line(5, "WIDGET BLUE", 1.0f);  // same number and price: merges on a receipt only
  Line(0, "MISC", 2.5f, false);
  EXPECT_EQ(Collapselines(B()), (std::vector<int>{3, 0, 0, 1}));
  const std::vector<std::string> calls = Calls(kStandardInvoice);
  EXPECT_EQ(calls[0], "select_font Arial -42 0 400");
  for (const std::string& call : std::vector<std::string>{
           "select_font Arial 82 51 700", At(2330, 3 * kRow, "INVOICE"),
           At(1200, 5 * kRow, "CORNER STORE"), At(90, 13 * kRow, "Invoice Number: 42"),
           At(90, 15 * kRow, "10:15  Fri 1 Mar 24"), At(90, 16 * kRow, "Associate: Administrator"),
           At(1012, 18 * kRow, "ITEM NO"), At(2290, 18 * kRow, "NET TOTAL"),
           // Two widgets: description and number, then "2 @" and the net amount.
           At(130, 20 * kRow, "WIDGET"), At(1012, 20 * kRow, "5"), At(130, 21 * kRow, "2 @ 1.00"),
           At(2290, 21 * kRow, "2.00"), At(130, 22 * kRow, "WIDGET BLUE"),
           At(2290, 22 * kRow, "1.00"), At(1012, 23 * kRow, "-"), At(2290, 23 * kRow, "2.50"),
           At(90, 26 * kRow, "SUBTOTAL: $5.50"),
           // The summary zone from 2 inches above the foot, 40 down.
           At(110, 2690, "CUSTOMER NO"), At(600, 2690, "Not Applicable"),
           At(1760, 2690 + 3 * kRow, "5.50"), At(1840, 2690, "TAX 1"), At(2290, 2690, "0.60"),
           At(110, 2690 + 3 * kRow, "ITEMS"), At(600, 2690 + 3 * kRow, "4"),
           At(2290, 3250 - 300 + 20 - 66, "TOTAL: $6.10"),
           At(110, 3250 - 10 - 4 * kRow, "Authorized"),
           // The grey table band from row 19.5 to the half row after the last item.
           "rectangle 60 858 2330 1078", "line 991 770 991 1078"})
    EXPECT_TRUE(Has(calls, call)) << call;
  // No customer: no customer block, and no terms.
  EXPECT_FALSE(Mentions(calls, "CUSTOMER NO:"));
  EXPECT_FALSE(Mentions(calls, "Terms"));
  EXPECT_FALSE(Mentions(calls, "draw_image"));  // letter.bmp is not there

  // A logo of no width is passed over; a real one stands 12 rows tall.
  std::string bmp(54, '\0');
  bmp[0] = 'B', bmp[1] = 'M', bmp[14] = 40, bmp[22] = 100;
  WriteBytes(kLetterLogoFile, bmp);
  EXPECT_FALSE(Mentions(Calls(kStandardInvoice), "draw_image"));
  bmp[18] = char(200);
  WriteBytes(kLetterLogoFile, bmp);
  EXPECT_TRUE(Has(Calls(kStandardInvoice), "draw_image 200x100 60 10 1056 528"));
  S().invoice_no_standard_logo = 1;
  EXPECT_FALSE(Mentions(Calls(kStandardInvoice), "draw_image"));
  EXPECT_TRUE(Mentions(Calls(kDeliveryNote), "draw_image"));  // the note always has it
}

TEST_F(InvoiceTest, TermsOfEachBandInTheirTwoWordingsAndTheHeaderFontHeight) {
  S().band_credit_period[1] = 2;  // band 2: "2% disc" and 10 days
  struct Case {
    int32_t terms;
    const char* standard;
    const char* custom;
  } cases[] = {{0, "", ""},
               {1, "Nett", "Nett, "},
               {2, "2% disc, 10 days", "2% disc, 10 days"},
               {8, "50% disc, 180 days", "50% disc, 180 days"},
               {9, "", ""}};
  for (const Case& c : cases) {
    EXPECT_EQ(Standardterms(S(), c.terms), c.standard) << c.terms;
    EXPECT_EQ(Customterms(S(), c.terms), c.custom) << c.terms;
  }
  // The header font's size in points, stored as a rounded device height.
  EXPECT_EQ(Headerfontheight(300, 10), -42);
  EXPECT_EQ(Headerfontheight(600, 11), -92);
}

TEST_F(InvoiceTest, TheCustomerBlockTakesTheTermsOfTheSalesOwnCustomer) {
  Line(5, "WIDGET", 1.0f);
  Customer(8);
  B().credit_before = 10.0f;
  B().credit_after = 11.2f;
  // One item row: the block starts at row 23.5, the terms at row 32.
  const std::vector<std::string> invoice = Calls(kStandardInvoice);
  for (const std::string& call : std::vector<std::string>{
           At(90, 24 * kRow + 22, "CUSTOMER NO: 7"), At(90, 26 * kRow, "ANN SMITH"),
           At(90, 29 * kRow, "BURY"), At(90, 30 * kRow, ""), "line 60 1386 2330 1386",
           At(90, 32 * kRow, "Terms: 50% disc, 180 days"), At(600, 2690, "7"),
           At(600, 2690 + kRow, "ANN SMITH")})
    EXPECT_TRUE(Has(invoice, call)) << call;
  EXPECT_FALSE(Mentions(invoice, "balance"));
  // The delivery note words the terms the other way and adds the balances.
  const std::vector<std::string> note = Calls(kDeliveryNote);
  for (const std::string& call : std::vector<std::string>{
           At(1200, 3 * kRow, "Delivery Note"), At(90, 13 * kRow, "Transaction reference: 42"),
           At(1012, 18 * kRow, "Unit price"), At(1012, 20 * kRow, "1.00"),
           At(90, 22 * kRow, "NET TOTAL: 1.00"), At(90, 23 * kRow, "TAX 1: 0.20"),
           At(90, 24 * kRow, "TOTAL: $1.20"), At(90, 33 * kRow, "Terms: 50% disc, 180 days"),
           At(90, 34 * kRow, "Previous balance: 10.00"), At(1200, 34 * kRow, "Balance: 11.20"),
           At(110, 3250 - 10 - 4 * kRow, "Shortages must be"),
           At(2290, 3250 - 10 - 4 * kRow, "Authorized")})
    EXPECT_TRUE(Has(note, call)) << call;
  // A customer gone from the file has no terms to give.
  G().members.index.clear();
  EXPECT_TRUE(Has(Calls(kStandardInvoice), At(90, 32 * kRow, "Terms: ")));
}

TEST_F(InvoiceTest, CustomInvoicePrintsOnlyWhatHasALine) {
  Line(5, "WIDGET", 1.0f);
  Line(5, "WIDGET", 1.0f);
  Line(6, "BOLT", 3.0f);
  B().total_discount = 0.5f;
  SetField(B().note, "LEAVE AT DOOR");
  // Every line 0: the title alone, and with a customer still nothing else.
  EXPECT_EQ(Texts(kCustomInvoice), std::vector<std::string>{"INVOICE"});
  Customer(1);
  EXPECT_EQ(Texts(kCustomInvoice), std::vector<std::string>{"INVOICE"});
  // The barcode and the box are not lines: they print when set.
  S().invoice_barcode = 1;
  S().invoice_box = 1;
  EXPECT_TRUE(Mentions(Calls(kCustomInvoice), "use_hundredths_of_mm"));
  EXPECT_EQ(Texts(kCustomInvoice),
            (std::vector<std::string>{"Authorized", "...................", "Received",
                                      "...................", "INVOICE"}));

  S().invoice_box = 0;
  S().invoice_use_header_font = 1;
  SetField(S().invoice_font_face, "Times New Roman");
  S().invoice_font_height = -100;
  S().invoice_font_weight = 700;
  S().invoice_font_italic = 1;
  S().invoice_line_store_name = 2;
  S().invoice_line_invoice = 5;
  S().invoice_line_date = 6;
  S().invoice_line_clerk = 7;
  S().invoice_line_items = 9;
  // Below the table each line moves down by the three basket lines.
  S().invoice_line_net_total = 14;
  S().invoice_line_tax = 15;
  S().invoice_line_discount = 17;
  S().invoice_line_total = 18;
  S().invoice_line_note = 19;
  S().invoice_line_customer_id = 20;
  S().invoice_line_customer_detail = 21;
  S().invoice_line_customer_terms = 27;
  S().invoice_line_balance = 28;
  const std::vector<std::string> calls = Calls(kCustomInvoice);
  for (const std::string& call :
       std::vector<std::string>{"select_font Times New Roman -100 0 700 italic",
                                At(1200, 2 * kRow, "CORNER STORE"),
                                "select_font Arial -42 0 400",
                                At(90, 5 * kRow, "Invoice Number: 42"),
                                At(90, 6 * kRow, "10:15  Fri 1 Mar 24"),
                                At(90, 7 * kRow, "Associate: Administrator"),
                                At(90, 9 * kRow, "DESCRIPTION"),
                                At(1012, 9 * kRow, "NET TOTAL"),
                                At(130, 11 * kRow, "WIDGET"),
                                At(1012, 11 * kRow, "2.00"),
                                At(130, 12 * kRow, "2 @ 1.00"),
                                At(130, 13 * kRow, "BOLT"),
                                At(1012, 13 * kRow, "3.00"),
                                At(90, 17 * kRow, "NET TOTAL: 5.00"),
                                At(90, 18 * kRow, "TAX 1: 1.00"),
                                At(90, 20 * kRow, "DISCOUNT: (0.50)"),
                                At(90, 21 * kRow, "TOTAL: $6.00"),
                                At(90, 22 * kRow, "LEAVE AT DOOR"),
                                At(90, 23 * kRow, "CUSTOMER NO: 7"),
                                At(90, 24 * kRow, "ANN SMITH"),
                                At(90, 30 * kRow, "Terms: Nett, "),
                                At(90, 31 * kRow, "Previous balance: 0.00")})
    EXPECT_TRUE(Has(calls, call)) << call;
  EXPECT_FALSE(Mentions(calls, "TAX 2"));  // no second tax on this sale
}

TEST_F(InvoiceTest, ALongBasketRunsPastThePageWhileTheSummaryKeepsItsPlace) {
  for (int i = 0; i < kBasketLines; ++i) Line(1000 + i, "ITEM " + std::to_string(i), 1.0f, false);
  const std::vector<std::string> calls = Calls(kStandardInvoice);
  EXPECT_TRUE(Has(calls, At(130, 419 * kRow, "ITEM 399")));
  EXPECT_TRUE(Has(calls, At(2290, 419 * kRow, "1.00")));
  EXPECT_TRUE(Has(calls, At(90, 422 * kRow, "SUBTOTAL: $400.00")));
  EXPECT_TRUE(Has(calls, At(600, 2690 + 3 * kRow, "400")));
  EXPECT_TRUE(Has(calls, At(2290, 2904, "TOTAL: $400.00")));
}

}  // namespace
}  // namespace tilo
