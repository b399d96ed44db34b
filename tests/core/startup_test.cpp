// SPDX-License-Identifier: MIT
#include "core/startup.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstring>
#include <filesystem>
#include <functional>
#include <map>

#include "core/clock.h"
#include "core/settings.h"
#include "core/state.h"
#include "core/text.h"
#include "support/shop_fixture.h"

namespace tilo {
namespace {

using StartupTest = ShopTest;

std::map<std::string, std::string> FolderBytes() {
  std::map<std::string, std::string> all;
  for (const auto& e : std::filesystem::recursive_directory_iterator("."))
    if (e.is_regular_file()) all[e.path().string()] = ShopTest::Bytes(e.path().string());
  return all;
}

struct BrokenShop {
  const char* name;
  std::function<void()> damage;
  const char* expected;  // "Title: text"
};

// Every fatal check of the opening: its exact words, no start, and no file touched.
TEST_F(StartupTest, EachDamagedFileStopsTheStartWithItsMessageAndWritesNothing) {
  const std::vector<BrokenShop> cases = {
      {"film missing", [] { std::remove("film.dat"); },
       "Fatal error: Unable to open film.dat in Opendata"},
      {"film empty", [] { WriteBytes("film.dat", ""); },
       "Fatal error: Film.dat has no data in Opendata."},
      {"film 1873 bytes", [] { WriteBytes("film.dat", std::string(1873, '\0')); },
       "Fatal error: Data file film.dat corrupt in Opendata."},
      {"member missing", [] { std::remove("member.dat"); },
       "Fatal error: Data file member.dat not present in Opendata."},
      {"member empty", [] { WriteBytes("member.dat", ""); },
       "Fatal error: Data file member.dat no data in Opendata."},
      {"member odd size", [] { WriteBytes("member.dat", std::string(2095, '\0')); },
       "Fatal error: Data file member.dat corrupt in Opendata."},
      {"mans missing", [] { std::remove("mans.dat"); },
       "Fatal error: Data file mans.dat not present in Opendata."},
      {"mans empty", [] { WriteBytes("mans.dat", ""); },
       "Fatal error: Data file mans.dat no data in Opendata."},
      {"mans odd size", [] { WriteBytes("mans.dat", std::string(1059, '\0')); },
       "Fatal error: Data file mans.dat corrupt in Opendata."},
      {"settings missing", [] { std::remove("wr.cfg"); },
       "Fatal error: Data file wr.cfg not present in Opendata."},
  };
  for (const BrokenShop& c : cases) {
    SCOPED_TRACE(c.name);
    for (const auto& e : std::filesystem::directory_iterator(".")) std::filesystem::remove_all(e);
    MakeFreshShop();
    c.damage();
    const auto before = FolderBytes();
    ResetState();
    platform_.clear_record();
    EXPECT_FALSE(OpenStore());
    EXPECT_TRUE(G().open_failed);
    Closedown();  // skipped whole after a failed start
    EXPECT_EQ(platform_.shown(), std::vector<std::string>{c.expected});
    EXPECT_EQ(FolderBytes(), before);
  }
}

TEST_F(StartupTest, ALogThatCannotBeOpenedStopsTheStart) {
  MakeFreshShop();
  ASSERT_EQ(mkdir("bun4.dat", 0755), 0);
  EXPECT_FALSE(OpenStore());
  EXPECT_EQ(platform_.shown().back(),
            "Problem, please check folder permissions: Unable to manipulate log.");
}

TEST_F(StartupTest, OldSupplierFileIsReplacedSilently) {
  MakeFreshShop();
  WriteBytes("mans.dat", std::string(66, 'x'));
  ASSERT_TRUE(OpenStore());
  EXPECT_TRUE(platform_.messages.empty());
  std::string mans = Bytes("mans.dat");
  ASSERT_EQ(mans.size(), 1058u);
  int64_t number;
  std::memcpy(&number, mans.data(), 8);
  EXPECT_EQ(number, -1);
}

// The file sizes, heading and wording files are proved by the store-opens run of
// the real program; here the first-run values and the exact log lines.
TEST_F(StartupTest, FirstStartSetsTheFirstRunValuesAndCloseDownLogsTheClerk) {
  platform_.set_now(2026, 11, 22, 8, 7);
  platform_.currency = "$";
  MakeFreshShop();
  ASSERT_TRUE(OpenStore());
  const SettingsRecord& s = G().settings;
  EXPECT_EQ(FieldText(s.tax1_name), "GST 1");
  EXPECT_EQ(FieldText(s.tax2_name), "GST 2");
  EXPECT_EQ(s.drawer_mode, 2);
  EXPECT_EQ(s.invoice_line_balance, 49);
  EXPECT_EQ(s.invoice_barcode, 1);
  EXPECT_EQ(s.history_from_month, 11);
  // The first run zeroes the last-used stamp, so the previous run reads as none.
  EXPECT_EQ(G().previous_run_year, 0);
  EXPECT_EQ(FieldText(s.currency_symbol), "$");
  EXPECT_EQ(s.currency_set, 2);
  // start_category 0 takes current_category + 1, then current becomes start - 1.
  EXPECT_EQ(s.start_category, 15);
  EXPECT_EQ(s.current_category, 14);
  EXPECT_TRUE(platform_.messages.empty());

  G().settings.clerk_number = 3;
  platform_.set_now(2026, 11, 22, 17, 45);
  Closedown();
  std::string cfg = Bytes("wr.cfg");
  int32_t hour, minute;
  std::memcpy(&hour, cfg.data() + 484, 4);
  std::memcpy(&minute, cfg.data() + 480, 4);
  EXPECT_EQ(hour, 17);
  EXPECT_EQ(minute, 45);
  EXPECT_EQ(Bytes("bun4.dat"),
            "\r\n08:07 22/11/2026  Switched on.\r\n"
            "\r\n17:45 22/11/2026  Switched off.\r\nClerk: 3, Clerk 3\r\n");
  EXPECT_TRUE(platform_.messages.empty());
}

TEST_F(StartupTest, TransactionNumberWrapsAndEmptyTaxNameIsRestored) {
  MakeFreshShop();
  ASSERT_TRUE(Opensettings());
  G().settings.transaction_number = 200000001;
  G().settings.last_day = 22;
  SetField(G().settings.tax1_name, "");
  SetField(G().settings.tax2_name, "MINE");
  ASSERT_TRUE(Savesettings());
  ResetState();
  ASSERT_TRUE(OpenStore());
  EXPECT_EQ(G().settings.transaction_number, 1);
  EXPECT_EQ(FieldText(G().settings.tax1_name), "TAX 1");
  EXPECT_EQ(FieldText(G().settings.tax2_name), "TAX 2");
}

TEST_F(StartupTest, MissingReminderFileIsMadeWithANoteAndTodaysRemindersAreCounted) {
  MakeFreshShop();
  ASSERT_TRUE(OpenStore());
  Closedown();
  std::remove("resn.dat");
  ResetState();
  ASSERT_TRUE(OpenStore());
  EXPECT_EQ(platform_.shown(), std::vector<std::string>{"Reservation file: New"});
  Closedown();

  std::string diary = Bytes("resn.dat");
  int32_t three = 3;
  std::memcpy(diary.data() + 804, &three, 4);
  WriteBytes("resn.dat", diary);
  ResetState();
  platform_.clear_record();
  ASSERT_TRUE(OpenStore());
  EXPECT_EQ(platform_.shown(), std::vector<std::string>{"Reminders: For today: 3"});
}

TEST_F(StartupTest, OverMidnightTheSummaryIsNotWrittenButTheSettingsAre) {
  platform_.set_now(2026, 11, 22, 23, 50);
  MakeFreshShop();
  ASSERT_TRUE(OpenStore());
  platform_.set_now(2026, 11, 23, 0, 1);
  Closedown();
  EXPECT_FALSE(std::filesystem::exists("2026/11/23"));
  std::string cfg = Bytes("wr.cfg");
  int32_t day;
  std::memcpy(&day, cfg.data() + 488, 4);
  EXPECT_EQ(day, 23);
}

TEST_F(StartupTest, SettingsThatCannotBeWrittenAreReportedAndSurvived) {
  MakeFreshShop();
  ASSERT_TRUE(OpenStore());
  std::remove("wr.cfg");
  ASSERT_EQ(mkdir("wr.cfg", 0755), 0);
  Closedown();
  EXPECT_EQ(platform_.shown(),
            std::vector<std::string>{"Problem: Unable to create WR.CFG at end of WinMaim"});
}

TEST(ScreenRuleTest, WindowSizesFollowTheDesktop) {
  ScriptedPlatform p;
  install_platform(&p);
  EXPECT_FALSE(DesktopIsUsable({799, 1200}));
  EXPECT_EQ(p.shown(),
            std::vector<std::string>{"Problem: Program requires desktop of at least 800 by 600"});
  EXPECT_TRUE(DesktopIsUsable({800, 400}));  // the height is not tested
  install_platform(nullptr);

  WindowGeometry small = CreatedWindow({900, 500});
  EXPECT_FALSE(small.fixed_size);
  WindowGeometry moved = WindowAfterSplash({900, 500});
  EXPECT_EQ((std::vector<int>{moved.x, moved.y, moved.width, moved.height}),
            (std::vector<int>{0, 0, 800, 600}));

  WindowGeometry large = CreatedWindow({1280, 768});
  EXPECT_TRUE(large.fixed_size);
  EXPECT_EQ(large.width, 1024);
  EXPECT_EQ(large.height, 746);
  moved = WindowAfterSplash({1280, 768});
  EXPECT_EQ((std::vector<int>{moved.x, moved.y, moved.width, moved.height}),
            (std::vector<int>{128, 2, 1024, 746}));
  EXPECT_EQ(WindowAfterSplash({1280, 1024}).width, 0);  // stays where it was made
}

TEST_F(StartupTest, ClockTextsAndShortDate) {
  platform_.set_now(2027, 2, 5, 7, 3);
  Timestamp();
  EXPECT_STREQ(G().stamp_text, "07:0305/02/2027");
  Datestamp();
  EXPECT_STREQ(G().date_text, "05/02/2027");
  EXPECT_STREQ(G().stamp_text, "05/02/2027");  // one shared buffer

  std::strcpy(G().pretty_date, "00:0005/02/2027");
  EXPECT_EQ(Shortdate(), 1);
  EXPECT_STREQ(G().pretty_date, "Fri 5 Feb 27");
  for (const char* bad :
       {"00:0000/02/2027", "00:0032/02/2027", "00:0005/13/2027", "00:0005/02/1979"}) {
    std::strcpy(G().pretty_date, bad);
    EXPECT_EQ(Shortdate(), 0) << bad;
    EXPECT_STREQ(G().pretty_date, bad);
  }
  EXPECT_EQ(DaysInMonth(2, 2100), 29);  // every fourth year, centuries too
  EXPECT_EQ(DaysInMonth(2, 2027), 28);
}

}  // namespace
}  // namespace tilo
