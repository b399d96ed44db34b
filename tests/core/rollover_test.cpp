// SPDX-License-Identifier: MIT
#include "core/rollover.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstddef>
#include <cstring>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "core/reminders.h"
#include "core/startup.h"
#include "core/state.h"
#include "core/text.h"
#include "platform/files.h"
#include "support/shop_fixture.h"

namespace tilo {
namespace {

// ---------------------------------------------------------------------------
// A plain reading of the rollover, step by step, over the bytes of wr.cfg at
// the offsets of its layout table. The program's rollover must agree with it
// byte for byte.

template <typename T>
T Get(const std::string& b, size_t at) {
  T v;
  std::memcpy(&v, b.data() + at, sizeof v);
  return v;
}
template <typename T>
void Put(std::string& b, size_t at, T v) {
  std::memcpy(b.data() + at, &v, sizeof v);
}
void Zero(std::string& b, size_t at, size_t n) {
  std::memset(b.data() + at, 0, n);
}

size_t Takings(int k) {
  return 7946 + 8 * size_t(k);
}
size_t Category(int c, int d) {
  return 3338 + 256 * size_t(c) + 8 * size_t(d);
}

int ReferenceDaysPassed(int last_day, int today_day, int previous_month_days) {
  int n = 0;
  do {
    ++n;
    ++last_day;
    if (last_day > previous_month_days && last_day > today_day) last_day = 1;
  } while (last_day != today_day);
  return n;
}

// Everything but the date check and the diary; returns n.
int ReferenceRollover(std::string& b, int today_day, int today_month, int previous_month_days) {
  Put<int64_t>(b, 880, Get<int64_t>(b, 320));  // yesterday_transactions
  Put<int64_t>(b, 888, Get<int64_t>(b, 160));  // yesterday_items
  Zero(b, 160, 8);                             // today_items
  Zero(b, 320, 8);                             // today_transactions
  Zero(b, 960, 8);                             // new_customers_today
  Zero(b, 40958, 8);                           // petty_cash_today
  Zero(b, 40974, 8);                           // cashback_today
  Zero(b, 800, 40);                            // category_units_day_a
  Zero(b, 640, 40);                            // category_units_day_b
  Zero(b, 720, 40);                            // spare_units_day
  if (today_month != Get<int32_t>(b, 492)) {   // last_used_month
    Zero(b, 840, 40);
    Zero(b, 680, 40);
    Zero(b, 760, 40);
  }
  Zero(b, 1374, 8);             // spare_daily
  Zero(b, 3030, 11 * 4 + 268);  // the counts and spare_counts

  int32_t last_day = Get<int32_t>(b, 76);
  const int n = ReferenceDaysPassed(last_day, today_day, previous_month_days);
  Put<int32_t>(b, 76, today_day);

  const size_t till_takings = 41750, previous_takings = 41758;
  Put<double>(b, previous_takings, 0);
  if (n == 1) {
    Put<double>(b, previous_takings, Get<double>(b, till_takings));
  } else {
    Zero(b, 880, 16);
  }
  if (n < 32) {
    for (int k = 401 - n; k >= 1; --k) Put<double>(b, Takings(k + n), Get<double>(b, Takings(k)));
    for (int c = 0; c < 18; ++c)
      for (int k = 32 - n; k >= 1; --k)
        Put<double>(b, Category(c, k + n), Get<double>(b, Category(c, k)));
    Put<double>(b, Takings(n), Get<double>(b, till_takings));
    for (int c = 0; c < 18; ++c) Put<double>(b, Category(c, n), Get<double>(b, 42070 + 8 * c));
    if (n >= 2) {
      for (int k = 1; k <= n - 1; ++k) {
        Put<double>(b, Takings(k), 0);
        for (int c = 0; c < 18; ++c) Put<double>(b, Category(c, k), 0);
      }
    }
  }
  Zero(b, till_takings, 8);
  Zero(b, 41766, 18 * 8);  // sales_non_taxable .. balance_ch, in layout order
  Zero(b, 41926, 8);       // cost_of_sales
  Zero(b, 42070, 20 * 8);  // category_total_today and two words behind it
  return n;
}

std::string RecordBytes(const SettingsRecord& s) {
  return std::string(reinterpret_cast<const char*>(&s), sizeof s);
}

// The rollover's work on the settings as thenextday does it, without the box.
int ProgramRollover(SettingsRecord& s, int today_day, int today_month, int previous_month_days) {
  ClearDayCounters(s, today_month);
  const int n = DaysPassed(s.last_day, today_day, previous_month_days);
  s.last_day = today_day;
  CloseDays(s, n);
  return n;
}

TEST(RolloverModel, DaysPassedAgreesWithTheDayByDayWalk) {
  for (int month_days : {28, 29, 30, 31})
    for (int last = -3; last <= 40; ++last)
      for (int today = 1; today <= 31; ++today) {
        if (last == today) continue;
        ASSERT_EQ(DaysPassed(last, today, month_days), ReferenceDaysPassed(last, today, month_days))
            << last << " -> " << today << " after a month of " << month_days;
      }
  EXPECT_EQ(DaysPassed(20, 23, 30), 3);
  EXPECT_EQ(DaysPassed(30, 1, 30), 1);
  EXPECT_EQ(DaysPassed(28, 1, 29), 2);
  // Only days of the month count: a clock put back a day counts as nearly a month.
  EXPECT_EQ(DaysPassed(15, 14, 30), 29);
  EXPECT_EQ(PreviousMonthDays(1, 2025), 31);  // December before January
  EXPECT_EQ(PreviousMonthDays(3, 2024), 29);
  EXPECT_EQ(PreviousMonthDays(3, 2100), 29);  // no century rule
  EXPECT_EQ(PreviousMonthDays(3, 2025), 28);
}

// Random records (every byte random, the money fields finite), random gaps:
// the program and the plain reading agree on every byte.
TEST(RolloverModel, MatchesThePlainReadingForRandomGapsAndTotals) {
  std::mt19937_64 rng(20260522);
  std::uniform_real_distribution<double> money(-5000, 50000);
  for (int trial = 0; trial < 400; ++trial) {
    std::string bytes(sizeof(SettingsRecord), '\0');
    for (char& c : bytes) c = char(rng());
    for (size_t at = Category(0, 1); at < Takings(402); at += 8) Put<double>(bytes, at, money(rng));
    for (size_t at = 41750; at < 41934; at += 8) Put<double>(bytes, at, money(rng));
    for (size_t at = 42070; at < 42070 + 160; at += 8) Put<double>(bytes, at, money(rng));
    const int today_day = int(rng() % 31) + 1;
    const int today_month = int(rng() % 12) + 1;
    const int month_days = 28 + int(rng() % 4);
    int last_day = int(rng() % 31) + 1;
    if (last_day == today_day) last_day = today_day % 31 + 1;
    Put<int32_t>(bytes, 76, last_day);
    if (trial % 2) Put<int32_t>(bytes, 492, today_month);

    SettingsRecord s;
    std::memcpy(&s, bytes.data(), sizeof s);
    const int n = ProgramRollover(s, today_day, today_month, month_days);
    std::string expected = bytes;
    ASSERT_EQ(n, ReferenceRollover(expected, today_day, today_month, month_days));
    const std::string actual = RecordBytes(s);
    if (actual != expected) {
      size_t i = 0;
      while (actual[i] == expected[i]) ++i;
      FAIL() << "trial " << trial << ": first difference at byte " << i << " (n " << n << ")";
    }
  }
}

// ---------------------------------------------------------------------------
// The rollover inside a real start, on a shop last used on a given date.

class RolloverTest : public ShopTest {
 protected:
  // A shop whose settings say it was last used on `day`/`month`/`year`, with
  // some trade on that day.
  void ShopLastUsed(int year, int month, int day) {
    MakeFreshShop();
    ASSERT_TRUE(Opensettings());
    SettingsRecord& s = G().settings;
    s.last_day = day;
    s.last_used_day = day;
    s.last_used_month = month;
    s.last_used_year = year;
    s.last_used_hour = 18;
    s.history_from_year = s.first_year = year;
    s.today_transactions = 12;
    s.today_items = 30;
    s.till_takings = 250.75;
    s.takings_history[1] = 111;
    s.category_units_month_a[3] = 9;
    s.category_total_today[2] = 40.5;
    ASSERT_TRUE(Savesettings());
    ASSERT_TRUE(CreateBlankReminderFile());
    ResetState();
  }

