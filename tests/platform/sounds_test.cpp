// SPDX-License-Identifier: MIT
#include "platform/sounds.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

namespace tilo {
namespace {

uint32_t U32(const std::string& s, size_t at) {
  uint32_t v;
  std::memcpy(&v, s.data() + at, 4);
  return v;
}

TEST(SoundsTest, EachSoundIsAWholeWaveFileOfItsOwn) {
  for (int id : {kSoundRefused, kSoundRemoved, kSoundAdded}) {
    const std::string wave = WaveSound(id);
    ASSERT_GT(wave.size(), 44u) << id;
    EXPECT_EQ(wave.substr(0, 4), "RIFF");
    EXPECT_EQ(wave.substr(8, 8), "WAVEfmt ");
    EXPECT_EQ(U32(wave, 4), wave.size() - 8);
    EXPECT_EQ(wave.substr(36, 4), "data");
    EXPECT_EQ(U32(wave, 40), wave.size() - 44);
    // Short: a till beeps, it doesn't play tunes.
    EXPECT_LT(U32(wave, 40), 22050u * 2 / 3) << id;
  }
  EXPECT_NE(WaveSound(kSoundAdded), WaveSound(kSoundRemoved));
  EXPECT_TRUE(WaveSound(1234).empty());
}

}  // namespace
}  // namespace tilo
