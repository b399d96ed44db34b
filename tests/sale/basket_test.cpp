// SPDX-License-Identifier: MIT
// Lines coming into the basket and leaving it: lookups, stock, limits, bundles,
// buy-one-get-one, repeat, void and empty, and what the list and pole are told.
#include <gtest/gtest.h>

#include <cstring>

#include "sale/basket.h"
#include "sale/sale_fixture.h"

namespace tilo {
namespace {

using Strings = std::vector<std::string>;

class BasketTest : public SaleTest {
 protected:
  static const Strings& Rows() { return G().basket_list.rows; }
  static bool Empty() {
    static const Basket zero{};
    return std::memcmp(&B(), &zero, sizeof zero) == 0 && Rows().empty();
  }
  // Points the pole display at a plain file; PoleSaw() gives what it received
  // since the last look (each message opens with the clear sequence, one 0 byte).
  void PoleToFile() {
    WriteBytes("ports.cfg", "COM1=pole.out\n");
    WriteBytes("pole.out", "");
    S().pole_enabled = 2;
    SetField(S().pole_passive_text, "WELCOME");
  }
  std::string PoleSaw() {
    std::string seen = Bytes("pole.out");
    WriteBytes("pole.out", "");
    return seen;
  }
};

TEST_F(BasketTest, EntryFindsTheItemByNumberOrSkuAndShowsBadTextAsTyped) {
  FilmRecord r = Stock(1234, 2.5f, 0, 7, "TEA \xC9LITE");
  SetField(r.sku1, "AB-1");
  Store(r);
  Enteritem("1234\n");
  Enteritem(" 1234xyz\n");  // digits up to the first other character
  Enteritem("12\n");
  Enteritem("-3\n");
  S().cart_description_only = 2;
  S().entry_mode = 2;
  Enteritem("ab-1\n");              // Enter folds an SKU to upper case
  EXPECT_FALSE(Addbutton("ab-1"));  // the Add button takes it as typed
  EXPECT_TRUE(Addbutton(""));       // and asks for the find on an empty box
  EXPECT_EQ(platform_.sounds, (std::vector<int>{8004, 8004, 8004}));
  EXPECT_EQ(Shown(), (Strings{"Invalid entry: 12", "Invalid entry: -3\n", "Invalid entry: ab-1"}));
  ASSERT_EQ(B().line_count, 3);
  EXPECT_STREQ(B().description[2], "TEA \xC9LITE");
  EXPECT_EQ(B().cost[2], 1.25f);
  EXPECT_EQ(Rows(), (Strings{"1234  TEA \u00c9LITE (7)  2.50", "1234  TEA \u00c9LITE (7)  2.50",
                             "TEA \u00c9LITE (7)  2.50"}));
  EXPECT_EQ(G().basket_list.selected, 2);

  EXPECT_EQ(Itemboxaction("12", false), ItemBoxAction::Typing);
  EXPECT_EQ(Itemboxaction("12\n", false), ItemBoxAction::EnterItem);
  EXPECT_EQ(Itemboxaction("\n", false), ItemBoxAction::OpenFind);
  EXPECT_EQ(Itemboxaction("1", true), ItemBoxAction::EmptyBox);
}

TEST_F(BasketTest, StockAndTheLimitsRefuseALineAndChangeNothing) {
  Stock(1, 1.0f, 0, 1);
  Stock(2, 1.0f, 0, 0);
  Stock(3, 60000.0f, 2, 5);
  Addtobasket(1, kEntryNormal);
  Addtobasket(1, kEntryNormal);  // what the basket holds counts against the stock
  Addtobasket(2, kEntryNormal);
  S().tax1_switch = 2;
  S().tax1_rate = 2000;
  Addtobasket(3, kEntryNormal);
  Addtobasket(3, kEntryNormal);  // tested on the price before tax
  EXPECT_EQ(Shown(), (Strings{"Problem: Item out of stock", "Problem: Item out of stock",
                              "Problem: Transaction limit 100000.00"}));
  EXPECT_EQ(B().line_count, 2);
  EXPECT_EQ(B().total, 72001.0f);

  Clearbasket();
  S().negative_stock = 2;
  Stock(4, 99999.98f);
  Stock(5, 0.01f);
  Addtobasket(4, kEntryNormal);
  Addtobasket(5, kEntryNormal);  // exactly 99999.99 is taken
  Addtobasket(2, kEntryNormal);
  EXPECT_EQ(B().total, 99999.99f);
  EXPECT_EQ(Shown(), (Strings{"Problem: Transaction limit 100000.00"}));
  Clearbasket();

  Addtobasket(5, kEntryNormal);
  Repeatlast("398");
  Repeatlast("2");  // refused whole
  EXPECT_EQ(B().line_count, 399);
  Repeatlast("");  // no digits: once
  Addtobasket(5, kEntryNormal);
  EXPECT_EQ(Shown(), (Strings{"Problem: Transaction limit 400 items",
                              "Problem: Transaction limit 400 items"}));
  EXPECT_EQ(B().line_count, 400);
  EXPECT_EQ(Rows().size(), 400u);
}

TEST_F(BasketTest, RepeatIsQuietTestsEachLineAndRefusesWhatCantBeRepeated) {
  Repeatlast("3");
  FilmRecord r = Stock(1, 1.0f, 0, 3);
  r.age_warning = 18;
  Store(r);
  PoleToFile();
  Addtobasket(1, kEntryNormal);
  EXPECT_EQ(PoleSaw(), std::string("\0ITEM 1 1.00", 12));
  platform_.sounds.clear();
  Repeatlast("4");
  EXPECT_EQ(B().line_count, 3);
  EXPECT_EQ(PoleSaw(), "");
  EXPECT_TRUE(platform_.sounds.empty());
  B().number[B().line_count - 1] = 0;
  Repeatlast("1");
  EXPECT_EQ(Shown(), (Strings{"Problem: No items", "Age alert: 18", "Problem: Item out of stock",
                              "Problem: Item out of stock", "Problem: Non inventory item"}));
}

TEST_F(BasketTest, ParityIsTheLastLineOfAnOddCountAndToggleFlipsTradeMode) {
  Stock(7, 3.0f);
  Stock(8, 1.0f);
  for (int64_t n : {7, 8, 7, 7}) Addtobasket(n, kEntryNormal);
  EXPECT_EQ(Basketparity(7), 4);
  EXPECT_EQ(Basketparity(8), 2);
  EXPECT_EQ(Basketparity(9), 0);
  Toggletrade();
  EXPECT_EQ(S().trade_mode, 2);
  Toggletrade();
  EXPECT_EQ(S().trade_mode, 0);
}

TEST_F(BasketTest, BundleBecomesItsComponentsNeverALine) {
  S().tax1_switch = 2;
  S().tax1_rate = 2000;
  Stock(21, 2.0f, 2);
  FilmRecord part = Stock(22, 5.0f, 2);
  part.age_warning = 16;
  Store(part);
  FilmRecord bundle = Stock(20, 9.0f);
  bundle.is_bundle = 2;
  SetField(bundle.format, "21");  // slot 1, twice
  bundle.bundle_quantity[0] = 2;
  SetField(bundle.bundle_item_2, "22");  // free
  bundle.bundle_quantity[1] = 1;
  bundle.bundle_free[1] = 2;
  SetField(bundle.bundle_item_3, "999");  // unknown: reported, the rest goes on
  bundle.bundle_quantity[2] = 1;
  SetField(bundle.bundle_item_4, "21");  // quantity 0: skipped
  SetField(bundle.bundle_item_6, "21");
  bundle.bundle_quantity[5] = 1;
  Store(bundle);
  Addtobasket(20, kEntryNormal);
  EXPECT_EQ(B().line_count, 4);
  EXPECT_EQ(B().number[2], 22);
  EXPECT_EQ(B().number[3], 21);
  EXPECT_EQ(Rows()[2], "22  ITEM 22 (10)  0.00");
  EXPECT_EQ(B().total_taxable, 6.0f);
  EXPECT_EQ(B().total, 7.2f);
  EXPECT_EQ(Shown(), (Strings{"Age alert: 16", "Invalid entry: 999"}));
}

TEST_F(BasketTest, VoidTakesBackTheStoredAmountsAndTheLastVoidClearsAll) {
  S().tax1_switch = 2;
  S().tax1_rate = 2000;
  S().tax1_threshold_on = 2;
  S().tax1_threshold = 100.0;
  Stock(1, 60.0f, 2);
  Stock(2, 50.0f, 2);
  Stock(3, 4.0f);
  for (int64_t n : {1, 2, 3}) Addtobasket(n, kEntryNormal);
  platform_.sounds.clear();
  Voiditem();  // the selection follows the last addition
  G().basket_list.selected = 0;
  Voiditem();  // an earlier line: the later ones move down
  EXPECT_EQ(B().line_count, 1);
  EXPECT_EQ(B().number[0], 2);
  EXPECT_STREQ(B().description[0], "ITEM 2");
  EXPECT_EQ(B().tax1[0], 22.0f);  // the catch-up stays with its line
  EXPECT_EQ(B().total, 72.0f);
  EXPECT_EQ(B().subtotal, 50.0f);
  EXPECT_EQ(B().total_cost, 25.0f);
  EXPECT_EQ(Rows(), (Strings{"2  ITEM 2 (10)  72.00"}));
  EXPECT_EQ(platform_.sounds, (std::vector<int>{8004, 8003, 8004, 8003}));

  PoleToFile();
  B().customer_number = 77;
  SetField(B().note, "KEEP ME");
  Voiditem();
  EXPECT_TRUE(Empty());
  EXPECT_EQ(PoleSaw(), std::string("\0WELCOME", 8));
  Voiditem();
  EXPECT_EQ(Shown(), (Strings{"Problem: No items"}));
}

TEST_F(BasketTest, ClearbasketDoesNothingOnAnEmptyBasket) {
  PoleToFile();
  Clearbasket();
  EXPECT_TRUE(platform_.sounds.empty());
  EXPECT_EQ(PoleSaw(), "");
  Stock(1, 1.0f);
  Addtobasket(1, kEntryNormal);
  PoleSaw();
  Clearbasket();
  EXPECT_TRUE(Empty());
  EXPECT_EQ(platform_.sounds.back(), 8003);
  EXPECT_EQ(PoleSaw(), std::string("\0WELCOME", 8));
}

}  // namespace
}  // namespace tilo
