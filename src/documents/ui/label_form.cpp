// SPDX-License-Identifier: MIT
#include "documents/ui/label_form.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QVBoxLayout>
#include <algorithm>

#include "core/state.h"
#include "documents/print_job.h"
#include "sale/commands.h"

namespace tilo {
namespace {

constexpr int kNoteWidth = 620;

QLabel* Note(QWidget* parent, const char* text) {
  auto* label = new QLabel(text, parent);
  label->setWordWrap(true);
  // A wrapped text gets the height it needs at the box's width, not a guess.
  label->setMinimumSize(kNoteWidth, label->heightForWidth(kNoteWidth));
  return label;
}

std::string Text(const QLineEdit* edit) {
  return edit->text().toStdString();
}

}  // namespace

QLineEdit* LabelPrintForm::Field(const char* name, const std::string& text, int width) {
  auto* edit = new QLineEdit(QString::fromStdString(text), this);
  edit->setObjectName(name);
  edit->setMaxLength(width);
  return edit;
}

QLineEdit* LabelPrintForm::field(const char* name) const {
  return findChild<QLineEdit*>(name);
}

LabelPrintForm::LabelPrintForm(QWidget* parent) : QDialog(parent) {
  setObjectName("BARKODE");
  setWindowTitle("Barcode print");
  auto* grid = new QGridLayout(this);

  auto* range = new QGroupBox(this);
  auto* range_rows = new QFormLayout(range);
  range_rows->addRow("Start", Field("start", form_.start, 20));
  range_rows->addRow("Finish", Field("finish", form_.finish, 20));
  grid->addWidget(range, 0, 0);

  auto* sources = new QGroupBox(this);
  auto* source_rows = new QVBoxLayout(sources);
  const char* source_names[] = {"Inventory", "Customers", "All values in the range",
                                "Repeat of inventory barcode in start box"};
  auto* source_group = new QButtonGroup(this);
  for (int k = 0; k < 4; ++k) {
    source_[k] = new QRadioButton(source_names[k], sources);
    source_[k]->setObjectName(QString("source%1").arg(k));
    source_group->addButton(source_[k], k);
    source_rows->addWidget(source_[k]);
  }
  auto* quantity_row = new QFormLayout;
  quantity_row->addRow("Quantity", Field("quantity", form_.quantity, 10));
  source_rows->addLayout(quantity_row);
  grid->addWidget(sources, 1, 0);

  auto* layouts = new QGroupBox(this);
  auto* layout_rows = new QVBoxLayout(layouts);
  const char* layout_names[] = {"Video spine", "Two column", "Three column"};
  auto* layout_group = new QButtonGroup(this);
  for (int k = 0; k < 3; ++k) {
    layout_[k] = new QRadioButton(layout_names[k], layouts);
    layout_[k]->setObjectName(QString("layout%1").arg(k));
    layout_group->addButton(layout_[k], k);
    layout_rows->addWidget(layout_[k]);
  }
  grid->addWidget(layouts, 2, 0);

  auto* types = new QGroupBox(this);
  auto* type_rows = new QVBoxLayout(types);
  const char* type_names[] = {"EAN (UPC A)", "Code 39"};
  auto* type_group = new QButtonGroup(this);
  for (int k = 0; k < 2; ++k) {
    type_[k] = new QRadioButton(type_names[k], types);
    type_[k]->setObjectName(QString("type%1").arg(k));
    type_group->addButton(type_[k], k);
    type_rows->addWidget(type_[k]);
  }
  grid->addWidget(types, 3, 0);

  auto* measures = new QGroupBox(this);
  auto* measure_rows = new QFormLayout(measures);
  measure_rows->addRow("Element width", Field("elementWidth", form_.element_width, 5));
  measure_rows->addRow("Origin X", Field("originX", form_.origin_x, 5));
  measure_rows->addRow("Origin Y", Field("originY", form_.origin_y, 5));
  measure_rows->addRow("Label height", Field("labelHeight", form_.label_height, 5));
  measure_rows->addRow("Labels per sheet", Field("labelsPerSheet", form_.labels_per_sheet, 5));
  measure_rows->addRow("From centre (three column)", Field("fromCentre", form_.from_centre, 5));
  grid->addWidget(measures, 0, 1, 2, 1);

  auto* price = new QGroupBox(this);
  auto* price_rows = new QVBoxLayout(price);
  include_price_ = new QCheckBox("Include price", price);
  include_price_->setObjectName("includePrice");
  with_tax_ = new QRadioButton("With tax", price);
  with_tax_->setObjectName("withTax");
  without_tax_ = new QRadioButton("Without tax", price);
  without_tax_->setObjectName("withoutTax");
  include_store_ = new QCheckBox("Incude store (Video spine)", price);
  include_store_->setObjectName("includeStore");
  price_below_ = new QCheckBox("Position below other text (Video spine)", price);
  price_below_->setObjectName("priceBelow");
  for (QWidget* w : std::initializer_list<QWidget*>{include_price_, with_tax_, without_tax_,
                                                    include_store_, price_below_})
    price_rows->addWidget(w);
  with_tax_->setChecked(true);
  grid->addWidget(price, 2, 1, 2, 1);

  // The listing font, as the "Printer font size" box sets it.
  auto* font = new QGroupBox(this);
  auto* font_rows = new QVBoxLayout(font);
  auto* slider_row = new QHBoxLayout;
  slider_row->addWidget(new QLabel("Large", font));
  slider_ = new QSlider(Qt::Horizontal, font);
  slider_->setObjectName("size");
  slider_->setRange(10, 200);
  const int64_t size = G().settings.list_font_size;
  if (size != 0) slider_->setValue(int(std::clamp<int64_t>(size, 10, 200)));
  slider_row->addWidget(slider_, 1);
  slider_row->addWidget(new QLabel("Tiny", font));
  font_rows->addLayout(slider_row);
  printer_default_ = new QCheckBox("Use the printer default", font);
  printer_default_->setObjectName("printerDefault");
  printer_default_->setChecked(size == 0);
  font_rows->addWidget(printer_default_);
  grid->addWidget(font, 4, 0, 1, 2);

  auto* notes = new QVBoxLayout;
  notes->addWidget(
      Note(this,
           "The origin and height can be specified (100ths millimeter) to compensate "
           "for printer differences. The values given were taken from an HP Deskjet."));
  notes->addWidget(Note(this,
                        "Important: EAN barcodes are required to be 12 digits plus a check digit. "
                        "Values will be padded with leading zeroes if necessary. To print longer "
                        "values or no check digit select Code 39 above."));
  notes->addWidget(Note(this,
                        "To print standard Avery 5160 address labels the settings would be: Three "
                        "column, From centre 6980, Origin Y 800, Label height 2540, Labels per "
                        "sheet 30"));
  notes->addWidget(Note(this,
                        "EAN (UPC A) barcodes end with a check digit which is automatically "
                        "appended. A barcode scanner may be set to include this digit or not."));
  notes->addWidget(Note(this,
                        "The video spine format may be used for continuous roll printers. The "
                        "labels per sheet, below,  is set to the quantity."));
  grid->addLayout(notes, 5, 0, 1, 2);

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  buttons->button(QDialogButtonBox::Ok)->setText("OK");
  buttons->button(QDialogButtonBox::Cancel)->setText("Cancel");
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  grid->addWidget(buttons, 6, 0, 1, 2);

  // Choosing a button puts its defaults into the box.
  connect(layout_group, &QButtonGroup::idClicked, this, [this](int k) {
    form_ = Typed();
    Chooselabellayout(form_, k);
    ShowForm();
  });
  connect(type_group, &QButtonGroup::idClicked, this, [this](int k) {
    form_ = Typed();
    Choosebarcodetype(form_, k);
    ShowForm();
  });
  connect(source_group, &QButtonGroup::idClicked, this,
          [this](int k) { field("quantity")->setEnabled(k == kLabelRepeat); });
  ShowForm();
  field("start")->setFocus();
}

void LabelPrintForm::ShowForm() {
  source_[form_.source]->setChecked(true);
  layout_[form_.layout]->setChecked(true);
  type_[form_.barcode_type]->setChecked(true);
  field("elementWidth")->setText(QString::fromStdString(form_.element_width));
  field("labelHeight")->setText(QString::fromStdString(form_.label_height));
  field("labelsPerSheet")->setText(QString::fromStdString(form_.labels_per_sheet));
  field("originX")->setEnabled(form_.layout == kVideoSpine);
  field("quantity")->setEnabled(form_.source == kLabelRepeat);
}

LabelForm LabelPrintForm::Typed() const {
  LabelForm f;
  f.start = Text(field("start"));
  f.finish = Text(field("finish"));
  f.quantity = Text(field("quantity"));
  for (int k = 0; k < 4; ++k)
    if (source_[k]->isChecked()) f.source = k;
  for (int k = 0; k < 3; ++k)
    if (layout_[k]->isChecked()) f.layout = k;
  f.barcode_type = type_[kEan13]->isChecked() ? kEan13 : kCode39;
  f.element_width = Text(field("elementWidth"));
  f.origin_x = Text(field("originX"));
  f.origin_y = Text(field("originY"));
  f.label_height = Text(field("labelHeight"));
  f.labels_per_sheet = Text(field("labelsPerSheet"));
  f.from_centre = Text(field("fromCentre"));
  f.include_price = include_price_->isChecked();
  f.price_without_tax = without_tax_->isChecked();
  f.include_store = include_store_->isChecked();
  f.price_below = price_below_->isChecked();
  return f;
}

void LabelPrintForm::accept() {
  // "Range limit" keeps the box open for the operator to put it right.
  if (!Readlabelform(Typed(), &settings_)) return;
  Setlistfontsize(printer_default_->isChecked() ? 0 : slider_->value(), false);
  QDialog::accept();
}

namespace {

class QtLabelView : public LabelView {
 public:
  bool barcode_form(LabelSettings& settings) override {
    QWidget* parent = nullptr;
    for (QWidget* w : QApplication::topLevelWidgets())
      if (w->objectName() == "mainWindow") parent = w;
    LabelPrintForm form(parent);
    if (form.exec() != QDialog::Accepted) return false;
    settings = form.settings();
    return true;
  }
};

QtLabelView qt_view;

}  // namespace

void InstallLabelHandlers() {
  install_label_view(&qt_view);
  SetHandler(Command::BarcodePrint, [](int) { Barcodeprint(); });
}

}  // namespace tilo
