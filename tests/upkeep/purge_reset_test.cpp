// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <random>

#include "core/customer_file.h"
#include "core/film_record.h"
#include "core/history.h"
#include "core/settings.h"
#include "core/startup.h"
#include "core/state.h"
#include "support/shop_fixture.h"
#include "upkeep/file_reset.h"
#include "upkeep/purge.h"
#include "upkeep/rebuild.h"

namespace tilo {
namespace {

namespace fs = std::filesystem;
using UpkeepTest = ShopTest;

void MakeYear(int year, bool with_base) {
  fs::create_directories(DayFolder(year, 3, 4));
  ShopTest::WriteBytes(SalesLogPath(year, 3, 4), "sales");
  ShopTest::WriteBytes(DayBasePath(year, 3, 4), "d");
  ShopTest::WriteBytes(MonthBasePath(year, 3), "m");
  if (with_base) ShopTest::WriteBytes(YearBasePath(year), "y");
}

// The tree goes back from the later of the last use and the clock, stops at a
// gap, and a stray file keeps its year with the exact complaint.
TEST_F(UpkeepTest, PurgeStopsAtAGapAndReportsAYearAStrayFileKeeps) {
  platform_.set_now(2025, 6, 1, 9, 0);
  G().settings.last_used_year = 2026;  // the clock was set back since
  G().settings.transaction_number = 812;
  for (int year : {2026, 2025, 2023}) MakeYear(year, true);
  WriteBytes(DayFolder(2026, 3, 4) + "/notes.txt", "mine");

  EXPECT_FALSE(Purgeyears());
  EXPECT_EQ(platform_.shown(), std::vector<std::string>{"Unable to complete purge, access denied: "
                                                        "Please manually delete the 2026 folder"});
  EXPECT_TRUE(fs::exists(DayFolder(2026, 3, 4) + "/notes.txt"));
  EXPECT_FALSE(fs::exists(SalesLogPath(2026, 3, 4)));
  EXPECT_FALSE(fs::exists(YearFolder(2025)));
  EXPECT_TRUE(fs::exists(SalesLogPath(2023, 3, 4)));  // older than the gap of 2024
  SettingsRecord saved{};
  std::memcpy(&saved, Bytes("wr.cfg").data(), sizeof saved);
  EXPECT_EQ(saved.transaction_number, 1);

  platform_.clear_record();
  platform_.queue_answer(Answer::Ok);
  Purgehistory();
  EXPECT_TRUE(fs::exists(DayBasePath(2025, 6, 1)));
  EXPECT_EQ(platform_.shown().back(), "Transaction history purge: Complete");
}

// The repair as first written: a scan of every earlier record for each one.
void RebuildByScan(RebuildKind kind, std::string& bytes, int64_t size) {
  std::vector<int64_t> numbers;
  for (size_t at = 0; at < bytes.size(); at += size_t(size)) {
    char* rec = bytes.data() + at;
    int64_t n;
    std::memcpy(&n, rec, 8);
    bool gone = n <= 0 && n != -1;
    if (!gone && n != -1)
      for (int64_t earlier : numbers) gone = gone || earlier == n;
    if (gone) {
      n = -1;
      std::memcpy(rec, &n, 8);
      rec[8] = rec[9] = 0;
    }
    numbers.push_back(n);
    if (kind == RebuildKind::Inventory) {
      std::memset(rec + offsetof(FilmRecord, loan_number), 0, 8 + 16);
    } else if (kind == RebuildKind::Customers) {
      std::memset(rec + offsetof(MemberRecord, tax), 0, 8 + 80);
      std::memset(rec + offsetof(MemberRecord, loan_out), 0, 320);
    }
  }
}

std::string RandomRecords(std::mt19937_64& rng, int64_t count, int64_t size) {
  std::string bytes(size_t(count * size), '\0');
  for (char& c : bytes) c = char(rng());
  for (int64_t i = 0; i < count; ++i) {
    const int64_t pick = int64_t(rng() % 10);
    int64_t n = pick == 0 ? -int64_t(rng() % 3) : pick == 1 ? -1 : 1 + int64_t(rng() % 400);
    if (pick == 2) n = int64_t(rng() >> 2);  // large, unique
    std::memcpy(bytes.data() + i * size, &n, 8);
  }
  return bytes;
}

// The hashed rebuild against the scan: same bytes, and an index, NameKeys and
// counts a fresh load of the repaired file agrees with.
TEST_F(UpkeepTest, RebuildMatchesTheScanOnRandomFilesWithDuplicatesAndBadNumbers) {
  std::mt19937_64 rng(14);
  struct Case {
    IndexedFile* file;
    RebuildKind kind;
  };
  for (Case c :
       {Case{&G().films, RebuildKind::Inventory}, Case{&G().members, RebuildKind::Customers},
        Case{&G().suppliers, RebuildKind::Suppliers}}) {
    const int64_t size = c.file->layout().record_size;
    for (int64_t count : {1, 7, 2500}) {
      std::string bytes = RandomRecords(rng, count, size);
      WriteBytes(c.file->layout().path, bytes);
      auto progress = platform_.begin_progress("", "", false);
      ASSERT_TRUE(RebuildFile(*c.file, c.kind, *progress));
      RebuildByScan(c.kind, bytes, size);
      ASSERT_EQ(Bytes(c.file->layout().path), bytes) << c.file->layout().path << " " << count;

      IndexedFile fresh(c.file->layout());
      ASSERT_TRUE(fresh.Load());
      EXPECT_EQ(c.file->index, fresh.index);
      EXPECT_EQ(c.file->live, fresh.live);
      EXPECT_EQ(c.file->deleted, fresh.deleted);
      EXPECT_EQ(c.file->slot_count, count);
      for (int64_t i = 0; i < count && !fresh.name_keys.empty(); ++i)
        EXPECT_EQ(c.file->name_keys[size_t(i)], fresh.name_keys[size_t(i)]);
    }
  }
}

// File reset with the tick off repairs the files in place; with it on leaves one
// deleted record in each. Either way the settings are the reset ones but for the
// survivor, and only today's history is left.
TEST_F(UpkeepTest, FileResetByteForByteWithTheTickOnAndOff) {
  for (bool tick : {false, true}) {
    platform_.set_now(2026, 11, 23, 10, 0);
    MakeFreshShop();
    ASSERT_TRUE(OpenStore());
    std::mt19937_64 rng(tick);
    std::string film = RandomRecords(rng, 40, sizeof(FilmRecord));
    WriteBytes("film.dat", film);
    std::string mans = Bytes("mans.dat");
    G().settings.reset_survivor = 0x1122334455667788;
    G().settings.transaction_number = 99;
    MakeYear(2026, true);

    platform_.clear_record();
    Resetfiles(tick);
    EXPECT_EQ(platform_.shown(), std::vector<std::string>{"File rebuild: Complete."});
    std::string blank(sizeof(FilmRecord), '\0');
    std::memset(blank.data(), 0xff, 8);
    std::string blank_member(kMemberRecordSize, '\0');
    std::memset(blank_member.data(), 0xff, 8);
    if (tick) {
      EXPECT_EQ(Bytes("film.dat"), blank);
      EXPECT_EQ(Bytes("member.dat"), blank_member);
    } else {
      RebuildByScan(RebuildKind::Inventory, film, sizeof(FilmRecord));
      EXPECT_EQ(Bytes("film.dat"), film);
    }
    EXPECT_EQ(Bytes("mans.dat"), mans);

    SettingsRecord expected = G().settings;
    Resetsettings();
    expected.transaction_number = 1;
    std::memcpy(&expected.last_used_minute, &G().settings.last_used_minute, 20);
    EXPECT_EQ(G().settings.reset_survivor, 0x1122334455667788);
    EXPECT_EQ(Bytes("wr.cfg"),
              std::string(reinterpret_cast<const char*>(&expected), sizeof expected));
    EXPECT_FALSE(fs::exists(DayFolder(2026, 3, 4)));
    EXPECT_TRUE(fs::exists(DayBasePath(2026, 11, 23)));
    ResetState();
    fs::remove_all("2026");
  }
}

}  // namespace
}  // namespace tilo
