// SPDX-License-Identifier: MIT
// The suppliers' address book: find, add, amend and delete on mans.dat, through
// form 816. The rules live here; the form only shows a record and hands back
// what was typed, through SupplierView.
#pragma once

#include <cstdint>
#include <string>

#include "core/supplier_file.h"

namespace tilo {

// What form 816 is showing.
enum class SupplierFormMode {
  View,   // "Supplier": read-only, "OK" saves nothing
  New,    // "New supplier"
  Amend,  // "Amend supplier"
};

std::string SupplierFormTitle(SupplierFormMode mode);

struct SupplierForm {
  SupplierFormMode mode = SupplierFormMode::View;
  MansRecord record{};
};

// The form as the logic sees it. The screen installs the real one; the default
// cancels (tests script their own).
class SupplierView {
 public:
  virtual ~SupplierView() = default;
  // Shows form.record; true on "OK", with what was typed in form.record (the
  // fields no form writes kept as they were).
  virtual bool edit_supplier(SupplierForm& /*form*/) { return false; }
};

SupplierView& supplier_view();
// nullptr puts back the one without a screen.
void install_supplier_view(SupplierView* view);

// The number "Add" offers: 1 when it is free, else the one after the run of
// numbers that starts at 1.
int64_t Offersuppliernumber();

void Findsupplier();
void Addsupplier();
void Amendsupplier();
void Deletesupplier();

}  // namespace tilo
