// SPDX-License-Identifier: MIT
#include "config/ui/tip_form.h"

#include <QApplication>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

#include "config/tips.h"
#include "core/text.h"
#include "sale/commands.h"
#include "sale/screen.h"

namespace tilo {
namespace {

QPointer<TipDialog>& open_tip() {
  static QPointer<TipDialog> form;
  return form;
}

QString TipText() {
  return QString::fromStdString(Cp1252ToUtf8(Nexttip()));
}

}  // namespace

TipDialog::TipDialog(QWidget* parent) : QDialog(parent) {
  setObjectName("2211");
  setWindowTitle("TIP OF THE DAY");
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(new QLabel("  Did you know ...", this));
  tip_ = new QLabel(TipText(), this);
  tip_->setWordWrap(true);
  tip_->setMinimumSize(360, 80);
  tip_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  layout->addWidget(tip_);
  at_startup_ = new QCheckBox("Show tips at startup", this);
  at_startup_->setChecked(true);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(at_startup_);
  buttons->addStretch();
  next_ = new QPushButton("Next tip", this);
  close_ = new QPushButton("Close", this);
  close_->setDefault(true);
  buttons->addWidget(next_);
  buttons->addWidget(close_);
  layout->addLayout(buttons);
  connect(next_, &QPushButton::clicked, this, [this] { tip_->setText(TipText()); });
  connect(close_, &QPushButton::clicked, this, &QDialog::accept);
}

void TipDialog::done(int result) {
  Closetips(at_startup_->isChecked());
  QDialog::done(result);
}

TipDialog* Opentipoftheday(QWidget* parent) {
  if (open_tip()) return open_tip();
  auto* form = new TipDialog(parent);
  form->setAttribute(Qt::WA_DeleteOnClose);
  QObject::connect(form, &QDialog::finished, [parent] {
    if (parent) parent->activateWindow();
    screen_view().focus_item_box();
  });
  open_tip() = form;
  form->open();
  form->raise();
  form->activateWindow();
  form->closeButton()->setFocus();
  return form;
}

TipDialog* Opentipform() {
  return open_tip();
}

void InstallTipHandlers() {
  SetHandler(Command::TipOfTheDay, [](int) { Opentipoftheday(QApplication::activeWindow()); });
}

}  // namespace tilo
