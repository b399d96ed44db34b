// SPDX-License-Identifier: MIT
#include "upkeep/ui/exchange_forms.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include "inventory/items.h"
#include "sale/commands.h"
#include "upkeep/exchange_view.h"
#include "upkeep/export.h"
#include "upkeep/import.h"

namespace tilo {
namespace {

QString Q(const std::string& s) {
  return QString::fromStdString(s);
}

QLabel* Note(QWidget* parent, const char* text) {
  auto* label = new QLabel(text, parent);
  label->setWordWrap(true);
  return label;
}

QDialogButtonBox* OkCancel(QDialog* dialog) {
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, dialog);
  buttons->button(QDialogButtonBox::Ok)->setText("OK");
  buttons->button(QDialogButtonBox::Cancel)->setText("Cancel");
  buttons->button(QDialogButtonBox::Ok)->setDefault(true);
  QObject::connect(buttons, &QDialogButtonBox::accepted, dialog, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
  return buttons;
}

// A group of radio buttons, one ticked; returns the buttons in order.
std::vector<QRadioButton*> Choice(QGroupBox* box, const std::vector<const char*>& labels,
                                  int ticked) {
  auto* layout = new QHBoxLayout(box);
  auto* group = new QButtonGroup(box);
  std::vector<QRadioButton*> buttons;
  for (const char* label : labels) {
    auto* button = new QRadioButton(label, box);
    group->addButton(button);
    layout->addWidget(button);
    buttons.push_back(button);
  }
  buttons[size_t(ticked)]->setChecked(true);
  return buttons;
}

int Ticked(const std::vector<QRadioButton*>& buttons) {
  for (size_t i = 0; i < buttons.size(); ++i)
    if (buttons[i]->isChecked()) return int(i);
  return 0;
}

constexpr const char* kItemTicks[10] = {
    "Number",           "Description",  "SKU 1",    "SKU 2",         "Cost",
    "Display category", "Retail price", "In stock", "Reorder level", "Taxable"};
constexpr const char* kCustomerTicks[10] = {"Number",    "Company",     "Address 1", "Address 2",
                                            "Address 3", "Address 4",   "Telephone", "Taxable",
                                            "Balance",   "Credit limit"};
constexpr const char* kItemRows[17] = {
    "Number",        "Description", "SKU 1",         "SKU 2",   "Cost price",   "Display category",
    "Retail price",  "In stock",    "Restock level", "Taxable", "Order code",   "Order quantity",
    "Minimum order", "Trade price", "Location",      "Web URL", "Web image URL"};
constexpr const char* kCustomerRows[18] = {
    "Number",    "Company",   "Address 1", "Address 2",    "Address 3", "Address 4",
    "Telephone", "Taxable",   "Balance",   "Credit limit", "Shipping",  "Address 1",
    "Address 2", "Address 3", "Address 4", "Comment",      "Group",     "Email"};

class QtExchangeView : public ExchangeView {
 public:
  std::optional<ExportChoice> export_form(const ExportChoice& defaults) override {
    QDialog dialog(QApplication::activeWindow());
    dialog.setObjectName("EXPORT");
    dialog.setWindowTitle("Export");
    auto* layout = new QVBoxLayout(&dialog);

    auto* range = new QGroupBox("Range", &dialog);
    auto* range_form = new QFormLayout(range);
    auto* start = new QLineEdit(Q(defaults.start), range);
    auto* finish = new QLineEdit(Q(defaults.finish), range);
    start->setObjectName("start");
    finish->setObjectName("finish");
    range_form->addRow("Start", start);
    range_form->addRow("Finish", finish);
    layout->addWidget(range);

    auto* file_box = new QGroupBox(&dialog);
    auto file = Choice(file_box, {"Inventory", "Customers"}, defaults.customers ? 1 : 0);
    layout->addWidget(file_box);
    auto* format_box = new QGroupBox("Format", &dialog);
    auto format = Choice(format_box, {"Text", "HTML", "XML"}, int(defaults.format));
    layout->addWidget(format_box);

    auto* type_box = new QGroupBox("Inventory type", &dialog);
    auto* type_layout = new QVBoxLayout(type_box);
    auto* type_row = new QGroupBox(type_box);
    type_row->setFlat(true);
    auto type = Choice(type_row, {"All", "Category"}, defaults.category < 0 ? 0 : 1);
    auto* category = new QComboBox(type_box);
    for (int c = 0; c < 18; ++c) category->addItem(Q(Categoryname(c)));
    category->setCurrentIndex(defaults.category < 0 ? 14 : defaults.category);
    type_layout->addWidget(type_row);
    type_layout->addWidget(category);
    layout->addWidget(type_box);

    auto* html_box = new QGroupBox("HTML", &dialog);
    auto* html_layout = new QVBoxLayout(html_box);
    auto* bold_number = new QCheckBox("Bold number", html_box);
    auto* bold_title = new QCheckBox("Bold title", html_box);
    bold_number->setChecked(defaults.bold_number);
    bold_title->setChecked(defaults.bold_title);
    html_layout->addWidget(bold_number);
    html_layout->addWidget(bold_title);
    auto* size_box = new QGroupBox("Text size", html_box);
    auto size = Choice(size_box, {"Small", "Medium", "Large"}, defaults.text_size - 1);
    html_layout->addWidget(size_box);
    layout->addWidget(html_box);
    layout->addWidget(OkCancel(&dialog));

    // What doesn't apply is greyed as the choices change.
    auto follow = [&] {
      const bool inventory = file[0]->isChecked();
      type_box->setEnabled(inventory);
      category->setEnabled(inventory && type[1]->isChecked());
      html_box->setEnabled(format[1]->isChecked());
    };
    for (auto* b : file) QObject::connect(b, &QRadioButton::toggled, &dialog, follow);
    for (auto* b : format) QObject::connect(b, &QRadioButton::toggled, &dialog, follow);
    for (auto* b : type) QObject::connect(b, &QRadioButton::toggled, &dialog, follow);
    follow();
    start->setFocus();
    start->selectAll();

    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    ExportChoice c;
    c.start = start->text().toStdString();
    c.finish = finish->text().toStdString();
    c.customers = Ticked(file) == 1;
    c.format = ExportFormat(Ticked(format));
    c.category = type[1]->isChecked() ? category->currentIndex() : -1;
    c.bold_number = bold_number->isChecked();
    c.bold_title = bold_title->isChecked();
    c.text_size = Ticked(size) + 1;
    return c;
  }

