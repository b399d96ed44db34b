// SPDX-License-Identifier: MIT
// Card payments against a scripted card terminal: the request files byte for
// byte, the reading of replies, and what a refusal or a cancel leaves behind.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

#include "core/history.h"
#include "sale/basket.h"
#include "sale/sale_fixture.h"
#include "tender/eft.h"

namespace tilo {
namespace {

using ::testing::ElementsAre;

// The card application: on the first poll of the wait it takes the request and,
// unless `reply` is empty, writes its reply.
struct Terminal : ScriptedPlatform {
  bool wait(const std::string& text, const std::string& title, int interval_ms,
            const std::function<bool()>& poll) override {
    const std::string folder = Eftfolder();
    if (take) {
      request = ShopTest::Bytes(folder + "/input.txt");
      std::filesystem::remove(folder + "/input.txt");
      if (reply) ShopTest::WriteBytes(folder + "/output.txt", *reply);
    }
    int polls = 0;
    return ScriptedPlatform::wait(text, title, interval_ms, [&] {
      // The rest of a reply written in two pieces, one poll later.
      if (++polls == 2 && !rest.empty()) {
        std::ofstream(folder + "/output.txt", std::ios::app) << rest;
      }
      return poll();
    });
  }
  bool take = true;
  std::optional<std::string> reply = "3=0";
  std::string rest;
  std::string request;
};

// The payment boxes, answered as scripted.
struct Choices : CardView {
  EftChoice offline_choice() override { return choice; }
  EftChoice online_choice(bool cashback_shown, bool not_present_shown) override {
    ++online_asked;
    cashback = cashback_shown;
    not_present = not_present_shown;
    return choice;
  }
  std::optional<std::string> cash_back() override { return amount; }
  EftChoice choice = EftChoice::Payment;
  std::optional<std::string> amount = "20";
  int online_asked = 0;
  bool cashback = false, not_present = false;
};

class EftTest : public SaleTest {
 protected:
  void SetUp() override {
    SaleTest::SetUp();
    install_platform(&terminal_);
    install_card_view(&choices_);
    terminal_.set_now(2024, 3, 15, 14, 5);
    Makelogdirs();
    Stock(1001, 4.50f);
    Stock(1002, 8.00f);
    SetField(S().eft_folder, folder_ + "/card");
    ASSERT_EQ(mkdir((folder_ + "/card").c_str(), 0777), 0);
    S().eft_active = 2.0;
  }
  void TearDown() override {
    install_card_view(nullptr);
    SaleTest::TearDown();
  }
  void Sell() {
    Addtobasket(1001, 0);
    Addtobasket(1002, 0);
    terminal_.clear_record();
  }
  std::vector<std::string> Seen() {
    auto shown = terminal_.shown();
    terminal_.clear_record();
    return shown;
  }

