// SPDX-License-Identifier: MIT
#include "mail/mail_commands.h"

#include <cstring>

#include "core/state.h"
#include "core/text.h"
#include "customers/customer_find.h"
#include "mail/mail_sender.h"
#include "sale/commands.h"

namespace tilo {
namespace {

// The seams of the mail commands, installed once by the program or a test.
struct MailHooks {
  MailSetupView form;
  DailyItemsCsvWriter daily_items = [] {
    Message("Unable to open file.", "Problem");
    return false;
  };
  std::string ca_file;
};

MailHooks& hooks() {
  static MailHooks h;
  return h;
}

// The settings for a mail: the file, or the setup form when there is none yet.
bool MailSettingsForUse(MailSetup& setup) {
  if (ReadMailSettings(setup)) return true;
  return Emailsetup(setup) == 1;
}

void Mail(MailKind kind, const MailSetup& setup) {
  MailJob job = SnapshotMailJob(kind, setup);
  job.ca_file = hooks().ca_file;
  StartMail(std::move(job));
}

}  // namespace

void SetMailSetupForm(MailSetupView form) {
  hooks().form = std::move(form);
}

void SetDailyItemsCsvWriter(DailyItemsCsvWriter writer) {
  if (writer) hooks().daily_items = std::move(writer);
}

void SetMailCaFileForTests(const std::string& path) {
  hooks().ca_file = path;
}

int Emailsetup(MailSetup& setup) {
  ReadMailSettings(setup);
  if (!hooks().form || !hooks().form(setup)) return 0;
  if (!WriteMailSettings(setup)) Message("Unable to create WRMAIL.CFG", "Problem");
  return 1;
}

int Emailsetup() {
  MailSetup setup;
  return Emailsetup(setup);
}

bool StartMail(MailJob job) {
  if (StartJob([job = std::move(job)](JobControl& control) { SendMail(job, control); }))
    return true;
  Message("Unable to start thread", "Problem");
  return false;
}

void Emailreport() {
  MailSetup setup;
  if (MailSettingsForUse(setup)) Mail(MailKind::Report, setup);
}

void Emaildailyitems() {
  MailSetup setup;
  if (!MailSettingsForUse(setup)) return;
  if (!hooks().daily_items()) return;
  Mail(MailKind::DailyItems, setup);
}

void Emaildebtor() {
  MailSetup setup;
  if (!MailSettingsForUse(setup)) return;
  if (PromptCustomer("Please enter the customer") == 0) return;
  const MemberRecord& m = G().member;
  const std::string email(m.email, strnlen(m.email, sizeof m.email));
  if (email.empty()) {
    Message("No email address", "Problem");
    return;
  }
  // The reminder goes to the customer; the saved target stays as it is.
  setup.target_email = email;
  Mail(MailKind::Debtor, setup);
}

void InstallMailCommands() {
  SetHandler(Command::EmailSetup, [](int) { Emailsetup(); });
  SetHandler(Command::EmailReport, [](int) { Emailreport(); });
  SetHandler(Command::EmailDailyItems, [](int) { Emaildailyitems(); });
  SetHandler(Command::DebtorEmail, [](int) { Emaildebtor(); });
}

}  // namespace tilo
