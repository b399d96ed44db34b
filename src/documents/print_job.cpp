// SPDX-License-Identifier: MIT
#include "documents/print_job.h"

#include <cstdlib>

#include "core/state.h"
#include "documents/print_service.h"
#include "platform/platform.h"

namespace tilo {
namespace {

void MakeListFont(bool five_fourths) {
  State& g = G();
  g.list_font.reset();
  const int64_t n = g.settings.list_font_size;
  if (n == 0) return;
  std::unique_ptr<PrintTarget> target = Defaulttarget();
  if (!target) return;
  FontDescription font = target->stock_font();
  const int width = target->page_width();
  const int height = target->page_height();
  if (width != 0 && height != 0) {
    font.height = int(height / n);
    // The box and the start-up build differ on purpose: the box's font is narrower.
    const int64_t across = five_fourths ? (n * 5) / 4 : n;
    font.width = across != 0 ? int(width / across) : font.width;
  }
  g.list_font = font;
  target->release();
}

}  // namespace

std::unique_ptr<PrintTarget> Defaulttarget() {
  return print_service().default_printer();
}

std::unique_ptr<PrintTarget> Choosetarget(bool show_dialog) {
  int32_t copies = 1;
  std::unique_ptr<PrintTarget> target =
      show_dialog ? print_service().printer_dialog(copies) : print_service().default_printer();
  G().print_job.copies = show_dialog ? copies : 1;
  return target;
}

std::unique_ptr<PrintTarget> Namedtarget(const std::string& device_name) {
  G().print_job.copies = 1;
  return print_service().named_printer(device_name);
}

bool Abortcheck() {
  print_service().pump_messages();
  return !G().print_job.aborted;
}

void Runpagedjob(const PageRoutine& page, bool abort_box) {
  std::unique_ptr<PrintTarget> target = Choosetarget(true);
  if (!target) return;
  PrintJob& job = G().print_job;
  job.target = std::move(target);
  job.aborted = false;
  if (abort_box) {
    print_service().open_abort_box();
    job.target->abort_check = Abortcheck;
  }
  PrintTarget& t = *job.target;
  for (int32_t remaining = job.copies; remaining > 0; --remaining) {
    if (t.begin_document(kDocumentName) > 0) {
      job.page_number = 1;
      for (;;) {
        if (t.begin_page() < 1) break;
        const int32_t before = job.page_number;
        page(t);
        const int ended = t.end_page();
        if (ended <= 0 || job.page_number == before || job.aborted) break;
      }
      t.end_document();
    }
    if (job.aborted) remaining = 1;
  }
  // A cancelled box has already enabled the main window and gone.
  if (abort_box && !job.aborted) print_service().close_abort_box();
  job.target->release();
  job.target.reset();
}

bool Runsinglepagejob(std::unique_ptr<PrintTarget> target, const PageRoutine& page,
                      const std::function<void()>& after_copy) {
  if (!target) return true;
  PrintJob& job = G().print_job;
  job.target = std::move(target);
  job.aborted = false;
  PrintTarget& t = *job.target;
  for (int32_t copy = 0; copy < job.copies; ++copy) {
    if (t.begin_document(kDocumentName) > 0) {
      job.page_number = 1;
      if (t.begin_page() > 0) {
        page(t);
        t.end_page();
      }
      t.end_document();
    }
    if (after_copy) after_copy();
  }
  const bool released = job.target->release();
  job.target.reset();
  return released;
}

void Buildlistfont() {
  MakeListFont(true);
}
void Buildnarrowlistfont() {
  MakeListFont(false);
}

void Setlistfontsize(int64_t size, bool narrow) {
  G().settings.list_font_size = size;
  G().list_font.reset();
  if (size != 0) MakeListFont(!narrow);
}

void Indentlistings() {
  SettingsRecord& s = G().settings;
  if (s.listing_indent != 0) {
    s.listing_indent = 0;
    return;
  }
  std::optional<std::string> typed =
      platform().prompt("Indent (in characters, 0-40)", "Indent listings", "10");
  if (!typed) return;
  const long value = std::strtol(typed->c_str(), nullptr, 10);
  if (value < 0 || value > 40) {
    Message("Outside range", "Problem");
    return;
  }
  s.listing_indent = value;
  Message(*typed, "Indent set to");
}

int Lineheight(PrintTarget& target) {
  TextMetrics m = target.text_metrics();
  return m.height + m.external_leading;
}

void ListingPage::text(int column, const std::string& text) const {
  target->text_out(x(column), y(), text);
}

ListingPage Startlistingpage(PrintTarget& target, const std::string& header) {
  ListingPage p;
  p.target = &target;
  p.page_height = target.page_height();
  if (G().list_font) target.select_font(*G().list_font);
  TextMetrics m = target.text_metrics();
  p.line_height = m.height + m.external_leading;
  p.char_width = m.average_char_width;
  const int64_t indent = G().settings.listing_indent;
  p.margin = indent != 0 ? int(indent) * m.average_char_width : 0;
  target.set_text_align(TextAlign::Left);
  target.text_out(p.margin, 0, header);
  p.row = 2;
  return p;
}

bool Listingpagefull(const ListingPage& page) {
  // The + 2 stands in this test only, never in the drawing positions.
  if ((page.line_height + 2) * page.row <= page.page_height) return false;
  ++G().print_job.page_number;
  return true;
}

}  // namespace tilo
