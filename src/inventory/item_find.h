// SPDX-License-Identifier: MIT
// The ways to reach an item without knowing its number. Every find leaves the
// item in G().film (position set) and returns its number, or 0 when nothing was
// chosen. Texts are Windows-1252.
#pragma once

#include <cstdint>
#include <string>

#include "core/record_match.h"

namespace tilo {

// What a find hands back of a record it offers in a "Search: No to continue"
// box: from the menu Yes shows the record and Cancel still returns it; from the
// sale screen Yes returns it and Cancel returns nothing.
enum class FindFrom { Menu, SaleScreen };

// Text of a prompt or box as the finds take it: at most `limit` characters,
// folded to upper case.
std::string FindText(const std::string& utf8, size_t limit);

// A number from 1 to 100000000000000000 is looked up (not there: 0, no word);
// any other text, or any text when `as_description`, is a description start.
// `view`: show the record when found by number or chosen from the list.
int64_t Finditem(const std::string& text, bool view, bool as_description);
// The description start, `?` for any one character: form 805 on each match in
// file order, or the list of every match in number order when the settings ask
// for a list.
int64_t Finditemdescription(std::string text, bool view);
// The fragment finds: "Find that contain" (description), "Find in SKUs" (sku1)
// and "Find advanced" (any or all of several boxes).
int64_t Finditemfragment(std::vector<FragmentTerm> terms, bool all, FindFrom from);
std::vector<FragmentTerm> DescriptionFragment(const std::string& text);
std::vector<FragmentTerm> Sku1Fragment(const std::string& text);

// The find of the sale screen's item box (Enter on an empty box): the
// description search box, or the SKU 1 find under SKU entry; what it finds goes
// into the basket.
void Itemboxfind();

// The inventory and customer finds on their commands, and the customer find
// behind Associate customer, Customer credit and the other places that need one.
void InstallFindHandlers();

}  // namespace tilo
