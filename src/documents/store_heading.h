// SPDX-License-Identifier: MIT
// "Store print heading": the six heading lines that stand at the top of letters
// and printouts, edited in a form and kept in G().heading and ADDRESS.VT.
#pragma once

#include <array>
#include <string>

namespace tilo {

inline constexpr size_t kHeadingLineLimit = 40;

// Site name, road, area, state / county, zip / postcode, telephone; UTF-8 as shown.
using HeadingEntries = std::array<std::string, 6>;

class HeadingView {
 public:
  virtual ~HeadingView() = default;
  // The form, modal, on `entries`; false on Cancel. Without a screen: Cancel.
  virtual bool edit(HeadingEntries& entries);
};
HeadingView& heading_view();
// nullptr puts back the one without a screen.
void install_heading_view(HeadingView* view);

// The command: the form on the present lines; OK stores them (each cut to 40
// Windows-1252 characters) and writes ADDRESS.VT at once, Cancel leaves them.
void Storeprintheading();

void InstallStoreHeadingCommand();

}  // namespace tilo
