// SPDX-License-Identifier: MIT
#include "mail/upload_commands.h"

#include "core/settings.h"
#include "core/state.h"
#include "core/text.h"
#include "mail/upload_transfer.h"
#include "platform/jobs.h"
#include "sale/commands.h"

namespace tilo {
namespace {

struct UploadHooks {
  UploadSetupView form;
  std::function<void(const std::string&)> title;
};

UploadHooks& hooks() {
  static UploadHooks h;
  return h;
}

int32_t Tick(bool on) {
  return on ? 2 : 0;
}

// The main window's title for the clerk logged on.
std::string ClerkTitle() {
  const SettingsRecord& s = G().settings;
  return "TILO Retail    Assoc: " + std::to_string(s.clerk_number) + ", " +
         Cp1252ToUtf8(ClerkName(s, s.clerk_number));
}

}  // namespace

void SetUploadSetupForm(UploadSetupView form) {
  hooks().form = std::move(form);
}

void SetUploadTitleView(std::function<void(const std::string&)> view) {
  hooks().title = std::move(view);
}

int Uploadsetup() {
  UploadForm form;
  ReadUploadSettings(form.setup);
  // An empty name goes under the name shown, so the form shows it and saves it.
  for (UploadFile f : kUploadFiles) form.setup.filename[int(f)] = UploadName(form.setup, f);
  form.flags = CurrentUploadFlags();
  if (!hooks().form || !hooks().form(form)) return 0;
  if (!WriteUploadSettings(form.setup)) Message("Unable to create UPLOAD.CFG", "Problem");
  SettingsRecord& s = G().settings;
  s.upload_report = Tick(form.flags[UploadFile::Report]);
  s.upload_items = Tick(form.flags[UploadFile::Items]);
  s.upload_reorder = Tick(form.flags[UploadFile::Reorder]);
  Savesettings();
  return 1;
}

void Uploadreport() {
  UploadJob job;
  if (!ReadUploadSettings(job.setup)) {
    if (Uploadsetup() == 0) return;
    ReadUploadSettings(job.setup);
  }
  job.flags = CurrentUploadFlags();
  if (!job.flags.any()) {
    Message("No reports selected.", "Problem");
    return;
  }
  if (Writeuploadfiles(job.setup, job.flags) != 0) return;
  job.title_after = ClerkTitle();
  job.set_title = hooks().title;
  if (!StartJob([job = std::move(job)](JobControl& control) { SendUpload(job, control); }))
    Message("Unable to start thread", "Problem");
}

void InstallUploadCommands() {
  SetHandler(Command::HeadOfficeSetup, [](int) { Uploadsetup(); });
  SetHandler(Command::HeadOfficeUpload, [](int) { Uploadreport(); });
}

}  // namespace tilo
