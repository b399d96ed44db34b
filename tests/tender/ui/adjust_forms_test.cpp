// SPDX-License-Identifier: MIT
// The price change forms on the real main window: opened by the sale buttons,
// placed over the till, typed into, and the basket after their buttons.
#include "tender/ui/adjust_forms.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTest>

#include "core/inventory.h"
#include "core/settings.h"
#include "core/state.h"
#include "core/text.h"
#include "sale/basket.h"
#include "sale/commands.h"
#include "sale/pricing.h"
#include "support/window_fixture.h"

namespace tilo {
namespace {

using ::testing::ElementsAre;

class AdjustFormsTest : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    ASSERT_TRUE(Opensettings());
    ASSERT_TRUE(G().films.Load());
    FilmRecord r{};
    r.number = 1001;
    SetField(r.description, "CHEESE");
    r.retail_price = 4.00f;
    r.cost_price = 2.50f;
    r.quantity = 9;
    ASSERT_TRUE(Insertnumber(r));
    ResetState();
    OpenWindow(true);
    G().item_text = "1001";
    Addtobasket(1001, 0);
    platform_.clear_record();
  }
  void TearDown() override {
    for (QWidget* w : QApplication::topLevelWidgets())
      if (qobject_cast<PriceChangeForm*>(w)) delete w;
    WindowTest::TearDown();
  }
  void Press(const char* button) {
    auto* b = window_->findChild<QAbstractButton*>(button);
    ASSERT_NE(b, nullptr) << button;
    b->click();
  }
  template <class T>
  T* Open(const char* button) {
    Press(button);
    for (QWidget* w : QApplication::topLevelWidgets())
      if (auto* f = qobject_cast<T*>(w); f && f->isVisible()) return f;
    return nullptr;
  }
  static void Settle() { QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }
};

TEST_F(AdjustFormsTest, ThePriceFormSitsOverTheTillAndKeepsTheFocusUntilOk) {
  QPointer<AdjustPriceForm> form = Open<AdjustPriceForm>("adjustButton");
  ASSERT_TRUE(form);
  EXPECT_EQ(form->windowTitle(), "Adjust item price");
  const QRect till = window_->frameGeometry(), f = form->frameGeometry();
  EXPECT_EQ(f.y() + f.height(), till.bottom() - 10);
  EXPECT_LE(std::abs(f.center().x() - till.center().x()), 1);
  EXPECT_EQ(form->cost()->text(), "2.50");  // clerk 1 sees costs
  EXPECT_EQ(form->listPrice()->text(), "4.00");

  // A command while the form is up only sends the focus back to its box.
  form->ok()->setFocus();
  Press("voidButton");
  EXPECT_EQ(form->focusWidget(), form->amended());
  EXPECT_EQ(G().basket.line_count, 1);

  QTest::keyClicks(form->amended(), "2000001");
  EXPECT_THAT(platform_.shown(), ElementsAre("Problem: Invalid price, limit 20000.00"));
  EXPECT_EQ(form->amended()->text(), "");
  EXPECT_EQ(form->figure(4)->text(), "4.00");
  QTest::keyClicks(form->amended(), "355");
  EXPECT_EQ(form->figure(0)->text(), "3.55");
  QTest::keyClick(form->amended(), Qt::Key_Return);
  Settle();
  EXPECT_FALSE(form);
  EXPECT_EQ(G().tender_form_open, 0);
  EXPECT_EQ(MoneyText(G().basket.total), "3.55");
  EXPECT_THAT(G().basket_list.rows, ElementsAre("CHEESE (9)  3.55"));
}

TEST_F(AdjustFormsTest, CostsHideFromOtherClerksAndCancelChangesNothing) {
  G().settings.hide_cost = 2;
  G().settings.clerk_number = 3;
  QPointer<AdjustWeightForm> form = Open<AdjustWeightForm>("weightButton");
  ASSERT_TRUE(form);
  EXPECT_EQ(form->cost()->text(), "");
  EXPECT_EQ(form->weights()->currentText(), "100");
  QTest::keyClicks(form->weight(), "250");
  EXPECT_EQ(form->price()->text(), "10.00");
  EXPECT_EQ(form->figure(4)->text(), "10.00");
  QTest::keyClick(form->weight(), Qt::Key_Escape);
  Settle();
  EXPECT_FALSE(form);
  EXPECT_EQ(MoneyText(G().basket.total), "4.00");
  G().settings.clerk_number = 2;
  form = Open<AdjustWeightForm>("weightButton");
  EXPECT_EQ(form->cost()->text(), "2.50");
}

TEST_F(AdjustFormsTest, TheNonInventoryFormBuildsItsLineFromItsKeys) {
  G().settings.non_inventory_taxable = 2;
  G().settings.tax1_switch = 1;
  G().settings.tax1_rate = 2000;
  G().settings.tax2_switch = 0;
  NonInventoryForm form(window_.get());
  EXPECT_TRUE(form.tax(1)->isChecked());
  auto key = [&form](const QString& face) {
    for (QPushButton* k : form.findChildren<QPushButton*>())
      if (k->text() == face && !k->objectName().isEmpty()) return k->click();
    FAIL() << face.toStdString();
  };
  key("A");
  key("5");
  key("Back");
  EXPECT_EQ(form.description()->text(), "A");
  key("Lottery");
  EXPECT_EQ(form.description()->text(), "Lottery");
  key("20.00");
  EXPECT_EQ(form.price()->text(), "20.00");
  form.price()->setText("2.50");
  EXPECT_EQ(form.figure(1)->text(), "0.50");
  EXPECT_EQ(form.figure(3)->text(), "3.00");
  form.tax(1)->setChecked(false);
  EXPECT_EQ(form.figure(3)->text(), "2.50");
  form.add()->click();
  ASSERT_TRUE(form.line());
  EXPECT_STREQ(form.line()->description, "Lottery");
  EXPECT_EQ(form.line()->line_total, 2.50f);
}

}  // namespace
}  // namespace tilo
