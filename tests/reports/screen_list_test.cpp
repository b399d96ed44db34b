// SPDX-License-Identifier: MIT
#include "reports/screen_list.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tilo {
namespace {

std::vector<ListRow> Rows(int count) {
  std::vector<ListRow> rows(static_cast<size_t>(count));
  for (int i = 0; i < count; ++i) rows[size_t(i)].number = i + 1;
  return rows;
}

int64_t First(const ScreenList& list) {
  return list.rows().empty() ? 0 : list.rows().front().number;
}

TEST(ScreenListTest, PagesForwardAndBackThirteenAtATime) {
  ScreenList list("List", RowsFill(Rows(30)));
  ASSERT_TRUE(list.Load());
  EXPECT_EQ(list.rows().size(), 13u);
  EXPECT_TRUE(list.has_more());
  EXPECT_FALSE(list.can_go_back());
  list.More();
  list.More();
  EXPECT_EQ(First(list), 27);
  EXPECT_EQ(list.rows().size(), 4u);
  EXPECT_FALSE(list.has_more());  // the short last page: "OK" only
  list.Back();
  EXPECT_EQ(First(list), 14);
  list.Back();
  EXPECT_EQ(First(list), 1);
  EXPECT_FALSE(list.can_go_back());

  // A full last page has nothing behind it.
  ScreenList exact("List", RowsFill(Rows(26)));
  exact.Load();
  exact.More();
  EXPECT_FALSE(exact.has_more());
  EXPECT_FALSE(ScreenList("List", RowsFill({})).Load());
}

TEST(ScreenListTest, TheStackOfPageStartsStopsGrowingAtTwoHundred) {
  ScreenList list("List", RowsFill(Rows(13 * 210)));
  list.Load();
  for (int page = 1; page < 205; ++page) list.More();
  EXPECT_EQ(First(list), 13 * 204 + 1);
  EXPECT_EQ(list.saved_pages(), 200u);
  // Back goes to the last start saved, page 200, and on down from there.
  list.Back();
  EXPECT_EQ(First(list), 13 * 199 + 1);
  list.Back();
  EXPECT_EQ(First(list), 13 * 198 + 1);
}

TEST(ScreenListTest, AClickOpensTheRowsRecord) {
  int64_t opened = 0;
  ScreenList list("List", RowsFill(Rows(3)), [&](int64_t n) { opened = n; });
  list.Load();
  list.Open(2);
  EXPECT_EQ(opened, 3);
  list.Open(7);  // below the rows: nothing
  EXPECT_EQ(opened, 3);
}

}  // namespace
}  // namespace tilo
