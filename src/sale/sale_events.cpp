// SPDX-License-Identifier: MIT
#include "sale/sale_events.h"

namespace tilo {
namespace {
SaleEvents silent;
SaleEvents* current = &silent;
}  // namespace

SaleEvents& sale_events() {
  return *current;
}
void install_sale_events(SaleEvents* events) {
  current = events ? events : &silent;
}

}  // namespace tilo
