// SPDX-License-Identifier: MIT
#include "documents/ui/mailmerge_form.h"

#include <QApplication>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QTextCursor>
#include <QVBoxLayout>
#include <algorithm>

namespace tilo {
namespace {

QString Q(const std::string& s) {
  return QString::fromStdString(s);
}

class QtMailmergeView : public MailmergeView {
 public:
  bool edit(MergeEntries& entries) override {
    MailmergeForm form(QApplication::activeWindow(), entries);
    if (form.exec() != QDialog::Accepted) return false;
    entries = form.entries();
    return true;
  }
};
QtMailmergeView qt_view;

}  // namespace

MailmergeForm::MailmergeForm(QWidget* parent, const MergeEntries& e) : QDialog(parent) {
  setObjectName("BODYEDIT");
  setWindowTitle("Mailmerge");
  auto* layout = new QVBoxLayout(this);
  auto* group = new QGroupBox("Type text to go between 'Dear .. Yours sincerely'", this);
  auto* inside = new QVBoxLayout(group);
  auto* range = new QFormLayout;
  start_ = new QLineEdit(Q(e.start), group);
  start_->setObjectName("start");
  start_->setMaxLength(19);
  end_ = new QLineEdit(Q(e.end), group);
  end_->setObjectName("end");
  end_->setMaxLength(19);
  range->addRow("Start customer", start_);
  range->addRow("End customer", end_);
  inside->addLayout(range);
  text_ = new QPlainTextEdit(Q(e.text), group);
  text_->setObjectName("text");
  text_->setMinimumSize(480, 220);
  text_->setTabChangesFocus(true);
  accepted_text_ = text_->toPlainText();
  connect(text_, &QPlainTextEdit::textChanged, this, &MailmergeForm::limitText);
  inside->addWidget(text_);
  auto* choice = new QHBoxLayout;
  all_ = new QRadioButton("All", group);
  owe_ = new QRadioButton("Owe money", group);
  inactive_ = new QRadioButton("Not active this year", group);
  all_->setChecked(e.selection == MergeSelection::All);
  owe_->setChecked(e.selection == MergeSelection::OweMoney);
  inactive_->setChecked(e.selection == MergeSelection::NotActive);
  choice->addWidget(all_);
  choice->addWidget(owe_);
  choice->addWidget(inactive_);
  inside->addLayout(choice);
  layout->addWidget(group);

  auto* buttons = new QHBoxLayout;
  auto* load = new QPushButton("Load", this);
  auto* save = new QPushButton("Save", this);
  auto* ok = new QPushButton("OK", this);
  auto* cancel = new QPushButton("Cancel", this);
  ok->setDefault(true);
  buttons->addWidget(load);
  buttons->addWidget(save);
  buttons->addStretch(1);
  buttons->addWidget(ok);
  buttons->addWidget(cancel);
  layout->addLayout(buttons);
  connect(load, &QPushButton::clicked, this, [this] {
    if (auto text = Loadmergetext()) {
      accepted_text_ = Q(*text);
      text_->setPlainText(accepted_text_);
    }
  });
  connect(save, &QPushButton::clicked, this,
          [this] { Savemergetext(text_->toPlainText().toStdString()); });
  connect(ok, &QPushButton::clicked, this, &QDialog::accept);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

// Typing stops at the buffer's size; a loaded text, already in, stays whole.
void MailmergeForm::limitText() {
  const QString now = text_->toPlainText();
  const size_t stored = MergeTextStored(now.toStdString()).size();
  if (stored > kMergeTextLimit && stored > MergeTextStored(accepted_text_.toStdString()).size()) {
    QSignalBlocker quiet(text_);
    const int cursor =
        std::max(0, text_->textCursor().position() - int(now.size() - accepted_text_.size()));
    text_->setPlainText(accepted_text_);
    QTextCursor c = text_->textCursor();
    c.setPosition(std::min(cursor, int(accepted_text_.size())));
    text_->setTextCursor(c);
    return;
  }
  accepted_text_ = now;
}

MergeEntries MailmergeForm::entries() const {
  MergeEntries e;
  e.start = start_->text().toStdString();
  e.end = end_->text().toStdString();
  e.text = text_->toPlainText().toStdString();
  e.selection = owe_->isChecked()        ? MergeSelection::OweMoney
                : inactive_->isChecked() ? MergeSelection::NotActive
                                         : MergeSelection::All;
  return e;
}

void InstallMailmergeHandlers() {
  install_mailmerge_view(&qt_view);
  InstallMailmergeCommand();
}

}  // namespace tilo
