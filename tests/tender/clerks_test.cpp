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
#include "sale/commands.h"
#include "sale/screen.h"
#include "support/shop_fixture.h"

namespace tilo {
namespace {

class TitleView : public ScreenView {
 public:
  void set_title(const std::string& title) override { titles.push_back(title); }
  void settings_changed() override { ++menu_rebuilds; }
  std::vector<std::string> titles;
  int menu_rebuilds = 0;
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

TEST_F(ClerksTest, UpAndDownWrapAndStepOverClerksTakenOffTheList) {
  LogonForm form = Openlogon();
  EXPECT_EQ(form.clerk, 1);
  EXPECT_EQ(Logonline(form), "1 Administrator");
  S().clerk_available[3] = 2;
  S().clerk_available[99] = 2;
  Steplogon(form, +1);
  EXPECT_EQ(Logonline(form), "2 Manager");
  Steplogon(form, +1);
  EXPECT_EQ(form.clerk, 4);
  Steplogon(form, -1);
  EXPECT_EQ(form.clerk, 2);
  Steplogon(form, -1);
  Steplogon(form, -1);
  EXPECT_EQ(form.clerk, 98);
  Steplogon(form, +1);
  EXPECT_EQ(form.clerk, 1);
}

TEST_F(ClerksTest, ThePasswordBoxTakesNineDigitsAndTheKeypadEditsIt) {
  LogonForm form = Openlogon();
  for (const char* key : {"1", "2", "3", "4", "5", "6", "7", "8", "9", "0"}) Logonkey(form, key);
  EXPECT_EQ(form.password, "123456789");
  Logonkey(form, "CE");
  EXPECT_EQ(form.password, "12345678");
  Logonkey(form, "x");
  EXPECT_EQ(form.password, "12345678");
  Logonkey(form, "C");
  EXPECT_EQ(form.password, "");
  Logonkey(form, "CE");
  EXPECT_EQ(form.password, "");
}

TEST_F(ClerksTest, AWrongPasswordStartsTheFormAgainSilently) {
  LogonForm form = Openlogon();
  Steplogon(form, +1);
  Steplogon(form, +1);
  form.password = "1234";
  EXPECT_FALSE(Acceptlogon(form));
  EXPECT_EQ(form.clerk, 1);
  EXPECT_EQ(form.password, "");
  EXPECT_TRUE(platform_.shown().empty());
  EXPECT_FALSE(FileExists(kActivityLog));
  EXPECT_TRUE(view_.titles.empty());
  // A ninth digit never matches a password of eight at most.
  SetField(S().clerk_password[1], "12345678");
  form.password = "123456789";
  EXPECT_FALSE(Acceptlogon(form));
}

TEST_F(ClerksTest, LogOnSetsTheClerkTheRightsTheLogAndTheTitle) {
  LogonForm form = Openlogon();
  form.clerk = 3;
  form.password = "7351";
  ASSERT_TRUE(Acceptlogon(form));
  EXPECT_EQ(S().clerk_number, 3);
  EXPECT_EQ(G().screen.restricted_clerk, 2);
  EXPECT_EQ(view_.menu_rebuilds, 1);
  EXPECT_EQ(Bytes(kActivityLog), "\r\n09:30 01/03/2024  Log on.\r\nClerk: 3, Clerk 3\r\n");
  EXPECT_EQ(view_.titles, std::vector<std::string>{"TILO Retail    Assoc: 3, Clerk 3"});

  // The privileged two are never restricted, whatever the ticks.
  Logonclerk(2);
  EXPECT_EQ(G().screen.restricted_clerk, 0);
  EXPECT_EQ(view_.titles.back(), "TILO Retail    Assoc: 2, Manager");
  Logonclerk(1);
  EXPECT_EQ(G().screen.restricted_clerk, 0);
}

TEST_F(ClerksTest, AnEmptyPasswordLogsOnAClerkWhoseIsEmptyAndAMissingLogIsOnlyTold) {
  SetField(S().clerk_password[5], "");
  SetField(S().clerk_name[4], "J\xD6RG");  // Windows-1252 in the record
  ASSERT_TRUE(MakeFolder(kActivityLog));   // the log can't be opened
  LogonForm form = Openlogon();
  form.clerk = 5;
  ASSERT_TRUE(Acceptlogon(form));
  EXPECT_EQ(platform_.shown(), std::vector<std::string>{"Problem: Unable to open bun4.dat"});
  EXPECT_EQ(S().clerk_number, 5);
  EXPECT_EQ(view_.titles.back(), "TILO Retail    Assoc: 5, J\u00d6RG");
}

TEST_F(ClerksTest, ClerkFormStoresNameAvailabilityAndPasswordByItsRules) {
  ClerkForm form = Openclerkform(7);
  EXPECT_EQ(form.name, "Clerk 7");
  EXPECT_TRUE(form.available);

  // Taken off the list: the password is not even read.
  form.name = "SAM";
  form.available = false;
  form.password = "123456789";
  EXPECT_TRUE(Acceptclerkform(form));
  EXPECT_EQ(ClerkName(S(), 7), "SAM");
  EXPECT_EQ(S().clerk_available[7], 2);
  EXPECT_EQ(ClerkPassword(S(), 7), "7351");

  // Back on, with a password too long: the name is kept, the form stays.
  form = Openclerkform(7);
  EXPECT_FALSE(form.available);
  form.available = true;
  form.name = "SAMUEL";
  form.password = form.password_again = "123456789";
  EXPECT_FALSE(Acceptclerkform(form));
  EXPECT_EQ(ClerkName(S(), 7), "SAMUEL");
  EXPECT_EQ(S().clerk_available[7], 2);

  form.password = "2468";
  form.password_again = "2469";
  EXPECT_FALSE(Acceptclerkform(form));
  form.password_again = "2468";
  EXPECT_TRUE(Acceptclerkform(form));
  EXPECT_EQ(ClerkPassword(S(), 7), "2468");
  EXPECT_EQ(S().clerk_available[7], 0);
  EXPECT_EQ(platform_.shown(), (std::vector<std::string>{"Problem: Password too long",
                                                         "Problem: Passwords do not match"}));

  // The record holds 29 characters of a name.
  form.name = std::string(30, 'N');
  EXPECT_FALSE(Acceptclerkform(form));
  EXPECT_EQ(platform_.shown().back(), "Problem: Name too long");
  EXPECT_EQ(ClerkName(S(), 7), "SAMUEL");

  // The Administrator and the Manager can't be taken off the list.
  EXPECT_FALSE(Mayhideclerk(1));
  EXPECT_FALSE(Mayhideclerk(2));
  ClerkForm admin = Openclerkform(1);
  admin.available = false;
  admin.password = admin.password_again = "1111";
  EXPECT_TRUE(Acceptclerkform(admin));
  EXPECT_EQ(S().clerk_available[1], 0);
  EXPECT_EQ(ClerkPassword(S(), 1), "1111");
  // Names count from slot 0 and passwords from slot 1.
  EXPECT_EQ(FieldText(S().clerk_name[0]), "Administrator");
  EXPECT_EQ(FieldText(S().clerk_password[1]), "1111");
  EXPECT_EQ(FieldText(S().clerk_password[0]), "7351");
}

TEST_F(ClerksTest, OperatorSetupIsForTheAdministratorAndTheManagerOnly) {
  std::vector<int> opened;
  auto form = [&opened](int clerk) {
    opened.push_back(clerk);
    return clerk != 9;
  };
  Logonclerk(4);
  platform_.clear_record();
  Operatorsetup(form);
  EXPECT_EQ(platform_.shown(),
            std::vector<std::string>{"Restricted access: Administrator or manager"});
  EXPECT_TRUE(platform_.prompts_shown.empty());

  Logonclerk(2);
  platform_.clear_record();
  platform_.queue_prompt("100");
  platform_.queue_prompt("12");
  platform_.queue_prompt("9");  // the form is cancelled
  platform_.queue_prompt(std::nullopt);
  for (int i = 0; i < 4; ++i) Operatorsetup(form);
  EXPECT_EQ(platform_.prompts_shown.back(),
            "Operator setup: Please enter the clerk number (1-99):");
  EXPECT_EQ(opened, (std::vector<int>{12, 9}));
  EXPECT_EQ(platform_.shown(),
            (std::vector<std::string>{"Problem: Outside range", "Clerk: Amended"}));
}

TEST_F(ClerksTest, RightsFormReadsAndStoresEachFlagByItsCoding) {
  // A fresh record keeps every "free" right back and inhibits nothing.
  RightsForm form = Openrightsform();
  for (int r = 0; r < kRights; ++r) EXPECT_EQ(form[r], r < kRightDiscountButton) << Rightlabel(r);

  Tickallrights(form, false);
  EXPECT_TRUE(form[kRightNewInventory]);
  EXPECT_TRUE(form[kRightInventoryReceived]);
  EXPECT_FALSE(form[kRightTaxSetup]);
  Acceptrightsform(form);
  EXPECT_NE(S().free_configuration, 0);
  for (int64_t f : S().free_item) EXPECT_NE(f, 0);
  EXPECT_NE(S().free_tax_setup, 0);
  EXPECT_EQ(S().free_new_inventory, 0);

  Tickallrights(form, true);
  form[kRightNewInventory] = false;
  Acceptrightsform(form);
  EXPECT_EQ(S().free_configuration, 0);
  EXPECT_EQ(S().free_item[10], 0);
  EXPECT_NE(S().free_new_inventory, 0);
  EXPECT_EQ(S().inhibit_discount_button, 2);
  EXPECT_EQ(S().inhibit_cashback, 2);
  EXPECT_EQ(S().restrict_report_menu, 2);
  EXPECT_EQ(S().hide_cost, 2);
  EXPECT_EQ(Openrightsform(), form);
}

TEST_F(ClerksTest, EachTickKeepsItsCommandFromRestrictedClerksOnly) {
  struct Case {
    int right;
    Command command;
    bool on_menu;  // greyed in the menu as well as refused
    bool refused;  // refused by the dispatcher's gate
  };
  const Case cases[] = {
      {kRightConfiguration, Command::Configuration, true, true},
      {kRightDeleteInventory, Command::DeleteInventory, true, true},
      {kRightDeleteCustomer, Command::DeleteCustomer, true, true},
      {kRightPruneCustomers, Command::PruneCustomers, true, true},
      {kRightCustomerBalance, Command::AmendBalance, true, false},
      {kRightStatusDisplay, Command::ActivitySummary, true, true},
      {kRightTakings, Command::TakingsDisplay, true, true},
      {kRightPrintTakings, Command::PrintTakings, true, true},
      {kRightPurgeTakings, Command::PurgeTakings, true, true},
      {kRightPurgeLogFiles, Command::PurgeLogFiles, true, true},
      {kRightTakingsAmendment, Command::TakingsAmendment, true, true},
      {kRightFileReset, Command::FileReset, true, false},
      {kRightFileReset, Command::Restore, false, true},
      {kRightNewInventory, Command::NewLine, true, true},
      {kRightInventoryReceived, Command::InventoryReceived, true, true},
      {kRightAmendInventory, Command::AmendInventory, true, true},
      {kRightTaxSetup, Command::TaxSetup, true, false},
      {kRightDiscountButton, Command::AddDiscount, false, true},
      {kRightAdjustButton, Command::AdjustPrice, false, true},
      {kRightTradeButton, Command::TradeToggle, false, true},
      {kRightWeightButton, Command::AdjustByWeight, false, true},
      {kRightNonInventory, Command::NonInventory, false, true},
      {kRightRefunds, Command::Refund, false, true},
      {kRightTillOpen, Command::OpenDrawer, false, true},
  };
  for (const Case& c : cases) {
    RightsForm form{};
    form[c.right] = true;
    Acceptrightsform(form);
    Logonclerk(3);
    EXPECT_EQ(Gate(c.command), !c.refused) << Rightlabel(c.right);
    if (c.on_menu) {
      EXPECT_FALSE(MenuEntryEnabled(c.command)) << Rightlabel(c.right);
    }
    // Untick it again: the clerk gets it back.
    form[c.right] = false;
    Acceptrightsform(form);
    EXPECT_TRUE(Gate(c.command)) << Rightlabel(c.right);
    EXPECT_TRUE(MenuEntryEnabled(c.command)) << Rightlabel(c.right);
    // Ticked again, the privileged clerks still see it.
    form[c.right] = true;
    Acceptrightsform(form);
    Logonclerk(2);
    EXPECT_TRUE(Gate(c.command)) << Rightlabel(c.right);
    EXPECT_TRUE(MenuEntryEnabled(c.command)) << Rightlabel(c.right);
  }

  RightsForm form{};
  form[kRightReportMenu] = form[kRightActivityMenu] = true;
  Acceptrightsform(form);
  Logonclerk(3);
  EXPECT_FALSE(MenuEnabled("&Reports"));
  EXPECT_FALSE(MenuEnabled("Activity"));
  // Amending a customer is never for a restricted clerk.
  EXPECT_FALSE(Gate(Command::AmendCustomer));
  Logonclerk(1);
  EXPECT_TRUE(MenuEnabled("&Reports"));
  EXPECT_TRUE(Gate(Command::AmendCustomer));
}

TEST_F(ClerksTest, UserControlOpensTheRightsFormForThePrivilegedOnly) {
  int opened = 0;
  for (int clerk : {3, 1, 99, 2}) {
    Logonclerk(clerk);
    Usercontrol([&opened] { ++opened; });
  }
  EXPECT_EQ(opened, 2);
}

}  // namespace
}  // namespace tilo
