// SPDX-License-Identifier: MIT
#include "reports/listings.h"

#include <cstring>

#include "core/scratch_sort.h"
#include "core/state.h"
#include "documents/print_service.h"
#include "documents/recording_target.h"
#include "inventory/inventory_fixture.h"

namespace tilo {
namespace {

class ScriptedListingView : public ListingView {
 public:
  std::optional<std::pair<std::string, std::string>> range;
  std::optional<int> category;
  CustomFields ticks{};
  std::optional<std::pair<std::string, std::string>> ask_range(int64_t highest) override {
    asked_highest = highest;
    return range;
  }
  std::optional<int> choose_category(bool) override { return category; }
  bool custom_print(CustomFields& fields, std::string& from, std::string& to) override {
    offered = fields;
    fields = ticks;
    if (range) std::tie(from, to) = *range;
    return bool(range);
  }
  int64_t asked_highest = 0;
  CustomFields offered{};
};

class ListingTest : public InventoryTest {
 protected:
  void SetUp() override {
    InventoryTest::SetUp();
    ASSERT_TRUE(G().members.Load());
    install_print_service(&printers_);
    install_listing_view(&listing_);
    SetField(G().heading.site_name, "SHOP");
  }
  void TearDown() override {
    install_listing_view(nullptr);
    install_print_service(nullptr);
    InventoryTest::TearDown();
  }
  // Printed texts after the page header.
  std::vector<std::string> Printed() {
    auto texts = printers_.texts();
    printers_.calls.clear();
    if (!texts.empty()) texts.erase(texts.begin());
    return texts;
  }

