// SPDX-License-Identifier: MIT
// A file of fixed-size records keyed by number, with its NumberIndex and (for
// the inventory and the customers) its NameKeys: the first two bytes of every
// record's name by record position. Deleted records carry number -1 and are
// reused, the one deleted longest first, before the file grows. Every access
// opens the file, works and closes it.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "core/number_index.h"

namespace tilo {

struct IndexedFileMessages {
  const char* open_failed;           // "Fatal error"
  const char* read_failed;           // "Problem", on a fetch
  const char* scan_failed;           // "Problem", while scanning
  const char* add_write_failed;      // "Problem"
  const char* delete_write_failed;   // "Problem"
  const char* rewrite_write_failed;  // "Problem"
};

struct IndexedFileLayout {
  const char* path;
  int64_t record_size;
  int name_offset;      // where the two NameKeys bytes come from; -1 keeps no NameKeys
  bool repair_numbers;  // numbers of zero or below count as deleted at load
  IndexedFileMessages messages;
};

using NameKey = std::array<char, 2>;

class IndexedFile {
 public:
  explicit IndexedFile(const IndexedFileLayout& layout) : layout_(layout) {}

  // Builds the index and NameKeys from the file; false if it can't be opened.
  bool Load();
  void Clear();

  // Reads the record of `number` into `buffer`. Returns the number when found,
  // 0 when it is not in the index or the read fails (after its message).
  int64_t Fetch(int64_t number, void* buffer);
  // Reads the record at a file position, for walks over the whole file; false at
  // the end or on failure (after the scan message).
  bool ReadAt(int64_t position, void* buffer, bool report = true);
  // Adds the record in `buffer` under its number, reusing a deleted slot first.
  bool Insert(const void* buffer);
  // Deletes the record last fetched (in `buffer`, at `position`).
  bool Remove(void* buffer);
  // Stores `buffer` over the record with its number.
  bool Rewrite(const void* buffer);
  // Copies the name bytes of `buffer` into NameKeys at `position`.
  void UpdateNameKey(const void* buffer);

  bool Contains(int64_t number) const;

  // Told of every record as the file loads (after a first call with position -1)
  // and of every record written, so that a cache of some field stays in step.
  void (*on_record)(int64_t position, const void* record) = nullptr;
  const IndexedFileLayout& layout() const { return layout_; }

  NumberIndex index;
  std::vector<NameKey> name_keys;  // by record position
  int64_t slot_count = 0;
  int64_t live = 0;
  int64_t deleted = 0;
  int64_t position = -1;  // of the record last found

 private:
  static int64_t NumberOf(const void* buffer);
  NameKey KeyOf(const void* buffer) const;
  void SetKey(int64_t pos, NameKey key);
  bool WriteRecord(int64_t pos, const void* buffer, bool at_end);

  IndexedFileLayout layout_;
};

}  // namespace tilo
