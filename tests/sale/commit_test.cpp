// SPDX-License-Identifier: MIT
// A paid basket becoming history: the bytes of every file it writes, the stock,
// the running totals, the midnight rule and each failure of the commit.
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <cstring>

#include "core/history.h"
#include "platform/files.h"
#include "sale/commit.h"
#include "sale/pricing.h"
#include "sale/sale_fixture.h"

namespace tilo {
namespace {

template <typename T>
T At(const std::string& bytes, size_t offset) {
  T v{};
  std::memcpy(&v, bytes.data() + offset, sizeof v);
  return v;
}

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
  void Pay(const char* payment, int32_t clerk = 2) {
    SetField(B().payment_type, payment);
    SetField(B().sale_time, "14:05");
    SetField(B().sale_date, "Mon 9 Mar 26");
    B().clerk = clerk;
    B().tender_cash = B().total;
  }
  // A line that is not in the inventory, as the non-inventory form adds it.
  void AddMiscLine(const char* description, float price) {
    const int i = B().line_count++;
    SetField(B().description[i], description);
    B().non_taxable[i] = price;
    B().line_total[i] = price;
    B().total_non_taxable = Roundmoney(double(B().total_non_taxable) + price);
    B().subtotal = Roundmoney(double(B().subtotal) + price);
    B().total = Roundmoney(double(B().total) + price);
    AddBasketRow(std::string(description) + "  " + MoneyText(price));
  }
  static std::string Day(const char* file, int y = 2026, int m = 3, int d = 9) {
    return DayFolder(y, m, d) + "/" + file;
  }
};

using Strings = std::vector<std::string>;

TEST_F(CommitTest, CashSaleReachesEveryFile) {
  S().tax1_switch = 2;
  S().tax1_rate = 2000;
  S().negative_stock = 2;
  S().transaction_number = 41;
  S().today_transactions = 6;
  Stock(101, 10.0f, 2, 5, "KETTLE");
  FilmRecord c = Stock(102, 2.5f, 0, 0, "SPOON");
  c.display_category = 12;
  Store(c);
  Addtobasket(101, kEntryNormal);
  Addtobasket(102, kEntryNormal);
  AddMiscLine("MISC", 1.25f);
  SetField(B().note, "GIFT WRAP");
  Pay("Cash");
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

  const std::string sales = Bytes(Day("saleslog.dat"));
  ASSERT_EQ(sales.size(), 950u);
  EXPECT_EQ(At<int64_t>(sales, 0), 41);
  EXPECT_EQ(At<int64_t>(sales, 8), 7);  // the day's seventh
  EXPECT_EQ(At<int64_t>(sales, 16), 0);
  EXPECT_EQ(At<int32_t>(sales, 24), 2);
  EXPECT_EQ(At<int32_t>(sales, 28), 3);
  EXPECT_EQ(At<float>(sales, 32), 3.75f);  // non taxable
  EXPECT_EQ(At<float>(sales, 36), 10.0f);  // taxable
  EXPECT_EQ(At<float>(sales, 40), 13.75f);
  EXPECT_EQ(At<float>(sales, 44), 2.0f);
  EXPECT_EQ(At<float>(sales, 52), 6.25f);  // cost: half of each inventory price
  EXPECT_EQ(At<float>(sales, 56), 15.75f);
  EXPECT_EQ(At<float>(sales, 88), 15.75f);  // tender_cash
  EXPECT_STREQ(sales.data() + 124, "14:05");
  EXPECT_STREQ(sales.data() + 144, "Mon 9 Mar 26");
  EXPECT_STREQ(sales.data() + 354, "Cash");
  EXPECT_STREQ(sales.data() + 870, "GIFT WRAP");

  const std::string items = Bytes(Day("itemslog.dat"));
  ASSERT_EQ(items.size(), 3 * 104u);
  EXPECT_EQ(At<int64_t>(items, 0), 41);
  EXPECT_EQ(At<int64_t>(items, 8), 3);  // display category
  EXPECT_EQ(At<int64_t>(items, 24), 101);
  EXPECT_STREQ(items.data() + 32, "KETTLE");
  EXPECT_EQ(At<float>(items, 76), 10.0f);
  EXPECT_EQ(At<float>(items, 80), 2.0f);
  EXPECT_EQ(At<float>(items, 96), 12.0f);
  EXPECT_EQ(At<int32_t>(items, 100), 2);
  EXPECT_EQ(At<int64_t>(items, 104 + 8), 12);
  EXPECT_EQ(At<float>(items, 104 + 72), 2.5f);
  EXPECT_EQ(At<int64_t>(items, 208 + 8), 18);  // non-inventory
  EXPECT_EQ(At<int64_t>(items, 208 + 24), 0);
  EXPECT_STREQ(items.data() + 208 + 32, "MISC");

  // Stock moves; a line sold on no stock leaves it at 0 and still counts as sold.
  FilmRecord after_a = Item(101);
  EXPECT_EQ(after_a.quantity, 4);
  EXPECT_EQ(after_a.total_sold, 1);
  EXPECT_STREQ(after_a.last_used, "14:0509/03/2026");
  FilmRecord after_c = Item(102);
  EXPECT_EQ(after_c.quantity, 0);
  EXPECT_EQ(after_c.total_sold, 1);

  EXPECT_EQ(S().transaction_number, 42);
  EXPECT_EQ(S().today_transactions, 7);
  EXPECT_EQ(S().today_items, 3);
  EXPECT_DOUBLE_EQ(S().till_takings, 15.75);
  EXPECT_DOUBLE_EQ(S().sales_total, 15.75);
  EXPECT_DOUBLE_EQ(S().sales_taxable, 10.0);
  EXPECT_DOUBLE_EQ(S().sales_non_taxable, 3.75);
  EXPECT_DOUBLE_EQ(S().sales_tax1, 2.0);
  EXPECT_DOUBLE_EQ(S().cash_sales, 15.75);
  EXPECT_DOUBLE_EQ(S().cost_of_sales, 6.25);
  EXPECT_EQ(S().count_cash_sales, 1.0f);
  EXPECT_EQ(S().category_units_day_a[3], 1);
  EXPECT_EQ(S().category_units_month_a[3], 1);
  EXPECT_EQ(S().category_units_day_b[3], 1);  // category 12
  EXPECT_EQ(S().category_units_month_b[3], 1);
  EXPECT_DOUBLE_EQ(S().category_total_today[3], 12.0);
  EXPECT_DOUBLE_EQ(S().category_total_today[12], 2.5);
  const std::string cfg = Bytes("wr.cfg");
  ASSERT_EQ(cfg.size(), sizeof(SettingsRecord));
  EXPECT_EQ(std::memcmp(cfg.data(), &S(), cfg.size()), 0);

  EXPECT_NE(Bytes("bun4.dat")
                .find("\r\n14:05 09/03/2026 Sale: 41, Total: 15.75\r\n"
                      "101  KETTLE\r\n102  SPOON\r\n0  MISC\r\n"
                      "Clerk: 2, Manager   Items: 3\r\n"
                      "Payment type: Cash\r\n"),
            std::string::npos);

  Basket zero{};
  EXPECT_EQ(std::memcmp(&B(), &zero, sizeof zero), 0);
  EXPECT_TRUE(G().basket_list.rows.empty());
}

TEST_F(CommitTest, RepeatedItemMovesStockOncePerLineAndIndexesOnce) {
  Stock(7, 1.0f, 0, 10);
  Addtobasket(7, kEntryNormal);
  Repeatlast("2");
  Pay("Cash");
  Finishsale();
  EXPECT_EQ(Item(7).quantity, 7);
  EXPECT_EQ(Item(7).total_sold, 3);
  EXPECT_EQ(Bytes("2026/base.dat").size(), 16u);
  EXPECT_EQ(Bytes(Day("itemslog.dat")).size(), 3 * 104u);
  EXPECT_EQ(S().today_items, 3);

  // The next sale follows in the same files with the next number.
  Addtobasket(7, kEntryNormal);
  Pay("Cash");
  Finishsale();
  const std::vector<BaseRecord> index = ReadBaseFile(2026);
  ASSERT_EQ(index.size(), 2u);
  EXPECT_EQ(index[1].transaction_number, 2);
  EXPECT_EQ(ReadSalesLog(2026, 3, 9).back().day_sequence, 2);
}

TEST_F(CommitTest, SplitAndCreditSalesGoToTheirOwnTotals) {
  Stock(1, 20.0f);
  Addtobasket(1, kEntryNormal);
  Pay("Split");
  B().tender_cash = 5.0f;
  B().tender_ch = 7.0f;
  B().tender_eft = 8.0f;
  B().tender_eft_extra = 0.5f;
  B().total_discount = 1.5f;
  Finishsale();
  EXPECT_DOUBLE_EQ(S().cash_sales, 5.0);
  EXPECT_DOUBLE_EQ(S().ch_sales, 7.0);
  EXPECT_DOUBLE_EQ(S().eft_sales, 8.5);
  EXPECT_DOUBLE_EQ(S().till_takings, 20.0);
  EXPECT_DOUBLE_EQ(S().sales_discounts, 1.5);
  EXPECT_EQ(
      S().count_cash_sales + S().count_ch_sales + S().count_eft_sales + S().count_credit_sales,
      0.0f);

  Addtobasket(1, kEntryNormal);
  Pay("Credit");
  B().tender_cash = 0.0f;
  B().customer_number = 55;
  SetField(B().customer_name, "J SMITH");
  Finishsale();
  EXPECT_DOUBLE_EQ(S().till_takings, 20.0);  // credit is no takings of the till
  EXPECT_DOUBLE_EQ(S().credit_sales, 20.0);
  EXPECT_DOUBLE_EQ(S().sales_total, 40.0);
  EXPECT_EQ(S().count_credit_sales, 1.0f);
  EXPECT_EQ(ReadItemsLog(2026, 3, 9).back().customer_number, 55);

  const std::string log = Bytes("bun4.dat");
  EXPECT_NE(log.find("Payment type: Split\r\nCash: 5.00  CH: 7.00  EFT: 8.00\r\n"
                     "Discount: 1.50\r\n"),
            std::string::npos);
  EXPECT_NE(log.find("Payment type: Credit\r\nCustomer: 55 J SMITH\r\n"), std::string::npos);

  Addtobasket(1, kEntryNormal);
  Pay("CH");
  Finishsale();
  Addtobasket(1, kEntryNormal);
  Pay("EFT");
  Finishsale();
  EXPECT_EQ(S().count_ch_sales, 1.0f);
  EXPECT_EQ(S().count_eft_sales, 1.0f);
}

TEST_F(CommitTest, AfterMidnightTheSaleGoesToTheNewDayWithOneWarning) {
  Stock(1, 1.0f);
  platform_.set_now(2026, 3, 10, 0, 5);
  for (int sale = 0; sale < 2; ++sale) {
    Addtobasket(1, kEntryNormal);
    Pay("Cash");
    Finishsale();
  }
  EXPECT_EQ(Shown(), (Strings{"IMPORTANT - DO NOT run the program over the midnight boundary: "
                              "Otherwise transactions will not archive correctly"}));
  EXPECT_EQ(ReadSalesLog(2026, 3, 10).size(), 2u);
  EXPECT_FALSE(FileExists(Day("saleslog.dat")));
  const std::vector<BaseRecord> index = ReadBaseFile(2026);
  ASSERT_EQ(index.size(), 2u);
  EXPECT_EQ(index[0].day, 10);
  // The totals still belong to the old day until the next start.
  EXPECT_EQ(S().today_transactions, 2);
}

TEST_F(CommitTest, AtTheTurnOfTheYearTheNewYearsIndexIsMade) {
  Stock(1, 1.0f);
  platform_.set_now(2027, 1, 1, 0, 1);
  Addtobasket(1, kEntryNormal);
  Pay("Cash");
  Finishsale();
  EXPECT_EQ(Shown().size(), 1u);
  const std::string base = Bytes("2027/base.dat");
  ASSERT_EQ(base.size(), 16u);
  EXPECT_EQ(At<int32_t>(base, 0), 0);
  EXPECT_EQ(At<int32_t>(base, 8), 1);
  EXPECT_EQ(At<int32_t>(base, 12), 1);
  EXPECT_EQ(ReadSalesLog(2027, 1, 1).size(), 1u);
  EXPECT_EQ(ReadBaseFile(2026).size(), 0u);
}

TEST_F(CommitTest, ItemDeletedWhileInTheBasketStopsTheCommitThere) {
  Stock(1, 1.0f);
  Stock(2, 2.0f);
  Addtobasket(1, kEntryNormal);
  Addtobasket(2, kEntryNormal);
  Addtobasket(1, kEntryNormal);
  G().film = Item(2);
  ASSERT_TRUE(Removenumber());
  Pay("Cash");
  Finishsale();
  EXPECT_EQ(Shown(), (Strings{"Problem: Invalid entry"}));
  EXPECT_EQ(Bytes("2026/base.dat").size(), 16u);
  EXPECT_EQ(Bytes(Day("saleslog.dat")).size(), 950u);
  EXPECT_EQ(Bytes(Day("itemslog.dat")).size(), 104u);
  EXPECT_EQ(Item(1).quantity, 9);  // the line before it was committed in full
  EXPECT_EQ(S().category_units_day_a[3], 1);
  EXPECT_EQ(S().transaction_number, 1);  // but no totals moved
  EXPECT_EQ(S().today_transactions, 0);
  EXPECT_DOUBLE_EQ(S().till_takings, 0.0);
  EXPECT_EQ(B().line_count, 3);
  EXPECT_TRUE(G().basket_list.rows.empty());
}

TEST_F(CommitTest, CountWithoutRowsClearsTheBasketAndWritesNothing) {
  Finishsale();  // an empty basket: nothing at all
  EXPECT_TRUE(Shown().empty());
  B().line_count = 1;
  B().number[0] = 1;
  Finishsale();
  EXPECT_EQ(Shown(), (Strings{"Problem: No items"}));
  EXPECT_EQ(B().line_count, 0);
  EXPECT_FALSE(FileExists(Day("saleslog.dat")));
  EXPECT_EQ(S().transaction_number, 1);
}

TEST_F(CommitTest, FailedWritesAreReportedAndTheCommitGoesOn) {
  Stock(1, 3.0f);
  ASSERT_EQ(mkdir(Day("saleslog.dat").c_str(), 0755), 0);
  ASSERT_EQ(mkdir(Day("itemslog.dat").c_str(), 0755), 0);
  ASSERT_EQ(mkdir("bun4.dat", 0755), 0);
  ASSERT_TRUE(RemoveFile("wr.cfg"));
  ASSERT_EQ(mkdir("wr.cfg", 0755), 0);
  Addtobasket(1, kEntryNormal);
  Pay("Cash");
  Finishsale();
  EXPECT_EQ(Shown(),
            (Strings{"Problem: Unable to open sales log.", "Problem: Unable to open items log.",
                     "Problem: Data file: bun4.dat, not present.",
                     "Fatal error: Data file: wr.cfg, not present."}));
  EXPECT_EQ(Bytes("2026/base.dat").size(), 16u);
  EXPECT_EQ(Item(1).quantity, 9);        // stock still moves
  EXPECT_EQ(S().transaction_number, 2);  // the totals are right in memory
  EXPECT_DOUBLE_EQ(S().till_takings, 3.0);
  EXPECT_EQ(B().line_count, 0);
}

TEST_F(CommitTest, UnopenableIndexIsReportedAfterTheFolderCheck) {
  Stock(1, 3.0f);
  ASSERT_TRUE(RemoveFile("2026/base.dat"));
  ASSERT_EQ(mkdir("2026/base.dat", 0755), 0);
  Addtobasket(1, kEntryNormal);
  Pay("Cash");
  Finishsale();
  const Strings shown = Shown();
  ASSERT_FALSE(shown.empty());
  EXPECT_EQ(shown.back(), "Problem: Unable to open invoice log.");
  EXPECT_EQ(ReadSalesLog(2026, 3, 9).size(), 1u);
  EXPECT_EQ(S().transaction_number, 2);
}

}  // namespace
}  // namespace tilo
