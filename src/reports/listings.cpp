// SPDX-License-Identifier: MIT
#include "reports/listings.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <tuple>

#include "core/clock.h"
#include "core/film_scan.h"
#include "core/scratch_sort.h"
#include "core/settings.h"
#include "core/state.h"
#include "core/supplier_file.h"
#include "core/text.h"
#include "platform/files.h"
#include "sale/pricing.h"

namespace tilo {
namespace {

// A record out of a reader's byte buffer, copied rather than cast in place.
template <class Record>
Record RecordAt(const char* p) {
  Record r;
  std::memcpy(&r, p, sizeof r);
  return r;
}

ListingView silent_view;
ListingView* current_view = &silent_view;

constexpr int kStepEvery = 4096;

std::string Format(const char* format, auto... args) {
  char text[640];
  std::snprintf(text, sizeof text, format, args...);
  return text;
}

std::string Money(double value) {
  return Format("%.2f", value);
}

// A whole number as typed: digits only (spaces around allowed), no overflow.
std::optional<int64_t> WholeNumber(const std::string& text) {
  const char* s = text.c_str();
  while (*s == ' ') ++s;
  if (*s < '0' || *s > '9') return std::nullopt;
  errno = 0;
  char* end = nullptr;
  const long long value = std::strtoll(s, &end, 10);
  while (*end == ' ') ++end;
  if (errno == ERANGE || *end != 0) return std::nullopt;
  return int64_t(value);
}

// The year, month and day of a stamp "hh:mmdd/mm/yyyy"; zeros when it is none.
std::tuple<int, int, int> StampDate(const char* stamp, size_t width) {
  const std::string text = FieldText(stamp, width);
  if (text.size() < 15) return {0, 0, 0};
  return {std::atoi(text.c_str() + 11), std::atoi(text.c_str() + 8), std::atoi(text.c_str() + 5)};
}

std::string DatePart(const char* stamp, size_t width) {
  const std::string text = FieldText(stamp, width);
  return text.size() > 5 ? text.substr(5) : "";
}

bool Overdue(const MemberRecord& r, const LocalTime& today) {
  if (r.tax == 0) return false;
  for (int i = 0; i < 10; ++i) {
    if (r.loan_item[i] == 0) continue;
    const auto due = StampDate(r.loan_due[i], sizeof r.loan_due[i]);
    if (std::get<0>(due) != 0 && due < std::tuple(today.year, today.month, today.day)) return true;
  }
  return false;
}

int64_t DayNumber(int year, int month, int day) {
  using namespace std::chrono;
  return sys_days{std::chrono::year{year} / month / day}.time_since_epoch().count();
}

// The rows under an overdue customer: one per loan past its due date, with the
// item, the time and day it went out, and the days it is overdue.
std::vector<ListRow> OverdueRows(const MemberRecord& r, const LocalTime& today) {
  std::vector<ListRow> rows;
  for (int i = 0; i < 10; ++i) {
    const auto [y, m, d] = StampDate(r.loan_due[i], sizeof r.loan_due[i]);
    if (r.loan_item[i] == 0 || y == 0 ||
        std::tuple(y, m, d) >= std::tuple(today.year, today.month, today.day))
      continue;
    const std::string out = FieldText(r.loan_out[i]) + "     ";
    ListRow row;
    row.number = r.number;
    row.columns = {
        std::to_string(r.number),
        Format("%lld at %c%c:%c%c", (long long)r.loan_item[i], out[0], out[1], out[3], out[4]),
        "on " + Cp1252ToUtf8(DatePart(r.loan_out[i], sizeof r.loan_out[i])),
        Format("%d days", int(DayNumber(today.year, today.month, today.day) - DayNumber(y, m, d)))};
    rows.push_back(std::move(row));
  }
  return rows;
}

std::string CategoryText(int32_t display_category) {
  if (display_category < 0 || display_category > 17) return "";
  return CategoryCode(G().settings, display_category + 1);
}

// The test of a mode on a record; none lets every live record through.
std::function<bool(const char*)> Selection(int mode, const PrintChoice& c) {
  auto film = [](auto test) {
    return [test](const char* p) { return test(RecordAt<FilmRecord>(p)); };
  };
  auto member = [](auto test) {
    return [test](const char* p) { return test(RecordAt<MemberRecord>(p)); };
  };
  switch (mode) {
    case kPrintInventoryCategory:
    case kInventoryListCategory:
      return film([cat = c.category](const FilmRecord& r) { return r.display_category == cat; });
    case kPrintInventoryHeld:
      return film([](const FilmRecord& r) { return r.quantity >= 1; });
    case kPrintInventoryLocation:
      return film([text = c.location](const FilmRecord& r) {
        const std::string at = FieldText(r.location);
        return at == text || at == UpperCase(text);
      });
    case kPrintDebtors:
    case kCustomersWithBalance:
      return member([](const MemberRecord& r) { return r.balance != 0; });
    case kPrintNonDefaultCategory:
    case kCustomersNotCategory1:
      return member([](const MemberRecord& r) { return r.group != 1; });
    case kCustomersActive:
      return member([](const MemberRecord& r) { return r.tax != 0; });
    case kCustomersOverdue: {
      Datestamp();
      return member([today = G().now](const MemberRecord& r) { return Overdue(r, today); });
    }
    case kPrintInactive:
      return member([year = c.year](const MemberRecord& r) {
        // A customer never used ("NEW") stays on the list.
        const std::string used = FieldText(r.last_used);
        return used.size() <= 12 || std::atoi(used.c_str() + 11) < year;
      });
    default:
      return {};
  }
}

IndexedFile& FileOf(int mode) {
  if (mode == kPrintSuppliers || mode == kSupplierList) return G().suppliers;
  if (mode < 200) return G().members;
  return G().films;
}

// Reads records in number order from a slot of the index on, with a busy box.
class IndexReader {
 public:
  IndexReader(IndexedFile& file, std::function<bool(const char*)> test)
      : file_(file), test_(std::move(test)), record_(size_t(file.layout().record_size)) {}

