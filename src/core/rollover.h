// SPDX-License-Identifier: MIT
// The day rollover: the first start on a new day moves the totals, the
// histories and the reminder diary forward.
#pragma once

namespace tilo {

// Days in the month before today's (set by Opendata before the rollover).
extern int days_in_previous_month;
// Runs the rollover; 0 when the operator cancels the date check.
int thenextday();

}  // namespace tilo
