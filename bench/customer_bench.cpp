// SPDX-License-Identifier: MIT
// The step of a new customer that looks for possible doubles (same name, road
// starting alike) over 100,000 customers, against one plain read of member.dat.
// The new customer matches nobody, so the whole file is looked through.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <filesystem>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "bench_shop.h"
#include "core/customer_file.h"
#include "core/state.h"
#include "core/text.h"
#include "customers/customer_maintenance.h"
#include "platform/files.h"

namespace tilo {
namespace {

constexpr int64_t kCustomers = 100000;

// 100,000 customers numbered in shuffled order, a few hundred surnames, so that
// NameKeys let through one record in a few hundred.
const std::string& CustomerShop() {
  static std::string folder;
  if (!folder.empty()) return folder;
  folder = (std::filesystem::temp_directory_path() / "tilo-bench-customers").string();
  std::filesystem::create_directories(folder);
  bench::EnterFolder(folder);
  auto size = FileSize(kMemberFile);
  if (!size || *size != kCustomers * int64_t(sizeof(MemberRecord))) {
    std::vector<int64_t> numbers(static_cast<size_t>(kCustomers));
    std::iota(numbers.begin(), numbers.end(), 1);
    std::shuffle(numbers.begin(), numbers.end(), std::mt19937_64(5));
    std::vector<MemberRecord> records(static_cast<size_t>(kCustomers));
    for (size_t i = 0; i < records.size(); ++i) {
      MemberRecord& m = records[i];
      m.number = numbers[i];
      const int64_t n = numbers[i];
      std::string name(1, char('A' + n % 26));
      name += char('A' + (n / 26) % 26);
      SetField(m.name, name + "SON " + std::to_string(n % 1000));
      SetField(m.road, std::to_string(n % 300) + " HIGH STREET");
      SetField(m.last_used, "NEW");
      m.group = 1;
      m.tax = 1;
    }
    ReplaceFile(kMemberFile, records.data(), int64_t(records.size() * sizeof(MemberRecord)));
  }
  return folder;
}

MemberRecord Newcomer() {
  MemberRecord m{};
  m.number = kCustomers + 1;
  SetField(m.name, "ABSON 999999");  // NameKeys agree with some; no full match
  SetField(m.road, "1 NOWHERE LANE");
  return m;
}

void BM_NewCustomerDoubles(benchmark::State& state) {
  bench::EnterFolder(CustomerShop());
  ResetState();
  LoadCustomerIndex();
  const MemberRecord fresh = Newcomer();
  size_t found = 0;
  for (auto _ : state) {
    Doubles d = FindDoubles(fresh);
    found = d.by_name.size() + d.by_address.size();
    benchmark::DoNotOptimize(d);
  }
  state.counters["rows"] = double(found);
}
BENCHMARK(BM_NewCustomerDoubles)->Unit(benchmark::kMillisecond);

// The yardstick: one sequential read of member.dat in large blocks.
void BM_PlainReadOfMemberDat(benchmark::State& state) {
  bench::EnterFolder(CustomerShop());
  std::vector<char> block(1 << 20);
  for (auto _ : state) {
    int64_t total = 0;
    File f(kMemberFile, File::Mode::Read);
    for (int64_t n; (n = f.read(block.data(), int64_t(block.size()))) > 0;) total += n;
    benchmark::DoNotOptimize(total);
  }
}
BENCHMARK(BM_PlainReadOfMemberDat)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tilo
