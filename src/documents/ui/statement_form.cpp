// SPDX-License-Identifier: MIT
#include "documents/ui/statement_form.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/text.h"

namespace tilo {
namespace {

QString Q(const std::string& cp1252) {
  return QString::fromStdString(Cp1252ToUtf8(cp1252));
}

QWidget* Window() {
  for (QWidget* w : QApplication::topLevelWidgets())
    if (w->objectName() == "mainWindow") return w;
  return QApplication::activeWindow();
}

class QtStatementView : public StatementView {
 public:
  void show_statement(const StatementScreen& screen) override {
    StatementDialog dialog(Window(), screen);
    dialog.exec();
  }
};

}  // namespace

StatementDialog::StatementDialog(QWidget* parent, const StatementScreen& screen) : QDialog(parent) {
  setObjectName("STATEMENT");
  setWindowTitle(QString::fromStdString(screen.title));
  auto* layout = new QVBoxLayout(this);
  customer_ = new QLineEdit(Q(screen.customer), this);
  customer_->setObjectName("customer");
  customer_->setReadOnly(true);
  layout->addWidget(customer_);
  layout->addWidget(new QLabel(" Detail:", this));
  list_ = new QListWidget(this);
  list_->setObjectName("detail");
  for (const std::string& row : screen.rows) list_->addItem(Q(row));
  list_->setMinimumWidth(list_->sizeHintForColumn(0) + 40);
  list_->setMinimumHeight(300);
  layout->addWidget(list_);
  auto* buttons = new QHBoxLayout;
  print_ = new QPushButton("Print statement", this);
  print_->setObjectName("print");
  auto* ok = new QPushButton("OK", this);
  ok->setDefault(true);
  buttons->addWidget(print_);
  buttons->addStretch();
  buttons->addWidget(ok);
  layout->addLayout(buttons);
  const std::function<void()> print = screen.print;
  connect(print_, &QPushButton::clicked, this, [print] {
    if (print) print();
  });
  connect(ok, &QPushButton::clicked, this, &QDialog::accept);
}

void InstallStatementHandlers() {
  static QtStatementView view;
  install_statement_view(&view);
  InstallStatementCommands();
}

}  // namespace tilo
