// SPDX-License-Identifier: MIT
#include "upkeep/import.h"

#include <unistd.h>

#include <algorithm>
#include <cinttypes>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "core/state.h"
#include "core/text.h"
#include "platform/files.h"
#include "platform/platform.h"
#include "sale/screen.h"

namespace tilo {
namespace {

constexpr const char* kProblem = "Problem";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// True when every byte above 127 belongs to a well-formed UTF-8 sequence and at
// least one such sequence is there (plain ASCII is the same in both).
bool ReadsAsUtf8(std::string_view s) {
  bool any = false;
  for (size_t i = 0; i < s.size();) {
    const unsigned char b = s[i];
    int more = b < 0x80 ? 0 : (b >> 5) == 6 ? 1 : (b >> 4) == 14 ? 2 : (b >> 3) == 30 ? 3 : -1;
    if (more < 0 || (more == 1 && b < 0xC2) || (more > 0 && i + size_t(more) >= s.size()))
      return false;
    for (int k = 1; k <= more; ++k)
      if ((static_cast<unsigned char>(s[i + size_t(k)]) >> 6) != 2) return false;
    any = any || more > 0;
    i += size_t(more) + 1;
  }
  return any;
}

// The cell of import row `row`, or nullptr when it is not imported or empty.
const std::string* Cell(const CsvRow& csv, const std::vector<int>& boxes, size_t row) {
  if (row >= boxes.size()) return nullptr;
  const int column = boxes[row];
  if (column < 1 || size_t(column) > csv.count) return nullptr;
  const std::string& text = csv.fields[size_t(column - 1)];
  return text.empty() ? nullptr : &text;
}

int64_t Whole(const std::string& text) {
  return std::strtoll(text.c_str(), nullptr, 10);
}

int32_t Count(int64_t value) {
  return int32_t(std::min<int64_t>(value, INT32_MAX));
}

// The number fields taken only when above 0.
int32_t Positive(int32_t field, const std::string* cell) {
  return cell && Whole(*cell) > 0 ? Count(Whole(*cell)) : field;
}

float Positive(float field, const std::string* cell) {
  if (!cell) return field;
  const float value = std::strtof(cell->c_str(), nullptr);
  return value > 0 ? value : field;
}

template <size_t N>
void Text(char (&field)[N], const std::string* cell, bool upper) {
  if (cell) SetField(field, upper ? UpperCase(*cell) : *cell);
}

std::string Format(const char* pattern, int64_t a, int64_t b = 0) {
  char text[128];
  std::snprintf(text, sizeof text, pattern, a, b);
  return text;
}

enum class Outcome { Done, Failed, Cancelled };

// Starts the new file aside: empty to replace, the old file's bytes to merge.
bool StartAside(File& out, const std::string& aside, const std::string& target, bool merge) {
  if (!out.open(aside, File::Mode::Create)) return false;
  if (!merge) return true;
  File in(target, File::Mode::Read);
  if (!in) return false;
  std::vector<char> block(1 << 20);
  for (int64_t n; (n = in.read(block.data(), int64_t(block.size()))) != 0;)
    if (n < 0 || !out.write(block.data(), n)) return false;
  return true;
}

// Reads every row into the aside file; `numbers` gets the number of each
// record written.
Outcome WriteRows(const CsvFile& csv, int64_t records, bool customers, const ImportColumns& columns,
                  IndexedFile& file, File& out, std::vector<int64_t>& numbers) {
  auto progress = platform().begin_progress("Importing the records", "File import", true);
  std::string pending;
  CsvRow row;
  int64_t done = 0;
  for (size_t at = csv.start(); !csv.at_end(at);) {
    at = *csv.Read(at, row);
    if (!progress->step(++done, records)) return Outcome::Cancelled;
    if (row.length >= kLongestLine) continue;
    // A row goes in whole: the record is made in memory, then appended.
    auto take = [&](const auto& record) {
      if (!record || (columns.merge && file.Contains(record->number))) return;
      pending.append(reinterpret_cast<const char*>(&*record), sizeof *record);
      numbers.push_back(record->number);
    };
    if (customers)
      take(ImportedCustomer(row, columns.boxes));
    else
      take(ImportedItem(row, columns.boxes));
    if (pending.size() >= (1u << 20)) {
      if (!out.write(pending)) return Outcome::Failed;
      pending.clear();
    }
  }
  return out.write(pending) && out.sync() ? Outcome::Done : Outcome::Failed;
}

// Puts the new file in place. A replaced inventory stays behind as temp2.dat,
// linked before the rename so that film.dat is never missing.
bool PutInPlace(const std::string& aside, const std::string& target, bool keep_old) {
  if (keep_old) {
    RemoveFile(kReplacedFile);
    if (::link(target.c_str(), kReplacedFile) != 0) return false;
  }
  if (std::rename(aside.c_str(), target.c_str()) != 0) return false;
  SyncFolder(".");
  return true;
}

void Run(const CsvFile& csv, int64_t records, bool customers, const ImportColumns& columns) {
  IndexedFile& file = customers ? G().members : G().films;
  const std::string target = file.layout().path;
  const std::string aside = target + ".import";
  const char* unable = customers ? "Unable to open member.dat" : "Unable to open film.dat";
  std::vector<int64_t> numbers;
  File out;
  Outcome outcome = StartAside(out, aside, target, columns.merge)
                        ? WriteRows(csv, records, customers, columns, file, out, numbers)
                        : Outcome::Failed;
  out.close();
  if (outcome == Outcome::Done && numbers.empty() && !columns.merge) {
    RemoveFile(aside);
    return void(Message("No valid items", kProblem));
  }
  if (outcome != Outcome::Done || !PutInPlace(aside, target, !customers && !columns.merge)) {
    RemoveFile(aside);
    if (outcome != Outcome::Cancelled) Message(unable, kProblem);
    return;
  }
  file.Load();
  if (const int64_t twice = FirstDuplicate(std::move(numbers)))
    Message(Format("Item %" PRId64 " duplicated", twice), "Import inconsistancy");
  Message("TILO will now close down",
          customers ? "File import complete" : "Inventory import complete");
  screen_view().quit();
}

}  // namespace

CsvFile::CsvFile(std::string_view bytes) : bytes_(bytes) {
  if (bytes.substr(0, kByteOrderMark.size()) == kByteOrderMark) {
    start_ = kByteOrderMark.size();
    utf8_ = true;
  } else {
    utf8_ = ReadsAsUtf8(bytes);
  }
}

std::optional<size_t> CsvFile::Read(size_t at, CsvRow& row) const {
  const std::string_view s = bytes_;
  const size_t n = s.size();
  const size_t first = at;
  row.count = 0;
  for (;;) {
    if (row.count == row.fields.size()) row.fields.emplace_back();
    std::string& field = row.fields[row.count++];
    field.clear();
    if (at < n && s[at] == '"') {
      for (++at;; ++at) {
        if (at >= n) return std::nullopt;
        if (s[at] == '"') {
          if (at + 1 < n && s[at + 1] == '"') {
            field += '"', ++at;
            continue;
          }
          ++at;
          break;
        }
        field += s[at];
      }
    }
    const size_t end = std::min(n, s.find_first_of(",\n", at));
    field.append(s.substr(at, end - at));
    at = end;
    if (at < n && s[at] == ',') {
      ++at;
      continue;
    }
    if (!field.empty() && field.back() == '\r') field.pop_back();
    row.length = at - first - (at > first && s[at - 1] == '\r' ? 1 : 0);
    break;
  }
  if (utf8_)
    for (size_t i = 0; i < row.count; ++i) row.fields[i] = Utf8ToCp1252(row.fields[i]);
  return at < n ? at + 1 : n;
}

std::optional<CsvFile::Shape> CsvFile::Measure() const {
  Shape shape;
  CsvRow row;
  for (size_t at = start_; !at_end(at); ++shape.records) {
    const auto next = Read(at, row);
    if (!next) return std::nullopt;
    if (shape.records == 0) {
      shape.fields = int(row.count);
      std::string line(bytes_.substr(at, std::min(row.length, kLongestLine)));
      shape.first_line = utf8_ ? line : Cp1252ToUtf8(line);
    }
    at = *next;
  }
  return shape;
}

ImportColumns DefaultColumns(bool customers, int fields) {
  ImportColumns columns;
  const int rows = customers ? 18 : 17;
  for (int i = 0; i < rows; ++i) columns.boxes.push_back(i < fields || fields >= 16 ? i + 1 : 0);
  return columns;
}

void LimitColumns(ImportColumns& columns, int fields) {
  for (int& box : columns.boxes)
    if (box < 0 || box > fields) box = 0;
}

std::optional<FilmRecord> ImportedItem(const CsvRow& row, const std::vector<int>& boxes) {
  FilmRecord r{};
  SetField(r.last_used, "NEW");
  r.stock_picture = 1;
  r.display_category = 14;
  auto cell = [&](size_t i) { return Cell(row, boxes, i); };
  if (!cell(0)) return std::nullopt;
  r.number = Whole(*cell(0));
  if (r.number < 1 || r.number > kHighestNumber) return std::nullopt;
  Text(r.description, cell(1), true);
  if (FieldText(r.description).size() < 2) return std::nullopt;
  Text(r.sku1, cell(2), false);
  Text(r.sku2, cell(3), false);
  r.cost_price = Positive(r.cost_price, cell(4));
  if (cell(5) && Whole(*cell(5)) >= 0 && Whole(*cell(5)) <= 17)
    r.display_category = int32_t(Whole(*cell(5)));
  r.retail_price = Positive(r.retail_price, cell(6));
  r.quantity = Positive(r.quantity, cell(7));
  r.reorder_quantity = Positive(r.reorder_quantity, cell(8));
  if (cell(9) && Whole(*cell(9)) > 0) r.tax = Whole(*cell(9)) > 3 ? 1 : int32_t(Whole(*cell(9)));
  Text(r.order_code, cell(10), false);
  r.order_quantity = Positive(r.order_quantity, cell(11));
  r.minimum_order = Positive(r.minimum_order, cell(12));
  r.trade_price = Positive(r.trade_price, cell(13));
  Text(r.location, cell(14), false);
  Text(r.website, cell(15), false);
  Text(r.web_image, cell(16), false);
  return r;
}

std::optional<MemberRecord> ImportedCustomer(const CsvRow& row, const std::vector<int>& boxes) {
  MemberRecord r{};
  r.tax = 1;
  r.group = 1;
  r.terms = 1;
  auto cell = [&](size_t i) { return Cell(row, boxes, i); };
  if (!cell(0)) return std::nullopt;
  r.number = Whole(*cell(0));
  if (r.number < 1 || r.number > kHighestNumber) return std::nullopt;
  Text(r.name, cell(1), false);
  if (FieldText(r.name).size() < 2) return std::nullopt;
  Text(r.road, cell(2), true);
  Text(r.area, cell(3), true);
  Text(r.town, cell(4), true);
  Text(r.postcode, cell(5), true);
  Text(r.telephone, cell(6), true);
  if (cell(7)) r.tax = Whole(*cell(7));
  if (cell(8)) r.balance = std::strtof(cell(8)->c_str(), nullptr);
  if (cell(9)) r.credit_limit = std::strtof(cell(9)->c_str(), nullptr);
  Text(r.shipping_address_1, cell(10), false);
  Text(r.shipping_address_2, cell(11), false);
  Text(r.shipping_address_3, cell(12), false);
  Text(r.shipping_address_4, cell(13), false);
  Text(r.shipping_address_5, cell(14), false);
  Text(r.comment, cell(15), false);
  r.group = Positive(r.group, cell(16));
  Text(r.email, cell(17), false);
  return r;
}

int64_t FirstDuplicate(std::vector<int64_t> numbers) {
  if (numbers.size() < 2) return 0;
  std::sort(numbers.begin(), numbers.end());
  const auto twice = std::adjacent_find(numbers.begin(), numbers.end());
  return twice == numbers.end() ? 0 : *twice;
}

void Importfile() {
  char folder[4096];
  if (!::getcwd(folder, sizeof folder))
    return void(Message("Unable to locate directory.", kProblem));
  const auto kind =
      platform().prompt("Enter 1 to import inventory, 2 to import customers", "Import", "1");
  if (!kind || (*kind != "1" && *kind != "2")) return;
  const bool customers = *kind == "2";
  const auto path = platform().choose_file("Import", false, "Text files (*.txt *.TXT *.csv *.CSV)");
  if (!path) return;
  const auto bytes = ReadWholeFile(*path);
  if (!bytes) return void(Message("File not present.", "Fatal error"));
  const CsvFile csv(*bytes);
  if (csv.at_end(csv.start())) return void(Message("File has no content", kProblem));
  const auto shape = csv.Measure();
  if (!shape || shape->records == 0 || shape->fields == 0)
    return void(Message("Non recognised format", kProblem));
  if (Message(Format("%" PRId64 " records of %" PRId64 " fields", shape->records, shape->fields),
              "File import", Buttons::OkCancel) != Answer::Ok)
    return;

  auto columns = exchange_view().import_columns(customers, shape->first_line,
                                                DefaultColumns(customers, shape->fields));
  if (!columns) return;
  LimitColumns(*columns, shape->fields);
  if (customers) columns->merge = false;
  if (columns->boxes.empty() || columns->boxes[0] == 0) return;
  if (!columns->merge &&
      Message("All existing data will be lost.", "Warning", Buttons::OkCancel) != Answer::Ok)
    return;
  Run(csv, shape->records, customers, *columns);
}

}  // namespace tilo
