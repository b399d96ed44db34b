// SPDX-License-Identifier: MIT
#include "inventory/stock_lists.h"

#include <algorithm>
#include <cstring>
#include <random>

#include "core/state.h"
#include "documents/print_service.h"
#include "documents/recording_target.h"
#include "inventory_fixture.h"

namespace tilo {
namespace {

class StockListTest : public InventoryTest {
 protected:
  void SetUp() override {
    InventoryTest::SetUp();
    install_print_service(&printers_);
  }
  void TearDown() override {
    install_print_service(nullptr);
    InventoryTest::TearDown();
  }
  // The rows of a list read the slow way: every record of film.dat in file
  // order, tested field by field, reorder lists then put in number order.
  std::vector<std::string> Literal(StockList list) {
    const std::string bytes = Bytes("film.dat");
    std::vector<FilmRecord> chosen;
    for (size_t at = 0; at + sizeof(FilmRecord) <= bytes.size(); at += sizeof(FilmRecord)) {
      FilmRecord r;
      std::memcpy(&r, bytes.data() + at, sizeof r);
      if (r.number < 1) continue;
      bool on = false;
      if (list == StockList::Reorder || list == StockList::ReorderByCode)
        on = r.is_bundle != 2 && r.reorder_quantity >= r.quantity;
      if (list == StockList::OutOfStock) on = r.is_bundle != 2 && r.quantity < 1;
      if (list == StockList::SpecialOrders) on = r.special_order > 0;
      if (list == StockList::SellBy) {
        const long date = (r.sell_by_year + 2011L) * 10000 + r.sell_by_month * 100 + r.sell_by_day;
        on = r.sell_by_day && r.sell_by_month && r.sell_by_year && date < 20260314;
      }
      if (on) chosen.push_back(r);
    }
    if (list == StockList::Reorder || list == StockList::ReorderByCode)
      std::sort(chosen.begin(), chosen.end(),
                [](const FilmRecord& a, const FilmRecord& b) { return a.number < b.number; });
    std::vector<std::string> rows;
    if (*Stocklistcolumns(list)) rows.push_back(Stocklistcolumns(list));
    for (const FilmRecord& r : chosen) rows.push_back(Stocklistrow(list, r));
    if (list == StockList::ReorderByCode) Sortstockrows(rows);
    return rows;
  }

