// SPDX-License-Identifier: MIT
// Customer accounts with scripted forms: a sale through each button of the
// customer form, the credit limit, a tax-free customer, and balance payments by
// each method, overpaid, given up, or for nobody.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <tuple>

#include "core/activity_log.h"
#include "core/customer_file.h"
#include "core/history.h"
#include "sale/commit.h"
#include "sale/pricing.h"
#include "sale/sale_fixture.h"
#include "tender/account.h"
#include "tender/browse.h"
#include "tender/tender_view.h"

namespace tilo {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct ScriptedAccount : AccountView {
  int customer_transaction(const std::vector<AccountField>& f) override {
    fields = f;
    return tender;
  }
  std::optional<PaymentEntry> payment(const PaymentShown& s) override {
    shown = s;
    return entry;
  }
  int tender = kTenderCancel;
  std::optional<PaymentEntry> entry;
  std::vector<AccountField> fields;
  PaymentShown shown;
};

// The summary box notes the balance on disk: a till killed there must find it untouched.
struct SummaryWatch : TenderView {
  void summary_box() override {
    Fetchmember(7);
    balance_at_summary = G().member.balance;
  }
  float balance_at_summary = -1;
};

class AccountTest : public SaleTest {
 protected:
  void SetUp() override {
    SaleTest::SetUp();
    install_account_view(&view_);
    install_tender_view(&summary_);
    platform_.set_now(2024, 3, 15, 14, 5);
    S().history_from_year = 2024;
    S().history_from_month = 1;
    S().history_from_day = 1;
    Makelogdirs();
    Stock(1001, 4.50f);
    Stock(1002, 10.00f, 2);
    ASSERT_TRUE(LoadCustomerIndex());
    AddCustomer(7, "ANN SMITH", 20.00f, 1);
    AddCustomer(8, "BOB JONES", 0.00f, 0);
  }
  void TearDown() override {
    install_tender_view(nullptr);
    install_account_view(nullptr);
    SaleTest::TearDown();
  }
  void AddCustomer(int64_t number, const char* name, float balance, int64_t tax) {
    MemberRecord m{};
    m.number = number;
    SetField(m.name, name);
    m.balance = balance;
    m.credit_limit = 2000.00f;
    m.tax = tax;
    m.terms = 1;
    CompleteNewMember(m);
    ASSERT_TRUE(Insertmember(m));
  }
  static MemberRecord Customer(int64_t number) {
    EXPECT_EQ(Fetchmember(number), number);
    return G().member;
  }
  static SettingsRecord OnDisk() {
    const SettingsRecord in_memory = S();
    EXPECT_TRUE(Opensettings());
    const SettingsRecord disk = S();
    S() = in_memory;
    return disk;
  }
  static std::string Field(const std::vector<AccountField>& fields, const std::string& label) {
    for (const auto& [l, text] : fields)
      if (l == label) return text;
    return "?";
  }

