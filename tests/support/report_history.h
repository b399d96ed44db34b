// SPDX-License-Identifier: MIT
// Made-up trading histories for the report tests and benchmarks: days of sales,
// refunds, credit sales and payments on account written into the history tree
// as the till writes them, with the awkward cases a real shop meets.
#pragma once

#include <cstdint>

#include "reports/report_walk.h"

namespace tilo {

struct HistoryShape {
  int sales_min = 0, sales_max = 8;  // transactions a day
  int lines_min = 1, lines_max = 5;
  int items = 25;               // item numbers 1..items
  double missing_day = 0.15;    // a day with no folder
  double refund = 0.12;         // of transactions
  double payment = 0.08;        // payments on account
  double repeat = 0.05;         // a transaction takes a number used earlier that day
  double non_inventory = 0.08;  // of lines: number 0, category 18
  double cut = 0.1;             // a day's files end in a record cut short
  int clerks = 4;
};

// Writes `days` consecutive days from `first` into the working folder.
void WriteHistory(uint32_t seed, const CalendarDate& first, int days,
                  const HistoryShape& shape = {});

}  // namespace tilo
