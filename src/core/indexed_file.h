// SPDX-License-Identifier: MIT
// A file of fixed-size records keyed by number, with its NumberIndex and (for
// the inventory and the customers) its NameKeys: the first two bytes of every
// record's name by record position. Deleted records carry number -1 and are
// reused, the one deleted longest first, before the file grows. Every access
// opens the file, works and closes it.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "core/number_index.h"
#include "platform/files.h"
#include "platform/platform.h"

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

// A deleted record has both NameKeys bytes 0; a live one's name is never empty.
inline bool LiveKey(NameKey key) {
  return key[0] != 0;
}

// What a walk over a record file looks for. NameKeys are tested first and cost
// no disk read; only the records they let through are read, runs of them in
// one block each, and handed to `test`.
struct WalkOptions {
  // Number order (from the lowest live number up, as the index holds them)
  // instead of file order.
  bool by_number = false;
  // Shown under "Problem" when a record can't be read; callers word it their own way.
  std::string read_failed;
  // A position whose NameKeys this refuses is passed over unread. Unset: every
  // position is read, deleted records included.
  std::function<bool(NameKey)> keys;
  // The test of a record read; unset: every record read passes.
  std::function<bool(const void* record)> test;
  // The busy box of a walk that takes longer than 0.3 s.
  std::string busy_text = "Searching...";
  std::string busy_title = "Please wait";
};

class IndexedFile;

// One walk over a record file. Next() hands back the records that pass, one at a
// time; in between the file is closed and the busy box gone, so the caller may
// show a box, rewrite or delete the record, and then go on from where it stood.
class RecordWalk {
 public:
  enum class End { Walking, Finished, Failed, Cancelled };

  RecordWalk(IndexedFile& file, WalkOptions options);
  RecordWalk(RecordWalk&&) = default;
  ~RecordWalk();

  // Copies the next record that passes into `buffer` and sets the file's
  // `position` to it; false when the walk is over: at the end (Finished), after a
  // failed open or read and its message (Failed), or on Cancel (Cancelled).
  bool Next(void* buffer);
  End end() const { return end_; }
  // The text of a failed read from here on (a form may word it its own way).
  void set_read_failed(std::string text) { options_.read_failed = std::move(text); }
  // Records read from disk so far.
  int64_t records_read() const { return records_read_; }

 private:
  bool Open();
  void Close();
  bool Step(int64_t done, int64_t total);
  bool KeysPass(int64_t position) const;
  bool NextByPosition(void* buffer);
  bool NextByNumber(void* buffer);
  bool Fail();

  IndexedFile* file_;
  WalkOptions options_;
  File handle_;
  std::unique_ptr<Progress> progress_;
  End end_ = End::Walking;
  int64_t records_read_ = 0;
  int64_t steps_ = 0;
  // File order: the next position, and the block of records read ahead.
  int64_t next_position_ = 0;
  int64_t block_first_ = 0;
  int64_t block_count_ = 0;
  int64_t block_writes_ = 0;
  std::vector<char> block_;
  // Number order: the next index slot, or after a record handed back the number
  // to look for again (the index may have changed meanwhile).
  size_t next_slot_ = 0;
  int64_t resume_number_ = 1;
  bool resume_ = true;
};

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

  // A walk over the records, in file order or number order (see WalkOptions).
  RecordWalk Walk(WalkOptions options) { return RecordWalk(*this, std::move(options)); }

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
  // Raised by every write, so that a walk knows when what it read ahead is stale.
  int64_t writes = 0;

 private:
  static int64_t NumberOf(const void* buffer);
  NameKey KeyOf(const void* buffer) const;
  void SetKey(int64_t pos, NameKey key);
  bool WriteRecord(int64_t pos, const void* buffer, bool at_end);
  // Reads `count` records from `f`, which stands at record `first`, into `out`
  // and NameKeys, telling on_record of each when `tell`; returns the records read.
  int64_t LoadSpan(File& f, int64_t first, int64_t count, IndexEntry* out, bool tell);

  IndexedFileLayout layout_;
};

}  // namespace tilo
