// SPDX-License-Identifier: MIT
#include "tender/ui/split_form.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpressionValidator>
#include <QVBoxLayout>

#include "core/state.h"
#include "sale/commands.h"
#include "sale/pricing.h"
#include "sale/ui/sale_screen.h"
#include "tender/split.h"
#include "tender/ui/cash_form.h"

namespace tilo {
namespace {

QLineEdit* Figure(QWidget* parent, const char* name) {
  auto* field = new QLineEdit(parent);
  field->setObjectName(name);
  field->setReadOnly(true);
  field->setFocusPolicy(Qt::NoFocus);
  return field;
}

}  // namespace

SplitForm::SplitForm(QWidget* main_window) : QDialog(main_window) {
  setObjectName("SPLIT");
  setWindowTitle("Split payment");
  setModal(false);
  setAttribute(Qt::WA_DeleteOnClose);

  auto* layout = new QVBoxLayout(this);
  auto* grid = new QGridLayout;
  grid->addWidget(new QLabel("Cash", this), 0, 0);
  cash_ = new QLineEdit(this);
  cash_->setObjectName("cash");
  cash_->setMaxLength(19);
  cash_->setValidator(new QRegularExpressionValidator(QRegularExpression("[0-9]*"), cash_));
  grid->addWidget(cash_, 0, 1);
  grid->addWidget(new QLabel("Enter the amount without the . character", this), 1, 1);
  layout->addLayout(grid);

  auto* other = new QGroupBox("Other", this);
  auto* row = new QHBoxLayout(other);
  cheque_ = new QRadioButton("CH", other);
  cheque_->setObjectName("cheque");
  card_ = new QRadioButton("EFT", other);
  card_->setObjectName("card");
  card_->setChecked(true);
  rest_ = Figure(other, "rest");
  row->addWidget(cheque_);
  row->addWidget(card_);
  row->addWidget(rest_);
  layout->addWidget(other);

  auto* foot = new QGridLayout;
  foot->addWidget(new QLabel("Total", this), 0, 0);
  total_ = Figure(this, "total");
  total_->setText(QString::fromStdString(MoneyText(G().basket.total)));
  foot->addWidget(total_, 0, 1);
  layout->addLayout(foot);

  auto* buttons = new QHBoxLayout;
  ok_ = new QPushButton("OK", this);
  ok_->setObjectName("ok");
  ok_->setDefault(true);
  cancel_ = new QPushButton("Cancel", this);
  cancel_->setObjectName("cancel");
  cancel_->setAutoDefault(false);
  buttons->addWidget(ok_);
  buttons->addWidget(cancel_);
  layout->addLayout(buttons);

  connect(cash_, &QLineEdit::textChanged, this, &SplitForm::Typed);
  connect(ok_, &QPushButton::clicked, this, &SplitForm::Ok);
  connect(cancel_, &QPushButton::clicked, this, &SplitForm::Cancel);

  SetTenderAmountField(cash_);
  PlaceOverTill(this);
  cash_->setFocus();
}

SplitForm::~SplitForm() {
  if (TenderAmountField() == cash_) SetTenderAmountField(nullptr);
}

void SplitForm::Typed() {
  rest_->setText(QString::fromStdString(Splitrest(cash_->text().toStdString(), G().basket.total)));
}

void SplitForm::Close() {
  closed_ = true;
  SetTenderAmountField(nullptr);
  hide();
  deleteLater();
}

void SplitForm::Ok() {
  const SplitOther other = cheque_->isChecked() ? SplitOther::Cheque : SplitOther::Card;
  if (!Splitok(cash_->text().toStdString(), other)) {
    cash_->clear();
    cash_->setFocus();
    return;
  }
  Close();
  // The cash part is taken next; the tender stays open.
  auto* form = new CashForm(TillWindow(), CashStep::Split);
  form->show();
  form->activateWindow();
  form->tendered()->setFocus();
}

void SplitForm::Cancel() {
  Close();
  Cancelsplit();
}

void SplitForm::reject() {
  if (!closed_) Cancel();
}

void Splitcommand() {
  if (Startsplit()) {
    auto* form = new SplitForm(TillWindow());
    form->show();
    form->activateWindow();
    form->cash()->setFocus();
  }
}

void InstallSplitHandlers() {
  SetHandler(Command::SplitTender, [](int) { Splitcommand(); });
  SetHandler(Command::Cheque, [](int) { Chsale(); });
}

}  // namespace tilo
