// SPDX-License-Identifier: MIT
#include "tender/ui/cash_form.h"

#include <QApplication>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QTimer>
#include <QVBoxLayout>
#include <cstdio>

#include "core/state.h"
#include "core/text.h"
#include "documents/print_target.h"
#include "sale/commands.h"
#include "sale/screen.h"
#include "sale/ui/sale_screen.h"
#include "tender/cash.h"
#include "tender/printdocument.h"
#include "tender/split.h"
#include "tender/tender_view.h"

namespace tilo {
namespace {

QString Money(double value) {
  char text[64];
  std::snprintf(text, sizeof text, "%.2f", value);
  return text;
}

// The forms' face: "MS Sans Serif" 10 as this desktop has it.
QFont FormFont() {
  QFont f(QString::fromStdString(LinuxFace("MS Sans Serif")));
  f.setPointSize(10);
  return f;
}

void SetBackground(QLineEdit* field, const QColor& colour) {
  QPalette p = field->palette();
  p.setColor(QPalette::Base, colour);
  field->setPalette(p);
}

const QColor kShort(200, 40, 40);
const QColor kCovered(240, 240, 200);

QLineEdit* Figure(QWidget* parent, const char* name) {
  auto* field = new QLineEdit(parent);
  field->setObjectName(name);
  field->setReadOnly(true);
  field->setAlignment(Qt::AlignCenter);
  field->setFocusPolicy(Qt::NoFocus);
  return field;
}

class QtTenderView : public TenderView {
 public:
  void summary_box() override {
    SummaryBox box(TillWindow());
    box.exec();
  }
  void focus_item_box() override { screen_view().focus_item_box(); }
};

QtTenderView qt_view;

}  // namespace

QWidget* TillWindow() {
  for (QWidget* w : QApplication::topLevelWidgets())
    if (w->objectName() == "mainWindow") return w;
  return nullptr;
}

void PlaceOverTill(QWidget* form) {
  QWidget* till = TillWindow();
  if (!till) return;
  form->adjustSize();
  const QRect t = till->frameGeometry();
  const QSize size = form->frameGeometry().size();
  form->move(t.x() + (t.width() - size.width()) / 2, t.bottom() - 10 - size.height());
}

CashForm::CashForm(QWidget* main_window, CashStep step)
    : QDialog(main_window, Qt::Dialog | Qt::FramelessWindowHint), step_(step) {
  setObjectName("CASHBOX");
  setModal(false);
  setAttribute(Qt::WA_DeleteOnClose);
  setFont(FormFont());
  auto* layout = new QVBoxLayout(this);
  total_ = new QLabel(Money(Due()), this);
  total_->setObjectName("total");
  total_->setAlignment(Qt::AlignCenter);
  QFont big = total_->font();
  big.setPointSize(16);
  big.setBold(true);
  total_->setFont(big);
  layout->addWidget(total_);

  auto* grid = new QGridLayout;
  grid->addWidget(new QLabel("Tendered", this), 0, 0);
  tendered_ = new QLineEdit(this);
  tendered_->setObjectName("tendered");
  tendered_->setAlignment(Qt::AlignCenter);
  tendered_->setMaxLength(19);
  tendered_->setValidator(new QRegularExpressionValidator(QRegularExpression("[0-9]*"), tendered_));
  tendered_->setToolTip("Enter the amount in cents / pence");
  grid->addWidget(tendered_, 0, 1);
  auto* hint = new QLabel("Enter the amount in cents / pence", this);
  hint->setObjectName("hint");
  grid->addWidget(hint, 1, 1);
  grid->addWidget(new QLabel("Change", this), 2, 0);
  change_ = Figure(this, "change");
  change_->setAutoFillBackground(true);
  grid->addWidget(change_, 2, 1);
  layout->addLayout(grid);

  auto* notes = new QHBoxLayout;
  for (int n = 0; n < 3; ++n) {
    notes_[n] = new QPushButton(Money(Notes()[n]), this);
    notes_[n]->setObjectName(QString("note%1").arg(n + 1));
    notes_[n]->setAutoDefault(false);
    notes->addWidget(notes_[n]);
    connect(notes_[n], &QPushButton::clicked, this, [this, n] { Note(n); });
  }
  layout->addLayout(notes);

  auto* buttons = new QHBoxLayout;
  ok_ = new QPushButton("OK", this);
  ok_->setObjectName("ok");
  ok_->setDefault(true);
  exact_ = new QPushButton("Exact amount", this);
  exact_->setObjectName("exact");
  exact_->setAutoDefault(false);
  cancel_ = new QPushButton("Cancel", this);
  cancel_->setObjectName("cancel");
  cancel_->setAutoDefault(false);
  buttons->addWidget(ok_);
  buttons->addWidget(exact_);
  buttons->addWidget(cancel_);
  layout->addLayout(buttons);

  connect(tendered_, &QLineEdit::textChanged, this, &CashForm::Typed);
  connect(ok_, &QPushButton::clicked, this, &CashForm::Ok);
  connect(exact_, &QPushButton::clicked, this, &CashForm::Exact);
  connect(cancel_, &QPushButton::clicked, this, &CashForm::Cancel);

  SetTenderAmountField(tendered_);
  PlaceOverTill(this);
  tendered_->setFocus();
}

CashForm::~CashForm() {
  if (TenderAmountField() == tendered_) SetTenderAmountField(nullptr);
}

void CashForm::Typed() {
  const std::string typed = tendered_->text().left(19).toStdString();
  SetField(G().amount_text, Amounttext(typed, false));
  const ChangeShown shown = Livechange(typed, Due());
  change_->setText(QString::fromStdString(shown.text));
  SetBackground(change_, shown.short_of_total ? kShort : kCovered);
}

void CashForm::Close() {
  closed_ = true;
  SetTenderAmountField(nullptr);
  hide();
  deleteLater();
}

void CashForm::Ok() {
  const std::string typed = tendered_->text().left(19).toStdString();
  SetField(G().amount_text, Amounttext(typed, true));
  const std::string shown = change_->text().toStdString();
  const std::optional<CashSettled> settled =
      step_ == CashStep::Split ? Splitcashok(typed, shown) : Cashok(typed, shown, Due());
  if (!settled) {
    Message("Less than total", "Problem");
    tendered_->setFocus();
    return;
  }
  Close();
  Pay(*settled);  // the form is gone: nothing of it is touched after this
}

void CashForm::Note(int n) {
  const std::optional<CashSettled> settled = Cashnote(Notes()[n], Due());
  if (!settled) {
    Message("Less than total", "Problem");
    tendered_->setFocus();
    return;
  }
  Close();
  Pay(*settled);
}

void CashForm::Exact() {
  const CashSettled settled = Cashexact(Due());
  Close();
  Pay(settled);
}

void CashForm::Cancel() {
  Close();
  if (step_ == CashStep::Split)
    Cancelsplit();
  else
    Canceltender();
}

float CashForm::Due() const {
  return step_ == CashStep::Split ? G().basket.tender_cash : G().basket.total;
}

// After a split only the cash part is taken here, and the other part with it.
void CashForm::Pay(const CashSettled& settled) {
  if (step_ == CashStep::Split)
    Paysplit(settled);
  else
    Finishcash(settled);
}

std::array<double, 3> CashForm::Notes() const {
  if (step_ == CashStep::Split) return kSplitNotes;
  return {G().note_button1, G().note_button2, G().note_button3};
}

void CashForm::reject() {
  if (!closed_) Cancel();
}

SummaryBox::SummaryBox(QWidget* main_window) : QDialog(main_window) {
  setObjectName("TENBOX");
  setWindowTitle("Transaction committed, summary");
  setFont(FormFont());
  const State& g = G();
  auto* layout = new QVBoxLayout(this);
  auto* grid = new QGridLayout;
  total_ = Figure(this, "totalDue");
  tendered_ = Figure(this, "tendered");
  tendered_->setFocusPolicy(Qt::StrongFocus);
  change_ = Figure(this, "change");
  grid->addWidget(new QLabel("Total due", this), 0, 0);
  grid->addWidget(total_, 0, 1);
  grid->addWidget(new QLabel("Tendered", this), 1, 0);
  grid->addWidget(tendered_, 1, 1);
  grid->addWidget(new QLabel("Change", this), 2, 0);
  grid->addWidget(change_, 2, 1);
  layout->addLayout(grid);
  total_->setText(Money(g.basket.total));
  tendered_->setText(Money(g.amount_tendered));
  change_->setText(g.basket.cash_back > 0 ? "CB: " + Money(g.basket.cash_back)
                                          : Money(g.change_due));

  struct Document {
    const char* label;
    const char* name;
    int kind;
  };
  const Document documents[] = {
      {"&Standard receipt", "standardReceipt", kTillReceipt},
      {"&Standard invoice", "standardInvoice", kStandardInvoice},
      {"&Custom receipt", "customReceipt", kCustomReceipt},
      {"Custom invoice", "customInvoice", kCustomInvoice},
      {"Delivery note", "deliveryNote", kDeliveryNote},
  };
  auto* row = new QHBoxLayout;
  for (const Document& d : documents) {
    auto* button = new QPushButton(d.label, this);
    button->setObjectName(d.name);
    button->setAutoDefault(false);
    const int kind = d.kind;
    connect(button, &QPushButton::clicked, this, [this, kind] { Print(kind); });
    row->addWidget(button);
  }
  layout->addLayout(row);
  ok_ = new QPushButton("OK", this);
  ok_->setObjectName("ok");
  ok_->setDefault(true);
  connect(ok_, &QPushButton::clicked, this, &QDialog::accept);
  layout->addWidget(ok_, 0, Qt::AlignHCenter);
  ok_->setFocus();
}

void SummaryBox::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  if (opened_) return;
  opened_ = true;
  PlaceOverTill(this);
  ok_->setFocus();
  // The automatic documents come as commands the box posts to itself.
  for (int kind : Summaryprints()) QTimer::singleShot(0, this, [this, kind] { Print(kind); });
}

void SummaryBox::Print(int kind) {
  Printdocument(kind);
  tendered_->setFocus();
}

void Cashcommand() {
  if (Starttender()) {
    auto* form = new CashForm(TillWindow());
    form->show();
    form->activateWindow();
    form->tendered()->setFocus();
  }
}

void InstallTenderHandlers() {
  install_tender_view(&qt_view);
  SetHandler(Command::Cash, [](int) { Cashcommand(); });
}

}  // namespace tilo
