// SPDX-License-Identifier: MIT
// Building the inventory index at start, and finding a number in it.
#include <benchmark/benchmark.h>

#include <random>
#include <vector>

#include "bench_shop.h"
#include "core/inventory.h"
#include "core/number_index.h"
#include "core/state.h"
#include "platform/files.h"

namespace tilo {
namespace {

// The yardstick: a plain sequential read of the same file, nothing kept.
void BM_PlainSequentialRead(benchmark::State& state) {
  bench::EnterFolder(bench::ShopWithItems(state.range(0)));
  std::vector<char> block(1 << 22);
  for (auto _ : state) {
    File f("film.dat", File::Mode::Read);
    int64_t total = 0;
    for (int64_t n; (n = f.read(block.data(), int64_t(block.size()))) > 0;) total += n;
    benchmark::DoNotOptimize(total);
  }
}
BENCHMARK(BM_PlainSequentialRead)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);

// The index load as start-up does it: numbers and name keys from every record.
void BM_LoadInventoryIndex(benchmark::State& state) {
  bench::EnterFolder(bench::ShopWithItems(state.range(0)));
  for (auto _ : state) {
    IndexedFile films(kFilmLayout);
    films.Load();
    benchmark::DoNotOptimize(films.index.data());
  }
  state.counters["records"] = double(state.range(0));
}
BENCHMARK(BM_LoadInventoryIndex)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);

// The straight insertion sort of the original design, kept as the baseline the
// stable sort is measured against.
void StraightInsertionSort(NumberIndex& index) {
  for (size_t i = 1; i < index.size(); ++i) {
    IndexEntry e = index[i];
    size_t j = i;
    while (j > 0 && index[j - 1].number > e.number) {
      index[j] = index[j - 1];
      --j;
    }
    index[j] = e;
  }
}

NumberIndex ShuffledIndex(int64_t n) {
  NumberIndex index;
  for (int64_t i = 0; i < n; ++i) index.push_back({i + 1, i});
  std::shuffle(index.begin(), index.end(), std::mt19937_64(7));
  return index;
}

void BM_SortStraightInsertionBaseline(benchmark::State& state) {
  const NumberIndex shuffled = ShuffledIndex(state.range(0));
  for (auto _ : state) {
    NumberIndex index = shuffled;
    StraightInsertionSort(index);
    benchmark::DoNotOptimize(index.data());
  }
}
BENCHMARK(BM_SortStraightInsertionBaseline)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);

void BM_Sortindex(benchmark::State& state) {
  const NumberIndex shuffled = ShuffledIndex(state.range(0));
  for (auto _ : state) {
    NumberIndex index = shuffled;
    Sortindex(index, index.size());
    benchmark::DoNotOptimize(index.data());
  }
}
BENCHMARK(BM_Sortindex)->Arg(100000)->Unit(benchmark::kMillisecond);

NumberIndex SortedIndex(int64_t n) {
  NumberIndex index;
  for (int64_t i = 0; i < n; ++i) index.push_back({i + 1, i});
  return index;
}

void BM_Findnumber(benchmark::State& state) {
  const NumberIndex index = SortedIndex(state.range(0));
  std::mt19937_64 rng(3);
  for (auto _ : state) {
    int64_t wanted = int64_t(rng() % uint64_t(state.range(0))) + 1;
    benchmark::DoNotOptimize(Findnumber(index, wanted));
  }
}
BENCHMARK(BM_Findnumber)->Arg(1000000);

// A walk from the front, as the original lookup did.
void BM_FindnumberLinearScan(benchmark::State& state) {
  const NumberIndex index = SortedIndex(state.range(0));
  std::mt19937_64 rng(3);
  for (auto _ : state) {
    int64_t wanted = int64_t(rng() % uint64_t(state.range(0))) + 1;
    size_t i = 0;
    while (i < index.size() && index[i].number < wanted) ++i;
    benchmark::DoNotOptimize(i);
  }
}
BENCHMARK(BM_FindnumberLinearScan)->Arg(1000000);

}  // namespace
}  // namespace tilo
