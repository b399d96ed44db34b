// SPDX-License-Identifier: MIT
// "Split payment" (modeless): the cash part of the total, and whether the rest
// is a cheque or a card. The cash form then takes the cash part.
#pragma once

#include <QDialog>

class QLineEdit;
class QPushButton;
class QRadioButton;

namespace tilo {

class SplitForm : public QDialog {
  Q_OBJECT
 public:
  explicit SplitForm(QWidget* main_window);
  ~SplitForm() override;

  QLineEdit* cash() const { return cash_; }
  QRadioButton* cheque() const { return cheque_; }
  QRadioButton* card() const { return card_; }
  QLineEdit* rest() const { return rest_; }
  QLineEdit* total() const { return total_; }
  QPushButton* ok() const { return ok_; }
  QPushButton* cancel() const { return cancel_; }

  void reject() override;  // Escape is "Cancel"

 private:
  void Typed();
  void Ok();
  void Cancel();
  void Close();

  QLineEdit* cash_;
  QRadioButton* cheque_;
  QRadioButton* card_;
  QLineEdit* rest_;
  QLineEdit* total_;
  QPushButton* ok_;
  QPushButton* cancel_;
  bool closed_ = false;
};

// "Split Cash Other": opens the split form when the tender may start.
void Splitcommand();
// Installs "Split Cash Other" and "CH".
void InstallSplitHandlers();

}  // namespace tilo