  ScriptedAccount view_;
  SummaryWatch summary_;
};

TEST_F(AccountTest, EachButtonTiesTheSaleToTheCustomerAndOnlyCreditMovesTheBalance) {
  struct Case {
    int tender;
    const char* type;
    float cash, ch, eft;
    double takings;
  };
  const Case cases[] = {
      {kTenderCredit, "Credit", 0, 0, 0, 0.00},
      {kTenderCash, "Cash", 4.50f, 0, 0, 4.50},
      {kTenderCh, "CH", 0, 4.50f, 0, 9.00},
      {kTenderEft, "EFT", 0, 0, 4.50f, 13.50},
  };
  int32_t number = S().transaction_number;
  int transactions = 0;
  for (const Case& c : cases) {
    SCOPED_TRACE(c.type);
    Addtobasket(1001, 0);
    platform_.clear_record();
    platform_.queue_prompt("7");
    view_.tender = c.tender;
    summary_.balance_at_summary = -1;
    Creditsale();

    EXPECT_THAT(platform_.shown(), IsEmpty());
    EXPECT_FLOAT_EQ(summary_.balance_at_summary, c.tender == kTenderCredit ? 20.00f : 24.50f);
    const SalesLogRecord sale = ReadSalesLog(2024, 3, 15).back();
    EXPECT_EQ(sale.customer_number, 7);
    EXPECT_STREQ(sale.payment_type, c.type);
    EXPECT_FLOAT_EQ(sale.total, 4.50f);
    EXPECT_EQ(std::tuple(sale.tender_cash, sale.tender_ch, sale.tender_eft),
              std::tuple(c.cash, c.ch, c.eft));
    EXPECT_FLOAT_EQ(sale.credit_before, c.tender == kTenderCredit ? 20.00f : 24.50f);
    EXPECT_FLOAT_EQ(sale.credit_after, 24.50f);

    const MemberRecord m = Customer(7);
    EXPECT_FLOAT_EQ(m.balance, 24.50f);
    EXPECT_EQ(m.transactions, ++transactions);
    EXPECT_FLOAT_EQ(m.total_purchases, 4.50f * float(transactions));
    EXPECT_EQ(m.last_transaction, number);
    EXPECT_STREQ(m.last_used, "14:0515/03/2024");
    const SettingsRecord disk = OnDisk();
    EXPECT_DOUBLE_EQ(disk.till_takings, c.takings);
    EXPECT_EQ(disk.transaction_number, number + 1);
    ++number;
  }
  const SettingsRecord disk = OnDisk();
  EXPECT_DOUBLE_EQ(disk.credit_sales, 4.50);
  EXPECT_DOUBLE_EQ(disk.sales_total, 18.00);
  for (float count :
       {disk.count_credit_sales, disk.count_cash_sales, disk.count_ch_sales, disk.count_eft_sales})
    EXPECT_FLOAT_EQ(count, 1.0f);
}

TEST_F(AccountTest, TheLimitPassesAtItACentOverAsksAndCancelLeavesAll) {
  struct Case {
    float balance;
    std::optional<Answer> asked;  // the answer to "Exceeded", none when not asked
    bool sold;
    int tender = kTenderCredit;
  };
  const Case cases[] = {
      {1995.50f, std::nullopt, true},
      {1995.51f, Answer::Cancel, false},
      {1995.51f, Answer::Ok, true},
      {20.00f, std::nullopt, false, kTenderCancel},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.balance);
    G().member = Customer(7);
    G().member.balance = c.balance;
    ASSERT_TRUE(Rewritemember());
    Addtobasket(1001, 0);
    platform_.clear_record();
    platform_.queue_prompt("7");
    if (c.asked) platform_.queue_answer(*c.asked);
    view_.tender = c.tender;
    const size_t sales = ReadSalesLog(2024, 3, 15).size();
    Creditsale();
    EXPECT_EQ(B().line_count, c.sold ? 0 : 1);
    EXPECT_EQ(B().customer_number, 0);
    if (c.asked)
      EXPECT_THAT(platform_.shown(), ElementsAre("Credit limit: Exceeded"));
    else
      EXPECT_THAT(platform_.shown(), IsEmpty());
    EXPECT_EQ(ReadSalesLog(2024, 3, 15).size(), sales + (c.sold ? 1 : 0));
    EXPECT_FLOAT_EQ(Customer(7).balance, c.sold ? c.balance + 4.50f : c.balance);
    Clearbasket();
  }
}

TEST_F(AccountTest, AnUntaxedCustomerBuysWithoutTaxToTheCent) {
  S().tax1_switch = 2;
  S().tax1_rate = 1750;
  Addtobasket(1002, 0);  // 10.00 + 1.75
  Addtobasket(1001, 0);  // untaxed 4.50
  Addtobasket(1002, 0);
  ASSERT_FLOAT_EQ(B().total, 28.00f);
  platform_.queue_prompt("8");
  view_.tender = kTenderCredit;
  Creditsale();

  const SalesLogRecord sale = ReadSalesLog(2024, 3, 15).back();
  EXPECT_FLOAT_EQ(sale.total, 24.50f);
  EXPECT_FLOAT_EQ(sale.total_taxable, 0.0f);
  EXPECT_FLOAT_EQ(sale.total_non_taxable, 24.50f);
  EXPECT_FLOAT_EQ(sale.total_tax1, 0.0f);
  for (const ItemsLogRecord& line : ReadItemsLog(2024, 3, 15)) {
    EXPECT_FLOAT_EQ(line.taxable, 0.0f);
    EXPECT_FLOAT_EQ(line.tax1, 0.0f);
    EXPECT_FLOAT_EQ(line.line_total, line.non_taxable);
  }
  EXPECT_FLOAT_EQ(Customer(8).balance, 24.50f);
}

