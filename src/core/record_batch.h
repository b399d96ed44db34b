// SPDX-License-Identifier: MIT
// Record files written in a WriteBatch: a change of records and what goes with
// it (a line in the activity log, an incoming log entry) reach the disk together.
#pragma once

#include <cstdint>
#include <functional>

#include "core/indexed_file.h"
#include "core/write_batch.h"

namespace tilo {

// Runs `change` (Inserts, Removes or Rewrites of `file`) with its record writes
// held back, then writes them and what `more` adds in one batch: all of it
// reaches the disk or none. After a failed commit the index is built again from
// the file, which holds the old records. False when the change or the commit
// failed (after its message).
bool WriteTogether(IndexedFile& file, const std::function<bool()>& change,
                   const std::function<void(WriteBatch&)>& more = {});

// The record position of `number` in `file`, or -1 when it is not in the index.
int64_t PositionOf(const IndexedFile& file, int64_t number);

}  // namespace tilo
