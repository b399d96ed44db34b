// SPDX-License-Identifier: MIT
#include "devices/pole.h"

#include <cstdio>
#include <cstring>
#include <vector>

#include "core/state.h"
#include "core/text.h"
#include "devices/bytes.h"

namespace tilo {
namespace {

constexpr int kBauds[] = {9600,  300,   600,   1200,   2400,   4800,  14400,
                          19200, 38400, 57600, 115200, 128000, 256000};
constexpr int kDataBits[] = {8, 4, 5, 6, 7};

std::string PolePath() {
  return PortPath(PortName(G().settings.pole_port));
}

void Append(std::vector<uint8_t>& buffer, const char* byte_text) {
  uint8_t bytes[kByteTextWidth];
  int n = Parsebytes(byte_text, bytes);
  buffer.insert(buffer.end(), bytes, bytes + n);
}

void Append(std::vector<uint8_t>& buffer, const std::string& text) {
  buffer.insert(buffer.end(), text.begin(), text.end());
}

std::string Money(const char* format, float amount) {
  char text[64];
  std::snprintf(text, sizeof text, format, double(amount));
  return text;
}

// A printer on/off sequence, on a port of its own opening; empty sends nothing.
void Sendprinterseq(const char* sequence) {
  if (sequence[0] == '\0') return;
  DevicePort port;
  if (!port.Open(PolePath())) {
    Message("Unable to open port", "Problem");
    return;
  }
  port.Apply(PoleLineSettings());
  std::vector<uint8_t> bytes;
  Append(bytes, sequence);
  if (!port.Write(bytes.data(), bytes.size())) Message("Unable write to port", "Problem");
}

enum class Order { OnThenReport, ReportThenOn };

// One message: printer off, then clear, first cursor and the text in one write,
// then (for the tender) the second line in a second write, then printer on.
void Frame(const std::string& text, const char* open_title, Order order,
           const std::string* second_line = nullptr) {
  const SettingsRecord& s = G().settings;
  Sendprinterseq(s.pole_printer_off);
  DevicePort port;
  if (!port.Open(PolePath())) {
    Sendprinterseq(s.pole_printer_on);
    Message("Unable to open port", open_title);
    return;
  }
  port.Apply(PoleLineSettings());
  std::vector<uint8_t> buffer;
  // The clear sequence is always parsed, so an empty one still sends a 0 byte.
  Append(buffer, s.pole_clear);
  if (s.pole_cursor1[0] != '\0') Append(buffer, s.pole_cursor1);
  Append(buffer, text);
  bool written = port.Write(buffer.data(), buffer.size());
  if (second_line) {
    buffer.clear();
    if (s.pole_cursor2[0] != '\0') Append(buffer, s.pole_cursor2);
    Append(buffer, *second_line);
    written = port.Write(buffer.data(), buffer.size()) && written;
  }
  port.Close();
  if (order == Order::OnThenReport) Sendprinterseq(s.pole_printer_on);
  if (!written) Message("Unable write to port", "Problem");
  if (order == Order::ReportThenOn) Sendprinterseq(s.pole_printer_on);
}

}  // namespace

LineSettings PoleLineSettings() {
  const SettingsRecord& s = G().settings;
  LineSettings line;
  if (s.pole_baud >= 0 && s.pole_baud < int(std::size(kBauds))) line.baud = kBauds[s.pole_baud];
  if (s.pole_data_bits >= 0 && s.pole_data_bits < int(std::size(kDataBits)))
    line.data_bits = kDataBits[s.pole_data_bits];
  if (s.pole_parity >= 0 && s.pole_parity <= 2) line.parity = s.pole_parity;
  if (s.pole_stop_bits >= 0 && s.pole_stop_bits <= 2) line.stop_bits = s.pole_stop_bits;
  return line;
}

std::string PoleitemText(const char* description, float line_total) {
  const size_t length = strnlen(description, 40);
  if (length < 13) return std::string(description, length) + Money(" %.2f", line_total);
  std::string price = Money("  %.2f", line_total);
  if (price.size() > 10) price.resize(10);
  return std::string(description, 12) + price;
}

void Polegreeting() {
  Frame(FieldText(G().settings.pole_passive_text), "Pole display", Order::OnThenReport);
}

void Polepreview() {
  Polegreeting();
}

void Poleitem(const char* description, float line_total) {
  Frame(PoleitemText(description, line_total), "Problem", Order::ReportThenOn);
}

void Poletotal(float total) {
  Frame(Money("Total: %.2f", total), "Problem", Order::ReportThenOn);
}

void Poletender(float amount_tendered, float change_due) {
  const std::string change = Money("Change: %.2f", change_due);
  Frame(Money("Tender: %.2f", amount_tendered), "Problem", Order::ReportThenOn, &change);
}

}  // namespace tilo
