// SPDX-License-Identifier: MIT
// The three wave sounds of the till, made by the program itself: 8004 after an
// added line and a finished sale, 8003 after a void or an emptied basket, 8002 at
// a refused entry in a back-office form.
#pragma once

#include <string>

namespace tilo {

inline constexpr int kSoundRefused = 8002;
inline constexpr int kSoundRemoved = 8003;
inline constexpr int kSoundAdded = 8004;

// The sound as a complete RIFF WAVE file (16-bit mono PCM); empty for an unknown id.
std::string WaveSound(int sound_id);

}  // namespace tilo
