// SPDX-License-Identifier: MIT
// Inventory maintenance: adding items (with the next free number, "&Copy" and
// "&Next"), amending and deleting them, bundles, and the read-only views. The
// rules live here; the forms only show a record and hand back what was typed,
// through InventoryView.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/film_record.h"

namespace tilo {

// What form 800 is showing.
enum class ItemFormMode {
  New,      // "New inventory", with "&Copy" and "&Next"
  Copy,     // the same after "&Copy": the saved fields, a new number
  Refused,  // an add reopened after a refusal: "Amend inventory", "Number" read-only
  Amend,    // "Amend inventory" on a stored record
};

struct Date {
  int year = 0, month = 0, day = 0;
};

struct ItemForm {
  ItemFormMode mode = ItemFormMode::New;
  FilmRecord record{};
  // "Number" starts empty with the cursor in it, for a barcode scan.
  bool number_blank = false;
  // The cost of a stored record is kept from a clerk who may not see costs: the
  // form leaves "Cost price" empty and the stored cost stands.
  bool cost_hidden = false;
};

std::string ItemFormTitle(ItemFormMode mode);
bool ItemFormAdds(ItemFormMode mode);  // "&Copy" and "&Next" show

enum class ItemButton { Ok, Cancel, Copy, Next };

// The bundle form: the record, plus the description shown beside each
// component (Windows-1252).
struct BundleForm {
  bool amend = false;
  FilmRecord record{};
  std::string component_text[6];
  bool number_blank = false;
};

// Form 808: the record found, and the quantity received as typed. The form
// leaves the sell-by lists in record.sell_by_day, _month and _year (the row).
struct ReceiveForm {
  FilmRecord record{};
  std::string quantity;
};
enum class ReceiveButton { Ok, Next, Cancel };

// The forms of inventory maintenance as the logic sees them. The screen installs
// the real ones; the default answers Cancel to every form (tests script their own).
class InventoryView {
 public:
  virtual ~InventoryView() = default;
  // Form 800: shows `form` and, unless cancelled, leaves what was typed in
  // form.record (dates, rows and ticks already coded as the record stores them).
  virtual ItemButton edit_item(ItemForm& /*form*/) { return ItemButton::Cancel; }
  // View 801 on G().film; true for "Next".
  virtual bool view_item(const FilmRecord& /*record*/) { return false; }
  // Form BUNDLE; true on "OK" with form.record holding what was typed.
  virtual bool edit_bundle(BundleForm& /*form*/) { return false; }
  // View BUNDLE1.
  virtual void view_bundle(const FilmRecord& /*record*/) {}
  // Form 808, "Receive Inventory".
  virtual ReceiveButton receive_item(ReceiveForm& /*form*/) { return ReceiveButton::Cancel; }
};

InventoryView& inventory_view();
// nullptr puts back the one without a screen.
void install_inventory_view(InventoryView* view);

// The description search behind the prompts of Amend, Delete and Inventory
// received: text in, the item's number out with its record in G().film, or 0.
// Until the inventory search installs its own, nothing is found by description.
using ItemDescriptionFind = std::function<int64_t(const std::string& text)>;
void SetItemDescriptionFind(ItemDescriptionFind find);
// A prompt's reply: a number when it parses to 1 or more (fetched into G().film),
// else the description search. 0 when nothing was found.
int64_t Findforprompt(const std::string& reply);

// The next free number offered by a new form (`blank_form`) or a copy.
int64_t Nextfreenumber(bool blank_form);
// Form 800 as a new item opens: defaults, today's date, the next free number.
ItemForm Newitemform();

// The first of the add checks that fails, as its message; nullptr when all pass.
const char* Checknewitem(const FilmRecord& r);
// The same for an amend of the record that had `original_number`.
const char* Checkamenditem(const FilmRecord& r, int64_t original_number);
// The retail price as the value of its two-decimal text.
void Normaliseretail(FilmRecord& r);
// What add clears in every new record: the loan fields and the trailing words.
void Clearloanfields(FilmRecord& r);

// "date_added" as the date picker writes and reads it.
void Setdateadded(FilmRecord& r, const Date& date);
std::optional<Date> Dateadded(const FilmRecord& r);
// The 18 rows of "Display category", and a category's three letters (UTF-8).
std::string Categoryname(int category);

// The ready reckoner: a tax-inclusive price typed (up to 9 characters), with the
// ticks "Tax 1" and "Tax 2"; the price without tax as the form shows it, "0.0"
// for nothing above 0, none when no rate applies.
std::optional<std::string> Readyreckoner(const std::string& gross, bool tax1, bool tax2);
// The ticks that a tax code gives the ready reckoner.
bool ReckonerTax1(int32_t tax);
bool ReckonerTax2(int32_t tax);

// View 801: label and text of each line, in the order of the view.
struct ViewLine {
  std::string label, text;  // UTF-8
};
std::vector<ViewLine> Itemviewlines(const FilmRecord& r);
// Shows a found record: BUNDLE1 for a bundle, otherwise 801 with "Next" walking
// up the index; the view closes at its end.
void Showitem();

// The commands.
void Newline();
void Amendinventory();
void Deleteinventory();
void Newbundle();

// "Select" on a bundle row: the text of the "Item number" prompt; true when the
// row took the item (its number and description).
bool Selectcomponent(BundleForm& form, int row, const std::string& reply);
void Removecomponent(BundleForm& form, int row);

}  // namespace tilo
