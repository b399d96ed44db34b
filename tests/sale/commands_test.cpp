// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "core/customer_file.h"
#include "screen_fixture.h"
#include "tender/clerks.h"

namespace tilo {
namespace {

using CommandsTest = ScreenTest;

TEST_F(CommandsTest, TheTablesAgree) {
  std::set<int> ids;
  for (const CommandEntry& e : CommandTable()) {
    EXPECT_TRUE(ids.insert(int(e.command)).second) << e.entry << " has a number in use";
    if (e.menu[0] != '\0') {
      EXPECT_NE(std::find(MenuNames().begin(), MenuNames().end(), e.menu), MenuNames().end());
    }
  }
  // What a menu shows as its key is what the key does in the item box.
  for (const CommandEntry& e : CommandTable()) {
    std::string key = e.shortcut;
    if (key.empty() || key == "Alt+X") continue;
    if (key[0] == '^') key = "Ctrl+" + key.substr(1);
    EXPECT_EQ(KeyCommand(key), e.command) << e.entry << " " << e.shortcut;
  }
  for (const KeyBinding& k : KeyTable()) EXPECT_NE(FindCommand(k.command), nullptr) << k.key;
  for (const ToolButton& b : ToolBar()) {
    if (b.command != Command::None) {
      EXPECT_NE(FindCommand(b.command), nullptr) << b.tip;
    }
  }
  EXPECT_EQ(KeyCommand("F10"), Command::None);
  EXPECT_EQ(MenuNames()[8], "&Reports");
  EXPECT_EQ(MenuNames()[10], "Activity");
}

TEST_F(CommandsTest, WhileATenderFormIsUpOnlyTheExitsAndCardSetupGetThrough) {
  std::vector<Command> ran;
  for (const CommandEntry& e : CommandTable())
    SetHandler(e.command, [&ran, c = e.command](int) { ran.push_back(c); });
  G().tender_form_open = 2;
  for (const CommandEntry& e : CommandTable()) Dispatch(e.command);
  EXPECT_EQ(ran, (std::vector<Command>{Command::ExitPrintReport, Command::ExitPrintLog,
                                       Command::ExitPrintReportLog, Command::Exit,
                                       Command::CardSetup, Command::EftManual}));
  const size_t refused = CommandTable().size() - ran.size();
  EXPECT_EQ(size_t(std::count(view_.calls.begin(), view_.calls.end(), "focus tender")), refused);

  // With the form gone they all run, and the focus goes back to the item box.
  G().tender_form_open = 0;
  ran.clear();
  view_.calls.clear();
  Dispatch(Command::FindInventory);
  EXPECT_EQ(ran, std::vector<Command>{Command::FindInventory});
  EXPECT_EQ(view_.calls, std::vector<std::string>{"focus item box"});
}

TEST_F(CommandsTest, MarkedCommandsEmptyTheBasketWithoutAWord) {
  Stock(7, 2.5f);
  Addtobasket(7, kEntryNormal);
  ASSERT_EQ(B().line_count, 1);
  Shown();
  platform_.sounds.clear();
  Dispatch(Command::Cash);  // not marked
  EXPECT_EQ(B().line_count, 1);
  Dispatch(Command::TaxSetup);
  EXPECT_EQ(B().line_count, 0);
  EXPECT_TRUE(G().basket_list.rows.empty());
  EXPECT_TRUE(Shown().empty());
  Addtobasket(7, kEntryNormal);
  Dispatch(Command::EmptyBasket);
  EXPECT_EQ(B().line_count, 0);
}

// Each right, kept back alone, greys its menu entry or refuses its command for a
// restricted clerk (3) and never for clerk 2; refused commands say nothing.
TEST_F(CommandsTest, EachRightGreysItsEntryOrRefusesItsCommandForRestrictedClerksOnly) {
  struct Case {
    int right;
    Command command;
    bool greyed, refused;
  };
  const Case cases[] = {
      {kRightConfiguration, Command::Configuration, true, true},
      {kRightDeleteInventory, Command::DeleteInventory, true, true},
      {kRightDeleteCustomer, Command::DeleteCustomer, true, true},
      {kRightPruneCustomers, Command::PruneCustomers, true, true},
      {kRightCustomerBalance, Command::AmendBalance, true, false},
      {kRightStatusDisplay, Command::ActivitySummary, true, true},
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
    RightsForm form{};  // nothing kept back but this one right
    form[c.right] = true;
    Acceptrightsform(form);
    int ran = 0;
    SetHandler(c.command, [&ran](int) { ++ran; });
    for (int clerk : {3, 2}) {
      Logonclerk(clerk);
      EXPECT_EQ(MenuEntryEnabled(c.command), !(c.greyed && clerk == 3)) << Rightlabel(c.right);
      Dispatch(c.command);
    }
    EXPECT_EQ(ran, c.refused ? 1 : 2) << Rightlabel(c.right);
    SetHandler(c.command, {});
  }
  EXPECT_TRUE(Shown().empty());
}

TEST_F(CommandsTest, TheMenusFollowTheirFlagsAndTicksFollowTheSettings) {
  G().screen.restricted_clerk = 2;
  EXPECT_FALSE(MenuEntryEnabled(Command::SoundEffects));  // no flag frees it
  S().free_item[4] = 2;
  EXPECT_TRUE(MenuEntryEnabled(Command::PrintActivitySummary));
  S().restrict_activity_menu = 2;
  EXPECT_FALSE(MenuEnabled("Activity"));
  EXPECT_TRUE(MenuEnabled("Payments"));
  G().screen.restricted_clerk = 0;
  EXPECT_TRUE(MenuEnabled("Activity"));

  EXPECT_TRUE(MenuEntryTicked(Command::SoundEffects));
  EXPECT_TRUE(MenuEntryTicked(Command::ButtonTips));
  Dispatch(Command::SoundEffects);
  Dispatch(Command::ButtonTips);
  Dispatch(Command::HiResPicture);
  EXPECT_EQ(S().sound_off, 2);
  EXPECT_EQ(S().button_tips, 2);
  EXPECT_EQ(S().hires_picture, 2);
  EXPECT_FALSE(MenuEntryTicked(Command::SoundEffects));
  EXPECT_TRUE(MenuEntryTicked(Command::HiResPicture));
  Dispatch(Command::SoundEffects);
  EXPECT_EQ(S().sound_off, 0);
}

TEST_F(CommandsTest, AssociateCustomerCopiesTheCustomerIntoTheBasket) {
  ASSERT_TRUE(LoadCustomerIndex());
  MemberRecord m{};
  m.number = 42;
  SetField(m.name, "ADA LOVELACE");
  SetField(m.road, "1 ANALYTICAL ROW");
  SetField(m.town, "LONDON");
  SetField(m.postcode, "N1 1AA");
  SetField(m.telephone, "0207 946 0000");
  CompleteNewMember(m);
  ASSERT_TRUE(Insertmember(m));
  platform_.queue_prompt("99");  // nobody: nothing happens
  Dispatch(Command::AssociateCustomer);
  EXPECT_EQ(B().customer_number, 0);
  platform_.queue_prompt("42");
  Dispatch(Command::AssociateCustomer);
  EXPECT_EQ(B().customer_number, 42);
  EXPECT_STREQ(B().customer_name, "ADA LOVELACE");
  EXPECT_STREQ(B().customer_road, "1 ANALYTICAL ROW");
  EXPECT_STREQ(B().customer_postcode, "N1 1AA");
  EXPECT_STREQ(B().customer_telephone, "0207 946 0000");
  EXPECT_EQ(Shown(), std::vector<std::string>{"Customer associated: ADA LOVELACE"});
  EXPECT_EQ(platform_.prompts_shown.back(), "Customer: Number / name");
}

TEST_F(CommandsTest, TheKeypadPutsTheCaretAtTwentyAndTheAmountHoldsNineteen) {
  EXPECT_EQ(KeypadItemBox("1", std::string(25, '9')).caret, 20);
  EXPECT_EQ(KeypadAmount("5", std::string(18, '1')).text.size(), 19u);
  EXPECT_EQ(KeypadAmount("5", std::string(19, '1')).text, std::string(19, '1'));
  EXPECT_EQ(KeypadAmount("CE", "2000").text, "200");
}

}  // namespace
}  // namespace tilo
