// SPDX-License-Identifier: MIT
// The inventory index against a plain model of the file and its index, kept
// here step by step as the rules tell it: walk from the front, straight
// insertion sort, entries moved one by one.
#include <gtest/gtest.h>

#include <cstring>
#include <random>

#include "core/inventory.h"
#include "core/number_index.h"
#include "core/state.h"
#include "core/text.h"
#include "support/shop_fixture.h"

namespace tilo {
namespace {

struct ReferenceIndex {
  NumberIndex entries;  // the terminator is implicit
  int64_t slots = 0, live = 0, deleted = 0;

  size_t Find(int64_t number) const {
    size_t i = 0;
    while (i < entries.size() && entries[i].number < number) ++i;
    return i;
  }
  void Sort() {
    for (size_t i = 1; i < entries.size(); ++i) {
      IndexEntry e = entries[i];
      size_t j = i;
      while (j > 0 && entries[j - 1].number > e.number) {
        entries[j] = entries[j - 1];
        --j;
      }
      entries[j] = e;
    }
  }
  // Returns the position written, or -1 for a number in use.
  int64_t Insert(int64_t number) {
    size_t slot = Find(number);
    if (slot < entries.size() && entries[slot].number == number) return -1;
    entries.push_back({});
    for (size_t i = entries.size() - 1; i > slot; --i) entries[i] = entries[i - 1];
    int64_t pos;
    if (deleted != 0) {
      pos = entries[0].position;
      entries[slot] = {number, pos};
      for (size_t i = 0; i + 1 < entries.size(); ++i) entries[i] = entries[i + 1];
      entries.pop_back();
      --deleted;
    } else {
      pos = slots++;
      entries[slot] = {number, pos};
    }
    ++live;
    return pos;
  }
  void Remove(int64_t number, int64_t position) {
    size_t k = 0;
    while (k < entries.size() && entries[k].number == -1) ++k;
    size_t q = Find(number);
    for (size_t i = q; i > k; --i) entries[i] = entries[i - 1];
    entries[k] = {-1, position};
    ++deleted;
    --live;
  }
};

FilmRecord Item(int64_t number, const char* description) {
  FilmRecord r{};
  r.number = number;
  SetField(r.description, description);
  return r;
}

void WriteFilm(const std::vector<FilmRecord>& records) {
  std::string bytes(records.size() * sizeof(FilmRecord), '\0');
  std::memcpy(bytes.data(), records.data(), bytes.size());
  ShopTest::WriteBytes("film.dat", bytes);
}

using NumberIndexTest = ShopTest;

// The index a load builds, the slots reused and the counts are the model's to
// check below; here what lies outside it.
TEST_F(NumberIndexTest, LoadKeysEveryRecordAndTheFirstOfEqualNumbersWins) {
  WriteFilm({Item(30, "PEARS"), Item(0, "ZERO"), Item(10, "APPLES"), Item(-1, ""),
             Item(-7, "MINUS"), Item(10, "DUPLICATE"), Item(20, "LEMONS")});
  IndexedFile& films = G().films;
  ASSERT_TRUE(films.Load());
  // The name keys come from the description even of a record counted deleted.
  EXPECT_EQ(std::string(films.name_keys[1].data(), 2), "ZE");
  EXPECT_EQ(films.name_keys[3][0], '\0');
  // The first of two equal numbers wins every lookup.
  ASSERT_EQ(Fetchfilm(10), 10);
  EXPECT_EQ(FieldText(G().film.description), "APPLES");
}

TEST_F(NumberIndexTest, DeleteMarksOnlyNumberAndKeyBytes) {
  WriteFilm({Item(1, "ONE"), Item(2, "TWO"), Item(3, "THREE")});
  ASSERT_TRUE(G().films.Load());
  ASSERT_EQ(Fetchfilm(3), 3);
  G().film.quantity = 9;
  ASSERT_TRUE(Rewritefilm());
  ASSERT_EQ(Fetchfilm(3), 3);
  ASSERT_TRUE(Removenumber());
  std::string bytes = Bytes("film.dat");
  FilmRecord third;
  std::memcpy(&third, bytes.data() + 2 * sizeof(FilmRecord), sizeof third);
  EXPECT_EQ(third.number, -1);
  EXPECT_EQ(third.description[0], '\0');
  EXPECT_EQ(third.description[1], '\0');
  EXPECT_EQ(std::string(third.description + 2), "REE");  // the rest stays
  EXPECT_EQ(third.quantity, 9);
  EXPECT_EQ(G().films.name_keys[2], (NameKey{0, 0}));
}

TEST_F(NumberIndexTest, RefusalsAndFailuresShowTheirMessages) {
  WriteFilm({Item(1, "ONE")});
  ASSERT_TRUE(G().films.Load());
  EXPECT_FALSE(Insertnumber(Item(1, "AGAIN")));
  G().film = Item(0, "NONE");
  EXPECT_FALSE(Rewritefilm());
  G().film = Item(99, "UNKNOWN");
  EXPECT_FALSE(Rewritefilm());
  EXPECT_EQ(platform_.shown(),
            (std::vector<std::string>{"Problem: Number in use.", "Problem: Invalid number.",
                                      "Problem: Invalid number."}));
  platform_.clear_record();
  ASSERT_EQ(std::rename("film.dat", "film.gone"), 0);
  EXPECT_EQ(Fetchfilm(1), 0);
  G().film = Item(1, "ONE");
  EXPECT_FALSE(Rewritefilm());
  // An add has already changed the index when the file turns out to be missing.
  EXPECT_FALSE(Insertnumber(Item(2, "TWO")));
  EXPECT_TRUE(G().films.Contains(2));
  EXPECT_EQ(platform_.shown(),
            (std::vector<std::string>{"Fatal error: Data file: film.dat, not present.",
                                      "Fatal error: Data file: film.dat, not present.",
                                      "Fatal error: Data file: film.dat, not present."}));
}

// Thousands of random adds and deletes: the index, the positions written and the
// counts match the step-by-step model after every operation.
TEST_F(NumberIndexTest, RandomAddsAndDeletesMatchTheStepByStepModel) {
  std::mt19937_64 rng(2024);
  std::vector<FilmRecord> start;
  for (int i = 0; i < 60; ++i) {
    int64_t n = int64_t(rng() % 90) - 10;  // some zero, negative and duplicate numbers
    start.push_back(Item(n == 0 ? 0 : n, "SEED"));
  }
  WriteFilm(start);
  IndexedFile& films = G().films;
  ASSERT_TRUE(films.Load());

  ReferenceIndex ref;
  for (size_t p = 0; p < start.size(); ++p) {
    int64_t n = start[p].number <= 0 ? -1 : start[p].number;
    ref.entries.push_back({n, int64_t(p)});
    (n < 0 ? ref.deleted : ref.live) += 1;
  }
  ref.slots = int64_t(start.size());
  ref.Sort();
  ASSERT_EQ(films.index, ref.entries);

  for (int step = 0; step < 1500; ++step) {
    int64_t number = int64_t(rng() % 150) + 1;
    if (rng() % 2 == 0) {
      int64_t want = ref.Insert(number);
      bool ok = Insertnumber(Item(number, "X"));
      ASSERT_EQ(ok, want >= 0) << "step " << step;
      if (ok) {
        ASSERT_EQ(films.position, want);
      }
    } else if (films.Contains(number)) {
      ASSERT_EQ(Fetchfilm(number), number);
      ref.Remove(number, films.position);
      ASSERT_TRUE(Removenumber());
    }
    ASSERT_EQ(films.index, ref.entries) << "step " << step;
    ASSERT_EQ(films.live, ref.live);
    ASSERT_EQ(films.deleted, ref.deleted);
    ASSERT_EQ(films.slot_count, ref.slots);
    for (int64_t probe : {int64_t(-5), int64_t(-1), int64_t(0), number, int64_t(151)}) {
      ASSERT_EQ(Findnumber(films.index, probe), ref.Find(probe));
    }
  }
  EXPECT_EQ(int64_t(Bytes("film.dat").size()), ref.slots * int64_t(sizeof(FilmRecord)));
  platform_.clear_record();
}

TEST(SortindexTest, MatchesStraightInsertionSortOnRandomInput) {
  std::mt19937_64 rng(99);
  for (int round = 0; round < 200; ++round) {
    ReferenceIndex ref;
    // Small and large runs (two ways of sorting), narrow and full-width numbers.
    size_t n = round % 2 ? rng() % 300 : 500 + rng() % 3000;
    for (size_t i = 0; i < n; ++i) {
      int64_t number = round % 3 == 0 ? int64_t(rng()) : int64_t(rng() % 40) - 2;
      ref.entries.push_back({number, int64_t(i)});
    }
    NumberIndex ours = ref.entries;
    ref.Sort();
    Sortindex(ours, ours.size());
    ASSERT_EQ(ours, ref.entries);
  }
}

}  // namespace
}  // namespace tilo
