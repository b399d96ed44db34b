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
    TakingsDate today;
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
  for (TakingsDate today : {TakingsDate{15, 3, 2026}, TakingsDate{1, 3, 2025}}) {
    const sys_days t = year{today.year} / today.month / today.day;
    const int start_weekday = int(weekday(t).c_encoding());
    for (int i = 1; i <= 370; ++i) {
      const year_month_day real(t - days{i});
      const TakingsDate d = DaysBefore(today, i);
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

TEST_F(TakingsTest, PrintTakingsListsTheDaysWithMonthSumsOnEveryCopy) {
  SettingsRecord& s = G().settings;
  for (int k = 1; k <= kTakingsLastSlot; ++k) s.takings_history[k] = 1;
  s.takings_history[15] = 20.5;  // 28 February
  printers_.dialog_copies = 2;
  platform_.queue_prompt("27-02-2026");
  Printtakings();
  EXPECT_EQ(platform_.prompts_shown.at(0), "Print takings: From (Earliest 01- 3-2025):");
  const std::vector<std::string> texts = printers_.texts();
  ASSERT_EQ(texts.size(), 2u * 17);  // the header and 16 days, twice
  EXPECT_EQ(texts[17], "Takings: 27/2/2026");
  EXPECT_EQ(texts[2], "Saturday    28/ 2/2026  20.50  Month: 47.50");
  EXPECT_EQ(texts[16], "Saturday    14/ 3/2026  1.00");
  // At the far end a month whose first days have gone has no sum.
  std::vector<TakingsDay> days = TakingsDays(s, 0, kTakingsLastSlot, {7, 2, 2025});
  EXPECT_EQ(days[21].date.day, 28);
  EXPECT_FALSE(days[21].month_total.has_value());
  EXPECT_TRUE(days[52].month_total.has_value());  // 31 March 2025
}

TEST_F(TakingsTest, AmendmentAndPurgeSaveWrCfgAtOnceAndTheAmendmentIsLogged) {
  const std::string stamp = "\r\n09:30 15/03/2026  Takings amendment\r\nfor ";
  G().settings.till_takings = 40;
  for (const char* date : {"10-03-2026", "15-03-2026"}) {
    platform_.queue_prompt(date);
    platform_.queue_prompt(date[1] == '0' ? " 12.5" : "7.25");
    Takingsamendment();
  }
  EXPECT_EQ(platform_.prompts_shown.at(1), "Takings amendment: Tuesday 10/ 3/2026");
  EXPECT_EQ(platform_.prompts_shown.at(3), "Today: Takings");
  EXPECT_EQ(FileDouble(SlotOffset(5)), 12.5);
  EXPECT_EQ(FileDouble(SlotOffset(0)), 0.0);  // today is till_takings, not the array
  EXPECT_EQ(FileDouble(offsetof(SettingsRecord, till_takings)), 7.25);
  EXPECT_EQ(Bytes(kActivityLog), stamp + "10/3/2026:  12.5\r\n" + stamp + "15/3/2026: 7.25\r\n");

  // A comma or a cancel stores and logs nothing.
  const std::string before = Bytes("wr.cfg"), log = Bytes(kActivityLog);
  for (std::optional<std::string> typed :
       {std::optional<std::string>("12,50"), std::optional<std::string>()}) {
    platform_.queue_prompt("10-03-2026");
    platform_.queue_prompt(typed);
    Takingsamendment();
  }
  EXPECT_EQ(platform_.shown(), std::vector<std::string>{"Problem: Non valid amount"});
  EXPECT_EQ(Bytes("wr.cfg") + Bytes(kActivityLog), before + log);

  for (int k = 1; k <= kTakingsLastSlot; ++k) G().settings.takings_history[k] = 2;
  Purgetakingscommand();
  EXPECT_EQ(FileDouble(SlotOffset(390)), 0.0);
  EXPECT_EQ(FileDouble(SlotOffset(391)), 2.0);
  EXPECT_EQ(FileDouble(offsetof(SettingsRecord, till_takings)), 7.25);
}

TEST_F(TakingsTest, TheChartLeavesEmptyWeeksOutAndStandsBarsOnTheAxis) {
  SettingsRecord& s = G().settings;
  TakingsChart c = BuildTakingsChart(s, 700, 400, 3, 15);
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
  // step 50, a week 600 / 54 wide; the present week at 650 + 2 weeks.
  const double scale = 600.0 / 54;
  EXPECT_EQ((c.bars[0].left + c.bars[0].right) / 2, int(650 + 2 * scale + 0.5));
  EXPECT_EQ((c.bars[1].left + c.bars[1].right) / 2, int(650 + 2 * scale - 2 * scale + 0.5));
  EXPECT_EQ(c.bars[1].top, 70);         // the largest reaches the top of the scale
  EXPECT_EQ(c.bars[0].top, 350 - 140);  // half its height
  EXPECT_EQ(c.bars[2].bottom, 350);
  EXPECT_EQ(c.labels[12].text, "5");
  EXPECT_EQ(c.labels[13].text, "20");
}

}  // namespace
}  // namespace tilo
