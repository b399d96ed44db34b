// SPDX-License-Identifier: MIT
#include "upkeep/exchange_view.h"

namespace tilo {
namespace {

ExchangeView cancelling_view;
ExchangeView* current = &cancelling_view;

}  // namespace

ExchangeView& exchange_view() {
  return *current;
}

void install_exchange_view(ExchangeView* view) {
  current = view ? view : &cancelling_view;
}

}  // namespace tilo
