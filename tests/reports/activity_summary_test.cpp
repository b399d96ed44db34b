// SPDX-License-Identifier: MIT
// The day's figures as F12 and the printed summary give them: the counters
// after real sales and a refund, three days rolled over, and the printed page
// row by row.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/history.h"
#include "core/rollover.h"
#include "documents/print_service.h"
#include "documents/recording_target.h"
#include "reports/activity_summary.h"
#include "sale/sale_fixture.h"
#include "tender/cash.h"
#include "tender/refund.h"
#include "tender/tender_view.h"

namespace tilo {
namespace {

using ::testing::ElementsAre;

struct CashRefund : RefundView {
  std::optional<RefundChoice> refund_form() override { return RefundChoice{kCashRefund, false}; }
};

class ActivitySummaryTest : public SaleTest {
 protected:
  void SetUp() override {
    SaleTest::SetUp();
    install_tender_view(&box_);
    install_refund_view(&refund_);
    install_print_service(&printers_);
    platform_.set_now(2024, 3, 15, 14, 5);
    Makelogdirs();
    Stock(1001, 4.50f);
    Stock(1002, 8.00f);
  }
  void TearDown() override {
    install_print_service(nullptr);
    install_refund_view(nullptr);
    install_tender_view(nullptr);
    SaleTest::TearDown();
  }
  void SellForCash(std::initializer_list<int64_t> numbers) {
    for (int64_t n : numbers) Addtobasket(n, 0);
    ASSERT_TRUE(Starttender());
    Finishcash(Cashexact(B().total));
  }
  static std::string Figure(const StatusScreen& s, const std::string& label) {
    for (const StatusRow& r : s.figures)
      if (r.label == label) return r.value;
    return "?";
  }

  TenderView box_;
  CashRefund refund_;
  RecordingPrintService printers_;
};

TEST_F(ActivitySummaryTest, SalesAndARefundCountThenThreeDaysRollOver) {
  SellForCash({1001, 1002});
  SellForCash({1001});
  Addtobasket(1002, 0);
  Refundbasket();

  StatusScreen s = Statusscreen(platform().now());
  EXPECT_EQ(s.title, "TILO STATUS Friday March 15 2024 ");
  EXPECT_EQ(Figure(s, "Cash sales"), "(2): 17.00");
  EXPECT_EQ(Figure(s, "Total sales"), "17.00");
  EXPECT_EQ(Figure(s, "Cash refunds"), "(1): -8.00");
  EXPECT_EQ(Figure(s, "Total refunds"), "-8.00");
  EXPECT_EQ(Figure(s, "Net sales"), "9.00");
  EXPECT_EQ(Figure(s, "Gross profit"), "4.50");
  EXPECT_EQ(s.lines[7], "Today's till take: 9.00");
  EXPECT_EQ(s.lines[3], "Inventory on the system: 2");
  EXPECT_EQ(s.lines[4], "Highest inventory number: 1002");

  // Three days on (the 18th): today's takings stand in slot 3, the day's
  // figures start again and yesterday, with no trade, counts nothing.
  ClearDayCounters(S(), 3);
  CloseDays(S(), 3);
  platform_.set_now(2024, 3, 18);
  s = Statusscreen(platform().now());
  EXPECT_EQ(S().takings_history[3], 9.00);
  EXPECT_EQ(Figure(s, "Cash sales"), "(0): 0.00");
  EXPECT_THAT(std::vector<std::string>(s.lines.begin() + 7, s.lines.end()),
              ElementsAre("Today's till take: 0.00", "Last Monday: 0.00",
                          "Yesterday's till take: 0.00", "W/E 10/3/2024: 0.00",
                          "W/E 17/3/2024: 9.00", "W/E 17/3/2024 vs W/E 10/3/2024: 0.00%"));
}

TEST_F(ActivitySummaryTest, ThePrintedSummaryRowByRow) {
  SetField(G().heading.site_name, "CORNER SHOP");
  G().start_hour = 8;
  G().start_minute = 2;
  SellForCash({1001});
  S().takings_history[7] = 9.00;
  S().takings_history[1] = 3.00;
  S().takings_history[8] = 6.00;
  // A year back from the first of March 2023: March 2023 holds 100.00 on its
  // 31st, February 2024 ends with 40.00 on the 29th.
  S().takings_history[350] = 100.00;
  S().takings_history[15] = 40.00;
  PrintActivitySummary();

  // The rows joined by "|", four or so to a line here; the padded totals as "_46".
  std::string rows;
  for (std::string text : printers_.texts()) {
    for (int pad : {46, 43})
      if (text.rfind(std::string(size_t(pad), ' '), 0) == 0)
        text = "_" + std::to_string(pad) + text.substr(size_t(pad));
    rows += text + "|";
  }
  EXPECT_EQ(rows,
            "CORNER SHOP  14:05 Friday March 15 2024|Today's till takings: 4.50|||"
            "Ontime: 08:02  Transaction number: 2|"
            "Inventory on the system: 2, Customers on the system: 0|"
            "Today transactions: 1 Items: 1|Yesterday transactions: 0 Items: 0|"
            "Today vs. last Friday: 50.00%  8/3/2024|Current vs. last week: 200.00%|"
            "Last weeks total: 6.00|Current weeks total: 12.00||New customers: 0||"
            "Cash sales (1): 4.50|CH sales (0): 0.00|EFT sales (0): 0.00|Credit sales (0): 0.00|"
            "_464.50|Cash refunds (0): 0.00|CH refunds (0): 0.00|EFT refunds (0): 0.00|"
            "Credit refunds (0): 0.00|_46(0.00)|Nontaxable sales: 4.50|Taxable sales: 0.00|"
            "Sub total: 4.50|Tax 1: 0.00|Tax 2: 0.00|_43Total: 4.50||"
            "Balance payments cash (0): 0.00|Balance payments CH (0): 0.00|"
            "Balance payments EFT (0): 0.00|Total: 0.00|(Excludes petty cash payments: 0.00)|"
            "(Excludes cash back: 0.00)||Net sales: 4.50|Cost of sales: 2.25|"
            "Gross profit: 2.25||Monthly till totals:|March      2023: 100.00|"
            "April      2023: 0.00|May        2023: 0.00|June       2023: 0.00|"
            "July       2023: 0.00|August     2023: 0.00|September  2023: 0.00|"
            "October    2023: 0.00|November   2023: 0.00|December   2023: 0.00|"
            "January    2024: 0.00|February   2024: 40.00|March      2024: 22.50|"
            "(Excludes credit sales, refunds and petty cash payments.|"
            " Includes customer balance payments).|");
  // One page at x = 0, a row per line height, nothing but the device's font.
  EXPECT_EQ(printers_.count("begin_page"), 1);
  EXPECT_EQ(printers_.count("select_font"), 0);
  EXPECT_EQ(printers_.count("text_out 0 168 Ontime"), 1);

  // Without the monthly block the page ends at the gross profit's blank row.
  S().omit_monthly_till_totals = 2;
  EXPECT_EQ(ActivitySummaryRows(platform().now()).size(), 43u);
}

}  // namespace
}  // namespace tilo
