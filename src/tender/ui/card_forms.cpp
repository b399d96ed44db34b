// SPDX-License-Identifier: MIT
#include "tender/ui/card_forms.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QVBoxLayout>

#include "platform/platform.h"
#include "sale/commands.h"
#include "tender/ui/cash_form.h"

namespace tilo {
namespace {

QCheckBox* Tick(QWidget* parent, const char* label, const char* name, bool on) {
  auto* tick = new QCheckBox(label, parent);
  tick->setObjectName(name);
  tick->setChecked(on);
  return tick;
}

class QtCardView : public CardView {
 public:
  EftChoice offline_choice() override {
    PaymentBox box(TillWindow(), false, true, false);
    box.exec();
    return box.choice();
  }
  EftChoice online_choice(bool cashback, bool not_present) override {
    PaymentBox box(TillWindow(), true, cashback, not_present);
    box.exec();
    return box.choice();
  }
  std::optional<std::string> cash_back() override {
    CashBackBox box(TillWindow());
    if (box.exec() != QDialog::Accepted) return std::nullopt;
    return box.amount()->text().toStdString();
  }
};

QtCardView qt_view;

}  // namespace

PaymentBox::PaymentBox(QWidget* parent, bool processing, bool cashback, bool not_present)
    : QDialog(parent) {
  setObjectName(processing ? "YBOX" : "BBOX");
  setWindowTitle("Electronic Payment");
  auto* layout = new QVBoxLayout(this);
  payment_ = Button("Payment", "payment", EftChoice::Payment);
  layout->addWidget(payment_);
  cashback_ = Button("Payment plus cashback", "cashback", EftChoice::PaymentCashback);
  cashback_->setVisible(cashback);
  layout->addWidget(cashback_);
  if (processing) {
    not_present_ = Button("Cardholder not present payment", "notPresent", EftChoice::NotPresent);
    not_present_->setVisible(not_present);
    layout->addWidget(not_present_);
  }
  cancel_ = Button("Cancel", "cancel", EftChoice::Cancel);
  layout->addWidget(cancel_);
  payment_->setDefault(true);
  payment_->setFocus();
  PlaceOverTill(this);
}

QPushButton* PaymentBox::Button(const char* label, const char* name, EftChoice choice) {
  auto* button = new QPushButton(label, this);
  button->setObjectName(name);
  connect(button, &QPushButton::clicked, this, [this, choice] {
    choice_ = choice;
    if (choice == EftChoice::Cancel)
      reject();
    else
      accept();
  });
  return button;
}

CashBackBox::CashBackBox(QWidget* parent) : QDialog(parent) {
  setObjectName("EDITBO8");
  setWindowTitle("CASH BACK");
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(new QLabel("Whole amount \nNo cents pence", this));
  amount_ = new QLineEdit(this);
  amount_->setObjectName("amount");
  amount_->setMaxLength(9);
  amount_->setValidator(new QRegularExpressionValidator(QRegularExpression("[0-9]*"), amount_));
  layout->addWidget(amount_);
  auto* row = new QHBoxLayout;
  auto* ok = new QPushButton("OK", this);
  ok->setObjectName("ok");
  ok->setDefault(true);
  auto* cancel = new QPushButton("Cancel", this);
  cancel->setObjectName("cancel");
  connect(ok, &QPushButton::clicked, this, &QDialog::accept);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  row->addWidget(ok);
  row->addWidget(cancel);
  layout->addLayout(row);
  amount_->setFocus();
}

CardSetupForm::CardSetupForm(QWidget* parent) : QDialog(parent) {
  setObjectName("SALE8BOX");
  setWindowTitle("Yes-Pay EasyVTerminal Card Payment Setup ");
  const CardSetup shown = Cardsetupshown();
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(new QLabel("YESEFT Base Directory", this));
  auto* row = new QHBoxLayout;
  folder_ = new QLineEdit(QString::fromStdString(shown.folder), this);
  folder_->setObjectName("folder");
  folder_->setMinimumWidth(360);
  auto* choose = new QPushButton("...", this);
  choose->setObjectName("choose");
  choose->setAutoDefault(false);
  connect(choose, &QPushButton::clicked, this, &CardSetupForm::Choose);
  row->addWidget(folder_);
  row->addWidget(choose);
  layout->addLayout(row);
  active_ = Tick(this, "Active", "active", shown.active);
  layout->addWidget(active_);
  auto* options = new QGroupBox("Options", this);
  auto* ticks = new QVBoxLayout(options);
  cashback_ = Tick(options, "Permit cashback", "cashback", shown.cashback);
  not_present_payment_ = Tick(options, "Permit cardholder not present payments",
                              "notPresentPayment", shown.not_present_payment);
  not_present_refund_ = Tick(options, "Permit cardholder not present refunds", "notPresentRefund",
                             shown.not_present_refund);
  verbose_ = Tick(options, "Verbose", "verbose", shown.verbose);
  ticks->addWidget(cashback_);
  ticks->addWidget(not_present_payment_);
  ticks->addWidget(not_present_refund_);
  ticks->addWidget(verbose_);
  layout->addWidget(options);
  auto* note = new QLabel(
      "Do not set active unless the Yes-Pay software is available to facilitate payments.", this);
  note->setWordWrap(true);
  layout->addWidget(note);
  auto* buttons = new QHBoxLayout;
  ok_ = new QPushButton("OK", this);
  ok_->setObjectName("ok");
  ok_->setDefault(true);
  auto* cancel = new QPushButton("Cancel", this);
  cancel->setObjectName("cancel");
  connect(ok_, &QPushButton::clicked, this, &CardSetupForm::Ok);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  buttons->addWidget(ok_);
  buttons->addWidget(cancel);
  layout->addLayout(buttons);
}

void CardSetupForm::Choose() {
  const std::optional<std::string> chosen =
      platform().choose_folder("Choose a folder", folder_->text().toStdString());
  if (chosen) folder_->setText(QString::fromStdString(*chosen));
}

void CardSetupForm::Ok() {
  CardSetup setup;
  setup.folder = folder_->text().toStdString();
  setup.active = active_->isChecked();
  setup.cashback = cashback_->isChecked();
  setup.not_present_payment = not_present_payment_->isChecked();
  setup.not_present_refund = not_present_refund_->isChecked();
  setup.verbose = verbose_->isChecked();
  // A folder that can't be kept leaves the form open to choose another.
  if (Storecardsetup(setup)) accept();
}

void InstallCardHandlers() {
  install_card_view(&qt_view);
  SetHandler(Command::Eft, [](int) { Eftsale(); });
  SetHandler(Command::EftManual, [](int) { Eftmanual(); });
  SetHandler(Command::CardSetup, [](int) {
    CardSetupForm form(TillWindow());
    form.exec();
  });
}

}  // namespace tilo
