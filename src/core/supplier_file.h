// SPDX-License-Identifier: MIT
// mans.dat, the suppliers: fixed records of 1058 bytes in the pattern of the
// inventory file, with an index but no NameKeys.
#pragma once

#include <cstdint>

#include "core/indexed_file.h"

namespace tilo {

inline constexpr int64_t kMansRecordSize = 1058;
extern const IndexedFileLayout kMansLayout;

// Builds the supplier index from mans.dat; false when it can't be opened.
bool LoadSupplierIndex();

}  // namespace tilo
