// SPDX-License-Identifier: MIT
#include "upkeep/ui/upkeep_forms.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "sale/commands.h"
#include "upkeep/backup.h"
#include "upkeep/file_reset.h"
#include "upkeep/purge.h"
#include "upkeep/upkeep_view.h"

namespace tilo {
namespace {

QLabel* Text(QWidget* parent, const char* text) {
  auto* label = new QLabel(text, parent);
  label->setWordWrap(true);
  return label;
}

QDialogButtonBox* OkCancel(QDialog* dialog) {
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, dialog);
  buttons->button(QDialogButtonBox::Ok)->setText("OK");
  buttons->button(QDialogButtonBox::Cancel)->setText("Cancel");
  QObject::connect(buttons, &QDialogButtonBox::accepted, dialog, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
  return buttons;
}

class QtUpkeepView : public UpkeepView {
 public:
  std::optional<bool> file_reset() override {
    QDialog dialog(QApplication::activeWindow());
    dialog.setObjectName("THERESET");
    dialog.setWindowTitle("File reset");
    auto* layout = new QVBoxLayout(&dialog);
    layout->addWidget(Text(&dialog,
                           "The configuration will be reset to defaults and the entire "
                           "transaction history will be deleted."));
    auto* tick = new QCheckBox("Delete customer and inventory databases  ", &dialog);
    tick->setObjectName("deleteDatabases");
    layout->addWidget(tick);
    layout->addWidget(OkCancel(&dialog));
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return tick->isChecked();
  }

  bool confirm_restore() override {
    QDialog dialog(QApplication::activeWindow());
    dialog.setObjectName("FINISBOX");
    dialog.setWindowTitle("Restore data from backup");
    dialog.setMinimumWidth(460);
    auto* layout = new QVBoxLayout(&dialog);
    layout->addWidget(Text(&dialog,
                           "Please click OK then select the WR.CFG file in the backup folder or "
                           "click Cancel"));
    layout->addWidget(Text(&dialog,
                           "The program requires and will restore data from four files, wr.cfg, "
                           "film.dat, member.dat and mans.dat. The resn.dat (reminders) and "
                           "bun4.dat (transaction log) files will also be used if extant."));
    layout->addWidget(Text(&dialog,
                           "Important: The previous transaction history will no longer be "
                           "available after this routine (it is deleted to avoid conflicts with "
                           "current transactions)"));
    layout->addWidget(OkCancel(&dialog));
    return dialog.exec() == QDialog::Accepted;
  }
};

QtUpkeepView qt_view;

}  // namespace

void InstallUpkeepHandlers() {
  install_upkeep_view(&qt_view);
  SetHandler(Command::PurgeHistory, [](int) { Purgehistory(); });
  SetHandler(Command::PurgeLogFiles, [](int) { Purgelogfiles(); });
  SetHandler(Command::FileReset, [](int) { Filereset(); });
  SetHandler(Command::Backup, [](int) { Backup(); });
  SetHandler(Command::Restore, [](int) { Restore(); });
}

}  // namespace tilo
