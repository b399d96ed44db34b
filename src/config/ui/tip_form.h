// SPDX-License-Identifier: MIT
// The "TIP OF THE DAY" box: a tip, "Next tip", "Close" and the start-up tick.
#pragma once

#include <QDialog>

class QCheckBox;
class QLabel;
class QPushButton;

namespace tilo {

class TipDialog : public QDialog {
 public:
  explicit TipDialog(QWidget* parent);
  QLabel* tip() const { return tip_; }
  QCheckBox* atStartup() const { return at_startup_; }
  QPushButton* nextTip() const { return next_; }
  QPushButton* closeButton() const { return close_; }
  // Every way out (Close, Escape, the title bar) stores the tick as Close does.
  void done(int result) override;

 private:
  QLabel* tip_;
  QCheckBox* at_startup_;
  QPushButton* next_;
  QPushButton* close_;
};

// Opens the box over `parent` without waiting for it; the sale screen gets the
// focus back once it closes.
TipDialog* Opentipoftheday(QWidget* parent);
// The open box, or nullptr.
TipDialog* Opentipform();
// "&Tip of the day ..." on the Help menu.
void InstallTipHandlers();

}  // namespace tilo
