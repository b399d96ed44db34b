// SPDX-License-Identifier: MIT
// wrmail.cfg: where the mail goes and through which server. Read and written
// whole; it holds the log-in of secure submission, so only its owner may read it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace tilo {

inline constexpr const char* kMailSettingsFile = "wrmail.cfg";
inline constexpr const char kSecureMarker[4] = {'T', 'S', 'M', '1'};
inline constexpr int32_t kMailPlain = 0;
inline constexpr int32_t kMailSecure = 2;

#pragma pack(push, 1)
struct MailSettings {
  uint8_t reserved[80];  // set to 0 when the file is first written
  // Secure submission; these count only after the marker.
  char marker[4];
  int32_t port;  // 0: the "mail" service, else 25
  int32_t mode;  // kMailPlain or kMailSecure
  char user[80];
  char password[80];
  uint8_t reserved_252[68];
  char smtp_server[80];
  char target_email[80];
  char your_email[80];
};
#pragma pack(pop)

static_assert(sizeof(MailSettings) == 560);
static_assert(offsetof(MailSettings, marker) == 80);
static_assert(offsetof(MailSettings, port) == 84);
static_assert(offsetof(MailSettings, mode) == 88);
static_assert(offsetof(MailSettings, user) == 92);
static_assert(offsetof(MailSettings, password) == 172);
static_assert(offsetof(MailSettings, smtp_server) == 320);
static_assert(offsetof(MailSettings, target_email) == 400);
static_assert(offsetof(MailSettings, your_email) == 480);

// The settings as the form shows and edits them; texts as stored (Windows-1252).
struct MailSetup {
  std::string smtp_server;
  std::string target_email;
  std::string your_email;
  bool secure = false;
  int32_t port = 0;
  std::string user;
  std::string password;
};

// Reads the file into `out`; false (and `out` empty) when there is no file. A
// short file reads as if padded with zeros.
bool ReadMailSettings(MailSetup& out, const std::string& path = kMailSettingsFile);
// Rewrites the file whole; false when it can't be created. Texts are cut to 79
// characters so each keeps its terminating zero.
bool WriteMailSettings(const MailSetup& setup, const std::string& path = kMailSettingsFile);
MailSettings EncodeMailSettings(const MailSetup& setup);
MailSetup DecodeMailSettings(const MailSettings& record);

}  // namespace tilo
