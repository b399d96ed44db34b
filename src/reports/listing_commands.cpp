// SPDX-License-Identifier: MIT
// The listing commands: each asks what its mode needs, then shows the screen
// list or prints.
#include <cstdlib>

#include "core/clock.h"
#include "core/scratch_sort.h"
#include "core/state.h"
#include "core/supplier_file.h"
#include "core/text.h"
#include "customers/customer_maintenance.h"
#include "inventory/items.h"
#include "inventory/stock_lists.h"
#include "platform/files.h"
#include "reports/listings.h"
#include "sale/commands.h"

namespace tilo {
namespace {

IndexedFile& FileFor(int mode) {
  if (mode == kPrintSuppliers || mode == kSupplierList) return G().suppliers;
  return mode < 200 ? G().members : G().films;
}

bool Present(int mode) {
  if (FileExists(FileFor(mode).layout().path)) return true;
  // The customer path has always named film.dat for a missing member.dat.
  Message(mode == kPrintSuppliers || mode == kSupplierList ? "Data file: mans.dat, not present."
                                                           : "Data file: film.dat, not present.",
          "Fatal error");
  return false;
}

int64_t Highest(const IndexedFile& file) {
  return file.index.empty() ? 0 : std::max<int64_t>(0, file.index.back().number);
}

std::optional<int64_t> AskNumber(const std::string& text, const std::string& title) {
  std::optional<std::string> typed = platform().prompt(text, title);
  if (!typed) return std::nullopt;
  auto range = Checkrange(*typed, *typed);
  if (!range) return std::nullopt;
  return range->first;
}

std::optional<std::pair<int64_t, int64_t>> AskRange(int mode) {
  auto typed = listing_view().ask_range(Highest(FileFor(mode)));
  if (!typed) return std::nullopt;
  return Checkrange(typed->first, typed->second);
}

bool Sorted(SortKind kind, const std::string& title) {
  auto letters = Askletters(title);
  return letters && Alphasort(kind, letters->first, letters->second) >= 0;
}

void OpenRow(int mode, int64_t number) {
  if (mode < 200) {
    Viewcustomer(number);
  } else if (mode != kSupplierList && G().films.Fetch(number, &G().film) == number) {
    Showitem();
  }
}

const char* PrintTitle(int mode) {
  switch (mode) {
    case kPrintCustomersFromNumber:
      return "Numeric customer list: ";
    case kPrintCustomersAlphabetically:
      return "Alphabetical customer list: ";
    case kPrintDebtors:
      return "Debit / credit customer list: ";
    case kPrintNonDefaultCategory:
      return "Non default category customer list: ";
    case kPrintInactive:
      return "Inactive customer list: ";
    case kPrintInventoryCategory:
      return "Inventory category list: ";
    case kPrintInventoryHeld:
      return "Inventory held list: ";
    case kPrintSuppliers:
      return "Numeric supplier list: ";
    case kPrintInventoryLocation:
      return "Location: ";
    default:
      return "Inventory list: ";
  }
}

std::string ColumnHeading(int mode, const PrintChoice& choice) {
  if (mode < 200 || mode == kPrintInventoryAlphabetically || mode == kPrintSuppliers) return "";
  if (mode == kPrintInventoryCustom) return Customheading(choice.fields);
  if (mode == kPrintInventoryCost || mode == kPrintInventoryHeld)
    return "Number          Description   Held   Cost   Retail   Total cost";
  return "Number          Description   Cat   Held   Retail   Total retail";
}

// What the print modes ask before they print; false when the command ends.
bool AskChoice(int mode, PrintChoice& c, std::string& title) {
  switch (mode) {
    case kPrintCustomersFromNumber:
    case kPrintInventoryFromNumber:
    case kPrintInventoryCost: {
      auto range = AskRange(mode);
      if (!range) return false;
      std::tie(c.from, c.to) = *range;
      return true;
    }
    case kPrintCustomersAlphabetically:
      return Sorted(SortKind::Customers, "Alphabetical customer list");
    case kPrintInventoryAlphabetically:
      return Sorted(SortKind::Listing, "Alphabetical inventory list");
    case kPrintInactive: {
      auto typed = platform().prompt("Enter the year (YYYY):", "Inactive since", "2000");
      if (!typed) return false;
      Datestamp();
      c.year = std::atoi(typed->c_str());
      return c.year >= 1 && c.year <= G().now.year;
    }
    case kPrintInventoryCategory: {
      auto category = listing_view().choose_category(false);
      if (!category) return false;
      c.category = *category;
      return true;
    }
    case kPrintInventoryCustom: {
      c.fields = Customfields(G().settings.custom_print_fields);
      std::string from = "1", to = std::to_string(Highest(G().films));
      if (!listing_view().custom_print(c.fields, from, to)) return false;
      c.fields = Customfields(c.fields.data());
      std::copy(c.fields.begin(), c.fields.end(), G().settings.custom_print_fields);
      auto range = Checkrange(from, to);
      if (!range) return false;
      std::tie(c.from, c.to) = *range;
      return true;
    }
    case kPrintSuppliers: {
      auto from = AskNumber("Print suppliers from number:", "Print suppliers");
      if (!from) return false;
      c.from = *from;
      return true;
    }
    case kPrintInventoryLocation: {
      auto typed = platform().prompt("Enter the location:", "By location");
      if (!typed) return false;
      c.location = Utf8ToCp1252(*typed);
      if (c.location.size() > 39) return false;
      title += c.location + " ";
      return true;
    }
    default:
      return true;
  }
}

}  // namespace

void Screenlisting(int mode) {
  if (!Present(mode)) return;
  std::string title;
  int64_t from = 1;
  switch (mode) {
    case kCustomerList:
    case kInventoryList:
    case kSupplierList: {
      auto number = AskNumber("List from number:", "List from number");
      if (!number) return;
      from = *number;
      break;
    }
    case kCustomerListAlphabetical:
      if (!Sorted(SortKind::Customers, "Alphabetical customer list")) return;
      break;
    case kInventoryListAlphabetical:
      if (!Sorted(SortKind::Listing, "Alphabetical inventory list")) return;
      break;
    case kInventoryListCategory: {
      auto category = listing_view().choose_category(false);
      if (!category) return;
      from = *category;
      break;
    }
    case kInventoryTop: {
      auto category = listing_view().choose_category(true);
      if (!category || Writebestsellers(*category) < 0) return;
      const std::string code = CategoryCode(G().settings, *category + 1);
      title = *category == kAllCategories ? "Top inventory: All categories"
                                          : "Top inventory for category " + Cp1252ToUtf8(code);
      break;
    }
    default:
      break;
  }
  if (title.empty()) {
    static const std::pair<int, const char*> titles[] = {
        {kCustomerList, "Customer list"},
        {kCustomerListAlphabetical, "Alphabetical customer list"},
        {kCustomersWithBalance, "Customers with non zero credit"},
        {kCustomersNotCategory1, "Customer list not category 1"},
        {kCustomersActive, "Customer list active"},
        {kCustomersOverdue, "Customer overdue list"},
        {kInventoryList, "Inventory list"},
        {kInventoryListAlphabetical, "Alphabetical inventory list"},
        {kInventoryListCategory, "Inventory list by category"},
        {kSupplierList, "Supplier list"}};
    for (const auto& [m, t] : titles)
      if (m == mode) title = t;
  }
  ScreenList list(title, Listingfill(mode, from), [mode](int64_t n) { OpenRow(mode, n); });
  Showscreenlist(list);
}

void Printlistingmode(int mode) {
  if (!Present(mode)) return;
  PrintChoice choice;
  std::string title = PrintTitle(mode);
  if (!AskChoice(mode, choice, title)) return;
  std::unique_ptr<ListingSource> source = Listingsource(mode, choice);
  Printlisting(Listingheader(title), ColumnHeading(mode, choice), *source);
}

void Datacostcheck() {
  const auto found = Retailbelowcost();
  std::vector<std::string> rows;
  for (const auto& [number, text] : found) rows.push_back(Cp1252ToUtf8(text));
  if (rows.empty()) rows.push_back("No items have a retail price below cost.");
  const auto chosen = listing_view().choose_row("Data cost retail check", rows);
  if (chosen && *chosen < found.size()) OpenRow(kInventoryList, found[*chosen].first);
}

void InstallListingHandlers() {
  using C = Command;
  const std::pair<C, int> screens[] = {{C::CustomerListFromNumber, kCustomerList},
                                       {C::CustomerListAlphabetically, kCustomerListAlphabetical},
                                       {C::OutstandingBalances, kCustomersWithBalance},
                                       {C::InventoryListFromNumber, kInventoryList},
                                       {C::InventoryListAlphabetically, kInventoryListAlphabetical},
                                       {C::InventoryListByCategory, kInventoryListCategory},
                                       {C::HighestVolume, kInventoryTop},
                                       {C::ListSuppliers, kSupplierList}};
  for (const auto& [command, mode] : screens)
    SetHandler(command, [mode = mode](int) { Screenlisting(mode); });
  const std::pair<C, int> prints[] = {
      {C::PrintCustomersFromNumber, kPrintCustomersFromNumber},
      {C::PrintCustomersAlphabetically, kPrintCustomersAlphabetically},
      {C::PrintDebtors, kPrintDebtors},
      {C::PrintInactiveSince, kPrintInactive},
      {C::PrintInventoryFromNumber, kPrintInventoryFromNumber},
      {C::PrintInventoryAlphabetically, kPrintInventoryAlphabetically},
      {C::PrintInventoryCostValue, kPrintInventoryCost},
      {C::PrintInventoryByCategory, kPrintInventoryCategory},
      {C::PrintInventoryInStock, kPrintInventoryHeld},
      {C::PrintInventoryCustom, kPrintInventoryCustom},
      {C::PrintSuppliers, kPrintSuppliers},
      {C::PrintInventoryByLocation, kPrintInventoryLocation}};
  for (const auto& [command, mode] : prints)
    SetHandler(command, [mode = mode](int) { Printlistingmode(mode); });
  SetHandler(C::RetailBelowCost, [](int) { Datacostcheck(); });
  InstallStockListHandlers();
}

}  // namespace tilo
