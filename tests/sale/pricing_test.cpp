// SPDX-License-Identifier: MIT
// Prices, taxes and totals of basket lines, case by case.
#include <gtest/gtest.h>

#include "sale/pricing.h"
#include "sale/sale_fixture.h"

namespace tilo {
namespace {

TEST(RoundtaxTest, ThirdDecimalAloneDecides) {
  EXPECT_EQ(Roundtax(0.235f, 0), 0.24f);  // 0.2349999... in binary, still up
  EXPECT_EQ(Roundtax(0.234f, 0), 0.23f);
  EXPECT_EQ(Roundtax(0.2349f, 0), 0.24f);  // "0.235" at three decimals: up
  EXPECT_EQ(Roundtax(1.2345f, 0), 1.24f);  // 1.23450005 prints "1.235"
  EXPECT_EQ(Roundtax(1.2344f, 0), 1.23f);
  EXPECT_EQ(Roundtax(2.0f, 0), 2.0f);
  EXPECT_EQ(Roundtax(0.0f, 2), 0.0f);
  EXPECT_EQ(Roundtax(12345.675f, 0), 12345.68f);
}

// The penny comes off the float as it stands, with no rounding after it.
const float kTwentyFourLessAPenny = float(double(0.24f) - 0.01);

TEST(RoundtaxTest, NoTaxRoundingTakesBackTheRoundingUpOnly) {
  EXPECT_EQ(Roundtax(0.235f, 2), kTwentyFourLessAPenny);
  EXPECT_EQ(Roundtax(0.239f, 2), kTwentyFourLessAPenny);
  EXPECT_EQ(MoneyText(kTwentyFourLessAPenny), "0.23");
  EXPECT_EQ(Roundtax(0.234f, 2), 0.23f);  // a digit below 5 is left alone
  EXPECT_EQ(Roundtax(0.230f, 2), 0.23f);
}

TEST(RoundmoneyTest, TwoDecimalTextOfTheValue) {
  EXPECT_EQ(Roundmoney(1.005), 1.0f);  // 1.00499999... in binary
  EXPECT_EQ(Roundmoney(1.415), 1.42f);
  EXPECT_EQ(Roundmoney(99999.994), 99999.99f);
  EXPECT_EQ(Roundmoney(-2.5), -2.5f);
  EXPECT_EQ(MoneyText(1234.5), "1234.50");
  EXPECT_EQ(MoneyText(-0.004), "-0.00");
  EXPECT_TRUE(MoneyAbove(100.006, 100.0));
  EXPECT_FALSE(MoneyAbove(100.004, 100.0));
  EXPECT_FALSE(MoneyAbove(double(99.99f), 99.99));  // float noise is no difference
}

using PricingTest = SaleTest;

TEST_F(PricingTest, TaxOnePerLineRoundedOnItsThirdDecimal) {
  S().tax1_switch = 2;
  S().tax1_rate = 2000;
  Stock(1, 1.175f, 2);
  Stock(2, 1.17f, 2);
  FilmRecord no_round = Stock(3, 1.175f, 2);
  no_round.no_tax_rounding = 2;
  Store(no_round);

  Addtobasket(1, kEntryNormal);
  EXPECT_EQ(B().tax1[0], 0.24f);
  EXPECT_EQ(B().line_total[0], 1.415f);  // the price itself is not rounded
  EXPECT_EQ(B().taxable[0], 1.175f);
  EXPECT_EQ(B().non_taxable[0], 0.0f);
  Addtobasket(2, kEntryNormal);
  EXPECT_EQ(B().tax1[1], 0.23f);
  Addtobasket(3, kEntryNormal);
  EXPECT_EQ(B().tax1[2], kTwentyFourLessAPenny);

  EXPECT_EQ(B().total_tax1, 0.70f);
  // 1.175 is 1.17499995 as a float: every running sum takes its two-decimal text.
  EXPECT_EQ(B().total_taxable, 3.51f);  // 1.17, 2.34, 3.51
  EXPECT_EQ(B().subtotal, 3.51f);
  EXPECT_EQ(B().total, 4.21f);  // 1.41, 2.81, 4.21
  EXPECT_EQ(B().total_non_taxable, 0.0f);
}

TEST_F(PricingTest, UntaxedLineCountsOnlyAsNonTaxable) {
  S().tax1_switch = 2;
  S().tax1_rate = 2000;
  Stock(1, 2.50f, 0);
  Addtobasket(1, kEntryNormal);
  EXPECT_EQ(B().non_taxable[0], 2.5f);
  EXPECT_EQ(B().line_total[0], 2.5f);
  EXPECT_EQ(B().tax1[0], 0.0f);
  EXPECT_EQ(B().total_non_taxable, 2.5f);
  EXPECT_EQ(B().total_taxable, 0.0f);
  EXPECT_EQ(B().total, 2.5f);
  EXPECT_EQ(B().subtotal, 2.5f);
  EXPECT_EQ(B().total_cost, 1.25f);
}

TEST_F(PricingTest, TaxCodesChooseTheTaxesAndTaxOnTaxCompounds) {
  S().tax1_switch = 2;
  S().tax1_rate = 2000;
  S().tax2_switch = 2;
  S().tax2_rate = 1000;
  Stock(1, 10.0f, 1);
  Stock(2, 10.0f, 2);
  Stock(3, 10.0f, 3);
  Addtobasket(1, kEntryNormal);
  Addtobasket(2, kEntryNormal);
  Addtobasket(3, kEntryNormal);
  EXPECT_EQ(B().tax1[0], 2.0f);
  EXPECT_EQ(B().tax2[0], 1.0f);
  EXPECT_EQ(B().tax1[1], 2.0f);
  EXPECT_EQ(B().tax2[1], 0.0f);
  EXPECT_EQ(B().tax1[2], 0.0f);
  EXPECT_EQ(B().tax2[2], 1.0f);

  Clearbasket();
  S().tax_on_tax = 2;
  Addtobasket(1, kEntryNormal);
  Addtobasket(3, kEntryNormal);
  EXPECT_EQ(B().tax2[0], 1.2f);  // on 10.00 + 2.00
  EXPECT_EQ(B().tax2[1], 1.0f);  // code 3: on the price plus a tax 1 of 0
  EXPECT_EQ(B().line_total[0], 13.2f);
  EXPECT_EQ(B().total_tax2, 2.2f);
  EXPECT_EQ(B().total, 24.2f);
}

TEST_F(PricingTest, CodedLineIsTaxableEvenWithBothTaxesOff) {
  Stock(1, 3.0f, 1);
  Addtobasket(1, kEntryNormal);
  EXPECT_EQ(B().taxable[0], 3.0f);
  EXPECT_EQ(B().total_taxable, 3.0f);
  EXPECT_EQ(B().total_non_taxable, 0.0f);
  EXPECT_EQ(B().total, 3.0f);
}

TEST_F(PricingTest, ThresholdLineCatchesUpOnEarlierTaxableLines) {
  S().tax1_switch = 2;
  S().tax1_rate = 2000;
  S().tax1_threshold_on = 2;
  S().tax1_threshold = 100.0;
  Stock(60, 60.0f, 2);
  Stock(50, 50.0f, 2);
  Stock(10, 10.0f, 2);
  Addtobasket(60, kEntryNormal);
  EXPECT_EQ(B().tax1[0], 0.0f);
  Addtobasket(50, kEntryNormal);
  EXPECT_EQ(B().tax1[1], 22.0f);  // 20 per cent of 110
  Addtobasket(10, kEntryNormal);
  EXPECT_EQ(B().tax1[2], 2.0f);
  EXPECT_EQ(B().total_tax1, 24.0f);
  EXPECT_EQ(B().total, 144.0f);

  // A void takes back what the line stored: the catch-up goes with it and the
  // line below the threshold stays untaxed.
  G().basket_list.selected = 1;
  Voiditem();
  EXPECT_EQ(B().total_tax1, 2.0f);
  EXPECT_EQ(B().tax1[0], 0.0f);
  EXPECT_EQ(B().total_taxable, 70.0f);
}

TEST_F(PricingTest, ThresholdReachedExactlyIsNotAbove) {
  S().tax1_switch = 2;
  S().tax1_rate = 2000;
  S().tax1_threshold_on = 2;
  S().tax1_threshold = 100.0;
  Stock(100, 100.0f, 2);
  Stock(1, 1.0f, 2);
  Addtobasket(100, kEntryNormal);
  EXPECT_EQ(B().tax1[0], 0.0f);
  Addtobasket(1, kEntryNormal);
  EXPECT_EQ(B().tax1[1], 0.2f);  // the total is not below 100 any more: this line alone

  // At two decimals a taxable total of 99.99 is at a threshold of 99.99, not below it.
  Clearbasket();
  S().tax1_threshold = 99.99;
  Stock(2, 99.99f, 2);
  Stock(3, 0.01f, 2);
  Addtobasket(2, kEntryNormal);
  Addtobasket(3, kEntryNormal);
  EXPECT_EQ(B().tax1[0], 0.0f);
  EXPECT_EQ(B().tax1[1], 0.0f);  // 0.002 rounds to nothing, and no catch-up
}

TEST_F(PricingTest, FreeLinesTakeNoTaxAndCountNowhere) {
  S().tax1_switch = 2;
  S().tax1_rate = 2000;
  Stock(1, 5.0f, 1);
  Addtobasket(1, kEntryFree);
  EXPECT_EQ(B().line_total[0], 0.0f);
  EXPECT_EQ(B().taxable[0], 0.0f);
  EXPECT_EQ(B().tax1[0], 0.0f);
  EXPECT_EQ(B().total_taxable, 0.0f);
  EXPECT_EQ(B().total, 0.0f);
  EXPECT_EQ(B().total_cost, 2.5f);  // the cost still counts
  EXPECT_EQ(B().line_count, 1);
}

TEST_F(PricingTest, TradeModeTakesTradePriceOrPercentage) {
  FilmRecord r = Stock(1, 9.99f);
  Stock(2, 4.0f);  // no trade price
  r.trade_price = 8.5f;
  Store(r);
  S().trade_mode = 2;
  Addtobasket(1, kEntryNormal);
  EXPECT_EQ(B().line_total[0], 8.5f);
  Addtobasket(2, kEntryNormal);
  EXPECT_EQ(Shown(),
            (std::vector<std::string>{"Problem: Trade price option active, no trade price"}));
  EXPECT_EQ(B().line_count, 1);

  S().trade_discount_mode = 2;
  S().trade_percent = 5.0f;
  Addtobasket(1, kEntryNormal);
  EXPECT_EQ(B().line_total[1], 9.49f);
  S().trade_percent = 0.0f;
  Addtobasket(2, kEntryNormal);
  EXPECT_EQ(B().line_total[2], 4.0f);

  // Lines already in the basket keep their prices across the toggle.
  Toggletrade();
  EXPECT_EQ(S().trade_mode, 0);
  Addtobasket(1, kEntryNormal);
  EXPECT_EQ(B().line_total[3], 9.99f);
  EXPECT_EQ(B().line_total[0], 8.5f);
  Toggletrade();
  EXPECT_EQ(S().trade_mode, 2);
}

TEST_F(PricingTest, LabelPriceAddsBothTaxesAndTestsTheThresholdOnThePriceAlone) {
  S().tax1_switch = 2;
  S().tax1_rate = 2000;
  S().tax2_switch = 2;
  S().tax2_rate = 500;
  S().tax_on_tax = 2;
  G().film = FilmRecord{};
  G().film.retail_price = 10.0f;
  G().film.tax = 1;
  EXPECT_EQ(Priceincludingtax(false), 12.6f);  // 10 + 2 + 5% of 12
  EXPECT_EQ(Priceincludingtax(true), 10.0f);
  S().tax1_threshold_on = 2;
  S().tax1_threshold = 10.0;
  EXPECT_EQ(Priceincludingtax(false), 10.5f);
  G().film.tax = 0;
  EXPECT_EQ(Priceincludingtax(false), 10.0f);
}

TEST_F(PricingTest, TotalsPanelShowsFiguresOnlyForABasketWithLines) {
  S().transaction_number = 41;
  TotalsPanel empty = Totalspanel();
  EXPECT_FALSE(empty.show);
  EXPECT_EQ(empty.transaction, "Transaction: 41");

  S().tax1_switch = 2;
  S().tax1_rate = 2000;
  S().second_currency_on = 2;
  S().second_currency_rate = 1.5;
  SetField(S().second_currency_symbol, "\x80");
  Stock(1, 10.0f, 2);
  Stock(2, 1.5f, 0);
  Addtobasket(1, kEntryNormal);
  Addtobasket(2, kEntryNormal);
  TotalsPanel panel = Totalspanel();
  EXPECT_TRUE(panel.show);
  EXPECT_EQ(panel.taxable, "10.00");
  EXPECT_EQ(panel.non_taxable, "1.50");
  EXPECT_EQ(panel.subtotal, "11.50");
  EXPECT_EQ(panel.tax1, "2.00");
  EXPECT_EQ(panel.tax2, "0.00");
  EXPECT_EQ(panel.total, "13.50");
  EXPECT_EQ(panel.discount, "");
  EXPECT_EQ(panel.second_currency, "\u20ac20.25");
  B().total_discount = 1.25f;
  EXPECT_EQ(Totalspanel().discount, "(1.25)");
  S().second_currency_rate = 0.0;
  EXPECT_EQ(Totalspanel().second_currency, "");
}

}  // namespace
}  // namespace tilo
