// SPDX-License-Identifier: MIT
// The drawer behind the receipt printer, against a CUPS daemon of the test's own:
// its own configuration folder, a loopback port, and a printer whose backend
// keeps each job's bytes and title in files.
#include <arpa/inet.h>
#include <cups/cups.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <signal.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <thread>

#include "core/state.h"
#include "core/text.h"
#include "devices/drawer.h"
#include "support/shop_fixture.h"

extern char** environ;

namespace tilo {
namespace {

namespace fs = std::filesystem;
constexpr const char* kCupsd = "/usr/sbin/cupsd";

int FreePort() {
  int s = socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in a{};
  a.sin_family = AF_INET;
  a.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t n = sizeof a;
  int port = 0;
  if (bind(s, reinterpret_cast<sockaddr*>(&a), n) == 0 &&
      getsockname(s, reinterpret_cast<sockaddr*>(&a), &n) == 0)
    port = ntohs(a.sin_port);
  close(s);
  return port;
}

bool Accepts(int port) {
  int s = socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in a{};
  a.sin_family = AF_INET;
  a.sin_port = htons(uint16_t(port));
  a.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  bool ok = connect(s, reinterpret_cast<sockaddr*>(&a), sizeof a) == 0;
  close(s);
  return ok;
}

void Write(const fs::path& path, const std::string& text) {
  FILE* f = std::fopen(path.c_str(), "w");
  std::fputs(text.c_str(), f);
  std::fclose(f);
}

class RawPrinterTest : public ShopTest {
 protected:
  void SetUp() override {
    ShopTest::SetUp();
    if (access(kCupsd, X_OK) != 0) GTEST_SKIP() << "no CUPS daemon here (cups-daemon)";
    const fs::path root = fs::path(folder_) / "cups";
    out_ = root / "out";
    for (const char* d : {"conf", "spool", "tmp", "cache", "state", "log", "out", "bin/backend"})
      fs::create_directories(root / d);
    fs::permissions(out_, fs::perms::all);
    fs::permissions(root / "tmp", fs::perms::all);
    fs::create_directory_symlink("/usr/lib/cups/daemon", root / "bin/daemon");
    const fs::path backend = root / "bin/backend/keep";
    Write(backend,
          "#!/bin/sh\n"
          "[ $# -eq 0 ] && { echo 'direct keep \"Unknown\" \"Keep\"'; exit 0; }\n"
          "out=\"${DEVICE_URI#keep:}\"\n"
          "printf '%s' \"$3\" > \"$out.title\"\n"
          "if [ -n \"$6\" ]; then cat \"$6\" > \"$out.part\"; else cat > \"$out.part\"; fi\n"
          "mv \"$out.part\" \"$out\"\n");
    chmod(backend.c_str(), 0700);
    const std::string r = root.string();
    Write(root / "conf/cups-files.conf",
          "ServerRoot " + r + "/conf\nRequestRoot " + r + "/spool\nTempDir " + r +
              "/tmp\nCacheDir " + r + "/cache\nStateDir " + r + "/state\nServerBin " + r +
              "/bin\nDataDir /usr/share/cups\nAccessLog " + r + "/log/access_log\nErrorLog " + r +
              "/log/error_log\nPageLog " + r + "/log/page_log\n");
    port_ = FreePort();
    Write(root / "conf/cupsd.conf", "Listen 127.0.0.1:" + std::to_string(port_) +
                                        "\nBrowsing No\nWebInterface No\nDefaultAuthType None\n"
                                        "<Location />\n  Order allow,deny\n  Allow all\n"
                                        "</Location>\n");
    Write(root / "conf/printers.conf",
          "<DefaultPrinter RECEIPT>\nDeviceURI keep:" + (out_ / "job").string() +
              "\nState Idle\nAccepting Yes\nShared No\n"
              "</DefaultPrinter>\n");
    const std::string c = r + "/conf/cupsd.conf", s = r + "/conf/cups-files.conf";
    const char* argv[] = {kCupsd, "-f", "-c", c.c_str(), "-s", s.c_str(), nullptr};
    ASSERT_EQ(posix_spawn(&pid_, kCupsd, nullptr, nullptr, const_cast<char**>(argv), environ), 0);
    for (int i = 0; i < 100 && !Accepts(port_); ++i)
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    ASSERT_TRUE(Accepts(port_)) << "the test's CUPS daemon did not start";
    cupsSetServer(("127.0.0.1:" + std::to_string(port_)).c_str());
  }
  void TearDown() override {
    cupsSetServer(nullptr);
    if (pid_ > 0) {
      kill(pid_, SIGTERM);
      waitpid(pid_, nullptr, 0);
    }
    ShopTest::TearDown();
  }
  // The bytes of the next job to reach the printer, and its title.
  std::pair<std::string, std::string> NextJob() {
    const fs::path job = out_ / "job";
    for (int i = 0; i < 100 && !fs::exists(job); ++i)
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    auto got = std::make_pair(Bytes(job.string()), Bytes(job.string() + ".title"));
    fs::remove(job);
    return got;
  }

  pid_t pid_ = -1;
  int port_ = 0;
  fs::path out_;
};

TEST_F(RawPrinterTest, TheDrawerCodeGoesThroughThePrinterAsARawJobNamedTilo) {
  SettingsRecord& s = G().settings;
  s.drawer_mode = 2;
  SetField(s.printer_name, "RECEIPT");
  SetField(s.drawer_code, "27,112,48,55,121");
  Opendrawer();
  EXPECT_EQ(NextJob(), std::make_pair(std::string("\x1b\x70\x30\x37\x79"), std::string("TILO")));

  // A code at its limit of 31 characters, to the default printer.
  SetField(s.printer_name, "");
  SetField(s.drawer_code, "27,112,0,25,250,27,112,0,25,250");
  Opendrawer();
  EXPECT_EQ(NextJob().first, std::string("\x1b\x70\x00\x19\xfa\x1b\x70\x00\x19\xfa", 10));
  EXPECT_TRUE(platform_.messages.empty());

  SetField(s.printer_name, "KITCHEN");
  Opendrawer();
  EXPECT_EQ(platform_.shown(),
            std::vector<std::string>{"Problem: Unable to open printer for till drawer"});
}

}  // namespace
}  // namespace tilo
