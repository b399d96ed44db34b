// SPDX-License-Identifier: MIT
// The clerks' forms: the log-on form, which can't be left without a valid
// password, the set-up of one clerk, and the rights of restricted clerks.
#pragma once

#include <QDialog>
#include <array>

#include "tender/clerks.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace tilo {

// "USER LOGON": the clerk's line with Up and Down, the password as stars and a
// keypad. There is no Cancel, no close button, and Escape or the window
// manager's close do nothing: the form goes only when a clerk has logged on
// (or the program ends).
class LogonDialog : public QDialog {
  Q_OBJECT
 public:
  explicit LogonDialog(QWidget* main_window);

  QLineEdit* clerkLine() const { return clerk_; }
  QLineEdit* password() const { return password_; }
  QPushButton* up() const { return up_; }
  QPushButton* down() const { return down_; }
  QPushButton* key(const QString& name) const;
  QPushButton* ok() const { return ok_; }

  void reject() override {}

 protected:
  void closeEvent(QCloseEvent* event) override;
  // The arrow keys step through the clerks as "Up" and "Down" do.
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void Show();
  void Key(const QString& key);
  void Ok();

  LogonForm form_;
  QLineEdit* clerk_;
  QLineEdit* password_;
  QPushButton* up_;
  QPushButton* down_;
  QPushButton* ok_;
  std::array<QPushButton*, 12> keys_{};
};

// Opens the log-on form over the main window, unless it is up already; the
// main window's title goes back to "TILO Retail" until a clerk logs on.
void Openlogon(QWidget* main_window);
// The log-on form while it is up, else nullptr.
LogonDialog* Openlogonform();

// One clerk's name, availability and password.
class ClerkDialog : public QDialog {
  Q_OBJECT
 public:
  ClerkDialog(QWidget* parent, int clerk);

  QLineEdit* name() const { return name_; }
  QCheckBox* available() const { return available_; }
  QLineEdit* password() const { return password_; }
  QLineEdit* passwordAgain() const { return again_; }
  QPushButton* ok() const { return ok_; }

 private:
  void Ok();

  int clerk_;
  QLineEdit* name_;
  QCheckBox* available_;
  QLineEdit* password_;
  QLineEdit* again_;
  QPushButton* ok_;
};

// "PASSWORD CONTROL": what restricted clerks may not do.
class RightsDialog : public QDialog {
  Q_OBJECT
 public:
  explicit RightsDialog(QWidget* parent);

  QCheckBox* tick(int right) const { return ticks_[right]; }
  QCheckBox* all() const { return all_; }
  QPushButton* ok() const { return ok_; }

 private:
  void Show();
  void Ok();

  RightsForm form_{};
  std::array<QCheckBox*, kRights> ticks_{};
  QCheckBox* all_;
  QPushButton* ok_;
};

}  // namespace tilo
