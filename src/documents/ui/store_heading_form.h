// SPDX-License-Identifier: MIT
// The "Print heading" form: the six heading lines of the store.
#pragma once

#include <QDialog>

#include "documents/store_heading.h"

class QLineEdit;

namespace tilo {

class StoreHeadingForm : public QDialog {
  Q_OBJECT
 public:
  StoreHeadingForm(QWidget* parent, const HeadingEntries& entries);
  HeadingEntries entries() const;

 private:
  std::array<QLineEdit*, 6> boxes_{};
};

// Puts the form behind Storeprintheading.
void InstallStoreHeadingForm();

}  // namespace tilo
