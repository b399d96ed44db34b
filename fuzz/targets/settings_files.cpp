// SPDX-License-Identifier: MIT
// The small settings files outside wr.cfg: the mail's wrmail.cfg, the head
// office's upload.cfg and the port map ports.cfg. Whatever a file holds, what
// it reads as must be written back and read again as the same.
#include <cstdio>
#include <cstdlib>

#include "devices/ports.h"
#include "fuzz_support.h"
#include "mail/mail_settings.h"
#include "mail/upload_settings.h"
#include "targets.h"

namespace tilo::fuzz {
namespace {

void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "tilo fuzz: %s\n", what);
  std::abort();
}

bool Same(const MailSetup& a, const MailSetup& b) {
  return a.smtp_server == b.smtp_server && a.target_email == b.target_email &&
         a.your_email == b.your_email && a.secure == b.secure && a.port == b.port &&
         a.user == b.user && a.password == b.password;
}

bool Same(const UploadSetup& a, const UploadSetup& b) {
  for (int f = 0; f < 3; ++f)
    if (a.filename[f] != b.filename[f]) return false;
  return a.server == b.server && a.username == b.username && a.password == b.password;
}

}  // namespace

void FuzzMailSettings(const uint8_t* data, size_t size) {
  StartRun();
  PutFile(kMailSettingsFile, {reinterpret_cast<const char*>(data), size});
  MailSetup setup;
  Require(ReadMailSettings(setup), "wrmail.cfg present but not read");
  Require(WriteMailSettings(setup), "wrmail.cfg not written");
  MailSetup again;
  Require(ReadMailSettings(again) && Same(setup, again), "wrmail.cfg reads back otherwise");
}

void FuzzUploadSettings(const uint8_t* data, size_t size) {
  StartRun();
  PutFile(kUploadSettingsFile, {reinterpret_cast<const char*>(data), size});
  UploadSetup setup;
  Require(ReadUploadSettings(setup), "upload.cfg present but not read");
  for (UploadFile f : kUploadFiles) Require(!UploadName(setup, f).empty(), "an upload has no name");
  Require(WriteUploadSettings(setup), "upload.cfg not written");
  UploadSetup again;
  Require(ReadUploadSettings(again) && Same(setup, again), "upload.cfg reads back otherwise");
}

void FuzzPorts(const uint8_t* data, size_t size) {
  StartRun();
  PutFile(kPortsFile, {reinterpret_cast<const char*>(data), size});
  for (int64_t port = -1; port <= 10; ++port) {
    const std::string name = PortName(port);
    const std::string path = PortPath(name);
    Require(name.empty() == path.empty(), "a known port without a path, or the reverse");
  }
}

}  // namespace tilo::fuzz
