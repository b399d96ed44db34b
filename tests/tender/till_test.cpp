// SPDX-License-Identifier: MIT
#include "tender/till.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/activity_log.h"
#include "core/settings.h"
#include "core/state.h"
#include "core/text.h"
#include "documents/print_service.h"
#include "documents/recording_target.h"
#include "platform/files.h"
#include "sale/commands.h"
#include "support/shop_fixture.h"

namespace tilo {
namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;

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
    s.balance_ch = 2;
    s.ch_refunds = -3;
    s.eft_sales = 55.10;
    s.balance_eft = 1;
    s.eft_refunds = -0.10;
    s.credit_sales = 999;  // never in the till
    s.credit_refunds = -99;
    SetField(G().heading.site_name, "CORNER STORE");
    SetHandler(Command::LogOff, [this](int) { ++log_offs_; });
  }
  void TearDown() override {
    SetHandler(Command::LogOff, {});
    install_print_service(nullptr);
    ShopTest::TearDown();
  }

  int log_offs_ = 0;
};

TEST_F(TillTest, FiguresComeFromTheRunningTotalsWithoutCredit) {
  const TillFigures f = Tillfigures();
  EXPECT_DOUBLE_EQ(f.initial, 100);
  EXPECT_DOUBLE_EQ(f.cash, 130.50);
  // 100 + 130.50 - 5 - 7.25 - 20
  EXPECT_DOUBLE_EQ(f.total_cash, 198.25);
  // + 32 - 3 + 56.10 - 0.10
  EXPECT_DOUBLE_EQ(f.till_total, 283.25);

  // The forms show what was paid out as negative; a day with none reads 0.00.
  EXPECT_THAT(Tillrows(true),
              ElementsAre(std::pair<std::string, std::string>{"Initial till", "100.00"},
                          std::pair<std::string, std::string>{"Cash", "130.50"},
                          std::pair<std::string, std::string>{"Cash refunds", "-5.00"},
                          std::pair<std::string, std::string>{"Petty cash", "-7.25"},
                          std::pair<std::string, std::string>{"Cash back", "-20.00"},
                          std::pair<std::string, std::string>{"Total cash", "198.25"},
                          std::pair<std::string, std::string>{"Ch", "32.00"},
                          std::pair<std::string, std::string>{"Ch refunds", "-3.00"},
                          std::pair<std::string, std::string>{"EFT", "56.10"},
                          std::pair<std::string, std::string>{"EFT refunds", "-0.10"},
                          std::pair<std::string, std::string>{"Till total", "283.25"}));
  G().settings.petty_cash_today = 0;
  EXPECT_EQ(Tillrows(true)[3].second, "0.00");
  EXPECT_EQ(Tillrows(false)[4].second, "20.00");

  // A cash refund of 5.00 takes 5.00 off the cash.
  const double before = Tillfigures().total_cash;
  G().settings.cash_refunds -= 5;
  EXPECT_DOUBLE_EQ(Tillfigures().total_cash, before - 5);
}

TEST_F(TillTest, CloseoutLogsTheFiguresAndLogsTheClerkOff) {
  ASSERT_TRUE(AppendToLog("earlier\r\n"));
  int forms = 0;
  Tillcloseout([&forms] {
    ++forms;
    return CloseoutChoice::Close;
  });
  EXPECT_EQ(forms, 1);
  EXPECT_EQ(log_offs_, 1);
  EXPECT_EQ(Bytes(kActivityLog),
            "earlier\r\n"
            "\r\nTill closeout: 17:45 Fri 1 Mar 24\r\n"
            "Assoc: 3, Clerk 3\r\n"
            "Initial till: 100.00\r\n"
            "Cash: 130.50\r\n"
            "Cash refunds: -5.00\r\n"
            "Petty cash: 7.25\r\n"
            "Cash back: 20.00\r\n"
            "Total cash: 198.25\r\n"
            "Ch: 32.00\r\n"
            "Ch refunds: -3.00\r\n"
            "EFT: 56.10\r\n"
            "EFT refunds: -0.10\r\n"
            "Till total: 283.25\r\n");
  EXPECT_TRUE(platform_.shown().empty());
}

TEST_F(TillTest, CloseoutStopsOnCancelAnOpenTenderOrAMissingLog) {
  Tillcloseout([] { return CloseoutChoice::Cancel; });
  G().tender_form_open = 2;
  Tillcloseout([] {
    ADD_FAILURE() << "the form opened over a tender";
    return CloseoutChoice::Close;
  });
  G().tender_form_open = 0;
  EXPECT_EQ(log_offs_, 0);
  EXPECT_FALSE(FileExists(kActivityLog));

  ASSERT_TRUE(MakeFolder(kActivityLog));
  Tillcloseout([] { return CloseoutChoice::Close; });
  EXPECT_EQ(platform_.shown(),
            std::vector<std::string>{"Fatal error: Data file: bun4.dat, not present."});
  EXPECT_EQ(log_offs_, 0);
}

TEST_F(TillTest, PrintedCloseoutIsOneListingPageThroughThePrinterDialog) {
  RecordingPrintService printers;
  install_print_service(&printers);
  printers.dialog_cancels = true;
  EXPECT_FALSE(Printcloseoutjob());
  EXPECT_EQ(printers.count("begin_document"), 0);

  printers.dialog_cancels = false;
  EXPECT_TRUE(Printcloseoutjob());
  EXPECT_EQ(printers.count("begin_document TILO"), 1);
  EXPECT_EQ(printers.count("begin_page"), 1);
  EXPECT_THAT(printers.texts(),
              ElementsAreArray(std::vector<std::string>{
                  "CORNER STORE  Till closeout", "17:45 Fri 1 Mar 24", "Assoc: 3, Clerk 3",
                  "Initial till: 100.00", "Cash: 130.50", "Cash refunds: -5.00", "Petty cash: 7.25",
                  "Cash back: 20.00", "Total cash: 198.25", "Ch: 32.00", "Ch refunds: -3.00",
                  "EFT: 56.10", "EFT refunds: -0.10", "Till total: 283.25"}));
  // Rows of the listing font: the heading at the top, the figures below.
  EXPECT_EQ(printers.count("text_out 0 0 CORNER STORE"), 1);
  EXPECT_EQ(printers.count("text_out 0 84 17:45"), 1);

  printers.device.release_result = false;
  EXPECT_TRUE(Printcloseoutjob());
  EXPECT_EQ(platform_.shown(), std::vector<std::string>{"Problem: Unable to release printer"});
}

TEST_F(TillTest, PettyCashAddsTheAmountAtTwoDecimals) {
  SettingsRecord& s = G().settings;
  s.petty_cash_today = 1;
  platform_.queue_prompt(std::nullopt);
  platform_.queue_prompt("-2");
  platform_.queue_prompt("2.506");
  platform_.queue_prompt("coffee");
  for (int i = 0; i < 4; ++i) Pettycash();
  EXPECT_DOUBLE_EQ(s.petty_cash_today, 3.51);
  EXPECT_EQ(platform_.prompts_shown.front(), "Petty cash payment: Please enter the amount");
  EXPECT_EQ(platform_.shown(),
            (std::vector<std::string>{"Problem: Negative amount", "Petty cash payment: Recorded",
                                      "Petty cash payment: Recorded"}));
  // Nothing is logged and nothing saved by it.
  EXPECT_FALSE(FileExists(kActivityLog));
}

}  // namespace
}  // namespace tilo
