// SPDX-License-Identifier: MIT
// The import of items or customers from any comma-separated file, into a
// fresh shop, through the whole command as the operator runs it.
#include "upkeep/import.h"
#include "fuzz_support.h"
#include "targets.h"
#include "upkeep/exchange_view.h"

namespace tilo::fuzz {
namespace {

// The field form: the boxes as they start, or as the input sets them.
class Columns : public ExchangeView {
 public:
  Columns(std::optional<std::vector<int>> boxes, bool merge)
      : boxes_(std::move(boxes)), merge_(merge) {}
  std::optional<ImportColumns> import_columns(bool, const std::string&,
                                              const ImportColumns& defaults) override {
    ImportColumns chosen = defaults;
    if (boxes_) chosen.boxes = *boxes_;
    chosen.merge = merge_;
    return chosen;
  }

 private:
  std::optional<std::vector<int>> boxes_;
  bool merge_;
};

}  // namespace

// The input: a byte of flags (1 customers, 2 merge, 4 boxes of its own), when
// flag 4 is set a byte giving the number of boxes and a byte for each, then the
// file.
void FuzzImport(const uint8_t* data, size_t size) {
  if (size == 0) return;
  const uint8_t flags = data[0];
  size_t at = 1;
  std::optional<std::vector<int>> boxes;
  if (flags & 4) {
    if (at >= size) return;
    const size_t count = data[at++] % 24;
    if (size - at < count) return;
    boxes.emplace();
    for (size_t i = 0; i < count; ++i) boxes->push_back(int(int8_t(data[at++])));
  }
  ScriptedPlatform& p = StartRun();
  MakeShop();
  PutFile("import.csv", {reinterpret_cast<const char*>(data + at), size - at});
  p.queue_prompt(flags & 1 ? "2" : "1");
  p.queue_file(RunFolder() + "import.csv");
  Columns columns(std::move(boxes), flags & 2);
  install_exchange_view(&columns);
  Importfile();
  install_exchange_view(nullptr);
}

}  // namespace tilo::fuzz
