// SPDX-License-Identifier: MIT
// A customer's statement over three busy years: 1,096 days of 300 sales, one in
// a hundred to the customer, the files warm in the cache. The walk is set beside
// one plain read of the same sales logs.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <vector>

#include "bench_shop.h"
#include "core/history.h"
#include "documents/statement.h"

namespace tilo::bench {
namespace {

constexpr CalendarDate kFirst{2023, 1, 1};
constexpr CalendarDate kLast{2025, 12, 31};
constexpr int kSalesADay = 300;
constexpr int64_t kCustomer = 7;

void WriteDay(const CalendarDate& d, int64_t& transaction) {
  std::filesystem::create_directories(DayFolder(d.year, d.month, d.day));
  static const char* kTypes[] = {"Cash", "Credit", "EFT", "CH", "Payment (cash)"};
  std::vector<SalesLogRecord> day(kSalesADay);
  for (int i = 0; i < kSalesADay; ++i) {
    SalesLogRecord& r = day[size_t(i)];
    r.transaction_number = ++transaction;
    r.day_sequence = i + 1;
    r.customer_number = i % 100 == 0 ? kCustomer : (i % 7 == 0 ? 1000 + i : 0);
    r.total = float(i % 50) + 0.99f;
    std::strcpy(r.payment_type, kTypes[i % 5]);
  }
  std::FILE* f = std::fopen(SalesLogPath(d.year, d.month, d.day).c_str(), "wb");
  if (!f) return;
  std::fwrite(day.data(), sizeof(SalesLogRecord), day.size(), f);
  std::fclose(f);
}

void EnterThreeYears() {
  static const std::string folder = [] {
    const std::string f =
        (std::filesystem::temp_directory_path() / "tilo-bench-three-years-v1").string();
    const std::string done = f + "/complete";
    if (!std::filesystem::exists(done)) {
      std::filesystem::remove_all(f);
      std::filesystem::create_directories(f);
      EnterFolder(f);
      int64_t transaction = 0;
      for (const CalendarDate& d : Perioddays(kFirst, kLast)) WriteDay(d, transaction);
      std::FILE* mark = std::fopen(done.c_str(), "w");
      if (mark) std::fclose(mark);
    }
    return f;
  }();
  EnterFolder(folder);
}

// Every sales log of the three years read once, whole, into one buffer.
void BM_ReadThreeYearsOfSalesLogsOnce(benchmark::State& state) {
  EnterThreeYears();
  std::vector<char> buffer(1 << 22);
  for (auto _ : state) {
    int64_t bytes = 0;
    for (const CalendarDate& d : Perioddays(kFirst, kLast)) {
      std::FILE* f = std::fopen(SalesLogPath(d.year, d.month, d.day).c_str(), "rb");
      if (!f) continue;
      size_t n;
      while ((n = std::fread(buffer.data(), 1, buffer.size(), f)) > 0) bytes += int64_t(n);
      std::fclose(f);
    }
    benchmark::DoNotOptimize(bytes);
  }
}
BENCHMARK(BM_ReadThreeYearsOfSalesLogsOnce)->Unit(benchmark::kMillisecond);

// The statement's list: the walk and the rows as the dialog shows them.
void BM_StatementThreeYears(benchmark::State& state) {
  EnterThreeYears();
  for (auto _ : state) {
    auto entries = Customertransactions(kCustomer, kFirst, kLast);
    benchmark::DoNotOptimize(Statementrows(*entries, 12.5f));
  }
}
BENCHMARK(BM_StatementThreeYears)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tilo::bench
