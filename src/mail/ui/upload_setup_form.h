// SPDX-License-Identifier: MIT
// The form "Upload configuration": the head office's FTP server and log-in, and
// for each of the three reports a tick and the name it is uploaded under.
#pragma once

#include <QDialog>

#include "mail/upload_commands.h"

class QCheckBox;
class QLineEdit;

namespace tilo {

class UploadSetupForm : public QDialog {
  Q_OBJECT
 public:
  UploadSetupForm(const UploadForm& form, QWidget* parent = nullptr);
  // What the fields say now, as stored (Windows-1252).
  UploadForm form() const;

  QLineEdit* server() const { return server_; }
  QLineEdit* username() const { return username_; }
  QLineEdit* password() const { return password_; }
  QCheckBox* tick(UploadFile f) const { return ticks_[int(f)]; }
  QLineEdit* filename(UploadFile f) const { return names_[int(f)]; }

 private:
  QLineEdit* server_;
  QLineEdit* username_;
  QLineEdit* password_;
  QCheckBox* ticks_[3];
  QLineEdit* names_[3];
};

// Installs the form, the window title the upload shows, and the commands.
void InstallUploadHandlers();

}  // namespace tilo
