// SPDX-License-Identifier: MIT
// The till's closing figures on screen ("Till reconciliation", "Till
// closeout"), and the commands of the clerks and the till.
#pragma once

#include <QDialog>

class QLineEdit;
class QPushButton;

namespace tilo {

class TillDialog : public QDialog {
  Q_OBJECT
 public:
  // The reconciliation has "Finish"; the closeout "Close and log off", "Print,
  // close and log off" and "Cancel".
  TillDialog(QWidget* parent, bool closeout);

  // The figure shown beside a label ("Total cash").
  QLineEdit* figure(const QString& label) const;
  QPushButton* finish() const { return finish_; }
  QPushButton* close() const { return close_; }
  QPushButton* print() const { return print_; }
  QPushButton* cancel() const { return cancel_; }

 private:
  void Print();

  QPushButton* finish_ = nullptr;
  QPushButton* close_ = nullptr;
  QPushButton* print_ = nullptr;
  QPushButton* cancel_ = nullptr;
};

// Log off (and the log-on at start), Operator setup, User control, Till
// reconciliation, Till closeout and Petty cash payment.
void InstallTillHandlers();

}  // namespace tilo
