// SPDX-License-Identifier: MIT
#include "tender/ui/adjust_forms.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QVBoxLayout>

#include "core/state.h"
#include "core/text.h"
#include "platform/platform.h"
#include "sale/commands.h"
#include "sale/pricing.h"
#include "sale/ui/sale_screen.h"
#include "tender/cash.h"
#include "tender/ui/cash_form.h"

namespace tilo {
namespace {

QString Q(const std::string& text) {
  return QString::fromStdString(text);
}

// The till forms' face: "MS Sans Serif" 10 as this desktop has it.
QFont FormFont() {
  QFont f(Q(LinuxFace("MS Sans Serif")));
  f.setPointSize(10);
  return f;
}

QLineEdit* Shown(QWidget* parent, const char* name) {
  auto* field = new QLineEdit(parent);
  field->setObjectName(name);
  field->setReadOnly(true);
  field->setFocusPolicy(Qt::NoFocus);
  return field;
}

QLineEdit* Digits(QWidget* parent, const char* name, const char* tip) {
  auto* box = new QLineEdit(parent);
  box->setObjectName(name);
  box->setAlignment(Qt::AlignCenter);
  box->setMaxLength(19);
  box->setValidator(new QRegularExpressionValidator(QRegularExpression("[0-9]*"), box));
  box->setToolTip(tip);
  return box;
}

QLineEdit* Decimal(QWidget* parent, const char* name) {
  auto* box = new QLineEdit(parent);
  box->setObjectName(name);
  box->setAlignment(Qt::AlignCenter);
  box->setValidator(
      new QRegularExpressionValidator(QRegularExpression("[0-9]{0,5}(\\.[0-9]{0,2})?"), box));
  return box;
}

QPushButton* Button(QWidget* parent, const QString& text, const char* name, bool focus = true) {
  auto* button = new QPushButton(text, parent);
  button->setObjectName(name);
  button->setAutoDefault(false);
  if (!focus) button->setFocusPolicy(Qt::NoFocus);
  return button;
}

const char* const kFigureNames[5] = {"nonTaxable", "taxable", "tax1", "tax2", "total"};
const char* const kFigureLabels[5] = {"Non taxable", "Taxable", "Tax 1", "Tax 2", "Total"};

// The five figures under their labels, in one row of the grid from `row` on.
void AddFigures(QWidget* parent, QGridLayout* grid, int row, QLineEdit* (&figures)[5]) {
  for (int n = 0; n < 5; ++n) {
    grid->addWidget(new QLabel(kFigureLabels[n], parent), row, n);
    figures[n] = Shown(parent, kFigureNames[n]);
    grid->addWidget(figures[n], row + 1, n);
  }
}

void SetFigures(QLineEdit* const (&boxes)[5], const Figures& f) {
  const std::string* texts[5] = {&f.non_taxable, &f.taxable, &f.tax1, &f.tax2, &f.total};
  for (int n = 0; n < 5; ++n) boxes[n]->setText(Q(*texts[n]));
}

QHBoxLayout* OkCancel(PriceChangeForm* form, QPushButton** ok, QPushButton* first = nullptr) {
  auto* row = new QHBoxLayout;
  if (first) row->addWidget(first);
  *ok = Button(form, "OK", "ok");
  (*ok)->setDefault(true);
  row->addWidget(*ok);
  QPushButton* cancel = Button(form, "Cancel", "cancel");
  QObject::connect(cancel, &QPushButton::clicked, form, &QDialog::reject);
  row->addWidget(cancel);
  return row;
}

template <class Form, class... Args>
void Openform(Args... args) {
  auto* form = new Form(TillWindow(), args...);
  form->show();
  form->activateWindow();
  if (QLineEdit* box = TenderAmountField()) box->setFocus();
}

class QtAdjustView : public AdjustView {
 public:
  void open_price_form() override { Openform<AdjustPriceForm>(); }
  void open_weight_form() override { Openform<AdjustWeightForm>(); }
  void open_discount_form(bool on_total) override { Openform<DiscountForm>(on_total); }
  std::optional<BasketLine> non_inventory_form() override {
    NonInventoryForm form(TillWindow());
    if (form.exec() != QDialog::Accepted) return std::nullopt;
    return form.line();
  }
};

QtAdjustView qt_view;

}  // namespace

PriceChangeForm::PriceChangeForm(QWidget* main_window, const char* name, const char* title)
    : QDialog(main_window, Qt::Dialog) {
  setObjectName(name);
  setWindowTitle(title);
  setModal(false);
  setAttribute(Qt::WA_DeleteOnClose);
  setFont(FormFont());
  G().tender_form_open = 2;
}

PriceChangeForm::~PriceChangeForm() {
  if (amount_box_ && TenderAmountField() == amount_box_) SetTenderAmountField(nullptr);
  if (!closed_) G().tender_form_open = 0;
}

void PriceChangeForm::setAmountBox(QLineEdit* box) {
  amount_box_ = box;
  SetTenderAmountField(box);
  PlaceOverTill(this);
  box->setFocus();
}

void PriceChangeForm::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  if (placed_) return;
  placed_ = true;
  PlaceOverTill(this);
}

