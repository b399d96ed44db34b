// SPDX-License-Identifier: MIT
// Split and cheque sales through real commits: the parts each path writes to
// the sales log, the activity log and the day's totals; what a cancel or a
// refused card part leaves for the next tender of the same basket.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>

#include "core/activity_log.h"
#include "core/history.h"
#include "sale/basket.h"
#include "sale/pricing.h"
#include "sale/sale_fixture.h"
#include "tender/eft.h"
#include "tender/split.h"

namespace tilo {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

// The card application: takes each request and answers with `reply`; card
// processing is off in these tests, so any request is a fault.
struct Terminal : ScriptedPlatform {
  bool wait(const std::string& text, const std::string& title, int interval_ms,
            const std::function<bool()>& poll) override {
    const std::string folder = Eftfolder();
    requests.push_back(ShopTest::Bytes(folder + "/input.txt"));
    std::filesystem::remove(folder + "/input.txt");
    ShopTest::WriteBytes(folder + "/output.txt", reply);
    return ScriptedPlatform::wait(text, title, interval_ms, poll);
  }
  std::string reply = "3=0";
  std::vector<std::string> requests;
};

// The payment box must not be asked for a card part.
struct NoBox : CardView {
  EftChoice online_choice(bool, bool) override {
    ++asked;
    return EftChoice::Cancel;
  }
  int asked = 0;
};

class SplitTest : public SaleTest {
 protected:
  void SetUp() override {
    SaleTest::SetUp();
    install_platform(&terminal_);
    install_card_view(&box_);
    terminal_.set_now(2024, 3, 15, 14, 5);
    Makelogdirs();
    Stock(3000, 30.00f);
    Stock(1200, 12.00f);
    SetField(S().eft_folder, folder_ + "/card");
    ASSERT_EQ(mkdir((folder_ + "/card").c_str(), 0777), 0);
  }
  void TearDown() override {
    install_card_view(nullptr);
    SaleTest::TearDown();
  }
  std::vector<std::string> Seen() {
    auto shown = terminal_.shown();
    terminal_.clear_record();
    return shown;
  }
  std::vector<SalesLogRecord> Sales() { return ReadSalesLog(2024, 3, 15); }

