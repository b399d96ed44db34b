// SPDX-License-Identifier: MIT
// The activity log: bun4.dat, plain text entries each opened by a blank line and
// ended by CR LF, and bun2.dat, the generation before it. The log is cut back
// only at a start, by the capacity rule.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tilo {

inline constexpr const char* kActivityLog = "bun4.dat";
inline constexpr const char* kPreviousActivityLog = "bun2.dat";
inline constexpr int kLogCapacityRows = 9;

// Appends an entry at the end of bun4.dat, creating it; false when the log
// can't be opened.
bool AppendToLog(std::string_view entry);

// "HH:MM dd/mm/yyyy": the time and date of stamp_text as entries print them
// ("%c%c:%c%c %s").
std::string LogStamp();
// "\r\nHH:MM dd/mm/yyyy  <what>\r\n", the form of the switch-on, switch-off and
// log-on entries.
std::string StampedEntry(std::string_view what);

// The size bun4.dat may reach before a start moves it to bun2.dat: row n of the
// "Log capacity" list is 100000 + 50000 n bytes. A row outside 0 to 8 counts as 0.
int64_t LogLimit(int32_t log_capacity);
// The text of row n of the "Log capacity" list: "%dK" with 100 + 50 n.
std::string LogCapacityRow(int n);

// Opens bun4.dat for reading and writing, creating it, and applies the capacity
// rule: above the limit, bun2.dat is deleted and bun4.dat becomes bun2.dat.
// False when the log can't be opened.
bool Limitlog();

}  // namespace tilo
