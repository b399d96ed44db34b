// SPDX-License-Identifier: MIT
// A paid basket becoming history: the bytes of every file it writes, the stock,
// the running totals, the midnight rule and the failures of the commit.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstring>

#include "core/history.h"
#include "core/write_batch.h"
#include "platform/files.h"
#include "sale/commit.h"
#include "sale/sale_fixture.h"

namespace tilo {
namespace {

template <typename T>
T At(const std::string& bytes, size_t offset) {
  T v{};
  std::memcpy(&v, bytes.data() + offset, sizeof v);
  return v;
}

using Strings = std::vector<std::string>;
const std::string kDay = "2026/3/9/";

class CommitTest : public SaleTest {
 protected:
  void SetUp() override {
    platform_.set_now(2026, 3, 9, 14, 5);
    SaleTest::SetUp();
    Makelogdirs();
    S().clerk_number = 2;
    platform_.clear_record();
  }
  // What a tender writes into the basket before it commits.
  void Sell(std::initializer_list<int64_t> items, const char* payment) {
    for (int64_t n : items) Addtobasket(n, kEntryNormal);
    SetField(B().payment_type, payment);
    SetField(B().sale_time, "14:05");
    B().clerk = 2;
    B().tender_cash = B().total;
  }
};

TEST_F(CommitTest, CashSaleReachesEveryFileInItsLayout) {
  S().tax1_switch = 2;
  S().tax1_rate = 2000;
  S().negative_stock = 2;
  S().transaction_number = 41;
  S().today_transactions = 6;
  Stock(101, 10.0f, 2, 5, "KETTLE");
  FilmRecord spoon = Stock(102, 2.5f, 0, 0, "SPOON");
  spoon.display_category = 12;
  Store(spoon);
  Sell({101, 102}, "Cash");
  // A non-inventory line, as that form adds it.
  SetField(B().description[2], "MISC");
  B().non_taxable[2] = B().line_total[2] = 1.25f;
  B().line_count = 3;
  B().total_non_taxable = 3.75f;
  B().total = B().tender_cash = 15.75f;
  AddBasketRow("MISC  1.25");
  SetField(B().note, "GIFT WRAP");
  platform_.clear_record();
  Finishsale();
  EXPECT_EQ(platform_.sounds, (std::vector<int>{8004}));
  EXPECT_TRUE(Shown().empty());

  const std::string base = Bytes("2026/base.dat");
  ASSERT_EQ(base.size(), 16u);
  EXPECT_EQ(At<int32_t>(base, 0), 0);
  EXPECT_EQ(At<int32_t>(base, 4), 41);
  EXPECT_EQ(At<int32_t>(base, 8), 9);
  EXPECT_EQ(At<int32_t>(base, 12), 3);

  const std::string sales = Bytes(kDay + "saleslog.dat");
  ASSERT_EQ(sales.size(), 950u);
  EXPECT_EQ(At<int64_t>(sales, 0), 41);
  EXPECT_EQ(At<int64_t>(sales, 8), 7);  // the day's seventh
  EXPECT_EQ(At<int32_t>(sales, 24), 2);
  EXPECT_EQ(At<int32_t>(sales, 28), 3);
  EXPECT_EQ(At<float>(sales, 32), 3.75f);
  EXPECT_EQ(At<float>(sales, 36), 10.0f);
  EXPECT_EQ(At<float>(sales, 44), 2.0f);
  EXPECT_EQ(At<float>(sales, 52), 6.25f);  // cost: half of each inventory price
  EXPECT_EQ(At<float>(sales, 56), 15.75f);
  EXPECT_EQ(At<float>(sales, 88), 15.75f);
  EXPECT_STREQ(sales.data() + 124, "14:05");
  EXPECT_STREQ(sales.data() + 354, "Cash");
  EXPECT_STREQ(sales.data() + 870, "GIFT WRAP");

  const std::string items = Bytes(kDay + "itemslog.dat");
  ASSERT_EQ(items.size(), 3 * 104u);
  EXPECT_EQ(At<int64_t>(items, 0), 41);
  EXPECT_EQ(At<int64_t>(items, 8), 3);  // display category
  EXPECT_EQ(At<int64_t>(items, 24), 101);
  EXPECT_STREQ(items.data() + 32, "KETTLE");
  EXPECT_EQ(At<float>(items, 80), 2.0f);
  EXPECT_EQ(At<float>(items, 96), 12.0f);
  EXPECT_EQ(At<int32_t>(items, 100), 2);
  EXPECT_EQ(At<int64_t>(items, 104 + 8), 12);
  EXPECT_EQ(At<int64_t>(items, 208 + 8), 18);  // non-inventory
  EXPECT_STREQ(items.data() + 208 + 32, "MISC");

  // Stock moves; a line sold on no stock leaves it at 0 and still counts as sold.
  EXPECT_EQ(Item(101).quantity, 4);
  EXPECT_EQ(Item(101).total_sold, 1);
  EXPECT_STREQ(Item(101).last_used, "14:0509/03/2026");
  EXPECT_EQ(Item(102).quantity, 0);
  EXPECT_EQ(Item(102).total_sold, 1);

  EXPECT_EQ(S().transaction_number, 42);
  EXPECT_EQ(S().today_transactions, 7);
  EXPECT_EQ(S().today_items, 3);
  EXPECT_DOUBLE_EQ(S().till_takings, 15.75);
  EXPECT_DOUBLE_EQ(S().sales_taxable + S().sales_non_taxable + S().sales_tax1, 15.75);
  EXPECT_DOUBLE_EQ(S().cash_sales, 15.75);
  EXPECT_DOUBLE_EQ(S().cost_of_sales, 6.25);
  EXPECT_EQ(S().count_cash_sales, 1.0f);
  EXPECT_EQ(S().category_units_day_a[3] + S().category_units_month_a[3], 2);
  EXPECT_EQ(S().category_units_day_b[3] + S().category_units_month_b[3], 2);  // category 12
  EXPECT_DOUBLE_EQ(S().category_total_today[3], 12.0);
  EXPECT_DOUBLE_EQ(S().category_total_today[12], 2.5);
  EXPECT_EQ(Bytes("wr.cfg"), std::string(reinterpret_cast<char*>(&S()), sizeof(SettingsRecord)));
  EXPECT_NE(Bytes("bun4.dat")
                .find("\r\n14:05 09/03/2026 Sale: 41, Total: 15.75\r\n"
                      "101  KETTLE\r\n102  SPOON\r\n0  MISC\r\n"
                      "Clerk: 2, Manager   Items: 3\r\nPayment type: Cash\r\n"),
            std::string::npos);
  const Basket zero{};
  EXPECT_EQ(std::memcmp(&B(), &zero, sizeof zero), 0);
  EXPECT_TRUE(G().basket_list.rows.empty());
}

TEST_F(CommitTest, SplitCreditChequeAndCardGoToTheirOwnTotals) {
  Stock(1, 20.0f);
  Sell({1, 1}, "Split");
  B().tender_cash = 5.0f;
  B().tender_ch = 7.0f;
  B().tender_eft = 8.0f;
  B().tender_eft_extra = 20.5f;
  B().total_discount = 1.5f;
  Finishsale();
  EXPECT_DOUBLE_EQ(S().cash_sales + S().ch_sales, 12.0);
  EXPECT_DOUBLE_EQ(S().eft_sales, 28.5);
  EXPECT_DOUBLE_EQ(S().sales_discounts, 1.5);
  EXPECT_EQ(S().count_cash_sales + S().count_ch_sales + S().count_eft_sales, 0.0f);
  EXPECT_EQ(Item(1).total_sold, 2);  // a line each
  EXPECT_EQ(Item(1).quantity, 8);

  Sell({1}, "Credit");
  B().tender_cash = 0.0f;
  B().customer_number = 55;
  SetField(B().customer_name, "J SMITH");
  Finishsale();
  Sell({1}, "CH");
  Finishsale();
  Sell({1}, "EFT");
  Finishsale();
  EXPECT_DOUBLE_EQ(S().till_takings, 80.0);  // credit is no takings of the till
  EXPECT_DOUBLE_EQ(S().credit_sales, 20.0);
  EXPECT_DOUBLE_EQ(S().sales_total, 100.0);
  EXPECT_EQ(S().count_credit_sales + S().count_ch_sales + S().count_eft_sales, 3.0f);
  EXPECT_EQ(ReadBaseFile(2026).size(), 4u);
  EXPECT_EQ(ReadItemsLog(2026, 3, 9)[2].customer_number, 55);
  const std::string log = Bytes("bun4.dat");
  EXPECT_NE(log.find("Payment type: Split\r\nCash: 5.00  CH: 7.00  EFT: 8.00\r\n"
                     "Discount: 1.50\r\n"),
            std::string::npos);
  EXPECT_NE(log.find("Payment type: Credit\r\nCustomer: 55 J SMITH\r\n"), std::string::npos);
}

TEST_F(CommitTest, PastMidnightTheSaleGoesToTheNewDayWithOneWarning) {
  Stock(1, 1.0f);
  const Strings warning{
      "IMPORTANT - DO NOT run the program over the midnight boundary: "
      "Otherwise transactions will not archive correctly"};
  platform_.set_now(2026, 3, 10, 0, 5);
  Sell({1}, "Cash");
  Finishsale();
  Sell({1}, "Cash");
  Finishsale();
  EXPECT_EQ(Shown(), warning);
  EXPECT_EQ(ReadSalesLog(2026, 3, 10).size(), 2u);
  EXPECT_FALSE(FileExists(kDay + "saleslog.dat"));
  EXPECT_EQ(ReadBaseFile(2026).at(0).day, 10);
  EXPECT_EQ(S().today_transactions, 2);  // the totals stay with the old day

  platform_.set_now(2027, 1, 1, 0, 1);  // at the turn of the year the index is missing
  Sell({1}, "Cash");
  Finishsale();
  EXPECT_EQ(Shown(), warning);
  const std::string base = Bytes("2027/base.dat");
  ASSERT_EQ(base.size(), 16u);
  EXPECT_EQ(At<int32_t>(base, 0), 0);
  EXPECT_EQ(At<int32_t>(base, 4), 3);
  EXPECT_EQ(ReadSalesLog(2027, 1, 1).size(), 1u);
}

TEST_F(CommitTest, ItemDeletedWhileInTheBasketStopsTheCommitWithNothingWritten) {
  Stock(1, 1.0f);
  Stock(2, 2.0f);
  Sell({1, 2, 1}, "Cash");
  G().film = Item(2);
  ASSERT_TRUE(Removenumber());
  EXPECT_FALSE(Finishsale());
  EXPECT_EQ(Shown(), (Strings{"Problem: Invalid entry"}));
  EXPECT_TRUE(ReadBaseFile(2026).empty());
  EXPECT_FALSE(FileExists(kDay + "saleslog.dat"));
  EXPECT_EQ(Item(1).quantity, 10);
  EXPECT_EQ(S().transaction_number, 1);
  EXPECT_DOUBLE_EQ(S().till_takings, 0.0);
  EXPECT_EQ(B().line_count, 3);  // the sale stays to be corrected and paid again
  EXPECT_EQ(G().basket_list.rows.size(), 3u);

  G().basket_list.rows.clear();
  EXPECT_FALSE(Finishsale());  // a count without rows: cleared, nothing written
  EXPECT_EQ(Shown(), (Strings{"Problem: No items"}));
  EXPECT_EQ(B().line_count, 0);
}

TEST_F(CommitTest, AFileInTheWayStopsTheWholeSaleWithItsMessage) {
  Stock(1, 3.0f);
  ASSERT_EQ(mkdir((kDay + "itemslog.dat").c_str(), 0755), 0);
  Sell({1}, "Cash");
  EXPECT_FALSE(Finishsale());
  EXPECT_EQ(Shown(), (Strings{"Problem: Unable to open items log."}));
  EXPECT_TRUE(ReadBaseFile(2026).empty());
  EXPECT_EQ(Bytes(kDay + "saleslog.dat"), "");
  EXPECT_EQ(Item(1).quantity, 10);
  EXPECT_EQ(S().transaction_number, 1);
  EXPECT_EQ(B().line_count, 1);
  EXPECT_FALSE(JournalPending());
}

}  // namespace
}  // namespace tilo
