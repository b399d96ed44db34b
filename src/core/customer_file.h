// SPDX-License-Identifier: MIT
// member.dat, the customers: fixed records of 2094 bytes in the pattern of the
// inventory file, with their own index and NameKeys.
#pragma once

#include <cstdint>

#include "core/indexed_file.h"

namespace tilo {

inline constexpr int64_t kMemberRecordSize = 2094;
extern const IndexedFileLayout kMemberLayout;

// Builds the customer index from member.dat; false when it can't be opened.
bool LoadCustomerIndex();

}  // namespace tilo
