// SPDX-License-Identifier: MIT
#include "mail/mail_settings.h"

#include <algorithm>
#include <cstring>

#include "platform/files.h"

namespace tilo {
namespace {

template <size_t N>
void Put(char (&field)[N], const std::string& text) {
  std::memset(field, 0, N);
  std::memcpy(field, text.data(), std::min(text.size(), N - 1));
}

// A field holds N-1 characters and its terminator, as Put writes it; a file
// from elsewhere with no terminator reads as the N-1 the form would keep.
template <size_t N>
std::string Get(const char (&field)[N]) {
  return std::string(field, strnlen(field, N - 1));
}

}  // namespace

MailSettings EncodeMailSettings(const MailSetup& setup) {
  MailSettings r{};
  Put(r.smtp_server, setup.smtp_server);
  Put(r.target_email, setup.target_email);
  Put(r.your_email, setup.your_email);
  std::memcpy(r.marker, kSecureMarker, sizeof r.marker);
  r.port = setup.port;
  r.mode = setup.secure ? kMailSecure : kMailPlain;
  Put(r.user, setup.user);
  Put(r.password, setup.password);
  return r;
}

MailSetup DecodeMailSettings(const MailSettings& r) {
  MailSetup s;
  s.smtp_server = Get(r.smtp_server);
  s.target_email = Get(r.target_email);
  s.your_email = Get(r.your_email);
  if (std::memcmp(r.marker, kSecureMarker, sizeof r.marker) == 0) {
    s.port = r.port;
    s.secure = r.mode == kMailSecure;
    s.user = Get(r.user);
    s.password = Get(r.password);
  }
  return s;
}

bool ReadMailSettings(MailSetup& out, const std::string& path) {
  out = {};
  auto r = ReadRecordFile<MailSettings>(path);
  if (!r) return false;
  out = DecodeMailSettings(*r);
  return true;
}

bool WriteMailSettings(const MailSetup& setup, const std::string& path) {
  return ReplacePrivateRecord(path, EncodeMailSettings(setup));
}

}  // namespace tilo
