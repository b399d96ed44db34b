// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "core/customer_file.h"
#include "core/inventory.h"
#include "core/startup.h"
#include "core/state.h"
#include "core/text.h"
#include "support/shop_fixture.h"
#include "upkeep/export.h"
#include "upkeep/import.h"

namespace tilo {
namespace {

using Lines = std::vector<std::string>;

// The lines joined by CR LF, with none after the last.
std::string Crlf(const Lines& lines) {
  std::string out;
  for (size_t i = 0; i < lines.size(); ++i) out += (i ? "\r\n" : "") + lines[i];
  return out;
}

class ScriptedExchange : public ExchangeView {
 public:
  std::optional<ExportChoice> export_form(const ExportChoice& defaults) override {
    offered = defaults;
    return choice;
  }
  std::optional<ExportFields> export_fields(bool) override { return fields; }
  std::optional<ImportColumns> import_columns(bool, const std::string& line,
                                              const ImportColumns& defaults) override {
    first_line = line;
    offered_columns = defaults;
    return columns ? columns : defaults;
  }
  ExportChoice offered, choice;
  ExportFields fields;
  ImportColumns offered_columns;
  std::optional<ImportColumns> columns;
  std::string first_line;
};

class ExchangeTest : public ShopTest {
 protected:
  void SetUp() override {
    ShopTest::SetUp();
    platform_.set_now(2026, 11, 23, 10, 5);
    MakeFreshShop();
    ASSERT_TRUE(OpenStore());
    install_exchange_view(&view_);
    FilmRecord tea{};
    tea.number = 1001;
    SetField(tea.description, "TEA, GREEN");
    SetField(tea.sku1, "5000&<1>");
    SetField(tea.location, "SHELF 1");
    SetField(tea.date_added, "23/11/2026");
    SetField(tea.last_used, "NEW");
    tea.cost_price = 1.5f, tea.retail_price = 2.25f, tea.quantity = 12, tea.reorder_quantity = 3;
    tea.tax = 2, tea.display_category = 15;
    FilmRecord soap{};
    soap.number = 1002;
    SetField(soap.description, "SOAP");
    SetField(soap.last_used, "NEW");
    soap.cost_price = 0.4f, soap.retail_price = 0.99f, soap.display_category = 12;
    ASSERT_TRUE(Insertnumber(tea) && Insertnumber(soap));
    MemberRecord smith{};
    smith.number = 7;
    SetField(smith.name, "SMITH & SONS");
    SetField(smith.road, "1 HIGH ST");
    SetField(smith.town, "LEEDS");
    SetField(smith.postcode, "LS1");
    SetField(smith.telephone, "0113");
    smith.tax = 1, smith.balance = 12.5f, smith.credit_limit = 100, smith.group = 1;
    smith.terms = 1;
    CompleteNewMember(smith);
    ASSERT_TRUE(Insertmember(smith));
    platform_.clear_record();
  }
  void TearDown() override {
    install_exchange_view(nullptr);
    ShopTest::TearDown();
  }
  ScriptedExchange view_;
};

// A whole XML file of one record: "tag=value|tag=value..." gives its elements.
std::string Xml(const std::string& record, const std::string& elements) {
  Lines lines = {"<?xml version=\"1.0\" encoding=\"WINDOWS-1252\"?>", "<document>",
                 "<" + record + ">"};
  size_t at = 0;
  while (at <= elements.size()) {
    size_t end = std::min(elements.find('|', at), elements.size());
    const std::string pair = elements.substr(at, end - at);
    const std::string tag = pair.substr(0, pair.find('='));
    lines.push_back("<" + tag + ">" + pair.substr(tag.size() + 1) + "</" + tag + ">");
    at = end + 1;
  }
  lines.push_back("</" + record + ">");
  lines.push_back("</document>");
  return Crlf(lines);
}

struct ExportCase {
  const char* name;
  ExportChoice choice;
  ExportFields fields;
  std::string bytes;  // of out.txt
  std::string shown;  // the last message
};

ExportFields Ticks(std::array<bool, 10> ticks, bool entire = false) {
  return {ticks, entire};
}
constexpr std::array<bool, 10> kAll = {1, 1, 1, 1, 1, 1, 1, 1, 1, 1};

ExportChoice Choice(const char* start, const char* finish, bool customers, ExportFormat format,
                    int category = -1, int size = 1, bool bold_title = true) {
  ExportChoice c;
  c.start = start, c.finish = finish, c.customers = customers, c.format = format;
  c.category = category, c.text_size = size, c.bold_title = bold_title;
  return c;
}

TEST_F(ExchangeTest, ExportWritesEachFormatByteForByte) {
  const ExportCase cases[] = {
      {"items as text, a comma quoted", Choice("1", "1002", false, ExportFormat::Text), Ticks(kAll),
       "1001,\"TEA, GREEN\",5000&<1>,,1.50,15,2.25,12,3,1,\r\n1002,SOAP,,,0.40,12,0.99,0,0,0,\r\n",
       "File export: Complete."},
      {"items entire, with the first line", Choice("1001", "1001", false, ExportFormat::Text),
       Ticks({}, true),
       "Number,Description,SKU1,SKU2,Cost,DisplayCat,Retail,Quantity,Reorder,Tax,Category,Format,"
       "Last,MinOrder,SKU3,SKU4,Location,Website,WebImage,Trade,OrderCode,Added,Sold,Notes\r\n"
       "1001,\"TEA, GREEN\",5000&<1>,,1.50,15,2.25,12,3,1,,,NEW,0,,,SHELF 1,,,0.00,,23/11/2026,0,,"
       "\r\n",
       "File export: Complete."},
      {"items as HTML", Choice("1", "5000", false, ExportFormat::Html, -1, 2, false),
       Ticks({1, 1, 0, 0, 0, 0, 1, 0, 0, 1}),
       Crlf({"<HTML><BODY>", "<FONT SIZE='2'>", "<B>1001</B> TEA, GREEN 2.25 Taxable,<BR>",
             "<B>1002</B> SOAP 0.99 Non taxable,<BR>", "</BODY></HTML>"}),
       "File export: Complete."},
      {"items as XML, one category", Choice("1", "1002", false, ExportFormat::Xml, 15), Ticks({}),
       Xml("item",
           "number=1001|description=TEA, GREEN|sku1=5000&amp;&lt;1&gt;|sku2=|sku3=|sku4=|"
           "cost_price=1.50|trade_price=0.00|retail_price=2.25|quantity=12|reorder_quantity=3|"
           "tax=2|display_category=15|category=|format=|date_added=23/11/2026|last_used=NEW|"
           "order_code=|minimum_order=0|total_sold=0|location=SHELF 1|website=|web_image=|notes="),
       "File export: Complete."},
      {"customers as XML", Choice("7", "7", true, ExportFormat::Xml), Ticks({}),
       Xml("customer",
           "number=7|name=SMITH &amp; SONS|road=1 HIGH ST|area=|town=LEEDS|postcode=LS1|"
           "telephone=0113|telephone_extension=|telephone2=|contact=|comment=|comment2=|tax=1|"
           "transactions=0|credit_card=|credit_card_expiry=|email=|shipping_address_1=|"
           "shipping_address_2=|shipping_address_3=|shipping_address_4=|shipping_address_5="),
       "File export: Complete."},
      {"a start below 1", Choice("0", "5", false, ExportFormat::Text), Ticks(kAll), "",
       "Problem: Invalid range"},
      {"a finish below the start", Choice("9", "5", false, ExportFormat::Text), Ticks(kAll), "",
       "Problem: Invalid range"},
      {"above the highest number", Choice("1003", "9999", false, ExportFormat::Text), Ticks(kAll),
       "", "Problem: No items in range."},
  };
  for (const ExportCase& c : cases) {
    SCOPED_TRACE(c.name);
    RemoveFile("out.txt");
    platform_.clear_record();
    view_.choice = c.choice;
    view_.fields = c.fields;
    platform_.queue_prompt("out.txt");
    Exportfile();
    EXPECT_EQ(view_.offered.finish, "1002");
    EXPECT_EQ(Bytes("out.txt"), c.bytes);
    ASSERT_FALSE(platform_.shown().empty());
    EXPECT_EQ(platform_.shown().back(), c.shown);
  }
}

// The numbers of the records in a data file, in file order.
template <typename Record>
std::vector<int64_t> Numbers(const std::string& bytes) {
  std::vector<int64_t> numbers;
  for (size_t at = 0; at + sizeof(Record) <= bytes.size(); at += sizeof(Record)) {
    int64_t n;
    std::memcpy(&n, bytes.data() + at, sizeof n);
    numbers.push_back(n);
  }
  return numbers;
}

FilmRecord ItemAt(const std::string& bytes, size_t position) {
  FilmRecord r;
  std::memcpy(&r, bytes.data() + position * sizeof r, sizeof r);
  return r;
}

ImportColumns Boxes(std::vector<int> boxes, bool merge = false) {
  return {std::move(boxes), merge};
}

// A spreadsheet's file as Python's csv writes it: a UTF-8 mark, CR LF, quotes
// only where a field needs them; the last line has lost its line end.
TEST_F(ExchangeTest, ImportTakesASpreadsheetsRowsAsTheColumnsSay) {
  const std::string old_film = Bytes("film.dat");
  WriteBytes("stock.csv",
             "\xEF\xBB\xBFNumber,Description,Retail,In stock,Where\r\n"
             "2001,\"CAKE, LEMON\",1.80,5,\"Shelf \"\"A\"\"\"\r\n"
             "2002,caf\xC3\xA9 cr\xC3\xA8me,0.95,-2,\r\n"
             "2003,X,1.00,1,\r\n"
             "2001,CAKE AGAIN,2.00,1,\r\n"
             "0,ZERO,1.00,1,\r\n"
             "2005,LAST ONE,3.00,2,Back");
  platform_.queue_prompt("1");
  platform_.queue_file("stock.csv");
  // Number, Description, Retail price, In stock, Taxable on Number's column, Location.
  view_.columns = Boxes({1, 2, 0, 0, 0, 0, 3, 4, 0, 1, 0, 0, 0, 0, 5, 0, 0});
  Importfile();

  EXPECT_EQ(view_.first_line, "Number,Description,Retail,In stock,Where");
  EXPECT_EQ(view_.offered_columns.boxes,
            (std::vector<int>{1, 2, 3, 4, 5, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
  EXPECT_EQ(platform_.shown(),
            (Lines{"File import: 7 records of 5 fields", "Warning: All existing data will be lost.",
                   "Import inconsistancy: Item 2001 duplicated",
                   "Inventory import complete: TILO will now close down"}));
  EXPECT_EQ(Bytes(kReplacedFile), old_film);
  const std::string film = Bytes("film.dat");
  ASSERT_EQ(Numbers<FilmRecord>(film), (std::vector<int64_t>{2001, 2002, 2001, 2005}));
  const FilmRecord cake = ItemAt(film, 0), cafe = ItemAt(film, 1), last = ItemAt(film, 3);
  EXPECT_EQ(FieldText(cake.description), "CAKE, LEMON");
  EXPECT_EQ(FieldText(cake.location), "Shelf \"A\"");
  EXPECT_EQ(FieldText(cake.last_used), "NEW");
  EXPECT_FLOAT_EQ(cake.retail_price, 1.80f);
  EXPECT_EQ(cake.quantity, 5);
  EXPECT_EQ(cake.tax, 1);
  EXPECT_EQ(cake.display_category, 14);
  EXPECT_EQ(cake.stock_picture, 1);
  EXPECT_EQ(FieldText(cafe.description), "CAF\xC9 CR\xC8ME");
  EXPECT_EQ(cafe.quantity, 0);
  EXPECT_EQ(FieldText(last.location), "Back");
  EXPECT_TRUE(G().films.Contains(2005));
  EXPECT_FALSE(G().films.Contains(1001));
}

struct ImportCase {
  const char* name;
  const char* kind;
  std::optional<std::string> csv;  // none: the file is missing
  std::optional<ImportColumns> columns;
  int cancel_at;
  Lines shown;
  std::vector<int64_t> film;     // empty: film.dat as it was
  std::vector<int64_t> members;  // empty: member.dat as it was
};

// Whatever fails or is cancelled, the data files stay byte for byte as they
// were and nothing is left aside.
TEST_F(ExchangeTest, ImportRefusesOrCancelsWithoutTouchingTheFiles) {
  ASSERT_EQ(Fetchfilm(1002), 1002);
  ASSERT_TRUE(Removenumber());  // a deleted slot that a merge leaves alone
  const std::string count3 = "File import: 3 records of 2 fields";
  const std::string warning = "Warning: All existing data will be lost.";
  const std::string done = "Inventory import complete: TILO will now close down";
  const std::string abc = "3001,AAA\r\n3002,BBB\n3003,CCC\r\n";
  const ImportCase cases[] = {
      {"an empty file", "1", "", {}, -1, {"Problem: File has no content"}, {}, {}},
      {"a missing file", "1", std::nullopt, {}, -1, {"Fatal error: File not present."}, {}, {}},
      {"a quote never closed",
       "1",
       "1,\"ABC\r\n",
       {},
       -1,
       {"Problem: Non recognised format"},
       {},
       {}},
      {"no valid row",
       "1",
       "1,X\r\n0,ABC\r\n",
       {},
       -1,
       {"File import: 2 records of 2 fields", warning, "Problem: No valid items"},
       {},
       {}},
      {"Cancel at the second row", "1", abc, {}, 2, {count3, warning}, {}, {}},
      {"no number column", "1", abc, Boxes({0, 2}), -1, {count3}, {}, {}},
      {"a merge",
       "1",
       "1001,TAKEN\r\n3001,NEW ONE\r\n",
       Boxes({1, 2}, true),
       -1,
       {"File import: 2 records of 2 fields", done},
       {1001, -1, 3001},
       {}},
      {"customers",
       "2",
       "8,JONES LTD,2 low rd\r\n9,A,\r\n",
       {},
       -1,
       {"File import: 2 records of 3 fields", warning,
        "File import complete: TILO will now close down"},
       {},
       {8}},
      {"no valid customer",
       "2",
       "9,A\r\n",
       {},
       -1,
       {"File import: 1 records of 2 fields", warning, "Problem: No valid items"},
       {},
       {}},
  };
  for (const ImportCase& c : cases) {
    SCOPED_TRACE(c.name);
    const std::string film = Bytes("film.dat"), members = Bytes("member.dat");
    platform_.clear_record();
    platform_.cancel_progress_at = c.cancel_at;
    platform_.progress_steps = 0;
    RemoveFile("in.csv");
    if (c.csv) WriteBytes("in.csv", *c.csv);
    platform_.queue_prompt(c.kind);
    platform_.queue_file("in.csv");
    view_.columns = c.columns;
    Importfile();
    EXPECT_EQ(platform_.shown(), c.shown);
    if (c.film.empty())
      EXPECT_EQ(Bytes("film.dat"), film);
    else
      EXPECT_EQ(Numbers<FilmRecord>(Bytes("film.dat")), c.film);
    if (c.members.empty())
      EXPECT_EQ(Bytes("member.dat"), members);
    else
      EXPECT_EQ(Numbers<MemberRecord>(Bytes("member.dat")), c.members);
    EXPECT_FALSE(FileExists("film.dat.import") || FileExists("member.dat.import"));
  }
  ASSERT_EQ(Fetchmember(8), 8);
  EXPECT_EQ(FieldText(G().member.name), "JONES LTD");
  EXPECT_EQ(FieldText(G().member.road), "2 LOW RD");
  EXPECT_EQ(G().member.tax, 1);
  EXPECT_EQ(G().member.terms, 1);
}

// What an item or a customer holds that both export and import carry.
std::string ItemFields(const FilmRecord& r) {
  char text[512];
  std::snprintf(text, sizeof text, "%s|%s|%s|%.2f|%d|%.2f|%d|%d|%d|%s|%d|%.2f|%s|%s|%s",
                r.description, r.sku1, r.sku2, r.cost_price, r.display_category, r.retail_price,
                r.quantity, r.reorder_quantity, r.tax != 0, r.order_code, r.minimum_order,
                r.trade_price, r.location, r.website, r.web_image);
  return text;
}

std::string CustomerFields(const MemberRecord& r) {
  char text[512];
  std::snprintf(text, sizeof text, "%s|%s|%s|%s|%s|%s|%lld|%.2f|%.2f", r.name, r.road, r.area,
                r.town, r.postcode, r.telephone, static_cast<long long>(r.tax), r.balance,
                r.credit_limit);
  return text;
}

// Items written whole and read back through the matching columns, customers
// through the ten columns that line up with the import's first ten rows.
TEST_F(ExchangeTest, ExportThenImportGivesTheSameFields) {
  ASSERT_EQ(Fetchfilm(1001), 1001);
  SetField(G().film.order_code, "ORD-9");
  G().film.minimum_order = 6, G().film.trade_price = 1.75f;
  ASSERT_TRUE(Rewritefilm());
  const std::string tea = (Fetchfilm(1001), ItemFields(G().film));
  const std::string soap = (Fetchfilm(1002), ItemFields(G().film));
  const std::string smith = (Fetchmember(7), CustomerFields(G().member));

  view_.choice = Choice("1", "9999", false, ExportFormat::Text);
  view_.fields = Ticks({}, true);
  platform_.queue_prompt("items.txt");
  Exportfile();
  platform_.queue_prompt("1");
  platform_.queue_file("items.txt");
  view_.columns = Boxes({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 21, 0, 14, 20, 17, 18, 19});
  Importfile();

  view_.choice = Choice("1", "9999", true, ExportFormat::Text);
  view_.fields = Ticks(kAll);
  platform_.queue_prompt("customers.txt");
  Exportfile();
  platform_.queue_prompt("2");
  platform_.queue_file("customers.txt");
  view_.columns.reset();
  Importfile();

  ASSERT_EQ(Fetchfilm(1001), 1001);
  EXPECT_EQ(ItemFields(G().film), tea);
  ASSERT_EQ(Fetchfilm(1002), 1002);
  EXPECT_EQ(ItemFields(G().film), soap);
  ASSERT_EQ(Fetchmember(7), 7);
  EXPECT_EQ(CustomerFields(G().member), smith);
  EXPECT_EQ(platform_.shown().back(), "File import complete: TILO will now close down");
}

}  // namespace
}  // namespace tilo
