// SPDX-License-Identifier: MIT
// The takings history: a year of daily till takings in the settings record,
// slot d holding the takings of d days ago (slot 1 is yesterday, today's figure
// is till_takings). Listed on screen and paper from a date, amended a day at a
// time, purged, and drawn as weekly averages. Everything here is free of the
// screen so the head-office upload can take the same figures.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/settings.h"
#include "documents/print_target.h"

namespace tilo {

inline constexpr int kTakingsLastSlot = 401;
inline constexpr int kTakingsPurgedSlots = 390;

struct TakingsDate {
  int day = 0, month = 0, year = 0;
};

// `date` moved `days` days back (rolling into the month or year before).
TakingsDate DaysBefore(TakingsDate date, int days);
// The day after `date`.
TakingsDate NextDay(TakingsDate date);

// The date the prompts offer: 14 days before today, "dd-mm-yyyy".
std::string DefaultTakingsDate(TakingsDate today);
// "From (Earliest 01-%2d-%d):" for the list and the print, "Amend (Earliest
// 01-%02d-%d):" for the amendment: this month of last year.
std::string TakingsPrompt(TakingsDate today, bool amendment);

// Reads "dd-mm-yyyy" by position (day from characters 1-2, month 4-5, year 7-10)
// and answers the slot of that date, or nullopt for a date that is not valid:
// not this year or last, not a real date, today or later (today is allowed for
// the amendment), or before the first of this month a year ago.
std::optional<int> Takingsindex(const std::string& text, TakingsDate today, bool amendment);

// The weekday name of the slot `index` days before a day whose weekday is
// `start_weekday` (0 is Sunday).
const char* TakingsWeekday(int start_weekday, int index);

// One day of the list: its slot, date, weekday, takings, and on the last day of
// a month, when the whole month still lies within the history, the month's sum.
struct TakingsDay {
  int index = 0;
  TakingsDate date;
  const char* weekday = "";
  double takings = 0;
  std::optional<double> month_total;
};
// The days from slot `index` (the date `from`) forward to yesterday.
std::vector<TakingsDay> TakingsDays(const SettingsRecord& s, int start_weekday, int index,
                                    TakingsDate from);
// One row of the takings list on screen.
std::string TakingsListRow(const TakingsDay& day);
// One row of the printed takings: "%-12s%2d/%2d/%d  %.2f", then "  Month: %.2f".
std::string TakingsPrintRow(const TakingsDay& day);

// Purge takings: slots 1 to 390 back to 0; today's figure stays.
void Purgetakings(SettingsRecord& s);

// The commands. Each does nothing while a tender form is up.
// The date prompt of the list; the days to show, or nullopt when cancelled or
// after "Non valid date".
std::optional<std::vector<TakingsDay>> Takingslist();
// Print takings: the date prompt, then a paged listing.
void Printtakings();
// The amendment: date prompt, then the day's figure; saves wr.cfg and logs the
// change in bun4.dat.
void Takingsamendment();
// "Are you sure?"; on OK clears the history and saves wr.cfg.
void Purgetakingscommand();

// The weekly-average chart of the last year as drawn in a box of W x H: axes,
// month labels and grid lines, one bar per week with takings (from zero up to
// the week's average), and the smallest and largest averages at the left.
struct ChartText {
  int x = 0, y = 0;
  std::string text;
  TextAlign align = TextAlign::Left;
};
struct ChartBar {
  int left = 0, top = 0, right = 0, bottom = 0;
};
struct TakingsChart {
  int width = 0, height = 0;
  // The polyline of the axes: bottom right, origin, top left.
  int axis[3][2]{};
  std::vector<ChartText> labels;  // months, then the smallest and largest averages
  std::vector<int> grid_x;        // from grid_top to grid_bottom
  int grid_top = 2, grid_bottom = 0;
  std::vector<ChartBar> bars;
  bool any_week = false;
  double smallest = 0, largest = 0, first_week = 0;
};
// `today_month` and `day_of_month` place the present week on the time axis.
TakingsChart BuildTakingsChart(const SettingsRecord& s, int width, int height, int today_month,
                               int day_of_month);
// Draws the chart on a printer page, dotted grid included.
void DrawTakingsChart(PrintTarget& target, const TakingsChart& chart, int left, int top);
// The chart on one page of the printer chosen in the dialog.
void Printtakingschart();

}  // namespace tilo
