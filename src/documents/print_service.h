// SPDX-License-Identifier: MIT
// The machine's printers as the print shell sees them: the default printer, the
// printer dialog, a printer by name, and the boxes shown while a job runs. The
// program installs the desktop's service; tests install a recording one. Until
// one is installed there is no printer at all.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "documents/print_target.h"

namespace tilo {

// A printer as a choice of the receipts set-up: its name and where it prints
// (the print system's device address).
struct PrinterInfo {
  std::string name;
  std::string port;
};

// A font picked in the font chooser: its description and its size in whole points.
struct ChosenFont {
  FontDescription font;
  int points = 0;
};

class PrintService {
 public:
  virtual ~PrintService() = default;

  // The default printer, without a dialog; nullptr when none is installed.
  virtual std::unique_ptr<PrintTarget> default_printer() = 0;
  // The printer dialog, offering no page selection and no printing to file.
  // nullptr when cancelled; otherwise `copies` holds the count chosen.
  virtual std::unique_ptr<PrintTarget> printer_dialog(int32_t& copies) = 0;
  // The printer of that device name, without a dialog; nullptr when unknown.
  virtual std::unique_ptr<PrintTarget> named_printer(const std::string& device_name) = 0;

  // The abort box of a paged job, shown while the main window is disabled. Its
  // "Cancel" sets the job's `aborted`, enables the main window and closes the box.
  virtual void open_abort_box() {}
  // Enables the main window and closes the box (when it is still there).
  virtual void close_abort_box() {}
  // Hands on the user-interface events that are waiting, the abort box's among them.
  virtual void pump_messages() {}
  // The "Please wait.." box of a listing that scans a whole file first.
  virtual void show_wait_box(bool shown) { (void)shown; }
  // The font chooser over the printers' fonts; nullopt when cancelled.
  virtual std::optional<ChosenFont> choose_font() { return std::nullopt; }
  // The printers to choose from; false when the print system gives no answer.
  virtual bool list_printers(std::vector<PrinterInfo>& printers) {
    printers.clear();
    return false;
  }
};

PrintService& print_service();
// nullptr puts back the service that knows no printer.
void install_print_service(PrintService* service);

}  // namespace tilo
