// SPDX-License-Identifier: MIT
#include "tender/till.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/activity_log.h"
#include "core/settings.h"
#include "core/state.h"
#include "platform/files.h"
#include "sale/commands.h"
#include "support/shop_fixture.h"

namespace tilo {
namespace {

class TillTest : public ShopTest {
 protected:
  void SetUp() override {
    ShopTest::SetUp();
    MakeFreshShop();
    ASSERT_TRUE(Opensettings());
    platform_.set_now(2024, 3, 1, 17, 45);
    SettingsRecord& s = G().settings;
    s.clerk_number = 3;
    s.cash_sales = 120.50;
    s.balance_cash = 10;
    s.cash_refunds = -5;
    s.petty_cash_today = 7.25;
    s.cashback_today = 20;
    s.ch_sales = 30;
    s.ch_refunds = -3;
    s.eft_sales = 55.10;
    s.eft_refunds = -0.10;
    s.credit_sales = 999;  // never in the till
    SetHandler(Command::LogOff, [this](int) { ++log_offs_; });
  }
  void TearDown() override {
    SetHandler(Command::LogOff, {});
    ShopTest::TearDown();
  }
  int log_offs_ = 0;
};

TEST_F(TillTest, CloseoutLogsTheFiguresFromTheRunningTotalsAndLogsTheClerkOff) {
  // The forms show what was paid out as negative; nothing paid out reads 0.00.
  EXPECT_EQ(Tillrows(true)[3].second, "-7.25");
  G().settings.cashback_today = 0;
  EXPECT_EQ(Tillrows(true)[4].second, "0.00");
  G().settings.cashback_today = 20;

  Tillcloseout([] { return CloseoutChoice::Close; });
  EXPECT_EQ(log_offs_, 1);
  // Total cash: 100 + 130.50 - 5 - 7.25 - 20; the till adds 27.00 and 55.00.
  EXPECT_EQ(Bytes(kActivityLog),
            "\r\nTill closeout: 17:45 Fri 1 Mar 24\r\nAssoc: 3, Clerk 3\r\n"
            "Initial till: 100.00\r\nCash: 130.50\r\nCash refunds: -5.00\r\n"
            "Petty cash: 7.25\r\nCash back: 20.00\r\nTotal cash: 198.25\r\nCh: 30.00\r\n"
            "Ch refunds: -3.00\r\nEFT: 55.10\r\nEFT refunds: -0.10\r\nTill total: 280.25\r\n");
}

TEST_F(TillTest, CloseoutStopsOnCancelAnOpenTenderOrAMissingLog) {
  Tillcloseout([] { return CloseoutChoice::Cancel; });
  G().tender_form_open = 2;
  Tillcloseout([] {
    ADD_FAILURE() << "the form opened over a tender";
    return CloseoutChoice::Close;
  });
  G().tender_form_open = 0;
  ASSERT_TRUE(MakeFolder(kActivityLog));
  Tillcloseout([] { return CloseoutChoice::Close; });
  EXPECT_EQ(platform_.shown(),
            std::vector<std::string>{"Fatal error: Data file: bun4.dat, not present."});
  EXPECT_EQ(log_offs_, 0);  // the clerk stays on
}

TEST_F(TillTest, PettyCashAddsTheAmountAtTwoDecimals) {
  SettingsRecord& s = G().settings;
  s.petty_cash_today = 1;
  for (const char* typed : {"-2", "2.506", "coffee"}) platform_.queue_prompt(typed);
  platform_.queue_prompt(std::nullopt);
  for (int i = 0; i < 4; ++i) Pettycash();
  EXPECT_DOUBLE_EQ(s.petty_cash_today, 3.51);
  EXPECT_EQ(platform_.shown(),
            (std::vector<std::string>{"Problem: Negative amount", "Petty cash payment: Recorded",
                                      "Petty cash payment: Recorded"}));
  EXPECT_FALSE(FileExists(kActivityLog));
}

}  // namespace
}  // namespace tilo
