// SPDX-License-Identifier: MIT
// What the sale logic tells the sale screen: when to redraw the basket list and
// the totals panel. The logic keeps what is to be shown in the global state (the
// basket, its list rows, Totalspanel()); these calls only say when. Until the
// screen installs its own listener nothing listens, and a sale runs without any
// window.
#pragma once

namespace tilo {

class SaleEvents {
 public:
  virtual ~SaleEvents() = default;
  // The rows or the selected row of G().basket_list changed.
  virtual void basket_list_changed() {}
  // The totals panel is to be repainted from Totalspanel().
  virtual void totals_changed() {}
};

SaleEvents& sale_events();
// Installs the listener; nullptr puts back the silent one.
void install_sale_events(SaleEvents* events);

}  // namespace tilo
