// SPDX-License-Identifier: MIT
#include "support/shop_fixture.h"

#include <unistd.h>

#include <clocale>
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

bool ShopTest::UseCommaLocale() {
  WriteBytes("comma.src",
             "LC_CTYPE\ncopy \"POSIX\"\nEND LC_CTYPE\nLC_COLLATE\ncopy \"POSIX\"\nEND LC_COLLATE\n"
             "LC_MONETARY\ncopy \"POSIX\"\nEND LC_MONETARY\nLC_TIME\ncopy \"POSIX\"\nEND LC_TIME\n"
             "LC_MESSAGES\ncopy \"POSIX\"\nEND LC_MESSAGES\nLC_NUMERIC\ndecimal_point \",\"\n"
             "thousands_sep \".\"\ngrouping 3;3\nEND LC_NUMERIC\n");
  std::filesystem::create_directories("locales");
  (void)std::system("localedef -c -i comma.src -f ANSI_X3.4-1968 locales/xx_COMMA >/dev/null 2>&1");
  setenv("LOCPATH", (folder_ + "/locales").c_str(), 1);
  return std::setlocale(LC_ALL, "xx_COMMA") != nullptr;
}

void ShopTest::UseCLocale() {
  std::setlocale(LC_ALL, "C");
  unsetenv("LOCPATH");
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
