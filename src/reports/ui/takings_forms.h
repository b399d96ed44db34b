// SPDX-License-Identifier: MIT
// The takings list, the weekly takings chart and the units-by-category box, and
// the commands that open them.
#pragma once

#include <QDialog>
#include <QWidget>
#include <string>
#include <vector>

class QListWidget;

namespace tilo {

// The takings list: one row per day.
class TakingsListDialog : public QDialog {
  Q_OBJECT
 public:
  TakingsListDialog(QWidget* parent, const std::vector<std::string>& rows);
  QListWidget* list() const { return list_; }

 private:
  QListWidget* list_ = nullptr;
};

// The chart area: drawn from the takings each time it is painted.
class TakingsChartView : public QWidget {
  Q_OBJECT
 public:
  explicit TakingsChartView(QWidget* parent);

 protected:
  void paintEvent(QPaintEvent* event) override;
};

// "Weekly takings average": the chart with OK and Print.
class TakingsGraphDialog : public QDialog {
  Q_OBJECT
 public:
  explicit TakingsGraphDialog(QWidget* parent);
};

// The units and totals of the 18 categories, for today or the month.
class CategoryDialog : public QDialog {
  Q_OBJECT
 public:
  CategoryDialog(QWidget* parent, bool month);
};

// Takings list, graph, print, amendment and purge; units by category.
void InstallTakingsHandlers();

}  // namespace tilo