  void Start(int64_t number) {
    slot_ = Findnumber(file_.index, number);
    first_ = slot_;
    handle_.close();
    progress_.reset();
  }
  // The next live record that passes, up to `to`; false at the end or on Cancel.
  bool Next(int64_t to) {
    const NumberIndex& index = file_.index;
    if (!handle_ && !handle_.open(file_.layout().path, File::Mode::Read)) return false;
    if (!progress_) progress_ = platform().begin_progress("Please wait..", "Please wait");
    const int64_t size = file_.layout().record_size;
    for (; slot_ < index.size(); ++slot_) {
      if ((slot_ - first_) % kStepEvery == kStepEvery - 1 &&
          !progress_->step(int64_t(slot_ - first_), int64_t(index.size() - first_)))
        break;
      const IndexEntry e = index[slot_];
      if (e.number < 1) continue;
      if (e.number > to) break;
      if (!handle_.seek(e.position * size) || handle_.read(record_.data(), size) != size) break;
      if (test_ && !test_(record_.data())) continue;
      ++slot_;
      return true;
    }
    slot_ = index.size();
    handle_.close();
    progress_.reset();
    return false;
  }
  // Lets go of the file and the busy box until the next call.
  void Pause() {
    handle_.close();
    progress_.reset();
  }
  const char* record() const { return record_.data(); }
  size_t slot() const { return slot_; }
  size_t first() const { return first_; }
  void Seek(size_t slot) { slot_ = slot; }

