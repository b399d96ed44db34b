// SPDX-License-Identifier: MIT
// The Inventory menu's maintenance and receiving commands, and the receipts
// report of the Reports menu.
#include "inventory/items.h"
#include "inventory/receiving.h"
#include "sale/commands.h"

namespace tilo {

void InstallInventoryHandlers() {
  SetHandler(Command::NewLine, [](int) { Newline(); });
  SetHandler(Command::AmendInventory, [](int) { Amendinventory(); });
  SetHandler(Command::DeleteInventory, [](int) { Deleteinventory(); });
  SetHandler(Command::NewBundle, [](int) { Newbundle(); });
  SetHandler(Command::InventoryReceived, [](int) { Inventoryreceived(); });
  SetHandler(Command::InventoryReceivedBySku, [](int) { Inventoryreceivedbysku(); });
  SetHandler(Command::InventoryReceivedReport, [](int) { Inventoryreceivedreport(); });
}

}  // namespace tilo
