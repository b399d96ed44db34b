// SPDX-License-Identifier: MIT
// The report forms as the logic sees them. The screen installs the real ones;
// without a screen (tests, benchmarks) every dialog is cancelled, the report
// windows close at once and a walk runs in place under platform() progress.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "reports/item_summary.h"
#include "reports/sales_report.h"

namespace tilo {

// "Please specify the period" (INVEST): the lists and where they start; the
// dialog gives back the six indices chosen, -1 for a list with no selection.
struct PeriodDialog {
  std::vector<int> years;  // history_from_year up to this year, at most 39
  int day_index = 0, month_index = 0, year_index = 0;
  // start day, month, year, end day, month, year
  std::array<int, 6> chosen{-1, -1, -1, -1, -1, -1};
};

// "Item summary" (REPORT, REPOR2, REPOR8): the years offered, and the values
// and filters chosen, starting as the dialog shows them.
struct SummaryDialog {
  SummaryPeriod period = SummaryPeriod::Daily;
  std::vector<int> years;  // the present year and the eight before it
  int day = 1, month = 1, year = 2000;
  int end_day = 1, end_month = 1, end_year = 2000;
  SummaryFilters filters;
};

// The sales report's window (INVES4): the title, the fifteen lists as
// lists[level][column] in SalesColumn order, and what the printout needs.
struct SalesScreen {
  std::string title;  // the period text, Windows-1252
  SalesReport report;
  std::array<std::array<std::vector<std::string>, 5>, 3> lists;
};

class ReportView {
 public:
  virtual ~ReportView() = default;
  // False when cancelled.
  virtual bool choose_period(PeriodDialog&) { return false; }
  virtual bool choose_summary(SummaryDialog&) { return false; }
  // Modal; "&Print" calls Printsalesreport.
  virtual void show_sales_report(const SalesScreen&) {}
  // Modal (BANDS); "Print" and "Save as CSV text file" call Printitemsummary
  // and Saveitemsummary.
  virtual void show_item_summary(const SummaryScreen&) {}
  // Runs a walk that reports each day through the progress it is given; false
  // when the operator cancelled. The screen runs it off the interface thread
  // under a progress box, so the window keeps painting.
  virtual bool run_walk(const std::string& title,
                        const std::function<bool(const WalkProgress&)>& walk);
};

ReportView& report_view();
// nullptr puts back the one without a screen.
void install_report_view(ReportView* view);

// The item chosen for "Sales by item": its number, or 0 when none was chosen.
// Until the inventory search installs its own, the number is asked for and
// looked up in the number index.
using ReportItemFind = std::function<int64_t()>;
void SetReportItemFind(ReportItemFind find);

// INVEST as the period reports use it: the lists offered, the six choices
// taken into `s`. False when cancelled, or after "Invalid selection" when a list
// had no choice.
bool Choosesalesperiod(ReportSelection& s);

// The commands.
void Salesreportcommand(int command);  // SalesReport, SalesByStaff, SalesByItem
void Itemsummarycommand(SummaryPeriod period);
// Installs the work of every report command.
void InstallReportCommands();

}  // namespace tilo
