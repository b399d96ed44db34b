// SPDX-License-Identifier: MIT
// Readings of the clock and the text forms the files and documents use.
#pragma once

namespace tilo {

// Reads the clock into G().now and writes stamp_text: "%02d:%02d%02d/%02d/%d",
// hour, minute, day, month, year with no separator between minute and day.
void Timestamp();
// Reads the clock into G().now and writes date_text: "%02d/%02d/%d".
void Datestamp();
// Turns the text "00:00%02d/%02d/%d" in G().pretty_date into the locale's
// "ddd d MMM yy" and returns 1; returns 0 and leaves it when the date is not one.
int Shortdate();

// Days in a month; February has 29 in any year divisible by 4.
int DaysInMonth(int month, int year);

}  // namespace tilo
