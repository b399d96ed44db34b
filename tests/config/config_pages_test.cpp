// SPDX-License-Identifier: MIT
// The configuration pages' silent rules: what typed text each field keeps, and
// what it quietly refuses.
#include "config/config_pages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <functional>

#include "config/form_rules.h"
#include "core/state.h"
#include "core/text.h"
#include "documents/print_service.h"
#include "documents/recording_target.h"
#include "support/shop_fixture.h"

namespace tilo {
namespace {

using ::testing::ElementsAre;

class ConfigPagesTest : public ShopTest {
 protected:
  void SetUp() override {
    ShopTest::SetUp();
    platform_.set_now(2026, 6, 15);
    install_print_service(&printers_);
    s_ = {};
    s_.till_float = 100.0f;
    s_.trade_percent = 5.0f;
    s_.drawer_open_char = 7;
    s_.drawer_repeat = 3;
    s_.first_year = 2024;
    s_.tax1_rate = 2000;
    s_.custom_line_store_name = 1;
    s_.history_from_day = 1;
    s_.history_from_month = 1;
    s_.history_from_year = 2025;
    SetCategoryCode(s_, 1, "ALC");
    SetField(s_.tax1_name, "VAT 1");
  }
  void TearDown() override {
    install_print_service(nullptr);
    ShopTest::TearDown();
  }
  static const PageTable& Page(const std::string& tab) {
    for (const PageTable& page : ConfigurationPages())
      if (page.tab == tab) return page;
    for (const PageTable* form : {&TaxForm(), &CustomReceiptForm(), &InvoiceForm(), &HeadingForm()})
      if (form->tab == tab) return *form;
    throw std::runtime_error(tab);
  }
  // Fills the page from the record, lets `change` alter its values, stores it.
  void Edit(const std::string& tab, const std::function<void(PageValues&)>& change) {
    PageValues values = FillPage(Page(tab), s_);
    change(values);
    StorePage(Page(tab), values, s_);
  }
  void Type(const std::string& tab, const std::string& key, const std::string& text) {
    Edit(tab, [&](PageValues& v) { v.at(key).text = text; });
  }

