// SPDX-License-Identifier: MIT
#include "reports/ui/listing_forms.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QVBoxLayout>

#include "documents/ui/font_size_form.h"
#include "inventory/items.h"

namespace tilo {
namespace {

constexpr const char* kTickNames[kCustomFields] = {"Description",
                                                   "SKU 1",
                                                   "SKU 2",
                                                   "SKU 3",
                                                   "SKU 4",
                                                   "Cost price",
                                                   "Trade price",
                                                   "Retail price",
                                                   "Order code",
                                                   "On order",
                                                   "Order quantity",
                                                   "Minimum order",
                                                   "Reorder level",
                                                   "Tax code",
                                                   "In stock",
                                                   "Date added",
                                                   "Display category",
                                                   "Location",
                                                   "Web URL",
                                                   "Web image URL"};

QDialogButtonBox* OkCancel(QDialog* dialog) {
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, dialog);
  QObject::connect(buttons, &QDialogButtonBox::accepted, dialog, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
  return buttons;
}

class RowsForm : public QDialog {
 public:
  RowsForm(QWidget* parent, const std::string& title, const std::vector<std::string>& rows)
      : QDialog(parent) {
    setObjectName("819");
    setWindowTitle(QString::fromStdString(title));
    resize(520, 400);
    auto* layout = new QVBoxLayout(this);
    list_ = new QListWidget(this);
    for (const std::string& row : rows) list_->addItem(QString::fromStdString(row));
    layout->addWidget(list_);
    layout->addWidget(OkCancel(this));
    connect(list_, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
  }
  int chosen() const { return list_->currentRow(); }

 private:
  QListWidget* list_;
};

class QtListingView : public ListingView {
 public:
  std::optional<std::pair<std::string, std::string>> ask_range(int64_t highest) override {
    return Printrange(QApplication::activeWindow(), highest);
  }
  std::optional<int> choose_category(bool with_all) override {
    CategoryForm form(QApplication::activeWindow(), with_all);
    if (form.exec() != QDialog::Accepted || form.chosen() < 0) return std::nullopt;
    return form.chosen();
  }
  bool custom_print(CustomFields& fields, std::string& from, std::string& to) override {
    CustomPrintForm form(QApplication::activeWindow(), fields, from, to);
    if (form.exec() != QDialog::Accepted) return false;
    fields = form.fields();
    from = form.from()->text().toStdString();
    to = form.to()->text().toStdString();
    return true;
  }
  std::optional<size_t> choose_row(const std::string& title,
                                   const std::vector<std::string>& rows) override {
    RowsForm form(QApplication::activeWindow(), title, rows);
    if (form.exec() != QDialog::Accepted || form.chosen() < 0) return std::nullopt;
    return size_t(form.chosen());
  }
};

QtListingView qt_view;

}  // namespace

CategoryForm::CategoryForm(QWidget* parent, bool with_all) : QDialog(parent) {
  setWindowTitle("Select category");
  auto* layout = new QVBoxLayout(this);
  list_ = new QListWidget(this);
  for (int c = 0; c < kAllCategories; ++c) list_->addItem(QString::fromStdString(Categoryname(c)));
  if (with_all) list_->addItem("All");
  list_->setCurrentRow(0);
  layout->addWidget(list_);
  layout->addWidget(OkCancel(this));
  connect(list_, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
}

int CategoryForm::chosen() const {
  return list_->currentRow();
}

CustomPrintForm::CustomPrintForm(QWidget* parent, const CustomFields& fields,
                                 const std::string& from, const std::string& to)
    : QDialog(parent) {
  setObjectName("PS4");
  setWindowTitle("Custom Inventory Print");
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(new QLabel(
      "The field selection is retained for for reuse. Items are printed without word wrap.", this));
  auto* grid = new QGridLayout;
  for (int i = 0; i < kCustomFields; ++i) {
    ticks_[size_t(i)] = new QCheckBox(kTickNames[i], this);
    ticks_[size_t(i)]->setChecked(fields[size_t(i)] == 2);
    grid->addWidget(ticks_[size_t(i)], i % 10, i / 10);
  }
  layout->addLayout(grid);
  auto* range = new QFormLayout;
  from_ = new QLineEdit(QString::fromStdString(from), this);
  to_ = new QLineEdit(QString::fromStdString(to), this);
  from_->setMaxLength(20);
  to_->setMaxLength(20);
  range->addRow("From", from_);
  range->addRow("To", to_);
  layout->addLayout(range);
  layout->addWidget(OkCancel(this));
}

CustomFields CustomPrintForm::fields() const {
  CustomFields f{};
  for (int i = 0; i < kCustomFields; ++i) f[size_t(i)] = ticks_[size_t(i)]->isChecked() ? 2 : 0;
  return f;
}

void InstallListingForms() {
  install_listing_view(&qt_view);
  InstallListingHandlers();
}

}  // namespace tilo
