// SPDX-License-Identifier: MIT
// The history tree <year>/<month>/<day> of the transaction logs.
#pragma once

#include <string>

namespace tilo {

// Makes today's folders (from G().now) if they are missing.
void Makelogdirs();
// The folder of a date, "2026/11/22".
std::string DayFolder(int year, int month, int day);
// Writes the day's summary into thedaily.dat at `path`.
bool WriteDailySummary(const std::string& path);

}  // namespace tilo
