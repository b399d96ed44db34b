// SPDX-License-Identifier: MIT
#include "core/number_index.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/memory.h"

namespace tilo {
namespace {

// Numbers as unsigned keys in the same order: the sign bit flipped.
uint64_t Key(const IndexEntry& e) {
  return uint64_t(e.number) ^ (uint64_t(1) << 63);
}

void InsertionSort(IndexEntry* first, size_t count) {
  for (size_t i = 1; i < count; ++i) {
    IndexEntry e = first[i];
    size_t j = i;
    while (j > 0 && first[j - 1].number > e.number) {
      first[j] = first[j - 1];
      --j;
    }
    first[j] = e;
  }
}

// A stable least-significant-digit radix sort in 11-bit digits: the 2,048
// counters, and the as many places being written to, stay in the first-level
// caches. Digits that are the same in every entry (the high digits of a shop's
// numbers) are skipped, so numbers up to four million sort in two passes; the
// counts of every digit come from one pass.
void RadixSort(IndexEntry* first, size_t count, IndexEntry* scratch) {
  constexpr int kBits = 11;
  constexpr int kDigits = (64 + kBits - 1) / kBits;
  constexpr uint64_t kMask = (uint64_t(1) << kBits) - 1;
  uint64_t all_or = 0, all_and = ~uint64_t(0);
  for (size_t i = 0; i < count; ++i) {
    all_or |= Key(first[i]);
    all_and &= Key(first[i]);
  }
  int shifts[kDigits];
  int passes = 0;
  for (int shift = 0; shift < 64; shift += kBits)
    if (((all_or ^ all_and) >> shift & kMask) != 0) shifts[passes++] = shift;
  if (passes == 0) return;

  std::vector<std::array<size_t, kMask + 1>> start(size_t(passes), std::array<size_t, kMask + 1>{});
  for (size_t i = 0; i < count; ++i) {
    const uint64_t key = Key(first[i]);
    for (int p = 0; p < passes; ++p) ++start[size_t(p)][key >> shifts[p] & kMask];
  }
  for (auto& counts : start) {
    size_t sum = 0;
    for (size_t& c : counts) sum += std::exchange(c, sum);
  }
  IndexEntry* from = first;
  IndexEntry* to = scratch;
  for (int p = 0; p < passes; ++p) {
    auto& next = start[size_t(p)];
    const int shift = shifts[p];
    for (size_t i = 0; i < count; ++i) to[next[Key(from[i]) >> shift & kMask]++] = from[i];
    std::swap(from, to);
  }
  if (from != first) std::copy(from, from + count, first);
}

}  // namespace

size_t Findnumber(const NumberIndex& index, int64_t number) {
  auto it = std::lower_bound(index.begin(), index.end(), number,
                             [](const IndexEntry& e, int64_t n) { return e.number < n; });
  return size_t(it - index.begin());
}

void SortEntries(IndexEntry* first, size_t count, IndexEntry* scratch) {
  if (count < 512)
    InsertionSort(first, count);
  else
    RadixSort(first, count, scratch);
}

void Sortindex(NumberIndex& index, size_t count) {
  count = std::min(count, index.size());
  if (count < 512) return InsertionSort(index.data(), count);
  std::vector<IndexEntry> scratch;
  ReserveLarge(scratch, count);
  scratch.resize(count);
  RadixSort(index.data(), count, scratch.data());
}

}  // namespace tilo
