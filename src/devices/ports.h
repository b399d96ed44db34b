// SPDX-License-Identifier: MIT
// The till's ports on Linux. The settings name ports as the shop knows them,
// "COM1" to "COM8", "LPT1" and "LPT2"; they stand for /dev/ttyS0../dev/ttyS7 and
// /dev/lp0, /dev/lp1 unless the plain text file ports.cfg in the working folder
// maps them elsewhere, one "NAME=PATH" per line (COM1=/dev/ttyUSB0), so a USB
// drawer or display works. A port is opened exclusively and closed after each use.
#pragma once

#include <cstdint>
#include <string>

namespace tilo {

inline constexpr const char* kPortsFile = "ports.cfg";

// "COM1".."COM8" for 0 to 7, "LPT1" for 8, "LPT2" for 9; "" for anything else.
std::string PortName(int64_t port);
// The device path of a port name, after ports.cfg; "" for an unknown name.
std::string PortPath(const std::string& name);

// Serial line settings: data bits 4 to 8 (Linux has no 4, so 4 runs as 5),
// parity 0 none / 1 even / 2 odd, stop bits 0 one / 1 one and a half (two on
// Linux, which the UART reads as one and a half with five data bits) / 2 two.
struct LineSettings {
  int baud = 9600;
  int data_bits = 8;
  int parity = 0;
  int stop_bits = 0;
};

class DevicePort {
 public:
  DevicePort() = default;
  ~DevicePort() { Close(); }
  DevicePort(const DevicePort&) = delete;
  DevicePort& operator=(const DevicePort&) = delete;

  // Opens an existing device for reading and writing, for this process alone:
  // false when it is missing, can't be opened or is held by another program.
  bool Open(const std::string& path);
  bool is_open() const { return fd_ >= 0; }
  // Puts the line in raw mode (bytes go out as they are) with the given speed
  // and framing; on something that is not a terminal (a printer port) it does
  // nothing. False when the driver refuses the settings.
  bool Apply(const LineSettings& settings);
  // Raw mode only: the speed and framing stay as the system has them.
  bool MakeRaw();
  // One write of all the bytes; true when every byte went out (zero bytes count
  // as a success).
  bool Write(const void* bytes, size_t count);
  void Close();

 private:
  int fd_ = -1;
  bool exclusive_ = false;
};

}  // namespace tilo
