// SPDX-License-Identifier: MIT
// Pictures on the screen: a PNG chosen is stored as a BMP of the same picture,
// and a scaled picture is read again only when its file changes.
#include "inventory/ui/picture_forms.h"

#include <gtest/gtest.h>

#include <QImage>
#include <chrono>
#include <filesystem>
#include <thread>

#include "core/state.h"
#include "support/shop_fixture.h"

namespace tilo {
namespace {

class PictureFormsTest : public ShopTest {
 protected:
  void TearDown() override {
    Forgetpictures();
    ShopTest::TearDown();
  }
};

QImage Plain(QColor colour) {
  QImage image(300, 200, QImage::Format_ARGB32);
  image.fill(colour);
  return image;
}

TEST_F(PictureFormsTest, OtherFormatsAreStoredAsBmpAndBmpsAsTheyAre) {
  QImage half = Plain(Qt::transparent);
  for (int x = 0; x < 150; ++x)
    for (int y = 0; y < 200; ++y) half.setPixelColor(x, y, Qt::red);
  ASSERT_TRUE(half.save("chosen.png"));
  ASSERT_TRUE(Copyasbmp("chosen.png", "m7.bmp"));
  EXPECT_EQ(Bytes("m7.bmp").substr(0, 2), "BM");
  QImage stored("m7.bmp", "BMP");
  ASSERT_EQ(stored.size(), QSize(300, 200));
  EXPECT_EQ(stored.pixelColor(10, 10), QColor(Qt::red));
  EXPECT_EQ(stored.pixelColor(290, 10), QColor(Qt::white));  // see-through becomes white

  WriteBytes("odd.bmp", "BM not really a picture");
  EXPECT_TRUE(Copyasbmp("odd.bmp", "m8.bmp"));
  EXPECT_EQ(Bytes("m8.bmp"), "BM not really a picture");
  WriteBytes("notes.txt", "hello");
  EXPECT_FALSE(Copyasbmp("notes.txt", "m9.bmp"));
  EXPECT_FALSE(std::filesystem::exists("m9.bmp"));
}

TEST_F(PictureFormsTest, ScaledPicturesFollowTheirFiles) {
  EXPECT_TRUE(Scaledpicture("m1.bmp").isNull());
  // Times on disk move in clock ticks: wait one out before each change.
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  ASSERT_TRUE(Plain(Qt::blue).save("M1.BMP", "BMP"));  // another spelling appears
  QPixmap first = Scaledpicture("m1.bmp");
  ASSERT_FALSE(first.isNull());
  EXPECT_EQ(first.size(), QSize(48, 48));
  EXPECT_EQ(first.toImage().pixelColor(24, 24), QColor(Qt::blue));
  EXPECT_EQ(Scaledpicture("m1.bmp").cacheKey(), first.cacheKey());  // kept

  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  ASSERT_TRUE(Plain(Qt::green).save("M1.BMP", "BMP"));
  EXPECT_EQ(Scaledpicture("m1.bmp").toImage().pixelColor(24, 24), QColor(Qt::green));
  std::filesystem::remove("M1.BMP");
  EXPECT_TRUE(Scaledpicture("m1.bmp").isNull());
}

}  // namespace
}  // namespace tilo
