// SPDX-License-Identifier: MIT
#include "sale/parked_basket.h"

#include <algorithm>
#include <cstring>

#include "core/state.h"
#include "core/text.h"
#include "sale/basket.h"
#include "sale/pricing.h"

namespace tilo {
namespace {

NoteView silent_view;
NoteView* current_view = &silent_view;

}  // namespace

NoteView& note_view() {
  return *current_view;
}
void install_note_view(NoteView* view) {
  current_view = view ? view : &silent_view;
}

void Savebasket() {
  State& g = G();
  if (g.basket.line_count < 1) {
    Message("No items", "Save basket");
    return;
  }
  std::memcpy(&g.saved_basket, &g.basket, sizeof g.basket);
  Message("Saved", "Basket");
}

std::string ReloadRow(int line) {
  const Basket& b = G().basket;
  std::string row;
  if (G().settings.cart_description_only != 2) row = std::to_string(b.number[line]) + "  ";
  row += Cp1252ToUtf8(FieldText(b.description[line], sizeof b.description[line]));
  return row + "  " + MoneyText(b.line_total[line]);
}

void Reloadbasket() {
  State& g = G();
  if (g.saved_basket.line_count < 1) {
    Message("No items", "Reload basket");
    return;
  }
  Clearbasket();
  // Stock, prices and tax stay as they were when the basket was parked.
  std::memcpy(&g.basket, &g.saved_basket, sizeof g.basket);
  ClearBasketList();
  const int lines = std::min(g.basket.line_count, kBasketLines);
  for (int i = 0; i < lines; ++i) AddBasketRow(ReloadRow(i));
  Refreshtotals();
}

void Setnote(const std::string& text) {
  std::string bytes = Utf8ToCp1252(text);
  if (bytes.size() > size_t(kNoteLength)) bytes.resize(size_t(kNoteLength));
  SetField(G().basket.note, bytes);
}

void Addnote() {
  const std::string current = Cp1252ToUtf8(FieldText(G().basket.note));
  std::optional<std::string> text = note_view().add_note(current);
  if (!text) return;
  Setnote(*text);
  Message("Added", "Transaction note");
}

}  // namespace tilo
