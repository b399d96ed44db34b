// SPDX-License-Identifier: MIT
#include "mail/curl_control.h"

#include <sys/socket.h>
#include <unistd.h>

namespace tilo {
namespace {

// libcurl asks often enough during a transfer: close-down stops it here.
int StillWanted(void* user, curl_off_t, curl_off_t, curl_off_t, curl_off_t) {
  return static_cast<JobControl*>(user)->cancelled() ? 1 : 0;
}

curl_socket_t OpenSocket(void* user, curlsocktype, curl_sockaddr* address) {
  const int fd = ::socket(address->family, address->socktype | SOCK_CLOEXEC, address->protocol);
  if (fd >= 0) static_cast<JobControl*>(user)->set_wake([fd] { ::shutdown(fd, SHUT_RDWR); });
  return fd >= 0 ? fd : CURL_SOCKET_BAD;
}

int CloseSocket(void* user, curl_socket_t fd) {
  static_cast<JobControl*>(user)->set_wake({});
  return ::close(fd);
}

}  // namespace

void Stopwithjob(CURL* curl, JobControl& control) {
  curl_easy_setopt(curl, CURLOPT_NOPROGRESS, 0L);
  curl_easy_setopt(curl, CURLOPT_XFERINFOFUNCTION, StillWanted);
  curl_easy_setopt(curl, CURLOPT_XFERINFODATA, &control);
  curl_easy_setopt(curl, CURLOPT_OPENSOCKETFUNCTION, OpenSocket);
  curl_easy_setopt(curl, CURLOPT_OPENSOCKETDATA, &control);
  curl_easy_setopt(curl, CURLOPT_CLOSESOCKETFUNCTION, CloseSocket);
  curl_easy_setopt(curl, CURLOPT_CLOSESOCKETDATA, &control);
}

}  // namespace tilo
