// SPDX-License-Identifier: MIT
// The listings' forms: "Select category", "Custom Inventory Print" (PS4) and the
// list dialog 819; the range box is the listing font's "Print".
#pragma once

#include <QDialog>

#include "reports/listings.h"

class QCheckBox;
class QLineEdit;
class QListWidget;

namespace tilo {

// "Select category": the 18 display categories, and "All" when asked for.
class CategoryForm : public QDialog {
  Q_OBJECT
 public:
  CategoryForm(QWidget* parent, bool with_all);
  QListWidget* list() const { return list_; }
  // 0 to 17, or kAllCategories; -1 when nothing is chosen.
  int chosen() const;

 private:
  QListWidget* list_;
};

// "Custom Inventory Print": twenty ticks and a range.
class CustomPrintForm : public QDialog {
  Q_OBJECT
 public:
  CustomPrintForm(QWidget* parent, const CustomFields& fields, const std::string& from,
                  const std::string& to);
  CustomFields fields() const;
  QCheckBox* tick(int i) const { return ticks_[size_t(i)]; }
  QLineEdit* from() const { return from_; }
  QLineEdit* to() const { return to_; }

 private:
  std::array<QCheckBox*, kCustomFields> ticks_{};
  QLineEdit* from_;
  QLineEdit* to_;
};

// Installs the forms and the listing commands.
void InstallListingForms();

}  // namespace tilo
