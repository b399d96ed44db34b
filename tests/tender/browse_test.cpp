// SPDX-License-Identifier: MIT
// The transaction browser on a history built day by day: the lists and their
// cut at the history date and at the limit, the discounted walk over 29
// February, "&Next" over a gap and to the end, and the commands' prompts.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <cstring>

#include "core/history.h"
#include "core/state.h"
#include "core/text.h"
#include "sale/sale_fixture.h"
#include "tender/browse.h"

namespace tilo {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct ScriptedBrowse : BrowseView {
  std::optional<std::string> invoice_list(const std::vector<std::string>& lines) override {
    listed = lines;
    return pick;
  }
  void transaction_form(TransactionBrowser& browser) override {
    basket = G().basket;
    shown.push_back(browser.shown().number);
    for (int i = 0; i < nexts; ++i)
      if (browser.Next()) shown.push_back(browser.shown().number);
  }
  std::optional<std::string> pick;
  int nexts = 0;
  std::vector<std::string> listed;
  std::vector<std::string> shown;
  Basket basket{};
};

class BrowseTest : public SaleTest {
 protected:
  void SetUp() override {
    SaleTest::SetUp();
    install_browse_view(&view_);
    platform_.set_now(2024, 3, 2, 10, 0);
    S().history_from_day = 10;
    S().history_from_month = 3;
    S().history_from_year = 2023;
  }
  void TearDown() override {
    install_browse_view(nullptr);
    SaleTest::TearDown();
  }
  // One sale of one line on file, as the commit leaves it.
  static void Put(int year, int month, int day, int32_t number, float discount = 0) {
    for (const std::string& f :
         {YearFolder(year), MonthFolder(year, month), DayFolder(year, month, day)})
      ::mkdir(f.c_str(), 0755);
    if (Bytes(YearBasePath(year)).empty()) WriteBytes(YearBasePath(year), std::string(4, '\0'));
    ASSERT_TRUE(AppendBaseRecord(year, {number, day, month}));
    SalesLogRecord sale{};
    sale.transaction_number = number;
    sale.line_count = 1;
    sale.clerk = 1;
    sale.total = sale.subtotal = 5.00f;
    sale.total_discount = discount;
    SetField(sale.payment_type, "Cash");
    ASSERT_TRUE(AppendSalesLog(year, month, day, sale));
    ItemsLogRecord line{};
    line.transaction_number = number;
    line.number = 1001;
    SetField(line.description, "ITEM 1001");
    line.line_total = 5.00f;
    ASSERT_TRUE(AppendItemsLog(year, month, day, {line}));
  }
  // Numbers 1 to 7 (4 missing) from before the history date to today.
  void History() {
    Put(2023, 3, 1, 1);
    Put(2023, 3, 9, 2, 1.00f);
    Put(2023, 3, 10, 3);
    Put(2024, 2, 29, 5, 0.50f);
    Put(2024, 2, 29, 6);
    Put(2024, 3, 2, 7);
  }

