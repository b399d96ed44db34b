// SPDX-License-Identifier: MIT
// Walks over random record files against a plain walker that reads every
// position one at a time: the same records in the same order, and no read of a
// record that its NameKeys rule out.
#include <gtest/gtest.h>

#include <cstring>
#include <random>

#include "core/customer_file.h"
#include "core/inventory.h"
#include "core/record_match.h"
#include "core/state.h"
#include "core/text.h"
#include "support/shop_fixture.h"

namespace tilo {
namespace {

class RecordWalkTest : public ShopTest {};

// A film.dat of `count` records: some deleted, numbers shuffled, descriptions
// from a small alphabet so that keys and fragments both hit and miss.
void WriteRandomFilm(std::mt19937& rng, int count) {
  std::vector<int64_t> numbers(static_cast<size_t>(count));
  for (int i = 0; i < count; ++i) numbers[size_t(i)] = 1 + i * 3;
  std::shuffle(numbers.begin(), numbers.end(), rng);
  std::string bytes(size_t(count) * sizeof(FilmRecord), '\0');
  for (int i = 0; i < count; ++i) {
    FilmRecord r{};
    r.number = rng() % 5 == 0 ? -1 : numbers[size_t(i)];
    if (r.number > 0) {
      std::string d;
      for (int k = 2 + int(rng() % 6); k > 0; --k) d += char('A' + rng() % 3);
      SetField(r.description, d);
      SetField(r.sku1, d.substr(1));
      SetField(r.sku2, d.substr(d.size() / 2));
      // Bytes behind a terminator are no part of the text.
      std::memcpy(r.sku1 + d.size(), "CA", 2);
    }
    std::memcpy(bytes.data() + size_t(i) * sizeof r, &r, sizeof r);
  }
  ShopTest::WriteBytes("film.dat", bytes);
}

using Keys = std::function<bool(NameKey)>;
using RecordTest = std::function<bool(const void*)>;

struct Walked {
  std::vector<int64_t> positions;
  int64_t read = 0;
};

// Every position read on its own; the keys decide only which ones count as read.
Walked Reference(IndexedFile& file, const Keys& keys, const RecordTest& test, bool by_number) {
  Walked w;
  std::vector<int64_t> order;
  if (by_number) {
    for (const IndexEntry& e : file.index)
      if (e.number >= 1) order.push_back(e.position);
  } else {
    for (int64_t pos = 0; pos < file.slot_count; ++pos) order.push_back(pos);
  }
  std::vector<char> record(size_t(file.layout().record_size));
  for (int64_t pos : order) {
    EXPECT_TRUE(file.ReadAt(pos, record.data()));
    if (keys && !keys(file.name_keys[size_t(pos)])) continue;
    ++w.read;
    if (!test || test(record.data())) w.positions.push_back(pos);
  }
  return w;
}

Walked Engine(IndexedFile& file, const WalkOptions& o) {
  RecordWalk walk = file.Walk(o);
  FilmRecord buffer{};
  Walked w;
  FilmRecord on_disk{};
  while (walk.Next(&buffer)) {
    EXPECT_TRUE(file.ReadAt(file.position, &on_disk));
    EXPECT_EQ(std::memcmp(&buffer, &on_disk, sizeof buffer), 0);
    w.positions.push_back(file.position);
  }
  EXPECT_EQ(walk.end(), RecordWalk::End::Finished);
  w.read = walk.records_read();
  return w;
}

// A plain prefix test with `?`, on the text up to its terminator.
bool PlainPrefix(const std::string& pattern, const std::string& text) {
  for (size_t i = 0; i < pattern.size(); ++i)
    if (pattern[i] != '?' && (i >= text.size() || pattern[i] != text[i])) return false;
  return !text.empty();
}

TEST_F(RecordWalkTest, WalksMatchAPlainWalkerOnRandomFiles) {
  auto film = [](const void* r) { return static_cast<const FilmRecord*>(r); };
  auto has = [film](const void* r, const char* text) {
    return FieldText(film(r)->description).find(text) != std::string::npos;
  };
  struct Case {
    const char* name;
    WalkOptions engine;
    Keys keys;  // what the plain walker counts as read
    RecordTest test;
  };
  std::vector<Case> cases = {
      {"prefix", PatternWalk("AB?A", TILO_FIELD(FilmRecord, description)),
       [](NameKey k) { return k[0] == 'A' && k[1] == 'B'; },
       [film](const void* r) { return PlainPrefix("AB?A", FieldText(film(r)->description)); }},
      {"wildcard first", PatternWalk("?C", TILO_FIELD(FilmRecord, description)),
       [](NameKey k) { return k[0] != 0 && k[1] == 'C'; },
       [film](const void* r) { return PlainPrefix("?C", FieldText(film(r)->description)); }},
      {"fragment", FragmentWalk({{"CAB", {TILO_FIELD(FilmRecord, description)}}}, false), LiveKey,
       [has](const void* r) { return has(r, "CAB"); }},
      {"all of two, one in sku1",
       FragmentWalk({{"BB", {TILO_FIELD(FilmRecord, description)}},
                     {"CA", {TILO_FIELD(FilmRecord, sku1), TILO_FIELD(FilmRecord, sku2)}}},
                    true),
       LiveKey,
       [has, film](const void* r) {
         return has(r, "BB") && (FieldText(film(r)->sku1).find("CA") != std::string::npos ||
                                 FieldText(film(r)->sku2).find("CA") != std::string::npos);
       }},
      {"every record", WalkOptions{}, nullptr, nullptr},
  };
  std::mt19937 rng(11);
  for (int count : {1, 7, 300}) {
    WriteRandomFilm(rng, count);
    ResetState();
    ASSERT_TRUE(G().films.Load());
    for (Case& c : cases) {
      for (bool by_number : {false, true}) {
        SCOPED_TRACE(std::string(c.name) + (by_number ? ", by number" : ", by position") +
                     ", records " + std::to_string(count));
        Walked want = Reference(G().films, c.keys, c.test, by_number);
        c.engine.by_number = by_number;
        Walked got = Engine(G().films, c.engine);
        EXPECT_EQ(got.positions, want.positions);
        EXPECT_EQ(got.read, want.read);
      }
    }
  }
  EXPECT_TRUE(platform_.messages.empty());
}

// Deleting each record as it is handed back (as a prune does) offers every
// record once, in number order, though the index moves under the walk.
TEST_F(RecordWalkTest, ANumberWalkGoesOnAfterItsRecordIsDeleted) {
  std::mt19937 rng(5);
  WriteRandomFilm(rng, 120);
  ASSERT_TRUE(G().films.Load());
  std::vector<int64_t> want;
  for (const IndexEntry& e : G().films.index)
    if (e.number >= 1) want.push_back(e.number);
  WalkOptions o;
  o.by_number = true;
  o.keys = LiveKey;
  RecordWalk walk = G().films.Walk(o);
  std::vector<int64_t> got;
  while (walk.Next(&G().film)) {
    got.push_back(G().film.number);
    if (got.size() % 2 == 1) {
      ASSERT_TRUE(Removenumber());
    }
  }
  EXPECT_EQ(got, want);
  EXPECT_EQ(G().films.live, int64_t(want.size() / 2));
}

TEST_F(RecordWalkTest, WalkFailuresSayWhatEachCallerSays) {
  std::mt19937 rng(3);
  WriteRandomFilm(rng, 50);
  ASSERT_TRUE(G().films.Load());
  // Cancel in the busy box ends the walk with nothing said.
  platform_.cancel_progress_at = 1;
  RecordWalk cancelled = G().films.Walk({});
  EXPECT_FALSE(cancelled.Next(&G().film));
  EXPECT_EQ(cancelled.end(), RecordWalk::End::Cancelled);
  platform_.cancel_progress_at = -1;

  // A file cut short after the load: the caller's own text.
  std::string bytes = Bytes("film.dat");
  WriteBytes("film.dat", bytes.substr(0, 10 * sizeof(FilmRecord)));
  WalkOptions o;
  o.read_failed = "Member.dat";
  RecordWalk short_file = G().films.Walk(o);
  int found = 0;
  while (short_file.Next(&G().film)) ++found;
  EXPECT_EQ(found, 10);
  EXPECT_EQ(short_file.end(), RecordWalk::End::Failed);

  RemoveFile("film.dat");
  RecordWalk missing = G().films.Walk(o);
  EXPECT_FALSE(missing.Next(&G().film));
  EXPECT_EQ(platform_.shown(), (std::vector<std::string>{
                                   "Problem: Member.dat",
                                   "Fatal error: Data file: film.dat, not present.",
                               }));
}

}  // namespace
}  // namespace tilo
