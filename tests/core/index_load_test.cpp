// SPDX-License-Identifier: MIT
// The index load against the plain way of building it: every record in file
// order, bad numbers repaired, then a stable sort by number. Big files are read
// in two halves at once; the result must not show it.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>

#include "core/indexed_file.h"
#include "core/inventory.h"
#include "support/shop_fixture.h"

namespace tilo {
namespace {

struct Loaded {
  NumberIndex index;
  std::vector<NameKey> keys;  // one per whole record
  int64_t slots = 0, live = 0, deleted = 0;
  bool operator==(const Loaded&) const = default;
};

Loaded PlainLoad(const IndexedFileLayout& layout, const std::string& bytes) {
  Loaded want;
  const int64_t size = layout.record_size;
  want.slots = int64_t(bytes.size()) / size;
  for (int64_t pos = 0; pos < want.slots; ++pos) {
    const char* rec = bytes.data() + pos * size;
    int64_t number;
    std::memcpy(&number, rec, sizeof number);
    if (number <= 0 && number != -1 && layout.repair_numbers) number = -1;
    want.index.push_back({number, pos});
    (number < 0 ? want.deleted : want.live) += 1;
    NameKey key{0, 0};
    if (layout.name_offset >= 0) std::memcpy(key.data(), rec + layout.name_offset, 2);
    want.keys.push_back(key);
  }
  std::stable_sort(want.index.begin(), want.index.end(),
                   [](const IndexEntry& a, const IndexEntry& b) { return a.number < b.number; });
  return want;
}

Loaded Load(IndexedFile& file) {
  EXPECT_TRUE(file.Load());
  Loaded got{file.index, file.name_keys, file.slot_count, file.live, file.deleted};
  if (file.layout().name_offset >= 0) {
    // Room for the records to come, all of it blank.
    EXPECT_EQ(got.keys.size(), size_t(got.slots) + 200);
    for (size_t i = size_t(got.slots); i < got.keys.size(); ++i) EXPECT_FALSE(LiveKey(got.keys[i]));
  }
  got.keys.resize(size_t(got.slots));
  return got;
}

// `records` records numbered at random from a range that makes duplicates, with
// deleted slots and bad numbers among them, then `tail` stray bytes.
std::string ShuffledFile(int64_t record_size, int64_t records, int64_t range, int64_t tail,
                         std::mt19937_64& rng) {
  std::string bytes(size_t(records * record_size + tail), '\0');
  for (int64_t pos = 0; pos < records; ++pos) {
    char* rec = bytes.data() + pos * record_size;
    int64_t number = int64_t(rng() % uint64_t(range)) + 1;
    switch (rng() % 16) {
      case 0:
        number = -1;
        break;
      case 1:
        number = 0;
        break;
      case 2:
        number = -int64_t(rng() % 1000) - 2;
        break;
      case 3:
        number = int64_t(rng() >> 1);
        break;  // far above the rest
    }
    std::memcpy(rec, &number, sizeof number);
    for (int64_t i = 8; i < record_size; ++i) rec[i] = char('A' + rng() % 26);
  }
  for (int64_t i = 0; i < tail; ++i) bytes[size_t(records * record_size + i)] = char(rng());
  return bytes;
}

// Records of 24 bytes keep big counts cheap; film.dat's own layout is tried too.
constexpr IndexedFileLayout kSmallRepaired{
    "small.dat", 24, 8, true, {"open", "read", "scan", "add", "delete", "rewrite"}};
constexpr IndexedFileLayout kSmallAsIs{
    "small.dat", 24, -1, false, {"open", "read", "scan", "add", "delete", "rewrite"}};

using IndexLoadTest = ShopTest;

TEST_F(IndexLoadTest, MatchesOnePassAndStableSortWhateverTheFile) {
  struct Case {
    const IndexedFileLayout* layout;
    int64_t records, range, tail;
  };
  const Case cases[] = {
      {&kSmallRepaired, 0, 1, 0},        // empty
      {&kSmallRepaired, 0, 1, 13},       // shorter than one record
      {&kSmallRepaired, 1, 1, 0},        //
      {&kSmallRepaired, 700, 50, 5},     // one pass, many duplicates
      {&kSmallRepaired, 4095, 9000, 0},  // just below the split
      {&kSmallRepaired, 4096, 3, 23},    // just at it: nearly all duplicates
      {&kSmallAsIs, 20001, 30000, 1},    // bad numbers kept, no name keys
      {&kSmallRepaired, 100003, 2000000, 0},
      {&kFilmLayout, 4100, 5000, 1000},  // film.dat's own records, a torn tail
  };
  std::mt19937_64 rng(16);
  for (const Case& c : cases) {
    SCOPED_TRACE(std::to_string(c.records) + " records");
    const std::string bytes = ShuffledFile(c.layout->record_size, c.records, c.range, c.tail, rng);
    WriteBytes(c.layout->path, bytes);
    IndexedFile file(*c.layout);
    EXPECT_EQ(Load(file), PlainLoad(*c.layout, bytes));
    // A second load into the same object starts afresh.
    EXPECT_EQ(Load(file), PlainLoad(*c.layout, bytes));
  }
}

// A cache of some field hears of every record once, in file order, and the index
// is the same as without it.
TEST_F(IndexLoadTest, RecordCacheHearsEveryRecordInFileOrder) {
  static std::vector<int64_t> heard;
  heard.clear();
  std::mt19937_64 rng(5);
  const std::string bytes = ShuffledFile(24, 9000, 9000, 7, rng);
  WriteBytes("small.dat", bytes);
  IndexedFile file(kSmallRepaired);
  file.on_record = [](int64_t pos, const void*) { heard.push_back(pos); };
  EXPECT_EQ(Load(file), PlainLoad(kSmallRepaired, bytes));
  ASSERT_EQ(heard.size(), 9001u);
  EXPECT_EQ(heard[0], -1);
  for (size_t i = 1; i < heard.size(); ++i) ASSERT_EQ(heard[i], int64_t(i) - 1);
}

TEST_F(IndexLoadTest, MissingFileLoadsNothing) {
  IndexedFile file(kSmallRepaired);
  EXPECT_FALSE(file.Load());
  EXPECT_TRUE(file.index.empty());
  EXPECT_EQ(file.slot_count, 0);
}

}  // namespace
}  // namespace tilo
