// SPDX-License-Identifier: MIT
// How the set-up forms read what was typed. A number is read the way the C
// library reads one: leading blanks, a sign, as many digits as follow, the rest
// ignored; nothing readable is 0. A decimal point is always ".", whatever the
// desktop's language. Text limits count bytes of the record's Windows-1252 text.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tilo {

// "12abc" is 12, "" and "x" are 0, " -7" is -7. Past the 64-bit range it sticks
// at the end of the range.
int64_t LeadingInteger(std::string_view text);
// "5.62%" is 5.62, "" is 0, ",5" is 0.
double LeadingReal(std::string_view text);

// The screen's UTF-8 text as record bytes, cut to at most `max_bytes`.
std::string BoxBytes(std::string_view utf8, size_t max_bytes);

// How a tick is kept: the value stored when ticked and when clear. An inverted
// tick stores 0 when ticked.
struct TickCoding {
  int64_t ticked;
  int64_t clear;
};
inline constexpr TickCoding kTick20{2, 0};
inline constexpr TickCoding kTick10{1, 0};
inline constexpr TickCoding kTick01{0, 1};
inline constexpr TickCoding kTick02{0, 2};

// A tick is shown set for any non-zero field, or for an inverted one, for zero.
bool TickShown(int64_t field, TickCoding coding);
int64_t TickStored(bool ticked, TickCoding coding);

}  // namespace tilo
