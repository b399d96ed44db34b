// SPDX-License-Identifier: MIT
// Where every element of the sale screen stands. The client height decides
// between two layouts: above 684 pixels the large one, with seven rows of quick
// select buttons, the category buttons and Save and Reload; else the small one.
// Positions count from the client's top left; `top` is the bottom of the tool bar.
#pragma once

namespace tilo {

struct ScreenRect {
  int x = 0, y = 0, width = 0, height = 0;
  bool operator==(const ScreenRect&) const = default;
  int right() const { return x + width; }
  int bottom() const { return y + height; }
};

inline constexpr int kLargeLayoutAbove = 684;

// The sale buttons by row, left to right.
enum SaleButton {
  kSaleCredit,
  kSaleWeight,
  kSaleNonInventory,
  kSaleEft,
  kSaleVoid,
  kSaleEmpty,
  kSaleDrawer,
  kSaleTrade,
  kSaleRepeat,
  kSaleNote,
  kSaleRefund,
  kSaleAdjust,
  kSaleButtonCount
};
// The keypad's keys, by row: 1 2 3, 4 5 6, 7 8 9, CA 0 CE.
inline constexpr const char* kKeypadKeys[12] = {"1", "2", "3", "4",  "5", "6",
                                                "7", "8", "9", "CA", "0", "CE"};
// The four buttons beside the quick-select panel.
enum PanelButton { kScrollBack, kScrollForward, kPreviousCategory, kNextCategory };

struct ScreenLayout {
  bool large = false;
  ScreenRect item_caption, item_box, add, cash;
  ScreenRect sale[kSaleButtonCount];
  ScreenRect keypad[12];
  int quick_count = 0;  // 8 or 14
  ScreenRect quick[14];
  ScreenRect panel[4];
  bool categories_shown = false;  // with Save and Reload: the large layout only
  ScreenRect category[19];        // 0 to 17, then "ALL"
  ScreenRect save, reload;
  ScreenRect basket, line_count, totals;
};

ScreenLayout LayoutScreen(int client_width, int client_height, int top);

}  // namespace tilo
