// SPDX-License-Identifier: MIT
// The rebuild of film.dat and the verified backup copy, each beside the plain
// file work it is measured against.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <vector>

#include "bench_shop.h"
#include "core/film_record.h"
#include "core/inventory.h"
#include "platform/files.h"
#include "upkeep/backup.h"
#include "upkeep/rebuild.h"

namespace tilo {
namespace {

// Reads `from` sequentially and writes it to `to`; with `durable` flushed to
// disk and renamed over `rename_to`, as a whole-file rewrite is.
void PlainCopy(const char* from, const std::string& to, bool durable, const char* rename_to) {
  File in(from, File::Mode::Read);
  File out(to, File::Mode::Create);
  std::vector<char> block(1 << 22);
  for (int64_t n; (n = in.read(block.data(), int64_t(block.size()))) > 0;)
    out.write(block.data(), n);
  if (durable) out.sync();
  out.close();
  if (rename_to) std::rename(to.c_str(), rename_to);
}

// The yardstick of the rebuild: film.dat read and written aside, flushed, renamed.
void BM_SequentialReadWrite(benchmark::State& state) {
  bench::EnterFolder(bench::ShopWithItems(state.range(0)));
  for (auto _ : state) PlainCopy("film.dat", "film.dat.copy", true, "film.dat");
}
BENCHMARK(BM_SequentialReadWrite)->Arg(1000000)->Unit(benchmark::kMillisecond)->Iterations(2);

void BM_RebuildInventory(benchmark::State& state) {
  bench::EnterFolder(bench::ShopWithItems(state.range(0)));
  for (auto _ : state) {
    IndexedFile films(kFilmLayout);
    auto progress = platform().begin_progress("", "", false);
    if (!RebuildFile(films, RebuildKind::Inventory, *progress)) state.SkipWithError("rebuild");
    benchmark::DoNotOptimize(films.index.data());
  }
}
BENCHMARK(BM_RebuildInventory)->Arg(1000000)->Unit(benchmark::kMillisecond)->Iterations(2);

// The named baseline: the duplicate test as a scan of every earlier number for
// each record, in memory, nothing read or written.
void BM_DuplicateScanBaseline(benchmark::State& state) {
  bench::EnterFolder(bench::ShopWithItems(state.range(0)));
  std::vector<int64_t> numbers;
  File in("film.dat", File::Mode::Read);
  FilmRecord record;
  while (in.read(&record, sizeof record) == int64_t(sizeof record))
    numbers.push_back(record.number);
  for (auto _ : state) {
    int64_t duplicates = 0;
    for (size_t i = 0; i < numbers.size(); ++i)
      for (size_t j = 0; j < i; ++j) duplicates += numbers[j] == numbers[i];
    benchmark::DoNotOptimize(duplicates);
  }
}
BENCHMARK(BM_DuplicateScanBaseline)->Arg(100000)->Unit(benchmark::kMillisecond)->Iterations(1);

// The yardstick of the backup: a plain copy, as cp makes it.
void BM_PlainCopy(benchmark::State& state) {
  bench::EnterFolder(bench::ShopWithItems(state.range(0)));
  for (auto _ : state) PlainCopy("film.dat", "film.dat.plain", false, nullptr);
  RemoveFile("film.dat.plain");
}
BENCHMARK(BM_PlainCopy)->Arg(100000)->Unit(benchmark::kMillisecond)->Iterations(5);

// The backup's file work: to a temporary, flushed, dropped from the cache, read
// back against the source, renamed in.
void BM_BackupVerified(benchmark::State& state) {
  bench::EnterFolder(bench::ShopWithItems(state.range(0)));
  MakeFolder("backup");
  UpkeepFiles files;
  for (auto _ : state) {
    if (!files.copy_verified("film.dat", "backup/.film.dat.tilo-new", [] { return true; }) ||
        !SwapIn(files, {{"backup/.film.dat.tilo-new", "backup/film.dat"}}))
      state.SkipWithError("backup");
  }
}
BENCHMARK(BM_BackupVerified)->Arg(100000)->Unit(benchmark::kMillisecond)->Iterations(5);

}  // namespace
}  // namespace tilo
