// SPDX-License-Identifier: MIT
#include "core/scratch_sort.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/customer_file.h"
#include "core/film_record.h"
#include "core/inventory.h"
#include "core/state.h"
#include "core/text.h"
#include "platform/files.h"
#include "support/shop_fixture.h"

namespace tilo {
namespace {

class ScratchSortTest : public ShopTest {
 protected:
  void AddItems(const std::vector<std::pair<int64_t, const char*>>& items) {
    std::string file;
    for (auto [number, description] : items) {
      FilmRecord f{};
      f.number = number;
      SetField(f.description, description);
      f.quantity = int32_t(number * 2);
      f.retail_price = 1.5f;
      f.total_sold = int32_t(number + 100);
      SetField(f.last_used, "10:1503/02/2026");
      file.append(reinterpret_cast<const char*>(&f), sizeof f);
    }
    WriteBytes("film.dat", file);
    ASSERT_TRUE(G().films.Load());
  }

  static std::vector<std::string> Texts(const std::vector<SortRow>& rows) {
    std::vector<std::string> texts;
    for (const SortRow& r : rows) texts.push_back(FieldText(r.text));
    return texts;
  }
};

TEST_F(ScratchSortTest, OrderIsFirstByteThenSecondByteThenTheWholeText) {
  AddItems({{1, "BREAD WHITE"},
            {2, "BANANA"},
            {3, "BREAD BROWN"},
            {4, "APPLE"},
            {5, "7UP CAN"},
            {6, "B"},
            {7, "BR"},
            {-1, ""},
            {8, "CHEESE"},
            {9, "Bagel"},
            {10, "BREAD"}});
  ASSERT_EQ(Alphasort(SortKind::Listing, 'a', 'B'), 8);
  auto rows = ReadSortRows(SortKind::Listing);
  ASSERT_TRUE(rows);
  // A start of A takes in the digits; a one-letter name has no second key byte
  // and never takes part; lower case sorts after upper case as bytes do.
  EXPECT_EQ(Texts(*rows), (std::vector<std::string>{"7UP CAN", "APPLE", "BANANA", "BR", "BREAD",
                                                    "BREAD BROWN", "BREAD WHITE", "Bagel"}));
  const SortRow& banana = (*rows)[2];
  EXPECT_EQ(banana.number, 2);
  EXPECT_EQ(FieldText(banana.column3), "4");
  EXPECT_EQ(FieldText(banana.column4), "1.50");

  ASSERT_EQ(Alphasort(SortKind::HighestVolume, 'C', 'C'), 1);
  rows = ReadSortRows(SortKind::HighestVolume);
  ASSERT_TRUE(rows);
  ASSERT_EQ(rows->size(), 1u);
  EXPECT_EQ(FieldText((*rows)[0].column3), "108");
  EXPECT_EQ(FieldText((*rows)[0].column4), "03/02/2026");
  EXPECT_EQ(Bytes("f2.dat").size(), 110u);

  // Refused ranges leave the last result alone.
  EXPECT_EQ(Alphasort(SortKind::Listing, '5', 'Z'), -1);
  EXPECT_EQ(Alphasort(SortKind::Listing, 'M', 'C'), -1);
  EXPECT_EQ(Bytes("f2.dat").size(), 110u);
  EXPECT_FALSE(ReadSortRows(SortKind::Customers));
  EXPECT_EQ(platform_.shown(),
            std::vector<std::string>{"Fatal error: Data file: m2.dat, not present."});
}

TEST_F(ScratchSortTest, CustomersGoToTheirOwnFileWithRoadAndTelephone) {
  std::string file;
  for (auto [number, name] :
       std::vector<std::pair<int64_t, const char*>>{{4, "SMITH"}, {9, "ADAMS"}, {2, "SMART"}}) {
    MemberRecord m{};
    m.number = number;
    SetField(m.name, name);
    SetField(m.road, "1 HIGH ST");
    SetField(m.telephone, "0113 496 0000");
    file.append(reinterpret_cast<const char*>(&m), sizeof m);
  }
  WriteBytes("member.dat", file);
  ASSERT_TRUE(G().members.Load());
  ASSERT_EQ(Alphasort(SortKind::Customers, 'S', 'S'), 2);
  auto rows = ReadSortRows(SortKind::Customers);
  ASSERT_TRUE(rows);
  EXPECT_EQ(Texts(*rows), (std::vector<std::string>{"SMART", "SMITH"}));
  EXPECT_EQ(FieldText((*rows)[0].column3), "1 HIGH ST");
  EXPECT_EQ(FieldText((*rows)[0].column4), "0113 496 0000");
  EXPECT_FALSE(FileExists("f2.dat"));
}

}  // namespace
}  // namespace tilo
