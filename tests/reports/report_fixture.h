// SPDX-License-Identifier: MIT
// Report tests: a shop folder, a scripted platform and printers, and report
// forms that answer as the test says and keep what they were shown.
#pragma once

#include <functional>
#include <optional>

#include "documents/recording_target.h"
#include "reports/report_view.h"
#include "support/shop_fixture.h"

namespace tilo {

class ScriptedReportView : public ReportView {
 public:
  bool choose_period(PeriodDialog& d) override {
    period_offered = d;
    if (!period) return false;
    d.chosen = *period;
    return true;
  }
  bool choose_summary(SummaryDialog& d) override {
    summary_offered = d;
    if (!summary_answer) return false;
    summary_answer(d);
    return true;
  }
  void show_sales_report(const SalesScreen& s) override { sales = s; }
  void show_item_summary(const SummaryScreen& s) override { summary = s; }

  std::optional<std::array<int, 6>> period;  // none: Cancel
  std::function<void(SummaryDialog&)> summary_answer;
  std::optional<PeriodDialog> period_offered;
  std::optional<SummaryDialog> summary_offered;
  std::optional<SalesScreen> sales;
  std::optional<SummaryScreen> summary;
};

class ReportTest : public ShopTest {
 protected:
  void SetUp() override {
    ShopTest::SetUp();
    install_report_view(&view_);
    install_print_service(&printers_);
    platform_.set_now(2028, 3, 10, 14, 5);
    G().settings.history_from_year = 2026;
  }
  void TearDown() override {
    install_print_service(nullptr);
    install_report_view(nullptr);
    ShopTest::TearDown();
  }

  ScriptedReportView view_;
  RecordingPrintService printers_;
};

}  // namespace tilo
