// SPDX-License-Identifier: MIT
// Import: items or customers from a comma-separated file, our own text export
// or a spreadsheet's (quoted fields, a UTF-8 mark, either line end). The new
// data file is built aside and renamed in only when every row has been read,
// so a failure or Cancel leaves the old one as it was; then the program closes
// and the next start builds its indexes afresh.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/customer_file.h"
#include "core/film_record.h"
#include "upkeep/exchange_view.h"

namespace tilo {

// A line of this many characters or more is passed over whole.
inline constexpr size_t kLongestLine = 1999;
// Where a replacing inventory import leaves the file it replaced.
inline constexpr const char* kReplacedFile = "temp2.dat";

// One record of the file: its fields (quotes taken off, Windows-1252) and the
// length of its text without the line end.
struct CsvRow {
  std::vector<std::string> fields;
  size_t count = 0;
  size_t length = 0;
};

// A comma-separated file in memory. A field opening with a quote runs to its
// closing quote, a doubled quote standing for one, commas and line breaks inside
// staying. A file with a UTF-8 mark, or one that reads as UTF-8 throughout, is
// turned into Windows-1252; any other is taken as Windows-1252 already.
class CsvFile {
 public:
  explicit CsvFile(std::string_view bytes);

  bool at_end(size_t at) const { return at >= bytes_.size(); }
  size_t start() const { return start_; }
  // Reads the record at `at` into `row`; returns where the next one starts, or
  // nullopt when a quote is never closed.
  std::optional<size_t> Read(size_t at, CsvRow& row) const;

  // The records, the fields of the first one, and its text for show (UTF-8).
  // nullopt when a quote is never closed.
  struct Shape {
    int64_t records = 0;
    int fields = 0;
    std::string first_line;
  };
  std::optional<Shape> Measure() const;

 private:
  std::string_view bytes_;
  size_t start_ = 0;
  bool utf8_ = false;
};

// The field form's boxes as they start: 1, 2, 3... up to the number of fields.
ImportColumns DefaultColumns(bool customers, int fields);
// A box above the number of fields (or below 0) counts as 0.
void LimitColumns(ImportColumns& columns, int fields);

// The record a row makes, or nullopt when it is refused (a number out of range,
// a description or name shorter than 2 characters). An empty cell counts as
// not given: the starting value stays.
std::optional<FilmRecord> ImportedItem(const CsvRow& row, const std::vector<int>& boxes);
std::optional<MemberRecord> ImportedCustomer(const CsvRow& row, const std::vector<int>& boxes);

// The first number the list holds twice (the lowest), or 0 when none.
int64_t FirstDuplicate(std::vector<int64_t> numbers);

// The "Import" command.
void Importfile();

}  // namespace tilo
