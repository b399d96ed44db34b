// SPDX-License-Identifier: MIT
// tilo_fuzz_replay TARGET PATH...: runs every input file under the paths (files
// or folders) once through one fuzz target. Built with source coverage, it
// measures how much of the readers a corpus reaches.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "targets.h"

namespace fs = std::filesystem;

int main(int argc, char** argv) {
  if (argc < 3) {
    std::fprintf(stderr, "usage: %s TARGET PATH...\n", argv[0]);
    return 2;
  }
  const tilo::fuzz::Target* target = nullptr;
  for (const auto& t : tilo::fuzz::kTargets)
    if (t.name == argv[1]) target = &t;
  if (!target) {
    std::fprintf(stderr, "no fuzz target %s\n", argv[1]);
    return 2;
  }
  long runs = 0;
  auto run = [&](const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(in), {}};
    target->run(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
    ++runs;
  };
  for (int i = 2; i < argc; ++i) {
    const fs::path path(argv[i]);
    if (fs::is_directory(path)) {
      for (const auto& entry : fs::recursive_directory_iterator(path))
        if (entry.is_regular_file()) run(entry.path());
    } else if (fs::is_regular_file(path)) {
      run(path);
    }
  }
  std::printf("%s: %ld inputs\n", argv[1], runs);
  return 0;
}
