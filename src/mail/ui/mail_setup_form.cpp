// SPDX-License-Identifier: MIT
#include "mail/ui/mail_setup_form.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "core/text.h"
#include "mail/mail_commands.h"

namespace tilo {
namespace {

// Each text is kept in 80 bytes with its terminating zero.
constexpr int kLongest = 79;

QLineEdit* Field(QWidget* parent, const char* name, const std::string& text) {
  auto* edit = new QLineEdit(QString::fromStdString(Cp1252ToUtf8(text)), parent);
  edit->setObjectName(name);
  edit->setMaxLength(kLongest);
  return edit;
}

std::string Stored(const QLineEdit* edit) {
  return Utf8ToCp1252(edit->text().trimmed().toStdString());
}

QWidget* Window() {
  for (QWidget* w : QApplication::topLevelWidgets())
    if (w->objectName() == "mainWindow") return w;
  return nullptr;
}

}  // namespace

MailSetupForm::MailSetupForm(const MailSetup& setup, QWidget* parent) : QDialog(parent) {
  setObjectName("SMTP");
  setWindowTitle("Email target");
  auto* layout = new QVBoxLayout(this);
  auto* fields = new QFormLayout;
  server_ = Field(this, "smtpServer", setup.smtp_server);
  target_ = Field(this, "targetEmail", setup.target_email);
  yours_ = Field(this, "yourEmail", setup.your_email);
  fields->addRow("SMTP server", server_);
  fields->addRow("Target email", target_);
  fields->addRow("Your email", yours_);
  layout->addLayout(fields);
  auto* note = new QLabel(
      "The SMTP server is the name of the mail server of your internet provider, e.g. "
      "mail.example.net. The target email is the address the reports are sent to.",
      this);
  note->setWordWrap(true);
  layout->addWidget(note);

  secure_ = new QCheckBox("Secure submission (encrypted, with log-in)", this);
  secure_->setObjectName("secure");
  secure_->setChecked(setup.secure);
  layout->addWidget(secure_);
  auto* secure_fields = new QFormLayout;
  port_ = Field(this, "port", setup.port != 0 ? std::to_string(setup.port) : std::string());
  port_->setValidator(new QIntValidator(0, 65535, port_));
  port_->setPlaceholderText("25");
  user_ = Field(this, "user", setup.user);
  password_ = Field(this, "password", setup.password);
  password_->setEchoMode(QLineEdit::Password);
  secure_fields->addRow("Port", port_);
  secure_fields->addRow("User name", user_);
  secure_fields->addRow("Password", password_);
  layout->addLayout(secure_fields);
  connect(secure_, &QCheckBox::toggled, this, &MailSetupForm::showSecure);
  showSecure(setup.secure);

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  layout->addWidget(buttons);
}

// The port counts for both ways of sending; the log-in only for secure submission.
void MailSetupForm::showSecure(bool on) {
  user_->setEnabled(on);
  password_->setEnabled(on);
}

MailSetup MailSetupForm::setup() const {
  MailSetup s;
  s.smtp_server = Stored(server_);
  s.target_email = Stored(target_);
  s.your_email = Stored(yours_);
  s.secure = secure_->isChecked();
  s.port = port_->text().toInt();
  s.user = Stored(user_);
  // A password may begin or end with a space.
  s.password = Utf8ToCp1252(password_->text().toStdString());
  return s;
}

void InstallMailHandlers() {
  SetMailSetupForm([](MailSetup& setup) {
    MailSetupForm form(setup, Window());
    if (form.exec() != QDialog::Accepted) return false;
    setup = form.setup();
    return true;
  });
  InstallMailCommands();
}

}  // namespace tilo
