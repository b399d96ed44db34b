// SPDX-License-Identifier: MIT
// Secure submission: the provider's server asks for an encrypted connection and a
// log-in, and its replies count. libcurl speaks the protocol (and doubles a
// leading dot, as the plain dialogue does not).
#include <curl/curl.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>

#include "mail/curl_control.h"
#include "mail/mail_sender.h"

namespace tilo {
namespace {

struct Upload {
  std::string text;
  size_t at = 0;
};

size_t ReadText(char* buffer, size_t size, size_t count, void* user) {
  auto* upload = static_cast<Upload*>(user);
  size_t n = std::min(size * count, upload->text.size() - upload->at);
  std::memcpy(buffer, upload->text.data() + upload->at, n);
  upload->at += n;
  return n;
}

// "Date:" and "Message-ID:", which a provider's server expects of a submitted mail.
std::string SubmissionHeaders(const std::string& sender) {
  static const char* days[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
  static const char* months[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                 "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  static std::atomic<unsigned> serial{0};
  const std::time_t t = std::time(nullptr);
  std::tm tm{};
  localtime_r(&t, &tm);
  const long offset = tm.tm_gmtoff / 60;
  const auto at = sender.find('@');
  const std::string domain = at == std::string::npos ? "tilo.invalid" : sender.substr(at + 1);
  char buf[512];
  std::snprintf(buf, sizeof buf,
                "Date: %s, %d %s %d %02d:%02d:%02d %c%02ld%02ld\r\n"
                "Message-ID: <%lld.%d.%u@%s>\r\n",
                days[tm.tm_wday], tm.tm_mday, months[tm.tm_mon], tm.tm_year + 1900, tm.tm_hour,
                tm.tm_min, tm.tm_sec, offset < 0 ? '-' : '+', std::labs(offset) / 60,
                std::labs(offset) % 60, static_cast<long long>(t), int(getpid()), serial++,
                domain.c_str());
  return buf;
}

}  // namespace

void SendSecureMail(const MailJob& job, const LocalTime& now, JobControl& control) {
  const MailSetup& m = job.setup;
  Upload upload;
  upload.text = SubmissionHeaders(m.your_email);
  if (!ComposeMessage(job, now, [&](std::string_view piece) { upload.text += piece; })) {
    if (!control.cancelled()) platform().notify("Unable to open file.", "Problem");
    return;
  }

  CURL* curl = curl_easy_init();
  if (!curl) {
    if (!control.cancelled()) platform().notify("Mail not sent: out of memory", "Problem");
    return;
  }
  const int port = m.port != 0 ? m.port : MailServicePort();
  const std::string url = std::string(port == 465 ? "smtps://" : "smtp://") + m.smtp_server + ":" +
                          std::to_string(port);
  const std::string from = "<" + m.your_email + ">";
  curl_slist* recipients = curl_slist_append(nullptr, ("<" + m.target_email + ">").c_str());
  char error[CURL_ERROR_SIZE] = {};

  curl_easy_setopt(curl, CURLOPT_URL, url.c_str());
  curl_easy_setopt(curl, CURLOPT_USE_SSL, long(CURLUSESSL_ALL));
  curl_easy_setopt(curl, CURLOPT_IPRESOLVE, long(CURL_IPRESOLVE_V4));
  if (!job.ca_file.empty()) curl_easy_setopt(curl, CURLOPT_CAINFO, job.ca_file.c_str());
  if (!m.user.empty()) {
    curl_easy_setopt(curl, CURLOPT_USERNAME, m.user.c_str());
    curl_easy_setopt(curl, CURLOPT_PASSWORD, m.password.c_str());
  }
  curl_easy_setopt(curl, CURLOPT_MAIL_FROM, from.c_str());
  curl_easy_setopt(curl, CURLOPT_MAIL_RCPT, recipients);
  curl_easy_setopt(curl, CURLOPT_UPLOAD, 1L);
  curl_easy_setopt(curl, CURLOPT_READFUNCTION, ReadText);
  curl_easy_setopt(curl, CURLOPT_READDATA, &upload);
  curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L);
  curl_easy_setopt(curl, CURLOPT_CONNECTTIMEOUT, 30L);
  curl_easy_setopt(curl, CURLOPT_LOW_SPEED_LIMIT, 1L);
  curl_easy_setopt(curl, CURLOPT_LOW_SPEED_TIME, 60L);
  curl_easy_setopt(curl, CURLOPT_TIMEOUT, 300L);
  Stopwithjob(curl, control);
  curl_easy_setopt(curl, CURLOPT_ERRORBUFFER, error);

  const CURLcode result = curl_easy_perform(curl);
  curl_slist_free_all(recipients);
  curl_easy_cleanup(curl);
  if (control.cancelled()) return;
  if (result == CURLE_OK)
    platform().notify("Report", "Finished");
  else
    platform().notify(
        std::string("Mail not sent: ") + (error[0] ? error : curl_easy_strerror(result)),
        "Problem");
}

}  // namespace tilo
