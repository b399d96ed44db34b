// SPDX-License-Identifier: MIT
#include "art/stock_art.h"

#include <QPainter>
#include <QPainterPath>
#include <cmath>

namespace tilo::art {
namespace {

// Everything is drawn on a 48 unit square; the painter scales it up.
const QColor kInk(0x33, 0x33, 0x3a);

struct Pen {
  QPainter& p;
  void fill(const QColor& c) {
    p.setPen(QPen(kInk, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(c);
  }
  void line() {
    p.setPen(QPen(kInk, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(Qt::NoBrush);
  }
  void thin(const QColor& c) {
    p.setPen(QPen(c, 1.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(Qt::NoBrush);
  }
  void flat(const QColor& c) {
    p.setPen(Qt::NoPen);
    p.setBrush(c);
  }
};

QPainterPath Poly(std::initializer_list<QPointF> points) {
  QPainterPath path;
  bool first = true;
  for (QPointF pt : points) {
    if (first)
      path.moveTo(pt);
    else
      path.lineTo(pt);
    first = false;
  }
  path.closeSubpath();
  return path;
}

void Bread(Pen& d) {
  QPainterPath loaf;
  loaf.moveTo(8, 34);
  loaf.lineTo(8, 22);
  loaf.cubicTo(8, 12, 40, 12, 40, 22);
  loaf.lineTo(40, 34);
  loaf.closeSubpath();
  d.fill(QColor(0xd8, 0x9a, 0x4e));
  d.p.drawPath(loaf);
  d.thin(QColor(0xf4, 0xd6, 0xa0));
  for (int x : {16, 23, 30}) d.p.drawLine(QPointF(x, 18), QPointF(x + 3, 24));
}

void Milk(Pen& d) {
  d.fill(QColor(0xf6, 0xf6, 0xf2));
  d.p.drawPath(Poly({{15, 18}, {24, 9}, {33, 18}, {33, 40}, {15, 40}}));
  d.fill(QColor(0x3f, 0x8f, 0xd8));
  d.p.drawRect(QRectF(15, 24, 18, 9));
  d.line();
  d.p.drawLine(QPointF(15, 18), QPointF(33, 18));
  d.p.drawLine(QPointF(24, 9), QPointF(24, 6));
}

void Apple(Pen& d) {
  QPainterPath body;
  body.moveTo(24, 16);
  body.cubicTo(34, 10, 42, 20, 38, 30);
  body.cubicTo(35, 40, 28, 42, 24, 39);
  body.cubicTo(20, 42, 13, 40, 10, 30);
  body.cubicTo(6, 20, 14, 10, 24, 16);
  d.fill(QColor(0xd8, 0x3b, 0x32));
  d.p.drawPath(body);
  d.line();
  d.p.drawLine(QPointF(24, 16), QPointF(25, 9));
  QPainterPath leaf;
  leaf.moveTo(25, 11);
  leaf.cubicTo(29, 6, 34, 8, 34, 9);
  leaf.cubicTo(31, 13, 27, 13, 25, 11);
  d.fill(QColor(0x5b, 0xa8, 0x3c));
  d.p.drawPath(leaf);
  d.flat(QColor(255, 255, 255, 150));
  d.p.drawEllipse(QRectF(14, 20, 4, 7));
}

void Wine(Pen& d) {
  QPainterPath bottle;
  bottle.moveTo(21, 6);
  bottle.lineTo(27, 6);
  bottle.lineTo(27, 16);
  bottle.cubicTo(33, 19, 33, 21, 33, 24);
  bottle.lineTo(33, 42);
  bottle.lineTo(15, 42);
  bottle.lineTo(15, 24);
  bottle.cubicTo(15, 21, 15, 19, 21, 16);
  bottle.closeSubpath();
  d.fill(QColor(0x6b, 0x1f, 0x3a));
  d.p.drawPath(bottle);
  d.fill(QColor(0xf3, 0xe6, 0xc4));
  d.p.drawRect(QRectF(17, 27, 14, 9));
  d.flat(QColor(0xc9, 0xa2, 0x3a));
  d.p.drawRect(QRectF(21.5, 6.5, 5, 4));
}

void Coffee(Pen& d) {
  d.fill(QColor(0xff, 0xff, 0xff));
  d.p.drawEllipse(QRectF(33, 20, 9, 11));
  QPainterPath cup;
  cup.moveTo(10, 18);
  cup.lineTo(36, 18);
  cup.lineTo(34, 36);
  cup.cubicTo(33, 40, 13, 40, 12, 36);
  cup.closeSubpath();
  d.fill(QColor(0xe5, 0x6b, 0x3c));
  d.p.drawPath(cup);
  d.fill(QColor(0xf2, 0xf2, 0xee));
  d.p.drawEllipse(QRectF(6, 38, 34, 5));
  d.thin(QColor(0x9a, 0x7a, 0x66));
  for (int x : {17, 24, 31}) {
    QPainterPath steam;
    steam.moveTo(x, 14);
    steam.cubicTo(x - 3, 11, x + 3, 9, x, 5);
    d.p.drawPath(steam);
  }
}

void Cheese(Pen& d) {
  d.fill(QColor(0xf7, 0xc9, 0x48));
  d.p.drawPath(Poly({{6, 34}, {40, 18}, {42, 34}}));
  d.fill(QColor(0xf9, 0xd9, 0x6e));
  d.p.drawPath(Poly({{6, 34}, {42, 34}, {42, 40}, {6, 40}}));
  d.fill(QColor(0xe0, 0xa8, 0x28));
  d.p.drawEllipse(QRectF(28, 28, 5, 3));
  d.p.drawEllipse(QRectF(14, 35, 4, 3));
  d.p.drawEllipse(QRectF(32, 35.5, 4, 3));
}

void Eggs(Pen& d) {
  d.fill(QColor(0xf3, 0xe3, 0xc7));
  for (int i = 0; i < 3; ++i) d.p.drawEllipse(QRectF(8 + i * 11, 14, 10, 13));
  d.fill(QColor(0xa8, 0xa0, 0x94));
  d.p.drawPath(Poly({{5, 24}, {43, 24}, {40, 38}, {8, 38}}));
  d.line();
  for (int x : {17, 24, 31}) d.p.drawLine(QPointF(x, 25), QPointF(x, 37));
}

void Banana(Pen& d) {
  QPainterPath b;
  b.moveTo(9, 18);
  b.cubicTo(12, 34, 30, 40, 41, 28);
  b.cubicTo(40, 26, 38, 26, 37, 26);
  b.cubicTo(30, 33, 17, 30, 14, 17);
  b.closeSubpath();
  d.fill(QColor(0xf4, 0xd2, 0x3c));
  d.p.drawPath(b);
  d.fill(QColor(0x6b, 0x52, 0x2c));
  d.p.drawRect(QRectF(9, 14, 5, 4));
}

void Tin(Pen& d) {
  d.fill(QColor(0xc9, 0xcd, 0xd3));
  d.p.drawRect(QRectF(12, 12, 24, 28));
  d.fill(QColor(0xd9, 0x4f, 0x3b));
  d.p.drawRect(QRectF(12, 18, 24, 16));
  d.fill(QColor(0xe4, 0xe7, 0xeb));
  d.p.drawEllipse(QRectF(12, 8, 24, 8));
  d.fill(QColor(0xf7, 0xe7, 0xb0));
  d.p.drawEllipse(QRectF(19, 22, 10, 8));
}

void Teapot(Pen& d) {
  d.fill(QColor(0x4a, 0x9e, 0x9a));
  QPainterPath spout;
  spout.moveTo(12, 26);
  spout.lineTo(5, 18);
  spout.lineTo(8, 17);
  spout.lineTo(14, 22);
  d.p.drawPath(spout);
  d.line();
  d.p.drawArc(QRectF(32, 20, 10, 12), -90 * 16, 180 * 16);
  d.fill(QColor(0x4a, 0x9e, 0x9a));
  d.p.drawEllipse(QRectF(11, 17, 26, 22));
  d.fill(QColor(0x3b, 0x80, 0x7d));
  d.p.drawEllipse(QRectF(16, 13, 16, 6));
  d.p.drawEllipse(QRectF(22, 9, 4, 4));
  d.fill(QColor(0x7c, 0x5a, 0x3c));
  d.p.drawRect(QRectF(13, 37, 22, 3));
}

void Candle(Pen& d) {
  d.fill(QColor(0xf2, 0xe9, 0xf7));
  d.p.drawRect(QRectF(18, 20, 12, 22));
  d.line();
  d.p.drawLine(QPointF(24, 20), QPointF(24, 16));
  QPainterPath flame;
  flame.moveTo(24, 6);
  flame.cubicTo(29, 12, 28, 16, 24, 17);
  flame.cubicTo(20, 16, 19, 12, 24, 6);
  d.fill(QColor(0xf8, 0xa9, 0x2a));
  d.p.drawPath(flame);
  d.flat(QColor(0xfd, 0xe2, 0x6a));
  d.p.drawEllipse(QRectF(22.5, 11, 3, 4));
}

void Book(Pen& d) {
  d.fill(QColor(0xfb, 0xfa, 0xf4));
  d.p.drawPath(Poly({{14, 12}, {38, 10}, {38, 38}, {14, 40}}));
  d.fill(QColor(0x3a, 0x6e, 0xc2));
  d.p.drawPath(Poly({{10, 10}, {34, 8}, {34, 36}, {10, 38}}));
  d.thin(QColor(0xf6, 0xd3, 0x5c));
  d.p.drawLine(QPointF(15, 16), QPointF(29, 15));
  d.p.drawLine(QPointF(15, 20), QPointF(25, 19.3));
}

void Card(Pen& d) {
  d.fill(QColor(0xfb, 0xf5, 0xe8));
  d.p.drawRect(QRectF(8, 14, 32, 22));
  d.line();
  d.p.drawPolyline(QPolygonF({QPointF(8, 14), QPointF(24, 27), QPointF(40, 14)}));
  QPainterPath heart;
  heart.moveTo(24, 36);
  heart.cubicTo(14, 30, 18, 22, 24, 26);
  heart.cubicTo(30, 22, 34, 30, 24, 36);
  d.fill(QColor(0xe0, 0x4a, 0x6a));
  d.p.save();
  d.p.translate(10, -4);
  d.p.scale(0.6, 0.6);
  d.p.translate(14, 20);
  d.p.drawPath(heart);
  d.p.restore();
}

void IceCream(Pen& d) {
  d.fill(QColor(0xe2, 0xb0, 0x6a));
  d.p.drawPath(Poly({{15, 22}, {33, 22}, {24, 43}}));
  d.thin(QColor(0xb9, 0x83, 0x3f));
  d.p.drawLine(QPointF(19, 26), QPointF(28, 34));
  d.p.drawLine(QPointF(29, 26), QPointF(21, 35));
  d.fill(QColor(0xf6, 0xb8, 0xc8));
  d.p.drawEllipse(QRectF(13, 8, 22, 18));
  d.fill(QColor(0xd6, 0x35, 0x4a));
  d.p.drawEllipse(QRectF(22, 5, 5, 5));
}

void Carrot(Pen& d) {
  d.fill(QColor(0x5b, 0xa8, 0x3c));
  d.p.drawPath(Poly({{31, 14}, {36, 4}, {35, 13}, {44, 9}, {36, 17}}));
  d.fill(QColor(0xf0, 0x86, 0x2a));
  QPainterPath root;
  root.moveTo(6, 42);
  root.lineTo(28, 12);
  root.cubicTo(33, 12, 36, 16, 36, 20);
  root.closeSubpath();
  d.p.drawPath(root);
  d.thin(QColor(0xb8, 0x5a, 0x14));
  d.p.drawLine(QPointF(22, 22), QPointF(26, 24));
  d.p.drawLine(QPointF(16, 30), QPointF(20, 32));
}

void Fish(Pen& d) {
  d.fill(QColor(0x7f, 0xb4, 0xd6));
  d.p.drawPath(Poly({{34, 24}, {44, 15}, {44, 33}}));
  QPainterPath body;
  body.moveTo(5, 24);
  body.cubicTo(12, 12, 30, 12, 36, 24);
  body.cubicTo(30, 36, 12, 36, 5, 24);
  d.p.drawPath(body);
  d.flat(kInk);
  d.p.drawEllipse(QRectF(11, 20, 3.5, 3.5));
  d.thin(QColor(0x4d, 0x82, 0xa6));
  d.p.drawArc(QRectF(14, 17, 8, 14), -60 * 16, 120 * 16);
}

void Cupcake(Pen& d) {
  d.fill(QColor(0x8e, 0x5a, 0xc0));
  d.p.drawPath(Poly({{12, 26}, {36, 26}, {32, 42}, {16, 42}}));
  d.thin(QColor(0x6c, 0x3f, 0x99));
  for (int x : {20, 24, 28}) d.p.drawLine(QPointF(x, 27), QPointF(x, 41));
  QPainterPath icing;
  icing.moveTo(10, 27);
  icing.cubicTo(8, 18, 16, 14, 20, 15);
  icing.cubicTo(22, 8, 30, 9, 31, 15);
  icing.cubicTo(38, 15, 40, 22, 38, 27);
  icing.closeSubpath();
  d.fill(QColor(0xfb, 0xe8, 0xef));
  d.p.drawPath(icing);
  d.fill(QColor(0xd6, 0x35, 0x4a));
  d.p.drawEllipse(QRectF(22, 6, 6, 6));
}

void Jam(Pen& d) {
  d.fill(QColor(0xb8, 0x24, 0x45));
  d.p.drawRoundedRect(QRectF(12, 16, 24, 26), 4, 4);
  d.fill(QColor(0xf4, 0xf0, 0xe0));
  d.p.drawRect(QRectF(15, 24, 18, 10));
  d.fill(QColor(0xd8, 0x3b, 0x32));
  d.p.drawEllipse(QRectF(21, 26, 6, 6));
  d.fill(QColor(0xe9, 0xe0, 0xc8));
  QPainterPath cloth = Poly({{9, 16}, {12, 9}, {36, 9}, {39, 16}});
  d.p.drawPath(cloth);
  d.thin(QColor(0xd8, 0x3b, 0x32));
  d.p.drawLine(QPointF(16, 12), QPointF(32, 12));
}

void Newspaper(Pen& d) {
  d.fill(QColor(0xee, 0xee, 0xe8));
  d.p.drawPath(Poly({{8, 12}, {38, 12}, {38, 38}, {12, 38}, {8, 34}}));
  d.flat(QColor(0x55, 0x58, 0x60));
  d.p.drawRect(QRectF(12, 15, 22, 4));
  d.flat(QColor(0x9a, 0xb6, 0xd0));
  d.p.drawRect(QRectF(12, 22, 10, 9));
  d.thin(QColor(0x80, 0x84, 0x8c));
  for (int y : {23, 26, 29, 33}) d.p.drawLine(QPointF(25, y), QPointF(34, y));
}

void Lollipop(Pen& d) {
  d.fill(QColor(0xfa, 0xfa, 0xfa));
  d.p.drawRect(QRectF(22.5, 24, 3, 19));
  d.fill(QColor(0xf2, 0x6b, 0x9a));
  d.p.drawEllipse(QRectF(11, 4, 26, 26));
  d.thin(QColor(0xfb, 0xf0, 0xf4));
  QPainterPath swirl;
  swirl.moveTo(24, 17);
  swirl.arcTo(QRectF(20, 13, 8, 8), 180, 270);
  swirl.arcTo(QRectF(16, 9, 16, 16), 90, 270);
  d.p.drawPath(swirl);
}

void Beer(Pen& d) {
  d.fill(QColor(0xf3, 0xb2, 0x2e));
  d.p.drawRect(QRectF(12, 16, 20, 26));
  d.line();
  d.p.drawRoundedRect(QRectF(31, 21, 8, 14), 3, 3);
  QPainterPath foam;
  foam.moveTo(10, 18);
  foam.cubicTo(8, 12, 13, 9, 17, 11);
  foam.cubicTo(19, 7, 27, 7, 28, 11);
  foam.cubicTo(33, 9, 36, 14, 34, 18);
  foam.closeSubpath();
  d.fill(QColor(0xff, 0xfb, 0xf0));
  d.p.drawPath(foam);
  d.flat(QColor(255, 255, 255, 140));
  d.p.drawRect(QRectF(15, 22, 3, 16));
}

void Bag(Pen& d) {
  d.line();
  d.p.drawArc(QRectF(17, 7, 14, 14), 0, 180 * 16);
  d.fill(QColor(0x6a, 0xb0, 0x4c));
  d.p.drawPath(Poly({{10, 16}, {38, 16}, {40, 42}, {8, 42}}));
  d.fill(QColor(0xf4, 0xf4, 0xe8));
  d.p.drawEllipse(QRectF(19, 24, 10, 10));
}

void Gift(Pen& d) {
  d.fill(QColor(0x3f, 0x8f, 0xd8));
  d.p.drawRect(QRectF(10, 20, 28, 22));
  d.fill(QColor(0x5a, 0xa4, 0xe6));
  d.p.drawRect(QRectF(8, 15, 32, 7));
  d.flat(QColor(0xf6, 0xd3, 0x5c));
  d.p.drawRect(QRectF(22, 15.8, 4, 25.4));
  d.fill(QColor(0xf6, 0xd3, 0x5c));
  d.p.drawEllipse(QRectF(15, 8, 9, 7));
  d.p.drawEllipse(QRectF(24, 8, 9, 7));
}

void Plant(Pen& d) {
  d.fill(QColor(0x5b, 0xa8, 0x3c));
  for (auto [x, y, a] : {std::tuple{14.0, 10.0, -30.0}, {26.0, 8.0, 30.0}, {20.0, 4.0, 0.0}}) {
    d.p.save();
    d.p.translate(x + 4, y + 10);
    d.p.rotate(a);
    d.p.drawEllipse(QRectF(-4, -10, 8, 18));
    d.p.restore();
  }
  d.fill(QColor(0xc8, 0x6a, 0x3c));
  d.p.drawPath(Poly({{13, 26}, {35, 26}, {32, 42}, {16, 42}}));
  d.fill(QColor(0xd9, 0x7f, 0x52));
  d.p.drawRect(QRectF(11, 24, 26, 5));
}

struct Entry {
  const char* name;
  void (*draw)(Pen&);
  QColor tile;
};

const Entry kPictures[kStockPictureCount] = {
    {"Bread", Bread, QColor(0xfb, 0xee, 0xd9)},
    {"Milk", Milk, QColor(0xe1, 0xee, 0xfa)},
    {"Apple", Apple, QColor(0xfd, 0xe4, 0xe1)},
    {"Wine", Wine, QColor(0xf5, 0xe3, 0xea)},
    {"Coffee", Coffee, QColor(0xfb, 0xe7, 0xdc)},
    {"Cheese", Cheese, QColor(0xfd, 0xf3, 0xd2)},
    {"Eggs", Eggs, QColor(0xf2, 0xee, 0xe6)},
    {"Bananas", Banana, QColor(0xfd, 0xf7, 0xd6)},
    {"Tinned food", Tin, QColor(0xfb, 0xe3, 0xdf)},
    {"Tea", Teapot, QColor(0xdf, 0xf1, 0xef)},
    {"Candles", Candle, QColor(0xf1, 0xea, 0xf7)},
    {"Books", Book, QColor(0xe2, 0xea, 0xf8)},
    {"Cards", Card, QColor(0xfb, 0xe6, 0xec)},
    {"Ice cream", IceCream, QColor(0xfd, 0xe9, 0xef)},
    {"Vegetables", Carrot, QColor(0xfd, 0xec, 0xdc)},
    {"Fish", Fish, QColor(0xe0, 0xee, 0xf7)},
    {"Cakes", Cupcake, QColor(0xef, 0xe5, 0xf8)},
    {"Preserves", Jam, QColor(0xf8, 0xe1, 0xe6)},
    {"Newspapers", Newspaper, QColor(0xea, 0xec, 0xef)},
    {"Sweets", Lollipop, QColor(0xfd, 0xe6, 0xee)},
    {"Beer", Beer, QColor(0xfd, 0xf1, 0xd9)},
    {"Groceries", Bag, QColor(0xe6, 0xf3, 0xdf)},
    {"Gifts", Gift, QColor(0xe1, 0xed, 0xfa)},
    {"Plants", Plant, QColor(0xe6, 0xf3, 0xdf)},
};

}  // namespace

QImage StockPicture(int n) {
  QImage image(kStockPictureSize, kStockPictureSize, QImage::Format_RGB32);
  image.fill(Qt::white);
  if (n < 1 || n > kStockPictureCount) return image;
  const Entry& e = kPictures[n - 1];
  QPainter p(&image);
  p.setRenderHint(QPainter::Antialiasing);
  p.scale(kStockPictureSize / 48.0, kStockPictureSize / 48.0);
  p.setPen(Qt::NoPen);
  p.setBrush(e.tile);
  p.drawRoundedRect(QRectF(1, 1, 46, 46), 9, 9);
  Pen d{p};
  e.draw(d);
  return image;
}

const char* StockPictureName(int n) {
  return n >= 1 && n <= kStockPictureCount ? kPictures[n - 1].name : "";
}

}  // namespace tilo::art
