// SPDX-License-Identifier: MIT
#include "sale/ui/help_window.h"

#include <QPointer>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>

// The pages are a resource of the program; a static library needs to register it.
static void LoadHelpPages() {
  Q_INIT_RESOURCE(help);
}

namespace tilo {

HelpWindow::HelpWindow(QWidget* parent) : QDialog(parent), browser_(new QTextBrowser(this)) {
  LoadHelpPages();
  setObjectName("helpWindow");
  setWindowTitle("TILO Help");
  resize(640, 560);
  browser_->setObjectName("helpBrowser");
  browser_->setOpenExternalLinks(true);
  browser_->setSearchPaths({":/help"});
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(browser_);
}

void HelpWindow::showPage(const QString& page) {
  browser_->setSource(QUrl("qrc:/help/" + page));
}

HelpWindow* ShowHelp(QWidget* parent, const QString& page) {
  static QPointer<HelpWindow> window;
  if (!window) {
    window = new HelpWindow(parent);
    window->setAttribute(Qt::WA_DeleteOnClose);
  }
  window->showPage(page);
  window->show();
  window->raise();
  return window;
}

}  // namespace tilo