void PriceChangeForm::Close(bool cancelled) {
  closed_ = true;
  SetTenderAmountField(nullptr);
  hide();
  deleteLater();
  if (cancelled) Canceltender();
}

void PriceChangeForm::reject() {
  if (!closed_) Close(true);
}

LineForm::LineForm(QWidget* main_window, const char* name, const char* title)
    : PriceChangeForm(main_window, name, title), adjust_(Openadjust()) {
  auto* layout = new QVBoxLayout(this);
  auto* grid = new QGridLayout;
  grid->addWidget(new QLabel("Item number", this), 0, 0);
  number_ = Shown(this, "number");
  grid->addWidget(number_, 0, 1);
  grid->addWidget(new QLabel("Description", this), 0, 2);
  description_ = Shown(this, "description");
  grid->addWidget(description_, 0, 3, 1, 2);
  grid->addWidget(new QLabel("Cost price", this), 1, 0);
  cost_ = Shown(this, "cost");
  grid->addWidget(cost_, 1, 1);
  grid->addWidget(new QLabel("List price", this), 1, 2);
  list_price_ = Shown(this, "listPrice");
  grid->addWidget(list_price_, 1, 3);
  AddFigures(this, grid, 2, figures_);
  layout->addLayout(grid);
  number_->setText(Q(adjust_.number));
  description_->setText(Q(adjust_.description));
  cost_->setText(Q(adjust_.cost));
  list_price_->setText(Q(adjust_.list_price));
  showFigures();
}

void LineForm::showFigures() {
  SetFigures(figures_, adjust_.shown);
}

AdjustPriceForm::AdjustPriceForm(QWidget* main_window)
    : LineForm(main_window, "DISCOUNT", "Adjust item price") {
  auto* row = new QHBoxLayout;
  row->addWidget(new QLabel("Amended price", this));
  amended_ = Digits(this, "amended", "Enter the amount in cents / pence");
  row->addWidget(amended_);
  row->addWidget(new QLabel("Enter the amount in cents / pence", this));
  static_cast<QVBoxLayout*>(layout())->addLayout(row);
  zero_ = Button(this, "Zero", "zero");
  static_cast<QVBoxLayout*>(layout())->addLayout(OkCancel(this, &ok_, zero_));

  connect(amended_, &QLineEdit::textChanged, this, &AdjustPriceForm::Typed);
  connect(zero_, &QPushButton::clicked, this, [this] {
    amended_->setText("0");
    const bool taken = Adjustzero(adjust_);
    showFigures();  // the zeros stay on show when the basket refused them
    if (taken)
      Close(false);
    else
      amended_->setFocus();
  });
  connect(ok_, &QPushButton::clicked, this, [this] {
    if (Adjustok(adjust_, amended_->text().toStdString()))
      Close(false);
    else
      amended_->setFocus();
  });
  setAmountBox(amended_);
}

void AdjustPriceForm::Typed() {
  if (refusing_) return;
  const bool taken = Amendprice(adjust_, amended_->text().toStdString());
  showFigures();
  if (!taken) {
    refusing_ = true;
    amended_->clear();
    refusing_ = false;
    amended_->setFocus();
  }
}

