// SPDX-License-Identifier: MIT
#include "platform/sounds.h"

#include <cmath>
#include <cstdint>
#include <vector>

namespace tilo {
namespace {

constexpr int kRate = 22050;

struct Tone {
  double hertz;
  int milliseconds;
  double harmonics;  // 0 a pure tone; towards 1 a rougher, buzzing one
};

void Put16(std::string& out, uint16_t v) {
  out += char(v & 0xff);
  out += char(v >> 8);
}
void Put32(std::string& out, uint32_t v) {
  Put16(out, uint16_t(v & 0xffff));
  Put16(out, uint16_t(v >> 16));
}

// Each tone rises and falls over a few milliseconds, so nothing clicks.
void Render(const Tone& t, std::vector<int16_t>& samples) {
  const int n = kRate * t.milliseconds / 1000;
  const int edge = kRate * 6 / 1000;
  for (int i = 0; i < n; ++i) {
    const double phase = 2.0 * M_PI * t.hertz * i / kRate;
    double v = std::sin(phase) + t.harmonics * (std::sin(3 * phase) / 3 + std::sin(5 * phase) / 5);
    double envelope = 1.0;
    if (i < edge) envelope = double(i) / edge;
    if (n - i < edge * 3) envelope = double(n - i) / (edge * 3);
    samples.push_back(int16_t(v * envelope * 9000));
  }
}

std::vector<Tone> TonesOf(int id) {
  switch (id) {
    case kSoundAdded:
      return {{1046.5, 45, 0}, {0, 15, 0}, {1568.0, 70, 0}};
    case kSoundRemoved:
      return {{784.0, 60, 0.2}, {0, 10, 0}, {523.3, 110, 0.2}};
    case kSoundRefused:
      return {{196.0, 220, 0.9}};
    default:
      return {};
  }
}

}  // namespace

std::string WaveSound(int sound_id) {
  std::vector<Tone> tones = TonesOf(sound_id);
  if (tones.empty()) return {};
  std::vector<int16_t> samples;
  for (const Tone& t : tones) Render(t, samples);
  const uint32_t data_bytes = uint32_t(samples.size() * 2);
  std::string out;
  out += "RIFF";
  Put32(out, 36 + data_bytes);
  out += "WAVEfmt ";
  Put32(out, 16);
  Put16(out, 1);  // PCM
  Put16(out, 1);  // mono
  Put32(out, kRate);
  Put32(out, kRate * 2);
  Put16(out, 2);
  Put16(out, 16);
  out += "data";
  Put32(out, data_bytes);
  for (int16_t s : samples) Put16(out, uint16_t(s));
  return out;
}

}  // namespace tilo
