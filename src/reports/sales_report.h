// SPDX-License-Identifier: MIT
// The sales report: the history of a period added up by day, month and year in
// five money columns, for the whole shop, one clerk or one item. Sums are 64-bit
// floats rounded only when written with two decimals.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "documents/print_target.h"
#include "reports/report_selection.h"
#include "reports/report_walk.h"

namespace tilo {

// The columns in the order the sums are kept.
enum SalesColumn { kSumNonTaxable = 0, kSumTaxable, kSumTax1, kSumTax2, kSumTotal };
using SalesSums = std::array<double, 5>;

enum class SalesLevel { Day = 0, Month, Year };

struct SalesRow {
  CalendarDate date;  // month rows: month and year; year rows: the year
  SalesSums sums{};
};

struct SalesReport {
  std::vector<SalesRow> days, months, years;
  SalesSums grand{};
};

struct SalesFilter {
  int32_t staff_clerk = 0;  // 0: every clerk
  int64_t report_item = 0;  // not 0: the lines of that item only ("Sales by item")
};

// Walks the period day by day. A day with no saleslog.dat is passed over; in the
// plain report every other day gives a row, in the item report (which needs
// itemslog.dat too) only a day whose total is not 0. The open month and year are
// closed again after the walk, on the date it stopped at. None when cancelled.
std::optional<SalesReport> Walksales(const CalendarDate& start, const CalendarDate& end,
                                     const SalesFilter& filter, const WalkProgress& progress = {});

// The label of a row: the date as "ddd d MMM yy" (else "%d/%d/%d"), "%d of %d"
// (month, year) or the year.
std::string Salesrowlabel(SalesLevel level, const SalesRow& row);
// The texts of one list: "%s  %.2f", label and the sum of that column.
std::vector<std::string> Saleslisttexts(const SalesReport& report, SalesLevel level,
                                        SalesColumn column);
// "Sales report: <start> to <end>" ("Staff sales report: " with a clerk).
std::string Salesperiodtext(const ReportSelection& selection, bool staff);

// The one page of the printout: store, time and date; the period; the grand sums.
void Drawsalesreport(PrintTarget& target, const SalesReport& report,
                     const std::string& period_text);
// "&Print": the printer dialog, then one page per copy.
void Printsalesreport(const SalesReport& report, const std::string& period_text);

}  // namespace tilo
