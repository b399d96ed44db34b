// SPDX-License-Identifier: MIT
// Barcode labels drawn on the recording target: the EAN-13 digits, where each
// layout puts its symbols and words, the box's fallbacks and refusals, and the
// command's job from the box to the printer.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "core/customer_file.h"
#include "core/state.h"
#include "core/text.h"
#include "documents/labels.h"
#include "documents/print_service.h"
#include "documents/recording_target.h"
#include "sale/sale_fixture.h"

namespace tilo {
namespace {

using ::testing::ElementsAre;
using ::testing::IsSupersetOf;

class ScriptedLabelView : public LabelView {
 public:
  bool barcode_form(LabelSettings& settings) override {
    settings = answer;
    return true;
  }
  LabelSettings answer;
};

class LabelsTest : public SaleTest {
 protected:
  void SetUp() override {
    SaleTest::SetUp();
    ASSERT_TRUE(LoadCustomerIndex());
    install_print_service(&printers_);
    install_label_view(&view_);
    SetField(G().settings.currency_symbol, "$");
    SetField(G().heading.site_name, "SHOP");
    G().settings.tax1_switch = 1;
    G().settings.tax1_rate = 2000;
    G().settings.tax2_switch = 0;
    Stock(1001, 10.00f, 1, 5, "GIN");
    Stock(1003, 2.50f, 0, 5, "TEA");
    MemberRecord m{};
    m.number = 7;
    SetField(m.name, "ANN SMITH");
    CompleteNewMember(m);
    ASSERT_TRUE(Insertmember(m));
  }
  void TearDown() override {
    install_label_view(nullptr);
    install_print_service(nullptr);
    SaleTest::TearDown();
  }
  RecordingPrintService printers_;
  ScriptedLabelView view_;
};

TEST_F(LabelsTest, EanDigitsArePaddedCutAndChecked) {
  const struct {
    const char* text;
    const char* digits;
  } cases[] = {
      {"5", "0000000000055"},              // eleven zeros, then the check digit
      {"500029922500", "5000299225004"},   // a real article number
      {"5000299225009", "5000299225004"},  // a 13th digit gives way to the check digit
      {"000000000000", "0000000000000"},   // a check digit of 10 is 0
      {"400638133393", "4006381333931"},
  };
  for (const auto& c : cases) EXPECT_EQ(Ean13digits(c.text), c.digits) << c.text;
  const std::string modules = Ean13modules("5000299225004");
  EXPECT_EQ(modules.size(), 95u);
  EXPECT_EQ(modules.substr(0, 3) + modules.substr(45, 5) + modules.substr(92), "101" "01010" "101");
}

// A page of 0.01 mm on the recording device: W is 2400 dots at 300 dpi, 20320.
TEST_F(LabelsTest, EachLayoutPlacesItsSymbolsAndWords) {
  struct Case {
    const char* what;
    LabelSettings s;
    std::vector<std::string> calls;  // among the page's calls
    int next_page;                   // page_number after the page
  };
  LabelSettings spine;  // Code 39 items with the store and the price with tax
  spine.range_start = 1000;
  spine.range_finish = 1003;
  spine.include_store = spine.include_price = true;
  LabelSettings below = spine;  // the price under the words, without tax
  below.include_store = false;
  below.price_below = below.price_without_tax = true;
  below.element_width = 50;
  LabelSettings two;  // EAN customers in two columns
  two.layout = kTwoColumn;
  two.barcode_type = kEan13;
  two.element_width = 50;
  two.source = kLabelCustomers;
  two.range_start = 1;
  two.range_finish = 100;
  LabelSettings three;  // Code 39 numbers, three a row, three a sheet
  three.layout = kThreeColumn;
  three.source = kLabelAllNumbers;
  three.range_start = 1;
  three.range_finish = 4;
  three.labels_per_sheet = 3;
  LabelSettings repeat = three;  // one item, priced, EAN
  repeat.source = kLabelRepeat;
  repeat.barcode_type = kEan13;
  repeat.range_start = 1003;
  repeat.quantity = 2;
  repeat.include_price = true;

  const Case cases[] = {
      {"spine",
       spine,
       {"rectangle 3600 -400 3640 -1400", "text_out 7240 -800 SHOP  1001  GIN $12.00",
        "rectangle 3600 -2090 3640 -3090", "text_out 7240 -2490 SHOP  1003  TEA $2.50"},
       1},
      {"below", below, {"text_out 8150 -600 1001  GIN", "text_out 8150 -1100 $10.00"}, 1},
      {"two",
       two,
       {"rectangle 2580 -400 2630 -1520", "set_text_align left",
        "text_out 2580 -1600 000000000007  9", "set_text_align centre",
        "text_out 5080 -2200 ANN SMITH"},
       1},
      {"three",
       three,
       {"rectangle 3120 -400 3160 -1400", "text_out 4560 -1480 1", "text_out 10160 -1480 2",
        "text_out 15760 -1480 3"},
       2},
      {"repeat",
       repeat,
       {"text_out 2360 -1600 000000001003 0 $2.50", "text_out 4560 -2200 TEA",
        "text_out 7960 -1600 000000001003 0 $2.50"},
       1},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    RecordingTarget target;
    G().print_job.page_number = 1;
    LabelRun run{c.s, c.s.range_start, c.s.quantity};
    Labelpage(target, run);
    EXPECT_THAT(target.calls(), IsSupersetOf(c.calls));
    EXPECT_EQ(G().print_job.page_number, c.next_page);
    EXPECT_EQ(target.calls().back(), "set_text_align left");
  }
  // The three-column run goes on to its fourth label on the next sheet.
  RecordingTarget target;
  G().print_job.page_number = 2;
  LabelRun run{three, 4, 0};
  Labelpage(target, run);
  EXPECT_THAT(target.texts(), ElementsAre("4"));
  EXPECT_EQ(G().print_job.page_number, 2);
}

TEST_F(LabelsTest, TheBoxFallsBackOnBadNumbersAndHoldsTheRangeLimit) {
  LabelForm f;
  f.element_width = "0";
  f.origin_x = "20001";
  f.origin_y = "x";
  f.label_height = "-5";
  f.labels_per_sheet = "201";
  f.from_centre = "0";
  f.quantity = "7";  // not the repeat source: no quantity
  LabelSettings s;
  ASSERT_TRUE(Readlabelform(f, &s));
  EXPECT_EQ(std::vector<int>({s.element_width, s.origin_x, s.origin_y, s.label_height,
                              s.labels_per_sheet, s.from_centre, s.quantity}),
            std::vector<int>({200, 3600, 400, 1690, 16, 4800, 0}));
  f.source = kLabelRepeat;
  f.quantity = "-3";
  ASSERT_TRUE(Readlabelform(f, &s));
  EXPECT_EQ(s.quantity, 0);

  Chooselabellayout(f, kThreeColumn);
  Choosebarcodetype(f, kEan13);
  EXPECT_EQ(f.label_height + " " + f.labels_per_sheet + " " + f.element_width, "1690 48 50");

  f.finish = "100000000000000001";
  EXPECT_FALSE(Readlabelform(f, &s));
  EXPECT_THAT(platform_.shown(), ElementsAre("Problem: Range limit 100000000000000000"));
}

TEST_F(LabelsTest, TheCommandRefusesABadRangeAndPrintsAGoodOne) {
  const struct {
    int source;
    int64_t start, finish;
    const char* message;
  } refused[] = {
      {kLabelItems, 5, 4, "Problem: Invalid range"},
      {kLabelRepeat, 0, 0, "Problem: Invalid range"},
      {kLabelItems, 2000, 3000, "Problem: No labels to print in that range"},
  };
  for (const auto& r : refused) {
    platform_.clear_record();
    view_.answer.source = r.source;
    view_.answer.range_start = r.start;
    view_.answer.range_finish = r.finish;
    Barcodeprint();
    EXPECT_THAT(platform_.shown(), ElementsAre(r.message));
  }
  EXPECT_EQ(printers_.count("begin_document"), 0);

  // Two copies: each starts again from the first item.
  printers_.dialog_copies = 2;
  view_.answer = LabelSettings{};
  view_.answer.range_finish = 5000;
  Barcodeprint();
  EXPECT_THAT(printers_.texts(), ElementsAre("1001  GIN", "1003  TEA", "1001  GIN", "1003  TEA"));
  EXPECT_EQ(printers_.count("open_abort_box"), 1);
}

}  // namespace
}  // namespace tilo
