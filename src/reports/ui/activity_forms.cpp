// SPDX-License-Identifier: MIT
#include "reports/ui/activity_forms.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QFont>
#include <QFontDatabase>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QInputDialog>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include "core/activity_log.h"
#include "core/state.h"
#include "reports/log_print.h"
#include "reports/stock_summary.h"
#include "sale/commands.h"
#include "sale/screen.h"

namespace tilo {
namespace {

QWidget* MainWindowWidget() {
  for (QWidget* w : QApplication::topLevelWidgets())
    if (w->objectName() == "mainWindow") return w;
  return nullptr;
}

QString Q(const std::string& text) {
  return QString::fromStdString(text);
}

QLabel* Text(QWidget* parent, const QString& text, const QString& name = {}) {
  auto* label = new QLabel(text, parent);
  if (!name.isEmpty()) label->setObjectName(name);
  return label;
}

}  // namespace

StatusDialog::StatusDialog(QWidget* parent, const StatusScreen& screen) : QDialog(parent) {
  setObjectName("814");
  setWindowTitle(Q(screen.title));
  auto* outer = new QVBoxLayout(this);
  auto* columns = new QHBoxLayout;
  outer->addLayout(columns);

  auto* left = new QVBoxLayout;
  for (const std::string& line : screen.lines) left->addWidget(Text(this, Q(line), "line"));
  left->addStretch();
  columns->addLayout(left);
  columns->addSpacing(24);

  auto* grid = new QGridLayout;
  grid->setHorizontalSpacing(16);
  grid->setVerticalSpacing(2);
  int row = 0;
  for (const StatusRow& f : screen.figures) {
    QLabel* label = Text(this, Q(f.label), "label");
    if (f.value.empty()) {
      QFont bold = label->font();
      bold.setBold(true);
      label->setFont(bold);
      grid->addWidget(label, row++, 0, 1, 2);
      continue;
    }
    grid->addWidget(label, row, 0);
    QLabel* value = Text(this, Q(f.value), "value");
    value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    grid->addWidget(value, row++, 1);
    // A total closes its group.
    if (f.label.rfind("Total", 0) == 0) grid->setRowMinimumHeight(row++, 8);
  }
  columns->addLayout(grid);

  for (const std::string& note : screen.notes) {
    QLabel* label = Text(this, Q(note), "note");
    label->setWordWrap(true);
    outer->addWidget(label);
  }
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  outer->addWidget(buttons);
}

QString StatusDialog::figure(const QString& label) const {
  const QList<QLabel*> labels = findChildren<QLabel*>();
  for (int i = 0; i + 1 < labels.size(); ++i)
    if (labels[i]->objectName() == "label" && labels[i]->text() == label &&
        labels[i + 1]->objectName() == "value")
      return labels[i + 1]->text();
  return {};
}

QStringList StatusDialog::texts() const {
  QStringList out;
  for (QLabel* label : findChildren<QLabel*>()) out << label->text();
  return out;
}

LogDialog::LogDialog(QWidget* parent, const QString& title, LogViewer viewer)
    : QDialog(parent), viewer_(std::move(viewer)) {
  Build(title);
  Refresh();
}

LogDialog::LogDialog(QWidget* parent, const QString& title, const std::string& text)
    : QDialog(parent) {
  Build(title);
  text_->setPlainText(Q(text));
  next_->hide();
  previous_->hide();
}

void LogDialog::Build(const QString& title) {
  setObjectName("LOGEDIT");
  setWindowTitle(title);
  resize(720, 520);
  auto* layout = new QVBoxLayout(this);
  text_ = new QPlainTextEdit(this);
  text_->setObjectName("logText");
  text_->setReadOnly(true);
  text_->setLineWrapMode(QPlainTextEdit::NoWrap);
  text_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  layout->addWidget(text_);
  auto* row = new QHBoxLayout;
  next_ = new QPushButton("Next", this);
  previous_ = new QPushButton("Previous", this);
  auto* ok = new QPushButton("OK", this);
  next_->setObjectName("next");
  previous_->setObjectName("previous");
  ok->setDefault(true);
  row->addWidget(next_);
  row->addWidget(previous_);
  row->addStretch();
  row->addWidget(ok);
  layout->addLayout(row);
  connect(ok, &QPushButton::clicked, this, &QDialog::accept);
  connect(next_, &QPushButton::clicked, this, [this] {
    viewer_.Next();
    Refresh();
  });
  connect(previous_, &QPushButton::clicked, this, [this] {
    viewer_.Previous();
    Refresh();
  });
}

void LogDialog::Refresh() {
  text_->setPlainText(Q(viewer_.text));
  next_->setEnabled(viewer_.next_enabled);
  previous_->setEnabled(viewer_.previous_enabled);
}

namespace {

void ShowStatus() {
  StatusDialog form(MainWindowWidget(), Statusscreen(platform().now()));
  form.exec();
}

void ShowLog(bool previous) {
  std::optional<LogViewer> viewer = OpenLogViewer(previous);
  if (!viewer) return;
  LogDialog form(MainWindowWidget(), "TILO log", std::move(*viewer));
  form.exec();
}

void ShowPreviousSummary() {
  std::optional<std::string> text = PreviousActivitySummaryText();
  if (!text) return;
  LogDialog form(MainWindowWidget(), "Activity report", *text);
  form.exec();
}

// Dialog SUMMARY: the four figures and "OK".
void ShowStockSummary() {
  std::optional<StockSummary> summary = Stocksummary();
  if (!summary) return;
  QDialog form(MainWindowWidget());
  form.setObjectName("SUMMARY");
  form.setWindowTitle("Stock summary");
  auto* layout = new QVBoxLayout(&form);
  auto* grid = new QGridLayout;
  int row = 0;
  for (const auto& [label, value] : Stocksummaryrows(*summary)) {
    grid->addWidget(Text(&form, Q(label), "label"), row, 0);
    QLabel* shown = Text(&form, Q(value), "value");
    shown->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    grid->addWidget(shown, row++, 1);
  }
  layout->addLayout(grid);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, &form);
  QObject::connect(buttons, &QDialogButtonBox::accepted, &form, &QDialog::accept);
  layout->addWidget(buttons);
  form.exec();
}

void ChooseLogCapacity() {
  QStringList rows;
  for (int n = 0; n < kLogCapacityRows; ++n) rows << Q(LogCapacityRow(n));
  const int32_t capacity = G().settings.log_capacity;
  const int current = capacity >= 0 && capacity < kLogCapacityRows ? capacity : 0;
  bool ok = false;
  const QString chosen = QInputDialog::getItem(MainWindowWidget(), "Log capacity", "Log capacity",
                                               rows, current, false, &ok);
  if (ok) G().settings.log_capacity = int32_t(rows.indexOf(chosen));
}

// The boxes of the print jobs go first: one still there, even hidden, would
// turn the close-down back.
void QuitAfterPrinting() {
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  QTimer::singleShot(0, [] { screen_view().quit(); });
}

}  // namespace

