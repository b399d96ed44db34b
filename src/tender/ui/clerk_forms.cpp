// SPDX-License-Identifier: MIT
#include "tender/ui/clerk_forms.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QVBoxLayout>

#include "core/text.h"
#include "sale/screen.h"

namespace tilo {
namespace {

QPointer<LogonDialog>& open_logon() {
  static QPointer<LogonDialog> form;
  return form;
}

QString FromRecord(const std::string& bytes) {
  return QString::fromStdString(Cp1252ToUtf8(bytes));
}

// An edit that takes digits only and shows stars.
QLineEdit* PasswordBox(QWidget* parent, int length) {
  auto* box = new QLineEdit(parent);
  box->setEchoMode(QLineEdit::Password);
  box->setMaxLength(length);
  box->setValidator(new QRegularExpressionValidator(QRegularExpression("[0-9]*"), box));
  return box;
}

// The OK and Cancel row at the foot of a form: OK is the default button and
// Cancel rejects the form; OK is left for the form to connect.
QHBoxLayout* OkCancelRow(QDialog* form, QPushButton*& ok) {
  auto* row = new QHBoxLayout;
  ok = new QPushButton("OK", form);
  ok->setDefault(true);
  auto* cancel = new QPushButton("Cancel", form);
  row->addStretch(1);
  row->addWidget(ok);
  row->addWidget(cancel);
  QObject::connect(cancel, &QPushButton::clicked, form, &QDialog::reject);
  return row;
}

void CentreOver(QWidget* form, QWidget* main_window) {
  form->adjustSize();
  if (!main_window) return;
  const QRect m = main_window->frameGeometry();
  form->move(m.x() + (m.width() - form->width()) / 2, m.y() + (m.height() - form->height()) / 2);
}

}  // namespace

LogonDialog::LogonDialog(QWidget* main_window)
    : QDialog(main_window, Qt::Dialog | Qt::FramelessWindowHint) {
  setObjectName("PASBOX");
  // No title bar is shown; the name only tells the window apart.
  setWindowTitle("USER LOGON");
  setWindowModality(Qt::ApplicationModal);
  setStyleSheet("#PASBOX { border: 2px solid #44546a; }");

  auto* layout = new QVBoxLayout(this);
  auto* heading = new QLabel("USER LOGON", this);
  heading->setObjectName("heading");
  heading->setAlignment(Qt::AlignCenter);
  QFont bold = heading->font();
  bold.setBold(true);
  bold.setPointSize(bold.pointSize() + 4);
  heading->setFont(bold);
  layout->addWidget(heading);
  layout->addWidget(new QLabel("Enter password", this), 0, Qt::AlignHCenter);

  auto* clerk_row = new QHBoxLayout;
  clerk_ = new QLineEdit(this);
  clerk_->setObjectName("clerk");
  clerk_->setReadOnly(true);
  clerk_->setFocusPolicy(Qt::NoFocus);
  clerk_->setMinimumWidth(220);
  up_ = new QPushButton("Up", this);
  down_ = new QPushButton("Down", this);
  for (QPushButton* b : {up_, down_}) b->setAutoDefault(false);
  clerk_row->addWidget(clerk_, 1);
  clerk_row->addWidget(up_);
  clerk_row->addWidget(down_);
  layout->addLayout(clerk_row);

  layout->addWidget(new QLabel("Password (numeric)", this));
  password_ = PasswordBox(this, kPasswordBoxLength);
  password_->setObjectName("password");
  layout->addWidget(password_);

  auto* pad = new QGridLayout;
  const char* names[12] = {"1", "2", "3", "4", "5", "6", "7", "8", "9", "C", "0", "CE"};
  for (int i = 0; i < 12; ++i) {
    auto* b = new QPushButton(names[i], this);
    b->setObjectName(QString("key") + names[i]);
    b->setAutoDefault(false);
    b->setFocusPolicy(Qt::NoFocus);
    b->setMinimumSize(56, 40);
    pad->addWidget(b, i / 3, i % 3);
    const QString key = names[i];
    connect(b, &QPushButton::clicked, this, [this, key] { Key(key); });
    keys_[i] = b;
  }
  layout->addLayout(pad);
  ok_ = new QPushButton("OK", this);
  ok_->setObjectName("ok");
  ok_->setDefault(true);
  layout->addWidget(ok_);

  connect(up_, &QPushButton::clicked, this, [this] {
    Steplogon(form_, +1);
    Show();
  });
  connect(down_, &QPushButton::clicked, this, [this] {
    Steplogon(form_, -1);
    Show();
  });
  connect(password_, &QLineEdit::textEdited, this,
          [this](const QString& text) { form_.password = text.toStdString(); });
  connect(ok_, &QPushButton::clicked, this, &LogonDialog::Ok);

  form_ = Openlogon();
  Show();
  CentreOver(this, main_window);
  password_->setFocus();
}

QPushButton* LogonDialog::key(const QString& name) const {
  for (QPushButton* b : keys_)
    if (b->text() == name) return b;
  return nullptr;
}

void LogonDialog::closeEvent(QCloseEvent* event) {
  // The operator can't close the form: only a valid password does. The program
  // itself may, when it ends.
  if (result() != Accepted && event->spontaneous()) event->ignore();
}

void LogonDialog::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down) {
    Steplogon(form_, event->key() == Qt::Key_Up ? +1 : -1);
    Show();
    return;
  }
  QDialog::keyPressEvent(event);
}

