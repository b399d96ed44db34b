// SPDX-License-Identifier: MIT
// The three mails and what each one says. A mail job carries its own copy of
// everything it sends (settings, target, heading lines, the day's totals, the
// debtor), taken when the command starts: the thread that sends it then reads
// nothing the till goes on changing.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "mail/mail_settings.h"
#include "platform/platform.h"

namespace tilo {

enum class MailKind { Report, DailyItems, Debtor };

struct MailJob {
  MailKind kind = MailKind::Report;
  MailSetup setup;  // target_email is the debtor's address for a debtor mail
  std::string heading1, heading2;
  double till_takings = 0;
  int64_t transactions = 0, items = 0;
  double cash_sales = 0, ch_sales = 0, eft_sales = 0, credit_sales = 0;
  int64_t customer_number = 0;
  float balance = 0;
  // ES.CSV, with its folder, for the daily items.
  std::string items_file;
  // The certificates trusted for secure submission; empty: the system's own.
  // Tests hand their own authority here.
  std::string ca_file;
};

// A job of `kind` to `setup`, with the heading lines and the running totals as
// they stand now and, for a debtor mail, the customer in G().member.
MailJob SnapshotMailJob(MailKind kind, const MailSetup& setup);

// "Mon Nov 23 26": the date as the mails show it.
std::string MailDate(const LocalTime& t);

// Sends the text of the mail, piece by piece, to `send`. False when the daily
// items file can't be opened: the pieces up to the totals have gone by then and
// the mail is not to be finished.
bool ComposeMessage(const MailJob& job, const LocalTime& now,
                    const std::function<void(std::string_view piece)>& send);

}  // namespace tilo
