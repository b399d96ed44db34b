// SPDX-License-Identifier: MIT
// Lines coming into the basket and leaving it: lookups, stock, limits, bundles,
// buy-one-get-one, repeat, void and empty, and what the screen and pole are told.
#include <gtest/gtest.h>

#include <cstring>

#include "sale/basket.h"
#include "sale/sale_events.h"
#include "sale/sale_fixture.h"

namespace tilo {
namespace {

class RecordingEvents : public SaleEvents {
 public:
  void basket_list_changed() override { ++list_changes; }
  void totals_changed() override { ++repaints; }
  int list_changes = 0;
  int repaints = 0;
};

class BasketTest : public SaleTest {
 protected:
  void SetUp() override {
    SaleTest::SetUp();
    install_sale_events(&events_);
  }
  void TearDown() override {
    install_sale_events(nullptr);
    SaleTest::TearDown();
  }
  static const std::vector<std::string>& Rows() { return G().basket_list.rows; }
  // Points the pole display at a plain file in the working folder.
  void PoleToFile() {
    WriteBytes("ports.cfg", "COM1=pole.out\n");
    WriteBytes("pole.out", "");
    S().pole_enabled = 2;
    S().pole_port = 0;
    SetField(S().pole_passive_text, "WELCOME");
  }
  // What the display received since the last look (each message starts with the
  // clear sequence, a single 0 byte when none is set).
  std::string PoleSaw() {
    std::string seen = Bytes("pole.out");
    WriteBytes("pole.out", "");
    return seen;
  }
  RecordingEvents events_;
};

using Strings = std::vector<std::string>;

TEST_F(BasketTest, EntryByNumberFillsTheLineAndTheRow) {
  FilmRecord r = Stock(1234, 2.5f, 0, 7, "TEA \xC9LITE");
  r.cost_price = 1.2f;
  Store(r);
  Enteritem("1234\n");
  ASSERT_EQ(B().line_count, 1);
  EXPECT_EQ(B().number[0], 1234);
  EXPECT_STREQ(B().description[0], "TEA \xC9LITE");
  EXPECT_EQ(B().cost[0], 1.2f);
  EXPECT_EQ(B().discount[0], 0.0f);
  EXPECT_EQ(Rows(), (Strings{"1234  TEA \u00c9LITE (7)  2.50"}));
  EXPECT_EQ(G().basket_list.selected, 0);
  EXPECT_EQ(platform_.sounds, (std::vector<int>{8004}));
  EXPECT_TRUE(Shown().empty());
  EXPECT_GE(events_.repaints, 1);

  S().cart_description_only = 2;
  Addtobasket(1234, kEntryNormal);
  EXPECT_EQ(Rows()[1], "TEA \u00c9LITE (7)  2.50");
  EXPECT_EQ(G().basket_list.selected, 1);
}

TEST_F(BasketTest, BadEntriesShowTheirTextAndChangeNothing) {
  Stock(5, 1.0f);
  Enteritem("12\n");
  Enteritem("-3\n");
  Enteritem("abc\n");
  Addtobasket(99, kEntryNormal);
  EXPECT_EQ(Shown(), (Strings{"Invalid entry: 12", "Invalid entry: -3\n", "Invalid entry: 0",
                              "Invalid entry: 99"}));
  EXPECT_EQ(B().line_count, 0);
  EXPECT_TRUE(Rows().empty());
  EXPECT_TRUE(platform_.sounds.empty());
  Enteritem(" 5xyz\n");  // digits up to the first other character
  EXPECT_EQ(B().line_count, 1);
}

TEST_F(BasketTest, SkuEntryMatchesSkuOneExactlyAfterFolding) {
  S().entry_mode = 2;
  FilmRecord a = Stock(10, 1.0f);
  SetField(a.sku1, "AB-1");
  Store(a);
  FilmRecord b = Stock(11, 2.0f);
  SetField(b.sku1, "ab-2");
  Store(b);

  Enteritem("ab-1\n");  // Enter folds to upper case
  ASSERT_EQ(B().line_count, 1);
  EXPECT_EQ(B().number[0], 10);
  Enteritem("ab-2\n");  // so a lower-case SKU is out of reach of the Enter path
  EXPECT_EQ(Shown(), (Strings{"Invalid entry: AB-2"}));
  EXPECT_FALSE(Addbutton("ab-2"));  // the Add button takes the text as typed
  EXPECT_EQ(B().line_count, 2);
  EXPECT_EQ(B().number[1], 11);
  EXPECT_TRUE(Addbutton(""));  // an empty box asks for the find
  EXPECT_EQ(B().line_count, 2);
  // A deleted record is skipped even when its SKU matches.
  G().film = Item(11);
  ASSERT_TRUE(Removenumber());
  EXPECT_FALSE(Addbutton("ab-2"));
  EXPECT_EQ(Shown(), (Strings{"Invalid entry: ab-2"}));
}

TEST_F(BasketTest, ItemBoxTextDecidesWhatEnterDoes) {
  EXPECT_EQ(Itemboxaction("12", false), ItemBoxAction::Typing);
  EXPECT_EQ(Itemboxaction("12\n", false), ItemBoxAction::EnterItem);
  EXPECT_EQ(Itemboxaction("\n", false), ItemBoxAction::OpenFind);
  EXPECT_EQ(Itemboxaction("\r\n", false), ItemBoxAction::OpenFind);
  EXPECT_EQ(Itemboxaction("a", true), ItemBoxAction::EmptyBox);
  EXPECT_EQ(Itemboxaction("", false), ItemBoxAction::Typing);
}

TEST_F(BasketTest, StockCountsWhatTheBasketHoldsUnlessNegativeStockIsAllowed) {
  Stock(1, 1.0f, 0, 1);
  Stock(2, 1.0f, 0, 0);
  Addtobasket(1, kEntryNormal);
  Addtobasket(1, kEntryNormal);
  Addtobasket(2, kEntryNormal);
  EXPECT_EQ(Shown(), (Strings{"Problem: Item out of stock", "Problem: Item out of stock"}));
  EXPECT_EQ(B().line_count, 1);
  S().negative_stock = 2;
  Addtobasket(1, kEntryNormal);
  Addtobasket(2, kEntryNormal);
  EXPECT_EQ(B().line_count, 3);
  EXPECT_EQ(Rows()[2], "2  ITEM 2 (0)  1.00");
}

TEST_F(BasketTest, TransactionLimitIsTestedOnTheTotalPlusThePriceBeforeTax) {
  S().tax1_switch = 2;
  S().tax1_rate = 2000;
  Stock(1, 60000.0f, 2);
  Addtobasket(1, kEntryNormal);
  Addtobasket(1, kEntryNormal);
  EXPECT_EQ(Shown(), (Strings{"Problem: Transaction limit 100000.00"}));
  EXPECT_EQ(B().line_count, 1);

  Clearbasket();
  S().tax1_switch = 0;
  Stock(2, 99999.98f);
  Stock(3, 0.01f);
  Addtobasket(2, kEntryNormal);
  Addtobasket(3, kEntryNormal);  // exactly 99999.99 is taken
  EXPECT_TRUE(Shown().empty());
  EXPECT_EQ(B().total, 99999.99f);
  Addtobasket(3, kEntryNormal);
  EXPECT_EQ(Shown(), (Strings{"Problem: Transaction limit 100000.00"}));
  EXPECT_EQ(B().line_count, 2);
}

TEST_F(BasketTest, FourHundredLinesAtMost) {
  S().negative_stock = 2;
  Stock(1, 0.01f);
  Addtobasket(1, kEntryNormal);
  Repeatlast("398");
  EXPECT_EQ(B().line_count, 399);
  EXPECT_EQ(platform_.sounds.size(), 1u);  // a repeat is quiet
  Repeatlast("2");
  EXPECT_EQ(Shown(), (Strings{"Problem: Transaction limit 400 items"}));
  EXPECT_EQ(B().line_count, 399);
  Repeatlast("");  // no digits: once
  EXPECT_EQ(B().line_count, 400);
  Addtobasket(1, kEntryNormal);
  EXPECT_EQ(Shown(), (Strings{"Problem: Transaction limit 400 items"}));
  EXPECT_EQ(B().line_count, 400);
  EXPECT_EQ(Rows().size(), 400u);
  EXPECT_EQ(B().total, 4.0f);
}

TEST_F(BasketTest, RepeatRefusesEmptyAndNonInventoryBaskets) {
  Repeatlast("3");
  EXPECT_EQ(Shown(), (Strings{"Problem: No items"}));
  B().line_count = 1;
  AddBasketRow("MISC  1.00");
  Repeatlast("3");
  EXPECT_EQ(Shown(), (Strings{"Problem: Non inventory item"}));
  EXPECT_EQ(B().line_count, 1);
}

TEST_F(BasketTest, RepeatTestsStockForEachRepetitionAndShowsNoAgeAlert) {
  FilmRecord r = Stock(1, 1.0f, 0, 3);
  r.age_warning = 18;
  Store(r);
  Addtobasket(1, kEntryNormal);
  EXPECT_EQ(Shown(), (Strings{"Age alert: 18"}));
  Repeatlast("4");
  EXPECT_EQ(B().line_count, 3);
  EXPECT_EQ(Shown(), (Strings{"Problem: Item out of stock", "Problem: Item out of stock"}));
  EXPECT_EQ(G().suppress_sound, 0);
}

TEST_F(BasketTest, BuyOneGetOneMakesEverySecondLineOfTheItemFree) {
  FilmRecord r = Stock(7, 3.0f);
  r.buy_one_get_one = 2;
  Store(r);
  Stock(8, 1.0f);
  Addtobasket(7, kEntryNormal);
  Addtobasket(8, kEntryNormal);
  Addtobasket(7, kEntryNormal);
  Addtobasket(7, kEntryNormal);
  EXPECT_EQ(B().line_total[0], 3.0f);
  EXPECT_EQ(B().line_total[2], 0.0f);
  EXPECT_EQ(B().line_total[3], 3.0f);
  EXPECT_EQ(Basketparity(7), 4);
  EXPECT_EQ(Basketparity(8), 2);
  EXPECT_EQ(Basketparity(9), 0);

  // Voiding the free line leaves two lines of the item: the next one is full price.
  G().basket_list.selected = 2;
  Voiditem();
  EXPECT_EQ(Basketparity(7), 0);
  Addtobasket(7, kEntryNormal);
  EXPECT_EQ(B().line_total[3], 3.0f);
  Addtobasket(7, kEntryNormal);
  EXPECT_EQ(B().line_total[4], 0.0f);
  EXPECT_EQ(B().total, 10.0f);
}

TEST_F(BasketTest, BundleExpandsIntoItsComponents) {
  S().tax1_switch = 2;
  S().tax1_rate = 2000;
  Stock(21, 2.0f, 2);
  FilmRecord free_part = Stock(22, 5.0f, 2);
  free_part.age_warning = 16;
  Store(free_part);
  FilmRecord bundle = Stock(20, 9.0f);
  bundle.is_bundle = 2;
  SetField(bundle.format, "21");  // slot 1
  bundle.bundle_quantity[0] = 2;
  SetField(bundle.bundle_item_2, "22");
  bundle.bundle_quantity[1] = 1;
  bundle.bundle_free[1] = 2;
  SetField(bundle.bundle_item_3, "999");  // no such item: reported, and the rest goes on
  bundle.bundle_quantity[2] = 1;
  SetField(bundle.bundle_item_4, "21");  // quantity 0: skipped
  SetField(bundle.bundle_item_6, "21");
  bundle.bundle_quantity[5] = 1;
  Store(bundle);

  Addtobasket(20, kEntryNormal);
  EXPECT_EQ(B().line_count, 4);
  EXPECT_EQ(B().number[0], 21);
  EXPECT_EQ(B().number[1], 21);
  EXPECT_EQ(B().number[2], 22);
  EXPECT_EQ(B().number[3], 21);
  EXPECT_EQ(Rows()[2], "22  ITEM 22 (10)  0.00");
  EXPECT_EQ(B().tax1[2], 0.0f);
  EXPECT_EQ(B().total_taxable, 6.0f);
  EXPECT_EQ(B().total, 7.2f);
  EXPECT_EQ(Shown(), (Strings{"Age alert: 16", "Invalid entry: 999"}));
}

TEST_F(BasketTest, VoidOfTheLastAndOfAnEarlierLine) {
  Stock(1, 1.0f);
  Stock(2, 2.0f);
  Stock(3, 4.0f);
  Addtobasket(1, kEntryNormal);
  Addtobasket(2, kEntryNormal);
  Addtobasket(3, kEntryNormal);
  platform_.clear_record();

  Voiditem();  // the selection follows the last addition
  EXPECT_EQ(B().line_count, 2);
  EXPECT_EQ(B().total, 3.0f);
  EXPECT_EQ(B().line_total[2], 0.0f);
  EXPECT_EQ(B().number[2], 0);
  EXPECT_EQ(Rows(), (Strings{"1  ITEM 1 (10)  1.00", "2  ITEM 2 (10)  2.00"}));

  Addtobasket(3, kEntryNormal);
  G().basket_list.selected = 0;
  Voiditem();
  EXPECT_EQ(B().line_count, 2);
  EXPECT_EQ(B().number[0], 2);
  EXPECT_EQ(B().number[1], 3);
  EXPECT_STREQ(B().description[1], "ITEM 3");
  EXPECT_EQ(B().line_total[1], 4.0f);
  EXPECT_EQ(B().total, 6.0f);
  EXPECT_EQ(B().subtotal, 6.0f);
  EXPECT_EQ(B().total_non_taxable, 6.0f);
  EXPECT_EQ(B().total_cost, 3.0f);
  EXPECT_EQ(Rows(), (Strings{"2  ITEM 2 (10)  2.00", "3  ITEM 3 (10)  4.00"}));
  EXPECT_EQ(G().basket_list.selected, 1);
  EXPECT_EQ(platform_.sounds, (std::vector<int>{8004, 8003, 8004, 8004, 8003}));
}

TEST_F(BasketTest, VoidOfTheOnlyLineClearsTheWholeBasket) {
  PoleToFile();
  Stock(1, 1.0f);
  Addtobasket(1, kEntryNormal);
  B().customer_number = 77;
  SetField(B().note, "KEEP ME");
  EXPECT_EQ(PoleSaw(), std::string("\0ITEM 1 1.00", 12));
  Voiditem();
  Basket zero{};
  EXPECT_EQ(std::memcmp(&B(), &zero, sizeof zero), 0);
  EXPECT_TRUE(Rows().empty());
  EXPECT_EQ(PoleSaw(), std::string("\0WELCOME", 8));
  Voiditem();
  EXPECT_EQ(Shown(), (Strings{"Problem: No items"}));
}

TEST_F(BasketTest, ClearbasketEmptiesQuietlyOnlyWhenThereIsSomething) {
  PoleToFile();
  Clearbasket();
  EXPECT_TRUE(platform_.sounds.empty());
  EXPECT_EQ(PoleSaw(), "");
  Stock(1, 1.0f);
  Addtobasket(1, kEntryNormal);
  Addtobasket(1, kEntryNormal);
  PoleSaw();
  Clearbasket();
  Basket zero{};
  EXPECT_EQ(std::memcmp(&B(), &zero, sizeof zero), 0);
  EXPECT_TRUE(Rows().empty());
  EXPECT_EQ(platform_.sounds.back(), 8003);
  EXPECT_EQ(PoleSaw(), std::string("\0WELCOME", 8));

  S().sound_off = 2;
  platform_.clear_record();
  Addtobasket(1, kEntryNormal);
  Clearbasket();
  EXPECT_TRUE(platform_.sounds.empty());
}

TEST_F(BasketTest, PoleShowsEachLineExceptDuringARepeat) {
  PoleToFile();
  S().pole_enabled = 0;
  Stock(1, 1.0f);
  Addtobasket(1, kEntryNormal);
  EXPECT_EQ(PoleSaw(), "");
  S().pole_enabled = 2;
  Addtobasket(1, kEntryNormal);
  EXPECT_EQ(PoleSaw(), std::string("\0ITEM 1 1.00", 12));
  Repeatlast("2");
  EXPECT_EQ(PoleSaw(), "");
  EXPECT_EQ(B().line_count, 4);
  EXPECT_TRUE(Shown().empty());
}

}  // namespace
}  // namespace tilo
