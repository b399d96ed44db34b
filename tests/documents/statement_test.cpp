// SPDX-License-Identifier: MIT
#include "documents/statement.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>

#include "core/customer_file.h"
#include "core/settings.h"
#include "core/state.h"
#include "core/text.h"
#include "documents/debtor_letter.h"
#include "documents/recording_target.h"
#include "platform/files.h"
#include "reports/report_view.h"
#include "support/shop_fixture.h"

namespace tilo {
namespace {

// The recording device's own font is 40 high with a leading of 2: rows 42 apart.
// The letters' font, 3300 / 40 = 82 high and 51 wide, is too wide for their
// longest line on a 2400 page and shrinks to 51 high: rows 53 apart.
constexpr int kRow = 42;
constexpr int kLetterRow = 53;

class ScriptedForms : public StatementView, public ReportView {
 public:
  void show_statement(const StatementScreen& s) override {
    shown = s;
    s.print();
  }
  bool choose_period(PeriodDialog& d) override {
    d.chosen = period;
    return true;
  }
  std::optional<StatementScreen> shown;
  std::array<int, 6> period{};
};

class StatementTest : public ShopTest {
 protected:
  void SetUp() override {
    ShopTest::SetUp();
    MakeFreshShop();
    ASSERT_TRUE(Opensettings());
    ASSERT_TRUE(LoadCustomerIndex());
    install_print_service(&printers_);
    install_statement_view(&forms_);
    install_report_view(&forms_);
    platform_.set_now(2026, 3, 10, 14, 5);
    SettingsRecord& s = G().settings;
    s.history_from_day = s.history_from_month = 1;
    s.history_from_year = 2025;
    s.print_confirm = 0;
    s.clerk_number = 1;
    SetField(G().heading.site_name, "CORNER STORE");
  }
  void TearDown() override {
    install_report_view(nullptr);
    install_statement_view(nullptr);
    install_print_service(nullptr);
    ShopTest::TearDown();
  }

  static void AddCustomer(int64_t number, float balance, const char* postcode = "BB1 2CC") {
    MemberRecord m{};
    m.number = number;
    SetField(m.name, "ANN SMITH");
    SetField(m.road, "1 LANE");
    SetField(m.town, "BURY");
    SetField(m.postcode, postcode);
    m.balance = balance;
    m.terms = 1;
    CompleteNewMember(m);
    ASSERT_TRUE(Insertmember(m));
  }
  static void Sale(int month, int day, int64_t customer, int64_t transaction, const char* type) {
    for (const std::string& f : {YearFolder(2026), MonthFolder(2026, month)}) MakeFolder(f);
    MakeFolder(DayFolder(2026, month, day));
    SalesLogRecord r{};
    r.transaction_number = transaction;
    r.customer_number = customer;
    r.total = 4;
    SetField(r.payment_type, type);
    ASSERT_TRUE(AppendSalesLog(2026, month, day, r));
  }
  // The y at which a text ending in `text` was drawn at `x`, or -1.
  int YOf(const std::string& text, int x = -1) const {
    for (const std::string& c : printers_.calls) {
      int cx = 0, y = 0;
      if (c.size() >= text.size() && c.compare(c.size() - text.size(), text.size(), text) == 0 &&
          std::sscanf(c.c_str(), "text_out %d %d", &cx, &y) == 2 && (x < 0 || cx == x))
        return y;
    }
    return -1;
  }

