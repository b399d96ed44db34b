// SPDX-License-Identifier: MIT
// The tender's forms as the logic sees them. The screen installs the real ones;
// without a screen (tests, benchmarks) the summary box does what it does on
// opening, prints what the settings ask for, and is closed at once.
#pragma once

namespace tilo {

class TenderView {
 public:
  virtual ~TenderView() = default;
  // "Transaction committed, summary", modal: returns when the operator presses "OK".
  virtual void summary_box();
  // The focus back in the item box, after a sale or a form given up.
  virtual void focus_item_box() {}
};

TenderView& tender_view();
// nullptr puts back the one without a screen.
void install_tender_view(TenderView* view);

}  // namespace tilo
