// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <QPlainTextEdit>
#include <QTest>

#include "documents/ui/mailmerge_form.h"
#include "support/shop_fixture.h"

namespace tilo {
namespace {

class MailmergeFormTest : public ShopTest {};

// Typing stops at 1,000 bytes of stored text, a line end counting two.
TEST_F(MailmergeFormTest, TypingStopsAtTheBuffersSize) {
  MergeEntries e{"1", "9", std::string(997, 'A'), MergeSelection::All};
  MailmergeForm form(nullptr, e);
  form.text()->moveCursor(QTextCursor::End);
  QTest::keyClicks(form.text(), "BC");
  QTest::keyClick(form.text(), Qt::Key_Return);
  QTest::keyClicks(form.text(), "D");
  // The line end would have taken two bytes, the D takes the last one.
  EXPECT_EQ(form.entries().text, std::string(997, 'A') + "BCD");
  // Room made earlier in the text takes typing there.
  form.text()->moveCursor(QTextCursor::Start);
  QTest::keyClick(form.text(), Qt::Key_Delete);
  QTest::keyClicks(form.text(), "XY");
  EXPECT_EQ(form.entries().text, "X" + std::string(996, 'A') + "BCD");
}

}  // namespace
}  // namespace tilo
