// SPDX-License-Identifier: MIT
#include "sale/ui/tool_icons.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

namespace tilo {
namespace {

enum class Mark { Text, Magnifier, Printer };

struct IconFace {
  Command command;
  QColor colour;
  Mark mark;
  const char* text;
};

const QColor kInventory{0x1f, 0x4e, 0x79};
const QColor kAdding{0x2e, 0x8b, 0x57};
const QColor kFinding{0x6b, 0x46, 0xc1};
const QColor kReminders{0xc0, 0x7a, 0x0c};
const QColor kOthers{0x4a, 0x55, 0x68};

const IconFace kFaces[] = {
    {Command::AmendInventory, kInventory, Mark::Text, "\u270E"},
    {Command::DisplayTransaction, kInventory, Mark::Text, "\u2630"},
    {Command::ReorderList, kInventory, Mark::Text, "\u21BB"},
    {Command::AddCustomImage, kInventory, Mark::Text, "\u25A6"},
    {Command::NewLine, kAdding, Mark::Text, "\u271A"},
    {Command::AddCustomer, kAdding, Mark::Text, "\u263A"},
    {Command::EmailReport, kAdding, Mark::Text, "\u2709"},
    {Command::SalesReport, kAdding, Mark::Text, "\u2211"},
    {Command::FindInventory, kFinding, Mark::Magnifier, ""},
    {Command::DeleteInventory, kFinding, Mark::Text, "\u2716"},
    {Command::FindCustomer, kFinding, Mark::Magnifier, "\u263A"},
    {Command::DeleteCustomer, kFinding, Mark::Text, "\u2716"},
    {Command::AddReminder, kReminders, Mark::Text, "\u270D"},
    {Command::DeleteReminder, kReminders, Mark::Text, "\u2716"},
    {Command::PrintReminders, kReminders, Mark::Printer, ""},
    {Command::ListReminders, kReminders, Mark::Text, "\u2637"},
    {Command::DebtorLetter1, kOthers, Mark::Text, "\u26A0"},
    {Command::BalancePayment, kOthers, Mark::Text, "\u00A3"},
    {Command::LogOff, kOthers, Mark::Text, "\u23CF"},
    {Command::Backup, kOthers, Mark::Text, "\u27F3"},
};

void DrawMagnifier(QPainter& p, const QRectF& r, const QString& inside) {
  QRectF lens(r.left() + r.width() * 0.18, r.top() + r.height() * 0.16, r.width() * 0.46,
              r.height() * 0.46);
  p.setPen(QPen(Qt::white, r.width() * 0.08));
  p.setBrush(Qt::NoBrush);
  p.drawEllipse(lens);
  p.setPen(QPen(Qt::white, r.width() * 0.12, Qt::SolidLine, Qt::RoundCap));
  p.drawLine(lens.center() + QPointF(lens.width() * 0.38, lens.height() * 0.38),
             QPointF(r.right() - r.width() * 0.2, r.bottom() - r.height() * 0.2));
  if (!inside.isEmpty()) {
    QFont f("DejaVu Sans");
    f.setPixelSize(int(lens.height() * 0.7));
    p.setFont(f);
    p.setPen(Qt::white);
    p.drawText(lens, Qt::AlignCenter, inside);
  }
}

void DrawPrinter(QPainter& p, const QRectF& r) {
  const double w = r.width();
  p.setPen(Qt::NoPen);
  p.setBrush(Qt::white);
  p.drawRect(QRectF(r.left() + w * 0.3, r.top() + w * 0.18, w * 0.4, w * 0.2));
  p.drawRoundedRect(QRectF(r.left() + w * 0.16, r.top() + w * 0.4, w * 0.68, w * 0.28), 2, 2);
  p.setBrush(QColor(255, 255, 255, 200));
  p.drawRect(QRectF(r.left() + w * 0.3, r.top() + w * 0.6, w * 0.4, w * 0.22));
}

}  // namespace

QIcon ToolIcon(Command command) {
  for (const IconFace& face : kFaces) {
    if (face.command != command) continue;
    QIcon icon;
    for (int size : {24, 32, 48}) {
      QPixmap pixmap(size, size);
      pixmap.fill(Qt::transparent);
      QPainter p(&pixmap);
      p.setRenderHint(QPainter::Antialiasing);
      QRectF r(1, 1, size - 2, size - 2);
      QLinearGradient g(r.topLeft(), r.bottomLeft());
      g.setColorAt(0, face.colour.lighter(118));
      g.setColorAt(1, face.colour);
      p.setPen(Qt::NoPen);
      p.setBrush(g);
      p.drawRoundedRect(r, size * 0.22, size * 0.22);
      const QString text = QString::fromUtf8(face.text);
      switch (face.mark) {
        case Mark::Magnifier:
          DrawMagnifier(p, r, text);
          break;
        case Mark::Printer:
          DrawPrinter(p, r);
          break;
        case Mark::Text: {
          QFont f("DejaVu Sans");
          f.setPixelSize(int(size * 0.6));
          f.setBold(true);
          p.setFont(f);
          p.setPen(Qt::white);
          p.drawText(r, Qt::AlignCenter, text);
        }
      }
      p.end();
      icon.addPixmap(pixmap);
    }
    return icon;
  }
  return {};
}

}  // namespace tilo