  RecordingPrintService printers_;
  ScriptedForms forms_;
};

TEST_F(StatementTest, StatementListsTheCustomersTransactionsAndPrintsTheLastSixteenRows) {
  AddCustomer(7, 6.0f);
  Sale(1, 5, 7, 1, "Credit");
  Sale(1, 5, 8, 2, "Cash");  // somebody else
  Sale(3, 2, 7, 3, "Payment (cash)");
  for (int t = 10; t < 24; ++t) Sale(3, 2, 7, t, "Cash");
  // 2025 and February 2026 have no folders.
  platform_.queue_prompt("7");
  Customerstatement();

  ASSERT_TRUE(forms_.shown);
  EXPECT_EQ(platform_.prompts_shown,
            std::vector<std::string>{"Please enter the customer: Number / name"});
  EXPECT_EQ(forms_.shown->title, "Statement");
  EXPECT_EQ(forms_.shown->customer, "CUSTOMER: 7  ANN SMITH");
  const std::vector<std::string>& rows = forms_.shown->rows;
  ASSERT_EQ(rows.size(), 17u);
  EXPECT_EQ(rows[0], "Credit sale: Mon 5 Jan 26,  Transaction: 1, Total: 4.00");
  EXPECT_EQ(rows[1], "Payment: Mon 2 Mar 26,  Transaction: 3, 4.00");
  EXPECT_EQ(rows[2], "Cash paid sale: Mon 2 Mar 26,  Transaction: 10, Total: 4.00");
  EXPECT_EQ(rows[16], "Balance: 6.00");
  // One page on the default printer; the earliest row left off, the balance in.
  EXPECT_EQ(printers_.count("begin_page"), 1);
  EXPECT_EQ(printers_.count("printer_dialog"), 0);
  const std::pair<const char*, int> drawn[] = {
      {"STATEMENT", 4},           {"CORNER STORE", 7},    {"14:05  10/03/2026", 13},
      {"Ref: Administrator", 16}, {"Customer ID: 7", 19}, {"BURY  BB1 2CC", 23},
      {"Terms: Nett", 26}};
  for (const auto& [text, row] : drawn) EXPECT_EQ(YOf(text), row * kRow) << text;
  EXPECT_EQ(YOf(rows[0]), -1);
  EXPECT_EQ(YOf(rows[1], 90), 27 * kRow);
  EXPECT_EQ(YOf(rows[16], 90), 42 * kRow);
}

TEST_F(StatementTest, PeriodReportPagesInTheListingFontForEveryCopy) {
  AddCustomer(7, 0.0f);
  for (int t = 1; t <= 100; ++t) Sale(2, 1 + t % 28, 7, t, "EFT");
  Sale(1, 31, 7, 500, "EFT");           // before the period
  forms_.period = {0, 1, 1, 27, 1, 1};  // 1/2/2026 to 28/2/2026
  printers_.dialog_copies = 2;
  platform_.queue_prompt("7");
  Customerperiodactivity();

  ASSERT_TRUE(forms_.shown);
  EXPECT_EQ(forms_.shown->title, "Period: Sun 1 Feb 26 to Sat 28 Feb 26");
  ASSERT_EQ(forms_.shown->rows.size(), 101u);
  // 101 rows of 42 on 3300 pages: two pages a copy, each copy from the top.
  EXPECT_EQ(printers_.count("begin_page"), 4);
  EXPECT_EQ(printers_.count("text_out 0 0 ANN SMITH   Activity Report  Page: 2"), 2);
  EXPECT_EQ(printers_.count("text_out 0 84 EFT sale: Sun 1 Feb 26,  Transaction: 28,"), 2);
}

TEST_F(StatementTest, LettersNeedABalanceAndPutTheDateBelowTheAddress) {
  struct Case {
    int kind;
    float balance;
    const char* postcode;
    int date_row;  // 0: refused
    const char* overdue;
  } cases[] = {
      {kDebtorLetter1, 12.5f, "BB1 2CC", 21, "now overdue: 12.50"},
      {kDebtorLetter1, 12.5f, "", 17, "now overdue: 12.50"},  // four rows higher
      {kDebtorLetter2, 3.0f, "BB1 2CC", 21, "is still overdue: 3.00"},
      {kDebtorLetter1, -5.0f, "BB1 2CC", 0, nullptr},   // in credit
      {kDebtorLetter2, 0.004f, "BB1 2CC", 0, nullptr},  // nothing at two decimals
  };
  int64_t number = 0;
  for (const Case& c : cases) {
    SCOPED_TRACE(++number);
    AddCustomer(number, c.balance, c.postcode);
    printers_.calls.clear();
    platform_.messages.clear();
    platform_.queue_prompt(std::to_string(number));
    Debtorletter(c.kind);
    if (c.date_row == 0) {
      ASSERT_EQ(platform_.messages.size(), 1u);
      EXPECT_EQ(platform_.messages[0].text + "/" + platform_.messages[0].title,
                "No amount is outstanding/Problem");
      EXPECT_EQ(printers_.count("begin_page"), 0);
      continue;
    }
    EXPECT_TRUE(platform_.messages.empty());
    EXPECT_EQ(printers_.count("begin_page"), 1);
    EXPECT_EQ(printers_.count("open_abort_box"), 1);
    EXPECT_EQ(YOf("Mar 10 2026", 2400), c.date_row * kLetterRow);
    const int dear = c.date_row + 6 + (c.kind == kDebtorLetter2 ? 2 : 0);
    EXPECT_EQ(YOf("Dear Sir / Madam,", 0), dear * kLetterRow);
    EXPECT_EQ(YOf("Customer reference: " + std::to_string(number), 1200), dear * kLetterRow);
    EXPECT_EQ(YOf(c.overdue, 0), (dear + 3) * kLetterRow);
    EXPECT_EQ(YOf("FINAL NOTICE") != -1, c.kind == kDebtorLetter2);
  }
  // Nobody found: nothing at all.
  printers_.calls.clear();
  platform_.queue_prompt("99");
  Debtorletter(kDebtorLetter1);
  EXPECT_TRUE(printers_.calls.empty());
}

TEST_F(StatementTest, DetailsReadTheLongFaxAndOnlyRealDates) {
  MemberRecord m{};
  m.number = 7;
  const std::string fax = "0123 456 789 012 345 678 9012";  // 29: runs on past the field
  std::memcpy(reinterpret_cast<char*>(&m) + offsetof(MemberRecord, fax), fax.c_str(), 30);
  SetField(m.last_used, "NEW");
  SetField(m.last_payment, "14:0501/03/2026");
  m.terms = 8;
  RecordingTarget target({}, &printers_.calls);
  Printletter(target, kCustomerDetails, m);
  for (const std::string& text :
       {"Fax: " + fax, std::string("Last used: "), std::string("Last payment: 14:05 01/03/2026"),
        std::string("Terms: 180 days, 50% disc")})
    EXPECT_NE(YOf(text, 0), -1) << text;
  // Stamps that are not a real time and date print nothing; bands outside 1-8 neither.
  for (const char* bad : {"", "25:0001/01/2026", "09:3031/04/2026", "09:3023/11/2026x"})
    EXPECT_EQ(Stamptext(bad, std::strlen(bad) + 1), "") << bad;
  EXPECT_EQ(Detailterms(1), "No credit, Nett");
  EXPECT_EQ(Detailterms(0) + Detailterms(9), "");
}

}  // namespace
}  // namespace tilo
