// SPDX-License-Identifier: MIT
#include "sale/ui/till_widgets.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>

namespace tilo {
namespace {

QFont Font(int pixels, bool bold = false) {
  QFont f("DejaVu Sans");
  f.setPixelSize(pixels);
  f.setBold(bold);
  return f;
}

// White or ink, whichever reads better on the colour.
QColor TextOn(const QColor& c) {
  return c.lightness() > 170 ? palette::kInk : Qt::white;
}

void PaintFace(QPainter& p, const QRectF& r, const QColor& colour, bool down, double radius) {
  QColor top = down ? colour.darker(118) : colour.lighter(112);
  QColor bottom = down ? colour.darker(105) : colour;
  if (!down) {  // a soft shadow under a raised key
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0, 0, 0, 40));
    p.drawRoundedRect(r.adjusted(0.5, 1.5, 0.5, 1.5), radius, radius);
  }
  QLinearGradient g(r.topLeft(), r.bottomLeft());
  g.setColorAt(0, top);
  g.setColorAt(1, bottom);
  p.setBrush(g);
  p.setPen(QPen(colour.darker(135), 1));
  p.drawRoundedRect(r, radius, radius);
}

}  // namespace

TillButton::TillButton(const QString& caption, const QColor& colour, QWidget* parent)
    : QAbstractButton(parent), caption_(caption), colour_(colour) {
  setFocusPolicy(Qt::NoFocus);
  setCursor(Qt::PointingHandCursor);
  setAccessibleName(caption);
}

void TillButton::setGlyph(const QString& glyph) {
  glyph_ = glyph;
  update();
}
void TillButton::setCaption(const QString& caption) {
  caption_ = caption;
  setAccessibleName(caption);
  update();
}
void TillButton::setSubCaption(const QString& text) {
  sub_caption_ = text;
  update();
}
void TillButton::setHighlighted(bool on) {
  highlighted_ = on;
  update();
}

void TillButton::paintEvent(QPaintEvent*) {
  QPainter p(this);
  p.setRenderHint(QPainter::Antialiasing);
  const bool down = isDown() || isChecked();
  QRectF r = QRectF(rect()).adjusted(1, 1, -1.5, -2.5);
  if (down) r.translate(0, 1);
  QColor colour = highlighted_ ? palette::kNavy : colour_;
  if (!isEnabled()) colour = QColor(0xc5, 0xcc, 0xd6);
  PaintFace(p, r, colour, down, std::min(r.width(), r.height()) * 0.18);
  if (highlighted_) {
    p.setPen(QPen(palette::kAmber, 3));
    p.setBrush(Qt::NoBrush);
    p.drawLine(QPointF(r.left() + 8, r.bottom() - 4), QPointF(r.right() - 8, r.bottom() - 4));
  }

  p.setPen(TextOn(colour));
  const int h = int(r.height());
  int caption_px = caption_pixels_ ? caption_pixels_ : std::clamp(h / 3, 10, 20);
  if (!glyph_.isEmpty()) {
    QRectF glyph_area = r.adjusted(0, 2, 0, -r.height() * 0.38);
    p.setFont(Font(int(glyph_area.height() * 0.72), true));
    p.drawText(glyph_area, Qt::AlignCenter, glyph_);
    p.setFont(Font(std::min(caption_px, 12), true));
    p.drawText(r.adjusted(2, r.height() * 0.58, -2, -3), Qt::AlignHCenter | Qt::AlignVCenter,
               caption_);
    return;
  }
  if (!sub_caption_.isEmpty()) {
    p.setFont(Font(std::min(caption_px, 14), true));
    p.drawText(r.adjusted(0, 3, 0, -r.height() / 2), Qt::AlignHCenter | Qt::AlignBottom, caption_);
    p.setFont(Font(11, true));
    QColor soft = TextOn(colour);
    soft.setAlpha(200);
    p.setPen(soft);
    p.drawText(r.adjusted(0, r.height() / 2 + 2, 0, 0), Qt::AlignHCenter | Qt::AlignTop,
               sub_caption_);
    return;
  }
  p.setFont(Font(caption_px, true));
  p.drawText(r, Qt::AlignCenter | Qt::TextWordWrap, caption_);
}

QuickButton::QuickButton(QWidget* parent) : QAbstractButton(parent) {
  setFocusPolicy(Qt::NoFocus);
  setCursor(Qt::PointingHandCursor);
}

