// SPDX-License-Identifier: MIT
// termios2 gives any baud rate (14400, 128000 and 256000 have no B-constant), so
// this file speaks to the tty driver through <asm/termbits.h>, not <termios.h>.
#include "devices/ports.h"

#include <asm/termbits.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cctype>
#include <cerrno>

#include "platform/files.h"

namespace tilo {
namespace {

std::string Trim(const std::string& s) {
  size_t b = 0, e = s.size();
  while (b < e && std::isspace(static_cast<unsigned char>(s[b]))) ++b;
  while (e > b && std::isspace(static_cast<unsigned char>(s[e - 1]))) --e;
  return s.substr(b, e - b);
}

std::string Upper(std::string s) {
  for (char& c : s) c = char(std::toupper(static_cast<unsigned char>(c)));
  return s;
}

std::string DefaultPath(const std::string& name) {
  if (name.size() != 4) return {};
  const char digit = name[3];
  if (name.compare(0, 3, "COM") == 0 && digit >= '1' && digit <= '8')
    return std::string("/dev/ttyS") + char(digit - 1);
  if (name.compare(0, 3, "LPT") == 0 && digit >= '1' && digit <= '2')
    return std::string("/dev/lp") + char(digit - 1);
  return {};
}

tcflag_t DataBits(int bits) {
  switch (bits) {
    case 5:
      return CS5;
    case 6:
      return CS6;
    case 7:
      return CS7;
    case 8:
      return CS8;
    default:
      return bits < 5 ? CS5 : CS8;
  }
}

}  // namespace

std::string PortName(int64_t port) {
  if (port >= 0 && port <= 7) return "COM" + std::to_string(port + 1);
  if (port == 8 || port == 9) return "LPT" + std::to_string(port - 7);
  return {};
}

std::string PortPath(const std::string& name) {
  const std::string key = Upper(Trim(name));
  if (key.empty()) return {};
  if (auto cfg = ReadWholeFile(kPortsFile)) {
    size_t start = 0;
    while (start < cfg->size()) {
      size_t end = cfg->find('\n', start);
      if (end == std::string::npos) end = cfg->size();
      std::string line = Trim(cfg->substr(start, end - start));
      start = end + 1;
      if (line.empty() || line[0] == '#') continue;
      size_t eq = line.find('=');
      if (eq == std::string::npos) continue;
      if (Upper(Trim(line.substr(0, eq))) != key) continue;
      // "LPT2=" names no device: the port keeps its usual one, as when the
      // Device box is cleared.
      std::string path = Trim(line.substr(eq + 1));
      if (!path.empty()) return path;
    }
  }
  return DefaultPath(key);
}

bool DevicePort::Open(const std::string& path) {
  Close();
  if (path.empty()) return false;
  // Non-blocking only for the open itself, so a line without carrier can't hang it.
  int fd = ::open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
  if (fd < 0) return false;
  if (::flock(fd, LOCK_EX | LOCK_NB) != 0) {
    ::close(fd);
    return false;
  }
  if (::isatty(fd)) {
    // Another program that opens the tty while we hold it is refused by the driver.
    exclusive_ = ::ioctl(fd, TIOCEXCL) == 0;
  }
  int flags = ::fcntl(fd, F_GETFL);
  if (flags >= 0) ::fcntl(fd, F_SETFL, flags & ~O_NONBLOCK);
  fd_ = fd;
  return true;
}

bool DevicePort::MakeRaw() {
  if (fd_ < 0) return false;
  if (!::isatty(fd_)) return true;
  struct termios2 t {};
  if (::ioctl(fd_, TCGETS2, &t) != 0) return false;
  t.c_iflag &= ~tcflag_t(IGNBRK | BRKINT | PARMRK | ISTRIP | INLCR | IGNCR | ICRNL | IXON);
  t.c_oflag &= ~tcflag_t(OPOST);
  t.c_lflag &= ~tcflag_t(ECHO | ECHONL | ICANON | ISIG | IEXTEN);
  t.c_cflag |= CREAD | CLOCAL;
  return ::ioctl(fd_, TCSETS2, &t) == 0;
}

bool DevicePort::Apply(const LineSettings& s) {
  if (fd_ < 0) return false;
  if (!::isatty(fd_)) return true;
  if (!MakeRaw()) return false;
  struct termios2 t {};
  if (::ioctl(fd_, TCGETS2, &t) != 0) return false;
  t.c_cflag &= ~tcflag_t(CBAUD | CIBAUD | CSIZE | PARENB | PARODD | CSTOPB | CRTSCTS);
  t.c_cflag |= BOTHER | (BOTHER << IBSHIFT) | DataBits(s.data_bits);
  t.c_ispeed = t.c_ospeed = speed_t(s.baud);
  if (s.parity == 1) t.c_cflag |= PARENB;
  if (s.parity == 2) t.c_cflag |= PARENB | PARODD;
  if (s.stop_bits != 0) t.c_cflag |= CSTOPB;
  // No flow control of any kind: every other line control field is zero.
  t.c_iflag &= ~tcflag_t(IXON | IXOFF | IXANY);
  return ::ioctl(fd_, TCSETS2, &t) == 0;
}

bool DevicePort::Write(const void* bytes, size_t count) {
  if (fd_ < 0) return false;
  const char* p = static_cast<const char*>(bytes);
  size_t done = 0;
  while (done < count) {
    ssize_t n = ::write(fd_, p + done, count - done);
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) return false;
    done += size_t(n);
  }
  return true;
}

void DevicePort::Close() {
  if (fd_ < 0) return;
  if (exclusive_) ::ioctl(fd_, TIOCNXCL);
  ::close(fd_);
  fd_ = -1;
  exclusive_ = false;
}

}  // namespace tilo
