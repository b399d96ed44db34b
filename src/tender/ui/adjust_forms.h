// SPDX-License-Identifier: MIT
// The price change forms: "Adjust item price" and "Adjust by weight" on the
// last line, "Discount total" on the sale (modeless over the till, like the
// cash form), and "Non inventory sale" (modal). They show what tender/adjust.h
// works out on every keystroke and hand it their buttons.
#pragma once

#include <QDialog>
#include <optional>

#include "tender/adjust.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace tilo {

// What the modeless forms share: one at a time, the commands locked while it is
// up, the keypad and a refused command going to its amount box.
class PriceChangeForm : public QDialog {
  Q_OBJECT
 public:
  PriceChangeForm(QWidget* main_window, const char* name, const char* title);
  ~PriceChangeForm() override;
  void reject() override;  // Escape is "Cancel"

 protected:
  // Placed over the till once its frame is known.
  void showEvent(QShowEvent* event) override;
  // The box the keypad types into; takes the focus when the form opens.
  void setAmountBox(QLineEdit* box);
  // Destroys the form, then (`cancelled`) gives the commands back.
  void Close(bool cancelled);
  QLineEdit* amount_box_ = nullptr;

 private:
  bool closed_ = false;
  bool placed_ = false;
};

// The read-only block of the two line forms and its five figures.
class LineForm : public PriceChangeForm {
  Q_OBJECT
 public:
  LineForm(QWidget* main_window, const char* name, const char* title);

  QLineEdit* number() const { return number_; }
  QLineEdit* description() const { return description_; }
  QLineEdit* cost() const { return cost_; }
  QLineEdit* listPrice() const { return list_price_; }
  // 0 non taxable, 1 taxable, 2 tax 1, 3 tax 2, 4 total.
  QLineEdit* figure(int n) const { return figures_[n]; }

 protected:
  void showFigures();
  LineAdjust adjust_;

 private:
  QLineEdit* number_;
  QLineEdit* description_;
  QLineEdit* cost_;
  QLineEdit* list_price_;
  QLineEdit* figures_[5];
};

class AdjustPriceForm : public LineForm {
  Q_OBJECT
 public:
  explicit AdjustPriceForm(QWidget* main_window);
  QLineEdit* amended() const { return amended_; }
  QPushButton* zero() const { return zero_; }
  QPushButton* ok() const { return ok_; }

 private:
  void Typed();
  QLineEdit* amended_;
  QPushButton* zero_;
  QPushButton* ok_;
  bool refusing_ = false;
};

class AdjustWeightForm : public LineForm {
  Q_OBJECT
 public:
  explicit AdjustWeightForm(QWidget* main_window);
  QComboBox* weights() const { return weights_; }
  QLineEdit* weight() const { return weight_; }
  QLineEdit* price() const { return price_; }
  QPushButton* ok() const { return ok_; }

 private:
  QComboBox* weights_;
  QLineEdit* weight_;
  QLineEdit* price_;
  QPushButton* ok_;
};

class DiscountForm : public PriceChangeForm {
  Q_OBJECT
 public:
  explicit DiscountForm(QWidget* main_window, bool on_total);
  QLineEdit* figure(int n) const { return figures_[n]; }
  QLineEdit* discount() const { return discount_; }
  QComboBox* percent() const { return percent_; }
  QLineEdit* amended() const { return amended_; }
  QPushButton* ok() const { return ok_; }

 private:
  DiscountAdjust state_;
  QLineEdit* figures_[5];
  QLineEdit* discount_;
  QComboBox* percent_;
  QLineEdit* amended_;
  QPushButton* ok_;
};

class NonInventoryForm : public QDialog {
  Q_OBJECT
 public:
  explicit NonInventoryForm(QWidget* main_window);
  QLineEdit* description() const { return description_; }
  QLineEdit* price() const { return price_; }
  QCheckBox* tax(int n) const { return n == 1 ? tax1_ : tax2_; }
  // 0 nett, 1 tax 1, 2 tax 2, 3 total.
  QLineEdit* figure(int n) const { return figures_[n]; }
  QPushButton* add() const { return add_; }
  // The line "Add" made.
  const std::optional<BasketLine>& line() const { return line_; }

 private:
  void Key(const QString& key);
  void Recalculate();
  void Add();
  QLineEdit* description_;
  QLineEdit* price_;
  QLineEdit* last_box_;
  QCheckBox* tax1_;
  QCheckBox* tax2_;
  QLineEdit* figures_[4];
  QPushButton* add_;
  std::optional<BasketLine> line_;
};

// Installs the four commands and the forms behind them.
void InstallAdjustHandlers();

}  // namespace tilo
