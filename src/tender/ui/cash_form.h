// SPDX-License-Identifier: MIT
// The cash form (modeless, no title) and the summary box that follows a sale.
#pragma once

#include <QDialog>
#include <array>

#include "tender/cash.h"

class QLineEdit;
class QPushButton;
class QLabel;

namespace tilo {

// What the cash form takes: a whole cash sale, or the cash part of a split,
// which is due instead of the total and has fixed note buttons.
enum class CashStep { Sale, Split };

class CashForm : public QDialog {
  Q_OBJECT
 public:
  explicit CashForm(QWidget* main_window, CashStep step = CashStep::Sale);
  ~CashForm() override;

  QLineEdit* tendered() const { return tendered_; }
  QLineEdit* change() const { return change_; }
  QLabel* total() const { return total_; }
  QPushButton* note(int n) const { return notes_[n]; }
  QPushButton* exact() const { return exact_; }
  QPushButton* ok() const { return ok_; }
  QPushButton* cancel() const { return cancel_; }

  void reject() override;  // Escape is "Cancel"

 private:
  void Typed();
  void Ok();
  void Note(int n);
  void Exact();
  void Cancel();
  // Destroys the form; the payment goes on without it.
  void Close();
  // What the form asks for, and the payment's next step once it is settled.
  float Due() const;
  void Pay(const CashSettled& settled);
  std::array<double, 3> Notes() const;

  QLabel* total_;
  QLineEdit* tendered_;
  QLineEdit* change_;
  QPushButton* ok_;
  QPushButton* cancel_;
  QPushButton* exact_;
  QPushButton* notes_[3];
  CashStep step_;
  bool closed_ = false;
};

class SummaryBox : public QDialog {
  Q_OBJECT
 public:
  explicit SummaryBox(QWidget* main_window);

  QLineEdit* totalDue() const { return total_; }
  QLineEdit* tendered() const { return tendered_; }
  QLineEdit* change() const { return change_; }
  QPushButton* ok() const { return ok_; }

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void Print(int kind);

  QLineEdit* total_;
  QLineEdit* tendered_;
  QLineEdit* change_;
  QPushButton* ok_;
  bool opened_ = false;
};

// The top-level main window, where the tender forms place themselves.
QWidget* TillWindow();
// Puts a form centred across the main window with its bottom 10 above the
// main window's bottom.
void PlaceOverTill(QWidget* form);

// "Cash F5": opens the cash form when the tender may start.
void Cashcommand();
// Installs the tender's commands and its summary box.
void InstallTenderHandlers();

}  // namespace tilo
