// SPDX-License-Identifier: MIT
#include "inventory/ui/item_forms.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QVBoxLayout>
#include <cstdlib>

#include "core/settings.h"
#include "core/state.h"
#include "core/text.h"
#include "inventory/pictures.h"
#include "inventory/receiving.h"
#include "reports/ui/report_dialogs.h"
#include "sale/basket.h"
#include "sale/commands.h"
#include "sale/pricing.h"

namespace tilo {
namespace {

ItemPictureDrawer& PictureDrawer() {
  static ItemPictureDrawer drawer;
  return drawer;
}

constexpr const char* kRequired = "QLineEdit { background: #ffff99; }";

QString Screen(const std::string& bytes) {
  return QString::fromStdString(Cp1252ToUtf8(bytes));
}
std::string Take(const QLineEdit* edit) {
  return Utf8ToCp1252(edit->text().toStdString());
}
template <size_t N>
void TakeText(char (&field)[N], const QLineEdit* edit) {
  SetField(field, Take(edit));
}
int32_t TakeInt(const QLineEdit* edit) {
  return int32_t(LeadingNumber(Take(edit)));
}
float TakeFloat(const QLineEdit* edit) {
  return std::strtof(Take(edit).c_str(), nullptr);
}
QString Money(float value) {
  return QString::fromStdString(MoneyText(value));
}

// Folds what is typed to upper case, as the record's text fields are kept.
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

QStringList Numbers(int from, int to) {
  QStringList rows;
  for (int i = from; i <= to; ++i) rows << QString::number(i);
  return rows;
}
QStringList Categories() {
  QStringList rows;
  for (int c = 0; c < 18; ++c) rows << QString::fromStdString(Categoryname(c));
  return rows;
}
QStringList SellByYears() {
  QStringList rows{"0"};
  rows << Numbers(2012, 2080);
  return rows;
}

QDate PickerDate(const FilmRecord& r) {
  if (std::optional<Date> d = Dateadded(r)) return QDate(d->year, d->month, d->day);
  return QDate::currentDate();
}
Date FromPicker(const QDate& d) {
  return {d.year(), d.month(), d.day()};
}

QPushButton* Button(QDialog* form, QHBoxLayout* row, const QString& text) {
  auto* b = new QPushButton(text, form);
  b->setAutoDefault(false);
  row->addWidget(b);
  return b;
}

QComboBox* SellByList(QWidget* parent, const QStringList& rows, int value) {
  auto* list = new QComboBox(parent);
  list->addItems(rows);
  list->setCurrentIndex(value >= 0 && value < rows.size() ? value : 0);
  return list;
}

}  // namespace

ItemDialog::ItemDialog(QWidget* parent, const ItemForm& form) : QDialog(parent), form_(form) {
  setObjectName("800");
  setWindowTitle(QString::fromStdString(ItemFormTitle(form.mode)));
  auto* outer = new QVBoxLayout(this);
  auto* columns = new QHBoxLayout;
  outer->addLayout(columns);
  grid_ = new QGridLayout;
  columns->addLayout(grid_, 1);

  AddEdit("Number", 19, false, true)
      ->setValidator(new QRegularExpressionValidator(QRegularExpression("[0-9]*"), this));
  AddEdit("Description", 38, true);
  for (const char* sku : {"SKU 1", "SKU 2", "SKU 3", "SKU 4"}) AddEdit(sku, 38, true);
  AddEdit("Cost price", 12, false, true);
  AddEdit("Trade price", 12, false);
  AddEdit("Retail price", 12, false, true);
  AddEdit("Order code", 38, true);
  for (const char* n : {"On order", "Order quantity", "Minimum order", "Restock level"})
    AddEdit(n, 11, false);
  AddList("Tax code", {"Non taxable", "Tax 1 and 2", "Tax 1", "Tax 2"});
  AddEdit("Quantity in stock", 11, false);
  grid_->addWidget(new QLabel("Date added", this), row_, 0);
  date_ = new QDateEdit(this);
  date_->setCalendarPopup(true);
  date_->setDisplayFormat("dd/MM/yyyy");
  grid_->addWidget(date_, row_++, 1);

  // The second column.
  auto* right = new QGridLayout;
  columns->addLayout(right, 1);
  std::swap(grid_, right);
  const int left_rows = row_;
  row_ = 0;
  for (const char* n : {"Delivery", "Weight"}) AddEdit(n, 12, false);
  for (const char* n : {"Committed", "Delivery lead", "Labels to print"}) AddEdit(n, 11, false);
  AddList("SOR", {"NO", "YES"});
  AddList("Special order", Numbers(0, 20));
  AddList("Display category", Categories());
  AddTick("Omit from quick select buttons");
  AddEdit("Location", 38, false);
  AddEdit("Web URL", 38, false);
  AddEdit("Web image URL", 38, false);
  grid_->addWidget(new QLabel("Sell by (D M Y)", this), row_, 0);
  auto* sell_by = new QHBoxLayout;
  for (auto [name, rows] :
       {std::pair{"Sell by day", Numbers(0, 31)}, std::pair{"Sell by month", Numbers(0, 12)},
        std::pair{"Sell by year", SellByYears()}}) {
    auto* list = new QComboBox(this);
    list->addItems(rows);
    lists_[name] = list;
    sell_by->addWidget(list);
  }
  grid_->addLayout(sell_by, row_++, 1);
  auto* age_row = new QHBoxLayout;
  ticks_["Age warning"] = new QCheckBox("Age warning", this);
  lists_["Age"] = new QComboBox(this);
  lists_["Age"]->addItems(Numbers(2, 30));
  age_row->addWidget(ticks_["Age warning"]);
  age_row->addWidget(lists_["Age"]);
  grid_->addLayout(age_row, row_++, 1);
  AddTick("Buy one get one free");
  std::swap(grid_, right);
  row_ = std::max(row_, left_rows);

  // The ready reckoner, the picture and the wide fields under both columns.
  auto* reckoner = new QHBoxLayout;
  reckoner->addWidget(new QLabel("Retail price with tax", this));
  gross_ = new QLineEdit(this);
  gross_->setObjectName("gross");
  gross_->setMaxLength(9);
  reckoner->addWidget(gross_);
  tax1_ = new QCheckBox("Tax 1", this);
  tax2_ = new QCheckBox("Tax 2", this);
  reckoner->addWidget(tax1_);
  reckoner->addWidget(tax2_);
  reckoner->addWidget(new QLabel("Retail price without tax", this));
  net_ = new QLineEdit(this);
  net_->setObjectName("net");
  net_->setReadOnly(true);
  reckoner->addWidget(net_);
  picture_ = new QLabel(this);
  picture_->setObjectName("picture");
  picture_->setFixedSize(48, 48);
  picture_->setFrameShape(QFrame::Box);
  reckoner->addWidget(picture_);
  // Back and Forward step through the item's own picture and the built-ins;
  // the save keeps what stands when it is pressed.
  picture_choice_ = {form.record.own_picture == 1 ? 1 : 0, form.record.stock_picture, false};
  for (auto [text, step] :
       {std::pair{"Back", &Pictureback}, std::pair{"Forward", &Pictureforward}}) {
    auto* b = new QPushButton(text, this);
    b->setAutoDefault(false);
    buttons_[text] = b;
    reckoner->addWidget(b);
    connect(b, &QPushButton::clicked, this, [this, step = step] {
      step(picture_choice_);
      form_.record.own_picture = picture_choice_.own_picture;
      form_.record.stock_picture = picture_choice_.stock_picture;
      if (PictureDrawer()) PictureDrawer()(picture_, form_.record);
    });
  }
  outer->addLayout(reckoner);
  connect(gross_, &QLineEdit::textEdited, this, &ItemDialog::Reckon);

  auto* notes = new QFormLayout;
  edits_["Notes"] = new QLineEdit(this);
  edits_["Notes"]->setMaxLength(78);
  notes->addRow("Notes", edits_["Notes"]);
  outer->addLayout(notes);
  ticks_["No tax rounding"] = new QCheckBox(
      "No tax rounding. The tax calculation uses the 3rd decimal place to round the 2nd if "
      "appropriate. Use to inhibit to permit the item line to be sold at a particular price "
      "point.",
      this);
  outer->addWidget(ticks_["No tax rounding"]);
  auto* hint = new QLabel(
      "To use a barcode scan for the number fill the form then delete the offered number and do "
      "the scan.",
      this);
  hint->setWordWrap(true);
  outer->addWidget(hint);

  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  for (auto [text, button] :
       {std::pair{"OK", ItemButton::Ok}, std::pair{"Cancel", ItemButton::Cancel},
        std::pair{"&Copy", ItemButton::Copy}, std::pair{"&Next", ItemButton::Next}}) {
    QPushButton* b = Button(this, buttons, text);
    buttons_[text] = b;
    connect(b, &QPushButton::clicked, this, [this, button = button] { Press(button); });
  }
  buttons_["OK"]->setDefault(true);
  outer->addLayout(buttons);

  const bool adds = ItemFormAdds(form.mode);
  buttons_["&Copy"]->setVisible(adds);
  buttons_["&Next"]->setVisible(adds);
  edit("Number")->setReadOnly(form.mode == ItemFormMode::Refused);
  Show(form.record);
  if (PictureDrawer()) PictureDrawer()(picture_, form.record);
}

QLineEdit* ItemDialog::AddEdit(const QString& label, int limit, bool upper, bool required) {
  auto* edit = new QLineEdit(this);
  edit->setMaxLength(limit);
  if (upper) FoldOnEntry(edit);
  if (required) edit->setStyleSheet(kRequired);
  grid_->addWidget(new QLabel(label, this), row_, 0);
  grid_->addWidget(edit, row_++, 1);
  edits_[label] = edit;
  return edit;
}

QComboBox* ItemDialog::AddList(const QString& label, const QStringList& rows) {
  auto* list = new QComboBox(this);
  list->addItems(rows);
  grid_->addWidget(new QLabel(label, this), row_, 0);
  grid_->addWidget(list, row_++, 1);
  lists_[label] = list;
  return list;
}

QCheckBox* ItemDialog::AddTick(const QString& label) {
  auto* tick = new QCheckBox(label, this);
  grid_->addWidget(tick, row_++, 0, 1, 2);
  ticks_[label] = tick;
  return tick;
}

void ItemDialog::Show(const FilmRecord& r) {
  const bool fresh = form_.mode == ItemFormMode::New;
  // A new form leaves the order counts empty rather than showing 0.
  auto count = [fresh](int32_t v) { return fresh && v == 0 ? QString() : QString::number(v); };
  edit("Number")->setText(form_.number_blank ? QString() : QString::number(r.number));
  edit("Description")->setText(Screen(FieldText(r.description)));
  edit("SKU 1")->setText(Screen(FieldText(r.sku1)));
  edit("SKU 2")->setText(Screen(FieldText(r.sku2)));
  edit("SKU 3")->setText(Screen(FieldText(r.sku3)));
  edit("SKU 4")->setText(Screen(FieldText(r.sku4)));
  edit("Cost price")->setText(form_.cost_hidden ? QString() : Money(r.cost_price));
  edit("Cost price")->setEnabled(!form_.cost_hidden);
  edit("Trade price")->setText(Money(r.trade_price));
  edit("Retail price")->setText(Money(r.retail_price));
  edit("Order code")->setText(Screen(FieldText(r.order_code)));
  edit("On order")->setText(count(r.on_order));
  edit("Order quantity")->setText(count(r.order_quantity));
  edit("Minimum order")->setText(count(r.minimum_order));
  edit("Restock level")->setText(count(r.reorder_quantity));
  list("Tax code")->setCurrentIndex(r.tax >= 0 && r.tax <= 3 ? r.tax : 0);
  edit("Quantity in stock")->setText(QString::number(r.quantity));
  date_->setDate(PickerDate(r));
  edit("Delivery")->setText(Money(r.delivery));
  edit("Weight")->setText(Money(r.weight));
  edit("Committed")->setText(QString::number(r.committed));
  edit("Delivery lead")->setText(QString::number(r.delivery_lead));
  edit("Labels to print")->setText(QString::number(r.labels_to_print));
  list("SOR")->setCurrentIndex(r.sor == 1 ? 1 : 0);
  list("Special order")
      ->setCurrentIndex(r.special_order >= 0 && r.special_order <= 20 ? r.special_order : 0);
  list("Display category")
      ->setCurrentIndex(r.display_category >= 0 && r.display_category < 18 ? r.display_category
                                                                           : 0);
  tick("Omit from quick select buttons")->setChecked(r.omit_quick_select == 2);
  edit("Location")->setText(Screen(FieldText(r.location)));
  edit("Web URL")->setText(Screen(FieldText(r.website)));
  edit("Web image URL")->setText(Screen(FieldText(r.web_image)));
  list("Sell by day")
      ->setCurrentIndex(r.sell_by_day >= 0 && r.sell_by_day <= 31 ? r.sell_by_day : 0);
  list("Sell by month")
      ->setCurrentIndex(r.sell_by_month >= 0 && r.sell_by_month <= 12 ? r.sell_by_month : 0);
  list("Sell by year")
      ->setCurrentIndex(r.sell_by_year >= 0 && r.sell_by_year <= 69 ? r.sell_by_year : 0);
  tick("Age warning")->setChecked(r.age_warning != 0);
  list("Age")->setCurrentIndex(r.age_warning >= 2 && r.age_warning <= 30 ? r.age_warning - 2 : 0);
  tick("Buy one get one free")->setChecked(r.buy_one_get_one == 2);
  edits_["Notes"]->setText(Screen(FieldText(r.notes)));
  tick("No tax rounding")->setChecked(r.no_tax_rounding == 2);
  tax1_->setChecked(ReckonerTax1(r.tax));
  tax2_->setChecked(ReckonerTax2(r.tax));
  if (form_.number_blank || form_.mode == ItemFormMode::Refused)
    edit(form_.number_blank ? "Number" : "Description")->setFocus();
  else
    edit("Description")->setFocus();
}

FilmRecord ItemDialog::collected() const {
  FilmRecord r = form_.record;
  r.number = LeadingNumber(Take(edit("Number")));
  TakeText(r.description, edit("Description"));
  TakeText(r.sku1, edit("SKU 1"));
  TakeText(r.sku2, edit("SKU 2"));
  TakeText(r.sku3, edit("SKU 3"));
  TakeText(r.sku4, edit("SKU 4"));
  if (!form_.cost_hidden) r.cost_price = TakeFloat(edit("Cost price"));
  r.trade_price = TakeFloat(edit("Trade price"));
  r.retail_price = TakeFloat(edit("Retail price"));
  TakeText(r.order_code, edit("Order code"));
  r.on_order = TakeInt(edit("On order"));
  r.order_quantity = TakeInt(edit("Order quantity"));
  r.minimum_order = TakeInt(edit("Minimum order"));
  r.reorder_quantity = TakeInt(edit("Restock level"));
  r.tax = list("Tax code")->currentIndex();
  r.quantity = TakeInt(edit("Quantity in stock"));
  Setdateadded(r, FromPicker(date_->date()));
  r.delivery = TakeFloat(edit("Delivery"));
  r.weight = TakeFloat(edit("Weight"));
  r.committed = TakeInt(edit("Committed"));
  r.delivery_lead = TakeInt(edit("Delivery lead"));
  r.labels_to_print = TakeInt(edit("Labels to print"));
  r.sor = list("SOR")->currentIndex();
  r.special_order = list("Special order")->currentIndex();
  r.display_category = list("Display category")->currentIndex();
  r.omit_quick_select = tick("Omit from quick select buttons")->isChecked() ? 2 : 0;
  TakeText(r.location, edit("Location"));
  TakeText(r.website, edit("Web URL"));
  TakeText(r.web_image, edit("Web image URL"));
  r.sell_by_day = list("Sell by day")->currentIndex();
  r.sell_by_month = list("Sell by month")->currentIndex();
  r.sell_by_year = list("Sell by year")->currentIndex();
  r.age_warning = tick("Age warning")->isChecked() ? list("Age")->currentIndex() + 2 : 0;
  r.buy_one_get_one = tick("Buy one get one free")->isChecked() ? 2 : 0;
  TakeText(r.notes, edits_.at("Notes"));
  r.no_tax_rounding = tick("No tax rounding")->isChecked() ? 2 : 0;
  return r;
}

void ItemDialog::Reckon() {
  std::optional<std::string> net =
      Readyreckoner(Take(gross_), tax1_->isChecked(), tax2_->isChecked());
  if (!net) return;
  net_->setText(QString::fromStdString(*net));
  edit("Retail price")->setText(QString::fromStdString(*net));
}

void ItemDialog::Press(ItemButton button) {
  pressed_ = button;
  if (button == ItemButton::Cancel)
    reject();
  else
    accept();
}

ItemViewDialog::ItemViewDialog(QWidget* parent, const QString& title,
                               const std::vector<ViewLine>& lines, bool with_next)
    : QDialog(parent) {
  setObjectName("801");
  setWindowTitle(title);
  auto* outer = new QVBoxLayout(this);
  auto* grid = new QFormLayout;
  for (const ViewLine& line : lines) {
    auto* value = new QLabel(QString::fromStdString(line.text), this);
    value->setTextInteractionFlags(Qt::TextSelectableByMouse);
    grid->addRow(QString::fromStdString(line.label), value);
  }
  outer->addLayout(grid);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  QPushButton* ok = Button(this, buttons, "OK");
  ok->setDefault(true);
  connect(ok, &QPushButton::clicked, this, &QDialog::accept);
  if (with_next) {
    QPushButton* next = Button(this, buttons, "Next");
    connect(next, &QPushButton::clicked, this, [this] {
      next_ = true;
      accept();
    });
  }
  outer->addLayout(buttons);
}

BundleDialog::BundleDialog(QWidget* parent, const BundleForm& form) : QDialog(parent), form_(form) {
  setObjectName("BUNDLE");
  setWindowTitle(form.amend ? "Amend bundle" : "Add inventory bundle");
  auto* outer = new QVBoxLayout(this);
  auto* fields = new QFormLayout;
  auto add = [&](const QString& label, int limit, bool upper) {
    auto* e = new QLineEdit(this);
    e->setMaxLength(limit);
    if (upper) FoldOnEntry(e);
    fields->addRow(label, e);
    edits_[label] = e;
    return e;
  };
  const FilmRecord& r = form.record;
  add("Number", 19, false)->setText(form.number_blank ? QString() : QString::number(r.number));
  add("Description", 38, true)->setText(Screen(FieldText(r.description)));
  add("SKU 1", 38, true)->setText(Screen(FieldText(r.sku1)));
  add("SKU 2", 38, true)->setText(Screen(FieldText(r.sku2)));
  add("SKU 3", 38, true)->setText(Screen(FieldText(r.sku3)));
  add("SKU 4", 38, true)->setText(Screen(FieldText(r.sku4)));
  date_ = new QDateEdit(PickerDate(r), this);
  date_->setCalendarPopup(true);
  date_->setDisplayFormat("dd/MM/yyyy");
  fields->addRow("Date added", date_);
  add("Delivery", 12, false)->setText(r.delivery ? Money(r.delivery) : QString());
  add("Weight", 12, false)->setText(r.weight ? Money(r.weight) : QString());
  category_ = new QComboBox(this);
  category_->addItems(Categories());
  category_->setCurrentIndex(r.display_category >= 0 && r.display_category < 18 ? r.display_category
                                                                                : 14);
  fields->addRow("Display category", category_);
  add("Notes", 78, false)->setText(Screen(FieldText(r.notes)));
  outer->addLayout(fields);

  outer->addWidget(new QLabel("Items in bundle", this));
  auto* grid = new QGridLayout;
  for (int i = 0; i < 6; ++i) {
    Row& row = rows_[size_t(i)];
    row.number = new QLineEdit(this);
    row.number->setReadOnly(true);
    row.number->setMaxLength(18);
    row.text = new QLabel(this);
    row.text->setMinimumWidth(220);
    row.select = new QPushButton("Select", this);
    row.remove = new QPushButton("Remove", this);
    row.quantity = new QComboBox(this);
    row.quantity->addItems(Numbers(1, 50));
    row.free = new QCheckBox("Free", this);
    const int q = r.bundle_quantity[i];
    row.quantity->setCurrentIndex(q >= 1 && q <= 50 ? q - 1 : 0);
    row.free->setChecked(r.bundle_free[i] == 2);
    QWidget* cells[] = {row.number, row.text, row.select, row.remove, row.quantity, row.free};
    for (int c = 0; c < 6; ++c) grid->addWidget(cells[c], i, c);
    for (QPushButton* b : {row.select, row.remove}) b->setAutoDefault(false);
    connect(row.select, &QPushButton::clicked, this, [this, i] {
      std::optional<std::string> reply = platform().prompt("Item number", "Select");
      if (reply && Selectcomponent(form_, i, *reply)) ShowRow(i);
    });
    connect(row.remove, &QPushButton::clicked, this, [this, i] {
      Removecomponent(form_, i);
      ShowRow(i);
    });
    ShowRow(i);
  }
  outer->addLayout(grid);
  outer->addWidget(
      new QLabel("Note that included items show individually on receipts and invoices", this));
  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  QPushButton* ok = Button(this, buttons, "OK");
  ok->setDefault(true);
  QPushButton* cancel = Button(this, buttons, "Cancel");
  connect(ok, &QPushButton::clicked, this, [this] {
    Collect();
    accept();
  });
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  outer->addLayout(buttons);
  edits_[form.number_blank ? "Number" : "Description"]->setFocus();
}

void BundleDialog::ShowRow(int row) {
  rows_[size_t(row)].number->setText(Screen(FieldText(BundleItem(form_.record, row + 1), 20)));
  rows_[size_t(row)].text->setText(Screen(form_.component_text[size_t(row)]));
}

void BundleDialog::Collect() {
  FilmRecord& r = form_.record;
  r.number = LeadingNumber(Take(edits_.at("Number")));
  TakeText(r.description, edits_.at("Description"));
  TakeText(r.sku1, edits_.at("SKU 1"));
  TakeText(r.sku2, edits_.at("SKU 2"));
  TakeText(r.sku3, edits_.at("SKU 3"));
  TakeText(r.sku4, edits_.at("SKU 4"));
  Setdateadded(r, FromPicker(date_->date()));
  r.delivery = TakeFloat(edits_.at("Delivery"));
  r.weight = TakeFloat(edits_.at("Weight"));
  r.display_category = category_->currentIndex();
  TakeText(r.notes, edits_.at("Notes"));
  for (int i = 0; i < 6; ++i) {
    r.bundle_quantity[i] = rows_[size_t(i)].quantity->currentIndex() + 1;
    r.bundle_free[i] = rows_[size_t(i)].free->isChecked() ? 2 : 0;
  }
}

ReceiveDialog::ReceiveDialog(QWidget* parent, const ReceiveForm& form) : QDialog(parent) {
  setObjectName("808");
  setWindowTitle("Receive Inventory");
  const FilmRecord& r = form.record;
  auto* outer = new QVBoxLayout(this);
  auto* fields = new QFormLayout;
  auto shown = [this](const QString& text) {
    auto* e = new QLineEdit(text, this);
    e->setReadOnly(true);
    e->setFocusPolicy(Qt::NoFocus);
    return e;
  };
  fields->addRow("Line number:", shown(QString::number(r.number)));
  fields->addRow("Description", shown(Screen(FieldText(r.description))));
  fields->addRow("Held", shown(QString::number(r.quantity)));
  quantity_ = new QLineEdit(this);
  quantity_->setObjectName("quantity");
  quantity_->setMaxLength(19);
  fields->addRow("Quantity received", quantity_);
  total_ = shown(QString::number(r.quantity));
  total_->setObjectName("total");
  fields->addRow("Updated total", total_);
  auto* sell_by = new QHBoxLayout;
  sell_by_[0] = SellByList(this, Numbers(0, 31), r.sell_by_day);
  sell_by_[1] = SellByList(this, Numbers(0, 12), r.sell_by_month);
  sell_by_[2] = SellByList(this, SellByYears(), r.sell_by_year);
  for (QComboBox* list : sell_by_) sell_by->addWidget(list);
  fields->addRow("Sell by (D M Y)", sell_by);
  outer->addLayout(fields);
  outer->addWidget(new QLabel("The Sell by date is not required and may be left at 0", this));
  const int32_t held = r.quantity;
  connect(quantity_, &QLineEdit::textEdited, this, [this, held](const QString& text) {
    total_->setText(QString::fromStdString(Updatedtotal(held, text.toStdString())));
  });
  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  for (auto [text, button] :
       {std::pair{"OK", ReceiveButton::Ok}, std::pair{"Next", ReceiveButton::Next},
        std::pair{"Cancel", ReceiveButton::Cancel}}) {
    QPushButton* b = Button(this, buttons, text);
    if (button == ReceiveButton::Ok) b->setDefault(true);
    connect(b, &QPushButton::clicked, this, [this, button = button] {
      pressed_ = button;
      button == ReceiveButton::Cancel ? reject() : accept();
    });
  }
  outer->addLayout(buttons);
  quantity_->setFocus();
}

void ReceiveDialog::Collect(ReceiveForm& form) const {
  form.quantity = quantity_->text().toStdString();
  form.record.sell_by_day = sell_by_[0]->currentIndex();
  form.record.sell_by_month = sell_by_[1]->currentIndex();
  form.record.sell_by_year = sell_by_[2]->currentIndex();
}

namespace {

QWidget* Owner() {
  return QApplication::activeWindow();
}

std::vector<ViewLine> BundleLines(const FilmRecord& r) {
  std::vector<ViewLine> lines;
  for (const ViewLine& line : Itemviewlines(r)) {
    if (line.label == "Number" || line.label == "Description" || line.label.rfind("SKU", 0) == 0 ||
        line.label == "Date added" || line.label == "Delivery" || line.label == "Weight" ||
        line.label == "Display category" || line.label == "Notes")
      lines.push_back(line);
  }
  for (int slot = 1; slot <= 6; ++slot) {
    const std::string number = FieldText(BundleItem(r, slot), 20);
    if (number.empty()) continue;
    std::string text = number + "  x " + std::to_string(r.bundle_quantity[slot - 1]);
    if (r.bundle_free[slot - 1] == 2) text += "  Free";
    lines.push_back({"Item " + std::to_string(slot), text});
  }
  return lines;
}

class QtInventoryView : public InventoryView {
 public:
  ItemButton edit_item(ItemForm& form) override {
    ItemDialog dialog(Owner(), form);
    if (dialog.exec() != QDialog::Accepted) return ItemButton::Cancel;
    form.record = dialog.collected();
    return dialog.pressed();
  }
  bool view_item(const FilmRecord& record) override {
    ItemViewDialog dialog(Owner(), "View inventory", Itemviewlines(record), true);
    dialog.exec();
    return dialog.nextPressed();
  }
  bool edit_bundle(BundleForm& form) override {
    BundleDialog dialog(Owner(), form);
    if (dialog.exec() != QDialog::Accepted) return false;
    form = dialog.form();
    return true;
  }
  void view_bundle(const FilmRecord& record) override {
    ItemViewDialog dialog(Owner(), "Inventory bundle", BundleLines(record), false);
    dialog.setObjectName("BUNDLE1");
    dialog.exec();
  }
  ReceiveButton receive_item(ReceiveForm& form) override {
    ReceiveDialog dialog(Owner(), form);
    if (dialog.exec() != QDialog::Accepted) return ReceiveButton::Cancel;
    dialog.Collect(form);
    return dialog.pressed();
  }
};

QtInventoryView qt_view;

}  // namespace

void SetItemPictureDrawer(ItemPictureDrawer drawer) {
  PictureDrawer() = std::move(drawer);
}

void InstallInventoryHandlers() {
  install_inventory_view(&qt_view);
  InstallReportForms();
  SetHandler(Command::NewLine, [](int) { Newline(); });
  SetHandler(Command::AmendInventory, [](int) { Amendinventory(); });
  SetHandler(Command::DeleteInventory, [](int) { Deleteinventory(); });
  SetHandler(Command::NewBundle, [](int) { Newbundle(); });
  SetHandler(Command::InventoryReceived, [](int) { Inventoryreceived(); });
  SetHandler(Command::InventoryReceivedBySku, [](int) { Inventoryreceivedbysku(); });
  SetHandler(Command::InventoryReceivedReport, [](int) { Inventoryreceivedreport(); });
}

}  // namespace tilo
