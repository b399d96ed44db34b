// SPDX-License-Identifier: MIT
// The help pages shipped inside the program, in a window of their own.
#pragma once

#include <QDialog>

class QTextBrowser;

namespace tilo {

class HelpWindow : public QDialog {
  Q_OBJECT
 public:
  explicit HelpWindow(QWidget* parent = nullptr);
  void showPage(const QString& page);
  QTextBrowser* browser() const { return browser_; }

 private:
  QTextBrowser* browser_;
};

// Opens (or raises) the one help window on `page`, e.g. "index.html".
HelpWindow* ShowHelp(QWidget* parent, const QString& page);

}  // namespace tilo
