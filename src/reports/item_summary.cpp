// SPDX-License-Identifier: MIT
#include "reports/item_summary.h"

#include <algorithm>
#include <charconv>
#include <cinttypes>
#include <cstring>
#include <unordered_map>

#include "core/clock.h"
#include "core/history.h"
#include "core/state.h"
#include "core/text.h"
#include "documents/print_job.h"
#include "platform/files.h"

namespace tilo {
namespace {

bool Skipped(const SalesLogRecord& r, const SummaryFilters& f) {
  const char* p = r.payment_type;
  if (p[0] == 'P') return true;  // a payment on account is never a sale
  if (p[0] == 'R') return f.exclude_refunds;
  if (p[0] == 'C' && p[1] == 'a') return f.exclude_cash;
  if (p[0] == 'C' && p[1] == 'r') return f.exclude_credit;
  if (p[0] == 'C' && p[1] == 'H') return f.exclude_cheque;
  if (p[0] == 'E') return f.exclude_eft;
  if (p[0] == 'S') return f.exclude_split;
  return false;
}

SummaryEntry Entry(const ItemsLogRecord& line, char type) {
  SummaryEntry e;
  e.category = line.category;
  e.number = line.number;
  std::memcpy(e.description, line.description, sizeof e.description);
  const float sign = type == 'R' ? -1.0f : 1.0f;
  e.non_taxable = sign * line.non_taxable;
  e.taxable = sign * line.taxable;
  e.tax1 = sign * line.tax1;
  e.tax2 = sign * line.tax2;
  e.cost = sign * line.cost;
  e.discount = sign * line.discount;
  e.line_total = sign * line.line_total;
  e.type = type;
  return e;
}

void Absorb(SummaryEntry& into, const SummaryEntry& e) {
  ++into.quantity;
  into.non_taxable += e.non_taxable;
  into.taxable += e.taxable;
  into.tax1 += e.tax1;
  into.tax2 += e.tax2;
  into.cost += e.cost;
  into.line_total += e.line_total;
  if (e.discount > 0) into.discount += e.discount;
}

// Collects the period's entries, merging each sale of an item into its first
// entry as it comes: the amounts add up in the order the lines were taken. The
// items' entries stay together, apart from the refunds and unnumbered lines, so
// that the many merges find them in the cache.
class Collector {
 public:
  Collector(ItemSummary& out, int64_t count) : out_(out), count_(count) {
    first_.reserve(4096);
    // Room for every line at once: only the pages the entries use are touched.
    singles_.reserve(size_t(count));
    order_.reserve(size_t(count));
  }
  bool full() const { return out_.items_counted >= count_; }
  void take(const ItemsLogRecord& line, char type) {
    const SummaryEntry e = Entry(line, type);
    ++out_.items_counted;
    out_.retail_nett += e.non_taxable + e.taxable;
    out_.cost_total += e.cost;
    out_.retail_total += e.line_total;
    if (e.type != 'R' && e.number != 0) {
      auto [at, fresh] = first_.try_emplace(e.number, uint32_t(items_.size()));
      if (!fresh) {
        Absorb(items_[at->second], e);
        return;
      }
      order_.push_back(at->second);
      items_.push_back(e);
      return;
    }
    order_.push_back(kSingle | uint32_t(singles_.size()));
    singles_.push_back(e);
  }
  // The entries in the order they were first taken.
  void finish() {
    out_.entries.reserve(order_.size());
    for (uint32_t o : order_)
      out_.entries.push_back(o & kSingle ? singles_[o & ~kSingle] : items_[o]);
  }

