// SPDX-License-Identifier: MIT
// A cash sale of a three-line basket from "OK" on the cash form to the empty
// basket and the next transaction number, without a receipt: the customer waits
// for this. The shop holds 100,000 items.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>

#include "bench_shop.h"
#include "core/history.h"
#include "core/settings.h"
#include "core/state.h"
#include "sale/basket.h"
#include "tender/cash.h"

namespace tilo {
namespace {

void CashSaleOfThreeLines(benchmark::State& state) {
  const std::string items = bench::ShopWithItems(100000);
  const std::string folder =
      (std::filesystem::temp_directory_path() / "tilo-bench-cash-sale").string();
  std::filesystem::remove_all(folder);
  std::filesystem::create_directories(folder);
  bench::EnterFolder(folder);
  ResetState();
  if (!Firstrunsettings()) state.SkipWithError("no fresh shop");
  std::filesystem::copy_file(items + "/film.dat", folder + "/film.dat",
                             std::filesystem::copy_options::overwrite_existing);
  ResetState();
  Opensettings();
  G().films.Load();
  Makelogdirs();
  SettingsRecord& s = G().settings;
  s.negative_stock = 2;  // the same three items sell again and again
  s.sound_off = 2;
  int64_t sold = 0;
  for (auto _ : state) {
    state.PauseTiming();
    for (int64_t n : {17, 50001, 99999}) Addtobasket(n, 0);
    Starttender();
    const float total = G().basket.total;
    state.ResumeTiming();
    Finishcash(*Cashok("10000", Livechange("10000", total).text, total));
    ++sold;
  }
  if (G().settings.transaction_number < sold) state.SkipWithError("sales were not committed");
  state.SetItemsProcessed(sold);
  std::filesystem::remove_all(folder);
}
BENCHMARK(CashSaleOfThreeLines)->Unit(benchmark::kMillisecond)->MinTime(2.0);

}  // namespace
}  // namespace tilo
