// SPDX-License-Identifier: MIT
#include "reports/ui/takings_forms.h"

#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>
#include <cstdio>

#include "core/state.h"
#include "core/text.h"
#include "reports/takings.h"
#include "reports/units_by_category.h"
#include "sale/commands.h"
#include "tender/ui/cash_form.h"

namespace tilo {
namespace {

QString Text(const std::string& cp1252) {
  return QString::fromStdString(Cp1252ToUtf8(cp1252));
}

// OK and Print under a box; Print runs `print`.
QDialogButtonBox* OkPrintButtons(QDialog* dialog, std::function<void()> print) {
  auto* buttons = new QDialogButtonBox(dialog);
  QPushButton* ok = buttons->addButton("OK", QDialogButtonBox::AcceptRole);
  ok->setObjectName("ok");
  QPushButton* print_button = buttons->addButton("Print", QDialogButtonBox::ActionRole);
  print_button->setObjectName("print");
  QObject::connect(buttons, &QDialogButtonBox::accepted, dialog, &QDialog::accept);
  QObject::connect(print_button, &QPushButton::clicked, dialog, [print] { print(); });
  return buttons;
}

Qt::Alignment Align(TextAlign align) {
  switch (align) {
    case TextAlign::Right:
      return Qt::AlignRight;
    case TextAlign::Centre:
      return Qt::AlignHCenter;
    default:
      return Qt::AlignLeft;
  }
}

}  // namespace

TakingsListDialog::TakingsListDialog(QWidget* parent, const std::vector<std::string>& rows)
    : QDialog(parent) {
  setObjectName("takingsList");
  setWindowTitle("Takings list");
  auto* layout = new QVBoxLayout(this);
  list_ = new QListWidget(this);
  list_->setObjectName("takingsRows");
  list_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  for (const std::string& row : rows) list_->addItem(Text(row));
  layout->addWidget(list_);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  layout->addWidget(buttons);
  resize(560, 480);
  if (list_->count() > 0) list_->setCurrentRow(list_->count() - 1);
}

TakingsChartView::TakingsChartView(QWidget* parent) : QWidget(parent) {
  setObjectName("takingsChart");
  setMinimumSize(560, 300);
  setAutoFillBackground(true);
  QPalette p = palette();
  p.setColor(QPalette::Window, Qt::white);
  setPalette(p);
}

void TakingsChartView::paintEvent(QPaintEvent*) {
  const State& g = G();
  const TakingsChart c =
      BuildTakingsChart(g.settings, width(), height(), g.today_month, g.today_day);
  QPainter painter(this);
  painter.setPen(QPen(QColor(170, 170, 170), 1, Qt::DotLine));
  for (int x : c.grid_x) painter.drawLine(x, c.grid_bottom, x, c.grid_top);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(70, 110, 170));
  for (const ChartBar& b : c.bars)
    painter.drawRect(QRect(QPoint(b.left, b.top), QPoint(b.right, b.bottom - 1)));
  painter.setPen(QPen(Qt::black, 1));
  painter.drawLine(c.axis[0][0], c.axis[0][1], c.axis[1][0], c.axis[1][1]);
  painter.drawLine(c.axis[1][0], c.axis[1][1], c.axis[2][0], c.axis[2][1]);
  const int h = painter.fontMetrics().height();
  for (const ChartText& t : c.labels) {
    // x is the left end, right end or middle of the text; y its top.
    const int w = 200;
    QRect box = t.align == TextAlign::Right    ? QRect(t.x - w, t.y, w, h)
                : t.align == TextAlign::Centre ? QRect(t.x - w / 2, t.y, w, h)
                                               : QRect(t.x, t.y, w, h);
    // Values sit level with the top of their bars.
    if (t.align == TextAlign::Right) box.translate(0, -h / 2);
    painter.drawText(box, Align(t.align) | Qt::AlignTop, QString::fromStdString(t.text));
  }
}

TakingsGraphDialog::TakingsGraphDialog(QWidget* parent) : QDialog(parent) {
  setObjectName("GRAPH");
  setWindowTitle("Weekly takings average");
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(new TakingsChartView(this), 1);
  layout->addWidget(OkPrintButtons(this, [] { Printtakingschart(); }));
  resize(760, 420);
}

CategoryDialog::CategoryDialog(QWidget* parent, bool month) : QDialog(parent) {
  setObjectName("CATEGORY");
  setWindowTitle("Inventory categories");
  auto* layout = new QVBoxLayout(this);
  auto* grid = new QGridLayout;
  const auto rows = UnitsByCategory(G().settings, month, G().today_day);
  const char* headings[] = {"", "", "Units", "Total"};
  for (int half = 0; half < 2; ++half)
    for (int h = 0; h < 4; ++h) grid->addWidget(new QLabel(headings[h], this), 0, half * 5 + h);
  for (int c = 0; c < kUnitCategories; ++c) {
    const int row = c % 9 + 1, col = c / 9 * 5;
    char units[24], total[40];
    std::snprintf(units, sizeof units, "%d", rows[c].units);
    std::snprintf(total, sizeof total, "%.2f", rows[c].total);
    grid->addWidget(new QLabel(QString::number(c + 1), this), row, col);
    grid->addWidget(new QLabel(Text(rows[c].code), this), row, col + 1);
    auto* u = new QLabel(units, this);
    u->setObjectName(QString("units%1").arg(c));
    u->setAlignment(Qt::AlignRight);
    grid->addWidget(u, row, col + 2);
    auto* t = new QLabel(total, this);
    t->setObjectName(QString("total%1").arg(c));
    t->setAlignment(Qt::AlignRight);
    grid->addWidget(t, row, col + 3);
  }
  grid->setColumnMinimumWidth(4, 24);
  layout->addLayout(grid);
  layout->addWidget(new QLabel("Units include credited items.", this));
  layout->addWidget(new QLabel(
      "Totals include tax but not transaction discounts (or any associated tax adjustments).",
      this));
  layout->addWidget(OkPrintButtons(this, [month] { PrintUnitsByCategory(month); }));
  setWindowTitle(QString::fromStdString(UnitsByCategoryTitle(month)));
}

void InstallTakingsHandlers() {
  SetHandler(Command::TakingsDisplay, [](int) {
    std::optional<std::vector<TakingsDay>> days = Takingslist();
    if (!days) return;
    std::vector<std::string> rows;
    for (const TakingsDay& d : *days) rows.push_back(TakingsListRow(d));
    TakingsListDialog dialog(TillWindow(), rows);
    dialog.exec();
  });
  SetHandler(Command::TakingsGraph, [](int) {
    if (G().tender_form_open == 2) return;
    TakingsGraphDialog dialog(TillWindow());
    dialog.exec();
  });
  SetHandler(Command::PrintTakings, [](int) { Printtakings(); });
  SetHandler(Command::TakingsAmendment, [](int) { Takingsamendment(); });
  SetHandler(Command::PurgeTakings, [](int) { Purgetakingscommand(); });
  for (bool month : {false, true})
    SetHandler(month ? Command::ItemsByCategoryMonth : Command::ItemsByCategoryDay, [month](int) {
      CategoryDialog dialog(TillWindow(), month);
      dialog.exec();
    });
}

}  // namespace tilo
