// SPDX-License-Identifier: MIT
// upload.cfg: the head office's FTP server, the log-in and the names the three
// files go under. Read and written whole; the password is held in plain text, so
// only the file's owner may read it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace tilo {

inline constexpr const char* kUploadSettingsFile = "upload.cfg";

#pragma pack(push, 1)
struct UploadSettings {
  uint8_t reserved_0[1440];
  char ftp_server[200];
  char ftp_username[200];
  char ftp_password[200];
  uint8_t reserved_2040[600];
  char report_filename[200];
  char items_filename[200];
  char reorder_filename[200];
  uint8_t reserved_3240[1800];
};
#pragma pack(pop)

static_assert(sizeof(UploadSettings) == 5040);
static_assert(offsetof(UploadSettings, ftp_server) == 1440);
static_assert(offsetof(UploadSettings, ftp_username) == 1640);
static_assert(offsetof(UploadSettings, ftp_password) == 1840);
static_assert(offsetof(UploadSettings, reserved_2040) == 2040);
static_assert(offsetof(UploadSettings, report_filename) == 2640);
static_assert(offsetof(UploadSettings, items_filename) == 2840);
static_assert(offsetof(UploadSettings, reorder_filename) == 3040);
static_assert(offsetof(UploadSettings, reserved_3240) == 3240);

// The three files, in the order they are written and sent.
enum class UploadFile { Report, Items, Reorder };
inline constexpr UploadFile kUploadFiles[] = {UploadFile::Report, UploadFile::Items,
                                              UploadFile::Reorder};

// The settings as the form shows them; texts as stored (Windows-1252).
struct UploadSetup {
  std::string server;
  std::string username;
  std::string password;
  std::string filename[3];  // by UploadFile; empty: the name the form shows

  const std::string& name(UploadFile f) const { return filename[int(f)]; }
};

// The name a file goes under when none is set: the one the form shows.
const char* DefaultUploadName(UploadFile f);
// The file's name: its own, or the default when empty.
std::string UploadName(const UploadSetup& setup, UploadFile f);

// Reads the file into `out`; false (and `out` empty) when there is no file.
bool ReadUploadSettings(UploadSetup& out, const std::string& path = kUploadSettingsFile);
// Rewrites the file whole, readable by its owner only; false when it can't be
// created. Texts are cut to 199 bytes so each keeps its terminating zero.
bool WriteUploadSettings(const UploadSetup& setup, const std::string& path = kUploadSettingsFile);
UploadSettings EncodeUploadSettings(const UploadSetup& setup);
UploadSetup DecodeUploadSettings(const UploadSettings& record);

}  // namespace tilo
