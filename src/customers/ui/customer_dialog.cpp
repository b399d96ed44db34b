// SPDX-License-Identifier: MIT
#include "customers/ui/customer_dialog.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "reports/ui/screen_list_dialog.h"
#include "tender/ui/cash_form.h"

namespace tilo {
namespace {

// The boxes of the left half of the card; the rest go on the right.
constexpr int kLeftBoxes = kBoxComment;

QString Q(const std::string& s) {
  return QString::fromStdString(s);
}

// Folds what is typed to upper case as it is typed, keeping the cursor.
void FoldAsTyped(QLineEdit* edit) {
  QObject::connect(edit, &QLineEdit::textEdited, edit, [edit](const QString& text) {
    const QString upper = text.toUpper();
    if (upper == text) return;
    const int at = edit->cursorPosition();
    edit->setText(upper);
    edit->setCursorPosition(at);
  });
}

QLineEdit* ReadOnlyLine(QWidget* parent) {
  auto* edit = new QLineEdit(parent);
  edit->setReadOnly(true);
  return edit;
}

class QtCustomerView : public CustomerView {
 public:
  FormButton edit(CustomerLayout layout, CustomerEntries& entries) override {
    CustomerDialog dialog(TillWindow(), layout);
    dialog.setEntries(entries);
    dialog.exec();
    entries = dialog.entries();
    return dialog.pressed();
  }
  void view(CustomerPage& page) override {
    CustomerDialog dialog(TillWindow(), CustomerLayout::View);
    dialog.setPage(page);
    dialog.exec();
  }
};

QtCustomerView qt_view;

}  // namespace

CustomerDialog::CustomerDialog(QWidget* parent, CustomerLayout layout)
    : QDialog(parent), layout_(layout) {
  setObjectName(layout == CustomerLayout::View ? "803" : "802");
  setWindowTitle(CustomerFormTitle(layout));
  const bool read_only = layout == CustomerLayout::View;
  auto* outer = new QVBoxLayout(this);
  auto* grid = new QGridLayout;
  outer->addLayout(grid);
  for (int b = 0; b < kCustomerBoxes; ++b) {
    const CustomerBoxSpec& spec = CustomerBoxes()[size_t(b)];
    QWidget* widget;
    if (b == kBoxTaxable || b == kBoxTerms) {
      auto* list = new QComboBox(this);
      if (b == kBoxTaxable) list->addItems({"0", "1"});
      for (int t = 1; b == kBoxTerms && t <= 8; ++t) list->addItem(Q(TermsText(t)));
      list->setEnabled(!read_only);
      widget = list;
    } else if (b == kBoxNotes) {
      auto* notes = new QPlainTextEdit(this);
      notes->setReadOnly(read_only);
      notes->setTabChangesFocus(true);
      notes->setFixedHeight(notes->fontMetrics().lineSpacing() * 3 + 12);
      widget = notes;
    } else {
      auto* edit = new QLineEdit(this);
      edit->setMaxLength(spec.limit);
      edit->setReadOnly(read_only);
      if (spec.upper) FoldAsTyped(edit);
      widget = edit;
    }
    widget->setObjectName(QString("box%1").arg(b));
    auto* label = new QLabel(spec.label, this);
    label->setBuddy(widget);
    boxes_[size_t(b)] = widget;
    labels_[size_t(b)] = label;
    const int column = b < kLeftBoxes ? 0 : 2;
    const int row = b < kLeftBoxes ? b : b - kLeftBoxes;
    grid->addWidget(label, row, column);
    grid->addWidget(widget, row, column + 1);
  }
  const bool balance = ShowsBalance(layout);
  labels_[kBoxBalance]->setVisible(balance);
  boxes_[kBoxBalance]->setVisible(balance);

  if (read_only) {
    int row = kLeftBoxes;
    for (auto [label, edit] : {std::pair{"Last used", &last_used_},
                               {"Last payment", &last_payment_},
                               {"Origination", &origination_}}) {
      *edit = ReadOnlyLine(this);
      grid->addWidget(new QLabel(label, this), row, 0);
      grid->addWidget(*edit, row++, 1);
    }
    terms_text_ = ReadOnlyLine(this);
    terms_text_->setObjectName("termsText");
    boxes_[kBoxTerms]->hide();
    grid->addWidget(terms_text_, kBoxTerms - kLeftBoxes, 3);
  } else {
    auto* note = new QLabel(
        "The terms selection is the text at the foot of invoices when customer information is "
        "used.",
        this);
    note->setWordWrap(true);
    outer->addWidget(note);
  }

  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  ok_ = new QPushButton("OK", this);
  ok_->setDefault(true);
  next_ = new QPushButton(read_only ? "Next" : "&Next", this);
  auto* cancel = new QPushButton("Cancel", this);
  buttons->addWidget(ok_);
  buttons->addWidget(next_);
  if (!read_only) buttons->addWidget(cancel);
  cancel->setVisible(!read_only);
  next_->setVisible(layout == CustomerLayout::New || read_only);
  outer->addLayout(buttons);
  connect(ok_, &QPushButton::clicked, this, [this] { Press(FormButton::Ok); });
  connect(next_, &QPushButton::clicked, this, [this] {
    if (layout_ != CustomerLayout::View) return Press(FormButton::Next);
    CustomerPage page;
    if (NextCustomerPage(page))
      setPage(page);
    else
      reject();
  });
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  // The cursor waits in "Number" when no number is offered.
  boxes_[kBoxName]->setFocus();
}

void CustomerDialog::Press(FormButton button) {
  pressed_ = button;
  accept();
}

void CustomerDialog::setEntries(const CustomerEntries& e) {
  for (int b = 0; b < kCustomerBoxes; ++b) {
    QWidget* w = boxes_[size_t(b)];
    const QString text = Q(e[size_t(b)]);
    if (auto* edit = qobject_cast<QLineEdit*>(w)) edit->setText(text);
    if (auto* notes = qobject_cast<QPlainTextEdit*>(w)) notes->setPlainText(text);
  }
  static_cast<QComboBox*>(boxes_[kBoxTaxable])->setCurrentIndex(e[kBoxTaxable] == "0" ? 0 : 1);
  const int terms = std::atoi(e[kBoxTerms].c_str());
  static_cast<QComboBox*>(boxes_[kBoxTerms])
      ->setCurrentIndex(terms >= 1 && terms <= 8 ? terms - 1 : 0);
  if (layout_ == CustomerLayout::View) return;
  if (e[kBoxNumber].empty()) boxes_[kBoxNumber]->setFocus();
}

CustomerEntries CustomerDialog::entries() const {
  CustomerEntries e;
  for (int b = 0; b < kCustomerBoxes; ++b) {
    QWidget* w = boxes_[size_t(b)];
    if (auto* edit = qobject_cast<QLineEdit*>(w)) e[size_t(b)] = edit->text().toStdString();
    if (auto* notes = qobject_cast<QPlainTextEdit*>(w))
      e[size_t(b)] = notes->toPlainText().toStdString();
  }
  e[kBoxTaxable] = static_cast<QComboBox*>(boxes_[kBoxTaxable])->currentText().toStdString();
  e[kBoxTerms] = std::to_string(static_cast<QComboBox*>(boxes_[kBoxTerms])->currentIndex() + 1);
  return e;
}

void CustomerDialog::setPage(const CustomerPage& page) {
  setEntries(page.entries);
  if (last_used_) last_used_->setText(Q(page.last_used));
  if (last_payment_) last_payment_->setText(Q(page.last_payment));
  if (origination_) origination_->setText(Q(page.origination));
  if (terms_text_) terms_text_->setText(Q(page.terms));
}

void InstallCustomerHandlers() {
  install_customer_view(&qt_view);
  InstallScreenListWindow();
  InstallCustomerCommands();
}

}  // namespace tilo
