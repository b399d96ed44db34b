// SPDX-License-Identifier: MIT
// The sale in progress: one record in memory, its lines held as parallel arrays
// of 400 entries, and the routines that bring lines in and take them out. Nothing
// here touches a file except to read film.dat: stock moves only at the commit.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tilo {

inline constexpr int kBasketLines = 400;

#pragma pack(push, 1)
struct Basket {
  int64_t transaction_number;
  int64_t day_sequence;
  int64_t customer_number;
  int64_t number[kBasketLines];  // 0 on a non-inventory line
  int32_t clerk;
  int32_t line_count;
  char description[kBasketLines][40];
  float non_taxable[kBasketLines];  // the line's price when the item is untaxed
  float taxable[kBasketLines];      // the line's price when the item is taxed
  float tax1[kBasketLines];
  float tax2[kBasketLines];
  float cost[kBasketLines];
  float discount[kBasketLines];
  float line_total[kBasketLines];  // price plus both taxes
  float total_non_taxable;
  float total_taxable;
  float subtotal;
  float total_tax1;
  float total_tax2;
  float total_cost;
  float total;
  float total_discount;
  float reserved_amounts[5];
  float cash_back;
  float tender_cash;
  float tender_eft;
  float tender_eft_extra;
  float tender_ch;
  float reserved_amounts2[2];
  float credit_before;
  float credit_after;
  float reserved_amount3;
  char sale_time[20];
  char sale_date[20];
  char customer_name[40];
  char customer_road[30];
  char customer_area[30];
  char customer_town[30];
  char customer_postcode[30];
  char customer_telephone[30];
  char payment_type[40];
  char reserved_text1[5][40];
  char reserved_text2[20];
  char reserved_text3[2][40];
  char reserved_text4[80];
  char reserved_text5[2][40];
  uint32_t reserved_words[4];
  char note[80];
  uint8_t unused_tail[584];  // room nothing uses; save and reload copy it too
};
#pragma pack(pop)

static_assert(sizeof(Basket) == 31934);
static_assert(offsetof(Basket, transaction_number) == 0);
static_assert(offsetof(Basket, day_sequence) == 8);
static_assert(offsetof(Basket, customer_number) == 16);
static_assert(offsetof(Basket, number) == 24);
static_assert(offsetof(Basket, clerk) == 3224);
static_assert(offsetof(Basket, line_count) == 3228);
static_assert(offsetof(Basket, description) == 3232);
static_assert(offsetof(Basket, non_taxable) == 19232);
static_assert(offsetof(Basket, taxable) == 20832);
static_assert(offsetof(Basket, tax1) == 22432);
static_assert(offsetof(Basket, tax2) == 24032);
static_assert(offsetof(Basket, cost) == 25632);
static_assert(offsetof(Basket, discount) == 27232);
static_assert(offsetof(Basket, line_total) == 28832);
static_assert(offsetof(Basket, total_non_taxable) == 30432);
static_assert(offsetof(Basket, total_taxable) == 30436);
static_assert(offsetof(Basket, subtotal) == 30440);
static_assert(offsetof(Basket, total_tax1) == 30444);
static_assert(offsetof(Basket, total_tax2) == 30448);
static_assert(offsetof(Basket, total_cost) == 30452);
static_assert(offsetof(Basket, total) == 30456);
static_assert(offsetof(Basket, total_discount) == 30460);
static_assert(offsetof(Basket, reserved_amounts) == 30464);
static_assert(offsetof(Basket, cash_back) == 30484);
static_assert(offsetof(Basket, tender_cash) == 30488);
static_assert(offsetof(Basket, tender_eft) == 30492);
static_assert(offsetof(Basket, tender_eft_extra) == 30496);
static_assert(offsetof(Basket, tender_ch) == 30500);
static_assert(offsetof(Basket, reserved_amounts2) == 30504);
static_assert(offsetof(Basket, credit_before) == 30512);
static_assert(offsetof(Basket, credit_after) == 30516);
static_assert(offsetof(Basket, reserved_amount3) == 30520);
static_assert(offsetof(Basket, sale_time) == 30524);
static_assert(offsetof(Basket, sale_date) == 30544);
static_assert(offsetof(Basket, customer_name) == 30564);
static_assert(offsetof(Basket, customer_road) == 30604);
static_assert(offsetof(Basket, customer_area) == 30634);
static_assert(offsetof(Basket, customer_town) == 30664);
static_assert(offsetof(Basket, customer_postcode) == 30694);
static_assert(offsetof(Basket, customer_telephone) == 30724);
static_assert(offsetof(Basket, payment_type) == 30754);
static_assert(offsetof(Basket, reserved_text1) == 30794);
static_assert(offsetof(Basket, reserved_words) == 31254);
static_assert(offsetof(Basket, note) == 31270);

// One line of the basket: the entries of the arrays at one index.
struct BasketLine {
  int64_t number = 0;
  char description[40]{};
  float non_taxable = 0, taxable = 0, tax1 = 0, tax2 = 0, cost = 0, discount = 0, line_total = 0;
};
BasketLine GetLine(const Basket& basket, int index);
void SetLine(Basket& basket, int index, const BasketLine& line);

// What the basket list on the sale screen holds: one row per line, in line order
// (UTF-8), and the selected row (-1 for none). The screen draws from it.
struct BasketList {
  std::vector<std::string> rows;
  int selected = -1;
};

// Entry modes of Addtobasket.
inline constexpr int kEntryNormal = 0;
inline constexpr int kEntryFree = 2;    // a free bundle component: price 0
inline constexpr int kEntryRepeat = 4;  // a repetition: no age alert

// Adds one line for item `number`; 0 takes the item from item_text (a number, or
// an SKU when entry_mode is 2). Reports its own refusals and leaves the basket as
// it was after any of them.
void Addtobasket(int64_t number, int mode);
// Expands the bundle in the FilmRecord buffer into its components.
void Addbundle(int64_t number);
// The one-based index of the last line holding `number` when an odd count of lines
// hold it, else 0.
int Basketparity(int64_t number);
// Removes the selected line.
void Voiditem();
// Repeats the last line as often as the item box says (typed before the command).
void Repeatlast(std::string_view item_box);
// Empties the basket; does nothing (and makes no sound) when it is empty already.
void Clearbasket();
// Repaints the totals, tells the pole, and plays the add sound.
void Refreshtotals();
// The Trade button: retail and trade prices for the lines that follow.
void Toggletrade();

// Adds a row to the basket list and selects it (the lines added by other forms).
void AddBasketRow(const std::string& text);
// Empties the basket list.
void ClearBasketList();

// How the sale screen treats a change of the item box's text.
enum class ItemBoxAction {
  Typing,     // leave the box alone
  EmptyBox,   // Ctrl was down: empty the box, nothing else
  OpenFind,   // Enter on an empty box: run the find, then empty the box
  EnterItem,  // Enter after a number or SKU: empty the box, then Enteritem(text)
};
ItemBoxAction Itemboxaction(std::string_view box_text, bool ctrl_down);
// Enter in the item box: takes the text (UTF-8) into item_text and adds the item.
// With SKU entry the line end is cut and the text folded to upper case.
void Enteritem(std::string_view box_text);
// The Add button: true when the box was empty and the find is to run; otherwise
// the text goes in as typed (no folding) and the item is added.
bool Addbutton(std::string_view box_text);

// The leading whole number of a text: blanks, a sign, digits up to the first
// other character; 0 when there are none.
int64_t LeadingNumber(std::string_view text);

}  // namespace tilo
