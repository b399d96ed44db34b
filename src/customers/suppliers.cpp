// SPDX-License-Identifier: MIT
#include "customers/suppliers.h"

#include <optional>

#include "core/record_batch.h"
#include "core/state.h"
#include "core/text.h"
#include "platform/platform.h"
#include "sale/basket.h"

namespace tilo {
namespace {

constexpr const char* kProblem = "Problem";

SupplierView silent_view;
SupplierView* current_view = &silent_view;

// The supplier number typed at a prompt; nullopt when the prompt was cancelled.
std::optional<int64_t> AskNumber(const char* text, const char* title, const char* offer) {
  std::optional<std::string> reply = platform().prompt(text, title, offer);
  if (!reply) return std::nullopt;
  return LeadingNumber(Utf8ToCp1252(*reply));
}

// Numbers below 1 are never looked up: -1 would find a deleted record.
bool OnFile(int64_t number) {
  return number >= 1 && G().suppliers.Contains(number);
}

}  // namespace

SupplierView& supplier_view() {
  return *current_view;
}
void install_supplier_view(SupplierView* view) {
  current_view = view ? view : &silent_view;
}

std::string SupplierFormTitle(SupplierFormMode mode) {
  switch (mode) {
    case SupplierFormMode::New:
      return "New supplier";
    case SupplierFormMode::Amend:
      return "Amend supplier";
    default:
      return "Supplier";
  }
}

int64_t Offersuppliernumber() {
  const NumberIndex& index = G().suppliers.index;
  size_t slot = Findnumber(index, 1);
  if (slot >= index.size() || index[slot].number != 1) return 1;
  int64_t last = 1;
  for (++slot; slot < index.size() && index[slot].number == last + 1; ++slot) ++last;
  return last + 1;
}

void Findsupplier() {
  const std::optional<int64_t> number = AskNumber("Supplier number", "Find supplier", "");
  if (!number || *number < 1) return;
  if (!OnFile(*number)) {
    Message("Does not exist", "Supplier");
    return;
  }
  if (Fetchsupplier(*number) == 0) return;
  SupplierForm form{SupplierFormMode::View, G().supplier};
  supplier_view().edit_supplier(form);
}

void Addsupplier() {
  SupplierForm form{SupplierFormMode::New, MansRecord{}};
  form.record.number = Offersuppliernumber();
  if (!supplier_view().edit_supplier(form)) return;
  if (!SupplierNumberInRange(form.record.number)) {
    Message("Number outside range.", kProblem);
    return;
  }
  // A file that can't be written leaves the index as it was, so the number
  // isn't found later at a place that holds something else.
  IndexedFile& suppliers = G().suppliers;
  const NumberIndex before = suppliers.index;
  if (!WriteTogether(suppliers, [&] { return Insertsupplier(form.record); }))
    suppliers.index = before;
}

void Amendsupplier() {
  const std::optional<int64_t> number =
      AskNumber("Enter the supplier number", "Amend supplier", "1");
  if (!number || *number < 1) return;
  if (!OnFile(*number)) {
    Message("Supplier does not exist", "Amend supplier");
    return;
  }
  if (Fetchsupplier(*number) == 0) return;
  SupplierForm form{SupplierFormMode::Amend, G().supplier};
  if (!supplier_view().edit_supplier(form)) return;
  if (form.record.number != *number) {
    Message("Not possible to change number", kProblem);
    return;
  }
  G().supplier = form.record;
  WriteTogether(G().suppliers, Rewritesupplier);
}

void Deletesupplier() {
  const std::optional<int64_t> number =
      AskNumber("Enter the supplier number", "Delete supplier", "1");
  if (!number) return;
  if (!OnFile(*number)) {
    Message("Supplier does not exist", "Delete supplier");
    return;
  }
  if (Fetchsupplier(*number) == 0 || !WriteTogether(G().suppliers, Removesupplier)) return;
  Message("Supplier deleted.", "Delete supplier");
}

}  // namespace tilo
