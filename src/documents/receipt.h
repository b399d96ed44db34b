// SPDX-License-Identifier: MIT
// The till receipt, in its standard and its custom form, drawn row by row from
// the sale in the basket (the one just paid, or one reloaded for a reprint),
// the store's heading lines, the clerk and the receipt wording. One page, as
// long as the sale needs. The elements (store name, receipt number, totals,
// payment...) are shared with the invoices, and so is the transaction barcode.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "documents/print_target.h"

namespace tilo {

struct Basket;

inline constexpr int kLastElement = 27;
inline constexpr const char* kLogoFile = "receipt.bmp";

// Draws the receipt of `kind` (the till receipt 2405 or the custom receipt
// 2413) on the target's open page.
void Printreceipt(PrintTarget& target, int kind);

// Element modes: at the absolute row, or at `row` plus the element's own line
// number from the custom receipt's settings (a line below 1 leaves it out).
inline constexpr int kElementByLine = 0;
inline constexpr int kElementAtRow = 2;
// Draws one element centred at centre_x. Elements 17 and 18 keep the alignment
// as it stands; every other element sets it to centre.
void Printelement(PrintTarget& target, int element, int line_height, int centre_x, int row,
                  int mode);
// The transaction number as a Code 39 barcode, 10 mm tall, across the middle of
// the page: below text row `row`, or for row 0 just above the foot of the page.
void Printbarcode(PrintTarget& target, int row);

// The custom receipt's line number of an element (0 for none).
int Elementline(int element);
// How many units each basket line prints as: a line equal to an earlier one in
// item number and amount (and, for the invoices, description) is counted there
// and prints as 0.
std::vector<int> Collapselines(const Basket& basket, bool same_description = false);
// The modules of a Code 39 symbol for `text` between its start and stop
// characters, '1' for a bar module: 12 per character and one blank between.
std::string Code39modules(const std::string& text);
// The text the barcode carries: the transaction number, at least four digits.
std::string Barcodetext(int64_t transaction_number);

// "Select logo bitmap file": copies the bitmap the operator picks over the
// logo file (receipt.bmp, or letter.bmp for the invoices) in the shop's folder
// and confirms with "Updated.".
void Selectlogo(const char* logo_file = kLogoFile);

}  // namespace tilo