  RecordingPrintService printers_;
  ScriptedListingView listing_;
};

TEST_F(ListingTest, RangesAndLettersAreCheckedBeforeAnythingRuns) {
  struct Case {
    const char *from, *to;
    bool ok;
  } cases[] = {
      {"1", "10", true},
      {"7", "7", true},
      {"1", "100000000000000000", true},
      {"1", "100000000000000001", false},
      {"0", "5", false},
      {"6", "5", false},
      {"x", "5", false},
      {"", "5", false},
      {"99999999999999999999", "1", false},
  };
  for (const Case& c : cases) {
    platform_.clear_record();
    EXPECT_EQ(Checkrange(c.from, c.to).has_value(), c.ok) << c.from << "-" << c.to;
    EXPECT_EQ(platform_.shown(), c.ok ? std::vector<std::string>{}
                                      : std::vector<std::string>{"Problem: Outside range"});
  }
  struct Letters {
    const char *start, *end;
    int first, last;  // 0: the command ends
  } letters[] = {{"a", "c", 'A', 'C'}, {"1", "Z", 0, 0}, {"C", "b", 0, 0}, {"m", "m", 'M', 'M'}};
  for (const Letters& l : letters) {
    platform_.prompts.clear();
    platform_.queue_prompt(l.start);
    platform_.queue_prompt(l.end);
    auto got = Askletters("Alphabetical inventory list");
    EXPECT_EQ(got ? got->first : 0, l.first) << l.start;
    EXPECT_EQ(got ? got->second : 0, l.last) << l.start;
  }
}

TEST_F(ListingTest, BestSellersRunByFallingSalesTiesInFileOrder) {
  struct Item {
    int64_t number;
    int sold, category;
  } items[] = {{50, 3, 3}, {20, 9, 3}, {40, 3, 5}, {10, 3, 3}, {30, 0, 3}};
  for (const Item& i : items) {
    FilmRecord r = Stock(i.number, 1.0f);
    r.total_sold = i.sold;
    r.display_category = i.category;
    SetField(r.last_used, "10:3014/03/2026");
    Store(r);
  }
  ASSERT_EQ(Writebestsellers(kAllCategories), int64_t(std::size(items)));
  auto rows = ReadSortRows(SortKind::HighestVolume);
  ASSERT_TRUE(rows);
  std::vector<int64_t> order;
  for (const SortRow& r : *rows) order.push_back(r.number);
  ASSERT_EQ(order.size(), 5u);
  EXPECT_EQ(std::vector<int64_t>(order.begin(), order.begin() + 4),
            (std::vector<int64_t>{20, 50, 40, 10}));
  // Bytes: the number, the description, the count and the date of last sale.
  SortRow expected{};
  expected.number = 20;
  std::strcpy(expected.text, "ITEM 20");
  std::strcpy(expected.column3, "9");
  std::strcpy(expected.column4, "14/03/2026");
  EXPECT_EQ(Bytes("f2.dat").substr(0, sizeof(SortRow)),
            std::string(reinterpret_cast<const char*>(&expected), sizeof expected));

  ASSERT_EQ(Writebestsellers(5), 1);
  EXPECT_EQ(ReadSortRows(SortKind::HighestVolume)->at(0).number, 40);
}

TEST_F(ListingTest, CustomPrintTextsFollowTheTicks) {
  FilmRecord r = Stock(42, 12.5f, 2, 7, "TEA");
  SetField(r.sku2, "S2");
  r.cost_price = 3.0f;
  r.on_order = 4;
  struct Case {
    std::vector<int> ticked;
    const char *heading, *row;
  } cases[] = {
      {{}, "Number, Description", "42, TEA"},
      {{2, 5, 9, 13, 14},
       "Number, SKU 2, Cost, On order, Tax code, In stock",
       "42, S2, 3.00, 4, Tax 1, 7"},
      {{0, 7, 16}, "Number, Description, Retail, Display category", "42, TEA, 12.50, "},
  };
  for (const Case& c : cases) {
    int32_t stored[kCustomFields] = {};
    for (int i : c.ticked) stored[i] = 2;
    const CustomFields fields = Customfields(stored);
    EXPECT_EQ(Customheading(fields), c.heading);
    EXPECT_EQ(Customrow(r, fields).substr(0, std::strlen(c.row)), c.row);
  }
}

TEST_F(ListingTest, PrintModesChooseTheirItemsAndScreenListsPage) {
  for (int64_t n = 100; n < 130; ++n) {
    FilmRecord r = Stock(n, 2.0f, 0, n % 3 == 0 ? 0 : 2);
    r.display_category = n % 2 ? 4 : 6;
    SetField(r.location, n == 111 ? "SHELF A" : "BACK");
    Store(r);
  }
  struct Case {
    int mode;
    std::optional<std::pair<std::string, std::string>> range;
    std::vector<std::optional<std::string>> prompts;
    int category;
    size_t rows;
    const char* first;
  } cases[] = {
      {kPrintInventoryFromNumber, std::pair("105", "109"), {}, 0, 5, "105"},
      {kPrintInventoryFromNumber, std::pair("105", "104"), {}, 0, 0, nullptr},
      {kPrintInventoryCost, std::pair("128", "200"), {}, 0, 2, "128"},
      {kPrintInventoryHeld, {}, {}, 0, 20, "100"},
      {kPrintInventoryCategory, {}, {}, 4, 15, "101"},
      {kPrintInventoryLocation, {}, {"shelf a"}, 0, 1, "111"},
      {kPrintInventoryCustom, std::pair("120", "121"), {}, 0, 2, "120, ITEM 120"},
  };
  for (const Case& c : cases) {
    listing_.range = c.range;
    listing_.category = c.category;
    for (const auto& p : c.prompts) platform_.queue_prompt(p);
    Printlistingmode(c.mode);
    const auto texts = Printed();
    if (!c.first) {
      EXPECT_TRUE(texts.empty()) << c.mode;
      continue;
    }
    ASSERT_GE(texts.size(), 1u) << c.mode;
    // The column heading, then per item its number and (but for custom) its columns.
    const size_t per_item = c.mode == kPrintInventoryCustom ? 1 : 6;
    EXPECT_EQ(texts.size(), 1 + c.rows * per_item) << c.mode;
    EXPECT_EQ(texts[1], c.first) << c.mode;
  }
  EXPECT_EQ(listing_.asked_highest, 129);
  EXPECT_EQ(G().settings.custom_print_fields[0], 2);  // none ticked: description

  // A page of thirteen from a number, then the rest, and an empty list.
  ScreenList list("Inventory list", Listingfill(kInventoryList, 110));
  ASSERT_TRUE(list.Load());
  EXPECT_EQ(list.rows().front().columns,
            (std::array<std::string, 4>{"110", "ITEM 110", "2", "2.00"}));
  EXPECT_TRUE(list.has_more());
  list.More();
  EXPECT_EQ(list.rows().size(), 7u);
  EXPECT_EQ(list.rows().back().number, 129);
  ScreenList none("Inventory list by category", Listingfill(kInventoryListCategory, 9));
  Showscreenlist(none);
  EXPECT_EQ(platform_.shown().back(), "Problem: No items on record.");
}

TEST_F(ListingTest, CustomerPrintsAndTheOverdueList) {
  for (int64_t n : {5, 6}) {
    MemberRecord m{};
    m.number = n;
    SetField(m.name, n == 5 ? "ADAMS" : "BAKER");
    SetField(m.road, "1 HIGH ST");
    SetField(m.telephone, "0123");
    m.balance = n == 5 ? 0.0f : 12.5f;
    ASSERT_TRUE(G().members.Insert(&m));
  }
  Printlistingmode(kPrintDebtors);
  EXPECT_EQ(Printed(), (std::vector<std::string>{"6", "BAKER", "1 HIGH ST", "12.50  Tel: 0123"}));

  // The overdue list: a taxable customer with a loan past due, its row and one under it.
  MemberRecord m{};
  m.number = 7;
  m.tax = 1;
  SetField(m.name, "CARTER");
  SetField(m.telephone, "0456");
  m.loan_item[0] = 1001, m.loan_item[1] = 1002;
  SetField(m.loan_out[0], "14:2001/03/2026");
  SetField(m.loan_due[0], "09:1510/03/2026");
  SetField(m.loan_due[1], "00:0020/03/2026");  // not yet due
  ASSERT_TRUE(G().members.Insert(&m));
  m.number = 8, m.tax = 0;  // not taxable: never on it
  ASSERT_TRUE(G().members.Insert(&m));
  ScreenList overdue("Customer overdue list", Listingfill(kCustomersOverdue));
  ASSERT_TRUE(overdue.Load());
  ASSERT_EQ(overdue.rows().size(), 2u);
  EXPECT_EQ(overdue.rows()[0].columns[1], "CARTER");
  EXPECT_EQ(overdue.rows()[0].columns[3], "Tel. 0456");
  EXPECT_EQ(overdue.rows()[1].columns,
            (std::array<std::string, 4>{"7", "1001 at 14:20", "on 01/03/2026", "4 days"}));
  RemoveFile("member.dat");
  Printlistingmode(kPrintDebtors);
  EXPECT_EQ(platform_.shown().back(), "Fatal error: Data file: film.dat, not present.");
}

}  // namespace
}  // namespace tilo
