// SPDX-License-Identifier: MIT
// Large buffers filled once at start (the indexes of a big shop).
#pragma once

#include <cstddef>
#include <vector>

namespace tilo {

// Asks for a large buffer not yet written to be backed by huge pages: filling
// 16 MB then takes eight page faults instead of four thousand, which on a
// virtual machine is most of the cost of building an index. Anything smaller
// than a huge page, or a system without them, is left as it was.
void PreferHugePages(void* data, size_t bytes);

// Makes room for `count` elements, with huge pages where the room is new.
template <class T, class A>
void ReserveLarge(std::vector<T, A>& v, size_t count) {
  if (v.capacity() >= count) return;
  v.reserve(count);
  PreferHugePages(v.data(), v.capacity() * sizeof(T));
}

}  // namespace tilo
