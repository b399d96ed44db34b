// SPDX-License-Identifier: MIT
#include "sale/basket.h"

#include <climits>
#include <cstring>

#include "core/film_record.h"
#include "core/inventory.h"
#include "core/state.h"
#include "core/text.h"
#include "devices/pole.h"
#include "platform/platform.h"
#include "sale/pricing.h"
#include "sale/sale_events.h"

namespace tilo {
namespace {

constexpr const char* kProblem = "Problem";
constexpr const char* kInvalidEntry = "Invalid entry";
constexpr size_t kItemTextMax = 37;
// The highest total a basket may reach, compared at two decimals.
constexpr double kTransactionLimit = 99999.99;

constexpr int kSoundAdded = 8004;
constexpr int kSoundRemoved = 8003;

bool PoleOn() {
  return G().settings.pole_enabled == 2;
}
bool SoundOn() {
  return G().settings.sound_off != 2;
}

std::string NumberText(int64_t n) {
  return std::to_string(static_cast<long long>(n));
}

// The basket's row for a line added from the inventory: the number in brackets is
// the stock level at the moment of entry.
std::string EntryRow(int64_t number, const char* description, int32_t quantity, float total) {
  std::string row;
  if (G().settings.cart_description_only != 2) row = NumberText(number) + "  ";
  row += Cp1252ToUtf8(FieldText(description, 40));
  row += " (" + std::to_string(quantity) + ")  " + MoneyText(total);
  return row;
}

// The SKU walk: every live record of film.dat in file order, the first whose sku1
// equals item_text exactly lands in the FilmRecord buffer.
bool FindBySku(const std::string& sku) {
  State& g = G();
  WalkOptions walk;
  walk.read_failed = "Film.dat";
  walk.keys = LiveKey;
  walk.test = [&sku](const void* record) {
    return FieldText(static_cast<const FilmRecord*>(record)->sku1) == sku;
  };
  RecordWalk skus = g.films.Walk(std::move(walk));
  if (skus.Next(&g.film)) return true;
  if (skus.end() == RecordWalk::End::Finished) Message(g.item_text, kInvalidEntry);
  return false;
}

// Takes the stored amounts of line i back out of the totals.
void SubtractLine(Basket& b, int i) {
  if (b.non_taxable[i] > 0.0f) {
    b.total_non_taxable = Roundmoney(double(b.total_non_taxable) - b.non_taxable[i]);
    b.subtotal = Roundmoney(double(b.subtotal) - b.non_taxable[i]);
  }
  if (b.taxable[i] > 0.0f) {
    b.total_taxable = Roundmoney(double(b.total_taxable) - b.taxable[i]);
    b.subtotal = Roundmoney(double(b.subtotal) - b.taxable[i]);
  }
  b.total = Roundmoney(double(b.total) - b.line_total[i]);
  b.total_tax1 = Roundmoney(double(b.total_tax1) - b.tax1[i]);
  b.total_tax2 = Roundmoney(double(b.total_tax2) - b.tax2[i]);
  b.total_cost = float(double(b.total_cost) - b.cost[i]);
  b.total_discount = float(double(b.total_discount) - b.discount[i]);
}

std::string ItemText(std::string_view box_utf8) {
  std::string text = Utf8ToCp1252(box_utf8);
  if (text.size() > kItemTextMax) text.resize(kItemTextMax);
  return text;
}

}  // namespace

BasketLine GetLine(const Basket& b, int i) {
  BasketLine line;
  line.number = b.number[i];
  std::memcpy(line.description, b.description[i], sizeof line.description);
  line.non_taxable = b.non_taxable[i];
  line.taxable = b.taxable[i];
  line.tax1 = b.tax1[i];
  line.tax2 = b.tax2[i];
  line.cost = b.cost[i];
  line.discount = b.discount[i];
  line.line_total = b.line_total[i];
  return line;
}

void SetLine(Basket& b, int i, const BasketLine& line) {
  b.number[i] = line.number;
  std::memcpy(b.description[i], line.description, sizeof line.description);
  b.non_taxable[i] = line.non_taxable;
  b.taxable[i] = line.taxable;
  b.tax1[i] = line.tax1;
  b.tax2[i] = line.tax2;
  b.cost[i] = line.cost;
  b.discount[i] = line.discount;
  b.line_total[i] = line.line_total;
}

int64_t LeadingNumber(std::string_view text) {
  size_t i = 0;
  while (i < text.size() && (text[i] == ' ' || (text[i] >= '\t' && text[i] <= '\r'))) ++i;
  bool negative = false;
  if (i < text.size() && (text[i] == '-' || text[i] == '+')) negative = text[i++] == '-';
  int64_t value = 0;
  for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) {
    const int digit = text[i] - '0';
    if (value > (INT64_MAX - digit) / 10) return negative ? INT64_MIN : INT64_MAX;
    value = value * 10 + digit;
  }
  return negative ? -value : value;
}

