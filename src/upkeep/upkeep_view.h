// SPDX-License-Identifier: MIT
// The forms of the upkeep commands, as the logic sees them. Until the window
// installs its own, every form is cancelled.
#pragma once

#include <optional>

namespace tilo {

class UpkeepView {
 public:
  virtual ~UpkeepView() = default;
  // THERESET: nullopt on Cancel, else whether "Delete customer and inventory
  // databases" is ticked.
  virtual std::optional<bool> file_reset() { return std::nullopt; }
  // FINISBOX before a restore: true on OK.
  virtual bool confirm_restore() { return false; }
};

UpkeepView& upkeep_view();
// nullptr puts back the view that cancels everything.
void install_upkeep_view(UpkeepView* view);

}  // namespace tilo
