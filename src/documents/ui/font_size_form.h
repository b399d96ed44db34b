// SPDX-License-Identifier: MIT
// The listing font's size boxes: "Printer font size" (the command "Listing font
// size") and "Print", which asks a listing's range of numbers as well.
#pragma once

#include <QDialog>
#include <optional>
#include <string>
#include <utility>

class QCheckBox;
class QLineEdit;
class QSlider;

namespace tilo {

class FontSizeForm : public QDialog {
  Q_OBJECT
 public:
  // With `highest` the box is "Print" with its "From" and "To" fields, "To"
  // starting at the highest number of the file in question.
  explicit FontSizeForm(QWidget* parent = nullptr, std::optional<int64_t> highest = {});

  QSlider* slider() const { return slider_; }
  QCheckBox* printerDefault() const { return default_; }
  QLineEdit* from() const { return from_; }
  QLineEdit* to() const { return to_; }

  void accept() override;

 private:
  bool with_range_;
  QSlider* slider_;
  QCheckBox* default_;
  QLineEdit* from_ = nullptr;
  QLineEdit* to_ = nullptr;
};

// The command "Listing font size".
void Listingfontsize(QWidget* parent);
// "Print" for a listing: the "From" and "To" texts as typed, for the caller to
// check; nullopt when cancelled, and the caller then prints nothing.
std::optional<std::pair<std::string, std::string>> Printrange(QWidget* parent, int64_t highest);

}  // namespace tilo
