// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QSlider>
#include <QTest>

#include "core/state.h"
#include "core/text.h"
#include "documents/recording_target.h"
#include "documents/ui/font_size_form.h"
#include "documents/ui/language_form.h"
#include "support/shop_fixture.h"

namespace tilo {
namespace {

class LanguageFormTest : public ShopTest {
 protected:
  void SetUp() override {
    ShopTest::SetUp();
    G().settings.language_index = 0;
    Loadwording();
    SetField(G().language.slot[kTendered], "Paid");
  }
};

TEST_F(LanguageFormTest, OpensOnTheLanguageInUseWithDefaultsBesideTheTexts) {
  LanguageForm form;
  EXPECT_EQ(form.windowTitle(), "Language customization");
  EXPECT_EQ(form.languageList()->currentText(), "English");
  EXPECT_EQ(form.languageList()->count(), 4);
  EXPECT_EQ(form.defaultField(kTendered)->text(), "Tendered");
  EXPECT_TRUE(form.defaultField(kTendered)->isReadOnly());
  EXPECT_EQ(form.textField(kTendered)->text(), "Paid");
}

TEST_F(LanguageFormTest, ChangingLanguageThenCancelLeavesTheTable) {
  LanguageForm form;
  form.languageList()->setCurrentIndex(2);
  EXPECT_EQ(form.textField(kReceipt)->text(), "Recepción");
  EXPECT_EQ(form.defaultField(kReceipt)->text(), "Recepción");
  form.reject();
  EXPECT_EQ(Wording(kTendered), "Paid");
  EXPECT_EQ(G().settings.language_index, 0);
}

TEST_F(LanguageFormTest, OkStoresTheTextsCutToTheSlot) {
  LanguageForm form;
  form.languageList()->setCurrentIndex(2);
  form.textField(kTerms)->clear();
  QTest::keyClicks(form.textField(kTerms), QString(85, 'y'));
  EXPECT_EQ(form.textField(kTerms)->text().size(), 80);
  form.textField(kTotal)->setText("Total a pagar ñ");
  form.accept();
  EXPECT_EQ(G().settings.language_index, 2);
  EXPECT_EQ(Wording(kTerms), std::string(79, 'y'));
  EXPECT_EQ(Wording(kTotal), "Total a pagar \xF1");
  EXPECT_EQ(Wording(kReceipt), "Recepci\xF3n");
  EXPECT_EQ(Wording(kLanguageName), "English");
}

TEST_F(LanguageFormTest, ResetBringsBackTheDefaults) {
  LanguageForm form;
  form.textField(kTotal)->setText("changed");
  QTest::mouseClick(form.findChild<QWidget*>("reset"), Qt::LeftButton);
  EXPECT_EQ(form.textField(kTotal)->text(), "Total");
  EXPECT_EQ(form.textField(kTendered)->text(), "Tendered");
}

class FontSizeFormTest : public ShopTest {
 protected:
  void SetUp() override {
    ShopTest::SetUp();
    printers_.device.page_width = 2400;
    printers_.device.page_height = 3300;
    install_print_service(&printers_);
  }
  void TearDown() override {
    install_print_service(nullptr);
    ShopTest::TearDown();
  }
  RecordingPrintService printers_;
};

TEST_F(FontSizeFormTest, TheTwoBoxesMakeDifferentWidthsFromOneSize) {
  G().settings.list_font_size = 0;
  FontSizeForm ps;
  EXPECT_EQ(ps.windowTitle(), "Printer font size");
  EXPECT_TRUE(ps.printerDefault()->isChecked());
  ps.printerDefault()->setChecked(false);
  ps.slider()->setValue(60);
  ps.accept();
  EXPECT_EQ(G().settings.list_font_size, 60);
  ASSERT_TRUE(G().list_font);
  EXPECT_EQ(G().list_font->width, 40);

  FontSizeForm ps2(nullptr, 250);
  EXPECT_EQ(ps2.windowTitle(), "Print");
  EXPECT_EQ(ps2.from()->text(), "1");
  EXPECT_EQ(ps2.to()->text(), "250");
  EXPECT_EQ(ps2.slider()->value(), 60);
  ps2.accept();
  EXPECT_EQ(G().list_font->width, 32);

  FontSizeForm back(nullptr);
  back.printerDefault()->setChecked(true);
  back.accept();
  EXPECT_EQ(G().settings.list_font_size, 0);
  EXPECT_FALSE(G().list_font);
}

}  // namespace
}  // namespace tilo