  RecordingPrintService printers_;
};

TEST_F(StockListTest, EachListChoosesByItsOwnRule) {
  const LocalTime today{2026, 3, 6, 14, 10, 5, 0};
  struct Case {
    const char* what;
    int quantity, reorder, bundle, special, day, month, year;
    bool reorder_list, out_of_stock, special_list, sell_by;
  } cases[] = {
      {"at the reorder level", 5, 5, 0, 0, 0, 0, 0, true, false, false, false},
      {"one above it", 6, 5, 0, 0, 0, 0, 0, false, false, false, false},
      {"nothing held, no level", 0, 0, 0, 0, 0, 0, 0, true, true, false, false},
      {"a bundle", 0, 0, 2, 1, 13, 3, 15, false, false, true, true},
      {"sell-by today", 9, 0, 0, 0, 14, 3, 15, false, false, false, false},
      {"sell-by yesterday", 9, 0, 0, 0, 13, 3, 15, false, false, false, true},
      {"year 1 is 2012", 9, 0, 0, 0, 1, 1, 1, false, false, false, true},
      {"no day", 9, 0, 0, 0, 0, 1, 1, false, false, false, false},
      {"negative stock", -2, -3, 0, 0, 0, 0, 0, false, true, false, false},
  };
  for (const Case& c : cases) {
    FilmRecord r{};
    r.number = 7;
    r.quantity = c.quantity;
    r.reorder_quantity = c.reorder;
    r.is_bundle = c.bundle;
    r.special_order = c.special;
    r.sell_by_day = c.day;
    r.sell_by_month = c.month;
    r.sell_by_year = c.year;
    EXPECT_EQ(Onstocklist(StockList::Reorder, r, today), c.reorder_list) << c.what;
    EXPECT_EQ(Onstocklist(StockList::ReorderByCode, r, today), c.reorder_list) << c.what;
    EXPECT_EQ(Onstocklist(StockList::OutOfStock, r, today), c.out_of_stock) << c.what;
    EXPECT_EQ(Onstocklist(StockList::SpecialOrders, r, today), c.special_list) << c.what;
    EXPECT_EQ(Onstocklist(StockList::SellBy, r, today), c.sell_by) << c.what;
    r.number = -1;
    EXPECT_FALSE(Onstocklist(StockList::OutOfStock, r, today)) << c.what;
  }
  FilmRecord r{};
  r.number = 12;
  SetField(r.description, "MILK");
  SetField(r.order_code, "DAIRY7");
  r.reorder_quantity = 4, r.quantity = 2, r.on_order = 6, r.order_quantity = 12;
  r.special_order = 3, r.sell_by_day = 2, r.sell_by_month = 11, r.sell_by_year = 1;
  EXPECT_EQ(Stocklistrow(StockList::Reorder, r), "12, MILK, 4,2,6,12, DAIRY7");
  EXPECT_EQ(Stocklistrow(StockList::ReorderByCode, r), "DAIRY7, 12, MILK, 4,2,6,12");
  EXPECT_EQ(Stocklistrow(StockList::OutOfStock, r), "12, MILK, 4,6,12, DAIRY7");
  EXPECT_EQ(Stocklistrow(StockList::SpecialOrders, r), "12, MILK, 2, 3");
  EXPECT_EQ(Stocklistrow(StockList::SellBy, r), "12, MILK, D:2 M:11 Y:2012");
}

TEST_F(StockListTest, ListsMatchASlowWalkOfARandomFile) {
  std::mt19937 random(17);
  std::vector<int64_t> numbers(60);
  for (size_t i = 0; i < numbers.size(); ++i) numbers[i] = int64_t(i) * 7 + 1000;
  std::shuffle(numbers.begin(), numbers.end(), random);  // file order unlike number order
  const char* codes[] = {"", "abc", "ABD", "Abc", "zeta", "10"};
  for (int64_t n : numbers) {
    FilmRecord r = Stock(n, 2.0f, 0, int32_t(random() % 8) - 2);
    r.reorder_quantity = int32_t(random() % 6);
    r.is_bundle = random() % 5 == 0 ? 2 : 0;
    r.special_order = int32_t(random() % 3);
    r.sell_by_day = int32_t(random() % 29), r.sell_by_month = int32_t(random() % 13);
    r.sell_by_year = int32_t(random() % 20);
    SetField(r.order_code, codes[random() % 6]);
    Store(r);
  }
  for (int64_t n : {numbers[3], numbers[20], numbers[41]}) {  // deleted slots
    ASSERT_EQ(G().films.Fetch(n, &G().film), n);
    ASSERT_TRUE(G().films.Remove(&G().film));
  }
  for (StockList list : {StockList::Reorder, StockList::ReorderByCode, StockList::OutOfStock,
                         StockList::SpecialOrders, StockList::SellBy}) {
    auto rows = Stocklistrows(list);
    ASSERT_TRUE(rows);
    EXPECT_EQ(*rows, Literal(list)) << Stocklisttitle(list);
    EXPECT_GT(rows->size(), 2u);
  }
  // Cancel in the busy box shows nothing.
  platform_.cancel_progress_at = 1;
  EXPECT_FALSE(Stocklistrows(StockList::OutOfStock));
}

TEST_F(StockListTest, OrderCodeListSortsTitlesAmongRowsAndPrintsThem) {
  std::vector<std::string> rows = {
      "Order code, Item, x", "beta, 2", "", "ALPHA, 1", "alpha, 3", ", 4", "Zulu, 5", "order, 6"};
  Sortstockrows(rows);
  EXPECT_EQ(rows, (std::vector<std::string>{"", ", 4", "ALPHA, 1", "alpha, 3", "beta, 2",
                                            "Order code, Item, x", "order, 6", "Zulu, 5"}));

  SetField(G().heading.site_name, "CORNER SHOP");
  Printstocklist(StockList::ReorderByCode, {"A1, 1, X", "Order code, Item", "B2, 2, Y"});
  Printstocklist(StockList::OutOfStock, {"Item, Reorder level", "3, Z, 0,0,0, "});
  const auto texts = printers_.texts();
  ASSERT_EQ(texts.size(), 8u);
  EXPECT_EQ(texts[0].rfind("CORNER SHOP Reorder list: ", 0), 0u) << texts[0];
  EXPECT_NE(texts[0].find("      Page: 1"), std::string::npos);
  EXPECT_EQ(texts[1], "Order code, Item, Restock level, In stock, On order, Order quantity");
  EXPECT_EQ(std::vector<std::string>(texts.begin() + 2, texts.begin() + 5),
            (std::vector<std::string>{"A1, 1, X", "Order code, Item", "B2, 2, Y"}));
  EXPECT_EQ(texts[5].rfind("CORNER SHOP  Out of stock list: ", 0), 0u) << texts[5];
  EXPECT_EQ(texts[6], "Item, Reorder level, On order, Order qty, Code");
  EXPECT_EQ(texts[7], "3, Z, 0,0,0, ");
}

TEST_F(StockListTest, MissingFilmFileSaysSoWithoutAColon) {
  RemoveFile("film.dat");
  EXPECT_FALSE(Stocklistrows(StockList::Reorder));
  EXPECT_EQ(Shown(), std::vector<std::string>{"Fatal error: Data file film.dat, not present."});
}

}  // namespace
}  // namespace tilo
