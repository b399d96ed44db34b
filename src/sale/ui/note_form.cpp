// SPDX-License-Identifier: MIT
#include "sale/ui/note_form.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "sale/commands.h"
#include "sale/parked_basket.h"

namespace tilo {

NoteDialog::NoteDialog(QWidget* parent, const QString& note) : QDialog(parent) {
  setObjectName("noteForm");
  setWindowTitle("Add transaction note");
  auto* layout = new QVBoxLayout(this);
  text_ = new QLineEdit(note, this);
  text_->setObjectName("note");
  text_->setMaxLength(kNoteLength);
  text_->setMinimumWidth(text_->fontMetrics().averageCharWidth() * 60);
  layout->addWidget(text_);
  auto* advice = new QLabel(
      "The note must be added before the payment method is selected. 80 character limit. It can "
      "feature on the custom receipt and invoice (Utilities, Custom receipt) .",
      this);
  advice->setWordWrap(true);
  layout->addWidget(advice);
  auto* buttons = new QDialogButtonBox(this);
  buttons->addButton("OK", QDialogButtonBox::AcceptRole)->setDefault(true);
  buttons->addButton("Cancel", QDialogButtonBox::RejectRole);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  layout->addWidget(buttons);
  text_->setFocus();
}

namespace {

class QtNoteView : public NoteView {
 public:
  std::optional<std::string> add_note(const std::string& note) override {
    NoteDialog dialog(QApplication::activeWindow(), QString::fromStdString(note));
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return dialog.text()->text().toStdString();
  }
};
QtNoteView qt_view;

}  // namespace

void InstallParkedBasketHandlers() {
  install_note_view(&qt_view);
  SetHandler(Command::SaveBasket, [](int) { Savebasket(); });
  SetHandler(Command::ReloadBasket, [](int) { Reloadbasket(); });
  SetHandler(Command::AddNote, [](int) { Addnote(); });
}

}  // namespace tilo
