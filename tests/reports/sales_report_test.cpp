// SPDX-License-Identifier: MIT
#include "reports/sales_report.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <random>

#include "core/state.h"
#include "core/text.h"
#include "reports/report_fixture.h"
#include "reports/report_view.h"
#include "sale/commands.h"
#include "support/literal_reports.h"
#include "support/report_history.h"

namespace tilo {
namespace {

using ::testing::ElementsAre;

class SalesReportTest : public ReportTest {};

// Random periods over random histories (a leap February, refunds, payments,
// missing days, cut records, repeated numbers), every filter, against the report
// worked out step by step.
TEST_F(SalesReportTest, GivesTheRowsOfTheStepByStepReport) {
  std::mt19937 rng(7);
  auto pick = [&](int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(rng); };
  for (uint32_t seed = 1; seed <= 3; ++seed) {
    std::filesystem::remove_all("2026");
    std::filesystem::remove_all("2027");
    std::filesystem::remove_all("2028");
    WriteHistory(seed, {2027, 10, 20}, 200);
    for (int trial = 0; trial < 9; ++trial) {
      ReportSelection s;
      s.start_day = pick(1, 31);
      s.start_month = pick(1, 12);
      s.start_year = pick(2027, 2028);
      s.end_day = trial == 0 ? 31 : pick(1, 31);
      s.end_month = trial == 0 ? 12 : pick(1, 12);
      s.end_year = pick(2027, 2028);
      const int kind = trial % 3;
      SalesFilter filter;
      if (kind == 1) s.staff_clerk = filter.staff_clerk = pick(1, 4);
      if (kind == 2) s.report_item = filter.report_item = pick(1, 25);
      auto report = Walksales({s.start_year, s.start_month, s.start_day},
                              {s.end_year, s.end_month, s.end_day}, filter);
      ASSERT_TRUE(report);
      const LiteralSales literal = LiteralSalesReport(s, kind == 2);
      for (int level = 0; level < 3; ++level)
        for (int column = 0; column < 5; ++column)
          ASSERT_EQ(Saleslisttexts(*report, SalesLevel(level), SalesColumn(column)),
                    literal.lists[level][column])
              << "seed " << seed << " trial " << trial << " level " << level;
      EXPECT_EQ(report->grand, literal.grand);
    }
  }
}

TEST_F(SalesReportTest, ClosesTheMonthAndYearAgainAfterTheWalk) {
  WriteHistory(3, {2027, 12, 31}, 1);
  auto report = Walksales({2027, 12, 31}, {2027, 12, 31}, {});
  ASSERT_TRUE(report);
  std::vector<std::string> months = Saleslisttexts(*report, SalesLevel::Month, kSumTotal);
  ASSERT_EQ(months.size(), 2u);
  EXPECT_EQ(months[1], "1 of 2028  0.00");
  EXPECT_THAT(Saleslisttexts(*report, SalesLevel::Year, kSumTotal),
              ElementsAre(months[0].replace(0, 10, "2027"), "2028  0.00"));
  // An end before the start walks the start day only; 31 April is walked as it
  // stands and shows in numbers.
  std::filesystem::create_directories("2027/4/31");
  ShopTest::WriteBytes("2027/4/31/saleslog.dat", "");
  report = Walksales({2027, 4, 31}, {2026, 1, 1}, {});
  EXPECT_THAT(Saleslisttexts(*report, SalesLevel::Day, kSumTotal), ElementsAre("31/4/2027  0.00"));
  EXPECT_THAT(Saleslisttexts(*report, SalesLevel::Month, kSumTotal),
              ElementsAre("4 of 2027  0.00", "5 of 2027  0.00"));
}

TEST_F(SalesReportTest, CommandsAskFirstAndRefuseInTheirOwnWords) {
  WriteHistory(5, {2028, 3, 1}, 10, {.missing_day = 0, .cut = 0});
  // Staff: cancelled, then out of range.
  platform_.queue_prompt(std::nullopt);
  Salesreportcommand(int(Command::SalesByStaff));
  platform_.queue_prompt("100");
  Salesreportcommand(int(Command::SalesByStaff));
  EXPECT_THAT(platform_.shown(), ElementsAre("Problem: Outside range"));
  EXPECT_FALSE(view_.period_offered);
  // A list with no choice.
  view_.period = std::array<int, 6>{0, 2, -1, 9, 2, 2};
  Salesreportcommand(int(Command::SalesReport));
  EXPECT_EQ(platform_.shown().back(), "Problem: Invalid selection");
  // The dialog offers the years from history_from_year, today's day and month.
  ASSERT_TRUE(view_.period_offered);
  EXPECT_THAT(view_.period_offered->years, ElementsAre(2026, 2027, 2028));
  EXPECT_EQ(view_.period_offered->day_index, 9);
  EXPECT_EQ(view_.period_offered->month_index, 2);
  EXPECT_EQ(view_.period_offered->year_index, 2);
  // Cancelled during the walk: no window.
  view_.period = std::array<int, 6>{0, 2, 2, 9, 2, 2};
  platform_.cancel_progress_at = 4;
  platform_.queue_prompt("2");
  Salesreportcommand(int(Command::SalesByStaff));
  EXPECT_FALSE(view_.sales);
  EXPECT_EQ(platform_.progress_shown.back(),
            "Sales report: Reading the transactions of the period");
  // Run to its end: the staff report of 1 to 10 March 2028.
  platform_.cancel_progress_at = -1;
  platform_.queue_prompt("2");
  Salesreportcommand(int(Command::SalesByStaff));
  ASSERT_TRUE(view_.sales);
  EXPECT_EQ(view_.sales->title, "Staff sales report: Wed 1 Mar 28 to Fri 10 Mar 28");
  EXPECT_EQ(view_.sales->lists[0][kSumTotal].size(), 10u);
  ReportSelection s = G().report_selection;
  EXPECT_EQ(s.staff_clerk, 2);
  EXPECT_EQ(view_.sales->lists[0][kSumTax1], LiteralSalesReport(s, false).lists[0][kSumTax1]);
  // By item: the number is asked for; nothing chosen ends the command.
  view_.sales.reset();
  platform_.queue_prompt(std::nullopt);
  Salesreportcommand(int(Command::SalesByItem));
  EXPECT_EQ(platform_.prompts_shown.back(),
            "Sales by item: Find item number / description / fragment");
  EXPECT_FALSE(view_.sales);
  // The item search hooks in here; the clerk no longer filters, the title is
  // the plain one, and the selection forgets the item afterwards.
  SetReportItemFind([] { return int64_t(7); });
  Salesreportcommand(int(Command::SalesByItem));
  SetReportItemFind(nullptr);
  ASSERT_TRUE(view_.sales);
  EXPECT_EQ(view_.sales->title, "Sales report: Wed 1 Mar 28 to Fri 10 Mar 28");
  s.report_item = 7;
  EXPECT_EQ(view_.sales->lists[0][kSumTotal], LiteralSalesReport(s, true).lists[0][kSumTotal]);
  EXPECT_EQ(G().report_selection.report_item, 0);
}

TEST_F(SalesReportTest, PeriodTextFallsBackWhenADateIsNone) {
  ReportSelection s;
  s.start_day = 31;
  s.start_month = 4;
  s.start_year = 2027;
  s.end_day = 30;
  s.end_month = 2;
  s.end_year = 2028;
  EXPECT_EQ(Salesperiodtext(s, true), " Sales report: 31/ 4/2027 to 30/ 2/2028");
  s.start_day = 30;
  EXPECT_EQ(Salesperiodtext(s, true), "Staff sales report: Fri 30 Apr 27 to 30/ 2/2028");
}

TEST_F(SalesReportTest, PrintsTheGrandSumsOnOnePage) {
  SetField(G().heading.site_name, "THE CORNER SHOP");
  SalesReport report;
  report.grand = {10.004, 20.5, 4.1, 0.25, 34.85};
  printers_.dialog_copies = 2;
  Printsalesreport(report, "Sales report: x to y");
  EXPECT_EQ(printers_.count("begin_page"), 2);
  const std::vector<std::string> texts = printers_.texts();
  ASSERT_EQ(texts.size(), 28u);
  EXPECT_EQ(texts[0], "THE CORNER SHOP  14:05 Friday March 10 2028");
  EXPECT_EQ(texts[1], "Sales report: x to y");
  EXPECT_THAT(std::vector<std::string>(texts.begin() + 2, texts.begin() + 14),
              ElementsAre("Non taxable", "10.00", "Taxable", "20.50", "Sub total", "30.50", "Tax 1",
                          "4.10", "Tax 2", "0.25", "Total", "34.85"));
  // Values stand 100 units right of the widest label, on the label's row.
  const int x = 11 * 20 + 100;
  EXPECT_EQ(
      printers_.count("text_out " + std::to_string(x) + " " + std::to_string(10 * 42) + " 34.85"),
      2);
}

}  // namespace
}  // namespace tilo