AdjustWeightForm::AdjustWeightForm(QWidget* main_window)
    : LineForm(main_window, "DISCOUN4", "Adjust by weight") {
  auto* grid = new QGridLayout;
  grid->addWidget(new QLabel("Weight", this), 0, 0);
  weights_ = new QComboBox(this);
  weights_->setObjectName("weights");
  for (int w = 1; w <= 2000; ++w) weights_->addItem(QString::number(w));
  weights_->setCurrentIndex(99);
  grid->addWidget(weights_, 0, 1);
  weight_ = Digits(this, "weight", "Please enter the weight");
  weight_->setMaxLength(6);
  grid->addWidget(weight_, 0, 2);
  grid->addWidget(new QLabel("Please enter the weight", this), 1, 2);
  grid->addWidget(new QLabel("Price before tax", this), 2, 0);
  price_ = Decimal(this, "price");
  grid->addWidget(price_, 2, 1);
  static_cast<QVBoxLayout*>(layout())->addLayout(grid);
  static_cast<QVBoxLayout*>(layout())->addLayout(OkCancel(this, &ok_));

  connect(weights_, &QComboBox::activated, this,
          [this](int index) { price_->setText(Q(Weightprice(adjust_, index + 1))); });
  connect(weight_, &QLineEdit::textChanged, this, [this](const QString& text) {
    if (std::optional<int64_t> w = Typedweight(text.toStdString()))
      price_->setText(Q(Weightprice(adjust_, *w)));
  });
  connect(price_, &QLineEdit::textChanged, this, [this](const QString& text) {
    Weightchanged(adjust_, text.toStdString());
    showFigures();
  });
  connect(ok_, &QPushButton::clicked, this, [this] {
    if (Weightok(adjust_, price_->text().toStdString()))
      Close(false);
    else
      weight_->setFocus();
  });
  setAmountBox(weight_);
}

DiscountForm::DiscountForm(QWidget* main_window, bool on_total)
    : PriceChangeForm(main_window, on_total ? "DISCOUNTWO" : "DISCOUN2", "Discount total"),
      state_(Opendiscount()) {
  auto* layout = new QVBoxLayout(this);
  auto* grid = new QGridLayout;
  AddFigures(this, grid, 0, figures_);
  SetFigures(figures_, state_.basket);
  grid->addWidget(new QLabel("Discount", this), 2, 0);
  discount_ = Digits(this, "discount", "Enter the amount in cents / pence");
  grid->addWidget(discount_, 2, 1);
  grid->addWidget(new QLabel("Percent", this), 2, 2);
  percent_ = new QComboBox(this);
  percent_->setObjectName("percent");
  for (int i = 0; i < kPercentEntries; ++i) percent_->addItem(Q(PercentText(i)));
  percent_->setCurrentIndex(state_.percent_index);
  grid->addWidget(percent_, 2, 3);
  grid->addWidget(new QLabel(on_total ? "Amended total" : "Amended total before tax", this), 3, 0,
                  1, 2);
  amended_ = Shown(this, "amended");
  grid->addWidget(amended_, 3, 2);
  layout->addLayout(grid);
  if (on_total) {
    layout->addWidget(new QLabel("Enter the amount without the . character", this));
    layout->addWidget(new QLabel(
        "Note that to discount items and tax please use the 'Adjust price' button", this));
  } else {
    layout->addWidget(new QLabel("Enter the amount in cents / pence", this));
  }
  layout->addLayout(OkCancel(this, &ok_));

  connect(discount_, &QLineEdit::textChanged, this, [this](const QString& text) {
    amended_->setText(Q(Amendedtotal(state_, text.toStdString())));
  });
  connect(percent_, &QComboBox::activated, this,
          [this](int index) { discount_->setText(Q(Percentdiscount(state_, index))); });
  connect(ok_, &QPushButton::clicked, this, [this] {
    if (Discountok(state_, discount_->text().toStdString()))
      Close(false);
    else
      discount_->setFocus();
  });
  discount_->setText(Q(state_.discount));
  discount_->selectAll();
  setAmountBox(discount_);
}

