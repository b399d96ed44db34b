// SPDX-License-Identifier: MIT
#include "core/text.h"

#include <cstdint>

namespace tilo {
namespace {

// Unicode code points of bytes 0x80..0x9F in Windows-1252; 0 where the byte is unassigned.
constexpr char32_t kHigh[32] = {0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

void PutUtf8(std::string& out, char32_t c) {
  if (c < 0x80) {
    out += char(c);
  } else if (c < 0x800) {
    out += char(0xC0 | (c >> 6));
    out += char(0x80 | (c & 0x3F));
  } else {
    out += char(0xE0 | (c >> 12));
    out += char(0x80 | ((c >> 6) & 0x3F));
    out += char(0x80 | (c & 0x3F));
  }
}

}  // namespace

std::string Cp1252ToUtf8(std::string_view bytes) {
  std::string out;
  out.reserve(bytes.size());
  for (unsigned char b : bytes) {
    char32_t c = b;
    if (b >= 0x80 && b < 0xA0) c = kHigh[b - 0x80] ? kHigh[b - 0x80] : b;
    PutUtf8(out, c);
  }
  return out;
}

std::string Utf8ToCp1252(std::string_view utf8) {
  std::string out;
  out.reserve(utf8.size());
  for (size_t i = 0; i < utf8.size();) {
    unsigned char b = utf8[i];
    char32_t c;
    int len;
    if (b < 0x80) {
      c = b, len = 1;
    } else if ((b >> 5) == 6 && i + 1 < utf8.size()) {
      c = ((b & 0x1F) << 6) | (utf8[i + 1] & 0x3F), len = 2;
    } else if ((b >> 4) == 14 && i + 2 < utf8.size()) {
      c = ((b & 0x0F) << 12) | ((utf8[i + 1] & 0x3F) << 6) | (utf8[i + 2] & 0x3F), len = 3;
    } else if ((b >> 3) == 30 && i + 3 < utf8.size()) {
      c = 0x110000, len = 4;  // outside the code page whatever it is
    } else {
      c = 0x110000, len = 1;  // a stray byte
    }
    i += len;
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) {
      out += char(c);
      continue;
    }
    char mapped = '?';
    for (int k = 0; k < 32; ++k)
      if (kHigh[k] == c) mapped = char(0x80 + k);
    out += mapped;
  }
  return out;
}

std::string UpperCase(std::string_view bytes) {
  std::string out(bytes);
  for (char& ch : out) {
    unsigned char b = ch;
    if (b >= 'a' && b <= 'z')
      ch = char(b - 32);
    else if (b >= 0xE0 && b <= 0xFE && b != 0xF7)
      ch = char(b - 32);
  }
  return out;
}

}  // namespace tilo