  void StartOn(int year, int month, int day) {
    platform_.set_now(year, month, day, 8, 30);
    platform_.clear_record();
    started_ = OpenStore();
  }

  std::vector<std::string> DateBoxes() const {
    std::vector<std::string> boxes;
    for (const auto& m : platform_.messages)
      if (m.title.rfind("If system date ", 0) == 0) boxes.push_back(m.title + " | " + m.text);
    return boxes;
  }

  bool started_ = false;
};

struct Start {
  int last_y, last_m, last_d, y, m, d;
  const char* box;  // "" when no question comes
  int slot;         // where the last day's takings land; 0 when nothing rolls
};

TEST_F(RolloverTest, DateCheckAndDaysCountedAtARealStart) {
  const Start starts[] = {
      // Last used on the last day of the month, started on the first: one day.
      {2025, 4, 30, 2025, 5, 1, "", 1},
      // 28 February of a leap year to 1 March: a day was missed.
      {2024, 2, 28, 2024, 3, 1,
       "If system date Fri 1 Mar 24 is correct select OK | Warning: Usage gap from Wed 28 Feb 24",
       2},
      {2025, 6, 20, 2025, 6, 23,
       "If system date Mon 23 Jun 25 is correct select OK | Warning: Usage gap from Fri 20 Jun 25",
       3},
      // The same day of a later month: no rollover at all.
      {2025, 6, 20, 2025, 7, 20, "", 0},
      // A last-used date Shortdate can't read is shown as numbers.
      {0, 6, 20, 2025, 6, 23,
       "If system date Mon 23 Jun 25 is correct select OK | Warning: Usage gap from 20/6/0", 3},
  };
  for (const Start& t : starts) {
    SCOPED_TRACE(std::to_string(t.y) + "-" + std::to_string(t.m) + "-" + std::to_string(t.d));
    for (const auto& e : std::filesystem::directory_iterator(".")) std::filesystem::remove_all(e);
    ShopLastUsed(t.last_y, t.last_m, t.last_d);
    StartOn(t.y, t.m, t.d);
    ASSERT_TRUE(started_);
    EXPECT_EQ(DateBoxes(), *t.box ? std::vector<std::string>{t.box} : std::vector<std::string>{});
    if (*t.box) {
      EXPECT_EQ(platform_.messages.front().buttons, Buttons::OkCancel);
    }
    const SettingsRecord& s = G().settings;
    EXPECT_EQ(s.last_day, t.d);
    if (t.slot == 0) {
      EXPECT_EQ(s.till_takings, 250.75);  // the totals go on counting
      EXPECT_EQ(s.today_transactions, 12);
      continue;
    }
    EXPECT_EQ(s.takings_history[t.slot], 250.75);
    EXPECT_EQ(s.takings_history[t.slot + 1], 111);
    EXPECT_EQ(CategoryHistory(s, 2, t.slot), 40.5);
    EXPECT_EQ(s.till_takings, 0);
    // Yesterday's figures survive one day only.
    EXPECT_EQ(s.yesterday_transactions, t.slot == 1 ? 12 : 0);
    EXPECT_EQ(s.previous_takings, t.slot == 1 ? 250.75 : 0);
    // The monthly unit counts are cleared in a new month only.
    EXPECT_EQ(s.category_units_month_a[3], t.m == t.last_m ? 9 : 0);
  }
}

TEST_F(RolloverTest, CancelAtTheDateBoxLeavesEveryFileAsItWas) {
  ShopLastUsed(2025, 6, 20);
  std::string diary = Bytes("resn.dat");
  int32_t three = 3;
  std::memcpy(diary.data() + 5 * 12932 + 804, &three, 4);
  WriteBytes("resn.dat", diary);
  const std::string cfg = Bytes("wr.cfg");
  const std::string log = Bytes("bun4.dat");
  platform_.queue_answer(Answer::Cancel);
  StartOn(2025, 6, 25);
  EXPECT_FALSE(started_);
  EXPECT_TRUE(G().open_failed);
  Closedown();
  EXPECT_EQ(Bytes("wr.cfg"), cfg);
  EXPECT_EQ(Bytes("resn.dat"), diary);
  EXPECT_EQ(Bytes("bun4.dat"), log);
  EXPECT_EQ(Bytes("bun4.dat").find("Switched on."), std::string::npos);
  EXPECT_FALSE(FileExists("2025/6/25/base.dat"));

  // The same question comes at the next start, and OK goes on.
  ResetState();
  StartOn(2025, 6, 25);
  EXPECT_TRUE(started_);
  EXPECT_EQ(DateBoxes().size(), 1u);
  EXPECT_EQ(platform_.shown().back(), "Reminders: For today: 3");
}

// ---------------------------------------------------------------------------
// The reminder diary moves with the days.

std::string PageBytes(const ResnRecord& page) {
  return std::string(reinterpret_cast<const char*>(&page), sizeof page);
}

using DiaryTest = ShopTest;

// Every page holds one reminder naming its own day; after a gap of n, page p
// holds day p + n up to 27, and blank pages behind. From 28 all are blank.
TEST_F(DiaryTest, PagesMoveForwardByTheGap) {
  for (int n : {1, 5, 27, 28}) {
    SCOPED_TRACE("gap " + std::to_string(n));
    std::string diary;
    for (int p = 0; p < kReminderPages; ++p) {
      ResnRecord page = BlankReminderPage(p);
      page.used[0] = 2;
      page.count = 1;
      SetField(page.customer[0], "DAY " + std::to_string(p));
      diary += PageBytes(page);
    }
    WriteBytes("resn.dat", diary);
    ASSERT_TRUE(RollReminderDiary(n));
    diary = Bytes("resn.dat");
    ASSERT_EQ(diary.size(), 30u * 12932u);
    for (int p = 0; p < kReminderPages; ++p) {
      ResnRecord page;
      std::memcpy(&page, diary.data() + size_t(p) * sizeof page, sizeof page);
      if (p + n <= 27) {
        EXPECT_EQ(page.day, p);
        EXPECT_EQ(FieldText(page.customer[0]), "DAY " + std::to_string(p + n)) << p;
      } else {
        EXPECT_EQ(PageBytes(page), PageBytes(BlankReminderPage(p))) << p;
      }
    }
  }
  std::remove("resn.dat");
  ASSERT_EQ(mkdir("resn.dat", 0755), 0);
  EXPECT_FALSE(RollReminderDiary(3));
  EXPECT_EQ(platform_.shown(),
            std::vector<std::string>{"Problem: Unable to open resn.dat for complete update in "
                                     "Opendata."});
}

}  // namespace
}  // namespace tilo
