// SPDX-License-Identifier: MIT
#include "reports/report_walk.h"

#include <cstdarg>
#include <cstdio>

#include "core/clock.h"
#include "core/state.h"

namespace tilo {

DayStep Nextreportday(CalendarDate& date) {
  DayStep step;
  ++date.day;
  if (date.day > DaysInMonth(date.month, date.year)) {
    step.month_ended = true;
    step.month = date.month;
    step.year = date.year;
    date.day = 1;
    ++date.month;
    if (date.month > 12) {
      step.year_ended = true;
      date.month = 1;
      ++date.year;
    }
  }
  return step;
}

bool Walkended(const CalendarDate& date, const CalendarDate& end) {
  if (date.year > end.year) return true;
  if (date.year >= end.year && date.month > end.month) return true;
  return date.year >= end.year && date.month >= end.month && date.day > end.day;
}

std::vector<CalendarDate> Perioddays(const CalendarDate& start, const CalendarDate& end,
                                     CalendarDate* stop) {
  std::vector<CalendarDate> days;
  CalendarDate date = start;
  do {
    days.push_back(date);
    Nextreportday(date);
  } while (!Walkended(date, end));
  if (stop) *stop = date;
  return days;
}

namespace {
bool RealDate(const CalendarDate& d) {
  if (d.month < 1 || d.month > 12 || d.day < 1) return false;
  static const int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  const bool leap = d.year % 4 == 0 && (d.year % 100 != 0 || d.year % 400 == 0);
  return d.day <= (d.month == 2 && leap ? 29 : days[d.month - 1]);
}
}  // namespace

std::optional<std::string> Pictureddate(const CalendarDate& date) {
  // The locale's formatter refuses a day the calendar doesn't have.
  if (!RealDate(date)) return std::nullopt;
  char* text = G().pretty_date;
  std::snprintf(text, sizeof G().pretty_date, "00:00%02d/%02d/%d", date.day, date.month, date.year);
  if (Shortdate() == 0 || text[0] == '\0') return std::nullopt;
  return std::string(text);
}

std::string Format(const char* format, ...) {
  char buffer[512];
  va_list args;
  va_start(args, format);
  const int n = std::vsnprintf(buffer, sizeof buffer, format, args);
  va_end(args);
  if (n < int(sizeof buffer)) return std::string(buffer, n < 0 ? 0 : size_t(n));
  std::string out(size_t(n) + 1, '\0');
  va_start(args, format);
  std::vsnprintf(out.data(), out.size(), format, args);
  va_end(args);
  out.resize(size_t(n));
  return out;
}

}  // namespace tilo
