// SPDX-License-Identifier: MIT
// The find forms give back what the operator chose: Next as its own answer,
// the search type the box opened on, and what is typed folded to upper case.
#include "inventory/ui/find_forms.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>

namespace tilo {
namespace {

TEST(FindFormsTest, FormsGiveBackWhatWasChosen) {
  FindRecordForm record(nullptr, "FIND INVENTORY", {{"Number", "12"}});
  QTimer::singleShot(0, &record, [&] { record.next()->click(); });
  EXPECT_EQ(record.exec(), 2);
  QTimer::singleShot(0, &record, [&] { record.ok()->click(); });
  EXPECT_EQ(record.exec(), 1);

  PicboxForm opened_within(nullptr, true);
  EXPECT_TRUE(opened_within.within()->isChecked());
  PicboxForm picbox(nullptr, false);
  EXPECT_FALSE(picbox.within()->isChecked());
  QTest::keyClicks(picbox.text(), "cro");
  EXPECT_EQ(picbox.text()->text(), "CRO");

  AdvancedSearchForm advanced(nullptr);
  QTest::keyClicks(advanced.box(3), "red");
  EXPECT_EQ(advanced.box(3)->text(), "RED");
  EXPECT_EQ(advanced.box(0)->maxLength(), 39);
  EXPECT_FALSE(advanced.all()->isChecked());
}

}  // namespace
}  // namespace tilo
