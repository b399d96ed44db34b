// SPDX-License-Identifier: MIT
// The invoices: the standard invoice, the custom invoice (each part on the line
// the shop chose for it) and the delivery note, full pages drawn from the sale
// in the basket, the one just paid or one reloaded from the history. Amounts
// are net of tax. One page: a basket too long for it runs past the foot.
#pragma once

#include <cstdint>
#include <string>

#include "documents/print_target.h"

namespace tilo {

struct SettingsRecord;

inline constexpr const char* kLetterLogoFile = "letter.bmp";

// Draws the invoice of `kind` (standard 2406, custom 2409, delivery note 2419)
// on the target's open page.
void Printinvoice(PrintTarget& target, int kind);

// The terms of a customer's band (1 to 8), printed after "Terms: ". The
// standard invoice puts the comma before the days ("Nett, 30 days", "Nett"
// without credit); the custom invoice and the delivery note put it after the
// discount ("Nett, 30 days", "Nett, "). Any other band prints nothing.
std::string Standardterms(const SettingsRecord& s, int32_t terms);
std::string Customterms(const SettingsRecord& s, int32_t terms);

// The header font as the settings hold it.
FontDescription Headerfont(const SettingsRecord& s);
// The height a font of `points` whole points is stored with on a printer of
// `dpi_y`: negative, the product taken at full width and rounded.
int32_t Headerfontheight(int dpi_y, int points);

}  // namespace tilo
