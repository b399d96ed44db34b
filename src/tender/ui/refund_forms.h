// SPDX-License-Identifier: MIT
// The forms of refunds and of the transaction browser: "Refund" (807), "Card
// refund", the "Invoice list" (819) and the "Transaction" form.
#pragma once

#include <QDialog>
#include <optional>
#include <string>
#include <vector>

#include "tender/refund.h"

class QButtonGroup;
class QCheckBox;
class QLineEdit;
class QListWidget;
class QPushButton;
class QRadioButton;

namespace tilo {

class TransactionBrowser;

class RefundDialog : public QDialog {
  Q_OBJECT
 public:
  explicit RefundDialog(QWidget* parent);
  RefundChoice choice() const;
  QLineEdit* field(const QString& label) const;
  QRadioButton* option(const QString& text) const;
  QCheckBox* print() const { return print_; }
  QPushButton* ok() const { return ok_; }

 private:
  QButtonGroup* assignment_;
  QButtonGroup* reimbursement_;
  QCheckBox* print_;
  QPushButton* ok_;
};

// "Refund", "Cardholder not present refund" or "Cancel".
CardRefund Cardrefundbox(QWidget* parent);

class InvoiceListDialog : public QDialog {
  Q_OBJECT
 public:
  InvoiceListDialog(QWidget* parent, const std::vector<std::string>& lines);
  QListWidget* list() const { return list_; }
  std::string selected() const;

 private:
  QListWidget* list_;
};

class TransactionDialog : public QDialog {
  Q_OBJECT
 public:
  TransactionDialog(QWidget* parent, TransactionBrowser& browser);
  // The read-only field beside a label ("Payment type").
  QLineEdit* field(const QString& label) const;
  QListWidget* inventory() const { return inventory_; }
  QPushButton* button(const QString& text) const;

 private:
  void Fill();

  TransactionBrowser& browser_;
  QListWidget* inventory_;
};

// The Refund button, with its forms.
void InstallRefundHandlers();
// The seven commands of the transaction browser, with its forms.
void InstallBrowserHandlers();

}  // namespace tilo
