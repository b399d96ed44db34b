// SPDX-License-Identifier: MIT
#include "documents/ui/language_form.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/text.h"

namespace tilo {
namespace {

QString Q(const char* cp1252_field) {
  return QString::fromStdString(Cp1252ToUtf8(FieldText(cp1252_field, 80)));
}

}  // namespace

LanguageForm::LanguageForm(QWidget* parent) : QDialog(parent) {
  setObjectName("LBOX");
  setWindowTitle("Language customization");
  auto* layout = new QVBoxLayout(this);
  auto* note = new QLabel(
      "The text on receipts and invoices may be specified. Some fields appear only on the custom "
      "versions. Note that if the language is changed any existing customizations are lost.",
      this);
  note->setWordWrap(true);
  layout->addWidget(note);

  auto* top = new QHBoxLayout;
  top->addWidget(new QLabel("Language", this));
  language_ = new QComboBox(this);
  language_->setObjectName("language");
  for (int l = 0; l < kLanguages; ++l)
    language_->addItem(QString::fromStdString(Cp1252ToUtf8(BuiltinWording(l, kLanguageName))));
  top->addWidget(language_);
  auto* reset = new QPushButton("Reset", this);
  reset->setObjectName("reset");
  top->addWidget(reset);
  top->addStretch(1);
  layout->addLayout(top);

  auto* groups = new QHBoxLayout;
  auto* receipt = new QGroupBox("Receipt", this);
  auto* invoice = new QGroupBox("Invoice", this);
  auto* receipt_rows = new QGridLayout(receipt);
  auto* invoice_rows = new QGridLayout(invoice);
  for (int s = 1; s < kWordingSlots; ++s) {
    QGroupBox* group = s <= 16 ? receipt : invoice;
    QGridLayout* rows = s <= 16 ? receipt_rows : invoice_rows;
    const int row = s <= 16 ? s - 1 : s - 17;
    defaults_[s] = new QLineEdit(group);
    defaults_[s]->setObjectName(QString("default%1").arg(s));
    defaults_[s]->setReadOnly(true);
    texts_[s] = new QLineEdit(group);
    texts_[s]->setObjectName(QString("text%1").arg(s));
    texts_[s]->setMaxLength(80);
    rows->addWidget(defaults_[s], row, 0);
    rows->addWidget(texts_[s], row, 1);
  }
  groups->addWidget(receipt);
  groups->addWidget(invoice, 0, Qt::AlignTop);
  layout->addLayout(groups);

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  layout->addWidget(buttons);

  form_ = Openwordingform();
  language_->setCurrentIndex(form_.selection);
  Show();
  connect(language_, &QComboBox::currentIndexChanged, this, &LanguageForm::Choose);
  connect(reset, &QPushButton::clicked, this, [this] { Choose(language_->currentIndex()); });
}

void LanguageForm::Show() {
  for (int s = 1; s < kWordingSlots; ++s) {
    defaults_[s]->setText(Q(form_.defaults.slot[s]));
    texts_[s]->setText(Q(form_.in_use.slot[s]));
  }
}

void LanguageForm::Choose(int selection) {
  if (selection < 0) return;
  Choosewordinglanguage(form_, selection);
  Show();
}

void LanguageForm::accept() {
  form_.selection = language_->currentIndex();
  for (int s = 1; s < kWordingSlots; ++s)
    SetField(form_.in_use.slot[s], Utf8ToCp1252(texts_[s]->text().toStdString()));
  Acceptwordingform(form_);
  QDialog::accept();
}

void Customizelanguage(QWidget* parent) {
  LanguageForm form(parent);
  form.exec();
}

}  // namespace tilo
