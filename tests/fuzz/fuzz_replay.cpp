// SPDX-License-Identifier: MIT
// Every seed and every saved crash input, run again through its fuzz target in
// the ordinary build: a reader that crashed once must never crash again.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "core/state.h"
#include "platform/platform.h"
#include "targets.h"

namespace tilo::fuzz {
namespace {

namespace fs = std::filesystem;

std::vector<fs::path> Inputs(std::string_view target, const char* kind) {
  std::vector<fs::path> found;
  const fs::path folder = fs::path(TILO_FUZZ_DIR) / kind / target;
  if (!fs::is_directory(folder)) return found;
  for (const auto& entry : fs::directory_iterator(folder))
    if (entry.is_regular_file()) found.push_back(entry.path());
  return found;
}

class FuzzReplay : public ::testing::TestWithParam<Target> {};

TEST_P(FuzzReplay, EverySeedAndRegressionRunsClean) {
  const Target& target = GetParam();
  const auto seeds = Inputs(target.name, "seeds");
  ASSERT_FALSE(seeds.empty()) << "no seeds for " << target.name;
  auto inputs = seeds;
  const auto regressions = Inputs(target.name, "regressions");
  inputs.insert(inputs.end(), regressions.begin(), regressions.end());

  const fs::path before = fs::current_path();
  for (const auto& path : inputs) {
    SCOPED_TRACE(path.string());
    std::ifstream in(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(in), {}};
    target.run(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
  }
  fs::current_path(before);
  install_platform(nullptr);
  ResetState();
}

INSTANTIATE_TEST_SUITE_P(Targets, FuzzReplay, ::testing::ValuesIn(kTargets),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace tilo::fuzz
