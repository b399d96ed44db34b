// SPDX-License-Identifier: MIT
#include "documents/store_heading.h"

#include "core/state.h"
#include "core/text.h"
#include "platform/platform.h"
#include "sale/commands.h"

namespace tilo {
namespace {

HeadingView no_screen;
HeadingView* installed = &no_screen;

// The heading lines the form edits, in its order.
std::array<char (*)[42], 6> Lines(HeadingLines& h) {
  return {&h.site_name,   &h.site_road,     &h.site_area,
          &h.site_county, &h.site_postcode, &h.site_telephone};
}

}  // namespace

bool HeadingView::edit(HeadingEntries&) {
  return false;
}

HeadingView& heading_view() {
  return *installed;
}

void install_heading_view(HeadingView* view) {
  installed = view ? view : &no_screen;
}

void Storeprintheading() {
  HeadingLines& h = G().heading;
  const auto lines = Lines(h);
  HeadingEntries entries;
  for (size_t i = 0; i < lines.size(); ++i) entries[i] = Cp1252ToUtf8(FieldText(*lines[i]));
  if (!heading_view().edit(entries)) return;
  for (size_t i = 0; i < lines.size(); ++i) {
    std::string text = Utf8ToCp1252(entries[i]);
    if (text.size() > kHeadingLineLimit) text.resize(kHeadingLineLimit);
    SetField(*lines[i], text);
  }
  // Kept on disk at once, so a power cut before closing loses nothing.
  if (!WriteHeadingLines(h)) Message("Not able to write ADDRESS.VT", "Problem");
}

void InstallStoreHeadingCommand() {
  SetHandler(Command::StorePrintHeading, [](int) { Storeprintheading(); });
}

}  // namespace tilo
