// SPDX-License-Identifier: MIT
#include "tender/ui/clerk_forms.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "core/activity_log.h"
#include "core/settings.h"
#include "core/state.h"
#include "documents/print_service.h"
#include "documents/recording_target.h"
#include "platform/files.h"
#include "sale/commands.h"
#include "sale/screen.h"
#include "support/shop_fixture.h"
#include "tender/ui/till_forms.h"

namespace tilo {
namespace {

// A stand-in for the main window: the forms place themselves over it and the
// title goes to it.
class TitleView : public ScreenView {
 public:
  explicit TitleView(QWidget* window) : window_(window) {}
  void set_title(const std::string& title) override {
    window_->setWindowTitle(QString::fromStdString(title));
  }

 private:
  QWidget* window_;
};

class ClerkFormsTest : public ShopTest {
 protected:
  void SetUp() override {
    ShopTest::SetUp();
    MakeFreshShop();
    ASSERT_TRUE(Opensettings());
    platform_.set_now(2024, 3, 1, 9, 30);
    main_.setObjectName("mainWindow");
    main_.resize(800, 600);
    main_.show();
    install_screen_view(&view_);
    InstallTillHandlers();
  }
  void TearDown() override {
    delete Openlogonform();
    for (Command c : {Command::LogOff, Command::OperatorSetup, Command::UserControl,
                      Command::TillReconciliation, Command::TillCloseout, Command::PettyCash})
      SetHandler(c, {});
    install_screen_view(nullptr);
    install_print_service(nullptr);
    ShopTest::TearDown();
  }

  // Presses a button of the next modal form once it is up.
  static void WhenModal(std::function<void(QWidget*)> act) {
    QTimer::singleShot(0, [act] {
      QWidget* form = QApplication::activeModalWidget();
      ASSERT_NE(form, nullptr);
      act(form);
    });
  }
  static QPushButton* Button(QWidget* form, const QString& text) {
    for (QPushButton* b : form->findChildren<QPushButton*>())
      if (b->text() == text) return b;
    return nullptr;
  }

