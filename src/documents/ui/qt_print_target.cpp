// SPDX-License-Identifier: MIT
#include "documents/ui/qt_print_target.h"

#include <QBuffer>
#include <QFontMetricsF>
#include <QImage>
#include <QPageLayout>
#include <QPageSize>
#include <QPdfWriter>
#include <QPrinter>
#include <QPrinterInfo>
#include <algorithm>
#include <cmath>
#include <cstdio>

#include "core/text.h"
#include "platform/files.h"
#include "platform/platform.h"

namespace tilo {
namespace {

constexpr int kPdfResolution = 300;

QPageLayout PdfLayout() {
  return QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait,
                     QMarginsF(6.35, 6.35, 6.35, 6.35), QPageLayout::Millimeter);
}

QString Text(const std::string& cp1252) {
  return QString::fromStdString(Cp1252ToUtf8(cp1252));
}

QColor BrushColour(Brush b) {
  switch (b) {
    case Brush::White:
      return Qt::white;
    case Brush::LightGrey:
      return QColor(192, 192, 192);
    case Brush::Black:
      return Qt::black;
  }
  return Qt::white;
}

// A file name no earlier document of the run has taken: the moment of printing,
// then a count.
std::string NewPrintoutPath(const std::string& folder) {
  const LocalTime t = platform().now();
  char stem[64];
  std::snprintf(stem, sizeof stem, "%s/TILO-%04d%02d%02d-%02d%02d%02d", folder.c_str(), t.year,
                t.month, t.day, t.hour, t.minute, t.second);
  std::string path = std::string(stem) + ".pdf";
  for (int n = 2; FileExists(path); ++n)
    path = std::string(stem) + "-" + std::to_string(n) + ".pdf";
  return path;
}

}  // namespace

QtPrintTarget::QtPrintTarget() = default;

QtPrintTarget::~QtPrintTarget() {
  if (painter_.isActive()) painter_.end();
}

std::unique_ptr<QtPrintTarget> QtPrintTarget::Printer(const QString& name) {
  std::unique_ptr<QtPrintTarget> t(new QtPrintTarget);
  t->printer_ =
      std::make_unique<QPrinter>(QPrinterInfo::printerInfo(name), QPrinter::HighResolution);
  return t;
}

std::unique_ptr<QtPrintTarget> QtPrintTarget::Pdf(const std::string& folder) {
  std::unique_ptr<QtPrintTarget> t(new QtPrintTarget);
  t->folder_ = folder;
  t->measure_buffer_ = std::make_unique<QBuffer>();
  t->measure_ = std::make_unique<QPdfWriter>(t->measure_buffer_.get());
  t->measure_->setResolution(kPdfResolution);
  t->measure_->setPageLayout(PdfLayout());
  return t;
}

QPagedPaintDevice* QtPrintTarget::device() const {
  if (printer_) return printer_.get();
  if (pdf_) return pdf_.get();
  return measure_.get();
}

QRect QtPrintTarget::PaintRect() const {
  if (printer_) return printer_->pageRect(QPrinter::DevicePixel).toRect();
  return PdfLayout().paintRectPixels(kPdfResolution);
}

double QtPrintTarget::ToDeviceX(int v) const {
  return hundredths_ ? v * double(device()->logicalDpiX()) / 2540.0 : v;
}

double QtPrintTarget::ToDeviceY(int v) const {
  return hundredths_ ? v * double(device()->logicalDpiY()) / 2540.0 : v;
}

QPointF QtPrintTarget::Point(int x, int y) const {
  // In hundredths of a millimetre y grows upwards from the top of the page.
  return {ToDeviceX(x), hundredths_ ? -ToDeviceY(y) : double(y)};
}

int QtPrintTarget::FromDevice(double pixels, int dpi) const {
  if (hundredths_ && dpi > 0) return int(std::lround(pixels * 2540.0 / dpi));
  return int(std::lround(pixels));
}

int QtPrintTarget::page_width() {
  return FromDevice(PaintRect().width(), dpi_x());
}
int QtPrintTarget::page_height() {
  return FromDevice(PaintRect().height(), dpi_y());
}
int QtPrintTarget::dpi_x() {
  return device()->logicalDpiX();
}
int QtPrintTarget::dpi_y() {
  return device()->logicalDpiY();
}
int QtPrintTarget::offset_x() {
  return FromDevice(PaintRect().left(), dpi_x());
}
int QtPrintTarget::offset_y() {
  return FromDevice(PaintRect().top(), dpi_y());
}

FontDescription QtPrintTarget::stock_font() {
  // A ten-point fixed-pitch face, as printers' own fonts mostly are.
  return {"Courier New", -int(std::lround(10.0 * dpi_y() / 72.0)), 0, 400};
}

void QtPrintTarget::MakeFont(const FontDescription& d) {
  QFont f(QString::fromStdString(LinuxFace(d.face)));
  f.setStyleStrategy(QFont::PreferOutline);
  f.setWeight(QFont::Weight(std::clamp(d.weight <= 0 ? 400 : d.weight, 100, 900)));
  f.setItalic(d.italic);
  f.setUnderline(d.underline);
  f.setStrikeOut(d.strikeout);
  int height = d.height != 0 ? d.height : stock_font().height;
  double pixels = -height;
  if (height > 0) {
    // A positive height is the whole cell, ascent and descent together.
    QFont probe(f);
    probe.setPixelSize(1000);
    QFontMetricsF m(probe, device());
    pixels = height * 1000.0 / (m.ascent() + m.descent());
  }
  f.setPixelSize(std::max(1, int(std::lround(pixels))));
  scale_x_ = 1.0;
  if (d.width != 0) {
    const double natural = QFontMetricsF(f, device()).averageCharWidth();
    if (natural > 0) scale_x_ = std::abs(d.width) / natural;
  }
  font_ = f;
  description_ = d;
  font_made_ = true;
}

