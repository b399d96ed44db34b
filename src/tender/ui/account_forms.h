// SPDX-License-Identifier: MIT
// The customer account forms: "Customer transaction" (806), where a basket goes
// on account or is paid by a named customer, and "Payment" (MULTDIA2), where a
// customer pays the account down.
#pragma once

#include <QDialog>
#include <vector>

#include "tender/account.h"

class QButtonGroup;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace tilo {

class CustomerTransactionDialog : public QDialog {
  Q_OBJECT
 public:
  CustomerTransactionDialog(QWidget* parent, const std::vector<AccountField>& fields);
  // The button pressed: kTenderCredit, kTenderCash, kTenderCh, kTenderEft, or
  // kTenderCancel.
  int tender() const { return tender_; }
  QLineEdit* field(const QString& label) const;
  QPushButton* button(const QString& text) const;

 private:
  int tender_ = kTenderCancel;
};

class PaymentDialog : public QDialog {
  Q_OBJECT
 public:
  PaymentDialog(QWidget* parent, const PaymentShown& shown);
  PaymentEntry entry() const;
  QLineEdit* field(const QString& label) const;
  QLineEdit* pay() const { return pay_; }
  QListWidget* transactions() const { return transactions_; }
  QButtonGroup* method() const { return method_; }
  QPushButton* ok() const { return ok_; }

  void accept() override;  // an amount that can't be read keeps the form up

 private:
  QLineEdit* pay_;
  QListWidget* transactions_;
  QButtonGroup* method_;
  QPushButton* ok_;
};

// Customer credit F6, Balance payment and Balance pay on transaction, with their forms.
void InstallAccountHandlers();

}  // namespace tilo
