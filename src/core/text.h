// SPDX-License-Identifier: MIT
// Fixed-width text fields of the record files: NUL-terminated single-byte
// Windows-1252 text. The screen speaks UTF-8; these helpers cross between them.
#pragma once

#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

namespace tilo {

// The text of a field up to its terminator (or its full width when there is none).
inline std::string FieldText(const char* field, size_t width) {
  size_t n = 0;
  while (n < width && field[n] != '\0') ++n;
  return std::string(field, n);
}
template <size_t N>
std::string FieldText(const char (&field)[N]) {
  return FieldText(field, N);
}

// Stores at most N-1 bytes and the terminator; the rest of the field is zeroed.
template <size_t N>
void SetField(char (&field)[N], std::string_view text) {
  size_t n = text.size() < N - 1 ? text.size() : N - 1;
  std::memcpy(field, text.data(), n);
  std::memset(field + n, 0, N - n);
}

std::string Cp1252ToUtf8(std::string_view bytes);
// Characters with no Windows-1252 form become '?'.
std::string Utf8ToCp1252(std::string_view utf8);

// Folds a-z (and the accented Windows-1252 letters) to upper case, as forms do on entry.
std::string UpperCase(std::string_view bytes);

}  // namespace tilo
