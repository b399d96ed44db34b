// SPDX-License-Identifier: MIT
#include "mail/upload_transfer.h"

#include <curl/curl.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "core/text.h"
#include "mail/curl_control.h"

namespace tilo {
namespace {

// Says `text` unless close-down has cancelled the upload; libcurl's own reason
// goes in the box's details.
void Tell(JobControl& control, const std::string& text, const std::string& title,
          const std::string& details = {}) {
  if (!control.cancelled()) platform().notify_details(text, title, details);
}

std::string Lower(std::string s) {
  for (char& c : s)
    if (c >= 'A' && c <= 'Z') c = char(c - 'A' + 'a');
  return s;
}

std::string Trimmed(const std::string& s) {
  const size_t first = s.find_first_not_of(" \t");
  if (first == std::string::npos) return {};
  return s.substr(first, s.find_last_not_of(" \t") - first + 1);
}

// Each segment of a folder path escaped for a URL, the slashes kept.
std::string EscapedPath(const std::string& path) {
  std::string out;
  size_t at = 0;
  while (at <= path.size()) {
    size_t slash = path.find('/', at);
    if (slash == std::string::npos) slash = path.size();
    const std::string segment = path.substr(at, slash - at);
    if (!segment.empty()) {
      char* escaped = curl_easy_escape(nullptr, segment.c_str(), int(segment.size()));
      out += escaped ? escaped : "";
      curl_free(escaped);
      out += '/';
    }
    at = slash + 1;
  }
  return out;
}

size_t ReadFromFile(char* buffer, size_t size, size_t count, void* user) {
  return std::fread(buffer, size, count, static_cast<FILE*>(user));
}

size_t Discard(char*, size_t size, size_t count, void*) {
  return size * count;
}

struct CurlDeleter {
  void operator()(CURL* curl) const { curl_easy_cleanup(curl); }
};

std::string Reason(CURLcode result, const char* error) {
  return error[0] ? error : curl_easy_strerror(result);
}

}  // namespace

UploadTarget ParseUploadServer(const std::string& server) {
  std::string rest = Trimmed(server);
  const std::string lower = Lower(rest);
  UploadTarget t;
  std::string scheme = "ftp";
  for (const char* prefix : {"ftp://", "ftps://", "sftp://"}) {
    const std::string p = prefix;
    if (lower.compare(0, p.size(), p) == 0) {
      scheme = p.substr(0, p.size() - 3);
      rest = rest.substr(p.size());
    }
  }
  const size_t slash = rest.find('/');
  std::string host = rest.substr(0, slash);
  const std::string folder = slash == std::string::npos ? "" : rest.substr(slash + 1);
  int port = 0;
  const size_t colon = host.rfind(':');
  if (colon != std::string::npos && host.find(']') == std::string::npos) {
    port = std::atoi(host.c_str() + colon + 1);
    host.resize(colon);
  }
  t.ssh = scheme == "sftp";
  t.require_tls = scheme == "ftps";
  if (port <= 0) port = t.ssh ? 22 : 21;
  // Port 990 is TLS from the first byte; elsewhere TLS is asked for at once
  // (AUTH TLS) and the upload refused if the server won't.
  const std::string url_scheme = t.ssh ? "sftp" : (t.require_tls && port == 990 ? "ftps" : "ftp");
  t.login_url = url_scheme + "://" + host + ":" + std::to_string(port) + "/";
  // Over SSH a path is from the root; the folder is taken from the log-in's own, as in FTP.
  if (t.ssh) t.login_url += "~/";
  t.folder_url = t.login_url + EscapedPath(folder);
  return t;
}

void SendUpload(const UploadJob& job, JobControl& control) {
  std::unique_ptr<CURL, CurlDeleter> handle(curl_easy_init());
  if (!handle) {
    char text[64];
    std::snprintf(text, sizeof text, "InternetOpen error %ld", long(errno));
    Tell(control, text, "Problem");
    return;
  }
  CURL* curl = handle.get();
  if (Trimmed(job.setup.server).empty()) {
    Tell(control, "Please specify the FTP server in the configuration", "Problem");
    return;
  }
  const UploadTarget target = ParseUploadServer(Cp1252ToUtf8(job.setup.server));
  const std::string user = Cp1252ToUtf8(job.setup.username);
  const std::string password = Cp1252ToUtf8(job.setup.password);
  char error[CURL_ERROR_SIZE] = {};

  if (!user.empty()) {
    curl_easy_setopt(curl, CURLOPT_USERNAME, user.c_str());
    curl_easy_setopt(curl, CURLOPT_PASSWORD, password.c_str());
  }
  if (target.require_tls) curl_easy_setopt(curl, CURLOPT_USE_SSL, long(CURLUSESSL_ALL));
  const char* home = std::getenv("HOME");
  const std::string known_hosts = std::string(home ? home : "") + "/.ssh/known_hosts";
  if (target.ssh) curl_easy_setopt(curl, CURLOPT_SSH_KNOWNHOSTS, known_hosts.c_str());
  curl_easy_setopt(curl, CURLOPT_FTP_CREATE_MISSING_DIRS, long(CURLFTP_CREATE_DIR));
  curl_easy_setopt(curl, CURLOPT_TRANSFERTEXT, 0L);
  curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L);
  curl_easy_setopt(curl, CURLOPT_CONNECTTIMEOUT, 30L);
  curl_easy_setopt(curl, CURLOPT_SERVER_RESPONSE_TIMEOUT, 60L);
  curl_easy_setopt(curl, CURLOPT_LOW_SPEED_LIMIT, 1L);
  curl_easy_setopt(curl, CURLOPT_LOW_SPEED_TIME, 60L);
  Stopwithjob(curl, control);
  curl_easy_setopt(curl, CURLOPT_ERRORBUFFER, error);

