// SPDX-License-Identifier: MIT
// The stock summary over film.dat: only numbered records with stock count, and
// the margin stands only where it means something.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>

#include "reports/stock_summary.h"
#include "sale/sale_fixture.h"

namespace tilo {
namespace {

using ::testing::ElementsAre;
using Rows = std::vector<std::pair<std::string, std::string>>;

class StockSummaryTest : public SaleTest {};

TEST_F(StockSummaryTest, CountsStockedRecordsAndShowsTheMargin) {
  Stock(1001, 4.00f, 0, 3);   // cost 2.00
  Stock(1002, 10.00f, 0, 0);  // none on the shelf
  Stock(1003, 1.50f, 0, -2);  // sold below zero
  Stock(1004, 8.00f, 0, 1);   // cost 4.00
  std::optional<StockSummary> s = Stocksummary();
  ASSERT_TRUE(s);
  EXPECT_EQ(Stocksummaryrows(*s), (Rows{{"Items", "4"},
                                        {"Value (cost)", "10.00"},
                                        {"Value (retail)", "20.00"},
                                        {"Margin", "100.00%"}}));
  for (const StockSummary& none :
       {StockSummary{}, StockSummary{2, 5.0, 5.0}, StockSummary{1, 0, 3}})
    EXPECT_EQ(Stocksummaryrows(none)[3].second, "N/A");

  std::remove("film.dat");
  EXPECT_FALSE(Stocksummary());
  EXPECT_THAT(platform_.shown(), ElementsAre("Fatal error: Data file film.dat, not present."));
}

}  // namespace
}  // namespace tilo
