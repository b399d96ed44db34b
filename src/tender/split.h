// SPDX-License-Identifier: MIT
// Two more ways to pay a basket: "CH", the whole total as one cheque at one
// key, and "Split Cash Other", a cash part taken through the cash form and the
// rest by cheque or card. No cheque number or bank is kept. With card
// processing on, the card part is charged on the terminal once the cash is
// settled; with it off it is only written down, as taken on a separate terminal.
#pragma once

#include <array>
#include <optional>
#include <string>

#include "tender/cash.h"

namespace tilo {

// Which kind the rest of a split is.
enum class SplitOther { Cheque, Card };

// "Split Cash Other": false (after "Please select items" for an empty basket)
// when the split form is not to open; otherwise sets tender_form_open.
bool Startsplit();

// What the read-only "Other" field shows while the cash part is typed (digits
// without the point): the rest of the total, or nothing when the cash covers it.
std::string Splitrest(const std::string& typed, float total);

// "OK" of the split form: false (after "Cash exceeds total") when the cash part
// is above the total; otherwise the basket holds the cash part and the rest.
bool Splitok(const std::string& typed, SplitOther other);

// The split given up, at either step: the parts it wrote are taken back, so
// that the next tender of the basket does not add them to the takings.
void Cancelsplit();

// The cash form after a split asks for the cash part, with fixed note buttons.
inline constexpr std::array<double, 3> kSplitNotes{5.00, 10.00, 20.00};
// "OK" of that form: as for a cash sale with the cash part due, and the money
// tendered counting the other part too. nullopt when the money is short.
std::optional<CashSettled> Splitcashok(const std::string& typed, const std::string& change_shown);

// Takes the settled cash step: charges the card part on the terminal when card
// processing is on, then Finishsplit. A card not approved leaves the basket
// whole for another tender, with nothing written.
void Paysplit(const CashSettled& settled);
// Stamps the basket as a split sale, Closetender, the commit, the sale sound.
void Finishsplit(const CashSettled& settled);

// "CH": the whole basket paid by one cheque.
void Chsale();

}  // namespace tilo
