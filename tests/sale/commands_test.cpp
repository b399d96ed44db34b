// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "core/customer_file.h"
#include "screen_fixture.h"

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

TEST_F(CommandsTest, ARestrictedClerkIsStoppedSilentlyUnlessAFlagFreesTheCommand) {
  std::vector<Command> ran;
  for (Command c : {Command::Configuration, Command::OpenDrawer, Command::AmendCustomer,
                    Command::Restore, Command::NewBundle, Command::TaxSetup, Command::Cash})
    SetHandler(c, [&ran, c](int) { ran.push_back(c); });
  auto run_all = [&] {
    ran.clear();
    for (Command c : {Command::Configuration, Command::OpenDrawer, Command::AmendCustomer,
                      Command::Restore, Command::NewBundle, Command::TaxSetup, Command::Cash})
      Dispatch(c);
    return ran;
  };
  G().screen.restricted_clerk = 2;
  S().inhibit_till_open = 2;
  // Tax setup is guarded by the menu alone; Cash by nothing.
  EXPECT_EQ(run_all(), (std::vector<Command>{Command::TaxSetup, Command::Cash}));
  S().free_configuration = 2;
  S().free_item[10] = 2;
  S().free_new_inventory = 2;
  S().inhibit_till_open = 0;
  EXPECT_EQ(run_all(),
            (std::vector<Command>{Command::Configuration, Command::OpenDrawer, Command::Restore,
                                  Command::NewBundle, Command::TaxSetup, Command::Cash}));
  G().screen.restricted_clerk = 0;  // clerks 1 and 2: every command, whatever the flags
  S() = SettingsRecord{};
  S().inhibit_till_open = 2;
  EXPECT_EQ(run_all().size(), 7u);
  EXPECT_TRUE(platform_.messages.empty());
}

TEST_F(CommandsTest, TheMenuGreysForARestrictedClerkAndTicksFollowTheSettings) {
  EXPECT_TRUE(MenuEntryEnabled(Command::TaxSetup));
  G().screen.restricted_clerk = 2;
  EXPECT_FALSE(MenuEntryEnabled(Command::TaxSetup));
  EXPECT_FALSE(MenuEntryEnabled(Command::SoundEffects));  // no flag frees it
  EXPECT_FALSE(MenuEntryEnabled(Command::ActivitySummary));
  EXPECT_TRUE(MenuEntryEnabled(Command::Cash));
  S().free_tax_setup = 2;
  S().free_item[4] = 2;
  EXPECT_TRUE(MenuEntryEnabled(Command::TaxSetup));
  EXPECT_TRUE(MenuEntryEnabled(Command::PrintActivitySummary));
  EXPECT_TRUE(MenuEnabled("&Reports"));
  S().restrict_report_menu = 2;
  S().restrict_activity_menu = 2;
  EXPECT_FALSE(MenuEnabled("&Reports"));
  EXPECT_FALSE(MenuEnabled("Activity"));
  EXPECT_TRUE(MenuEnabled("Payments"));
  G().screen.restricted_clerk = 0;
  EXPECT_TRUE(MenuEnabled("&Reports"));

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
