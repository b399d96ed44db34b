// SPDX-License-Identifier: MIT
// Barcode labels: sheets or rolls of EAN-13 or Code 39 symbols with a line or
// two of text, for the inventory items, the customers or any run of numbers.
// Everything is drawn in hundredths of a millimetre with y growing upwards, so a
// label lands in the same place on any printer; the text uses the listing font.
#pragma once

#include <cstdint>
#include <string>

#include "documents/print_target.h"

namespace tilo {

enum LabelSource { kLabelItems = 0, kLabelCustomers = 1, kLabelAllNumbers = 2, kLabelRepeat = 3 };
enum LabelLayout { kVideoSpine = 0, kTwoColumn = 1, kThreeColumn = 2 };
enum BarcodeType { kEan13 = 0, kCode39 = 1 };

// What the "Barcode print" box sets for one job. Lengths in 0.01 mm.
struct LabelSettings {
  int64_t range_start = 1;
  int64_t range_finish = 2;
  int source = kLabelItems;
  int32_t quantity = 0;  // labels of the one item, source kLabelRepeat only
  int layout = kVideoSpine;
  int barcode_type = kCode39;
  int32_t element_width = 40;
  int32_t origin_x = 3600;
  int32_t origin_y = 400;
  int32_t label_height = 1690;
  int32_t labels_per_sheet = 16;
  int32_t from_centre = 5600;
  bool include_price = false;
  bool price_without_tax = false;
  bool include_store = false;
  bool price_below = false;
};

// The box as the operator leaves it: the number fields as typed.
struct LabelForm {
  std::string start = "1", finish = "2", quantity;
  int source = kLabelItems;
  int layout = kVideoSpine;
  int barcode_type = kCode39;
  std::string element_width = "40", origin_x = "3600", origin_y = "400", label_height = "1690",
              labels_per_sheet = "16", from_centre = "5600";
  bool include_price = false, price_without_tax = false, include_store = false, price_below = false;
};

// What choosing a layout or a symbology puts into the box: the label height and
// the labels per sheet of the layout, the element width of the symbology.
void Chooselabellayout(LabelForm& form, int layout);
void Choosebarcodetype(LabelForm& form, int barcode_type);

// The box's values with the out-of-bounds numbers replaced by their fallbacks.
// False, after "Range limit 100000000000000000", when Start or Finish is beyond
// the highest number: the box then stays open.
bool Readlabelform(const LabelForm& form, LabelSettings* settings);

// The 13 digits an EAN-13 symbol carries for `text`: its first 12 digits,
// padded on the left with zeros, and the check digit.
std::string Ean13digits(const std::string& text);
// The 95 modules of that symbol, '1' for a bar.
std::string Ean13modules(const std::string& digits13);

// The symbols with the top of their bars at (x, y), modules `element_width` wide.
// A Code 39 text shorter than 4 characters is padded with zeros first.
void Drawcode39(PrintTarget& target, int x, int y, const std::string& text, int element_width);
void Drawean13(PrintTarget& target, int x, int y, const std::string& text, int element_width);

// The command "Barcode print": the box, then a paged job with the abort box.
void Barcodeprint();

// The box as the logic sees it. Until the window installs its own it is cancelled.
class LabelView {
 public:
  virtual ~LabelView() = default;
  // Fills `settings` and answers true on OK; false on Cancel.
  virtual bool barcode_form(LabelSettings& settings) {
    (void)settings;
    return false;
  }
};
LabelView& label_view();
// nullptr puts back the view that cancels.
void install_label_view(LabelView* view);

// The page routine of a job: the next page of labels of `settings`. A run
// keeps its place between pages and starts again at each copy's first page.
struct LabelRun {
  LabelSettings settings;
  int64_t next = 1;
  int32_t quantity = 0;
};
void Labelpage(PrintTarget& target, LabelRun& run);

}  // namespace tilo
