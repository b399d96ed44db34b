// SPDX-License-Identifier: MIT
#include "reports/item_export.h"

#include <algorithm>
#include <cinttypes>
#include <cstdlib>
#include <optional>

#include "core/history.h"
#include "core/state.h"
#include "core/text.h"
#include "platform/files.h"

namespace tilo {
namespace {

std::string Exportrow(const ItemsLogRecord& l, const SalesLogRecord& r, bool with_category) {
  std::string row = Format("%" PRId64 ",%s,", l.number, FieldText(l.description).c_str());
  if (with_category) row += Format("%" PRId64 ",", l.category);
  row += Format("%.2f,%.2f,%.2f,%.2f,%.2f,%.2f,%" PRId64 ",%d,%s,", double(l.non_taxable),
                double(l.taxable), double(l.tax1), double(l.tax2), double(l.cost),
                double(l.line_total), l.transaction_number, l.clerk,
                FieldText(r.payment_type).c_str());
  row.pop_back();  // no comma after the last column
  return row;
}

// A number typed at a prompt, refused (none) when cancelled, empty or outside
// low..high.
std::optional<int> AskNumber(const std::string& text, const std::string& title, int initial,
                             int low, int high, std::string* typed_text = nullptr) {
  std::optional<std::string> typed = platform().prompt(text, title, std::to_string(initial));
  if (!typed || typed->empty()) return std::nullopt;
  const long value = std::strtol(typed->c_str(), nullptr, 10);
  if (value < low || value > high) return std::nullopt;
  if (typed_text) *typed_text = *typed;
  return int(value);
}

struct ExportChoice {
  CalendarDate date;
  std::string file;
};

std::optional<ExportChoice> AskExport(const char* first_prompt, const char* title, char prefix) {
  const LocalTime now = platform().now();
  ExportChoice c;
  std::string year_text;
  auto day = AskNumber(first_prompt, title, now.day, 1, 31);
  if (!day) return std::nullopt;
  auto month = AskNumber("Please enter the month (1-12)", title, now.month, 1, 12);
  if (!month) return std::nullopt;
  auto year = AskNumber("Please enter the year (yyyy)", title, now.year, 2000, 4000, &year_text);
  if (!year) return std::nullopt;
  c.date = {*year, *month, *day};
  // The third and fourth characters of the year as it was typed.
  year_text.resize(std::max<size_t>(year_text.size(), 4), ' ');
  const std::string name =
      Format("S%c%c%c%02d%02d.CSV", prefix, year_text[2], year_text[3], *month, *day);
  std::optional<std::string> file = platform().prompt("Enter the file name:", title, name);
  if (!file || file->empty()) return std::nullopt;
  c.file = *file;
  return c;
}

void WriteExport(const std::string& file, const std::vector<std::string>& rows) {
  if (!ReplaceFile(file, Exportcsv(rows))) {
    Message("Unable to open file.", "Problem");
    return;
  }
  Message("Complete.", "File export");
}

}  // namespace

ExportDay Dayitemrows(const CalendarDate& d, bool with_category, std::vector<std::string>& rows) {
  DayLog<SalesLogRecord> sales;
  DayLog<ItemsLogRecord> items;
  if (!sales.read(SalesLogPath(d.year, d.month, d.day))) return ExportDay::NoSalesLog;
  if (!items.read(ItemsLogPath(d.year, d.month, d.day))) return ExportDay::NoItemsLog;
  std::vector<uint32_t> order(items.size());
  for (uint32_t i = 0; i < order.size(); ++i) order[i] = i;
  std::stable_sort(order.begin(), order.end(), [&](uint32_t a, uint32_t b) {
    return items[a].transaction_number < items[b].transaction_number;
  });
  for (const SalesLogRecord& r : sales) {
    if (r.payment_type[0] == 'P' || r.payment_type[0] == 'R') continue;
    auto at = std::lower_bound(
        order.begin(), order.end(), int64_t(r.transaction_number),
        [&](uint32_t i, int64_t number) { return items[i].transaction_number < number; });
    for (; at != order.end() && items[*at].transaction_number == r.transaction_number; ++at)
      rows.push_back(Exportrow(items[*at], r, with_category));
  }
  return ExportDay::Done;
}

std::string Exportcsv(const std::vector<std::string>& rows) {
  std::string bytes;
  for (const std::string& row : rows) bytes += row + "\r\n";
  return Cp1252ToUtf8(bytes);
}

bool Writemailitems(const CalendarDate& today) {
  std::vector<std::string> rows;
  switch (Dayitemrows(today, false, rows)) {
    case ExportDay::NoSalesLog:
      Message("No items for that day.", "Problem");
      return false;
    case ExportDay::NoItemsLog:
      return false;
    case ExportDay::Done:
      break;
  }
  if (ReplaceFile("ES.CSV", Exportcsv(rows))) return true;
  Message("Unable to open file.", "Problem");
  return false;
}

void Exportdailyitems() {
  auto c = AskExport("Please enter the day (1-31)", "Export daily items CSV", 'A');
  if (!c) return;
  std::vector<std::string> rows;
  switch (Dayitemrows(c->date, true, rows)) {
    case ExportDay::NoSalesLog:
      Message("No items for that day.", "Problem");
      return;
    case ExportDay::NoItemsLog:
      return;
    case ExportDay::Done:
      break;
  }
  WriteExport(c->file, rows);
}

void Exportweeklyitems() {
  auto c = AskExport("Please enter the first day (1-31)", "Export weekly items CSV", 'W');
  if (!c) return;
  std::vector<std::string> rows;
  CalendarDate date = c->date;
  for (int i = 0; i < 7; ++i) {
    if (i > 0) Nextreportday(date);
    Dayitemrows(date, true, rows);  // a day with no files is passed over
  }
  WriteExport(c->file, rows);
}

}  // namespace tilo
