// SPDX-License-Identifier: MIT
// Print targets on Qt's paged devices: a printer of the print system (CUPS),
// or the built-in "PDF" printer, which writes each document as a PDF file into
// a folder of the shop. Device units are the device's pixels; Windows faces are
// drawn in the faces that stand for them here.
#pragma once

#include <QFont>
#include <QPainter>
#include <QString>
#include <memory>
#include <string>

#include "documents/print_target.h"

class QPagedPaintDevice;
class QPdfWriter;
class QPrinter;
class QBuffer;

namespace tilo {

inline constexpr const char* kPdfPrinterName = "PDF";
inline constexpr const char* kPrintoutFolder = "printouts";

class QtPrintTarget : public PrintTarget {
 public:
  // The print system's printer of that name.
  static std::unique_ptr<QtPrintTarget> Printer(const QString& name);
  // The built-in PDF printer: A4 at 300 dots per inch with a quarter-inch
  // margin, each document a new file in `folder`.
  static std::unique_ptr<QtPrintTarget> Pdf(const std::string& folder = kPrintoutFolder);
  ~QtPrintTarget() override;

  // The file the last PDF document went to ("" for a printer).
  const std::string& last_file() const { return last_file_; }

  int page_width() override;
  int page_height() override;
  int dpi_x() override;
  int dpi_y() override;
  int offset_x() override;
  int offset_y() override;
  TextMetrics text_metrics() override;
  int text_extent(const std::string& text) override;
  bool select_font(const FontDescription& font) override;
  FontDescription stock_font() override;
  void set_text_align(TextAlign align) override { align_ = align; }
  void text_out(int x, int y, const std::string& text) override;
  int draw_wrapped(const std::string& text, const Rect& rect) override;
  void draw_image(const Bitmap& bitmap, int x, int y, int width, int height) override;
  void select_brush(Brush brush) override { brush_ = brush; }
  void rectangle(int left, int top, int right, int bottom) override;
  void line(int x1, int y1, int x2, int y2) override;
  void use_hundredths_of_mm() override { hundredths_ = true; }
  void use_device_units() override { hundredths_ = false; }
  int begin_document(const std::string& name) override;
  int begin_page() override;
  int end_page() override;
  void end_document() override;

 private:
  QtPrintTarget();
  QPagedPaintDevice* device() const;
  QRect PaintRect() const;
  // Between the current unit and device pixels.
  double ToDeviceX(int v) const;
  double ToDeviceY(int v) const;
  QPointF Point(int x, int y) const;
  int FromDevice(double pixels, int dpi) const;
  void MakeFont(const FontDescription& d);
  void PrepareFont();

  std::unique_ptr<QPrinter> printer_;
  // The PDF printer measures on one writer and draws each document on a new one.
  std::unique_ptr<QBuffer> measure_buffer_;
  std::unique_ptr<QPdfWriter> measure_;
  std::unique_ptr<QPdfWriter> pdf_;
  std::string folder_;
  std::string document_file_;
  std::string last_file_;

  QPainter painter_;
  QFont font_;
  double scale_x_ = 1.0;  // a font of a set width is drawn stretched
  FontDescription description_;
  bool font_made_ = false;
  TextAlign align_ = TextAlign::Left;
  Brush brush_ = Brush::White;
  bool hundredths_ = false;
  bool first_page_ = true;
  bool aborted_ = false;
};

}  // namespace tilo
