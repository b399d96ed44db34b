// SPDX-License-Identifier: MIT
// The item and customer finds with scripted forms: what each command asks, what
// it shows and in which order, and what it hands back.
#include <gtest/gtest.h>

#include <deque>
#include <functional>

#include "core/customer_file.h"
#include "core/record_match.h"
#include "customers/customer_find.h"
#include "inventory/find_view.h"
#include "inventory/item_find.h"
#include "inventory/items.h"
#include "sale/commands.h"
#include "sale/sale_fixture.h"

namespace tilo {
namespace {

// Records every form opened ("805 12", "view 801 12"...) and answers from queues.
struct ScriptedFindView : FindView {
  std::vector<std::string> opened;
  std::deque<FindChoice> choices;
  std::optional<AdvancedQuery> advanced;
  std::optional<PicboxQuery> picbox_query;
  int row = -1;
  std::vector<std::string> rows;

  FindChoice Choose() {
    FindChoice c = choices.empty() ? FindChoice::Cancel : choices.front();
    if (!choices.empty()) choices.pop_front();
    return c;
  }
  FindChoice find_inventory(const FilmRecord& r) override {
    opened.push_back("805 " + std::to_string(r.number));
    return Choose();
  }
  FindChoice find_customer(const MemberRecord& m) override {
    opened.push_back("804 " + std::to_string(m.number));
    return Choose();
  }
  std::optional<AdvancedQuery> advanced_search() override { return advanced; }
  std::optional<PicboxQuery> picbox(bool within) override {
    opened.push_back(within ? "PICBOX within" : "PICBOX initial");
    return picbox_query;
  }
  int pick_row(const std::vector<std::string>& r) override {
    rows = r;
    return row;
  }
  void view_item() override { opened.push_back("view 801 " + std::to_string(G().film.number)); }
  void view_customer() override {
    opened.push_back("view 803 " + std::to_string(G().member.number));
  }
};

class FindTest : public SaleTest {
 protected:
  void SetUp() override {
    SaleTest::SetUp();
    ASSERT_TRUE(G().members.Load());
    install_find_view(&view_);
    InstallFindHandlers();
    // File order differs from number order: 30 takes the fresh shop's empty slot 0.
    Stock(30, 2.50f, 0, 4, "WIDGET");
    Stock(10, 1.00f, 0, 7, "WINDOW");
    Stock(20, 3.00f, 0, 5, "BOLT WIDE");
    FilmRecord r = Item(20);
    SetField(r.sku1, "X-77");
    SetField(r.sku3, "RED");
    Store(r);
    Customer(5, "SMITH", "1 HIGH ST", "0123 456", "0123 777");
    Customer(2, "SMALL", "2 LOW RD", "", "0777 123");
    Customer(9, "JONES", "3 MID WAY", "0999", "0123 999");
    Shown();
  }
  void TearDown() override {
    install_find_view(nullptr);
    ClearHandlers();
    SetCustomerFind(nullptr);
    SetItemDescriptionFind(nullptr);
    SetItemView(nullptr);
    SaleTest::TearDown();
  }
  void Customer(int64_t number, const char* name, const char* road, const char* tel,
                const char* tel2) {
    MemberRecord m{};
    m.number = number;
    SetField(m.name, name);
    SetField(m.road, road);
    SetField(m.telephone, tel);
    SetField(m.telephone2, tel2);
    EXPECT_TRUE(Insertmember(m));
  }

