// SPDX-License-Identifier: MIT
// The receipt wording: every word the till documents print apart from figures
// and the store's own details. 58 slots of 80 bytes (the file language.ini);
// slots 0 to 35 are in use, the rest are carried through as they stand.
#pragma once

#include <cstdint>
#include <string>

namespace tilo {

#pragma pack(push, 1)
struct LanguageTable {
  char slot[58][80];
};
#pragma pack(pop)
static_assert(sizeof(LanguageTable) == 4640);

inline constexpr const char* kLanguageFile = "language.ini";
inline constexpr int kWordingSlots = 36;
inline constexpr int kLanguages = 4;

// Slot numbers by their English text.
// clang-format off
enum WordingSlot {
  kLanguageName = 0, kReceipt, kSubTotal, kTotal, kDiscount, kCustomer, kNonTaxable, kTaxable,
  kTendered, kCashChange, kPaymentCash, kPaymentCheque, kPaymentEft, kPaymentCredit,
  kPaymentChWithCash, kPaymentEftWithCash, kRefund, kInvoiceTitle, kInvoiceNumber, kAssociate,
  kDescriptionHeading, kItemNoHeading, kNetTotalHeading, kSubtotalCaps, kTotalCaps,
  kDiscountCaps, kCustomerCaps, kCustomerNoCaps, kTelephoneCaps, kItemsCaps, kNonTxCaps,
  kTaxableCaps, kAuthorized, kReceived, kUnitPrice, kTerms
};
// clang-format on

// The built-in text of a slot (0 to 35) in a language (0 to 3), Windows-1252.
const char* BuiltinWording(int language, int slot);
// Fills slots 0 to 35 of `table` with a language's defaults; any other index
// leaves the table unchanged.
void Defaultwording(int language_index, LanguageTable& table);
// Reads language.ini whole into the global table; when it is missing (or can't
// be read), takes the defaults of `language_index` over a zeroed table.
void Loadwording();
// Writes the global table whole to language.ini; false on failure.
bool Savewording();
// A slot's text, Windows-1252.
std::string Wording(int slot);

// The form "Language customization": the list's selection (-1 for none), the
// built-in texts shown on the left and the texts in use on the right.
struct WordingForm {
  int selection = -1;
  LanguageTable defaults{};
  LanguageTable in_use{};
};
// The form as it opens: the language of the settings selected, its defaults on
// the left, the table in use on the right.
WordingForm Openwordingform();
// Choosing a language in the list, or "Reset" with `selection` the list's:
// both columns take that language's defaults. No selection changes nothing.
void Choosewordinglanguage(WordingForm& form, int selection);
// "OK": the language of the list, and slots 1 to 35 from the right column.
void Acceptwordingform(const WordingForm& form);

}  // namespace tilo
