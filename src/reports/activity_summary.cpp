// SPDX-License-Identifier: MIT
#include "reports/activity_summary.h"

#include <cstdarg>
#include <cstdio>

#include "core/clock.h"
#include "core/history.h"
#include "core/state.h"
#include "core/text.h"
#include "documents/print_job.h"
#include "platform/files.h"
#include "reports/log_view.h"

namespace tilo {
namespace {

std::string Format(const char* format, ...) {
  char buffer[512];
  va_list args;
  va_start(args, format);
  std::vsnprintf(buffer, sizeof buffer, format, args);
  va_end(args);
  return buffer;
}

const char* const kMonthNames[] = {"January",   "February", "March",    "April",
                                   "May",       "June",     "July",     "August",
                                   "September", "October",  "November", "December"};

std::string Counted(float count, double amount) {
  return Format("(%d): %.2f", int(count), amount);
}

// The highest number of an index, or nothing when the file holds no record.
std::string Highest(const NumberIndex& index) {
  if (index.empty() || index.back().number <= 0) return {};
  return Format("%lld", static_cast<long long>(index.back().number));
}

std::string Money(double amount) {
  return Format("%.2f", amount);
}

}  // namespace

CalendarDate DaysBefore(CalendarDate date, int days) {
  for (int i = 0; i < days; ++i) {
    if (--date.day >= 1) continue;
    if (--date.month < 1) {
      date.month = 12;
      --date.year;
    }
    date.day = DaysInMonth(date.month, date.year);
  }
  return date;
}

CalendarDate DaysAfter(CalendarDate date, int days) {
  for (int i = 0; i < days; ++i) {
    if (++date.day <= DaysInMonth(date.month, date.year)) continue;
    date.day = 1;
    if (++date.month > 12) {
      date.month = 1;
      ++date.year;
    }
  }
  return date;
}

const char* WeekdayText(int weekday) {
  static const char* names[] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                "Thursday", "Friday", "Saturday"};
  return names[((weekday % 7) + 7) % 7];
}

WeekSums Weeksums() {
  const SettingsRecord& s = G().settings;
  WeekSums w;
  for (int slot = 1; slot <= 7; ++slot) w.current_week += s.takings_history[slot];
  for (int slot = 8; slot <= 14; ++slot) w.last_week += s.takings_history[slot];
  return w;
}

std::string Percentage(double part, double whole) {
  if (part == 0 || whole == 0) return "0.00%";
  return Format("%.2f%%", part * 100 / whole);
}

StatusScreen Statusscreen(const LocalTime& today) {
  const State& g = G();
  const SettingsRecord& s = g.settings;
  StatusScreen screen;
  screen.title = "TILO STATUS " + platform().long_date(today.year, today.month, today.day) + " ";

  auto& l = screen.lines;
  l.push_back(Format("Ontime: %02d:%02d", g.start_hour, g.start_minute));
  l.push_back(Format("Offtime: %02d:%02d %d/%d/%d", g.previous_run_hour, g.previous_run_minute,
                     g.previous_run_day, g.previous_run_month, g.previous_run_year));
  l.push_back(Format("Backup: %02d:%02d %d/%d/%d", s.last_backup_hour, s.last_backup_minute,
                     s.last_backup_day, s.last_backup_month, s.last_backup_year));
  l.push_back(Format("Inventory on the system: %d", int(g.films.live)));
  l.push_back("Highest inventory number: " + Highest(g.films.index));
  l.push_back(Format("Customers on the system: %d", int(g.members.live)));
  l.push_back("Highest customer number: " + Highest(g.members.index));
  l.push_back(Format("Today's till take: %.2f", s.till_takings));
  l.push_back(Format("Last %s: %.2f", WeekdayText(today.day_of_week), s.takings_history[7]));
  l.push_back(Format("Yesterday's till take: %.2f", s.previous_takings));

  const CalendarDate date{today.year, today.month, today.day};
  const CalendarDate last = DaysBefore(date, 8);
  const CalendarDate current = DaysBefore(date, 1);
  const WeekSums weeks = Weeksums();
  l.push_back(Format("W/E %d/%d/%d: %-4.2f", last.day, last.month, last.year, weeks.last_week));
  l.push_back(
      Format("W/E %d/%d/%d: %-4.2f", current.day, current.month, current.year, weeks.current_week));
  if (weeks.current_week == 0 || weeks.last_week == 0)
    l.push_back(Format("W/E %d/%d/%d vs W/E %d/%d/%d: 0.00%%", current.day, current.month,
                       current.year, last.day, last.month, last.year));
  else
    l.push_back(Format("W/E %d/%d vs W/E %d/%d: %.2f%%", current.day, current.month, last.day,
                       last.month, weeks.current_week * 100 / weeks.last_week));

  auto& f = screen.figures;
  f.push_back({"Cash sales", Counted(s.count_cash_sales, s.cash_sales)});
  f.push_back({"CH sales", Counted(s.count_ch_sales, s.ch_sales)});
  f.push_back({"EFT sales", Counted(s.count_eft_sales, s.eft_sales)});
  f.push_back({"Credit sales", Counted(s.count_credit_sales, s.credit_sales)});
  f.push_back({"Total sales", Money(s.cash_sales + s.ch_sales + s.eft_sales + s.credit_sales)});
  f.push_back({"Cash refunds", Counted(s.count_cash_refunds, s.cash_refunds)});
  f.push_back({"CH refunds", Counted(s.count_ch_refunds, s.ch_refunds)});
  f.push_back({"EFT refunds", Counted(s.count_eft_refunds, s.eft_refunds)});
  f.push_back({"Credit refunds", Counted(s.count_credit_refunds, s.credit_refunds)});
  f.push_back(
      {"Total refunds", Money(s.cash_refunds + s.ch_refunds + s.eft_refunds + s.credit_refunds)});
  f.push_back({"Non Tax Sales", Money(s.sales_non_taxable)});
  f.push_back({"Taxable sales", Money(s.sales_taxable)});
  f.push_back({"Tax 1", Money(s.sales_tax1)});
  f.push_back({"Tax 2", Money(s.sales_tax2)});
  f.push_back({"Total", Money(s.sales_total)});
  f.push_back({"Customer balance payments", ""});
  f.push_back({"Cash", Counted(s.count_balance_cash, s.balance_cash)});
  f.push_back({"CH", Counted(s.count_balance_ch, s.balance_ch)});
  f.push_back({"EFT", Counted(s.count_balance_eft, s.balance_eft)});
  f.push_back({"Total", Money(s.balance_cash + s.balance_ch + s.balance_eft)});
  const double net_sales = s.sales_non_taxable + s.sales_taxable;
  f.push_back({"Petty cash payments", Money(s.petty_cash_today)});
  f.push_back({"Cost of sales", Money(s.cost_of_sales)});
  f.push_back({"Net sales", Money(net_sales)});
  f.push_back({"Gross profit", Money(net_sales - s.cost_of_sales)});
  f.push_back({"Discounts", Money(s.sales_discounts)});
  f.push_back({"Cash back", Money(s.cashback_today)});

  screen.notes = {
      "The till takings figure includes Cash, CH and EFT sales and balance payments less non "
      "credit refunds.",
      "It excludes balance adjustments, credit sales, credit refunds and petty cash payments.",
      "The Print report item on the File menu will include the summary with additional "
      "information."};
  return screen;
}

