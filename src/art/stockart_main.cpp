// SPDX-License-Identifier: MIT
// tilo-stockart: draws the 24 built-in stock pictures and writes them out as
// BMP files. `--source FILE` writes them as a C++ table for the program (the
// build runs this), `--bmp FOLDER` as STOCK1.bmp ... STOCK24.bmp, and
// `--sheet FILE.png` as one sheet of all 24 at their shown size of 48 by 48.
#include <QBuffer>
#include <QByteArray>
#include <QFile>
#include <QGuiApplication>
#include <QPainter>
#include <cstdio>
#include <cstring>

#include "art/stock_art.h"

namespace {

using namespace tilo::art;

QByteArray Bmp(int n) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  StockPicture(n).convertToFormat(QImage::Format_RGB888).save(&buffer, "BMP");
  return bytes;
}

bool WriteSource(const char* path) {
  QByteArray out =
      "// Written by tilo-stockart at build time: the built-in stock pictures as BMP files.\n"
      "#include \"inventory/stock_pictures.h\"\n\nnamespace tilo {\nnamespace {\n";
  for (int n = 1; n <= kStockPictureCount; ++n) {
    const QByteArray bmp = Bmp(n);
    out += "const unsigned char kPicture" + QByteArray::number(n) + "[] = {";
    for (int i = 0; i < bmp.size(); ++i) {
      if (i % 24 == 0) out += "\n";
      out += QByteArray::number(static_cast<unsigned char>(bmp[i])) + ",";
    }
    out += "};\n";
  }
  out += "}  // namespace\n\nconst StockPictureFile kStockPictureFiles[kStockPictures] = {\n";
  for (int n = 1; n <= kStockPictureCount; ++n)
    out += "    {kPicture" + QByteArray::number(n) + ", sizeof kPicture" + QByteArray::number(n) +
           "},\n";
  out += "};\n\n}  // namespace tilo\n";
  QFile f(path);
  return f.open(QIODevice::WriteOnly) && f.write(out) == out.size();
}

bool WriteBmps(const QString& folder) {
  for (int n = 1; n <= kStockPictureCount; ++n) {
    QFile f(folder + "/STOCK" + QString::number(n) + ".bmp");
    if (!f.open(QIODevice::WriteOnly) || f.write(Bmp(n)) < 0) return false;
  }
  return true;
}

bool WriteSheet(const QString& path) {
  constexpr int kCell = 120, kColumns = 6;
  QImage sheet(kColumns * kCell, 4 * kCell, QImage::Format_RGB32);
  sheet.fill(Qt::white);
  QPainter p(&sheet);
  p.setRenderHint(QPainter::SmoothPixmapTransform);
  for (int n = 1; n <= kStockPictureCount; ++n) {
    const int x = ((n - 1) % kColumns) * kCell, y = ((n - 1) / kColumns) * kCell;
    QImage shown;
    shown.loadFromData(Bmp(n), "BMP");
    p.drawImage(QRect(x + 36, y + 14, 48, 48), shown);
    p.drawImage(QRect(x + 46, y + 70, 28, 28), shown);  // smaller still, as a check of legibility
    p.setPen(Qt::black);
    p.drawText(QRect(x, y + 98, kCell, 20), Qt::AlignCenter,
               QString("%1 %2").arg(n).arg(StockPictureName(n)));
  }
  return sheet.save(path);
}

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QGuiApplication app(argc, argv);
  for (int i = 1; i + 1 < argc; i += 2) {
    bool ok = false;
    if (std::strcmp(argv[i], "--source") == 0)
      ok = WriteSource(argv[i + 1]);
    else if (std::strcmp(argv[i], "--bmp") == 0)
      ok = WriteBmps(argv[i + 1]);
    else if (std::strcmp(argv[i], "--sheet") == 0)
      ok = WriteSheet(argv[i + 1]);
    if (!ok) {
      std::fprintf(stderr, "tilo-stockart: cannot do %s %s\n", argv[i], argv[i + 1]);
      return 1;
    }
  }
  return 0;
}
