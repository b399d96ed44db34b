// SPDX-License-Identifier: MIT
#include "customers/customer_balance.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

#include "core/startup.h"
#include "core/state.h"
#include "core/text.h"
#include "customers/customer_maintenance.h"
#include "sale/commands.h"
#include "support/shop_fixture.h"

namespace tilo {
namespace {

using ::testing::ElementsAre;

class BalanceTest : public ShopTest {
 protected:
  void SetUp() override {
    ShopTest::SetUp();
    platform_.set_now(2025, 2, 7, 14, 5);
    MemberRecord m{};
    m.number = 5;
    SetField(m.name, "SMITH");
    m.group = 1;
    m.balance = 42.5f;
    MakeFreshShop();
    WriteBytes("member.dat", std::string(reinterpret_cast<const char*>(&m), sizeof m));
    ASSERT_TRUE(OpenStore());
    InstallCustomerCommands();
  }
  void TearDown() override {
    ClearHandlers();
    ShopTest::TearDown();
  }
  float Stored() {
    float balance;
    std::memcpy(&balance, Bytes("member.dat").data() + 1554, sizeof balance);
    return balance;
  }
};

TEST(BalanceAmountTest, ReadsAPointInEveryLocaleAndAllowsACredit) {
  const struct {
    const char* typed;
    std::optional<float> read;
  } cases[] = {
      {" 12.5 ", 12.5f},       {"-3.456", -3.46f},      {"-0", 0.0f},
      {"", std::nullopt},      {"-", std::nullopt},     {"- 5", std::nullopt},
      {"12,50", std::nullopt}, {"1.2.3", std::nullopt},
  };
  for (const auto& c : cases) EXPECT_EQ(Balanceamount(c.typed), c.read) << c.typed;
  EXPECT_FALSE(std::signbit(*Balanceamount("-0")));
}

TEST_F(BalanceTest, StoresTheNewBalanceAndLogsBeforeAndAfterOrNothingAtAll) {
  const struct {
    std::vector<std::optional<std::string>> replies;
    float stored;
    const char* shown;
    const char* logged;
  } cases[] = {
      {{std::nullopt}, 42.5f, "", ""},
      {{"5", std::nullopt}, 42.5f, "", ""},
      {{"5", "12,50"}, 42.5f, "Problem: Invalid amount", ""},
      {{"5", ""}, 42.5f, "Problem: Invalid amount", ""},
      {{"5", "10.004"},
       10.0f,
       "Customer: Updated",
       "\r\n14:05 07/02/2025  Customer 5 balance amended: before 42.50 after 10.00\r\n"},
      {{"5", "-7.5"},
       -7.5f,
       "Customer: Updated",
       "\r\n14:05 07/02/2025  Customer 5 balance amended: before 10.00 after -7.50\r\n"},
  };
  for (const auto& c : cases) {
    platform_.clear_record();
    platform_.prompts_shown.clear();
    platform_.prompt_presets.clear();
    for (const auto& r : c.replies) platform_.queue_prompt(r);
    const size_t log_start = Bytes("bun4.dat").size();
    Dispatch(Command::AmendBalance);
    EXPECT_FLOAT_EQ(Stored(), c.stored) << c.shown;
    EXPECT_EQ(Bytes("bun4.dat").substr(log_start), c.logged);
    if (*c.shown)
      EXPECT_THAT(platform_.shown(), ElementsAre(c.shown));
    else
      EXPECT_THAT(platform_.shown(), ElementsAre());
    if (c.replies.size() == 2) {
      EXPECT_EQ(platform_.prompts_shown[1], "5 Name: SMITH: Balance");
      EXPECT_EQ(platform_.prompt_presets[1], c.stored == -7.5f ? "10.00" : "42.50");
    }
  }
}

}  // namespace
}  // namespace tilo
