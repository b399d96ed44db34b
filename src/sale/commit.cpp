// SPDX-License-Identifier: MIT
#include "sale/commit.h"

#include <cstring>
#include <map>
#include <string>

#include "core/activity_log.h"
#include "core/clock.h"
#include "core/film_record.h"
#include "core/history.h"
#include "core/settings.h"
#include "core/state.h"
#include "core/text.h"
#include "core/write_batch.h"
#include "platform/files.h"
#include "platform/platform.h"
#include "sale/pricing.h"
#include "sale/sale_events.h"

namespace tilo {
namespace {

constexpr const char* kProblem = "Problem";
constexpr const char* kFatal = "Fatal error";
constexpr int64_t kNonInventoryCategory = 18;

// The fields of the packed records are copied as bytes: bound to a reference
// of their own type they could sit at an address that type does not allow.
#define CopyField(to, from)                    \
  do {                                         \
    static_assert(sizeof(to) == sizeof(from)); \
    std::memcpy(&(to), &(from), sizeof(to));   \
  } while (0)

std::string Decimal(int64_t n) {
  return std::to_string(static_cast<long long>(n));
}

// The midnight rule: the day's folder (or at the turn of the year the year's
// base.dat) is missing because the program has run past midnight. The new day's
// folders are made and the sale goes there; the running totals stay with the old
// day until the next start.
void CrossedMidnight() {
  Makelogdirs();
  Message("Otherwise transactions will not archive correctly",
          "IMPORTANT - DO NOT run the program over the midnight boundary");
}

template <class T>
std::string_view BytesOf(const T& value) {
  return {reinterpret_cast<const char*>(&value), sizeof value};
}

void CountCategory(SettingsRecord& s, int32_t c, float line_total) {
  if (c >= 0 && c <= 8) {
    ++s.category_units_day_a[c];
    ++s.category_units_month_a[c];
  } else if (c >= 9 && c <= 17) {
    ++s.category_units_day_b[c - 9];
    ++s.category_units_month_b[c - 9];
  }
  if (c >= 0 && c <= 17) s.category_total_today[c] += double(line_total);
}

}  // namespace

std::string Basketlogentry(const Basket& b, const char* kind) {
  const SettingsRecord& s = G().settings;
  Timestamp();
  const char* t = G().stamp_text;
  std::string entry = "\r\n";
  entry += {t[0], t[1], ':', t[3], t[4], ' '};
  entry += std::string(t + 5) + " " + kind + ": " + Decimal(b.transaction_number) +
           ", Total: " + MoneyText(b.total) + "\r\n";
  for (int i = 0; i < b.line_count; ++i)
    entry += Decimal(b.number[i]) + "  " + FieldText(b.description[i]) + "\r\n";
  entry += "Clerk: " + std::to_string(b.clerk) + ", " + ClerkName(s, s.clerk_number) +
           "   Items: " + std::to_string(b.line_count) + "\r\n";
  return entry;
}

namespace {

// Step 10: the entry of the activity log.
std::string SaleLogEntry(const Basket& b) {
  std::string entry = Basketlogentry(b, "Sale");
  const std::string payment = FieldText(b.payment_type);
  entry += "Payment type: " + payment + "\r\n";
  if (payment == "Split")
    entry += "Cash: " + MoneyText(b.tender_cash) + "  CH: " + MoneyText(b.tender_ch) +
             "  EFT: " + MoneyText(b.tender_eft) + "\r\n";
  if (b.customer_number != 0)
    entry += "Customer: " + Decimal(b.customer_number) + " " + FieldText(b.customer_name) + "\r\n";
  if (b.total_discount != 0.0f) entry += "Discount: " + MoneyText(b.total_discount) + "\r\n";
  return entry;
}

// Steps 11 and 12: the day's running totals and counters.
void AddToTotals(const Basket& b, SettingsRecord& s) {
  const std::string payment = FieldText(b.payment_type);
  const bool credit = payment == "Credit";
  if (!credit) s.till_takings += double(b.total);
  s.sales_non_taxable += double(b.total_non_taxable);
  s.sales_taxable += double(b.total_taxable);
  s.sales_subtotal += double(b.subtotal);
  s.sales_tax1 += double(b.total_tax1);
  s.sales_tax2 += double(b.total_tax2);
  s.sales_discounts += double(b.total_discount);
  s.sales_total += double(b.total);
  s.cash_sales += double(b.tender_cash);
  s.ch_sales += double(b.tender_ch);
  s.eft_sales += double(b.tender_eft);
  s.eft_sales += double(b.tender_eft_extra);
  if (credit) s.credit_sales += double(b.total);
  s.cost_of_sales += double(b.total_cost);

  ++s.today_transactions;
  ++s.transaction_number;
  s.today_items += b.line_count;
  // A split sale is none of the four.
  if (payment == "Cash") s.count_cash_sales += 1.0f;
  if (payment == "CH") s.count_ch_sales += 1.0f;
  if (payment == "EFT") s.count_eft_sales += 1.0f;
  if (credit) s.count_credit_sales += 1.0f;
}

}  // namespace

void BatchTransaction(WriteBatch& batch, const SalesLogRecord& r, int year, int month, int day) {
  const std::string base = YearBasePath(year);
  std::string index;
  if (FileSize(base).value_or(0) == 0) index += BytesOf(BaseFileHeader{0});
  index += BytesOf(BaseRecord{int32_t(r.transaction_number), day, month});
  batch.Append(base, index, "Unable to open invoice log.", kProblem);
  batch.Append(SalesLogPath(year, month, day), BytesOf(r), "Unable to open sales log.", kProblem);
}

void BatchSettings(WriteBatch& batch, const SettingsRecord& next) {
  // Written over in place when it is whole: the journal already keeps it from
  // being torn, and a rename would cost the folder a second flush.
  if (FileSize(kSettingsFile) == int64_t(sizeof next))
    batch.Put(kSettingsFile, 0, BytesOf(next), "Data file: wr.cfg, not present.", kFatal);
  else
    batch.Replace(kSettingsFile, BytesOf(next), "Data file: wr.cfg, not present.", kFatal);
}

SalesLogRecord SalesLogRecordOf(const Basket& b) {
  SalesLogRecord r{};
  r.transaction_number = b.transaction_number;
  r.day_sequence = b.day_sequence;
  r.customer_number = b.customer_number;
  r.clerk = b.clerk;
  r.line_count = b.line_count;
  r.total_non_taxable = b.total_non_taxable;
  r.total_taxable = b.total_taxable;
  r.subtotal = b.subtotal;
  r.total_tax1 = b.total_tax1;
  r.total_tax2 = b.total_tax2;
  r.total_cost = b.total_cost;
  r.total = b.total;
  r.total_discount = b.total_discount;
  CopyField(r.reserved_64, b.reserved_amounts);
  r.cash_back = b.cash_back;
  r.tender_cash = b.tender_cash;
  r.tender_eft = b.tender_eft;
  r.tender_eft_extra = b.tender_eft_extra;
  r.tender_ch = b.tender_ch;
  CopyField(r.reserved_104, b.reserved_amounts2);
  r.credit_before = b.credit_before;
  r.credit_after = b.credit_after;
  r.reserved_120 = b.reserved_amount3;
  CopyField(r.sale_time, b.sale_time);
  CopyField(r.sale_date, b.sale_date);
  CopyField(r.customer_name, b.customer_name);
  CopyField(r.customer_road, b.customer_road);
  CopyField(r.customer_area, b.customer_area);
  CopyField(r.customer_town, b.customer_town);
  CopyField(r.customer_postcode, b.customer_postcode);
  CopyField(r.customer_telephone, b.customer_telephone);
  CopyField(r.payment_type, b.payment_type);
  CopyField(r.reserved_394, b.reserved_text1);
  CopyField(r.reserved_594, b.reserved_text2);
  CopyField(r.reserved_614, b.reserved_text3);
  CopyField(r.reserved_694, b.reserved_text4);
  CopyField(r.reserved_774, b.reserved_text5);
  CopyField(r.reserved_854, b.reserved_words);
  CopyField(r.note, b.note);
  return r;
}

bool Finishsale(const std::function<void(WriteBatch&)>& more) {
  State& g = G();
  Basket& b = g.basket;
  SettingsRecord& s = g.settings;

  // 1, 2. Number the transaction and empty the list on the screen.
  if (b.line_count <= 0) return false;
  if (g.basket_list.rows.empty()) {
    std::memset(&b, 0, sizeof b);
    Message("No items", kProblem);
    return false;
  }
  b.transaction_number = s.transaction_number;
  b.day_sequence = s.today_transactions + 1;
  const BasketList listed = g.basket_list;
  ClearBasketList();
  // A sale that could not be written stays in the basket to be paid again.
  auto keep_basket = [&] {
    g.basket_list = listed;
    sale_events().basket_list_changed();
    return false;
  };

  // 3, 4. The header, and the date that decides the folder.
  const SalesLogRecord sale = SalesLogRecordOf(b);
  Datestamp();
  const int year = g.now.year, month = g.now.month, day = g.now.day;
  bool crossed = false;
  auto cross_midnight = [&] {
    if (!crossed) CrossedMidnight();
    crossed = true;
  };

  // Everything is worked out first and written in one batch: a sale is in every
  // file it touches or in none.
  WriteBatch batch;
  // 5, 6. The transaction index and the sales log. A year file made here rather
  // than by the folder routine still opens with its header, so readers find the
  // records where they look for them.
  if (!FileExists(YearBasePath(year))) cross_midnight();
  if (!IsDirectory(DayFolder(year, month, day))) cross_midnight();
  BatchTransaction(batch, sale, year, month, day);

  // 7, 8. The items log, line by line with the stock of each line. film.dat is
  // opened once for the whole basket, at the first inventory line; an item sold
  // on two lines is counted down twice in one record.
  SettingsRecord next = s;
  std::map<int64_t, FilmRecord> stock;  // by record position
  std::string lines;
  File film;
  for (int i = 0; i < b.line_count; ++i) {
    int64_t category = kNonInventoryCategory;
    if (b.number[i] != 0) {
      const size_t slot = Findnumber(g.films.index, b.number[i]);
      if (slot >= g.films.index.size() || g.films.index[slot].number != b.number[i]) {
        // Deleted while it was in the basket: nothing is written.
        Message("Invalid entry", kProblem);
        return keep_basket();
      }
      const int64_t position = g.films.index[slot].position;
      auto held = stock.find(position);
      if (held == stock.end()) {
        if (!film) film.open(kFilmFile, File::Mode::Read);
        FilmRecord read{};
        if (!film || !film.seek(position * int64_t(sizeof(FilmRecord))) ||
            film.read(&read, sizeof read) != int64_t(sizeof read)) {
          Message("Data file: film.dat, not present.", kFatal);
          return keep_basket();
        }
        held = stock.emplace(position, read).first;
      }
      FilmRecord& item = held->second;
      ++item.total_sold;
      Timestamp();
      SetField(item.last_used, g.stamp_text);
      CountCategory(next, item.display_category, b.line_total[i]);
      // Stock never goes below 0 through a sale, even when the line was allowed
      // on insufficient stock.
      if (item.quantity > 0) --item.quantity;
      g.film = item;
      category = item.display_category;
    }
    ItemsLogRecord line{};
    line.transaction_number = b.transaction_number;
    line.category = category;
    line.customer_number = b.customer_number;
    line.number = b.number[i];
    CopyField(line.description, b.description[i]);
    line.non_taxable = b.non_taxable[i];
    line.taxable = b.taxable[i];
    line.tax1 = b.tax1[i];
    line.tax2 = b.tax2[i];
    line.cost = b.cost[i];
    line.discount = b.discount[i];
    line.line_total = b.line_total[i];
    line.clerk = b.clerk;
    lines += BytesOf(line);
  }
  film.close();
  batch.Append(ItemsLogPath(year, month, day), lines, "Unable to open items log.", kProblem);
  for (const auto& [position, item] : stock)
    batch.Put(kFilmFile, position * int64_t(sizeof item), &item, sizeof item, "Film.dat", kProblem);

  // 10 to 12.
  batch.Append(kActivityLog, SaleLogEntry(b), "Data file: bun4.dat, not present.", kProblem);
  AddToTotals(b, next);
  if (more) more(batch);

  // 13.
  BatchSettings(batch, next);
  if (!batch.Commit()) return keep_basket();
  s = next;
  if (g.films.on_record)
    for (const auto& [position, item] : stock) g.films.on_record(position, &item);

  // 14.
  std::memset(&b, 0, sizeof b);
  Refreshtotals();
  return true;
}

}  // namespace tilo