void QuickButton::setItem(int64_t number, const QString& description, const QPixmap& picture) {
  number_ = number;
  description_ = description;
  picture_ = picture;
  setEnabled(number != 0);
  setAccessibleName(number ? description : QString());
  update();
}

void QuickButton::paintEvent(QPaintEvent*) {
  QPainter p(this);
  p.setRenderHint(QPainter::Antialiasing);
  QRectF r = QRectF(rect()).adjusted(0.5, 0.5, -1, -2);
  if (number_ == 0) {
    p.setPen(QPen(QColor(0xc8, 0xd0, 0xda), 1, Qt::DashLine));
    p.setBrush(QColor(0xf0, 0xf3, 0xf6));
    p.drawRoundedRect(r, 7, 7);
    return;
  }
  const bool down = isDown();
  if (down) r.translate(0, 1);
  PaintFace(p, r, down ? QColor(0xdb, 0xe7, 0xf3) : palette::kKey, down, 7);
  // The picture at the left edge; without one the text stands alone.
  // Its left corners come rounded from the picture cache: a plain rectangle
  // clip is enough, and far cheaper than a rounded one on every paint.
  if (!picture_.isNull()) {
    p.setClipRect(r);
    p.drawPixmap(QRect(int(r.left()) + 1, int(r.top()) + 1, 48, 48), picture_);
    p.setClipping(false);
  }
  p.setPen(palette::kGrey);
  p.setFont(Font(11));
  p.drawText(QRectF(60, 6 + r.top() - 0.5, width() - 64, 16), Qt::AlignLeft | Qt::AlignTop,
             QString::number(number_));
  p.setPen(palette::kInk);
  p.setFont(Font(13, true));
  p.drawText(QRectF(60, 24 + r.top() - 0.5, width() - 62, 20), Qt::AlignLeft | Qt::AlignTop,
             description_.left(14));
}

ItemCaption::ItemCaption(QWidget* parent) : QWidget(parent) {}

void ItemCaption::setModes(bool sku_entry, bool trade) {
  sku_ = sku_entry;
  trade_ = trade;
  update();
}

