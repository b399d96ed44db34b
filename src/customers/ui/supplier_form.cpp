// SPDX-License-Identifier: MIT
#include "customers/ui/supplier_form.h"

#include <QApplication>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <cstddef>
#include <cstring>

#include "core/text.h"
#include "sale/basket.h"
#include "sale/commands.h"

namespace tilo {
namespace {

struct Field {
  const char* label;
  size_t offset;  // in MansRecord; the number is told apart by its label
  size_t width;
  int limit;
  bool fold;
};

#define TEXT(label, member, limit, fold)                                         \
  Field {                                                                        \
    label, offsetof(MansRecord, member), sizeof(MansRecord::member), limit, fold \
  }

const Field kFields[] = {
    {"Number", 0, 0, 39, false},
    TEXT("Name", name, 40, true),
    TEXT("Road", road, 28, true),
    TEXT("Area", area, 28, true),
    TEXT("Town", town, 28, true),
    TEXT("Zip / Post", postcode, 8, true),
    TEXT("Telephone 1", telephone, 18, true),
    TEXT("Ext", telephone_extension, 18, false),
    TEXT("Telephone 2", telephone2, 18, true),
    TEXT("Email", email, 38, true),
    TEXT("Fax", fax, 18, true),
    TEXT("Contact", contact, 58, true),
    TEXT("Origination", origination, 38, true),
    TEXT("Comment 1", comment, 28, true),
    TEXT("Comment 2", comment2, 38, true),
    TEXT("Credit limit", credit_limit, 38, true),
    TEXT("Terms", terms, 38, true),
    TEXT("Notes", notes, 198, false),
};

#undef TEXT

bool IsNumber(const Field& f) {
  return f.width == 0;
}

// Folds what is typed to upper case, as the record keeps it.
void FoldOnEntry(QLineEdit* edit) {
  QObject::connect(edit, &QLineEdit::textEdited, edit, [edit](const QString& text) {
    const int at = edit->cursorPosition();
    const QString upper =
        QString::fromStdString(Cp1252ToUtf8(UpperCase(Utf8ToCp1252(text.toStdString()))));
    if (upper != text) {
      edit->setText(upper);
      edit->setCursorPosition(at);
    }
  });
}

}  // namespace

SupplierDialog::SupplierDialog(QWidget* parent, const SupplierForm& form)
    : QDialog(parent), record_(form.record) {
  setObjectName("816");
  setWindowTitle(QString::fromStdString(SupplierFormTitle(form.mode)));
  const bool view_only = form.mode == SupplierFormMode::View;
  auto* outer = new QVBoxLayout(this);
  auto* grid = new QGridLayout;
  outer->addLayout(grid);
  const auto* bytes = reinterpret_cast<const char*>(&record_);
  int row = 0, column = 0;
  QLineEdit* name = nullptr;
  for (const Field& f : kFields) {
    auto* edit = new QLineEdit(this);
    edit->setObjectName(f.label);
    edit->setMaxLength(f.limit);
    edit->setReadOnly(view_only);
    if (IsNumber(f))
      edit->setText(QString::number(record_.number));
    else
      edit->setText(QString::fromStdString(Cp1252ToUtf8(FieldText(bytes + f.offset, f.width))));
    if (f.fold) FoldOnEntry(edit);
    // Short fields in pairs; the long ones take a row of their own.
    const bool wide = f.limit > 40;
    if (wide && column != 0) ++row, column = 0;
    grid->addWidget(new QLabel(f.label, this), row, column);
    grid->addWidget(edit, row, column + 1, 1, wide ? 3 : 1);
    if (wide || column == 2)
      ++row, column = 0;
    else
      column = 2;
    if (std::strcmp(f.label, "Name") == 0) name = edit;
  }
  auto* note = new QLabel(
      "The number is required. All other fields are text and may be used as required. ", this);
  outer->addWidget(note);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  auto* ok = new QPushButton("OK", this);
  auto* cancel = new QPushButton("Cancel", this);
  ok->setObjectName("ok");
  ok->setDefault(true);
  buttons->addWidget(ok);
  buttons->addWidget(cancel);
  outer->addLayout(buttons);
  connect(ok, &QPushButton::clicked, this, &QDialog::accept);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  if (view_only)
    ok->setFocus();
  else
    name->setFocus();
}

QLineEdit* SupplierDialog::edit(const QString& label) const {
  return findChild<QLineEdit*>(label);
}

MansRecord SupplierDialog::collected() const {
  MansRecord r = record_;
  auto* bytes = reinterpret_cast<char*>(&r);
  for (const Field& f : kFields) {
    const std::string text = Utf8ToCp1252(edit(f.label)->text().toStdString());
    if (IsNumber(f)) {
      r.number = LeadingNumber(text);
      continue;
    }
    const size_t n = std::min(text.size(), f.width - 1);
    std::memset(bytes + f.offset, 0, f.width);
    std::memcpy(bytes + f.offset, text.data(), n);
  }
  return r;
}

namespace {

class QtSupplierView : public SupplierView {
 public:
  bool edit_supplier(SupplierForm& form) override {
    SupplierDialog dialog(QApplication::activeWindow(), form);
    if (dialog.exec() != QDialog::Accepted) return false;
    form.record = dialog.collected();
    return true;
  }
};
QtSupplierView qt_view;

}  // namespace

void InstallSupplierHandlers() {
  install_supplier_view(&qt_view);
  SetHandler(Command::FindSupplier, [](int) { Findsupplier(); });
  SetHandler(Command::AddSupplier, [](int) { Addsupplier(); });
  SetHandler(Command::AmendSupplier, [](int) { Amendsupplier(); });
  SetHandler(Command::DeleteSupplier, [](int) { Deletesupplier(); });
}

}  // namespace tilo
