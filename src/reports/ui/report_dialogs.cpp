// SPDX-License-Identifier: MIT
#include "reports/ui/report_dialogs.h"

#include <QApplication>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace tilo {
namespace {

QComboBox* Range(QWidget* parent, int from, int to, int current) {
  auto* list = new QComboBox(parent);
  for (int i = from; i <= to; ++i) list->addItem(QString::number(i), i);
  list->setCurrentIndex(std::max(0, list->findData(current)));
  return list;
}

}  // namespace

PeriodDialog::PeriodDialog(QWidget* parent, const ReportPeriod& today) : QDialog(parent) {
  setObjectName("SALE4BOX");
  setWindowTitle("Select dates");
  auto* outer = new QVBoxLayout(this);
  auto* grid = new QGridLayout;
  grid->addWidget(new QLabel("Day", this), 0, 1);
  grid->addWidget(new QLabel("Month", this), 0, 2);
  grid->addWidget(new QLabel("Year", this), 0, 3);
  for (int row = 0; row < 2; ++row) {
    grid->addWidget(new QLabel(row == 0 ? "From" : "To", this), row + 1, 0);
    lists_[size_t(row * 3)] = Range(this, 1, 31, today.from_day);
    lists_[size_t(row * 3 + 1)] = Range(this, 1, 12, today.from_month);
    lists_[size_t(row * 3 + 2)] =
        Range(this, today.from_year - 8, today.from_year, today.from_year);
    for (int c = 0; c < 3; ++c) grid->addWidget(lists_[size_t(row * 3 + c)], row + 1, c + 1);
  }
  outer->addLayout(grid);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  auto* ok = new QPushButton("OK", this);
  ok->setDefault(true);
  auto* cancel = new QPushButton("Cancel", this);
  buttons->addWidget(ok);
  buttons->addWidget(cancel);
  outer->addLayout(buttons);
  connect(ok, &QPushButton::clicked, this, &QDialog::accept);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

ReportPeriod PeriodDialog::period() const {
  auto v = [this](int n) { return lists_[size_t(n)]->currentData().toInt(); };
  return {v(0), v(1), v(2), v(3), v(4), v(5)};
}

ReportListDialog::ReportListDialog(QWidget* parent, const QString& title,
                                   const std::vector<std::string>& lines,
                                   const std::function<void()>& print)
    : QDialog(parent) {
  setObjectName("SALE2BOX");
  setWindowTitle(title);
  resize(760, 520);
  auto* outer = new QVBoxLayout(this);
  list_ = new QListWidget(this);
  QFont fixed("Monospace");
  fixed.setStyleHint(QFont::TypeWriter);
  list_->setFont(fixed);
  for (const std::string& line : lines) list_->addItem(QString::fromStdString(line));
  outer->addWidget(list_);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  print_ = new QPushButton("Print", this);
  print_->setAutoDefault(false);
  auto* ok = new QPushButton("OK", this);
  ok->setDefault(true);
  buttons->addWidget(print_);
  buttons->addWidget(ok);
  outer->addLayout(buttons);
  connect(print_, &QPushButton::clicked, this, [print] { print(); });
  connect(ok, &QPushButton::clicked, this, &QDialog::accept);
}

namespace {

class QtPeriodListView : public PeriodListView {
 public:
  std::optional<ReportPeriod> choose_period(const ReportPeriod& today) override {
    PeriodDialog dialog(QApplication::activeWindow(), today);
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return dialog.period();
  }
  void show_list(const std::string& title, const std::vector<std::string>& lines,
                 const std::function<void()>& print) override {
    ReportListDialog dialog(QApplication::activeWindow(), QString::fromStdString(title), lines,
                            print);
    dialog.exec();
  }
};

QtPeriodListView qt_view;

}  // namespace

void InstallReportForms() {
  install_period_list_view(&qt_view);
}

}  // namespace tilo