 private:
  IndexedFile& file_;
  std::function<bool(const char*)> test_;
  std::vector<char> record_;
  File handle_;
  std::unique_ptr<Progress> progress_;
  size_t slot_ = 0, first_ = 0;
};

std::string Utf8Field(const std::string& cp1252) {
  return Cp1252ToUtf8(cp1252);
}

ListRow ItemRow(const FilmRecord& r) {
  ListRow row;
  row.number = r.number;
  row.columns = {std::to_string(r.number), Utf8Field(FieldText(r.description)),
                 std::to_string(r.quantity), Money(r.retail_price)};
  return row;
}

ListRow SupplierRow(const MansRecord& r) {
  ListRow row;
  row.number = r.number;
  row.columns = {std::to_string(r.number), Utf8Field(FieldText(r.name)),
                 Utf8Field(FieldText(r.road)), Utf8Field(FieldText(r.telephone))};
  return row;
}

ListRow ScratchRow(const SortRow& s) {
  ListRow row;
  row.number = s.number;
  row.columns = {std::to_string(s.number), Utf8Field(FieldText(s.text)),
                 Utf8Field(FieldText(s.column3)), Utf8Field(FieldText(s.column4))};
  return row;
}

ListFill ScratchFill(SortKind kind) {
  return [kind](int64_t start, std::vector<ListRow>& rows, bool& at_end) {
    File f(ScratchFile(kind), File::Mode::Read);
    if (!f) {
      Message(std::string("Data file: ") + ScratchFile(kind) + ", not present.", "Fatal error");
      at_end = true;
      return start;
    }
    SortRow s[kListRows];
    int64_t got = 0;
    if (f && f.seek(start * int64_t(sizeof(SortRow))))
      got = std::max<int64_t>(0, f.read(s, sizeof s)) / int64_t(sizeof(SortRow));
    for (int64_t i = 0; i < got; ++i) rows.push_back(ScratchRow(s[i]));
    at_end = got < kListRows || f.size() <= (start + got) * int64_t(sizeof(SortRow));
    return start + got;
  };
}

ListFill IndexFill(int mode, int64_t from, const PrintChoice& choice) {
  auto reader = std::make_shared<IndexReader>(FileOf(mode), Selection(mode, choice));
  return [reader, mode, from](int64_t start, std::vector<ListRow>& rows, bool& at_end) {
    // The place is the slot past the first one of the list.
    reader->Start(from);
    const size_t base = reader->first();
    reader->Seek(base + size_t(start));
    bool more = true;
    while (int(rows.size()) < kListRows && (more = reader->Next(kHighestNumber))) {
      const char* p = reader->record();
      if (mode == kSupplierList)
        rows.push_back(SupplierRow(RecordAt<MansRecord>(p)));
      else if (mode == kCustomersOverdue) {
        const MemberRecord m = RecordAt<MemberRecord>(p);
        std::vector<ListRow> group = OverdueRows(m, G().now);
        group.insert(group.begin(), Customerrow(m, mode));
        // A customer and the loans under it stay on one page, when a page holds them.
        if (!rows.empty() && rows.size() + group.size() > size_t(kListRows)) {
          reader->Seek(reader->slot() - 1);
          break;
        }
        group.resize(std::min(group.size(), size_t(kListRows)));
        rows.insert(rows.end(), group.begin(), group.end());
      } else if (mode < 200)
        rows.push_back(Customerrow(RecordAt<MemberRecord>(p), mode));
      else
        rows.push_back(ItemRow(RecordAt<FilmRecord>(p)));
    }
    reader->Pause();
    at_end = !more || reader->slot() >= FileOf(mode).index.size();
    return int64_t(reader->slot() - base);
  };
}

// --- printing ---------------------------------------------------------------

void DrawItem(ListingPage& p, const FilmRecord& r, int mode, const CustomFields& fields) {
  if (mode == kPrintInventoryCustom) {
    // One text from the number on, without word wrap.
    p.text(0, Customrow(r, fields));
    ++p.row;
    return;
  }
  p.text(0, Format("%lld", (long long)r.number));
  p.text(16, FieldText(r.description));
  const bool cost = mode == kPrintInventoryCost || mode == kPrintInventoryHeld;
  int column = 16 + 41;
  if (!cost) p.text(column, CategoryText(r.display_category));
  column += 7;
  p.text(column, std::to_string(r.quantity));
  if (cost) p.text(column += 10, Money(r.cost_price));
  p.text(column += 10, Money(r.retail_price));
  const double each = cost ? double(r.cost_price) : double(r.retail_price);
  p.text(column + 12, Money(double(r.quantity) * each));
  ++p.row;
}

void DrawCustomer(ListingPage& p, const MemberRecord& r, int mode) {
  p.text(0, Format("%lld", (long long)r.number));
  p.text(8, FieldText(r.name));
  ++p.row;
  p.text(0, FieldText(r.road));
  if (mode == kPrintInactive) p.text(22, FieldText(r.telephone));
  ++p.row;
  if (mode == kPrintInactive)
    p.text(0, DatePart(r.last_used, sizeof r.last_used));
  else
    p.text(0, Format("%.2f  Tel: %s", double(r.balance), FieldText(r.telephone).c_str()));
  p.row += 2;
}

void DrawSupplier(ListingPage& p, const MansRecord& r) {
  p.text(0, Format("%-16lld  %s  %s, %s,  Tel %s", (long long)r.number, FieldText(r.name).c_str(),
                   FieldText(r.road).c_str(), FieldText(r.town).c_str(),
                   FieldText(r.telephone).c_str()));
  ++p.row;
}

class IndexSource : public ListingSource {
 public:
  IndexSource(int mode, const PrintChoice& choice)
      : mode_(mode), choice_(choice), reader_(FileOf(mode), Selection(mode, choice)) {}
  void Reset() override { reader_.Start(choice_.from); }
  bool Fetch() override { return reader_.Next(choice_.to); }
  void Draw(ListingPage& page) override {
    const char* p = reader_.record();
    if (mode_ == kPrintSuppliers)
      DrawSupplier(page, RecordAt<MansRecord>(p));
    else if (mode_ < 200)
      DrawCustomer(page, RecordAt<MemberRecord>(p), mode_);
    else
      DrawItem(page, RecordAt<FilmRecord>(p), mode_, choice_.fields);
  }

