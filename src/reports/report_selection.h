// SPDX-License-Identifier: MIT
// The period and filters the report dialogs choose. They stay set between
// reports, and the item summaries move the date as they walk, so later headers
// and file names see where the walk stopped.
#pragma once

#include <cstdint>

namespace tilo {

// Which lines an item summary takes. category_filter 0 is every category; 1 to
// 18 keep the categories 0 to 17; 19 keeps the non-inventory lines (18).
struct SummaryFilters {
  bool exclude_refunds = true;
  bool exclude_cash = false;
  bool exclude_credit = false;
  bool exclude_cheque = false;
  bool exclude_eft = false;
  bool exclude_split = false;
  int32_t category_filter = 0;
};

struct ReportSelection {
  int32_t start_day = 0, start_month = 0, start_year = 0;
  int32_t end_day = 0, end_month = 0, end_year = 0;
  int32_t staff_clerk = 0;  // 0: every clerk
  int64_t report_item = 0;  // 0: every item
  SummaryFilters filters;
};

}  // namespace tilo
