// SPDX-License-Identifier: MIT
// The forms of Export and Import, as the logic sees them. Until the window
// installs its own, every form is cancelled.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace tilo {

enum class ExportFormat { Text, Html, Xml };

// What the EXPORT form collects. The range comes back as typed.
struct ExportChoice {
  std::string start = "1";
  std::string finish;
  bool customers = false;
  ExportFormat format = ExportFormat::Text;
  int category = -1;  // a display category 0 to 17, or -1 for "All"
  bool bold_number = true;
  bool bold_title = true;
  int text_size = 1;  // 1 Small, 2 Medium, 3 Large
};

// The ten ticks of the field selection and "Export entire".
struct ExportFields {
  std::array<bool, 10> ticks{true, true, true, true, true, true, true, true, true, true};
  bool entire = false;
};

// The column boxes of the import's field form (from 1; 0 leaves a field out) and
// the treatment: Merge keeps what the file holds, Replace starts it afresh.
struct ImportColumns {
  std::vector<int> boxes;
  bool merge = false;
};

class ExchangeView {
 public:
  virtual ~ExchangeView() = default;
  // EXPORT, opened on `defaults`; nullopt on Cancel.
  virtual std::optional<ExportChoice> export_form(const ExportChoice& /*defaults*/) {
    return std::nullopt;
  }
  // The field selection of the inventory or the customers; nullopt on Cancel.
  virtual std::optional<ExportFields> export_fields(bool /*customers*/) { return std::nullopt; }
  // The import's field form, its boxes starting as `defaults`; `first_line` is the
  // file's first line for show (UTF-8). nullopt on Cancel.
  virtual std::optional<ImportColumns> import_columns(bool /*customers*/,
                                                      const std::string& /*first_line*/,
                                                      const ImportColumns& /*defaults*/) {
    return std::nullopt;
  }
};

ExchangeView& exchange_view();
// nullptr puts back the view that cancels everything.
void install_exchange_view(ExchangeView* view);

}  // namespace tilo
