// SPDX-License-Identifier: MIT
#include "tender/ui/till_forms.h"

#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "sale/commands.h"
#include "tender/clerks.h"
#include "tender/till.h"
#include "tender/ui/cash_form.h"
#include "tender/ui/clerk_forms.h"

namespace tilo {

TillDialog::TillDialog(QWidget* parent, bool closeout) : QDialog(parent) {
  setObjectName(closeout ? "810" : "809");
  setWindowTitle(closeout ? "Till closeout" : "Till reconciliation");
  auto* layout = new QVBoxLayout(this);
  auto* grid = new QGridLayout;
  int row = 0;
  for (const auto& [label, value] : Tillrows(true)) {
    auto* name = new QLabel(QString::fromStdString(label), this);
    auto* box = new QLineEdit(QString::fromStdString(value), this);
    box->setObjectName(QString::fromStdString(label));
    box->setReadOnly(true);
    box->setAlignment(Qt::AlignRight);
    box->setFocusPolicy(Qt::NoFocus);
    if (label == "Till total") {
      // The figure that matters, boxed.
      auto* frame = new QFrame(this);
      frame->setFrameShape(QFrame::Box);
      frame->setLineWidth(2);
      auto* inner = new QHBoxLayout(frame);
      inner->setContentsMargins(4, 4, 4, 4);
      inner->addWidget(name);
      inner->addWidget(box);
      grid->addWidget(frame, row++, 0, 1, 2);
      continue;
    }
    grid->addWidget(name, row, 0);
    grid->addWidget(box, row++, 1);
  }
  layout->addLayout(grid);
  for (const char* note : {kTillNote, kDailyResetNote}) {
    auto* label = new QLabel(note, this);
    label->setWordWrap(true);
    layout->addWidget(label);
  }
  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  if (closeout) {
    close_ = new QPushButton("Close and log off", this);
    print_ = new QPushButton("Print, close and log off", this);
    cancel_ = new QPushButton("Cancel", this);
    for (QPushButton* b : {close_, print_, cancel_}) buttons->addWidget(b);
    connect(close_, &QPushButton::clicked, this, &QDialog::accept);
    connect(print_, &QPushButton::clicked, this, &TillDialog::Print);
    connect(cancel_, &QPushButton::clicked, this, &QDialog::reject);
  } else {
    finish_ = new QPushButton("Finish", this);
    finish_->setDefault(true);
    buttons->addWidget(finish_);
    connect(finish_, &QPushButton::clicked, this, &QDialog::accept);
  }
  layout->addLayout(buttons);
}

QLineEdit* TillDialog::figure(const QString& label) const {
  return findChild<QLineEdit*>(label);
}

void TillDialog::Print() {
  // A cancelled printer dialog leaves the form up.
  if (Printcloseoutjob()) accept();
}

void InstallTillHandlers() {
  SetHandler(Command::LogOff, [](int) { Openlogon(TillWindow()); });
  SetHandler(Command::OperatorSetup, [](int) {
    Operatorsetup([](int clerk) {
      ClerkDialog form(TillWindow(), clerk);
      return form.exec() == QDialog::Accepted;
    });
  });
  SetHandler(Command::UserControl, [](int) {
    Usercontrol([] {
      RightsDialog form(TillWindow());
      form.exec();
    });
  });
  SetHandler(Command::TillReconciliation, [](int) {
    TillDialog form(TillWindow(), false);
    form.exec();
  });
  SetHandler(Command::TillCloseout, [](int) {
    Tillcloseout([] {
      TillDialog form(TillWindow(), true);
      return form.exec() == QDialog::Accepted ? CloseoutChoice::Close : CloseoutChoice::Cancel;
    });
  });
  SetHandler(Command::PettyCash, [](int) { Pettycash(); });
}

}  // namespace tilo
