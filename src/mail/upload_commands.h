// SPDX-License-Identifier: MIT
// The head office commands: "Head office report setup" (the form THEUPLOAD) and
// "Upload head office report", which writes the ticked files and sends them from
// a thread of its own while the till sells on.
#pragma once

#include <functional>
#include <string>

#include "mail/upload_files.h"
#include "mail/upload_settings.h"

namespace tilo {

// What the form "Upload configuration" edits: upload.cfg and the three ticks.
struct UploadForm {
  UploadSetup setup;
  UploadFlags flags;
};
// The form: edits `form` in place; false when cancelled.
using UploadSetupView = std::function<bool(UploadForm& form)>;
void SetUploadSetupForm(UploadSetupView form);
// Shows a title on the main window; called from the upload's thread, so it
// must hand the work to the screen's own thread.
void SetUploadTitleView(std::function<void(const std::string&)> view);

// "Head office report setup": 1 when saved, 0 when cancelled.
int Uploadsetup();
// "Upload head office report".
void Uploadreport();

void InstallUploadCommands();

}  // namespace tilo
