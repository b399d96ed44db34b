// SPDX-License-Identifier: MIT
// A day of the calendar as the reports walk it.
#pragma once

namespace tilo {

struct CalendarDate {
  int year = 0;
  int month = 0;
  int day = 0;
  bool operator==(const CalendarDate&) const = default;
};

}  // namespace tilo
