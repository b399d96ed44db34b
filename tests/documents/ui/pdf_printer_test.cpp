// SPDX-License-Identifier: MIT
// The built-in PDF printer, checked through what poppler reads back from its
// files: the text drawn, and the pixels of the rendered page.
#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QPushButton>
#include <QWidget>
#include <cstdio>
#include <filesystem>
#include <string>

#include "core/state.h"
#include "documents/print_job.h"
#include "documents/ui/qt_print_service.h"
#include "documents/ui/qt_print_target.h"
#include "support/shop_fixture.h"

namespace tilo {
namespace {

// The page rendered at 50 dots per inch.
QImage Render(const std::string& pdf, int page) {
  const std::string stem = "page";
  Shell("pdftoppm -r 50 -png -f " + std::to_string(page) + " -l " + std::to_string(page) +
        " -singlefile " + pdf + " " + stem);
  return QImage(QString::fromStdString(stem + ".png"));
}

// The share of dark pixels in a rectangle given in 300-dpi device units from
// the printable area's corner (the PDF has a 75-unit margin).
double Dark(const QImage& image, int left, int top, int right, int bottom) {
  const double k = 50.0 / 300.0;
  int dark = 0, all = 0;
  for (int y = int((top + 75) * k) + 1; y < int((bottom + 75) * k) - 1; ++y)
    for (int x = int((left + 75) * k) + 1; x < int((right + 75) * k) - 1; ++x) {
      ++all;
      if (qGray(image.pixel(x, y)) < 100) ++dark;
    }
  return all ? double(dark) / all : 0;
}

class PdfPrinterTest : public ShopTest {};

TEST_F(PdfPrinterTest, AnswersTheMetricsOfAnA4PageAt300Dpi) {
  auto target = QtPrintTarget::Pdf();
  EXPECT_EQ(target->dpi_x(), 300);
  EXPECT_EQ(target->dpi_y(), 300);
  EXPECT_EQ(target->offset_x(), 75);
  EXPECT_NEAR(target->page_width(), 2330, 1);
  EXPECT_NEAR(target->page_height(), 3358, 1);
  // The device's own font is a fixed-pitch ten points.
  const TextMetrics m = target->text_metrics();
  EXPECT_NEAR(m.height, 49, 2);
  EXPECT_NEAR(m.average_char_width, 25, 1);
  EXPECT_EQ(target->text_extent("MMMM"), target->text_extent("iiii"));
  // A font of a set width is drawn to that width.
  ASSERT_TRUE(target->select_font({"Arial", 100, 40, 700}));
  EXPECT_EQ(target->text_metrics().average_char_width, 40);
  EXPECT_NEAR(target->text_metrics().height, 100, 1);
  // Hundredths of a millimetre: the page is 197 mm wide.
  target->use_hundredths_of_mm();
  EXPECT_NEAR(target->page_width(), 19727, 10);
}

TEST_F(PdfPrinterTest, WritesEachDocumentIntoThePrintoutFolder) {
  platform_.set_now(2024, 3, 15, 9, 30);
  auto target = QtPrintTarget::Pdf();
  ASSERT_GT(target->begin_document("TILO"), 0);
  ASSERT_GT(target->begin_page(), 0);
  target->set_text_align(TextAlign::Left);
  target->text_out(0, 0, "Recepci\xF3n: 12");
  target->set_text_align(TextAlign::Centre);
  target->text_out(1165, 100, "Sub total: 4.50");
  target->set_text_align(TextAlign::Right);
  target->text_out(2330, 200, "Total: 5.40");
  target->select_brush(Brush::Black);
  target->rectangle(300, 600, 900, 900);
  target->use_hundredths_of_mm();  // 0.5 to 1.5 inch down, 1 to 2 inch across
  target->rectangle(2540, -1270, 5080, -3810);
  target->use_device_units();
  ASSERT_GT(target->end_page(), 0);
  ASSERT_GT(target->begin_page(), 0);
  target->set_text_align(TextAlign::Left);
  target->text_out(0, 0, "second page");
  target->end_page();
  target->end_document();

  const std::string file = target->last_file();
  EXPECT_EQ(file.rfind("printouts/TILO-20240315-0930", 0), 0u) << file;
  const std::string text = Shell("pdftotext -layout " + file + " -");
  EXPECT_NE(text.find("Recepción: 12"), std::string::npos) << text;
  EXPECT_NE(text.find("Sub total: 4.50"), std::string::npos);
  EXPECT_NE(text.find("Total: 5.40"), std::string::npos);
  EXPECT_NE(text.find("second page"), std::string::npos);
  const std::string info = Shell("pdfinfo " + file);
  EXPECT_NE(info.find("Title:           TILO"), std::string::npos) << info;
  EXPECT_NE(info.find("Pages:           2"), std::string::npos) << info;

  const QImage page = Render(file, 1);
  ASSERT_FALSE(page.isNull());
  EXPECT_GT(Dark(page, 300, 600, 900, 900), 0.95);      // the black bar
  EXPECT_GT(Dark(page, 300, 150, 600, 450), 0.95);      // the one drawn in millimetres
  EXPECT_LT(Dark(page, 1000, 1000, 2000, 2000), 0.01);  // and white paper elsewhere
  // Text to the right ends at the right edge; centred text straddles the middle.
  EXPECT_GT(Dark(page, 2100, 200, 2330, 240), 0.05);
  EXPECT_GT(Dark(page, 1100, 100, 1230, 140), 0.05);

  // A second document of the same minute gets a name of its own.
  ASSERT_GT(target->begin_document("TILO"), 0);
  target->begin_page();
  target->end_page();
  target->end_document();
  EXPECT_NE(target->last_file(), file);
  EXPECT_TRUE(std::filesystem::exists(target->last_file()));
}

TEST_F(PdfPrinterTest, ACancelledJobLeavesNoFile) {
  auto target = QtPrintTarget::Pdf();
  target->abort_check = [] { return false; };
  ASSERT_GT(target->begin_document("TILO"), 0);
  target->begin_page();
  target->text_out(0, 0, "never");
  EXPECT_LT(target->end_page(), 1);
  target->end_document();
  EXPECT_TRUE(std::filesystem::is_empty("printouts"));
}

TEST_F(PdfPrinterTest, TheAbortBoxCancelsAPagedJobAndGivesBackTheMainWindow) {
  QtPrintService service;
  install_print_service(&service);
  QWidget main_window;
  main_window.setObjectName("mainWindow");
  main_window.show();
  service.open_abort_box();
  EXPECT_FALSE(main_window.isEnabled());
  QWidget* box = nullptr;
  for (QWidget* w : QApplication::topLevelWidgets())
    if (w->objectName() == "abortBox" && w->isVisible()) box = w;
  ASSERT_NE(box, nullptr);
  EXPECT_EQ(box->windowTitle(), "TILO");
  box->findChild<QPushButton*>("cancel")->click();
  EXPECT_TRUE(G().print_job.aborted);
  EXPECT_TRUE(main_window.isEnabled());
  EXPECT_FALSE(Abortcheck());
  // The box deletes itself later: let it go while what it knows still stands.
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  install_print_service(nullptr);
}

}  // namespace
}  // namespace tilo
