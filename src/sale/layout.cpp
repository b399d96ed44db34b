// SPDX-License-Identifier: MIT
#include "sale/layout.h"

#include <algorithm>

namespace tilo {
namespace {

constexpr int kMargin = 8;  // the gap kept to the client's right and bottom edges

}  // namespace

ScreenLayout LayoutScreen(int client_width, int client_height, int top) {
  ScreenLayout l;
  l.large = client_height > kLargeLayoutAbove;

  l.item_caption = {20, top + 36, 172, 28};
  l.item_box = {20, top + 68, 172, 32};
  l.add = {200, top + 36, 48, 48};
  l.cash = {260, top + 36, 48, 48};
  const int sale_x[4] = {20, 96, 172, 247};
  for (int b = 0; b < kSaleButtonCount; ++b)
    l.sale[b] = {sale_x[b % 4], top + 116 + 50 * (b / 4), 68, 40};
  for (int k = 0; k < 12; ++k) l.keypad[k] = {325 + 55 * (k % 3), top + 35 + 55 * (k / 3), 54, 54};

  l.quick_count = l.large ? 14 : 8;
  const int rows = l.quick_count / 2;
  for (int q = 0; q < l.quick_count; ++q)
    l.quick[q] = {q < rows ? 31 : 233, top + 276 + 52 * (q % rows), 200, 50};
  for (int p = 0; p < 4; ++p) l.panel[p] = {435, top + 276 + 52 * p, 54, 54};

  const int right = client_width - kMargin;
  if (l.large) {
    l.categories_shown = true;
    for (int c = 0; c < 18; ++c)
      l.category[c] = {c < 9 ? 502 : 562, top + 34 + 60 * (c % 9), 48, 48};
    l.category[18] = {531, top + 574, 48, 48};
    l.save = {642, top + 452, 92, 92};
    l.reload = {642, top + 546, 92, 92};
    // The list is as tall as the client less 309, but never runs into Save.
    const int height = std::min(client_height - 309, l.save.y - 4 - (top + 65));
    l.basket = {622, top + 65, right - 622, height};
    const int totals_x = l.save.right() + 8;
    l.totals = {totals_x, l.save.y, right - totals_x, client_height - kMargin - l.save.y};
  } else {
    l.basket = {right - 262, top + 65, 262, client_height - 320};
    const int totals_y = l.basket.bottom() + 6;
    l.totals = {right - 262, totals_y, 262, client_height - kMargin - totals_y};
  }
  l.line_count = {l.basket.right() - 64, top + 35, 64, 26};
  return l;
}

}  // namespace tilo
