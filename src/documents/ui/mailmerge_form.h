// SPDX-License-Identifier: MIT
// The "Mailmerge" form: the customer range, the letters' text with Load and
// Save, and which customers of the range get one.
#pragma once

#include <QDialog>

#include "documents/mailmerge.h"

class QLineEdit;
class QPlainTextEdit;
class QRadioButton;

namespace tilo {

class MailmergeForm : public QDialog {
  Q_OBJECT
 public:
  MailmergeForm(QWidget* parent, const MergeEntries& entries);
  MergeEntries entries() const;

  QLineEdit* start() const { return start_; }
  QLineEdit* end() const { return end_; }
  QPlainTextEdit* text() const { return text_; }

 private:
  void limitText();

  QLineEdit* start_;
  QLineEdit* end_;
  QPlainTextEdit* text_;
  QRadioButton* all_;
  QRadioButton* owe_;
  QRadioButton* inactive_;
  QString accepted_text_;
};

// Installs the "Mailmerge" and "Store print heading" forms and commands.
void InstallMailmergeHandlers();

}  // namespace tilo
