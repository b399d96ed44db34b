// SPDX-License-Identifier: MIT
#include "documents/ui/font_size_form.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSlider>
#include <QVBoxLayout>

#include "core/state.h"
#include "documents/print_job.h"

namespace tilo {

FontSizeForm::FontSizeForm(QWidget* parent, std::optional<int64_t> highest)
    : QDialog(parent), with_range_(highest.has_value()) {
  setObjectName(with_range_ ? "PS2" : "PS");
  setWindowTitle(with_range_ ? "Print" : "Printer font size");
  auto* layout = new QVBoxLayout(this);
  if (with_range_) {
    auto* range = new QFormLayout;
    from_ = new QLineEdit("1", this);
    from_->setObjectName("from");
    from_->setMaxLength(20);
    to_ = new QLineEdit(QString::number(*highest), this);
    to_->setObjectName("to");
    to_->setMaxLength(20);
    range->addRow("From", from_);
    range->addRow("To", to_);
    layout->addLayout(range);
  }
  const int64_t size = G().settings.list_font_size;
  auto* row = new QHBoxLayout;
  row->addWidget(new QLabel("Large", this));
  slider_ = new QSlider(Qt::Horizontal, this);
  slider_->setObjectName("size");
  slider_->setRange(10, 200);
  if (size != 0) slider_->setValue(int(std::clamp<int64_t>(size, 10, 200)));
  row->addWidget(slider_, 1);
  row->addWidget(new QLabel("Tiny", this));
  layout->addLayout(row);
  default_ = new QCheckBox("Use the printer default", this);
  default_->setObjectName("printerDefault");
  default_->setChecked(size == 0);
  layout->addWidget(default_);
  auto* note = new QLabel(
      "To use the slider value uncheck the 'Use the printer default'. Check it to reset to "
      "default.",
      this);
  note->setWordWrap(true);
  layout->addWidget(note);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  layout->addWidget(buttons);
}

void FontSizeForm::accept() {
  // "Printer font size" leaves out the five-fourths of the width: its font is
  // narrower than the same size gives at the next start.
  Setlistfontsize(default_->isChecked() ? 0 : slider_->value(), !with_range_);
  QDialog::accept();
}

void Listingfontsize(QWidget* parent) {
  FontSizeForm form(parent);
  form.exec();
}

std::optional<std::pair<std::string, std::string>> Printrange(QWidget* parent, int64_t highest) {
  FontSizeForm form(parent, highest);
  if (form.exec() != QDialog::Accepted) return std::nullopt;
  return std::make_pair(form.from()->text().toStdString(), form.to()->text().toStdString());
}

}  // namespace tilo
