// SPDX-License-Identifier: MIT
#include "tender/adjust.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sale/basket.h"
#include "sale/pricing.h"
#include "sale/sale_fixture.h"

namespace tilo {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct ScriptedForms : AdjustView {
  void open_price_form() override { opened.push_back("DISCOUNT"); }
  void open_weight_form() override { opened.push_back("DISCOUN4"); }
  void open_discount_form(bool on_total) override {
    opened.push_back(on_total ? "DISCOUNTWO" : "DISCOUN2");
  }
  std::optional<BasketLine> non_inventory_form() override { return line; }
  std::vector<std::string> opened;
  std::optional<BasketLine> line;
};

class AdjustTest : public SaleTest {
 protected:
  void SetUp() override {
    SaleTest::SetUp();
    install_adjust_view(&forms_);
  }
  void TearDown() override {
    install_adjust_view(nullptr);
    SaleTest::TearDown();
  }
  // Tax 1 at 20%, tax 2 at 5%.
  void Taxes(bool tax_on_tax = false) {
    S().tax1_switch = 1;
    S().tax1_rate = 2000;
    S().tax2_switch = 1;
    S().tax2_rate = 500;
    S().tax_on_tax = tax_on_tax;
  }
  // N, T, S, tax 1, tax 2, total, discount.
  static std::string Basketfigures() {
    std::string out;
    for (float f : {B().total_non_taxable, B().total_taxable, B().subtotal, B().total_tax1,
                    B().total_tax2, B().total, B().total_discount})
      out += (out.empty() ? "" : " ") + MoneyText(f);
    return out;
  }
  ScriptedForms forms_;
};

TEST_F(AdjustTest, TheCommandsOpenTheirFormsOnlyOnAnInventoryLine) {
  Adjustprice();
  Discountform();
  Adjustweight();
  EXPECT_THAT(Shown(), ElementsAre("Problem: No items"));
  forms_.line = Noninventoryline("Misc", "2.50", false, false);
  Noninventorysale();
  Adjustprice();
  Adjustweight();
  EXPECT_THAT(Shown(), ElementsAre("Problem: Non inventory item", "Problem: Non inventory item"));
  Stock(1001, 4.00f);
  Addtobasket(1001, 0);
  Adjustprice();
  Adjustweight();
  Discountform();
  S().discount_on_total = 2;
  Discountform();
  EXPECT_THAT(forms_.opened, ElementsAre("DISCOUNT", "DISCOUN4", "DISCOUN2", "DISCOUNTWO"));
}

TEST_F(AdjustTest, AmendedPriceFiguresByTaxCodeAndOkAddsTheirChanges) {
  struct Case {
    int32_t code;
    bool tax_on_tax;
    Figures figures;  // for an amended price of 7.50 on a 5.00 item
  } cases[] = {
      {0, false, {"7.50", "0.00", "0.00", "0.00", "7.50"}},
      {1, false, {"0.00", "7.50", "1.50", "0.38", "9.38"}},
      {1, true, {"0.00", "7.50", "1.50", "0.45", "9.45"}},
      {2, false, {"0.00", "7.50", "1.50", "0.00", "9.00"}},
      {3, false, {"0.00", "7.50", "0.00", "0.38", "7.88"}},
  };
  int64_t number = 2000;
  for (const Case& c : cases) {
    SCOPED_TRACE(c.code * 10 + c.tax_on_tax);
    Clearbasket();
    Taxes(c.tax_on_tax);
    number += 10;
    Stock(number, 1.00f, c.code);  // a line the adjustment leaves alone
    Stock(number + 1, 5.00f, c.code, 7, "SOAP");
    Addtobasket(number, 0);
    Addtobasket(number + 1, 0);
    const Basket before = B();
    LineAdjust a = Openadjust();
    ASSERT_TRUE(Amendprice(a, "75"));  // the figures follow each keystroke
    ASSERT_TRUE(Amendprice(a, "750"));
    const Figures& f = c.figures;
    EXPECT_EQ(std::vector<std::string>({a.shown.non_taxable, a.shown.taxable, a.shown.tax1,
                                        a.shown.tax2, a.shown.total}),
              std::vector<std::string>({f.non_taxable, f.taxable, f.tax1, f.tax2, f.total}));
    ASSERT_TRUE(Adjustok(a, "750"));
    // The basket moves by the line's changes: the first line's figures plus the new ones.
    EXPECT_FLOAT_EQ(B().total, Roundmoney(double(before.line_total[0]) + std::stod(f.total)));
    EXPECT_FLOAT_EQ(B().subtotal, Roundmoney(double(before.subtotal) + 2.50));
    EXPECT_FLOAT_EQ(B().total_tax1, Roundmoney(double(before.tax1[0]) + std::stod(f.tax1)));
    EXPECT_EQ(G().basket_list.rows.back(), "SOAP (7)  " + f.total);
  }
  // The number leads the row only when the list otherwise shows descriptions alone.
  S().cart_description_only = 2;
  LineAdjust a = Openadjust();
  Adjustok(a, "");
  EXPECT_EQ(G().basket_list.rows.back(), std::to_string(number + 1) + "  SOAP (7)  7.88");
}

TEST_F(AdjustTest, TheLimitOfAnAmendedPriceAndZero) {
  Stock(1001, 5.00f);
  Addtobasket(1001, 0);
  LineAdjust a = Openadjust();
  EXPECT_TRUE(Amendprice(a, "2000000"));
  EXPECT_EQ(a.shown.total, "20000.00");
  EXPECT_FALSE(Amendprice(a, "2000001"));
  EXPECT_THAT(Shown(), ElementsAre("Problem: Invalid price, limit 20000.00"));
  EXPECT_EQ(a.shown.total, "5.00");  // the figures are the line's again
  // Zero commits at once.
  G().tender_form_open = 2;
  EXPECT_TRUE(Adjustzero(a));
  EXPECT_EQ(G().tender_form_open, 0);
  EXPECT_EQ(B().line_total[0], 0.0f);
  EXPECT_EQ(Basketfigures(), "0.00 0.00 0.00 0.00 0.00 0.00 0.00");
  EXPECT_EQ(G().basket_list.rows.back(), "ITEM 1001 (10)  0.00");

  // Under a discount the new price must still leave the total at 0 or above.
  Stock(1002, 2.00f);
  Addtobasket(1002, 0);
  Applydiscount(1.00f);
  a = Openadjust();
  Amendprice(a, "99");
  EXPECT_FALSE(Adjustok(a, "99"));
  EXPECT_THAT(Shown(), ElementsAre("Problem: Discount exceeds transaction"));
  Amendprice(a, "100");
  EXPECT_TRUE(Adjustok(a, "100"));
  EXPECT_EQ(MoneyText(B().total), "0.00");
}

TEST_F(AdjustTest, ByWeightPricesHundredthsOfTheUnitWithoutTheLimit) {
  Taxes();
  Stock(1001, 4.99f, 2);
  Addtobasket(1001, 0);
  LineAdjust a = Openadjust();
  EXPECT_EQ(Weightprice(a, 100), "4.99");
  EXPECT_EQ(Weightprice(a, 200), "9.98");
  EXPECT_EQ(Typedweight("100000"), 100000);
  for (const char* refused : {"100001", "0", "1.5", ""})
    EXPECT_EQ(Typedweight(refused), std::nullopt);
  Weightchanged(a, "25000.00");
  EXPECT_EQ(a.shown.total, "30000.00");
  EXPECT_TRUE(Weightok(a, "25000.00"));
  EXPECT_EQ(MoneyText(B().total), "30000.00");
  EXPECT_THAT(Shown(), IsEmpty());
  // An untaxed line stays untaxed.
  Stock(1002, 3.00f, 0);
  Addtobasket(1002, 0);
  a = Openadjust();
  Weightchanged(a, "6.00");
  EXPECT_EQ(a.shown.non_taxable, "6.00");
  EXPECT_EQ(a.shown.tax1, "0.00");
}

TEST_F(AdjustTest, ApplydiscountByTheShapeOfTheBasket) {
  struct Case {
    const char* name;
    float untaxed, taxed, discount;  // a line of each price, 0 for none
    double threshold;                // tax 1 threshold, 0 for none
    const char* after;               // N, T, S, tax 1, tax 2, total, discount
  } cases[] = {
      {"taxed only", 0, 10.00f, 2.00f, 0, "0.00 8.00 8.00 1.60 0.40 10.00 2.00"},
      // 3.00 of 12.00 untaxed: a quarter of the discount comes off it.
      {"both", 3.00f, 9.00f, 4.00f, 0, "2.00 6.00 8.00 1.20 0.30 9.50 4.00"},
      {"untaxed only", 5.00f, 0, 1.50f, 0, "3.50 0.00 3.50 0.00 0.00 3.50 1.50"},
      {"to the threshold", 0, 10.00f, 2.00f, 8.00, "0.00 8.00 8.00 0.00 0.40 8.40 2.00"},
      {"above it", 0, 10.00f, 1.99f, 8.00, "0.00 8.01 8.01 1.60 0.40 10.01 1.99"},
  };
  int64_t number = 7000;
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    number += 10;
    Clearbasket();
    Taxes();
    S().tax1_threshold_on = c.threshold > 0 ? 2 : 0;
    S().tax1_threshold = c.threshold;
    if (c.untaxed > 0) {
      Stock(number + 1, c.untaxed, 0);
      Addtobasket(number + 1, 0);
    }
    if (c.taxed > 0) {
      S().tax1_threshold_on = 0;  // the lines enter taxed in full
      Stock(number + 2, c.taxed, 1);
      Addtobasket(number + 2, 0);
      S().tax1_threshold_on = c.threshold > 0 ? 2 : 0;
    }
    Applydiscount(c.discount);
    EXPECT_EQ(Basketfigures(), c.after);
  }
}

