// SPDX-License-Identifier: MIT
// Form 816: each field's limit and case as typed, the title and the field that
// takes the cursor, and the record handed back with what no form writes kept.
#include "customers/ui/supplier_form.h"

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QTest>
#include <cstring>

#include "core/text.h"
#include "support/shop_fixture.h"

namespace tilo {
namespace {

using SupplierFormTest = ShopTest;

TEST_F(SupplierFormTest, FieldsTakeTheirLimitsAndFoldAsTabled) {
  struct Case {
    const char* label;
    int limit;
    bool folds;
  };
  const Case cases[] = {
      {"Number", 39, false},      {"Name", 40, true},      {"Road", 28, true},
      {"Area", 28, true},         {"Town", 28, true},      {"Zip / Post", 8, true},
      {"Telephone 1", 18, true},  {"Ext", 18, false},      {"Telephone 2", 18, true},
      {"Email", 38, true},        {"Fax", 18, true},       {"Contact", 58, true},
      {"Origination", 38, true},  {"Comment 1", 28, true}, {"Comment 2", 38, true},
      {"Credit limit", 38, true}, {"Terms", 38, true},     {"Notes", 198, false},
  };
  SupplierForm form{SupplierFormMode::New, MansRecord{}};
  form.record.number = 4;
  form.record.held = 12;
  SupplierDialog d(nullptr, form);
  EXPECT_EQ(d.windowTitle(), "New supplier");
  EXPECT_EQ(d.edit("Number")->text(), "4");
  for (const Case& c : cases) {
    SCOPED_TRACE(c.label);
    QLineEdit* e = d.edit(c.label);
    ASSERT_NE(e, nullptr);
    e->clear();
    QTest::keyClicks(e, QString(c.limit + 5, QChar('a')));
    EXPECT_EQ(e->text(), QString(c.limit, QChar(c.folds ? 'A' : 'a')));
  }
  // Typing "é" folds to "É", kept as one Windows-1252 byte.
  d.edit("Name")->clear();
  QTest::keyClicks(d.edit("Name"), "caf");
  QTest::sendKeyEvent(QTest::Click, d.edit("Name"), Qt::Key_Eacute, QString::fromUtf8("\xC3\xA9"),
                      Qt::NoModifier);
  QTest::keyClicks(d.edit("Name"), " ltd");
  d.edit("Number")->setText("17");
  const MansRecord r = d.collected();
  EXPECT_EQ(r.number, 17);
  EXPECT_EQ(FieldText(r.name), "CAF\xC9 LTD");
  EXPECT_EQ(FieldText(r.notes), std::string(198, 'a'));
  EXPECT_EQ(FieldText(r.postcode), "AAAAAAAA");
  EXPECT_EQ(r.held, 12);

  // Find shows the record read-only; amending starts in "Name".
  SupplierDialog view(nullptr, SupplierForm{SupplierFormMode::View, r});
  EXPECT_EQ(view.windowTitle(), "Supplier");
  EXPECT_TRUE(view.edit("Terms")->isReadOnly());
  SupplierDialog amend(nullptr, SupplierForm{SupplierFormMode::Amend, r});
  EXPECT_EQ(amend.windowTitle(), "Amend supplier");
  EXPECT_FALSE(amend.edit("Number")->isReadOnly());
  EXPECT_EQ(amend.focusWidget(), amend.edit("Name"));
}

}  // namespace
}  // namespace tilo
