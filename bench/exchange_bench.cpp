// SPDX-License-Identifier: MIT
// Export and import of a large inventory, each beside a plain read and write of
// the same bytes.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <vector>

#include "bench_shop.h"
#include "core/state.h"
#include "platform/files.h"
#include "platform/scripted_platform.h"
#include "upkeep/export.h"
#include "upkeep/import.h"

namespace tilo {
namespace {

class Answers : public ExchangeView {
 public:
  std::optional<ExportChoice> export_form(const ExportChoice& defaults) override {
    return defaults;
  }
  std::optional<ExportFields> export_fields(bool) override { return ExportFields{}; }
  std::optional<ImportColumns> import_columns(bool, const std::string&,
                                              const ImportColumns& defaults) override {
    return defaults;
  }
};

// A folder of its own holding a copy of the big film.dat (the import replaces
// it), with the store's state loaded and a scripted platform in force.
struct Shop {
  explicit Shop(int64_t items) {
    const std::string source = bench::ShopWithItems(items) + "/film.dat";
    folder = (std::filesystem::temp_directory_path() / "tilo-bench-exchange").string();
    std::filesystem::create_directories(folder);
    std::filesystem::copy_file(source, folder + "/film.dat",
                               std::filesystem::copy_options::overwrite_existing);
    bench::EnterFolder(folder);
    ResetState();
    install_platform(&platform);
    install_exchange_view(&answers);
    G().films.Load();
  }
  ~Shop() {
    install_exchange_view(nullptr);
    install_platform(nullptr);
  }
  void Export(const char* path) {
    platform.queue_prompt(path);
    Exportfile();
  }
  std::string folder;
  ScriptedPlatform platform;
  Answers answers;
};

// Reads `path` in large blocks, as a plain sequential read does.
int64_t ReadAll(const char* path) {
  File in(path, File::Mode::Read);
  std::vector<char> block(1 << 22);
  int64_t total = 0;
  for (int64_t n; (n = in.read(block.data(), int64_t(block.size()))) > 0;) total += n;
  return total;
}

void BM_ExportItems(benchmark::State& state) {
  Shop shop(state.range(0));
  shop.Export("export.txt");  // the copy settles, as before the yardstick
  for (auto _ : state) shop.Export("export.txt");
  state.counters["bytes"] = double(*FileSize("export.txt"));
}
BENCHMARK(BM_ExportItems)->Arg(100000)->Unit(benchmark::kMillisecond)->Iterations(3);

// The yardstick: film.dat read through and the export's bytes written whole.
void BM_ExportPlainReadWrite(benchmark::State& state) {
  Shop shop(state.range(0));
  shop.Export("export.txt");
  const std::string bytes = *ReadWholeFile("export.txt");
  for (auto _ : state) {
    benchmark::DoNotOptimize(ReadAll("film.dat"));
    ReplaceFile("plain.txt", bytes);
  }
}
BENCHMARK(BM_ExportPlainReadWrite)->Arg(100000)->Unit(benchmark::kMillisecond)->Iterations(3);

void BM_ImportItems(benchmark::State& state) {
  Shop shop(state.range(0));
  shop.Export("import.txt");
  for (auto _ : state) {
    shop.platform.queue_prompt("1");
    shop.platform.queue_file("import.txt");
    Importfile();
  }
  if (G().films.live != state.range(0)) state.SkipWithError("not every row came in");
}
BENCHMARK(BM_ImportItems)->Arg(100000)->Unit(benchmark::kMillisecond)->Iterations(3);

// The yardstick: the text read whole and a film.dat of the same records
// written aside, flushed and renamed in.
void BM_ImportPlainReadWrite(benchmark::State& state) {
  Shop shop(state.range(0));
  shop.Export("import.txt");
  const std::string records = *ReadWholeFile("film.dat");
  for (auto _ : state) {
    benchmark::DoNotOptimize(ReadAll("import.txt"));
    ReplaceFile("plain.dat", records);
  }
}
BENCHMARK(BM_ImportPlainReadWrite)->Arg(100000)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace
}  // namespace tilo
