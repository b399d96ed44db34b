// SPDX-License-Identifier: MIT
#include "tender/ui/refund_forms.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "sale/commands.h"
#include "sale/screen.h"
#include "tender/browse.h"
#include "tender/printdocument.h"
#include "tender/ui/cash_form.h"

namespace tilo {
namespace {

QString Q(const std::string& text) {
  return QString::fromStdString(text);
}

QLineEdit* AddField(QGridLayout* grid, QWidget* parent, int row, int column, const QString& label,
                    const std::string& text = {}) {
  auto* name = new QLabel(label, parent);
  auto* box = new QLineEdit(Q(text), parent);
  box->setObjectName(label);
  box->setReadOnly(true);
  box->setFocusPolicy(Qt::NoFocus);
  name->setBuddy(box);
  grid->addWidget(name, row, column);
  grid->addWidget(box, row, column + 1);
  return box;
}

QGroupBox* Group(QWidget* parent, const QString& title, QButtonGroup* group,
                 const std::vector<QString>& options) {
  auto* box = new QGroupBox(title, parent);
  auto* column = new QVBoxLayout(box);
  int id = 0;
  for (const QString& text : options) {
    auto* option = new QRadioButton(text, box);
    option->setObjectName(text);
    group->addButton(option, id++);
    column->addWidget(option);
  }
  group->button(0)->setChecked(true);
  return box;
}

class QtRefundView : public RefundView {
 public:
  std::optional<RefundChoice> refund_form() override {
    RefundDialog form(TillWindow());
    if (form.exec() != QDialog::Accepted) return std::nullopt;
    return form.choice();
  }
  CardRefund card_refund_box() override { return Cardrefundbox(TillWindow()); }
};

class QtBrowseView : public BrowseView {
 public:
  std::optional<std::string> invoice_list(const std::vector<std::string>& lines) override {
    InvoiceListDialog form(TillWindow(), lines);
    if (form.exec() != QDialog::Accepted) return std::nullopt;
    return form.selected();
  }
  void transaction_form(TransactionBrowser& browser) override {
    TransactionDialog form(TillWindow(), browser);
    form.exec();
  }
};

QtRefundView qt_refund_view;
QtBrowseView qt_browse_view;

}  // namespace

RefundDialog::RefundDialog(QWidget* parent) : QDialog(parent) {
  setObjectName("807");
  setWindowTitle("Refund");
  auto* layout = new QVBoxLayout(this);
  auto* grid = new QGridLayout;
  int row = 0;
  for (const auto& [label, text] : Refundformfields())
    AddField(grid, this, row++, 0, Q(label), text);
  layout->addLayout(grid);
  assignment_ = new QButtonGroup(this);
  reimbursement_ = new QButtonGroup(this);
  layout->addWidget(Group(this, "Assignment", assignment_,
                          {"Add items back to stock", "Items faulty, do not add back to stock"}));
  layout->addWidget(Group(this, "Reimbursement", reimbursement_,
                          {"Cash refund", "CH refund", "EFT refund", "Credit refund"}));
  print_ = new QCheckBox("Print refund receipt", this);
  print_->setObjectName("Print refund receipt");
  layout->addWidget(print_);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  ok_ = buttons->button(QDialogButtonBox::Ok);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  layout->addWidget(buttons);
  assignment_->button(0)->setFocus();
}

RefundChoice RefundDialog::choice() const {
  RefundChoice c;
  c.method = reimbursement_->checkedId();
  c.faulty = assignment_->checkedId() == 1;
  c.print = print_->isChecked();
  return c;
}

QLineEdit* RefundDialog::field(const QString& label) const {
  return findChild<QLineEdit*>(label);
}

QRadioButton* RefundDialog::option(const QString& text) const {
  return findChild<QRadioButton*>(text);
}

CardRefund Cardrefundbox(QWidget* parent) {
  QMessageBox box(parent);
  box.setObjectName("CARDREFUNDBOX");
  box.setWindowTitle("Card refund");
  box.setText("Card refund");
  QPushButton* present = box.addButton("Refund", QMessageBox::AcceptRole);
  QPushButton* absent = box.addButton("Cardholder not present refund", QMessageBox::AcceptRole);
  box.addButton("Cancel", QMessageBox::RejectRole);
  box.setDefaultButton(present);
  box.exec();
  if (box.clickedButton() == present) return CardRefund::Present;
  if (box.clickedButton() == absent) return CardRefund::NotPresent;
  return CardRefund::Cancel;
}

InvoiceListDialog::InvoiceListDialog(QWidget* parent, const std::vector<std::string>& lines)
    : QDialog(parent) {
  setObjectName("819");
  setWindowTitle("Invoice list");
  auto* layout = new QVBoxLayout(this);
  list_ = new QListWidget(this);
  list_->setObjectName("list");
  list_->setUniformItemSizes(true);
  for (const std::string& line : lines) list_->addItem(Q(line));
  if (list_->count() > 0) {
    list_->setCurrentRow(list_->count() - 1);
    list_->scrollToBottom();
  }
  connect(list_, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
  layout->addWidget(list_);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  layout->addWidget(buttons);
  resize(420, 480);
  list_->setFocus();
}

std::string InvoiceListDialog::selected() const {
  const QListWidgetItem* item = list_->currentItem();
  return item ? item->text().toStdString() : std::string();
}

TransactionDialog::TransactionDialog(QWidget* parent, TransactionBrowser& browser)
    : QDialog(parent), browser_(browser) {
  setObjectName("MULTDIAL");
  setWindowTitle("Transaction");
  auto* layout = new QVBoxLayout(this);
  auto* grid = new QGridLayout;
  int row = 0;
  for (const char* label :
       {"Type", "Number", "Clerk", "Date", "Time", "Items", "Discount", "Customer", "Payment type"})
    AddField(grid, this, row++, 0, label);
  row = 0;
  for (const char* label :
       {"Non taxable", "Taxable", "Sub total", "Tax 1", "Tax 2", "Total", "Cash back"}) {
    AddField(grid, this, row++, 2, label)->setAlignment(Qt::AlignRight);
  }
  grid->setColumnStretch(1, 2);
  grid->setColumnStretch(3, 1);
  layout->addLayout(grid);
  layout->addWidget(new QLabel("Inventory", this));
  inventory_ = new QListWidget(this);
  inventory_->setObjectName("Inventory");
  layout->addWidget(inventory_);
  auto* notes = new QGridLayout;
  AddField(notes, this, 0, 0, "Notes");
  layout->addLayout(notes);
  layout->addWidget(new QLabel("The invoice inventory will reflect subsequent changes", this));

  auto* buttons = new QHBoxLayout;
  struct Print {
    const char* text;
    int kind;
  };
  for (const Print& p :
       {Print{"Till receipt", kTillReceipt}, Print{"&Custom receipt", kCustomReceipt},
        Print{"Invoice", kStandardInvoice}}) {
    auto* button = new QPushButton(p.text, this);
    button->setObjectName(p.text);
    button->setAutoDefault(false);
    // A document nothing draws yet can't be asked for.
    button->setEnabled(bool(Documentpage(p.kind)));
    const int kind = p.kind;
    connect(button, &QPushButton::clicked, this, [kind] { Printdocument(kind); });
    buttons->addWidget(button);
  }
  auto* next = new QPushButton("&Next", this);
  next->setObjectName("&Next");
  next->setAutoDefault(false);
  connect(next, &QPushButton::clicked, this, [this] {
    if (browser_.Next()) Fill();
  });
  buttons->addWidget(next);
  auto* ok = new QPushButton("OK", this);
  ok->setObjectName("OK");
  ok->setDefault(true);
  connect(ok, &QPushButton::clicked, this, &QDialog::accept);
  buttons->addWidget(ok);
  layout->addLayout(buttons);
  resize(640, 560);
  Fill();
  ok->setFocus();
}

void TransactionDialog::Fill() {
  const TransactionShown& t = browser_.shown();
  const std::pair<const char*, const std::string*> fields[] = {{"Type", &t.type},
                                                               {"Number", &t.number},
                                                               {"Clerk", &t.clerk},
                                                               {"Date", &t.date},
                                                               {"Time", &t.time},
                                                               {"Items", &t.items},
                                                               {"Discount", &t.discount},
                                                               {"Customer", &t.customer},
                                                               {"Payment type", &t.payment},
                                                               {"Non taxable", &t.non_taxable},
                                                               {"Taxable", &t.taxable},
                                                               {"Sub total", &t.subtotal},
                                                               {"Tax 1", &t.tax1},
                                                               {"Tax 2", &t.tax2},
                                                               {"Total", &t.total},
                                                               {"Cash back", &t.cash_back},
                                                               {"Notes", &t.notes}};
  for (const auto& [label, text] : fields) field(label)->setText(Q(*text));
  inventory_->clear();
  for (const std::string& line : t.lines) inventory_->addItem(Q(line));
  if (inventory_->count() > 0) inventory_->setCurrentRow(0);
}

QLineEdit* TransactionDialog::field(const QString& label) const {
  return findChild<QLineEdit*>(label);
}

QPushButton* TransactionDialog::button(const QString& text) const {
  return findChild<QPushButton*>(text);
}

void InstallRefundHandlers() {
  install_refund_view(&qt_refund_view);
  SetHandler(Command::Refund, [](int) { Refundbasket(); });
}

void InstallBrowserHandlers() {
  install_browse_view(&qt_browse_view);
  for (Command c :
       {Command::FindTransaction, Command::DisplayTransaction, Command::TransactionsInDay,
        Command::TransactionsInMonth, Command::TransactionsInYear, Command::DiscountedTransactions,
        Command::ReprintLast})
    SetHandler(c, [c](int) { Browse(c); });
}

}  // namespace tilo
