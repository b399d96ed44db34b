// SPDX-License-Identifier: MIT
#include "inventory/items.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "core/activity_log.h"
#include "core/clock.h"
#include "core/inventory.h"
#include "core/number_index.h"
#include "core/record_batch.h"
#include "core/settings.h"
#include "core/state.h"
#include "core/text.h"
#include "core/write_batch.h"
#include "platform/sounds.h"
#include "sale/basket.h"
#include "sale/pricing.h"
#include "sale/screen.h"

namespace tilo {
namespace {

constexpr const char* kProblem = "Problem";
constexpr float kPriceLimit = 20000.00f;

InventoryView silent_view;
InventoryView* current_view = &silent_view;
ItemDescriptionFind description_find;

void Sound(int id) {
  if (G().settings.sound_off != 2) platform().play_sound(id);
}

void Refuse(const char* message) {
  Sound(kSoundRefused);
  Message(message, kProblem);
}

bool CostHidden() {
  return G().screen.restricted_clerk == 2 && G().settings.hide_cost == 2;
}

size_t DescriptionLength(const FilmRecord& r) {
  return FieldText(r.description).size();
}

FilmRecord BlankRecord() {
  FilmRecord r;
  std::memset(static_cast<void*>(&r), 0, sizeof r);
  r.own_picture = 0;
  r.stock_picture = 1;
  return r;
}

Date Today() {
  Datestamp();
  return {G().now.year, G().now.month, G().now.day};
}

int DefaultCategory() {
  const int32_t c = G().settings.default_category;
  return c > 0 ? c - 1 : 14;
}

// The number offered, or an empty "Number" for the scan.
void OfferNumber(FilmRecord& r, bool& blank, bool blank_form) {
  r.number = Nextfreenumber(blank_form);
  blank = G().settings.no_offer_new_inventory == 1;
  if (blank) r.number = 0;
}

std::string NumberText(int64_t n) {
  return std::to_string(static_cast<long long>(n));
}

bool BundleRowSelected(const FilmRecord& r, int slot) {
  return NumberInRange(LeadingNumber(FieldText(BundleItem(r, slot), 20)));
}

void Amendbundle() {
  BundleForm form;
  form.amend = true;
  form.record = G().film;
  const int64_t number = form.record.number;
  for (int slot = 1; slot <= 6; ++slot) {
    const int64_t n = LeadingNumber(FieldText(BundleItem(form.record, slot), 20));
    if (NumberInRange(n) && G().films.Fetch(n, &G().film_bundle) == n)
      form.component_text[slot - 1] = FieldText(G().film_bundle.description);
  }
  if (!inventory_view().edit_bundle(form)) return;
  if (form.record.number != number) {
    Message("Number cannot be changed", kProblem);
    return;
  }
  if (DescriptionLength(form.record) < 2) {
    Refuse("The title must have at least two characters.");
    return;
  }
  G().film = form.record;
  if (!WriteTogether(G().films, Rewritefilm)) return;
  G().films.UpdateNameKey(&G().film);
  Sound(kSoundAdded);
  Fillquickselect();
}

}  // namespace

InventoryView& inventory_view() {
  return *current_view;
}
void install_inventory_view(InventoryView* view) {
  current_view = view ? view : &silent_view;
}

void SetItemDescriptionFind(ItemDescriptionFind find) {
  description_find = std::move(find);
}

int64_t Findforprompt(const std::string& reply) {
  const std::string text = UpperCase(Utf8ToCp1252(reply)).substr(0, 34);
  const int64_t number = LeadingNumber(text);
  // Digits beyond the highest number are taken as description text.
  if (NumberInRange(number)) return Fetchfilm(number);
  if (text.empty() || !description_find) return 0;
  return description_find(text);
}

std::string ItemFormTitle(ItemFormMode mode) {
  return ItemFormAdds(mode) ? "New inventory" : "Amend inventory";
}

bool ItemFormAdds(ItemFormMode mode) {
  return mode == ItemFormMode::New || mode == ItemFormMode::Copy;
}

int64_t Nextfreenumber(bool blank_form) {
  SettingsRecord& s = G().settings;
  int64_t base = s.last_inventory_number + 1;
  if (blank_form && base < 1) {
    s.last_inventory_number = 0;
    base = 1;
  }
  const NumberIndex& index = G().films.index;
  size_t slot = Findnumber(index, base);
  if (slot >= index.size() || index[slot].number != base) return base;
  // Taken: the first gap in the run of numbers that follows it.
  int64_t last = base;
  for (++slot; slot < index.size() && index[slot].number == last + 1; ++slot) ++last;
  return last + 1;
}

ItemForm Newitemform() {
  ItemForm form;
  form.mode = ItemFormMode::New;
  form.record = BlankRecord();
  FilmRecord& r = form.record;
  OfferNumber(r, form.number_blank, true);
  r.tax = G().settings.default_tax_code;
  r.display_category = DefaultCategory();
  Setdateadded(r, Today());
  return form;
}

const char* Checknewitem(const FilmRecord& r) {
  if (!NumberInRange(r.number)) return "Number outside range.";
  if (DescriptionLength(r) < 2) return "The description must have at least two characters.";
  if (r.display_category < 0 || r.display_category > 18) return "Invalid category";
  if (!MoneyAbove(r.retail_price, 0)) return "Invalid retail price";
  if (MoneyAbove(r.retail_price, kPriceLimit)) return "Invalid retail price, limit 20000.00";
  if (r.quantity < 0) return "Invalid quantity in stock";
  if (!MoneyAbove(r.cost_price, 0)) return "Invalid cost price";
  if (MoneyAbove(r.cost_price, kPriceLimit)) return "Invalid cost price, limit 20000.00";
  return nullptr;
}

const char* Checkamenditem(const FilmRecord& r, int64_t original_number) {
  if (r.number != original_number) return "Number cannot be changed";
  if (DescriptionLength(r) < 2) return "The title must have at least two characters.";
  if (MoneyAbove(r.cost_price, kPriceLimit)) return "Invalid cost price, limit 20000.00";
  if (MoneyAbove(r.retail_price, kPriceLimit)) return "Invalid retail price, limit 20000.00";
  return nullptr;
}

void Normaliseretail(FilmRecord& r) {
  r.retail_price = std::strtof(MoneyText(r.retail_price).c_str(), nullptr);
}

void Clearloanfields(FilmRecord& r) {
  auto* bytes = reinterpret_cast<unsigned char*>(&r);
  r.loan_number = 0;
  bytes[1834] = 0;
  bytes[1839] = ' ';
  bytes[1840] = 0;
  std::memset(bytes + 1777, 0, 9);
  std::memset(bytes + 1850, 0, 24);
}

void Setdateadded(FilmRecord& r, const Date& date) {
  char text[20];
  std::snprintf(text, sizeof text, "%02d/%02d/%d", date.day, date.month, date.year);
  SetField(r.date_added, text);
}

std::optional<Date> Dateadded(const FilmRecord& r) {
  const std::string text = FieldText(r.date_added);
  if (text.size() <= 8) return std::nullopt;
  Date d{std::atoi(text.c_str() + 6), std::atoi(text.c_str() + 3), std::atoi(text.c_str())};
  if (d.day < 1 || d.day > 31 || d.month < 1 || d.month > 12 || d.year <= 1980) return std::nullopt;
  return d;
}

std::string Categoryname(int category) {
  return Cp1252ToUtf8(CategoryCode(G().settings, category + 1));
}

bool ReckonerTax1(int32_t tax) {
  return tax == 1 || tax == 2;
}
bool ReckonerTax2(int32_t tax) {
  return tax == 1 || tax == 3;
}

std::optional<std::string> Readyreckoner(const std::string& gross_text, bool tax1, bool tax2) {
  const float gross = std::strtof(gross_text.substr(0, 9).c_str(), nullptr);
  if (!(gross > 0)) return std::string("0.0");
  const int64_t r1 = G().settings.tax1_rate, r2 = G().settings.tax2_rate;
  int64_t rate = 0;
  if (tax1 && tax2)
    rate = (r1 > 0 && r2 > 0) ? r1 + r2 : (r1 > 0 ? r1 : r2);
  else if (tax1)
    rate = r1;
  else if (tax2)
    rate = r2;
  if (rate <= 0) return std::nullopt;
  const float factor = 10000.0f / float(rate + 10000);
  return MoneyText(gross * factor);
}

std::vector<ViewLine> Itemviewlines(const FilmRecord& r) {
  static const char* kTax[] = {"Non taxable", "Tax 1 and 2", "Tax 1", "Tax 2"};
  auto text = [](const std::string& bytes) { return Cp1252ToUtf8(bytes); };
  auto yes_no = [](int32_t v) { return std::string(v == 2 ? "Yes" : "No"); };
  std::vector<ViewLine> lines;
  lines.push_back({"Number", NumberText(r.number)});
  lines.push_back({"Description", text(FieldText(r.description))});
  lines.push_back({"SKU 1", text(FieldText(r.sku1))});
  lines.push_back({"SKU 2", text(FieldText(r.sku2))});
  lines.push_back({"SKU 3", text(FieldText(r.sku3))});
  lines.push_back({"SKU 4", text(FieldText(r.sku4))});
  lines.push_back({"Cost price", CostHidden() ? std::string() : MoneyText(r.cost_price)});
  lines.push_back({"Trade price", MoneyText(r.trade_price)});
  lines.push_back({"Retail price", MoneyText(r.retail_price)});
  lines.push_back({"Order code", text(FieldText(r.order_code))});
  lines.push_back({"On order", std::to_string(r.on_order)});
  lines.push_back({"Order quantity", std::to_string(r.order_quantity)});
  lines.push_back({"Minimum order", std::to_string(r.minimum_order)});
  lines.push_back({"Restock level", std::to_string(r.reorder_quantity)});
  lines.push_back({"Tax", r.tax >= 0 && r.tax <= 3 ? kTax[r.tax] : std::to_string(r.tax)});
  lines.push_back({"Quantity in stock", std::to_string(r.quantity)});
  std::string added = FieldText(r.date_added);
  if (std::optional<Date> d = Dateadded(r))
    added = platform().short_date(d->year, d->month, d->day);
  else
    added = text(added);
  lines.push_back({"Date added", added});
  lines.push_back({"Delivery", MoneyText(r.delivery)});
  lines.push_back({"Weight", MoneyText(r.weight)});
  lines.push_back({"Committed", std::to_string(r.committed)});
  lines.push_back({"Delivery lead", std::to_string(r.delivery_lead)});
  lines.push_back({"Labels to print", std::to_string(r.labels_to_print)});
  lines.push_back({"SOR", r.sor == 1 ? "YES" : "NO"});
  lines.push_back({"Special order", std::to_string(r.special_order)});
  lines.push_back({"Display category", Categoryname(r.display_category)});
  lines.push_back({"Omit from quick select buttons", yes_no(r.omit_quick_select)});
  lines.push_back({"Location", text(FieldText(r.location))});
  lines.push_back({"Web URL", text(FieldText(r.website))});
  lines.push_back({"Web image URL", text(FieldText(r.web_image))});
  char sell_by[48] = "Not set";
  if (r.sell_by_day || r.sell_by_month || r.sell_by_year)
    std::snprintf(sell_by, sizeof sell_by, "D: %d M: %d Y: %d", r.sell_by_day, r.sell_by_month,
                  r.sell_by_year + 2011);
  lines.push_back({"Sell by", sell_by});
  lines.push_back({"Age alert", r.age_warning ? std::to_string(r.age_warning) : "No"});
  lines.push_back({"Buy one get one free", yes_no(r.buy_one_get_one)});
  lines.push_back({"Notes", text(FieldText(r.notes))});
  return lines;
}

void Showitem() {
  for (;;) {
    if (G().film.is_bundle == 2) {
      inventory_view().view_bundle(G().film);
      return;
    }
    if (!inventory_view().view_item(G().film)) return;
    // "Next": the entry with the next higher number; the view closes at the end.
    const NumberIndex& index = G().films.index;
    const size_t slot = Findnumber(index, G().film.number + 1);
    if (slot >= index.size() || Fetchfilm(index[slot].number) == 0) return;
  }
}

void Newline() {
  ItemForm form = Newitemform();
  for (;;) {
    const ItemButton button = inventory_view().edit_item(form);
    if (button == ItemButton::Cancel) break;
    FilmRecord& r = G().film;
    r = form.record;
    Normaliseretail(r);
    if (const char* refusal = Checknewitem(r)) {
      Refuse(refusal);
      form.mode = ItemFormMode::Refused;
      form.record = r;
      form.number_blank = false;
      continue;
    }
    Clearloanfields(r);
    if (!WriteTogether(G().films, [&] { return Insertnumber(r); })) break;
    Fillquickselect();
    if (button == ItemButton::Ok) {
      Sound(kSoundAdded);
      break;
    }
    if (button == ItemButton::Next) {
      form = Newitemform();
      continue;
    }
    // "&Copy": the record just saved, under the next free number.
    form.mode = ItemFormMode::Copy;
    form.record = r;
    OfferNumber(form.record, form.number_blank, false);
  }
  Fillquickselect();
}

void Amendinventory() {
  std::optional<std::string> reply = platform().prompt("Amend item", "Amend item");
  if (!reply || Findforprompt(*reply) == 0) return;
  if (G().film.is_bundle == 2) {
    Amendbundle();
    return;
  }
  ItemForm form;
  form.mode = ItemFormMode::Amend;
  form.record = G().film;
  form.cost_hidden = CostHidden();
  const int64_t number = form.record.number;
  if (inventory_view().edit_item(form) == ItemButton::Cancel) return;
  Normaliseretail(form.record);
  if (const char* refusal = Checkamenditem(form.record, number)) {
    // Only the description plays the error sound.
    if (DescriptionLength(form.record) < 2 && form.record.number == number)
      Refuse(refusal);
    else
      Message(refusal, kProblem);
    return;
  }
  G().film = form.record;
  if (!WriteTogether(G().films, Rewritefilm)) return;
  G().films.UpdateNameKey(&G().film);
  Sound(kSoundAdded);
  Fillquickselect();
}

void Deleteinventory() {
  std::optional<std::string> reply =
      platform().prompt("Delete item number / description", "Delete item");
  if (!reply || Findforprompt(*reply) == 0) return;
  const int64_t number = G().film.number;
  const std::string description = FieldText(G().film.description);
  char title[80];
  std::snprintf(title, sizeof title, "%lld Item: %s", static_cast<long long>(number),
                description.c_str());
  if (Message("Are you sure?", Cp1252ToUtf8(title), Buttons::OkCancel) != Answer::Ok) return;
  Timestamp();
  const std::string entry = "\r\nItem " + NumberText(number) + ", " + description +
                            " deleted.  Date: " + LogStamp() + "\r\n";
  // The deletion and its line in the log are written together.
  if (!WriteTogether(G().films, Removenumber, [&](WriteBatch& batch) {
        batch.Append(kActivityLog, entry, "Data file: film.dat, not present.", "Fatal error");
      }))
    return;
  Fillquickselect();
}

void Newbundle() {
  BundleForm form;
  form.record = BlankRecord();
  OfferNumber(form.record, form.number_blank, true);
  form.record.display_category = 14;
  Setdateadded(form.record, Today());
  // The quantities sit unaligned in the packed record: stored as bytes.
  int32_t ones[std::size(form.record.bundle_quantity)];
  std::fill(std::begin(ones), std::end(ones), 1);
  std::memcpy(&form.record.bundle_quantity, ones, sizeof ones);
  for (;;) {
    if (!inventory_view().edit_bundle(form)) return;
    FilmRecord r = form.record;
    const char* refusal = nullptr;
    if (!NumberInRange(r.number))
      refusal = "Number outside range.";
    else if (DescriptionLength(r) < 2)
      refusal = "The description must have at least two characters.";
    else if (r.display_category < 0 || r.display_category > 18)
      refusal = "Invalid category";
    else {
      bool any = false;
      for (int slot = 1; slot <= 6; ++slot) any = any || BundleRowSelected(r, slot);
      if (!any) refusal = "No items selected";
    }
    if (refusal) {
      Refuse(refusal);
      form.number_blank = false;
      continue;
    }
    Clearloanfields(r);
    r.is_bundle = 2;
    G().film = r;
    if (!WriteTogether(G().films, [&] { return Insertnumber(r); })) return;
    Sound(kSoundAdded);
    Fillquickselect();
    return;
  }
}

bool Selectcomponent(BundleForm& form, int row, const std::string& reply) {
  const int64_t n = LeadingNumber(reply);
  if (!NumberInRange(n) || G().films.Fetch(n, &G().film_bundle) != n) return false;
  if (G().film_bundle.is_bundle == 2) {
    Message("Bundle may not contain a bundle", kProblem);
    return false;
  }
  // A component slot holds at most 18 digits and its terminator.
  char* slot = BundleItem(form.record, row + 1);
  const std::string digits = NumberText(n);
  std::memset(slot, 0, 20);
  std::memcpy(slot, digits.data(), std::min<size_t>(digits.size(), 18));
  form.component_text[row] = FieldText(G().film_bundle.description);
  return true;
}

void Removecomponent(BundleForm& form, int row) {
  std::memset(BundleItem(form.record, row + 1), 0, 20);
  form.component_text[row].clear();
}

}  // namespace tilo
