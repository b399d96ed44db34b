// SPDX-License-Identifier: MIT
#include "mail/mail_sender.h"

#include <arpa/inet.h>
#include <netdb.h>
#include <sys/socket.h>
#include <unistd.h>

namespace tilo {
namespace {

// One step of the dialogue: its result is not looked at, a refusal or a failed
// send lets the dialogue run on to its end.
void Send(int fd, std::string_view text) {
  [[maybe_unused]] ssize_t n = ::send(fd, text.data(), text.size(), MSG_NOSIGNAL);
}
void Receive(int fd) {
  char reply[4096];
  [[maybe_unused]] ssize_t n = ::recv(fd, reply, sizeof reply, 0);
}

// Says `text` unless close-down has cancelled the mail.
void Tell(JobControl& control, const char* text, const char* title = "Problem") {
  if (!control.cancelled()) platform().notify(text, title);
}

}  // namespace

int MailServicePort() {
  servent entry{};
  servent* found = nullptr;
  char buffer[1024];
  if (getservbyname_r("mail", "tcp", &entry, buffer, sizeof buffer, &found) == 0 && found)
    return ntohs(uint16_t(found->s_port));
  return 25;
}

void SendPlainMail(const MailJob& job, const LocalTime& now, JobControl& control) {
  const MailSetup& m = job.setup;
  addrinfo hints{};
  hints.ai_family = AF_INET;
  hints.ai_socktype = SOCK_STREAM;
  addrinfo* found = nullptr;
  if (getaddrinfo(m.smtp_server.c_str(), nullptr, &hints, &found) != 0 || !found) {
    Tell(control, "Cannot find SMTP mail server");
    return;
  }
  sockaddr_in address = *reinterpret_cast<const sockaddr_in*>(found->ai_addr);
  freeaddrinfo(found);

  const int fd = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (fd < 0) {
    Tell(control, "Cannot open mail server socket");
    return;
  }
  address.sin_port = htons(uint16_t(m.port != 0 ? m.port : MailServicePort()));
  // Close-down wakes a blocked connect or recv by shutting the socket down.
  control.set_wake([fd] { ::shutdown(fd, SHUT_RDWR); });
  auto finish = [&](const char* text, const char* title) {
    control.set_wake({});
    ::close(fd);
    if (text) Tell(control, text, title);
  };
  if (::connect(fd, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
    finish("Error connecting to the server socket", "Problem");
    return;
  }

  const bool debtor = job.kind == MailKind::Debtor;
  Receive(fd);
  Send(fd, "HELO " + m.smtp_server + "\r\n");
  Receive(fd);
  Send(fd, (debtor ? "MAIL FROM: " + m.your_email : "MAIL FROM:<" + m.your_email + ">") + "\r\n");
  Receive(fd);
  Send(fd, (debtor ? "RCPT TO: " + m.target_email : "RCPT TO:<" + m.target_email + ">") + "\r\n");
  Receive(fd);
  Send(fd, "DATA\r\n");
  Receive(fd);
  if (!ComposeMessage(job, now, [fd](std::string_view piece) { Send(fd, piece); })) {
    finish("Unable to open file.", "Problem");
    return;
  }
  Send(fd, "\r\n.\r\n");
  Receive(fd);
  Send(fd, "QUIT\r\n");
  Receive(fd);
  finish("Report", "Finished");
}

void SendMail(const MailJob& job, JobControl& control) {
  const LocalTime now = platform().now();
  if (job.setup.secure)
    SendSecureMail(job, now, control);
  else
    SendPlainMail(job, now, control);
}

}  // namespace tilo