std::vector<std::string> MonthlyTillTotals(CalendarDate today) {
  const SettingsRecord& s = G().settings;
  std::vector<std::string> rows;
  // The earliest day the takings prompts accept: the first of this month a year ago.
  CalendarDate date{today.year - 1, today.month, 1};
  int slot = 0;
  for (CalendarDate d = date; !(d.year == today.year && d.month == today.month);
       d = DaysAfter(d, 1))
    ++slot;
  slot += today.day - 1;  // days ago of the first day walked
  double month_sum = 0;
  for (; slot >= 1; --slot) {
    month_sum += s.takings_history[slot];
    if (date.day == DaysInMonth(date.month, date.year)) {
      rows.push_back(Format("%-10s %d: %.2f", kMonthNames[date.month - 1], date.year, month_sum));
      month_sum = 0;
    }
    date = DaysAfter(date, 1);
  }
  rows.push_back(Format("%-10s %d: %.2f", kMonthNames[today.month - 1], today.year,
                        month_sum + s.till_takings));
  return rows;
}

std::vector<std::string> ActivitySummaryRows(const LocalTime& now) {
  const State& g = G();
  const SettingsRecord& s = g.settings;
  std::vector<std::string> r;
  const std::string long_date = Utf8ToCp1252(platform().long_date(now.year, now.month, now.day));
  r.push_back(Format("%s  %02d:%02d %s", FieldText(g.heading.site_name).c_str(), now.hour,
                     now.minute, long_date.c_str()));
  r.push_back(Format("Today's till takings: %.2f", s.till_takings));
  r.push_back("");
  r.push_back("");
  r.push_back(Format("Ontime: %02d:%02d  Transaction number: %d", g.start_hour, g.start_minute,
                     s.transaction_number));
  r.push_back(Format("Inventory on the system: %d, Customers on the system: %d", int(g.films.live),
                     int(g.members.live)));
  r.push_back(Format("Today transactions: %lld Items: %lld",
                     static_cast<long long>(s.today_transactions),
                     static_cast<long long>(s.today_items)));
  r.push_back(Format("Yesterday transactions: %lld Items: %lld",
                     static_cast<long long>(s.yesterday_transactions),
                     static_cast<long long>(s.yesterday_items)));
  // The comparison names the day it compares with: the same weekday a week ago.
  const CalendarDate week_ago = DaysBefore({now.year, now.month, now.day}, 7);
  r.push_back(Format("Today vs. last %s: ", WeekdayText(now.day_of_week)) +
              Percentage(s.till_takings, s.takings_history[7]) +
              Format("  %d/%d/%d", week_ago.day, week_ago.month, week_ago.year));
  const WeekSums weeks = Weeksums();
  r.push_back("Current vs. last week: " + Percentage(weeks.current_week, weeks.last_week));
  r.push_back(Format("Last weeks total: %.2f", weeks.last_week));
  r.push_back(Format("Current weeks total: %.2f", weeks.current_week));
  r.push_back("");
  r.push_back(Format("New customers: %lld", static_cast<long long>(s.new_customers_today)));
  r.push_back("");

  const std::string pad(46, ' ');
  r.push_back(Format("Cash sales (%d): %.2f", int(s.count_cash_sales), s.cash_sales));
  r.push_back(Format("CH sales (%d): %.2f", int(s.count_ch_sales), s.ch_sales));
  r.push_back(Format("EFT sales (%d): %.2f", int(s.count_eft_sales), s.eft_sales));
  r.push_back(Format("Credit sales (%d): %.2f", int(s.count_credit_sales), s.credit_sales));
  r.push_back(pad + Money(s.cash_sales + s.ch_sales + s.eft_sales + s.credit_sales));
  r.push_back(Format("Cash refunds (%d): %.2f", int(s.count_cash_refunds), s.cash_refunds));
  r.push_back(Format("CH refunds (%d): %.2f", int(s.count_ch_refunds), s.ch_refunds));
  r.push_back(Format("EFT refunds (%d): %.2f", int(s.count_eft_refunds), s.eft_refunds));
  r.push_back(Format("Credit refunds (%d): %.2f", int(s.count_credit_refunds), s.credit_refunds));
  r.push_back(pad +
              Format("(%.2f)", s.cash_refunds + s.ch_refunds + s.eft_refunds + s.credit_refunds));
  r.push_back(Format("Nontaxable sales: %.2f", s.sales_non_taxable));
  r.push_back(Format("Taxable sales: %.2f", s.sales_taxable));
  r.push_back(Format("Sub total: %.2f", s.sales_subtotal));
  r.push_back(Format("Tax 1: %.2f", s.sales_tax1));
  r.push_back(Format("Tax 2: %.2f", s.sales_tax2));
  r.push_back(std::string(43, ' ') + Format("Total: %.2f", s.sales_total));
  r.push_back("");
  r.push_back(
      Format("Balance payments cash (%d): %.2f", int(s.count_balance_cash), s.balance_cash));
  r.push_back(Format("Balance payments CH (%d): %.2f", int(s.count_balance_ch), s.balance_ch));
  r.push_back(Format("Balance payments EFT (%d): %.2f", int(s.count_balance_eft), s.balance_eft));
  r.push_back(Format("Total: %.2f", s.balance_cash + s.balance_ch + s.balance_eft));
  r.push_back(Format("(Excludes petty cash payments: %.2f)", s.petty_cash_today));
  r.push_back(Format("(Excludes cash back: %.2f)", s.cashback_today));
  r.push_back("");
  const double net_sales = s.sales_non_taxable + s.sales_taxable;
  r.push_back(Format("Net sales: %.2f", net_sales));
  r.push_back(Format("Cost of sales: %.2f", s.cost_of_sales));
  r.push_back(Format("Gross profit: %.2f", net_sales - s.cost_of_sales));
  r.push_back("");
  if (s.omit_monthly_till_totals == 0) {
    r.push_back("Monthly till totals:");
    for (std::string& row : MonthlyTillTotals({now.year, now.month, now.day}))
      r.push_back(std::move(row));
    r.push_back("(Excludes credit sales, refunds and petty cash payments.");
    r.push_back(" Includes customer balance payments).");
  }
  return r;
}

