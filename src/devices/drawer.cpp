// SPDX-License-Identifier: MIT
#include "devices/drawer.h"

#include <algorithm>
#include <vector>

#include "core/state.h"
#include "core/text.h"
#include "devices/bytes.h"
#include "devices/ports.h"
#include "devices/raw_printer.h"

namespace tilo {
namespace {

void ThroughPrinter(const SettingsRecord& s) {
  if (s.drawer_code[0] == '\0') return;
  const std::string printer = FieldText(s.printer_name);
  if (SendRawJob(printer, "TILO", Parsebytes(s.drawer_code)) == RawJobResult::NoPrinter)
    Message("Unable to open printer for till drawer", "Problem");
}

void Direct(const SettingsRecord& s) {
  DevicePort port;
  if (!port.Open(PortPath(PortName(s.drawer_port)))) {
    Message("Unable to open port", "Till drawer");
    return;
  }
  // The line's speed and framing stay as the system has them; only the byte
  // translation of a terminal is switched off, so the character arrives as it is.
  port.MakeRaw();
  // The form allows 1 to 10; a damaged record must not make a huge buffer.
  const size_t repeat = size_t(std::clamp(int64_t{s.drawer_repeat}, int64_t{0}, int64_t{255}));
  std::vector<uint8_t> bytes(repeat, uint8_t(s.drawer_open_char & 0xff));
  const bool written = port.Write(bytes.data(), bytes.size());
  port.Close();
  if (!written) Message("Unable write to port", "Problem");
}

}  // namespace

void Opendrawer() {
  const SettingsRecord& s = G().settings;
  if (s.drawer_mode != 0)
    ThroughPrinter(s);
  else
    Direct(s);
}

}  // namespace tilo
