// SPDX-License-Identifier: MIT
// The inventory record: one FilmRecord of 1874 bytes per item in film.dat. The
// file kept its name (and the record its loan block) from a rental past.
#pragma once

#include <cstddef>
#include <cstdint>

namespace tilo {

#pragma pack(push, 1)
struct FilmRecord {
  int64_t number;
  char description[40];
  uint8_t reserved_48[42];
  char sku1[40];
  char sku2[40];
  char sku3[40];
  char sku4[40];
  uint8_t reserved_250[20];
  char format[20];  // bundle_item 1 on a bundle
  char category[60];
  char location[40];
  uint8_t reserved_390[160];
  char order_code[40];
  char bundle_item_4[20];
  char bundle_item_5[20];
  char date_added[20];
  char bundle_item_6[20];
  int32_t quantity;
  int32_t reorder_quantity;
  int32_t minimum_order;
  int32_t order_quantity;
  int32_t tax;
  int32_t delivery_lead;
  int32_t on_order;
  int32_t committed;
  int32_t labels_to_print;
  uint8_t reserved_706[8];
  int32_t total_sold;
  uint8_t reserved_718[96];
  float cost_price;
  float trade_price;
  float retail_price;
  uint8_t reserved_826[36];
  float delivery;
  float weight;
  uint8_t reserved_870[12];
  char website[40];
  char web_image[40];
  uint8_t reserved_962[240];
  int32_t stock_picture;
  int32_t no_tax_rounding;
  int32_t special_order;
  int32_t age_warning;
  int32_t omit_quick_select;
  int32_t bundle_free[6];
  int32_t bundle_quantity[6];
  int32_t buy_one_get_one;
  uint8_t reserved_1274[4];
  int32_t sell_by_day;
  int32_t sell_by_month;
  int32_t sell_by_year;
  uint8_t reserved_1290[272];
  int32_t own_picture;
  int32_t sor;
  uint8_t reserved_1570[40];
  char notes[80];
  uint8_t reserved_1690[7];
  char bundle_item_2[20];
  char bundle_item_3[20];
  uint8_t reserved_1737[40];
  uint8_t reserved_1777[9];
  uint8_t reserved_1786[1];
  int32_t display_category;
  uint8_t reserved_1791[11];
  int32_t is_bundle;
  uint8_t reserved_1806[4];
  char last_used[16];
  int64_t loan_number;
  char due_back[16];
  uint8_t reserved_1850[24];
};
#pragma pack(pop)

static_assert(sizeof(FilmRecord) == 1874);
static_assert(offsetof(FilmRecord, number) == 0);
static_assert(offsetof(FilmRecord, description) == 8);
static_assert(offsetof(FilmRecord, sku1) == 90);
static_assert(offsetof(FilmRecord, sku2) == 130);
static_assert(offsetof(FilmRecord, sku3) == 170);
static_assert(offsetof(FilmRecord, sku4) == 210);
static_assert(offsetof(FilmRecord, format) == 270);
static_assert(offsetof(FilmRecord, category) == 290);
static_assert(offsetof(FilmRecord, location) == 350);
static_assert(offsetof(FilmRecord, order_code) == 550);
static_assert(offsetof(FilmRecord, bundle_item_4) == 590);
static_assert(offsetof(FilmRecord, bundle_item_5) == 610);
static_assert(offsetof(FilmRecord, date_added) == 630);
static_assert(offsetof(FilmRecord, bundle_item_6) == 650);
static_assert(offsetof(FilmRecord, quantity) == 670);
static_assert(offsetof(FilmRecord, reorder_quantity) == 674);
static_assert(offsetof(FilmRecord, minimum_order) == 678);
static_assert(offsetof(FilmRecord, order_quantity) == 682);
static_assert(offsetof(FilmRecord, tax) == 686);
static_assert(offsetof(FilmRecord, delivery_lead) == 690);
static_assert(offsetof(FilmRecord, on_order) == 694);
static_assert(offsetof(FilmRecord, committed) == 698);
static_assert(offsetof(FilmRecord, labels_to_print) == 702);
static_assert(offsetof(FilmRecord, total_sold) == 714);
static_assert(offsetof(FilmRecord, cost_price) == 814);
static_assert(offsetof(FilmRecord, trade_price) == 818);
static_assert(offsetof(FilmRecord, retail_price) == 822);
static_assert(offsetof(FilmRecord, delivery) == 862);
static_assert(offsetof(FilmRecord, weight) == 866);
static_assert(offsetof(FilmRecord, website) == 882);
static_assert(offsetof(FilmRecord, web_image) == 922);
static_assert(offsetof(FilmRecord, stock_picture) == 1202);
static_assert(offsetof(FilmRecord, no_tax_rounding) == 1206);
static_assert(offsetof(FilmRecord, special_order) == 1210);
static_assert(offsetof(FilmRecord, age_warning) == 1214);
static_assert(offsetof(FilmRecord, omit_quick_select) == 1218);
static_assert(offsetof(FilmRecord, bundle_free) == 1222);
static_assert(offsetof(FilmRecord, bundle_quantity) == 1246);
static_assert(offsetof(FilmRecord, buy_one_get_one) == 1270);
static_assert(offsetof(FilmRecord, sell_by_day) == 1278);
static_assert(offsetof(FilmRecord, sell_by_month) == 1282);
static_assert(offsetof(FilmRecord, sell_by_year) == 1286);
static_assert(offsetof(FilmRecord, own_picture) == 1562);
static_assert(offsetof(FilmRecord, sor) == 1566);
static_assert(offsetof(FilmRecord, notes) == 1610);
static_assert(offsetof(FilmRecord, bundle_item_2) == 1697);
static_assert(offsetof(FilmRecord, bundle_item_3) == 1717);
static_assert(offsetof(FilmRecord, display_category) == 1787);
static_assert(offsetof(FilmRecord, is_bundle) == 1802);
static_assert(offsetof(FilmRecord, last_used) == 1810);
static_assert(offsetof(FilmRecord, loan_number) == 1826);
static_assert(offsetof(FilmRecord, due_back) == 1834);

inline constexpr const char* kFilmFile = "film.dat";
inline constexpr int64_t kHighestNumber = 100000000000000000LL;

// The six component slots of a bundle, in the order of the form and the sale.
char* BundleItem(FilmRecord& r, int slot);  // slot 1 to 6
const char* BundleItem(const FilmRecord& r, int slot);

}  // namespace tilo
