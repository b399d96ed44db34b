// SPDX-License-Identifier: MIT
// The card payment boxes (with and without card processing), the cash back
// entry and "Card processing setup".
#pragma once

#include <QDialog>

#include "tender/eft.h"

class QCheckBox;
class QLineEdit;
class QPushButton;

namespace tilo {

// "Electronic Payment": the kind of card payment. Without processing it is the
// two-choice box; with it the cash back and cardholder-not-present buttons show
// as `cashback` and `not_present` allow.
class PaymentBox : public QDialog {
  Q_OBJECT
 public:
  PaymentBox(QWidget* parent, bool processing, bool cashback, bool not_present);

  EftChoice choice() const { return choice_; }
  QPushButton* payment() const { return payment_; }
  QPushButton* cashback() const { return cashback_; }
  QPushButton* notPresent() const { return not_present_; }
  QPushButton* cancel() const { return cancel_; }

 private:
  QPushButton* Button(const char* label, const char* name, EftChoice choice);

  EftChoice choice_ = EftChoice::Cancel;
  QPushButton* payment_;
  QPushButton* cashback_;
  QPushButton* not_present_ = nullptr;
  QPushButton* cancel_;
};

// "CASH BACK": a whole amount, digits only.
class CashBackBox : public QDialog {
  Q_OBJECT
 public:
  explicit CashBackBox(QWidget* parent);
  QLineEdit* amount() const { return amount_; }

 private:
  QLineEdit* amount_;
};

// "Card processing setup".
class CardSetupForm : public QDialog {
  Q_OBJECT
 public:
  explicit CardSetupForm(QWidget* parent);

  QLineEdit* folder() const { return folder_; }
  QCheckBox* active() const { return active_; }
  QPushButton* ok() const { return ok_; }

 private:
  void Choose();
  void Ok();

  QLineEdit* folder_;
  QCheckBox* active_;
  QCheckBox* cashback_;
  QCheckBox* not_present_payment_;
  QCheckBox* not_present_refund_;
  QCheckBox* verbose_;
  QPushButton* ok_;
};

// Installs the card forms and the commands "EFT (Credit card)", "Card
// processing setup" and "Manual card transaction".
void InstallCardHandlers();

}  // namespace tilo
