// SPDX-License-Identifier: MIT
#include "documents/mailmerge.h"

#include <cstring>
#include <vector>

#include "core/state.h"
#include "core/text.h"
#include "documents/print_job.h"
#include "documents/print_service.h"
#include "platform/files.h"
#include "sale/basket.h"
#include "sale/commands.h"
#include "sale/pricing.h"

namespace tilo {
namespace {

constexpr const char* kFileFilter = "Text files (*.txt);;All files (*)";

MailmergeView no_screen;
MailmergeView* installed = &no_screen;

const char* const kMonths[] = {"January",   "February", "March",    "April",
                               "May",       "June",     "July",     "August",
                               "September", "October",  "November", "December"};

// True when `bytes` is well-formed UTF-8 with at least one character beyond
// ASCII: such a file came from a Linux editor, not from the till.
bool LooksUtf8(const std::string& bytes) {
  bool beyond_ascii = false;
  for (size_t i = 0; i < bytes.size();) {
    const auto c = static_cast<unsigned char>(bytes[i]);
    size_t more = 0;
    if (c < 0x80)
      more = 0;
    else if (c >= 0xC2 && c <= 0xDF)
      more = 1;
    else if (c >= 0xE0 && c <= 0xEF)
      more = 2;
    else if (c >= 0xF0 && c <= 0xF4)
      more = 3;
    else
      return false;
    if (more != 0 && i + more >= bytes.size()) return false;
    for (size_t k = 1; k <= more; ++k)
      if ((static_cast<unsigned char>(bytes[i + k]) & 0xC0) != 0x80) return false;
    beyond_ascii |= more != 0;
    i += more + 1;
  }
  return beyond_ascii;
}

// Every line end made CR LF: a bare LF gains its CR, a bare CR its LF.
std::string CrLf(const std::string& text) {
  std::string out;
  out.reserve(text.size() + text.size() / 8);
  for (size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '\r' || c == '\n') {
      out += "\r\n";
      if (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
    } else {
      out += c;
    }
  }
  return out;
}

std::string Heading(const char (&line)[42]) {
  return FieldText(line);
}

}  // namespace

bool MailmergeView::edit(MergeEntries&) {
  return false;
}

MailmergeView& mailmerge_view() {
  return *installed;
}

void install_mailmerge_view(MailmergeView* view) {
  installed = view ? view : &no_screen;
}

std::string MergeTextShown(const std::string& merge_text) {
  std::string shown;
  for (char c : merge_text)
    if (c != '\r') shown += c;
  return Cp1252ToUtf8(shown);
}

std::string MergeTextStored(const std::string& shown) {
  return CrLf(Utf8ToCp1252(shown));
}

std::optional<std::string> Loadmergetext() {
  auto path = platform().choose_file("Load", false, kFileFilter);
  if (!path) return std::nullopt;
  auto bytes = ReadWholeFile(*path);
  if (!bytes) {
    Message("File not present.", "Fatal error");
    return std::nullopt;
  }
  if (bytes->empty() || bytes->size() > kMergeTextLimit) {
    Message("File of incorrect type", "Problem");
    return std::nullopt;
  }
  // The size test is on the file as it stands; what it holds is then made the
  // till's own text, whole.
  std::string text = LooksUtf8(*bytes) ? Utf8ToCp1252(*bytes) : *bytes;
  G().merge_text = CrLf(text);
  return MergeTextShown(G().merge_text);
}

void Savemergetext(const std::string& shown) {
  auto path = platform().choose_file("Save", true, kFileFilter);
  if (!path) return;
  if (!ReplaceFile(*path, CrLf(Utf8ToCp1252(shown)))) Message("File failure.", "Fatal error");
}

bool MergeWanted(const MemberRecord& r, MergeSelection selection, int this_year) {
  switch (selection) {
    case MergeSelection::OweMoney:
      return Roundmoney(r.balance) > 0.0f;
    case MergeSelection::NotActive: {
      // "%02d:%02d%02d/%02d/%d": the year stands from the twelfth character on.
      const std::string used = FieldText(r.last_used);
      return used.size() <= 11 || LeadingNumber(std::string_view(used).substr(11)) != this_year;
    }
    case MergeSelection::All:
      break;
  }
  return true;
}

int Wrapmergetext(PrintTarget& t, const std::string& text, int width, int row, int line_height) {
  int rows = 0;
  std::string line;
  auto draw = [&](const std::string& s) {
    if (!s.empty()) t.text_out(0, (row + rows) * line_height, s);
    ++rows;
  };
  // A line that has passed the page is cut back to its last space, and what
  // stood after that space starts the next line. Everything before the last
  // space was measured within the page when that space was met.
  auto cut = [&] {
    const size_t space = line.rfind(' ');
    if (space == std::string::npos) {
      // One word wider than the page: drawn as it stands, past the edge.
      draw(line);
      line.clear();
      return false;
    }
    draw(line.substr(0, space));
    line.erase(0, space + 1);
    return true;
  };
  for (size_t i = 0; i < text.size();) {
    const char c = text[i];
    if (c == '\r' || c == '\n') {
      // The last word of a line gets the same test as the others.
      if (t.text_extent(line) <= width || cut()) draw(line);
      line.clear();
      i += (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ? 2 : 1;
      continue;
    }
    // Only a space can end a line, so the width is measured only there.
    if (c != ' ' || t.text_extent(line) <= width) {
      line += c;
      ++i;
      continue;
    }
    // After a cut the space met here is looked at again against the new line;
    // a word drawn as it stands takes the space with it.
    if (!cut()) ++i;
  }
  if (!line.empty() && (t.text_extent(line) <= width || cut())) draw(line);
  return rows;
}

void Drawmergeletter(PrintTarget& t, const MemberRecord& r, const LocalTime& today) {
  const HeadingLines& h = G().heading;
  const int line = Lineheight(t);
  const int half = t.page_width() / 2;
  auto y = [line](int row) { return row * line; };
  int row = 2;

  t.set_text_align(TextAlign::Centre);
  for (const auto* heading : {&h.site_name, &h.site_road, &h.site_area, &h.site_county,
                              &h.site_postcode, &h.site_telephone}) {
    const std::string text = Heading(*heading);
    if (!text.empty()) t.text_out(half, y(row), text);
    ++row;
  }
  row += 4;

  t.set_text_align(TextAlign::Left);
  t.text_out(0, y(row++),
             FieldText(r.title) + " " + FieldText(r.initials) + " " + FieldText(r.name));
  for (const std::string& address :
       {FieldText(r.road), FieldText(r.area), FieldText(r.town), FieldText(r.postcode)})
    if (!address.empty()) t.text_out(0, y(row++), address);

  t.set_text_align(TextAlign::Right);
  const int month = today.month >= 1 && today.month <= 12 ? today.month : 1;
  t.text_out(
      2 * half, y(row),
      std::to_string(today.day) + " " + kMonths[month - 1] + " " + std::to_string(today.year));
  row += 4;

  t.set_text_align(TextAlign::Left);
  t.text_out(0, y(row), "Dear Sir / Madam,           Customer number: " + std::to_string(r.number));
  row += 2;
  row += Wrapmergetext(t, G().merge_text, 2 * half, row, line);
  row += 1;
  t.text_out(0, y(row), "Yours sincerely,");
  row += 6;
  t.text_out(0, y(row++), "-------------------");
  t.text_out(0, y(row), "Manager");
}

void Mailmerge() {
  State& g = G();
  const NumberIndex& index = g.members.index;
  int64_t lowest = 0, highest = 0;
  for (const IndexEntry& entry : index) {
    if (entry.number < 1) continue;
    if (lowest == 0) lowest = entry.number;
    highest = entry.number;
  }
  MergeEntries entries;
  entries.start = std::to_string(lowest);
  entries.end = std::to_string(highest);
  entries.text = MergeTextShown(g.merge_text);
  if (!mailmerge_view().edit(entries)) return;
  g.merge_text = MergeTextStored(entries.text);
  const int64_t start = LeadingNumber(entries.start);
  const int64_t end = LeadingNumber(entries.end);
  if (start < 1 || end < start) return;

  // The numbers are taken first: nothing changes the customers while letters print.
  std::vector<int64_t> numbers;
  for (size_t slot = Findnumber(index, start); slot < index.size(); ++slot) {
    if (index[slot].number > end) break;
    if (index[slot].number >= 1) numbers.push_back(index[slot].number);
  }

  std::unique_ptr<PrintTarget> target = Choosetarget(true);
  if (!target) return;
  PrintJob& job = g.print_job;
  job.target = std::move(target);
  job.aborted = false;
  print_service().open_abort_box();
  job.target->abort_check = Abortcheck;
  PrintTarget& t = *job.target;
  const LocalTime today = platform().now();

  for (int64_t number : numbers) {
    if (job.aborted) break;
    // A failed read has said so; the letters stop there rather than repeat it.
    if (Fetchmember(number) == 0) break;
    const MemberRecord customer = g.member;
    if (!MergeWanted(customer, entries.selection, today.year)) continue;
    for (int32_t copy = 0; copy < job.copies && !job.aborted; ++copy) {
      if (t.begin_document(kDocumentName) < 1) continue;
      job.page_number = 1;
      if (t.begin_page() > 0) {
        Drawmergeletter(t, customer, today);
        t.end_page();
      }
      t.end_document();
    }
  }
  // A cancelled box has already enabled the main window and gone.
  if (!job.aborted) print_service().close_abort_box();
  job.target->release();
  job.target.reset();
}

void InstallMailmergeCommand() {
  SetHandler(Command::Mailmerge, [](int) { Mailmerge(); });
}

}  // namespace tilo
