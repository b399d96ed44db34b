// SPDX-License-Identifier: MIT
// "Stock summary": what the shelves hold, counted over film.dat from start to
// end: the units in stock and their value at cost and at retail.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tilo {

struct StockSummary {
  long long items = 0;
  double cost_value = 0;
  double retail_value = 0;
};

// Every record numbered above 0 with stock above 0. nullopt when film.dat can't
// be opened (after "Data file film.dat, not present.") or the walk is cancelled.
std::optional<StockSummary> Stocksummary();
// The four rows the form shows, label and text: "Items", "Value (cost)",
// "Value (retail)", "Margin".
std::vector<std::pair<std::string, std::string>> Stocksummaryrows(const StockSummary& s);

}  // namespace tilo