 private:
  int mode_;
  PrintChoice choice_;
  IndexReader reader_;
};

// The rows of f2.dat or m2.dat in file order: the number at the margin and the
// three texts at fixed steps.
class ScratchSource : public ListingSource {
 public:
  explicit ScratchSource(SortKind kind) : kind_(kind) {}
  void Reset() override {
    file_.close();
    if (!file_.open(ScratchFile(kind_), File::Mode::Read))
      Message(std::string("Data file: ") + ScratchFile(kind_) + ", not present.", "Fatal error");
  }
  bool Fetch() override { return file_ && file_.read(&row_, sizeof row_) == sizeof row_; }
  void Draw(ListingPage& p) override {
    p.text(0, Format("%lld", (long long)row_.number));
    p.text(20, FieldText(row_.text));
    p.text(20 + 42, FieldText(row_.column3));
    p.text(20 + 42 + 32, FieldText(row_.column4));
    ++p.row;
  }

 private:
  SortKind kind_;
  File file_;
  SortRow row_{};
};

class RowSource : public ListingSource {
 public:
  explicit RowSource(std::vector<std::string> rows) : rows_(std::move(rows)) {}
  void Reset() override { next_ = 0; }
  bool Fetch() override { return next_ < rows_.size(); }
  void Draw(ListingPage& p) override {
    p.text(0, rows_[next_++]);
    ++p.row;
  }

