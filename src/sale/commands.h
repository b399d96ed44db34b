// SPDX-License-Identifier: MIT
// Every command of the program, from the menu, the tool bar, the sale buttons and
// the keyboard, arrives at one dispatcher. The command table holds the menus with
// their entries and shortcuts and marks the commands that empty the unpaid basket
// before they start; the key table says which keys of the item box give which
// command. A command's work is a handler that its own part of the program
// installs; commands whose work doesn't exist yet do nothing.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace tilo {

// Numbers where the rights of a restricted clerk name a command by its number;
// the others are numbered from 4000.
enum class Command : int {
  None = 0,
  // &File
  ListingFontSize = 3010,
  IndentListings = 3021,
  EmailSetup = 3029,
  ExitPrintReport = 4000,
  ExitPrintLog,
  ExitPrintReportLog,
  Exit,
  // Inventory
  NewLine = 2411,
  AmendInventory = 1050,
  DeleteInventory = 1051,
  NewBundle = 3050,
  InventoryReceived = 3046,
  InventoryReceivedBySku = 4010,
  FindInventory,
  FindInSkus,
  FindByDescription,
  FindInventoryContaining,
  FindAdvanced,
  InventoryListFromNumber,
  InventoryListAlphabetically,
  InventoryListByCategory,
  AddCustomImage,
  // Pri&nt (inventory)
  PrintInventoryFromNumber,
  PrintInventoryAlphabetically,
  PrintInventoryCostValue,
  PrintInventoryByCategory,
  PrintInventoryInStock,
  PrintInventoryByLocation,
  PrintInventoryCustom,
  // &Customers
  AddCustomer = 4030,
  AmendCustomer = 1090,
  DeleteCustomer = 1023,
  PruneCustomers = 1024,
  FindCustomer = 4031,
  CustomerListFromNumber,
  CustomerListAlphabetically,
  CustomerListByAddress,
  FindCustomerContaining,
  FindTelephone,
  DebtorEmail = 3040,
  AmendBalance = 1026,
  CustomerStatement = 3026,
  CustomerPeriodActivity = 4040,
  // &Print (customers)
  PrintCustomersFromNumber,
  PrintCustomersAlphabetically,
  PrintDebtors,
  DebtorLetter1 = 1068,
  DebtorLetter2 = 1075,
  PrintInactiveSince = 4050,
  PrintCustomerDetails,
  // R&eminders
  AddReminder,
  AddReminderToday,
  ListReminders,
  PrintReminders,
  AmendReminder,
  DeleteReminder,
  // Suppliers
  FindSupplier,
  ListSuppliers,
  PrintSuppliers,
  AddSupplier,
  AmendSupplier = 1087,
  DeleteSupplier = 1088,
  // Payments
  Cash = 4070,
  Cheque,
  CustomerCredit,
  Eft = 2428,
  SplitTender = 4073,
  BalancePayment,
  BalancePayOnTransaction,
  CardSetup = 1045,
  EftManual = 1046,
  // &Reports
  SalesReport = 3047,
  SalesByStaff = 1057,
  SalesByItem = 3019,
  DailyItemSummary = 4080,
  WeeklyItemSummary,
  MonthlyItemSummary,
  PeriodItemSummary,
  ExportDailyItems,
  ExportWeeklyItems,
  StockSummary,
  ReorderList,
  ReorderListByOrderCode,
  OutOfStock,
  SpecialOrders,
  SellByExpired,
  OutstandingBalances = 1013,
  InventoryReceivedReport = 4100,
  ItemsByCategoryDay,
  ItemsByCategoryMonth,
  HighestVolume = 1038,
  RetailBelowCost = 4110,
  PrintTakings = 3018,
  PurgeTakings = 1094,
  PurgeLogFiles = 1070,
  TillReconciliation = 4111,
  TillCloseout,
  // Transactions: the finder tells its commands apart by these numbers
  FindTransaction = 3033,
  DisplayTransaction = 1067,
  TransactionsInDay = 1022,
  TransactionsInMonth = 1025,
  TransactionsInYear = 1065,
  DiscountedTransactions = 1036,
  ReprintLast = 1039,
  AddDiscount = 2409,
  AddNote = 4120,
  AssociateCustomer,
  // Activity
  ActivitySummary = 1062,
  PrintActivitySummary = 1078,
  PreviousActivitySummary = 4130,
  EmailReport = 3030,
  EmailDailyItems = 4131,
  HeadOfficeSetup,
  HeadOfficeUpload,
  DisplayLogFile = 1020,
  DisplayPreviousLogFile = 3007,
  PrintLogToday = 1060,
  PrintLogFromDay = 1048,
  PrintLogFile = 1052,
  PrintOldLogFile = 1069,
  LogFileCapacity = 3048,
  SaveBasket = 4140,
  ReloadBasket,
  // &Utilities
  Configuration = 1053,
  TakingsAmendment = 1058,
  PettyCash = 4150,
  PurgeHistory = 3022,
  FileReset = 1059,
  TaxSetup = 3027,
  StorePrintHeading = 3039,
  Mailmerge = 3005,
  BarcodePrint = 4151,
  CustomReceipt = 3038,
  Invoices = 4152,
  CustomizeLanguage,
  OperatorSetup = 3025,
  UserControl = 1063,
  Export = 1054,
  Import = 3028,
  SoundEffects = 3024,
  ButtonTips = 4160,
  Backup,
  Restore = 1079,
  ChangeStockPicture = 4162,
  HiResPicture = 1085,
  // &Help
  HelpContents = 4170,
  UsingHelp,
  TipOfTheDay,
  Calendar,
  About,
  // The sale buttons and the quick-select panel
  AddItem = 4200,
  VoidItem,
  RepeatItem,
  EmptyBasket,
  TradeToggle = 2413,
  NonInventory = 2408,
  AdjustPrice = 1008,
  AdjustByWeight = 2427,
  OpenDrawer = 2410,
  Refund = 2458,
  LogOff = 2457,
  ScrollBack = 4210,
  ScrollForward,
  PreviousCategory,
  NextCategory,
  CategoryButton,  // argument: the category, 0 to 18
  QuickSelect,     // argument: the button, 0 to 13
  TakingsDisplay = 1006,
  // Enter on an empty item box, or Add with nothing typed: the description find,
  // or the SKU find under SKU entry.
  ItemFind = 4220,
  // The weekly takings chart, open to those who may see the takings.
  TakingsGraph = 4230,
};

