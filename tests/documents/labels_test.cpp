// SPDX-License-Identifier: MIT
// Barcode labels on the recording target: the EAN-13 digits, where each layout
// puts its symbols and words, and what the box and the command refuse.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/customer_file.h"
#include "documents/labels.h"
#include "documents/print_service.h"
#include "documents/recording_target.h"
#include "sale/sale_fixture.h"

namespace tilo {
namespace {

using ::testing::ElementsAre;
using ::testing::IsSupersetOf;

struct ScriptedLabelView : LabelView {
  bool barcode_form(LabelSettings& settings) override { return settings = answer, true; }
  LabelSettings answer;
};

LabelSettings Labels(int layout, int type, int source, int64_t start, int64_t finish) {
  LabelSettings s;
  s.layout = layout;
  s.barcode_type = type;
  s.source = source;
  s.range_start = start;
  s.range_finish = finish;
  return s;
}

class LabelsTest : public SaleTest {
 protected:
  void SetUp() override {
    SaleTest::SetUp();
    install_print_service(&printers_);
    install_label_view(&view_);
    SetField(G().settings.currency_symbol, "$");
    SetField(G().heading.site_name, "SHOP");
    G().settings.tax1_switch = 1;
    G().settings.tax1_rate = 2000;
    Stock(1001, 10.00f, 1, 5, "GIN");
    Stock(1003, 2.50f, 0, 5, "TEA");
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
  const char* cases[][2] = {
      {"5", "0000000000055"},              // eleven zeros, then the check digit
      {"5000299225009", "5000299225004"},  // a 13th digit gives way to the check digit
      {"000000000000", "0000000000000"},   // a check digit of 10 is 0
  };
  for (const auto& c : cases) EXPECT_EQ(Ean13digits(c[0]), c[1]) << c[0];
}

// On the recording device's page W is 2400 dots at 300 dpi: 20320 hundredths.
TEST_F(LabelsTest, EachLayoutPlacesItsSymbolsAndWords) {
  ASSERT_TRUE(LoadCustomerIndex());
  MemberRecord m{};
  m.number = 7;
  SetField(m.name, "ANN SMITH");
  CompleteNewMember(m);
  ASSERT_TRUE(Insertmember(m));

  LabelSettings spine = Labels(kVideoSpine, kCode39, kLabelItems, 1000, 1003);
  spine.include_store = spine.include_price = true;
  LabelSettings below = Labels(kVideoSpine, kCode39, kLabelItems, 1000, 1001);
  below.price_below = below.price_without_tax = below.include_price = true;
  below.element_width = 50;
  LabelSettings two = Labels(kTwoColumn, kEan13, kLabelCustomers, 1, 100);
  two.element_width = 50;
  LabelSettings three = Labels(kThreeColumn, kCode39, kLabelAllNumbers, 1, 4);
  three.labels_per_sheet = 3;
  LabelSettings repeat = Labels(kThreeColumn, kEan13, kLabelRepeat, 1003, 0);
  repeat.quantity = 2;
  repeat.include_price = true;
  const struct {
    LabelSettings s;
    std::vector<std::string> calls;  // among the page's calls
    int next_page;                   // page_number after the page
  } cases[] = {
      {spine,
       {"rectangle 3600 -400 3640 -1400", "text_out 7240 -800 SHOP  1001  GIN $12.00",
        "rectangle 3600 -2090 3640 -3090", "text_out 7240 -2490 SHOP  1003  TEA $2.50"},
       1},
      {below, {"text_out 8150 -600 1001  GIN", "text_out 8150 -1100 $10.00"}, 1},
      {two,
       {"rectangle 2580 -400 2630 -1520", "set_text_align left",
        "text_out 2580 -1600 000000000007  9", "set_text_align centre",
        "text_out 5080 -2200 ANN SMITH"},
       1},
      {three,
       {"rectangle 3120 -400 3160 -1400", "text_out 4560 -1480 1", "text_out 10160 -1480 2",
        "text_out 15760 -1480 3"},
       2},
      {repeat,
       {"text_out 2360 -1600 000000001003 0 $2.50", "text_out 4560 -2200 TEA",
        "text_out 7960 -1600 000000001003 0 $2.50"},
       1},
  };
  for (const auto& c : cases) {
    RecordingTarget target;
    G().print_job.page_number = 1;
    LabelRun run{c.s, c.s.range_start, c.s.quantity};
    Labelpage(target, run);
    EXPECT_THAT(target.calls(), IsSupersetOf(c.calls)) << c.calls[0];
    EXPECT_EQ(G().print_job.page_number, c.next_page) << c.calls[0];
  }
  // The three-column run goes on with its fourth label on the next sheet.
  RecordingTarget target;
  G().print_job.page_number = 2;
  LabelRun run{three, 4, 0};
  Labelpage(target, run);
  EXPECT_THAT(target.texts(), ElementsAre("4"));
}

TEST_F(LabelsTest, TheBoxFallsBackAndTheCommandRefusesBadRanges) {
  LabelForm f;
  f.element_width = f.origin_x = f.origin_y = f.label_height = f.from_centre = "20001";
  f.labels_per_sheet = "0";
  f.source = kLabelRepeat;
  f.quantity = "-3";
  LabelSettings s;
  ASSERT_TRUE(Readlabelform(f, &s));
  EXPECT_EQ(std::vector<int>({s.element_width, s.origin_x, s.origin_y, s.label_height,
                              s.labels_per_sheet, s.from_centre, s.quantity}),
            std::vector<int>({200, 3600, 400, 1690, 16, 4800, 0}));
  f.finish = "100000000000000001";
  EXPECT_FALSE(Readlabelform(f, &s));

  for (const LabelSettings& bad : {Labels(kVideoSpine, kCode39, kLabelItems, 5, 4),
                                   Labels(kVideoSpine, kCode39, kLabelRepeat, 0, 9)}) {
    view_.answer = bad;
    Barcodeprint();
  }
  EXPECT_THAT(platform_.shown(), ElementsAre("Problem: Range limit 100000000000000000",
                                             "Problem: Invalid range", "Problem: Invalid range"));
  // Each copy starts again from the first item.
  printers_.dialog_copies = 2;
  view_.answer = Labels(kVideoSpine, kCode39, kLabelItems, 1, 5000);
  Barcodeprint();
  EXPECT_THAT(printers_.texts(), ElementsAre("1001  GIN", "1003  TEA", "1001  GIN", "1003  TEA"));
}

}  // namespace
}  // namespace tilo
