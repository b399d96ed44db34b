// SPDX-License-Identifier: MIT
#include "app/ui/main_window.h"

#include <QAction>
#include <QLayout>
#include <QMenuBar>
#include <QResizeEvent>
#include <QToolBar>

#include "app/ui/start_timing.h"
#include "config/tips.h"
#include "config/ui/config_sheet.h"
#include "config/ui/tip_form.h"
#include "core/state.h"
#include "customers/reminder_diary.h"
#include "customers/ui/customer_dialog.h"
#include "customers/ui/reminder_form.h"
#include "customers/ui/supplier_form.h"
#include "devices/pole.h"
#include "documents/ui/document_commands.h"
#include "documents/ui/label_form.h"
#include "documents/ui/mailmerge_form.h"
#include "documents/ui/statement_form.h"
#include "inventory/item_find.h"
#include "inventory/pictures.h"
#include "inventory/ui/find_forms.h"
#include "inventory/ui/item_forms.h"
#include "inventory/ui/picture_forms.h"
#include "mail/ui/mail_setup_form.h"
#include "mail/ui/upload_setup_form.h"
#include "reports/ui/activity_forms.h"
#include "reports/ui/listing_forms.h"
#include "reports/ui/report_forms.h"
#include "reports/ui/takings_forms.h"
#include "sale/commands.h"
#include "sale/screen.h"
#include "sale/ui/item_box.h"
#include "sale/ui/note_form.h"
#include "sale/ui/sale_screen.h"
#include "sale/ui/tool_icons.h"
#include "tender/ui/account_forms.h"
#include "tender/ui/adjust_forms.h"
#include "tender/ui/card_forms.h"
#include "tender/ui/cash_form.h"
#include "tender/ui/clerk_forms.h"
#include "tender/ui/refund_forms.h"
#include "tender/ui/split_form.h"
#include "tender/ui/till_forms.h"
#include "upkeep/ui/exchange_forms.h"
#include "upkeep/ui/upkeep_forms.h"