  ScriptedBrowse view_;
};

TEST_F(BrowseTest, ListsStartAtTheHistoryDateAndKeepTheFilter) {
  History();
  EXPECT_THAT(*Transactionlist({}),
              ElementsAre("3 on day 10 of month 3, 2023", "5 on day 29 of month 2, 2024",
                          "6 on day 29 of month 2, 2024", "7 on day 2 of month 3, 2024"));
  EXPECT_THAT(*Transactionlist({29, 2, 2024}),
              ElementsAre("5 on day 29 of month 2, 2024", "6 on day 29 of month 2, 2024"));
  EXPECT_THAT(*Transactionlist({0, 3, 2024}), ElementsAre("7 on day 2 of month 3, 2024"));
  EXPECT_THAT(*Transactionlist({0, 0, 2023}), ElementsAre("3 on day 10 of month 3, 2023"));
  // Walked day by day: the cut-off 9 March stays out, 29 February is found.
  EXPECT_THAT(*Discountedlist(), ElementsAre("5 on day 29 of month 2, 2024"));
  // A first year wholly before the history date lists nothing.
  S().history_from_month = 12;
  EXPECT_THAT(*Transactionlist({0, 0, 2023}), IsEmpty());
  platform_.cancel_progress_at = platform_.progress_steps + 1;
  EXPECT_FALSE(Discountedlist());
  EXPECT_THAT(platform_.shown(), IsEmpty());
}

TEST_F(BrowseTest, PastTheLimitTheListIsRefused) {
  Put(2024, 1, 5, 1);
  std::string base = Bytes(YearBasePath(2024));
  for (int32_t n = 2; n <= 31000; ++n) {
    const BaseRecord r{n, 5, 1};
    base.append(reinterpret_cast<const char*>(&r), sizeof r);
  }
  WriteBytes(YearBasePath(2024), base);
  EXPECT_EQ(Transactionlist({})->size(), 31000u);
  const BaseRecord one_more{31001, 5, 1};
  base.append(reinterpret_cast<const char*>(&one_more), sizeof one_more);
  WriteBytes(YearBasePath(2024), base);
  EXPECT_FALSE(Transactionlist({}));
  EXPECT_THAT(platform_.shown(), ElementsAre("Problem, too many transactions: Reduce the history "
                                             "on the Configuration menu"));
}

TEST_F(BrowseTest, NextPassesAGapAndStopsAtTheEnd) {
  History();
  {
    TransactionBrowser browser(false);
    ASSERT_TRUE(browser.Open(3));
    EXPECT_EQ(B().line_count, 1);
    ASSERT_TRUE(browser.Next());
    EXPECT_EQ(browser.number(), 5);
    EXPECT_THAT(browser.shown().lines, ElementsAre("1001 ITEM 1001  5.00"));
    ASSERT_TRUE(browser.Next());
    ASSERT_TRUE(browser.Next());
    EXPECT_FALSE(browser.Next());
    EXPECT_EQ(browser.number(), 7);
    EXPECT_THAT(platform_.shown(), ElementsAre("Problem: End of list."));
  }
  EXPECT_EQ(B().line_count, 0);  // the browse's end empties the basket
  TransactionBrowser discounted(true);
  ASSERT_TRUE(discounted.Open(1));
  ASSERT_TRUE(discounted.Next());
  EXPECT_EQ(discounted.number(), 2);
  ASSERT_TRUE(discounted.Next());
  EXPECT_EQ(discounted.number(), 5);
  EXPECT_FALSE(discounted.Next());
  EXPECT_EQ(discounted.number(), 5);
}

TEST_F(BrowseTest, TheCommandsAskAndShowAndAlwaysLeaveTheBasketEmpty) {
  History();
  S().transaction_number = 1;
  Browse(Command::ReprintLast);
  EXPECT_THAT(view_.shown, IsEmpty());

  S().transaction_number = 8;
  Browse(Command::ReprintLast);
  EXPECT_THAT(view_.shown, ElementsAre("7"));
  EXPECT_EQ(view_.basket.line_count, 1);
  EXPECT_STREQ(view_.basket.description[0], "ITEM 1001");
  EXPECT_FLOAT_EQ(view_.basket.total, 5.00f);
  EXPECT_DOUBLE_EQ(G().amount_tendered, 5.00);  // read as paid exactly
  EXPECT_EQ(B().line_count, 0);

  view_.pick = "6 on day 29 of month 2, 2024";
  view_.nexts = 1;
  platform_.queue_prompt("");
  Browse(Command::DisplayTransaction);
  EXPECT_EQ(view_.listed.size(), 4u);
  platform_.queue_prompt("29");
  platform_.queue_prompt("2");
  platform_.queue_prompt("2024");
  Browse(Command::TransactionsInDay);
  EXPECT_EQ(view_.listed.size(), 2u);
  platform_.queue_prompt("32");  // out of range: the browse ends
  Browse(Command::TransactionsInDay);
  EXPECT_THAT(view_.shown, ElementsAre("7", "6", "7", "6", "7"));
  EXPECT_EQ(platform_.prompts_shown.size(), 5u);
  EXPECT_EQ(B().line_count, 0);
}

}  // namespace
}  // namespace tilo
