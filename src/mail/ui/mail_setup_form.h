// SPDX-License-Identifier: MIT
// The form "Email target": the shop's mail server, where reports go, the shop's
// own address, and the secure submission a provider may demand.
#pragma once

#include <QDialog>

#include "mail/mail_settings.h"

class QCheckBox;
class QLineEdit;

namespace tilo {

class MailSetupForm : public QDialog {
  Q_OBJECT
 public:
  MailSetupForm(const MailSetup& setup, QWidget* parent = nullptr);
  // What the fields say now, as stored (Windows-1252).
  MailSetup setup() const;

  QLineEdit* server() const { return server_; }
  QLineEdit* target() const { return target_; }
  QLineEdit* yours() const { return yours_; }
  QCheckBox* secure() const { return secure_; }
  QLineEdit* port() const { return port_; }
  QLineEdit* user() const { return user_; }
  QLineEdit* password() const { return password_; }

 private:
  void showSecure(bool on);

  QLineEdit* server_;
  QLineEdit* target_;
  QLineEdit* yours_;
  QCheckBox* secure_;
  QLineEdit* port_;
  QLineEdit* user_;
  QLineEdit* password_;
};

// Installs the form and the work of the mail commands.
void InstallMailHandlers();

}  // namespace tilo
