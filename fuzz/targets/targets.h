// SPDX-License-Identifier: MIT
// The fuzz targets: each takes one input as libFuzzer hands it over and feeds it
// to one reader of outside bytes. Any input at all must leave the reader with a
// message or a result, never a crash.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tilo::fuzz {

void FuzzStartup(const uint8_t* data, size_t size);
void FuzzRestore(const uint8_t* data, size_t size);
void FuzzImport(const uint8_t* data, size_t size);
void FuzzHistory(const uint8_t* data, size_t size);
void FuzzCardReply(const uint8_t* data, size_t size);
void FuzzMailSettings(const uint8_t* data, size_t size);
void FuzzUploadSettings(const uint8_t* data, size_t size);
void FuzzPorts(const uint8_t* data, size_t size);

// Every target by the name of its binary (fuzz_<name>) and of its folders under
// fuzz/seeds and fuzz/regressions.
struct Target {
  std::string_view name;
  void (*run)(const uint8_t*, size_t);
};
inline constexpr Target kTargets[] = {
    {"startup", FuzzStartup},
    {"restore", FuzzRestore},
    {"import", FuzzImport},
    {"history", FuzzHistory},
    {"card_reply", FuzzCardReply},
    {"mail_settings", FuzzMailSettings},
    {"upload_settings", FuzzUploadSettings},
    {"ports", FuzzPorts},
};

}  // namespace tilo::fuzz
