// SPDX-License-Identifier: MIT
// The find commands of the Inventory and Customers menus, the item box's find,
// and the customer find that other commands use.
#include "core/state.h"
#include "core/text.h"
#include "customers/customer_find.h"
#include "inventory/find_view.h"
#include "inventory/item_find.h"
#include "inventory/items.h"
#include "sale/commands.h"

namespace tilo {
namespace {

using C = Command;

constexpr size_t kItemPromptLimit = 34;
constexpr size_t kCustomerPromptLimit = 29;

FindView*& installed_view() {
  static FindView* view = nullptr;
  return view;
}
RecordView& item_view() {
  static RecordView view;
  return view;
}
RecordView& customer_view() {
  static RecordView view;
  return view;
}

// The prompt's text as the finds take it; nullopt on Cancel.
std::optional<std::string> Ask(const std::string& label, const std::string& title, size_t limit) {
  auto reply = platform().prompt(label, title);
  if (!reply) return std::nullopt;
  return FindText(*reply, limit);
}

void FindItemFragment(const char* label, const char* title, bool sku1) {
  auto text = Ask(label, title, kItemPromptLimit);
  if (!text || text->empty()) return;
  Finditemfragment(sku1 ? Sku1Fragment(*text) : DescriptionFragment(*text), false, FindFrom::Menu);
}

void FindAdvanced() {
  auto query = find_view().advanced_search();
  if (!query) return;
  const std::vector<TextField> skus = {TILO_FIELD(FilmRecord, sku1), TILO_FIELD(FilmRecord, sku2),
                                       TILO_FIELD(FilmRecord, sku3), TILO_FIELD(FilmRecord, sku4)};
  std::vector<FragmentTerm> terms = {{query->description, {TILO_FIELD(FilmRecord, description)}}};
  for (const std::string& sku : query->sku) terms.push_back({sku, skus});
  Finditemfragment(std::move(terms), query->all, FindFrom::Menu);
}

}  // namespace

void FindView::view_item() {
  if (item_view()) item_view()();
}
void FindView::view_customer() {
  if (customer_view()) customer_view()();
}
void SetItemView(RecordView view) {
  item_view() = std::move(view);
}
void SetCustomerView(RecordView view) {
  customer_view() = std::move(view);
}

FindView& find_view() {
  static FindView headless;
  return installed_view() ? *installed_view() : headless;
}

void install_find_view(FindView* view) {
  installed_view() = view;
}

void InstallFindHandlers() {
  SetHandler(C::FindInventory, [](int) {
    if (auto text = Ask("Find item number / description / fragment", "Find", kItemPromptLimit))
      Finditem(*text, true, false);
  });
  SetHandler(C::FindByDescription, [](int) {
    if (auto text = Ask("Find inventory by description", "Find by description", kItemPromptLimit))
      Finditem(*text, true, true);
  });
  SetHandler(C::FindInventoryContaining,
             [](int) { FindItemFragment("Fragment:", "Find that contain", false); });
  SetHandler(C::FindInSkus, [](int) { FindItemFragment("Find in SKU 1:", "Find in SKUs", true); });
  SetHandler(C::FindAdvanced, [](int) { FindAdvanced(); });
  SetHandler(C::ItemFind, [](int) { Itemboxfind(); });

  SetHandler(C::FindCustomer, [](int) {
    if (auto text = Ask("Number / name", "Find customer", kCustomerPromptLimit))
      Findcustomer(*text, true);
  });
  SetHandler(C::FindCustomerContaining, [](int) {
    if (auto text = Ask("Fragment:", "Find that contain", kCustomerPromptLimit))
      Findcustomerfragment(*text);
  });
  SetHandler(C::FindTelephone, [](int) {
    if (auto text = Ask("Enter telephone number", "Find telephone", kCustomerPromptLimit))
      Findtelephone(*text);
  });
  // Amend, Delete and Inventory received find a description the same way, and a
  // record found from the menu shows in the item's own view.
  SetItemDescriptionFind([](const std::string& text) { return Finditemdescription(text, false); });
  SetItemView(Showitem);
  SetCustomerFind([](const std::string& text) -> int64_t {
    return Findcustomerfor(UpperCase(text.substr(0, kCustomerPromptLimit)));
  });
}

}  // namespace tilo
