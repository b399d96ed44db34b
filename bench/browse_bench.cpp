// SPDX-License-Identifier: MIT
// The transaction browser on big histories. "Discounted" over a year of 300
// sales a day, beside a plain read of the same sales logs; a discounted "&Next"
// that has 100,000 undiscounted sales to pass before "End of list.", beside the
// old way of looking each number up afresh; F11 for the newest of five years of
// 100,000 sales each.
#include <benchmark/benchmark.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "bench_shop.h"
#include "core/clock.h"
#include "core/history.h"
#include "core/state.h"
#include "platform/files.h"
#include "platform/scripted_platform.h"
#include "tender/browse.h"

namespace tilo {
namespace {

namespace fs = std::filesystem;

constexpr int kPerDay = 300;

void Append(const std::string& path, const void* data, size_t size) {
  std::ofstream(path, std::ios::binary | std::ios::app)
      .write(static_cast<const char*>(data), std::streamsize(size));
}

// A year of sales, kPerDay a day from 1 January, numbered on from `first`; only
// transaction `discounted` has a discount. With `logs` false only base.dat is
// written. Returns the next number.
int32_t WriteYear(int year, int32_t first, int32_t count, int32_t discounted, bool logs) {
  fs::create_directories(YearFolder(year));
  std::vector<char> base(sizeof(BaseFileHeader), 0);
  int month = 1, day = 1, today = 0;
  std::vector<SalesLogRecord> sales;
  std::vector<ItemsLogRecord> lines;
  auto flush = [&] {
    if (!logs || sales.empty()) return;
    fs::create_directories(DayFolder(year, month, day));
    Append(SalesLogPath(year, month, day), sales.data(), sales.size() * sizeof sales[0]);
    Append(ItemsLogPath(year, month, day), lines.data(), lines.size() * sizeof lines[0]);
    sales.clear();
    lines.clear();
  };
  for (int32_t n = first; n < first + count; ++n) {
    if (today == kPerDay) {
      flush();
      today = 0;
      if (++day > DaysInMonth(month, year)) {
        day = 1;
        ++month;
      }
    }
    ++today;
    const BaseRecord r{n, day, month};
    base.insert(base.end(), reinterpret_cast<const char*>(&r),
                reinterpret_cast<const char*>(&r) + sizeof r);
    if (!logs) continue;
    SalesLogRecord s{};
    s.transaction_number = n;
    s.line_count = 1;
    s.total = s.subtotal = 9.99f;
    s.total_discount = n == discounted ? 1.00f : 0.0f;
    std::strcpy(s.payment_type, "Cash");
    sales.push_back(s);
    ItemsLogRecord l{};
    l.transaction_number = n;
    l.number = 1001;
    l.line_total = 9.99f;
    lines.push_back(l);
  }
  flush();
  Append(YearBasePath(year), base.data(), base.size());
  return first + count;
}

// A shop folder made once per kind and kept for later runs.
void EnterHistory(const std::string& name, void (*make)()) {
  const std::string folder = (fs::temp_directory_path() / ("tilo-bench-" + name)).string();
  const bool made = fs::exists(folder + "/done");
  fs::create_directories(folder);
  bench::EnterFolder(folder);
  if (!made) {
    for (const auto& e : fs::directory_iterator(folder)) fs::remove_all(e.path());
    make();
    std::ofstream("done") << "";
  }
}

struct Scene {
  ScriptedPlatform platform;
  Scene(int from_year) {
    ResetState();
    install_platform(&platform);
    platform.set_now(from_year + (from_year == 2019 ? 4 : 0), 12, 31);
    G().settings.history_from_day = 1;
    G().settings.history_from_month = 1;
    G().settings.history_from_year = from_year;
  }
  ~Scene() { install_platform(nullptr); }
};

// 2023: 109,500 sales, 300 a day; 9,500 the only one with a discount.
void YearOfSales() {
  WriteYear(2023, 1, 365 * kPerDay, 9500, true);
}

void DiscountedList(benchmark::State& state) {
  EnterHistory("year-of-sales", YearOfSales);
  Scene scene(2023);
  for (auto _ : state) {
    const auto lines = Discountedlist();
    if (!lines || lines->size() != 1) state.SkipWithError("wrong list");
  }
}
BENCHMARK(DiscountedList)->Unit(benchmark::kMillisecond)->MinTime(2.0);

void PlainReadOfTheSalesLogs(benchmark::State& state) {
  EnterHistory("year-of-sales", YearOfSales);
  for (auto _ : state) {
    size_t bytes = 0;
    for (int month = 1; month <= 12; ++month)
      for (int day = 1; day <= DaysInMonth(month, 2023); ++day)
        if (auto data = ReadWholeFile(SalesLogPath(2023, month, day))) bytes += data->size();
    benchmark::DoNotOptimize(bytes);
  }
}
BENCHMARK(PlainReadOfTheSalesLogs)->Unit(benchmark::kMillisecond)->MinTime(2.0);

// From 9,500 on to "End of list." past 109,500: 100,000 undiscounted sales.
void DiscountedNextToTheEnd(benchmark::State& state) {
  EnterHistory("year-of-sales", YearOfSales);
  Scene scene(2023);
  for (auto _ : state) {
    TransactionBrowser browser(true);
    if (!browser.Open(9500)) state.SkipWithError("9500 not found");
    if (browser.Next()) state.SkipWithError("a discounted sale after 9500");
  }
  if (scene.platform.shown().back() != "Problem: End of list.") state.SkipWithError("no end");
}
BENCHMARK(DiscountedNextToTheEnd)->Unit(benchmark::kMillisecond)->MinTime(2.0);

// The same walk looking each number up afresh in base.dat and its day's log,
// over the first `range` numbers only: multiply by 100,000 / range.
void PerNumberRescan(benchmark::State& state) {
  EnterHistory("year-of-sales", YearOfSales);
  Scene scene(2023);
  for (auto _ : state) {
    for (int32_t n = 9501; n < 9501 + state.range(0); ++n) {
      const auto place = Findtransaction(n);
      if (!place) break;
      const auto t = Readtransaction(place->year, place->month, place->day, n);
      if (t && t->sale.total_discount != 0) break;
    }
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(PerNumberRescan)->Arg(1000)->Unit(benchmark::kMillisecond);

// 2019 to 2023, 100,000 sales a year in base.dat; the logs of 500,000's day.
void FiveYears() {
  int32_t next = 1;
  for (int year = 2019; year <= 2023; ++year) next = WriteYear(year, next, 100000, 0, year == 2023);
}

void F11InFiveYears(benchmark::State& state) {
  EnterHistory("five-years", FiveYears);
  Scene scene(2019);
  for (auto _ : state) {
    scene.platform.queue_prompt("500000");
    Browse(Command::DisplayTransaction);
  }
  TransactionBrowser browser(false);
  if (!browser.Open(500000)) state.SkipWithError("500000 not found");
}
BENCHMARK(F11InFiveYears)->Unit(benchmark::kMillisecond)->MinTime(2.0);

}  // namespace
}  // namespace tilo
