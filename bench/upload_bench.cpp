// SPDX-License-Identifier: MIT
// The head office's reorder file over a shop of 100,000 items, beside one plain
// sequential read of film.dat: film.dat walked in file order, each item at or
// below its level (one in four) written as a row, the file replaced whole
// (flushed to disk before the rename).
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <functional>
#include <vector>

#include "bench_shop.h"
#include "core/film_record.h"
#include "core/state.h"
#include "mail/upload_files.h"
#include "platform/files.h"
#include "platform/scripted_platform.h"

namespace tilo {
namespace {

constexpr int64_t kItems = 100000;

ScriptedPlatform quiet;

int64_t PlainReadOnce() {
  static std::vector<char> block(1 << 20);
  File f("film.dat", File::Mode::Read);
  int64_t total = 0;
  for (int64_t n; (n = f.read(block.data(), int64_t(block.size()))) > 0;) total += n;
  return total;
}

double Milliseconds(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
      .count();
}

// The benchmark shop with one item in four at its reorder level, so the file
// has rows to write: a copy of its film.dat in a folder of its own.
void EnterReorderShop() {
  static std::string folder;
  if (folder.empty()) {
    folder = bench::ShopWithItems(kItems) + "-reorder";
    MakeFolder(folder);
    std::string bytes = ReadWholeFile(bench::ShopWithItems(kItems) + "/film.dat").value();
    for (size_t at = 0, i = 0; at + sizeof(FilmRecord) <= bytes.size();
         at += sizeof(FilmRecord), ++i) {
      if (i % 4 != 0) continue;
      FilmRecord r;
      std::memcpy(&r, bytes.data() + at, sizeof r);
      r.reorder_quantity = r.quantity;
      std::memcpy(bytes.data() + at, &r, sizeof r);
    }
    if (!ReplaceFile(folder + "/film.dat", bytes)) std::abort();
  }
  bench::EnterFolder(folder);
}

void BM_UploadReorderFile(benchmark::State& state) {
  EnterReorderShop();
  ResetState();
  install_platform(&quiet);
  UploadSetup setup;
  const UploadFlags reorder_only{{false, false, true}};
  auto work = [&] {
    if (Writeuploadfiles(setup, reorder_only) != 0) state.SkipWithError("the file failed");
  };
  for (auto _ : state) work();
  // The median of five pairs, each timed in turn.
  std::vector<double> ratios;
  for (int i = 0; i < 5; ++i) {
    const double plain = Milliseconds([] { benchmark::DoNotOptimize(PlainReadOnce()); });
    ratios.push_back(Milliseconds(work) / plain);
  }
  std::sort(ratios.begin(), ratios.end());
  state.counters["x_plain_read"] = ratios[2];
  state.counters["bytes"] = double(FileSize("Reorder.txt").value_or(0));
  install_platform(nullptr);
}
BENCHMARK(BM_UploadReorderFile)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace
}  // namespace tilo
