// SPDX-License-Identifier: MIT
// The two forms that period reports share: SALE4BOX, which asks for a from date
// and a to date, and SALE2BOX, which shows a report's lines in a list and prints
// them. The logic sees them through PeriodListView; the screen installs the real ones.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "documents/print_target.h"

namespace tilo {

struct ReportPeriod {
  int from_day = 0, from_month = 0, from_year = 0;
  int to_day = 0, to_month = 0, to_year = 0;
};

class PeriodListView {
 public:
  virtual ~PeriodListView() = default;
  // SALE4BOX: both dates start on `today`; the year lists run from eight years
  // before it. None when cancelled.
  virtual std::optional<ReportPeriod> choose_period(const ReportPeriod& /*today*/) {
    return std::nullopt;
  }
  // SALE2BOX: the lines under `title` (UTF-8), with "Print" calling `print`.
  virtual void show_list(const std::string& /*title*/, const std::vector<std::string>& /*lines*/,
                         const std::function<void()>& /*print*/) {}
};

PeriodListView& period_list_view();
void install_period_list_view(PeriodListView* view);

// SALE4BOX as reports use it: today's date offered, and a date outside day 1 to
// 31, month 1 to 12, year 2000 to 4000 taken as no period.
std::optional<ReportPeriod> Choosereportperiod();
// The days of a period in order, with true month lengths; none when the from
// date lies after the to date.
void Foreachday(const ReportPeriod& period, const std::function<void(int y, int m, int d)>& day);
// A date in the local short form, or `fallback` ("%2d/%2d/%d" and the like,
// given day, month, year) when it is not a date.
std::string Localdate(int year, int month, int day, const char* fallback);

// One page of a SALE2BOX printout: `heading` (drawn with the page number by the
// caller's format) at the top, a blank line, then the lines from `next` on
// until the page is full. `next` goes back to 0 at the first page of each copy.
void Printlistpage(PrintTarget& target, const std::string& heading,
                   const std::vector<std::string>& lines, size_t& next);

}  // namespace tilo
