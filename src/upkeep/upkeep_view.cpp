// SPDX-License-Identifier: MIT
#include "upkeep/upkeep_view.h"

namespace tilo {
namespace {

UpkeepView cancelling_view;
UpkeepView* current = &cancelling_view;

}  // namespace

UpkeepView& upkeep_view() {
  return *current;
}

void install_upkeep_view(UpkeepView* view) {
  current = view ? view : &cancelling_view;
}

}  // namespace tilo
