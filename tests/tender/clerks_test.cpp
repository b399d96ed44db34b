// SPDX-License-Identifier: MIT
#include "tender/clerks.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/activity_log.h"
#include "core/settings.h"
#include "core/state.h"
#include "core/text.h"
#include "platform/files.h"
#include "sale/screen.h"
#include "support/shop_fixture.h"

namespace tilo {
namespace {

class TitleView : public ScreenView {
 public:
  void set_title(const std::string& title) override { titles.push_back(title); }
  std::vector<std::string> titles;
};

class ClerksTest : public ShopTest {
 protected:
  void SetUp() override {
    ShopTest::SetUp();
    MakeFreshShop();
    ASSERT_TRUE(Opensettings());
    install_screen_view(&view_);
    platform_.set_now(2024, 3, 1, 9, 30);
  }
  void TearDown() override {
    install_screen_view(nullptr);
    ShopTest::TearDown();
  }
  static SettingsRecord& S() { return G().settings; }

  TitleView view_;
};

TEST_F(ClerksTest, LogOnStepsOverAbsentClerksAndTakesOnlyTheRightPassword) {
  LogonForm form = Openlogon();
  EXPECT_EQ(Logonline(form), "1 Administrator");
  S().clerk_available[3] = 2;
  S().clerk_available[99] = 2;
  Steplogon(form, +1);
  Steplogon(form, +1);
  EXPECT_EQ(form.clerk, 4);
  for (int i = 0; i < 3; ++i) Steplogon(form, -1);
  EXPECT_EQ(form.clerk, 98);  // wrapped past 1, over 99

  // The box holds nine digits; a ninth never matches a password of eight.
  for (char c : std::string("1234567890")) Logonkey(form, std::string(1, c));
  EXPECT_EQ(form.password, "123456789");
  Logonkey(form, "CE");
  EXPECT_EQ(form.password, "12345678");
  EXPECT_FALSE(Acceptlogon(form));
  // Silently back to the start.
  EXPECT_EQ(form.clerk, 1);
  EXPECT_EQ(form.password, "");
  EXPECT_TRUE(platform_.shown().empty());
  EXPECT_FALSE(FileExists(kActivityLog));

  // The record's names are Windows-1252; the title is not.
  SetField(S().clerk_name[3], "J\xD6RG");
  form.clerk = 4;
  form.password = "7351";
  ASSERT_TRUE(Acceptlogon(form));
  EXPECT_EQ(S().clerk_number, 4);
  EXPECT_EQ(G().screen.restricted_clerk, 2);
  EXPECT_EQ(Bytes(kActivityLog), "\r\n09:30 01/03/2024  Log on.\r\nClerk: 4, J\xD6RG\r\n");
  EXPECT_EQ(view_.titles, std::vector<std::string>{"TILO Retail    Assoc: 4, J\u00d6RG"});
  Logonclerk(2);
  EXPECT_EQ(G().screen.restricted_clerk, 0);
}

TEST_F(ClerksTest, ClerkFormStoresByItsRulesAndOperatorSetupIsForThePrivileged) {
  ClerkForm form = Openclerkform(7);
  form.name = "SAM";
  form.available = false;
  form.password = "123456789";  // not even read for a clerk taken off
  EXPECT_TRUE(Acceptclerkform(form));
  EXPECT_EQ(S().clerk_available[7], 2);
  EXPECT_EQ(ClerkPassword(S(), 7), "7351");

  form.available = true;
  form.password_again = form.password;
  EXPECT_FALSE(Acceptclerkform(form));  // too long
  form.password = "2468";
  form.password_again = "2469";
  EXPECT_FALSE(Acceptclerkform(form));  // different
  form.password_again = "2468";
  EXPECT_TRUE(Acceptclerkform(form));
  // Names count from slot 0, passwords from slot 1.
  EXPECT_EQ(FieldText(S().clerk_name[6]), "SAM");
  EXPECT_EQ(FieldText(S().clerk_password[7]), "2468");
  EXPECT_EQ(S().clerk_available[7], 0);
  EXPECT_EQ(platform_.shown(), (std::vector<std::string>{"Problem: Password too long",
                                                         "Problem: Passwords do not match"}));
  ClerkForm admin = Openclerkform(1);
  admin.available = false;
  EXPECT_TRUE(Acceptclerkform(admin));
  EXPECT_EQ(S().clerk_available[1], 0);  // never taken off

  platform_.clear_record();
  std::vector<int> opened;
  auto run = [&opened](int clerk) {
    opened.push_back(clerk);
    return true;
  };
  Logonclerk(4);
  Operatorsetup(run);
  Logonclerk(2);
  platform_.queue_prompt("100");
  platform_.queue_prompt("12");
  Operatorsetup(run);
  Operatorsetup(run);
  EXPECT_EQ(opened, std::vector<int>{12});
  EXPECT_EQ(platform_.shown(),
            (std::vector<std::string>{"Restricted access: Administrator or manager",
                                      "Problem: Outside range", "Clerk: Amended"}));
}

TEST_F(ClerksTest, RightsAreStoredByTheirCodingAndOnlyThePrivilegedReachTheForm) {
  // A fresh record keeps every "free" right back and inhibits nothing.
  RightsForm form = Openrightsform();
  for (int r = 0; r < kRights; ++r) EXPECT_EQ(form[r], r < kRightDiscountButton) << r;
  Tickallrights(form, false);
  EXPECT_TRUE(form[kRightNewInventory] && form[kRightInventoryReceived]);
  form[kRightRefunds] = form[kRightReportMenu] = true;
  Acceptrightsform(form);
  EXPECT_NE(S().free_configuration, 0);
  EXPECT_NE(S().free_item[10], 0);
  EXPECT_EQ(S().free_new_inventory, 0);
  EXPECT_EQ(S().inhibit_refunds, 2);
  EXPECT_EQ(S().inhibit_discount_button, 0);
  EXPECT_EQ(Openrightsform(), form);

  int opened = 0;
  for (int clerk : {3, 1, 2}) {
    Logonclerk(clerk);
    Usercontrol([&opened] { ++opened; });
  }
  EXPECT_EQ(opened, 2);
}

}  // namespace
}  // namespace tilo
