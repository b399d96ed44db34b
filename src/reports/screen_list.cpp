// SPDX-License-Identifier: MIT
#include "reports/screen_list.h"

#include <memory>

#include "platform/platform.h"

namespace tilo {
namespace {

ScreenListView* installed_view = nullptr;

}  // namespace

ScreenList::ScreenList(std::string title, ListFill fill, ListOpen open)
    : title_(std::move(title)), fill_(std::move(fill)), open_(std::move(open)) {}

void ScreenList::FillFrom(int64_t start) {
  rows_.clear();
  at_end_ = false;
  start_ = start;
  next_ = fill_(start, rows_, at_end_);
}

bool ScreenList::Load() {
  starts_.clear();
  FillFrom(0);
  return !rows_.empty();
}

void ScreenList::More() {
  if (!has_more()) return;
  if (starts_.size() < size_t(kListPageStack)) starts_.push_back(start_);
  FillFrom(next_);
}

void ScreenList::Back() {
  if (starts_.empty()) return;
  const int64_t start = starts_.back();
  starts_.pop_back();
  FillFrom(start);
}

void ScreenList::Open(size_t row) const {
  if (open_ && row < rows_.size()) open_(rows_[row].number);
}

ListFill RowsFill(std::vector<ListRow> rows) {
  auto all = std::make_shared<std::vector<ListRow>>(std::move(rows));
  return [all](int64_t start, std::vector<ListRow>& out, bool& at_end) {
    int64_t i = start;
    for (; i < int64_t(all->size()) && int(out.size()) < kListRows; ++i)
      out.push_back((*all)[size_t(i)]);
    at_end = i >= int64_t(all->size());
    return i;
  };
}

ScreenListView* screen_list_view() {
  return installed_view;
}

void install_screen_list_view(ScreenListView* view) {
  installed_view = view;
}

void Showscreenlist(ScreenList& list) {
  if (!list.Load()) {
    Message("No items on record.", "Problem");
    return;
  }
  if (installed_view) installed_view->show(list);
}

}  // namespace tilo