 private:
  std::vector<std::string> rows_;
  size_t next_ = 0;
};

}  // namespace

ListingView& listing_view() {
  return *current_view;
}
void install_listing_view(ListingView* view) {
  current_view = view ? view : &silent_view;
}

std::optional<std::pair<int64_t, int64_t>> Checkrange(const std::string& from,
                                                      const std::string& to) {
  const std::optional<int64_t> f = WholeNumber(from), t = WholeNumber(to);
  if (!f || !t || *f < 1 || *f > kHighestNumber || *t < *f || *t > kHighestNumber) {
    Message("Outside range", "Problem");
    return std::nullopt;
  }
  return std::pair(*f, *t);
}

std::optional<std::pair<unsigned char, unsigned char>> Askletters(const std::string& title) {
  auto letter = [&](const char* text) -> std::optional<unsigned char> {
    std::optional<std::string> typed = platform().prompt(text, title);
    if (!typed) return std::nullopt;
    const std::string cp = Utf8ToCp1252(*typed);
    if (cp.empty()) return std::nullopt;
    const unsigned char c = uint8_t(cp[0]);
    return c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c;
  };
  const std::optional<unsigned char> start = letter("Enter the start character:");
  if (!start || *start < 'A') return std::nullopt;
  const std::optional<unsigned char> end = letter("Enter the end character:");
  if (!end || *end < *start) return std::nullopt;
  return std::pair(*start, *end);
}

int64_t Writebestsellers(int category) {
  // The rows in file order, and beside them the counts to sort by.
  std::vector<SortRow> rows;
  std::vector<std::pair<int32_t, uint32_t>> order;
  const ScanEnd end = Scanfilms("Please wait", [&](const FilmRecord& r) {
    if (category != kAllCategories && r.display_category != category) return;
    order.emplace_back(int32_t(r.total_sold), uint32_t(rows.size()));
    SortRow& s = rows.emplace_back();
    std::memset(&s, 0, sizeof s);
    s.number = r.number;
    SetField(s.text, FieldText(r.description));
    SetField(s.column3, std::to_string(r.total_sold));
    SetField(s.column4, DatePart(r.last_used, sizeof r.last_used));
  });
  if (end == ScanEnd::Unreadable) Message("Data file: film.dat, not present.", "Fatal error");
  if (end != ScanEnd::Finished) return -1;
  // Falling counts; equal counts keep their file order through the position.
  std::sort(order.begin(), order.end(), [](const auto& a, const auto& b) {
    return a.first != b.first ? a.first > b.first : a.second < b.second;
  });
  std::vector<SortRow> sorted;
  sorted.reserve(rows.size());
  for (const auto& o : order) sorted.push_back(rows[o.second]);
  rows.swap(sorted);
  if (!ReplaceFile("f2.dat", rows.data(), int64_t(rows.size() * sizeof(SortRow)))) {
    Message("Data file: f2.dat.", "Problem");
    return -1;
  }
  return int64_t(rows.size());
}

CustomFields Customfields(const int32_t* stored) {
  CustomFields f;
  std::copy(stored, stored + kCustomFields, f.begin());
  if (std::none_of(f.begin(), f.end(), [](int32_t v) { return v == 2; })) f[0] = 2;
  return f;
}

namespace {
constexpr const char* kCustomNames[kCustomFields] = {"Description",
                                                     "SKU 1",
                                                     "SKU 2",
                                                     "SKU 3",
                                                     "SKU 4",
                                                     "Cost",
                                                     "Trade",
                                                     "Retail",
                                                     "Order code",
                                                     "On order",
                                                     "Order quantity",
                                                     "Minimum order",
                                                     "Reorder level",
                                                     "Tax code",
                                                     "In stock",
                                                     "Date added",
                                                     "Display category",
                                                     "Location",
                                                     "Web URL",
                                                     "Web image"};

std::string TaxText(int32_t tax) {
  switch (tax) {
    case 1:
      return ", 1 and 2";
    case 2:
      return ", Tax 1";
    case 3:
      return ", Tax 2";
    default:
      return ", Non";
  }
}
}  // namespace

std::string Customheading(const CustomFields& fields) {
  std::string text = "Number";
  for (int i = 0; i < kCustomFields; ++i)
    if (fields[size_t(i)] == 2) text += std::string(", ") + kCustomNames[i];
  return text;
}

std::string Customrow(const FilmRecord& r, const CustomFields& fields) {
  auto s = [](const std::string& t) { return ", " + t; };
  auto m = [](float v) { return Format(", %.2f", double(v)); };
  auto d = [](int32_t v) { return Format(", %d", v); };
  std::string text = Format("%lld", (long long)r.number);
  for (int i = 0; i < kCustomFields; ++i) {
    if (fields[size_t(i)] != 2) continue;
    switch (i) {
      case 0:
        text += s(FieldText(r.description));
        break;
      case 1:
        text += s(FieldText(r.sku1));
        break;
      case 2:
        text += s(FieldText(r.sku2));
        break;
      case 3:
        text += s(FieldText(r.sku3));
        break;
      case 4:
        text += s(FieldText(r.sku4));
        break;
      case 5:
        text += m(r.cost_price);
        break;
      case 6:
        text += m(r.trade_price);
        break;
      case 7:
        text += m(r.retail_price);
        break;
      case 8:
        text += s(FieldText(r.order_code));
        break;
      case 9:
        text += d(r.on_order);
        break;
      case 10:
        text += d(r.order_quantity);
        break;
      case 11:
        text += d(r.minimum_order);
        break;
      case 12:
        text += d(r.reorder_quantity);
        break;
      case 13:
        text += TaxText(r.tax);
        break;
      case 14:
        text += d(r.quantity);
        break;
      case 15:
        text += s(FieldText(r.date_added));
        break;
      case 16:
        text += s(CategoryText(r.display_category));
        break;
      case 17:
        text += s(FieldText(r.location));
        break;
      case 18:
        text += s(FieldText(r.website));
        break;
      default:
        text += s(FieldText(r.web_image));
        break;
    }
  }
  return text;
}

ListRow Customerrow(const MemberRecord& r, int mode) {
  ListRow row;
  row.number = r.number;
  const std::string name = FieldText(r.name);
  std::string second = name;
  if (mode == kCustomersWithBalance) second = Format("%.2f, ", double(r.balance)) + name;
  if (mode == kCustomersNotCategory1) second = Format("%d, ", r.group) + name;
  std::string third = FieldText(r.road), fourth = FieldText(r.telephone);
  if (mode == kCustomersOverdue) {
    third = DatePart(r.last_used, sizeof r.last_used) + " " +
            DatePart(r.last_payment, sizeof r.last_payment);
    fourth = "Tel. " + fourth;
  }
  row.columns = {std::to_string(r.number), Cp1252ToUtf8(second), Cp1252ToUtf8(third),
                 Cp1252ToUtf8(fourth)};
  return row;
}

ListFill Listingfill(int mode, int64_t from) {
  switch (mode) {
    case kCustomerListAlphabetical:
      return ScratchFill(SortKind::Customers);
    case kInventoryListAlphabetical:
      return ScratchFill(SortKind::Listing);
    case kInventoryTop:
      return ScratchFill(SortKind::HighestVolume);
    case kInventoryListCategory: {
      PrintChoice c;
      c.category = int(from);
      return IndexFill(mode, 1, c);
    }
    case kCustomerList:
    case kInventoryList:
    case kSupplierList:
      return IndexFill(mode, from, {});
    default:
      return IndexFill(mode, 1, {});
  }
}

std::string Listingheader(const std::string& title) {
  Datestamp();
  const LocalTime now = G().now;
  // The long date without its weekday: "November 23 2026".
  std::string date = Utf8ToCp1252(platform().long_date(now.year, now.month, now.day));
  if (const size_t space = date.find(' '); space != std::string::npos) date.erase(0, space + 1);
  return FieldText(G().heading.site_name) + " " + title + date;
}

void Printlisting(const std::string& header, const std::string& column_heading,
                  ListingSource& source) {
  bool have = false;
  Runpagedjob([&](PrintTarget& target) {
    // Each copy is whole: the source starts over with the first page.
    if (G().print_job.page_number == 1) {
      source.Reset();
      have = source.Fetch();
    }
    ListingPage page = Startlistingpage(
        target, Format("%s  Page: %d", header.c_str(), int(G().print_job.page_number)));
    if (!column_heading.empty()) {
      page.text(0, column_heading);
      ++page.row;
    }
    while (have) {
      source.Draw(page);
      have = source.Fetch();
      if (have && Listingpagefull(page)) return;
    }
  });
}

std::unique_ptr<ListingSource> Rowsource(std::vector<std::string> rows) {
  return std::make_unique<RowSource>(std::move(rows));
}

std::unique_ptr<ListingSource> Listingsource(int mode, const PrintChoice& choice) {
  if (mode == kPrintCustomersAlphabetically)
    return std::make_unique<ScratchSource>(SortKind::Customers);
  if (mode == kPrintInventoryAlphabetically)
    return std::make_unique<ScratchSource>(SortKind::Listing);
  return std::make_unique<IndexSource>(mode, choice);
}

std::vector<std::pair<int64_t, std::string>> Retailbelowcost() {
  std::vector<std::pair<int64_t, std::string>> rows;
  Scanfilms("Data cost retail check", [&](const FilmRecord& r) {
    if (Money(r.retail_price) != Money(r.cost_price) && r.retail_price < r.cost_price)
      rows.emplace_back(r.number,
                        Format("%lld, %s", (long long)r.number, FieldText(r.description).c_str()));
  });
  return rows;
}

}  // namespace tilo
