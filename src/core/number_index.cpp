// SPDX-License-Identifier: MIT
#include "core/number_index.h"

#include <algorithm>
#include <array>

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

// A stable least-significant-digit radix sort in 16-bit digits. Digits that are
// the same in every entry (the high digits of a shop's numbers) are skipped, so
// a file numbered up to a few million sorts in two passes.
void RadixSort(IndexEntry* first, size_t count) {
  uint64_t all_or = 0, all_and = ~uint64_t(0);
  for (size_t i = 0; i < count; ++i) {
    all_or |= Key(first[i]);
    all_and &= Key(first[i]);
  }
  std::vector<IndexEntry> scratch(count);
  IndexEntry* from = first;
  IndexEntry* to = scratch.data();
  for (int shift = 0; shift < 64; shift += 16) {
    if (((all_or ^ all_and) >> shift & 0xFFFF) == 0) continue;
    std::vector<size_t> start(65537, 0);
    for (size_t i = 0; i < count; ++i) ++start[(Key(from[i]) >> shift & 0xFFFF) + 1];
    for (size_t d = 1; d <= 65536; ++d) start[d] += start[d - 1];
    for (size_t i = 0; i < count; ++i) to[start[Key(from[i]) >> shift & 0xFFFF]++] = from[i];
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

void Sortindex(NumberIndex& index, size_t count) {
  count = std::min(count, index.size());
  if (count < 2) return;
  if (count < 512)
    InsertionSort(index.data(), count);
  else
    RadixSort(index.data(), count);
}

}  // namespace tilo
