// SPDX-License-Identifier: MIT
// The screen list: thirteen rows of four columns at a time, filled before the
// window opens. A full page offers "More" (and "Cancel"), a shorter last page
// only "OK"; "Back" returns to the page before through a stack of up to 200 page
// starts, beyond which the stack stops growing. Clicking a row opens its record.
// Each listing gives the rows through a fill function that starts from a saved
// place of its own (an index slot, a place in a list).
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace tilo {

inline constexpr int kListRows = 13;
inline constexpr int kListPageStack = 200;

struct ListRow {
  int64_t number = 0;                  // what a click opens
  std::array<std::string, 4> columns;  // UTF-8, as shown
};

// Appends up to kListRows rows from place `start` and returns the place after
// the last one looked at; sets `at_end` when nothing follows it.
using ListFill = std::function<int64_t(int64_t start, std::vector<ListRow>& rows, bool& at_end)>;
// Opens the record of a row.
using ListOpen = std::function<void(int64_t number)>;

class ScreenList {
 public:
  ScreenList(std::string title, ListFill fill, ListOpen open = {});

  // Fills the first page; false when it is empty.
  bool Load();
  // "More": the next thirteen rows, remembering where this page started.
  void More();
  // Back to the page before; nothing when there is none.
  void Back();
  // A click on row `row` of the page.
  void Open(size_t row) const;

  const std::string& title() const { return title_; }
  const std::vector<ListRow>& rows() const { return rows_; }
  // A full page with more behind it shows "More" and "Cancel"; otherwise "OK".
  bool has_more() const { return int(rows_.size()) == kListRows && !at_end_; }
  bool can_go_back() const { return !starts_.empty(); }
  size_t saved_pages() const { return starts_.size(); }

 private:
  void FillFrom(int64_t start);

  std::string title_;
  ListFill fill_;
  ListOpen open_;
  std::vector<ListRow> rows_;
  std::vector<int64_t> starts_;  // the starts of the pages before this one
  int64_t start_ = 0;
  int64_t next_ = 0;
  bool at_end_ = true;
};

// A list of rows already made (at most a page or several): the place is the
// row's offset.
ListFill RowsFill(std::vector<ListRow> rows);

// The window as the logic sees it: shows the list modally until it is closed.
class ScreenListView {
 public:
  virtual ~ScreenListView() = default;
  virtual void show(ScreenList& list) = 0;
};
// Without a screen a list is not shown.
ScreenListView* screen_list_view();
void install_screen_list_view(ScreenListView* view);

// "No items on record." under "Problem" when the first page is empty; otherwise
// the window.
void Showscreenlist(ScreenList& list);

}  // namespace tilo
