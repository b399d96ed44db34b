// SPDX-License-Identifier: MIT
#include "documents/statement.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "core/customer_file.h"
#include "core/settings.h"
#include "core/state.h"
#include "core/text.h"
#include "documents/debtor_letter.h"
#include "documents/print_service.h"
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

class ScriptedStatementView : public StatementView {
 public:
  void show_statement(const StatementScreen& s) override {
    shown = s;
    if (print_on_show && s.print) s.print();
  }
  std::optional<StatementScreen> shown;
  bool print_on_show = false;
};

class ScriptedPeriod : public ReportView {
 public:
  bool choose_period(PeriodDialog& d) override {
    d.chosen = chosen;
    return true;
  }
  std::array<int, 6> chosen{};
};

class StatementTest : public ShopTest {
 protected:
  void SetUp() override {
    ShopTest::SetUp();
    MakeFreshShop();
    ASSERT_TRUE(Opensettings());
    ASSERT_TRUE(LoadCustomerIndex());
    install_print_service(&printers_);
    install_statement_view(&view_);
    platform_.set_now(2026, 3, 10, 14, 5);
    S().history_from_day = 1;
    S().history_from_month = 1;
    S().history_from_year = 2025;
    S().print_confirm = 0;
    S().clerk_number = 1;
    SetField(G().heading.site_name, "CORNER STORE");
  }
  void TearDown() override {
    install_report_view(nullptr);
    install_statement_view(nullptr);
    install_print_service(nullptr);
    ShopTest::TearDown();
  }
  static SettingsRecord& S() { return G().settings; }

  static MemberRecord Customer(int64_t number, float balance, const char* postcode = "BB1 2CC") {
    MemberRecord m{};
    m.number = number;
    SetField(m.name, "ANN SMITH");
    SetField(m.road, "1 LANE");
    SetField(m.area, "NORTH");
    SetField(m.town, "BURY");
    SetField(m.postcode, postcode);
    m.balance = balance;
    m.terms = 1;
    CompleteNewMember(m);
    return m;
  }
  static void Sale(int year, int month, int day, int64_t customer, int64_t transaction,
                   const char* type, float total) {
    MakeFolder(YearFolder(year));
    MakeFolder(MonthFolder(year, month));
    MakeFolder(DayFolder(year, month, day));
    SalesLogRecord r{};
    r.transaction_number = transaction;
    r.customer_number = customer;
    r.total = total;
    SetField(r.payment_type, type);
    ASSERT_TRUE(AppendSalesLog(year, month, day, r));
  }
  static std::string At(int x, int y, const std::string& text) {
    return "text_out " + std::to_string(x) + " " + std::to_string(y) + " " + text;
  }
  bool Drew(const std::string& call) const {
    return std::find(printers_.calls.begin(), printers_.calls.end(), call) != printers_.calls.end();
  }
  // The y at which `text` was drawn, or -1.
  int YOf(const std::string& text) const {
    for (const std::string& c : printers_.calls) {
      if (c.rfind("text_out ", 0) != 0 || c.size() < text.size() ||
          c.compare(c.size() - text.size(), text.size(), text) != 0)
        continue;
      int x = 0, y = 0;
      if (std::sscanf(c.c_str(), "text_out %d %d", &x, &y) == 2) return y;
    }
    return -1;
  }

  RecordingPrintService printers_;
  ScriptedStatementView view_;
};

