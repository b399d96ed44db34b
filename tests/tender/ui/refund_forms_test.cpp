// SPDX-License-Identifier: MIT
// The refund form's choices, and the "Transaction" form showing a refund just
// made: its figures, its lines, "&Next" at the end, and no invoice to print yet.
#include "tender/ui/refund_forms.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include "core/history.h"
#include "sale/sale_fixture.h"
#include "tender/browse.h"
#include "tender/refund.h"

namespace tilo {
namespace {

using ::testing::ElementsAre;

struct FormRefund : RefundView {
  std::optional<RefundChoice> refund_form() override {
    RefundDialog form(nullptr);
    EXPECT_EQ(form.field("Total")->text(), "4.50");
    EXPECT_TRUE(form.option("Add items back to stock")->isChecked());
    EXPECT_TRUE(form.option("Cash refund")->isChecked());
    QTest::mouseClick(form.option("CH refund"), Qt::LeftButton);
    QTest::mouseClick(form.option("Items faulty, do not add back to stock"), Qt::LeftButton);
    chosen = form.choice();
    return chosen;
  }
  RefundChoice chosen;
};

class RefundFormsTest : public SaleTest {
 protected:
  void SetUp() override {
    SaleTest::SetUp();
    install_refund_view(&view_);
    platform_.set_now(2024, 3, 15, 14, 5);
    Makelogdirs();
    Stock(1001, 4.50f);
  }
  void TearDown() override {
    install_refund_view(nullptr);
    SaleTest::TearDown();
  }
  FormRefund view_;
};

TEST_F(RefundFormsTest, TheTransactionFormShowsARefund) {
  Addtobasket(1001, 0);
  const int32_t number = S().transaction_number;
  Refundbasket();
  EXPECT_EQ(view_.chosen.method, kChRefund);
  EXPECT_TRUE(view_.chosen.faulty);
  platform_.clear_record();

  TransactionBrowser browser(false);
  ASSERT_TRUE(browser.Open(number));
  TransactionDialog form(nullptr, browser);
  EXPECT_EQ(form.windowTitle(), "Transaction");
  const std::pair<const char*, const char*> expected[] = {
      {"Type", "Refund"},         {"Number", "1"},    {"Items", "1"},
      {"Customer", "N/A"},        {"Total", "-4.50"}, {"Sub total", "-4.50"},
      {"Payment type", "Refund"}, {"Time", "14:05"},  {"Discount", "0.00"}};
  for (const auto& [label, text] : expected) EXPECT_EQ(form.field(label)->text(), text) << label;
  ASSERT_EQ(form.inventory()->count(), 1);
  EXPECT_EQ(form.inventory()->item(0)->text(), "1001 ITEM 1001  4.50");
  EXPECT_EQ(form.inventory()->currentRow(), 0);
  EXPECT_TRUE(form.button("Invoice")->isEnabled());
  EXPECT_TRUE(form.button("Till receipt")->isEnabled());
  EXPECT_FLOAT_EQ(G().basket.total, -4.50f);

  QTest::mouseClick(form.button("&Next"), Qt::LeftButton);
  EXPECT_THAT(platform_.shown(), ElementsAre("Problem: End of list."));
  EXPECT_EQ(form.field("Number")->text(), "1");
}

}  // namespace
}  // namespace tilo
