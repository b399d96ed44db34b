// SPDX-License-Identifier: MIT
// The inventory forms: 800 (add and amend an item, with the ready reckoner),
// the view 801, the bundle form and its view, and 808 (receive goods). They show
// a record and collect what was typed; the rules are in inventory/items.h.
#pragma once

#include <QDialog>
#include <array>
#include <functional>
#include <map>

#include "inventory/items.h"
#include "inventory/pictures.h"

class QCheckBox;
class QComboBox;
class QDateEdit;
class QGridLayout;
class QLabel;
class QLineEdit;
class QPushButton;

namespace tilo {

// Form 800.
class ItemDialog : public QDialog {
  Q_OBJECT
 public:
  ItemDialog(QWidget* parent, const ItemForm& form);

  // The edit, list or tick under a label of the form ("Number", "Tax code"...).
  QLineEdit* edit(const QString& label) const { return edits_.at(label); }
  QComboBox* list(const QString& label) const { return lists_.at(label); }
  QCheckBox* tick(const QString& label) const { return ticks_.at(label); }
  QDateEdit* dateAdded() const { return date_; }
  QLineEdit* grossPrice() const { return gross_; }
  QLineEdit* netPrice() const { return net_; }
  QCheckBox* reckonerTax1() const { return tax1_; }
  QCheckBox* reckonerTax2() const { return tax2_; }
  // The item's picture, 48 by 48: the picture subsystem draws into it.
  QLabel* picture() const { return picture_; }
  QPushButton* button(const QString& text) const { return buttons_.at(text); }

  ItemButton pressed() const { return pressed_; }
  // The record with what the form holds.
  FilmRecord collected() const;

 private:
  QLineEdit* AddEdit(const QString& label, int limit, bool upper, bool required = false);
  QComboBox* AddList(const QString& label, const QStringList& rows);
  QCheckBox* AddTick(const QString& label);
  void Show(const FilmRecord& r);
  void Reckon();
  void Press(ItemButton button);

  ItemForm form_;
  std::map<QString, QLineEdit*> edits_;
  std::map<QString, QComboBox*> lists_;
  std::map<QString, QCheckBox*> ticks_;
  std::map<QString, QPushButton*> buttons_;
  QDateEdit* date_ = nullptr;
  QLineEdit* gross_ = nullptr;
  QLineEdit* net_ = nullptr;
  QCheckBox* tax1_ = nullptr;
  QCheckBox* tax2_ = nullptr;
  QLabel* picture_ = nullptr;
  QGridLayout* grid_ = nullptr;
  int row_ = 0;
  ItemButton pressed_ = ItemButton::Cancel;
  PictureChoice picture_choice_;
};

// View 801 and BUNDLE1: label and text lines, read-only.
class ItemViewDialog : public QDialog {
  Q_OBJECT
 public:
  ItemViewDialog(QWidget* parent, const QString& title, const std::vector<ViewLine>& lines,
                 bool with_next);
  bool nextPressed() const { return next_; }

 private:
  bool next_ = false;
};

// Form BUNDLE.
class BundleDialog : public QDialog {
  Q_OBJECT
 public:
  BundleDialog(QWidget* parent, const BundleForm& form);

  QLineEdit* edit(const QString& label) const { return edits_.at(label); }
  QLineEdit* component(int row) const { return rows_[size_t(row)].number; }
  QLabel* componentText(int row) const { return rows_[size_t(row)].text; }
  QPushButton* select(int row) const { return rows_[size_t(row)].select; }
  QPushButton* remove(int row) const { return rows_[size_t(row)].remove; }
  QComboBox* quantity(int row) const { return rows_[size_t(row)].quantity; }
  QCheckBox* free(int row) const { return rows_[size_t(row)].free; }
  QComboBox* category() const { return category_; }
  const BundleForm& form() const { return form_; }
  // What the form holds, into form().record.
  void Collect();

 private:
  struct Row {
    QLineEdit* number;
    QLabel* text;
    QPushButton* select;
    QPushButton* remove;
    QComboBox* quantity;
    QCheckBox* free;
  };
  void ShowRow(int row);

  BundleForm form_;
  std::map<QString, QLineEdit*> edits_;
  std::array<Row, 6> rows_{};
  QComboBox* category_ = nullptr;
  QDateEdit* date_ = nullptr;
};

// Form 808, "Receive Inventory".
class ReceiveDialog : public QDialog {
  Q_OBJECT
 public:
  ReceiveDialog(QWidget* parent, const ReceiveForm& form);

  QLineEdit* quantity() const { return quantity_; }
  QLineEdit* updatedTotal() const { return total_; }
  QComboBox* sellBy(int which) const { return sell_by_[size_t(which)]; }
  ReceiveButton pressed() const { return pressed_; }
  // The quantity typed and the sell-by lists, into `form`.
  void Collect(ReceiveForm& form) const;

 private:
  QLineEdit* quantity_;
  QLineEdit* total_;
  std::array<QComboBox*, 3> sell_by_{};
  ReceiveButton pressed_ = ReceiveButton::Cancel;
};

// Draws an item's picture into the 48 by 48 box of form 800 (the item's own
// file or its stock picture); the pictures subsystem installs it. Until then the
// box stays empty.
using ItemPictureDrawer = std::function<void(QLabel* box, const FilmRecord& record)>;
void SetItemPictureDrawer(ItemPictureDrawer drawer);

// The Qt forms behind the inventory commands, and the commands themselves.
void InstallInventoryHandlers();

}  // namespace tilo
