// SPDX-License-Identifier: MIT
// The forms of the finds on screen: 805 "FIND INVENTORY", 811 "Advanced
// search", the list 818 "Please select" and PICBOX "Item description search"
// here; 804 "FIND CUSTOMER" with the customer forms. They show and collect only.
#pragma once

#include <QDialog>
#include <QStringList>

class QLineEdit;
class QListWidget;
class QPushButton;
class QRadioButton;
class QCheckBox;

namespace tilo {

// A box that folds what is typed to upper case, up to `limit` characters.
QLineEdit* UpperCaseBox(QWidget* parent, int limit);

// A form of label and read-only value rows with "OK", "Cancel" and "Next": the
// one-record page of the name finds (805, 804). exec() gives 1 for OK, 0 for
// Cancel, 2 for Next.
class FindRecordForm : public QDialog {
  Q_OBJECT
 public:
  FindRecordForm(QWidget* parent, const QString& title, const QList<QPair<QString, QString>>& rows);
  QPushButton* ok() const { return ok_; }
  QPushButton* next() const { return next_; }

 private:
  QPushButton* ok_;
  QPushButton* next_;
};

class AdvancedSearchForm : public QDialog {
  Q_OBJECT
 public:
  explicit AdvancedSearchForm(QWidget* parent);
  QLineEdit* box(int i) const { return boxes_[i]; }  // 0 Description, 1-4 SKU
  QRadioButton* all() const { return all_; }

 private:
  QLineEdit* boxes_[5];
  QRadioButton* all_;
};

class SelectListForm : public QDialog {
  Q_OBJECT
 public:
  SelectListForm(QWidget* parent, const QStringList& rows);
  QListWidget* list() const { return list_; }

 private:
  QListWidget* list_;
};

class PicboxForm : public QDialog {
  Q_OBJECT
 public:
  PicboxForm(QWidget* parent, bool within);
  QLineEdit* text() const { return text_; }
  QRadioButton* within() const { return within_; }
  QCheckBox* keep() const { return keep_; }

 private:
  QLineEdit* text_;
  QRadioButton* within_;
  QCheckBox* keep_;
};

// Puts the forms behind the finds.
void InstallFindForms();

}  // namespace tilo
