// SPDX-License-Identifier: MIT
// The listing forms give back what was chosen: a category or "All", and the
// custom print's ticks and range.
#include "reports/ui/listing_forms.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLineEdit>
#include <QListWidget>

#include "core/settings.h"
#include "support/shop_fixture.h"

namespace tilo {
namespace {

class ListingFormsTest : public ShopTest {
 protected:
  void SetUp() override {
    ShopTest::SetUp();
    MakeFreshShop();
    ASSERT_TRUE(Opensettings());
  }
};

TEST_F(ListingFormsTest, CategoryAndCustomPrintGiveBackTheChoice) {
  CategoryForm plain(nullptr, false), with_all(nullptr, true);
  EXPECT_EQ(plain.list()->count(), 18);
  EXPECT_EQ(plain.windowTitle(), "Select category");
  with_all.list()->setCurrentRow(18);
  EXPECT_EQ(with_all.list()->currentItem()->text(), "All");
  EXPECT_EQ(with_all.chosen(), kAllCategories);

  CustomFields fields{};
  fields[3] = 2;
  CustomPrintForm form(nullptr, fields, "1", "99");
  EXPECT_EQ(form.windowTitle(), "Custom Inventory Print");
  EXPECT_TRUE(form.tick(3)->isChecked());
  form.tick(3)->setChecked(false);
  form.tick(19)->setChecked(true);
  form.to()->setText("50");
  CustomFields expected{};
  expected[19] = 2;
  EXPECT_EQ(form.fields(), expected);
  EXPECT_EQ(form.from()->text(), "1");
  EXPECT_EQ(form.to()->text(), "50");
}

}  // namespace
}  // namespace tilo
