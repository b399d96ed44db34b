// SPDX-License-Identifier: MIT
// Loopback ports for the servers the tests start of their own.
#pragma once

namespace tilo {

// A port nobody listens on (just now).
int FreeLocalPort();
// Does something on 127.0.0.1 take a connection on `port`?
bool LocalPortListening(int port);

}  // namespace tilo
