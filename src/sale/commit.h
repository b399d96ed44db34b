// SPDX-License-Identifier: MIT
// The commit of a paid basket: the transaction index, the day's sales and items
// logs, the stock of every line, the activity log, the running totals and the
// settings file, in that order, and then an empty basket. When Finishsale
// returns, what it wrote is on stable storage.
#pragma once

#include <functional>

#include "core/history.h"
#include "core/settings.h"
#include "core/write_batch.h"
#include "sale/basket.h"

namespace tilo {

// Commits G().basket. The tender has filled in the time, date, payment type,
// clerk and tender amounts. Every file takes the sale or none does: on a failure
// (an item no longer on file, a disk that refuses a write) the message is shown,
// the basket stays full to be paid again, and false comes back. `more` adds
// what else must be written with the sale (an account sale's customer).
bool Finishsale(const std::function<void(WriteBatch&)>& more = {});

// A transaction's entry in the year's index (after the header, in a year file
// still empty) and in the day's sales log, as pieces of a batch.
void BatchTransaction(WriteBatch& batch, const SalesLogRecord& r, int year, int month, int day);
// The settings record written whole, as the last piece of a batch.
void BatchSettings(WriteBatch& batch, const SettingsRecord& next);

// The header of the basket as it goes to saleslog.dat.
SalesLogRecord SalesLogRecordOf(const Basket& basket);

// The head of a sale's or refund's entry in the activity log: the stamp, "<kind>:
// number, Total:", a row per line and the clerk's row, each ending CR LF.
std::string Basketlogentry(const Basket& b, const char* kind);

}  // namespace tilo
