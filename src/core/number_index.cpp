// SPDX-License-Identifier: MIT
#include "core/number_index.h"

#include <algorithm>

namespace tilo {

size_t Findnumber(const NumberIndex& index, int64_t number) {
  auto it = std::lower_bound(index.begin(), index.end(), number,
                             [](const IndexEntry& e, int64_t n) { return e.number < n; });
  return size_t(it - index.begin());
}

void Sortindex(NumberIndex& index, size_t count) {
  if (count < 2) return;
  std::stable_sort(index.begin(), index.begin() + ptrdiff_t(std::min(count, index.size())),
                   [](const IndexEntry& a, const IndexEntry& b) { return a.number < b.number; });
}

}  // namespace tilo
