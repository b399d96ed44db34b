// SPDX-License-Identifier: MIT
// The item summaries: what was sold over a day, a week, a month or a period, one
// row per item with the best seller first, filtered by payment and category;
// their printout and CSV file.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "documents/print_target.h"
#include "reports/report_selection.h"
#include "reports/report_walk.h"

namespace tilo {

enum class SummaryPeriod { Daily, Weekly, Monthly, Period };

// One line taken from itemslog.dat; a refund's amounts negated. Sales of one item
// merge into the first: quantity counts them.
struct SummaryEntry {
  int64_t category = 0;
  int64_t number = 0;
  char description[40]{};
  float non_taxable = 0, taxable = 0, tax1 = 0, tax2 = 0, cost = 0, discount = 0, line_total = 0;
  int32_t quantity = 1;
  char type = 0;  // first letter of the transaction's payment_type
};

struct ItemSummary {
  std::vector<SummaryEntry> entries;  // in row order, merged entries left out
  double retail_nett = 0;             // non_taxable + taxable
  double cost_total = 0;
  double retail_total = 0;
  int32_t items_counted = 0;  // lines taken, merged or not
};

// The days a summary reads and the selection date its walk leaves behind: the
// week's seventh day, the day after the month's last (32 January), the day after
// the period.
struct SummaryDays {
  std::vector<CalendarDate> days;
  CalendarDate after;
};
SummaryDays Summarydays(SummaryPeriod period, const ReportSelection& selection);

// Reads the days: the lines of every sale the filters let through, merged by
// item number (not refunds, not number 0) and ordered by quantity. None when
// cancelled. Throws std::bad_alloc when memory runs out.
std::optional<ItemSummary> Summarizeitems(const std::vector<CalendarDate>& days,
                                          const SummaryFilters& filters,
                                          const WalkProgress& progress = {});

// Orders by descending quantity exactly as the exchange loop "for each i, for
// each later j, swap when i's quantity is less than j's" does, ties included,
// without its quadratic cost. Entries of quantity 0 are dropped.
void Sortbyquantity(std::vector<SummaryEntry>& entries);

// A row: "number, description, category, cost, nett, tax, total, quantity",
// "Refund: " in front of a refund (Windows-1252).
std::string Summaryrow(const SummaryEntry& entry);
std::vector<std::string> Summaryrows(const ItemSummary& summary);
// "Items: %d, Cost: %.2f, Retail: %.2f"
std::string Summarytotals(const ItemSummary& summary);
// The CSV file: each row with CR LF, then the totals line with no line end; UTF-8.
std::string Summarycsv(const std::vector<std::string>& rows, const std::string& totals);

// The window title (set before the walk) and the page headers (after it).
std::string Summarytitle(SummaryPeriod period, const ReportSelection& before);
std::string Summaryheader(SummaryPeriod period, const ReportSelection& after,
                          const ReportSelection& saved, int page);

// Everything the window, the printout and the file need.
struct SummaryScreen {
  SummaryPeriod period = SummaryPeriod::Daily;
  std::string title;
  ReportSelection after;  // the selection as the walk left it
  ReportSelection saved;  // the selection before the walk (the period's header)
  ItemSummary summary;
  std::vector<std::string> rows;
};

// "Print": the printer dialog, then as many pages as the rows need, for each copy.
void Printitemsummary(const SummaryScreen& screen);
// One page from `position` on; adds 1 to page_number when the page fills.
void Drawsummarypage(PrintTarget& target, const SummaryScreen& screen, size_t& position);
// "Save as CSV text file": asks for the name "SA<month><day>.CSV" and writes it.
void Saveitemsummary(const SummaryScreen& screen);

}  // namespace tilo
