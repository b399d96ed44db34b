// SPDX-License-Identifier: MIT
// The day-by-day walk over the history tree that every period report makes, and
// the reading of a day's logs. The walk takes dates as the dialogs give them,
// unchecked: 31 April is walked (it has no folder) and then gives way to 1 May.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/files.h"
#include "reports/calendar_date.h"

namespace tilo {

// What moving on by one day closed: the month and year that just ended.
struct DayStep {
  bool month_ended = false;
  bool year_ended = false;
  int month = 0;
  int year = 0;
};
// Adds one day; past the month's length (February 29 in any year divisible by
// 4) it goes to day 1 of the next month, past December to January.
DayStep Nextreportday(CalendarDate& date);
// True once the walk has passed `end`: later year, or the end's year (or later)
// and a later month, or both and a later day.
bool Walkended(const CalendarDate& date, const CalendarDate& end);
// The days a period walk reads, from `start` (always read, even when `end` lies
// before it) until Walkended; `stop` gets the date the walk stopped on.
std::vector<CalendarDate> Perioddays(const CalendarDate& start, const CalendarDate& end,
                                     CalendarDate* stop = nullptr);

// Called before each day of a walk with the days done and the days in all;
// false stops the walk (the operator pressed Cancel).
using WalkProgress = std::function<bool(int64_t done, int64_t total)>;

// A day's log file read whole into a buffer kept between days. Only whole
// records count: a record cut short by a crash is left out.
template <class Record>
class DayLog {
 public:
  // False when the file isn't there.
  bool read(const std::string& path);
  const Record* begin() const { return records_.data(); }
  const Record* end() const { return records_.data() + count_; }
  size_t size() const { return count_; }
  const Record& operator[](size_t i) const { return records_[i]; }

 private:
  std::vector<Record> records_;
  size_t count_ = 0;
};

template <class Record>
bool DayLog<Record>::read(const std::string& path) {
  count_ = 0;
  File file(path, File::Mode::Read);
  if (!file) return false;
  // The size is only a hint: a file still growing (or a pipe) is read to its end.
  const int64_t hint = file.size();
  if (records_.size() * sizeof(Record) < size_t(hint) + sizeof(Record))
    records_.resize(size_t(hint) / sizeof(Record) + 1);
  size_t bytes = 0;
  for (;;) {
    const size_t room = records_.size() * sizeof(Record) - bytes;
    if (room == 0) {
      records_.resize(records_.size() * 2);
      continue;
    }
    const int64_t got = file.read(reinterpret_cast<char*>(records_.data()) + bytes, int64_t(room));
    if (got <= 0) break;
    bytes += size_t(got);
  }
  count_ = bytes / sizeof(Record);
  return true;
}

// The date in the locale's "ddd d MMM yy" picture (Windows-1252), or none when
// the date is not a real one (31 April, 29 February 2100, day 32).
std::optional<std::string> Pictureddate(const CalendarDate& date);

// printf into a std::string.
std::string Format(const char* format, ...) __attribute__((format(printf, 1, 2)));

}  // namespace tilo
