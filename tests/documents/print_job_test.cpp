// SPDX-License-Identifier: MIT
#include "documents/print_job.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/state.h"
#include "documents/recording_target.h"
#include "support/shop_fixture.h"

namespace tilo {
namespace {

using ::testing::ElementsAre;

class PrintJobTest : public ShopTest {
 protected:
  void SetUp() override {
    ShopTest::SetUp();
    install_print_service(&printers_);
    // Stock font 40 high with a leading of 2: lines of 42, and a page is full
    // when 44 * row passes its height.
    printers_.device.page_height = 44 * 10;
  }
  void TearDown() override {
    install_print_service(nullptr);
    ShopTest::TearDown();
  }

  // A listing of `entries` one-line entries that keeps its place across pages
  // and starts again for each copy.
  PageRoutine Listing(int entries) {
    return [this, entries](PrintTarget& t) {
      if (G().print_job.page_number == 1) next_ = 0;
      ListingPage page =
          Startlistingpage(t, "Shop  Items  Page: " + std::to_string(G().print_job.page_number));
      while (next_ < entries) {
        page.text(4, "entry " + std::to_string(++next_));
        ++page.row;
        if (Listingpagefull(page)) return;
      }
    };
  }

  std::vector<std::string> Pages() const {
    std::vector<std::string> out;
    for (const std::string& c : printers_.calls)
      if (c.rfind("text_out", 0) == 0 && c.find("Page:") != std::string::npos) out.push_back(c);
    return out;
  }

