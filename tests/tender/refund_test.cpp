// SPDX-License-Identifier: MIT
// A basket refunded by each way of paying back: the transaction index, the
// sales and items logs, the stock, the activity log, the totals on disk, the
// drawer; and a refund stopped whole by a missing inventory file.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>

#include "core/activity_log.h"
#include "core/customer_file.h"
#include "core/history.h"
#include "devices/ports.h"
#include "devices/pty_pair.h"
#include "documents/print_service.h"
#include "documents/recording_target.h"
#include "sale/sale_fixture.h"
#include "tender/eft.h"
#include "tender/refund.h"

namespace tilo {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

// The card application: takes the request and answers `reply` at once.
struct Terminal : ScriptedPlatform {
  bool wait(const std::string& text, const std::string& title, int interval_ms,
            const std::function<bool()>& poll) override {
    request = ShopTest::Bytes(Eftfolder() + "/input.txt");
    std::remove((Eftfolder() + "/input.txt").c_str());
    ShopTest::WriteBytes(Eftfolder() + "/output.txt", reply);
    return ScriptedPlatform::wait(text, title, interval_ms, poll);
  }
  std::string reply, request;
};

struct ScriptedRefund : RefundView {
  std::optional<RefundChoice> refund_form() override { return choice; }
  CardRefund card_refund_box() override { return card; }
  std::optional<RefundChoice> choice;
  CardRefund card = CardRefund::Present;
};

class RefundTest : public SaleTest {
 protected:
  void SetUp() override {
    SaleTest::SetUp();
    install_refund_view(&view_);
    install_print_service(&printers_);
    platform_.set_now(2024, 3, 15, 14, 5);
    Makelogdirs();
    Stock(1001, 4.50f);
    FilmRecord second = Stock(1002, 8.00f);
    second.display_category = 12;
    Store(second);
    ASSERT_TRUE(LoadCustomerIndex());
    MemberRecord m{};
    m.number = 7;
    SetField(m.name, "ANN SMITH");
    m.balance = 20.00f;
    CompleteNewMember(m);
    ASSERT_TRUE(Insertmember(m));
  }
  void TearDown() override {
    install_print_service(nullptr);
    install_refund_view(nullptr);
    SaleTest::TearDown();
  }
  // Two stock lines and a line not kept in stock: 14.50 in all.
  void Fill() {
    Addtobasket(1001, 0);
    Addtobasket(1002, 0);
    BasketLine sundry;
    SetField(sundry.description, "SUNDRY");
    sundry.non_taxable = sundry.line_total = 2.00f;
    SetLine(B(), B().line_count++, sundry);
    B().total_non_taxable += 2.00f;
    B().subtotal += 2.00f;
    B().total += 2.00f;
    platform_.clear_record();
  }

