// SPDX-License-Identifier: MIT
#include "core/history.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstring>
#include <filesystem>
#include <string>

#include "core/settings.h"
#include "core/startup.h"
#include "core/state.h"
#include "core/text.h"
#include "platform/files.h"
#include "support/shop_fixture.h"

namespace tilo {
namespace {

using HistoryTest = ShopTest;

std::string Header0() {
  return std::string(4, '\0');
}

TEST_F(HistoryTest, TodaysFoldersAreMadeOnceWithTheirMarkers) {
  platform_.set_now(2026, 11, 22, 7, 5);
  Makelogdirs();
  EXPECT_EQ(Bytes("2026/base.dat"), Header0());
  EXPECT_EQ(Bytes("2026/11/base.dat"), "07:05");
  EXPECT_EQ(Bytes("2026/11/22/base.dat"), "07:05");
  EXPECT_TRUE(platform_.messages.empty());

  // Nothing is written again while the day's marker stands.
  platform_.set_now(2026, 11, 22, 18, 0);
  Makelogdirs();
  EXPECT_EQ(Bytes("2026/11/base.dat"), "07:05");

  // The next day adds only its own folder.
  platform_.set_now(2026, 11, 23, 8, 1);
  Makelogdirs();
  EXPECT_EQ(Bytes("2026/base.dat"), Header0());
  EXPECT_EQ(Bytes("2026/11/base.dat"), "07:05");
  EXPECT_EQ(Bytes("2026/11/23/base.dat"), "08:01");

  // A new year makes the whole branch.
  platform_.set_now(2027, 1, 1, 0, 2);
  Makelogdirs();
  EXPECT_EQ(Bytes("2027/base.dat"), Header0());
  EXPECT_EQ(Bytes("2027/1/1/base.dat"), "00:02");
  EXPECT_TRUE(platform_.messages.empty());
}

// A folder left without its marker by a start cut short is completed; a file
// standing where a folder should be is refused.
TEST_F(HistoryTest, AFolderWithoutItsMarkerIsCompletedAndAFileInTheWayRefused) {
  platform_.set_now(2026, 11, 22, 7, 5);
  ASSERT_TRUE(MakeFolder("2026"));
  ASSERT_TRUE(MakeFolder("2026/11"));
  Makelogdirs();
  EXPECT_TRUE(platform_.messages.empty());
  EXPECT_EQ(Bytes("2026/base.dat"), Header0());
  EXPECT_EQ(Bytes("2026/11/base.dat"), "07:05");
  EXPECT_EQ(Bytes("2026/11/22/base.dat"), "07:05");

  std::filesystem::remove_all("2026/11");
  WriteBytes("2026/11", "x");
  Makelogdirs();
  EXPECT_EQ(platform_.shown(),
            std::vector<std::string>{"Fatal error: Unable to create month log directory"});
}

void Log(int year, int month, int day, int32_t number) {
  ASSERT_TRUE(AppendBaseRecord(year, BaseRecord{number, day, month}));
}

TEST_F(HistoryTest, FindtransactionTakesTheEarliestInTheHistoryWindow) {
  platform_.set_now(2024, 3, 1);
  Makelogdirs();
  platform_.set_now(2026, 5, 9);
  Makelogdirs();  // 2025 has no index at all
  Log(2024, 3, 1, 7);
  Log(2024, 3, 2, 8);
  Log(2026, 5, 9, 7);  // the number again, after a wrap
  Log(2026, 5, 9, 9);
  G().settings.history_from_year = 2024;

  auto place = Findtransaction(7);
  ASSERT_TRUE(place);
  EXPECT_EQ(place->year, 2024);
  EXPECT_EQ(place->month, 3);
  EXPECT_EQ(place->day, 1);
  ASSERT_TRUE(Findtransaction(9));
  EXPECT_EQ(Findtransaction(9)->year, 2026);
  EXPECT_FALSE(Findtransaction(10));

  // Raising the window reaches the later use; earlier years are out of reach.
  G().settings.history_from_year = 2025;
  ASSERT_TRUE(Findtransaction(7));
  EXPECT_EQ(Findtransaction(7)->year, 2026);
  EXPECT_FALSE(Findtransaction(8));

  EXPECT_FALSE(Findtransaction(0));
  EXPECT_FALSE(Findtransaction(200000001));
  EXPECT_TRUE(platform_.messages.empty());
}

SalesLogRecord Sale(int64_t number, const char* payment) {
  SalesLogRecord r{};
  r.transaction_number = number;
  r.total = float(number) * 1.5f;
  SetField(r.payment_type, payment);
  return r;
}

ItemsLogRecord Line(int64_t number, const char* description) {
  ItemsLogRecord r{};
  r.transaction_number = number;
  SetField(r.description, description);
  return r;
}

TEST_F(HistoryTest, ReadtransactionTakesTheSaleAndItsLinesInFileOrder) {
  platform_.set_now(2026, 5, 9);
  Makelogdirs();
  ASSERT_TRUE(AppendSalesLog(2026, 5, 9, Sale(4, "Cash")));
  ASSERT_TRUE(AppendItemsLog(2026, 5, 9, {Line(4, "A"), Line(4, "B")}));
  ASSERT_TRUE(AppendSalesLog(2026, 5, 9, Sale(5, "Refund")));
  ASSERT_TRUE(AppendItemsLog(2026, 5, 9, {Line(5, "C")}));
  ASSERT_TRUE(AppendItemsLog(2026, 5, 9, {Line(4, "D")}));  // a stray later line still belongs
  EXPECT_EQ(Bytes("2026/5/9/saleslog.dat").size(), 2 * 950u);
  EXPECT_EQ(Bytes("2026/5/9/itemslog.dat").size(), 4 * 104u);

  auto t = Readtransaction(2026, 5, 9, 4);
  ASSERT_TRUE(t);
  EXPECT_EQ(t->sale.total, 6.0f);
  EXPECT_EQ(FieldText(t->sale.payment_type), "Cash");
  ASSERT_EQ(t->lines.size(), 3u);
  EXPECT_EQ(FieldText(t->lines[0].description), "A");
  EXPECT_EQ(FieldText(t->lines[1].description), "B");
  EXPECT_EQ(FieldText(t->lines[2].description), "D");
  EXPECT_FALSE(Readtransaction(2026, 5, 9, 6));
  EXPECT_TRUE(platform_.messages.empty());

  // The year's index still finds a number whose day folder is gone.
  Log(2026, 5, 9, 4);
  G().settings.history_from_year = 2026;
  std::filesystem::remove_all("2026/5/9");
  auto place = Findtransaction(4);
  ASSERT_TRUE(place);
  EXPECT_FALSE(Readtransaction(place->year, place->month, place->day, 4));
  EXPECT_EQ(platform_.shown(), std::vector<std::string>{"Problem: Unable to open sales log."});
}

// The summary line by line, with every figure in its place.
TEST_F(HistoryTest, DailySummaryText) {
  State& g = G();
  platform_.set_now(2026, 11, 22, 17, 45);  // a Sunday
  g.now = platform_.now();
  g.start_weekday = 0;
  g.start_hour = 8;
  g.start_minute = 5;
  SetField(g.heading.site_name, "CORNER STORE");
  g.films.live = 120;
  g.members.live = 7;
  SettingsRecord& s = g.settings;
  s.till_takings = 150;
  s.takings_history[7] = 120;
  s.transaction_number = 42;
  s.today_transactions = 9;
  s.today_items = 23;
  s.yesterday_transactions = 11;
  s.yesterday_items = 30;
  s.new_customers_today = 2;
  s.count_cash_sales = 5.9f;  // cut, not rounded
  s.cash_sales = 100.5;
  s.count_ch_sales = 1;
  s.ch_sales = 20;
  s.count_eft_sales = 2;
  s.eft_sales = 29.5;
  s.credit_sales = 0.25;
  s.count_cash_refunds = 1;
  s.cash_refunds = 4.5;
  s.eft_refunds = 1;
  s.sales_non_taxable = 60;
  s.sales_taxable = 80;
  s.sales_subtotal = 140;
  s.sales_tax1 = 16;
  s.sales_tax2 = 0;
  s.sales_total = 156;
  s.count_balance_cash = 1;
  s.balance_cash = 10;
  s.balance_ch = 5;
  s.balance_eft = 0.5;
  s.petty_cash_today = 3.2;
  s.cashback_today = 20;
  s.cost_of_sales = 90.25;
  EXPECT_EQ(DailySummaryText(),
            "CORNER STORE  17:45 Sunday November 22 2026"
            "\r\nToday's till takings: 150.00"
            "\r\nOntime: 08:05  Transaction number: 42"
            "\r\nInventory on the system: 120, Customers on the system: 7"
            "\r\nToday transactions: 9 Items: 23"
            "\r\nYesterday transactions: 11 Items: 30"
            "\r\nToday vs. last Sunday: 125.00%"
            "\r\nNew customers: 2"
            "\r\n\r\nCash sales (5): 100.50"
            "\r\nCH sales (1): 20.00"
            "\r\nEFT sales (2): 29.50"
            "\r\nCredit sales (0): 0.25"
            "\r\nTotal: 150.25"
            "\r\n\r\nCash refunds (1): 4.50"
            "\r\nCH refunds (0): 0.00"
            "\r\nEFT refunds (0): 1.00"
            "\r\nCredit refunds (0): 0.00"
            "\r\nTotal: (5.50)"
            "\r\n\r\nNontaxable sales: 60.00"
            "\r\nTaxable sales: 80.00"
            "\r\nSub total: 140.00"
            "\r\nTax 1: 16.00"
            "\r\nTax 2: 0.00"
            "\r\nTotal: 156.00"
            "\r\n\r\nBalance payments cash (1): 10.00"
            "\r\nBalance payments CH (0): 5.00"
            "\r\nBalance payments EFT (0): 0.50"
            "\r\nTotal: 15.50"
            "\r\n(Excludes petty cash payments: 3.20)"
            "\r\n(Excludes cash back: 20.00)"
            "\r\n\r\nNet sales: 140.00"
            "\r\nCost of sales: 90.25"
            "\r\nGross profit: 49.75");

  // With nothing to compare with, the comparison reads 0.00%.
  s.takings_history[7] = 0;
  const std::string text = DailySummaryText();
  EXPECT_NE(text.find("\r\nToday vs. last Sunday: 0.00%\r\n"), std::string::npos);
}

TEST_F(HistoryTest, TheCloseWritesTheSummaryOfTheMomentIntoTodaysFolder) {
  platform_.set_now(2026, 11, 22, 9, 0);
  MakeFreshShop();
  ASSERT_TRUE(OpenStore());
  G().settings.till_takings = 12.5;
  platform_.set_now(2026, 11, 22, 18, 30);
  Closedown();
  const std::string daily = Bytes("2026/11/22/thedaily.dat");
  EXPECT_EQ(daily.rfind("THE CORNER SHOP  18:30 Sunday November 22 2026\r\n", 0), 0u) << daily;
  EXPECT_NE(daily.find("\r\nToday's till takings: 12.50\r\n"), std::string::npos);
  EXPECT_NE(daily.find("\r\nOntime: 09:00  "), std::string::npos);
  EXPECT_NE(daily.back(), '\n');
}

}  // namespace
}  // namespace tilo