TEST_F(AccountTest, EachMethodPaysTheBalanceDownWithItsOwnRecord) {
  struct Case {
    int method;
    const char* type;
    const char* name;
  };
  const Case cases[] = {
      {kPayCash, "Payment (cash)", "Cash"},
      {kPayCh, "Payment (ch)", "CH"},
      {kPayEft, "Payment (eft)", "EFT"},
  };
  int32_t number = S().transaction_number;
  float balance = 20.00f;
  for (const Case& c : cases) {
    SCOPED_TRACE(c.type);
    platform_.clear_record();
    platform_.queue_prompt("7");
    view_.entry = PaymentEntry{"5.25", c.method};
    const std::string log_before = Bytes(kActivityLog);
    Balancepayment();

    EXPECT_THAT(platform_.shown(), ElementsAre("Customer: Updated"));
    EXPECT_EQ(Field(view_.shown.fields, "Balance"), MoneyText(balance));
    const std::string base = Bytes("2024/base.dat");
    const BaseRecord entry{number, 15, 3};
    EXPECT_EQ(base.substr(base.size() - 12),
              std::string(reinterpret_cast<const char*>(&entry), 12));
    const std::string log = Bytes("2024/3/15/saleslog.dat");
    SalesLogRecord expected{};
    expected.transaction_number = number;
    expected.day_sequence = S().today_transactions;
    expected.customer_number = 7;
    expected.clerk = int32_t(S().clerk_number);
    expected.total = 5.25f;
    (c.method == kPayCash ? expected.tender_cash
     : c.method == kPayCh ? expected.tender_ch
                          : expected.tender_eft) = 5.25f;
    expected.credit_before = balance;
    balance -= 5.25f;
    expected.credit_after = balance;
    SetField(expected.sale_time, "14:05");
    SetField(expected.sale_date, "Fri 15 Mar 24");
    SetField(expected.payment_type, c.type);
    EXPECT_EQ(log.substr(log.size() - 950),
              std::string(reinterpret_cast<const char*>(&expected), 950));
    EXPECT_TRUE(ReadItemsLog(2024, 3, 15).empty());

    const std::string clerk =
        std::to_string(S().clerk_number) + ", " + ClerkName(S(), S().clerk_number);
    EXPECT_EQ(Bytes(kActivityLog),
              log_before + "\r\n14:05 15/03/2024 Payment: " + std::to_string(number) +
                  ", Total: 5.25\r\nClerk: " + clerk + "\r\nPayment type: " + c.name +
                  "\r\nCustomer: 7 ANN SMITH\r\n");
    const MemberRecord m = Customer(7);
    EXPECT_FLOAT_EQ(m.balance, balance);
    EXPECT_EQ(m.last_transaction, number);
    EXPECT_STREQ(m.last_payment, "14:0515/03/2024");
    EXPECT_EQ(OnDisk().transaction_number, number + 1);
    ++number;
  }
  const SettingsRecord disk = OnDisk();
  EXPECT_DOUBLE_EQ(disk.till_takings, 15.75);
  for (double sum : {disk.balance_cash, disk.balance_ch, disk.balance_eft})
    EXPECT_DOUBLE_EQ(sum, 5.25);
  for (float count : {disk.count_balance_cash, disk.count_balance_ch, disk.count_balance_eft})
    EXPECT_FLOAT_EQ(count, 1.0f);
  EXPECT_DOUBLE_EQ(disk.sales_total, 0.0);
}