  SettingsRecord s_{};
  RecordingPrintService printers_;
};

TEST(FormRules, NumbersReadAsTheCLibraryReadsThem) {
  struct Case {
    const char* text;
    int64_t whole;
    double real;
  } cases[] = {
      {"", 0, 0},         {"abc", 0, 0},
      {"12abc", 12, 12},  {"  -7", -7, -7},
      {"5.62%", 5, 5.62}, {",5", 0, 0},
      {".5", 0, 0.5},     {"+3", 3, 3},
      {"1e3", 1, 1},      {"99999999999999999999", INT64_MAX, 99999999999999999999.0},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(LeadingInteger(c.text), c.whole) << c.text;
    EXPECT_DOUBLE_EQ(LeadingReal(c.text), c.real) << c.text;
  }
}

TEST(FormRules, TicksAreShownForAnyNonZeroAndStoredByTheirCoding) {
  struct Case {
    TickCoding coding;
    int64_t field;
    bool shown;
    int64_t ticked, clear;
  } cases[] = {
      {kTick20, 0, false, 2, 0}, {kTick20, 7, true, 2, 0},  {kTick10, 1, true, 1, 0},
      {kTick01, 0, true, 0, 1},  {kTick01, 5, false, 0, 1}, {kTick02, 2, false, 0, 2},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(TickShown(c.field, c.coding), c.shown);
    EXPECT_EQ(TickStored(true, c.coding), c.ticked);
    EXPECT_EQ(TickStored(false, c.coding), c.clear);
  }
}

template <auto Field>
std::string Number(const SettingsRecord& s) {
  return std::to_string(s.*Field);
}
template <auto Field>
std::string Text(const SettingsRecord& s) {
  return FieldText(s.*Field);
}

TEST_F(ConfigPagesTest, EditBoxesKeepWhatLiesWithinTheirLimitsAndQuietlyDropTheRest) {
  using S = SettingsRecord;
  struct Case {
    const char* tab;
    const char* key;
    std::function<std::string(const SettingsRecord&)> field;
    std::vector<std::pair<std::string, std::string>> typed_kept;  // in turn
  } cases[] = {
      // clang-format off
      {"General", "last_inventory_number", Number<&S::last_inventory_number>,
       {{"", "-1"}, {"500abc", "499"}}},
      {"General", "till_float", Number<&S::till_float>,
       {{"-5", "100.000000"}, {"0", "0.000000"}, {"abc", "0.000000"}}},
      {"General", "trade_percent", Number<&S::trade_percent>,
       {{"100", "5.000000"}, {"99.99", "99.989998"}}},
      {"General", "category1", [](auto& s) { return CategoryCode(s, 1); },
       {{"AB", "ALC"}, {"wxyz", "WXY"}}},
      // "€" is one byte of Windows-1252, three of UTF-8: the limit counts bytes kept.
      {"General", "tax1_name", Text<&S::tax1_name>, {{"€€€€€€€", "\x80\x80\x80\x80\x80"}}},
      {"Till configuration", "drawer_open_char", Number<&S::drawer_open_char>,
       {{"256", "7"}, {"255", "255"}}},
      {"Till configuration", "drawer_repeat", Number<&S::drawer_repeat>,
       {{"0", "3"}, {"11", "3"}, {"10", "10"}}},
      {"Pole configuration", "pole_columns1", Number<&S::pole_columns1>, {{"-3x", "-3"}}},
      {"Pole configuration", "pole_passive_text", Text<&S::pole_passive_text>,
       {{std::string(40, 'p'), std::string(31, 'p')}}},
      {"TAX CONTROL", "tax1_rate", Number<&S::tax1_rate>, {{"10000", "2000"}, {"", "0"}}},
      {"TAX CONTROL", "tax1_threshold", Number<&S::tax1_threshold>,
       {{"2.005", std::to_string(double(2.005f))}}},
      {"Custom receipt", "line_store_name", Number<&S::custom_line_store_name>,
       {{"41", "1"}, {"-1", "-1"}}},
      {"Invoices", "line_items", Number<&S::invoice_line_items>, {{"80", "80"}, {"81", "80"}}},
      {"Print heading", "site_road", [](auto&) { return FieldText(G().heading.site_road); },
       {{std::string(45, 'r'), std::string(39, 'r')}}},
      {"Receipts", "receipt_footer", Text<&S::receipt_footer>,
       {{std::string(254, 'f'), std::string(251, 'f')}}},
      // clang-format on
  };
  for (const Case& c : cases)
    for (const auto& [typed, kept] : c.typed_kept) {
      Type(c.tab, c.key, typed);
      EXPECT_EQ(c.field(s_), kept) << c.key << " <- " << typed;
    }
  // The emptied start point shows as 0 next time.
  Type("General", "last_inventory_number", "");
  EXPECT_EQ(FillPage(Page("General"), s_).at("last_inventory_number").text, "0");
}

TEST_F(ConfigPagesTest, SecondCurrencyIsKeptOnlyWhileTickedAndHiddenWhenOff) {
  Edit("General", [](PageValues& v) {
    v.at("second_currency_on").choice = 1;
    v.at("second_currency_symbol").text = "usd";
    v.at("second_currency_rate").text = "1.2345";
  });
  EXPECT_EQ(FieldText(s_.second_currency_symbol), "USD");
  EXPECT_EQ(s_.second_currency_rate, double(1.2345f));
  Edit("General", [](PageValues& v) {
    v.at("second_currency_on").choice = 0;
    v.at("second_currency_symbol").text = "EUR";
  });
  EXPECT_EQ(FieldText(s_.second_currency_symbol), "USD");
  EXPECT_EQ(FillPage(Page("General"), s_).at("second_currency_symbol").text, "");
}

TEST_F(ConfigPagesTest, HistoryFromRefusesAFutureDateAsAWhole) {
  struct Case {
    int day, month, year_choice;
    int stored_day, stored_month, stored_year;
  } cases[] = {
      {15, 5, 2, 1, 1, 2025},     // tomorrow: nothing moves
      {30, 4, 2, 31, 5, 2026},    // 31 May is stored
      {30, 10, 1, 31, 11, 2025},  // 31 November too, as it stands
  };
  for (const Case& c : cases) {
    s_.history_from_day = 1, s_.history_from_month = 1, s_.history_from_year = 2025;
    Edit("General", [&](PageValues& v) {
      v.at("history_from").date[0] = c.day;
      v.at("history_from").date[1] = c.month;
      v.at("history_from").date[2] = c.year_choice;
    });
    EXPECT_EQ(s_.history_from_day, c.stored_day);
    EXPECT_EQ(s_.history_from_month, c.stored_month);
    EXPECT_EQ(s_.history_from_year, c.stored_year);
  }
}

TEST_F(ConfigPagesTest, ListsStoreTheirSelectionWithTheirOffset) {
  s_.default_category = 0;
  PageValues general = FillPage(Page("General"), s_);
  EXPECT_EQ(s_.default_category, 15);  // showing the page sets it at once
  EXPECT_EQ(general.at("default_category").choice, 14);
  Edit("General", [](PageValues& v) {
    v.at("start_category").choice = 18;    // "ALL"
    v.at("default_category").choice = 18;  // beyond the 18 codes: kept
    v.at("discount_button_rate").choice = 80;
  });
  EXPECT_EQ(s_.start_category, 19);
  EXPECT_EQ(s_.default_category, 15);
  EXPECT_EQ(s_.discount_button_rate, 80);
  Edit("Terms", [](PageValues& v) {
    v.at("band_discount3").choice = 4;
    v.at("band_credit_period8").choice = 7;
  });
  EXPECT_EQ(BandDiscount(s_, 3), 5);
  EXPECT_EQ(s_.band_discount[2], 5);
  EXPECT_EQ(s_.band_credit_period[7], 8);
  s_.drawer_mode = 7;
  EXPECT_EQ(FillPage(Page("Till configuration"), s_).at("drawer_mode").choice, 1);
}

TEST_F(ConfigPagesTest, PrinterChoiceKeepsTheNameAndPortOfThePrinterChosen) {
  printers_.printer_list = {{"Kitchen", "usb://Epson/TM"}, {"PDF", "printouts"}};
  SetField(s_.printer_name, "PDF");
  PageValues receipts = FillPage(Page("Receipts"), s_);
  EXPECT_THAT(receipts.at("printer").options, ElementsAre("Default", "Kitchen", "PDF"));
  EXPECT_EQ(receipts.at("printer").choice, 2);
  EXPECT_EQ(s_.receipt_printer_index, 2);
  Edit("Receipts", [](PageValues& v) { v.at("printer").choice = 1; });
  EXPECT_EQ(FieldText(s_.printer_name), "Kitchen");
  EXPECT_EQ(FieldText(s_.printer_port), "usb://Epson/TM");
  Edit("Receipts", [](PageValues& v) { v.at("printer").choice = 0; });
  EXPECT_EQ(FieldText(s_.printer_name), "");
  EXPECT_TRUE(platform_.messages.empty());

  // No answer from the print system: the page is blank and stores its blank state.
  printers_.printers_fail = true;
  SetField(s_.receipt_footer, "Thanks");
  s_.print_confirm = 0;
  receipts = FillPage(Page("Receipts"), s_);
  EXPECT_EQ(receipts.at("receipt_footer").text, "");
  StorePage(Page("Receipts"), receipts, s_);
  EXPECT_EQ(FieldText(s_.receipt_footer), "");
  EXPECT_EQ(s_.print_confirm, 1);
  EXPECT_THAT(platform_.shown(),
              ElementsAre("Problem: Unable to get printers", "Problem: Unable to get printers"));
}

TEST_F(ConfigPagesTest, HeaderFontKeepsTheChoiceWithItsHeightInPrinterPixels) {
  Chooseheaderfont(s_);  // cancelled: nothing changes
  EXPECT_EQ(FieldText(s_.invoice_font_face), "");
  printers_.chosen_font = ChosenFont{{"Georgia", 0, 0, 700, true, false, false}, 14};
  Chooseheaderfont(s_);
  EXPECT_EQ(FieldText(s_.invoice_font_face), "Georgia");
  EXPECT_EQ(s_.invoice_font_height, -(300 * 14 / 72));
  EXPECT_EQ(s_.invoice_font_weight, 700);
  EXPECT_EQ(s_.invoice_font_italic, 1);
}

TEST_F(ConfigPagesTest, PreviewKeepsTheTextsAndLineSettingsItShows) {
  WriteBytes("ports.cfg", "COM1=" + folder_ + "/no-such-line\n");
  const PageTable& pole = Page("Pole configuration");
  PageValues values = FillPage(pole, s_);
  values.at("pole_passive_text").text = "HELLO";
  values.at("pole_baud").choice = 3;
  values.at("pole_columns1").text = "9";
  values.at("pole_enabled").choice = 1;
  for (const FieldRule& rule : pole.rules)
    if (rule.key == "preview") rule.press(s_, values);
  EXPECT_EQ(FieldText(s_.pole_passive_text), "HELLO");
  EXPECT_EQ(s_.pole_baud, 3);
  EXPECT_EQ(s_.pole_columns1, 0);  // not one of the preview's values
  EXPECT_EQ(s_.pole_enabled, 0);
}

TEST_F(ConfigPagesTest, DeviceOfAPortIsKeptInPortsCfg) {
  WriteBytes("ports.cfg", "# till\nCOM2=/dev/old\nLPT1=/dev/lp5\n");
  struct Case {
    std::optional<std::string> answer;
    std::string file;
  } cases[] = {
      {std::nullopt, "# till\nCOM2=/dev/old\nLPT1=/dev/lp5\n"},
      {"/dev/ttyUSB0", "# till\nLPT1=/dev/lp5\nCOM2=/dev/ttyUSB0\n"},
      {"", "# till\nLPT1=/dev/lp5\n"},
  };
  for (const Case& c : cases) {
    platform_.queue_prompt(c.answer);
    EXPECT_EQ(Choosedevice(1), c.answer.has_value());
    EXPECT_EQ(Bytes("ports.cfg"), c.file);
  }
  EXPECT_EQ(PortChoice(8, true), "LPT1:  /dev/lp5");
  EXPECT_EQ(PortChoice(1, false), "COM2  /dev/ttyS1");
}

}  // namespace
}  // namespace tilo
