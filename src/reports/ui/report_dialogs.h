// SPDX-License-Identifier: MIT
// SALE4BOX (a from date and a to date) and SALE2BOX (a report's lines, with
// Print), shared by the period reports.
#pragma once

#include <QDialog>
#include <array>
#include <functional>

#include "reports/report_forms.h"

class QComboBox;
class QListWidget;
class QPushButton;

namespace tilo {

class PeriodDialog : public QDialog {
  Q_OBJECT
 public:
  PeriodDialog(QWidget* parent, const ReportPeriod& today);
  // Day, month and year lists: 0 to 2 the from date, 3 to 5 the to date.
  QComboBox* list(int n) const { return lists_[size_t(n)]; }
  ReportPeriod period() const;

 private:
  std::array<QComboBox*, 6> lists_{};
};

class ReportListDialog : public QDialog {
  Q_OBJECT
 public:
  ReportListDialog(QWidget* parent, const QString& title, const std::vector<std::string>& lines,
                   const std::function<void()>& print);
  QListWidget* list() const { return list_; }
  QPushButton* print() const { return print_; }

 private:
  QListWidget* list_;
  QPushButton* print_;
};

// Installs these forms behind period_list_view().
void InstallReportForms();

}  // namespace tilo
