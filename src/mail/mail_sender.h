// SPDX-License-Identifier: MIT
// Sending one mail, on the thread of its job. Every outcome the operator sees
// goes through platform().notify; a mail cancelled at close-down says nothing.
#pragma once

#include "mail/mail_message.h"
#include "platform/jobs.h"

namespace tilo {

// The whole course of one mail, by the plain dialogue or by secure submission
// as the job's settings say.
void SendMail(const MailJob& job, JobControl& control);

// The plain dialogue: straight over a socket, every reply read and none looked at,
// so "Finished" comes whatever the server said.
void SendPlainMail(const MailJob& job, const LocalTime& now, JobControl& control);
// Secure submission through libcurl: STARTTLS (or TLS from the start on port
// 465), the log-in, replies checked.
void SendSecureMail(const MailJob& job, const LocalTime& now, JobControl& control);

// The port of the mail service on this machine, else 25.
int MailServicePort();

}  // namespace tilo
