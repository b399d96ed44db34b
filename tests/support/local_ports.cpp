// SPDX-License-Identifier: MIT
#include "support/local_ports.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdint>

namespace tilo {
namespace {

sockaddr_in Loopback(int port) {
  sockaddr_in a{};
  a.sin_family = AF_INET;
  a.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  a.sin_port = htons(uint16_t(port));
  return a;
}

}  // namespace

int FreeLocalPort() {
  const int fd = socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in a = Loopback(0);
  socklen_t n = sizeof a;
  int port = 0;
  if (bind(fd, reinterpret_cast<sockaddr*>(&a), n) == 0 &&
      getsockname(fd, reinterpret_cast<sockaddr*>(&a), &n) == 0)
    port = ntohs(a.sin_port);
  close(fd);
  return port;
}

bool LocalPortListening(int port) {
  const int fd = socket(AF_INET, SOCK_STREAM, 0);
  const sockaddr_in a = Loopback(port);
  const bool up = connect(fd, reinterpret_cast<const sockaddr*>(&a), sizeof a) == 0;
  close(fd);
  return up;
}

}  // namespace tilo
