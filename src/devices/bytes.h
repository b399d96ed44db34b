// SPDX-License-Identifier: MIT
// Byte text: the comma-separated decimal notation in which every device control
// sequence is kept ("27,112,0,25,250" opens a drawer behind an Epson printer).
#pragma once

#include <cstdint>
#include <vector>

namespace tilo {

// The longest byte text a settings field holds, and so the most bytes it gives.
inline constexpr int kByteTextWidth = 32;

// Turns the byte text in `text` (a field of up to 32 characters, NUL-terminated
// within them or not) into bytes at `out`, which must have room for 32. Returns
// the byte count. A number ends at a comma or at the terminator, so "27,,1" gives
// 27, 0, 1 and "27," gives 27, 0; an empty text gives a single 0. Digits still
// open when the 32 characters run out are dropped.
int Parsebytes(const char* text, uint8_t* out);
std::vector<uint8_t> Parsebytes(const char* text);

}  // namespace tilo
