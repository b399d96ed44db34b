// SPDX-License-Identifier: MIT
#include "customers/customer_maintenance.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "core/startup.h"
#include "core/state.h"
#include "core/text.h"
#include "customers/customer_find.h"
#include "platform/sounds.h"
#include "support/shop_fixture.h"

namespace tilo {
namespace {

using ::testing::ElementsAre;

// The card as a script: each opening applies the next step to the boxes and
// presses its button; the layouts shown are kept.
struct ScriptedCard : CustomerView {
  struct Step {
    std::function<void(CustomerEntries&)> type;
    FormButton button;
  };
  FormButton edit(CustomerLayout layout, CustomerEntries& e) override {
    layouts.push_back(layout);
    shown.push_back(e);
    if (steps.empty()) return FormButton::Cancel;
    Step s = steps.front();
    steps.pop_front();
    if (s.type) s.type(e);
    return s.button;
  }
  void view(CustomerPage& page) override { viewed.push_back(page.entries[kBoxName]); }
  std::deque<Step> steps;
  std::vector<std::string> viewed;
  std::vector<CustomerLayout> layouts;
  std::vector<CustomerEntries> shown;
};

struct RecordedLists : ScreenListView {
  void show(ScreenList& list) override {
    std::string text = list.title() + ":";
    for (const ListRow& r : list.rows())
      text +=
          " [" + r.columns[0] + " " + r.columns[1] + " " + r.columns[2] + " " + r.columns[3] + "]";
    shown.push_back(text);
  }
  std::vector<std::string> shown;
};

MemberRecord Member(int64_t number, const char* name, const char* road = "", int64_t tax = 1,
                    const char* last_used = "NEW") {
  MemberRecord m{};
  m.number = number;
  SetField(m.name, name);
  SetField(m.road, road);
  SetField(m.telephone, "0113 496");
  m.group = 1;
  m.tax = tax;
  SetField(m.last_used, last_used);
  return m;
}

// A shop whose member.dat holds the given records, opened as a start does.
class CustomerTest : public ShopTest {
 protected:
  void SetUp() override {
    ShopTest::SetUp();
    install_customer_view(&card_);
    install_screen_list_view(&lists_);
    platform_.set_now(2025, 2, 7, 14, 5);
  }
  void TearDown() override {
    install_customer_view(nullptr);
    install_screen_list_view(nullptr);
    ShopTest::TearDown();
  }
  void Open(const std::vector<MemberRecord>& records) {
    MakeFreshShop();
    WriteBytes("member.dat", std::string(reinterpret_cast<const char*>(records.data()),
                                         records.size() * sizeof(MemberRecord)));
    ASSERT_TRUE(OpenStore());
    platform_.clear_record();
    log_start_ = Bytes("bun4.dat").size();
  }
  // What the activity log gained since the start.
  std::string Logged() { return Bytes("bun4.dat").substr(log_start_); }
  MemberRecord At(int64_t position) {
    MemberRecord r;
    std::memcpy(&r, Bytes("member.dat").data() + position * sizeof r, sizeof r);
    return r;
  }
  std::vector<int64_t> Numbers() {
    std::vector<int64_t> n;
    for (const IndexEntry& e : G().members.index) n.push_back(e.number);
    return n;
  }
  static void Fill(CustomerEntries& e, const char* name, const char* road) {
    e[kBoxName] = name;
    e[kBoxRoad] = road;
  }

