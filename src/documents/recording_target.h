// SPDX-License-Identifier: MIT
// A print target that draws nothing and writes down every call with its
// arguments, one line each ("text_out 10 40 Total: 5.00"), and a print service
// that hands out such targets. Tests read what a document drew; the metrics and
// the results of the job calls can be set to any device's.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "documents/print_service.h"
#include "documents/print_target.h"

namespace tilo {

struct RecordingDevice {
  std::string name = "Recorder";
  int page_width = 2400;
  int page_height = 3300;
  int dpi_x = 300;
  int dpi_y = 300;
  int offset_x = 50;
  int offset_y = 50;
  // The device's own font; a selected font of height h (either sign) reports
  // height |h| and, unless it has a width, average width |h| / 2.
  FontDescription stock{"Courier New", 40, 20, 400};
  int external_leading = 2;
  // Results of the job calls. end_page answers from `end_page_results` in turn
  // and then from `end_page_result`.
  int begin_document_result = 1;
  int begin_page_result = 1;
  int end_page_result = 1;
  std::vector<int> end_page_results;
  bool font_fails = false;
  bool release_result = true;
};

class RecordingTarget : public PrintTarget {
 public:
  // Calls go to `log` when given, else to the target's own list.
  explicit RecordingTarget(RecordingDevice device = {}, std::vector<std::string>* log = nullptr);

  const std::vector<std::string>& calls() const { return *log_; }
  // Only the texts drawn by text_out and draw_wrapped, in order.
  std::vector<std::string> texts() const;

  int page_width() override;
  int page_height() override;
  int dpi_x() override { return device_.dpi_x; }
  int dpi_y() override { return device_.dpi_y; }
  int offset_x() override;
  int offset_y() override;
  TextMetrics text_metrics() override;
  int text_extent(const std::string& text) override;
  bool select_font(const FontDescription& font) override;
  FontDescription stock_font() override { return device_.stock; }
  void set_text_align(TextAlign align) override;
  void text_out(int x, int y, const std::string& text) override;
  int draw_wrapped(const std::string& text, const Rect& rect) override;
  void draw_image(const Bitmap& bitmap, int x, int y, int width, int height) override;
  void select_brush(Brush brush) override;
  void rectangle(int left, int top, int right, int bottom) override;
  void line(int x1, int y1, int x2, int y2) override;
  void use_hundredths_of_mm() override;
  void use_device_units() override;
  int begin_document(const std::string& name) override;
  int begin_page() override;
  int end_page() override;
  void end_document() override;
  bool release() override;

 private:
  void Log(const std::string& line) { log_->push_back(line); }
  // A device measure in the current unit.
  int Unit(int device_units, int dpi) const;

  RecordingDevice device_;
  std::vector<std::string> own_;
  std::vector<std::string>* log_;
  FontDescription font_;
  bool hundredths_ = false;
  size_t end_pages_ = 0;
};

// Printers made of recording targets. Every request and every box shown goes
// into `calls`, the targets' calls too, so one list tells the whole job.
class RecordingPrintService : public PrintService {
 public:
  std::unique_ptr<PrintTarget> default_printer() override;
  std::unique_ptr<PrintTarget> printer_dialog(int32_t& copies) override;
  std::unique_ptr<PrintTarget> named_printer(const std::string& device_name) override;
  void open_abort_box() override;
  void close_abort_box() override;
  void pump_messages() override;
  void show_wait_box(bool shown) override;
  std::optional<ChosenFont> choose_font() override { return chosen_font; }
  bool list_printers(std::vector<PrinterInfo>& printers) override {
    printers = printer_list;
    return !printers_fail;
  }

  // The texts drawn by all targets, in order.
  std::vector<std::string> texts() const;
  // How many calls begin with `call` ("begin_page", "text_out 10 ").
  int count(const std::string& call) const;

  std::vector<std::string> calls;
  RecordingDevice device;
  bool has_default = true;
  // The printer dialog: cancelled, or accepted with `dialog_copies`.
  bool dialog_cancels = false;
  int32_t dialog_copies = 1;
  // Printers named_printer knows; an empty list knows every name.
  std::vector<std::string> known_names;
  // The abort box's "Cancel" is pressed during this pump (1 = the first); 0 never.
  int cancel_at_pump = 0;
  int pumps = 0;
  bool abort_box_open = false;
  bool main_window_enabled = true;
  // What list_printers answers.
  std::vector<PrinterInfo> printer_list;
  bool printers_fail = false;
  // What the font chooser answers (nullopt: cancelled).
  std::optional<ChosenFont> chosen_font;
};

}  // namespace tilo
