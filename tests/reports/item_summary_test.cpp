// SPDX-License-Identifier: MIT
#include "reports/item_summary.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <random>

#include "core/history.h"
#include "core/state.h"
#include "core/text.h"
#include "reports/item_export.h"
#include "reports/report_fixture.h"
#include "reports/report_view.h"
#include "support/literal_reports.h"
#include "support/report_history.h"

namespace tilo {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

class ItemSummaryTest : public ReportTest {
 protected:
  // Runs a summary command with the dialog answered so.
  std::optional<SummaryScreen> Run(SummaryPeriod period, const ReportSelection& s) {
    view_.summary.reset();
    view_.summary_answer = [&](SummaryDialog& d) {
      d.day = s.start_day;
      d.month = s.start_month;
      d.year = s.start_year;
      d.end_day = s.end_day;
      d.end_month = s.end_month;
      d.end_year = s.end_year;
      d.filters = s.filters;
    };
    Itemsummarycommand(period);
    return view_.summary;
  }
};

// Every period and filter over random histories (refunds, repeated numbers,
// category 18, cut records, a leap February), against the summary worked out
// step by step: the rows, the totals and where the selection's date ends up.
TEST_F(ItemSummaryTest, GivesTheRowsOfTheStepByStepSummary) {
  std::mt19937 rng(11);
  auto pick = [&](int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(rng); };
  WriteHistory(21, {2027, 12, 25}, 100, {.sales_max = 12, .items = 12, .repeat = 0.15});
  for (int trial = 0; trial < 40; ++trial) {
    const SummaryPeriod period = SummaryPeriod(trial % 4);
    ReportSelection s;
    s.start_day = pick(1, 31);
    s.start_month = pick(0, 2) == 0 ? 12 : pick(1, 3);
    s.start_year = s.start_month == 12 ? 2027 : 2028;
    s.end_day = pick(1, 31);
    s.end_month = pick(1, 4);
    s.end_year = 2028;
    SummaryFilters& f = s.filters;
    f.exclude_refunds = pick(0, 1);
    f.exclude_cash = pick(0, 3) == 0;
    f.exclude_credit = pick(0, 3) == 0;
    f.exclude_cheque = pick(0, 3) == 0;
    f.exclude_eft = pick(0, 3) == 0;
    f.exclude_split = pick(0, 3) == 0;
    f.category_filter = pick(0, 2) == 0 ? pick(0, 19) : 0;
    if (trial % 9 == 0) f.category_filter = 19;
    const std::optional<SummaryScreen> screen = Run(period, s);
    ASSERT_TRUE(screen) << trial;
    if (period == SummaryPeriod::Monthly) s.start_day = 1;
    const LiteralSummary literal = LiteralItemSummary(period, s);
    ASSERT_EQ(screen->rows, literal.rows) << "trial " << trial;
    EXPECT_EQ(Summarytotals(screen->summary), literal.totals);
    EXPECT_EQ(screen->after.start_day, literal.after_day);
    EXPECT_EQ(screen->after.start_month, literal.after_month);
    EXPECT_EQ(screen->after.start_year, literal.after_year);
  }
}

// The exchange loop is no stable sort: entries of equal quantity end up in the
// order its exchanges leave.
TEST_F(ItemSummaryTest, OrdersTiesAsTheExchangeLoopDoes) {
  std::mt19937 rng(5);
  for (int trial = 0; trial < 300; ++trial) {
    std::vector<SummaryEntry> entries(size_t(rng() % 60));
    const int values = int(rng() % 6) + 1;
    for (size_t i = 0; i < entries.size(); ++i) {
      entries[i].number = int64_t(i);
      entries[i].quantity = int32_t(rng() % size_t(values));
    }
    std::vector<SummaryEntry> literal = entries;
    LiteralExchangeSort(literal);
    Sortbyquantity(entries);
    std::vector<int64_t> want, got;
    for (const SummaryEntry& e : literal)
      if (e.quantity != 0) want.push_back(e.number);
    for (const SummaryEntry& e : entries) got.push_back(e.number);
    ASSERT_EQ(got, want) << trial;
  }
}

TEST_F(ItemSummaryTest, SavesTheRowsAsCsvAndPrintsThemInPages) {
  ItemsLogRecord line{};
  line.transaction_number = 4;
  line.number = 12;
  line.category = 3;
  SetField(line.description, "CAF\xC9, DU MONDE");
  line.taxable = 2.5f;
  line.tax1 = 0.5f;
  line.line_total = 3.0f;
  line.cost = 1.25f;
  SalesLogRecord sale{};
  std::filesystem::create_directories("2028/1/31");
  for (int number : {3, 4, 5}) {
    sale.transaction_number = line.transaction_number = number;
    SetField(sale.payment_type, number == 5 ? "Refund" : "Cash");
    AppendSalesLog(2028, 1, 31, sale);
    AppendItemsLog(2028, 1, 31, {line});
  }
  // Refunds shown: the refund line stands alone and subtracts.
  ReportSelection s;
  s.start_day = 31;
  s.start_month = 1;
  s.start_year = 2028;
  s.filters.exclude_refunds = false;
  auto screen = Run(SummaryPeriod::Monthly, s);
  ASSERT_TRUE(screen);
  EXPECT_EQ(screen->title, "Item report   Month 1 2028");
  EXPECT_THAT(screen->rows, ElementsAre("12, CAF\xC9, DU MONDE, 3, 2.50, 5.00, 1.00, 6.00, 2",
                                        "Refund: 12, CAF\xC9, DU MONDE, 3, -1.25, -2.50, -0.50, "
                                        "-3.00, 1"));
  // The file is named from the moved date, day 32, and holds UTF-8.
  platform_.queue_prompt("SA0132.CSV");
  Saveitemsummary(*screen);
  EXPECT_EQ(platform_.shown().back(), "File save: Complete");
  EXPECT_EQ(Bytes("SA0132.CSV"),
            "12, CAFÉ, DU MONDE, 3, 2.50, 5.00, 1.00, 6.00, 2\r\n"
            "Refund: 12, CAFÉ, DU MONDE, 3, -1.25, -2.50, -0.50, -3.00, 1\r\n"
            "Items: 3, Cost: 1.25, Retail: 2.50");
  platform_.queue_prompt("missing/folder.csv");
  Saveitemsummary(*screen);
  EXPECT_EQ(platform_.shown().back(), "Problem: Unable to open file.");
  EXPECT_FALSE(std::filesystem::exists("missing"));

  // Pages: rows of 42 units, full when 44 * row passes the height; no indent.
  G().settings.listing_indent = 5;
  SetField(G().heading.site_name, "SHOP");
  printers_.device.page_height = 44 * 3;  // two rows a page (rows 2 and 3)
  Printitemsummary(*screen);
  EXPECT_THAT(
      printers_.texts(),
      ElementsAre("SHOP Monthly item list to 32/ 1/2028  page: 1", screen->rows[0], screen->rows[1],
                  "SHOP Monthly item list, page: 2", "Items: 3, Cost: 1.25, Retail: 2.50"));
  EXPECT_EQ(printers_.count("text_out 0 126 Items: 3"), 1);  // row 2 left free
  EXPECT_EQ(printers_.count("text_out 0 84 12, CAF"), 1);
}

TEST_F(ItemSummaryTest, ExportsADaysAndAWeeksLines) {
  WriteHistory(9, {2028, 2, 26}, 8,
               {.sales_min = 6, .missing_day = 0, .repeat = 0.2, .non_inventory = 0.3});
  platform_.set_now(2028, 2, 27);
  // Day, month, year, then the name.
  for (const char* reply : {"27", "2", "2028", "SA280227.CSV"}) platform_.queue_prompt(reply);
  Exportdailyitems();
  EXPECT_THAT(platform_.prompts_shown,
              ElementsAre("Export daily items CSV: Please enter the day (1-31)",
                          "Export daily items CSV: Please enter the month (1-12)",
                          "Export daily items CSV: Please enter the year (yyyy)",
                          "Export daily items CSV: Enter the file name:"));
  EXPECT_EQ(platform_.shown().back(), "File export: Complete.");
  EXPECT_EQ(Bytes("SA280227.CSV"), LiteralDayExport(2028, 2, 27));
  EXPECT_THAT(Bytes("SA280227.CSV"), HasSubstr(",MISC, SUNDRY,18,"));
  // The mail's file: the same rows, one column fewer.
  ASSERT_TRUE(Writemailitems({2028, 2, 27}));
  const std::string daily = Bytes("SA280227.CSV"), mail = Bytes("ES.CSV");
  const auto count = [](const std::string& s, char c) { return std::count(s.begin(), s.end(), c); };
  EXPECT_EQ(count(mail, '\n'), count(daily, '\n'));
  EXPECT_EQ(count(mail, ','), count(daily, ',') - count(daily, '\n'));

  // A week over the leap day.
  for (const char* reply : {"26", "2", "2028", "week.csv"}) platform_.queue_prompt(reply);
  Exportweeklyitems();
  std::string week;
  for (int day : {26, 27, 28, 29}) week += LiteralDayExport(2028, 2, day);
  for (int day : {1, 2, 3}) week += LiteralDayExport(2028, 3, day);
  EXPECT_EQ(Bytes("week.csv"), week);

  // Refused in silence: out of range, cancelled; then a day with no sales.
  platform_.clear_record();
  platform_.queue_prompt("32");
  Exportdailyitems();
  platform_.queue_prompt("1");
  platform_.queue_prompt(std::nullopt);
  Exportdailyitems();
  for (const char* reply : {"1", "1", "2027", "x.csv"}) platform_.queue_prompt(reply);
  Exportdailyitems();
  EXPECT_THAT(platform_.shown(), ElementsAre("Problem: No items for that day."));
  EXPECT_FALSE(std::filesystem::exists("x.csv"));
}

}  // namespace
}  // namespace tilo
