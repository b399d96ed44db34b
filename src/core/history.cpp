// SPDX-License-Identifier: MIT
#include "core/history.h"

#include <string>

#include "core/state.h"
#include "platform/files.h"

namespace tilo {

std::string DayFolder(int year, int month, int day) {
  return std::to_string(year) + "/" + std::to_string(month) + "/" + std::to_string(day);
}

void Makelogdirs() {
  const LocalTime& now = G().now;
  MakeFolder(std::to_string(now.year));
  MakeFolder(std::to_string(now.year) + "/" + std::to_string(now.month));
  MakeFolder(DayFolder(now.year, now.month, now.day));
}

// Seam: the summary text comes with the transaction logs; the file is created now.
bool WriteDailySummary(const std::string& path) { return ReplaceFile(path, std::string()); }

}  // namespace tilo
