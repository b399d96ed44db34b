// SPDX-License-Identifier: MIT
// Units by category: how many units of each of the 18 inventory categories were
// sold, and for how much, today or in the month so far. The commit keeps the
// counters in the settings record; nothing here reads a log.
#pragma once

#include <array>
#include <string>

#include "core/settings.h"
#include "documents/print_target.h"

namespace tilo {

inline constexpr int kUnitCategories = 18;

struct CategoryUnits {
  std::string code;  // the three-letter code, Windows-1252
  int32_t units = 0;
  double total = 0;
};

// The figures of every category: the day's, or the month's (today's total plus
// the history of the days of this month before today, `today_day` - 1 of them).
std::array<CategoryUnits, kUnitCategories> UnitsByCategory(const SettingsRecord& s, bool month,
                                                           int today_day);

// "Units by category for today" / "Units by category for month".
std::string UnitsByCategoryTitle(bool month);

// The printed page: the store's name and the report's, the date, then the
// categories in two columns, codes on one row and "%d, %.2f" on the next.
void PrintUnitsByCategoryPage(PrintTarget& target, bool month);
// The Print button: the printer dialog, then the page.
void PrintUnitsByCategory(bool month);

}  // namespace tilo
