// SPDX-License-Identifier: MIT
#include "inventory/item_find.h"

#include <cstdio>

#include "core/inventory.h"
#include "core/state.h"
#include "core/text.h"
#include "inventory/find_view.h"
#include "sale/basket.h"

namespace tilo {
namespace {

constexpr size_t kPromptLimit = 34;
constexpr size_t kListPatternLimit = 39;
// The most rows a selection list takes; beyond them "Out of space".
constexpr size_t kListRows = 32767;
constexpr const char* kReadFailed = "Film.dat";

void NoMatch() {
  Message("No match found", "Finished");
}

// Looks the number up; shows the record when asked.
int64_t FindByNumber(int64_t number, bool view) {
  if (!G().films.Contains(number) || Fetchfilm(number) == 0) return 0;
  if (view) find_view().view_item();
  return number;
}

// Pads a one-character start with `?`.
std::string Pattern(std::string text) {
  if (text.size() < 2) text.resize(2, '?');
  return text;
}

int64_t DescriptionByForm(const std::string& pattern) {
  WalkOptions o = PatternWalk(pattern, TILO_FIELD(FilmRecord, description));
  o.read_failed = kReadFailed;
  RecordWalk walk = G().films.Walk(std::move(o));
  while (walk.Next(&G().film)) {
    switch (find_view().find_inventory(G().film)) {
      case FindChoice::Ok:
        return G().film.number;
      case FindChoice::Cancel:
        return 0;
      case FindChoice::Next:
        break;
    }
  }
  if (walk.end() == RecordWalk::End::Finished) NoMatch();
  return 0;
}

int64_t DescriptionByList(std::string pattern, bool view) {
  if (pattern.size() > kListPatternLimit) pattern.resize(kListPatternLimit);
  WalkOptions o = PatternWalk(pattern, TILO_FIELD(FilmRecord, description));
  o.by_number = true;
  o.read_failed = kReadFailed;
  RecordWalk walk = G().films.Walk(std::move(o));
  std::vector<std::string> rows;
  std::vector<int64_t> numbers;
  FilmRecord r{};
  while (walk.Next(&r)) {
    if (rows.size() == kListRows) {
      Message("Out of space", "Problem");
      break;
    }
    char tail[64];
    std::snprintf(tail, sizeof tail, " (%d) %.2f", r.quantity, double(r.retail_price));
    rows.push_back(std::to_string(r.number) + ", " + Cp1252ToUtf8(FieldText(r.description)) + tail);
    numbers.push_back(int64_t(r.number));
  }
  if (walk.end() == RecordWalk::End::Failed || walk.end() == RecordWalk::End::Cancelled) return 0;
  if (rows.empty()) {
    NoMatch();
    return 0;
  }
  const int chosen = find_view().pick_row(rows);
  if (chosen < 0 || size_t(chosen) >= numbers.size()) return 0;
  return FindByNumber(numbers[size_t(chosen)], view);
}

}  // namespace

std::string FindText(const std::string& utf8, size_t limit) {
  std::string text = Utf8ToCp1252(utf8);
  if (text.size() > limit) text.resize(limit);
  return UpperCase(text);
}

int64_t Finditem(const std::string& text, bool view, bool as_description) {
  if (text.empty()) return 0;
  const int64_t number = LeadingNumber(text);
  if (!as_description && NumberInRange(number)) return FindByNumber(number, view);
  return Finditemdescription(text, view);
}

int64_t Finditemdescription(std::string text, bool view) {
  if (text.empty()) return 0;
  text = Pattern(UpperCase(text));
  if (G().settings.inventory_search_list == 1) return DescriptionByList(text, view);
  return DescriptionByForm(text);
}

std::vector<FragmentTerm> DescriptionFragment(const std::string& text) {
  return {{text, {TILO_FIELD(FilmRecord, description)}}};
}

std::vector<FragmentTerm> Sku1Fragment(const std::string& text) {
  return {{text, {TILO_FIELD(FilmRecord, sku1)}}};
}

int64_t Finditemfragment(std::vector<FragmentTerm> terms, bool all, FindFrom from) {
  WalkOptions o = FragmentWalk(std::move(terms), all);
  o.read_failed = kReadFailed;
  RecordWalk walk = G().films.Walk(std::move(o));
  while (walk.Next(&G().film)) {
    const FilmRecord& r = G().film;
    const std::string hit =
        std::to_string(r.number) + ", " + Cp1252ToUtf8(FieldText(r.description));
    const Answer a = Message(hit, "Search: No to continue", Buttons::YesNoCancel);
    if (a == Answer::No) continue;
    const int64_t number = r.number;
    if (from == FindFrom::SaleScreen) return a == Answer::Yes ? number : 0;
    if (a == Answer::Yes) find_view().view_item();
    return number;
  }
  if (walk.end() == RecordWalk::End::Finished) NoMatch();
  return 0;
}

void Itemboxfind() {
  State& g = G();
  int64_t number = 0;
  if (g.settings.entry_mode == 0) {
    auto query = find_view().picbox(g.settings.description_search_within == 2);
    if (!query) return;
    if (query->keep) g.settings.description_search_within = query->within ? 2 : 0;
    if (query->text.empty()) return;
    number = query->within
                 ? Finditemfragment(DescriptionFragment(query->text), false, FindFrom::SaleScreen)
                 : Finditemdescription(query->text, false);
  } else {
    auto reply = platform().prompt("Find in SKU 1:", "Find in SKUs");
    if (!reply) return;
    const std::string text = FindText(*reply, kPromptLimit);
    if (text.empty()) return;
    number = Finditemfragment(Sku1Fragment(text), false, FindFrom::SaleScreen);
  }
  if (number != 0) Addtobasket(number, kEntryNormal);
}

}  // namespace tilo
