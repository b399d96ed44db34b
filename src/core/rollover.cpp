// SPDX-License-Identifier: MIT
#include "core/rollover.h"

#include <cstddef>
#include <cstdio>
#include <cstring>
#include <string>

#include "core/clock.h"
#include "core/reminders.h"
#include "core/state.h"
#include "core/text.h"
#include "platform/platform.h"

namespace tilo {
namespace {

// The category history: 18 rows of 256 bytes from here, slot d of a row being
// the total d days ago. Slot 0 of a row overlays the end of the row before (the
// counts in front, for row 0) and is never a history; the shift writes slot 32
// of a row, which is slot 0 of the next (for the last row, slot 0 of the
// takings history), and nothing ever reads it.
constexpr int kCategoryRows = 18;
constexpr int kRowBytes = 256;
constexpr size_t kCategoryRow0 = 3338;  // where slot 0 of row 0 would stand
constexpr int kTakingsSlots = 402;
// The clear of the category totals runs over two reserved words behind them.
constexpr int kCategoryTotalsCleared = 20;

static_assert(offsetof(SettingsRecord, category_history_raw) == kCategoryRow0 + 8);
static_assert(offsetof(SettingsRecord, takings_history) == kCategoryRow0 + 18 * kRowBytes);

// "If system date %s is correct select OK" wants the short date of the locale
// when the date can be read as one, and d/m/y otherwise.
std::string DateText(int day, int month, int year) {
  std::snprintf(G().pretty_date, sizeof G().pretty_date, "00:00%02d/%02d/%d", day, month, year);
  if (Shortdate()) return Cp1252ToUtf8(G().pretty_date);
  char text[48];
  std::snprintf(text, sizeof text, "%d/%d/%d", day, month, year);
  return text;
}

}  // namespace

int days_in_previous_month = 0;

int PreviousMonthDays(int month, int year) {
  static const int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  const int previous = month <= 1 || month > 12 ? 12 : month - 1;
  if (previous == 2 && year % 4 == 0) return 29;
  return days[previous - 1];
}

int DaysPassed(int last_day, int today_day, int previous_month_days) {
  // The count walks last_day forward a day at a time, back to 1 once it is above
  // both the previous month's length and today, until it meets today. This is
  // that walk in closed form, so a damaged last_day can't make it run long.
  const int64_t last = last_day, today = today_day;
  if (last < today) return int(today - last);
  const int64_t top = previous_month_days > today_day ? previous_month_days : today_day;
  if (last >= top) return int(today);
  return int(top - last + today);
}

void ClearDayCounters(SettingsRecord& s, int today_month) {
  s.yesterday_transactions = s.today_transactions;
  s.yesterday_items = s.today_items;
  s.today_items = 0;
  s.today_transactions = 0;
  s.new_customers_today = 0;
  s.petty_cash_today = 0;
  s.cashback_today = 0;
  std::memset(s.category_units_day_a, 0, sizeof s.category_units_day_a);
  std::memset(s.category_units_day_b, 0, sizeof s.category_units_day_b);
  std::memset(s.spare_units_day, 0, sizeof s.spare_units_day);
  if (today_month != s.last_used_month) {
    std::memset(s.category_units_month_a, 0, sizeof s.category_units_month_a);
    std::memset(s.category_units_month_b, 0, sizeof s.category_units_month_b);
    std::memset(s.spare_units_month, 0, sizeof s.spare_units_month);
  }
  s.spare_daily = 0;
  // The eleven counts and the spare counts behind them.
  std::memset(&s.count_cash_sales, 0,
              offsetof(SettingsRecord, till_float) - offsetof(SettingsRecord, count_cash_sales));
}

void CloseDays(SettingsRecord& s, int n) {
  s.previous_takings = 0;
  if (n == 1) {
    s.previous_takings = s.till_takings;
  } else {
    s.yesterday_transactions = 0;
    s.yesterday_items = 0;
  }
  // A gap of 32 days or more leaves the histories as they stand: the last day's
  // figures are lost.
  if (n < 32) {
    for (int k = kTakingsSlots - 1 - n; k >= 1; --k)
      s.takings_history[k + n] = s.takings_history[k];
    for (int c = 0; c < kCategoryRows; ++c)
      for (int k = 32 - n; k >= 1; --k) SetCategoryHistory(s, c, k + n, CategoryHistory(s, c, k));
    s.takings_history[n] = s.till_takings;
    for (int c = 0; c < kCategoryRows; ++c) SetCategoryHistory(s, c, n, s.category_total_today[c]);
    // The days in between had no trade.
    for (int k = 1; k < n; ++k) {
      s.takings_history[k] = 0;
      for (int c = 0; c < kCategoryRows; ++c) SetCategoryHistory(s, c, k, 0);
    }
  }

  s.till_takings = 0;
  s.cash_sales = s.cash_refunds = 0;
  s.ch_sales = s.ch_refunds = 0;
  s.credit_sales = s.credit_refunds = 0;
  s.eft_sales = s.eft_refunds = 0;
  s.sales_non_taxable = s.sales_taxable = 0;
  s.sales_tax1 = s.sales_tax2 = 0;
  s.sales_discounts = s.sales_total = s.sales_subtotal = 0;
  s.balance_eft = s.balance_cash = s.balance_ch = 0;
  s.cost_of_sales = 0;
  std::memset(s.category_total_today, 0, kCategoryTotalsCleared * sizeof(double));
}

int thenextday(int previous_month_days) {
  State& g = G();
  SettingsRecord& s = g.settings;
  ClearDayCounters(s, g.today_month);

  const bool day_after =
      s.last_day + 1 == g.today_day || (s.last_day == previous_month_days && g.today_day == 1);
  if (!day_after) {
    // Either the shop was shut on the day before, or the clock is wrong.
    const std::string caption = "If system date " +
                                DateText(g.today_day, g.today_month, g.today_year) +
                                " is correct select OK";
    const std::string text =
        "Warning: Usage gap from " + DateText(s.last_used_day, s.last_used_month, s.last_used_year);
    if (Message(text, caption, Buttons::OkCancel) == Answer::Cancel) return 0;
  }

  const int n = DaysPassed(s.last_day, g.today_day, previous_month_days);
  s.last_day = g.today_day;
  CloseDays(s, n);
  return RollReminderDiary(n) ? 1 : 0;
}

}  // namespace tilo
