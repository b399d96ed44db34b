// SPDX-License-Identifier: MIT
#include "reports/report_forms.h"

#include <cstdio>

#include "core/clock.h"
#include "core/state.h"
#include "core/text.h"
#include "documents/print_job.h"

namespace tilo {
namespace {

PeriodListView silent_view;
PeriodListView* current_view = &silent_view;

bool Valid(int day, int month, int year) {
  return day >= 1 && day <= 31 && month >= 1 && month <= 12 && year >= 2000 && year <= 4000;
}

}  // namespace

PeriodListView& period_list_view() {
  return *current_view;
}
void install_period_list_view(PeriodListView* view) {
  current_view = view ? view : &silent_view;
}

std::optional<ReportPeriod> Choosereportperiod() {
  Datestamp();
  const LocalTime now = G().now;
  const ReportPeriod today{now.day, now.month, now.year, now.day, now.month, now.year};
  std::optional<ReportPeriod> p = period_list_view().choose_period(today);
  if (!p || !Valid(p->from_day, p->from_month, p->from_year) ||
      !Valid(p->to_day, p->to_month, p->to_year))
    return std::nullopt;
  return p;
}

void Foreachday(const ReportPeriod& p, const std::function<void(int, int, int)>& visit) {
  int y = p.from_year, m = p.from_month, d = p.from_day;
  const long last = long(p.to_year) * 10000 + p.to_month * 100 + p.to_day;
  while (long(y) * 10000 + m * 100 + d <= last) {
    if (d <= DaysInMonth(m, y)) visit(y, m, d);
    if (++d > 31) {
      d = 1;
      if (++m > 12) {
        m = 1;
        ++y;
      }
    }
  }
}

std::string Localdate(int year, int month, int day, const char* fallback) {
  char* text = G().pretty_date;
  std::snprintf(text, sizeof G().pretty_date, "00:00%02d/%02d/%d", day, month, year);
  if (Shortdate() == 1) return Cp1252ToUtf8(text);
  char plain[48];
  std::snprintf(plain, sizeof plain, fallback, day, month, year);
  return plain;
}

void Printlistpage(PrintTarget& target, const std::string& heading,
                   const std::vector<std::string>& lines, size_t& next) {
  if (G().print_job.page_number == 1) next = 0;
  ListingPage page = Startlistingpage(target, heading);
  while (next < lines.size()) {
    page.text(0, lines[next++]);
    ++page.row;
    if (next < lines.size() && Listingpagefull(page)) return;
  }
}

}  // namespace tilo