  RecordingPrintService printers_;
  int next_ = 0;
};

TEST_F(PrintJobTest, APagedJobRunsItsPagesInsideOneDocumentWithTheAbortBox) {
  Runpagedjob(Listing(12));
  // Nine entries fill a page; the rest go on the second.
  EXPECT_THAT(Pages(), ElementsAre("text_out 0 0 Shop  Items  Page: 1",
                                   "text_out 0 0 Shop  Items  Page: 2"));
  // Row 2 at column 4 of 20 opens each page: entries 1 and 10.
  EXPECT_EQ(printers_.count("text_out 80 84 entry 1"), 2);
  EXPECT_EQ(printers_.count("text_out 80 84 entry 10"), 1);
  EXPECT_EQ(printers_.count("text_out 80 420 entry 9"), 1);
  EXPECT_EQ(printers_.count("text_out 80 "), 12);
  EXPECT_EQ(printers_.calls.front(), "printer_dialog");
  EXPECT_EQ(printers_.calls[1], "open_abort_box");
  EXPECT_EQ(printers_.count("begin_document TILO"), 1);
  EXPECT_EQ(printers_.count("begin_page"), 2);
  EXPECT_EQ(printers_.count("end_page"), 2);
  EXPECT_THAT(std::vector<std::string>(printers_.calls.end() - 3, printers_.calls.end()),
              ElementsAre("end_document", "close_abort_box", "release"));
  EXPECT_TRUE(printers_.main_window_enabled);
  EXPECT_EQ(G().print_job.target, nullptr);
}

TEST_F(PrintJobTest, ASourceEndingWithAFullPageGivesAPageOfHeaderOnly) {
  Runpagedjob(Listing(9));
  EXPECT_EQ(Pages().size(), 2u);
  EXPECT_EQ(printers_.count("text_out 80 "), 9);
  // The test comes after an entry, so an entry of two rows runs past the last
  // full row rather than being split.
  printers_.calls.clear();
  next_ = 0;
  Runpagedjob([this](PrintTarget& t) {
    ListingPage page = Startlistingpage(t, "header");
    while (next_ < 5) {
      ++next_;
      page.text(0, "first of " + std::to_string(next_));
      ++page.row;
      page.text(0, "second of " + std::to_string(next_));
      ++page.row;
      if (Listingpagefull(page)) return;
    }
  });
  EXPECT_EQ(printers_.count("text_out 0 462 second of 5"), 1);  // row 11 of a 440 page
  EXPECT_EQ(printers_.count("text_out 0 0 header"), 2);
}

TEST_F(PrintJobTest, EachCopyIsADocumentAndCancellingStopsTheRest) {
  printers_.dialog_copies = 3;
  Runpagedjob(Listing(12));
  EXPECT_EQ(printers_.count("begin_document"), 3);
  EXPECT_EQ(Pages().size(), 6u);  // the listing starts again for each copy

  printers_.calls.clear();
  printers_.cancel_at_pump = printers_.pumps + 1;  // "Cancel" while the first page spools
  Runpagedjob(Listing(12));
  EXPECT_EQ(printers_.count("begin_document"), 1);
  EXPECT_EQ(printers_.count("end_page aborted"), 1);
  EXPECT_EQ(printers_.count("end_document"), 1);
  EXPECT_EQ(printers_.count("close_abort_box"), 0);  // the box closed itself
  EXPECT_TRUE(printers_.main_window_enabled);
  EXPECT_EQ(printers_.calls.back(), "release");
}

TEST_F(PrintJobTest, FailedJobCallsEndOnlyTheirOwnStep) {
  printers_.dialog_copies = 2;
  printers_.device.begin_document_result = 0;
  Runpagedjob(Listing(12));
  EXPECT_EQ(printers_.count("begin_document"), 2);  // the next copy still tries
  EXPECT_EQ(printers_.count("begin_page"), 0);

  printers_.calls.clear();
  printers_.device.begin_document_result = 1;
  printers_.device.begin_page_result = 0;
  Runpagedjob(Listing(12));
  EXPECT_EQ(printers_.count("end_page"), 0);
  EXPECT_EQ(printers_.count("end_document"), 2);

  printers_.calls.clear();
  printers_.device.begin_page_result = 1;
  printers_.device.end_page_results = {1, 0};  // the second page fails to end
  printers_.dialog_copies = 1;
  Runpagedjob(Listing(30));
  EXPECT_EQ(printers_.count("begin_page"), 2);
  EXPECT_EQ(printers_.count("end_document"), 1);
}

TEST_F(PrintJobTest, ACancelledDialogPrintsNothingAndSaysNothing) {
  printers_.dialog_cancels = true;
  bool called = false;
  Runpagedjob([&](PrintTarget&) { called = true; });
  EXPECT_FALSE(called);
  EXPECT_THAT(printers_.calls, ElementsAre("printer_dialog cancelled"));
  EXPECT_TRUE(platform_.messages.empty());
}

TEST_F(PrintJobTest, ASinglePageJobHasNoAbortBoxAndTellsAFailedRelease) {
  int pages = 0, cuts = 0;
  printers_.device.release_result = false;
  const bool released = Runsinglepagejob(
      Namedtarget("Till"), [&](PrintTarget&) { ++pages; }, [&] { ++cuts; });
  EXPECT_FALSE(released);
  EXPECT_EQ(pages, 1);
  EXPECT_EQ(cuts, 1);
  EXPECT_THAT(printers_.calls,
              ElementsAre("named_printer Till", "begin_document TILO", "begin_page", "end_page",
                          "end_document", "release failed"));

  printers_.calls.clear();
  printers_.device.release_result = true;
  printers_.dialog_copies = 2;
  EXPECT_TRUE(Runsinglepagejob(Choosetarget(true), [&](PrintTarget&) { ++pages; }));
  EXPECT_EQ(pages, 3);
  EXPECT_EQ(printers_.count("open_abort_box"), 0);
}

TEST_F(PrintJobTest, TheListingFontFollowsTheSizeAndThePage) {
  SettingsRecord& s = G().settings;
  printers_.device.page_width = 2400;
  printers_.device.page_height = 3300;
  s.list_font_size = 60;
  Buildlistfont();
  ASSERT_TRUE(G().list_font.has_value());
  EXPECT_EQ(G().list_font->face, "Courier New");
  EXPECT_EQ(G().list_font->height, 55);  // 3300 / 60
  EXPECT_EQ(G().list_font->width, 32);   // 2400 / 75
  // The font-size box leaves out the five-fourths: a narrower font... by width.
  Setlistfontsize(60, true);
  EXPECT_EQ(G().list_font->width, 40);
  EXPECT_EQ(s.list_font_size, 60);
  Setlistfontsize(0, false);
  EXPECT_FALSE(G().list_font.has_value());

  // A page that tells no size keeps the device's own measures.
  printers_.device.page_width = 0;
  s.list_font_size = 60;
  Buildlistfont();
  EXPECT_EQ(*G().list_font, printers_.device.stock);
  // No printer: no font.
  printers_.has_default = false;
  Buildlistfont();
  EXPECT_FALSE(G().list_font.has_value());
}

TEST_F(PrintJobTest, TheListingUsesTheFontAndIndentInForce) {
  Runpagedjob(Listing(1));
  EXPECT_EQ(printers_.count("select_font"), 0);  // no listing font: the device's own

  printers_.calls.clear();
  G().list_font = FontDescription{"Courier New", 60, 30, 400};
  G().settings.listing_indent = 40;
  Runpagedjob(Listing(1));
  EXPECT_EQ(printers_.count("select_font Courier New 60 30 400"), 1);
  // The indent is 40 average characters: the header and every column move alike.
  EXPECT_EQ(printers_.count("text_out 1200 0 Shop"), 1);
  EXPECT_EQ(printers_.count("text_out 1320 124 entry 1"), 1);  // line 62, row 2
}

TEST_F(PrintJobTest, IndentListingsAsksForAnIndentOrClearsIt) {
  SettingsRecord& s = G().settings;
  platform_.queue_prompt("41");
  Indentlistings();
  EXPECT_EQ(s.listing_indent, 0);
  platform_.queue_prompt("12");
  Indentlistings();
  EXPECT_EQ(s.listing_indent, 12);
  EXPECT_THAT(platform_.shown(), ElementsAre("Problem: Outside range", "Indent set to: 12"));
  ASSERT_EQ(platform_.prompts_shown.size(), 2u);
  Indentlistings();  // set: cleared without a question
  EXPECT_EQ(s.listing_indent, 0);
  EXPECT_EQ(platform_.prompts_shown.size(), 2u);
  platform_.queue_prompt(std::nullopt);
  Indentlistings();
  EXPECT_EQ(s.listing_indent, 0);
}

}  // namespace
}  // namespace tilo
