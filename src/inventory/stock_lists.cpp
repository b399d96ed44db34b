// SPDX-License-Identifier: MIT
#include "inventory/stock_lists.h"

#include <algorithm>
#include <cstdio>
#include <tuple>

#include "core/clock.h"
#include "core/film_scan.h"
#include "core/state.h"
#include "core/text.h"
#include "documents/print_job.h"
#include "platform/files.h"
#include "reports/report_forms.h"
#include "sale/commands.h"

namespace tilo {
namespace {

constexpr const char* kMissing = "Data file film.dat, not present.";

std::string Format(const char* format, auto... args) {
  char text[512];
  std::snprintf(text, sizeof text, format, args...);
  return text;
}

bool SellByPassed(const FilmRecord& r, const LocalTime& today) {
  if (r.sell_by_day == 0 || r.sell_by_month == 0 || r.sell_by_year == 0) return false;
  // A sell-by day of today is still good: only an earlier date has expired.
  return std::tuple(r.sell_by_year + 2011, int32_t(r.sell_by_month), int32_t(r.sell_by_day)) <
         std::tuple(today.year, today.month, today.day);
}

bool ByNumber(StockList list) {
  return list == StockList::Reorder || list == StockList::ReorderByCode;
}

struct PrintHeadings {
  const char* page;
  const char* second;  // nullptr: none
};

PrintHeadings Headings(StockList list) {
  switch (list) {
    case StockList::Reorder:
      return {"%s Reorder list: %s      Page: %d",
              "Item, Restock level, In stock, On order, Order quantity, Order code"};
    case StockList::ReorderByCode:
      return {"%s Reorder list: %s      Page: %d",
              "Order code, Item, Restock level, In stock, On order, Order quantity"};
    case StockList::OutOfStock:
      return {"%s  Out of stock list: %s      Page: %d",
              "Item, Reorder level, On order, Order qty, Code"};
    case StockList::SpecialOrders:
      return {"%s  Special order list: %s      Page: %d", nullptr};
    case StockList::SellBy:
      break;
  }
  return {"%s  Sell by list: %s      Page: %d", nullptr};
}

unsigned char Fold(unsigned char c) {
  return c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c;
}

}  // namespace

bool Onstocklist(StockList list, const FilmRecord& r, const LocalTime& today) {
  if (r.number < 1) return false;
  const bool bundle = r.is_bundle == 2;
  switch (list) {
    case StockList::Reorder:
    case StockList::ReorderByCode:
      return !bundle && r.reorder_quantity >= r.quantity;
    case StockList::OutOfStock:
      return !bundle && r.quantity < 1;
    case StockList::SpecialOrders:
      return r.special_order > 0;
    case StockList::SellBy:
      return SellByPassed(r, today);
  }
  return false;
}

std::string Stocklistrow(StockList list, const FilmRecord& r) {
  const long long n = r.number;
  const std::string d = FieldText(r.description), code = FieldText(r.order_code);
  switch (list) {
    case StockList::Reorder:
      return Format("%lld, %s, %d,%d,%d,%d, %s", n, d.c_str(), r.reorder_quantity, r.quantity,
                    r.on_order, r.order_quantity, code.c_str());
    case StockList::ReorderByCode:
      return Format("%s, %lld, %s, %d,%d,%d,%d", code.c_str(), n, d.c_str(), r.reorder_quantity,
                    r.quantity, r.on_order, r.order_quantity);
    case StockList::OutOfStock:
      return Format("%lld, %s, %d,%d,%d, %s", n, d.c_str(), r.reorder_quantity, r.on_order,
                    r.order_quantity, code.c_str());
    case StockList::SpecialOrders:
      return Format("%lld, %s, %d, %d", n, d.c_str(), r.quantity, r.special_order);
    case StockList::SellBy:
      break;
  }
  return Format("%lld, %s, D:%d M:%d Y:%d", n, d.c_str(), r.sell_by_day, r.sell_by_month,
                r.sell_by_year + 2011);
}

const char* Stocklisttitle(StockList list) {
  switch (list) {
    case StockList::Reorder:
    case StockList::ReorderByCode:
      return "Inventory reorder list";
    case StockList::OutOfStock:
      return "Out of stock list";
    case StockList::SpecialOrders:
      return "Special order list";
    case StockList::SellBy:
      break;
  }
  return "Sell by list";
}

const char* Stocklistcolumns(StockList list) {
  switch (list) {
    case StockList::Reorder:
      return "Reorder level, In stock, On order, Order qty, Code";
    case StockList::ReorderByCode:
      return "Order code, Item, Reorder level, In stock, On order, Order qty";
    case StockList::OutOfStock:
      return "Item, Reorder level, On order, Order qty, Code";
    default:
      return "";
  }
}

void Sortstockrows(std::vector<std::string>& rows) {
  std::stable_sort(rows.begin(), rows.end(), [](const std::string& a, const std::string& b) {
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
      return Fold(uint8_t(x)) < Fold(uint8_t(y));
    });
  });
}

