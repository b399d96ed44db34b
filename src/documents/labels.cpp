// SPDX-License-Identifier: MIT
#include "documents/labels.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "core/customer_file.h"
#include "core/film_record.h"
#include "core/inventory.h"
#include "core/number_index.h"
#include "core/state.h"
#include "core/text.h"
#include "documents/print_job.h"
#include "documents/receipt.h"
#include "platform/platform.h"
#include "sale/pricing.h"

namespace tilo {
namespace {

constexpr int kBarHeight = 1000;
constexpr int kGuardHeight = 1120;
constexpr int kCode39Pitch = 13;     // modules from one character to the next
constexpr int kCode39Reckoned = 12;  // modules per character the column layouts centre on

// The left-half codes of the digits in set A; set B is set A mirrored and
// inverted, the right-half code is set A inverted.
constexpr const char* kSetA[10] = {"0001101", "0011001", "0010011", "0111101", "0100011",
                                   "0110001", "0101111", "0111011", "0110111", "0001011"};
// The sets of the six left digits, chosen by the first digit.
constexpr const char* kParity[10] = {"AAAAAA", "AABABB", "AABBAB", "AABBBA", "ABAABB",
                                     "ABBAAB", "ABBBAA", "ABABAB", "ABABBA", "ABBABA"};

std::string Inverted(std::string bits) {
  for (char& b : bits) b = b == '1' ? '0' : '1';
  return bits;
}

// Draws every run of bar modules as one solid bar: `height_of(m)` gives the
// height of the bar that module m belongs to.
template <typename Height>
void DrawModules(PrintTarget& target, int x, int y, const std::string& modules, int element_width,
                 Height height_of) {
  target.select_brush(Brush::Black);
  for (size_t m = 0; m < modules.size();) {
    if (modules[m] != '1') {
      ++m;
      continue;
    }
    const int height = height_of(m);
    size_t end = m + 1;
    while (end < modules.size() && modules[end] == '1' && height_of(end) == height) ++end;
    target.rectangle(x + int(m) * element_width, y, x + int(end) * element_width, y - height);
    m = end;
  }
  target.select_brush(Brush::White);
}

bool GuardModule(size_t m) {
  // Modules counted from 0: the start, centre and end guards.
  return m <= 2 || (m >= 45 && m <= 49) || m >= 92;
}

std::string Code39text(const std::string& text) {
  return text.size() < 4 ? std::string(4 - text.size(), '0') + text : text;
}

int64_t Number(const std::string& text) {
  const long long v = std::strtoll(text.c_str(), nullptr, 10);
  return int64_t(v);
}

int32_t Bounded(const std::string& text, int64_t low, int64_t high, int32_t fallback) {
  const int64_t v = Number(text);
  return v < low || v > high ? fallback : int32_t(v);
}

LabelView cancelling_view;
LabelView* installed_view = &cancelling_view;

// One label's contents.
struct Label {
  int64_t number = 0;
  std::string name;  // the item's description or the customer's name
  bool item = false;
  bool priced = false;
  float price = 0;
};

// The first live number of a record file at or above `from`, if it is not above
// `finish`; 0 otherwise.
int64_t NextNumber(const IndexedFile& file, int64_t from, int64_t finish) {
  const size_t slot = Findnumber(file.index, std::max<int64_t>(from, 1));
  if (slot >= file.index.size()) return 0;
  const int64_t n = file.index[slot].number;
  return n <= finish ? n : 0;
}

bool MoreLabels(const LabelRun& run) {
  const LabelSettings& s = run.settings;
  switch (s.source) {
    case kLabelItems:
      return NextNumber(G().films, run.next, s.range_finish) != 0;
    case kLabelCustomers:
      return NextNumber(G().members, run.next, s.range_finish) != 0;
    case kLabelAllNumbers:
      return run.next <= s.range_finish;
    default:
      return run.quantity >= 1 && G().films.Contains(s.range_start);
  }
}

void TakeItem(const LabelSettings& s, Label* label) {
  const FilmRecord& item = G().film;
  label->number = item.number;
  label->name = FieldText(item.description);
  label->item = true;
  label->priced = s.include_price;
  if (s.include_price) label->price = Priceincludingtax(s.price_without_tax);
}

// Takes the next label of the run; false when the run is over.
bool NextLabel(LabelRun& run, Label* label) {
  const LabelSettings& s = run.settings;
  switch (s.source) {
    case kLabelItems: {
      // The run goes on after the number found, not after the number asked for.
      const int64_t n = NextNumber(G().films, run.next, s.range_finish);
      if (n == 0 || Fetchfilm(n) != n) return false;
      TakeItem(s, label);
      run.next = n + 1;
      return true;
    }
    case kLabelCustomers: {
      const int64_t n = NextNumber(G().members, run.next, s.range_finish);
      if (n == 0 || Fetchmember(n) != n) return false;
      label->number = n;
      label->name = FieldText(G().member.name);
      run.next = n + 1;
      return true;
    }
    case kLabelAllNumbers:
      if (run.next > s.range_finish) return false;
      label->number = run.next++;
      return true;
    default:
      if (run.quantity < 1 || Fetchfilm(s.range_start) != s.range_start) return false;
      TakeItem(s, label);
      --run.quantity;
      return true;
  }
}

std::string Price(float price) {
  return FieldText(G().settings.currency_symbol) + MoneyText(price);
}

// The text a symbol carries: the number, or its 13 EAN digits.
std::string SymbolText(const LabelSettings& s, int64_t number) {
  const std::string text = std::to_string(number);
  return s.barcode_type == kEan13 ? Ean13digits(text) : Code39text(text);
}

void DrawSymbol(PrintTarget& target, const LabelSettings& s, int x, int y,
                const std::string& text) {
  if (s.barcode_type == kEan13)
    Drawean13(target, x, y, text, s.element_width);
  else
    Drawcode39(target, x, y, text, s.element_width);
}

// One label per row, the text to the right of the symbol.
bool VideoSpine(PrintTarget& target, LabelRun& run) {
  const LabelSettings& s = run.settings;
  const int ew = s.element_width;
  const int x = s.origin_x;
  const std::string store = FieldText(G().heading.site_name);
  int y = -s.origin_y;
  target.set_text_align(TextAlign::Left);
  for (int count = 0; count < s.labels_per_sheet; ++count) {
    Label l;
    if (!NextLabel(run, &l)) return false;
    const std::string code = SymbolText(s, l.number);
    DrawSymbol(target, s, x, y, code);

    const bool below = l.priced && s.price_below;
    std::string text = std::to_string(l.number) + "  " + l.name;
    if (s.source == kLabelAllNumbers)
      text = s.barcode_type == kEan13 ? code : std::to_string(l.number);
    if (l.priced && !below) text += " " + Price(l.price);
    if (s.include_store) text = store + "  " + text;

    const int length = int(code.size());
    const int tx = s.barcode_type == kCode39 ? (length + 3) * kCode39Pitch * ew + x : 110 * ew + x;
    if (below) {
      target.text_out(tx, y + 4 * ew - 400, text);
      target.text_out(tx, y - 400 - 6 * ew, Price(l.price));
    } else {
      target.text_out(tx, y - 400, text);
    }
    y -= s.label_height;
  }
  return true;
}

// Two or three labels a row, each centred on its column with its text below.
bool Columns(PrintTarget& target, LabelRun& run, int page_width, int columns) {
  const LabelSettings& s = run.settings;
  const int ew = s.element_width;
  const bool named = s.source != kLabelAllNumbers;
  int y = -s.origin_y;
  for (int n = 0; n < s.labels_per_sheet; ++n) {
    Label l;
    if (!NextLabel(run, &l)) return false;
    const std::string code = SymbolText(s, l.number);
    const int length = int(code.size());
    int centre = page_width / 4 + (n % 2 == 1 ? page_width / 2 : 0);
    if (columns == 3)
      centre = page_width / 2 - (n % 3 == 0 ? s.from_centre : 0) + (n % 3 == 2 ? s.from_centre : 0);
    const int half = s.barcode_type == kCode39 ? ((length + 2) * ew * kCode39Reckoned) / 2
                                               : (ew * (columns == 2 ? 100 : 110)) / 2;
    const int left = centre - half;
    DrawSymbol(target, s, left, y, code);

    if (s.barcode_type == kCode39) {
      std::string text = std::to_string(l.number);
      if (l.priced) text += "  " + Price(l.price);
      target.set_text_align(TextAlign::Centre);
      target.text_out(centre, y - 1080, text);
    } else {
      std::string text = code.substr(0, 12) + (l.priced ? " " : "  ") + code.substr(12);
      if (l.priced) text += " " + Price(l.price);
      target.set_text_align(TextAlign::Left);
      target.text_out(left, y - 1200, text);
    }
    if (named) {
      target.set_text_align(TextAlign::Centre);
      target.text_out(centre, y - 1800, l.name);
    }
    if (n % columns == columns - 1) y -= s.label_height;
  }
  return true;
}

}  // namespace

void Chooselabellayout(LabelForm& form, int layout) {
  static constexpr int kHeight[3] = {1690, 3380, 1690};
  static constexpr int kPerSheet[3] = {16, 16, 48};
  form.layout = layout;
  form.label_height = std::to_string(kHeight[layout]);
  form.labels_per_sheet = std::to_string(kPerSheet[layout]);
}

void Choosebarcodetype(LabelForm& form, int barcode_type) {
  form.barcode_type = barcode_type;
  form.element_width = barcode_type == kEan13 ? "50" : "40";
}

bool Readlabelform(const LabelForm& form, LabelSettings* settings) {
  LabelSettings s;
  s.range_start = Number(form.start);
  s.range_finish = Number(form.finish);
  if (s.range_start > kHighestNumber || s.range_finish > kHighestNumber) {
    Message("Range limit 100000000000000000", "Problem");
    return false;
  }
  s.source = form.source;
  if (s.source == kLabelRepeat) s.quantity = Bounded(form.quantity, 1, INT32_MAX, 0);
  s.layout = form.layout;
  s.barcode_type = form.barcode_type;
  s.element_width = Bounded(form.element_width, 1, 200, 200);
  s.origin_x = Bounded(form.origin_x, 1, 20000, 3600);
  s.origin_y = Bounded(form.origin_y, 1, 20000, 400);
  s.label_height = Bounded(form.label_height, 1, 20000, 1690);
  s.labels_per_sheet = Bounded(form.labels_per_sheet, 1, 200, 16);
  s.from_centre = Bounded(form.from_centre, 1, 20000, 4800);
  s.include_price = form.include_price;
  s.price_without_tax = form.price_without_tax;
  s.include_store = form.include_store;
  s.price_below = form.price_below;
  *settings = s;
  return true;
}

std::string Ean13digits(const std::string& text) {
  std::string digits;
  for (char c : text)
    if (c >= '0' && c <= '9' && digits.size() < 12) digits += c;
  digits.insert(0, 12 - digits.size(), '0');
  int sum = 0;
  for (int i = 0; i < 12; ++i) sum += (digits[i] - '0') * (i % 2 == 1 ? 3 : 1);
  digits += char('0' + (10 - sum % 10) % 10);
  return digits;
}

std::string Ean13modules(const std::string& digits13) {
  const char* parity = kParity[digits13[0] - '0'];
  std::string modules = "101";
  for (int i = 1; i <= 6; ++i) {
    const std::string a = kSetA[digits13[i] - '0'];
    // Set B is the inverted set A read backwards.
    const std::string c = Inverted(a);
    modules += parity[i - 1] == 'A' ? a : std::string(c.rbegin(), c.rend());
  }
  modules += "01010";
  for (int i = 7; i <= 12; ++i) modules += Inverted(kSetA[digits13[i] - '0']);
  return modules + "101";
}

void Drawcode39(PrintTarget& target, int x, int y, const std::string& text, int element_width) {
  const std::string modules = Code39modules(Code39text(text));
  DrawModules(target, x, y, modules, element_width, [](size_t) { return kBarHeight; });
}

void Drawean13(PrintTarget& target, int x, int y, const std::string& text, int element_width) {
  const std::string modules = Ean13modules(Ean13digits(text));
  DrawModules(target, x, y, modules, element_width,
              [](size_t m) { return GuardModule(m) ? kGuardHeight : kBarHeight; });
}

LabelView& label_view() {
  return *installed_view;
}

void install_label_view(LabelView* view) {
  installed_view = view ? view : &cancelling_view;
}

void Labelpage(PrintTarget& target, LabelRun& run) {
  // Each copy starts again from the first label.
  if (G().print_job.page_number == 1) {
    run.next = run.settings.range_start;
    run.quantity = run.settings.quantity;
  }
  const int dpi_x = target.dpi_x();
  const int page_width = dpi_x > 0 ? int(int64_t(target.page_width()) * 2540 / dpi_x) : 0;
  if (G().list_font) target.select_font(*G().list_font);
  target.use_hundredths_of_mm();
  const int layout = run.settings.layout;
  const bool full = layout == kVideoSpine
                        ? VideoSpine(target, run)
                        : Columns(target, run, page_width, layout == kTwoColumn ? 2 : 3);
  target.use_device_units();
  target.set_text_align(TextAlign::Left);
  // A sheet that ends with the last label has no blank sheet after it.
  if (full && MoreLabels(run)) ++G().print_job.page_number;
}

void Barcodeprint() {
  LabelSettings s;
  if (!label_view().barcode_form(s)) return;
  if (s.source == kLabelRepeat ? s.range_start < 1 : s.range_finish < s.range_start) {
    Message("Invalid range", "Problem");
    return;
  }
  LabelRun run{s, s.range_start, s.quantity};
  if (!MoreLabels(run)) {
    Message("No labels to print in that range", "Problem");
    return;
  }
  Runpagedjob([&run](PrintTarget& target) { Labelpage(target, run); });
}

}  // namespace tilo