  ScriptedFindView view_;
};

TEST(RecordMatchTest, PatternsAreAnchoredWithOneCharacterWildcards) {
  struct Case {
    const char* pattern;
    const char* text;
    bool keys, whole;
  };
  const Case cases[] = {
      {"AB?D", "ABCDE", true, true},   // a pattern is a prefix
      {"S?", "SMITH", true, true},     // one letter is padded
      {"??", "X", true, true},         // any non-empty text
      {"?A", "BAT", true, true},       // the second key only
      {"?A", "BOAT", false, true},     // ruled out on the keys, unread
      {"ABC", "AB", true, false},      // longer than the text: fails on the NUL
      {"AB?", "AB", true, true},       // ... unless `?` stands there
      {"ABCZ", "AB\0Z", true, false},  // bytes behind the terminator don't count
      {"ab", "AB", false, true},       // byte compares: case counts
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.pattern) + " / " + c.text);
    char field[40] = {};
    std::memcpy(field, c.text, std::strlen(c.text));
    EXPECT_EQ(KeysAgree(c.pattern, NameKey{field[0], field[1]}), c.keys);
    EXPECT_EQ(PatternAgrees(c.pattern, field, sizeof field), c.whole);
  }
  EXPECT_FALSE(KeysAgree("??", NameKey{0, 0}));  // a deleted record
}

