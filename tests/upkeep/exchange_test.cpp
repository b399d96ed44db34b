// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

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
  const std::string xml_head = "<?xml version=\"1.0\" encoding=\"WINDOWS-1252\"?>";
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
       Crlf({xml_head,
             "<document>",
             "<item>",
             "<number>1001</number>",
             "<description>TEA, GREEN</description>",
             "<sku1>5000&amp;&lt;1&gt;</sku1>",
             "<sku2></sku2>",
             "<sku3></sku3>",
             "<sku4></sku4>",
             "<cost_price>1.50</cost_price>",
             "<trade_price>0.00</trade_price>",
             "<retail_price>2.25</retail_price>",
             "<quantity>12</quantity>",
             "<reorder_quantity>3</reorder_quantity>",
             "<tax>2</tax>",
             "<display_category>15</display_category>",
             "<category></category>",
             "<format></format>",
             "<date_added>23/11/2026</date_added>",
             "<last_used>NEW</last_used>",
             "<order_code></order_code>",
             "<minimum_order>0</minimum_order>",
             "<total_sold>0</total_sold>",
             "<location>SHELF 1</location>",
             "<website></website>",
             "<web_image></web_image>",
             "<notes></notes>",
             "</item>",
             "</document>"}),
       "File export: Complete."},
      {"customers as text", Choice("1", "9", true, ExportFormat::Text), Ticks(kAll),
       "7,SMITH & SONS,1 HIGH ST,,LEEDS,LS1,0113,1,12.50,100.00,\r\n", "File export: Complete."},
      {"customers as HTML", Choice("1", "9", true, ExportFormat::Html),
       Ticks({1, 1, 1, 0, 0, 0, 0, 1, 1, 0}),
       Crlf({"<HTML><BODY>", "<FONT SIZE='1'>",
             "<B>7</B><B> SMITH &amp; SONS</B><B> 1 HIGH ST</B> 1 12.50<BR>", "</BODY></HTML>"}),
       "File export: Complete."},
      {"customers as XML", Choice("7", "7", true, ExportFormat::Xml), Ticks({}),
       Crlf({xml_head,
             "<document>",
             "<customer>",
             "<number>7</number>",
             "<name>SMITH &amp; SONS</name>",
             "<road>1 HIGH ST</road>",
             "<area></area>",
             "<town>LEEDS</town>",
             "<postcode>LS1</postcode>",
             "<telephone>0113</telephone>",
             "<telephone_extension></telephone_extension>",
             "<telephone2></telephone2>",
             "<contact></contact>",
             "<comment></comment>",
             "<comment2></comment2>",
             "<tax>1</tax>",
             "<transactions>0</transactions>",
             "<credit_card></credit_card>",
             "<credit_card_expiry></credit_card_expiry>",
             "<email></email>",
             "<shipping_address_1></shipping_address_1>",
             "<shipping_address_2></shipping_address_2>",
             "<shipping_address_3></shipping_address_3>",
             "<shipping_address_4></shipping_address_4>",
             "<shipping_address_5></shipping_address_5>",
             "</customer>",
             "</document>"}),
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

}  // namespace
}  // namespace tilo
