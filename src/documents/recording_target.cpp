// SPDX-License-Identifier: MIT
#include "documents/recording_target.h"

#include <algorithm>
#include <cstdlib>

#include "core/state.h"

namespace tilo {
namespace {

const char* AlignName(TextAlign a) {
  switch (a) {
    case TextAlign::Left:
      return "left";
    case TextAlign::Right:
      return "right";
    case TextAlign::Centre:
      return "centre";
  }
  return "?";
}

const char* BrushName(Brush b) {
  switch (b) {
    case Brush::White:
      return "white";
    case Brush::LightGrey:
      return "lightgrey";
    case Brush::Black:
      return "black";
  }
  return "?";
}

std::string Ints(std::initializer_list<int> values) {
  std::string out;
  for (int v : values) out += " " + std::to_string(v);
  return out;
}

// The text of a text_out or draw_wrapped line: what follows its coordinates.
std::optional<std::string> DrawnText(const std::string& call) {
  size_t skip = 0;
  if (call.rfind("text_out ", 0) == 0)
    skip = 3;
  else if (call.rfind("draw_wrapped ", 0) == 0)
    skip = 5;
  else
    return std::nullopt;
  size_t at = 0;
  for (size_t i = 0; i < skip; ++i) {
    at = call.find(' ', at);
    if (at == std::string::npos) return std::string();
    ++at;
  }
  return call.substr(at);
}

}  // namespace

RecordingTarget::RecordingTarget(RecordingDevice device, std::vector<std::string>* log)
    : device_(std::move(device)), log_(log ? log : &own_), font_(device_.stock) {}

std::vector<std::string> RecordingTarget::texts() const {
  std::vector<std::string> out;
  for (const std::string& c : *log_)
    if (auto t = DrawnText(c)) out.push_back(*t);
  return out;
}

int RecordingTarget::Unit(int device_units, int dpi) const {
  return hundredths_ && dpi > 0 ? device_units * 2540 / dpi : device_units;
}

int RecordingTarget::page_width() {
  return Unit(device_.page_width, device_.dpi_x);
}
int RecordingTarget::page_height() {
  return Unit(device_.page_height, device_.dpi_y);
}
int RecordingTarget::offset_x() {
  return Unit(device_.offset_x, device_.dpi_x);
}
int RecordingTarget::offset_y() {
  return Unit(device_.offset_y, device_.dpi_y);
}

TextMetrics RecordingTarget::text_metrics() {
  const int height = std::abs(font_.height);
  const int width = font_.width != 0 ? std::abs(font_.width) : height / 2;
  return {Unit(height, device_.dpi_y), Unit(device_.external_leading, device_.dpi_y),
          Unit(width, device_.dpi_x)};
}

int RecordingTarget::text_extent(const std::string& text) {
  return int(text.size()) * text_metrics().average_char_width;
}

bool RecordingTarget::select_font(const FontDescription& font) {
  Log("select_font " + font.face + Ints({font.height, font.width, font.weight}) +
      (font.italic ? " italic" : "") + (font.underline ? " underline" : "") +
      (font.strikeout ? " strikeout" : "") + (device_.font_fails ? " failed" : ""));
  if (device_.font_fails) return false;
  font_ = font;
  if (font_.height == 0) font_.height = device_.stock.height;
  return true;
}

void RecordingTarget::set_text_align(TextAlign align) {
  Log(std::string("set_text_align ") + AlignName(align));
}

void RecordingTarget::text_out(int x, int y, const std::string& text) {
  Log("text_out" + Ints({x, y}) + " " + text);
}

int RecordingTarget::draw_wrapped(const std::string& text, const Rect& r) {
  Log("draw_wrapped" + Ints({r.left, r.top, r.right, r.bottom}) + " " + text);
  const TextMetrics m = text_metrics();
  const int per_line = m.average_char_width > 0 ? (r.right - r.left) / m.average_char_width : 0;
  const int lines =
      per_line > 0 ? std::max<int>(1, (int(text.size()) + per_line - 1) / per_line) : 1;
  return lines * m.height;
}

void RecordingTarget::draw_image(const Bitmap& bitmap, int x, int y, int width, int height) {
  Log("draw_image " + std::to_string(bitmap.width) + "x" + std::to_string(bitmap.height) +
      Ints({x, y, width, height}));
}

void RecordingTarget::select_brush(Brush brush) {
  Log(std::string("select_brush ") + BrushName(brush));
}

void RecordingTarget::rectangle(int left, int top, int right, int bottom) {
  Log("rectangle" + Ints({left, top, right, bottom}));
}

void RecordingTarget::line(int x1, int y1, int x2, int y2) {
  Log("line" + Ints({x1, y1, x2, y2}));
}

void RecordingTarget::use_hundredths_of_mm() {
  hundredths_ = true;
  Log("use_hundredths_of_mm");
}

void RecordingTarget::use_device_units() {
  hundredths_ = false;
  Log("use_device_units");
}

int RecordingTarget::begin_document(const std::string& name) {
  Log("begin_document " + name);
  return device_.begin_document_result;
}

int RecordingTarget::begin_page() {
  Log("begin_page");
  return device_.begin_page_result;
}

int RecordingTarget::end_page() {
  // The device asks the abort check while it spools the page.
  if (abort_check && !abort_check()) {
    Log("end_page aborted");
    return -1;
  }
  int result = device_.end_page_result;
  if (end_pages_ < device_.end_page_results.size()) result = device_.end_page_results[end_pages_];
  ++end_pages_;
  Log("end_page");
  return result;
}

void RecordingTarget::end_document() {
  Log("end_document");
}

bool RecordingTarget::release() {
  Log(device_.release_result ? "release" : "release failed");
  return device_.release_result;
}

std::unique_ptr<PrintTarget> RecordingPrintService::default_printer() {
  calls.push_back("default_printer");
  if (!has_default) return nullptr;
  return std::make_unique<RecordingTarget>(device, &calls);
}

std::unique_ptr<PrintTarget> RecordingPrintService::printer_dialog(int32_t& copies) {
  calls.push_back(dialog_cancels ? "printer_dialog cancelled" : "printer_dialog");
  if (dialog_cancels) return nullptr;
  copies = dialog_copies;
  return std::make_unique<RecordingTarget>(device, &calls);
}

std::unique_ptr<PrintTarget> RecordingPrintService::named_printer(const std::string& name) {
  calls.push_back("named_printer " + name);
  if (!known_names.empty() &&
      std::find(known_names.begin(), known_names.end(), name) == known_names.end())
    return nullptr;
  RecordingDevice named = device;
  named.name = name;
  return std::make_unique<RecordingTarget>(named, &calls);
}

void RecordingPrintService::open_abort_box() {
  calls.push_back("open_abort_box");
  abort_box_open = true;
  main_window_enabled = false;
}

void RecordingPrintService::close_abort_box() {
  calls.push_back("close_abort_box");
  abort_box_open = false;
  main_window_enabled = true;
}

void RecordingPrintService::pump_messages() {
  ++pumps;
  if (pumps == cancel_at_pump && abort_box_open) {
    // What the box's "Cancel" does.
    calls.push_back("abort box cancelled");
    G().print_job.aborted = true;
    main_window_enabled = true;
    abort_box_open = false;
  }
}

void RecordingPrintService::show_wait_box(bool shown) {
  calls.push_back(shown ? "wait box shown" : "wait box hidden");
}

std::vector<std::string> RecordingPrintService::texts() const {
  std::vector<std::string> out;
  for (const std::string& c : calls)
    if (auto t = DrawnText(c)) out.push_back(*t);
  return out;
}

int RecordingPrintService::count(const std::string& call) const {
  return int(std::count_if(calls.begin(), calls.end(),
                           [&](const std::string& c) { return c.rfind(call, 0) == 0; }));
}

}  // namespace tilo