TEST_F(AccountTest, OverpayingGivingUpAndNobodyStoreOnlyWhatWasAgreed) {
  const std::string bad = std::string("Payment: ") + kBadAmountText;
  const std::string exceeds = "Continue: Exceeds amount due", updated = "Customer: Updated";
  struct Case {
    std::optional<std::string> customer;
    std::optional<std::string> pay;  // none: the form is cancelled
    Answer to_exceeds;
    std::vector<std::string> shown;
    float balance;  // after
  };
  // clang-format off
  const Case cases[] = {
      {std::nullopt, "5.00", Answer::Ok, {}, 20.00f},
      {"99", "5.00", Answer::Ok, {}, 20.00f},  // nobody has that number
      {"7", std::nullopt, Answer::Ok, {}, 20.00f},
      {"7", "5,00", Answer::Ok, {bad}, 20.00f},
      {"7", "0.00", Answer::Ok, {updated}, 20.00f},
      {"7", "25.00", Answer::Cancel, {exceeds}, 20.00f},
      {"7", "25.00", Answer::Ok, {exceeds, updated}, -5.00f},
  };
  // clang-format on
  for (const Case& c : cases) {
    SCOPED_TRACE(c.pay.value_or("cancelled"));
    platform_.clear_record();
    platform_.queue_prompt(c.customer);
    platform_.queue_answer(c.to_exceeds);
    view_.entry = c.pay ? std::optional(PaymentEntry{*c.pay}) : std::nullopt;
    const int32_t number = S().transaction_number;
    const size_t sales = ReadSalesLog(2024, 3, 15).size();
    Balancepayment();
    platform_.answers.clear();
    EXPECT_EQ(platform_.shown(), c.shown);
    const bool taken = !c.shown.empty() && c.shown.back() == updated;
    EXPECT_EQ(ReadSalesLog(2024, 3, 15).size(), sales + (taken ? 1 : 0));
    EXPECT_EQ(S().transaction_number, number + (taken ? 1 : 0));
    EXPECT_FLOAT_EQ(Customer(7).balance, c.balance);
  }
  const auto sales = ReadSalesLog(2024, 3, 15);
  ASSERT_EQ(sales.size(), 2u);
  EXPECT_FLOAT_EQ(sales[0].total, 0.0f);
  EXPECT_FLOAT_EQ(sales[1].credit_after, -5.00f);
}

TEST_F(AccountTest, PayingOnATransactionFindsItsCustomer) {
  Addtobasket(1001, 0);
  platform_.queue_prompt("7");
  view_.tender = kTenderCredit;
  Creditsale();
  const int32_t credit = S().transaction_number - 1;
  Addtobasket(1001, 0);
  SetField(B().payment_type, "Cash");
  Finishsale();  // a sale with no customer
  platform_.clear_record();

  platform_.queue_prompt(std::to_string(credit + 1));
  Balanceontransaction();
  EXPECT_THAT(platform_.shown(), ElementsAre("Problem: No customer associated with transaction"));

  platform_.clear_record();
  platform_.queue_prompt(std::to_string(credit));
  view_.entry = PaymentEntry{"10", kPayCash};
  Balanceontransaction();
  EXPECT_THAT(platform_.shown(), ElementsAre("Customer: Updated"));
  EXPECT_EQ(Field(view_.shown.fields, "Number"), "7");
  EXPECT_EQ(Field(view_.shown.fields, "Balance"), "24.50");
  EXPECT_THAT(view_.shown.transactions,
              ElementsAre(std::to_string(credit) + "  15/03/2024  Credit  4.50"));
  EXPECT_FLOAT_EQ(Customer(7).balance, 14.50f);
  EXPECT_EQ(B().line_count, 0);
}

TEST(PayamountTest, ReadsAPointInAnyLocaleAndRefusesTheRest) {
  struct Case {
    const char* typed;
    std::optional<float> amount;
  };
  const Case cases[] = {{"12.50", 12.50f}, {" 7 ", 7.00f}, {".5", 0.50f}, {"0.00", 0.00f},
                        {"3.456", 3.46f},  {"", {}},       {"abc", {}},   {"-1", {}},
                        {"1,50", {}},      {"1.2.3", {}},  {".", {}}};
  for (const Case& c : cases) EXPECT_EQ(Payamount(c.typed), c.amount) << c.typed;
}

}  // namespace
}  // namespace tilo
