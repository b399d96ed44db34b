// SPDX-License-Identifier: MIT
#include "fuzz_support.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "core/settings.h"
#include "core/startup.h"
#include "core/state.h"

namespace tilo::fuzz {
namespace {

std::string MakeFolder() {
  const char* tmp = std::getenv("TMPDIR");
  std::string pattern = std::string(tmp && *tmp ? tmp : "/tmp") + "/tilo-fuzz-XXXXXX";
  if (!::mkdtemp(pattern.data())) {
    std::perror("mkdtemp");
    std::abort();
  }
  static std::string made;
  made = pattern;
  // The folder goes when the run ends, so runs leave no shops behind in $TMPDIR.
  std::atexit([] {
    std::error_code ignored;
    std::filesystem::remove_all(made, ignored);
  });
  return pattern + "/";
}

}  // namespace

const std::string& RunFolder() {
  static const std::string folder = MakeFolder();
  return folder;
}

namespace {
void EmptyFolder() {
  namespace fs = std::filesystem;
  std::error_code ignored;
  for (const auto& entry : fs::directory_iterator(RunFolder(), ignored))
    fs::remove_all(entry.path(), ignored);
}

}  // namespace

namespace {
const std::filesystem::path& StartFolder() {
  static const std::filesystem::path start = std::filesystem::current_path();
  return start;
}
}  // namespace

void LeaveRun() {
  std::error_code ignored;
  std::filesystem::current_path(StartFolder(), ignored);
}

ScriptedPlatform& StartRun(std::unique_ptr<ScriptedPlatform> own) {
  StartFolder();
  const std::string& folder = RunFolder();
  if (::chdir(folder.c_str()) != 0) std::abort();
  EmptyFolder();
  static std::unique_ptr<ScriptedPlatform> platform;
  // TILO_FUZZ_VERBOSE=1 shows what the operator would have seen on each input,
  // to tell how far a seed gets.
  static const bool verbose = std::getenv("TILO_FUZZ_VERBOSE") != nullptr;
  if (platform && verbose)
    for (const std::string& shown : platform->shown())
      std::fprintf(stderr, "  [%s]\n", shown.c_str());
  install_platform(nullptr);
  platform = own ? std::move(own) : std::make_unique<ScriptedPlatform>();
  install_platform(platform.get());
  ResetState();
  return *platform;
}

std::vector<std::string_view> SplitFiles(const uint8_t* data, size_t size, size_t count) {
  std::string_view rest(reinterpret_cast<const char*>(data), size);
  std::vector<std::string_view> parts;
  while (parts.size() + 1 < count) {
    const size_t at = rest.find(kFileSeparator);
    if (at == std::string_view::npos) break;
    parts.push_back(rest.substr(0, at));
    rest.remove_prefix(at + kFileSeparator.size());
  }
  parts.push_back(rest);
  return parts;
}

namespace {

[[noreturn]] void NoShop() {
  std::fputs("tilo fuzz: a fresh shop did not open\n", stderr);
  std::abort();
}

// The files of a fresh shop after its first start and close-down, made once:
// writing them out again is far quicker than a first start at every input. The
// stock pictures are left out; a missing picture only shows nothing.
const std::vector<std::pair<std::string, std::string>>& ShopFiles() {
  static const auto files = [] {
    namespace fs = std::filesystem;
    if (!Firstrunsettings() || !OpenStore()) NoShop();
    Closedown();
    std::vector<std::pair<std::string, std::string>> kept;
    for (const auto& entry : fs::directory_iterator(RunFolder())) {
      const std::string name = entry.path().filename().string();
      if (!entry.is_regular_file() || name.ends_with(".bmp")) continue;
      std::ifstream in(entry.path(), std::ios::binary);
      kept.emplace_back(name, std::string{std::istreambuf_iterator<char>(in), {}});
    }
    EmptyFolder();
    ResetState();
    return kept;
  }();
  return files;
}

}  // namespace

void MakeShop() {
  for (const auto& [name, bytes] : ShopFiles()) PutFile(name, bytes);
  if (!OpenStore()) NoShop();
}

void PutFile(const std::string& path, std::string_view bytes) {
  const std::filesystem::path p(path);
  if (p.has_parent_path()) std::filesystem::create_directories(p.parent_path());
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(bytes.data(), std::streamsize(bytes.size()));
}

std::string_view WholeRecords(std::string_view bytes, size_t record_size) {
  return bytes.substr(0, bytes.size() - bytes.size() % record_size);
}

}  // namespace tilo::fuzz
