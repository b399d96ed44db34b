// SPDX-License-Identifier: MIT
#include "inventory/pictures.h"

#include <gtest/gtest.h>

#include <cstring>

#include "core/inventory.h"
#include "core/state.h"
#include "inventory/stock_pictures.h"
#include "support/shop_fixture.h"

namespace tilo {
namespace {

TEST(PictureSteps, BackAndForwardWrapAndReturnToTheOwnPicture) {
  struct Case {
    const char* name;
    PictureChoice start;
    void (*step)(PictureChoice&);
    int presses;
    PictureChoice end;
  } cases[] = {
      {"back from 24 wraps to 1", {0, 24, false}, Pictureback, 1, {0, 1, false}},
      {"back from the own picture", {1, 7, false}, Pictureback, 1, {0, 1, true}},
      {"back round to the own picture", {1, 7, false}, Pictureback, 25, {1, 1, true}},
      {"forward from 1 wraps to 24", {0, 1, false}, Pictureforward, 1, {0, 24, false}},
      {"forward from the own picture", {1, 3, false}, Pictureforward, 1, {0, 24, true}},
      {"forward round to the own picture", {1, 3, false}, Pictureforward, 25, {1, 24, true}},
      {"a number out of range starts again", {0, 0, false}, Pictureback, 1, {0, 1, false}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    PictureChoice p = c.start;
    for (int i = 0; i < c.presses; ++i) c.step(p);
    EXPECT_EQ(p.own_picture, c.end.own_picture);
    EXPECT_EQ(p.stock_picture, c.end.stock_picture);
    EXPECT_EQ(p.had_own, c.end.had_own);
  }
}

class PictureTest : public ShopTest {};

TEST_F(PictureTest, NamesResolveExactFirstThenWithoutCase) {
  FilmRecord r{};
  r.number = 1234;
  r.stock_picture = 3;
  EXPECT_EQ(Picturename(r), "STOCK3.bmp");
  r.own_picture = 1;
  EXPECT_EQ(Picturename(r), "m1234.bmp");

  WriteBytes("stock3.bmp", "BMlower");
  WriteBytes("M9.BMP", "BMupper");
  struct Case {
    std::string name;
    std::optional<std::string> found;
  } cases[] = {
      {"stock3.bmp", "stock3.bmp"},
      {"STOCK3.bmp", "stock3.bmp"},
      {"m9.bmp", "M9.BMP"},
      {"m10.bmp", std::nullopt},
  };
  for (const Case& c : cases) EXPECT_EQ(Resolvepicture(c.name), c.found) << c.name;
  // Both spellings present: the exact one wins, and a replacement overwrites the one found.
  WriteBytes("STOCK3.bmp", "BMupper");
  EXPECT_EQ(Resolvepicture("STOCK3.bmp"), "STOCK3.bmp");
  EXPECT_EQ(Picturetarget("Stock3.BMP"), "stock3.bmp");
  EXPECT_EQ(Picturetarget("m11.bmp"), "m11.bmp");
}

TEST_F(PictureTest, BuiltInsArePlacedOnceAndNeverOverAReplacement) {
  WriteBytes("stock2.bmp", "BMmine");
  ASSERT_TRUE(Placestockpictures());
  for (int n = 1; n <= kStockPictures; ++n) {
    if (n == 2) continue;
    const std::string bytes = Bytes(Stockpicturename(n));
    ASSERT_EQ(bytes.size(), kStockPictureFiles[n - 1].size) << n;
    EXPECT_EQ(bytes.substr(0, 2), "BM");
  }
  EXPECT_EQ(Resolvepicture("STOCK2.bmp"), "stock2.bmp");
  EXPECT_EQ(Bytes("stock2.bmp"), "BMmine");
}

TEST_F(PictureTest, CustomImageCopiesTheFileAndMarksTheItem) {
  MakeFreshShop();
  ASSERT_TRUE(G().films.Load());
  FilmRecord r{};
  r.number = 42;
  std::memcpy(r.description, "TEAPOT", 7);
  r.stock_picture = 5;
  ASSERT_TRUE(Insertnumber(r));
  WriteBytes("chosen.bmp", "BM and the rest of a picture");
  WriteBytes("chosen.png", "\x89PNG not a bitmap");

  struct Case {
    std::optional<std::string> file, reply;
    std::vector<std::string> shown;
    std::string copied;
  } cases[] = {
      {std::nullopt, "42", {}, ""},
      {"chosen.bmp", std::nullopt, {}, ""},
      {"chosen.bmp", "999", {}, ""},
      // Without a screen nothing turns a PNG into a BMP: the copy fails unreported.
      {"chosen.png", "42", {"Picture: Updated."}, ""},
      {"chosen.bmp", "42", {"Picture: Updated."}, "BM and the rest of a picture"},
  };
  for (const Case& c : cases) {
    platform_.clear_record();
    platform_.queue_file(c.file);
    if (c.file) platform_.queue_prompt(c.reply);
    Addcustomimage();
    EXPECT_EQ(platform_.shown(), c.shown);
    EXPECT_EQ(Bytes("m42.bmp"), c.copied);
  }
  ASSERT_EQ(Fetchfilm(42), 42);
  EXPECT_EQ(G().film.own_picture, 1);
  EXPECT_EQ(G().film.stock_picture, 5);
}

}  // namespace
}  // namespace tilo
