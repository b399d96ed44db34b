// SPDX-License-Identifier: MIT
// The report commands from the menu to the window: the questions first, then the
// period dialog, the walk under its progress box, and the report's window.
#include <cstdlib>
#include <new>
#include <optional>

#include "core/inventory.h"
#include "core/state.h"
#include "inventory/item_find.h"
#include "mail/mail_commands.h"
#include "reports/item_export.h"
#include "reports/report_view.h"
#include "sale/commands.h"

namespace tilo {
namespace {

ReportView default_view;
ReportView* current_view = &default_view;

// The item search of the Find command: a number is looked up (0, with no
// message, when there is no such item), other text is a description start.
int64_t FindItemByNumber() {
  constexpr size_t kItemPromptLimit = 34;
  std::optional<std::string> typed =
      platform().prompt("Find item number / description / fragment", "Sales by item");
  if (!typed) return 0;
  return Finditem(FindText(*typed, kItemPromptLimit), false, false);
}

ReportItemFind& item_find() {
  static ReportItemFind find = FindItemByNumber;
  return find;
}

constexpr int kMaxYears = 39;

// INVEST's lists: the years from history_from_year to this one; day and month
// on today's, the year on the last.
PeriodDialog MakePeriodDialog() {
  const LocalTime now = platform().now();
  PeriodDialog d;
  for (int64_t y = G().settings.history_from_year; y <= now.year && d.years.size() < kMaxYears; ++y)
    d.years.push_back(int(y));
  d.day_index = now.day - 1;
  d.month_index = now.month - 1;
  d.year_index = int(d.years.size()) - 1;
  return d;
}

// The six indices into the selection; false ("Invalid selection") when a list
// had no choice.
bool TakePeriod(const PeriodDialog& d, ReportSelection& s) {
  const int years = int(d.years.size());
  const int limits[6] = {31, 12, years, 31, 12, years};
  for (int i = 0; i < 6; ++i)
    if (d.chosen[i] < 0 || d.chosen[i] >= limits[i]) return false;
  const int from = int(G().settings.history_from_year);
  s.start_day = d.chosen[0] + 1;
  s.start_month = d.chosen[1] + 1;
  s.start_year = d.chosen[2] + from;
  s.end_day = d.chosen[3] + 1;
  s.end_month = d.chosen[4] + 1;
  s.end_year = d.chosen[5] + from;
  return true;
}

void RunSalesReport(bool by_item) {
  ReportSelection& s = G().report_selection;
  if (!Choosesalesperiod(s)) return;
  const CalendarDate start{s.start_year, s.start_month, s.start_day};
  const CalendarDate end{s.end_year, s.end_month, s.end_day};
  SalesFilter filter;
  if (by_item)
    filter.report_item = s.report_item;
  else
    filter.staff_clerk = s.staff_clerk;
  std::optional<SalesReport> report;
  // The walk runs on its own copies: the screen may run it on another thread.
  const bool done = report_view().run_walk(
      "Sales report", [&report, start, end, filter](const WalkProgress& progress) {
        report = Walksales(start, end, filter, progress);
        return report.has_value();
      });
  if (!done || !report) return;
  SalesScreen screen;
  screen.title = Salesperiodtext(s, !by_item && s.staff_clerk != 0);
  screen.report = std::move(*report);
  for (int level = 0; level < 3; ++level)
    for (int column = 0; column < 5; ++column)
      screen.lists[level][column] =
          Saleslisttexts(screen.report, SalesLevel(level), SalesColumn(column));
  report_view().show_sales_report(screen);
}

SummaryDialog MakeSummaryDialog(SummaryPeriod period) {
  const LocalTime now = platform().now();
  SummaryDialog d;
  d.period = period;
  for (int y = now.year - 8; y <= now.year; ++y) d.years.push_back(y);
  d.day = d.end_day = now.day;
  d.month = d.end_month = now.month;
  d.year = d.end_year = now.year;
  return d;
}

bool InBounds(int day, int month, int year) {
  return day >= 1 && day <= 31 && month >= 1 && month <= 12 && year >= 2000 && year <= 4000;
}

}  // namespace

bool Choosesalesperiod(ReportSelection& s) {
  PeriodDialog dialog = MakePeriodDialog();
  if (!report_view().choose_period(dialog)) return false;
  if (!TakePeriod(dialog, s)) {
    Message("Invalid selection", "Problem");
    return false;
  }
  return true;
}

bool ReportView::run_walk(const std::string& title,
                          const std::function<bool(const WalkProgress&)>& walk) {
  std::unique_ptr<Progress> progress =
      platform().begin_progress("Reading the transactions of the period", title, true);
  return walk([&](int64_t done, int64_t total) { return progress->step(done, total); });
}

ReportView& report_view() {
  return *current_view;
}
void install_report_view(ReportView* view) {
  current_view = view ? view : &default_view;
}

void SetReportItemFind(ReportItemFind find) {
  item_find() = find ? std::move(find) : FindItemByNumber;
}

void Salesreportcommand(int command) {
  ReportSelection& s = G().report_selection;
  switch (Command(command)) {
    case Command::SalesByStaff: {
      std::optional<std::string> typed =
          platform().prompt("Please enter the clerk number (1-99):", "Sales by staff");
      if (!typed) return;
      const long clerk = std::strtol(typed->c_str(), nullptr, 10);
      if (clerk < 1 || clerk > 99) {
        Message("Outside range", "Problem");
        return;
      }
      s.staff_clerk = int32_t(clerk);
      RunSalesReport(false);
      return;
    }
    case Command::SalesByItem: {
      const int64_t item = item_find()();
      if (item == 0) return;
      s.report_item = item;
      RunSalesReport(true);
      s.report_item = 0;
      return;
    }
    default:
      s.staff_clerk = 0;
      RunSalesReport(false);
  }
}

void Itemsummarycommand(SummaryPeriod period) {
  SummaryDialog d = MakeSummaryDialog(period);
  if (!report_view().choose_summary(d)) return;
  if (!InBounds(d.day, d.month, d.year)) return;
  if (period == SummaryPeriod::Period && !InBounds(d.end_day, d.end_month, d.end_year)) return;
  ReportSelection& s = G().report_selection;
  s.start_day = period == SummaryPeriod::Monthly ? 1 : d.day;
  s.start_month = d.month;
  s.start_year = d.year;
  if (period == SummaryPeriod::Period) {
    s.end_day = d.end_day;
    s.end_month = d.end_month;
    s.end_year = d.end_year;
  }
  s.filters = d.filters;
  const ReportSelection before = s;
  const SummaryDays days = Summarydays(period, before);
  std::optional<ItemSummary> summary;
  bool out_of_memory = false;
  const bool done = report_view().run_walk(
      "Item summary", [&summary, &out_of_memory, days = days.days,
                       filters = before.filters](const WalkProgress& progress) {
        try {
          summary = Summarizeitems(days, filters, progress);
        } catch (const std::bad_alloc&) {
          out_of_memory = true;
          summary = ItemSummary{};
        }
        return summary.has_value();
      });
  if (!done || !summary) return;
  if (out_of_memory) Message("Insufficient memory", "Problem");
  // The walk has moved the selection's date, and later headers and names show it.
  s.start_year = days.after.year;
  s.start_month = days.after.month;
  s.start_day = days.after.day;
  SummaryScreen screen;
  screen.period = period;
  screen.title = Summarytitle(period, before);
  screen.after = s;
  screen.saved = before;
  screen.summary = std::move(*summary);
  screen.rows = Summaryrows(screen.summary);
  report_view().show_item_summary(screen);
}

void InstallReportCommands() {
  using C = Command;
  for (C c : {C::SalesReport, C::SalesByStaff, C::SalesByItem})
    SetHandler(c, [c](int) { Salesreportcommand(int(c)); });
  const std::pair<C, SummaryPeriod> summaries[] = {{C::DailyItemSummary, SummaryPeriod::Daily},
                                                   {C::WeeklyItemSummary, SummaryPeriod::Weekly},
                                                   {C::MonthlyItemSummary, SummaryPeriod::Monthly},
                                                   {C::PeriodItemSummary, SummaryPeriod::Period}};
  for (const auto& [c, period] : summaries)
    SetHandler(c, [period = period](int) { Itemsummarycommand(period); });
  SetHandler(C::ExportDailyItems, [](int) { Exportdailyitems(); });
  SetHandler(C::ExportWeeklyItems, [](int) { Exportweeklyitems(); });
  // The daily items mail attaches today's rows.
  SetDailyItemsCsvWriter([] {
    const LocalTime now = platform().now();
    return Writemailitems(CalendarDate{now.year, now.month, now.day});
  });
}

}  // namespace tilo