  // Connect and log in first, with a listing of names only (read and dropped):
  // a wrong server or password is told as such, and the connection stays open
  // for the files, every reply read.
  curl_easy_setopt(curl, CURLOPT_URL, target.login_url.c_str());
  curl_easy_setopt(curl, CURLOPT_DIRLISTONLY, 1L);
  curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, Discard);
  const CURLcode login = curl_easy_perform(curl);
  if (login != CURLE_OK) {
    Tell(control, "Internet ftp connect error", "Problem", Reason(login, error));
    return;
  }
  if (control.cancelled()) return;
  if (job.set_title) job.set_title("Upload in progress");

  bool failed = false;
  std::string details;
  for (UploadFile f : kUploadFiles) {
    if (!job.flags[f] || control.cancelled()) continue;
    const std::string name = Cp1252ToUtf8(UploadName(job.setup, f));
    error[0] = 0;
    FILE* file = std::fopen(name.c_str(), "rb");
    if (!file) {
      failed = true;
      details += name + ": unable to read the file\n";
      continue;
    }
    std::fseek(file, 0, SEEK_END);
    const long size = std::ftell(file);
    std::rewind(file);
    const std::string url = target.folder_url + EscapedPath(name);
    curl_easy_setopt(curl, CURLOPT_URL, url.substr(0, url.size() - 1).c_str());
    curl_easy_setopt(curl, CURLOPT_DIRLISTONLY, 0L);
    curl_easy_setopt(curl, CURLOPT_UPLOAD, 1L);
    curl_easy_setopt(curl, CURLOPT_READFUNCTION, ReadFromFile);
    curl_easy_setopt(curl, CURLOPT_READDATA, file);
    curl_easy_setopt(curl, CURLOPT_INFILESIZE_LARGE, curl_off_t(size));
    const CURLcode put = curl_easy_perform(curl);
    std::fclose(file);
    if (put != CURLE_OK) {
      failed = true;
      details += name + ": " + Reason(put, error) + "\n";
    }
  }
  if (control.cancelled()) return;
  if (job.set_title) job.set_title(job.title_after);
  Tell(control, failed ? "Transfer failed" : "Transfer complete", "Transmission", details);
}

}  // namespace tilo