std::optional<std::vector<std::string>> Stocklistrows(StockList list) {
  if (!FileExists(kFilmFile)) {
    Message(kMissing, "Fatal error");
    return std::nullopt;
  }
  Datestamp();
  const LocalTime today = G().now;
  std::vector<std::string> rows;
  if (*Stocklistcolumns(list)) rows.push_back(Stocklistcolumns(list));
  // The reorder lists run in number order: read in file order, a block at a
  // time, then put in order by number; the rows are the same, the reads far fewer.
  std::vector<std::pair<int64_t, std::string>> found;
  const ScanEnd end = Scanfilms(Stocklisttitle(list), [&](const FilmRecord& r) {
    if (Onstocklist(list, r, today)) found.emplace_back(int64_t(r.number), Stocklistrow(list, r));
  });
  if (end == ScanEnd::Unreadable) Message("Unable to read film.dat", "Problem");
  if (end != ScanEnd::Finished) return std::nullopt;
  if (ByNumber(list))
    std::sort(found.begin(), found.end(),
              [](const auto& a, const auto& b) { return a.first < b.first; });
  for (auto& f : found) rows.push_back(std::move(f.second));
  if (list == StockList::ReorderByCode) Sortstockrows(rows);
  return rows;
}

void Printstocklist(StockList list, const std::vector<std::string>& rows) {
  // The screen's column titles stand first; the print has headings of its own,
  // but for the list by order code, whose titles sort in among the rows.
  const size_t first = list == StockList::ReorderByCode || !*Stocklistcolumns(list) ? 0 : 1;
  Datestamp();
  const LocalTime now = G().now;
  const std::string date = Utf8ToCp1252(Localdate(now.year, now.month, now.day, "%2d/%2d/%d"));
  const std::string store = FieldText(G().heading.site_name);
  const PrintHeadings headings = Headings(list);
  size_t next = first;
  Runpagedjob([&](PrintTarget& target) {
    // Each copy is whole: the place goes back to the start with page 1.
    if (G().print_job.page_number == 1) next = first;
    ListingPage page = Startlistingpage(
        target, Format(headings.page, store.c_str(), date.c_str(), int(G().print_job.page_number)));
    page.row = 1;
    if (headings.second) page.text(0, headings.second);
    page.row = 3;
    while (next < rows.size()) {
      page.text(0, rows[next++]);
      ++page.row;
      if (next < rows.size() && Listingpagefull(page)) return;
    }
  });
}

void Stocklistcommand(StockList list) {
  std::optional<std::vector<std::string>> rows = Stocklistrows(list);
  if (!rows) return;
  std::vector<std::string> shown;
  shown.reserve(rows->size());
  for (const std::string& row : *rows) shown.push_back(Cp1252ToUtf8(row));
  period_list_view().show_list(Stocklisttitle(list), shown,
                               [list, &rows] { Printstocklist(list, *rows); });
}

void InstallStockListHandlers() {
  using C = Command;
  SetHandler(C::ReorderList, [](int) { Stocklistcommand(StockList::Reorder); });
  SetHandler(C::ReorderListByOrderCode, [](int) { Stocklistcommand(StockList::ReorderByCode); });
  SetHandler(C::OutOfStock, [](int) { Stocklistcommand(StockList::OutOfStock); });
  SetHandler(C::SpecialOrders, [](int) { Stocklistcommand(StockList::SpecialOrders); });
  SetHandler(C::SellByExpired, [](int) { Stocklistcommand(StockList::SellBy); });
}

}  // namespace tilo
