// SPDX-License-Identifier: MIT
// The customer pole display on a serial port: the greeting at rest, each item as
// it is added, the total at tender, tender and change at the end. The program
// knows no display model: clear and cursor sequences are byte texts from the
// settings. The display may sit in front of a serial receipt printer on the same
// line, so every message is wrapped in the "printer off" and "printer on"
// sequences. Each caller tests pole_enabled first; these functions don't.
#pragma once

#include <string>

#include "devices/ports.h"

namespace tilo {

// pole_passive_text; the title of a failed open is "Pole display".
void Polegreeting();
// The line just added: its description and line total.
void Poleitem(const char* description, float line_total);
// "Total: %.2f" of the basket total.
void Poletotal(float total);
// "Tender: %.2f", then on the second line "Change: %.2f".
void Poletender(float amount_tendered, float change_due);
// The pole page's "Preview": the greeting with the settings the form just stored.
void Polepreview();

// The item text: "%s %.2f" for a description under 13 characters, otherwise the
// first 12 characters and "  %.2f" cut to 10 characters, so never above 22.
std::string PoleitemText(const char* description, float line_total);
// The line settings that pole_baud, pole_data_bits, pole_parity and
// pole_stop_bits stand for.
LineSettings PoleLineSettings();

}  // namespace tilo
