// SPDX-License-Identifier: MIT
#include "reports/takings.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstring>
#include <string>

#include "core/activity_log.h"
#include "core/state.h"
#include "documents/recording_target.h"
#include "support/shop_fixture.h"

namespace tilo {
namespace {

class TakingsTest : public ShopTest {
 protected:
  void SetUp() override {
    ShopTest::SetUp();
    MakeFreshShop();
    ASSERT_TRUE(Opensettings());
    Today(2026, 3, 15);
    install_print_service(&printers_);
  }
  void TearDown() override {
    install_print_service(nullptr);
    ShopTest::TearDown();
  }
  void Today(int year, int month, int day) {
    platform_.set_now(year, month, day);
    State& g = G();
    g.today_year = year;
    g.today_month = month;
    g.today_day = day;
    g.start_weekday = platform_.now().day_of_week;
  }
  // The eight bytes of a double as wr.cfg holds it at `offset`.
  double FileDouble(size_t offset) {
    const std::string bytes = Bytes("wr.cfg");
    double d = 0;
    if (bytes.size() >= offset + 8) std::memcpy(&d, bytes.data() + offset, 8);
    return d;
  }
  static size_t SlotOffset(int slot) {
    return offsetof(SettingsRecord, takings_history) + 8 * slot;
  }

