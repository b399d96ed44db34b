// SPDX-License-Identifier: MIT
#include "tender/ui/account_forms.h"

#include <QButtonGroup>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "platform/platform.h"
#include "sale/commands.h"
#include "tender/ui/cash_form.h"

namespace tilo {
namespace {

QString Q(const std::string& text) {
  return QString::fromStdString(text);
}

QLineEdit* AddField(QGridLayout* grid, QWidget* parent, int row, int column,
                    const AccountField& field) {
  auto* name = new QLabel(Q(field.first), parent);
  auto* box = new QLineEdit(Q(field.second), parent);
  box->setObjectName(Q(field.first));
  box->setReadOnly(true);
  box->setFocusPolicy(Qt::NoFocus);
  name->setBuddy(box);
  grid->addWidget(name, row, column);
  grid->addWidget(box, row, column + 1);
  return box;
}

bool IsMoney(const std::string& label) {
  for (const char* l : {"Sub Total", "Tax 1", "Tax 2", "Total", "Credit limit", "Previous balance",
                        "Transaction", "Balance"})
    if (label == l) return true;
  return false;
}

class QtAccountView : public AccountView {
 public:
  int customer_transaction(const std::vector<AccountField>& fields) override {
    CustomerTransactionDialog form(TillWindow(), fields);
    form.exec();
    return form.tender();
  }
  std::optional<PaymentEntry> payment(const PaymentShown& shown) override {
    PaymentDialog form(TillWindow(), shown);
    if (form.exec() != QDialog::Accepted) return std::nullopt;
    return form.entry();
  }
};

QtAccountView qt_account_view;

}  // namespace

CustomerTransactionDialog::CustomerTransactionDialog(QWidget* parent,
                                                     const std::vector<AccountField>& fields)
    : QDialog(parent) {
  setObjectName("806");
  setWindowTitle("Customer transaction");
  auto* layout = new QVBoxLayout(this);
  auto* grid = new QGridLayout;
  // The sale on the left, the customer on the right, the account at the foot.
  int left = 0, right = 0;
  for (const AccountField& f : fields) {
    const bool sale = left < 8;
    const bool account =
        f.first == "Previous balance" || f.first == "Transaction" || f.first == "Balance";
    if (account) continue;
    QLineEdit* box = AddField(grid, this, sale ? left++ : right++, sale ? 0 : 2, f);
    if (IsMoney(f.first)) box->setAlignment(Qt::AlignRight);
  }
  grid->setColumnStretch(1, 1);
  grid->setColumnStretch(3, 2);
  layout->addLayout(grid);
  auto* account = new QGridLayout;
  int column = 0;
  for (const AccountField& f : fields) {
    if (f.first != "Previous balance" && f.first != "Transaction" && f.first != "Balance") continue;
    AddField(account, this, 0, column, f)->setAlignment(Qt::AlignRight);
    column += 2;
  }
  layout->addLayout(account);

  auto* buttons = new QHBoxLayout;
  struct Button {
    const char* text;
    int tender;
  };
  for (const Button& b :
       {Button{"Credit", kTenderCredit}, Button{"Cash", kTenderCash}, Button{"CH", kTenderCh},
        Button{"EFT", kTenderEft}, Button{"Cancel", kTenderCancel}}) {
    auto* button = new QPushButton(b.text, this);
    button->setObjectName(b.text);
    button->setAutoDefault(false);
    const int tender = b.tender;
    connect(button, &QPushButton::clicked, this, [this, tender] {
      tender_ = tender;
      if (tender == kTenderCancel)
        reject();
      else
        QDialog::accept();
    });
    buttons->addWidget(button);
    if (b.tender == kTenderCredit) {
      button->setDefault(true);
      button->setFocus();
    }
  }
  layout->addLayout(buttons);
  resize(720, 460);
}

QLineEdit* CustomerTransactionDialog::field(const QString& label) const {
  return findChild<QLineEdit*>(label);
}

QPushButton* CustomerTransactionDialog::button(const QString& text) const {
  return findChild<QPushButton*>(text);
}

PaymentDialog::PaymentDialog(QWidget* parent, const PaymentShown& shown) : QDialog(parent) {
  setObjectName("MULTDIA2");
  setWindowTitle("Payment");
  auto* layout = new QVBoxLayout(this);
  auto* grid = new QGridLayout;
  int row = 0;
  for (const AccountField& f : shown.fields) {
    if (f.first == "Balance") continue;
    AddField(grid, this, row++, 0, f);
  }
  grid->setColumnStretch(1, 1);
  layout->addLayout(grid);
  transactions_ = new QListWidget(this);
  transactions_->setObjectName("list");
  transactions_->setUniformItemSizes(true);
  transactions_->setFocusPolicy(Qt::NoFocus);
  for (const std::string& line : shown.transactions) transactions_->addItem(Q(line));
  if (transactions_->count() > 0) transactions_->scrollToBottom();
  layout->addWidget(transactions_);

  auto* money = new QGridLayout;
  for (const AccountField& f : shown.fields)
    if (f.first == "Balance") AddField(money, this, 0, 0, f)->setAlignment(Qt::AlignRight);
  auto* pay_label = new QLabel("Pay", this);
  pay_ = new QLineEdit(this);
  pay_->setObjectName("Pay");
  pay_->setAlignment(Qt::AlignRight);
  pay_->setMaxLength(12);
  pay_label->setBuddy(pay_);
  money->addWidget(pay_label, 1, 0);
  money->addWidget(pay_, 1, 1);
  money->addWidget(new QLabel("The period character . is used when entering the amount", this), 2,
                   0, 1, 2);
  layout->addLayout(money);

  auto* methods = new QGroupBox("Payment method", this);
  auto* row_of = new QHBoxLayout(methods);
  method_ = new QButtonGroup(this);
  int id = kPayCash;
  for (const char* text : {"Cash", "CH", "EFT"}) {
    auto* option = new QRadioButton(text, methods);
    option->setObjectName(text);
    method_->addButton(option, id++);
    row_of->addWidget(option);
  }
  method_->button(kPayCash)->setChecked(true);
  layout->addWidget(methods);

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  ok_ = buttons->button(QDialogButtonBox::Ok);
  connect(buttons, &QDialogButtonBox::accepted, this, &PaymentDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  layout->addWidget(buttons);
  resize(520, 520);
  pay_->setFocus();
}

PaymentEntry PaymentDialog::entry() const {
  return {pay_->text().toStdString(), method_->checkedId()};
}

QLineEdit* PaymentDialog::field(const QString& label) const {
  return findChild<QLineEdit*>(label);
}

void PaymentDialog::accept() {
  if (!Payamount(pay_->text().toStdString())) {
    Message(kBadAmountText, kBadAmountTitle);
    pay_->setFocus();
    pay_->selectAll();
    return;
  }
  QDialog::accept();
}

void InstallAccountHandlers() {
  install_account_view(&qt_account_view);
  SetHandler(Command::CustomerCredit, [](int) { Creditsale(); });
  SetHandler(Command::BalancePayment, [](int) { Balancepayment(); });
  SetHandler(Command::BalancePayOnTransaction, [](int) { Balanceontransaction(); });
}

}  // namespace tilo