TEST_F(AdjustTest, TheDiscountFormsPercentRateAndReplacement) {
  Stock(1001, 0.70f);
  Addtobasket(1001, 0);
  DiscountAdjust d = Opendiscount();
  EXPECT_EQ(Percentdiscount(d, 20), "7");  // 10% of 0.70, not lost to float noise
  EXPECT_EQ(Percentdiscount(d, 3), "1");   // 1.05 cents cut down
  S().discount_button_rate = 15;
  d = Opendiscount();
  EXPECT_EQ(d.percent_index, 30);
  EXPECT_EQ(d.discount, "10");  // 0.70 x 15 = 10.5, "%.f"
  EXPECT_EQ(Amendedtotal(d, "10"), "0.60");
  EXPECT_EQ(Amendedtotal(d, "70"), "");  // not below the sub total
  EXPECT_FALSE(Discountok(d, "71"));
  EXPECT_THAT(Shown(), ElementsAre("Problem: Invalid discount"));
  EXPECT_TRUE(Discountok(d, "10"));
  d = Opendiscount();
  EXPECT_TRUE(Discountok(d, "10"));  // a second discount adds
  EXPECT_EQ(MoneyText(B().total_discount), "0.20");
  EXPECT_EQ(MoneyText(B().total), "0.50");

  // On the total the second replaces the first.
  Clearbasket();
  S().discount_on_total = 2;
  Taxes();
  Stock(1002, 10.00f, 1);
  Addtobasket(1002, 0);  // 12.50 with tax
  d = Opendiscount();
  EXPECT_EQ(Amendedtotal(d, "250"), "10.00");
  EXPECT_TRUE(Discountok(d, "250"));
  d = Opendiscount();
  EXPECT_EQ(Amendedtotal(d, "100"), "11.50");
  EXPECT_TRUE(Discountok(d, "100"));
  EXPECT_EQ(Basketfigures(), "0.00 10.00 10.00 2.00 0.50 11.50 1.00");
}

