// SPDX-License-Identifier: MIT
// The history tree <year>/<month>/<day> of the transaction logs, and the
// records kept in it: the year's transaction index base.dat, the day's
// saleslog.dat (one SalesLogRecord per transaction) and itemslog.dat (one
// ItemsLogRecord per line), and the day's closing summary thedaily.dat.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tilo {

#pragma pack(push, 1)

// One entry of <year>/base.dat, behind its four-byte header.
struct BaseRecord {
  int32_t transaction_number;
  int32_t day;
  int32_t month;
};

// The header that opens every <year>/base.dat: 0, written once, never used.
struct BaseFileHeader {
  int32_t header;
};

// One transaction of the day in saleslog.dat.
struct SalesLogRecord {
  int64_t transaction_number;
  int64_t day_sequence;     // the day's transactions, this one included
  int64_t customer_number;  // 0 for none
  int32_t clerk;
  int32_t line_count;  // ItemsLogRecords that belong to it
  float total_non_taxable;
  float total_taxable;
  float subtotal;
  float total_tax1;
  float total_tax2;
  float total_cost;
  float total;
  float total_discount;
  float reserved_64[5];
  float cash_back;
  float tender_cash;
  float tender_eft;
  float tender_eft_extra;
  float tender_ch;
  float reserved_104[2];
  float credit_before;
  float credit_after;
  float reserved_120;
  char sale_time[20];
  char sale_date[20];
  char customer_name[40];
  char customer_road[30];
  char customer_area[30];
  char customer_town[30];
  char customer_postcode[30];
  char customer_telephone[30];
  char payment_type[40];  // "Cash", "CH", "EFT", "Credit", "Split", "Refund"
  char reserved_394[5][40];
  char reserved_594[20];
  char reserved_614[2][40];
  char reserved_694[80];
  char reserved_774[2][40];
  int32_t reserved_854[4];
  char note[80];
};

// One line of a transaction in itemslog.dat. A refund's amounts stand positive
// here; readers negate them when the transaction's payment_type begins with R.
struct ItemsLogRecord {
  int64_t transaction_number;
  int64_t category;  // display_category at the commit; 18 on a non-inventory line
  int64_t customer_number;
  int64_t number;  // 0 on a non-inventory line
  char description[40];
  float non_taxable;
  float taxable;
  float tax1;
  float tax2;
  float cost;
  float discount;
  float line_total;
  int32_t clerk;
};

#pragma pack(pop)

static_assert(sizeof(BaseFileHeader) == 4);
static_assert(sizeof(BaseRecord) == 12);
static_assert(offsetof(BaseRecord, transaction_number) == 0);
static_assert(offsetof(BaseRecord, day) == 4);
static_assert(offsetof(BaseRecord, month) == 8);

static_assert(sizeof(SalesLogRecord) == 950);
static_assert(offsetof(SalesLogRecord, transaction_number) == 0);
static_assert(offsetof(SalesLogRecord, day_sequence) == 8);
static_assert(offsetof(SalesLogRecord, customer_number) == 16);
static_assert(offsetof(SalesLogRecord, clerk) == 24);
static_assert(offsetof(SalesLogRecord, line_count) == 28);
static_assert(offsetof(SalesLogRecord, total_non_taxable) == 32);
static_assert(offsetof(SalesLogRecord, total_taxable) == 36);
static_assert(offsetof(SalesLogRecord, subtotal) == 40);
static_assert(offsetof(SalesLogRecord, total_tax1) == 44);
static_assert(offsetof(SalesLogRecord, total_tax2) == 48);
static_assert(offsetof(SalesLogRecord, total_cost) == 52);
static_assert(offsetof(SalesLogRecord, total) == 56);
static_assert(offsetof(SalesLogRecord, total_discount) == 60);
static_assert(offsetof(SalesLogRecord, reserved_64) == 64);
static_assert(offsetof(SalesLogRecord, cash_back) == 84);
static_assert(offsetof(SalesLogRecord, tender_cash) == 88);
static_assert(offsetof(SalesLogRecord, tender_eft) == 92);
static_assert(offsetof(SalesLogRecord, tender_eft_extra) == 96);
static_assert(offsetof(SalesLogRecord, tender_ch) == 100);
static_assert(offsetof(SalesLogRecord, reserved_104) == 104);
static_assert(offsetof(SalesLogRecord, credit_before) == 112);
static_assert(offsetof(SalesLogRecord, credit_after) == 116);
static_assert(offsetof(SalesLogRecord, reserved_120) == 120);
static_assert(offsetof(SalesLogRecord, sale_time) == 124);
static_assert(offsetof(SalesLogRecord, sale_date) == 144);
static_assert(offsetof(SalesLogRecord, customer_name) == 164);
static_assert(offsetof(SalesLogRecord, customer_road) == 204);
static_assert(offsetof(SalesLogRecord, customer_area) == 234);
static_assert(offsetof(SalesLogRecord, customer_town) == 264);
static_assert(offsetof(SalesLogRecord, customer_postcode) == 294);
static_assert(offsetof(SalesLogRecord, customer_telephone) == 324);
static_assert(offsetof(SalesLogRecord, payment_type) == 354);
static_assert(offsetof(SalesLogRecord, reserved_394) == 394);
static_assert(offsetof(SalesLogRecord, reserved_594) == 594);
static_assert(offsetof(SalesLogRecord, reserved_614) == 614);
static_assert(offsetof(SalesLogRecord, reserved_694) == 694);
static_assert(offsetof(SalesLogRecord, reserved_774) == 774);
static_assert(offsetof(SalesLogRecord, reserved_854) == 854);
static_assert(offsetof(SalesLogRecord, note) == 870);

