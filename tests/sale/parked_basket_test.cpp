// SPDX-License-Identifier: MIT
// Parking a basket while another customer is served, bringing it back, and the
// note that rides with the basket to the sales log.
#include <gtest/gtest.h>

#include <cstring>

#include "core/history.h"
#include "sale/commands.h"
#include "sale/commit.h"
#include "sale/parked_basket.h"
#include "sale/sale_fixture.h"

namespace tilo {
namespace {

using Strings = std::vector<std::string>;

class ScriptedNote : public NoteView {
 public:
  std::optional<std::string> add_note(const std::string& note) override {
    opened_on = note;
    return reply;
  }
  std::optional<std::string> reply;
  std::string opened_on;
};

class ParkedBasketTest : public SaleTest {
 protected:
  void SetUp() override {
    platform_.set_now(2026, 3, 9, 14, 5);
    SaleTest::SetUp();
    Makelogdirs();
    install_note_view(&note_);
    Stock(1, 2.5f, 0, 1, "TEA");
    Stock(2, 4.0f, 0, 3, "MUG");
    Stock(3, 9.0f, 0, 3, "POT");
    platform_.clear_record();
  }
  void TearDown() override {
    install_note_view(nullptr);
    SaleTest::TearDown();
  }
  void Sell() {
    SetField(B().payment_type, "Cash");
    B().tender_cash = B().total;
    Finishsale();
  }
  ScriptedNote note_;
};

TEST_F(ParkedBasketTest, AParkedBasketComesBackWholeAsOftenAsWanted) {
  // Nothing to park and nothing parked: the basket on the screen stays.
  SetHandler(Command::ReloadBasket, [](int) { Reloadbasket(); });
  Savebasket();
  Addtobasket(3, kEntryNormal);
  Dispatch(Command::ReloadBasket);
  SetHandler(Command::ReloadBasket, {});
  EXPECT_EQ(Shown(), (Strings{"Save basket: No items", "Reload basket: No items"}));
  EXPECT_EQ(B().line_count, 1);
  Clearbasket();

  Addtobasket(1, kEntryNormal);
  Addtobasket(2, kEntryNormal);
  B().customer_number = 77;
  Setnote("RING MRS DAY");
  Savebasket();
  EXPECT_EQ(Shown(), Strings{"Basket: Saved"});
  EXPECT_EQ(B().line_count, 2);  // the screen keeps it until Empty
  Basket parked;
  std::memcpy(&parked, &B(), sizeof parked);

  // Another customer is served; meanwhile the tea sells out and the mug costs more.
  Clearbasket();
  Addtobasket(3, kEntryNormal);
  Sell();
  FilmRecord mug = Item(2);
  mug.retail_price = 5.0f;
  Store(mug);
  FilmRecord tea = Item(1);
  tea.quantity = 0;
  Store(tea);

  Addtobasket(3, kEntryNormal);  // lost without a question
  Reloadbasket();
  EXPECT_EQ(std::memcmp(&B(), &parked, sizeof parked), 0);
  EXPECT_EQ(G().basket_list.rows, (Strings{"1  TEA  2.50", "2  MUG  4.00"}));
  EXPECT_EQ(G().basket_list.selected, 1);
  EXPECT_TRUE(Shown().empty());

  Sell();
  EXPECT_EQ(Item(1).quantity, 0);  // stock stops at nothing
  const std::vector<SalesLogRecord> log = ReadSalesLog(2026, 3, 9);
  ASSERT_EQ(log.size(), 2u);
  EXPECT_EQ(FieldText(log[0].note), "");
  EXPECT_EQ(FieldText(log[1].note), "RING MRS DAY");
  EXPECT_EQ(log[1].total, 6.5f);

  // A sale doesn't take the parked copy: it comes back again, by name only.
  S().cart_description_only = 2;
  Reloadbasket();
  EXPECT_EQ(G().basket_list.rows, (Strings{"TEA  2.50", "MUG  4.00"}));
  EXPECT_EQ(B().customer_number, 77);
}

TEST_F(ParkedBasketTest, TheNoteTakesSeventyEightCharactersAndLivesWithTheBasket) {
  const std::string long_note = "CAF\xC3\x89 " + std::string(80, 'x');  // UTF-8 from the form
  struct Case {
    std::optional<std::string> reply;
    std::string stored;  // Windows-1252
    Strings shown;
  };
  const Case cases[] = {
      {"DELIVER FRIDAY", "DELIVER FRIDAY", {"Transaction note: Added"}},
      {std::nullopt, "DELIVER FRIDAY", {}},  // Cancel
      {long_note, "CAF\xC9 " + std::string(73, 'x'), {"Transaction note: Added"}},
      {"", "", {"Transaction note: Added"}},
  };
  for (const Case& c : cases) {
    note_.reply = c.reply;
    Addnote();  // on an empty basket too
    EXPECT_EQ(FieldText(B().note), c.stored);
    EXPECT_EQ(Shown(), c.shown);
  }
  EXPECT_EQ(FieldText(B().note).size(), 0u);

  // The first item entered after the note keeps it; the form opens on it.
  note_.reply = "GIFT";
  Addnote();
  Addtobasket(2, kEntryNormal);
  note_.reply = std::nullopt;
  Addnote();
  EXPECT_EQ(note_.opened_on, "GIFT");
  Sell();
  EXPECT_EQ(FieldText(ReadSalesLog(2026, 3, 9).at(0).note), "GIFT");
  EXPECT_EQ(FieldText(B().note), "");
}

}  // namespace
}  // namespace tilo
