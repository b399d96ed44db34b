// SPDX-License-Identifier: MIT
// The alphabetical sort of the inventory or the customers into a scratch file:
// f2.dat (items) or m2.dat (customers), rows of 110 bytes in order of first
// name byte, then second name byte, then the whole text. The NameKeys decide
// which records take part, so only the records that can match are read.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace tilo {

#pragma pack(push, 1)
struct SortRow {
  int64_t number;
  char text[42];     // description, or the customer's name
  char column3[30];  // quantity / total_sold as decimal text, or the road
  char column4[30];  // retail_price "%.2f" / date of last_used, or the telephone
};
#pragma pack(pop)
static_assert(sizeof(SortRow) == 110);
static_assert(offsetof(SortRow, number) == 0);
static_assert(offsetof(SortRow, text) == 8);
static_assert(offsetof(SortRow, column3) == 50);
static_assert(offsetof(SortRow, column4) == 80);

enum class SortKind {
  Listing,        // f2.dat: quantity and retail price
  HighestVolume,  // f2.dat: total sold and the date last sold
  Customers,      // m2.dat: road and telephone
};

const char* ScratchFile(SortKind kind);

// Sorts the records whose name starts with a character from `start` to `end`
// (lower case folds to upper; a start of 'A' takes in digits and spaces too)
// into the scratch file of `kind`, made anew. Returns the rows written, or -1
// when the range is refused (a start below 'A', an end below the start), memory
// runs out ("Insufficient memory to process request") or the file can't be
// written ("Data file: f2.dat." / "Data file: m2.dat.").
int64_t Alphasort(SortKind kind, unsigned char start, unsigned char end);

// The rows of a scratch file in file order; none (after "Data file: f2.dat, not
// present." or "Data file: m2.dat, not present.") when it is missing.
std::optional<std::vector<SortRow>> ReadSortRows(SortKind kind);

}  // namespace tilo
