// SPDX-License-Identifier: MIT
// F12 from the main window shows dialog 814 filled in (on 3 January, its week
// ends in December of the year before), and the log viewer
// steps through a log of 70,000 bytes read-only, pounds and all.
#include "reports/ui/activity_forms.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>

#include "core/activity_log.h"
#include "core/state.h"
#include "sale/commands.h"
#include "support/window_fixture.h"

namespace tilo {
namespace {

class ActivityFormsTest : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    platform_.set_now(2025, 1, 3, 9, 30);
    OpenWindow();
  }
  // Runs `look` on the modal form that `command` opens, then closes it.
  template <typename Form, typename Look>
  void WithForm(Command command, Look look) {
    WithModal<Form>(command, look, [](Form& form) { form.accept(); });
  }
};

TEST_F(ActivityFormsTest, F12ShowsTheStatusScreen) {
  SettingsRecord& s = G().settings;
  s.till_takings = 12.50;
  s.cash_sales = 12.50;
  s.count_cash_sales = 2;
  s.takings_history[2] = 30.00;
  s.takings_history[9] = 20.00;
  WithForm<StatusDialog>(Command::ActivitySummary, [](StatusDialog& form) {
    EXPECT_EQ(form.windowTitle(), "TILO STATUS Friday January 3 2025 ");
    const QStringList texts = form.texts();
    for (const char* line :
         {"Today's till take: 12.50", "W/E 26/12/2024: 20.00", "W/E 2/1/2025: 30.00",
          "W/E 2/1 vs W/E 26/12: 150.00%", "Customer balance payments"})
      EXPECT_TRUE(texts.contains(line)) << line;
    EXPECT_EQ(form.figure("Cash sales"), "(2): 12.50");
    EXPECT_EQ(form.figure("Total sales"), "12.50");
    EXPECT_EQ(form.figure("Gross profit"), "0.00");
  });
}

TEST_F(ActivityFormsTest, TheLogViewerStepsThroughBlocks) {
  std::string log(70000, 'x');
  log.replace(0, 11,
              "Total: \xA3"
              "5\r\n");
  WriteBytes(kActivityLog, log);
  WithForm<LogDialog>(Command::DisplayLogFile, [](LogDialog& form) {
    EXPECT_EQ(form.windowTitle(), "TILO log");
    EXPECT_TRUE(form.text()->isReadOnly());
    EXPECT_TRUE(form.text()->toPlainText().startsWith(QString::fromUtf8("Total: £5\nxx")));
    EXPECT_FALSE(form.previous()->isEnabled());
    form.next()->click();
    EXPECT_TRUE(form.previous()->isEnabled());
  });
  // An earlier day's summary: the text or "No details", without the two buttons.
  for (const char* reply : {"3", "1", "2025"}) platform_.queue_prompt(reply);
  WithForm<LogDialog>(Command::PreviousActivitySummary, [](LogDialog& form) {
    EXPECT_EQ(form.windowTitle(), "Activity report");
    EXPECT_EQ(form.text()->toPlainText(), "No details");
    EXPECT_TRUE(form.next()->isHidden());
  });
}

}  // namespace
}  // namespace tilo
