// SPDX-License-Identifier: MIT
#include "devices/bytes.h"

#include <cctype>
#include <string>

namespace tilo {
namespace {

// A decimal text-to-integer conversion in the manner of atoi: leading blanks, an
// optional sign, the digits up to the first other character; no digits give 0.
int32_t DecimalValue(const std::string& text) {
  size_t i = 0;
  while (i < text.size() && std::isspace(static_cast<unsigned char>(text[i]))) ++i;
  bool negative = false;
  if (i < text.size() && (text[i] == '+' || text[i] == '-')) negative = text[i++] == '-';
  uint32_t value = 0;
  for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i)
    value = value * 10u + uint32_t(text[i] - '0');
  return int32_t(negative ? 0u - value : value);
}

}  // namespace

int Parsebytes(const char* text, uint8_t* out) {
  int count = 0;
  std::string number;
  for (int i = 0; i < kByteTextWidth; ++i) {
    const char c = text[i];
    if (c != ',' && c != '\0') {
      number += c;
      continue;
    }
    out[count++] = uint8_t(DecimalValue(number) & 0xff);
    number.clear();
    if (c == '\0') break;
  }
  return count;
}

std::vector<uint8_t> Parsebytes(const char* text) {
  uint8_t bytes[kByteTextWidth];
  int n = Parsebytes(text, bytes);
  return std::vector<uint8_t>(bytes, bytes + n);
}

}  // namespace tilo
