// SPDX-License-Identifier: MIT
#include "mail/ui/upload_setup_form.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "core/text.h"
#include "sale/screen.h"

namespace tilo {
namespace {

// Each text is kept in 200 bytes with its terminating zero.
constexpr int kLongest = 199;

QLineEdit* Field(QWidget* parent, const QString& name, const std::string& text) {
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

const char* const kGroups[] = {"Daily overview", "Daily items CSV", "Reorder list"};
const char* const kKeys[] = {"report", "items", "reorder"};

}  // namespace

UploadSetupForm::UploadSetupForm(const UploadForm& form, QWidget* parent) : QDialog(parent) {
  setObjectName("THEUPLOAD");
  setWindowTitle("Upload configuration");
  auto* layout = new QVBoxLayout(this);
  auto* fields = new QFormLayout;
  server_ = Field(this, "ftpServer", form.setup.server);
  username_ = Field(this, "ftpUsername", form.setup.username);
  password_ = Field(this, "ftpPassword", form.setup.password);
  password_->setEchoMode(QLineEdit::Password);
  auto* server_row = new QVBoxLayout;
  server_row->addWidget(server_);
  auto* example = new QLabel(
      "e.g. ftp.headoffice.com, ftp.headoffice.com:2121, "
      "ftps://ftp.headoffice.com/shop1 or sftp://headoffice.com",
      this);
  example->setWordWrap(true);
  server_row->addWidget(example);
  fields->addRow("FTP server", server_row);
  fields->addRow("FTP username", username_);
  fields->addRow("FTP password", password_);
  layout->addLayout(fields);

  for (UploadFile f : kUploadFiles) {
    const int i = int(f);
    auto* group = new QGroupBox(kGroups[i], this);
    auto* rows = new QFormLayout(group);
    ticks_[i] = new QCheckBox("Upload", group);
    ticks_[i]->setObjectName(QString(kKeys[i]) + "Upload");
    ticks_[i]->setChecked(form.flags[f]);
    names_[i] = Field(group, QString(kKeys[i]) + "Filename", form.setup.name(f));
    rows->addRow(ticks_[i]);
    rows->addRow("Upload filename", names_[i]);
    layout->addWidget(group);
  }
  auto* note = new QLabel("The selected reports are uploaded as individual text files.", this);
  note->setWordWrap(true);
  layout->addWidget(note);

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  layout->addWidget(buttons);
}

UploadForm UploadSetupForm::form() const {
  UploadForm f;
  f.setup.server = Stored(server_);
  f.setup.username = Stored(username_);
  // A password may begin or end with a space.
  f.setup.password = Utf8ToCp1252(password_->text().toStdString());
  for (UploadFile file : kUploadFiles) {
    f.setup.filename[int(file)] = Stored(names_[int(file)]);
    f.flags.send[int(file)] = ticks_[int(file)]->isChecked();
  }
  return f;
}

void InstallUploadHandlers() {
  SetUploadSetupForm([](UploadForm& form) {
    UploadSetupForm dialog(form, Window());
    if (dialog.exec() != QDialog::Accepted) return false;
    form = dialog.form();
    return true;
  });
  // The upload's thread hands the title to the screen's thread.
  SetUploadTitleView([](const std::string& title) {
    QMetaObject::invokeMethod(
        qApp, [title] { screen_view().set_title(title); }, Qt::QueuedConnection);
  });
  InstallUploadCommands();
}

}  // namespace tilo
