// SPDX-License-Identifier: MIT
// The "Barcode print" box: a layout or a symbology brings its defaults, and a
// number beyond the highest keeps the box open with its message.
#include <gtest/gtest.h>

#include <QLineEdit>
#include <QRadioButton>
#include <QTest>

#include "documents/ui/label_form.h"
#include "support/shop_fixture.h"

namespace tilo {
namespace {

class LabelFormTest : public ShopTest {};

TEST_F(LabelFormTest, ButtonsBringTheirDefaultsAndTheRangeLimitKeepsTheBoxOpen) {
  LabelPrintForm form;
  EXPECT_EQ(form.windowTitle(), "Barcode print");
  EXPECT_FALSE(form.field("quantity")->isEnabled());
  QTest::mouseClick(form.layout(kThreeColumn), Qt::LeftButton);
  QTest::mouseClick(form.barcodeType(kEan13), Qt::LeftButton);
  QTest::mouseClick(form.source(kLabelRepeat), Qt::LeftButton);
  EXPECT_EQ(form.field("labelHeight")->text(), "1690");
  EXPECT_EQ(form.field("labelsPerSheet")->text(), "48");
  EXPECT_EQ(form.field("elementWidth")->text(), "50");
  EXPECT_FALSE(form.field("originX")->isEnabled());
  EXPECT_TRUE(form.field("quantity")->isEnabled());

  form.field("start")->setText("100000000000000001");
  form.accept();
  EXPECT_NE(form.result(), QDialog::Accepted);
  EXPECT_EQ(platform_.shown(), std::vector<std::string>{"Problem: Range limit 100000000000000000"});

  form.field("start")->setText("1001");
  form.field("quantity")->setText("3");
  form.accept();
  EXPECT_EQ(form.result(), QDialog::Accepted);
  EXPECT_EQ(form.settings().quantity, 3);
  EXPECT_EQ(form.settings().layout, kThreeColumn);
  EXPECT_EQ(form.settings().barcode_type, kEan13);
}

}  // namespace
}  // namespace tilo
