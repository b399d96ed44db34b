// SPDX-License-Identifier: MIT
// The day's running totals as the status screen (F12) shows them and as the
// printed activity summary lays them out. Everything here works from memory:
// the settings record, the indexes and the clock readings of the run. The
// head-office report takes the same figures.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/platform.h"
#include "reports/calendar_date.h"

namespace tilo {

// `days` days before `date`, by the month table (February 29 days in a year
// divisible by 4), rolling back into earlier months and years.
CalendarDate DaysBefore(CalendarDate date, int days);
CalendarDate DaysAfter(CalendarDate date, int days);
const char* WeekdayText(int weekday);  // 0 = "Sunday"

// Slots 1 to 7 of the takings history (the week ending yesterday) and 8 to 14
// (the week before). Today is in neither.
struct WeekSums {
  double current_week = 0;
  double last_week = 0;
};
WeekSums Weeksums();

// "12.34%" of part * 100 / whole, or "0.00%" when either is 0.
std::string Percentage(double part, double whole);

// One row of the figures on the status screen: a label and its value; a row
// with no value is a heading over the rows that follow.
struct StatusRow {
  std::string label;
  std::string value;
};

// The status screen, all as UTF-8.
struct StatusScreen {
  std::string title;               // "TILO STATUS <long date> "
  std::vector<std::string> lines;  // times, counts, takings and the weeks
  std::vector<StatusRow> figures;  // sales, refunds, tax, balance payments...
  std::vector<std::string> notes;  // the three notes at the foot
};
StatusScreen Statusscreen(const LocalTime& today);

// The printed activity summary, one text per row from row 0 ("" for a blank
// row), in Windows-1252.
std::vector<std::string> ActivitySummaryRows(const LocalTime& now);
// The "Monthly till totals:" block: a year of whole months from the first of
// this month a year ago, then this month so far with today's takings.
std::vector<std::string> MonthlyTillTotals(CalendarDate today);

// "Print activity summary": one page through the printer dialog, drawn at x = 0
// in the printer's own font.
void PrintActivitySummary();

// "Previous activity summary": asks for the day, month and year and gives the
// text of that day's thedaily.dat (up to one block), or "No details"; nullopt
// when a prompt is cancelled.
std::optional<std::string> PreviousActivitySummaryText();

}  // namespace tilo
