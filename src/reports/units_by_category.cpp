// SPDX-License-Identifier: MIT
#include "reports/units_by_category.h"

#include <cstdio>

#include "core/state.h"
#include "core/text.h"
#include "documents/print_job.h"
#include "platform/platform.h"

namespace tilo {

std::array<CategoryUnits, kUnitCategories> UnitsByCategory(const SettingsRecord& s, bool month,
                                                           int today_day) {
  std::array<CategoryUnits, kUnitCategories> rows;
  for (int c = 0; c < kUnitCategories; ++c) {
    CategoryUnits& r = rows[c];
    r.code = CategoryCode(s, c + 1);
    if (c < 9)
      r.units = month ? int32_t(s.category_units_month_a[c]) : int32_t(s.category_units_day_a[c]);
    else
      r.units =
          month ? int32_t(s.category_units_month_b[c - 9]) : int32_t(s.category_units_day_b[c - 9]);
    r.total = s.category_total_today[c];
    // The history slot of a category is days ago: slot 1 is yesterday, so the
    // month's earlier days are slots 1 to today's day less 1.
    if (month)
      for (int d = 1; d < today_day && d <= 31; ++d) r.total += CategoryHistory(s, c, d);
  }
  return rows;
}

std::string UnitsByCategoryTitle(bool month) {
  return month ? "Units by category for month" : "Units by category for today";
}

void PrintUnitsByCategoryPage(PrintTarget& target, bool month) {
  const State& g = G();
  const TextMetrics m = target.text_metrics();
  const int line = m.height + m.external_leading;
  const int column = 20 * m.average_char_width;
  target.set_text_align(TextAlign::Left);
  const std::string name = FieldText(g.heading.site_name);
  target.text_out(0, line,
                  name + (month ? "   Units by category (month)" : "   Units by category (day)"));
  static const char* months[] = {"January",   "February", "March",    "April",
                                 "May",       "June",     "July",     "August",
                                 "September", "October",  "November", "December"};
  char date[48];
  std::snprintf(date, sizeof date, "%s %d %d", months[(g.today_month + 11) % 12], g.today_day,
                g.today_year);
  target.text_out(0, 2 * line, date);
  int row = 4;
  const auto rows = UnitsByCategory(g.settings, month, g.today_day);
  for (int k = 0; k < 9; ++k) {
    target.text_out(0, row * line, rows[k].code);
    target.text_out(column, row * line, rows[k + 9].code);
    for (int half = 0; half < 2; ++half) {
      const CategoryUnits& r = rows[k + 9 * half];
      char text[64];
      std::snprintf(text, sizeof text, "%d, %.2f", r.units, r.total);
      target.text_out(half * column, (row + 1) * line, text);
    }
    row += 3;
  }
}

void PrintUnitsByCategory(bool month) {
  if (!Runsinglepagejob(Choosetarget(true),
                        [month](PrintTarget& target) { PrintUnitsByCategoryPage(target, month); }))
    Message("Unable to release printer", "Problem");
}

}  // namespace tilo
