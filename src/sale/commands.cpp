// SPDX-License-Identifier: MIT
#include "sale/commands.h"

#include <map>

#include "core/state.h"
#include "sale/basket.h"
#include "sale/screen.h"

namespace tilo {
namespace {

using C = Command;
constexpr bool B = true;  // the command empties the basket first

const std::vector<CommandEntry> kTable = {
    {C::ListingFontSize, "&File", "Listing font size", "", false},
    {C::IndentListings, "&File", "Indent listings", "", false},
    {C::EmailSetup, "&File", "Email setup", "", B},
    {C::ExitPrintReport, "&File", "Exit - print report", "", false},
    {C::ExitPrintLog, "&File", "Exit - print log", "", false},
    {C::ExitPrintReportLog, "&File", "Exit - print report + log", "", false},
    {C::Exit, "&File", "E&xit", "Alt+X", false},

    {C::NewLine, "Inventory", "New line", "F4", B},
    {C::AmendInventory, "Inventory", "&Amend", "F3", B},
    {C::DeleteInventory, "Inventory", "&Delete", "", B},
    {C::NewBundle, "Inventory", "New bundle", "", B},
    {C::InventoryReceived, "Inventory", "Inventory received", "^V", false},
    {C::InventoryReceivedBySku, "Inventory", "Inventory received by SKU 1", "", B},
    {C::FindInventory, "Inventory", "&Find", "F2", false},
    {C::FindInSkus, "Inventory", "Find in SKUs", "^S", B},
    {C::FindByDescription, "Inventory", "Find by description", "^N", false},
    {C::FindInventoryContaining, "Inventory", "Find that contain", "", B},
    {C::FindAdvanced, "Inventory", "Find advanced", "^F", B},
    {C::InventoryListFromNumber, "Inventory", "List from number", "^I", B},
    {C::InventoryListAlphabetically, "Inventory", "List a&lphabetically", "", B},
    {C::InventoryListByCategory, "Inventory", "List by &category", "", B},
    {C::AddCustomImage, "Inventory", "Add custom image to item", "", B},

    {C::PrintInventoryFromNumber, "Pri&nt", "&From number ..", "", B},
    {C::PrintInventoryAlphabetically, "Pri&nt", "&Alphabetically", "", B},
    {C::PrintInventoryCostValue, "Pri&nt", "Including cost value", "", B},
    {C::PrintInventoryByCategory, "Pri&nt", "By category", "", B},
    {C::PrintInventoryInStock, "Pri&nt", "In stock", "", B},
    {C::PrintInventoryByLocation, "Pri&nt", "By location", "", false},
    {C::PrintInventoryCustom, "Pri&nt", "Custom", "", B},

    {C::AddCustomer, "&Customers", "&Add", "^A", B},
    {C::AmendCustomer, "&Customers", "&Amend", "^B", B},
    {C::DeleteCustomer, "&Customers", "&Delete", "", B},
    {C::PruneCustomers, "&Customers", "&Prune", "", B},
    {C::FindCustomer, "&Customers", "&Find", "^J", false},
    {C::CustomerListFromNumber, "&Customers", "List from number", "^M", B},
    {C::CustomerListAlphabetically, "&Customers", "Alp&habetically", "", B},
    {C::CustomerListByAddress, "&Customers", "By address", "", B},
    {C::FindCustomerContaining, "&Customers", "Find that contain", "", B},
    {C::FindTelephone, "&Customers", "Find telephone", "^E", B},
    {C::DebtorEmail, "&Customers", "Debtor email", "", B},
    {C::AmendBalance, "&Customers", "Amend balance", "", B},
    {C::CustomerStatement, "&Customers", "Customer statement", "", B},
    {C::CustomerPeriodActivity, "&Customers", "Customer period activity", "", B},

    {C::PrintCustomersFromNumber, "&Print", "F&rom number ..", "", B},
    {C::PrintCustomersAlphabetically, "&Print", "&Alphabetically", "", B},
    {C::PrintDebtors, "&Print", "&Debtors", "^D", B},
    {C::DebtorLetter1, "&Print", "&Debtor letter 1", "^L", B},
    {C::DebtorLetter2, "&Print", "D&ebtor letter 2", "", B},
    {C::PrintInactiveSince, "&Print", "Inactive since ..", "", B},
    {C::PrintCustomerDetails, "&Print", "Customer details", "", B},

    {C::AddReminder, "R&eminders", "Add", "", B},
    {C::AddReminderToday, "R&eminders", "Add today", "^R", false},
    {C::ListReminders, "R&eminders", "&List", "", false},
    {C::PrintReminders, "R&eminders", "&Print", "^T", B},
    {C::AmendReminder, "R&eminders", "A&mend", "", false},
    {C::DeleteReminder, "R&eminders", "&Delete", "", false},

    {C::FindSupplier, "Suppliers", "&Find", "", B},
    {C::ListSuppliers, "Suppliers", "&List", "", B},
    {C::PrintSuppliers, "Suppliers", "&Print", "", B},
    {C::AddSupplier, "Suppliers", "Add", "", false},
    {C::AmendSupplier, "Suppliers", "A&mend", "", B},
    {C::DeleteSupplier, "Suppliers", "&Delete", "", B},

    {C::Cash, "Payments", "Cash", "F5", false},
    {C::Cheque, "Payments", "CH", "", false},
    {C::CustomerCredit, "Payments", "Customer credit", "F6", false},
    {C::Eft, "Payments", "EFT (Credit card)", "F7", false},
    {C::SplitTender, "Payments", "Split Cash Other", "", false},
    {C::BalancePayment, "Payments", "Balance payment", "", B},
    {C::BalancePayOnTransaction, "Payments", "Balance pay on transaction", "", B},
    {C::CardSetup, "Payments", "Card processing setup", "", false},

    {C::SalesReport, "&Reports", "&Sales report", "", B},
    {C::SalesByStaff, "&Reports", "Sales by staff", "", B},
    {C::SalesByItem, "&Reports", "Sales by item", "", B},
    {C::DailyItemSummary, "&Reports", "Daily item summary", "", B},
    {C::WeeklyItemSummary, "&Reports", "Weekly item summary", "", B},
    {C::MonthlyItemSummary, "&Reports", "Monthly item summary", "", false},
    {C::PeriodItemSummary, "&Reports", "Specific period item summary", "", false},
    {C::ExportDailyItems, "&Reports", "Export daily items CSV", "", B},
    {C::ExportWeeklyItems, "&Reports", "Export weekly items CSV", "", B},
    {C::StockSummary, "&Reports", "Stock summary", "", false},
    {C::ReorderList, "&Reports", "Reorder list", "", B},
    {C::ReorderListByOrderCode, "&Reports", "Reorder list by order code", "", B},
    {C::OutOfStock, "&Reports", "Out of stock", "", B},
    {C::SpecialOrders, "&Reports", "Special orders", "", false},
    {C::SellByExpired, "&Reports", "Sell by expired", "", B},
    {C::OutstandingBalances, "&Reports", "Outstanding balances", "", B},
    {C::InventoryReceivedReport, "&Reports", "Inventory received", "", B},
    {C::ItemsByCategoryDay, "&Reports", "Items by category (day)", "", B},
    {C::ItemsByCategoryMonth, "&Reports", "Items by category (month)", "", B},
    {C::HighestVolume, "&Reports", "&Highest volume products", "", B},
    {C::RetailBelowCost, "&Reports", "List items with retail less than cost", "", B},
    {C::TakingsDisplay, "&Reports", "Takings", "", false},
    {C::TakingsGraph, "&Reports", "Takings graph", "", false},
    {C::PrintTakings, "&Reports", "Print takings", "", B},
    {C::PurgeTakings, "&Reports", "Purge takings", "", B},
    {C::PurgeLogFiles, "&Reports", "P&urge log files", "", false},
    {C::TillReconciliation, "&Reports", "Till reconciliation", "", B},
    {C::TillCloseout, "&Reports", "Till closeout", "", B},

    {C::FindTransaction, "Transactions", "Find transaction", "", B},
    {C::DisplayTransaction, "Transactions", "Display transaction", "F11", B},
    {C::TransactionsInDay, "Transactions", "In specific day", "", B},
    {C::TransactionsInMonth, "Transactions", "In specific month", "", B},
    {C::TransactionsInYear, "Transactions", "In specific year", "", B},
    {C::DiscountedTransactions, "Transactions", "Discounted", "", B},
    {C::ReprintLast, "Transactions", "Reprint last receipt invoice", "", B},
    {C::AddDiscount, "Transactions", "Add discount", "", false},
    {C::AddNote, "Transactions", "Add note", "", false},
    {C::AssociateCustomer, "Transactions", "Associate customer", "", false},

    {C::ActivitySummary, "Activity", "&Activity summary", "F12", B},
    {C::PrintActivitySummary, "Activity", "Print activity summary", "", B},
    {C::PreviousActivitySummary, "Activity", "Previous activity summary", "", B},
    {C::EmailReport, "Activity", "Email report", "", B},
    {C::EmailDailyItems, "Activity", "Email daily items", "", B},
    {C::HeadOfficeSetup, "Activity", "Head office report setup", "", B},
    {C::HeadOfficeUpload, "Activity", "Upload head office report", "", B},
    {C::DisplayLogFile, "Activity", "Display log file", "", B},
    {C::DisplayPreviousLogFile, "Activity", "Display previous log file", "", B},
    {C::PrintLogToday, "Activity", "&Print log for today", "", false},
    {C::PrintLogFromDay, "Activity", "Pr&int log from a specific day", "", false},
    {C::PrintLogFile, "Activity", "Pri&nt the log file", "", false},
    {C::PrintOldLogFile, "Activity", "Print o&ld log file", "", false},
    {C::LogFileCapacity, "Activity", "Log file capacity", "", false},
    {C::SaveBasket, "Activity", "Save basket", "^W", false},
    // Reload empties the basket itself, and only when there is a parked one.
    {C::ReloadBasket, "Activity", "Reload basket", "^X", false},

    {C::Configuration, "&Utilities", "&Configuration", "^C", B},
    {C::TakingsAmendment, "&Utilities", "&Takings amendment", "", B},
    {C::PettyCash, "&Utilities", "&Petty cash payment", "", B},
    {C::PurgeHistory, "&Utilities", "Purge transaction history", "", B},
    {C::FileReset, "&Utilities", "&File reset", "", false},
    {C::TaxSetup, "&Utilities", "Tax setup", "", B},
    {C::StorePrintHeading, "&Utilities", "Store print heading", "", false},
    {C::Mailmerge, "&Utilities", "Mailmerge", "", B},
    {C::BarcodePrint, "&Utilities", "Barcode print", "", B},
    {C::CustomReceipt, "&Utilities", "Custom receipt", "", B},
    {C::Invoices, "&Utilities", "Invoices", "", B},
    {C::CustomizeLanguage, "&Utilities", "Customize language", "", false},
    {C::OperatorSetup, "&Utilities", "&Operator setup", "", B},
    {C::UserControl, "&Utilities", "&User control", "^P", false},
    {C::Export, "&Utilities", "&Export", "", B},
    {C::Import, "&Utilities", "&Import", "", false},
    {C::SoundEffects, "&Utilities", "Sound effects", "", false},
    {C::ButtonTips, "&Utilities", "Button tips", "", false},
    {C::Backup, "&Utilities", "&Backup", "", B},
    {C::Restore, "&Utilities", "&Restore", "", B},
    {C::ChangeStockPicture, "&Utilities", "Change inbuilt stock picture", "", false},
    {C::HiResPicture, "&Utilities", "Hi res picture", "", false},

    {C::HelpContents, "&Help", "&Contents", "", false},
    {C::UsingHelp, "&Help", "&Using help", "", false},
    {C::TipOfTheDay, "&Help", "&Tip of the day ...", "", false},
    {C::Calendar, "&Help", "Calendar", "", false},
    {C::About, "&Help", "A&bout", "", false},

    // The buttons and keys with no menu entry.
    {C::AddItem, "", "Add", "", false},
    {C::VoidItem, "", "Void", "", false},
    {C::RepeatItem, "", "Repeat", "", false},
    {C::EmptyBasket, "", "Empty", "", B},
    {C::TradeToggle, "", "Trade", "", false},
    {C::NonInventory, "", "Non-inventory", "", false},
    {C::AdjustPrice, "", "Adjust", "", false},
    {C::AdjustByWeight, "", "Weight", "", false},
    {C::OpenDrawer, "", "Drawer", "", false},
    {C::Refund, "", "Refund", "", false},
    {C::LogOff, "", "Log off", "", B},
    {C::ScrollBack, "", "Scroll back", "", false},
    {C::ScrollForward, "", "Scroll forward", "", false},
    {C::PreviousCategory, "", "Previous category", "", false},
    {C::NextCategory, "", "Next category", "", false},
    {C::CategoryButton, "", "Category", "", false},
    {C::QuickSelect, "", "Quick select", "", false},
    {C::EftManual, "Payments", "Manual card transaction", "", false},
    {C::ItemFind, "", "Item find", "", false},
};

const std::vector<std::string> kMenus = {
    "&File",    "Inventory", "Pri&nt",       "&Customers", "&Print",     "R&eminders", "Suppliers",
    "Payments", "&Reports",  "Transactions", "Activity",   "&Utilities", "&Help"};

const std::vector<ToolButton> kToolBar = {
    {C::AmendInventory, "Amend inventory (F3)"},
    {C::DisplayTransaction, "Display transaction (F11)"},
    {C::ReorderList, "Print reorder list"},
    {C::AddCustomImage, "Add image to inventory"},
    {C::None, ""},
    {C::NewLine, "Add new inventory (F4)"},
    {C::AddCustomer, "Add customer"},
    {C::EmailReport, "Email report"},
    {C::SalesReport, "Sales report"},
    {C::None, ""},
    {C::FindInventory, "Find inventory (F2)"},
    {C::DeleteInventory, "Delete inventory"},
    {C::FindCustomer, "Find customer"},
    {C::DeleteCustomer, "Delete customer"},
    {C::None, ""},
    {C::AddReminder, "Add reminder"},
    {C::DeleteReminder, "Delete reminder"},
    {C::PrintReminders, "Print reminders"},
    {C::ListReminders, "Display reminders"},
    {C::None, ""},
    {C::DebtorLetter1, "Print overdue letter"},
    {C::BalancePayment, "Payments"},
    {C::LogOff, "Log off (Shortcut F9)"},
    {C::Backup, "Backup"},
};

const std::vector<KeyBinding> kKeys = {
    {"Left", C::PreviousCategory},
    {"Up", C::ScrollBack},
    {"Right", C::NextCategory},
    {"Down", C::ScrollForward},
    {"F1", C::HelpContents},
    {"F2", C::FindInventory},
    {"F3", C::AmendInventory},
    {"F4", C::NewLine},
    {"F5", C::Cash},
    {"F6", C::CustomerCredit},
    {"F7", C::Eft},
    {"F8", C::OpenDrawer},
    {"F9", C::LogOff},
    {"F11", C::DisplayTransaction},
    {"F12", C::ActivitySummary},
    {"Ctrl+A", C::AddCustomer},
    {"Ctrl+B", C::AmendCustomer},
    {"Ctrl+C", C::Configuration},
    {"Ctrl+D", C::PrintDebtors},
    {"Ctrl+E", C::FindTelephone},
    {"Ctrl+F", C::FindAdvanced},
    {"Ctrl+I", C::InventoryListFromNumber},
    {"Ctrl+J", C::FindCustomer},
    {"Ctrl+K", C::NonInventory},
    {"Ctrl+L", C::DebtorLetter1},
    {"Ctrl+M", C::CustomerListFromNumber},
    {"Ctrl+N", C::FindByDescription},
    {"Ctrl+P", C::UserControl},
    {"Ctrl+R", C::AddReminderToday},
    {"Ctrl+S", C::FindInSkus},
    {"Ctrl+T", C::PrintReminders},
    {"Ctrl+V", C::InventoryReceived},
    {"Ctrl+W", C::SaveBasket},
    {"Ctrl+X", C::ReloadBasket},
};

std::map<Command, CommandHandler>& Handlers() {
  static std::map<Command, CommandHandler> handlers;
  return handlers;
}

// The commands a restricted clerk can't reach from the menu unless a flag frees
// them, in the order the menu state applies them.
const std::vector<Command> kGreyedForRestricted = {C::ListingFontSize,
                                                   C::IndentListings,
                                                   C::EmailSetup,
                                                   C::EmailReport,
                                                   C::NewLine,
                                                   C::AmendInventory,
                                                   C::DeleteInventory,
                                                   C::AmendCustomer,
                                                   C::DeleteCustomer,
                                                   C::PruneCustomers,
                                                   C::AmendSupplier,
                                                   C::DeleteSupplier,
                                                   C::CustomerStatement,
                                                   C::AmendBalance,
                                                   C::OutstandingBalances,
                                                   C::SalesReport,
                                                   C::SalesByStaff,
                                                   C::SalesByItem,
                                                   C::TakingsDisplay,
                                                   C::TakingsGraph,
                                                   C::HighestVolume,
                                                   C::ActivitySummary,
                                                   C::DisplayLogFile,
                                                   C::PrintActivitySummary,
                                                   C::DisplayPreviousLogFile,
                                                   C::PrintLogToday,
                                                   C::PrintLogFromDay,
                                                   C::PrintLogFile,
                                                   C::PrintOldLogFile,
                                                   C::PrintTakings,
                                                   C::PurgeTakings,
                                                   C::PurgeLogFiles,
                                                   C::DebtorLetter1,
                                                   C::DebtorLetter2,
                                                   C::DebtorEmail,
                                                   C::Mailmerge,
                                                   C::CustomReceipt,
                                                   C::Configuration,
                                                   C::LogFileCapacity,
                                                   C::TakingsAmendment,
                                                   C::FileReset,
                                                   C::TaxSetup,
                                                   C::StorePrintHeading,
                                                   C::OperatorSetup,
                                                   C::UserControl,
                                                   C::Export,
                                                   C::Import,
                                                   C::SoundEffects,
                                                   C::HiResPicture,
                                                   C::PurgeHistory,
                                                   C::InventoryReceived};

// A "free" flag of the rights form: 0 keeps the command from restricted clerks.
bool Freed(int64_t flag) {
  return flag != 0;
}

// The flag that frees a greyed entry again, or nullptr when none does.
bool FreedByFlag(Command c, bool* has_flag) {
  const SettingsRecord& s = G().settings;
  *has_flag = true;
  switch (c) {
    case C::Configuration:
      return Freed(s.free_configuration);
    case C::DeleteInventory:
      return Freed(s.free_item[0]);
    case C::DeleteCustomer:
      return Freed(s.free_item[1]);
    case C::PruneCustomers:
      return Freed(s.free_item[2]);
    case C::AmendBalance:
      return Freed(s.free_item[3]);
    case C::ActivitySummary:
    case C::PrintActivitySummary:
      return Freed(s.free_item[4]);
    case C::TakingsDisplay:
    case C::TakingsGraph:
      return Freed(s.free_item[5]);
    case C::PrintTakings:
      return Freed(s.free_item[6]);
    case C::PurgeTakings:
      return Freed(s.free_item[7]);
    case C::PurgeLogFiles:
      return Freed(s.free_item[8]);
    case C::TakingsAmendment:
      return Freed(s.free_item[9]);
    case C::FileReset:
      return Freed(s.free_item[10]);
    case C::NewLine:
      return Freed(s.free_new_inventory);
    case C::InventoryReceived:
      return Freed(s.free_inventory_received);
    case C::AmendInventory:
      return Freed(s.free_amend_inventory);
    case C::TaxSetup:
      return Freed(s.free_tax_setup);
    default:
      *has_flag = false;
      return false;
  }
}

bool Restricted() {
  return G().screen.restricted_clerk == 2;
}

}  // namespace

const std::vector<CommandEntry>& CommandTable() {
  return kTable;
}

const CommandEntry* FindCommand(Command command) {
  for (const CommandEntry& e : kTable)
    if (e.command == command) return &e;
  return nullptr;
}

const std::vector<std::string>& MenuNames() {
  return kMenus;
}

bool SeparatorAfter(Command command) {
  switch (command) {
    case C::EmailSetup:
    case C::AddCustomImage:
    case C::AmendBalance:
    case C::CardSetup:
    case C::TillCloseout:
    case C::LogFileCapacity:
    case C::HiResPicture:
    case C::UsingHelp:
      return true;
    default:
      return false;
  }
}

const std::vector<ToolButton>& ToolBar() {
  return kToolBar;
}
const std::vector<KeyBinding>& KeyTable() {
  return kKeys;
}

Command KeyCommand(const std::string& key) {
  for (const KeyBinding& k : kKeys)
    if (key == k.key) return k.command;
  return C::None;
}

void SetHandler(Command command, CommandHandler handler) {
  if (handler)
    Handlers()[command] = std::move(handler);
  else
    Handlers().erase(command);
}

bool HasHandler(Command command) {
  return Handlers().count(command) != 0;
}

void ClearHandlers() {
  Handlers().clear();
}

bool Gate(Command command) {
  if (!Restricted()) return true;
  const SettingsRecord& s = G().settings;
  switch (command) {
    // Amending a customer is never for a restricted clerk.
    case C::AmendCustomer:
      return false;
    case C::Configuration:
      return Freed(s.free_configuration);
    case C::DeleteInventory:
      return Freed(s.free_item[0]);
    case C::DeleteCustomer:
      return Freed(s.free_item[1]);
    case C::PruneCustomers:
      return Freed(s.free_item[2]);
    case C::ActivitySummary:
      return Freed(s.free_item[4]);
    case C::TakingsDisplay:
    case C::TakingsGraph:
      return Freed(s.free_item[5]);
    case C::PrintTakings:
      return Freed(s.free_item[6]);
    case C::PurgeTakings:
      return Freed(s.free_item[7]);
    case C::PurgeLogFiles:
      return Freed(s.free_item[8]);
    case C::TakingsAmendment:
      return Freed(s.free_item[9]);
    case C::Restore:
    case C::PurgeHistory:
      return Freed(s.free_item[10]);
    case C::NewLine:
    case C::NewBundle:
      return Freed(s.free_new_inventory);
    case C::InventoryReceived:
      return Freed(s.free_inventory_received);
    case C::AmendInventory:
      return Freed(s.free_amend_inventory);
    case C::AddDiscount:
      return s.inhibit_discount_button != 2;
    case C::AdjustPrice:
      return s.inhibit_adjust_button != 2;
    case C::TradeToggle:
      return s.inhibit_trade_button != 2;
    case C::AdjustByWeight:
      return s.inhibit_weight_button != 2;
    case C::NonInventory:
      return s.inhibit_non_inventory != 2;
    case C::Refund:
      return s.inhibit_refunds != 2;
    case C::OpenDrawer:
      return s.inhibit_till_open != 2;
    // Tax setup and Amend balance are kept back by the menu alone.
    default:
      return true;
  }
}

bool MenuEntryEnabled(Command command) {
  if (!Restricted()) return true;
  bool greyed = false;
  for (Command c : kGreyedForRestricted)
    if (c == command) greyed = true;
  if (!greyed) return true;
  bool has_flag = false;
  bool freed = FreedByFlag(command, &has_flag);
  return has_flag && freed;
}

bool MenuEnabled(const std::string& menu) {
  if (!Restricted()) return true;
  const SettingsRecord& s = G().settings;
  if (menu == "&Reports") return s.restrict_report_menu != 2;
  if (menu == "Activity") return s.restrict_activity_menu != 2;
  return true;
}

bool MenuEntryTicked(Command command) {
  const SettingsRecord& s = G().settings;
  switch (command) {
    case C::IndentListings:
      return s.listing_indent != 0;
    case C::SoundEffects:
      return s.sound_off != 2;
    case C::ButtonTips:
      return s.button_tips == 0;
    case C::HiResPicture:
      return s.hires_picture == 2;
    default:
      return false;
  }
}

void Dispatch(Command command, int argument) {
  ScreenView& view = screen_view();
  const bool exempt = command == C::Exit || command == C::ExitPrintReport ||
                      command == C::ExitPrintLog || command == C::ExitPrintReportLog ||
                      command == C::CardSetup || command == C::EftManual;
  if (G().tender_form_open == 2 && !exempt) {
    view.focus_tender_amount();
    return;
  }
  if (!Gate(command)) {
    view.focus_item_box();
    return;
  }
  const CommandEntry* entry = FindCommand(command);
  if (entry && entry->clears_basket) Clearbasket();
  auto it = Handlers().find(command);
  if (it != Handlers().end()) {
    // A copy: the work may install other handlers while it runs.
    CommandHandler work = it->second;
    work(argument);
  }
  // A tender form opened by the command keeps the focus it took.
  if (G().tender_form_open != 2) view.focus_item_box();
}

}  // namespace tilo
