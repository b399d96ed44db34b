// SPDX-License-Identifier: MIT
#include "tender/ui/card_forms.h"

#include <gtest/gtest.h>

#include <QPushButton>

#include "core/state.h"
#include "sale/basket.h"
#include "sale/commands.h"
#include "support/window_fixture.h"

namespace tilo {
namespace {

class CardFormsTest : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    OpenWindow();
  }
  // Runs the command and hands the modal box it opens to `look`, then cancels it.
  template <typename Look>
  void Opened(Command command, Look look) {
    WithModal<QWidget>(
        command, [&](QWidget& box) { look(&box); },
        [](QWidget& box) { box.findChild<QPushButton*>("cancel")->click(); });
  }
};

TEST_F(CardFormsTest, ThePaymentBoxShowsTheButtonsTheSettingsPermit) {
  SettingsRecord& s = G().settings;
  G().basket.line_count = 1;  // a basket to pay for; the box is cancelled
  G().basket.total = 5.0f;
  s.eft_active = 2.0;
  struct Case {
    double cashback, not_present, not_present_refund;
    int restricted;
    bool cashback_shown, not_present_shown;
  } cases[] = {
      {2.0, 0.0, 0.0, 0, true, false},
      {0.0, 2.0, 0.0, 0, false, true},
      {0.0, 0.0, 2.0, 0, false, false},
      {2.0, 2.0, 0.0, 2, false, true},  // a clerk kept from cash back
  };
  s.inhibit_cashback = 2;
  for (const Case& c : cases) {
    s.eft_permit_cashback = c.cashback;
    s.eft_permit_cnp_payment = c.not_present;
    s.eft_permit_cnp_refund = c.not_present_refund;
    G().screen.restricted_clerk = c.restricted;
    Opened(Command::Eft, [&](QWidget* box) {
      EXPECT_EQ(box->objectName(), "YBOX");
      EXPECT_EQ(box->windowTitle(), "Electronic Payment");
      EXPECT_TRUE(box->findChild<QPushButton*>("payment")->isVisibleTo(box));
      EXPECT_EQ(box->findChild<QPushButton*>("cashback")->isVisibleTo(box), c.cashback_shown);
      EXPECT_EQ(box->findChild<QPushButton*>("notPresent")->isVisibleTo(box), c.not_present_shown);
    });
    EXPECT_EQ(G().basket.line_count, 1);
  }
  s.eft_active = 0.0;
  G().screen.restricted_clerk = 0;
  Opened(Command::Eft, [](QWidget* box) {
    EXPECT_EQ(box->objectName(), "BBOX");
    EXPECT_EQ(box->findChild<QPushButton*>("notPresent"), nullptr);
    EXPECT_TRUE(box->findChild<QPushButton*>("cashback")->isVisibleTo(box));
  });
  EXPECT_EQ(platform_.shown().size(), 0u);
}

}  // namespace
}  // namespace tilo
