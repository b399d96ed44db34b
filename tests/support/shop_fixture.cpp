// SPDX-License-Identifier: MIT
#include "support/shop_fixture.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "core/settings.h"
#include "core/state.h"

namespace tilo {

void ShopTest::SetUp() {
  char cwd[4096];
  previous_folder_ = getcwd(cwd, sizeof cwd) ? cwd : "/tmp";
  std::string pattern = (std::filesystem::temp_directory_path() / "tilo-test-XXXXXX").string();
  folder_ = mkdtemp(pattern.data());
  ASSERT_EQ(chdir(folder_.c_str()), 0);
  ResetState();
  install_platform(&platform_);
}

void ShopTest::TearDown() {
  install_platform(nullptr);
  ResetState();
  if (chdir(previous_folder_.c_str()) != 0) return;
  std::error_code ec;
  std::filesystem::remove_all(folder_, ec);
}

void ShopTest::MakeFreshShop() {
  ASSERT_TRUE(Firstrunsettings());
  ResetState();
}

std::string ShopTest::Bytes(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::stringstream ss;
  ss << in.rdbuf();
  return ss.str();
}

void ShopTest::WriteBytes(const std::string& path, const std::string& bytes) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(bytes.data(), std::streamsize(bytes.size()));
}

std::string Shell(const std::string& command) {
  std::string out;
  FILE* p = popen(command.c_str(), "r");
  if (!p) return out;
  char buf[4096];
  size_t n;
  while ((n = fread(buf, 1, sizeof buf, p)) > 0) out.append(buf, n);
  pclose(p);
  return out;
}

}  // namespace tilo
