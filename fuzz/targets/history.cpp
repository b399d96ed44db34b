// SPDX-License-Identifier: MIT
// The history tree as the reports, the statements, the transaction browser and
// the log readers take it: a year's transaction index, two days' sales and item
// logs, a day's closing summary, the activity log and a day's goods received,
// all of any bytes.
#include <cstring>

#include "core/history.h"
#include "core/state.h"
#include "documents/recording_target.h"
#include "documents/statement.h"
#include "fuzz_support.h"
#include "inventory/receiving.h"
#include "reports/activity_summary.h"
#include "reports/item_export.h"
#include "reports/item_summary.h"
#include "reports/log_print.h"
#include "reports/log_view.h"
#include "reports/report_forms.h"
#include "reports/report_walk.h"
#include "reports/sales_report.h"
#include "targets.h"
#include "tender/browse.h"

namespace tilo::fuzz {
namespace {

constexpr int kYear = 2026, kMonth = 11, kToday = 22;

void ReadReports(const SalesFilter& filter, const SummaryFilters& filters) {
  const CalendarDate start{kYear, kMonth, 1}, end{kYear, kMonth, 30};
  if (auto report = Walksales(start, end, filter)) {
    for (SalesLevel level : {SalesLevel::Day, SalesLevel::Month, SalesLevel::Year})
      Saleslisttexts(*report, level, kSumTotal);
    RecordingTarget target;
    Drawsalesreport(target, *report, "Sales report");
  }
  if (auto summary = Summarizeitems(Perioddays(start, end), filters)) {
    Summaryrows(*summary);
    Summarytotals(*summary);
  }
  std::vector<std::string> rows;
  for (int day : {kToday - 1, kToday}) Dayitemrows({kYear, kMonth, day}, true, rows);
  Exportcsv(rows);
  if (auto entries = Customertransactions(1, start, end)) Statementrows(*entries, 12.5f);
  const ReportPeriod period{1, kMonth, kYear, 30, kMonth, kYear};
  const auto received = Receivedlines(period);
  RecordingTarget target;
  for (size_t next = 0; next < received.size();) {
    const size_t before = next;
    Printreceivedpage(target, received, next);
    if (next == before) break;
  }
}

void Browse(bool discounted, int32_t number) {
  TransactionBrowser browser(discounted);
  if (!browser.Open(number)) return;
  for (int step = 0; step < 8 && browser.Next(); ++step) {
  }
}

void ReadLogs() {
  if (auto viewer = OpenLogViewer(false)) {
    viewer->Next();
    viewer->Previous();
  }
  if (auto start = Findlogdate("bun4.dat", "22/11/2026")) {
    LogPrint job{"bun4.dat", "22/11/2026", *start, *start};
    RecordingTarget target;
    Printlogpage(job, target);
  }
}

}  // namespace

// The input: a byte of flags (which filters the reports use), four bytes of
// the transaction number the browser opens, then the files below in order.
void FuzzHistory(const uint8_t* data, size_t size) {
  static const std::string kFiles[] = {YearBasePath(kYear),
                                       SalesLogPath(kYear, kMonth, kToday - 1),
                                       ItemsLogPath(kYear, kMonth, kToday - 1),
                                       SalesLogPath(kYear, kMonth, kToday),
                                       ItemsLogPath(kYear, kMonth, kToday),
                                       DailySummaryPath(kYear, kMonth, kToday - 1),
                                       "bun4.dat",
                                       StockInPath(kYear, kMonth, kToday)};
  if (size < 5) return;
  const uint8_t flags = data[0];
  int32_t number;
  std::memcpy(&number, data + 1, sizeof number);
  ScriptedPlatform& p = StartRun();
  p.set_now(kYear, kMonth, kToday);
  const auto parts = SplitFiles(data + 5, size - 5, std::size(kFiles));
  for (size_t i = 0; i < parts.size(); ++i) PutFile(kFiles[i], parts[i]);

  State& g = G();
  g.today_day = kToday;
  g.today_month = kMonth;
  g.today_year = kYear;
  SettingsRecord& s = g.settings;
  s.history_from_day = 1;
  s.history_from_month = kMonth;
  s.history_from_year = kYear;

  SalesFilter filter;
  if (flags & 1) filter.staff_clerk = 1;
  if (flags & 2) filter.report_item = 1;
  SummaryFilters filters;
  filters.exclude_refunds = !(flags & 4);
  if (flags & 8) filters.category_filter = 19;
  ReadReports(filter, filters);

  Transactionlist({});
  Discountedlist();
  Browse(flags & 16, number);

  ReadLogs();
  p.queue_prompt(std::to_string(kToday - 1));
  p.queue_prompt(std::to_string(kMonth));
  p.queue_prompt(std::to_string(kYear));
  PreviousActivitySummaryText();
}

}  // namespace tilo::fuzz
