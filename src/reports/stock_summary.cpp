// SPDX-License-Identifier: MIT
#include "reports/stock_summary.h"

#include <cstdio>
#include <memory>

#include "core/film_record.h"
#include "platform/files.h"
#include "platform/platform.h"

namespace tilo {

std::optional<StockSummary> Stocksummary() {
  File f("film.dat", File::Mode::Read);
  if (!f) {
    Message("Data file film.dat, not present.", "Fatal error");
    return std::nullopt;
  }
  const int64_t total = f.size() / int64_t(sizeof(FilmRecord));
  std::unique_ptr<Progress> progress = platform().begin_progress("Stock summary", "Please wait..");
  StockSummary s;
  std::vector<FilmRecord> chunk(4096);
  int64_t done = 0;
  for (int64_t got; (got = f.read(chunk.data(), int64_t(chunk.size() * sizeof(FilmRecord)))) > 0;) {
    const int64_t records = got / int64_t(sizeof(FilmRecord));
    for (int64_t i = 0; i < records; ++i) {
      const FilmRecord& r = chunk[size_t(i)];
      if (r.number <= 0 || r.quantity <= 0) continue;
      s.items += r.quantity;
      s.cost_value += double(r.quantity) * r.cost_price;
      s.retail_value += double(r.quantity) * r.retail_price;
    }
    done += records;
    if (!progress->step(done, total)) return std::nullopt;
  }
  return s;
}

std::vector<std::pair<std::string, std::string>> Stocksummaryrows(const StockSummary& s) {
  char items[32], cost[32], retail[32], margin[32] = "N/A";
  std::snprintf(items, sizeof items, "%d", int(s.items));
  std::snprintf(cost, sizeof cost, "%.2f", s.cost_value);
  std::snprintf(retail, sizeof retail, "%.2f", s.retail_value);
  if (s.cost_value > 0 && s.retail_value > 0 && s.retail_value - s.cost_value != 0)
    std::snprintf(margin, sizeof margin, "%.2f%%",
                  (s.retail_value - s.cost_value) / s.cost_value * 100);
  return {{"Items", items}, {"Value (cost)", cost}, {"Value (retail)", retail}, {"Margin", margin}};
}

}  // namespace tilo
