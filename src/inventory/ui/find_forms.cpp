// SPDX-License-Identifier: MIT
#include "inventory/ui/find_forms.h"

#include <QApplication>
#include <QCheckBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <cstdio>

#include "core/settings.h"
#include "core/state.h"
#include "core/text.h"
#include "customers/ui/find_customer_form.h"
#include "inventory/find_view.h"
#include "inventory/item_find.h"

namespace tilo {
namespace {

QString T(const char* field, size_t width) {
  return QString::fromStdString(Cp1252ToUtf8(FieldText(field, width)));
}
template <size_t N>
QString T(const char (&field)[N]) {
  return T(field, N);
}
QString Money(float value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.2f", double(value));
  return text;
}
std::string Typed(const QLineEdit* box) {
  return Utf8ToCp1252(box->text().toStdString());
}

QString TaxText(int32_t tax) {
  switch (tax) {
    case 0:
      return "Non taxable";
    case 1:
      return "Tax 1 and 2";
    case 2:
      return "Tax 1";
    case 3:
      return "Tax 2";
  }
  return QString::number(tax);
}

// OK (the default), then the buttons given, in a row at the foot of a form.
QHBoxLayout* ButtonRow(QDialog* form, QPushButton*& ok, bool with_next, QPushButton** next) {
  auto* row = new QHBoxLayout;
  row->addStretch();
  ok = new QPushButton("OK", form);
  ok->setObjectName("ok");
  ok->setDefault(true);
  row->addWidget(ok);
  QObject::connect(ok, &QPushButton::clicked, form, &QDialog::accept);
  auto* cancel = new QPushButton("Cancel", form);
  cancel->setObjectName("cancel");
  row->addWidget(cancel);
  QObject::connect(cancel, &QPushButton::clicked, form, &QDialog::reject);
  if (with_next) {
    *next = new QPushButton("Next", form);
    (*next)->setObjectName("next");
    row->addWidget(*next);
    QObject::connect(*next, &QPushButton::clicked, form, [form] { form->done(2); });
  }
  return row;
}

class QtFindView : public FindView {
 public:
  FindChoice find_inventory(const FilmRecord& r) override {
    const QList<QPair<QString, QString>> rows = {
        {"Number", QString::number(r.number)},
        {"Description", T(r.description)},
        {"SKU 1", T(r.sku1)},
        {"SKU 2", T(r.sku2)},
        {"SKU 3", T(r.sku3)},
        {"SKU 4", T(r.sku4)},
        {"Cost", Money(r.cost_price)},
        {"Price", Money(r.retail_price)},
        {"Display category",
         QString::fromStdString(CategoryCode(G().settings, r.display_category + 1))},
        {"In stock", QString::number(r.quantity)},
        {"Tax", TaxText(r.tax)},
        {"Date added", T(r.date_added)},
    };
    FindRecordForm form(QApplication::activeWindow(), "FIND INVENTORY", rows);
    form.setObjectName("form805");
    const int result = form.exec();
    return result == 1 ? FindChoice::Ok : result == 2 ? FindChoice::Next : FindChoice::Cancel;
  }
  FindChoice find_customer(const MemberRecord& m) override {
    return ShowFindCustomer(QApplication::activeWindow(), m);
  }
  std::optional<AdvancedQuery> advanced_search() override {
    AdvancedSearchForm form(QApplication::activeWindow());
    if (form.exec() != QDialog::Accepted) return std::nullopt;
    AdvancedQuery q;
    q.description = UpperCase(Typed(form.box(0)));
    for (int i = 0; i < 4; ++i) q.sku[i] = UpperCase(Typed(form.box(i + 1)));
    q.all = form.all()->isChecked();
    return q;
  }
  std::optional<PicboxQuery> picbox(bool within) override {
    PicboxForm form(QApplication::activeWindow(), within);
    if (form.exec() != QDialog::Accepted) return std::nullopt;
    return PicboxQuery{UpperCase(Typed(form.text())), form.within()->isChecked(),
                       form.keep()->isChecked()};
  }
  int pick_row(const std::vector<std::string>& rows) override {
    QStringList list;
    for (const std::string& r : rows) list << QString::fromStdString(r);
    SelectListForm form(QApplication::activeWindow(), list);
    if (form.exec() != QDialog::Accepted) return -1;
    return form.list()->currentRow();
  }
};

QtFindView qt_view;

}  // namespace

QLineEdit* UpperCaseBox(QWidget* parent, int limit) {
  auto* box = new QLineEdit(parent);
  box->setMaxLength(limit);
  QObject::connect(box, &QLineEdit::textEdited, box, [box](const QString& text) {
    const QString upper = text.toUpper();
    if (upper == text) return;
    const int cursor = box->cursorPosition();
    box->setText(upper);
    box->setCursorPosition(cursor);
  });
  return box;
}

FindRecordForm::FindRecordForm(QWidget* parent, const QString& title,
                               const QList<QPair<QString, QString>>& rows)
    : QDialog(parent) {
  setWindowTitle(title);
  auto* layout = new QVBoxLayout(this);
  auto* fields = new QFormLayout;
  for (const auto& [label, value] : rows) {
    auto* shown = new QLineEdit(value, this);
    shown->setReadOnly(true);
    shown->setObjectName(label);
    fields->addRow(label, shown);
  }
  layout->addLayout(fields);
  layout->addLayout(ButtonRow(this, ok_, true, &next_));
  setMinimumWidth(440);
  ok_->setFocus();
}

AdvancedSearchForm::AdvancedSearchForm(QWidget* parent) : QDialog(parent) {
  setWindowTitle("Advanced search");
  setObjectName("form811");
  auto* layout = new QVBoxLayout(this);
  auto* fields = new QFormLayout;
  for (int i = 0; i < 5; ++i) {
    boxes_[i] = UpperCaseBox(this, 39);
    boxes_[i]->setObjectName(i == 0 ? QString("description") : QString("sku%1").arg(i));
    fields->addRow(i == 0 ? "Description" : "SKU", boxes_[i]);
  }
  layout->addLayout(fields);
  auto* any = new QRadioButton("Display inventory with any match to the above", this);
  any->setChecked(true);
  all_ = new QRadioButton("Display only those that match all the above", this);
  all_->setObjectName("all");
  layout->addWidget(any);
  layout->addWidget(all_);
  layout->addWidget(
      new QLabel("The search will match items that contain (not just start with) the "
                 "specified text.",
                 this));
  layout->addWidget(
      new QLabel("The SKU above will each be searched for in all four inventory SKU. ", this));
  QPushButton* ok = nullptr;
  layout->addLayout(ButtonRow(this, ok, false, nullptr));
}

SelectListForm::SelectListForm(QWidget* parent, const QStringList& rows) : QDialog(parent) {
  setWindowTitle("Please select");
  setObjectName("form818");
  auto* layout = new QVBoxLayout(this);
  list_ = new QListWidget(this);
  list_->addItems(rows);
  list_->setCurrentRow(0);
  layout->addWidget(list_);
  QPushButton* ok = nullptr;
  layout->addLayout(ButtonRow(this, ok, false, nullptr));
  connect(list_, &QListWidget::itemActivated, this, &QDialog::accept);
  resize(480, 360);
}

PicboxForm::PicboxForm(QWidget* parent, bool within) : QDialog(parent) {
  setWindowTitle("Item description search");
  setObjectName("formPICBOX");
  auto* layout = new QVBoxLayout(this);
  text_ = UpperCaseBox(this, 34);
  text_->setObjectName("text");
  layout->addWidget(text_);
  auto* initial = new QRadioButton("Initial characters", this);
  within_ = new QRadioButton("Within the description", this);
  within_->setObjectName("within");
  (within ? within_ : initial)->setChecked(true);
  layout->addWidget(initial);
  layout->addWidget(within_);
  keep_ = new QCheckBox("Keep search type as default", this);
  layout->addWidget(keep_);
  QPushButton* ok = nullptr;
  layout->addLayout(ButtonRow(this, ok, false, nullptr));
  setMinimumWidth(360);
  text_->setFocus();
}

void InstallFindForms() {
  install_find_view(&qt_view);
}

}  // namespace tilo