void ItemCaption::paintEvent(QPaintEvent*) {
  QPainter p(this);
  p.setRenderHint(QPainter::Antialiasing);
  QRectF tag(0.5, 2.5, 88, height() - 5);
  p.setPen(Qt::NoPen);
  p.setBrush(palette::kNavy);
  p.drawRoundedRect(tag, 6, 6);
  p.setPen(Qt::white);
  p.setFont(Font(12, true));
  p.drawText(tag.adjusted(8, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter, sku_ ? "SKU" : "ITEM");
  // The barcode mark of SKU entry; a plain number sign otherwise.
  if (sku_) {
    double x = tag.right() - 34;
    const int widths[] = {2, 1, 1, 3, 1, 2, 1, 1, 2, 1, 3, 1};
    for (int i = 0; i < 12; ++i) {
      if (i % 2 == 0) p.fillRect(QRectF(x, tag.top() + 5, widths[i], tag.height() - 10), Qt::white);
      x += widths[i] + 0.5;
    }
  } else {
    p.drawText(tag.adjusted(0, 0, -10, 0), Qt::AlignRight | Qt::AlignVCenter, "No.");
  }
  if (trade_) {
    p.setPen(palette::kAmber.darker(120));
    p.setFont(Font(13, true));
    p.drawText(QRectF(tag.right() + 8, 0, width() - tag.right() - 8, height()),
               Qt::AlignLeft | Qt::AlignVCenter, "Trade sale");
  }
}

LineCount::LineCount(QWidget* parent) : QWidget(parent) {
  hide();
}

void LineCount::setCount(int count) {
  count_ = count;
  setVisible(count != 0);
  update();
}

void LineCount::paintEvent(QPaintEvent*) {
  QPainter p(this);
  p.setRenderHint(QPainter::Antialiasing);
  QRectF r = QRectF(rect()).adjusted(1, 1, -1, -1);
  p.setPen(Qt::NoPen);
  p.setBrush(palette::kNavy);
  p.drawRoundedRect(r, r.height() / 2, r.height() / 2);
  p.setPen(Qt::white);
  p.setFont(Font(14, true));
  p.drawText(r, Qt::AlignCenter, QString::asprintf("%d", count_));
}

TotalsView::TotalsView(QWidget* parent) : QWidget(parent) {}

void TotalsView::setTotals(const TotalsPanel& totals, const QString& store_name) {
  totals_ = totals;
  store_name_ = store_name;
  update();
}

void TotalsView::paintStore(QPainter& p, const QRectF& area) {
  // A shop front: a striped awning over a window and a door, the name above.
  const double w = std::min(area.width() * 0.7, 190.0);
  const double h = std::min(area.height() * 0.62, 110.0);
  QRectF front(area.center().x() - w / 2, area.top() + (area.height() - h) / 2 + 10, w, h);
  p.setPen(Qt::NoPen);
  p.setBrush(QColor(0xf4, 0xf6, 0xf9));
  p.drawRect(front);
  const int stripes = 8;
  const double sw = w / stripes;
  for (int i = 0; i < stripes; ++i) {
    p.setBrush(i % 2 ? QColor(0xfb, 0xfc, 0xfd) : palette::kTeal);
    QPainterPath scallop;
    QRectF s(front.left() + i * sw, front.top() - 4, sw, h * 0.22);
    scallop.moveTo(s.topLeft());
    scallop.lineTo(s.topRight());
    scallop.lineTo(s.right(), s.bottom() - sw / 2);
    scallop.arcTo(QRectF(s.left(), s.bottom() - sw, sw, sw), 0, -180);
    scallop.closeSubpath();
    p.drawPath(scallop);
  }
  const double body_top = front.top() + h * 0.32;
  p.setBrush(QColor(0xcf, 0xe0, 0xee));
  p.drawRoundedRect(QRectF(front.left() + 10, body_top, w * 0.55, front.bottom() - body_top - 8), 3,
                    3);
  p.setBrush(palette::kNavy);
  p.drawRoundedRect(QRectF(front.right() - w * 0.3, body_top, w * 0.22, front.bottom() - body_top),
                    3, 3);
  p.setBrush(palette::kAmber);
  p.drawEllipse(QPointF(front.right() - w * 0.12, (body_top + front.bottom()) / 2), 2.5, 2.5);
  p.setPen(QPen(palette::kSlate, 2));
  p.drawLine(QPointF(front.left() - 8, front.bottom()), QPointF(front.right() + 8, front.bottom()));
  p.setPen(palette::kNavy);
  p.setFont(Font(15, true));
  p.drawText(QRectF(area.left(), area.top() + 6, area.width(), front.top() - area.top() - 10),
             Qt::AlignCenter, store_name_);
}

void TotalsView::paintEvent(QPaintEvent*) {
  QPainter p(this);
  p.setRenderHint(QPainter::Antialiasing);
  QRectF card = QRectF(rect()).adjusted(0.5, 0.5, -1, -2);
  p.setPen(QPen(QColor(0xd0, 0xd7, 0xe1), 1));
  p.setBrush(Qt::white);
  p.drawRoundedRect(card, 10, 10);

  const double row = std::clamp((card.height() - 16) / 9.0, 14.0, 24.0);
  QRectF line(card.left() + 14, card.top() + 8, card.width() - 28, row);
  p.setFont(Font(std::max(11, int(row * 0.55)), true));
  p.setPen(palette::kNavy);
  p.drawText(line, Qt::AlignLeft | Qt::AlignVCenter, QString::fromStdString(totals_.transaction));
  p.setPen(QPen(QColor(0xe2, 0xe7, 0xee), 1));
  p.drawLine(line.bottomLeft() + QPointF(0, 2), line.bottomRight() + QPointF(0, 2));
  if (!totals_.show) {
    paintStore(p, card.adjusted(0, row + 8, 0, 0));
    return;
  }
  auto put = [&](const char* label, const std::string& value, bool strong = false) {
    line.translate(0, row);
    QFont f = Font(std::max(10, int(row * (strong ? 0.7 : 0.52))), strong);
    p.setFont(Font(std::max(10, int(row * 0.48))));
    p.setPen(palette::kGrey);
    p.drawText(line, Qt::AlignLeft | Qt::AlignVCenter, label);
    p.setFont(f);
    p.setPen(strong ? palette::kInk : palette::kGrey);
    p.drawText(line, Qt::AlignRight | Qt::AlignVCenter, QString::fromStdString(value));
  };
  line.translate(0, 4);
  put("Taxable", totals_.taxable);
  put("Non taxable", totals_.non_taxable);
  put("Sub total", totals_.subtotal);
  put("Tax 1", totals_.tax1);
  put("Tax 2", totals_.tax2);
  if (!totals_.discount.empty()) put("Discount", totals_.discount);
  line.translate(0, 4);
  put("Total", totals_.total, true);
  if (!totals_.second_currency.empty()) put("", totals_.second_currency);
}

}  // namespace tilo
