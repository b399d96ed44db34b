// SPDX-License-Identifier: MIT
// Form 816, one supplier: the record's text fields with their limits, folded to
// upper case as typed except "Number", "Ext" and "Notes", and "OK", "Cancel".
// The supplier commands are installed here too.
#pragma once

#include <QDialog>

#include "customers/suppliers.h"

class QLineEdit;

namespace tilo {

class SupplierDialog : public QDialog {
  Q_OBJECT
 public:
  SupplierDialog(QWidget* parent, const SupplierForm& form);
  // The box under `label` ("Number", "Zip / Post"...).
  QLineEdit* edit(const QString& label) const;
  // The record shown, with what was typed in it.
  MansRecord collected() const;

 private:
  MansRecord record_;
};

// Find, Add, Amend and Delete of the Suppliers menu, and the form behind them.
void InstallSupplierHandlers();

}  // namespace tilo
