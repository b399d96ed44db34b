// SPDX-License-Identifier: MIT
// The sale: adding a line by number as the inventory grows, and committing a
// basket of 1 and of 400 lines, with the files it opens.
#include <benchmark/benchmark.h>
#include <dlfcn.h>
#include <fcntl.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdarg>
#include <cstring>
#include <filesystem>
#include <random>
#include <vector>

#include "bench_shop.h"
#include "core/history.h"
#include "core/inventory.h"
#include "core/settings.h"
#include "core/state.h"
#include "core/text.h"
#include "platform/files.h"
#include "sale/basket.h"
#include "sale/commit.h"

namespace {
std::atomic<int64_t> opens{0};
}

// Every open of the process passes here first, so a benchmark can count them.
extern "C" int open(const char* path, int flags, ...) {
  using OpenFn = int (*)(const char*, int, ...);
  static OpenFn real = reinterpret_cast<OpenFn>(dlsym(RTLD_NEXT, "open"));
  mode_t mode = 0;
  if (flags & (O_CREAT | O_TMPFILE)) {
    va_list args;
    va_start(args, flags);
    mode = va_arg(args, mode_t);
    va_end(args);
  }
  opens.fetch_add(1, std::memory_order_relaxed);
  return real(path, flags, mode);
}

namespace tilo {
namespace {

double Percentile(std::vector<double> samples, double q) {
  if (samples.empty()) return 0;
  const size_t k = std::min(samples.size() - 1, size_t(q * double(samples.size())));
  std::nth_element(samples.begin(), samples.begin() + ptrdiff_t(k), samples.end());
  return samples[k];
}

void EmptyBasket() {
  std::memset(&G().basket, 0, sizeof(Basket));
  G().basket_list = BasketList{};
}

// One line by number into a basket, the inventory holding range(0) items; each
// call is timed alone, and a full basket is emptied outside the clock.
void BM_AddtobasketByNumber(benchmark::State& state) {
  const int64_t items = state.range(0);
  bench::EnterFolder(bench::ShopWithItems(items));
  ResetState();
  G().films.Load();
  G().settings.tax1_switch = 2;
  G().settings.tax1_rate = 2000;
  std::mt19937_64 rng(5);
  std::vector<double> micros;
  for (auto _ : state) {
    if (G().basket.line_count >= kBasketLines) EmptyBasket();
    const int64_t number = int64_t(rng() % uint64_t(items)) + 1;
    const auto start = std::chrono::steady_clock::now();
    Addtobasket(number, kEntryNormal);
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    state.SetIterationTime(took.count());
    micros.push_back(took.count() * 1e6);
  }
  state.counters["median_us"] = Percentile(micros, 0.5);
  state.counters["p99_us"] = Percentile(micros, 0.99);
  EmptyBasket();
}
BENCHMARK(BM_AddtobasketByNumber)
    ->Arg(10000)
    ->Arg(100000)
    ->Arg(1000000)
    ->UseManualTime()
    ->Iterations(20000)
    ->Unit(benchmark::kMicrosecond);

// A shop of 400 items with its day's folders, made once.
const std::string& CommitShop() {
  static std::string folder;
  if (!folder.empty()) return folder;
  folder = (std::filesystem::temp_directory_path() / "tilo-bench-commit").string();
  std::filesystem::remove_all(folder);
  std::filesystem::create_directories(folder);
  bench::EnterFolder(folder);
  ResetState();
  Firstrunsettings();
  std::vector<FilmRecord> records(kBasketLines);
  for (int k = 0; k < kBasketLines; ++k) {
    records[size_t(k)].number = k + 1;
    SetField(records[size_t(k)].description, "ITEM " + std::to_string(k + 1));
    records[size_t(k)].retail_price = 2.49f;
    records[size_t(k)].quantity = 1000000;
    records[size_t(k)].display_category = k % 18;
  }
  File f(kFilmFile, File::Mode::Create);
  f.write(records.data(), int64_t(records.size() * sizeof(FilmRecord)));
  return folder;
}

// Finishsale of a basket of range(0) lines of different items.
void BM_Finishsale(benchmark::State& state) {
  bench::EnterFolder(CommitShop());
  ResetState();
  Opensettings();
  G().films.Load();
  Makelogdirs();
  G().settings.negative_stock = 2;
  int64_t opened = 0;
  for (auto _ : state) {
    state.PauseTiming();
    for (int k = 0; k < state.range(0); ++k) Addtobasket(k + 1, kEntryNormal);
    SetField(G().basket.payment_type, "Cash");
    G().basket.tender_cash = G().basket.total;
    const int64_t before = opens.load();
    state.ResumeTiming();
    Finishsale();
    opened += opens.load() - before;
  }
  state.counters["opens"] = double(opened) / double(state.iterations());
  state.counters["opens_one_per_line"] = double(state.range(0) + 5);
}
BENCHMARK(BM_Finishsale)->Arg(1)->Arg(400)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tilo
