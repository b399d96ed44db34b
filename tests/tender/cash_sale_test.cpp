// SPDX-License-Identifier: MIT
// A cash sale from "Cash F5" to the committed transaction, on a fresh shop with
// the summary box scripted. The pole and drawer bytes of a sale are read
// back by the cash-sale run of the real program.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "core/history.h"
#include "sale/basket.h"
#include "sale/sale_fixture.h"
#include "tender/cash.h"
#include "tender/tender_view.h"

namespace tilo {
namespace {

using ::testing::ElementsAre;

// The summary box as the operator sees it: the basket is still full then.
struct SeenInTheBox : TenderView {
  void summary_box() override {
    ++opened;
    basket = G().basket;
    tendered = G().amount_tendered;
    change = G().change_due;
  }
  int opened = 0;
  Basket basket{};
  double tendered = 0, change = 0;
};

class CashSaleTest : public SaleTest {
 protected:
  void SetUp() override {
    SaleTest::SetUp();
    install_tender_view(&box_);
    platform_.set_now(2024, 3, 15, 14, 5);
    Makelogdirs();  // the day's folders, as the opening makes them
    Stock(1001, 4.50f);
    Stock(1002, 8.00f);
  }
  void TearDown() override {
    install_tender_view(nullptr);
    SaleTest::TearDown();
  }
  void Sell(std::initializer_list<int64_t> numbers) {
    for (int64_t n : numbers) Addtobasket(n, 0);
    platform_.clear_record();
  }
  SeenInTheBox box_;
};

TEST_F(CashSaleTest, OkStampsTheBasketShowsTheSummaryAndCommits) {
  Sell({1001, 1002});
  const int32_t number = S().transaction_number;
  ASSERT_TRUE(Starttender());
  EXPECT_EQ(G().tender_form_open, 2);
  EXPECT_EQ(G().note_button1, 15.0);
  EXPECT_EQ(G().note_button2, 20.0);
  EXPECT_EQ(G().note_button3, 50.0);
  Finishcash(*Cashok("2000", Livechange("2000", B().total).text, B().total));

  ASSERT_EQ(box_.opened, 1);
  EXPECT_EQ(box_.basket.transaction_number, number);
  EXPECT_STREQ(box_.basket.payment_type, "Cash");
  EXPECT_FLOAT_EQ(box_.basket.tender_cash, 12.50f);  // what was sold, not the 20.00 given
  EXPECT_EQ(box_.basket.clerk, S().clerk_number);
  EXPECT_STREQ(box_.basket.sale_time, "14:05");
  EXPECT_STREQ(box_.basket.sale_date, "Fri 15 Mar 24");
  EXPECT_DOUBLE_EQ(box_.tendered, 20.00);
  EXPECT_DOUBLE_EQ(box_.change, 7.50);

  EXPECT_EQ(G().tender_form_open, 0);
  EXPECT_EQ(B().line_count, 0);
  EXPECT_EQ(S().transaction_number, number + 1);
  EXPECT_EQ(Item(1001).quantity, 9);
  EXPECT_DOUBLE_EQ(S().cash_sales, 12.50);
  // The commit's repaint of the totals sounds too.
  EXPECT_THAT(platform_.sounds, ElementsAre(8004, 8004));
  EXPECT_THAT(platform_.shown(), ElementsAre());
}

TEST_F(CashSaleTest, AnEmptyBasketCannotBeTenderedAndCancelLeavesTheBasket) {
  EXPECT_FALSE(Starttender());
  EXPECT_THAT(platform_.shown(), ElementsAre("Problem: Please select items"));
  EXPECT_EQ(G().tender_form_open, 0);

  Sell({1001});
  ASSERT_TRUE(Starttender());
  EXPECT_FALSE(Starttender());  // one form at a time
  Canceltender();
  EXPECT_EQ(G().tender_form_open, 0);
  EXPECT_EQ(B().line_count, 1);
  EXPECT_EQ(Item(1001).quantity, 10);
  EXPECT_TRUE(Starttender());
}

TEST_F(CashSaleTest, WithoutTheSummaryBoxAndWithoutSoundTheSaleStillCommits) {
  S().summary_box_off = 1;
  S().sound_off = 2;
  Sell({1002});
  ASSERT_TRUE(Starttender());
  Finishcash(Cashexact(B().total));
  EXPECT_EQ(box_.opened, 0);
  EXPECT_TRUE(platform_.sounds.empty());
  EXPECT_EQ(B().line_count, 0);
  EXPECT_DOUBLE_EQ(S().till_takings, 8.00);
}

TEST_F(CashSaleTest, ADateTheLocaleCannotShowIsWrittenOutInFigures) {
  platform_.set_now(1975, 3, 5, 9, 7);
  Sell({1001});
  Stampbasket();
  EXPECT_STREQ(B().sale_time, "09:07");
  EXPECT_STREQ(B().sale_date, "D: 5 M: 3 Y:1975");
}

}  // namespace
}  // namespace tilo
