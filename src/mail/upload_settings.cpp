// SPDX-License-Identifier: MIT
#include "mail/upload_settings.h"

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

const char* DefaultUploadName(UploadFile f) {
  switch (f) {
    case UploadFile::Report:
      return "Activity.txt";
    case UploadFile::Items:
      return "Dlyitems.txt";
    case UploadFile::Reorder:
      break;
  }
  return "Reorder.txt";
}

std::string UploadName(const UploadSetup& setup, UploadFile f) {
  return setup.name(f).empty() ? DefaultUploadName(f) : setup.name(f);
}

UploadSettings EncodeUploadSettings(const UploadSetup& setup) {
  UploadSettings r{};
  Put(r.ftp_server, setup.server);
  Put(r.ftp_username, setup.username);
  Put(r.ftp_password, setup.password);
  Put(r.report_filename, setup.filename[0]);
  Put(r.items_filename, setup.filename[1]);
  Put(r.reorder_filename, setup.filename[2]);
  return r;
}

UploadSetup DecodeUploadSettings(const UploadSettings& r) {
  UploadSetup s;
  s.server = Get(r.ftp_server);
  s.username = Get(r.ftp_username);
  s.password = Get(r.ftp_password);
  s.filename[0] = Get(r.report_filename);
  s.filename[1] = Get(r.items_filename);
  s.filename[2] = Get(r.reorder_filename);
  return s;
}

bool ReadUploadSettings(UploadSetup& out, const std::string& path) {
  out = {};
  auto r = ReadRecordFile<UploadSettings>(path);
  if (!r) return false;
  out = DecodeUploadSettings(*r);
  return true;
}

bool WriteUploadSettings(const UploadSetup& setup, const std::string& path) {
  return ReplacePrivateRecord(path, EncodeUploadSettings(setup));
}

}  // namespace tilo
