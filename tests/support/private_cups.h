// SPDX-License-Identifier: MIT
// A CUPS daemon of the test's own: its own configuration folder, a loopback
// port, and one default printer whose backend keeps each job's bytes and title
// in files. The process talks to it alone while it runs.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <utility>

namespace tilo {

class PrivateCups {
 public:
  // Where the daemon lives; is it installed here at all?
  static constexpr const char* kCupsd = "/usr/sbin/cupsd";
  static bool Installed();

  PrivateCups() = default;
  PrivateCups(const PrivateCups&) = delete;
  PrivateCups& operator=(const PrivateCups&) = delete;
  // Stops the daemon and points the process back at the usual server.
  ~PrivateCups();

  // Starts the daemon in `root` with the default printer `printer`; false
  // when it did not come up.
  bool Start(const std::filesystem::path& root, const std::string& printer);
  // The bytes of the next job to reach the printer, and its title; empty
  // when none came within five seconds.
  std::pair<std::string, std::string> NextJob();

 private:
  pid_t pid_ = -1;
  int port_ = 0;
  std::filesystem::path out_;
};

}  // namespace tilo
