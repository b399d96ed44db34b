// SPDX-License-Identifier: MIT
// The 24 built-in stock pictures: goods of a small shop, drawn by code in one
// style (a pale round tile, flat colours, a dark outline) so they read at 48 by
// 48 pixels.
#pragma once

#include <QImage>

namespace tilo::art {

inline constexpr int kStockPictureCount = 24;
inline constexpr int kStockPictureSize =
    96;  // drawn twice the shown size, so they scale down clean

// Stock picture `n` (1 to 24), opaque, kStockPictureSize square.
QImage StockPicture(int n);
// What each picture shows, for the sheet.
const char* StockPictureName(int n);

}  // namespace tilo::art
