// SPDX-License-Identifier: MIT
#include "documents/ui/store_heading_form.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace tilo {
namespace {

class QtHeadingView : public HeadingView {
 public:
  bool edit(HeadingEntries& entries) override {
    StoreHeadingForm form(QApplication::activeWindow(), entries);
    if (form.exec() != QDialog::Accepted) return false;
    entries = form.entries();
    return true;
  }
};
QtHeadingView qt_view;

}  // namespace

StoreHeadingForm::StoreHeadingForm(QWidget* parent, const HeadingEntries& e) : QDialog(parent) {
  setObjectName("SITE");
  setWindowTitle("Print heading");
  auto* layout = new QVBoxLayout(this);
  auto* form = new QFormLayout;
  const char* const labels[] = {"Site name",      "Road",           "Area",
                                "State / County", "Zip / Postcode", "Telephone"};
  for (size_t i = 0; i < boxes_.size(); ++i) {
    boxes_[i] = new QLineEdit(QString::fromStdString(e[i]), this);
    boxes_[i]->setMaxLength(int(kHeadingLineLimit));
    boxes_[i]->setMinimumWidth(320);
    form->addRow(labels[i], boxes_[i]);
  }
  layout->addLayout(form);
  layout->addWidget(new QLabel("Each line may contain 40 characters", this));
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  layout->addWidget(buttons);
}

HeadingEntries StoreHeadingForm::entries() const {
  HeadingEntries e;
  for (size_t i = 0; i < boxes_.size(); ++i) e[i] = boxes_[i]->text().toStdString();
  return e;
}

void InstallStoreHeadingForm() {
  install_heading_view(&qt_view);
  InstallStoreHeadingCommand();
}

}  // namespace tilo
