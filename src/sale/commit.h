// SPDX-License-Identifier: MIT
// The commit of a paid basket: the transaction index, the day's sales and items
// logs, the stock of every line, the activity log, the running totals and the
// settings file, in that order, and then an empty basket. When Finishsale
// returns, what it wrote is on stable storage.
#pragma once

#include "core/history.h"
#include "sale/basket.h"

namespace tilo {

// Commits G().basket. The tender has filled in the time, date, payment type,
// clerk and tender amounts. Failures are reported and the commit goes on where it
// can; an item no longer on file stops it with the basket still full.
void Finishsale();

// The header of the basket as it goes to saleslog.dat.
SalesLogRecord SalesLogRecordOf(const Basket& basket);

// The head of a sale's or refund's entry in the activity log: the stamp, "<kind>:
// number, Total:", a row per line and the clerk's row, each ending CR LF.
std::string Basketlogentry(const Basket& b, const char* kind);

}  // namespace tilo
