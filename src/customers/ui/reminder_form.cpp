// SPDX-License-Identifier: MIT
#include "customers/ui/reminder_form.h"

#include <QApplication>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace tilo {
namespace {

QString Q(const std::string& s) {
  return QString::fromStdString(s);
}

class QtReminderView : public ReminderView {
 public:
  void add_form(ReminderAdd& add) override {
    ReminderForm form(QApplication::activeWindow(), add);
    form.exec();
  }
};

QtReminderView qt_view;

}  // namespace

ReminderForm::ReminderForm(QWidget* parent, ReminderAdd& add) : QDialog(parent), add_(add) {
  setObjectName("INVES2");
  setWindowTitle("Add reminder");
  auto* outer = new QVBoxLayout(this);
  outer->addWidget(new QLabel(Q(add.date_text()), this));
  auto* grid = new QGridLayout;
  customer_ = new QLineEdit(this);
  customer_->setObjectName("customer");
  customer_->setMaxLength(kReminderFormWidth);
  item_ = new QLineEdit(this);
  item_->setObjectName("item");
  item_->setMaxLength(kReminderFormWidth);
  auto* find_customer = new QPushButton("Find customer", this);
  auto* find_item = new QPushButton("Find item", this);
  grid->addWidget(new QLabel("Customer", this), 0, 0);
  grid->addWidget(customer_, 0, 1);
  grid->addWidget(find_customer, 0, 2);
  grid->addWidget(new QLabel("Item", this), 1, 0);
  grid->addWidget(item_, 1, 1);
  grid->addWidget(find_item, 1, 2);
  outer->addLayout(grid);
  // Tab goes from one text to the other; the search buttons come after.
  setTabOrder(customer_, item_);
  setTabOrder(item_, find_customer);
  setTabOrder(find_customer, find_item);
  auto* lists = new QHBoxLayout;
  by_item_ = new QListWidget(this);
  by_customer_ = new QListWidget(this);
  lists->addWidget(by_item_);
  lists->addWidget(by_customer_);
  outer->addLayout(lists);
  auto* buttons = new QHBoxLayout;
  auto* add_button = new QPushButton("Add", this);
  auto* ok = new QPushButton("OK", this);
  auto* cancel = new QPushButton("Cancel", this);
  ok->setDefault(true);
  buttons->addStretch(1);
  for (QPushButton* b : {add_button, ok, cancel}) buttons->addWidget(b);
  outer->addLayout(buttons);
  resize(560, 360);

  connect(find_customer, &QPushButton::clicked, this,
          [this] { customer_->setText(Q(add_.FindCustomer())); });
  connect(find_item, &QPushButton::clicked, this, [this] { item_->setText(Q(add_.FindItem())); });
  connect(add_button, &QPushButton::clicked, this, [this] {
    // The new entry joins the lists and the form stays for the next one.
    Store();
    customer_->clear();
    item_->clear();
    customer_->setFocus();
  });
  connect(ok, &QPushButton::clicked, this, [this] {
    Store();
    accept();
  });
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  Refresh();
}

bool ReminderForm::Store() {
  // Two empty fields are no entry: OK then only closes the form.
  if (customer_->text().trimmed().isEmpty() && item_->text().trimmed().isEmpty()) return false;
  const bool stored = add_.Add(customer_->text().toStdString(), item_->text().toStdString());
  Refresh();
  return stored;
}

void ReminderForm::Refresh() {
  by_item_->clear();
  by_customer_->clear();
  for (const std::string& row : add_.by_item()) by_item_->addItem(Q(row));
  for (const std::string& row : add_.by_customer()) by_customer_->addItem(Q(row));
}

void InstallReminderForms() {
  install_reminder_view(&qt_view);
}

}  // namespace tilo