TEST_F(AdjustTest, ANonInventoryLineIsTaxedByItsTicksAndCountsInTheTotal) {
  Taxes();
  forms_.line = Noninventoryline("Lottery", "10.00", true, false);
  EXPECT_EQ(forms_.line->line_total, 12.00f);
  EXPECT_EQ(Noninventoryline("Misc", "1.2.3", false, false), std::nullopt);
  Noninventorysale();
  forms_.line = Noninventoryline("Misc", "2.50", false, false);
  Noninventorysale();
  EXPECT_EQ(B().line_count, 2);
  EXPECT_EQ(B().number[1], 0);
  EXPECT_THAT(G().basket_list.rows, ElementsAre("Lottery  12.00", "Misc  2.50"));
  EXPECT_EQ(Basketfigures(), "2.50 10.00 12.50 2.00 0.00 14.50 0.00");
  EXPECT_EQ(B().total_cost, 0.0f);
  // Voiding it takes it all back out.
  Voiditem();
  EXPECT_EQ(MoneyText(B().total), "12.00");
  // The transaction limit binds it as any other line.
  forms_.line = Noninventoryline("Misc", "99988.00", false, false);
  Noninventorysale();
  EXPECT_THAT(Shown(), ElementsAre("Problem: Transaction limit 100000.00"));
  EXPECT_EQ(B().line_count, 1);
}

}  // namespace
}  // namespace tilo
