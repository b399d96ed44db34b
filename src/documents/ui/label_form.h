// SPDX-License-Identifier: MIT
// "Barcode print": the box that sets up a job of labels, and the command.
#pragma once

#include <QDialog>
#include <array>

#include "documents/labels.h"

class QCheckBox;
class QLineEdit;
class QRadioButton;
class QSlider;

namespace tilo {

class LabelPrintForm : public QDialog {
  Q_OBJECT
 public:
  explicit LabelPrintForm(QWidget* parent = nullptr);

  // The job's settings once the box was accepted.
  const LabelSettings& settings() const { return settings_; }

  QLineEdit* field(const char* name) const;
  QRadioButton* source(int k) const { return source_[k]; }
  QRadioButton* layout(int k) const { return layout_[k]; }
  QRadioButton* barcodeType(int k) const { return type_[k]; }

  void accept() override;

 private:
  QLineEdit* Field(const char* name, const std::string& text, int width);
  void ShowForm();
  LabelForm Typed() const;

  LabelForm form_;
  LabelSettings settings_;
  std::array<QRadioButton*, 4> source_{};
  std::array<QRadioButton*, 3> layout_{};
  std::array<QRadioButton*, 2> type_{};
  QRadioButton* with_tax_ = nullptr;
  QRadioButton* without_tax_ = nullptr;
  QCheckBox* include_price_ = nullptr;
  QCheckBox* include_store_ = nullptr;
  QCheckBox* price_below_ = nullptr;
  QSlider* slider_ = nullptr;
  QCheckBox* printer_default_ = nullptr;
};

// Installs the box and the command "Barcode print".
void InstallLabelHandlers();

}  // namespace tilo
