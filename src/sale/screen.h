// SPDX-License-Identifier: MIT
// The sale screen's own state and rules, kept free of any window: the
// quick-select panel and its categories, the keypad, and what the screen is told
// to show. The widgets draw from this state and send their presses here.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tilo {

inline constexpr int kQuickButtons = 14;      // buttons in the large layout
inline constexpr int kQuickButtonsSmall = 8;  // and in the small one
inline constexpr int kAllCategories = 18;     // the "ALL" category
inline constexpr int kCategories = 19;        // 0 to 17, and "ALL"

struct ScreenState {
  int restricted_clerk = 0;   // 2 while a restricted clerk is logged on
  int previous_category = 0;  // the category shown before, to redraw its button
  int page_size = kQuickButtons;
  // The quick-select buttons: item number (0 for an empty button), description
  // and picture file name, as the record gave them (Windows-1252).
  int64_t quick_number[16] = {};
  char quick_name[16][40] = {};
  char quick_picture[16][40] = {};
  // What a category change needs of every record, by record position, kept in
  // step with film.dat by its loads and writes: the display category, or
  // kLeftOff for an item kept off the quick-select buttons.
  std::vector<int32_t> quick_keys;
  bool quick_keys_ready = false;
};

// The screen as the logic sees it. The real screen installs itself; until then,
// and in tests, nothing is shown.
class ScreenView {
 public:
  virtual ~ScreenView() = default;
  virtual void focus_item_box() {}
  // A command given while the tender form is up only puts the focus back there.
  virtual void focus_tender_amount() {}
  virtual std::string item_box_text() { return {}; }
  virtual void set_item_box_text(const std::string&) {}
  virtual void item_box_caret_to_end() {}
  virtual void quick_select_changed() {}
  virtual void category_changed(int /*previous*/, int /*current*/) {}
  // The menu ticks, the tips or the item caption may have changed.
  virtual void settings_changed() {}
  virtual void set_title(const std::string&) {}
  virtual void open_help(const std::string& /*page*/) {}
  virtual void show_about() {}
  virtual void show_calendar() {}
  virtual void quit() {}
};

ScreenView& screen_view();
void install_screen_view(ScreenView* view);

// Starts keeping the quick-select keys of film.dat in memory: every later load
// and write of the file updates them. Call before the store opens; a fill before
// then builds them with one pass over the file.
void WatchInventory();

// Loads the quick-select buttons for current_category, in item number order.
void Fillquickselect();
// Pages the buttons: forward (+1) after the last item shown, back (-1) before the
// first, keeping the page full.
void Scrollquickselect(int direction);
// Previous (-1) and Next (+1) category with wrap-around over 0 to 18, or a
// category button's own index.
void Stepcategory(int step);
void Choosecategory(int category);
// The three-letter code of a category (0 to 17) as the settings hold it, and
// "ALL" for 18; the Previous and Next buttons show the ones they lead to.
std::string CategoryLabel(int category);
int NeighbourCategory(int category, int step);

// The on-screen keypad: "0".."9", "CA" (empty) and "CE" (last character off).
struct KeypadResult {
  std::string text;
  int caret = 0;
};
// The key on the item box: a digit is appended and the caret put at position 20
// (or the end of a shorter text).
KeypadResult KeypadItemBox(const std::string& key, const std::string& text);
// The key on the open tender form's amount field, which holds at most 19 characters.
KeypadResult KeypadAmount(const std::string& key, const std::string& text);

}  // namespace tilo
