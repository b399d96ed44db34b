// SPDX-License-Identifier: MIT
#include "reports/ui/screen_list_dialog.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace tilo {
namespace {

class QtScreenListView : public ScreenListView {
 public:
  void show(ScreenList& list) override {
    ScreenListDialog dialog(QApplication::activeWindow(), list);
    dialog.exec();
  }
};

QtScreenListView qt_view;

}  // namespace

ScreenListDialog::ScreenListDialog(QWidget* parent, ScreenList& list)
    : QDialog(parent), list_(list) {
  setObjectName("815");
  setWindowTitle(QString::fromStdString(list.title()));
  auto* layout = new QVBoxLayout(this);
  table_ = new QTableWidget(kListRows, 4, this);
  table_->setHorizontalHeaderLabels({"Number", "Description", "", ""});
  table_->verticalHeader()->hide();
  table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table_->setSelectionBehavior(QAbstractItemView::SelectRows);
  table_->setSelectionMode(QAbstractItemView::SingleSelection);
  table_->horizontalHeader()->setStretchLastSection(true);
  table_->setColumnWidth(0, 150);
  table_->setColumnWidth(1, 260);
  table_->setColumnWidth(2, 220);
  table_->setMinimumSize(820, table_->rowHeight(0) * kListRows + 40);
  layout->addWidget(table_);
  auto* buttons = new QHBoxLayout;
  back_ = new QPushButton("Back", this);
  buttons->addWidget(back_);
  buttons->addStretch(1);
  more_ = new QPushButton("More", this);
  ok_ = new QPushButton("OK", this);
  cancel_ = new QPushButton("Cancel", this);
  for (QPushButton* b : {more_, ok_, cancel_}) buttons->addWidget(b);
  layout->addLayout(buttons);
  connect(more_, &QPushButton::clicked, this, [this] {
    list_.More();
    Refresh();
  });
  connect(back_, &QPushButton::clicked, this, [this] {
    list_.Back();
    Refresh();
  });
  connect(ok_, &QPushButton::clicked, this, &QDialog::accept);
  connect(cancel_, &QPushButton::clicked, this, &QDialog::reject);
  connect(table_, &QTableWidget::cellClicked, this,
          [this](int row, int) { list_.Open(size_t(row)); });
  connect(table_, &QTableWidget::cellActivated, this,
          [this](int row, int) { list_.Open(size_t(row)); });
  Refresh();
}

void ScreenListDialog::Refresh() {
  table_->clearContents();
  const auto& rows = list_.rows();
  for (size_t r = 0; r < rows.size(); ++r)
    for (int c = 0; c < 4; ++c)
      table_->setItem(int(r), c,
                      new QTableWidgetItem(QString::fromStdString(rows[r].columns[size_t(c)])));
  const bool more = list_.has_more();
  more_->setVisible(more);
  cancel_->setVisible(more);
  ok_->setVisible(!more);
  back_->setEnabled(list_.can_go_back());
  (more ? more_ : ok_)->setDefault(true);
  (more ? more_ : ok_)->setFocus();
}

void InstallScreenListWindow() {
  install_screen_list_view(&qt_view);
}

}  // namespace tilo
