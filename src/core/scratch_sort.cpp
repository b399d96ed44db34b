// SPDX-License-Identifier: MIT
#include "core/scratch_sort.h"

#include <cstdio>
#include <cstring>
#include <new>
#include <string>
#include <utility>

#include "core/customer_file.h"
#include "core/film_record.h"
#include "core/state.h"
#include "core/text.h"
#include "platform/files.h"
#include "platform/platform.h"

namespace tilo {
namespace {

unsigned char Upper(unsigned char c) {
  return c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c;
}

template <size_t N, size_t M>
void CopyText(char (&to)[N], const char (&from)[M]) {
  SetField(to, FieldText(from));
}

template <size_t N>
void PutText(char (&to)[N], const char* text) {
  SetField(to, text);
}

void FillRow(SortKind kind, const char* record, SortRow& row) {
  std::memset(&row, 0, sizeof row);
  if (kind == SortKind::Customers) {
    MemberRecord m;
    std::memcpy(&m, record, sizeof m);
    row.number = m.number;
    CopyText(row.text, m.name);
    CopyText(row.column3, m.road);
    CopyText(row.column4, m.telephone);
    return;
  }
  FilmRecord f;
  std::memcpy(&f, record, sizeof f);
  row.number = f.number;
  CopyText(row.text, f.description);
  char text[32];
  if (kind == SortKind::Listing) {
    std::snprintf(text, sizeof text, "%d", f.quantity);
    PutText(row.column3, text);
    std::snprintf(text, sizeof text, "%.2f", double(f.retail_price));
    PutText(row.column4, text);
  } else {
    std::snprintf(text, sizeof text, "%d", f.total_sold);
    PutText(row.column3, text);
    // The date part of last_used stands behind its five characters of time.
    const std::string used = FieldText(f.last_used);
    PutText(row.column4, used.size() > 5 ? used.c_str() + 5 : "");
  }
}

// Text order throughout the system is a plain byte compare.
bool Greater(const SortRow& a, const SortRow& b) {
  return std::strncmp(a.text, b.text, sizeof a.text) > 0;
}

}  // namespace

const char* ScratchFile(SortKind kind) {
  return kind == SortKind::Customers ? "m2.dat" : "f2.dat";
}

int64_t Alphasort(SortKind kind, unsigned char start, unsigned char end) {
  start = Upper(start);
  end = Upper(end);
  if (start < 'A' || end < start) return -1;
  if (start == 'A') start = ' ';

  const bool customers = kind == SortKind::Customers;
  const IndexedFile& file = customers ? G().members : G().films;
  const int64_t record_size = file.layout().record_size;

  // Positions of every record by its two key bytes, in file order.
  std::vector<std::vector<int64_t>> buckets(256 * 256);
  size_t largest = 0;
  for (size_t p = 0; p < file.name_keys.size(); ++p) {
    const unsigned char c = file.name_keys[p][0], d = file.name_keys[p][1];
    if (c < start || c > end || d < 32) continue;
    auto& bucket = buckets[size_t(c) * 256 + d];
    bucket.push_back(int64_t(p));
    if (bucket.size() > largest) largest = bucket.size();
  }

  std::vector<SortRow> rows;
  try {
    rows.resize(largest + 3);
  } catch (const std::bad_alloc&) {
    Message("Insufficient memory to process request", "Problem");
    return -1;
  }

  std::string out;
  std::vector<char> record(size_t(record_size), 0);
  File source(file.layout().path, File::Mode::Read);
  for (unsigned c = start; c <= end; ++c) {
    for (unsigned d = 32; d <= 255; ++d) {
      const auto& bucket = buckets[c * 256 + d];
      if (bucket.empty()) continue;
      size_t n = 0;
      for (int64_t p : bucket) {
        std::fill(record.begin(), record.end(), 0);
        if (!source || !source.seek(p * record_size) || source.read(record.data(), record_size) < 0)
          continue;
        FillRow(kind, record.data(), rows[n++]);
      }
      // Each row against every later one, swapped when greater.
      for (size_t i = 0; i + 1 < n; ++i)
        for (size_t j = i + 1; j < n; ++j)
          if (Greater(rows[i], rows[j])) std::swap(rows[i], rows[j]);
      out.append(reinterpret_cast<const char*>(rows.data()), n * sizeof(SortRow));
    }
  }
  if (!ReplaceFile(ScratchFile(kind), out)) {
    Message(std::string("Data file: ") + ScratchFile(kind) + ".", "Problem");
    return -1;
  }
  return int64_t(out.size() / sizeof(SortRow));
}

std::optional<std::vector<SortRow>> ReadSortRows(SortKind kind) {
  auto bytes = ReadWholeFile(ScratchFile(kind));
  if (!bytes) {
    Message(std::string("Data file: ") + ScratchFile(kind) + ", not present.", "Fatal error");
    return std::nullopt;
  }
  std::vector<SortRow> rows(bytes->size() / sizeof(SortRow));
  std::memcpy(static_cast<void*>(rows.data()), bytes->data(), rows.size() * sizeof(SortRow));
  return rows;
}

}  // namespace tilo
