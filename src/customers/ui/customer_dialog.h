// SPDX-License-Identifier: MIT
// Form 802, the customer's card ("NEW CUSTOMER", "Amend customer"), and in its
// read-only layout view 803 ("CUSTOMER"). It shows the boxes and gives back what
// was typed; the checks are the logic's.
#pragma once

#include <QDialog>
#include <array>

#include "customers/customer_maintenance.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace tilo {

class CustomerDialog : public QDialog {
  Q_OBJECT
 public:
  CustomerDialog(QWidget* parent, CustomerLayout layout);

  void setEntries(const CustomerEntries& entries);
  CustomerEntries entries() const;
  // The view's own lines and the page it shows.
  void setPage(const CustomerPage& page);

  FormButton pressed() const { return pressed_; }
  QWidget* box(CustomerBox b) const { return boxes_[b]; }
  QPushButton* okButton() const { return ok_; }
  QPushButton* nextButton() const { return next_; }

 private:
  void Press(FormButton button);

  CustomerLayout layout_;
  std::array<QWidget*, kCustomerBoxes> boxes_{};
  std::array<QLabel*, kCustomerBoxes> labels_{};
  QLineEdit* last_used_ = nullptr;
  QLineEdit* last_payment_ = nullptr;
  QLineEdit* origination_ = nullptr;
  QLineEdit* terms_text_ = nullptr;
  QPushButton* ok_ = nullptr;
  QPushButton* next_ = nullptr;
  FormButton pressed_ = FormButton::Cancel;
};

// Installs the forms of the Customers menu and its commands.
void InstallCustomerHandlers();

}  // namespace tilo
