// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "core/inventory.h"
#include "screen_fixture.h"

namespace tilo {
namespace {

using QuickSelectTest = ScreenTest;

// The walk of film.dat record by record that the panel stands for: what the
// in-memory keys must always agree with.
std::vector<int64_t> WalkFilm(int category, int page) {
  std::vector<int64_t> found;
  for (const IndexEntry& e : G().films.index) {
    if (e.number < 1) continue;
    FilmRecord r;
    EXPECT_TRUE(G().films.ReadAt(e.position, &r));
    if ((r.display_category == category || category == 18) && r.omit_quick_select != 2)
      found.push_back(r.number);
    if (int(found.size()) == page) break;
  }
  found.resize(size_t(page), 0);
  return found;
}

TEST_F(QuickSelectTest, FillShowsTheCategoryInNumberOrderWithNamesAndPictures) {
  Shelve(30, 4);
  Shelve(10, 4);
  Shelve(20, 7);
  Shelve(25, 4, 2);  // left off the buttons
  FilmRecord own = Shelve(40, 4);
  own.own_picture = 1;
  Store(own);
  S().current_category = 4;
  Fillquickselect();
  EXPECT_EQ(Page(), Numbers({10, 30, 40, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
  const ScreenState& s = G().screen;
  EXPECT_STREQ(s.quick_name[0], "ITEM 10");
  EXPECT_STREQ(s.quick_picture[0], "STOCK3.bmp");
  EXPECT_STREQ(s.quick_picture[2], "m40.bmp");

  S().current_category = 18;  // ALL: every item but those left off
  Fillquickselect();
  EXPECT_EQ(Page(), Numbers({10, 20, 30, 40, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));

  G().screen.page_size = 8;  // the small layout stops at eight
  for (int n = 1; n <= 9; ++n) Shelve(100 + n, 4);
  S().current_category = 4;
  Fillquickselect();
  EXPECT_EQ(Page(), Numbers({10, 30, 40, 101, 102, 103, 104, 105}));
  EXPECT_EQ(s.quick_number[8], 0);
  EXPECT_EQ(s.quick_number[13], 0);
}

TEST_F(QuickSelectTest, ScrollingForwardPagesOnAndKeepsAPageThatFindsNothing) {
  G().screen.page_size = 8;
  for (int n = 1; n <= 12; ++n) Shelve(n, 2);
  Shelve(50, 9);  // a later item of another category
  S().current_category = 2;
  Fillquickselect();
  Scrollquickselect(+1);
  EXPECT_EQ(Page(), Numbers({9, 10, 11, 12, 0, 0, 0, 0}));
  // The last button is empty: forward does nothing.
  Scrollquickselect(+1);
  EXPECT_EQ(Page(), Numbers({9, 10, 11, 12, 0, 0, 0, 0}));

  // Exactly one full page: numbers follow, but none of this category.
  for (int n = 13; n <= 16; ++n) Shelve(n, 2);
  Fillquickselect();
  Scrollquickselect(+1);
  EXPECT_EQ(Page(), Numbers({9, 10, 11, 12, 13, 14, 15, 16}));
  Scrollquickselect(+1);
  EXPECT_EQ(Page(), Numbers({9, 10, 11, 12, 13, 14, 15, 16}));
  // Nothing at all above the last item: nothing happens either.
  ASSERT_EQ(Fetchfilm(50), 50);
  ASSERT_TRUE(Removenumber());
  Scrollquickselect(+1);
  EXPECT_EQ(Page(), Numbers({9, 10, 11, 12, 13, 14, 15, 16}));
  EXPECT_TRUE(platform_.messages.empty());
}

TEST_F(QuickSelectTest, ScrollingBackKeepsThePageFull) {
  G().screen.page_size = 8;
  for (int n = 1; n <= 5; ++n) Shelve(n, 2);
  for (int n = 20; n <= 30; ++n) Shelve(n, 2);
  S().current_category = 2;
  Fillquickselect();
  EXPECT_EQ(Page(), Numbers({1, 2, 3, 4, 5, 20, 21, 22}));
  Scrollquickselect(-1);  // the first page stays as it is
  EXPECT_EQ(Page(), Numbers({1, 2, 3, 4, 5, 20, 21, 22}));
  Scrollquickselect(+1);
  EXPECT_EQ(Page(), Numbers({23, 24, 25, 26, 27, 28, 29, 30}));
  Scrollquickselect(-1);
  EXPECT_EQ(Page(), Numbers({1, 2, 3, 4, 5, 20, 21, 22}));

  // Items before the page went away: the two still there move to the front and
  // the old page follows them.
  Scrollquickselect(+1);
  for (int64_t n : {1, 2, 3, 4, 5, 20}) {
    ASSERT_EQ(Fetchfilm(n), n);
    ASSERT_TRUE(Removenumber());
  }
  Scrollquickselect(-1);
  EXPECT_EQ(Page(), Numbers({21, 22, 23, 24, 25, 26, 27, 28}));
  EXPECT_STREQ(G().screen.quick_name[2], "ITEM 23");
}

TEST_F(QuickSelectTest, CategoriesWrapAroundAndTellTheScreen) {
  S().current_category = 0;
  Stepcategory(-1);
  EXPECT_EQ(S().current_category, 18);
  EXPECT_EQ(G().screen.previous_category, 0);
  Stepcategory(+1);
  EXPECT_EQ(S().current_category, 0);
  Choosecategory(11);
  EXPECT_EQ(S().current_category, 11);
  EXPECT_EQ(view_.calls, (std::vector<std::string>{"category 0 to 18", "category 18 to 0",
                                                   "caret to end", "category 0 to 11"}));
  EXPECT_EQ(CategoryLabel(0), "ALC");
  EXPECT_EQ(CategoryLabel(17), "WIN");
  EXPECT_EQ(CategoryLabel(NeighbourCategory(18, +1)), "ALC");
  EXPECT_EQ(CategoryLabel(NeighbourCategory(0, -1)), "ALL");
}

TEST_F(QuickSelectTest, KeysInMemoryFollowEveryWriteAndAgreeWithTheFileWalk) {
  WatchInventory();
  std::mt19937 random(7);
  std::vector<int64_t> live;
  for (int n = 0; n < 160; ++n) {
    const int64_t number = 1 + int64_t(random() % 2000);
    if (G().films.Contains(number)) continue;
    Shelve(number, int32_t(random() % 19), random() % 7 == 0 ? 2 : 0);
    live.push_back(number);
  }
  for (int step = 0; step < 60; ++step) {
    const int64_t number = live[random() % live.size()];
    if (!G().films.Contains(number)) continue;
    FilmRecord r = Item(number);
    if (step % 3 == 0) {
      ASSERT_TRUE(Removenumber());
    } else {
      r.display_category = int32_t(random() % 18);
      r.omit_quick_select = step % 4 == 0 ? 2 : 0;
      Store(r);
    }
  }
  for (int category = 0; category <= 18; ++category) {
    S().current_category = category;
    Fillquickselect();
    EXPECT_EQ(Page(), WalkFilm(category, 14)) << "category " << category;
  }
  // A reload starts the keys afresh and changes nothing.
  ASSERT_TRUE(G().films.Load());
  S().current_category = 5;
  Fillquickselect();
  EXPECT_EQ(Page(), WalkFilm(5, 14));
}

TEST_F(QuickSelectTest, AMissingFilmFileIsFatalInWordsAndLeavesThePanel) {
  Shelve(8, 1);
  S().current_category = 1;
  Fillquickselect();
  ASSERT_EQ(std::rename("film.dat", "film.old"), 0);
  S().current_category = 18;
  Fillquickselect();
  Scrollquickselect(-1);
  EXPECT_EQ(G().screen.quick_number[0], 8);
  EXPECT_EQ(platform_.shown(),
            (std::vector<std::string>{"Fatal error: Data file: film.dat, not present.",
                                      "Fatal error: Data file: film.dat, not present."}));
}

}  // namespace
}  // namespace tilo
