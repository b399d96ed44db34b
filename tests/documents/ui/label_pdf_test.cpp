// SPDX-License-Identifier: MIT
// Labels on the built-in PDF printer, rendered at 300 dpi and read back by a
// barcode reader: every layout in both symbologies scans as exactly the
// numbers asked for, check digits included, and the words read back too.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "core/state.h"
#include "core/text.h"
#include "documents/labels.h"
#include "documents/print_job.h"
#include "documents/ui/qt_print_target.h"
#include "sale/sale_fixture.h"

namespace tilo {
namespace {

std::string Shell(const std::string& command) {
  std::string out;
  FILE* p = popen(command.c_str(), "r");
  if (!p) return out;
  char buf[4096];
  size_t n;
  while ((n = fread(buf, 1, sizeof buf, p)) > 0) out.append(buf, n);
  pclose(p);
  return out;
}

// Runs of blanks as one: the reader's layout spaces words its own way.
std::string OneBlank(const std::string& text) {
  std::string out;
  for (char c : text)
    if (c != ' ' || out.empty() || out.back() != ' ') out += c;
  return out;
}

std::vector<std::string> SortedLines(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);)
    if (!line.empty()) lines.push_back(line);
  std::sort(lines.begin(), lines.end());
  return lines;
}

class LabelPdfTest : public SaleTest {
 protected:
  void SetUp() override {
    SaleTest::SetUp();
    SetField(G().settings.currency_symbol, "$");
    SetField(G().heading.site_name, "CORNER STORE");
    Stock(1001, 18.33f, 0, 5, "GIN");
    Stock(1002, 2.50f, 0, 5, "TEA");
    Stock(1005, 0.99f, 0, 5, "MINTS");
    Stock(500029922500, 4.25f, 0, 5, "REAL EAN");
  }
  // Runs the label pages as the print shell does and answers the file.
  static std::string Print(const LabelSettings& s) {
    auto target = QtPrintTarget::Pdf();
    LabelRun run{s, s.range_start, s.quantity};
    EXPECT_GT(target->begin_document(kDocumentName), 0);
    G().print_job.page_number = 1;
    for (int before = 0; before != G().print_job.page_number;) {
      EXPECT_GT(target->begin_page(), 0);
      before = G().print_job.page_number;
      Labelpage(*target, run);
      target->end_page();
    }
    target->end_document();
    return target->last_file();
  }
};

TEST_F(LabelPdfTest, EveryLayoutInBothSymbologiesScansAsTheNumbersAskedFor) {
  struct Case {
    const char* what;
    LabelSettings s;
    int pages;
    std::vector<std::string> codes;  // sorted
    std::vector<std::string> words;
  };
  auto make = [](int layout, int type, int source, int64_t start, int64_t finish) {
    LabelSettings s;
    LabelForm f;
    Chooselabellayout(f, layout);
    Choosebarcodetype(f, type);
    f.start = std::to_string(start);
    f.finish = std::to_string(finish);
    f.source = source;
    Readlabelform(f, &s);
    return s;
  };
  LabelSettings spine_ean = make(kVideoSpine, kEan13, kLabelAllNumbers, 5, 7);
  spine_ean.include_store = true;
  LabelSettings spine_39 = make(kVideoSpine, kCode39, kLabelItems, 1000, 1010);
  spine_39.include_price = spine_39.price_below = true;
  LabelSettings two_ean = make(kTwoColumn, kEan13, kLabelItems, 1002, kHighestNumber);
  two_ean.include_price = true;
  LabelSettings two_39 = make(kTwoColumn, kCode39, kLabelAllNumbers, 5, 9);
  LabelSettings three_39 = make(kThreeColumn, kCode39, kLabelAllNumbers, 41, 48);
  three_39.labels_per_sheet = 6;  // a run onto a second sheet
  // The address labels of the box's note.
  LabelSettings three_ean = make(kThreeColumn, kEan13, kLabelAllNumbers, 101, 104);
  three_ean.from_centre = 6980;
  three_ean.origin_y = 800;
  three_ean.label_height = 2540;
  three_ean.labels_per_sheet = 30;
  // One item repeated, a label a sheet (a reader reports one symbol once a page).
  LabelSettings repeat = make(kVideoSpine, kEan13, kLabelRepeat, 500029922500, 0);
  repeat.quantity = 3;
  repeat.labels_per_sheet = 1;

  const Case cases[] = {
      {"spine EAN",
       spine_ean,
       1,
       {"0000000000055", "0000000000062", "0000000000079"},
       {"CORNER STORE  0000000000055"}},
      {"spine 39", spine_39, 1, {"1001", "1002", "1005"}, {"1001  GIN", "$18.33", "1005  MINTS"}},
      {"two EAN",
       two_ean,
       1,
       {"0000000010023", "0000000010054", "5000299225004"},
       {"000000001002 3 $2.50", "REAL EAN", "500029922500 4 $4.25"}},
      {"two 39", two_39, 1, {"0005", "0006", "0007", "0008", "0009"}, {"5", "9"}},
      {"three 39",
       three_39,
       2,
       {"0041", "0042", "0043", "0044", "0045", "0046", "0047", "0048"},
       {"41", "48"}},
      {"three EAN",
       three_ean,
       1,
       {"0000000001014", "0000000001021", "0000000001038", "0000000001045"},
       {"000000000101", "000000000104"}},
      {"repeat",
       repeat,
       3,
       {"5000299225004", "5000299225004", "5000299225004"},
       {"500029922500  REAL EAN"}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    const std::string pdf = Print(c.s);
    ASSERT_FALSE(pdf.empty());
    std::filesystem::remove_all("pages");
    std::filesystem::create_directory("pages");
    Shell("pdftoppm -r 300 -png " + pdf + " pages/p");
    int pages = 0;
    for ([[maybe_unused]] auto& e : std::filesystem::directory_iterator("pages")) ++pages;
    EXPECT_EQ(pages, c.pages);
    EXPECT_EQ(SortedLines(Shell("zbarimg -q --raw pages/*.png")), c.codes);
    const std::string text = OneBlank(Shell("pdftotext -layout " + pdf + " -"));
    for (const std::string& w : c.words)
      EXPECT_NE(text.find(OneBlank(w)), std::string::npos) << w << "\n" << text;
  }
}

}  // namespace
}  // namespace tilo