  Terminal terminal_;
  NoBox box_;
};

TEST_F(SplitTest, EachSplitWritesItsPartsAndTheMoneyTendered) {
  // The cash step ends with OK on `tendered` typed, "Exact amount" (""), or a note ("5" or
  // "10"); the change shown is for `tendered` typed.
  struct Case {
    int64_t item;
    const char *cash, *rest_shown;
    SplitOther other;
    const char *tendered, *change_shown;
    float tender_cash, tender_ch, tender_eft;
    double change_due, amount_tendered;
  } cases[] = {
      {3000, "1000", "20.00", SplitOther::Card, "2000", "10.00", 10, 0, 20, 10, 40},
      {3000, "1000", "20.00", SplitOther::Card, "10", "", 10, 0, 20, 0, 10},
      {3000, "", "30.00", SplitOther::Cheque, "", "0.00", 0, 30, 0, 0, 0},
      {3000, "3000", "", SplitOther::Card, "", "", 30, 0, 0, 0, 30},
      {1200, "5", "11.95", SplitOther::Cheque, "5", "0.00", 0.05f, 11.95f, 0, 4.95, 5},
      // One digit on OK is tenths, while the change shown read it as pence.
      {1200, "1", "11.99", SplitOther::Card, "1", "0.00", 0.01f, 0, 11.99f, 0, 12.00},
  };
  size_t committed = 0;
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.cash) + " then " + c.tendered);
    const SettingsRecord before = S();
    Addtobasket(c.item, 0);
    ASSERT_TRUE(Startsplit());
    EXPECT_EQ(Splitrest(c.cash, B().total), c.rest_shown);
    ASSERT_TRUE(Splitok(c.cash, c.other));
    const std::string t = c.tendered;
    EXPECT_EQ(Livechange(t, B().tender_cash).text, c.change_shown);
    std::optional<CashSettled> settled = t.empty()   ? Cashexact(B().tender_cash)
                                         : t == "5"  ? Cashnote(kSplitNotes[0], B().tender_cash)
                                         : t == "10" ? Cashnote(kSplitNotes[1], B().tender_cash)
                                                     : Splitcashok(t, c.change_shown);
    ASSERT_TRUE(settled);
    Paysplit(*settled);
    EXPECT_NEAR(G().change_due, c.change_due, 1e-9);
    EXPECT_NEAR(G().amount_tendered, c.amount_tendered, 1e-5);

    ASSERT_EQ(Sales().size(), ++committed);
    const SalesLogRecord r = Sales().back();
    EXPECT_STREQ(r.payment_type, "Split");
    EXPECT_FLOAT_EQ(r.tender_cash, c.tender_cash);
    EXPECT_FLOAT_EQ(r.tender_ch, c.tender_ch);
    EXPECT_FLOAT_EQ(r.tender_eft, c.tender_eft);
    EXPECT_DOUBLE_EQ(S().cash_sales - before.cash_sales, double(r.tender_cash));
    EXPECT_DOUBLE_EQ(S().ch_sales - before.ch_sales, double(r.tender_ch));
    EXPECT_DOUBLE_EQ(S().eft_sales - before.eft_sales, double(r.tender_eft));
    // A split is none of the counted kinds.
    EXPECT_EQ(S().count_cash_sales + S().count_ch_sales + S().count_eft_sales,
              before.count_cash_sales + before.count_ch_sales + before.count_eft_sales);
    EXPECT_THAT(Bytes(kActivityLog),
                HasSubstr("Payment type: Split\r\nCash: " + MoneyText(c.tender_cash) + "  CH: " +
                          MoneyText(c.tender_ch) + "  EFT: " + MoneyText(c.tender_eft) + "\r\n"));
  }
  EXPECT_TRUE(terminal_.requests.empty());  // card processing is off
  EXPECT_EQ(box_.asked, 0);

  // Too much cash keeps the form and writes nothing; short money is refused.
  Addtobasket(1200, 0);
  ASSERT_TRUE(Startsplit());
  EXPECT_FALSE(Splitok("1500", SplitOther::Card));
  EXPECT_THAT(Seen(), ElementsAre("Problem: Cash exceeds total"));
  EXPECT_EQ(B().tender_cash, 0.0f);
  ASSERT_TRUE(Splitok("1199", SplitOther::Card));
  EXPECT_FALSE(Splitcashok("", ""));
  EXPECT_FALSE(Splitcashok("1198", ""));
}

// A declined card part followed by a cheque for the lot is the split run of the
// real program, against the card simulator; here the cancels it cannot reach.
TEST_F(SplitTest, ACancelledSplitLeavesNothingForTheNextTender) {
  Addtobasket(3000, 0);
  // Cancel at the split form, then at the cash step with a cheque part.
  ASSERT_TRUE(Startsplit());
  Cancelsplit();
  ASSERT_TRUE(Startsplit());
  EXPECT_FALSE(Startsplit());  // already open
  ASSERT_TRUE(Splitok("1000", SplitOther::Cheque));
  Cancelsplit();
  EXPECT_EQ(B().tender_ch + B().tender_cash, 0.0f);
  EXPECT_EQ(G().tender_form_open, 0);

  // A form open, "CH" does nothing; then it takes the whole basket.
  G().tender_form_open = 2;
  Chsale();
  EXPECT_TRUE(Sales().empty());
  G().tender_form_open = 0;
  Chsale();
  ASSERT_EQ(Sales().size(), 1u);
  EXPECT_EQ(Sales()[0].tender_ch, 30.0f);
  EXPECT_EQ(Sales()[0].tender_eft + Sales()[0].tender_cash, 0.0f);
  EXPECT_EQ(G().amount_tendered, 30.0);
}

}  // namespace
}  // namespace tilo
