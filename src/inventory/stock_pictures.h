// SPDX-License-Identifier: MIT
// The 24 built-in stock pictures, kept in the program as BMP files and placed
// in the shop folder as "STOCK1.bmp" to "STOCK24.bmp" when a shop is made.
#pragma once

#include <cstddef>

namespace tilo {

inline constexpr int kStockPictures = 24;

struct StockPictureFile {
  const unsigned char* bytes;
  size_t size;
};
extern const StockPictureFile kStockPictureFiles[kStockPictures];

}  // namespace tilo
