// SPDX-License-Identifier: MIT
// The forms of the item and customer finds as the logic sees them. The screen
// installs the real ones; without a screen (tests, tools) every form is given up
// at once, as a Cancel.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/customer_file.h"
#include "core/film_record.h"

namespace tilo {

enum class FindChoice { Ok, Cancel, Next };

// Form 811 "Advanced search": the five boxes, Windows-1252 and folded to upper
// case, and which of the two radio buttons is on.
struct AdvancedQuery {
  std::string description;
  std::string sku[4];
  bool all = false;  // "Display only those that match all the above"
};

// PICBOX "Item description search": the text (Windows-1252, folded), the search
// type chosen, and whether "Keep search type as default" was ticked.
struct PicboxQuery {
  std::string text;
  bool within = false;  // "Within the description"; else "Initial characters"
  bool keep = false;
};

class FindView {
 public:
  virtual ~FindView() = default;
  // Form 805 "FIND INVENTORY" showing the record: "OK", "Cancel" or "Next".
  virtual FindChoice find_inventory(const FilmRecord&) { return FindChoice::Cancel; }
  // Form 804 "FIND CUSTOMER" showing the record.
  virtual FindChoice find_customer(const MemberRecord&) { return FindChoice::Cancel; }
  virtual std::optional<AdvancedQuery> advanced_search() { return std::nullopt; }
  // Opens on the search type given.
  virtual std::optional<PicboxQuery> picbox(bool within) {
    (void)within;
    return std::nullopt;
  }
  // List 818 "Please select" of the rows (UTF-8): the row chosen, or -1.
  virtual int pick_row(const std::vector<std::string>&) { return -1; }
  // View 801 (BUNDLE1 for a bundle) of G().film, and view 803 of G().member,
  // where the find's caller asked for the record to be shown: the views that
  // the record forms install below.
  virtual void view_item();
  virtual void view_customer();
};

// The read-only record pages, installed by the item and customer forms.
using RecordView = std::function<void()>;
void SetItemView(RecordView view);
void SetCustomerView(RecordView view);

FindView& find_view();
// nullptr puts back the one without a screen.
void install_find_view(FindView* view);

}  // namespace tilo
