// SPDX-License-Identifier: MIT
// "Customer transaction" shows an untaxed customer the basket they pay, and its
// buttons settle the sale.
#include "tender/ui/account_forms.h"

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include "core/customer_file.h"
#include "core/history.h"
#include "sale/sale_fixture.h"
#include "tender/account.h"
#include "tender/tender_view.h"

namespace tilo {
namespace {

struct FormAccount : AccountView {
  int customer_transaction(const std::vector<AccountField>& fields) override {
    CustomerTransactionDialog form(nullptr, fields);
    EXPECT_EQ(form.windowTitle(), "Customer transaction");
    EXPECT_TRUE(form.button("Credit")->isDefault());
    for (const auto& [label, text] : expected)
      EXPECT_EQ(form.field(QString::fromStdString(label))->text().toStdString(), text) << label;
    QTest::mouseClick(form.button(press), Qt::LeftButton);
    return form.tender();
  }
  std::vector<AccountField> expected;
  QString press;
};

class AccountFormsTest : public SaleTest {
 protected:
  void SetUp() override {
    SaleTest::SetUp();
    install_account_view(&view_);
    // The summary box without a screen, whatever an earlier test installed.
    install_tender_view(nullptr);
    platform_.set_now(2024, 3, 15, 14, 5);
    Makelogdirs();
    S().tax1_switch = 2;
    S().tax1_rate = 2000;
    Stock(1002, 10.00f, 2);
    ASSERT_TRUE(LoadCustomerIndex());
    MemberRecord m{};
    m.number = 7;
    SetField(m.name, "ANN SMITH");
    m.balance = 1.00f;
    m.credit_limit = 2000.00f;
    m.tax = 0;  // untaxed
    CompleteNewMember(m);
    ASSERT_TRUE(Insertmember(m));
  }
  void TearDown() override {
    install_account_view(nullptr);
    SaleTest::TearDown();
  }
  FormAccount view_;
};

// The sums themselves are the account logic's; the form shows an untaxed
// customer's taxes blank and settles on its default button.
TEST_F(AccountFormsTest, AnUntaxedCustomerSeesTheTaxesBlank) {
  Addtobasket(1002, 0);
  platform_.queue_prompt("7");
  view_.expected = {{"Sub Total", "10.00"}, {"Tax 1", ""},        {"Tax 2", ""},
                    {"Total", "10.00"},     {"Balance", "11.00"}, {"Customer", "7"},
                    {"Name", "ANN SMITH"},  {"Time", "14:05"}};
  view_.press = "Credit";
  Creditsale();
  EXPECT_STREQ(ReadSalesLog(2024, 3, 15).back().payment_type, "Credit");
  EXPECT_FLOAT_EQ(ReadSalesLog(2024, 3, 15).back().total, 10.00f);
}

}  // namespace
}  // namespace tilo
