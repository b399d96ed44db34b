// SPDX-License-Identifier: MIT
#include "tender/ui/split_form.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include "sale/basket.h"
#include "sale/sale_fixture.h"
#include "sale/ui/sale_screen.h"
#include "tender/ui/cash_form.h"

namespace tilo {
namespace {

using ::testing::ElementsAre;

class SplitFormTest : public SaleTest {
 protected:
  void SetUp() override {
    SaleTest::SetUp();
    Stock(3000, 30.00f);
  }
  void TearDown() override {
    delete split_.data();
    delete cash_.data();
    QApplication::processEvents();
    SaleTest::TearDown();
  }
  template <typename Form>
  static Form* Shown() {
    for (QWidget* w : QApplication::topLevelWidgets())
      if (auto* f = qobject_cast<Form*>(w); f && f->isVisible()) return f;
    return nullptr;
  }
  static void Settle() { QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }
  QPointer<SplitForm> split_;
  QPointer<CashForm> cash_;
};

TEST_F(SplitFormTest, TheRestFollowsTheCashAndTheCashStepAsksForTheCashPart) {
  Addtobasket(3000, 0);
  Splitcommand();
  split_ = Shown<SplitForm>();
  ASSERT_TRUE(split_);
  EXPECT_TRUE(split_->card()->isChecked());
  EXPECT_EQ(split_->total()->text(), "30.00");
  EXPECT_EQ(TenderAmountField(), split_->cash());
  QTest::keyClicks(split_->cash(), "1x000");
  EXPECT_EQ(split_->rest()->text(), "20.00");  // digits only
  QTest::keyClicks(split_->cash(), "0");
  EXPECT_EQ(split_->rest()->text(), "");
  split_->ok()->click();
  EXPECT_THAT(platform_.shown(), ElementsAre("Problem: Cash exceeds total"));
  EXPECT_EQ(split_->cash()->text(), "");

  QTest::keyClicks(split_->cash(), "1000");
  split_->ok()->click();
  Settle();
  cash_ = Shown<CashForm>();
  ASSERT_TRUE(cash_);
  EXPECT_FALSE(split_);
  EXPECT_EQ(cash_->total()->text(), "10.00");
  EXPECT_EQ(cash_->note(2)->text(), "20.00");
  QTest::keyClicks(cash_->tendered(), "2000");
  EXPECT_EQ(cash_->change()->text(), "10.00");
  // Cancel here takes the parts back.
  QTest::keyClick(cash_->tendered(), Qt::Key_Escape);
  Settle();
  EXPECT_EQ(G().tender_form_open, 0);
  EXPECT_EQ(B().tender_eft, 0.0f);
  EXPECT_EQ(B().line_count, 1);
}

}  // namespace
}  // namespace tilo