  Terminal terminal_;
  Choices choices_;
};

TEST_F(EftTest, EveryRequestGoesOutByteForByteWithAPointUnderACommaLocale) {
  ASSERT_TRUE(UseCommaLocale());
  char probe[16];
  std::snprintf(probe, sizeof probe, "%.2f", 1.5);
  S().eft_permit_cashback = 2.0;
  S().transaction_number = 41;
  Sell();

  struct Case {
    EftChoice choice;
    const char* sent;
  } payments[] = {
      {EftChoice::Payment, "1=41\n2=0\n3=12.50\n99=0"},
      {EftChoice::PaymentCashback, "1=41\n2=9\n3=32.50\n4=20.00\n99=0"},
      {EftChoice::NotPresent, "1=41\n2=0\n3=12.50\n12=1\n99=0"},
  };
  for (const Case& c : payments) {
    choices_.choice = c.choice;
    EXPECT_TRUE(Eftexchange());
    EXPECT_EQ(terminal_.request, c.sent);
  }
  EXPECT_TRUE(Eftrefund(7.25f, false));
  EXPECT_EQ(terminal_.request, "1=41\n2=20\n3=7.25\n99=0");
  EXPECT_TRUE(Eftrefund(7.25f, true));
  EXPECT_EQ(terminal_.request, "1=41\n2=20\n3=7.25\n12=1\n99=0");
  for (const char* typed : {"REF7", "4929000000006", "0528", "88812"})
    terminal_.queue_prompt(std::string(typed));
  Eftmanual();
  EXPECT_EQ(terminal_.request, "1=REF7\n2=3\n5=4929000000006\n6=0528\n13=88812\n99=0");
  UseCLocale();
  EXPECT_STREQ(probe, "1,50");  // the locale really was in force
  EXPECT_EQ(terminal_.prompts_shown.size(), 4u);
}

TEST_F(EftTest, OnlyTheResultCodeAtTheStartOfALineDecides) {
  S().eft_verbose = 2.0;
  struct Case {
    const char* reply;
    bool approved;
    const char* shown;
  } replies[] = {
      {"13=5\n3=0", true, "Authorized: Approved online"},
      {"1=41\r\n3=02\r\n99=0", true, "Authorized: Approved offline"},
      {"3=16", false, "Not authorized: Capture Card, declined online"},
      {"3=4x", false, "Not authorized: Declined Online"},
      {"3=99", false, "Not authorized: Declined"},
      {"1=41\n99=0", false, "Problem: Unable to retrieve authorization code"},
      {"3=x\n", false, "Problem: Unable to retrieve authorization code"},
      {"", false, "Problem: Unable to retrieve EVT file"},
      // Past the 1,999 bytes read, a code is not seen.
      {nullptr, false, "Problem: Unable to retrieve authorization code"},
  };
  for (const Case& c : replies) {
    terminal_.reply = c.reply ? c.reply : std::string(1999, 'x') + "\n3=0";
    EXPECT_EQ(Eftrefund(1.00f, false), c.approved) << terminal_.reply->substr(0, 20);
    EXPECT_THAT(Seen(), ElementsAre(c.shown)) << terminal_.reply->substr(0, 20);
  }
  // A reply still being written when it is first seen is read once it is whole.
  terminal_.reply = "1=41\n3=";
  terminal_.rest = "5\n99=0";
  EXPECT_FALSE(Eftrefund(1.00f, false));
  EXPECT_THAT(Seen(), ElementsAre("Not authorized: Declined Offline"));
  EXPECT_EQ(Eftresulttext(65), "Invalid Security Code ( for Gift Card)");
  EXPECT_EQ(Eftresulttext(6), "Declined");
}

// A decline is proved against the card simulator by the card-sale run of the
// real program; here the words of a cancel and the stuck reply.
TEST_F(EftTest, ACancelOrAStuckReplyLeavesTheBasketWholeAndNothingWritten) {
  Sell();
  const int32_t number = S().transaction_number;
  // Cancel while the terminal has not taken the request: it is taken back.
  terminal_.take = false;
  terminal_.wait_cancel_after = 3;
  Eftsale();
  EXPECT_THAT(Seen(), ElementsAre("Not authorized: Cancelled"));
  EXPECT_THAT(terminal_.waits_shown.back(),
              "Waiting for the card terminal: Waiting for the card terminal to answer.");
  EXPECT_FALSE(std::filesystem::exists(folder_ + "/card/input.txt"));

  terminal_.take = true;
  terminal_.wait_cancel_after = -1;
  // A reply that cannot be removed could pass for this sale's: nothing is asked.
  std::filesystem::create_directories(folder_ + "/card/output.txt/stuck");
  Eftsale();
  EXPECT_THAT(Seen(), ElementsAre("Problem: Unable to create EVT file"));
  EXPECT_FALSE(std::filesystem::exists(folder_ + "/card/input.txt"));
  EXPECT_EQ(B().line_count, 2);
  EXPECT_EQ(S().transaction_number, number);
  EXPECT_EQ(Bytes(SalesLogPath(2024, 3, 15)), "");
}

TEST_F(EftTest, ACardSaleCommitsAsEftWithItsCashBack) {
  S().eft_permit_cashback = 2.0;
  choices_.choice = EftChoice::PaymentCashback;
  choices_.amount = "150";
  terminal_.queue_answer(Answer::Yes);
  Sell();
  const int32_t number = S().transaction_number;
  Eftsale();
  EXPECT_THAT(Seen(), ElementsAre("Please confirm: 150"));
  EXPECT_EQ(terminal_.request, "1=" + std::to_string(number) + "\n2=9\n3=162.50\n4=150.00\n99=0");
  // The record it commits is checked byte by byte in the card-sale run.
  EXPECT_EQ(S().transaction_number, number + 1);
  EXPECT_DOUBLE_EQ(S().cashback_today, 150.0);

  // With processing off the sale is only recorded, the cash back with it.
  S().eft_active = 0.0;
  choices_.amount = "5";
  terminal_.request.clear();
  Sell();
  Eftsale();
  EXPECT_EQ(terminal_.request, "");
  EXPECT_FALSE(std::filesystem::exists(folder_ + "/card/input.txt"));
  EXPECT_EQ(S().transaction_number, number + 2);
  EXPECT_DOUBLE_EQ(S().cashback_today, 155.0);
  EXPECT_EQ(Bytes(SalesLogPath(2024, 3, 15)).size(), 2 * sizeof(SalesLogRecord));

  // A restricted clerk kept from cash back is not offered it, with or without
  // processing.
  G().screen.restricted_clerk = 2;
  S().inhibit_cashback = 2;
  choices_.choice = EftChoice::Cancel;  // would stop the sale, were the box shown
  Sell();
  Eftsale();
  EXPECT_EQ(B().line_count, 0);
  EXPECT_EQ(S().transaction_number, number + 3);
  S().eft_active = 2.0;
  Sell();
  Eftsale();
  EXPECT_FALSE(choices_.cashback);
  EXPECT_EQ(B().line_count, 2);
}

TEST_F(EftTest, TheCardFolderDefaultsToTheHomeFolderAndRefusesALongPath) {
  const std::string home = std::string(std::getenv("HOME")) + "/YESEFT";
  for (const char* stored : {"", "C:\\YESEFT", "d:\\shop\\cards"}) {
    SetField(S().eft_folder, stored);
    EXPECT_EQ(Eftfolder(), home) << stored;
  }
  const std::string longest = "/" + std::string(248, 'f');
  EXPECT_TRUE(Seteftfolder(longest));
  EXPECT_EQ(Eftfolder(), longest);
  EXPECT_FALSE(Seteftfolder(longest + "g"));
  EXPECT_EQ(Eftfolder(), longest);
  EXPECT_EQ(Seen().size(), 1u);

  // The form shows each flag on when non-zero and stores 2.0 or 0.0.
  S().eft_verbose = 1.0;
  CardSetup shown = Cardsetupshown();
  EXPECT_TRUE(shown.active && shown.verbose && !shown.cashback);
  shown.folder = "/srv/cards";
  shown.cashback = true;
  shown.verbose = false;
  ASSERT_TRUE(Storecardsetup(shown));
  EXPECT_EQ(Eftfolder(), "/srv/cards");
  EXPECT_EQ(S().eft_permit_cashback, 2.0);
  EXPECT_EQ(S().eft_verbose, 0.0);
}

}  // namespace
}  // namespace tilo
