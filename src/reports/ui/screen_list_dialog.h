// SPDX-License-Identifier: MIT
// Window 815, the screen list: thirteen rows of four columns, "More" and
// "Cancel" under a full page, "OK" under the last, "Back" to the page before.
// A click on a row opens its record.
#pragma once

#include <QDialog>

#include "reports/screen_list.h"

class QPushButton;
class QTableWidget;

namespace tilo {

class ScreenListDialog : public QDialog {
  Q_OBJECT
 public:
  ScreenListDialog(QWidget* parent, ScreenList& list);

  QTableWidget* table() const { return table_; }
  QPushButton* moreButton() const { return more_; }
  QPushButton* backButton() const { return back_; }
  QPushButton* okButton() const { return ok_; }

 private:
  void Refresh();

  ScreenList& list_;
  QTableWidget* table_ = nullptr;
  QPushButton* more_ = nullptr;
  QPushButton* back_ = nullptr;
  QPushButton* ok_ = nullptr;
  QPushButton* cancel_ = nullptr;
};

// Makes the screen lists show in this window.
void InstallScreenListWindow();

}  // namespace tilo