  RecordingPrintService printers_;
};

TEST_F(TakingsTest, DatesAreReadByPositionAndRefusedOutsideTheYearOffered) {
  struct Case {
    CalendarDate today;
    const char* text;
    bool amendment;
    int index;  // -1: "Non valid date"
  } cases[] = {
      {{15, 3, 2026}, "01-03-26", false, -1},     // short year
      {{15, 3, 2026}, "14-03-2026", false, 1},    // yesterday
      {{15, 3, 2026}, "15-03-2026", false, -1},   // today: not for the list
      {{15, 3, 2026}, "15-03-2026", true, 0},     // but for the amendment
      {{15, 3, 2026}, "16-03-2026", true, -1},    // future
      {{15, 3, 2026}, "01-03-2025", false, 379},  // the earliest offered
      {{15, 3, 2026}, "28-02-2025", false, -1},   // the day before it
      {{15, 3, 2026}, "29-02-2025", false, -1},   // no such day
      {{15, 3, 2026}, "31-04-2025", false, -1},   // nor this
      {{15, 3, 2026}, "15-13-2025", false, -1},   // nor this month
      {{15, 3, 2026}, "00-03-2026", false, -1},   // nor day 0
      {{10, 3, 2024}, "29-02-2024", false, 10},   // leap day
      {{5, 1, 2026}, "31-12-2025", false, 5},     // over the new year
      {{5, 1, 2026}, "01-01-2025", false, 369},   // earliest in January
      {{5, 1, 2026}, "31-12-2024", false, -1},    // the year before last
      {{5, 1, 2026}, "05-01-2026", false, -1},    // today in January
      {{5, 1, 2026}, "4-01-2026", false, -1},     // fields are by position
  };
  for (const Case& c : cases) {
    std::optional<int> index = Takingsindex(c.text, c.today, c.amendment);
    EXPECT_EQ(index.value_or(-1), c.index) << c.text;
  }
  EXPECT_EQ(DefaultTakingsDate({5, 1, 2026}), "22-12-2025");
  EXPECT_EQ(DefaultTakingsDate({14, 3, 2024}), "29-02-2024");
  EXPECT_EQ(TakingsPrompt({5, 1, 2026}, false), "From (Earliest 01- 1-2025):");
  EXPECT_EQ(TakingsPrompt({5, 1, 2026}, true), "Amend (Earliest 01-01-2025):");
}

TEST_F(TakingsTest, EverySlotHasTheDateAndWeekdayOfTheRealCalendar) {
  using namespace std::chrono;
  for (CalendarDate today : {CalendarDate{15, 3, 2026}, CalendarDate{1, 3, 2025}}) {
    const sys_days t = year{today.year} / today.month / today.day;
    const int start_weekday = int(weekday(t).c_encoding());
    for (int i = 1; i <= 370; ++i) {
      const year_month_day real(t - days{i});
      const CalendarDate d = DaysBefore(today, i);
      ASSERT_EQ(d.year, int(real.year())) << i;
      ASSERT_EQ(d.month, int(unsigned(real.month()))) << i;
      ASSERT_EQ(d.day, int(unsigned(real.day()))) << i;
      static const char* names[] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                    "Thursday", "Friday", "Saturday"};
      ASSERT_STREQ(TakingsWeekday(start_weekday, i), names[weekday(sys_days(real)).c_encoding()]);
      char text[16];
      std::snprintf(text, sizeof text, "%02d-%02d-%d", d.day, d.month, d.year);
      const bool offered = d.year > today.year - 1 || d.month >= today.month;
      ASSERT_EQ(Takingsindex(text, today, false).value_or(-1), offered ? i : -1) << text;
    }
  }
}

TEST_F(TakingsTest, TheListRunsToYesterdayWithMonthSumsWhileTheHistoryHoldsThem) {
  SettingsRecord& s = G().settings;
  for (int k = 1; k <= kTakingsLastSlot; ++k) s.takings_history[k] = 1;
  s.takings_history[15] = 20.5;  // 28 February 2026
  // From 25 February: 25-28 Feb, then 1-14 March.
  std::vector<TakingsDay> days =
      TakingsDays(s, G().start_weekday, 18, DaysBefore({15, 3, 2026}, 18));
  ASSERT_EQ(days.size(), 18u);
  EXPECT_EQ(TakingsPrintRow(days[3]), "Saturday    28/ 2/2026  20.50  Month: 47.50");
  EXPECT_EQ(TakingsListRow(days[17]), "Saturday            14/ 3/2026    1.00");
  // At the far end a month whose first days have gone shows no sum.
  days = TakingsDays(s, G().start_weekday, 379, {1, 3, 2025});
  EXPECT_EQ(days[30].date.day, 31);
  EXPECT_TRUE(days[30].month_total.has_value());
  s.takings_history[kTakingsLastSlot] = 0;
  days = TakingsDays(s, G().start_weekday, 401, {7, 2, 2025});
  EXPECT_EQ(days[21].date.day, 28);
  EXPECT_FALSE(days[21].month_total.has_value());
}

TEST_F(TakingsTest, PrintTakingsListsTheDaysOnEveryCopy) {
  G().settings.takings_history[2] = 3.5;
  printers_.dialog_copies = 2;
  platform_.queue_prompt("12-03-2026");
  Printtakings();
  EXPECT_EQ(platform_.prompts_shown.at(0), "Print takings: From (Earliest 01- 3-2025):");
  std::vector<std::string> rows;
  for (const std::string& t : printers_.texts())
    if (t.find("/2026") != std::string::npos) rows.push_back(t);
  const std::vector<std::string> one = {"Takings: 12/3/2026", "Thursday    12/ 3/2026  0.00",
                                        "Friday      13/ 3/2026  3.50",
                                        "Saturday    14/ 3/2026  0.00"};
  std::vector<std::string> both = one;
  both.insert(both.end(), one.begin(), one.end());
  EXPECT_EQ(rows, both);
}

TEST_F(TakingsTest, AmendmentSavesTheDayAndLogsItAsTyped) {
  platform_.queue_prompt("10-03-2026");
  platform_.queue_prompt(" 12.5");
  Takingsamendment();
  EXPECT_EQ(platform_.prompts_shown.at(0), "Takings amendment: Amend (Earliest 01-03-2025):");
  EXPECT_EQ(platform_.prompts_shown.at(1), "Takings amendment: Tuesday 10/ 3/2026");
  EXPECT_EQ(FileDouble(SlotOffset(5)), 12.5);
  const std::string first = "\r\n09:30 15/03/2026  Takings amendment\r\nfor 10/3/2026:  12.5\r\n";
  EXPECT_EQ(Bytes(kActivityLog), first);

  // Today changes till_takings only.
  G().settings.till_takings = 40;
  platform_.queue_prompt("15-03-2026");
  platform_.queue_prompt("7.25");
  Takingsamendment();
  EXPECT_EQ(FileDouble(offsetof(SettingsRecord, till_takings)), 7.25);
  EXPECT_EQ(FileDouble(SlotOffset(0)), 0.0);
  EXPECT_EQ(Bytes(kActivityLog),
            first + "\r\n09:30 15/03/2026  Takings amendment\r\nfor 15/3/2026: 7.25\r\n");

  // A comma, a word or a cancel stores and logs nothing.
  const std::string before = Bytes("wr.cfg");
  for (std::optional<std::string> typed :
       {std::optional<std::string>("12,50"), std::optional<std::string>("abc"),
        std::optional<std::string>()}) {
    platform_.clear_record();
    platform_.queue_prompt("10-03-2026");
    platform_.queue_prompt(typed);
    Takingsamendment();
    EXPECT_EQ(platform_.shown(), typed ? std::vector<std::string>{"Problem: Non valid amount"}
                                       : std::vector<std::string>{});
  }
  EXPECT_EQ(Bytes("wr.cfg"), before);
  EXPECT_EQ(G().settings.takings_history[5], 12.5);
}

TEST_F(TakingsTest, PurgeClearsTheYearButNotTodayNorTheLastSlots) {
  SettingsRecord& s = G().settings;
  for (int k = 0; k <= kTakingsLastSlot; ++k) s.takings_history[k] = 2;
  s.till_takings = 9;
  platform_.queue_answer(Answer::Cancel);
  Purgetakingscommand();
  EXPECT_EQ(s.takings_history[1], 2);
  Purgetakingscommand();
  EXPECT_EQ(platform_.messages.at(1).title, "Purge entire takings history");
  EXPECT_EQ(FileDouble(SlotOffset(1)), 0.0);
  EXPECT_EQ(FileDouble(SlotOffset(390)), 0.0);
  EXPECT_EQ(FileDouble(SlotOffset(391)), 2.0);
  EXPECT_EQ(FileDouble(offsetof(SettingsRecord, till_takings)), 9.0);
}

TEST_F(TakingsTest, TheChartLeavesEmptyWeeksOutAndStandsBarsOnTheAxis) {
  SettingsRecord& s = G().settings;
  TakingsChart c = BuildTakingsChart(s, 700, 400, 3, 15);
  EXPECT_FALSE(c.any_week);
  EXPECT_TRUE(c.bars.empty());
  ASSERT_EQ(c.labels.size(), 12u);
  EXPECT_EQ(c.labels[0].text, "Apr");
  EXPECT_EQ(c.labels[11].text, "Mar");
  EXPECT_EQ(c.labels[0].x, 100);

  // Week 0 averages 10, week 1 is empty, week 2 averages 20, the last week 5.
  for (int k = 1; k <= 7; ++k) s.takings_history[k] = 10;
  for (int k = 15; k <= 21; ++k) s.takings_history[k] = 20;
  s.takings_history[365] = 35;
  c = BuildTakingsChart(s, 700, 400, 3, 14);
  ASSERT_EQ(c.bars.size(), 3u);
  EXPECT_DOUBLE_EQ(c.smallest, 5);
  EXPECT_DOUBLE_EQ(c.largest, 20);
  EXPECT_DOUBLE_EQ(c.first_week, 10);
  // step 50, a week 600 / 54 wide; the present week at 650 + 2 weeks.
  const double scale = 600.0 / 54;
  EXPECT_EQ((c.bars[0].left + c.bars[0].right) / 2, int(650 + 2 * scale + 0.5));
  EXPECT_EQ((c.bars[1].left + c.bars[1].right) / 2, int(650 + 2 * scale - 2 * scale + 0.5));
  EXPECT_EQ(c.bars[1].top, 70);  // the largest reaches the top of the scale
  EXPECT_EQ(c.bars[0].top, 350 - 140);
  EXPECT_EQ(c.bars[2].bottom, 350);
  EXPECT_EQ(c.labels[12].text, "5");
  EXPECT_EQ(c.labels[13].text, "20");
}

}  // namespace
}  // namespace tilo
