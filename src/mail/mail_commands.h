// SPDX-License-Identifier: MIT
// The mail commands: "Email setup", "Email report", "Email daily items" and
// "Debtor email". Each mail goes out on a thread of its own; the till sells on.
#pragma once

#include <functional>
#include <string>

#include "mail/mail_message.h"
#include "mail/mail_settings.h"

namespace tilo {

// The form "Email target": edits `setup` in place; false when cancelled.
using MailSetupView = std::function<bool(MailSetup& setup)>;
void SetMailSetupForm(MailSetupView form);

// Writes ES.CSV, today's item rows, for the daily items mail; false (after its
// own message) when it couldn't. Until the item summaries install theirs,
// nothing is written and the mail does not go.
using DailyItemsCsvWriter = std::function<bool()>;
void SetDailyItemsCsvWriter(DailyItemsCsvWriter writer);

// Trusts these certificates for secure submission instead of the system's own
// (tests with a server of their own); empty restores the system's.
void SetMailCaFileForTests(const std::string& path);

// "Email setup": 1 when the settings were saved, 0 when cancelled. `setup` ends as
// the form left it.
int Emailsetup(MailSetup& setup);
int Emailsetup();
void Emailreport();
void Emaildailyitems();
void Emaildebtor();

// Starts the mail on a thread of its own; "Unable to start thread" when refused.
bool StartMail(MailJob job);

// The four commands' handlers.
void InstallMailCommands();

}  // namespace tilo