namespace tilo {
namespace {

// "&Customers" -> "Customers", for object names.
QString Plain(const QString& text) {
  QString s = text;
  s.remove('&');
  s.remove(' ');
  return s;
}

}  // namespace

MainWindow::MainWindow(DesktopSize desktop, bool open_store) : desktop_(desktop) {
  setObjectName("mainWindow");
  setWindowTitle("TILO Retail");
  WindowGeometry g = CreatedWindow(desktop);
  if (g.fixed_size) {
    setFixedSize(g.width, g.height);
    setWindowFlag(Qt::WindowMaximizeButtonHint, false);
    move((desktop.width - g.width) / 2, (desktop.height - g.height) / 2);
  } else {
    resize(g.width, g.height);
  }
  // The window never grows beyond the large layout.
  setMaximumSize(kWindowWidth, kWindowHeight);

  // The quick-select panel keeps what it needs of film.dat from its first load on.
  WatchInventory();
  InstallScreenHandlers();
  InstallTillHandlers();
  InstallTenderHandlers();
  InstallCardHandlers();
  InstallAdjustHandlers();
  InstallRefundHandlers();
  InstallBrowserHandlers();
  InstallSplitHandlers();
  InstallDocumentHandlers();
  InstallLabelHandlers();
  InstallStatementHandlers();
  InstallInventoryHandlers();
  InstallFindHandlers();
  InstallFindForms();
  InstallReportHandlers();
  InstallTakingsHandlers();
  InstallMailHandlers();
  InstallUploadHandlers();
  InstallUpkeepHandlers();
  InstallExchangeHandlers();
  InstallActivityHandlers();
  InstallCustomerHandlers();
  InstallListingForms();
  InstallParkedBasketHandlers();
  InstallSupplierHandlers();
  InstallMailmergeHandlers();
  InstallAccountHandlers();
  InstallReminderHandlers();
  InstallReminderForms();
  InstallPictureHandlers();
  InstallPictureForms();
  InstallConfigHandlers();
  InstallTipHandlers();
  buildMenus();
  buildToolBar();
  sale_ = new SaleScreen(this);
  setCentralWidget(sale_);
  connect(sale_, &SaleScreen::menuStateChanged, this, &MainWindow::refreshMenus);
  // The layout, and so the size of the quick-select page, before the first fill.
  layout()->activate();
  sale_->setTop(tool_bar_->sizeHint().height());

  if (open_store) opened_ = OpenStore();
  if (opened_ || !G().films.index.empty()) {
    Fillquickselect();
    G().suppress_sound = 0;
    if (opened_ && G().settings.pole_enabled == 2) Polegreeting();
  }
  sale_->refreshAll();
  refreshMenus();
  sale_->itemBox()->setFocus();
}

MainWindow::~MainWindow() = default;

QLineEdit* MainWindow::itemBox() const {
  return sale_->itemBox();
}

void MainWindow::buildMenus() {
  for (const std::string& name : MenuNames()) {
    QMenu* menu = menuBar()->addMenu(QString::fromStdString(name));
    menu->setObjectName("menu" + Plain(QString::fromStdString(name)));
    for (const CommandEntry& e : CommandTable()) {
      if (name != e.menu) continue;
      QString text = e.entry;
      const QString shortcut = e.shortcut;
      QAction* action = menu->addAction(text);
      action->setObjectName(QString("command%1").arg(int(e.command)));
      action->setData(int(e.command));
      // The keys are the item box's (see the key table); the menu only shows
      // them, but for Exit, whose Alt+X works from anywhere.
      if (e.command == Command::Exit)
        action->setShortcut(QKeySequence(shortcut));
      else if (!shortcut.isEmpty())
        action->setText(text + "\t" + shortcut);
      action->setCheckable(e.command == Command::IndentListings ||
                           e.command == Command::SoundEffects || e.command == Command::ButtonTips ||
                           e.command == Command::HiResPicture);
      const Command command = e.command;
      connect(action, &QAction::triggered, this, [command] { Dispatch(command); });
      if (SeparatorAfter(e.command)) menu->addSeparator();
    }
    connect(menu, &QMenu::aboutToShow, this, &MainWindow::refreshMenus);
  }
}

void MainWindow::buildToolBar() {
  tool_bar_ = addToolBar("Tools");
  tool_bar_->setObjectName("toolBar");
  tool_bar_->setMovable(false);
  tool_bar_->setFloatable(false);
  tool_bar_->setIconSize(QSize(24, 24));
  tool_bar_->setContextMenuPolicy(Qt::PreventContextMenu);
  tool_bar_->setStyleSheet(
      "QToolBar { background: #f7f9fb; border-bottom: 1px solid #d0d7e1;"
      " spacing: 3px; padding: 2px 6px; }");
  int n = 0;
  for (const ToolButton& b : ToolBar()) {
    if (b.command == Command::None) {
      tool_bar_->addSeparator();
      continue;
    }
    QAction* action = tool_bar_->addAction(ToolIcon(b.command), b.tip);
    action->setToolTip(b.tip);
    action->setObjectName(QString("tool%1").arg(n++));
    action->setData(int(b.command));
    const Command command = b.command;
    connect(action, &QAction::triggered, this, [command] { Dispatch(command); });
  }
}

void MainWindow::refreshMenus() {
  for (QAction* top : menuBar()->actions()) {
    QMenu* menu = top->menu();
    if (!menu) continue;
    top->setEnabled(MenuEnabled(top->text().toStdString()));
    for (QAction* a : menu->actions()) {
      if (a->isSeparator()) continue;
      const Command command = Command(a->data().toInt());
      a->setEnabled(MenuEntryEnabled(command));
      if (a->isCheckable()) a->setChecked(MenuEntryTicked(command));
    }
  }
}

void MainWindow::resizeEvent(QResizeEvent* event) {
  QMainWindow::resizeEvent(event);
  sale_->setTop(tool_bar_->isVisible() ? tool_bar_->height() : tool_bar_->sizeHint().height());
}

void MainWindow::afterSplash() {
  WindowGeometry g = WindowAfterSplash(desktop_);
  if (g.width != 0) {
    if (g.fixed_size)
      setFixedSize(g.width, g.height);
    else
      resize(g.width, g.height);
    move(g.x, g.y);
  }
  show();
  activateWindow();
  sale_->itemBox()->setFocus();
  if (QuitOnceShownForTiming(this)) return;
  // Nobody sells before a clerk has logged on.
  Dispatch(Command::LogOff);
  // The tip of the day follows the first log-on of the run, so that it never
  // stands over the log-on form.
  if (LogonDialog* logon = Openlogonform())
    connect(logon, &QDialog::accepted, this, [this] {
      if (Tipsatstartup()) Opentipoftheday(this);
    });
}

}  // namespace tilo
