// SPDX-License-Identifier: MIT
#include "sale/ui/sale_screen.h"
#include "inventory/ui/picture_forms.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QScrollBar>
#include <QVBoxLayout>

#include "core/state.h"
#include "core/text.h"
#include "sale/basket.h"
#include "sale/commands.h"
#include "sale/pricing.h"
#include "sale/ui/help_window.h"
#include "sale/ui/item_box.h"
#include "sale/ui/till_widgets.h"

namespace tilo {
namespace {

QPointer<QLineEdit> tender_amount;

QString FromRecord(const char* text, size_t width) {
  return QString::fromStdString(Cp1252ToUtf8(FieldText(text, width)));
}

struct SaleButtonFace {
  const char* name;
  const char* caption;
  QColor colour;
  Command command;
  const char* tip;
};

const SaleButtonFace kSaleFaces[kSaleButtonCount] = {
    {"creditButton", "Credit", palette::kNavy, Command::CustomerCredit,
     "Pay by credit to customer"},
    {"weightButton", "Weight", palette::kSlate, Command::AdjustByWeight,
     "Adjust price of last item by weight"},
    {"nonInventoryButton", "Non-inv", palette::kSlate, Command::NonInventory,
     "Sell an item not on the database"},
    {"eftButton", "EFT", palette::kNavy, Command::Eft, "Pay by credit debit card"},
    {"voidButton", "Void", palette::kRed, Command::VoidItem, "Remove highlighted item"},
    {"emptyButton", "Empty", palette::kRed, Command::EmptyBasket, "Empty basket"},
    {"drawerButton", "Drawer", palette::kAmber, Command::OpenDrawer, "Open cash till drawer"},
    {"tradeButton", "Trade", palette::kAmber, Command::TradeToggle,
     "Toggle between trade and retail prices"},
    {"repeatButton", "Repeat", palette::kTeal, Command::RepeatItem,
     "Repeat last also multiple of last with quantity in item box"},
    {"noteButton", "Note", palette::kTeal, Command::AddNote, "Add a note to the transaction"},
    {"refundButton", "Refund", palette::kTeal, Command::Refund, "Refund basket"},
    {"adjustButton", "Adjust", palette::kTeal, Command::AdjustPrice, "Adjust price of last item"},
};

const char* const kKeypadNames[12] = {"key1", "key2", "key3", "key4",  "key5", "key6",
                                      "key7", "key8", "key9", "keyCA", "key0", "keyCE"};

struct PanelFace {
  const char* name;
  const char* glyph;
  const char* caption;
  Command command;
  const char* tip;
};
const PanelFace kPanelFaces[4] = {
    {"scrollBackButton", "\u25B2", "Back", Command::ScrollBack, "Scroll back through category"},
    {"scrollForwardButton", "\u25BC", "More", Command::ScrollForward,
     "Scroll forwards through category"},
    {"previousCategoryButton", "\u25C0", "", Command::PreviousCategory,
     "Display previous category"},
    {"nextCategoryButton", "\u25B6", "", Command::NextCategory, "Display next category"},
};

}  // namespace

void SetTenderAmountField(QLineEdit* field) {
  tender_amount = field;
}
QLineEdit* TenderAmountField() {
  return tender_amount.data();
}

SaleScreen::SaleScreen(QWidget* parent) : QWidget(parent) {
  setObjectName("saleScreen");
  setAutoFillBackground(false);
  build();
  install_screen_view(this);
  install_sale_events(this);
}

SaleScreen::~SaleScreen() {
  if (&screen_view() == this) install_screen_view(nullptr);
  if (&sale_events() == this) install_sale_events(nullptr);
}

TillButton* SaleScreen::button(const char* name, const QString& caption, const QColor& colour,
                               Command command, int argument) {
  auto* b = new TillButton(caption, colour, this);
  b->setObjectName(name);
  connect(b, &QAbstractButton::clicked, this, [command, argument] { Dispatch(command, argument); });
  return b;
}

void SaleScreen::build() {
  caption_ = new ItemCaption(this);
  caption_->setObjectName("itemCaption");
  item_box_ = new ItemBox(this);
  item_box_->setObjectName("itemBox");
  QFont box_font("DejaVu Sans");
  box_font.setPixelSize(18);
  box_font.setBold(true);
  item_box_->setFont(box_font);
  item_box_->setStyleSheet(
      "QLineEdit { border: 2px solid #1f4e79; border-radius: 6px; padding: 0 6px;"
      " background: white; color: #1a202c; }");

  add_ = button("addButton", "Add", palette::kGreen, Command::AddItem);
  add_->setGlyph("+");
  add_->setToolTip("Add item to basket   ENTER to find");
  cash_ = button("cashButton", "Cash", palette::kGreen, Command::Cash);
  for (int b = 0; b < kSaleButtonCount; ++b) {
    const SaleButtonFace& f = kSaleFaces[b];
    sale_[b] = button(f.name, f.caption, f.colour, f.command);
    sale_[b]->setCaptionPixelSize(13);
  }
  for (int k = 0; k < 12; ++k) {
    const QString key = kKeypadKeys[k];
    keypad_[k] =
        new TillButton(key, k == 9 || k == 11 ? QColor(0xe2, 0xe7, 0xee) : palette::kKey, this);
    keypad_[k]->setObjectName(kKeypadNames[k]);
    keypad_[k]->setCaptionPixelSize(key.size() == 1 ? 24 : 16);
    connect(keypad_[k], &QAbstractButton::clicked, this, [this, key] { keypadPressed(key); });
  }
  for (int q = 0; q < kQuickButtons; ++q) {
    quick_[q] = new QuickButton(this);
    quick_[q]->setObjectName(QString("quick%1").arg(q));
    connect(quick_[q], &QAbstractButton::clicked, this, [q] { Dispatch(Command::QuickSelect, q); });
  }
  for (int p = 0; p < 4; ++p) {
    const PanelFace& f = kPanelFaces[p];
    panel_[p] = button(f.name, f.caption, palette::kSlate, f.command);
    panel_[p]->setGlyph(f.glyph);
  }
  for (int c = 0; c < kCategories; ++c) {
    const QString name =
        c == kAllCategories ? QString("categoryAll") : QString("category%1").arg(c);
    category_[c] =
        button(name.toUtf8().constData(), {}, QColor(0x5b, 0x6b, 0x82), Command::CategoryButton, c);
    category_[c]->setCaptionPixelSize(14);
  }
  save_ = button("saveButton", "Save", palette::kNavy, Command::SaveBasket);
  save_->setGlyph("\u2B07");
  reload_ = button("reloadButton", "Reload", palette::kNavy, Command::ReloadBasket);
  reload_->setGlyph("\u21BA");

  basket_ = new QListWidget(this);
  basket_->setObjectName("basketList");
  basket_->setFocusPolicy(Qt::NoFocus);
  basket_->setUniformItemSizes(true);
  // A row too long for the list loses its middle, never its price.
  basket_->setTextElideMode(Qt::ElideMiddle);
  basket_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  QFont list_font("DejaVu Sans Mono");
  list_font.setPixelSize(13);
  basket_->setFont(list_font);
  basket_->setStyleSheet(
      "QListWidget { background: white; border: 1px solid #d0d7e1; border-radius: 8px;"
      " padding: 4px; color: #1a202c; }"
      "QListWidget::item { padding: 3px 4px; border-bottom: 1px solid #eef1f5; }"
      "QListWidget::item:selected { background: #1f4e79; color: white; border-radius: 4px; }");
  connect(basket_, &QListWidget::currentRowChanged, this, [this](int row) {
    if (!filling_list_) G().basket_list.selected = row;
  });
  line_count_ = new LineCount(this);
  line_count_->setObjectName("lineCount");
  totals_ = new TotalsView(this);
  totals_->setObjectName("totalsPanel");
}

void SaleScreen::setTop(int top) {
  top_ = top;
  relayout();
}

void SaleScreen::resizeEvent(QResizeEvent*) {
  relayout();
}

void SaleScreen::paintEvent(QPaintEvent*) {
  QPainter p(this);
  p.fillRect(rect(), palette::kBackground);
}

// Positions count from the client's top, of which this widget shows all below
// the tool bar.
static QRect Place(const ScreenRect& r, int top) {
  return QRect(r.x, r.y - top, r.width, r.height);
}

void SaleScreen::relayout() {
  const int old_page = G().screen.page_size;
  layout_ = LayoutScreen(width(), height() + top_, top_);
  caption_->setGeometry(Place(layout_.item_caption, top_));
  item_box_->setGeometry(Place(layout_.item_box, top_));
  add_->setGeometry(Place(layout_.add, top_));
  cash_->setGeometry(Place(layout_.cash, top_));
  for (int b = 0; b < kSaleButtonCount; ++b) sale_[b]->setGeometry(Place(layout_.sale[b], top_));
  for (int k = 0; k < 12; ++k) keypad_[k]->setGeometry(Place(layout_.keypad[k], top_));
  for (int q = 0; q < kQuickButtons; ++q) {
    quick_[q]->setVisible(q < layout_.quick_count);
    if (q < layout_.quick_count) quick_[q]->setGeometry(Place(layout_.quick[q], top_));
  }
  for (int p = 0; p < 4; ++p) panel_[p]->setGeometry(Place(layout_.panel[p], top_));
  for (int c = 0; c < kCategories; ++c) {
    category_[c]->setVisible(layout_.categories_shown);
    category_[c]->setGeometry(Place(layout_.category[c], top_));
  }
  save_->setVisible(layout_.large);
  reload_->setVisible(layout_.large);
  save_->setGeometry(Place(layout_.save, top_));
  reload_->setGeometry(Place(layout_.reload, top_));
  basket_->setGeometry(Place(layout_.basket, top_));
  line_count_->setGeometry(Place(layout_.line_count, top_));
  totals_->setGeometry(Place(layout_.totals, top_));
  G().screen.page_size = layout_.quick_count;
  // The page follows the layout: it is filled again for its new size.
  if (layout_.quick_count != old_page && !G().films.index.empty()) Fillquickselect();
}

void SaleScreen::refreshAll() {
  // The shop's own currency symbol on the Cash key.
  QString symbol = FromRecord(G().settings.currency_symbol, sizeof G().settings.currency_symbol);
  if (symbol.isEmpty()) symbol = QString::fromStdString(platform().currency_symbol());
  cash_->setGlyph(symbol.isEmpty() ? QString("\u00A3") : symbol.left(1));
  refreshCategories();
  quick_select_changed();
  basket_list_changed();
  totals_changed();
  settings_changed();
}

void SaleScreen::keypadPressed(const QString& key) {
  if (G().tender_form_open == 2) {
    if (QLineEdit* field = TenderAmountField()) {
      KeypadResult r = KeypadAmount(key.toStdString(), field->text().toStdString());
      field->setText(QString::fromStdString(r.text));
      field->setCursorPosition(r.caret);
      field->setFocus();
    }
    return;
  }
  KeypadResult r = KeypadItemBox(key.toStdString(), item_box_->text().toStdString());
  item_box_->setText(QString::fromStdString(r.text));
  item_box_->setCursorPosition(r.caret);
  item_box_->setFocus();
}

void SaleScreen::refreshCategories() {
  const int current = G().settings.current_category;
  for (int c = 0; c < kCategories; ++c) {
    category_[c]->setCaption(QString::fromStdString(CategoryLabel(c)));
    category_[c]->setHighlighted(c == current);
  }
  panel_[kPreviousCategory]->setCaption(
      QString::fromStdString(CategoryLabel(NeighbourCategory(current, -1))));
  panel_[kNextCategory]->setCaption(
      QString::fromStdString(CategoryLabel(NeighbourCategory(current, +1))));
}

void SaleScreen::refreshTips() {
  // 0 means tips on; the menu entry toggles 0 and 2.
  const bool on = G().settings.button_tips == 0;
  for (int b = 0; b < kSaleButtonCount; ++b) sale_[b]->setToolTip(on ? kSaleFaces[b].tip : "");
  for (int p = 0; p < 4; ++p) panel_[p]->setToolTip(on ? kPanelFaces[p].tip : "");
  add_->setToolTip(on ? "Add item to basket   ENTER to find" : "");
  cash_->setToolTip(on ? "Pay by cash" : "");
  save_->setToolTip(on ? "Save basket" : "");
  reload_->setToolTip(on ? "Retrieve saved basket" : "");
}

void SaleScreen::focus_item_box() {
  item_box_->setFocus();
}

void SaleScreen::focus_tender_amount() {
  if (QLineEdit* field = TenderAmountField()) field->setFocus();
}

std::string SaleScreen::item_box_text() {
  return item_box_->text().toStdString();
}

void SaleScreen::set_item_box_text(const std::string& text) {
  item_box_->setText(QString::fromStdString(text));
}

void SaleScreen::item_box_caret_to_end() {
  item_box_->end(false);
}

void SaleScreen::quick_select_changed() {
  const ScreenState& s = G().screen;
  for (int q = 0; q < kQuickButtons; ++q) {
    QPixmap picture;
    if (s.quick_number[q] != 0)
      picture = Scaledpicture(FromRecord(s.quick_picture[q], 40).toStdString());
    quick_[q]->setItem(s.quick_number[q], FromRecord(s.quick_name[q], 40), picture);
  }
}

void SaleScreen::category_changed(int, int) {
  refreshCategories();
}

void SaleScreen::settings_changed() {
  const SettingsRecord& s = G().settings;
  caption_->setModes(s.entry_mode == 2, s.trade_mode == 2);
  refreshTips();
  emit menuStateChanged();
}

void SaleScreen::set_title(const std::string& title) {
  window()->setWindowTitle(QString::fromStdString(title));
}

void SaleScreen::open_help(const std::string& page) {
  ShowHelp(window(), QString::fromStdString(page));
}

void SaleScreen::show_about() {
  Message("TILO Retail\nPoint of sale and back office for a small shop.", "About TILO");
}

void SaleScreen::show_calendar() {
  QDialog dialog(window());
  dialog.setObjectName("calendarDialog");
  dialog.setWindowTitle("Calendar");
  auto* layout = new QVBoxLayout(&dialog);
  auto* calendar = new QCalendarWidget(&dialog);
  calendar->setGridVisible(true);
  layout->addWidget(calendar);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, &dialog);
  connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  layout->addWidget(buttons);
  dialog.exec();
}

void SaleScreen::quit() {
  QCoreApplication::quit();
}

void SaleScreen::basket_list_changed() {
  const BasketList& list = G().basket_list;
  filling_list_ = true;
  if (basket_->count() > int(list.rows.size()) || list.rows.empty()) basket_->clear();
  // Rows come and go at the end, or all at once: keep the ones already there.
  for (int r = 0; r < basket_->count(); ++r) {
    const QString text = QString::fromStdString(list.rows[size_t(r)]);
    if (basket_->item(r)->text() != text) basket_->item(r)->setText(text);
  }
  for (size_t r = size_t(basket_->count()); r < list.rows.size(); ++r)
    basket_->addItem(QString::fromStdString(list.rows[r]));
  basket_->setCurrentRow(list.selected);
  if (list.selected >= 0) basket_->scrollToItem(basket_->item(list.selected));
  filling_list_ = false;
}

void SaleScreen::totals_changed() {
  const QString store = FromRecord(G().heading.site_name, sizeof G().heading.site_name);
  totals_->setTotals(Totalspanel(), store);
  line_count_->setCount(G().basket.line_count);
  caption_->setModes(G().settings.entry_mode == 2, G().settings.trade_mode == 2);
}

}  // namespace tilo
