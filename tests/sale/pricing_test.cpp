// SPDX-License-Identifier: MIT
// The rounding rules and the edges of the tax of a line, case by case.
#include <gtest/gtest.h>

#include <cstring>

#include "core/state.h"
#include "sale/pricing.h"

namespace tilo {
namespace {

// The penny comes off the float as it stands, with no rounding after it.
const float kTwentyFourLessAPenny = float(double(0.24f) - 0.01);

TEST(RoundingTest, TaxRoundsOnItsThirdDecimalAndMoneyOnItsText) {
  EXPECT_EQ(Roundtax(0.235f, 0), 0.24f);  // 0.2349999 in binary, still up
  EXPECT_EQ(Roundtax(0.234f, 0), 0.23f);
  EXPECT_EQ(Roundtax(1.2345f, 0), 1.24f);  // three decimals first: "1.235"
  EXPECT_EQ(Roundtax(12345.675f, 0), 12345.68f);
  EXPECT_EQ(Roundtax(0.235f, 2), kTwentyFourLessAPenny);
  EXPECT_EQ(Roundtax(0.234f, 2), 0.23f);  // a digit below 5 is left alone
  EXPECT_EQ(MoneyText(kTwentyFourLessAPenny), "0.23");
  EXPECT_EQ(Roundmoney(1.005), 1.0f);  // 1.00499999... in binary
  EXPECT_EQ(Roundmoney(99999.994), 99999.99f);
  EXPECT_EQ(MoneyText(-0.004), "-0.00");
  EXPECT_FALSE(MoneyAbove(double(99.99f), 99.99));  // float noise is no difference
}

// One line priced straight into a basket, as the entry does after its tests.
struct Line {
  float p;
  int32_t tax;
  int32_t no_tax_rounding = 0;
};

class LineTaxTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ResetState();
    S().tax1_switch = 2;
    S().tax1_rate = 2000;
  }
  static SettingsRecord& S() { return G().settings; }
  static Basket& B() { return G().basket; }
  static void Add(Line l) {
    const int i = B().line_count++;
    B().line_total[i] = l.p;
    Taxline(B(), i, l.p, l.tax, l.no_tax_rounding);
  }
};

// Per-line tax rounding, the tax codes and tax on tax are compared bit for bit
// against a step-by-step model over thousands of random baskets; here the
// boundaries a random price seldom lands on.
TEST_F(LineTaxTest, ThresholdLineCatchesUpOnEarlierTaxableLines) {
  S().tax1_threshold_on = 2;
  S().tax1_threshold = 100.0;
  Add({60.0f, 2});
  Add({50.0f, 2});  // 20 per cent of 110
  Add({10.0f, 2});
  EXPECT_EQ(B().tax1[0], 0.0f);
  EXPECT_EQ(B().tax1[1], 22.0f);
  EXPECT_EQ(B().tax1[2], 2.0f);

  ResetState();
  SetUp();
  S().tax1_threshold_on = 2;
  S().tax1_threshold = 100.0;
  Add({100.0f, 2});  // exactly the threshold is not above it
  Add({1.0f, 2});    // the total is not below it any more: this line alone
  EXPECT_EQ(B().tax1[0], 0.0f);
  EXPECT_EQ(B().tax1[1], 0.2f);

  // At two decimals a taxable total of 99.99 is at a threshold of 99.99, not below.
  ResetState();
  SetUp();
  S().tax1_threshold_on = 2;
  S().tax1_threshold = 99.99;
  Add({99.99f, 2});
  Add({0.05f, 2});
  EXPECT_EQ(B().tax1[1], 0.01f);
}

TEST_F(LineTaxTest, FreeLineTakesNoTaxAndLabelPriceAddsBothTaxes) {
  Add({0.0f, 1});
  EXPECT_EQ(B().taxable[0] + B().tax1[0] + B().total_taxable + B().total, 0.0f);

  S().tax2_switch = 2;
  S().tax2_rate = 500;
  S().tax_on_tax = 2;
  G().film.retail_price = 10.0f;
  G().film.tax = 1;
  EXPECT_EQ(Priceincludingtax(false), 12.6f);  // 10 + 2 + 5 per cent of 12
  EXPECT_EQ(Priceincludingtax(true), 10.0f);
  S().tax1_threshold_on = 2;
  S().tax1_threshold = 10.0;  // the price alone is tested against it
  EXPECT_EQ(Priceincludingtax(false), 10.5f);
}

TEST_F(LineTaxTest, TotalsPanelShowsFiguresOnlyForABasketWithLines) {
  S().transaction_number = 41;
  EXPECT_FALSE(Totalspanel().show);
  EXPECT_EQ(Totalspanel().transaction, "Transaction: 41");
  S().second_currency_on = 2;
  S().second_currency_rate = 1.5;
  std::memcpy(S().second_currency_symbol, "\x80", 2);
  Add({10.0f, 2});
  Add({1.5f, 0});
  B().total_discount = 1.25f;
  const TotalsPanel p = Totalspanel();
  EXPECT_TRUE(p.show);
  EXPECT_EQ(p.taxable + "|" + p.non_taxable + "|" + p.tax1 + "|" + p.tax2 + "|" + p.total,
            "10.00|1.50|2.00|0.00|13.50");
  EXPECT_EQ(p.discount, "(1.25)");
  EXPECT_EQ(p.second_currency, "\u20ac20.25");
}

}  // namespace
}  // namespace tilo
