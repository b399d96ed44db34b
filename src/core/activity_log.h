// SPDX-License-Identifier: MIT
// bun4.dat, the activity log: plain text entries, cut back by the capacity rule.
#pragma once

#include <string>
#include <string_view>

namespace tilo {

inline constexpr const char* kActivityLog = "bun4.dat";

// Appends an entry; false when the log can't be opened.
bool AppendToLog(std::string_view entry);
// Opens the log for reading and writing (creating it) and applies the capacity
// rule; false when it can't be opened.
bool Limitlog();

}  // namespace tilo