struct CommandEntry {
  Command command;
  const char* menu;      // "&File"...; empty for a command with no menu entry
  const char* entry;     // the entry's text; for others a short name
  const char* shortcut;  // as the menu shows it, "^" for Ctrl
  bool clears_basket;
};
// The menus in their order, and the entries of each in theirs, then the commands
// that have no menu entry.
const std::vector<CommandEntry>& CommandTable();
const CommandEntry* FindCommand(Command command);
const std::vector<std::string>& MenuNames();
// A separator follows these entries in their menus.
bool SeparatorAfter(Command command);

// The tool bar, left to right; Command::None stands for a separator.
struct ToolButton {
  Command command;
  const char* tip;
};
const std::vector<ToolButton>& ToolBar();

// The key table of the item box: key names in the form "F2", "Ctrl+A", "Left".
struct KeyBinding {
  const char* key;
  Command command;
};
const std::vector<KeyBinding>& KeyTable();
Command KeyCommand(const std::string& key);

// The dispatcher: while a tender form is up only the Exit family and the card
// setup commands get through (the rest put the focus back in the form); then the
// rights of a restricted clerk, then the emptying of the basket for the commands
// so marked, then the work; the focus goes back to the item box at the end.
void Dispatch(Command command, int argument = 0);

using CommandHandler = std::function<void(int argument)>;
// Installs the work of a command (replacing any earlier one); an empty handler
// takes it away.
void SetHandler(Command command, CommandHandler handler);
bool HasHandler(Command command);
// Takes away the work of every command.
void ClearHandlers();
// Installs the work of the screen's own commands (categories, quick select, the
// toggles, Indent listings, Log off...) and of the sale buttons.
void InstallScreenHandlers();

// The customer find behind Associate customer: a number or a name typed by the
// operator; returns the customer's number with the record in G().member, or 0.
// Until the customer search installs its own, only numbers are looked up.
using CustomerFind = std::function<int64_t(const std::string& text)>;
void SetCustomerFind(CustomerFind find);
// Runs the customer find in force on `text` (Windows-1252).
int64_t Customerfind(const std::string& text);

// The rights of a restricted clerk: false when the command is kept from them.
bool Gate(Command command);
// The menu state each time the menu opens.
bool MenuEntryEnabled(Command command);
bool MenuEnabled(const std::string& menu);
// The ticks of Indent listings, Sound effects, Button tips and Hi res picture;
// false for every other entry.
bool MenuEntryTicked(Command command);

}  // namespace tilo
