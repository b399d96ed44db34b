// SPDX-License-Identifier: MIT
#include "config/form_rules.h"

#include <charconv>
#include <limits>

#include "core/text.h"

namespace tilo {
namespace {

std::string_view SkipBlanks(std::string_view text) {
  size_t i = 0;
  while (i < text.size() && (text[i] == ' ' || text[i] == '\t' || text[i] == '\n' ||
                             text[i] == '\r' || text[i] == '\f' || text[i] == '\v'))
    ++i;
  return text.substr(i);
}

}  // namespace

int64_t LeadingInteger(std::string_view text) {
  text = SkipBlanks(text);
  bool negative = false;
  if (!text.empty() && (text[0] == '+' || text[0] == '-')) {
    negative = text[0] == '-';
    text.remove_prefix(1);
  }
  uint64_t value = 0;
  const uint64_t limit = negative ? uint64_t(std::numeric_limits<int64_t>::max()) + 1
                                  : uint64_t(std::numeric_limits<int64_t>::max());
  for (char c : text) {
    if (c < '0' || c > '9') break;
    const uint64_t digit = uint64_t(c - '0');
    value = value > (limit - digit) / 10 ? limit : value * 10 + digit;
  }
  if (negative) return value == limit ? std::numeric_limits<int64_t>::min() : -int64_t(value);
  return int64_t(value);
}

double LeadingReal(std::string_view text) {
  text = SkipBlanks(text);
  bool negative = false;
  if (!text.empty() && (text[0] == '+' || text[0] == '-')) {
    negative = text[0] == '-';
    text.remove_prefix(1);
  }
  // Only digits and one point: "inf", "nan" and exponents are not shop input.
  size_t n = 0;
  bool point = false;
  while (n < text.size() && ((text[n] >= '0' && text[n] <= '9') || (text[n] == '.' && !point))) {
    point = point || text[n] == '.';
    ++n;
  }
  double value = 0;
  if (std::from_chars(text.data(), text.data() + n, value, std::chars_format::fixed).ec !=
      std::errc())
    value = 0;
  return negative ? -value : value;
}

std::string BoxBytes(std::string_view utf8, size_t max_bytes) {
  std::string bytes = Utf8ToCp1252(utf8);
  if (bytes.size() > max_bytes) bytes.resize(max_bytes);
  return bytes;
}

bool TickShown(int64_t field, TickCoding coding) {
  const bool inverted = coding.ticked == 0;
  return inverted ? field == 0 : field != 0;
}

int64_t TickStored(bool ticked, TickCoding coding) {
  return ticked ? coding.ticked : coding.clear;
}

}  // namespace tilo