 private:
  static constexpr uint32_t kSingle = 0x80000000u;
  ItemSummary& out_;
  int64_t count_;
  std::unordered_map<int64_t, uint32_t> first_;
  std::vector<SummaryEntry> items_, singles_;
  std::vector<uint32_t> order_;
};

// A max tree over the quantities, to find the next larger one to the right.
// Leaves from `base_` on; the padding leaves hold 0, below every quantity.
class QuantityTree {
 public:
  explicit QuantityTree(const std::vector<SummaryEntry>& e) : n_(e.size()) {
    while (base_ < n_) base_ *= 2;
    max_.assign(2 * base_, 0);
    for (size_t i = 0; i < n_; ++i) max_[base_ + i] = e[i].quantity;
    for (size_t i = base_ - 1; i > 0; --i) max_[i] = std::max(max_[2 * i], max_[2 * i + 1]);
  }
  void set(size_t at, int32_t q) {
    size_t i = base_ + at;
    max_[i] = q;
    for (i /= 2; i > 0; i /= 2) max_[i] = std::max(max_[2 * i], max_[2 * i + 1]);
  }
  // The first position from `from` on whose quantity is greater than q; n when none.
  size_t first_above(size_t from, int32_t q) const {
    if (from >= n_) return n_;
    size_t i = base_ + from;
    // Up and to the right until a subtree holds a larger quantity...
    while (max_[i] <= q) {
      while (i & 1) i /= 2;  // a right child: its parent's range is done
      if (i == 0) return n_;
      ++i;
    }
    // ...then down to its leftmost such leaf.
    while (i < base_) {
      i *= 2;
      if (max_[i] <= q) ++i;
    }
    return i - base_;
  }

