// SPDX-License-Identifier: MIT
// Stock lists and listings over a shop of 1,000,000 items, each beside one
// plain sequential read of film.dat: the reorder list (number order), the out
// of stock list (file order), the best sellers into f2.dat, the inventory
// listing printed from number 1, and
// one page turn of the screen list.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <vector>

#include "bench_shop.h"
#include "core/state.h"
#include "documents/print_service.h"
#include "documents/recording_target.h"
#include "inventory/stock_lists.h"
#include "platform/files.h"
#include "platform/scripted_platform.h"
#include "reports/listings.h"

namespace tilo {
namespace {

constexpr int64_t kItems = 1000000;

// A printer that counts the texts drawn instead of keeping them.
class CountingTarget : public RecordingTarget {
 public:
  explicit CountingTarget(int64_t* count) : count_(count) {}
  void text_out(int, int, const std::string&) override { ++*count_; }

 private:
  int64_t* count_;
};

class CountingPrinters : public RecordingPrintService {
 public:
  std::unique_ptr<PrintTarget> printer_dialog(int32_t& copies) override {
    copies = 1;
    return std::make_unique<CountingTarget>(&texts);
  }
  int64_t texts = 0;
};

ScriptedPlatform quiet;

void OpenShop() {
  static bool loaded = false;
  bench::EnterFolder(bench::ShopWithItems(kItems));
  if (loaded) return;
  ResetState();
  install_platform(&quiet);
  if (!G().films.Load()) std::abort();
  loaded = true;
}

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

// The work's time over a plain read, timed in turn: the median of five pairs.
void CompareWithPlainRead(benchmark::State& state, const std::function<void()>& work) {
  std::vector<double> ratios;
  for (int i = 0; i < 5; ++i) {
    const double plain = Milliseconds([] { benchmark::DoNotOptimize(PlainReadOnce()); });
    ratios.push_back(Milliseconds(work) / plain);
  }
  std::sort(ratios.begin(), ratios.end());
  state.counters["x_plain_read"] = ratios[ratios.size() / 2];
}

void StockListBench(benchmark::State& state, StockList list) {
  OpenShop();
  auto work = [&] {
    auto rows = Stocklistrows(list);
    if (!rows) state.SkipWithError("the list failed");
    benchmark::DoNotOptimize(rows);
  };
  for (auto _ : state) work();
  CompareWithPlainRead(state, work);
}

void BM_ReorderList(benchmark::State& state) {
  StockListBench(state, StockList::Reorder);
}
BENCHMARK(BM_ReorderList)->Unit(benchmark::kMillisecond)->Iterations(1);

void BM_OutOfStockList(benchmark::State& state) {
  StockListBench(state, StockList::OutOfStock);
}
BENCHMARK(BM_OutOfStockList)->Unit(benchmark::kMillisecond)->Iterations(1);

// Every item into f2.dat by falling sales.
void BM_BestSellers(benchmark::State& state) {
  OpenShop();
  auto work = [&] {
    if (Writebestsellers(kAllCategories) != kItems) state.SkipWithError("rows missing");
  };
  for (auto _ : state) work();
  CompareWithPlainRead(state, work);
}
BENCHMARK(BM_BestSellers)->Unit(benchmark::kMillisecond)->Iterations(1);

void BM_InventoryListingPrinted(benchmark::State& state) {
  OpenShop();
  CountingPrinters printers;
  install_print_service(&printers);
  auto work = [&] {
    PrintChoice all;
    std::unique_ptr<ListingSource> source = Listingsource(kPrintInventoryFromNumber, all);
    Printlisting("SHOP Inventory list: ", "Number", *source);
  };
  for (auto _ : state) work();
  CompareWithPlainRead(state, work);
  state.counters["texts"] = double(printers.texts);
  install_print_service(nullptr);
}
BENCHMARK(BM_InventoryListingPrinted)->Unit(benchmark::kMillisecond)->Iterations(1);

void BM_ScreenListPageTurn(benchmark::State& state) {
  OpenShop();
  ScreenList list("Inventory list", Listingfill(kInventoryList, 500000));
  list.Load();
  for (auto _ : state) {
    list.More();
    list.Back();
  }
}
BENCHMARK(BM_ScreenListPageTurn)->Unit(benchmark::kMillisecond);

void BM_PlainReadOfFilmDat(benchmark::State& state) {
  OpenShop();
  for (auto _ : state) benchmark::DoNotOptimize(PlainReadOnce());
}
BENCHMARK(BM_PlainReadOfFilmDat)->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace
}  // namespace tilo
