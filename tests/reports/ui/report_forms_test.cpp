// SPDX-License-Identifier: MIT
// The report forms on the screen: a walk runs off the interface thread and its
// box cancels it; the printouts come out of the PDF printer as text.
#include "reports/ui/report_forms.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QProgressDialog>
#include <QTimer>
#include <chrono>
#include <cstdio>
#include <thread>

#include "core/state.h"
#include "core/text.h"
#include "documents/ui/qt_print_target.h"
#include "support/shop_fixture.h"

namespace tilo {
namespace {

class ReportFormsTest : public ShopTest {
 protected:
  void SetUp() override {
    ShopTest::SetUp();
    InstallReportHandlers();
  }
  void TearDown() override {
    install_report_view(nullptr);
    ShopTest::TearDown();
  }
};

TEST_F(ReportFormsTest, AWalkRunsOffTheScreenThreadAndCancelStopsIt) {
  const std::thread::id screen = std::this_thread::get_id();
  std::thread::id walker;
  EXPECT_TRUE(report_view().run_walk("Sales report", [&](const WalkProgress& progress) {
    walker = std::this_thread::get_id();
    return progress(0, 10) && progress(9, 10);
  }));
  EXPECT_NE(walker, screen);

  // Cancel pressed while the walk is under way: it ends at its next day, and the
  // run says it was cancelled.
  QTimer::singleShot(400, [] {
    for (QWidget* w : QApplication::topLevelWidgets())
      if (auto* box = qobject_cast<QProgressDialog*>(w)) box->cancel();
  });
  int days = 0;
  EXPECT_FALSE(report_view().run_walk("Sales report", [&](const WalkProgress& progress) {
    for (; days < 100000; ++days) {
      if (!progress(days, 100000)) return false;
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
  }));
  EXPECT_LT(days, 100000);
}

TEST_F(ReportFormsTest, PrintoutsReadBackFromThePdf) {
  platform_.set_now(2028, 3, 10, 14, 5);
  SetField(G().heading.site_name, "THE CORNER SHOP");
  auto target = QtPrintTarget::Pdf();
  ASSERT_GT(target->begin_document("TILO"), 0);
  ASSERT_GT(target->begin_page(), 0);
  SalesReport report;
  report.grand = {10.0, 20.5, 4.1, 0.25, 34.85};
  Drawsalesreport(*target, report, "Sales report: Wed 1 Mar 28 to Fri 10 Mar 28");
  target->end_page();
  ASSERT_GT(target->begin_page(), 0);
  SummaryScreen screen;
  screen.period = SummaryPeriod::Weekly;
  screen.after.start_day = 7;
  screen.after.start_month = 3;
  screen.after.start_year = 2028;
  screen.rows = {"12, CAF\xC9 NOIR, 3, 2.50, 5.00, 1.00, 6.00, 2"};
  screen.summary.items_counted = 2;
  size_t position = 0;
  G().print_job.page_number = 1;
  Drawsummarypage(*target, screen, position);
  target->end_page();
  target->end_document();
  const std::string text = Shell("pdftotext -layout " + target->last_file() + " -");
  for (const char* want :
       {"14:05 Friday March 10 2028", "Sales report: Wed 1 Mar 28 to Fri 10 Mar 28", "Sub total",
        "30.50", "34.85", "THE CORNER SHOP Weekly item list to Tue 7 Mar 28",
        "12, CAFÉ NOIR, 3, 2.50, 5.00, 1.00, 6.00, 2", "Items: 2, Cost: 0.00, Retail: 0.00"})
    EXPECT_NE(text.find(want), std::string::npos) << want << "\n" << text;
}

}  // namespace
}  // namespace tilo
