// SPDX-License-Identifier: MIT
// The parked basket and the transaction note. One basket can be put aside whole
// (lines, customer, note) while another customer is served, and brought back as
// often as wanted until another is parked over it; it lives in memory only and
// is gone when the program ends. The note is free text carried by the basket to
// the sales log and the custom documents.
#pragma once

#include <optional>
#include <string>

namespace tilo {

// The longest note the form takes, in Windows-1252 characters.
inline constexpr int kNoteLength = 78;

// The note form as the logic sees it. The screen installs the real one; the
// default cancels (tests script their own).
class NoteView {
 public:
  virtual ~NoteView() = default;
  // "Add transaction note", opened on `note` (UTF-8): the text typed on "OK",
  // nullopt on "Cancel".
  virtual std::optional<std::string> add_note(const std::string& /*note*/) { return std::nullopt; }
};

NoteView& note_view();
// nullptr puts back the one without a screen.
void install_note_view(NoteView* view);

// "Save basket": copies the basket whole into the parked slot; the basket on the
// screen stays.
void Savebasket();
// "Reload basket": the parked basket replaces the one on the screen, with the
// amounts it had; the parked copy stays for another reload.
void Reloadbasket();
// "Add note": the form, then the text into the basket's note.
void Addnote();
// The basket's note from typed text (UTF-8): cut to the form's limit.
void Setnote(const std::string& text);
// The row of the basket list for a line brought back by a reload: no stock level.
std::string ReloadRow(int line);

}  // namespace tilo
