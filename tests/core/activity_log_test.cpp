// SPDX-License-Identifier: MIT
#include "core/activity_log.h"

#include <gtest/gtest.h>

#include <string>

#include "core/clock.h"
#include "core/startup.h"
#include "core/state.h"
#include "platform/files.h"
#include "support/shop_fixture.h"

namespace tilo {
namespace {

using ActivityLogTest = ShopTest;

TEST_F(ActivityLogTest, EntriesAreAppendedWithTheStampOfTheClock) {
  platform_.set_now(2026, 3, 4, 9, 7);
  Timestamp();
  ASSERT_TRUE(AppendToLog(StampedEntry("Log on.")));
  ASSERT_TRUE(AppendToLog("\r\nTill closeout: " + LogStamp() + "\r\n"));
  EXPECT_EQ(Bytes("bun4.dat"),
            "\r\n09:07 04/03/2026  Log on.\r\n\r\nTill closeout: 09:07 04/03/2026\r\n");
}

TEST_F(ActivityLogTest, ALogAboveTheLimitBecomesThePreviousOne) {
  G().settings.log_capacity = 0;
  WriteBytes("bun2.dat", "old generation");
  WriteBytes("bun4.dat", std::string(100000, 'a'));
  ASSERT_TRUE(Limitlog());
  EXPECT_EQ(Bytes("bun4.dat").size(), 100000u);  // at the limit: kept
  EXPECT_EQ(Bytes("bun2.dat"), "old generation");

  WriteBytes("bun4.dat", std::string(100001, 'b'));
  ASSERT_TRUE(Limitlog());
  EXPECT_EQ(Bytes("bun2.dat"), std::string(100001, 'b'));
  EXPECT_FALSE(FileExists("bun4.dat"));
  ASSERT_TRUE(AppendToLog("next"));
  EXPECT_EQ(Bytes("bun4.dat"), "next");

  EXPECT_EQ(LogCapacityRow(8), "500K");
  EXPECT_EQ(LogLimit(9), 100000);  // a row outside the list counts as the first
  G().settings.log_capacity = 8;
  WriteBytes("bun4.dat", std::string(400000, 'c'));
  ASSERT_TRUE(Limitlog());
  EXPECT_EQ(Bytes("bun4.dat").size(), 400000u);
}

TEST_F(ActivityLogTest, TheStartCutsTheLogBeforeItsSwitchOnEntry) {
  platform_.set_now(2026, 3, 4, 9, 7);
  MakeFreshShop();
  WriteBytes("bun4.dat", std::string(100001, 'x'));
  ASSERT_TRUE(OpenStore());
  EXPECT_EQ(Bytes("bun2.dat").size(), 100001u);
  EXPECT_EQ(Bytes("bun4.dat"), "\r\n09:07 04/03/2026  Switched on.\r\n");
}

}  // namespace
}  // namespace tilo
