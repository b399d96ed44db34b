// SPDX-License-Identifier: MIT
// STATEMENT on the screen: the customer at the top, the transactions under
// " Detail:", and the print button. The statement and the period report share it.
#pragma once

#include <QDialog>

#include "documents/statement.h"

class QLineEdit;
class QListWidget;
class QPushButton;

namespace tilo {

class StatementDialog : public QDialog {
  Q_OBJECT
 public:
  StatementDialog(QWidget* parent, const StatementScreen& screen);
  QLineEdit* customer() const { return customer_; }
  QListWidget* list() const { return list_; }
  QPushButton* print() const { return print_; }

 private:
  QLineEdit* customer_;
  QListWidget* list_;
  QPushButton* print_;
};

// Installs the form and the work of the statement, period activity, debtor
// letter and customer details commands.
void InstallStatementHandlers();

}  // namespace tilo
