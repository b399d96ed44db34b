// SPDX-License-Identifier: MIT
#include "documents/mailmerge.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/startup.h"
#include "core/state.h"
#include "core/text.h"
#include "documents/recording_target.h"
#include "support/shop_fixture.h"

namespace tilo {
namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;

// Characters are 20 wide on the recording target's own font; lines are 10 high here.
TEST(MergeWrapTest, CutsAtTheLastSpaceBeforeTheEdge) {
  struct Case {
    std::string text;
    int width;
    std::vector<std::string> calls;
    int rows;
  };
  const std::vector<Case> cases = {
      {"", 140, {}, 0},
      {"ONE TWO", 140, {"text_out 0 50 ONE TWO"}, 1},
      // The last word of the text is cut like any other.
      {"ONE TWO THREE", 140, {"text_out 0 50 ONE TWO", "text_out 0 60 THREE"}, 2},
      {"ONE TWO THREE FOUR",
       140,
       {"text_out 0 50 ONE TWO", "text_out 0 60 THREE", "text_out 0 70 FOUR"},
       3},
      // A word wider than the page stands unbroken.
      {"ABCDEFGHIJKL MN", 100, {"text_out 0 50 ABCDEFGHIJKL", "text_out 0 60 MN"}, 2},
      {"ABCDEFGHIJKL\r\nMN", 100, {"text_out 0 50 ABCDEFGHIJKL", "text_out 0 60 MN"}, 2},
      // CR LF ends a line; an empty line still takes its row; no CR at the end needed.
      {"A\r\n\r\nB", 140, {"text_out 0 50 A", "text_out 0 70 B"}, 3},
      {"A\r\n", 140, {"text_out 0 50 A"}, 1},
  };
  for (const Case& c : cases) {
    RecordingTarget target;
    EXPECT_EQ(Wrapmergetext(target, c.text, c.width, 5, 10), c.rows) << c.text;
    EXPECT_THAT(target.calls(), ElementsAreArray(c.calls)) << c.text;
  }
}

TEST(MergeSelectionTest, OweMoneyAndNotActiveThisYear) {
  struct Case {
    float balance;
    const char* last_used;
    MergeSelection selection;
    bool wanted;
  };
  const Case cases[] = {
      {0.0f, "NEW", MergeSelection::All, true},
      {0.004f, "", MergeSelection::OweMoney, false},
      {0.01f, "", MergeSelection::OweMoney, true},
      {-5.0f, "", MergeSelection::OweMoney, false},
      {0.0f, "10:0005/01/2025", MergeSelection::NotActive, false},
      {0.0f, "10:0005/01/2024", MergeSelection::NotActive, true},
      {0.0f, "NEW", MergeSelection::NotActive, true},
  };
  for (const Case& c : cases) {
    MemberRecord r{};
    r.balance = c.balance;
    SetField(r.last_used, c.last_used);
    EXPECT_EQ(MergeWanted(r, c.selection, 2025), c.wanted) << c.balance << " " << c.last_used;
  }
}

struct ScriptedMergeForm : MailmergeView {
  bool edit(MergeEntries& e) override {
    offered.push_back(e);
    if (!answer) return false;
    e = *answer;
    return true;
  }
  std::optional<MergeEntries> answer;
  std::vector<MergeEntries> offered;
};

MemberRecord Customer(int64_t number, const char* name, const char* road, float balance) {
  MemberRecord m{};
  m.number = number;
  SetField(m.title, "MRS");
  SetField(m.initials, "J");
  SetField(m.name, name);
  SetField(m.road, road);
  SetField(m.town, "LEEDS");
  SetField(m.last_used, "NEW");
  m.group = 1;
  m.balance = balance;
  return m;
}

class MailmergeTest : public ShopTest {
 protected:
  void SetUp() override {
    ShopTest::SetUp();
    install_print_service(&printers_);
    install_mailmerge_view(&form_);
    platform_.set_now(2025, 3, 7);
    MakeFreshShop();
    const MemberRecord records[] = {Customer(1, "ADAMS", "1 HIGH ST", 0),
                                    Customer(2, "BROWN", "2 HIGH ST", 12.5f),
                                    Customer(3, "CLARK", "", 0)};
    WriteBytes("member.dat", std::string(reinterpret_cast<const char*>(records), sizeof records));
    EXPECT_TRUE(OpenStore());
    platform_.clear_record();
    G().heading = HeadingLines{};
    SetField(G().heading.site_name, "THE CORNER SHOP");
  }
  void TearDown() override {
    install_mailmerge_view(nullptr);
    install_print_service(nullptr);
    ShopTest::TearDown();
  }
  RecordingPrintService printers_;
  ScriptedMergeForm form_;
};

TEST_F(MailmergeTest, PrintsOneLetterPerCustomerWantedInTheRange) {
  form_.answer = MergeEntries{"2", "3", "Our sale starts\nMonday.", MergeSelection::All};
  printers_.dialog_copies = 2;
  Mailmerge();
  ASSERT_EQ(form_.offered.size(), 1u);
  EXPECT_EQ(form_.offered[0].start, "1");
  EXPECT_EQ(form_.offered[0].end, "3");
  EXPECT_EQ(G().merge_text, "Our sale starts\r\nMonday.");
  // Two customers, two copies each: four documents of one page.
  EXPECT_EQ(printers_.count("begin_document"), 4);
  EXPECT_EQ(printers_.count("begin_page"), 4);
  const std::vector<std::string> texts = printers_.texts();
  ASSERT_EQ(texts.size(), 4u * 11u - 2u);  // the third customer has no road
  EXPECT_THAT(std::vector<std::string>(texts.begin(), texts.begin() + 11),
              ElementsAre("THE CORNER SHOP", "MRS J BROWN", "2 HIGH ST", "LEEDS", "7 March 2025",
                          "Dear Sir / Madam,           Customer number: 2", "Our sale starts",
                          "Monday.", "Yours sincerely,", "-------------------", "Manager"));
  EXPECT_EQ(texts[23], "MRS J CLARK");

  // The heading centred on the middle of the page, the date against its right edge.
  const int half = printers_.device.page_width / 2, line = 42;
  EXPECT_EQ(printers_.count("text_out " + std::to_string(half) + " " + std::to_string(2 * line) +
                            " THE CORNER SHOP"),
            4);
  EXPECT_EQ(printers_.count("text_out " + std::to_string(2 * half) + " " +
                            std::to_string(15 * line) + " 7 March 2025"),
            2);

  // Owe money: only the second; a start past the end prints nothing, silently.
  printers_.calls.clear();
  printers_.dialog_copies = 1;
  form_.answer = MergeEntries{"1", "3", "", MergeSelection::OweMoney};
  Mailmerge();
  EXPECT_EQ(printers_.count("begin_document"), 1);
  EXPECT_EQ(form_.offered[1].text, "Our sale starts\nMonday.");
  printers_.calls.clear();
  form_.answer = MergeEntries{"3", "2", "", MergeSelection::All};
  Mailmerge();
  EXPECT_TRUE(printers_.calls.empty());
  EXPECT_TRUE(platform_.shown().empty());
}

TEST_F(MailmergeTest, LoadTakesOneToAThousandBytesAndMakesThemCp1252WithCrLf) {
  struct Case {
    std::string bytes;  // "-" : no such file
    std::optional<std::string> stored;
    const char* shown;
  };
  const Case cases[] = {
      {"CAF\xC3\x89\nNEXT", "CAF\xC9\r\nNEXT", nullptr},
      {"CAF\xC9\r\n", "CAF\xC9\r\n", nullptr},
      {std::string(1000, 'A'), std::string(1000, 'A'), nullptr},
      {std::string(1001, 'A'), std::nullopt, "Problem: File of incorrect type"},
      {"", std::nullopt, "Problem: File of incorrect type"},
      {"-", std::nullopt, "Fatal error: File not present."},
  };
  for (const Case& c : cases) {
    G().merge_text = "OLD";
    platform_.clear_record();
    if (c.bytes != "-") WriteBytes("letter.txt", c.bytes);
    platform_.queue_file(c.bytes == "-" ? "missing.txt" : "letter.txt");
    auto shown = Loadmergetext();
    EXPECT_EQ(shown.has_value(), c.stored.has_value());
    EXPECT_EQ(G().merge_text, c.stored.value_or("OLD"));
    if (c.shown) {
      EXPECT_THAT(platform_.shown(), ElementsAre(c.shown));
    }
  }
  platform_.queue_file("saved.txt");
  Savemergetext("CAF\xC3\x89\nNEXT");
  EXPECT_EQ(Bytes("saved.txt"), "CAF\xC9\r\nNEXT");
}

}  // namespace
}  // namespace tilo
