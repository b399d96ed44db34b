// SPDX-License-Identifier: MIT
// Labels on the built-in PDF printer, rendered at 300 dpi and read back by a
// barcode reader: every layout in both symbologies scans as exactly the
// numbers asked for, check digits included, and the words read back too.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <sstream>

#include "documents/labels.h"
#include "documents/print_job.h"
#include "documents/ui/qt_print_target.h"
#include "sale/sale_fixture.h"

namespace tilo {
namespace {

// The words of a text, one blank between each.
std::vector<std::string> Words(const std::string& text, bool sorted = false) {
  std::istringstream in(text);
  std::vector<std::string> words{std::istream_iterator<std::string>(in), {}};
  if (sorted) std::sort(words.begin(), words.end());
  return words;
}
std::string Joined(const std::string& text) {
  std::string out;
  for (const std::string& w : Words(text)) out += w + " ";
  return out;
}

// The box as the operator leaves it after choosing the layout and symbology.
LabelSettings Labels(int layout, int type, int source, int64_t start, int64_t finish) {
  LabelForm f;
  Chooselabellayout(f, layout);
  Choosebarcodetype(f, type);
  f.source = source;
  f.start = std::to_string(start);
  f.finish = std::to_string(finish);
  LabelSettings s;
  Readlabelform(f, &s);
  return s;
}

// Runs the label pages as the print shell does and answers the file.
std::string Print(const LabelSettings& s) {
  auto target = QtPrintTarget::Pdf();
  LabelRun run{s, s.range_start, s.quantity};
  target->begin_document(kDocumentName);
  G().print_job.page_number = 1;
  for (int before = 0; before != G().print_job.page_number;) {
    target->begin_page();
    before = G().print_job.page_number;
    Labelpage(*target, run);
    target->end_page();
  }
  target->end_document();
  return target->last_file();
}

using LabelPdfTest = SaleTest;

TEST_F(LabelPdfTest, EveryLayoutInBothSymbologiesScansAsTheNumbersAskedFor) {
  SetField(G().settings.currency_symbol, "$");
  SetField(G().heading.site_name, "CORNER STORE");
  Stock(1001, 18.33f, 0, 5, "GIN");
  Stock(1002, 2.50f, 0, 5, "TEA");
  Stock(1005, 0.99f, 0, 5, "MINTS");
  Stock(500029922500, 4.25f, 0, 5, "REAL EAN");

  LabelSettings spine_ean = Labels(kVideoSpine, kEan13, kLabelAllNumbers, 5, 7);
  spine_ean.include_store = true;
  LabelSettings spine_39 = Labels(kVideoSpine, kCode39, kLabelItems, 1000, 1010);
  spine_39.include_price = spine_39.price_below = true;
  LabelSettings two_ean = Labels(kTwoColumn, kEan13, kLabelItems, 1002, kHighestNumber);
  two_ean.include_price = true;
  LabelSettings three_39 = Labels(kThreeColumn, kCode39, kLabelAllNumbers, 41, 48);
  three_39.labels_per_sheet = 6;  // a run onto a second sheet
  // The address labels of the box's note.
  LabelSettings three_ean = Labels(kThreeColumn, kEan13, kLabelAllNumbers, 101, 104);
  three_ean.from_centre = 6980;
  three_ean.origin_y = 800;
  three_ean.label_height = 2540;
  three_ean.labels_per_sheet = 30;
  // One item repeated, a label a sheet: a reader reports a symbol once a page.
  LabelSettings repeat = Labels(kVideoSpine, kEan13, kLabelRepeat, 500029922500, 0);
  repeat.quantity = 3;
  repeat.labels_per_sheet = 1;

  const struct {
    LabelSettings s;
    int pages;
    const char* codes;  // sorted
    const char* words;
  } cases[] = {
      {spine_ean, 1, "0000000000055 0000000000062 0000000000079", "CORNER STORE 0000000000055"},
      {spine_39, 1, "1001 1002 1005", "1001 GIN $18.33 1002 TEA"},
      {two_ean, 1, "0000000010023 0000000010054 5000299225004", "500029922500 4 $4.25 REAL EAN"},
      {Labels(kTwoColumn, kCode39, kLabelAllNumbers, 5, 9), 1, "0005 0006 0007 0008 0009", "5 6"},
      {three_39, 2, "0041 0042 0043 0044 0045 0046 0047 0048", "41 42 43"},
      {three_ean, 1, "0000000001014 0000000001021 0000000001038 0000000001045",
       "000000000101 4 000000000102 1"},
      {repeat, 3, "5000299225004 5000299225004 5000299225004", "500029922500 REAL EAN"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.codes);
    const std::string pdf = Print(c.s);
    std::filesystem::remove_all("pages");
    std::filesystem::create_directory("pages");
    Shell("pdftoppm -r 300 -png " + pdf + " pages/p");
    const auto pages = std::distance(std::filesystem::directory_iterator("pages"), {});
    EXPECT_EQ(pages, c.pages);
    EXPECT_EQ(Words(Shell("zbarimg -q --raw pages/*.png"), true), Words(c.codes));
    const std::string text = Joined(Shell("pdftotext -layout " + pdf + " -"));
    EXPECT_NE(text.find(Joined(c.words)), std::string::npos) << text;
  }
}

}  // namespace
}  // namespace tilo