void InstallActivityHandlers() {
  SetHandler(Command::ActivitySummary, [](int) { ShowStatus(); });
  SetHandler(Command::PrintActivitySummary, [](int) { PrintActivitySummary(); });
  SetHandler(Command::PreviousActivitySummary, [](int) { ShowPreviousSummary(); });
  SetHandler(Command::DisplayLogFile, [](int) { ShowLog(false); });
  SetHandler(Command::DisplayPreviousLogFile, [](int) { ShowLog(true); });
  SetHandler(Command::PrintLogToday, [](int) { Printlog(kLogToday); });
  SetHandler(Command::PrintLogFromDay, [](int) { Printlog(kLogFromDay); });
  SetHandler(Command::PrintLogFile, [](int) { Printlog(kLogWhole); });
  SetHandler(Command::PrintOldLogFile, [](int) { Printlog(kLogPrevious); });
  SetHandler(Command::StockSummary, [](int) { ShowStockSummary(); });
  SetHandler(Command::LogFileCapacity, [](int) { ChooseLogCapacity(); });
  // The way out with paper: the printing finishes before the program closes.
  SetHandler(Command::ExitPrintReport, [](int) {
    PrintActivitySummary();
    QuitAfterPrinting();
  });
  SetHandler(Command::ExitPrintLog, [](int) {
    Printlog(kLogToday);
    QuitAfterPrinting();
  });
  SetHandler(Command::ExitPrintReportLog, [](int) {
    PrintActivitySummary();
    Printlog(kLogToday);
    QuitAfterPrinting();
  });
}

}  // namespace tilo
