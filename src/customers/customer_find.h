// SPDX-License-Identifier: MIT
// How a customer is found: by number, start of name, fragment of the name or
// telephone. Every find leaves the customer in G().member (position set) and
// returns the number, or 0 when nothing was chosen. Texts are Windows-1252,
// folded to upper case.
#pragma once

#include <cstdint>
#include <string>

namespace tilo {

// "Find customer": a number from 1 to 100000000000000000 is looked up (not
// there: 0, no word), other text is a start of name; `display` shows view 803
// of a customer found by number.
int64_t Findcustomer(const std::string& text, bool display);
// The find behind Associate customer and the other places that need a
// customer: any number above 0 is a number, other text a name.
int64_t Findcustomerfor(const std::string& text);
// The start of a name, `?` for any one character; an empty text asks for the
// name first.
int64_t Findcustomername(std::string text);
// "Find that contain": the text anywhere in the name.
int64_t Findcustomerfragment(const std::string& text);
// "Find telephone": the text in either telephone number.
int64_t Findtelephone(const std::string& text);

// The "Number / name" prompt under `title` (UTF-8), its reply cut to 29
// characters and run through the customer find in force; 0 when cancelled or
// nothing was chosen.
int64_t PromptCustomer(const std::string& title);

}  // namespace tilo