void LogonDialog::Show() {
  clerk_->setText(FromRecord(Logonline(form_)));
  password_->setText(QString::fromStdString(form_.password));
}

void LogonDialog::Key(const QString& key) {
  Logonkey(form_, key.toStdString());
  Show();
  password_->setFocus();
}

void LogonDialog::Ok() {
  form_.password = password_->text().toStdString();
  if (!Acceptlogon(form_)) {
    // Silently back to the start: the first clerk, nothing typed.
    Show();
    password_->setFocus();
    return;
  }
  accept();
  // Back to the sale: the main window and its item box.
  if (QWidget* main_window = parentWidget()) main_window->activateWindow();
  screen_view().focus_item_box();
}

void Openlogon(QWidget* main_window) {
  if (open_logon()) return;
  screen_view().set_title("TILO Retail");
  auto* form = new LogonDialog(main_window);
  form->setAttribute(Qt::WA_DeleteOnClose);
  open_logon() = form;
  form->open();
  form->raise();
  form->activateWindow();
  form->password()->setFocus();
}

LogonDialog* Openlogonform() {
  return open_logon();
}

ClerkDialog::ClerkDialog(QWidget* parent, int clerk)
    : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint), clerk_(clerk) {
  setObjectName("PASBO2");
  setWindowTitle("Clerk");
  setStyleSheet("#PASBO2 { border: 2px solid #44546a; }");
  const ClerkForm form = Openclerkform(clerk);

  auto* layout = new QGridLayout(this);
  auto* user = new QLineEdit(QString("User: %1").arg(clerk), this);
  user->setReadOnly(true);
  user->setFocusPolicy(Qt::NoFocus);
  layout->addWidget(user, 0, 0, 1, 2);
  layout->addWidget(new QLabel("Name (29 characters)", this), 1, 0);
  name_ = new QLineEdit(FromRecord(form.name), this);
  name_->setObjectName("name");
  // The box gives back 28 characters at most.
  name_->setMaxLength(kClerkNameBox);
  layout->addWidget(name_, 1, 1);
  available_ = new QCheckBox("Available", this);
  available_->setObjectName("available");
  available_->setChecked(form.available);
  available_->setEnabled(Mayhideclerk(clerk));
  layout->addWidget(available_, 2, 1);
  layout->addWidget(new QLabel(" Password", this), 3, 0);
  password_ = PasswordBox(this, kPasswordBoxLength);
  password_->setObjectName("password");
  layout->addWidget(password_, 3, 1);
  layout->addWidget(new QLabel(" Re-enter password", this), 4, 0);
  again_ = PasswordBox(this, kPasswordBoxLength);
  again_->setObjectName("passwordAgain");
  layout->addWidget(again_, 4, 1);
  layout->addWidget(new QLabel("Passwords must be numeric upto 8 characters", this), 5, 0, 1, 2);
  layout->addWidget(
      new QLabel("The password is not updated if the Available box is unchecked.", this), 6, 0, 1,
      2);
  layout->addLayout(OkCancelRow(this, ok_), 7, 0, 1, 2);
  connect(ok_, &QPushButton::clicked, this, &ClerkDialog::Ok);
  CentreOver(this, parent);
}

void ClerkDialog::Ok() {
  ClerkForm form;
  form.clerk = clerk_;
  form.name = Utf8ToCp1252(name_->text().left(kClerkNameBox).toStdString());
  form.available = available_->isChecked();
  form.password = password_->text().toStdString();
  form.password_again = again_->text().toStdString();
  if (Acceptclerkform(form)) accept();
}

RightsDialog::RightsDialog(QWidget* parent) : QDialog(parent) {
  setObjectName("813");
  setWindowTitle("PASSWORD CONTROL");
  auto* layout = new QVBoxLayout(this);
  auto* grid = new QGridLayout;
  const int per_column = (kRights + 1) / 2;
  for (int r = 0; r < kRights; ++r) {
    ticks_[r] = new QCheckBox(Rightlabel(r), this);
    ticks_[r]->setObjectName(QString("right%1").arg(r));
    grid->addWidget(ticks_[r], r % per_column, r / per_column);
  }
  all_ = new QCheckBox("All", this);
  all_->setObjectName("all");
  grid->addWidget(all_, per_column, 1);
  layout->addLayout(grid);
  auto* note = new QLabel(
      "The selected items are not available to users other than 1 Administrator or 2 Manager. "
      "The F9 key is used by an operator to log off.",
      this);
  note->setWordWrap(true);
  layout->addWidget(note);
  layout->addLayout(OkCancelRow(this, ok_));

  connect(all_, &QCheckBox::clicked, this, [this](bool checked) {
    for (int r = 0; r < kRights; ++r) form_[r] = ticks_[r]->isChecked();
    Tickallrights(form_, checked);
    Show();
  });
  connect(ok_, &QPushButton::clicked, this, &RightsDialog::Ok);
  form_ = Openrightsform();
  Show();
}

void RightsDialog::Show() {
  for (int r = 0; r < kRights; ++r) ticks_[r]->setChecked(form_[r]);
}

void RightsDialog::Ok() {
  for (int r = 0; r < kRights; ++r) form_[r] = ticks_[r]->isChecked();
  Acceptrightsform(form_);
  accept();
}

}  // namespace tilo
