// SPDX-License-Identifier: MIT
#include "support/literal_reports.h"

#include <cinttypes>
#include <cstdio>
#include <cstring>

#include "core/history.h"
#include "core/text.h"

namespace tilo {
namespace {

int MonthLength(int month, int year) {
  static const int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return month == 2 && year % 4 == 0 ? 29 : days[month - 1];
}

std::string Path(const char* name, int year, int month, int day) {
  char path[96];
  std::snprintf(path, sizeof path, "%d/%d/%d/%s", year, month, day, name);
  return path;
}

std::string Text(const char* format, double value, const std::string& label) {
  char buf[256];
  std::snprintf(buf, sizeof buf, format, label.c_str(), value);
  return buf;
}

struct Date {
  int day, month, year;
};

// Step 5 and 6: one day on; says 1 when a month closed, 2 when a year did too.
int Advance(Date& d) {
  ++d.day;
  if (d.day <= MonthLength(d.month, d.year)) return 0;
  d.day = 1;
  if (++d.month <= 12) return 1;
  d.month = 1;
  ++d.year;
  return 2;
}

bool Stop(const Date& d, int ed, int em, int ey) {
  return d.year > ey || (d.year >= ey && d.month > em) ||
         (d.year >= ey && d.month >= em && d.day > ed);
}

std::vector<Date> Days(SummaryPeriod period, const ReportSelection& s, Date& after) {
  std::vector<Date> days;
  Date d{s.start_day, s.start_month, s.start_year};
  if (period == SummaryPeriod::Daily) {
    days.push_back(d);
  } else if (period == SummaryPeriod::Weekly) {
    for (int i = 0; i < 7; ++i) {
      days.push_back(d);
      if (i < 6) Advance(d);
    }
  } else if (period == SummaryPeriod::Monthly) {
    for (d.day = 1; d.day <= MonthLength(d.month, d.year); ++d.day) days.push_back(d);
  } else {
    do {
      days.push_back(d);
      Advance(d);
    } while (!Stop(d, s.end_day, s.end_month, s.end_year));
  }
  after = d;
  return days;
}

}  // namespace

LiteralSales LiteralSalesReport(const ReportSelection& s, bool by_item) {
  LiteralSales out;
  double sums[4][5] = {};  // day, month, year, grand
  auto add = [&](float a, float b, float c, float d, float e) {
    for (int level = 0; level < 4; ++level) {
      sums[level][0] += a;
      sums[level][1] += b;
      sums[level][2] += c;
      sums[level][3] += d;
      sums[level][4] += e;
    }
  };
  auto row = [&](int level, const std::string& label) {
    for (int c = 0; c < 5; ++c)
      out.lists[level][c].push_back(Text("%s  %.2f", sums[level][c], label));
  };
  auto close = [&](int level, const std::string& label) {
    row(level, label);
    for (double& v : sums[level]) v = 0;
  };
  Date d{s.start_day, s.start_month, s.start_year};
  do {
    FILE* sales = std::fopen(Path("saleslog.dat", d.year, d.month, d.day).c_str(), "rb");
    std::string label;
    if (auto pictured = Pictureddate({d.year, d.month, d.day}))
      label = *pictured;
    else
      label = std::to_string(d.day) + "/" + std::to_string(d.month) + "/" + std::to_string(d.year);
    SalesLogRecord r;
    if (by_item) {
      FILE* items =
          sales ? std::fopen(Path("itemslog.dat", d.year, d.month, d.day).c_str(), "rb") : nullptr;
      if (sales && items) {
        for (double& v : sums[0]) v = 0;
        while (std::fread(&r, sizeof r, 1, sales) == 1) {
          if (r.payment_type[0] == 'P') continue;
          std::rewind(items);
          ItemsLogRecord l;
          while (std::fread(&l, sizeof l, 1, items) == 1)
            if (l.transaction_number == r.transaction_number && l.number == s.report_item)
              add(l.non_taxable, l.taxable, l.tax1, l.tax2, l.line_total);
        }
        if (sums[0][4] != 0) row(0, label);
      }
      if (items) std::fclose(items);
    } else if (sales) {
      for (double& v : sums[0]) v = 0;
      while (std::fread(&r, sizeof r, 1, sales) == 1)
        if ((s.staff_clerk == 0 || r.clerk == s.staff_clerk) && r.payment_type[0] != 'P')
          add(r.total_non_taxable, r.total_taxable, r.total_tax1, r.total_tax2, r.total);
      row(0, label);
    }
    if (sales) std::fclose(sales);
    const Date before = d;
    const int closed = Advance(d);
    if (closed >= 1) close(1, std::to_string(before.month) + " of " + std::to_string(before.year));
    if (closed == 2) close(2, std::to_string(before.year));
  } while (!Stop(d, s.end_day, s.end_month, s.end_year));
  row(1, std::to_string(d.month) + " of " + std::to_string(d.year));
  row(2, std::to_string(d.year));
  for (int c = 0; c < 5; ++c) out.grand[c] = sums[3][c];
  return out;
}

void LiteralExchangeSort(std::vector<SummaryEntry>& e) {
  for (size_t i = 0; i < e.size(); ++i)
    for (size_t j = i + 1; j < e.size(); ++j)
      if (e[i].quantity < e[j].quantity) std::swap(e[i], e[j]);
}

LiteralSummary LiteralItemSummary(SummaryPeriod period, const ReportSelection& s) {
  LiteralSummary out;
  Date after{};
  const std::vector<Date> days = Days(period, s, after);
  out.after_day = after.day;
  out.after_month = after.month;
  out.after_year = after.year;
  const SummaryFilters& f = s.filters;
  // 1. Count the lines.
  int64_t count = 0;
  for (const Date& d : days) {
    FILE* items = std::fopen(Path("itemslog.dat", d.year, d.month, d.day).c_str(), "rb");
    if (!items) continue;
    std::fseek(items, 0, SEEK_END);
    count += std::ftell(items) / 104;
    std::fclose(items);
  }
  double retail_nett = 0, cost_total = 0, retail_total = 0;
  int32_t items_counted = 0;
  std::vector<SummaryEntry> e;
  if (count > 0) {
    e.resize(size_t(count));
    // 4, 5. Read the sales and, for each, the whole item file.
    for (const Date& d : days) {
      FILE* sales = std::fopen(Path("saleslog.dat", d.year, d.month, d.day).c_str(), "rb");
      FILE* items =
          sales ? std::fopen(Path("itemslog.dat", d.year, d.month, d.day).c_str(), "rb") : nullptr;
      SalesLogRecord r;
      while (sales && items && std::fread(&r, sizeof r, 1, sales) == 1) {
        const char* p = r.payment_type;
        if (p[0] == 'P' || (p[0] == 'R' && f.exclude_refunds) ||
            (p[0] == 'C' && p[1] == 'a' && f.exclude_cash) ||
            (p[0] == 'C' && p[1] == 'r' && f.exclude_credit) ||
            (p[0] == 'C' && p[1] == 'H' && f.exclude_cheque) || (p[0] == 'E' && f.exclude_eft) ||
            (p[0] == 'S' && f.exclude_split))
          continue;
        std::rewind(items);
        ItemsLogRecord l;
        while (items_counted < count && std::fread(&l, sizeof l, 1, items) == 1) {
          if (l.transaction_number != r.transaction_number) continue;
          if (f.category_filter != 0 && f.category_filter != l.category + 1) continue;
          SummaryEntry& x = e[size_t(items_counted)];
          const bool refund = p[0] == 'R';
          x.category = l.category;
          x.number = l.number;
          std::memcpy(x.description, l.description, 40);
          x.non_taxable = refund ? -l.non_taxable : l.non_taxable;
          x.taxable = refund ? -l.taxable : l.taxable;
          x.tax1 = refund ? -l.tax1 : l.tax1;
          x.tax2 = refund ? -l.tax2 : l.tax2;
          x.cost = refund ? -l.cost : l.cost;
          x.discount = refund ? -l.discount : l.discount;
          x.line_total = refund ? -l.line_total : l.line_total;
          x.quantity = 1;
          x.type = p[0];
          retail_nett += x.non_taxable + x.taxable;
          cost_total += x.cost;
          retail_total += x.line_total;
          ++items_counted;
        }
      }
      if (items) std::fclose(items);
      if (sales) std::fclose(sales);
    }
    e.resize(size_t(items_counted));
    // 6. Merge.
    for (size_t i = 0; i < e.size(); ++i) {
      if (e[i].quantity == 0 || e[i].number == 0 || e[i].type == 'R') continue;
      for (size_t j = i + 1; j < e.size(); ++j) {
        if (e[j].quantity == 0 || e[j].type == 'R' || e[j].number != e[i].number) continue;
        ++e[i].quantity;
        e[j].quantity = 0;
        e[i].non_taxable += e[j].non_taxable;
        e[i].taxable += e[j].taxable;
        e[i].tax1 += e[j].tax1;
        e[i].tax2 += e[j].tax2;
        e[i].cost += e[j].cost;
        e[i].line_total += e[j].line_total;
        if (e[j].discount > 0) e[i].discount += e[j].discount;
      }
    }
    // 7. Sort, 8. rows.
    LiteralExchangeSort(e);
    for (const SummaryEntry& x : e) {
      if (x.quantity == 0) continue;
      char row[256];
      std::snprintf(row, sizeof row, "%s%" PRId64 ", %s, %" PRId64 ", %.2f, %.2f, %.2f, %.2f, %d",
                    x.type == 'R' ? "Refund: " : "", x.number, FieldText(x.description).c_str(),
                    x.category, x.cost, x.non_taxable + x.taxable, x.tax1 + x.tax2, x.line_total,
                    x.quantity);
      out.rows.push_back(row);
    }
  }
  char totals[128];
  std::snprintf(totals, sizeof totals, "Items: %d, Cost: %.2f, Retail: %.2f", items_counted,
                cost_total, retail_nett);
  out.totals = totals;
  (void)retail_total;
  return out;
}

std::string LiteralDayExport(int year, int month, int day) {
  FILE* sales = std::fopen(Path("saleslog.dat", year, month, day).c_str(), "rb");
  FILE* items = sales ? std::fopen(Path("itemslog.dat", year, month, day).c_str(), "rb") : nullptr;
  std::string file;
  SalesLogRecord r;
  while (sales && items && std::fread(&r, sizeof r, 1, sales) == 1) {
    if (r.payment_type[0] == 'P' || r.payment_type[0] == 'R') continue;
    std::rewind(items);
    ItemsLogRecord l;
    while (std::fread(&l, sizeof l, 1, items) == 1) {
      if (l.transaction_number != r.transaction_number) continue;
      char row[512];
      std::snprintf(row, sizeof row,
                    "%" PRId64 ",%s,%" PRId64 ",%.2f,%.2f,%.2f,%.2f,%.2f,%.2f,%" PRId64 ",%d,%s,",
                    l.number, FieldText(l.description).c_str(), l.category, l.non_taxable,
                    l.taxable, l.tax1, l.tax2, l.cost, l.line_total, l.transaction_number, l.clerk,
                    FieldText(r.payment_type).c_str());
      file += row;
      file.pop_back();  // the step back over the last comma
      file += "\r\n";
    }
  }
  if (items) std::fclose(items);
  if (sales) std::fclose(sales);
  return file;
}

}  // namespace tilo
