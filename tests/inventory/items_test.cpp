// SPDX-License-Identifier: MIT
// Adding, amending, deleting items and bundles through scripted forms: what
// reaches film.dat, its index, its NameKeys and the activity log.
#include <filesystem>

#include "core/activity_log.h"
#include "inventory/inventory_fixture.h"
#include "platform/sounds.h"
#include "sale/screen.h"

namespace tilo {
namespace {

TEST_F(InventoryTest, NextFreeNumberSkipsTheRunAfterTheBase) {
  struct Case {
    std::vector<int64_t> taken;
    int64_t last_number;
    bool blank_form;
    int64_t offered;
    int64_t last_number_after;
  };
  const Case cases[] = {
      {{7, 8, 9}, 6, true, 10, 6},  // 7 is taken, so is the run 8, 9
      {{7, 9}, 6, true, 8, 6},      // the first gap in the run
      {{7, 8, 9}, 2, true, 3, 2},   // a free base is offered as it is
      {{1, 2}, -1, true, 3, 0},     // a blank form puts a base below 1 right
      {{1, 2}, -1, false, 0, -1},   // the copy path does not
      {{20, 21, 30}, 19, false, 22, 19},
  };
  for (const Case& c : cases) {
    WriteBytes("film.dat", "");
    ASSERT_TRUE(G().films.Load());
    for (int64_t n : c.taken) Stock(n, 1.0f);
    S().last_inventory_number = c.last_number;
    EXPECT_EQ(Nextfreenumber(c.blank_form), c.offered) << c.last_number;
    EXPECT_EQ(S().last_inventory_number, c.last_number_after);
  }
}

TEST_F(InventoryTest, AddChecksInOrderAndReopensWithTheEntries) {
  struct Case {
    int64_t number;
    const char* description;
    int32_t category, quantity;
    float retail, cost;
    const char* message;
  };
  const Case cases[] = {
      {0, "AB", 3, 0, 1, 1, "Number outside range."},
      {kHighestNumber + 1, "AB", 3, 0, 1, 1, "Number outside range."},
      {500, "A", 3, 0, 1, 1, "The description must have at least two characters."},
      {500, "AB", 19, 0, 1, 1, "Invalid category"},
      {500, "AB", 3, 0, 0.004f, 1, "Invalid retail price"},
      {500, "AB", 3, 0, 20000.01f, 1, "Invalid retail price, limit 20000.00"},
      {500, "AB", 3, -1, 1, 1, "Invalid quantity in stock"},
      {500, "AB", 3, 0, 1, 0, "Invalid cost price"},
      {500, "AB", 3, 0, 1, 20000.01f, "Invalid cost price, limit 20000.00"},
  };
  for (const Case& c : cases) {
    FilmRecord r{};
    r.number = c.number;
    SetField(r.description, c.description);
    r.display_category = c.category;
    r.quantity = c.quantity;
    r.retail_price = c.retail;
    r.cost_price = c.cost;
    Normaliseretail(r);
    ASSERT_NE(Checknewitem(r), nullptr) << c.message;
    EXPECT_STREQ(Checknewitem(r), c.message);
  }
  // 20000.004 is 20000.00 as money: within the limit.
  FilmRecord ok{};
  ok.number = 500;
  SetField(ok.description, "AB");
  ok.retail_price = 20000.004f;
  ok.cost_price = 20000.004f;
  EXPECT_EQ(Checknewitem(ok), nullptr);

  // A refusal reopens the form in amend layout with what was typed.
  view_.items = {Fill("WIDGET", 0.0f, 2.5f, ItemButton::Ok), [](ItemForm& form) {
                   form.record.cost_price = 1.25f;
                   return ItemButton::Ok;
                 }};
  Newline();
  ASSERT_EQ(view_.opened.size(), 2u);
  EXPECT_EQ(view_.opened[1].mode, ItemFormMode::Refused);
  EXPECT_EQ(ItemFormTitle(view_.opened[1].mode), "Amend inventory");
  EXPECT_EQ(FieldText(view_.opened[1].record.description), "WIDGET");
  EXPECT_EQ(platform_.sounds, (std::vector<int>{kSoundRefused, kSoundAdded}));
  EXPECT_EQ(Shown(), std::vector<std::string>{"Problem: Invalid cost price"});
  EXPECT_TRUE(G().films.Contains(view_.opened[0].record.number));
}

TEST_F(InventoryTest, AddWritesTheRecordIndexAndKeysThenCopiesAndGoesOn) {
  Stock(1, 1.0f);
  Stock(2, 1.0f);
  S().last_inventory_number = 0;
  view_.items = {[](ItemForm& form) {
                   SetField(form.record.description, "BLUE MUG");
                   form.record.cost_price = 1.0f;
                   form.record.retail_price = 2.999f;  // stored as 3.00
                   form.record.quantity = 6;
                   auto* bytes = reinterpret_cast<unsigned char*>(&form.record);
                   std::memset(bytes + 1777, 0x55, 9);  // junk that add clears
                   std::memset(bytes + 1834, 0x55, 40);
                   form.record.loan_number = 99;
                   return ItemButton::Copy;
                 },
                 [](ItemForm& form) {
                   SetField(form.record.description, "RED MUG");
                   return ItemButton::Next;
                 },
                 Fill("PLATE", 1, 2, ItemButton::Ok)};
  Newline();

  ASSERT_EQ(view_.opened.size(), 3u);
  EXPECT_EQ(view_.opened[0].record.number, 3);
  EXPECT_EQ(view_.opened[0].record.stock_picture, 1);
  EXPECT_EQ(view_.opened[0].record.display_category, 14);
  EXPECT_EQ(FieldText(view_.opened[0].record.date_added), "14/03/2026");
  // The copy: the saved fields under the next free number.
  EXPECT_EQ(view_.opened[1].mode, ItemFormMode::Copy);
  EXPECT_EQ(view_.opened[1].record.number, 4);
  EXPECT_EQ(view_.opened[1].record.quantity, 6);
  EXPECT_EQ(FieldText(view_.opened[1].record.description), "BLUE MUG");
  // Next: a blank form again.
  EXPECT_EQ(view_.opened[2].mode, ItemFormMode::New);
  EXPECT_EQ(view_.opened[2].record.number, 5);
  EXPECT_EQ(view_.opened[2].record.quantity, 0);

  const FilmRecord blue = AtPosition(2);
  EXPECT_EQ(blue.number, 3);
  EXPECT_EQ(blue.retail_price, 3.0f);
  EXPECT_EQ(blue.loan_number, 0);
  const auto* bytes = reinterpret_cast<const unsigned char*>(&blue);
  EXPECT_EQ(std::string(reinterpret_cast<const char*>(bytes) + 1777, 9), std::string(9, '\0'));
  EXPECT_EQ(bytes[1834], 0);
  EXPECT_EQ(bytes[1839], ' ');
  EXPECT_EQ(bytes[1840], 0);
  EXPECT_EQ(bytes[1835], 0x55);  // the rest of due_back is not add's
  EXPECT_EQ(std::string(reinterpret_cast<const char*>(bytes) + 1850, 24), std::string(24, '\0'));
  EXPECT_EQ(blue.is_bundle, 0);
  EXPECT_EQ(FieldText(AtPosition(3).description), "RED MUG");
  EXPECT_EQ(AtPosition(4).number, 5);
  EXPECT_EQ(G().films.name_keys[3], (NameKey{'R', 'E'}));
  EXPECT_EQ(G().films.live, 5);
  EXPECT_EQ(platform_.sounds, std::vector<int>{kSoundAdded});  // only "OK" confirms
}

TEST_F(InventoryTest, AScanNumberFormStartsEmptyExceptAfterARefusal) {
  S().no_offer_new_inventory = 1;
  view_.items = {Fill("X", 1, 1, ItemButton::Ok)};
  Newline();
  ASSERT_EQ(view_.opened.size(), 2u);
  EXPECT_TRUE(view_.opened[0].number_blank);
  EXPECT_EQ(view_.opened[0].record.number, 0);
  EXPECT_FALSE(view_.opened[1].number_blank);
  EXPECT_EQ(Shown(), std::vector<std::string>{"Problem: Number outside range."});
}

TEST_F(InventoryTest, AmendKeepsReservedBytesAndAllowsAZeroPrice) {
  FilmRecord r = Stock(40, 5.0f, 0, 3, "OLD NAME");
  std::memset(r.reserved_962, 0x7A, sizeof r.reserved_962);
  Store(r);
  platform_.queue_prompt("40");
  view_.items = {[](ItemForm& form) {
    EXPECT_EQ(form.mode, ItemFormMode::Amend);
    SetField(form.record.description, "NEW NAME");
    form.record.cost_price = 0;
    form.record.retail_price = 0;
    return ItemButton::Ok;
  }};
  Amendinventory();
  const FilmRecord stored = Item(40);
  EXPECT_EQ(FieldText(stored.description), "NEW NAME");
  EXPECT_EQ(stored.cost_price, 0.0f);
  EXPECT_EQ(stored.reserved_962[239], 0x7A);
  EXPECT_EQ(G().films.name_keys[size_t(G().films.position)], (NameKey{'N', 'E'}));
  EXPECT_EQ(platform_.sounds, std::vector<int>{kSoundAdded});

  // Refusals drop the changes: a new number, then a short title (with the sound).
  struct Case {
    int64_t number;
    const char* description;
    float retail;
    const char* shown;
    bool sound;
  };
  const Case cases[] = {
      {41, "NEW NAME", 1, "Problem: Number cannot be changed", false},
      {40, "N", 1, "Problem: The title must have at least two characters.", true},
      {40, "NEW NAME", 20000.01f, "Problem: Invalid retail price, limit 20000.00", false},
  };
  for (const Case& c : cases) {
    platform_.clear_record();
    platform_.queue_prompt("40");
    view_.items = {[&](ItemForm& form) {
      form.record.number = c.number;
      SetField(form.record.description, c.description);
      form.record.retail_price = c.retail;
      return ItemButton::Ok;
    }};
    Amendinventory();
    EXPECT_EQ(platform_.sounds.size(), c.sound ? 1u : 0u) << c.shown;
    EXPECT_EQ(Shown(), std::vector<std::string>{c.shown});
    EXPECT_EQ(FieldText(Item(40).description), "NEW NAME");
  }
}

TEST_F(InventoryTest, AnAmendThatCannotBeWrittenLeavesTheNameKeys) {
  Stock(40, 5.0f, 0, 3, "OLD NAME");
  platform_.queue_prompt("40");
  view_.items = {[](ItemForm& form) {
    SetField(form.record.description, "NEW NAME");
    // The disk fills up while the form is open.
    std::filesystem::rename("film.dat", "film.bak");
    std::filesystem::create_symlink("/dev/full", "film.dat");
    return ItemButton::Ok;
  }};
  Amendinventory();
  EXPECT_TRUE(platform_.sounds.empty());  // no confirm
  EXPECT_EQ(Shown(), std::vector<std::string>{"Problem: Film.dat"});
  EXPECT_EQ(G().films.name_keys[0], (NameKey{'O', 'L'}));
}

TEST_F(InventoryTest, DeleteLogsInBun4AndAFailedLogKeepsTheRecord) {
  Stock(7, 1.0f, 0, 1, "TEA POT");
  Stock(8, 1.0f, 0, 1, "CUP");
  platform_.queue_prompt("7");
  Deleteinventory();
  EXPECT_EQ(platform_.messages.at(0).title, "7 Item: TEA POT");
  EXPECT_EQ(platform_.messages.at(0).text, "Are you sure?");
  EXPECT_FALSE(G().films.Contains(7));
  EXPECT_EQ(G().films.index.front(), (IndexEntry{-1, 0}));
  EXPECT_EQ(G().films.name_keys[0], (NameKey{0, 0}));
  EXPECT_EQ(AtPosition(0).number, -1);
  EXPECT_EQ(Bytes("bun4.dat"), "\r\nItem 7, TEA POT deleted.  Date: 10:05 14/03/2026\r\n");

  // Cancel at the question keeps it.
  platform_.clear_record();
  platform_.queue_prompt("8");
  platform_.queue_answer(Answer::Cancel);
  Deleteinventory();
  EXPECT_TRUE(G().films.Contains(8));

  std::filesystem::remove("bun4.dat");
  std::filesystem::create_directory("bun4.dat");
  platform_.clear_record();
  platform_.queue_prompt("8");
  Deleteinventory();
  EXPECT_TRUE(G().films.Contains(8));  // the deletion and its log line go together
  EXPECT_EQ(AtPosition(1).number, 8);
  EXPECT_EQ(Shown(), (std::vector<std::string>{"8 Item: CUP: Are you sure?",
                                               "Fatal error: Data file: film.dat, not present."}));
}

TEST_F(InventoryTest, AFormMadeBundleSellsItsComponentsEvenWithOneDeleted) {
  Stock(1, 2.0f, 0, 5, "SOAP");
  Stock(2, 3.0f, 0, 5, "SPONGE");
  Stock(3, 4.0f, 0, 5, "TOWEL");
  view_.bundles = {[](BundleForm& form) {
    EXPECT_EQ(form.record.number, 4);
    SetField(form.record.description, "BATH SET");
    EXPECT_TRUE(Selectcomponent(form, 1, "1"));
    EXPECT_TRUE(Selectcomponent(form, 4, "3"));
    form.record.bundle_quantity[4] = 2;
    form.record.bundle_free[4] = 2;
    return true;
  }};
  Newbundle();
  const FilmRecord bundle = Item(4);
  EXPECT_EQ(bundle.is_bundle, 2);
  EXPECT_EQ(FieldText(BundleItem(bundle, 2), 20), "1");
  EXPECT_EQ(FieldText(BundleItem(bundle, 5), 20), "3");
  EXPECT_EQ(bundle.retail_price, 0.0f);
  EXPECT_EQ(platform_.sounds, std::vector<int>{kSoundAdded});

  // A bundle may not hold a bundle; an empty bundle is refused.
  BundleForm form;
  EXPECT_FALSE(Selectcomponent(form, 0, "4"));
  EXPECT_FALSE(Selectcomponent(form, 0, "0"));
  EXPECT_EQ(Shown(), std::vector<std::string>{"Problem: Bundle may not contain a bundle"});
  view_.bundles = {[](BundleForm& f) {
                     SetField(f.record.description, "EMPTY");
                     return true;
                   },
                   [](BundleForm&) { return false; }};
  Newbundle();
  EXPECT_EQ(Shown(), std::vector<std::string>{"Problem: No items selected"});

  // Amend opens the bundle form, not form 800, with the components described.
  platform_.queue_prompt("4");
  view_.bundles = {[](BundleForm& f) {
    EXPECT_TRUE(f.amend);
    EXPECT_EQ(f.component_text[4], "TOWEL");
    SetField(f.record.description, "SPA SET");
    return true;
  }};
  Amendinventory();
  EXPECT_TRUE(view_.opened.empty());
  EXPECT_EQ(FieldText(Item(4).description), "SPA SET");
  EXPECT_EQ(Item(4).is_bundle, 2);

  platform_.queue_prompt("1");
  Deleteinventory();
  platform_.clear_record();
  Addtobasket(4, 0);
  EXPECT_EQ(Shown(), std::vector<std::string>{"Invalid entry: 1"});
  ASSERT_EQ(B().line_count, 2);
  EXPECT_EQ(B().number[0], 3);
  EXPECT_EQ(B().line_total[0], 0.0f);  // marked free
}

TEST_F(InventoryTest, ViewNextWalksUpTheIndexAndCloses) {
  Stock(5, 1.0f);
  Stock(9, 1.0f);
  Stock(7, 1.0f);
  ASSERT_EQ(Fetchfilm(5), 5);
  Showitem();
  EXPECT_EQ(view_.views, 3);  // 5, 7, 9, then the end closes it
  const std::vector<ViewLine> lines = Itemviewlines(Item(9));
  EXPECT_EQ(lines[0].text, "9");
  EXPECT_EQ(lines[8].text, "1.00");
}

TEST_F(InventoryTest, ReadyReckonerTakesTheTaxOutOfAPrice) {
  S().tax1_rate = 2000;
  S().tax2_rate = 500;
  struct Case {
    const char* gross;
    bool t1, t2;
    std::optional<std::string> net;
  };
  const Case cases[] = {
      {"12.00", true, false, "10.00"},
      {"12.50", true, true, "10.00"},
      {"10.50", false, true, "10.00"},
      {"0", true, false, "0.0"},
      {"abc", true, true, "0.0"},
      {"12.00", false, false, std::nullopt},
      {"120.0000099", true, false, "100.00"},  // nine characters are read
  };
  for (const Case& c : cases) EXPECT_EQ(Readyreckoner(c.gross, c.t1, c.t2), c.net) << c.gross;
  S().tax2_rate = 0;
  EXPECT_EQ(Readyreckoner("12.00", true, true), "10.00");  // the one rate above 0
  EXPECT_EQ(Readyreckoner("12.00", false, true), std::nullopt);
}

TEST_F(InventoryTest, QuickSelectFollowsEveryAddAmendAndDelete) {
  WatchInventory();
  S().current_category = 3;
  Stock(1, 1.0f);  // category 3
  auto shown = [] {
    std::vector<int64_t> numbers;
    for (int64_t n : G().screen.quick_number)
      if (n) numbers.push_back(n);
    return numbers;
  };
  view_.items = {[](ItemForm& form) {
    form.record.number = 2;
    SetField(form.record.description, "NEW ONE");
    form.record.cost_price = form.record.retail_price = 1;
    form.record.display_category = 3;
    return ItemButton::Ok;
  }};
  Newline();
  EXPECT_EQ(shown(), (std::vector<int64_t>{1, 2}));
  platform_.queue_prompt("1");
  view_.items = {[](ItemForm& form) {
    form.record.omit_quick_select = 2;
    return ItemButton::Ok;
  }};
  Amendinventory();
  EXPECT_EQ(shown(), (std::vector<int64_t>{2}));
  platform_.queue_prompt("2");
  Deleteinventory();
  EXPECT_EQ(shown(), std::vector<int64_t>{});
}

}  // namespace
}  // namespace tilo
