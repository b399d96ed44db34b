// SPDX-License-Identifier: MIT
// The print shell: how a job gets its target, runs its pages and ends; the
// listing font and indent; the layout and page break that all listings share.
// The job lives in G().print_job, the listing font in G().list_font.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "documents/print_target.h"

namespace tilo {

inline constexpr const char* kDocumentName = "TILO";

// Draws one page. A routine that has more to print adds 1 to
// G().print_job.page_number before it returns, and keeps its place in the source
// in globals of its own.
using PageRoutine = std::function<void(PrintTarget&)>;

// The default printer, without a dialog; nullptr when none is installed.
std::unique_ptr<PrintTarget> Defaulttarget();
// The printer dialog (or, without it, the default printer). Sets the job's
// copies: the dialog's count, else 1. nullptr when cancelled, silently.
std::unique_ptr<PrintTarget> Choosetarget(bool show_dialog);
// The printer of that device name, without a dialog (receipts only); one copy.
std::unique_ptr<PrintTarget> Namedtarget(const std::string& device_name);

// A job of many pages through the printer dialog, with the abort box, for the
// copies chosen. `abort_box` false runs it with neither abort box nor a
// disabled main window.
void Runpagedjob(const PageRoutine& page, bool abort_box = true);
// A job of one page per copy on `target`, for the job's copies, with no abort
// box. `after_copy` runs after each copy's document has ended. False when the
// target could not be released.
bool Runsinglepagejob(std::unique_ptr<PrintTarget> target, const PageRoutine& page,
                      const std::function<void()>& after_copy = {});
// The abort check the job hangs on its target: hands on the waiting events and
// answers true while the job has not been cancelled.
bool Abortcheck();

// Rebuilds the listing font from list_font_size on the default printer: height
// page_height / n, width page_width / ((n * 5) / 4). Absent for a size of 0 or
// with no printer.
void Buildlistfont();
// The same font as the "Printer font size" box makes it: width page_width / n.
void Buildnarrowlistfont();
// What the font-size boxes do on OK: store the size (0 for the printer's
// default), drop the old font and build the new one, narrow or not.
void Setlistfontsize(int64_t size, bool narrow);

// The command "Indent listings": clears the indent, or asks for one.
void Indentlistings();

// The line height of the selected font: height plus external leading.
int Lineheight(PrintTarget& target);

// One page of a listing, as Startlistingpage leaves it: the header drawn and the
// row at 2. Columns stand at whole multiples of the average character width.
struct ListingPage {
  PrintTarget* target = nullptr;
  int page_height = 0;
  int line_height = 0;
  int margin = 0;
  int char_width = 0;
  int row = 2;

  int x(int column) const { return margin + column * char_width; }
  int y() const { return row * line_height; }
  // Draws left-aligned text at a column of the current row.
  void text(int column, const std::string& text) const;
};
// Selects the listing font (when there is one), works out the line height and
// the indent, and draws `header` at the top, left-aligned.
ListingPage Startlistingpage(PrintTarget& target, const std::string& header);
// The test after each entry: when the page is full, adds 1 to page_number and
// answers true; the page routine then returns.
bool Listingpagefull(const ListingPage& page);

}  // namespace tilo
