// SPDX-License-Identifier: MIT
#include "sale/screen.h"

#include <climits>
#include <cstdio>
#include <cstring>

#include "core/inventory.h"
#include "core/settings.h"
#include "core/state.h"
#include "core/text.h"
#include "platform/files.h"

namespace tilo {
namespace {

ScreenView silent_view;
ScreenView* current_view = &silent_view;

// The key of an item kept off the buttons: no category equals it.
constexpr int32_t kLeftOff = INT32_MIN;

int32_t QuickKeyOf(const FilmRecord& r) {
  return r.omit_quick_select == 2 ? kLeftOff : r.display_category;
}

void StoreQuickKey(int64_t position, const void* record) {
  ScreenState& screen = G().screen;
  if (position < 0) {  // the file is being loaded from the start
    screen.quick_keys.clear();
    screen.quick_keys_ready = true;
    return;
  }
  const auto& r = *static_cast<const FilmRecord*>(record);
  if (size_t(position) >= screen.quick_keys.size())
    screen.quick_keys.resize(size_t(position) + 1, kLeftOff);
  screen.quick_keys[size_t(position)] = QuickKeyOf(r);
}

// One pass over film.dat, for a fill before the watch began.
bool BuildQuickKeys() {
  File f(kFilmFile, File::Mode::Read);
  if (!f) return false;
  StoreQuickKey(-1, nullptr);
  constexpr int64_t kBlock = 1024;
  std::vector<FilmRecord> block(kBlock);
  int64_t position = 0;
  for (;;) {
    int64_t got = f.read(block.data(), kBlock * int64_t(sizeof(FilmRecord)));
    if (got <= 0) break;
    const int64_t whole = got / int64_t(sizeof(FilmRecord));
    for (int64_t i = 0; i < whole; ++i) StoreQuickKey(position++, &block[size_t(i)]);
    if (whole < kBlock) break;
  }
  return true;
}

bool Qualifies(int64_t position, int category) {
  const ScreenState& screen = G().screen;
  if (position < 0 || size_t(position) >= screen.quick_keys.size()) return false;
  const int32_t key = screen.quick_keys[size_t(position)];
  if (key == kLeftOff) return false;
  return category == kAllCategories || key == category;
}

void ClearButton(int b) {
  ScreenState& screen = G().screen;
  screen.quick_number[b] = 0;
  std::memset(screen.quick_name[b], 0, sizeof screen.quick_name[b]);
  std::memset(screen.quick_picture[b], 0, sizeof screen.quick_picture[b]);
}

void LoadButton(int b, const FilmRecord& r) {
  ScreenState& screen = G().screen;
  screen.quick_number[b] = r.number;
  SetField(screen.quick_name[b], FieldText(r.description));
  char picture[40];
  if (r.own_picture == 1)
    std::snprintf(picture, sizeof picture, "m%lld.bmp", static_cast<long long>(r.number));
  else
    std::snprintf(picture, sizeof picture, "STOCK%d.bmp", r.stock_picture);
  SetField(screen.quick_picture[b], picture);
}

// The open of film.dat that every fill starts with; its failure is fatal in
// wording only: the panel stays as it was.
bool OpenFilm(File& f) {
  if (!G().screen.quick_keys_ready && !BuildQuickKeys()) {
    Message("Data file: film.dat, not present.", "Fatal error");
    return false;
  }
  if (!f.open(kFilmFile, File::Mode::Read)) {
    Message("Data file: film.dat, not present.", "Fatal error");
    return false;
  }
  return true;
}

bool ReadRecord(File& f, int64_t position, FilmRecord& r) {
  return f.seek(position * int64_t(sizeof(FilmRecord))) &&
         f.read(&r, sizeof r) == int64_t(sizeof r);
}

// Fills the buttons from index slot `slot` onwards; returns how many qualified.
int FillFrom(File& f, size_t slot) {
  const NumberIndex& index = G().films.index;
  const int category = G().settings.current_category;
  const int page = G().screen.page_size;
  int filled = 0;
  FilmRecord r;
  for (size_t i = slot; i < index.size() && filled < page; ++i) {
    if (index[i].number < 1 || !Qualifies(index[i].position, category)) continue;
    if (!ReadRecord(f, index[i].position, r)) continue;
    LoadButton(filled++, r);
  }
  for (int b = filled; b < kQuickButtons; ++b) ClearButton(b);
  return filled;
}

// The first slot after the deleted block at the front of the index.
size_t FirstLiveSlot() {
  const NumberIndex& index = G().films.index;
  size_t slot = 0;
  while (slot < index.size() && index[slot].number < 1) ++slot;
  return slot;
}

struct SavedPage {
  int64_t number[16];
  char name[16][40];
  char picture[16][40];
};

SavedPage SavePage() {
  const ScreenState& s = G().screen;
  SavedPage p;
  std::memcpy(p.number, s.quick_number, sizeof p.number);
  std::memcpy(p.name, s.quick_name, sizeof p.name);
  std::memcpy(p.picture, s.quick_picture, sizeof p.picture);
  return p;
}

void RestorePage(const SavedPage& p) {
  ScreenState& s = G().screen;
  std::memcpy(s.quick_number, p.number, sizeof p.number);
  std::memcpy(s.quick_name, p.name, sizeof p.name);
  std::memcpy(s.quick_picture, p.picture, sizeof p.picture);
}

void CopyButton(const SavedPage& from, int a, int b) {
  ScreenState& s = G().screen;
  s.quick_number[b] = from.number[a];
  std::memcpy(s.quick_name[b], from.name[a], 40);
  std::memcpy(s.quick_picture[b], from.picture[a], 40);
}

void ScrollForward() {
  ScreenState& screen = G().screen;
  const int page = screen.page_size;
  const int64_t last = screen.quick_number[page - 1];
  if (last == 0) return;
  const NumberIndex& index = G().films.index;
  size_t slot = Findnumber(index, last + 1);
  if (slot >= index.size()) return;
  File f;
  if (!OpenFilm(f)) return;
  SavedPage saved = SavePage();
  if (FillFrom(f, slot) == 0) {
    RestorePage(saved);
    return;
  }
  screen_view().quick_select_changed();
}

void ScrollBack() {
  ScreenState& screen = G().screen;
  const int page = screen.page_size;
  const int64_t first = screen.quick_number[0];
  if (first == 0) return;
  File f;
  if (!OpenFilm(f)) return;
  const NumberIndex& index = G().films.index;
  const int category = G().settings.current_category;
  SavedPage saved = SavePage();
  for (int b = 0; b < kQuickButtons; ++b) ClearButton(b);
  // Walk back from the first item shown, filling the page from its last button.
  int next = page - 1;
  FilmRecord r;
  for (size_t i = Findnumber(index, first); i > 0 && next >= 0; --i) {
    const IndexEntry& e = index[i - 1];
    if (e.number < 1) break;  // the deleted block
    if (!Qualifies(e.position, category) || !ReadRecord(f, e.position, r)) continue;
    LoadButton(next--, r);
  }
  const int found = page - 1 - next;
  if (found == 0) {
    RestorePage(saved);
    return;
  }
  if (found < page) {
    // A short page: the items found move to the front, and the old page's first
    // items follow them, so the page stays full.
    SavedPage walked = SavePage();
    for (int b = 0; b < found; ++b) CopyButton(walked, page - found + b, b);
    for (int b = found; b < page; ++b) CopyButton(saved, b - found, b);
  }
  screen_view().quick_select_changed();
}

}  // namespace

ScreenView& screen_view() {
  return *current_view;
}
void install_screen_view(ScreenView* view) {
  current_view = view ? view : &silent_view;
}

void WatchInventory() {
  IndexedFile& films = G().films;
  if (films.on_record == &StoreQuickKey) return;
  films.on_record = &StoreQuickKey;
  G().screen.quick_keys_ready = false;
}

void Fillquickselect() {
  if (G().films.on_record != &StoreQuickKey) WatchInventory();
  File f;
  if (!OpenFilm(f)) return;
  FillFrom(f, FirstLiveSlot());
  screen_view().quick_select_changed();
}

void Scrollquickselect(int direction) {
  if (G().films.on_record != &StoreQuickKey) WatchInventory();
  if (direction > 0)
    ScrollForward();
  else
    ScrollBack();
}

int NeighbourCategory(int category, int step) {
  int next = category + step;
  if (next < 0) next = kAllCategories;
  if (next > kAllCategories) next = 0;
  return next;
}

std::string CategoryLabel(int category) {
  if (category == kAllCategories) return "ALL";
  return Cp1252ToUtf8(CategoryCode(G().settings, category + 1));
}

void Stepcategory(int step) {
  SettingsRecord& s = G().settings;
  ScreenState& screen = G().screen;
  screen.previous_category = s.current_category;
  s.current_category = NeighbourCategory(s.current_category, step);
  screen_view().category_changed(screen.previous_category, s.current_category);
  Fillquickselect();
  if (step > 0) screen_view().item_box_caret_to_end();
}

void Choosecategory(int category) {
  if (category < 0 || category > kAllCategories) return;
  SettingsRecord& s = G().settings;
  ScreenState& screen = G().screen;
  screen.previous_category = s.current_category;
  s.current_category = category;
  screen_view().category_changed(screen.previous_category, s.current_category);
  Fillquickselect();
}

KeypadResult KeypadItemBox(const std::string& key, const std::string& text) {
  KeypadResult r{text, 0};
  if (key == "CA")
    r.text.clear();
  else if (key == "CE") {
    if (!r.text.empty()) r.text.pop_back();
  } else
    r.text += key;
  r.caret = std::min<int>(20, int(r.text.size()));
  if (key == "CA" || key == "CE") r.caret = int(r.text.size());
  return r;
}

KeypadResult KeypadAmount(const std::string& key, const std::string& text) {
  KeypadResult r{text, 0};
  if (key == "CA")
    r.text.clear();
  else if (key == "CE") {
    if (!r.text.empty()) r.text.pop_back();
  } else if (r.text.size() < 19)
    r.text += key;
  r.caret = int(r.text.size());
  return r;
}

}  // namespace tilo
