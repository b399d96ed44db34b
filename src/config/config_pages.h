// SPDX-License-Identifier: MIT
// The pages of "Configuration" as tables: each row ties a label on the screen
// to a field of the settings record, with how the field is shown and when what
// was typed is stored. A value outside its limits is simply not stored: the
// field keeps what it had and nobody is told. The screen builds its controls
// from these rows and hands back what the operator left in them.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "core/settings.h"

namespace tilo {

enum class Control {
  Edit,       // one line, as typed
  Caps,       // one line, folded to capitals as it is typed
  Multiline,  // several lines, as typed
  Tick,
  List,       // a drop-down list
  TypedList,  // a drop-down list with room to type
  Radio,      // one of `options`
  Date,       // three lists: day, month, year
  Button,     // acts at once
  Heading,    // a group's title
  Note,       // text to read
  Reading,    // a read-only list to read from
};

// What a control shows or holds, as the screen's UTF-8.
struct PageValue {
  std::string text;                  // edits
  int choice = -1;                   // tick 0 or 1; list or radio selection, -1 none
  int date[3] = {-1, -1, -1};        // day, month and year selections
  std::vector<std::string> options;  // list items that come from the record
  bool blank_page = false;           // the page could not be filled at all
};
using PageValues = std::map<std::string, PageValue>;

struct FieldRule {
  std::string key;    // the control's name, unique on its page
  std::string label;  // verbatim on the screen
  Control control;
  int box_chars = 0;                 // the most an edit box takes
  std::vector<std::string> options;  // fixed items of a list or radio group
  std::function<PageValue(SettingsRecord&)> fill;
  std::function<void(SettingsRecord&, const PageValue&, const PageValues&)> store;
  std::function<void(SettingsRecord&, const PageValues&)> press;  // buttons
  bool port_list = false;  // its items name devices, refreshed after a button acts
};

struct PageTable {
  std::string tab;   // "General", or a form's title
  std::string form;  // "REPORT0BOX"
  std::vector<FieldRule> rules;
  // Writes what the page keeps to its file; the settings record unless told.
  std::function<bool()> save;
};

// "General", "Terms", "Receipts", "Till configuration", "Pole configuration".
const std::vector<PageTable>& ConfigurationPages();

// The small forms of the Utilities menu: "TAX CONTROL", "Custom receipt",
// "Invoices" and "Print heading" (this one keeps the store heading lines).
const PageTable& TaxForm();
const PageTable& CustomReceiptForm();
const PageTable& InvoiceForm();
const PageTable& HeadingForm();

// "Header font": the font chooser's choice goes into the invoice_font_ fields at
// once, its height in the default printer's pixels.
void Chooseheaderfont(SettingsRecord& s);

// What a page shows when it is first built. Filling may change the record where
// showing the page acts at once (an unset default category becomes 15). A page
// whose fill fails shows blank controls and stores that blank state.
PageValues FillPage(const PageTable& page, SettingsRecord& s);
// Stores the page's fields in table order, each by its own limits.
void StorePage(const PageTable& page, const PageValues& values, SettingsRecord& s);

// "Device…": asks for the device a port stands for and keeps it in ports.cfg
// (an empty answer puts the port back to its usual device). False when cancelled
// or when the file can't be written.
bool Choosedevice(int port);

// The ports as the lists show them: "COM1:" with the device it stands for.
std::string PortChoice(int port, bool colon);

}  // namespace tilo
