// SPDX-License-Identifier: MIT
// The reports computed the slow way, step by step as the shop's old routines
// did them: the item file read again for every sale, every line its own entry,
// the merge and the exchange sort quadratic. Tests hold the fast code to these
// row for row; the benchmarks show what the speed-up buys.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "reports/item_summary.h"
#include "reports/report_selection.h"

namespace tilo {

struct LiteralSales {
  // lists[level][column]: Day, Month, Year by the five sums in SalesColumn order.
  std::array<std::array<std::vector<std::string>, 5>, 3> lists;
  std::array<double, 5> grand{};
};
LiteralSales LiteralSalesReport(const ReportSelection& selection, bool by_item);

struct LiteralSummary {
  std::vector<std::string> rows;
  std::string totals;
  int after_day = 0, after_month = 0, after_year = 0;  // where the walk left the date
};
LiteralSummary LiteralItemSummary(SummaryPeriod period, const ReportSelection& selection);

// for i, for j after i: exchange when quantity i < quantity j.
void LiteralExchangeSort(std::vector<SummaryEntry>& entries);

// The bytes of "Export daily items CSV" for one day ("" when a log is missing).
std::string LiteralDayExport(int year, int month, int day);

}  // namespace tilo