void AddBasketRow(const std::string& text) {
  BasketList& list = G().basket_list;
  list.rows.push_back(text);
  list.selected = int(list.rows.size()) - 1;
  sale_events().basket_list_changed();
}

void ClearBasketList() {
  BasketList& list = G().basket_list;
  list.rows.clear();
  list.selected = -1;
  sale_events().basket_list_changed();
}

void Refreshtotals() {
  sale_events().totals_changed();
  if (SoundOn() && G().suppress_sound != 2) platform().play_sound(kSoundAdded);
}

void Addtobasket(int64_t number, int mode) {
  State& g = G();
  Basket& b = g.basket;
  // The arrays hold 400 lines: a 401st is refused before anything is looked up.
  if (b.line_count >= kBasketLines) {
    Message("Transaction limit 400 items", kProblem);
    return;
  }

  // 1. Locate the item and fetch it into the FilmRecord buffer.
  if (g.settings.entry_mode == 2 && number == 0) {
    if (!FindBySku(g.item_text)) return;
    number = g.film.number;
  } else {
    if (number <= 0) {
      number = LeadingNumber(g.item_text);
      if (number < 0) {
        Message(g.item_text, kInvalidEntry);
        return;
      }
    }
    if (!g.films.Contains(number)) {
      Message(NumberText(number), kInvalidEntry);
      return;
    }
    if (Fetchfilm(number) == 0) return;
  }

  // 2. A bundle never becomes a line itself: its components do.
  if (g.film.is_bundle == 2) {
    Addbundle(number);
    return;
  }
  const FilmRecord& item = g.film;

  // 3. Stock: what the basket holds already counts, since stock falls only at the
  // commit.
  if (g.settings.negative_stock == 0) {
    bool short_of_stock = item.quantity < 1;
    if (!short_of_stock && b.line_count > 0) {
      int64_t held = 0;
      for (int i = 0; i < b.line_count; ++i) held += b.number[i] == number;
      short_of_stock = held + 1 > item.quantity;
    }
    if (short_of_stock) {
      Message("Item out of stock", kProblem);
      return;
    }
  }

  // 4, 5. The price, and the limit of the transaction: nothing has changed yet.
  float p = 0.0f;
  if (!Lineprice(item, mode, &p)) return;
  if (MoneyAbove(double(b.total) + double(p), kTransactionLimit)) {
    Message("Transaction limit 100000.00", kProblem);
    return;
  }

  // 6 to 8. Fill the line, tax it, add its cost and price.
  const int i = b.line_count;
  BasketLine line;
  line.number = number;
  std::memcpy(line.description, item.description, sizeof line.description);
  line.description[sizeof line.description - 1] = '\0';
  line.line_total = p;
  line.cost = item.cost_price;
  SetLine(b, i, line);
  if (p != 0.0f) Taxline(b, i, p, item.tax, item.no_tax_rounding);
  b.total_cost = float(double(b.total_cost) + double(b.cost[i]));
  b.subtotal = Roundmoney(double(b.subtotal) + double(p));

  // 9, 10. Show it.
  AddBasketRow(EntryRow(number, b.description[i], item.quantity, b.line_total[i]));
  ++b.line_count;
  const int32_t age = item.age_warning;
  Refreshtotals();

  // 11, 12. The age alert and the pole.
  if (age > 1 && mode != kEntryRepeat) Message(std::to_string(age), "Age alert");
  if (PoleOn() && g.suppress_sound != 2) Poleitem(b.description[i], b.line_total[i]);
}

