// SPDX-License-Identifier: MIT
// The day rollover: the first start on a new day closes the books of the days
// since the last use. It moves the day's totals into the histories and clears
// them, and moves the reminder diary forward. It runs only at a start.
#pragma once

#include "core/settings.h"

namespace tilo {

// Days in the month before today's, set by Opendata before the rollover.
extern int days_in_previous_month;

// The length of the month before `month`, December before January; February
// has 29 days when `year` (today's) is divisible by 4.
int PreviousMonthDays(int month, int year);

// The number of days the rollover counts from `last_day` to `today_day`. Only
// days of the month are compared: a gap of 40 days counts as 10, and a clock
// put back a day counts as nearly a month.
int DaysPassed(int last_day, int today_day, int previous_month_days);

// The two halves of the rollover's work on the settings, on either side of the
// date check. ClearDayCounters moves today's counts to yesterday and clears the
// day's (and, in a new month, the month's) unit counters and counts. CloseDays
// moves the takings into the histories by `days_passed` days and clears the
// day's money.
void ClearDayCounters(SettingsRecord& s, int today_month);
void CloseDays(SettingsRecord& s, int days_passed);

// The rollover, run by Opendata when last_day differs from today_day. Asks
// "If system date ... is correct select OK" when the day before was not the
// last one used; Cancel returns 0 with nothing written. Also returns 0 when
// resn.dat can't be rebuilt; otherwise 1.
int thenextday(int previous_month_days);

}  // namespace tilo
