// SPDX-License-Identifier: MIT
#include "core/state.h"

#include "core/customer_file.h"
#include "core/inventory.h"
#include "core/supplier_file.h"

namespace tilo {
namespace {
std::unique_ptr<State> current;
}

State::State()
    : films(kFilmLayout), members(kMemberLayout), suppliers(kMansLayout), reminder_page(12932, 0) {}

State& G() {
  if (!current) current = std::make_unique<State>();
  return *current;
}

void ResetState() {
  current = std::make_unique<State>();
}

}  // namespace tilo
