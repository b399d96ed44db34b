// SPDX-License-Identifier: MIT
#include "reports/sales_report.h"

#include <algorithm>

#include "core/clock.h"
#include "core/history.h"
#include "core/state.h"
#include "core/text.h"
#include "documents/print_job.h"

namespace tilo {
namespace {

void AddTo(SalesSums& sums, float non_taxable, float taxable, float tax1, float tax2, float total) {
  sums[kSumNonTaxable] += non_taxable;
  sums[kSumTaxable] += taxable;
  sums[kSumTax1] += tax1;
  sums[kSumTax2] += tax2;
  sums[kSumTotal] += total;
}

struct Levels {
  SalesSums day{}, month{}, year{}, grand{};
  void add(float non_taxable, float taxable, float tax1, float tax2, float total) {
    for (SalesSums* s : {&day, &month, &year, &grand})
      AddTo(*s, non_taxable, taxable, tax1, tax2, total);
  }
};

bool IsPayment(const SalesLogRecord& r) {
  return r.payment_type[0] == 'P';
}

// The plain report's day: every sale, credit sale and refund of the clerk.
void AddSalesDay(const DayLog<SalesLogRecord>& sales, int32_t clerk, Levels& sums) {
  for (const SalesLogRecord& r : sales) {
    if (clerk != 0 && r.clerk != clerk) continue;
    if (IsPayment(r)) continue;
    sums.add(r.total_non_taxable, r.total_taxable, r.total_tax1, r.total_tax2, r.total);
  }
}

// The item report's day. Each sale takes every line of its number for the item,
// in file order; a number used twice in a day takes the lines of both.
void AddItemDay(const DayLog<SalesLogRecord>& sales, const DayLog<ItemsLogRecord>& items,
                int64_t item, std::vector<const ItemsLogRecord*>& lines, Levels& sums) {
  lines.clear();
  for (const ItemsLogRecord& line : items)
    if (line.number == item) lines.push_back(&line);
  if (lines.empty()) return;
  std::stable_sort(lines.begin(), lines.end(), [](const auto* a, const auto* b) {
    return a->transaction_number < b->transaction_number;
  });
  for (const SalesLogRecord& r : sales) {
    if (IsPayment(r)) continue;
    auto from = std::lower_bound(
        lines.begin(), lines.end(), int64_t(r.transaction_number),
        [](const ItemsLogRecord* l, int64_t n) { return l->transaction_number < n; });
    for (auto it = from; it != lines.end() && (*it)->transaction_number == r.transaction_number;
         ++it) {
      const ItemsLogRecord& l = **it;
      sums.add(l.non_taxable, l.taxable, l.tax1, l.tax2, l.line_total);
    }
  }
}

}  // namespace

std::optional<SalesReport> Walksales(const CalendarDate& start, const CalendarDate& end,
                                     const SalesFilter& filter, const WalkProgress& progress) {
  const int64_t total = int64_t(Perioddays(start, end).size());
  SalesReport report;
  Levels sums;
  DayLog<SalesLogRecord> sales;
  DayLog<ItemsLogRecord> items;
  std::vector<const ItemsLogRecord*> lines;
  CalendarDate date = start;
  for (int64_t done = 0;; ++done) {
    if (progress && !progress(done, total)) return std::nullopt;
    sums.day = {};
    const int y = date.year, m = date.month, d = date.day;
    if (filter.report_item == 0) {
      if (sales.read(SalesLogPath(y, m, d))) {
        AddSalesDay(sales, filter.staff_clerk, sums);
        report.days.push_back({date, sums.day});
      }
    } else if (sales.read(SalesLogPath(y, m, d)) && items.read(ItemsLogPath(y, m, d))) {
      AddItemDay(sales, items, filter.report_item, lines, sums);
      if (sums.day[kSumTotal] != 0) report.days.push_back({date, sums.day});
    }
    const DayStep step = Nextreportday(date);
    if (step.month_ended) {
      report.months.push_back({{step.year, step.month, 0}, sums.month});
      sums.month = {};
    }
    if (step.year_ended) {
      report.years.push_back({{step.year, 0, 0}, sums.year});
      sums.year = {};
    }
    if (Walkended(date, end)) break;
  }
  // The month and year still open, on the date the walk stopped at: after a
  // month's last day these are the next month's, at 0.00.
  report.months.push_back({{date.year, date.month, 0}, sums.month});
  report.years.push_back({{date.year, 0, 0}, sums.year});
  report.grand = sums.grand;
  return report;
}

std::string Salesrowlabel(SalesLevel level, const SalesRow& row) {
  const CalendarDate& d = row.date;
  switch (level) {
    case SalesLevel::Day:
      if (auto text = Pictureddate(d)) return *text;
      return Format("%d/%d/%d", d.day, d.month, d.year);
    case SalesLevel::Month:
      return Format("%d of %d", d.month, d.year);
    case SalesLevel::Year:
      break;
  }
  return Format("%d", d.year);
}

std::vector<std::string> Saleslisttexts(const SalesReport& report, SalesLevel level,
                                        SalesColumn column) {
  const std::vector<SalesRow>& rows = level == SalesLevel::Day     ? report.days
                                      : level == SalesLevel::Month ? report.months
                                                                   : report.years;
  std::vector<std::string> texts;
  texts.reserve(rows.size());
  for (const SalesRow& row : rows)
    texts.push_back(Format("%s  %.2f", Salesrowlabel(level, row).c_str(), row.sums[column]));
  return texts;
}

std::string Salesperiodtext(const ReportSelection& s, bool staff) {
  std::string text = staff ? "Staff sales report: " : "Sales report: ";
  if (auto start = Pictureddate({s.start_year, s.start_month, s.start_day}))
    text += *start;
  else
    text = Format(" Sales report: %2d/%2d/%d", s.start_day, s.start_month, s.start_year);
  text += " to ";
  if (auto end = Pictureddate({s.end_year, s.end_month, s.end_day}))
    text += *end;
  else
    text += Format("%2d/%2d/%d", s.end_day, s.end_month, s.end_year);
  return text;
}

void Drawsalesreport(PrintTarget& target, const SalesReport& report,
                     const std::string& period_text) {
  State& g = G();
  if (g.list_font) target.select_font(*g.list_font);
  const int line_height = Lineheight(target);
  target.set_text_align(TextAlign::Left);
  Timestamp();
  const std::string long_date =
      Utf8ToCp1252(platform().long_date(g.now.year, g.now.month, g.now.day));
  const char* t = g.stamp_text;
  target.text_out(0, 0,
                  Format("%s  %c%c:%c%c %s", FieldText(g.heading.site_name).c_str(), t[0], t[1],
                         t[3], t[4], long_date.c_str()));
  target.text_out(0, line_height, period_text);
  const SalesSums& s = report.grand;
  const int x = target.text_extent("Non taxable") + 100;
  const struct {
    int row;
    const char* label;
    double value;
  } lines[] = {{3, "Non taxable", s[kSumNonTaxable]},
               {4, "Taxable", s[kSumTaxable]},
               {5, "Sub total", s[kSumNonTaxable] + s[kSumTaxable]},
               {7, "Tax 1", s[kSumTax1]},
               {8, "Tax 2", s[kSumTax2]},
               {10, "Total", s[kSumTotal]}};
  for (const auto& line : lines) {
    target.text_out(0, line.row * line_height, line.label);
    target.text_out(x, line.row * line_height, Format("%.2f", line.value));
  }
}

void Printsalesreport(const SalesReport& report, const std::string& period_text) {
  Runsinglepagejob(Choosetarget(true),
                   [&](PrintTarget& target) { Drawsalesreport(target, report, period_text); });
}

}  // namespace tilo
