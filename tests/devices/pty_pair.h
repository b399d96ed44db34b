// SPDX-License-Identifier: MIT
// A pair of linked pseudo-terminals made by socat: the program opens one end as
// its drawer or pole port, the test reads from the other end exactly the bytes
// that crossed the line.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tilo {

class PtyPair {
 public:
  // Makes `folder`/port (the end the program opens) and `folder`/peer.
  explicit PtyPair(const std::string& folder);
  ~PtyPair();
  PtyPair(const PtyPair&) = delete;
  PtyPair& operator=(const PtyPair&) = delete;

  bool ok() const { return peer_fd_ >= 0; }
  const std::string& port() const { return port_; }
  // Every byte that arrives until the line has been quiet for `quiet_ms`.
  std::vector<uint8_t> Received(int quiet_ms = 300);
  // The line settings of the program's end as the driver holds them now.
  struct Line {
    unsigned baud = 0;
    int data_bits = 0;
    char parity = 'N';
    int stop_bits = 1;
    bool raw = false;
  };
  Line Settings() const;
  // Puts the program's end back to a cooked 9600 8N1 line, as a fresh port is.
  void Reset();
  // Takes an exclusive lock on the program's end, as another program holding it.
  bool LockPort();

 private:
  std::string port_, peer_;
  int pid_ = -1;
  int hold_fd_ = -1;  // keeps the port's tty alive between the program's opens
  int peer_fd_ = -1;
  int lock_fd_ = -1;
};

}  // namespace tilo