  QWidget main_;
  TitleView view_{&main_};
};

TEST_F(ClerkFormsTest, LogOnRefusesAWrongPasswordAndCannotBeLeftAnyOtherWay) {
  main_.setWindowTitle("TILO Retail    Assoc: 1, Administrator");
  Dispatch(Command::LogOff);
  LogonDialog* form = Openlogonform();
  ASSERT_NE(form, nullptr);
  EXPECT_TRUE(form->isVisible());
  EXPECT_EQ(main_.windowTitle(), "TILO Retail");
  EXPECT_EQ(form->clerkLine()->text(), "1 Administrator");
  EXPECT_EQ(form->password()->echoMode(), QLineEdit::Password);
  // A second F9 does not stack a second form.
  Dispatch(Command::LogOff);
  EXPECT_EQ(Openlogonform(), form);

  // Up twice to clerk 3, a wrong password: back to clerk 1 with nothing typed.
  QTest::mouseClick(form->up(), Qt::LeftButton);
  QTest::mouseClick(form->up(), Qt::LeftButton);
  EXPECT_EQ(form->clerkLine()->text(), "3 Clerk 3");
  QTest::keyClicks(form->password(), "1234abc");
  EXPECT_EQ(form->password()->text(), "1234");
  QTest::mouseClick(form->ok(), Qt::LeftButton);
  EXPECT_TRUE(form->isVisible());
  EXPECT_EQ(form->clerkLine()->text(), "1 Administrator");
  EXPECT_EQ(form->password()->text(), "");
  EXPECT_TRUE(platform_.shown().empty());

  // No way out: Escape does nothing, and there is no title bar to close it by.
  QTest::keyClick(form, Qt::Key_Escape);
  QTest::keyClick(form->password(), Qt::Key_Escape);
  QApplication::processEvents();
  EXPECT_TRUE(form->isVisible());
  EXPECT_TRUE(form->windowFlags() & Qt::FramelessWindowHint);
  EXPECT_EQ(QApplication::activeModalWidget(), form);
  EXPECT_FALSE(FileExists(kActivityLog));

  // The keypad types, "CE" and "C" take back; the right password lets clerk 3 on.
  QTest::keyClick(form->password(), Qt::Key_Up);
  QTest::keyClick(form->password(), Qt::Key_Down);
  QTest::keyClick(form->password(), Qt::Key_Up);
  QTest::mouseClick(form->up(), Qt::LeftButton);
  EXPECT_EQ(form->clerkLine()->text(), "3 Clerk 3");
  for (const char* key : {"9", "C", "7", "3", "5", "5", "CE", "1"})
    QTest::mouseClick(form->key(key), Qt::LeftButton);
  EXPECT_EQ(form->password()->text(), "7351");
  QTest::keyClick(form->password(), Qt::Key_Return);
  QApplication::processEvents();
  QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(Openlogonform(), nullptr);
  EXPECT_EQ(G().settings.clerk_number, 3);
  EXPECT_EQ(G().screen.restricted_clerk, 2);
  EXPECT_EQ(main_.windowTitle(), "TILO Retail    Assoc: 3, Clerk 3");
  EXPECT_EQ(Bytes(kActivityLog), "\r\n09:30 01/03/2024  Log on.\r\nClerk: 3, Clerk 3\r\n");
}

TEST_F(ClerkFormsTest, OperatorSetupChangesAPasswordThroughTheClerkForm) {
  G().settings.clerk_number = 1;
  platform_.queue_prompt("4");
  WhenModal([](QWidget* w) {
    auto* form = qobject_cast<ClerkDialog*>(w);
    ASSERT_NE(form, nullptr);
    EXPECT_TRUE(form->available()->isEnabled());
    EXPECT_EQ(form->password()->echoMode(), QLineEdit::Password);
    form->name()->setText("ANNE");
    QTest::keyClicks(form->password(), "2468");
    QTest::keyClicks(form->passwordAgain(), "2469");
    QTest::mouseClick(form->ok(), Qt::LeftButton);
    EXPECT_TRUE(form->isVisible());  // the passwords differ
    form->passwordAgain()->setText("2468");
    QTest::mouseClick(form->ok(), Qt::LeftButton);
  });
  Dispatch(Command::OperatorSetup);
  EXPECT_EQ(ClerkName(G().settings, 4), "ANNE");
  EXPECT_EQ(ClerkPassword(G().settings, 4), "2468");
  EXPECT_EQ(platform_.shown(),
            (std::vector<std::string>{"Problem: Passwords do not match", "Clerk: Amended"}));

  // The Administrator's "Available" can't be cleared.
  ClerkDialog admin(&main_, 1);
  EXPECT_FALSE(admin.available()->isEnabled());
  EXPECT_TRUE(admin.available()->isChecked());
}

TEST_F(ClerkFormsTest, RightsFormAllTicksAllButTwoAndOkStoresThem) {
  G().settings.clerk_number = 2;
  WhenModal([](QWidget* w) {
    auto* form = qobject_cast<RightsDialog*>(w);
    ASSERT_NE(form, nullptr);
    EXPECT_EQ(form->windowTitle(), "PASSWORD CONTROL");
    EXPECT_TRUE(form->tick(kRightConfiguration)->isChecked());
    EXPECT_FALSE(form->tick(kRightRefunds)->isChecked());
    form->all()->click();  // ticks all
    form->all()->click();  // clears all
    EXPECT_FALSE(form->tick(kRightConfiguration)->isChecked());
    EXPECT_TRUE(form->tick(kRightNewInventory)->isChecked());
    form->tick(kRightRefunds)->setChecked(true);
    QTest::mouseClick(form->ok(), Qt::LeftButton);
  });
  Dispatch(Command::UserControl);
  EXPECT_NE(G().settings.free_configuration, 0);
  EXPECT_EQ(G().settings.free_new_inventory, 0);
  EXPECT_EQ(G().settings.inhibit_refunds, 2);

  // A restricted clerk gets no form at all.
  G().settings.clerk_number = 3;
  Dispatch(Command::UserControl);
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(ClerkFormsTest, CloseoutShowsTheFiguresLogsAndAsksForTheNextClerk) {
  G().settings.clerk_number = 2;
  G().settings.cash_sales = 12.5;
  G().settings.petty_cash_today = 2;
  RecordingPrintService printers;
  install_print_service(&printers);
  printers.dialog_cancels = true;
  WhenModal([&printers](QWidget* w) {
    auto* form = qobject_cast<TillDialog*>(w);
    ASSERT_NE(form, nullptr);
    EXPECT_EQ(form->windowTitle(), "Till closeout");
    EXPECT_EQ(form->figure("Petty cash")->text(), "-2.00");
    EXPECT_EQ(form->figure("Total cash")->text(), "110.50");
    // A cancelled printer dialog keeps the form up.
    QTest::mouseClick(form->print(), Qt::LeftButton);
    EXPECT_TRUE(form->isVisible());
    printers.dialog_cancels = false;
    QTest::mouseClick(form->print(), Qt::LeftButton);
  });
  Dispatch(Command::TillCloseout);
  EXPECT_EQ(printers.count("begin_document TILO"), 1);
  const std::string log = Bytes(kActivityLog);
  EXPECT_NE(log.find("Till closeout: 09:30 Fri 1 Mar 24\r\nAssoc: 2, Manager\r\n"),
            std::string::npos);
  EXPECT_NE(log.find("Petty cash: 2.00\r\n"), std::string::npos);
  ASSERT_NE(Openlogonform(), nullptr);
  EXPECT_TRUE(Openlogonform()->isVisible());
  EXPECT_EQ(main_.windowTitle(), "TILO Retail");

  // The reconciliation only shows.
  delete Openlogonform();
  WhenModal([](QWidget* w) {
    auto* form = qobject_cast<TillDialog*>(w);
    ASSERT_NE(form, nullptr);
    EXPECT_EQ(form->windowTitle(), "Till reconciliation");
    EXPECT_EQ(form->figure("Till total")->text(), "110.50");
    QTest::mouseClick(form->finish(), Qt::LeftButton);
  });
  const std::string before = Bytes(kActivityLog);
  Dispatch(Command::TillReconciliation);
  EXPECT_EQ(Bytes(kActivityLog), before);
  EXPECT_EQ(Openlogonform(), nullptr);
}

}  // namespace
}  // namespace tilo