void PrintActivitySummary() {
  std::unique_ptr<PrintTarget> target = Choosetarget(true);
  if (!target) return;
  const std::vector<std::string> rows = ActivitySummaryRows(platform().now());
  // One page in the printer's own font; the summary never breaks the page.
  const bool released = Runsinglepagejob(std::move(target), [&rows](PrintTarget& t) {
    t.set_text_align(TextAlign::Left);
    const int line_height = Lineheight(t);
    for (size_t row = 0; row < rows.size(); ++row) t.text_out(0, int(row) * line_height, rows[row]);
  });
  if (!released) Message("Unable to release printer", "Problem");
}

std::optional<std::string> PreviousActivitySummaryText() {
  const LocalTime now = platform().now();
  auto day = platform().prompt("Please enter the day (1-31)", "Previous activity summary",
                               std::to_string(now.day));
  if (!day) return std::nullopt;
  auto month = platform().prompt("Please enter the month (1-12)", "Previous activity summary",
                                 std::to_string(now.month));
  if (!month) return std::nullopt;
  auto year = platform().prompt("Please enter the year", "Previous activity summary",
                                std::to_string(now.year));
  if (!year) return std::nullopt;
  const std::string path = DailySummaryPath(std::atoi(year->c_str()), std::atoi(month->c_str()),
                                            std::atoi(day->c_str()));
  const std::optional<std::string> text = ReadLogBlock(path, 0);
  if (!text) return std::string("No details");
  return LogBlockText(*text);
}

}  // namespace tilo
