// SPDX-License-Identifier: MIT
// The receipts report over a year: 50,000 lines spread over 365 days of
// ininvent.dat, described from a film.dat of 100,000 items.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "bench_shop.h"
#include "core/clock.h"
#include "core/history.h"
#include "core/state.h"
#include "inventory/receiving.h"
#include "platform/files.h"
#include "platform/platform.h"

namespace tilo {
namespace {

constexpr int64_t kItems = 100000;
constexpr int kLines = 50000;

// Answers nothing, on a fixed date; the locale's short date is a fixed text.
class ReportPlatform : public Platform {
 public:
  Answer message(const std::string&, const std::string&, Buttons) override { return Answer::Ok; }
  std::optional<std::string> prompt(const std::string&, const std::string&, const std::string&,
                                    bool) override {
    return std::nullopt;
  }
  LocalTime now() override { return {2025, 12, 3, 31, 18, 0, 0}; }
  uint64_t tick_count() override { return 1; }
  void play_sound(int) override {}
  DesktopSize desktop() override { return {1280, 1024}; }
  std::string currency_symbol() override { return "£"; }
  std::string short_date(int, int, int) override { return "Tue 12 May 25"; }
  std::optional<std::string> choose_file(const std::string&, bool, const std::string&) override {
    return std::nullopt;
  }
  std::optional<std::string> choose_folder(const std::string&, const std::string&) override {
    return std::nullopt;
  }
};

// A year of receipts in the shop's history tree, numbers drawn from the whole
// inventory and a few beyond it (items since deleted).
void WriteYearOfReceipts() {
  std::mt19937_64 random(5);
  std::uniform_int_distribution<int64_t> number(1, kItems + 1000);
  std::vector<std::vector<StockInRecord>> days(365);
  for (int i = 0; i < kLines; ++i)
    days[size_t(i) % days.size()].push_back({number(random), int64_t(i % 40 + 1)});
  int d = 0;
  for (int month = 1; month <= 12; ++month)
    for (int day = 1; day <= DaysInMonth(month, 2025) && d < 365; ++day, ++d) {
      if (month == 2 && day == 29) continue;
      std::filesystem::create_directories(DayFolder(2025, month, day));
      const auto& lines = days[size_t(d)];
      ReplaceFile(StockInPath(2025, month, day), lines.data(),
                  int64_t(lines.size() * sizeof(StockInRecord)));
    }
}

void BM_ReceivedReportYear(benchmark::State& state) {
  const std::string& folder = bench::ShopWithItems(kItems);
  bench::EnterFolder(folder);
  ResetState();
  ReportPlatform platform;
  install_platform(&platform);
  G().films.Load();
  WriteYearOfReceipts();
  size_t lines = 0;
  for (auto _ : state) {
    const std::vector<std::string> report = Receivedlines({1, 1, 2025, 31, 12, 2025});
    lines = report.size();
    benchmark::DoNotOptimize(report.data());
  }
  state.counters["lines"] = double(lines);
  install_platform(nullptr);
}
BENCHMARK(BM_ReceivedReportYear)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tilo