  ScriptedCard card_;
  RecordedLists lists_;
  size_t log_start_ = 0;
};

TEST_F(CustomerTest, AddRefusesInOrderReopensWithTheEntriesThenStores) {
  Open({Member(-1, ""), Member(1, "SMITH", "HIGH ST"), Member(2, "JONES", "HIGH ROAD"),
        Member(3, "SMITH", "LOW LANE")});
  G().settings.last_customer_number = 0;
  const struct {
    const char* number;
    const char* name;
    const char* group;
    const char* message;
  } refusals[] = {
      {"0", "SMITH", "1", "Number outside range."},
      {"100000000000000001", "SMITH", "1", "Number outside range."},
      {"7", "S", "1", "The name must have at least two characters."},
      {"7", "SMITH", "0", "Invalid category (1-2000)"},
      {"7", "SMITH", "2001", "Invalid category (1-2000)"},
  };
  for (const auto& r : refusals)
    card_.steps.push_back({[r](CustomerEntries& e) {
                             e[kBoxNumber] = r.number;
                             e[kBoxName] = r.name;
                             e[kBoxGroup] = r.group;
                             e[kBoxBalance] = "12.5";
                           },
                           FormButton::Ok});
  card_.steps.push_back({[](CustomerEntries& e) {
                           e[kBoxNumber] = "7";
                           e[kBoxName] = "smith";
                           e[kBoxRoad] = "high";
                           e[kBoxGroup] = "1";
                         },
                         FormButton::Ok});
  Addcustomer();

  // The blank card offers the first number after the run 1, 2, 3.
  EXPECT_EQ(card_.shown[0][kBoxNumber], "4");
  EXPECT_EQ(card_.layouts[0], CustomerLayout::New);
  for (size_t i = 1; i < card_.layouts.size(); ++i) {
    EXPECT_EQ(card_.layouts[i], CustomerLayout::Reopened);
    EXPECT_EQ(card_.shown[i][kBoxBalance], "12.5");  // kept, though hidden
  }
  std::vector<std::string> expected;
  for (const auto& r : refusals) expected.push_back(std::string("Problem: ") + r.message);
  expected.push_back("New customer: Store record?");
  EXPECT_EQ(platform_.shown(), expected);
  EXPECT_EQ(platform_.sounds, (std::vector<int>{8002, 8002, 8002, 8002, 8002, 8004}));
  // Name doubles are whole names; address doubles start with the road typed.
  EXPECT_THAT(
      lists_.shown,
      ElementsAre("New customer search: name: [1 SMITH 0113 496 0.00] [3 SMITH 0113 496 0.00]",
                  "New customer search: address: [1 SMITH 0113 496 0.00] [2 JONES 0113 496 "
                  "0.00]"));

  // The deleted slot is reused; the balance typed before the refusals is stored.
  const MemberRecord stored = At(0);
  EXPECT_EQ(stored.number, 7);
  EXPECT_STREQ(stored.name, "SMITH");
  EXPECT_STREQ(stored.road, "HIGH");
  EXPECT_STREQ(stored.last_used, "NEW");
  EXPECT_FLOAT_EQ(stored.balance, 12.5f);
  EXPECT_FLOAT_EQ(stored.credit_limit, 2000.0f);
  EXPECT_EQ(stored.tax, 1);
  EXPECT_EQ(stored.terms, 1);
  EXPECT_EQ(Numbers(), (std::vector<int64_t>{1, 2, 3, 7}));
  EXPECT_EQ(G().members.name_keys[0], (NameKey{'S', 'M'}));
  EXPECT_EQ(G().settings.new_customers_today, 1);
}

TEST_F(CustomerTest, AddStoresNothingOnCancelOrATakenNumberAndNextStartsAgain) {
  Open({Member(1, "SMITH")});
  auto typed = [](const char* number) {
    return [number](CustomerEntries& e) {
      e[kBoxNumber] = number;
      e[kBoxName] = "BROWN";
    };
  };
  // A taken number ends the command without reopening.
  card_.steps = {{typed("1"), FormButton::Ok}};
  Addcustomer();
  EXPECT_THAT(platform_.shown(), ElementsAre("Problem: Number in use."));
  EXPECT_EQ(card_.layouts.size(), 1u);

  // Cancel at "Store record?" stores nothing.
  platform_.clear_record();
  card_.steps = {{typed("5"), FormButton::Ok}};
  platform_.queue_answer(Answer::Cancel);
  Addcustomer();
  EXPECT_EQ(Bytes("member.dat").size(), sizeof(MemberRecord));

  // "&Next" stores and opens a blank card; no name doubles, everyone on address.
  platform_.clear_record();
  lists_.shown.clear();
  G().settings.new_customer_listing = 1;
  card_.steps = {{typed("5"), FormButton::Next}, {typed("6"), FormButton::Ok}};
  Addcustomer();
  EXPECT_EQ(Numbers(), (std::vector<int64_t>{1, 5, 6}));
  // The address list each time, and the first BROWN as a name double of the second.
  EXPECT_THAT(lists_.shown, ElementsAre("New customer search: address: [1 SMITH 0113 496 0.00]",
                                        "New customer search: name: [5 BROWN  0.00]",
                                        "New customer search: address: [1 SMITH 0113 496 0.00] [5 "
                                        "BROWN  0.00]"));
  EXPECT_EQ(G().settings.new_customers_today, 2);
}

TEST_F(CustomerTest, AmendRewritesKeepsHiddenBytesAndLogsBeforeAndAfter) {
  MemberRecord smith = Member(5, "SMITH", "1 HIGH ST");
  SetField(smith.area, "HEADINGLEY");
  SetField(smith.town, "LEEDS");
  SetField(smith.postcode, "LS6 1AA");
  SetField(smith.comment, "GOOD");
  smith.balance = 42.5f;
  smith.reserved_1562[3] = 0x5a;
  smith.loan_item[2] = 77;
  Open({Member(3, "JONES"), smith});
  // The checks are the new card's; only the number is the amend's own, and a
  // refusal saves nothing and never reopens the card.
  const std::string before = Bytes("member.dat");
  card_.steps = {{[](CustomerEntries& e) { e[kBoxNumber] = "6"; }, FormButton::Ok}};
  platform_.queue_prompt("5");
  Amendcustomer();
  EXPECT_THAT(platform_.shown(), ElementsAre("Problem: Number cannot be changed"));
  EXPECT_EQ(Bytes("member.dat"), before);
  EXPECT_EQ(Logged(), "");

  card_.layouts.clear();
  card_.steps = {{[](CustomerEntries& e) {
                    e[kBoxName] = "brown";
                    e[kBoxGroup] = "12";
                    e[kBoxBalance] = "999";  // hidden: never read
                  },
                  FormButton::Ok}};
  platform_.queue_prompt("5");
  Amendcustomer();

  EXPECT_EQ(card_.layouts, std::vector<CustomerLayout>{CustomerLayout::Amend});
  const MemberRecord after = At(1);
  EXPECT_STREQ(after.name, "BROWN");
  EXPECT_EQ(after.group, 12);
  EXPECT_FLOAT_EQ(after.balance, 42.5f);
  EXPECT_EQ(after.reserved_1562[3], 0x5a);
  EXPECT_EQ(after.loan_item[2], 77);
  EXPECT_EQ(G().members.name_keys[1], (NameKey{'B', 'R'}));
  EXPECT_EQ(Logged(),
            "\r\n14:05 07/02/2025  Customer 5 amended:"
            "\r\nBefore: SMITH\r\n1 HIGH ST, HEADINGLEY\r\nLEEDS, LS6 1AA\r\nTel: 0113 496, "
            "Category: 1\r\nComment: GOOD"
            "\r\n\r\nAfter: BROWN\r\n1 HIGH ST, HEADINGLEY\r\nLEEDS, LS6 1AA\r\nTel: 0113 496, "
            "Category: 12\r\nComment: GOOD");
}

TEST_F(CustomerTest, DeleteAsksThenMarksTheRecordAndLogsAnUnpaddedDate) {
  Open({Member(3, "JONES"), Member(5, "SMITH")});
  platform_.queue_prompt("5");
  platform_.queue_answer(Answer::Cancel);
  Deletecustomer();
  EXPECT_THAT(platform_.shown(), ElementsAre("5 Name: SMITH: Are you sure?"));
  EXPECT_EQ(At(1).number, 5);

  platform_.queue_prompt("5");
  Deletecustomer();
  const MemberRecord gone = At(1);
  EXPECT_EQ(gone.number, -1);
  EXPECT_EQ(gone.name[0], 0);
  EXPECT_STREQ(gone.road, "");  // the rest stays as it was
  EXPECT_STREQ(gone.telephone, "0113 496");
  EXPECT_EQ(Numbers(), (std::vector<int64_t>{-1, 3}));
  EXPECT_EQ(G().members.name_keys[1], (NameKey{0, 0}));
  EXPECT_EQ(Logged(), "\r\n14:05 7/2/2025 Customer 5, SMITH deleted.\r\n");
}

TEST_F(CustomerTest, PruneOffersOldNonTaxableCustomersOnceAcrossTheYearAndDeletesNeighbours) {
  // February 2025: the cut-off is August 2024.
  Open({Member(1, "OLD TAXABLE", "", 1, "10:0001/01/2020"),
        Member(2, "SEPTEMBER", "", 0, "10:0001/09/2024"),
        Member(3, "AUGUST", "", 0, "10:0031/08/2024"), Member(4, "NEWCOMER", "", 0, "NEW"),
        Member(5, "LAST YEAR", "", 0, "10:0005/12/2023"), Member(6, "OWING", "", 0, "NEW"),
        Member(7, "KEPT", "", 0, "NEW")});
  MemberRecord owing = Member(6, "OWING", "", 0, "NEW");
  owing.balance = 0.004f;  // nothing owed at two decimals
  G().members.Fetch(6, &G().member);
  G().member = owing;
  ASSERT_TRUE(G().members.Rewrite(&G().member));

  platform_.queue_prompt("99");
  platform_.queue_answer(Answer::Yes);  // omit those that owe money
  for (Answer a : {Answer::No, Answer::Yes, Answer::Yes, Answer::No, Answer::Cancel})
    platform_.queue_answer(a);
  Prunecustomers();

  EXPECT_THAT(platform_.shown(),
              ElementsAre("Prune members: Omit those that owe money?",
                          "3 Name: AUGUST: Last used: 10:0031/08/2024 Balance: 0.00",
                          "4 Name: NEWCOMER: Last used: NEW Balance: 0.00",
                          "5 Name: LAST YEAR: Last used: 10:0005/12/2023 Balance: 0.00",
                          "6 Name: OWING: Last used: NEW Balance: 0.00",
                          "7 Name: KEPT: Last used: NEW Balance: 0.00"));
  EXPECT_EQ(Numbers(), (std::vector<int64_t>{-1, -1, 1, 2, 3, 6, 7}));
  EXPECT_EQ(At(3).number, -1);
  EXPECT_EQ(At(4).number, -1);
  EXPECT_EQ(Logged(),
            "\r\n14:05 7/2/2025 Customer 4, NEWCOMER deleted.\r\n"
            "\r\n14:05 7/2/2025 Customer 5, LAST YEAR deleted.\r\n");

  // A start number below 1 ends the command at once.
  platform_.clear_record();
  platform_.queue_prompt("0");
  Prunecustomers();
  EXPECT_TRUE(platform_.shown().empty());
}

TEST_F(CustomerTest, ACustomerFoundByNumberFromTheMenuShowsInTheView) {
  Open({Member(1, "SMITH"), Member(2, "JONES")});
  InstallCustomerCommands();
  EXPECT_EQ(Findcustomer("2", true), 2);
  EXPECT_THAT(card_.viewed, ElementsAre("JONES"));
}

TEST(PruneCutoffTest, WrapsIntoThePreviousYear) {
  const int cases[][3] = {{7, 1, 2025}, {6, 12, 2024}, {1, 7, 2024}};  // month, cut-off
  for (const auto& c : cases) {
    EXPECT_EQ(PruneCutoff(c[0], 2025).month, c[1]) << c[0];
    EXPECT_EQ(PruneCutoff(c[0], 2025).year, c[2]) << c[0];
  }
}

TEST_F(CustomerTest, ByAddressPagesThroughTheMatchingCustomers) {
  std::vector<MemberRecord> records;
  for (int n = 1; n <= 30; ++n)
    records.push_back(Member(n, "CUSTOMER", n % 2 ? "HIGH ST" : "LOW RD"));
  Open(records);
  struct Pager : ScreenListView {
    void show(ScreenList& list) override {
      pages.push_back(list.rows().size());
      first = list.rows()[0].columns;
      list.More();
      pages.push_back(list.rows().size());
      more_after = list.has_more();
    }
    std::vector<size_t> pages;
    std::array<std::string, 4> first;
    bool more_after = true;
  } pager;
  install_screen_list_view(&pager);
  platform_.queue_prompt("high");
  Customersbyaddress();
  EXPECT_EQ(pager.pages, (std::vector<size_t>{13, 2}));
  EXPECT_EQ(pager.first, (std::array<std::string, 4>{"1", "CUSTOMER", "HIGH ST", "0113 496"}));
  EXPECT_FALSE(pager.more_after);

  platform_.queue_prompt("NOWHERE");
  Customersbyaddress();
  EXPECT_THAT(platform_.shown(), ElementsAre("Problem: No items on record."));
}

}  // namespace
}  // namespace tilo
