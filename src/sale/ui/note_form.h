// SPDX-License-Identifier: MIT
// "Add transaction note": one line of at most 78 characters, with the form's own
// advice, "OK" and "Cancel". The commands that park and bring back a basket and
// add a note are installed here too.
#pragma once

#include <QDialog>

class QLineEdit;

namespace tilo {

class NoteDialog : public QDialog {
  Q_OBJECT
 public:
  NoteDialog(QWidget* parent, const QString& note);
  QLineEdit* text() const { return text_; }

 private:
  QLineEdit* text_;
};

// Save basket, Reload basket and Add note, and the note form behind the last.
void InstallParkedBasketHandlers();

}  // namespace tilo