void Addbundle(int64_t /*number*/) {
  // Each added component reloads the FilmRecord buffer: take the slots out first.
  const FilmRecord& bundle = G().film;
  std::string items[6];
  int32_t free[6], quantity[6];
  for (int slot = 1; slot <= 6; ++slot) {
    items[slot - 1] = FieldText(BundleItem(bundle, slot), 20);
    free[slot - 1] = bundle.bundle_free[slot - 1];
    quantity[slot - 1] = bundle.bundle_quantity[slot - 1];
  }
  for (int k = 0; k < 6; ++k) {
    if (items[k].empty()) continue;
    const int64_t component = LeadingNumber(items[k]);
    if (!NumberInRange(component) || quantity[k] < 1) continue;
    for (int32_t n = 0; n < quantity[k]; ++n) Addtobasket(component, free[k]);
  }
}

int Basketparity(int64_t number) {
  const Basket& b = G().basket;
  bool odd = false;
  int last = -1;
  for (int i = 0; i < b.line_count; ++i) {
    if (b.number[i] != number) continue;
    odd = !odd;
    last = i;
  }
  return odd ? last + 1 : 0;
}

void Voiditem() {
  State& g = G();
  Basket& b = g.basket;
  BasketList& list = g.basket_list;
  if (list.rows.empty()) {
    Message("No items", kProblem);
    return;
  }
  const int rows_before = int(list.rows.size());
  const int last = b.line_count - 1;
  int i = list.selected;
  // No selection, or one past the lines, counts as the last line.
  if (i < 0 || i >= rows_before || i > last) i = last;

  if (i >= 0) {
    SubtractLine(b, i);
    for (int k = i; k < last; ++k) SetLine(b, k, GetLine(b, k + 1));
    SetLine(b, last, BasketLine{});
    --b.line_count;
  }
  const size_t row = size_t(std::min(std::max(i, 0), rows_before - 1));
  list.rows.erase(list.rows.begin() + ptrdiff_t(row));
  list.selected = int(list.rows.size()) - 1;
  sale_events().basket_list_changed();

  // The moment the last line goes, the basket is cleared whole: a customer or a
  // note attached to it is forgotten.
  if (b.line_count < 1) std::memset(&b, 0, sizeof b);

  Refreshtotals();
  if (rows_before == 1 && PoleOn()) Polegreeting();
  if (SoundOn()) platform().play_sound(kSoundRemoved);
}

void Repeatlast(std::string_view item_box) {
  State& g = G();
  Basket& b = g.basket;
  if (g.basket_list.rows.empty() || b.line_count < 1) {
    Message("No items", kProblem);
    return;
  }
  const int64_t number = b.number[b.line_count - 1];
  if (number == 0) {
    Message("Non inventory item", kProblem);
    return;
  }
  int64_t times = LeadingNumber(item_box.substr(0, kItemTextMax));
  if (times == 0) times = 1;
  if (times > kBasketLines - b.line_count) {
    Message("Transaction limit 400 items", kProblem);
    return;
  }
  g.suppress_sound = 2;
  for (int64_t n = 0; n < times; ++n) Addtobasket(number, kEntryRepeat);
  g.suppress_sound = 0;
}

void Clearbasket() {
  State& g = G();
  if (g.basket_list.rows.empty()) return;
  ClearBasketList();
  std::memset(&g.basket, 0, sizeof g.basket);
  Refreshtotals();
  if (PoleOn()) Polegreeting();
  if (SoundOn()) platform().play_sound(kSoundRemoved);
}

void Toggletrade() {
  G().settings.trade_mode = G().settings.trade_mode == 0 ? 2 : 0;
  sale_events().totals_changed();
}

ItemBoxAction Itemboxaction(std::string_view box_text, bool ctrl_down) {
  if (ctrl_down) return ItemBoxAction::EmptyBox;
  if (!box_text.empty() && (box_text.front() == '\r' || box_text.front() == '\n'))
    return ItemBoxAction::OpenFind;
  if (!box_text.empty() && box_text.back() == '\n') return ItemBoxAction::EnterItem;
  return ItemBoxAction::Typing;
}

void Enteritem(std::string_view box_text) {
  State& g = G();
  g.item_text = ItemText(box_text);
  if (g.settings.entry_mode == 2) {
    while (!g.item_text.empty() && (g.item_text.back() == '\n' || g.item_text.back() == '\r'))
      g.item_text.pop_back();
    g.item_text = UpperCase(g.item_text);
  }
  Addtobasket(0, kEntryNormal);
}

bool Addbutton(std::string_view box_text) {
  State& g = G();
  g.item_text = ItemText(box_text);
  if (g.item_text.empty()) return true;
  Addtobasket(0, kEntryNormal);
  return false;
}

}  // namespace tilo
