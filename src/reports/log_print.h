// SPDX-License-Identifier: MIT
// Printing the activity log: today's part of bun4.dat, the part from a day
// typed in, the whole of bun4.dat or of bun2.dat, page by page under the header
// "<store> Log file: dd/mm/yyyy      Page: n".
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "documents/print_target.h"

namespace tilo {

enum LogPrintMode : int {
  kLogToday = 2,     // bun4.dat from today's first entry
  kLogWhole = 4,     // bun4.dat from its start
  kLogFromDay = 6,   // bun4.dat from the first entry of a day typed in
  kLogPrevious = 8,  // bun2.dat from its start
};

// Where the first entry of a day begins: reading byte by byte, from the 13th
// byte on the last ten bytes read are compared with the date ("dd/mm/yyyy");
// the entry's time stands 16 bytes before the end of the match. nullopt when
// no entry has that date.
std::optional<int64_t> Findlogdate(const std::string& path, const std::string& date_text);

// The job of one log print: the file, the date of the header, where page 1
// starts and where the next page goes on.
struct LogPrint {
  std::string path;
  std::string date_text;  // "dd/mm/yyyy"
  int64_t start = 0;
  int64_t resume = 0;
};
// Draws one page of the log and, when more follows, adds 1 to the job's page
// number and keeps its place in `job`.
void Printlogpage(LogPrint& job, PrintTarget& target);

// The four print commands. The day is asked for in mode 6 only.
void Printlog(int mode);

}  // namespace tilo
