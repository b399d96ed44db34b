// SPDX-License-Identifier: MIT
// A change of category: the quick-select panel filled from the keys kept in
// memory, next to the walk that reads film.dat record by record.
#include <benchmark/benchmark.h>

#include "bench_shop.h"
#include "core/film_record.h"
#include "core/state.h"
#include "platform/files.h"
#include "sale/screen.h"

namespace tilo {
namespace {

// Every item of the bench shop is in category 0: category 0 fills at once, and
// category 5 has nothing, so its fill walks the whole index.
constexpr int kFirstCategory = 0;
constexpr int kEmptyCategory = 5;

void OpenShop(int64_t items) {
  bench::EnterFolder(bench::ShopWithItems(items));
  ResetState();
  WatchInventory();
  G().films.Load();
}

void BM_FillquickselectFromMemory(benchmark::State& state) {
  OpenShop(state.range(0));
  G().settings.current_category = int(state.range(1));
  for (auto _ : state) {
    Fillquickselect();
    benchmark::DoNotOptimize(G().screen.quick_number[0]);
  }
}
BENCHMARK(BM_FillquickselectFromMemory)
    ->Args({100000, kFirstCategory})
    ->Args({100000, kEmptyCategory})
    ->Args({1000000, kEmptyCategory})
    ->Unit(benchmark::kMicrosecond);

// The walk as first designed: film.dat opened, the index walked in number order
// and every record read until fourteen qualify.
void BM_FillquickselectReadingEveryRecord(benchmark::State& state) {
  OpenShop(state.range(0));
  const int category = int(state.range(1));
  for (auto _ : state) {
    File f(kFilmFile, File::Mode::Read);
    int filled = 0;
    FilmRecord r;
    for (const IndexEntry& e : G().films.index) {
      if (e.number < 1) continue;
      f.seek(e.position * int64_t(sizeof r));
      f.read(&r, sizeof r);
      if ((r.display_category == category || category == 18) && r.omit_quick_select != 2)
        if (++filled == 14) break;
    }
    benchmark::DoNotOptimize(filled);
  }
}
BENCHMARK(BM_FillquickselectReadingEveryRecord)
    ->Args({100000, kFirstCategory})
    ->Args({100000, kEmptyCategory})
    ->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace tilo
