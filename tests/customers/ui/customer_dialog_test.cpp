// SPDX-License-Identifier: MIT
#include "customers/ui/customer_dialog.h"

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <cstring>

#include "core/state.h"
#include "support/shop_fixture.h"

namespace tilo {
namespace {

using CustomerDialogTest = ShopTest;

QLineEdit* Line(const CustomerDialog& d, CustomerBox b) {
  return qobject_cast<QLineEdit*>(d.box(b));
}

TEST_F(CustomerDialogTest, ALongFaxRunsOnIntoTheShippingName) {
  CustomerDialog dialog(nullptr, CustomerLayout::New);
  dialog.setEntries(BlankCustomer());
  QTest::keyClicks(Line(dialog, kBoxName), "smith");
  QTest::keyClicks(Line(dialog, kBoxShipping1), "warehouse 4");
  // Typed in lower case, folded as typed, cut at 29 characters.
  QTest::keyClicks(Line(dialog, kBoxFax), "0113 496 0000 ext 1234 to 999 extra");
  EXPECT_EQ(Line(dialog, kBoxFax)->text(), "0113 496 0000 EXT 1234 TO 999");
  QTest::mouseClick(dialog.okButton(), Qt::LeftButton);
  EXPECT_EQ(dialog.pressed(), FormButton::Ok);

  MemberRecord r{};
  StoreEntries(dialog.entries(), r, true);
  const char* bytes = reinterpret_cast<const char*>(&r);
  EXPECT_EQ(std::string(bytes + 198, 29), "0113 496 0000 EXT 1234 TO 999");
  EXPECT_EQ(bytes[198 + 29], '\0');
  // The shipping name now starts with the tail of the fax.
  EXPECT_STREQ(r.shipping_address_1, "34 TO 999");
  EXPECT_EQ(EntriesOf(r)[kBoxFax], "0113 496 0000 EXT 1234 TO 999");
}

TEST_F(CustomerDialogTest, AmendLayoutHidesBalanceAndNext) {
  CustomerDialog dialog(nullptr, CustomerLayout::Amend);
  dialog.show();
  EXPECT_EQ(dialog.windowTitle(), "Amend customer");
  EXPECT_FALSE(dialog.box(kBoxBalance)->isVisible());
  EXPECT_FALSE(dialog.nextButton()->isVisible());
  EXPECT_TRUE(Line(dialog, kBoxNumber)->isEnabled());
}

}  // namespace
}  // namespace tilo