  std::optional<ExportFields> export_fields(bool customers) override {
    QDialog dialog(QApplication::activeWindow());
    dialog.setObjectName(customers ? "EXSE02" : "EXSE00");
    dialog.setWindowTitle(customers ? "Customer database" : "Inventory database");
    auto* layout = new QHBoxLayout(&dialog);
    auto* ticks_column = new QVBoxLayout;
    std::vector<QCheckBox*> ticks;
    for (const char* label : customers ? kCustomerTicks : kItemTicks) {
      auto* tick = new QCheckBox(label, &dialog);
      tick->setChecked(true);
      ticks_column->addWidget(tick);
      ticks.push_back(tick);
    }
    layout->addLayout(ticks_column);
    auto* side = new QVBoxLayout;
    auto* entire = new QCheckBox("Export entire", &dialog);
    side->addWidget(entire);
    side->addWidget(Note(&dialog,
                         "The above will export the entire contents of the item, not just those "
                         "detailed to the left. If selected, it is not necessary to 'check' the "
                         "individual boxes. Does not apply to HTML."));
    side->addStretch();
    side->addWidget(OkCancel(&dialog));
    layout->addLayout(side);
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    ExportFields fields;
    for (size_t i = 0; i < ticks.size(); ++i) fields.ticks[i] = ticks[i]->isChecked();
    fields.entire = entire->isChecked();
    return fields;
  }

  std::optional<ImportColumns> import_columns(bool customers, const std::string& first_line,
                                              const ImportColumns& defaults) override {
    QDialog dialog(QApplication::activeWindow());
    dialog.setObjectName(customers ? "EXSE08" : "EXSE04");
    dialog.setWindowTitle(customers ? "Customer database" : "Inventory database");
    auto* layout = new QVBoxLayout(&dialog);
    auto* line = new QLineEdit(Q(first_line), &dialog);
    line->setReadOnly(true);
    layout->addWidget(line);
    auto* grid = new QGridLayout;
    std::vector<QSpinBox*> boxes;
    const auto* labels = customers ? kCustomerRows : kItemRows;
    const int rows = int(defaults.boxes.size());
    const int half = (rows + 1) / 2;
    for (int i = 0; i < rows; ++i) {
      auto* box = new QSpinBox(&dialog);
      box->setRange(0, 999);
      box->setValue(defaults.boxes[size_t(i)]);
      box->setObjectName(QString("column%1").arg(i));
      grid->addWidget(new QLabel(labels[i], &dialog), i % half, (i / half) * 2);
      grid->addWidget(box, i % half, (i / half) * 2 + 1);
      boxes.push_back(box);
    }
    layout->addLayout(grid);
    std::vector<QRadioButton*> treatment;
    if (!customers) {
      layout->addWidget(Note(&dialog,
                             "Use a zero if the field is not to be imported. The program will "
                             "process the file then report it will close."));
      layout->addWidget(Note(&dialog,
                             "The display category will default to 14 (POP) if not used. It will "
                             "accept values of 0-17."));
      layout->addWidget(Note(&dialog,
                             "The taxable field will default to non taxable if not used. A non "
                             "zero value will mark the item as taxable. To mark all as taxable "
                             "set the text column to the same value as 'Number'."));
      layout->addWidget(Note(&dialog,
                             "Put the position of the data field in the CSV file next to the "
                             "destination inventory field."));
      auto* box = new QGroupBox("Treatment", &dialog);
      treatment = Choice(box, {"Replace", "Merge"}, defaults.merge ? 1 : 0);
      layout->addWidget(box);
      layout->addWidget(Note(&dialog,
                             "Replace deletes the entire database then adds imported items. "
                             "Merge inserts items into the existing database."));
    }
    layout->addWidget(OkCancel(&dialog));
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    ImportColumns columns;
    for (auto* box : boxes) columns.boxes.push_back(box->value());
    columns.merge = !treatment.empty() && treatment[1]->isChecked();
    return columns;
  }
};

QtExchangeView qt_view;

}  // namespace

void InstallExchangeHandlers() {
  install_exchange_view(&qt_view);
  SetHandler(Command::Export, [](int) { Exportfile(); });
  SetHandler(Command::Import, [](int) { Importfile(); });
}

}  // namespace tilo
