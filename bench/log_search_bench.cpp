// SPDX-License-Identifier: MIT
// The search for a day's first entry in a 10 MB activity log, beside one plain
// sequential read of the same file; and the viewer's load of one block.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>

#include "bench_shop.h"
#include "platform/files.h"
#include "reports/log_print.h"
#include "reports/log_view.h"

namespace tilo {
namespace {

// A log of some 10 MB from the 14th, with the 15th's first entry at its very end.
void EnterBigLog() {
  static std::string folder;
  if (folder.empty()) {
    char name[] = "/tmp/tilo-bench-log-XXXXXX";
    folder = mkdtemp(name);
    bench::EnterFolder(folder);
    std::string log;
    for (int i = 0; log.size() < 10'000'000; ++i) {
      char entry[160];
      std::snprintf(entry, sizeof entry,
                    "\r\n%02d:%02d 14/03/2024 Sale: %d, Total: 12.50\r\n"
                    "1001 CRISPS READY SALTED 1.00\r\nCash: 12.50\r\n",
                    i / 60 % 24, i % 60, i + 1);
      log += entry;
    }
    log += "\r\n08:30 15/03/2024  Switched on.\r\n";
    ReplaceFile("bun4.dat", log);
  }
  bench::EnterFolder(folder);
}

void BM_OneSequentialRead(benchmark::State& state) {
  EnterBigLog();
  std::string buffer(65536, '\0');
  for (auto _ : state) {
    File f("bun4.dat", File::Mode::Read);
    int64_t total = 0;
    for (int64_t got; (got = f.read(buffer.data(), int64_t(buffer.size()))) > 0;) total += got;
    benchmark::DoNotOptimize(total);
  }
}
BENCHMARK(BM_OneSequentialRead)->Unit(benchmark::kMillisecond);

void BM_FindTodayInTheLog(benchmark::State& state) {
  EnterBigLog();
  for (auto _ : state) {
    std::optional<int64_t> at = Findlogdate("bun4.dat", "15/03/2024");
    if (!at) state.SkipWithError("the day was not found");
    benchmark::DoNotOptimize(at);
  }
}
BENCHMARK(BM_FindTodayInTheLog)->Unit(benchmark::kMillisecond);

void BM_ViewerBlock(benchmark::State& state) {
  EnterBigLog();
  for (auto _ : state) {
    std::optional<std::string> block = ReadLogBlock("bun4.dat", 5'000'000);
    benchmark::DoNotOptimize(LogBlockText(*block));
  }
}
BENCHMARK(BM_ViewerBlock)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace tilo
