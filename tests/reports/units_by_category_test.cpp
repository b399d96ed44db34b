// SPDX-License-Identifier: MIT
#include "reports/units_by_category.h"

#include <gtest/gtest.h>

#include <cstring>

#include "core/state.h"
#include "documents/recording_target.h"
#include "support/shop_fixture.h"

namespace tilo {
namespace {

class UnitsByCategoryTest : public ShopTest {
 protected:
  void SetUp() override {
    ShopTest::SetUp();
    MakeFreshShop();
    ASSERT_TRUE(Opensettings());
    State& g = G();
    g.today_year = 2026;
    g.today_month = 3;
    g.today_day = 4;
    std::strcpy(g.heading.site_name, "Corner Shop");
    SettingsRecord& s = g.settings;
    s.category_units_day_a[0] = 2;
    s.category_units_month_a[0] = 7;
    s.category_units_day_b[8] = -1;  // a refund in category 17
    s.category_units_month_b[8] = 3;
    s.category_total_today[0] = 4.5;
    s.category_total_today[17] = -2;
    // Yesterday, the day before, three days ago (the 1st), and the month before.
    for (int d = 1; d <= 4; ++d) SetCategoryHistory(s, 0, d, 10.0 * d);
    SetCategoryHistory(s, 17, 3, 6.25);
  }
};

TEST_F(UnitsByCategoryTest, TheMonthAddsTheDaysBeforeTodayOnScreenAndPaper) {
  auto day = UnitsByCategory(G().settings, false, 4);
  auto month = UnitsByCategory(G().settings, true, 4);
  EXPECT_EQ(day[0].units, 2);
  EXPECT_DOUBLE_EQ(day[0].total, 4.5);
  EXPECT_EQ(month[0].units, 7);
  EXPECT_DOUBLE_EQ(month[0].total, 4.5 + 10 + 20 + 30);
  EXPECT_EQ(day[17].units, -1);
  EXPECT_DOUBLE_EQ(month[17].total, -2 + 6.25);
  EXPECT_EQ(month[5].units, 0);
  EXPECT_DOUBLE_EQ(month[5].total, 0);
  // On the first of the month the month is the day.
  EXPECT_DOUBLE_EQ(UnitsByCategory(G().settings, true, 1)[0].total, 4.5);

  // The page: codes over figures in two columns.
  RecordingTarget target;  // lines of 42, characters 20 wide
  PrintUnitsByCategoryPage(target, true);
  const auto& calls = target.calls();
  auto has = [&](const std::string& call) {
    return std::find(calls.begin(), calls.end(), call) != calls.end();
  };
  const std::string first = CategoryCode(G().settings, 1), last = CategoryCode(G().settings, 18);
  EXPECT_TRUE(has("text_out 0 42 Corner Shop   Units by category (month)"));
  EXPECT_TRUE(has("text_out 0 84 March 4 2026"));
  EXPECT_TRUE(has("text_out 0 168 " + first));
  EXPECT_TRUE(has("text_out 0 210 7, 64.50"));
  EXPECT_TRUE(has("text_out 400 1176 " + last));
  EXPECT_TRUE(has("text_out 400 1218 3, 4.25"));
  // Nine rows of codes, three lines apart.
  EXPECT_TRUE(has("text_out 0 1176 " + CategoryCode(G().settings, 9)));
  EXPECT_EQ(target.texts().size(), 2u + 9 * 4);
}

}  // namespace
}  // namespace tilo
