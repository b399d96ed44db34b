// SPDX-License-Identifier: MIT
// Form INVES2: adds entries to one day of the reminder diary.
#pragma once

#include <QDialog>

#include "customers/reminder_diary.h"

class QLineEdit;
class QListWidget;

namespace tilo {

class ReminderForm : public QDialog {
  Q_OBJECT
 public:
  ReminderForm(QWidget* parent, ReminderAdd& add);

 private:
  bool Store();
  void Refresh();

  ReminderAdd& add_;
  QLineEdit* customer_;
  QLineEdit* item_;
  QListWidget* by_item_;
  QListWidget* by_customer_;
};

// Installs the form behind the diary's commands.
void InstallReminderForms();

}  // namespace tilo
