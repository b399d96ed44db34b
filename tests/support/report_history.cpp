// SPDX-License-Identifier: MIT
#include "support/report_history.h"

#include <cstdio>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "core/history.h"
#include "core/text.h"

namespace tilo {
namespace {
void Append(const std::string& path, const std::string& bytes) {
  FILE* f = std::fopen(path.c_str(), "ab");
  if (!f) return;
  std::fwrite(bytes.data(), 1, bytes.size(), f);
  std::fclose(f);
}
}  // namespace

void WriteHistory(uint32_t seed, const CalendarDate& first, int days, const HistoryShape& shape) {
  std::mt19937 rng(seed);
  auto chance = [&](double p) { return std::uniform_real_distribution<double>(0, 1)(rng) < p; };
  auto pick = [&](int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(rng); };
  static const char* kTypes[] = {"Cash", "CH", "EFT", "Credit", "Split"};
  CalendarDate date = first;
  int64_t number = 1;
  std::string sales_bytes, item_bytes;
  std::vector<int64_t> used;
  for (int n = 0; n < days; ++n, Nextreportday(date)) {
    if (chance(shape.missing_day)) continue;
    std::filesystem::create_directories(DayFolder(date.year, date.month, date.day));
    sales_bytes.clear();
    item_bytes.clear();
    used.clear();
    const int sales = pick(shape.sales_min, shape.sales_max);
    for (int t = 0; t < sales; ++t) {
      SalesLogRecord r{};
      r.transaction_number = !used.empty() && chance(shape.repeat)
                                 ? used[size_t(pick(0, int(used.size()) - 1))]
                                 : number++;
      used.push_back(r.transaction_number);
      r.clerk = pick(1, shape.clerks);
      const bool payment = chance(shape.payment);
      const bool refund = !payment && chance(shape.refund);
      SetField(r.payment_type, payment ? "Payment" : refund ? "Refund" : kTypes[pick(0, 4)]);
      const int lines = payment ? 0 : pick(shape.lines_min, shape.lines_max);
      r.line_count = lines;
      for (int l = 0; l < lines; ++l) {
        ItemsLogRecord line{};
        line.transaction_number = r.transaction_number;
        line.clerk = r.clerk;
        if (chance(shape.non_inventory)) {
          line.category = 18;
          SetField(line.description, "MISC, SUNDRY");
        } else {
          line.number = pick(1, shape.items);
          line.category = line.number % 18;
          SetField(line.description, "ITEM " + std::to_string(line.number) + " " +
                                         std::string(1, char('A' + pick(0, 3))));
        }
        const float price = float(pick(1, 5000)) / 100.0f;
        if (pick(0, 3) == 0)
          line.non_taxable = price;
        else
          line.taxable = price;
        line.tax1 = float(int(line.taxable * 20.0f)) / 100.0f;
        line.tax2 = pick(0, 5) == 0 ? 0.05f : 0.0f;
        line.cost = price * 0.6f;
        line.discount = pick(0, 4) == 0 ? 0.10f : 0.0f;
        line.line_total = line.non_taxable + line.taxable + line.tax1 + line.tax2;
        const float sign = refund ? -1.0f : 1.0f;
        r.total_non_taxable += sign * line.non_taxable;
        r.total_taxable += sign * line.taxable;
        r.total_tax1 += sign * line.tax1;
        r.total_tax2 += sign * line.tax2;
        r.total += sign * line.line_total;
        item_bytes.append(reinterpret_cast<const char*>(&line), sizeof line);
      }
      if (payment) r.total = float(pick(100, 9000)) / 100.0f;
      sales_bytes.append(reinterpret_cast<const char*>(&r), sizeof r);
    }
    // A crash during the last commit leaves a record cut short at the end.
    if (chance(shape.cut) && !sales_bytes.empty())
      sales_bytes.resize(sales_bytes.size() - size_t(pick(1, 900)));
    if (chance(shape.cut) && !item_bytes.empty())
      item_bytes.resize(item_bytes.size() - size_t(pick(1, 100)));
    Append(SalesLogPath(date.year, date.month, date.day), sales_bytes);
    if (!chance(shape.missing_day / 4))  // now and then the lines are lost
      Append(ItemsLogPath(date.year, date.month, date.day), item_bytes);
  }
}

}  // namespace tilo
