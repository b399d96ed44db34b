// SPDX-License-Identifier: MIT
// The activity log printed and walked on screen: the day's first entry found,
// a log too short to hold one, a line longer than the printer takes, the page
// break and its step back, and the blocks of the viewer at their edges.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/activity_log.h"
#include "core/state.h"
#include "core/text.h"
#include "documents/print_service.h"
#include "documents/recording_target.h"
#include "reports/log_print.h"
#include "reports/log_view.h"
#include "support/shop_fixture.h"

namespace tilo {
namespace {

using ::testing::ElementsAre;

class LogPrintTest : public ShopTest {
 protected:
  void SetUp() override {
    ShopTest::SetUp();
    install_print_service(&printers_);
    platform_.set_now(2024, 3, 15, 14, 5);
    SetField(G().heading.site_name, "SHOP");
  }
  void TearDown() override {
    install_print_service(nullptr);
    ShopTest::TearDown();
  }
  RecordingPrintService printers_;
};

const char kTwoDays[] =
    "\r\n09:00 14/03/2024  Switched on.\r\n"
    "\r\n17:00 14/03/2024  Switched off.\r\n"
    "\r\n08:30 15/03/2024  Switched on.\r\n"
    "\r\n08:31 15/03/2024  Log on.\r\n";

TEST_F(LogPrintTest, TodayStartsAtItsFirstEntryAndADayNotThereIsSaid) {
  WriteBytes(kActivityLog, kTwoDays);
  Printlog(kLogToday);
  EXPECT_THAT(printers_.texts(),
              ElementsAre("SHOP Log file: 15/03/2024      Page: 1",
                          "08:30 15/03/2024  Switched on.", "", "08:31 15/03/2024  Log on.", "  "));
  EXPECT_EQ(printers_.count("text_out 0 84 08:30"), 1);  // row 2

  struct Case {
    const char* log;
    std::optional<std::string> typed;
    const char* message;
  };
  const Case cases[] = {
      {"\r\n08:30 15/", std::nullopt,
       "Problem, no transactions found for that date: Please check 'old log file' for prior "
       "operations"},
      {kTwoDays, "16/03/2024",
       "Problem, no transactions found for that date: Please check 'old log file' for prior "
       "operations"},
      {kTwoDays, "16-03-2024", "Problem: Invalid date"},
      {kTwoDays, "1/3/2024", "Problem: Invalid date"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.message);
    WriteBytes(kActivityLog, c.log);
    printers_.calls.clear();
    platform_.clear_record();
    if (c.typed) platform_.queue_prompt(*c.typed);
    Printlog(c.typed ? kLogFromDay : kLogToday);
    EXPECT_THAT(platform_.shown(), ElementsAre(c.message));
    EXPECT_EQ(printers_.count("begin_document"), 0);  // nothing printed
  }

  // A date found across the pieces the file is read in.
  WriteBytes(kActivityLog, std::string(65530, 'x') + kTwoDays);
  EXPECT_EQ(Findlogdate(kActivityLog, "14/03/2024"), 65532);

  // Yesterday typed in starts at yesterday's first entry.
  WriteBytes(kActivityLog, kTwoDays);
  printers_.calls.clear();
  platform_.queue_prompt("14/03/2024");
  Printlog(kLogFromDay);
  EXPECT_EQ(printers_.texts()[0], "SHOP Log file: 14/03/2024      Page: 1");
  EXPECT_EQ(printers_.texts()[1], "09:00 14/03/2024  Switched on.");
}

TEST_F(LogPrintTest, LongLinesBreakAt253AndPagesStepBackOnTheFirst) {
  // Rows 2 to 6 on a page 300 high: (42 + 2) * 7 > 300.
  printers_.device.page_height = 300;
  std::string log;
  for (int i = 0; i < 300; ++i) log += char('A' + i % 26);
  log += "\r\nline2\r\nline3\r\nline4\r\nline5\r\nline6\r\nline7";
  WriteBytes(kActivityLog, log);
  Printlog(kLogWhole);
  // Page 1 stops after "line4"; page 2 goes on 15 bytes before that, from the
  // line end of "line2", so an empty line and "line3" and "line4" come again.
  EXPECT_THAT(printers_.texts(),
              ElementsAre("SHOP Log file: 15/03/2024      Page: 1", log.substr(0, 253),
                          log.substr(253, 47), "line2", "line3", "line4",
                          "SHOP Log file: 15/03/2024      Page: 2", "", "line3", "line4", "line5",
                          "line6", "SHOP Log file: 15/03/2024      Page: 3", "line7", "  "));
  EXPECT_EQ(printers_.count("begin_page"), 3);
}

TEST_F(LogPrintTest, TheViewerWalksBlocksOf31999Bytes) {
  struct Case {
    int64_t size;
    bool next, previous;  // after opening
  };
  for (const Case& c : {Case{31998, false, false}, Case{31999, false, false},
                        Case{32000, true, false}, Case{70000, true, false}}) {
    SCOPED_TRACE(c.size);
    WriteBytes(kActivityLog, std::string(size_t(c.size), 'x'));
    std::optional<LogViewer> v = OpenLogViewer(false);
    ASSERT_TRUE(v);
    EXPECT_EQ(v->offset, std::min<int64_t>(c.size, kLogBlock));
    EXPECT_EQ(v->next_enabled, c.next);
    EXPECT_EQ(v->previous_enabled, c.previous);
  }
  // 70,000 bytes: two whole blocks, a short one of 6,002, and back.
  std::optional<LogViewer> v = OpenLogViewer(false);
  v->Next();
  EXPECT_EQ(v->offset, 63998);
  EXPECT_TRUE(v->previous_enabled);
  v->Next();
  EXPECT_EQ(v->offset, 70000);
  EXPECT_EQ(v->shown, 6002);
  EXPECT_FALSE(v->next_enabled);
  v->Previous();  // after a short block: back 31,999 from its end
  EXPECT_EQ(v->offset, 70000);
  EXPECT_EQ(v->shown, kLogBlock);
  v->Previous();  // after a whole one: back 63,998
  EXPECT_EQ(v->offset, 6002 + kLogBlock);
  v->Previous();
  EXPECT_EQ(v->offset, kLogBlock);
  EXPECT_FALSE(v->previous_enabled);

  // Windows-1252 shown as UTF-8, one line end for CR LF.
  EXPECT_EQ(LogBlockText("\r\nTotal: \xA3"
                         "5\r\n"),
            "\nTotal: \xC2\xA3"
            "5\n");
  EXPECT_FALSE(OpenLogViewer(true));
  EXPECT_THAT(platform_.shown(), ElementsAre("Problem: Previous log file does not yet exist."));
}

}  // namespace
}  // namespace tilo
