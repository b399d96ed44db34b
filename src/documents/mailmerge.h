// SPDX-License-Identifier: MIT
// "Mailmerge": one letter per customer of a number range, with the store's
// heading, the customer's name and address, the date, and a free text between
// "Dear Sir / Madam," and "Yours sincerely,". The text is kept for the run in
// G().merge_text as Windows-1252 with CR LF line ends. The rules live here; the
// form only shows the boxes and gives back what was typed, through MailmergeView.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "core/customer_file.h"
#include "documents/print_target.h"
#include "platform/platform.h"

namespace tilo {

inline constexpr size_t kMergeTextLimit = 1000;

// Which customers of the range get a letter; the values are the stored ones.
enum class MergeSelection : int32_t { All = 0, OweMoney = 2, NotActive = 4 };

// The boxes of the form, as shown (UTF-8, the text with "\n" line ends).
struct MergeEntries {
  std::string start;
  std::string end;
  std::string text;
  MergeSelection selection = MergeSelection::All;
};

class MailmergeView {
 public:
  virtual ~MailmergeView() = default;
  // The form, modal, on `entries`; false on Cancel. Without a screen: Cancel.
  virtual bool edit(MergeEntries& entries);
};
MailmergeView& mailmerge_view();
// nullptr puts back the one without a screen.
void install_mailmerge_view(MailmergeView* view);

// The stored text as the form's box shows it, and back. The box takes no more
// typing once the stored text would pass kMergeTextLimit bytes.
std::string MergeTextShown(const std::string& merge_text);
std::string MergeTextStored(const std::string& shown);

// The form's "Load": the file chooser, the size test (1 to 1,000 bytes), and a
// file with bare LF line ends or in UTF-8 made Windows-1252 with CR LF. The new
// text is kept and returned as the box shows it; nullopt when nothing was loaded.
std::optional<std::string> Loadmergetext();
// The form's "Save": the chooser, then the box's text written as Windows-1252
// with CR LF over whatever the file held.
void Savemergetext(const std::string& shown);

// Whether `record` gets a letter under `selection` in the year `this_year`.
bool MergeWanted(const MemberRecord& record, MergeSelection selection, int this_year);

// The text between salutation and closing, drawn at x = 0 from `row` on, lines
// wrapped at the last space before `width` (a longer word stands unbroken, past
// the edge), CR LF ending a line. Returns the number of rows used.
int Wrapmergetext(PrintTarget& target, const std::string& text, int width, int row,
                  int line_height);

// One letter to `record`, dated `today`, on the target's page.
void Drawmergeletter(PrintTarget& target, const MemberRecord& record, const LocalTime& today);

// The command: the form, then the printer dialog and one letter (a document of
// its own, `copies` times) per customer wanted in the range.
void Mailmerge();

void InstallMailmergeCommand();

}  // namespace tilo
