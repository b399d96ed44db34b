// SPDX-License-Identifier: MIT
// STATEMENT on the screen: the command walks under the report box, shows the
// customer and the rows, and its print button prints the statement.
#include "documents/ui/statement_form.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>

#include "core/customer_file.h"
#include "core/state.h"
#include "core/text.h"
#include "documents/recording_target.h"
#include "platform/files.h"
#include "reports/ui/report_forms.h"
#include "support/shop_fixture.h"

namespace tilo {
namespace {

class StatementFormTest : public ShopTest {
 protected:
  void TearDown() override {
    install_print_service(nullptr);
    install_statement_view(nullptr);
    install_report_view(nullptr);
    ShopTest::TearDown();
  }
  RecordingPrintService printers;
};

TEST_F(StatementFormTest, StatementShowsTheCustomerAndRowsAndPrints) {
  MakeFreshShop();
  ASSERT_TRUE(Opensettings() && LoadCustomerIndex());
  InstallReportHandlers();
  InstallStatementHandlers();
  install_print_service(&printers);
  platform_.set_now(2026, 3, 10);
  G().settings.history_from_year = 2026;
  G().settings.history_from_month = G().settings.history_from_day = 1;
  G().settings.print_confirm = 0;
  MemberRecord m{};
  m.number = 7;
  SetField(m.name, Utf8ToCp1252("ZOË SMITH"));
  m.balance = 10;
  CompleteNewMember(m);
  ASSERT_TRUE(Insertmember(m));
  for (const std::string& f : {YearFolder(2026), MonthFolder(2026, 3), DayFolder(2026, 3, 2)})
    MakeFolder(f);
  SalesLogRecord r{};
  r.transaction_number = 3;
  r.customer_number = 7;
  r.total = 10;
  SetField(r.payment_type, "Credit");
  ASSERT_TRUE(AppendSalesLog(2026, 3, 2, r));

  QStringList seen;
  QTimer::singleShot(200, [&] {
    for (QWidget* w : QApplication::topLevelWidgets()) {
      auto* dialog = qobject_cast<StatementDialog*>(w);
      if (!dialog || !dialog->isVisible()) continue;
      seen << dialog->windowTitle() << dialog->customer()->text()
           << (dialog->customer()->isReadOnly() ? "read-only" : "editable");
      for (int i = 0; i < dialog->list()->count(); ++i) seen << dialog->list()->item(i)->text();
      dialog->print()->click();
      dialog->accept();
    }
  });
  platform_.queue_prompt("7");
  Customerstatement();
  EXPECT_EQ(
      seen,
      (QStringList{"Statement", QString::fromUtf8("CUSTOMER: 7  ZOË SMITH"), "read-only",
                   "Credit sale: Mon 2 Mar 26,  Transaction: 3, Total: 10.00", "Balance: 10.00"}));
  EXPECT_EQ(printers.count("begin_page"), 1);
}

}  // namespace
}  // namespace tilo
