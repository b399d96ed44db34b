// SPDX-License-Identifier: MIT
// The opening of a large shop (100,000 items, 100,000 customers, 10,000
// suppliers) against a plain read of the same bytes, and the cost of a day
// rollover.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <filesystem>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "bench_shop.h"
#include "core/clock.h"
#include "core/customer_file.h"
#include "core/reminders.h"
#include "core/rollover.h"
#include "core/settings.h"
#include "core/startup.h"
#include "core/state.h"
#include "core/supplier_file.h"
#include "core/text.h"
#include "platform/files.h"
#include "platform/platform.h"

namespace tilo {
namespace {

constexpr int64_t kItems = 100000;
constexpr int64_t kCustomers = 100000;
constexpr int64_t kSuppliers = 10000;

// A silent platform on a fixed date, so a start asks nothing and writes the same.
class BenchPlatform : public Platform {
 public:
  Answer message(const std::string&, const std::string&, Buttons) override { return Answer::Ok; }
  std::optional<std::string> prompt(const std::string&, const std::string&, const std::string&,
                                    bool) override {
    return std::nullopt;
  }
  LocalTime now() override { return {2026, 5, 2, 12, 10, 0, 0}; }
  uint64_t tick_count() override { return 1; }
  void play_sound(int) override {}
  DesktopSize desktop() override { return {1280, 1024}; }
  std::string currency_symbol() override { return "£"; }
  std::string short_date(int, int, int) override { return "Tue 12 May 26"; }
  std::optional<std::string> choose_file(const std::string&, bool, const std::string&) override {
    return std::nullopt;
  }
  std::optional<std::string> choose_folder(const std::string&, const std::string&) override {
    return std::nullopt;
  }
};

template <typename Record, typename Fill>
void WriteShuffled(const std::string& path, int64_t count, Fill fill) {
  auto size = FileSize(path);
  if (size && *size == count * int64_t(sizeof(Record))) return;
  std::vector<int64_t> numbers(static_cast<size_t>(count));
  std::iota(numbers.begin(), numbers.end(), 1);
  std::shuffle(numbers.begin(), numbers.end(), std::mt19937_64(11));
  std::vector<Record> records(static_cast<size_t>(count));
  for (size_t i = 0; i < records.size(); ++i) {
    records[i] = Record{};
    records[i].number = numbers[i];
    fill(records[i]);
  }
  ReplaceFile(path, records.data(), int64_t(records.size() * sizeof(Record)));
}

// The large shop: the items of the inventory benchmark, plus customers,
// suppliers, settings last used today and a diary.
const std::string& LargeShop() {
  static std::string folder;
  if (!folder.empty()) return folder;
  const std::string items = bench::ShopWithItems(kItems);
  folder = (std::filesystem::temp_directory_path() / "tilo-bench-store").string();
  std::filesystem::create_directories(folder);
  std::filesystem::copy_file(items + "/film.dat", folder + "/film.dat",
                             std::filesystem::copy_options::skip_existing);
  bench::EnterFolder(folder);
  WriteShuffled<MemberRecord>(kMemberFile, kCustomers, [](MemberRecord& m) {
    SetField(m.name, "CUSTOMER " + std::to_string(m.number));
    SetField(m.town, "MARKET TOWN");
  });
  WriteShuffled<MansRecord>(kMansFile, kSuppliers, [](MansRecord& m) {
    SetField(m.name, "SUPPLIER " + std::to_string(m.number));
  });
  SettingsRecord& s = G().settings;
  s = SettingsRecord{};
  s.last_day = 12;
  s.last_used_day = 12;
  s.last_used_month = 5;
  s.last_used_year = 2026;
  s.transaction_number = 1;
  SetField(s.tax1_name, "VAT 1");
  s.log_capacity = 8;
  Savesettings();
  CreateBlankReminderFile();
  return folder;
}

BenchPlatform bench_platform;

// The whole of Opendata on the same day (no rollover): the three indexes, the
// settings, the wording, the log's capacity rule.
void BM_OpendataLargeShop(benchmark::State& state) {
  bench::EnterFolder(LargeShop());
  install_platform(&bench_platform);
  for (auto _ : state) {
    ResetState();
    Timestamp();
    G().today_day = 12;
    G().today_month = 5;
    G().today_year = 2026;
    benchmark::DoNotOptimize(Opendata());
  }
  state.counters["customers"] = double(G().members.live);
  state.counters["suppliers"] = double(G().suppliers.live);
  install_platform(nullptr);
}
BENCHMARK(BM_OpendataLargeShop)->Unit(benchmark::kMillisecond);

// The yardstick: a plain sequential read of the three record files and wr.cfg.
void BM_PlainReadOfTheShopsFiles(benchmark::State& state) {
  bench::EnterFolder(LargeShop());
  std::vector<char> block(1 << 22);
  for (auto _ : state) {
    int64_t total = 0;
    for (const char* path : {"film.dat", "member.dat", "mans.dat", "wr.cfg"}) {
      File f(path, File::Mode::Read);
      for (int64_t n; (n = f.read(block.data(), int64_t(block.size()))) > 0;) total += n;
    }
    benchmark::DoNotOptimize(total);
  }
}
BENCHMARK(BM_PlainReadOfTheShopsFiles)->Unit(benchmark::kMillisecond);

// One rollover after a three-day gap: the settings and the diary (written whole).
void BM_Rollover(benchmark::State& state) {
  bench::EnterFolder(LargeShop());
  install_platform(&bench_platform);
  ResetState();
  SettingsRecord start{};
  start.last_day = 9;
  start.last_used_month = 5;
  start.till_takings = 1234.5;
  for (auto _ : state) {
    G().settings = start;
    G().today_day = 12;
    G().today_month = 5;
    G().today_year = 2026;
    benchmark::DoNotOptimize(thenextday(30));
  }
  install_platform(nullptr);
}
BENCHMARK(BM_Rollover)->Unit(benchmark::kMicrosecond);

// The settings half alone, without the file work of the diary.
void BM_RolloverSettingsOnly(benchmark::State& state) {
  SettingsRecord s{};
  for (auto _ : state) {
    s.last_day = 9;
    ClearDayCounters(s, 5);
    CloseDays(s, DaysPassed(s.last_day, 12, 30));
    benchmark::DoNotOptimize(s.takings_history[3]);
  }
}
BENCHMARK(BM_RolloverSettingsOnly)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace tilo