TEST_F(StatementTest, StatementWalksTheHistoryAndPrintsTheCustomersRowsAndBalance) {
  ASSERT_TRUE(Insertmember(Customer(7, 6.0f)));
  Sale(2026, 1, 5, 7, 1, "Credit", 10.0f);
  Sale(2026, 1, 5, 8, 2, "Cash", 5.0f);  // somebody else
  Sale(2026, 3, 2, 7, 3, "Cash", 3.0f);
  Sale(2026, 3, 2, 7, 4, "Payment (cash)", 4.0f);
  // 2025 and February 2026 have no folders; a stray day file elsewhere is fine.
  platform_.queue_prompt("7");
  view_.print_on_show = true;
  Customerstatement();

  ASSERT_TRUE(view_.shown);
  EXPECT_EQ(platform_.prompts_shown,
            std::vector<std::string>{"Please enter the customer: Number / name"});
  EXPECT_EQ(view_.shown->title, "Statement");
  EXPECT_EQ(view_.shown->customer, "CUSTOMER: 7  ANN SMITH");
  const std::vector<std::string> rows = {
      "Credit sale: Mon 5 Jan 26,  Transaction: 1, Total: 10.00",
      "Cash paid sale: Mon 2 Mar 26,  Transaction: 3, Total: 3.00",
      "Payment: Mon 2 Mar 26,  Transaction: 4, 4.00", "Balance: 6.00"};
  EXPECT_EQ(view_.shown->rows, rows);
  // One page on the default printer, no dialog with print_confirm 0.
  EXPECT_EQ(printers_.count("begin_page"), 1);
  EXPECT_EQ(printers_.count("printer_dialog"), 0);
  for (const std::string& call :
       {At(1200, 4 * kRow, "STATEMENT"), At(1200, 7 * kRow, "CORNER STORE"),
        At(90, 13 * kRow, "14:05  10/03/2026"), At(90, 16 * kRow, "Ref: Administrator"),
        At(90, 19 * kRow, "Customer ID: 7"), At(90, 23 * kRow, "BURY  BB1 2CC"),
        At(90, 26 * kRow, "Terms: Nett"), At(90, 27 * kRow, rows[0]),
        At(90, 30 * kRow, "Balance: 6.00")})
    EXPECT_TRUE(Drew(call)) << call;
}

TEST_F(StatementTest, StatementPagePrintsOnlyTheLastSixteenRows) {
  std::vector<std::string> rows;
  for (int i = 1; i <= 16; ++i) rows.push_back("Row " + std::to_string(i) + ".");
  rows.push_back("Balance: -2.00");
  RecordingTarget target({}, &printers_.calls);
  Printstatement(target, Customer(7, -2.0f), rows);
  EXPECT_EQ(YOf("Row 1."), -1);
  EXPECT_EQ(YOf("Row 2."), 27 * kRow);
  EXPECT_EQ(YOf("Balance: -2.00"), 42 * kRow);
}

