// SPDX-License-Identifier: MIT
#include "config/config_pages.h"

#include <cinttypes>
#include <cstdio>

#include "config/form_rules.h"
#include "core/packed.h"
#include "core/state.h"
#include "core/text.h"
#include "devices/pole.h"
#include "devices/ports.h"
#include "documents/print_service.h"
#include "documents/receipt.h"
#include "platform/files.h"
#include "platform/platform.h"

namespace tilo {
namespace {

using Store = std::function<void(SettingsRecord&, const PageValue&, const PageValues&)>;

std::string Format(const char* format, double value) {
  char text[64];
  std::snprintf(text, sizeof text, format, value);
  return text;
}

PageValue Text(std::string utf8) {
  PageValue v;
  v.text = std::move(utf8);
  return v;
}

PageValue Choice(int choice) {
  PageValue v;
  v.choice = choice;
  return v;
}

FieldRule Heading(std::string label) {
  return {"", std::move(label), Control::Heading, 0, {}, nullptr, nullptr, nullptr};
}
FieldRule Note(std::string label) {
  return {"", std::move(label), Control::Note, 0, {}, nullptr, nullptr, nullptr};
}

template <typename T>
FieldRule Tick(std::string key, std::string label, T SettingsRecord::*field, TickCoding coding) {
  return {std::move(key),
          std::move(label),
          Control::Tick,
          0,
          {},
          [=](SettingsRecord& s) {
            return Choice(TickShown(int64_t(FieldOf(s, field)), coding) ? 1 : 0);
          },
          [=](SettingsRecord& s, const PageValue& v, const PageValues&) {
            SetField(s, field, T(TickStored(v.choice == 1, coding)));
          },
          nullptr};
}

// A text field of N bytes: the box takes `box` characters, at most `kept` are stored.
template <size_t N>
FieldRule TextField(std::string key, std::string label, char (SettingsRecord::*field)[N],
                    Control control, int box, size_t kept) {
  return {std::move(key),
          std::move(label),
          control,
          box,
          {},
          [=](SettingsRecord& s) { return Text(Cp1252ToUtf8(FieldText(s.*field))); },
          [=](SettingsRecord& s, const PageValue& v, const PageValues&) {
            std::string bytes = BoxBytes(v.text, kept);
            if (control == Control::Caps) bytes = UpperCase(bytes);
            SetField(s.*field, bytes);
          },
          nullptr};
}

// A whole number stored when it lies within [low, high].
template <typename T>
FieldRule Number(std::string key, std::string label, T SettingsRecord::*field, int box, int64_t low,
                 int64_t high) {
  return {std::move(key),
          std::move(label),
          Control::Edit,
          box,
          {},
          [=](SettingsRecord& s) { return Text(std::to_string(int64_t(FieldOf(s, field)))); },
          [=](SettingsRecord& s, const PageValue& v, const PageValues&) {
            const int64_t n = LeadingInteger(BoxBytes(v.text, size_t(box)));
            if (n >= low && n <= high) SetField(s, field, T(n));
          },
          nullptr};
}

// A list whose selection is stored as selection + `offset` when it is 0 to `last`.
template <typename T>
FieldRule List(std::string key, std::string label, T SettingsRecord::*field,
               std::vector<std::string> options, int offset, int last) {
  return {std::move(key),
          std::move(label),
          Control::List,
          0,
          std::move(options),
          [=](SettingsRecord& s) { return Choice(int(FieldOf(s, field)) - offset); },
          [=](SettingsRecord& s, const PageValue& v, const PageValues&) {
            if (v.choice >= 0 && v.choice <= last) SetField(s, field, T(v.choice + offset));
          },
          nullptr};
}

// "Inventory next available start point": the next number is shown, one less is
// kept, and whatever was typed is stored (an empty box keeps -1).
FieldRule NextNumber(std::string key, std::string label, int64_t SettingsRecord::*field) {
  return {std::move(key),
          std::move(label),
          Control::Caps,
          15,
          {},
          [=](SettingsRecord& s) { return Text(std::to_string(FieldOf(s, field) + 1)); },
          [=](SettingsRecord& s, const PageValue& v, const PageValues&) {
            SetField(s, field, int64_t(LeadingInteger(BoxBytes(v.text, 15)) - 1));
          },
          nullptr};
}

// An amount shown "%.2f", stored through a 32-bit float when `accept` allows it.
template <typename T>
FieldRule Amount(std::string key, std::string label, T SettingsRecord::*field, Control control,
                 std::function<bool(double)> accept) {
  return {std::move(key),
          std::move(label),
          control,
          9,
          {},
          [=](SettingsRecord& s) { return Text(Format("%.2f", double(FieldOf(s, field)))); },
          [=](SettingsRecord& s, const PageValue& v, const PageValues&) {
            const double n = LeadingReal(BoxBytes(v.text, 9));
            if (accept(n)) SetField(s, field, T(float(n)));
          },
          nullptr};
}

std::vector<std::string> Numbers(int from, int to) {
  std::vector<std::string> out;
  for (int n = from; n <= to; ++n) out.push_back(std::to_string(n));
  return out;
}

std::vector<std::string> CategoryCodes(const SettingsRecord& s) {
  std::vector<std::string> out;
  for (int n = 1; n <= 18; ++n) out.push_back(Cp1252ToUtf8(CategoryCode(s, n)));
  return out;
}

bool SecondCurrencyTicked(const PageValues& all) {
  auto it = all.find("second_currency_on");
  return it != all.end() && it->second.choice == 1;
}

std::vector<FieldRule> GeneralRules() {
  std::vector<FieldRule> rules;
  rules.push_back(NextNumber("last_inventory_number", "Inventory next available start point",
                             &SettingsRecord::last_inventory_number));
  rules.push_back(NextNumber("last_customer_number", "Customer next available start point ",
                             &SettingsRecord::last_customer_number));
  rules.push_back({"start_category",
                   "Default display button category",
                   Control::List,
                   0,
                   {},
                   [](SettingsRecord& s) {
                     PageValue v = Choice(s.start_category - 1);
                     v.options = CategoryCodes(s);
                     v.options.push_back("ALL");
                     return v;
                   },
                   [](SettingsRecord& s, const PageValue& v, const PageValues&) {
                     if (v.choice >= 0 && v.choice <= 18) s.start_category = v.choice + 1;
                   },
                   nullptr});
  rules.push_back({"default_category",
                   "Default inventory category",
                   Control::List,
                   0,
                   {},
                   [](SettingsRecord& s) {
                     // Showing the page gives an unset default its category at once.
                     if (s.default_category == 0) s.default_category = 15;
                     PageValue v = Choice(s.default_category - 1);
                     v.options = CategoryCodes(s);
                     return v;
                   },
                   [](SettingsRecord& s, const PageValue& v, const PageValues&) {
                     if (v.choice >= 0 && v.choice <= 17) s.default_category = v.choice + 1;
                   },
                   nullptr});
  rules.push_back(Amount("till_float", "Default start of day till total",
                         &SettingsRecord::till_float, Control::Edit,
                         [](double n) { return n >= 0; }));
  rules.push_back(
      TextField("tax1_name", "Tax 1 description", &SettingsRecord::tax1_name, Control::Edit, 5, 5));
  rules.push_back(Note("To 5 characters"));
  rules.push_back(
      TextField("tax2_name", "Tax 2 description", &SettingsRecord::tax2_name, Control::Edit, 5, 5));
  rules.push_back(List("default_tax_code", "Default inventory tax code",
                       &SettingsRecord::default_tax_code,
                       {"Non taxable", "Tax 1 and 2", "Tax 1", "Tax 2"}, 0, 3));
  rules.push_back(List("discount_button_rate", "Default rate for discount button",
                       &SettingsRecord::discount_button_rate, Numbers(0, 80), 0, 80));
  rules.push_back(Heading("Categories (3 characters)"));
  for (int n = 1; n <= 18; ++n) {
    rules.push_back({"category" + std::to_string(n),
                     std::to_string(n),
                     Control::Caps,
                     9,
                     {},
                     [n](SettingsRecord& s) { return Text(Cp1252ToUtf8(CategoryCode(s, n))); },
                     [n](SettingsRecord& s, const PageValue& v, const PageValues&) {
                       // A code shorter than three keeps the old one.
                       const std::string bytes = UpperCase(BoxBytes(v.text, 9));
                       if (bytes.size() >= 3) SetCategoryCode(s, n, bytes.substr(0, 3).c_str());
                     },
                     nullptr});
  }
  rules.push_back({"history_from",
                   "History from:",
                   Control::Date,
                   0,
                   {},
                   [](SettingsRecord& s) {
                     PageValue v;
                     v.date[0] = s.history_from_day - 1;
                     v.date[1] = s.history_from_month - 1;
                     v.date[2] = s.history_from_year - s.first_year;
                     for (int y = s.first_year; y <= platform().now().year; ++y)
                       v.options.push_back(std::to_string(y));
                     return v;
                   },
                   [](SettingsRecord& s, const PageValue& v, const PageValues&) {
                     const LocalTime today = platform().now();
                     const int y = v.date[2] + s.first_year, m = v.date[1] + 1, d = v.date[0] + 1;
                     // A date after today is refused as a whole.
                     if (y == today.year && m > today.month) return;
                     if (y == today.year && m == today.month && d > today.day) return;
                     if (v.date[0] >= 0 && v.date[0] <= 30) s.history_from_day = d;
                     if (v.date[1] >= 0 && v.date[1] <= 11) s.history_from_month = m;
                     if (v.date[2] >= 0) s.history_from_year = y;
                   },
                   nullptr});
  rules.push_back(Tick("summary_box_off",
                       "Display summary box after each transaction (with receipt and invoice "
                       "print buttons).",
                       &SettingsRecord::summary_box_off, kTick01));
  rules.push_back(Tick("customer_search_list",
                       "Display customer searches as a list rather than individual matches.",
                       &SettingsRecord::customer_search_list, kTick10));
  rules.push_back(Tick("inventory_search_list",
                       "Display inventory searches as a list rather than individual matches.",
                       &SettingsRecord::inventory_search_list, kTick10));
  rules.push_back(Tick("negative_stock", "Permit transaction if stock level is insufficient.",
                       &SettingsRecord::negative_stock, kTick20));
  rules.push_back(Tick("omit_monthly_till_totals",
                       "Omit monthly till totals from overview printout",
                       &SettingsRecord::omit_monthly_till_totals, kTick20));
  rules.push_back(TextField("currency_symbol", "Currency symbol", &SettingsRecord::currency_symbol,
                            Control::Caps, 3, 3));
  rules.push_back(Tick("second_currency_on", "Display second currency",
                       &SettingsRecord::second_currency_on, kTick20));
  // The second currency shows only while it is on and is kept only while ticked.
  FieldRule symbol = TextField("second_currency_symbol", "Currency symbol",
                               &SettingsRecord::second_currency_symbol, Control::Caps, 3, 3);
  auto symbol_fill = symbol.fill;
  auto symbol_store = symbol.store;
  symbol.fill = [symbol_fill](SettingsRecord& s) {
    return s.second_currency_on > 0 ? symbol_fill(s) : PageValue{};
  };
  symbol.store = [symbol_store](SettingsRecord& s, const PageValue& v, const PageValues& all) {
    if (SecondCurrencyTicked(all)) symbol_store(s, v, all);
  };
  rules.push_back(symbol);
  rules.push_back({"second_currency_rate",
                   "Conversion rate",
                   Control::Caps,
                   9,
                   {},
                   [](SettingsRecord& s) {
                     return s.second_currency_on > 0 ? Text(Format("%.2f", s.second_currency_rate))
                                                     : PageValue{};
                   },
                   [](SettingsRecord& s, const PageValue& v, const PageValues& all) {
                     if (SecondCurrencyTicked(all))
                       s.second_currency_rate = double(float(LeadingReal(BoxBytes(v.text, 9))));
                   },
                   nullptr});
  rules.push_back(Tick("cart_description_only",
                       "Display cart items with just description (default is barcode and "
                       "description).",
                       &SettingsRecord::cart_description_only, kTick20));
  rules.push_back(Tick("non_inventory_taxable", "Non inventory sale default is taxable",
                       &SettingsRecord::non_inventory_taxable, kTick20));
  rules.push_back(Tick("entry_mode",
                       "Use SKU 1 for cart item selection (default is the number field). Ensure "
                       "unique.",
                       &SettingsRecord::entry_mode, kTick20));
  rules.push_back(Tick("trade_discount_mode", "Use percentage discount for trade sales",
                       &SettingsRecord::trade_discount_mode, kTick20));
  rules.push_back(Amount("trade_percent", "Discount (say 5 or 5.62)",
                         &SettingsRecord::trade_percent, Control::Caps,
                         [](double n) { return n >= 0 && n < 100; }));
  rules.push_back(Tick("discount_on_total", "Apply discounts on total amount not nett",
                       &SettingsRecord::discount_on_total, kTick20));
  rules.push_back(Tick("no_offer_new_inventory", "Do not offer on new inventory box",
                       &SettingsRecord::no_offer_new_inventory, kTick10));
  rules.push_back(Tick("no_offer_new_customer", "Do not offer on new customer box",
                       &SettingsRecord::no_offer_new_customer, kTick10));
  return rules;
}

std::vector<FieldRule> TermsRules() {
  std::vector<FieldRule> rules;
  rules.push_back(Heading("Terms"));
  rules.push_back(Note("Discount / Period"));
  for (int b = 1; b <= 8; ++b) {
    const std::string band = std::to_string(b);
    rules.push_back(
        {"band_discount" + band,
         "Band " + band,
         Control::List,
         0,
         {"Nett", "2% disc", "5% disc", "10% disc", "20% disc", "30% disc", "40% disc", "50% disc"},
         [b](SettingsRecord& s) { return Choice(int(BandDiscount(s, b)) - 1); },
         [b](SettingsRecord& s, const PageValue& v, const PageValues&) {
           if (v.choice >= 0 && v.choice <= 7) SetBandDiscount(s, b, v.choice + 1);
         },
         nullptr});
    rules.push_back({"band_credit_period" + band,
                     "",
                     Control::List,
                     0,
                     {"No credit", "10", "20", "30", "60", "90", "120", "180"},
                     [b](SettingsRecord& s) { return Choice(int(BandCreditPeriod(s, b)) - 1); },
                     [b](SettingsRecord& s, const PageValue& v, const PageValues&) {
                       if (v.choice >= 0 && v.choice <= 7) SetBandCreditPeriod(s, b, v.choice + 1);
                     },
                     nullptr});
  }
  rules.push_back(Note("The terms are displayed with customer information on invoices."));
  rules.push_back(Note("The customer is allocated to a specific band."));
  return rules;
}

// The print system's printers, or the message when it gives no answer.
bool AskPrinters(std::vector<PrinterInfo>& printers) {
  if (print_service().list_printers(printers)) return true;
  Message("Unable to get printers", "Problem");
  return false;
}

std::vector<FieldRule> ReceiptRules() {
  std::vector<FieldRule> rules;
  rules.push_back({"printer",
                   "Printer",
                   Control::List,
                   0,
                   {},
                   [](SettingsRecord& s) {
                     PageValue v;
                     std::vector<PrinterInfo> printers;
                     if (!AskPrinters(printers)) {
                       v.blank_page = true;
                       return v;
                     }
                     v.options.push_back("Default");
                     s.receipt_printer_index = 0;
                     const std::string chosen = FieldText(s.printer_name);
                     for (size_t i = 0; i < printers.size(); ++i) {
                       v.options.push_back(Cp1252ToUtf8(printers[i].name));
                       if (!chosen.empty() && printers[i].name == chosen)
                         s.receipt_printer_index = int32_t(i + 1);
                     }
                     v.choice = s.receipt_printer_index;
                     return v;
                   },
                   [](SettingsRecord& s, const PageValue& v, const PageValues&) {
                     SetField(s.printer_name, "");
                     SetField(s.printer_port, "");
                     if (v.choice >= 0) s.receipt_printer_index = v.choice;
                     std::vector<PrinterInfo> printers;
                     if (!AskPrinters(printers)) return;
                     if (v.choice > 0 && size_t(v.choice) <= printers.size()) {
                       SetField(s.printer_name, printers[size_t(v.choice) - 1].name);
                       SetField(s.printer_port, printers[size_t(v.choice) - 1].port);
                     }
                   },
                   nullptr});
  rules.push_back(
      Tick("print_confirm", "Omit print confirm", &SettingsRecord::print_confirm, kTick01));
  rules.push_back({"auto_receipt",
                   "Auto receipt",
                   Control::TypedList,
                   0,
                   {"None", "Till receipt", "Standard invoice", "Invoice 2", "Custom receipt"},
                   [](SettingsRecord& s) { return Choice(s.auto_receipt); },
                   [](SettingsRecord& s, const PageValue& v, const PageValues&) {
                     if (v.choice >= 0) s.auto_receipt = v.choice;
                   },
                   nullptr});
  rules.push_back({"receipt_copies",
                   "Copies",
                   Control::Radio,
                   0,
                   {"1 copy", "2", "3"},
                   [](SettingsRecord& s) { return Choice(s.receipt_copies); },
                   [](SettingsRecord& s, const PageValue& v, const PageValues&) {
                     if (v.choice >= 0 && v.choice <= 2) s.receipt_copies = v.choice;
                   },
                   nullptr});
  rules.push_back(Tick("limit_description_20", "Limit item description to 20 characters",
                       &SettingsRecord::limit_description_20, kTick20));
  rules.push_back(Tick("auto_kitchen_receipt",
                       "Auto print additional receipt to other (kitchen) receipt printer (it "
                       "must be set as the default printer of the print system)",
                       &SettingsRecord::auto_kitchen_receipt, kTick20));
  rules.push_back(Tick("force_10pt",
                       "Force 10pt font (use only if the print character size is too small "
                       "large)",
                       &SettingsRecord::force_10pt, kTick20));
  rules.push_back(Tick("receipt_centred",
                       "Justify the items centred (default is description on left, price on "
                       "right)",
                       &SettingsRecord::receipt_centred, kTick20));
  rules.push_back(Tick("receipt_logo",
                       "Include logo (requires receipt.bmp in TILO folder). Printed to half page "
                       "width.",
                       &SettingsRecord::receipt_logo, kTick20));
  rules.push_back(
      Tick("print_page_width", "Print to page width", &SettingsRecord::print_page_width, kTick20));
  rules.push_back(
      Tick("receipt_barcode", "Include barcode", &SettingsRecord::receipt_barcode, kTick20));
  rules.push_back(Tick("receipt_items_excl_tax",
                       "Receipt items exclusive of tax with subtotal (default inclusive, no "
                       "subtotal).",
                       &SettingsRecord::receipt_items_excl_tax, kTick20));
  rules.push_back(TextField("receipt_footer", "Footer text (up to 252 characters).",
                            &SettingsRecord::receipt_footer, Control::Multiline, 254, 251));
  rules.push_back(Tick("footer_wordwrap", "Wordwrap", &SettingsRecord::footer_wordwrap, kTick20));
  rules.push_back({"select_logo",
                   "Select logo bitmap file",
                   Control::Button,
                   0,
                   {},
                   nullptr,
                   nullptr,
                   [](SettingsRecord&, const PageValues&) { Selectlogo(); }});
  rules.push_back(
      Note("The store name and address is set from the Utilities menu, Store print heading"));
  rules.push_back(
      Note("The wording or language may be set from the Utilities menu, Customize language"));
  return rules;
}

std::vector<std::string> Ports(int count, bool colon) {
  std::vector<std::string> out;
  for (int p = 0; p < count; ++p) out.push_back(PortChoice(p, colon));
  return out;
}

// "Port": the ports with the device each stands for now (ports.cfg may move them).
template <typename T>
FieldRule PortList(std::string key, T SettingsRecord::*field, int count, bool colon) {
  FieldRule rule = List(std::move(key), "Port", field, {}, 0, count - 1);
  rule.port_list = true;
  auto fill = rule.fill;
  rule.fill = [fill, count, colon](SettingsRecord& s) {
    PageValue v = fill(s);
    v.options = Ports(count, colon);
    return v;
  };
  return rule;
}

// "Device…" beside a port list: the port chosen there.
FieldRule DeviceButton(const std::string& list) {
  return {list + "_device",
          "Device…",
          Control::Button,
          0,
          {},
          nullptr,
          nullptr,
          [list](SettingsRecord&, const PageValues& values) {
            auto it = values.find(list);
            if (it != values.end() && it->second.choice >= 0) Choosedevice(it->second.choice);
          }};
}

std::vector<FieldRule> TillRules() {
  std::vector<FieldRule> rules;
  rules.push_back(Tick("drawer_enabled", "Use", &SettingsRecord::drawer_enabled, kTick10));
  rules.push_back({"drawer_mode",
                   "Connection",
                   Control::Radio,
                   0,
                   {"Direct connect", "Receipt printer connect"},
                   [](SettingsRecord& s) { return Choice(s.drawer_mode != 0 ? 1 : 0); },
                   [](SettingsRecord& s, const PageValue& v, const PageValues&) {
                     if (v.choice >= 0) s.drawer_mode = v.choice == 0 ? 0 : 2;
                   },
                   nullptr});
  rules.push_back(PortList("drawer_port", &SettingsRecord::drawer_port, 10, true));
  rules.push_back(DeviceButton("drawer_port"));
  rules.push_back(Number("drawer_open_char", "Open character (0-255)",
                         &SettingsRecord::drawer_open_char, 20, 0, 255));
  rules.push_back(
      Number("drawer_repeat", "Repeat (1-10)", &SettingsRecord::drawer_repeat, 20, 1, 10));
  rules.push_back(TextField("drawer_code", "Printer control sequence", &SettingsRecord::drawer_code,
                            Control::Edit, 31, 31));
  rules.push_back({"kick_codes",
                   "",
                   Control::Reading,
                   0,
                   {"Citizen 230: 27,112,0,50,250", "Epson TM T88 III: 27,112,0,25,250",
                    "Epson TM T88 IIIP: 27,112,0,64,240", "Epson TM T88 IV: 27,112,48,55,121",
                    "Epson TM T88 V: 27,112,48,55,121", "Epson TM U950P: 27,112,0,50,250",
                    "Epson TM U200: 27,112,0,25,250", "Epson TM U200B: 27,112,48,25,250",
                    "Epson TM U200D: 27,112,0,64,240", "Epson TM T60: 27,112,0,32,25",
                    "Epson TM T70: 27,112,48,55,121", "Epson TM T80P: 27,112,0,25,250",
                    "Epson TM H6000: 27,112,48,55,121", "Ithaca POSjet: 27,112,0,25,250",
                    "IBM 4610: 7", "IBM 4610: 27,112,0,25,250", "Samsung SRP 270: 27,112,0,60,240"},
                   nullptr,
                   nullptr,
                   nullptr});
  rules.push_back(
      Note("The settings for the com port protocols are those the system keeps for the device "
           "(stty); which device each port is comes from ports.cfg in the TILO folder"));
  rules.push_back(Note(
      "The Epson TM-T88 IV receipt printer requires a control sequence of 27,112,48,55, 121 to "
      "open a daisychained cash drawer."));
  rules.push_back(Note("The printer to be used is required to be specified on 'Receipts'"));
  return rules;
}

// The six texts and five line settings that "Preview" takes into the record.
const char* const kPreviewKeys[] = {"pole_port",       "pole_baud",        "pole_parity",
                                    "pole_data_bits",  "pole_stop_bits",   "pole_passive_text",
                                    "pole_printer_on", "pole_printer_off", "pole_clear",
                                    "pole_cursor1",    "pole_cursor2"};

std::vector<FieldRule> PoleRules() {
  std::vector<FieldRule> rules;
  rules.push_back(Tick("pole_enabled", "Use", &SettingsRecord::pole_enabled, kTick20));
  rules.push_back(PortList("pole_port", &SettingsRecord::pole_port, 8, false));
  rules.push_back(DeviceButton("pole_port"));
  rules.push_back(List("pole_baud", "Baud rate", &SettingsRecord::pole_baud,
                       {"9600", "300", "600", "1200", "2400", "4800", "14400", "19200", "38400",
                        "57600", "115200", "128000", "256000"},
                       0, 12));
  rules.push_back(List("pole_parity", "Parity", &SettingsRecord::pole_parity,
                       {"No parity", "Even parity", "Odd parity"}, 0, 2));
  rules.push_back(List("pole_data_bits", "Data bits", &SettingsRecord::pole_data_bits,
                       {"8", "4", "5", "6", "7"}, 0, 4));
  rules.push_back(List("pole_stop_bits", "Stop bits", &SettingsRecord::pole_stop_bits,
                       {"1", "1.5", "2"}, 0, 2));
  rules.push_back(Number("pole_columns1", "Columns in line 1", &SettingsRecord::pole_columns1, 20,
                         INT32_MIN, INT32_MAX));
  rules.push_back(Number("pole_columns2", "Columns in line 2", &SettingsRecord::pole_columns2, 20,
                         INT32_MIN, INT32_MAX));
  rules.push_back(TextField("pole_passive_text", "Passive text", &SettingsRecord::pole_passive_text,
                            Control::Edit, 31, 31));
  rules.push_back(TextField("pole_printer_on", "Switch printer on",
                            &SettingsRecord::pole_printer_on, Control::Edit, 31, 31));
  rules.push_back(TextField("pole_printer_off", "Switch printer off",
                            &SettingsRecord::pole_printer_off, Control::Edit, 31, 31));
  rules.push_back(TextField("pole_clear", "Clear display message", &SettingsRecord::pole_clear,
                            Control::Edit, 31, 31));
  rules.push_back(TextField("pole_cursor1", "Set cursor first line", &SettingsRecord::pole_cursor1,
                            Control::Edit, 31, 31));
  rules.push_back(TextField("pole_cursor2", "Set cursor second line", &SettingsRecord::pole_cursor2,
                            Control::Edit, 31, 31));
  rules.push_back({"preview",
                   "Preview",
                   Control::Button,
                   0,
                   {},
                   nullptr,
                   nullptr,
                   [](SettingsRecord& s, const PageValues& values) {
                     // Preview keeps what it showed, even if the sheet is then cancelled.
                     for (const FieldRule& rule : ConfigurationPages()[4].rules)
                       for (const char* key : kPreviewKeys)
                         if (rule.key == key && values.count(key))
                           rule.store(s, values.at(key), values);
                     Polepreview();
                   }});
  rules.push_back(
      Note("The Preview button will display the passive text using the current values."));
  rules.push_back(
      Note("The settings for a standard ESC POS display are:\n Clear display: 27,64\n Set cursor "
           "first line: 11\n Set cursor second line: 11,10"));
  rules.push_back(
      Note("The printer control is used if the display and printer are daisy chained on the serial "
           "port."));
  rules.push_back(
      Note("The display unit may be verified from a terminal with: echo mytext > /dev/ttyS0 "
           "(the device of COM1, unless ports.cfg names another)"));
  return rules;
}

std::vector<FieldRule> TaxRules() {
  std::vector<FieldRule> rules;
  rules.push_back(Heading("Active"));
  rules.push_back(Tick("tax1_switch", "Tax 1", &SettingsRecord::tax1_switch, kTick20));
  rules.push_back(Number("tax1_rate", "Rate", &SettingsRecord::tax1_rate, 5, 0, 9999));
  rules.push_back(Tick("tax1_threshold_on", "Only apply to amounts over",
                       &SettingsRecord::tax1_threshold_on, kTick20));
  rules.push_back(Amount("tax1_threshold", "Amount", &SettingsRecord::tax1_threshold, Control::Edit,
                         [](double n) { return n >= 0; }));
  rules.push_back(Tick("tax2_switch", "Tax 2", &SettingsRecord::tax2_switch, kTick20));
  rules.push_back(Number("tax2_rate", "Rate ", &SettingsRecord::tax2_rate, 5, 0, 9999));
  rules.push_back(Tick("tax_on_tax", "On total + tax 1", &SettingsRecord::tax_on_tax, kTick20));
  rules.push_back(Note("The rate is entered as a value from 0 to 9999"));
  rules.push_back(Note("For example, 10% is entered as 1000"));
  rules.push_back(Note("The 'On total + tax 1' is for regions that compound tax 2 on tax 1."));
  rules.push_back(
      Note("The 'Only apply to amounts over'  box is just for those regions that use a threshold "
           "tax. The decimal point should be used, say 2.00"));
  return rules;
}

// A "Line" box: the line the element prints on, kept when below `limit`.
FieldRule Line(const char* label, int32_t SettingsRecord::*field, int limit, const char* key) {
  return Number(std::string("line_") + key, label, field, 10, INT32_MIN, limit - 1);
}

std::vector<FieldRule> CustomReceiptRules() {
  using S = SettingsRecord;
  std::vector<FieldRule> rules;
  rules.push_back(Heading("Header"));
  const struct {
    const char* label;
    int32_t S::*field;
    const char* key;
  } header[] = {{"Store name", &S::custom_line_store_name, "store_name"},
                {"Store Address 1", &S::custom_line_store_address1, "store_address1"},
                {"Store Address 2", &S::custom_line_store_address2, "store_address2"},
                {"Store Address 3", &S::custom_line_store_address3, "store_address3"},
                {"Store Address 4", &S::custom_line_store_address4, "store_address4"},
                {"Store telephone", &S::custom_line_store_telephone, "store_telephone"},
                {"Date", &S::custom_line_date, "date"},
                {"Clerk", &S::custom_line_clerk, "clerk"},
                {"Receipt", &S::custom_line_receipt, "receipt"},
                {"Text 1", &S::custom_line_text1, "text1"},
                {"Customer number", &S::custom_line_customer_number, "customer_number"},
                {"Customer name", &S::custom_line_customer_name, "customer_name"},
                {"Address 1", &S::custom_line_address1, "address1"},
                {"Address 2", &S::custom_line_address2, "address2"},
                {"Address 3", &S::custom_line_address3, "address3"},
                {"Address 4", &S::custom_line_address4, "address4"},
                {"Customer phone", &S::custom_line_customer_phone, "customer_phone"}},
    footer[] = {{"Total", &S::custom_line_total, "total"},
                {"Non taxable", &S::custom_line_non_taxable, "non_taxable"},
                {"Taxable", &S::custom_line_taxable, "taxable"},
                {"Tax 1", &S::custom_line_tax1, "tax1"},
                {"Tax 2", &S::custom_line_tax2, "tax2"},
                {"Text 2", &S::custom_line_text2, "text2"},
                {"Text 3", &S::custom_line_text3, "text3"},
                {"Total tendered", &S::custom_line_total_tendered, "total_tendered"},
                {"Cash change", &S::custom_line_cash_change, "cash_change"},
                {"Payment type", &S::custom_line_payment, "payment"},
                {"By line", &S::custom_line_by_line, "by_line"},
                {"Transaction note", &S::custom_line_note, "note"}};
  for (const auto& l : header) rules.push_back(Line(l.label, l.field, 41, l.key));
  rules.push_back(Heading("Footer"));
  for (const auto& l : footer) rules.push_back(Line(l.label, l.field, 41, l.key));
  rules.push_back(
      Note("The header line value is the number of lines from the top of the receipt that the item "
           "is printed (1-40). A zero value omits."));
  rules.push_back(TextField("custom_text1", "Text 1", &S::custom_text1, Control::Edit, 48, 48));
  rules.push_back(TextField("custom_text2", "Text 2", &S::custom_text2, Control::Edit, 48, 48));
  rules.push_back(TextField("custom_text3", "Text 3", &S::custom_text3, Control::Edit, 48, 48));
  rules.push_back(
      TextField("cutter_sequence", "Cutter", &S::cutter_sequence, Control::Edit, 48, 48));
  rules.push_back(Note("Say 27,112,0,75,250"));
  rules.push_back(List("custom_blank_lines", "Blank lines at end", &S::custom_blank_lines,
                       Numbers(1, 20), 0, 19));
  rules.push_back(PortList("cutter_port", &S::cutter_port, 10, false));
  rules.push_back({"custom_items_excl_tax",
                   "Items",
                   Control::Radio,
                   0,
                   {"Items (Excluding tax)", "Items (Including tax)"},
                   [](SettingsRecord& s) { return Choice(s.custom_items_excl_tax != 0 ? 0 : 1); },
                   [](SettingsRecord& s, const PageValue& v, const PageValues&) {
                     if (v.choice >= 0) s.custom_items_excl_tax = v.choice == 0 ? 2 : 0;
                   },
                   nullptr});
  rules.push_back(Tick("custom_centred",
                       "Justify items centred (default is description on left, price on right)",
                       &S::custom_centred, kTick20));
  rules.push_back(
      Tick("custom_mark_exempt", "Denote tax exempt item with E", &S::custom_mark_exempt, kTick20));
  rules.push_back(Tick("custom_no_logo", "Include logo (requires receipt.bmp in TILO folder)",
                       &S::custom_no_logo, kTick02));
  rules.push_back(Tick("custom_barcode", "Include barcode", &S::custom_barcode, kTick20));
  rules.push_back(Tick("custom_second_currency", "Include second currency",
                       &S::custom_second_currency, kTick20));
  return rules;
}

std::vector<FieldRule> InvoiceRules() {
  using S = SettingsRecord;
  std::vector<FieldRule> rules;
  rules.push_back(Heading("Custom invoice"));
  const struct {
    const char* label;
    int32_t S::*field;
    const char* key;
  } lines[] = {{"Store name", &S::invoice_line_store_name, "store_name"},
               {"Store Address 1", &S::invoice_line_store_address1, "store_address1"},
               {"Store Address 2", &S::invoice_line_store_address2, "store_address2"},
               {"Store Address 3", &S::invoice_line_store_address3, "store_address3"},
               {"Store Address 4", &S::invoice_line_store_address4, "store_address4"},
               {"Store telephone", &S::invoice_line_store_telephone, "store_telephone"},
               {"Date", &S::invoice_line_date, "date"},
               {"Items", &S::invoice_line_items, "items"},
               {"Customer detail", &S::invoice_line_customer_detail, "customer_detail"},
               {"Customer terms", &S::invoice_line_customer_terms, "customer_terms"},
               {"Customer ID", &S::invoice_line_customer_id, "customer_id"},
               {"Net total", &S::invoice_line_net_total, "net_total"},
               {"Tax", &S::invoice_line_tax, "tax"},
               {"Discount", &S::invoice_line_discount, "discount"},
               {"Total", &S::invoice_line_total, "total"},
               {"Clerk", &S::invoice_line_clerk, "clerk"},
               {"Invoice", &S::invoice_line_invoice, "invoice"},
               {"Balance", &S::invoice_line_balance, "balance"},
               {"Transaction note", &S::invoice_line_note, "note"}};
  for (const auto& l : lines) rules.push_back(Line(l.label, l.field, 81, l.key));
  rules.push_back(
      Note("The value is the number of lines from the top of the invoice that the item is "
           "printed (1-80). A zero value omits."));
  rules.push_back(Tick("invoice_barcode", "Barcode", &S::invoice_barcode, kTick10));
  rules.push_back(Tick("invoice_box", "Box encased", &S::invoice_box, kTick10));
  rules.push_back(Tick("invoice_logo", "Use logo ", &S::invoice_logo, kTick10));
  rules.push_back(
      Tick("invoice_no_standard_logo", "Use logo", &S::invoice_no_standard_logo, kTick01));
  rules.push_back(
      Tick("invoice_use_header_font", "Use header font", &S::invoice_use_header_font, kTick10));
  rules.push_back({"header_font",
                   "Header font",
                   Control::Button,
                   0,
                   {},
                   nullptr,
                   nullptr,
                   [](SettingsRecord& s, const PageValues&) { Chooseheaderfont(s); }});
  rules.push_back(
      Note("The header font may require the lines for the store detail to be adjusted for an "
           "increased size."));
  rules.push_back({"select_logo",
                   "Select logo bitmap file",
                   Control::Button,
                   0,
                   {},
                   nullptr,
                   nullptr,
                   [](SettingsRecord&, const PageValues&) { Selectlogo("letter.bmp"); }});
  return rules;
}

// A heading line: the box takes 40 characters and 39 are kept.
FieldRule HeadingLine(const char* key, const char* label, char (HeadingLines::*line)[42]) {
  return {key,
          label,
          Control::Edit,
          40,
          {},
          [=](SettingsRecord&) { return Text(Cp1252ToUtf8(FieldText(G().heading.*line))); },
          [=](SettingsRecord&, const PageValue& v, const PageValues&) {
            SetField(G().heading.*line, BoxBytes(v.text, 39));
          },
          nullptr};
}

}  // namespace

void Chooseheaderfont(SettingsRecord& s) {
  const std::optional<ChosenFont> chosen = print_service().choose_font();
  if (!chosen) return;
  // The height in the default printer's pixels, the character height (negative).
  const std::unique_ptr<PrintTarget> printer = print_service().default_printer();
  const int dpi = printer ? printer->dpi_y() : 72;
  SetField(s.invoice_font_face, Utf8ToCp1252(chosen->font.face));
  s.invoice_font_height = -(dpi * chosen->points / 72);
  s.invoice_font_width = 0;
  s.invoice_font_escapement = 0;
  s.invoice_font_orientation = 0;
  s.invoice_font_weight = chosen->font.weight;
  s.invoice_font_italic = chosen->font.italic ? 1 : 0;
  s.invoice_font_underline = chosen->font.underline ? 1 : 0;
  s.invoice_font_strikeout = chosen->font.strikeout ? 1 : 0;
}

const PageTable& TaxForm() {
  static const PageTable form{"TAX CONTROL", "TAXS", TaxRules(), Savesettings};
  return form;
}

const PageTable& CustomReceiptForm() {
  static const PageTable form{"Custom receipt", "CUSTOM", CustomReceiptRules(), Savesettings};
  return form;
}

const PageTable& InvoiceForm() {
  static const PageTable form{"Invoices", "CUSTIN", InvoiceRules(), Savesettings};
  return form;
}

const PageTable& HeadingForm() {
  static const PageTable form{
      "Print heading",
      "SITE",
      {HeadingLine("site_name", "Site name", &HeadingLines::site_name),
       HeadingLine("site_road", "Road", &HeadingLines::site_road),
       HeadingLine("site_area", "Area", &HeadingLines::site_area),
       HeadingLine("site_county", "State / County", &HeadingLines::site_county),
       HeadingLine("site_postcode", "Zip / Postcode", &HeadingLines::site_postcode),
       HeadingLine("site_telephone", "Telephone", &HeadingLines::site_telephone),
       Note("Each line may contain 40 characters")},
      [] { return WriteHeadingLines(G().heading); }};
  return form;
}

bool Choosedevice(int port) {
  const std::string name = PortName(port);
  if (name.empty()) return false;
  const std::optional<std::string> path = platform().prompt(
      "Device for " + name + " (for example /dev/ttyUSB0)", "Device", PortPath(name));
  if (!path) return false;
  // Every other line stays as it was; this port's line is replaced or added.
  std::string kept;
  const std::string cfg = ReadWholeFile(kPortsFile).value_or("");
  size_t start = 0;
  while (start < cfg.size()) {
    size_t end = cfg.find('\n', start);
    if (end == std::string::npos) end = cfg.size();
    const std::string line = cfg.substr(start, end - start);
    start = end + 1;
    const size_t eq = line.find('=');
    std::string key = eq == std::string::npos ? "" : line.substr(0, eq);
    key.erase(0, key.find_first_not_of(" \t"));
    key.erase(key.find_last_not_of(" \t") + 1);
    if (UpperCase(key) != name) kept += line + "\n";
  }
  if (!path->empty()) kept += name + "=" + *path + "\n";
  return ReplaceFile(kPortsFile, kept);
}

std::string PortChoice(int port, bool colon) {
  const std::string name = PortName(port);
  const std::string path = PortPath(name);
  return name + (colon ? ":" : "") + (path.empty() ? "" : "  " + path);
}

const std::vector<PageTable>& ConfigurationPages() {
  static const std::vector<PageTable> pages = {
      {"General", "REPORT0BOX", GeneralRules(), Savesettings},
      {"Terms", "REPORT2BOX", TermsRules(), Savesettings},
      {"Receipts", "REPORT4BOX", ReceiptRules(), Savesettings},
      {"Till configuration", "REPORT8BOX", TillRules(), Savesettings},
      {"Pole configuration", "REPORTSCD400", PoleRules(), Savesettings},
  };
  return pages;
}

PageValues FillPage(const PageTable& page, SettingsRecord& s) {
  PageValues values;
  for (const FieldRule& rule : page.rules) {
    if (!rule.fill) continue;
    PageValue v = rule.fill(s);
    if (v.blank_page) {
      // The page stays blank: every control empty, nothing chosen.
      PageValues blank;
      for (const FieldRule& r : page.rules)
        if (r.fill) blank[r.key] = PageValue{};
      blank[rule.key].blank_page = true;
      return blank;
    }
    values[rule.key] = std::move(v);
  }
  return values;
}

void StorePage(const PageTable& page, const PageValues& values, SettingsRecord& s) {
  for (const FieldRule& rule : page.rules) {
    if (!rule.store) continue;
    auto it = values.find(rule.key);
    if (it != values.end()) rule.store(s, it->second, values);
  }
}

}  // namespace tilo