  ScriptedRefund view_;
  RecordingPrintService printers_;
};

TEST_F(RefundTest, EachMethodWritesANegativeTransactionAndReturnsTheGoods) {
  PtyPair line(folder_);
  ASSERT_TRUE(line.ok());
  line.Reset();
  WriteBytes(kPortsFile, "COM1=" + line.port() + "\n");
  S().drawer_enabled = 1;
  S().drawer_port = 0;
  S().drawer_open_char = 7;
  S().drawer_repeat = 1;

  struct Case {
    RefundChoice choice;
    const char* form;
    float cash, ch, eft;
    double takings;  // after the refund
  };
  const Case cases[] = {
      {{kCashRefund, false, true}, "Cash", -14.50f, 0, 0, -14.50},
      {{kChRefund, true, false}, "CH", 0, -14.50f, 0, -29.00},
      {{kEftRefund, false, false}, "EFT", 0, 0, -14.50f, -43.50},
      {{kCreditRefund, false, false}, "Credit", 0, 0, 0, -43.50},
  };
  int32_t number = S().transaction_number;
  int quantity = 10;
  for (const Case& c : cases) {
    SCOPED_TRACE(c.form);
    Fill();
    view_.choice = c.choice;
    if (c.choice.method == kCreditRefund) platform_.queue_prompt("7");
    const std::string log_before = Bytes(kActivityLog);
    Refundbasket();

    EXPECT_EQ(S().transaction_number, number + 1);
    const std::string base = Bytes("2024/base.dat");
    const BaseRecord entry{number, 15, 3};
    EXPECT_EQ(base.substr(base.size() - 12),
              std::string(reinterpret_cast<const char*>(&entry), 12));

    const SalesLogRecord sale = ReadSalesLog(2024, 3, 15).back();
    EXPECT_EQ(sale.transaction_number, number);
    EXPECT_STREQ(sale.payment_type, "Refund");
    EXPECT_FLOAT_EQ(sale.total, -14.50f);
    EXPECT_FLOAT_EQ(sale.subtotal, -14.50f);
    EXPECT_FLOAT_EQ(sale.total_cost, -6.25f);
    EXPECT_FLOAT_EQ(sale.tender_cash, c.cash);
    EXPECT_FLOAT_EQ(sale.tender_ch, c.ch);
    EXPECT_FLOAT_EQ(sale.tender_eft, c.eft);
    EXPECT_STREQ(sale.sale_time, "14:05");
    EXPECT_EQ(sale.customer_number, c.choice.method == kCreditRefund ? 7 : 0);

    const auto items = ReadItemsLog(2024, 3, 15);
    ASSERT_GE(items.size(), 3u);
    const ItemsLogRecord* last = &items[items.size() - 3];
    EXPECT_EQ(last[0].category, 3);
    EXPECT_EQ(last[1].category, 12);
    EXPECT_EQ(last[2].category, 18);             // not kept in stock
    EXPECT_FLOAT_EQ(last[1].line_total, 8.00f);  // lines stay positive
    EXPECT_EQ(last[2].transaction_number, number);

    if (!c.choice.faulty) ++quantity;
    EXPECT_EQ(Item(1001).quantity, quantity);
    EXPECT_EQ(Item(1001).total_sold, 0);

    const std::string clerk =
        std::to_string(S().clerk_number) + ", " + ClerkName(S(), S().clerk_number);
    const std::string customer = c.choice.method == kCreditRefund ? "7 ANN SMITH" : "0 ";
    EXPECT_EQ(Bytes(kActivityLog),
              log_before + "\r\n14:05 15/03/2024 Refund: " + std::to_string(number) +
                  ", Total: -14.50\r\n1001  ITEM 1001\r\n1002  ITEM "
                  "1002\r\n0  SUNDRY\r\nClerk: " +
                  clerk + "   Items: 3\r\nForm: " + c.form + "\r\nCustomer: " + customer + "\r\n");

    EXPECT_DOUBLE_EQ(S().till_takings, c.takings);
    EXPECT_EQ(B().line_count, 0);
    EXPECT_EQ(line.Received(150), std::vector<uint8_t>{7});  // the drawer, every time
    // What the refund counted is on disk already.
    const SettingsRecord in_memory = S();
    ASSERT_TRUE(Opensettings());
    EXPECT_EQ(std::memcmp(&in_memory, &S(), sizeof in_memory), 0);
    ++number;
  }
  for (double refunds : {S().cash_refunds, S().ch_refunds, S().eft_refunds, S().credit_refunds})
    EXPECT_DOUBLE_EQ(refunds, -14.50);
  for (float count : {S().count_cash_refunds, S().count_ch_refunds, S().count_eft_refunds,
                      S().count_credit_refunds})
    EXPECT_FLOAT_EQ(count, 1.0f);
  EXPECT_DOUBLE_EQ(S().sales_total, -58.00);
  EXPECT_EQ(S().category_units_day_a[3], -4);
  EXPECT_EQ(S().category_units_day_b[3], -4);  // category 12
  EXPECT_DOUBLE_EQ(S().category_total_today[12], -32.00);
  EXPECT_EQ(Fetchmember(7), 7);
  EXPECT_FLOAT_EQ(G().member.balance, 5.50f);
  EXPECT_STREQ(G().member.last_used, "14:0515/03/2024");
  // Only the cash refund asked for its receipt: its lines, and the total paid out.
  const auto printed = printers_.texts();
  EXPECT_EQ(std::count(printed.begin(), printed.end(), "SUNDRY"), 1);
  EXPECT_THAT(printed, testing::Contains(": -14.50"));
  EXPECT_THAT(platform_.shown(), ElementsAre("7 Name: ANN SMITH: Credit this customer?"));
}

TEST_F(RefundTest, GivingUpOrADeclinedCardWritesNothing) {
  Terminal terminal;
  terminal.set_now(2024, 3, 15, 14, 5);
  install_platform(&terminal);
  SetField(S().eft_folder, folder_);
  S().eft_active = 2.0;
  S().eft_permit_cnp_refund = 2.0;
  view_.choice = RefundChoice{kEftRefund, false, false};
  const int32_t number = S().transaction_number;
  const std::string sent = "1=" + std::to_string(number) + "\n2=20\n3=14.50\n12=1\n99=0";

  Fill();
  const std::string log = Bytes(kActivityLog);
  terminal.reply = "3=4";
  view_.card = CardRefund::NotPresent;
  Refundbasket();
  EXPECT_EQ(terminal.request, sent);  // the total before it turns negative
  view_.card = CardRefund::Cancel;
  Refundbasket();
  view_.choice = RefundChoice{kCreditRefund, false, false};
  terminal.queue_prompt("7");
  terminal.queue_answer(Answer::Cancel);  // "Credit this customer?"
  Refundbasket();
  view_.choice.reset();  // the refund form's Cancel
  Refundbasket();
  EXPECT_EQ(Bytes(kActivityLog), log);
  EXPECT_EQ(S().transaction_number, number);
  EXPECT_FLOAT_EQ(B().total, 14.50f);
  EXPECT_TRUE(ReadSalesLog(2024, 3, 15).empty());
  ASSERT_EQ(Fetchmember(7), 7);
  EXPECT_FLOAT_EQ(G().member.balance, 20.00f);

  terminal.reply = "3=0";
  view_.choice = RefundChoice{kEftRefund, false, false};
  view_.card = CardRefund::NotPresent;
  Refundbasket();
  install_platform(&platform_);
  EXPECT_EQ(terminal.request, sent);
  EXPECT_EQ(S().transaction_number, number + 1);
  EXPECT_FLOAT_EQ(ReadSalesLog(2024, 3, 15).back().tender_eft, -14.50f);
}

TEST_F(RefundTest, AMissingInventoryFileStopsTheRefundWithNothingWritten) {
  Fill();
  const int32_t number = S().transaction_number;
  const float total = B().total;
  view_.choice = RefundChoice{kCashRefund, false, true};
  ASSERT_EQ(std::rename("film.dat", "film.away"), 0);
  Refundbasket();
  EXPECT_THAT(platform_.shown(), ElementsAre("Fatal error: Data file: film.dat, not present."));
  EXPECT_TRUE(ReadSalesLog(2024, 3, 15).empty());
  EXPECT_TRUE(ReadItemsLog(2024, 3, 15).empty());
  EXPECT_EQ(S().transaction_number, number);
  // The basket stays as it was, to be refunded once the file is back.
  EXPECT_EQ(B().line_count, 3);
  EXPECT_FLOAT_EQ(B().total, total);
  EXPECT_TRUE(printers_.texts().empty());
}

}  // namespace
}  // namespace tilo
