// SPDX-License-Identifier: MIT
#include "documents/print_service.h"

namespace tilo {
namespace {

// Command-line tools print nothing: every printer request finds none.
class NoPrinters : public PrintService {
 public:
  std::unique_ptr<PrintTarget> default_printer() override { return nullptr; }
  std::unique_ptr<PrintTarget> printer_dialog(int32_t&) override { return nullptr; }
  std::unique_ptr<PrintTarget> named_printer(const std::string&) override { return nullptr; }
};

NoPrinters none;
PrintService* current = &none;

}  // namespace

PrintService& print_service() {
  return *current;
}
void install_print_service(PrintService* service) {
  current = service ? service : &none;
}

}  // namespace tilo
