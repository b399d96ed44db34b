// SPDX-License-Identifier: MIT
// The listing engine: the customers, the inventory and the suppliers shown
// thirteen to a page on the screen list, and printed page by page. Each
// command runs the one body with its listing mode; the mode decides what is
// chosen and how a row reads. Printed rows are Windows-1252, shown rows UTF-8.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/customer_file.h"
#include "core/film_record.h"
#include "documents/print_job.h"
#include "reports/screen_list.h"
#include "sale/screen.h"

namespace tilo {

// The listing modes: screen lists 120-129 and 220-240, prints 100-116 and 200-218.
enum ListingMode : int {
  kPrintCustomersFromNumber = 100,
  kPrintCustomersAlphabetically = 102,
  kPrintDebtors = 106,
  kPrintNonDefaultCategory = 108,
  kPrintInactive = 110,
  kCustomerList = 120,
  kCustomerListAlphabetical = 122,
  kCustomersWithBalance = 124,
  kCustomersNotCategory1 = 126,
  kCustomersActive = 128,
  kCustomersOverdue = 129,
  kPrintInventoryFromNumber = 200,
  kPrintInventoryAlphabetically = 202,
  kPrintInventoryCost = 204,
  kPrintInventoryCategory = 206,
  kPrintInventoryHeld = 208,
  kPrintInventoryCustom = 214,
  kPrintSuppliers = 216,
  kPrintInventoryLocation = 218,
  kInventoryList = 220,
  kInventoryListAlphabetical = 222,
  kInventoryListCategory = 224,
  kInventoryTop = 237,
  kSupplierList = 240,
};

// kAllCategories (18, sale/screen.h) stands for every category.
inline constexpr int kCustomFields = 20;
using CustomFields = std::array<int32_t, kCustomFields>;

// The forms of the listings as the logic sees them; without a screen each is
// cancelled.
class ListingView {
 public:
  virtual ~ListingView() = default;
  // "Print" with "From" and "To" ("To" starting at `highest`): the texts typed.
  virtual std::optional<std::pair<std::string, std::string>> ask_range(int64_t /*highest*/) {
    return std::nullopt;
  }
  // "Select category": 0 to 17, or kAllCategories when `with_all` offers "All".
  virtual std::optional<int> choose_category(bool /*with_all*/) { return std::nullopt; }
  // "Custom Inventory Print": the ticks (2 on) and the range typed; false on Cancel.
  virtual bool custom_print(CustomFields& /*fields*/, std::string& /*from*/, std::string& /*to*/) {
    return false;
  }
  // A list dialog of rows (UTF-8): the row chosen, none when closed.
  virtual std::optional<size_t> choose_row(const std::string& /*title*/,
                                           const std::vector<std::string>& /*rows*/) {
    return std::nullopt;
  }
};
ListingView& listing_view();
void install_listing_view(ListingView* view);

// "From" and "To" as typed, each above 0 and not above the largest number, "To"
// not below "From"; otherwise "Outside range" under "Problem".
std::optional<std::pair<int64_t, int64_t>> Checkrange(const std::string& from,
                                                      const std::string& to);
// The start and end characters of an alphabetical listing, folded to upper
// case; none when the start is below "A", the end before the start or above 255.
std::optional<std::pair<unsigned char, unsigned char>> Askletters(const std::string& title);

// The best sellers of a category (0 to 17, or kAllCategories) into f2.dat, by
// falling total_sold, equal counts in file order. The rows written, or -1.
int64_t Writebestsellers(int category);

// The custom print: the ticks in force (entry 0 on when none is), the column
// heading and one item's row.
CustomFields Customfields(const int32_t* stored);
std::string Customheading(const CustomFields& fields);
std::string Customrow(const FilmRecord& r, const CustomFields& fields);

// A row of the customer screen lists (also for the customer searches' lists).
ListRow Customerrow(const MemberRecord& r, int mode = kCustomerList);
// The screen list of a mode (the customer and inventory families and the
// suppliers), starting at `from` (a number, a category or unused), or the rows
// of a scratch file after Alphasort / Writebestsellers.
ListFill Listingfill(int mode, int64_t from = 1);

// One printed listing: its entries, drawn one by one. Fetch() finds the next
// entry (false at the end), Draw() draws the one found, Reset() starts over.
class ListingSource {
 public:
  virtual ~ListingSource() = default;
  virtual void Reset() = 0;
  virtual bool Fetch() = 0;
  virtual void Draw(ListingPage& page) = 0;
};
// The header text over the page number: the store's name, `title` and the date.
std::string Listingheader(const std::string& title);
// Prints a source through the printer dialog: `header` with "  Page: %d", the
// column heading (if any) on the first row, entries below. Each copy is whole.
void Printlisting(const std::string& header, const std::string& column_heading,
                  ListingSource& source);
// A source of ready rows, one text line each (for other lists to print).
std::unique_ptr<ListingSource> Rowsource(std::vector<std::string> rows);
// The source of a print mode over a number range (and a category, location text,
// year or custom ticks where the mode takes one).
struct PrintChoice {
  int64_t from = 1, to = kHighestNumber;
  int category = 0;
  std::string location;
  int year = 0;
  CustomFields fields{};
};
std::unique_ptr<ListingSource> Listingsource(int mode, const PrintChoice& choice);

// Items whose retail is below their cost: "number, description" rows (Windows-1252).
std::vector<std::pair<int64_t, std::string>> Retailbelowcost();

// The commands by mode (and 819, "List items with retail less than cost").
void Screenlisting(int mode);
void Printlistingmode(int mode);
void Datacostcheck();
void InstallListingHandlers();

}  // namespace tilo