void QtPrintTarget::PrepareFont() {
  if (!font_made_) MakeFont(stock_font());
}

bool QtPrintTarget::select_font(const FontDescription& font) {
  MakeFont(font);
  return true;
}

TextMetrics QtPrintTarget::text_metrics() {
  PrepareFont();
  QFontMetricsF m(font_, device());
  return {FromDevice(std::ceil(m.ascent() + m.descent()), dpi_y()),
          FromDevice(std::max(0.0, m.leading()), dpi_y()),
          FromDevice(m.averageCharWidth() * scale_x_, dpi_x())};
}

int QtPrintTarget::text_extent(const std::string& text) {
  PrepareFont();
  return FromDevice(QFontMetricsF(font_, device()).horizontalAdvance(Text(text)) * scale_x_,
                    dpi_x());
}

void QtPrintTarget::text_out(int x, int y, const std::string& text) {
  PrepareFont();
  if (!painter_.isActive()) return;
  const QString s = Text(text);
  QFontMetricsF m(font_, device());
  const double width = m.horizontalAdvance(s) * scale_x_;
  QPointF at = Point(x, y);
  if (align_ == TextAlign::Right) at.rx() -= width;
  if (align_ == TextAlign::Centre) at.rx() -= width / 2;
  painter_.save();
  painter_.setFont(font_);
  painter_.setPen(Qt::black);
  painter_.translate(at);
  painter_.scale(scale_x_, 1.0);
  painter_.drawText(QPointF(0, m.ascent()), s);
  painter_.restore();
}

int QtPrintTarget::draw_wrapped(const std::string& text, const Rect& rect) {
  PrepareFont();
  const QRectF area =
      QRectF(Point(rect.left, rect.top), Point(rect.right, rect.bottom)).normalized();
  const QRectF inner(0, 0, area.width() / scale_x_, area.height());
  const int flags = Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap;
  const QString s = Text(text);
  const QRectF used = QFontMetricsF(font_, device()).boundingRect(inner, flags, s);
  if (painter_.isActive()) {
    painter_.save();
    painter_.setFont(font_);
    painter_.setPen(Qt::black);
    painter_.translate(area.topLeft());
    painter_.scale(scale_x_, 1.0);
    painter_.setClipRect(inner);
    painter_.drawText(inner, flags, s);
    painter_.restore();
  }
  return FromDevice(used.height(), dpi_y());
}

void QtPrintTarget::draw_image(const Bitmap& bitmap, int x, int y, int width, int height) {
  if (!painter_.isActive()) return;
  QImage image;
  if (!image.loadFromData(reinterpret_cast<const uchar*>(bitmap.bytes.data()),
                          int(bitmap.bytes.size()), "BMP"))
    return;
  painter_.drawImage(QRectF(Point(x, y), Point(x + width, y + height)).normalized(), image);
}

void QtPrintTarget::rectangle(int left, int top, int right, int bottom) {
  if (!painter_.isActive()) return;
  const QRectF r = QRectF(Point(left, top), Point(right, bottom)).normalized();
  painter_.fillRect(r, BrushColour(brush_));
  if (brush_ != Brush::Black) {
    painter_.save();
    painter_.setPen(QPen(Qt::black, 0));
    painter_.setBrush(Qt::NoBrush);
    painter_.drawRect(r);
    painter_.restore();
  }
}

void QtPrintTarget::line(int x1, int y1, int x2, int y2) {
  if (!painter_.isActive()) return;
  painter_.save();
  painter_.setPen(QPen(Qt::black, 0));
  painter_.drawLine(Point(x1, y1), Point(x2, y2));
  painter_.restore();
}

int QtPrintTarget::begin_document(const std::string& name) {
  if (painter_.isActive()) return 0;
  first_page_ = true;
  aborted_ = false;
  if (printer_) {
    printer_->setDocName(QString::fromStdString(name));
    printer_->setCopyCount(1);  // the job loop prints each copy itself
    return painter_.begin(printer_.get()) ? 1 : 0;
  }
  if (!MakeFolder(folder_)) return 0;
  document_file_ = NewPrintoutPath(folder_);
  pdf_ = std::make_unique<QPdfWriter>(QString::fromStdString(document_file_));
  pdf_->setResolution(kPdfResolution);
  pdf_->setPageLayout(PdfLayout());
  pdf_->setTitle(QString::fromStdString(name));
  pdf_->setCreator("TILO");
  if (painter_.begin(pdf_.get())) return 1;
  pdf_.reset();
  return 0;
}

int QtPrintTarget::begin_page() {
  if (!painter_.isActive()) return 0;
  if (first_page_) {
    first_page_ = false;
    return 1;
  }
  return device()->newPage() ? 1 : 0;
}

int QtPrintTarget::end_page() {
  // The page goes to the device now: the place where a job can be cancelled.
  if (abort_check && !abort_check()) {
    aborted_ = true;
    if (printer_) printer_->abort();
    return -1;
  }
  return painter_.isActive() ? 1 : 0;
}

void QtPrintTarget::end_document() {
  if (painter_.isActive()) painter_.end();
  if (!pdf_) return;
  pdf_.reset();
  // A cancelled job leaves no file behind.
  if (aborted_)
    RemoveFile(document_file_);
  else
    last_file_ = document_file_;
}

}  // namespace tilo
