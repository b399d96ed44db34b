// SPDX-License-Identifier: MIT
// The period reports over a busy year: 365 days of 300 sales, 1 to 5 lines each
// over 2,000 items, the files warm in the cache. Each report is set beside one
// plain read of the log files it needs, and the step-by-step routines beside
// them for one month (they re-read the item file for every sale).
#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <vector>

#include "bench_shop.h"
#include "core/history.h"
#include "reports/item_summary.h"
#include "reports/sales_report.h"
#include "support/literal_reports.h"
#include "support/report_history.h"

namespace tilo::bench {
namespace {

constexpr int kYear = 2025;

void EnterBusyYear() {
  static const std::string folder = [] {
    const std::string f =
        (std::filesystem::temp_directory_path() / "tilo-bench-busy-year-v1").string();
    const std::string done = f + "/complete";
    if (!std::filesystem::exists(done)) {
      std::filesystem::remove_all(f);
      std::filesystem::create_directories(f);
      EnterFolder(f);
      WriteHistory(2025, {kYear, 1, 1}, 365,
                   {.sales_min = 300,
                    .sales_max = 300,
                    .items = 2000,
                    .missing_day = 0,
                    .refund = 0.05,
                    .payment = 0.03,
                    .repeat = 0,
                    .non_inventory = 0.05,
                    .cut = 0});
      std::FILE* mark = std::fopen(done.c_str(), "w");
      if (mark) std::fclose(mark);
    }
    return f;
  }();
  EnterFolder(folder);
}

// Reads every file of the year once, whole, into one buffer.
int64_t ReadOnce(bool with_items) {
  static std::vector<char> buffer(1 << 22);
  int64_t bytes = 0;
  for (const CalendarDate& d : Perioddays({kYear, 1, 1}, {kYear, 12, 31})) {
    std::vector<std::string> paths = {SalesLogPath(d.year, d.month, d.day)};
    if (with_items) paths.push_back(ItemsLogPath(d.year, d.month, d.day));
    for (const std::string& path : paths) {
      std::FILE* f = std::fopen(path.c_str(), "rb");
      if (!f) continue;
      size_t n;
      while ((n = std::fread(buffer.data(), 1, buffer.size(), f)) > 0) bytes += int64_t(n);
      std::fclose(f);
    }
  }
  return bytes;
}

void BM_ReadSalesLogsOnce(benchmark::State& state) {
  EnterBusyYear();
  for (auto _ : state) benchmark::DoNotOptimize(ReadOnce(false));
}
BENCHMARK(BM_ReadSalesLogsOnce)->Unit(benchmark::kMillisecond);

void BM_ReadBothLogsOnce(benchmark::State& state) {
  EnterBusyYear();
  for (auto _ : state) benchmark::DoNotOptimize(ReadOnce(true));
}
BENCHMARK(BM_ReadBothLogsOnce)->Unit(benchmark::kMillisecond);

void BM_SalesReportYear(benchmark::State& state) {
  EnterBusyYear();
  SalesFilter filter;
  filter.report_item = state.range(0);
  for (auto _ : state) {
    auto report = Walksales({kYear, 1, 1}, {kYear, 12, 31}, filter);
    benchmark::DoNotOptimize(Saleslisttexts(*report, SalesLevel::Day, kSumTotal));
  }
}
// 0: the whole shop; 1234: "Sales by item".
BENCHMARK(BM_SalesReportYear)->Arg(0)->Arg(1234)->Unit(benchmark::kMillisecond);

void BM_PeriodItemSummaryYear(benchmark::State& state) {
  EnterBusyYear();
  ReportSelection s;
  s.start_day = s.start_month = 1;
  s.end_day = 31;
  s.end_month = 12;
  s.start_year = s.end_year = kYear;
  s.filters.exclude_refunds = false;
  for (auto _ : state) {
    auto summary = Summarizeitems(Summarydays(SummaryPeriod::Period, s).days, s.filters);
    if (state.range(0) != 0) benchmark::DoNotOptimize(Summaryrows(*summary));
    benchmark::DoNotOptimize(summary);
  }
}
// 0: the summary itself; 1: with its rows formatted for the window.
BENCHMARK(BM_PeriodItemSummaryYear)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

ReportSelection January() {
  ReportSelection s;
  s.start_day = s.start_month = s.end_month = 1;
  s.end_day = 31;
  s.start_year = s.end_year = kYear;
  s.filters.exclude_refunds = false;
  return s;
}

void BM_StepByStepSalesReportMonth(benchmark::State& state) {
  EnterBusyYear();
  ReportSelection s = January();
  s.report_item = state.range(0);
  for (auto _ : state) benchmark::DoNotOptimize(LiteralSalesReport(s, s.report_item != 0));
}
BENCHMARK(BM_StepByStepSalesReportMonth)->Arg(0)->Arg(1234)->Unit(benchmark::kMillisecond);

void BM_StepByStepPeriodSummaryMonth(benchmark::State& state) {
  EnterBusyYear();
  for (auto _ : state)
    benchmark::DoNotOptimize(LiteralItemSummary(SummaryPeriod::Period, January()));
}
BENCHMARK(BM_StepByStepPeriodSummaryMonth)->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace
}  // namespace tilo::bench
