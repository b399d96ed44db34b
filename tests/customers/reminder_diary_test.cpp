// SPDX-License-Identifier: MIT
#include "customers/reminder_diary.h"

#include <gtest/gtest.h>

#include <deque>

#include "core/state.h"
#include "core/text.h"
#include "documents/print_service.h"
#include "documents/recording_target.h"
#include "reports/listings.h"
#include "support/shop_fixture.h"

namespace tilo {
namespace {

// The list form answers from a queue (none: closed) and remembers titles.
class ScriptedLists : public ListingView {
 public:
  std::optional<size_t> choose_row(const std::string& title,
                                   const std::vector<std::string>& rows) override {
    titles.push_back(title);
    last_rows = rows;
    if (rows_to_choose.empty()) return std::nullopt;
    auto row = rows_to_choose.front();
    rows_to_choose.pop_front();
    return row;
  }
  std::deque<std::optional<size_t>> rows_to_choose;
  std::vector<std::string> titles;
  std::vector<std::string> last_rows;
};

class ReminderTest : public ShopTest {
 protected:
  void SetUp() override {
    ShopTest::SetUp();
    MakeFreshShop();
    ASSERT_TRUE(CreateBlankReminderFile());
    platform_.set_now(2026, 11, 23);
    install_listing_view(&lists_);
  }
  void TearDown() override {
    install_listing_view(nullptr);
    ShopTest::TearDown();
  }
  ResnRecord Page(int p) {
    ResnRecord page;
    EXPECT_TRUE(ReadReminderPage(p, page));
    return page;
  }
  // A page of `n` entries "C0".."Cn-1" / "I0".., written at position `p`.
  void Fill(int p, int n) {
    ResnRecord page = Page(p);
    for (int i = 0; i < n; ++i)
      Placereminder(page, "c" + std::to_string(i), "i" + std::to_string(i));
    WriteReminderPage(p, page);
  }
  ScriptedLists lists_;
};

TEST_F(ReminderTest, TheLastSlotIsHeldInMemoryAndTheFullDayRefusesMore) {
  Fill(3, 198);
  ResnRecord page = Page(3);
  ReminderAdd add(3, page);
  struct Step {
    const char* customer;
    bool stored;
    int written;  // count on disk afterwards
    size_t messages;
  } steps[] = {
      {"the 199th", true, 199, 0},
      {"the 200th", true, 199, 1},   // kept on the open page only
      {"the 201st", false, 199, 2},  // no free slot at all
  };
  for (const Step& s : steps) {
    SCOPED_TRACE(s.customer);
    EXPECT_EQ(add.Add(s.customer, "x"), s.stored);
    EXPECT_EQ(Page(3).count, s.written);
    EXPECT_EQ(platform_.messages.size(), s.messages);
  }
  EXPECT_EQ(add.page().count, 200);
  EXPECT_EQ(FieldText(Page(3).customer[198]), "THE 199TH");
  EXPECT_EQ(Page(3).used[199], 0);
  EXPECT_EQ(platform_.shown().back(), "Reminders: Total reached");

  // A day holding 200 in memory was never written so; one written full is refused at once.
  ResnRecord full = Page(4);
  for (int i = 0; i < kReminderEntries; ++i) Placereminder(full, "c", "i");
  WriteReminderPage(4, full);
  lists_.rows_to_choose = {4};
  platform_.clear_record();
  Addreminder(false);
  EXPECT_EQ(platform_.shown(), std::vector<std::string>{"Reminders: Total reached"});
}

TEST_F(ReminderTest, AddFoldsAndCutsToTheFormWidth) {
  ResnRecord page = Page(0);
  const std::string long_text(35, 'a');
  ASSERT_EQ(Placereminder(page, "mr brown", long_text), 0);
  EXPECT_EQ(FieldText(page.customer[0]), "MR BROWN");
  EXPECT_EQ(FieldText(page.item[0]), std::string(28, 'A'));
  EXPECT_EQ(page.used[0], 2);
  EXPECT_EQ(page.count, 1);
}

TEST_F(ReminderTest, DeleteKeepsTheSlotsPacked) {
  struct Case {
    int entries, chosen;
    std::vector<std::string> left;
  } cases[] = {
      {3, 0, {"C1", "C2"}},
      {3, 2, {"C0", "C1"}},
      {1, 0, {}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.chosen);
    WriteReminderPage(5, BlankReminderPage(5));
    Fill(5, c.entries);
    lists_.rows_to_choose = {5, size_t(c.chosen)};
    platform_.clear_record();
    Deletereminder();
    EXPECT_EQ(platform_.shown().back(), "Reminders: Updated");
    const ResnRecord after = Page(5);
    ASSERT_EQ(after.count, int(c.left.size()));
    for (size_t i = 0; i < c.left.size(); ++i) EXPECT_EQ(FieldText(after.customer[i]), c.left[i]);
    EXPECT_EQ(after.used[c.left.size()], 0);
  }
  // A full day loses its top entry's slot: slot 199 is free afterwards.
  ResnRecord full = BlankReminderPage(6);
  for (int i = 0; i < kReminderEntries; ++i) Placereminder(full, "c" + std::to_string(i), "i");
  Removereminder(full, 0);
  EXPECT_EQ(full.count, 199);
  EXPECT_EQ(full.used[199], 0);
  EXPECT_EQ(FieldText(full.customer[198]), "C199");
}

TEST_F(ReminderTest, AmendTakesTwentyNineAsTypedAndARefusalWritesNothing) {
  Fill(0, 2);
  const std::string before = Bytes(kReminderFile);
  struct Case {
    std::optional<std::string> customer, item;
    bool written;
    std::string last_shown;
  } cases[] = {
      {std::string(30, 'x'), "ok", false, "Input exceeds aloowed length: 30 characters"},
      {"fine", std::string(30, 'y'), false, "Input exceeds allowed length: 30 characters"},
      {std::nullopt, "ok", false, ""},
      {"fine", std::nullopt, false, ""},
      {std::string(29, 'x'), "Teapot blue", true, "Reminders: Updated"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.last_shown);
    lists_.rows_to_choose = {0, 1};
    platform_.clear_record();
    platform_.queue_prompt(c.customer);
    if (c.customer && c.customer->size() <= 29) platform_.queue_prompt(c.item);
    Amendreminder();
    EXPECT_EQ(platform_.shown().empty() ? "" : platform_.shown().back(), c.last_shown);
    EXPECT_EQ(Bytes(kReminderFile) != before, c.written);
  }
  EXPECT_EQ(FieldText(Page(0).item[1]), "Teapot blue");
  EXPECT_EQ(FieldText(Page(0).customer[0]), "C0");
  EXPECT_EQ(lists_.titles.back(), "Amend reservation");
}

TEST_F(ReminderTest, RowsAndHeadings) {
  Fill(0, 0);
  Fill(1, 2);
  lists_.rows_to_choose = {std::nullopt};
  Addreminder(false);
  ASSERT_EQ(lists_.last_rows.size(), size_t(kReminderDaysShown));
  EXPECT_EQ(lists_.titles.back(), "Select day:");
  EXPECT_EQ(lists_.last_rows[0], "Monday November 23 2026");
  EXPECT_EQ(lists_.last_rows[1], "Tuesday November 24 2026 (2)");
  EXPECT_EQ(lists_.last_rows[8], "Tuesday December 1 2026");
  EXPECT_EQ(Reminderheading(platform_.now(), 8, 3), "Reminders: Tuesday 1/12/2026  Total: 3");
  const ResnRecord page = Page(1);
  EXPECT_EQ(Reminderprintrows(page)[1], "2                C1                             I1");
  EXPECT_EQ(Reminderlistrows(page)[0].columns[1], "C0");
  EXPECT_EQ(Reminderentryrow(page, 1), "C1 - I1");
  // Printed under the shop's name, one numbered line a reminder.
  RecordingPrintService printers;
  install_print_service(&printers);
  SetField(G().heading.site_name, "SHOP");
  lists_.rows_to_choose = {1};
  Printreminders();
  install_print_service(nullptr);
  EXPECT_EQ(printers.texts(),
            (std::vector<std::string>{"SHOP Reminders: Tuesday 24/11/2026  Total: 2  Page: 1",
                                      "1                C0                             I0",
                                      "2                C1                             I1"}));
  // An empty day ends every command but Add.
  lists_.rows_to_choose = {0};
  platform_.clear_record();
  Listreminders();
  EXPECT_EQ(platform_.shown(), std::vector<std::string>{"Reminders: No reminders recorded."});
}

}  // namespace
}  // namespace tilo
