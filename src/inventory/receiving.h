// SPDX-License-Identifier: MIT
// Stock receiving: goods booked in raise the stock, lower what is on order and
// add a line to the day's ininvent.dat; the receipts report lists those lines
// again over a period.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "reports/report_forms.h"

namespace tilo {

#pragma pack(push, 1)
struct StockInRecord {
  int64_t number;
  int64_t received;  // as typed
};
#pragma pack(pop)
static_assert(sizeof(StockInRecord) == 16);
static_assert(offsetof(StockInRecord, received) == 8);

// "Updated total" of form 808 while the quantity is typed.
std::string Updatedtotal(int32_t held, const std::string& typed);

// Appends one receipt to today's ininvent.dat, making today's folders when the
// day began after the store opened. A short write is cut back. False when the
// file can't be written.
bool Appendstockin(int64_t number, int64_t received);

// The commands "Inventory received", "Inventory received by SKU 1" and the
// receipts report.
void Inventoryreceived();
void Inventoryreceivedbysku();
void Inventoryreceivedreport();

// The report's lines for a period (Windows-1252), day by day in file order.
std::vector<std::string> Receivedlines(const ReportPeriod& period);
// SALE2BOX's title for a period (UTF-8).
std::string Receivedtitle(const ReportPeriod& period);
// One printed page of the lines, from `next` on.
void Printreceivedpage(PrintTarget& target, const std::vector<std::string>& lines, size_t& next);

}  // namespace tilo
