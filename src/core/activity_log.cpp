// SPDX-License-Identifier: MIT
#include "core/activity_log.h"

#include <cstdio>

#include "core/state.h"
#include "platform/file_faults.h"
#include "platform/files.h"

namespace tilo {

bool AppendToLog(std::string_view entry) {
  return AppendToFile(kActivityLog, entry);
}

std::string LogStamp() {
  const char* t = G().stamp_text;
  char text[64];
  std::snprintf(text, sizeof text, "%c%c:%c%c %s", t[0], t[1], t[3], t[4], t + 5);
  return text;
}

std::string StampedEntry(std::string_view what) {
  return "\r\n" + LogStamp() + "  " + std::string(what) + "\r\n";
}

int64_t LogLimit(int32_t log_capacity) {
  if (log_capacity < 0 || log_capacity >= kLogCapacityRows) log_capacity = 0;
  return 100000 + 50000 * int64_t(log_capacity);
}

std::string LogCapacityRow(int n) {
  return std::to_string(100 + 50 * n) + "K";
}

bool Limitlog() {
  int64_t size = 0;
  {
    File log(kActivityLog, File::Mode::ReadWrite);
    if (!log) return false;
    size = log.size();
  }
  if (size > LogLimit(G().settings.log_capacity)) {
    RemoveFile(kPreviousActivityLog);
    if (RenameFile(kActivityLog, kPreviousActivityLog)) SyncFolder(".");
  }
  return true;
}

}  // namespace tilo
