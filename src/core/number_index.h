// SPDX-License-Identifier: MIT
// The in-memory index of a record file: (number, position) pairs in ascending
// order of number, the deleted records (number -1) forming a block at the front.
// One index type serves film.dat, member.dat and mans.dat.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tilo {

struct IndexEntry {
  int64_t number = 0;
  int64_t position = 0;
  bool operator==(const IndexEntry&) const = default;
};

// The end of the vector stands for the all-zero terminator of the index.
using NumberIndex = std::vector<IndexEntry>;

// The slot of the first entry whose number is not below `number`, or index.size()
// (the terminator). The caller compares for equality. Because the index is always
// in order this is a binary search with the result of a walk from the front.
size_t Findnumber(const NumberIndex& index, int64_t number);

// Sorts the first `count` entries by number; equal numbers keep their order.
void Sortindex(NumberIndex& index, size_t count);
// The same over `count` entries at `first`, with room for as many in `scratch`.
void SortEntries(IndexEntry* first, size_t count, IndexEntry* scratch);

}  // namespace tilo
