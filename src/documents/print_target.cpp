// SPDX-License-Identifier: MIT
#include "documents/print_target.h"

#include <cstdlib>
#include <cstring>

#include "core/text.h"
#include "platform/files.h"

namespace tilo {
namespace {

int32_t Le32(const std::string& b, size_t at) {
  uint32_t v = 0;
  for (int i = 3; i >= 0; --i) v = (v << 8) | uint8_t(b[at + i]);
  return int32_t(v);
}

int Le16(const std::string& b, size_t at) {
  return uint8_t(b[at]) | (uint8_t(b[at + 1]) << 8);
}

// The faces the documents and forms name, and what stands for them here. The
// DejaVu families ship with every desktop the till runs on.
struct FaceMapping {
  const char* windows;
  const char* here;
};
constexpr FaceMapping kFaces[] = {
    {"ARIAL", "DejaVu Sans"},
    {"ARIAL BLACK", "DejaVu Sans"},
    {"HELVETICA", "DejaVu Sans"},
    {"MS SANS SERIF", "DejaVu Sans"},
    {"MICROSOFT SANS SERIF", "DejaVu Sans"},
    {"MS SHELL DLG", "DejaVu Sans"},
    {"SYSTEM", "DejaVu Sans"},
    {"TAHOMA", "DejaVu Sans"},
    {"VERDANA", "DejaVu Sans"},
    {"SEGOE UI", "DejaVu Sans"},
    {"TIMES NEW ROMAN", "DejaVu Serif"},
    {"TIMES", "DejaVu Serif"},
    {"MS SERIF", "DejaVu Serif"},
    {"GEORGIA", "DejaVu Serif"},
    {"BOOK ANTIQUA", "DejaVu Serif"},
    {"GARAMOND", "DejaVu Serif"},
    {"COURIER NEW", "DejaVu Sans Mono"},
    {"COURIER", "DejaVu Sans Mono"},
    {"LUCIDA CONSOLE", "DejaVu Sans Mono"},
    {"CONSOLAS", "DejaVu Sans Mono"},
    {"FIXEDSYS", "DejaVu Sans Mono"},
    {"TERMINAL", "DejaVu Sans Mono"},
};

}  // namespace

std::optional<Bitmap> LoadBitmap(const std::string& path) {
  std::optional<std::string> bytes = ReadWholeFile(path);
  if (!bytes || bytes->size() < 26 || bytes->compare(0, 2, "BM") != 0) return std::nullopt;
  Bitmap b;
  if (Le32(*bytes, 14) == 12) {  // the old OS/2 header with 16-bit sizes
    b.width = Le16(*bytes, 18);
    b.height = Le16(*bytes, 20);
  } else {
    b.width = std::abs(Le32(*bytes, 18));
    b.height = std::abs(Le32(*bytes, 22));  // negative for a top-down picture
  }
  b.bytes = std::move(*bytes);
  return b;
}

std::string LinuxFace(const std::string& windows_face) {
  const std::string key = UpperCase(windows_face);
  for (const FaceMapping& f : kFaces)
    if (key == f.windows) return f.here;
  // A face the desktop has already (one picked in a font dialog) stays itself.
  if (key.rfind("DEJAVU", 0) == 0 || key.rfind("LIBERATION", 0) == 0) return windows_face;
  return "DejaVu Sans";
}

}  // namespace tilo
