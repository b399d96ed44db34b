// SPDX-License-Identifier: MIT
// The item lines of a day or a week as comma-separated rows for a spreadsheet:
// the exports "SA<yy><mm><dd>.CSV", "SW<yy><mm><dd>.CSV", and the day's items the
// mail sends as ES.CSV.
#pragma once

#include <string>
#include <vector>

#include "reports/report_walk.h"

namespace tilo {

enum class ExportDay { Done, NoSalesLog, NoItemsLog };

// Appends one row per line of every sale of the day (not payments on account,
// not refunds), in the order of the sales and their lines: number, description,
// category (left out when `with_category` is false), the six amounts, the
// transaction number, the clerk and the payment type, comma-separated with no
// quoting (Windows-1252, no line end).
ExportDay Dayitemrows(const CalendarDate& day, bool with_category, std::vector<std::string>& rows);
// The rows as the file holds them: each with CR LF; UTF-8.
std::string Exportcsv(const std::vector<std::string>& rows);

// The commands "Export daily items CSV" and "Export weekly items CSV": the
// prompts for the date and the file name, then the file.
void Exportdailyitems();
void Exportweeklyitems();

// The first half of "Email daily items": the day's rows without the category
// into ES.CSV in the working folder, always overwritten. False when there is
// nothing to mail: "No items for that day." or "Unable to open file." under
// "Problem", or in silence when itemslog.dat is missing.
bool Writemailitems(const CalendarDate& today);

}  // namespace tilo