static_assert(sizeof(ItemsLogRecord) == 104);
static_assert(offsetof(ItemsLogRecord, transaction_number) == 0);
static_assert(offsetof(ItemsLogRecord, category) == 8);
static_assert(offsetof(ItemsLogRecord, customer_number) == 16);
static_assert(offsetof(ItemsLogRecord, number) == 24);
static_assert(offsetof(ItemsLogRecord, description) == 32);
static_assert(offsetof(ItemsLogRecord, non_taxable) == 72);
static_assert(offsetof(ItemsLogRecord, taxable) == 76);
static_assert(offsetof(ItemsLogRecord, tax1) == 80);
static_assert(offsetof(ItemsLogRecord, tax2) == 84);
static_assert(offsetof(ItemsLogRecord, cost) == 88);
static_assert(offsetof(ItemsLogRecord, discount) == 92);
static_assert(offsetof(ItemsLogRecord, line_total) == 96);
static_assert(offsetof(ItemsLogRecord, clerk) == 100);

// The place of a transaction in the tree.
struct TransactionPlace {
  int year = 0;
  int month = 0;
  int day = 0;
};

// A transaction read back from its day: the header and its lines in file order.
struct TransactionRecords {
  SalesLogRecord sale{};
  std::vector<ItemsLogRecord> lines;
};

// Paths in the tree; numbers in plain decimal without leading zeros.
std::string YearFolder(int year);
std::string MonthFolder(int year, int month);
// The folder of a date, "2026/11/22".
std::string DayFolder(int year, int month, int day);
std::string YearBasePath(int year);  // "<year>/base.dat"
std::string MonthBasePath(int year, int month);
std::string DayBasePath(int year, int month, int day);
std::string SalesLogPath(int year, int month, int day);
std::string ItemsLogPath(int year, int month, int day);
std::string DailySummaryPath(int year, int month, int day);
std::string StockInPath(int year, int month, int day);  // ininvent.dat

// Makes today's folders and their base.dat files where they are missing. Takes
// Datestamp first, so today means the present clock.
void Makelogdirs();

// Appends one entry to <year>/base.dat (the file must exist: Makelogdirs makes
// it). Returns false when the file can't be opened or written.
bool AppendBaseRecord(int year, const BaseRecord& record);
// Appends one record to the day's saleslog.dat / itemslog.dat.
bool AppendSalesLog(int year, int month, int day, const SalesLogRecord& record);
bool AppendItemsLog(int year, int month, int day, const std::vector<ItemsLogRecord>& lines);

// The year, month and day of a transaction: the earliest entry in the years
// from history_from_year up to the present one. Numbers outside 1..200000000
// and numbers not found give none.
std::optional<TransactionPlace> Findtransaction(int32_t number);
// Loads a transaction's SalesLogRecord and its ItemsLogRecords. A missing
// saleslog.dat shows "Unable to open sales log."; none when it isn't there.
std::optional<TransactionRecords> Readtransaction(int year, int month, int day, int32_t number);

// Reads every SalesLogRecord / ItemsLogRecord of a day, in file order; a
// missing file gives none. A record cut short by a crash at the end is read as
// it comes, its missing bytes zero.
std::vector<SalesLogRecord> ReadSalesLog(int year, int month, int day);
std::vector<ItemsLogRecord> ReadItemsLog(int year, int month, int day);
// Every entry of a year's base.dat, in file order; none when it's missing.
std::vector<BaseRecord> ReadBaseFile(int year);

// The day's closing summary text, as written to thedaily.dat (no final line end).
std::string DailySummaryText();
// Writes the day's summary into thedaily.dat at `path`.
bool WriteDailySummary(const std::string& path);

}  // namespace tilo