TEST_F(FindTest, ItemFindsAskShowAndReturnAsEachCommandSays) {
  struct Case {
    const char* name;
    std::function<void(ScriptedPlatform&, ScriptedFindView&)> script;
    std::function<void()> run;
    std::vector<std::string> opened;
    std::vector<std::string> shown;
    std::vector<std::string> prompts;
    int64_t film = 0;  // the item left in the buffer, 0 when not checked
  };
  auto command = [](Command c) { return [c] { Dispatch(c); }; };
  const Case cases[] = {
      {"a number is looked up and shown",
       [](ScriptedPlatform& p, ScriptedFindView&) { p.queue_prompt("10"); },
       command(Command::FindInventory),
       {"view 801 10"},
       {},
       {"Find: Find item number / description / fragment"},
       10},
      {"a number not there says nothing",
       [](ScriptedPlatform& p, ScriptedFindView&) { p.queue_prompt("11"); },
       command(Command::FindInventory),
       {},
       {},
       {"Find: Find item number / description / fragment"}},
      {"digits above the highest number are a description",
       [](ScriptedPlatform& p, ScriptedFindView&) { p.queue_prompt("100000000000000001"); },
       command(Command::FindInventory),
       {},
       {"Finished: No match found"},
       {"Find: Find item number / description / fragment"}},
      {"a description start walks in file order; Next, then the end",
       [](ScriptedPlatform& p, ScriptedFindView& v) {
         p.queue_prompt("wi");
         v.choices = {FindChoice::Next, FindChoice::Next};
       },
       command(Command::FindByDescription),
       {"805 30", "805 10"},
       {"Finished: No match found"},
       {"Find by description: Find inventory by description"}},
      {"OK on a match returns it",
       [](ScriptedPlatform& p, ScriptedFindView& v) {
         p.queue_prompt("W?N");
         v.choices = {FindChoice::Ok};
       },
       command(Command::FindByDescription),
       {"805 10"},
       {},
       {"Find by description: Find inventory by description"},
       10},
      {"the list holds the matches in number order",
       [](ScriptedPlatform& p, ScriptedFindView& v) {
         G().settings.inventory_search_list = 1;
         p.queue_prompt("W");
         v.row = 1;
       },
       command(Command::FindInventory),
       {"view 801 30"},
       {},
       {"Find: Find item number / description / fragment"},
       30},
      {"fragment from the menu: No goes on, Yes shows the record",
       [](ScriptedPlatform& p, ScriptedFindView&) {
         p.queue_prompt("wid");
         p.queue_answer(Answer::No);
         p.queue_answer(Answer::Yes);
       },
       command(Command::FindInventoryContaining),
       {"view 801 20"},
       {"Search: No to continue: 30, WIDGET", "Search: No to continue: 20, BOLT WIDE"},
       {"Find that contain: Fragment:"},
       20},
      {"Find in SKUs looks in SKU 1 only",
       [](ScriptedPlatform& p, ScriptedFindView&) { p.queue_prompt("red"); },
       command(Command::FindInSkus),
       {},
       {"Finished: No match found"},
       {"Find in SKUs: Find in SKU 1:"}},
      {"advanced, any: an SKU box finds the item through any SKU; Cancel returns it unshown",
       [](ScriptedPlatform& p, ScriptedFindView& v) {
         v.advanced = AdvancedQuery{"", {"", "RED", "", ""}, false};
         p.queue_answer(Answer::Cancel);
       },
       command(Command::FindAdvanced),
       {},
       {"Search: No to continue: 20, BOLT WIDE"},
       {},
       20},
      {"advanced, all: empty boxes pass, so every item qualifies",
       [](ScriptedPlatform& p, ScriptedFindView& v) {
         v.advanced = AdvancedQuery{};
         v.advanced->all = true;
         for (int i = 0; i < 3; ++i) p.queue_answer(Answer::No);
       },
       command(Command::FindAdvanced),
       {},
       {"Search: No to continue: 30, WIDGET", "Search: No to continue: 10, WINDOW",
        "Search: No to continue: 20, BOLT WIDE", "Finished: No match found"},
       {}},
      {"advanced, any: empty boxes match nothing",
       [](ScriptedPlatform&, ScriptedFindView& v) { v.advanced = AdvancedQuery{}; },
       command(Command::FindAdvanced),
       {},
       {"Finished: No match found"},
       {}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    G().settings.inventory_search_list = 0;
    view_.opened.clear();
    platform_.prompts_shown.clear();
    c.script(platform_, view_);
    c.run();
    EXPECT_EQ(view_.opened, c.opened);
    EXPECT_EQ(Shown(), c.shown);
    EXPECT_EQ(platform_.prompts_shown, c.prompts);
    if (c.film) {
      EXPECT_EQ(G().film.number, c.film);
    }
  }
  // The list's rows.
  G().settings.inventory_search_list = 1;
  Finditemdescription("W", false);
  EXPECT_EQ(view_.rows, (std::vector<std::string>{"10, WINDOW (7) 1.00", "30, WIDGET (4) 2.50"}));
}

TEST_F(FindTest, TheItemBoxFindPutsWhatItFindsInTheBasket) {
  // Initial characters, the search type kept as the default.
  view_.picbox_query = PicboxQuery{"BO", false, true};
  view_.choices = {FindChoice::Ok};
  G().settings.description_search_within = 2;
  Dispatch(Command::ItemFind);
  EXPECT_EQ(G().settings.description_search_within, 0);
  // Within the description: Cancel from the sale screen takes nothing.
  view_.picbox_query = PicboxQuery{"DOW", true, false};
  platform_.queue_answer(Answer::Cancel);
  Dispatch(Command::ItemFind);
  platform_.queue_answer(Answer::Yes);
  Dispatch(Command::ItemFind);
  // Under SKU entry, the SKU 1 find.
  G().settings.entry_mode = 2;
  platform_.queue_prompt("x-7");
  Dispatch(Command::ItemFind);
  EXPECT_EQ(view_.opened, (std::vector<std::string>{"PICBOX within", "805 20", "PICBOX initial",
                                                    "PICBOX initial"}));
  ASSERT_EQ(B().line_count, 3);
  EXPECT_EQ(B().number[0], 20);
  EXPECT_EQ(B().number[1], 10);
  EXPECT_EQ(B().number[2], 20);
  EXPECT_EQ(platform_.prompts_shown, (std::vector<std::string>{"Find in SKUs: Find in SKU 1:"}));
}

TEST_F(FindTest, CustomerFindsAskShowAndReturnAsEachCommandSays) {
  struct Case {
    const char* name;
    std::function<void(ScriptedPlatform&, ScriptedFindView&)> script;
    std::function<int64_t()> run;
    int64_t result;
    std::vector<std::string> opened;
    std::vector<std::string> shown;
  };
  const Case cases[] = {
      {"a number",
       [](ScriptedPlatform&, ScriptedFindView&) {},
       [] { return Findcustomer("9", true); },
       9,
       {"view 803 9"},
       {}},
      {"one letter is the pattern S?; Next goes on, Cancel gives up",
       [](ScriptedPlatform&, ScriptedFindView& v) {
         v.choices = {FindChoice::Next, FindChoice::Cancel};
       },
       [] { return Findcustomer("s", true); },
       0,
       {"804 5", "804 2"},
       {}},
      {"an empty text asks for the name; ?M matches on the second letter",
       [](ScriptedPlatform& p, ScriptedFindView& v) {
         p.queue_prompt("?m");
         v.choices = {FindChoice::Next, FindChoice::Ok};
       },
       [] { return Findcustomer("", true); },
       2,
       {"804 5", "804 2"},
       {}},
      {"the list: number, name and road in number order; the row's number is looked up",
       [](ScriptedPlatform&, ScriptedFindView& v) {
         G().settings.customer_search_list = 1;
         v.row = 0;
       },
       [] { return Findcustomer("SM", true); },
       2,
       {},
       {}},
      {"fragment: Yes shows the customer",
       [](ScriptedPlatform& p, ScriptedFindView&) {
         p.queue_answer(Answer::No);
         p.queue_answer(Answer::Yes);
       },
       [] { return Findcustomerfragment("m"); },
       2,
       {"view 803 2"},
       {"Search: No to continue: 5, SMITH", "Search: No to continue: 2, SMALL"}},
      {"telephone: the number that matched, the first when both do",
       [](ScriptedPlatform& p, ScriptedFindView&) {
         p.queue_answer(Answer::No);
         p.queue_answer(Answer::No);
       },
       [] { return Findtelephone("0123"); },
       0,
       {},
       {"Search: Yes to halt, No to continue: 5, SMITH: 0123 456",
        "Search: Yes to halt, No to continue: 9, JONES: 0123 999", "Finished: No match found"}},
      {"telephone: Yes halts with the customer",
       [](ScriptedPlatform&, ScriptedFindView&) {},
       [] { return Findtelephone("0777"); },
       2,
       {},
       {"Search: Yes to halt, No to continue: 2, SMALL: 0777 123"}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    G().settings.customer_search_list = 0;
    view_.opened.clear();
    c.script(platform_, view_);
    EXPECT_EQ(c.run(), c.result);
    EXPECT_EQ(view_.opened, c.opened);
    EXPECT_EQ(Shown(), c.shown);
    if (c.result) {
      EXPECT_EQ(G().member.number, c.result);
    }
  }
  EXPECT_EQ(view_.rows, (std::vector<std::string>{"2 SMALL,  2 LOW RD", "5 SMITH,  1 HIGH ST"}));

  // Associate customer takes any number above 0 as a number, other text as a name.
  InstallScreenHandlers();
  platform_.queue_prompt("jo");
  view_.choices = {FindChoice::Ok};
  Dispatch(Command::AssociateCustomer);
  EXPECT_EQ(B().customer_number, 9);
  EXPECT_EQ(Shown(), (std::vector<std::string>{"Customer associated: JONES"}));
}

// The name walk and the form's Next word a failed read differently.
TEST_F(FindTest, AFailedReadSaysWhereItHappened) {
  // member.dat cut behind its first record, SMITH (slots: 5, 2, 9).
  WriteBytes("member.dat", Bytes("member.dat").substr(0, sizeof(MemberRecord)));
  view_.choices = {FindChoice::Next};
  EXPECT_EQ(Findcustomer("S", false), 0);
  EXPECT_EQ(Findcustomer("J", false), 0);
  EXPECT_EQ(Shown(), (std::vector<std::string>{"Problem: Member.dat", "Problem: member.dat"}));
}

}  // namespace
}  // namespace tilo
