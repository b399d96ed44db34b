// SPDX-License-Identifier: MIT
// Tip of the day: one tip a showing, the series carrying on across runs through
// the settings' tip number.
#pragma once

#include <string>

namespace tilo {

inline constexpr int kTipCount = 26;

// The tip the settings point at (Windows-1252), moving the pointer on: past the
// last it starts again from the first.
std::string Nexttip();
// "Close": the tick "Show tips at startup" kept as the settings code it.
void Closetips(bool show_at_startup);
// Whether the tip opens once the first clerk of a run has logged on.
bool Tipsatstartup();

}  // namespace tilo
