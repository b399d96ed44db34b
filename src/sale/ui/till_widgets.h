// SPDX-License-Identifier: MIT
// The faces of the sale screen, drawn by the program: till keys in an up and a
// down state, the quick-select cards, the item caption, the line count and the
// totals panel.
#pragma once

#include <QAbstractButton>
#include <QColor>
#include <QPixmap>
#include <QWidget>

#include "sale/pricing.h"

namespace tilo {

namespace palette {
inline const QColor kBackground{0xe8, 0xec, 0xf1};
inline const QColor kNavy{0x1f, 0x4e, 0x79};
inline const QColor kGreen{0x2e, 0x8b, 0x57};
inline const QColor kRed{0xc0, 0x39, 0x2b};
inline const QColor kAmber{0xd4, 0x88, 0x0f};
inline const QColor kTeal{0x1a, 0x7f, 0x8e};
inline const QColor kSlate{0x4a, 0x55, 0x68};
inline const QColor kKey{0xfb, 0xfc, 0xfd};
inline const QColor kInk{0x1a, 0x20, 0x2c};
inline const QColor kGrey{0x71, 0x80, 0x96};
}  // namespace palette

// A till key: a rounded face in its colour, darker and sunk while pressed, with
// a caption and, above it, an optional glyph.
class TillButton : public QAbstractButton {
  Q_OBJECT
 public:
  TillButton(const QString& caption, const QColor& colour, QWidget* parent = nullptr);
  void setGlyph(const QString& glyph);
  void setCaption(const QString& caption);
  // A second, smaller line under the caption (the category a button leads to).
  void setSubCaption(const QString& text);
  // The category shown now is marked on its button.
  void setHighlighted(bool on);
  void setCaptionPixelSize(int pixels) { caption_pixels_ = pixels; }
  QString caption() const { return caption_; }
  QString subCaption() const { return sub_caption_; }
  bool highlighted() const { return highlighted_; }

 protected:
  void paintEvent(QPaintEvent*) override;

 private:
  QString caption_, glyph_, sub_caption_;
  QColor colour_;
  bool highlighted_ = false;
  int caption_pixels_ = 0;
};

// A quick-select button: the item's picture at its left edge, its number at
// (60, 6) and its description, cut to 14 characters, at (60, 26). With number 0
// it stands empty.
class QuickButton : public QAbstractButton {
  Q_OBJECT
 public:
  explicit QuickButton(QWidget* parent = nullptr);
  // `picture` may be null: then the text stands alone.
  void setItem(int64_t number, const QString& description, const QPixmap& picture);
  int64_t number() const { return number_; }
  QString description() const { return description_; }
  bool hasPicture() const { return !picture_.isNull(); }

 protected:
  void paintEvent(QPaintEvent*) override;

 private:
  int64_t number_ = 0;
  QString description_;
  QPixmap picture_;
};

// The caption over the item box: a small barcode mark under SKU entry, and
// "Trade sale" beside it while trade prices apply.
class ItemCaption : public QWidget {
  Q_OBJECT
 public:
  explicit ItemCaption(QWidget* parent = nullptr);
  void setModes(bool sku_entry, bool trade);
  bool skuMark() const { return sku_; }
  bool tradeShown() const { return trade_; }

 protected:
  void paintEvent(QPaintEvent*) override;

 private:
  bool sku_ = false, trade_ = false;
};

// The count of basket lines over the top of the list, hidden at 0.
class LineCount : public QWidget {
  Q_OBJECT
 public:
  explicit LineCount(QWidget* parent = nullptr);
  void setCount(int count);
  int count() const { return count_; }

 protected:
  void paintEvent(QPaintEvent*) override;

 private:
  int count_ = 0;
};

// The totals of the sale under their printed labels, with the transaction number
// above them; with an empty basket the store's own picture and no figures.
class TotalsView : public QWidget {
  Q_OBJECT
 public:
  explicit TotalsView(QWidget* parent = nullptr);
  void setTotals(const TotalsPanel& totals, const QString& store_name);
  const TotalsPanel& totals() const { return totals_; }

 protected:
  void paintEvent(QPaintEvent*) override;

 private:
  void paintStore(QPainter& p, const QRectF& area);
  TotalsPanel totals_;
  QString store_name_;
};

}  // namespace tilo
