// SPDX-License-Identifier: MIT
#include "inventory/receiving.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <unordered_map>

#include "core/clock.h"
#include "core/history.h"
#include "core/inventory.h"
#include "core/number_index.h"
#include "core/record_batch.h"
#include "core/settings.h"
#include "core/state.h"
#include "core/text.h"
#include "core/write_batch.h"
#include "documents/print_job.h"
#include "inventory/item_find.h"
#include "inventory/items.h"
#include "platform/files.h"
#include "sale/basket.h"

namespace tilo {
namespace {

constexpr const char* kProblem = "Problem";

// One receipt through form 808 on the record in G().film. Anything but "OK" or
// "Next" with a valid quantity ends the command (Cancel).
ReceiveButton Receiveone() {
  ReceiveForm form;
  form.record = G().film;
  const ReceiveButton button = inventory_view().receive_item(form);
  if (button == ReceiveButton::Cancel) return button;
  FilmRecord& r = G().film;
  const FilmRecord before = r;
  // Stock is 32-bit: a quantity that would carry it past its limit is refused
  // like one below 1.
  const int64_t received = LeadingNumber(form.quantity);
  if (received < 1 || received > INT32_MAX || int64_t(r.quantity) + received > INT32_MAX) {
    Message("Invalid quantity", kProblem);
    return ReceiveButton::Cancel;
  }
  r.quantity += int32_t(received);
  r.sell_by_day = form.record.sell_by_day;
  r.sell_by_month = form.record.sell_by_month;
  r.sell_by_year = form.record.sell_by_year;
  if (r.on_order > 0) {
    r.on_order -= int32_t(std::min<int64_t>(received, r.on_order));
  }
  // The stock and the day's incoming log are written together.
  Makelogdirs();
  const LocalTime now = G().now;
  const StockInRecord in{r.number, received};
  if (!WriteTogether(G().films, Rewritefilm, [&](WriteBatch& batch) {
        batch.Append(StockInPath(now.year, now.month, now.day),
                     std::string_view(reinterpret_cast<const char*>(&in), sizeof in),
                     "Unable to open incoming log.", kProblem);
      })) {
    r = before;
    return ReceiveButton::Cancel;
  }
  Message(std::to_string(r.quantity), "Updated quantity");
  return button;
}

// The walk of "Inventory received by SKU 1" over film.dat in file order.
// Returns the answer that ended the walk: Next to ask again.
ReceiveButton WalkSku1(const std::string& text) {
  WalkOptions o = FragmentWalk(Sku1Fragment(text), false);
  o.read_failed = "Film.dat";
  RecordWalk walk = G().films.Walk(std::move(o));
  while (walk.Next(&G().film)) {
    const FilmRecord& r = G().film;
    char line[80];
    std::snprintf(line, sizeof line, "%lld, %s", static_cast<long long>(r.number),
                  FieldText(r.description).c_str());
    const Answer a = Message(Cp1252ToUtf8(line), "Search: No to continue", Buttons::YesNoCancel);
    if (a == Answer::Cancel) return ReceiveButton::Cancel;
    if (a == Answer::Yes) return Receiveone();
  }
  if (walk.end() == RecordWalk::End::Finished) Message("No match found", "Finished");
  return ReceiveButton::Cancel;
}

// The descriptions of the numbers a report names, read in one pass over
// film.dat in file order: the description bytes of each record only. A number
// no longer in the index (the item deleted) has none.
std::unordered_map<int64_t, std::string> Describe(std::vector<int64_t> numbers) {
  std::sort(numbers.begin(), numbers.end());
  numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
  std::vector<std::pair<int64_t, int64_t>> places;  // position, number
  const NumberIndex& index = G().films.index;
  for (int64_t n : numbers) {
    const size_t slot = Findnumber(index, n);
    if (slot < index.size() && index[slot].number == n) places.push_back({index[slot].position, n});
  }
  std::sort(places.begin(), places.end());
  std::unordered_map<int64_t, std::string> found;
  File f(kFilmFile, File::Mode::Read);
  if (!f) return found;
  char description[sizeof FilmRecord::description];
  for (const auto& [position, n] : places) {
    const int64_t at =
        position * int64_t(sizeof(FilmRecord)) + int64_t(offsetof(FilmRecord, description));
    if (f.seek(at) && f.read(description, sizeof description) == int64_t(sizeof description))
      found.emplace(n, FieldText(description));
  }
  return found;
}

}  // namespace

std::string Updatedtotal(int32_t held, const std::string& typed) {
  return std::to_string(int64_t(held) + LeadingNumber(typed));
}

bool Appendstockin(int64_t number, int64_t received) {
  Makelogdirs();
  const LocalTime now = G().now;
  File f(StockInPath(now.year, now.month, now.day), File::Mode::Append);
  if (!f) return false;
  const int64_t before = f.size();
  const StockInRecord record{number, received};
  if (f.write(&record, sizeof record) && f.sync()) return true;
  f.truncate(before);
  return false;
}

void Inventoryreceived() {
  for (;;) {
    std::optional<std::string> reply =
        platform().prompt("Inventory number / description", "Inventory received");
    if (!reply || Findforprompt(*reply) == 0) return;
    if (Receiveone() != ReceiveButton::Next) return;
  }
}

void Inventoryreceivedbysku() {
  for (;;) {
    std::optional<std::string> reply =
        platform().prompt("Find in SKU 1:", "Inventory received by SKU 1");
    if (!reply || reply->empty()) return;
    const std::string text = UpperCase(Utf8ToCp1252(*reply)).substr(0, 34);
    if (WalkSku1(text) != ReceiveButton::Next) return;
  }
}

std::vector<std::string> Receivedlines(const ReportPeriod& period) {
  struct Entry {
    std::string date;
    StockInRecord record;
  };
  std::vector<Entry> entries;
  std::vector<int64_t> numbers;
  Foreachday(period, [&](int y, int m, int d) {
    std::optional<std::string> bytes = ReadWholeFile(StockInPath(y, m, d));
    if (!bytes || bytes->size() < sizeof(StockInRecord)) return;
    const std::string date = Utf8ToCp1252(Localdate(y, m, d, "%d/%d/%d"));
    const size_t count = bytes->size() / sizeof(StockInRecord);
    for (size_t i = 0; i < count; ++i) {
      Entry e{date, {}};
      std::memcpy(&e.record, bytes->data() + i * sizeof e.record, sizeof e.record);
      if (e.record.number >= 1) numbers.push_back(e.record.number);
      entries.push_back(std::move(e));
    }
  });
  const std::unordered_map<int64_t, std::string> descriptions = Describe(std::move(numbers));
  std::vector<std::string> lines;
  lines.reserve(entries.size());
  for (const Entry& e : entries) {
    auto it = descriptions.find(e.record.number);
    const std::string none;
    char number[24], received[24];
    std::snprintf(number, sizeof number, "%lld", static_cast<long long>(e.record.number));
    std::snprintf(received, sizeof received, "%lld", static_cast<long long>(e.record.received));
    lines.push_back(e.date + "         " + number + " " +
                    (it == descriptions.end() ? none : it->second) +
                    "        Quantity: " + received);
  }
  return lines;
}

std::string Receivedtitle(const ReportPeriod& p) {
  char* text = G().pretty_date;
  std::snprintf(text, sizeof G().pretty_date, "00:00%02d/%02d/%d", p.from_day, p.from_month,
                p.from_year);
  const bool from_ok = Shortdate() == 1;
  const std::string from = Cp1252ToUtf8(text);
  std::snprintf(text, sizeof G().pretty_date, "00:00%02d/%02d/%d", p.to_day, p.to_month, p.to_year);
  if (from_ok && Shortdate() == 1)
    return "Inventory received: " + from + " to " + Cp1252ToUtf8(text);
  char plain[96];
  std::snprintf(plain, sizeof plain, " Inventory received: %2d/%2d/%d to %2d/%2d/%d", p.from_day,
                p.from_month, p.from_year, p.to_day, p.to_month, p.to_year);
  return plain;
}

void Printreceivedpage(PrintTarget& target, const std::vector<std::string>& lines, size_t& next) {
  char heading[96];
  std::snprintf(heading, sizeof heading, "%s Inventory received, page: %d",
                FieldText(G().heading.site_name).c_str(), G().print_job.page_number);
  Printlistpage(target, heading, lines, next);
}

void Inventoryreceivedreport() {
  std::optional<ReportPeriod> period = Choosereportperiod();
  if (!period) return;
  const std::vector<std::string> lines = Receivedlines(*period);
  std::vector<std::string> shown;
  shown.reserve(lines.size());
  for (const std::string& line : lines) shown.push_back(Cp1252ToUtf8(line));
  period_list_view().show_list(Receivedtitle(*period), shown, [&lines] {
    size_t next = 0;
    Runpagedjob([&](PrintTarget& target) { Printreceivedpage(target, lines, next); });
  });
}

}  // namespace tilo
