// SPDX-License-Identifier: MIT
// The rebuild of the record files: the one place that repairs them. Bad numbers
// become deleted records, a number met again later in the file is deleted there
// (the earlier record stands), the loan fields are cleared, and the index is
// built anew in the same pass.
#pragma once

#include <cstdint>
#include <vector>

#include "core/indexed_file.h"
#include "platform/platform.h"

namespace tilo {

enum class RebuildKind { Inventory, Customers, Suppliers };

// Remembers the numbers met so far; Seen() is true for a number already there
// (and adds it otherwise). Open addressing on the number itself, so a million
// records cost a million probes rather than a scan each.
class NumberSet {
 public:
  explicit NumberSet(int64_t expected);
  bool Seen(int64_t number);

 private:
  void Grow();
  std::vector<int64_t> slots_;  // 0 is empty: live numbers are above 0
  int64_t used_ = 0;
};

// Puts one record right: a number of 0 or below (but -1) becomes -1 with the
// first two bytes of its first field cleared, a number already in `seen` is
// deleted the same way, and the fields the kind clears are cleared.
void RepairRecord(RebuildKind kind, char* record, NumberSet& seen);

// Rewrites `file` repaired (aside, then renamed over it) and rebuilds its index,
// NameKeys and on_record cache. False after a "Fatal error" message when the
// file is missing, empty or not whole records, or when it can't be written.
bool RebuildFile(IndexedFile& file, RebuildKind kind, Progress& progress);

// Rebuilds film.dat, member.dat and mans.dat in turn, refreshes the
// quick-select keys, and shows "Complete." under "File rebuild" when all went.
bool Rebuildfiles();

}  // namespace tilo
