// SPDX-License-Identifier: MIT
// The sale screen: the main window's client area, where a shopkeeper works all
// day. It lays its elements out by the client height (see sale/layout.h), draws
// from the screen and basket state, and sends every press to the dispatcher.
#pragma once

#include <QPointer>
#include <QWidget>

#include "sale/commands.h"
#include "sale/layout.h"
#include "sale/sale_events.h"
#include "sale/screen.h"

class QLineEdit;
class QListWidget;

namespace tilo {

class ItemBox;
class ItemCaption;
class LineCount;
class QuickButton;
class TillButton;
class TotalsView;

// The tender form's amount field, while one is open: the keypad types into it
// and a refused command puts the focus back there.
void SetTenderAmountField(QLineEdit* field);
QLineEdit* TenderAmountField();

class SaleScreen : public QWidget, public ScreenView, public SaleEvents {
  Q_OBJECT
 public:
  explicit SaleScreen(QWidget* parent = nullptr);
  ~SaleScreen() override;

  ItemBox* itemBox() const { return item_box_; }
  // The height of the tool bar above, which positions count from.
  void setTop(int top);
  const ScreenLayout& layout() const { return layout_; }
  // Everything drawn again from the state: after the store opens or a log-on.
  void refreshAll();

  // ScreenView
  void focus_item_box() override;
  void focus_tender_amount() override;
  std::string item_box_text() override;
  void set_item_box_text(const std::string& text) override;
  void item_box_caret_to_end() override;
  void quick_select_changed() override;
  void category_changed(int previous, int current) override;
  void settings_changed() override;
  void set_title(const std::string& title) override;
  void open_help(const std::string& page) override;
  void show_about() override;
  void show_calendar() override;
  void quit() override;

  // SaleEvents
  void basket_list_changed() override;
  void totals_changed() override;

 signals:
  // The menu's ticks and greyed entries may have changed.
  void menuStateChanged();

 protected:
  void resizeEvent(QResizeEvent*) override;
  void paintEvent(QPaintEvent*) override;

 private:
  void build();
  void relayout();
  void keypadPressed(const QString& key);
  void refreshCategories();
  void refreshTips();
  TillButton* button(const char* name, const QString& caption, const QColor& colour,
                     Command command, int argument = 0);

  int top_ = 0;
  ScreenLayout layout_;
  ItemBox* item_box_ = nullptr;
  ItemCaption* caption_ = nullptr;
  TillButton* add_ = nullptr;
  TillButton* cash_ = nullptr;
  TillButton* sale_[kSaleButtonCount] = {};
  TillButton* keypad_[12] = {};
  QuickButton* quick_[kQuickButtons] = {};
  TillButton* panel_[4] = {};
  TillButton* category_[kCategories] = {};
  TillButton* save_ = nullptr;
  TillButton* reload_ = nullptr;
  QListWidget* basket_ = nullptr;
  LineCount* line_count_ = nullptr;
  TotalsView* totals_ = nullptr;
  bool filling_list_ = false;
};

}  // namespace tilo