TEST_F(StatementTest, PeriodReportPagesInTheListingFontForEveryCopy) {
  ASSERT_TRUE(Insertmember(Customer(7, 0.0f)));
  for (int t = 1; t <= 100; ++t) Sale(2026, 2, 1 + t % 28, 7, t, "EFT", 1.0f);
  Sale(2026, 1, 31, 7, 500, "EFT", 1.0f);  // before the period
  ScriptedPeriod period;
  period.chosen = {0, 1, 1, 27, 1, 1};  // 1/2/2026 to 28/2/2026
  install_report_view(&period);
  printers_.dialog_copies = 2;
  platform_.queue_prompt("7");
  view_.print_on_show = true;
  Customerperiodactivity();

  ASSERT_TRUE(view_.shown);
  EXPECT_EQ(view_.shown->title, "Period: Sun 1 Feb 26 to Sat 28 Feb 26");
  ASSERT_EQ(view_.shown->rows.size(), 101u);
  EXPECT_EQ(view_.shown->rows.back(), "Balance: 0.00");
  // 101 rows at 42 a row on 3300 pages: several pages a copy, each copy from the top.
  const int pages = printers_.count("begin_page");
  EXPECT_GT(pages, 2);
  EXPECT_EQ(pages % 2, 0);
  EXPECT_EQ(printers_.count("text_out 0 0 ANN SMITH   Activity Report  Page: 1"), 2);
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
      {kDebtorLetter1, 12.5f, "BB1 2CC", 22, "now overdue: 12.50"},
      {kDebtorLetter1, 12.5f, "", 18, "now overdue: 12.50"},
      {kDebtorLetter2, 3.0f, "BB1 2CC", 22, "is still overdue: 3.00"},
      {kDebtorLetter1, -5.0f, "BB1 2CC", 0, nullptr},   // a credit balance
      {kDebtorLetter2, 0.004f, "BB1 2CC", 0, nullptr},  // nothing at two decimals
  };
  int64_t number = 1;
  for (const Case& c : cases) {
    SCOPED_TRACE(c.balance);
    ASSERT_TRUE(Insertmember(Customer(number, c.balance, c.postcode)));
    printers_.calls.clear();
    platform_.messages.clear();
    platform_.queue_prompt(std::to_string(number++));
    Debtorletter(c.kind);
    if (c.date_row == 0) {
      ASSERT_EQ(platform_.messages.size(), 1u);
      EXPECT_EQ(platform_.messages[0].text, "No amount is outstanding");
      EXPECT_EQ(platform_.messages[0].title, "Problem");
      EXPECT_EQ(printers_.count("begin_page"), 0);
      continue;
    }
    EXPECT_TRUE(platform_.messages.empty());
    EXPECT_EQ(printers_.count("begin_page"), 1);
    EXPECT_EQ(printers_.count("open_abort_box"), 1);
    EXPECT_TRUE(Drew(At(2400, c.date_row * kLetterRow, "Mar 10 2026")));
    const int dear = (c.date_row + 6 + (c.kind == kDebtorLetter2 ? 2 : 0)) * kLetterRow;
    EXPECT_TRUE(Drew(At(0, dear, "Dear Sir / Madam,")));
    EXPECT_TRUE(Drew(At(1200, dear, "Customer reference: " + std::to_string(number - 1))));
    EXPECT_EQ(YOf("FINAL NOTICE") != -1, c.kind == kDebtorLetter2);
    EXPECT_EQ(YOf(c.overdue), dear + 3 * kLetterRow);
    EXPECT_TRUE(Drew(At(1200, 2 * kLetterRow, "CORNER STORE")));  // centred, no logo
  }
  // Nobody found: nothing at all.
  printers_.calls.clear();
  platform_.messages.clear();
  platform_.queue_prompt("99");
  Debtorletter(kDebtorLetter1);
  EXPECT_TRUE(printers_.calls.empty());
  EXPECT_TRUE(platform_.messages.empty());
}

TEST_F(StatementTest, DetailsReadTheLongFaxAndOnlyRealDates) {
  MemberRecord m = Customer(7, 1.0f);
  const std::string fax = "0123 456 789 012 345 678 9012";  // 29 characters
  std::memcpy(reinterpret_cast<char*>(&m) + offsetof(MemberRecord, fax), fax.c_str(),
              fax.size() + 1);
  SetField(m.last_payment, "14:0501/03/2026");
  m.terms = 8;
  RecordingTarget target({}, &printers_.calls);
  Printletter(target, kCustomerDetails, m);
  for (const std::string& text :
       {std::string("Customer: 7"), "Fax: " + fax, std::string("Last used: "),
        std::string("Last payment: 14:05 01/03/2026"), std::string("Terms: 180 days, 50% disc")})
    EXPECT_NE(YOf(text), -1) << text;

  struct Stamp {
    const char* stored;
    const char* printed;
  } stamps[] = {{"NEW", ""},
                {"", ""},
                {"09:3023/11/2026", "09:30 23/11/2026"},
                {"25:0001/01/2026", ""},
                {"09:3031/04/2026", ""}};
  for (const Stamp& s : stamps) {
    char field[16]{};
    std::strncpy(field, s.stored, sizeof field - 1);
    EXPECT_EQ(Stamptext(field, sizeof field), s.printed) << s.stored;
  }
  const std::pair<int32_t, const char*> terms[] = {
      {0, ""}, {1, "No credit, Nett"}, {8, "180 days, 50% disc"}, {9, ""}};
  for (const auto& [band, text] : terms) EXPECT_EQ(Detailterms(band), text) << band;
}

}  // namespace
}  // namespace tilo
