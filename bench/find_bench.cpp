// SPDX-License-Identifier: MIT
// The finds over 100,000 items and 100,000 customers, each to "No match found":
// the name find, whose NameKeys rule out 99% of the records unread, and the
// walks that read every live record (fragment, SKU 1, advanced, telephone),
// next to a plain sequential read of the same file (x_plain_read: the walk's
// time over the read's, timed in turn) and to the old way of opening, seeking,
// reading and closing once per record.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <functional>
#include <vector>

#include "bench_shop.h"
#include "core/customer_file.h"
#include "core/inventory.h"
#include "core/state.h"
#include "core/text.h"
#include "customers/customer_find.h"
#include "inventory/item_find.h"
#include "platform/files.h"
#include "platform/scripted_platform.h"

namespace tilo {
namespace {

constexpr int64_t kRecords = 100000;

// Two letters from AA to JJ: each first pair holds 1% of the records.
std::string Letters(int64_t i) {
  return {char('A' + i % 10), char('A' + (i / 10) % 10)};
}

template <typename Record>
void WriteFile(const std::string& path, const std::function<void(Record&, int64_t)>& fill) {
  if (auto size = FileSize(path); size && *size == kRecords * int64_t(sizeof(Record))) return;
  File f(path, File::Mode::Create);
  std::vector<Record> block(4096);
  for (int64_t done = 0; done < kRecords;) {
    const int64_t n = std::min<int64_t>(int64_t(block.size()), kRecords - done);
    for (int64_t i = 0; i < n; ++i) {
      block[size_t(i)] = Record{};
      fill(block[size_t(i)], done + i);
    }
    f.write(block.data(), n * int64_t(sizeof(Record)));
    done += n;
  }
}

// A shop of 100,000 items and customers, loaded into G(), the platform quiet.
void OpenShop() {
  static ScriptedPlatform quiet;
  static bool made = false;
  const std::string folder = (std::filesystem::temp_directory_path() / "tilo-bench-finds").string();
  if (!made) {
    std::filesystem::create_directories(folder);
    WriteFile<FilmRecord>(folder + "/film.dat", [](FilmRecord& r, int64_t i) {
      r.number = i + 1;
      SetField(r.description, Letters(i) + " ITEM " + std::to_string(i + 1));
      SetField(r.sku1, "50" + std::to_string(10000000000 + i));
      SetField(r.sku2, "CODE " + std::to_string(i));
      r.retail_price = 1.99f;
      r.quantity = 10;
    });
    WriteFile<MemberRecord>(folder + "/member.dat", [](MemberRecord& m, int64_t i) {
      m.number = i + 1;
      SetField(m.name, Letters(i) + "SON " + std::to_string(i + 1));
      SetField(m.telephone, "01632 " + std::to_string(100000 + i));
      SetField(m.telephone2, "07700 " + std::to_string(100000 + i));
    });
    made = true;
  }
  bench::EnterFolder(folder);
  ResetState();
  install_platform(&quiet);
  if (!G().films.Load() || !G().members.Load()) std::abort();
  quiet.clear_record();
}

int64_t PlainReadOnce(const char* path) {
  static std::vector<char> block(1 << 20);
  File f(path, File::Mode::Read);
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

// The walk's time over a plain sequential read of the same file, the two timed
// in turn so that a busy machine slows both alike: the median of nine pairs.
void CompareWithPlainRead(benchmark::State& state, const char* path,
                          const std::function<void()>& walk) {
  std::vector<double> ratios;
  for (int i = 0; i < 9; ++i) {
    const double plain = Milliseconds([path] { benchmark::DoNotOptimize(PlainReadOnce(path)); });
    ratios.push_back(Milliseconds(walk) / plain);
  }
  std::sort(ratios.begin(), ratios.end());
  state.counters["x_plain_read"] = ratios[ratios.size() / 2];
}

void Expect(benchmark::State& state, int64_t found) {
  if (found != 0) state.SkipWithError("a find that should fail found something");
}

// "AB?ZZ": 1,000 records share the keys AB and are read; none matches.
void BM_NameFindRuledOutByKeys(benchmark::State& state) {
  OpenShop();
  for (auto _ : state) Expect(state, Finditemdescription("AB?ZZ", false));
  WalkOptions o = PatternWalk("AB?ZZ", TILO_FIELD(FilmRecord, description));
  RecordWalk walk = G().films.Walk(o);
  while (walk.Next(&G().film)) {
  }
  state.counters["records_read"] = double(walk.records_read());
}
BENCHMARK(BM_NameFindRuledOutByKeys)->Unit(benchmark::kMillisecond);

void BM_ItemFragment(benchmark::State& state) {
  OpenShop();
  auto walk = [&] {
    Expect(state, Finditemfragment(DescriptionFragment("NOWHERE"), false, FindFrom::Menu));
  };
  for (auto _ : state) walk();
  CompareWithPlainRead(state, "film.dat", walk);
}
BENCHMARK(BM_ItemFragment)->Unit(benchmark::kMillisecond);

void BM_ItemSku1(benchmark::State& state) {
  OpenShop();
  auto walk = [&] {
    Expect(state, Finditemfragment(Sku1Fragment("999999"), false, FindFrom::Menu));
  };
  for (auto _ : state) walk();
  CompareWithPlainRead(state, "film.dat", walk);
}
BENCHMARK(BM_ItemSku1)->Unit(benchmark::kMillisecond);

// Advanced, any: a description and two SKU boxes, each SKU tried in all four.
void BM_ItemAdvanced(benchmark::State& state) {
  OpenShop();
  const std::vector<TextField> skus = {TILO_FIELD(FilmRecord, sku1), TILO_FIELD(FilmRecord, sku2),
                                       TILO_FIELD(FilmRecord, sku3), TILO_FIELD(FilmRecord, sku4)};
  auto walk = [&] {
    Expect(state,
           Finditemfragment(
               {{"NOWHERE", {TILO_FIELD(FilmRecord, description)}}, {"XYZ", skus}, {"QQQ", skus}},
               false, FindFrom::Menu));
  };
  for (auto _ : state) walk();
  CompareWithPlainRead(state, "film.dat", walk);
}
BENCHMARK(BM_ItemAdvanced)->Unit(benchmark::kMillisecond);

void BM_CustomerTelephone(benchmark::State& state) {
  OpenShop();
  auto walk = [&] { Expect(state, Findtelephone("4242424")); };
  for (auto _ : state) walk();
  CompareWithPlainRead(state, "member.dat", walk);
}
BENCHMARK(BM_CustomerTelephone)->Unit(benchmark::kMillisecond);

// The yardsticks: one plain sequential read of the file, nothing kept...
void PlainRead(benchmark::State& state, const char* path) {
  OpenShop();
  for (auto _ : state) benchmark::DoNotOptimize(PlainReadOnce(path));
}
void BM_PlainReadFilm(benchmark::State& state) {
  PlainRead(state, "film.dat");
}
BENCHMARK(BM_PlainReadFilm)->Unit(benchmark::kMillisecond);
void BM_PlainReadMember(benchmark::State& state) {
  PlainRead(state, "member.dat");
}
BENCHMARK(BM_PlainReadMember)->Unit(benchmark::kMillisecond);

// ... and the old way of a walk: open, seek, read one record, close, for each.
void BM_OpenSeekReadClosePerRecord(benchmark::State& state) {
  OpenShop();
  FilmRecord r{};
  for (auto _ : state) {
    for (int64_t pos = 0; pos < G().films.slot_count; ++pos) {
      File f("film.dat", File::Mode::Read);
      f.seek(pos * int64_t(sizeof r));
      benchmark::DoNotOptimize(f.read(&r, sizeof r));
    }
  }
}
BENCHMARK(BM_OpenSeekReadClosePerRecord)->Unit(benchmark::kMillisecond);

// The walk itself, every live record read and none passing: what the finds cost
// beyond their tests.
void BM_BareWalk(benchmark::State& state) {
  OpenShop();
  for (auto _ : state) {
    WalkOptions o;
    o.keys = LiveKey;
    o.test = [](const void*) { return false; };
    RecordWalk w = G().films.Walk(o);
    benchmark::DoNotOptimize(w.Next(&G().film));
  }
}
BENCHMARK(BM_BareWalk)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tilo
