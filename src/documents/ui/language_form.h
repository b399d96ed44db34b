// SPDX-License-Identifier: MIT
// "Language customization": the receipt and invoice wording, each text beside
// the built-in one of the chosen language.
#pragma once

#include <QDialog>
#include <array>

#include "documents/wording.h"

class QComboBox;
class QLineEdit;

namespace tilo {

class LanguageForm : public QDialog {
  Q_OBJECT
 public:
  explicit LanguageForm(QWidget* parent = nullptr);

  QComboBox* languageList() const { return language_; }
  // The built-in (left) and in-use (right) fields of slot 1 to 35.
  QLineEdit* defaultField(int slot) const { return defaults_[slot]; }
  QLineEdit* textField(int slot) const { return texts_[slot]; }

  void accept() override;

 private:
  void Show();
  void Choose(int selection);

  WordingForm form_;
  QComboBox* language_;
  std::array<QLineEdit*, kWordingSlots> defaults_{};
  std::array<QLineEdit*, kWordingSlots> texts_{};
};

// The command "Customize language": the form, modal.
void Customizelanguage(QWidget* parent);

}  // namespace tilo