 private:
  size_t n_;
  size_t base_ = 1;
  std::vector<int32_t> max_;
};

}  // namespace

void Sortbyquantity(std::vector<SummaryEntry>& e) {
  // Merged-away entries are never shown, and they never change where the others go.
  std::erase_if(e, [](const SummaryEntry& x) { return x.quantity == 0; });
  QuantityTree tree(e);
  std::vector<size_t> chain;
  for (size_t i = 0; i < e.size(); ++i) {
    // The exchanges of one pass follow the chain of ever larger quantities after
    // i: the last of it lands at i, each other one moves up to the next link.
    chain.assign(1, i);
    for (size_t at = tree.first_above(i + 1, e[i].quantity); at < e.size();
         at = tree.first_above(at + 1, e[at].quantity))
      chain.push_back(at);
    if (chain.size() == 1) continue;
    const SummaryEntry last = e[chain.back()];
    for (size_t k = chain.size() - 1; k > 0; --k) {
      e[chain[k]] = e[chain[k - 1]];
      tree.set(chain[k], e[chain[k]].quantity);
    }
    e[i] = last;
    tree.set(i, last.quantity);
  }
}

SummaryDays Summarydays(SummaryPeriod period, const ReportSelection& s) {
  SummaryDays out;
  CalendarDate date{s.start_year, s.start_month, s.start_day};
  switch (period) {
    case SummaryPeriod::Daily:
      out.days.push_back(date);
      break;
    case SummaryPeriod::Weekly:
      out.days.push_back(date);
      for (int i = 1; i < 7; ++i) {
        Nextreportday(date);
        out.days.push_back(date);
      }
      break;
    case SummaryPeriod::Monthly:
      for (date.day = 1; date.day <= DaysInMonth(date.month, date.year); ++date.day)
        out.days.push_back(date);
      break;
    case SummaryPeriod::Period:
      out.days = Perioddays(date, {s.end_year, s.end_month, s.end_day}, &date);
      break;
  }
  out.after = date;
  return out;
}

std::optional<ItemSummary> Summarizeitems(const std::vector<CalendarDate>& days,
                                          const SummaryFilters& filters,
                                          const WalkProgress& progress) {
  // The lines in the period bound how many a walk takes: a transaction number
  // used twice in a day takes the lines of both, again and again.
  int64_t count = 0;
  for (const CalendarDate& d : days)
    if (auto size = FileSize(ItemsLogPath(d.year, d.month, d.day)))
      count += *size / int64_t(sizeof(ItemsLogRecord));
  ItemSummary out;
  if (count == 0) return out;
  Collector collect(out, count);
  DayLog<SalesLogRecord> sales;
  DayLog<ItemsLogRecord> items;
  std::vector<uint32_t> order;
  const int64_t total = int64_t(days.size());
  for (int64_t n = 0; n < total; ++n) {
    if (progress && !progress(n, total)) return std::nullopt;
    const CalendarDate& d = days[size_t(n)];
    if (collect.full()) continue;
    if (!sales.read(SalesLogPath(d.year, d.month, d.day))) continue;
    if (!items.read(ItemsLogPath(d.year, d.month, d.day))) continue;
    // The lines grouped by transaction number, each group in file order.
    order.resize(items.size());
    bool in_order = true;
    for (uint32_t i = 0; i < order.size(); ++i) {
      order[i] = i;
      if (i > 0 && items[i].transaction_number < items[i - 1].transaction_number) in_order = false;
    }
    if (!in_order)
      std::stable_sort(order.begin(), order.end(), [&](uint32_t a, uint32_t b) {
        return items[a].transaction_number < items[b].transaction_number;
      });
    auto next = order.begin();  // sales and their lines mostly come in the same order
    for (const SalesLogRecord& r : sales) {
      if (Skipped(r, filters)) continue;
      auto at = next;
      if (at == order.end() || items[*at].transaction_number != r.transaction_number ||
          (at != order.begin() && items[*(at - 1)].transaction_number == r.transaction_number))
        at = std::lower_bound(
            order.begin(), order.end(), int64_t(r.transaction_number),
            [&](uint32_t i, int64_t number) { return items[i].transaction_number < number; });
      for (; at != order.end() && items[*at].transaction_number == r.transaction_number; ++at) {
        if (collect.full()) break;
        const ItemsLogRecord& line = items[*at];
        if (filters.category_filter != 0 && filters.category_filter != line.category + 1) continue;
        collect.take(line, r.payment_type[0]);
      }
      next = at;
    }
  }
  collect.finish();
  Sortbyquantity(out.entries);
  return out;
}

namespace {
// "%.2f" and "%d" without printf's cost: a year's summary has tens of thousands
// of rows. to_chars rounds the exact value as printf does.
void Put(std::string& out, double value) {
  char buf[64];
  auto end = std::to_chars(buf, buf + sizeof buf, value, std::chars_format::fixed, 2).ptr;
  out.append(buf, end);
}
void Put(std::string& out, int64_t value) {
  char buf[32];
  out.append(buf, std::to_chars(buf, buf + sizeof buf, value).ptr);
}
}  // namespace

// "%I64d, %s, %I64d, %.2f, %.2f, %.2f, %.2f, %d", "Refund: " in front of a refund.
std::string Summaryrow(const SummaryEntry& e) {
  std::string row;
  row.reserve(120);
  if (e.type == 'R') row += "Refund: ";
  Put(row, e.number);
  row += ", ";
  row += FieldText(e.description);
  row += ", ";
  Put(row, e.category);
  for (double v : {double(e.cost), double(e.non_taxable + e.taxable), double(e.tax1 + e.tax2),
                   double(e.line_total)}) {
    row += ", ";
    Put(row, v);
  }
  row += ", ";
  Put(row, int64_t(e.quantity));
  return row;
}

std::vector<std::string> Summaryrows(const ItemSummary& summary) {
  std::vector<std::string> rows;
  rows.reserve(summary.entries.size());
  for (const SummaryEntry& e : summary.entries)
    if (e.quantity != 0) rows.push_back(Summaryrow(e));
  return rows;
}

std::string Summarytotals(const ItemSummary& s) {
  return Format("Items: %d, Cost: %.2f, Retail: %.2f", s.items_counted, s.cost_total,
                s.retail_nett);
}

std::string Summarycsv(const std::vector<std::string>& rows, const std::string& totals) {
  std::string bytes;
  for (const std::string& row : rows) bytes += row + "\r\n";
  bytes += totals;
  return Cp1252ToUtf8(bytes);
}

std::string Summarytitle(SummaryPeriod period, const ReportSelection& s) {
  switch (period) {
    case SummaryPeriod::Daily:
      return Format("Item report   Day %d Month %d %d", s.start_day, s.start_month, s.start_year);
    case SummaryPeriod::Weekly:
      return Format("Item report   Week from day %d month %d %d", s.start_day, s.start_month,
                    s.start_year);
    case SummaryPeriod::Monthly:
      return Format("Item report   Month %d %d", s.start_month, s.start_year);
    case SummaryPeriod::Period:
      break;
  }
  return Format("Item report D:%d M:%d Y:%d  to  D:%d M:%d Y:%d", s.start_day, s.start_month,
                s.start_year, s.end_day, s.end_month, s.end_year);
}

std::string Summaryheader(SummaryPeriod period, const ReportSelection& after,
                          const ReportSelection& saved, int page) {
  const std::string site = FieldText(G().heading.site_name);
  const char* name = site.c_str();
  std::string date;
  if (auto text = Pictureddate({after.start_year, after.start_month, after.start_day}))
    date = *text;
  else
    date = Format("%2d/%2d/%d", after.start_day, after.start_month, after.start_year);
  const bool first = page == 1;
  switch (period) {
    case SummaryPeriod::Daily:
      return first ? Format("%s Daily item list: %s  page: %d", name, date.c_str(), page)
                   : Format("%s Daily item list, page: %d", name, page);
    case SummaryPeriod::Weekly:
      return first ? Format("%s Weekly item list to %s  page: %d", name, date.c_str(), page)
                   : Format("%s Weekly item list, page: %d", name, page);
    case SummaryPeriod::Monthly:
      return first ? Format("%s Monthly item list to %s  page: %d", name, date.c_str(), page)
                   : Format("%s Monthly item list, page: %d", name, page);
    case SummaryPeriod::Period:
      break;
  }
  const ReportSelection& s = saved;
  return first
             ? Format("%s Item list D:%d M:%d Y:%d to D:%d M:%d Y:%d  page: %d", name, s.start_day,
                      s.start_month, s.start_year, s.end_day, s.end_month, s.end_year, page)
             : Format("%s Item list, page: %d", name, page);
}

void Drawsummarypage(PrintTarget& target, const SummaryScreen& screen, size_t& position) {
  State& g = G();
  const int page_height = target.page_height();
  if (g.list_font) target.select_font(*g.list_font);
  const int line_height = Lineheight(target);
  target.set_text_align(TextAlign::Left);
  // No indent here: the rows are wide already.
  target.text_out(
      0, 0, Summaryheader(screen.period, screen.after, screen.saved, g.print_job.page_number));
  int row = 2;
  while (position < screen.rows.size()) {
    target.text_out(0, row * line_height, screen.rows[position]);
    ++row;
    ++position;
    if ((line_height + 2) * row > page_height) {
      ++g.print_job.page_number;
      return;
    }
  }
  ++row;
  target.text_out(0, row * line_height, Summarytotals(screen.summary));
}

void Printitemsummary(const SummaryScreen& screen) {
  size_t position = 0;
  Runpagedjob(
      [&](PrintTarget& target) {
        if (G().print_job.page_number == 1) position = 0;  // each copy from the top
        Drawsummarypage(target, screen, position);
      },
      false);
}

void Saveitemsummary(const SummaryScreen& screen) {
  const std::string name =
      Format("SA%02d%02d.CSV", screen.after.start_month, screen.after.start_day);
  std::optional<std::string> typed =
      platform().prompt("Enter the file name:", "Save as CSV text file", name);
  if (!typed || typed->empty()) return;
  if (!ReplaceFile(*typed, Summarycsv(screen.rows, Summarytotals(screen.summary)))) {
    Message("Unable to open file.", "Problem");
    return;
  }
  Message("Complete", "File save");
}

}  // namespace tilo
