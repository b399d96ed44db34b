// SPDX-License-Identifier: MIT
#include "config/tips.h"

#include <array>

#include "core/state.h"

namespace tilo {
namespace {

// The texts stand as the shop has always seen them, misspellings included.
constexpr std::array<const char*, kTipCount> kTips = {
    "Use the keyboard arrow keys to navigate the quick select buttons on the lower left",
    "The F12 key will display a daily status screen of inventory and customers",
    "To increase the quality of inventory photos select the Hi res image option on the "
    "Utilities menu",
    "For an overview of the days takings and sales, use Print report on the File menu",
    "To total the till use the Reconcile till item on the reports menu",
    "The transaction history searched can be set from the Configuration menu",
    "To find customers with a list box, select the List on find item on the File menu",
    "To switch off the sound effects use the item on the Utilities menu",
    "The ? can be used as a wildcard when searching inventory or customers",
    "The cash tendered box displayed after each transaction can be omitted by unchecking the "
    "cash tendered dialog item on the Utilities menu",
    "The Omit receipt print confirm on the Utilities menu stops you being prompted for each "
    "document",
    "The print size and indent can be set using the List font size and Indent listing items on "
    "the File menu",
    "The find in SKU item on the inventory menu allows all SKU descriptions to be searched",
    "The Custom receipt item on the Utilties menu lets you design a specific receipt format",
    "To review a customer's transactions and payments use the Customer statement item on the "
    "Payments menu",
    "The log file viewed from the Activity menu contains detailed information on every "
    "transaction and payment",
    "A preset standard overdue letter to a customer can be printed using Ctrl C",
    "The category of inventory on the quick add buttons is set from the Utilties menu, "
    "Configuration",
    "The Ignore stock levels item on the Configuration menu stops the program decreasing the "
    "stock level on the inventory with each sale.",
    "The picture with each inventory can be customized by using the Toolbar, Add picture item",
    "The Store Print heading item on the Utilities menu is used to specify the receipt and "
    "invoice letter head",
    "The Repeat key can be used to add multiple items. Just add one item then put the quantity "
    "in the Enter item box and click Repeat",
    "The till drawer can be opened with the F8 key",
    "The customer database can be searched by telephone number using Ctrl E",
    "The Amend inventory item shortcut is the F3 key",
    "To add a professional look to your stock, print UPC or Code 39 barcodes from the richly "
    "featured item on the Utilities menu",
};

}  // namespace

std::string Nexttip() {
  int32_t number = G().settings.tip_number;
  // A number from an old or damaged file starts the series again rather than
  // reading past the table.
  if (number < 0 || number >= kTipCount) number = 0;
  std::string tip = kTips[size_t(number)];
  if (++number >= kTipCount) number = 0;
  G().settings.tip_number = number;
  return tip;
}

void Closetips(bool show_at_startup) {
  G().settings.tips_at_startup_off = show_at_startup ? 0 : 2;
}

bool Tipsatstartup() {
  return G().settings.tips_at_startup_off == 0;
}

}  // namespace tilo
