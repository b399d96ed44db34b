// SPDX-License-Identifier: MIT
#include "support/private_cups.h"

#include <cups/cups.h>
#include <signal.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <thread>

#include "support/local_ports.h"

extern char** environ;

namespace tilo {
namespace {

namespace fs = std::filesystem;

void Write(const fs::path& path, const std::string& text) {
  std::ofstream(path) << text;
}

std::string Read(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream s;
  s << in.rdbuf();
  return s.str();
}

}  // namespace

bool PrivateCups::Installed() {
  return access(kCupsd, X_OK) == 0;
}

bool PrivateCups::Start(const fs::path& root, const std::string& printer) {
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
        "ServerRoot " + r + "/conf\nRequestRoot " + r + "/spool\nTempDir " + r + "/tmp\nCacheDir " +
            r + "/cache\nStateDir " + r + "/state\nServerBin " + r +
            "/bin\nDataDir /usr/share/cups\nAccessLog " + r + "/log/access_log\nErrorLog " + r +
            "/log/error_log\nPageLog " + r + "/log/page_log\n");
  port_ = FreeLocalPort();
  Write(root / "conf/cupsd.conf", "Listen 127.0.0.1:" + std::to_string(port_) +
                                      "\nBrowsing No\nWebInterface No\nDefaultAuthType None\n"
                                      "<Location />\n  Order allow,deny\n  Allow all\n"
                                      "</Location>\n");
  Write(root / "conf/printers.conf", "<DefaultPrinter " + printer +
                                         ">\nDeviceURI keep:" + (out_ / "job").string() +
                                         "\nState Idle\nAccepting Yes\nShared No\n"
                                         "</DefaultPrinter>\n");
  const std::string c = r + "/conf/cupsd.conf", s = r + "/conf/cups-files.conf";
  const char* argv[] = {kCupsd, "-f", "-c", c.c_str(), "-s", s.c_str(), nullptr};
  if (posix_spawn(&pid_, kCupsd, nullptr, nullptr, const_cast<char**>(argv), environ) != 0)
    return false;
  for (int i = 0; i < 100 && !LocalPortListening(port_); ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  if (!LocalPortListening(port_)) return false;
  cupsSetServer(("127.0.0.1:" + std::to_string(port_)).c_str());
  return true;
}

PrivateCups::~PrivateCups() {
  cupsSetServer(nullptr);
  if (pid_ > 0) {
    kill(pid_, SIGTERM);
    waitpid(pid_, nullptr, 0);
  }
}

std::pair<std::string, std::string> PrivateCups::NextJob() {
  const fs::path job = out_ / "job";
  for (int i = 0; i < 100 && !fs::exists(job); ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  auto got = std::make_pair(Read(job), Read(job.string() + ".title"));
  std::error_code ec;
  fs::remove(job, ec);
  return got;
}

}  // namespace tilo
