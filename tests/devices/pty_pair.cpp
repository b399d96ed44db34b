// SPDX-License-Identifier: MIT
#include "pty_pair.h"

#include <asm/termbits.h>
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <thread>

extern char** environ;

namespace tilo {

PtyPair::PtyPair(const std::string& folder) : port_(folder + "/port"), peer_(folder + "/peer") {
  const std::string a = "pty,raw,echo=0,link=" + port_;
  const std::string b = "pty,raw,echo=0,link=" + peer_;
  const char* argv[] = {"socat", a.c_str(), b.c_str(), nullptr};
  pid_t pid;
  if (posix_spawnp(&pid, "socat", nullptr, nullptr, const_cast<char**>(argv), environ) != 0) return;
  pid_ = pid;
  for (int i = 0; i < 100 && (access(port_.c_str(), F_OK) || access(peer_.c_str(), F_OK)); ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  hold_fd_ = open(port_.c_str(), O_RDWR | O_NOCTTY);
  peer_fd_ = open(peer_.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK);
}

PtyPair::~PtyPair() {
  for (int fd : {lock_fd_, peer_fd_, hold_fd_})
    if (fd >= 0) close(fd);
  if (pid_ > 0) {
    kill(pid_, SIGTERM);
    waitpid(pid_, nullptr, 0);
  }
}

std::vector<uint8_t> PtyPair::Received(int quiet_ms) {
  std::vector<uint8_t> got;
  pollfd p{peer_fd_, POLLIN, 0};
  while (poll(&p, 1, quiet_ms) > 0) {
    uint8_t buffer[512];
    ssize_t n = read(peer_fd_, buffer, sizeof buffer);
    if (n <= 0) break;
    got.insert(got.end(), buffer, buffer + n);
  }
  return got;
}

PtyPair::Line PtyPair::Settings() const {
  struct termios2 t {};
  Line line;
  if (ioctl(hold_fd_, TCGETS2, &t) != 0) return line;
  line.baud = t.c_ospeed;
  switch (t.c_cflag & CSIZE) {
    case CS5:
      line.data_bits = 5;
      break;
    case CS6:
      line.data_bits = 6;
      break;
    case CS7:
      line.data_bits = 7;
      break;
    default:
      line.data_bits = 8;
  }
  if (t.c_cflag & PARENB) line.parity = (t.c_cflag & PARODD) ? 'O' : 'E';
  line.stop_bits = (t.c_cflag & CSTOPB) ? 2 : 1;
  line.raw = !(t.c_oflag & OPOST) && !(t.c_lflag & ICANON);
  return line;
}

void PtyPair::Reset() {
  struct termios2 t {};
  if (ioctl(hold_fd_, TCGETS2, &t) != 0) return;
  t.c_oflag |= OPOST | ONLCR;
  t.c_lflag |= ICANON;
  t.c_cflag &= ~tcflag_t(CBAUD | CSIZE | PARENB | PARODD | CSTOPB);
  t.c_cflag |= BOTHER | CS8;
  t.c_ispeed = t.c_ospeed = 9600;
  ioctl(hold_fd_, TCSETS2, &t);
}

bool PtyPair::LockPort() {
  lock_fd_ = open(port_.c_str(), O_RDWR | O_NOCTTY);
  return lock_fd_ >= 0 && flock(lock_fd_, LOCK_EX | LOCK_NB) == 0;
}

}  // namespace tilo