NonInventoryForm::NonInventoryForm(QWidget* main_window) : QDialog(main_window) {
  setObjectName("NBOX");
  setWindowTitle("Non inventory sale");
  setFont(FormFont());
  auto* layout = new QVBoxLayout(this);

  auto* top = new QHBoxLayout;
  top->addWidget(new QLabel("Description", this));
  description_ = new QLineEdit(this);
  description_->setObjectName("description");
  description_->setMaxLength(39);
  top->addWidget(description_);
  layout->addLayout(top);
  auto* names = new QHBoxLayout;
  for (const char* name : {"Misc", "Lottery", "Accessories", "Loose items"}) {
    QPushButton* b = Button(this, name, name, false);
    connect(b, &QPushButton::clicked, this, [this, name] {
      description_->setText(name);
      Recalculate();
    });
    names->addWidget(b);
  }
  layout->addLayout(names);
  auto* keyboard = new QGridLayout;
  const char* const rows[] = {"1234567890", "QWERTYUIOP", "ASDFGHJKL-", "ZXCVBNM,./"};
  for (int r = 0; r < 4; ++r)
    for (int c = 0; rows[r][c]; ++c) {
      const QString key{QChar(rows[r][c])};
      QPushButton* b = Button(this, key, "key", false);
      connect(b, &QPushButton::clicked, this, [this, key] { Key(key); });
      keyboard->addWidget(b, r, c);
    }
  QPushButton* space = Button(this, "Space", "keySpace", false);
  connect(space, &QPushButton::clicked, this, [this] { Key(" "); });
  keyboard->addWidget(space, 4, 2, 1, 6);
  QPushButton* back = Button(this, "Back", "keyBack", false);
  connect(back, &QPushButton::clicked, this, [this] { Key("Back"); });
  keyboard->addWidget(back, 4, 8, 1, 2);
  layout->addLayout(keyboard);

  auto* price_row = new QHBoxLayout;
  price_row->addWidget(new QLabel("Price", this));
  price_ = Decimal(this, "price");
  price_row->addWidget(price_);
  price_row->addWidget(new QLabel("The price is entered with the decimal point.", this));
  layout->addLayout(price_row);
  auto* quick = new QHBoxLayout;
  for (const char* amount : {"1.00", "2.00", "5.00", "10.00", "20.00"}) {
    QPushButton* b = Button(this, amount, "quick", false);
    connect(b, &QPushButton::clicked, this, [this, amount] { price_->setText(amount); });
    quick->addWidget(b);
  }
  layout->addLayout(quick);

  auto* ticks = new QHBoxLayout;
  const bool taxed = G().settings.non_inventory_taxable == 2;
  tax1_ = new QCheckBox("Tax 1", this);
  tax1_->setObjectName("tax1Tick");
  tax1_->setChecked(taxed);
  tax2_ = new QCheckBox("Tax 2", this);
  tax2_->setObjectName("tax2Tick");
  tax2_->setChecked(taxed);
  ticks->addWidget(tax1_);
  ticks->addWidget(tax2_);
  layout->addLayout(ticks);

  auto* shown = new QGridLayout;
  const char* const labels[4] = {"Nett", "Tax 1", "Tax 2", "Total"};
  const char* const names4[4] = {"nett", "tax1", "tax2", "total"};
  for (int n = 0; n < 4; ++n) {
    shown->addWidget(new QLabel(labels[n], this), 0, n);
    figures_[n] = Shown(this, names4[n]);
    shown->addWidget(figures_[n], 1, n);
  }
  layout->addLayout(shown);

  auto* buttons = new QHBoxLayout;
  add_ = Button(this, "Add", "add");
  add_->setDefault(true);
  QPushButton* cancel = Button(this, "Cancel", "cancel");
  buttons->addWidget(add_);
  buttons->addWidget(cancel);
  layout->addLayout(buttons);

  last_box_ = description_;
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
    if (now == description_ || now == price_) last_box_ = static_cast<QLineEdit*>(now);
  });
  connect(price_, &QLineEdit::textChanged, this, &NonInventoryForm::Recalculate);
  connect(tax1_, &QCheckBox::toggled, this, &NonInventoryForm::Recalculate);
  connect(tax2_, &QCheckBox::toggled, this, &NonInventoryForm::Recalculate);
  connect(add_, &QPushButton::clicked, this, &NonInventoryForm::Add);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  description_->setFocus();
}

void NonInventoryForm::Key(const QString& key) {
  if (key == "Back")
    last_box_->backspace();
  else
    last_box_->insert(key);
  last_box_->setFocus();
}

void NonInventoryForm::Recalculate() {
  const std::optional<BasketLine> line =
      Noninventoryline(description_->text().toStdString(), price_->text().toStdString(),
                       tax1_->isChecked(), tax2_->isChecked());
  if (!line) {
    for (QLineEdit* f : figures_) f->clear();
    return;
  }
  figures_[0]->setText(Q(MoneyText(double(line->non_taxable) + line->taxable)));
  figures_[1]->setText(Q(MoneyText(line->tax1)));
  figures_[2]->setText(Q(MoneyText(line->tax2)));
  figures_[3]->setText(Q(MoneyText(line->line_total)));
}

void NonInventoryForm::Add() {
  if (description_->text().trimmed().isEmpty()) {
    Message("Please enter a description", "Problem");
    description_->setFocus();
    return;
  }
  line_ = Noninventoryline(description_->text().toStdString(), price_->text().toStdString(),
                           tax1_->isChecked(), tax2_->isChecked());
  if (!line_) {
    Message("Invalid price", "Problem");
    price_->setFocus();
    return;
  }
  accept();
}

void InstallAdjustHandlers() {
  install_adjust_view(&qt_view);
  SetHandler(Command::AdjustPrice, [](int) { Adjustprice(); });
  SetHandler(Command::AdjustByWeight, [](int) { Adjustweight(); });
  SetHandler(Command::AddDiscount, [](int) { Discountform(); });
  SetHandler(Command::NonInventory, [](int) { Noninventorysale(); });
}

}  // namespace tilo
