// SPDX-License-Identifier: MIT
// "Configuration" on the screen: pages built when first shown, "Apply" woken
// only by typing, "Cancel" leaving the record alone, "OK" storing the pages shown.
#include "config/ui/config_sheet.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <cstring>

#include "core/settings.h"
#include "core/state.h"
#include "support/shop_fixture.h"

namespace tilo {
namespace {

class ConfigSheetTest : public ShopTest {
 protected:
  void SetUp() override {
    ShopTest::SetUp();
    MakeFreshShop();
    ASSERT_TRUE(Opensettings());
    G().settings.pole_enabled = 7;  // a page that stored would make this 2
    G().settings.drawer_enabled = 5;
  }
  template <typename T>
  T* Find(ConfigSheet& sheet, const char* name) {
    T* found = sheet.findChild<T*>(name);
    EXPECT_NE(found, nullptr) << name;
    return found;
  }
};

TEST_F(ConfigSheetTest, PagesAreBuiltWhenFirstShownAndOnlyTypingWakesApply) {
  ConfigSheet sheet(nullptr);
  EXPECT_EQ(sheet.windowTitle(), "Configuration");
  EXPECT_TRUE(sheet.built(0));
  for (int page = 1; page < 5; ++page) EXPECT_FALSE(sheet.built(page));
  sheet.tabs()->setCurrentIndex(3);
  EXPECT_TRUE(sheet.built(3));
  EXPECT_FALSE(sheet.built(1));
  EXPECT_FALSE(sheet.built(4));
  EXPECT_LE(sheet.width(), 800);
  EXPECT_LE(sheet.height(), 600);

  EXPECT_FALSE(sheet.apply()->isEnabled());
  Find<QCheckBox>(sheet, "negative_stock")->click();
  Find<QComboBox>(sheet, "discount_button_rate")->setCurrentIndex(10);
  EXPECT_FALSE(sheet.apply()->isEnabled());
  QTest::keyClicks(Find<QLineEdit>(sheet, "drawer_open_char"), "9");
  EXPECT_TRUE(sheet.apply()->isEnabled());
}

TEST_F(ConfigSheetTest, CancelStoresNothingAndOkStoresOnlyThePagesShown) {
  {
    ConfigSheet sheet(nullptr);
    const SettingsRecord opened = G().settings;
    Find<QLineEdit>(sheet, "till_float")->setText("55");
    Find<QCheckBox>(sheet, "negative_stock")->click();
    sheet.cancel()->click();
    EXPECT_EQ(std::memcmp(&opened, &G().settings, sizeof opened), 0);
  }
  ConfigSheet sheet(nullptr);
  QLineEdit* till = Find<QLineEdit>(sheet, "till_float");
  till->selectAll();
  QTest::keyClicks(till, "55x");
  QLineEdit* category = Find<QLineEdit>(sheet, "category2");
  category->selectAll();
  QTest::keyClicks(category, "bier");
  sheet.ok()->click();
  const SettingsRecord& s = G().settings;
  EXPECT_FLOAT_EQ(s.till_float, 55.0f);
  EXPECT_EQ(CategoryCode(s, 2), "BIE");  // folded to capitals as typed
  EXPECT_EQ(s.pole_enabled, 7);
  EXPECT_EQ(s.drawer_enabled, 5);
  // "OK" wrote the record through at once.
  const std::string cfg = Bytes("wr.cfg");
  ASSERT_EQ(cfg.size(), sizeof(SettingsRecord));
  EXPECT_EQ(std::memcmp(cfg.data(), &s, cfg.size()), 0);
}

TEST_F(ConfigSheetTest, SmallFormsHaveOnePageAndOkWritesTheirFile) {
  ReadHeadingLines(G().heading);
  struct Case {
    const PageTable& form;
    const char* box;
    const char* typed;
    const char* file;
    size_t offset;
    std::string bytes;
  } cases[] = {
      {TaxForm(), "tax1_rate", "1000", "wr.cfg", 1144, std::string("\xe8\x03\0\0", 4)},
      {CustomReceiptForm(), "line_date", "-1", "wr.cfg", 33258, "\xff\xff\xff\xff"},
      {InvoiceForm(), "line_items", "22", "wr.cfg", 40738, std::string("\x16\0\0\0", 4)},
      {HeadingForm(), "site_road", "1 High St", "ADDRESS.VT", 42, std::string("1 High St\0", 10)},
  };
  for (const Case& c : cases) {
    ConfigSheet form(nullptr, c.form);
    EXPECT_EQ(form.windowTitle().toStdString(), c.form.tab);
    EXPECT_FALSE(form.apply()->isVisibleTo(&form));
    QLineEdit* box = Find<QLineEdit>(form, c.box);
    box->selectAll();
    QTest::keyClicks(box, c.typed);
    form.ok()->click();
    EXPECT_EQ(Bytes(c.file).substr(c.offset, c.bytes.size()), c.bytes) << c.box;
  }
}

}  // namespace
}  // namespace tilo
