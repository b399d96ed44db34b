// SPDX-License-Identifier: MIT
#include "upkeep/purge.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>

#include "core/activity_log.h"
#include "core/history.h"
#include "core/settings.h"
#include "core/state.h"
#include "platform/files.h"
#include "platform/platform.h"

namespace tilo {
namespace {

// A folder that is already gone counts as removed.
bool RemoveFolder(const std::string& path) {
  return ::rmdir(path.c_str()) == 0 || errno == ENOENT;
}

void PurgeDay(int year, int month, int day) {
  RemoveFile(DayBasePath(year, month, day));
  RemoveFile(SalesLogPath(year, month, day));
  RemoveFile(ItemsLogPath(year, month, day));
  RemoveFile(DailySummaryPath(year, month, day));
  RemoveFile(StockInPath(year, month, day));
  RemoveFolder(DayFolder(year, month, day));
}

// Deletes one year's files and folders; false when its folder stays.
bool PurgeYear(int year) {
  for (int month = 1; month <= 12; ++month) {
    for (int day = 1; day <= 31; ++day) PurgeDay(year, month, day);
    RemoveFile(MonthBasePath(year, month));
    RemoveFolder(MonthFolder(year, month));
  }
  RemoveFile(YearBasePath(year));
  return RemoveFolder(YearFolder(year));
}

}  // namespace

bool PurgeHistoryTree(int from_year) {
  bool complete = true;
  for (int year = from_year; year >= 2000; --year) {
    if (year != from_year && !FileExists(YearBasePath(year))) break;
    if (!PurgeYear(year)) {
      char text[64];
      std::snprintf(text, sizeof text, "Please manually delete the %d folder", year);
      Message(text, "Unable to complete purge, access denied");
      complete = false;
    }
  }
  return complete;
}

int PurgeStartYear() {
  return std::max(int(G().settings.last_used_year), platform().now().year);
}

bool Purgeyears() {
  const bool complete = PurgeHistoryTree(PurgeStartYear());
  G().settings.transaction_number = 1;
  if (!Savesettings()) Message("WR.CFG", "Problem");
  return complete;
}

void Purgehistory() {
  if (Message("All history will be purged and the transaction set to 1", "Important",
              Buttons::OkCancel) != Answer::Ok)
    return;
  Purgeyears();
  Makelogdirs();
  Message("Complete", "Transaction history purge");
}

void Purgelogfiles() {
  RemoveFile(kPreviousActivityLog);
  RemoveFile(kActivityLog);
  Message("Complete.", "Purge Log files: bun2.dat and bun4.dat");
}

}  // namespace tilo
