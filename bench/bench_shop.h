// SPDX-License-Identifier: MIT
// Shops for benchmarks: a temporary working folder holding a large film.dat.
#pragma once

#include <cstdint>
#include <string>

namespace tilo::bench {

// A folder (made once per size and reused) whose film.dat holds `records` items
// numbered 1..records in shuffled order. Returns the folder's path.
const std::string& ShopWithItems(int64_t records);
// Makes `folder` the working folder.
void EnterFolder(const std::string& folder);

}  // namespace tilo::bench
