// SPDX-License-Identifier: MIT
// The one interface between the documents and an output device. A page routine
// draws at absolute positions in device units and takes every measure from the
// target while it runs: nothing assumes a paper size. Text handed to a target
// is the files' own Windows-1252; the target converts it for its device.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace tilo {

enum class TextAlign { Left, Right, Centre };

// The brushes a rectangle can be filled with. A fresh target starts with White.
enum class Brush { White, LightGrey, Black };

struct TextMetrics {
  int height = 0;  // ascent plus descent
  int external_leading = 0;
  int average_char_width = 0;
};

// A font as the documents ask for it. Height: negative for the character height,
// positive for the cell height (character plus internal leading), 0 for the
// face's default. Width 0 keeps the face's own proportions. Weight 400 is
// normal, 700 bold.
struct FontDescription {
  std::string face;
  int height = 0;
  int width = 0;
  int weight = 400;
  bool italic = false;
  bool underline = false;
  bool strikeout = false;

  bool operator==(const FontDescription&) const = default;
};

struct Rect {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;
};

// A picture file as read from disk: its size in pixels and its bytes, which the
// device decodes when it draws.
struct Bitmap {
  int width = 0;
  int height = 0;
  std::string bytes;
};
// Reads a Windows bitmap file; nullopt when it is missing or not a bitmap.
std::optional<Bitmap> LoadBitmap(const std::string& path);

class PrintTarget {
 public:
  virtual ~PrintTarget() = default;

  // The printable area and the device's resolution.
  virtual int page_width() = 0;
  virtual int page_height() = 0;
  virtual int dpi_x() = 0;
  virtual int dpi_y() = 0;
  // Physical margin: from the paper's edge to the printable area.
  virtual int offset_x() = 0;
  virtual int offset_y() = 0;

  // Of the selected font, in the current unit.
  virtual TextMetrics text_metrics() = 0;
  virtual int text_extent(const std::string& text) = 0;
  // Replaces the selected font; false when it can't be made (the old one stays).
  virtual bool select_font(const FontDescription& font) = 0;
  // The device's own font, the one in force before any select_font.
  virtual FontDescription stock_font() = 0;

  // x is the left end, right end or middle of later text; y is always its top.
  virtual void set_text_align(TextAlign align) = 0;
  // One line, no clipping, no wrapping, no page break.
  virtual void text_out(int x, int y, const std::string& text) = 0;
  // Centred and word-wrapped inside the rectangle; returns the height used.
  virtual int draw_wrapped(const std::string& text, const Rect& rect) = 0;
  virtual void draw_image(const Bitmap& bitmap, int x, int y, int width, int height) = 0;
  // Chooses the fill of later rectangles.
  virtual void select_brush(Brush brush) = 0;
  // Outlined and filled with the selected brush; with Black a solid bar.
  virtual void rectangle(int left, int top, int right, int bottom) = 0;
  virtual void line(int x1, int y1, int x2, int y2) = 0;

  // Units of 0.01 mm with y growing upwards (points on the page have y <= 0),
  // until use_device_units. Fonts keep their device size.
  virtual void use_hundredths_of_mm() = 0;
  virtual void use_device_units() = 0;

  // Results above zero mean success.
  virtual int begin_document(const std::string& name) = 0;
  virtual int begin_page() = 0;
  virtual int end_page() = 0;
  virtual void end_document() = 0;

  // Lets go of the device at the end of a job; false when that fails.
  virtual bool release() { return true; }

  // Called by the device while a page is spooled; a false answer cancels the
  // job, and end_page then fails.
  std::function<bool()> abort_check;
};

// The single print job of the program.
struct PrintJob {
  std::unique_ptr<PrintTarget> target;
  int32_t copies = 1;
  bool aborted = false;
  int32_t page_number = 1;
};

// The installed face that stands for a Windows face; an unknown face gets the
// plain sans-serif.
std::string LinuxFace(const std::string& windows_face);

}  // namespace tilo
