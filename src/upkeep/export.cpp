// SPDX-License-Identifier: MIT
#include "upkeep/export.h"

#include <algorithm>
#include <cinttypes>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "core/customer_file.h"
#include "core/film_record.h"
#include "core/state.h"
#include "core/text.h"
#include "platform/files.h"
#include "platform/platform.h"

namespace tilo {
namespace {

constexpr const char* kProblem = "Problem";
constexpr const char* kEnd = "\r\n";

void Int64(std::string& out, int64_t value) {
  char text[32];
  std::snprintf(text, sizeof text, "%" PRId64, value);
  out += text;
}

void Int(std::string& out, int32_t value) {
  out += std::to_string(value);
}

// Amounts with two decimals and a point, the working locale being the C one.
void Money(std::string& out, float value) {
  char text[64];
  std::snprintf(text, sizeof text, "%.2f", double(value));
  out += text;
}

// A text field in the comma-separated file: as stored, but quoted when it holds
// a comma, a quote or a line break, so that the columns after it stay in place.
template <size_t N>
void Csv(std::string& out, const char (&field)[N]) {
  const std::string text = FieldText(field);
  if (text.find_first_of(",\"\r\n") == std::string::npos) {
    out += text;
    return;
  }
  out += '"';
  for (char c : text) {
    if (c == '"') out += '"';
    out += c;
  }
  out += '"';
}

// Text in markup: the five characters that would break it become entities.
template <size_t N>
void Markup(std::string& out, const char (&field)[N]) {
  for (char c : FieldText(field)) {
    switch (c) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      case '"':
        out += "&quot;";
        break;
      case '\'':
        out += "&apos;";
        break;
      default:
        out += c;
    }
  }
}

// The 24 columns of an item in the text file, the first ten being the ticks.
void ItemColumn(std::string& out, const FilmRecord& r, int column) {
  switch (column) {
    case 0:
      Int64(out, r.number);
      break;
    case 1:
      Csv(out, r.description);
      break;
    case 2:
      Csv(out, r.sku1);
      break;
    case 3:
      Csv(out, r.sku2);
      break;
    case 4:
      Money(out, r.cost_price);
      break;
    case 5:
      Int(out, r.display_category);
      break;
    case 6:
      Money(out, r.retail_price);
      break;
    case 7:
      Int(out, r.quantity);
      break;
    case 8:
      Int(out, r.reorder_quantity);
      break;
    case 9:
      out += r.tax == 0 ? "0" : "1";
      break;
    case 10:
      Csv(out, r.category);
      break;
    case 11:
      Csv(out, r.format);
      break;
    case 12:
      Csv(out, r.last_used);
      break;
    case 13:
      Int(out, r.minimum_order);
      break;
    case 14:
      Csv(out, r.sku3);
      break;
    case 15:
      Csv(out, r.sku4);
      break;
    case 16:
      Csv(out, r.location);
      break;
    case 17:
      Csv(out, r.website);
      break;
    case 18:
      Csv(out, r.web_image);
      break;
    case 19:
      Money(out, r.trade_price);
      break;
    case 20:
      Csv(out, r.order_code);
      break;
    case 21:
      Csv(out, r.date_added);
      break;
    case 22:
      Int(out, r.total_sold);
      break;
    case 23:
      Csv(out, r.notes);
      break;
  }
  out += ',';
}

void CustomerColumn(std::string& out, const MemberRecord& r, int column) {
  switch (column) {
    case 0:
      Int64(out, r.number);
      break;
    case 1:
      Csv(out, r.name);
      break;
    case 2:
      Csv(out, r.road);
      break;
    case 3:
      Csv(out, r.area);
      break;
    case 4:
      Csv(out, r.town);
      break;
    case 5:
      Csv(out, r.postcode);
      break;
    case 6:
      Csv(out, r.telephone);
      break;
    case 7:
      Int64(out, r.tax);
      break;
    case 8:
      Money(out, r.balance);
      break;
    case 9:
      Money(out, r.credit_limit);
      break;
    case 10:
      Csv(out, r.telephone2);
      break;
    case 11:
      Csv(out, r.email);
      break;
    case 12:
      Csv(out, r.comment);
      break;
    case 13:
      Csv(out, r.comment2);
      break;
    case 14:
      Csv(out, r.contact);
      break;
    case 15:
      Csv(out, r.notes);
      break;
    case 16:
      Csv(out, r.credit_card);
      break;
    case 17:
      Csv(out, r.credit_card_expiry);
      break;
    case 18:
      Csv(out, r.credit_card2);
      break;
    case 19:
      Csv(out, r.credit_card2_expiry);
      break;
    case 20:
      Int(out, r.group);
      break;
    case 21:
      Money(out, r.total_purchases);
      break;
    case 22:
      Int(out, r.terms);
      break;
    case 23:
      Int(out, r.transactions);
      break;
  }
  out += ',';
}

void TextRecord(const ExportJob& job, const void* record, std::string& out) {
  for (int column = 0; column < 24; ++column) {
    if (!job.fields.entire && (column >= 10 || !job.fields.ticks[size_t(column)])) continue;
    if (job.customers)
      CustomerColumn(out, *static_cast<const MemberRecord*>(record), column);
    else
      ItemColumn(out, *static_cast<const FilmRecord*>(record), column);
  }
  out += kEnd;
}

// A field of the HTML line: " %s", bold when asked.
template <size_t N>
void HtmlText(std::string& out, const char (&field)[N], bool bold) {
  out += bold ? "<B> " : " ";
  Markup(out, field);
  if (bold) out += "</B>";
}

void HtmlNumber(std::string& out, int64_t number, bool bold) {
  if (bold) out += "<B>";
  Int64(out, number);
  if (bold) out += "</B>";
}

void HtmlItem(const ExportJob& job, const FilmRecord& r, int column, std::string& out) {
  switch (column) {
    case 0:
      HtmlNumber(out, r.number, job.bold_number);
      break;
    case 1:
      HtmlText(out, r.description, job.bold_title);
      break;
    case 2:
      HtmlText(out, r.sku1, false);
      break;
    case 3:
      HtmlText(out, r.sku2, false);
      break;
    case 4:
      out += ' ', Money(out, r.cost_price);
      break;
    case 5:
      out += ' ', Int(out, r.display_category);
      break;
    case 6:
      out += ' ', Money(out, r.retail_price);
      break;
    case 7:
      out += ' ', Int(out, r.quantity);
      break;
    case 8:
      out += ' ', Int(out, r.reorder_quantity);
      break;
    case 9:
      out += r.tax == 0 ? " Non taxable," : " Taxable,";
      break;
  }
}

void HtmlCustomer(const ExportJob& job, const MemberRecord& r, int column, std::string& out) {
  switch (column) {
    case 0:
      HtmlNumber(out, r.number, job.bold_number);
      break;
    case 1:
      HtmlText(out, r.name, job.bold_title);
      break;
    case 2:
      HtmlText(out, r.road, job.bold_title);
      break;
    case 3:
      HtmlText(out, r.area, job.bold_title);
      break;
    case 4:
      HtmlText(out, r.town, false);
      break;
    case 5:
      HtmlText(out, r.postcode, false);
      break;
    case 6:
      HtmlText(out, r.telephone, false);
      break;
    case 7:
      out += ' ', Int64(out, r.tax);
      break;
    case 8:
      out += ' ', Money(out, r.balance);
      break;
    case 9:
      out += ' ', Money(out, r.credit_limit);
      break;
  }
}

void HtmlRecord(const ExportJob& job, const void* record, std::string& out) {
  for (int column = 0; column < 10; ++column) {
    if (!job.fields.ticks[size_t(column)]) continue;
    if (job.customers)
      HtmlCustomer(job, *static_cast<const MemberRecord*>(record), column, out);
    else
      HtmlItem(job, *static_cast<const FilmRecord*>(record), column, out);
  }
  out += "<BR>";
  out += kEnd;
}

// One element on its own line.
struct Element {
  std::string& out;
  template <size_t N>
  void text(const char* tag, const char (&field)[N]) {
    Open(tag);
    Markup(out, field);
    Close(tag);
  }
  void number(const char* tag, int64_t value) { Open(tag), Int64(out, value), Close(tag); }
  void count(const char* tag, int32_t value) { Open(tag), Int(out, value), Close(tag); }
  void money(const char* tag, float value) { Open(tag), Money(out, value), Close(tag); }
  void Open(const char* tag) { out += '<', out += tag, out += '>'; }
  void Close(const char* tag) { out += "</", out += tag, out += '>', out += kEnd; }
};

void XmlItem(const FilmRecord& r, std::string& out) {
  Element e{out};
  out += "<item>";
  out += kEnd;
  e.number("number", r.number);
  e.text("description", r.description);
  e.text("sku1", r.sku1);
  e.text("sku2", r.sku2);
  e.text("sku3", r.sku3);
  e.text("sku4", r.sku4);
  e.money("cost_price", r.cost_price);
  e.money("trade_price", r.trade_price);
  e.money("retail_price", r.retail_price);
  e.count("quantity", r.quantity);
  e.count("reorder_quantity", r.reorder_quantity);
  e.count("tax", r.tax);
  e.count("display_category", r.display_category);
  e.text("category", r.category);
  e.text("format", r.format);
  e.text("date_added", r.date_added);
  e.text("last_used", r.last_used);
  e.text("order_code", r.order_code);
  e.count("minimum_order", r.minimum_order);
  e.count("total_sold", r.total_sold);
  e.text("location", r.location);
  e.text("website", r.website);
  e.text("web_image", r.web_image);
  e.text("notes", r.notes);
  out += "</item>";
  out += kEnd;
}

void XmlCustomer(const MemberRecord& r, std::string& out) {
  Element e{out};
  out += "<customer>";
  out += kEnd;
  e.number("number", r.number);
  e.text("name", r.name);
  e.text("road", r.road);
  e.text("area", r.area);
  e.text("town", r.town);
  e.text("postcode", r.postcode);
  e.text("telephone", r.telephone);
  e.text("telephone_extension", r.telephone_extension);
  e.text("telephone2", r.telephone2);
  e.text("contact", r.contact);
  e.text("comment", r.comment);
  e.text("comment2", r.comment2);
  e.number("tax", r.tax);
  e.count("transactions", r.transactions);
  e.text("credit_card", r.credit_card);
  e.text("credit_card_expiry", r.credit_card_expiry);
  e.text("email", r.email);
  e.text("shipping_address_1", r.shipping_address_1);
  e.text("shipping_address_2", r.shipping_address_2);
  e.text("shipping_address_3", r.shipping_address_3);
  e.text("shipping_address_4", r.shipping_address_4);
  e.text("shipping_address_5", r.shipping_address_5);
  out += "</customer>";
  out += kEnd;
}

int64_t HighestItem() {
  const NumberIndex& index = G().films.index;
  return index.empty() || index.back().number < 1 ? 1 : index.back().number;
}

const char* Offered(const ExportChoice& c) {
  static constexpr const char* kNames[2][3] = {{"INVENTOR.TXT", "INVENTOR.HTM", "INVENTOR.XML"},
                                               {"CUSTOMER.TXT", "CUSTOMER.HTM", "CUSTOMER.XML"}};
  return kNames[c.customers ? 1 : 0][int(c.format)];
}

ExportJob JobOf(const ExportChoice& c) {
  ExportJob job;
  job.customers = c.customers;
  job.format = c.format;
  job.category = c.customers ? -1 : c.category;
  job.bold_number = c.bold_number;
  job.bold_title = c.bold_title;
  job.text_size = c.text_size;
  return job;
}

enum class Walked { Done, Failed, Cancelled };

// Appends the records numbered up to `finish` from index slot `slot` on, in
// number order. The records are read in file order, a block at a time, each
// written into its own piece; the pieces then go out in number order. So a
// shuffled file is read through once rather than record by record.
Walked WalkRange(const ExportJob& job, IndexedFile& file, size_t slot, int64_t finish,
                 std::string& out) {
  const IndexedFileLayout& layout = file.layout();
  const int64_t size = layout.record_size;
  struct Wanted {
    int64_t position;
    size_t order;
  };
  std::vector<Wanted> wanted;
  for (size_t s = slot; s < file.index.size() && file.index[s].number <= finish; ++s)
    wanted.push_back({file.index[s].position, wanted.size()});
  std::sort(wanted.begin(), wanted.end(),
            [](const Wanted& a, const Wanted& b) { return a.position < b.position; });

  File in(layout.path, File::Mode::Read);
  if (!in) return Message(layout.messages.open_failed, "Fatal error"), Walked::Failed;
  auto progress = platform().begin_progress("Exporting the records", "Export", true);
  std::string pieces;
  std::vector<std::pair<size_t, size_t>> piece(wanted.size(), {0, 0});  // by order
  constexpr int64_t kBlockRecords = 2048;
  std::vector<char> block(size_t(size * kBlockRecords));
  int64_t block_first = 0, block_count = 0;
  for (size_t i = 0; i < wanted.size(); ++i) {
    if (!progress->step(int64_t(i), int64_t(wanted.size()))) return Walked::Cancelled;
    const int64_t pos = wanted[i].position;
    if (pos < block_first || pos >= block_first + block_count) {
      const int64_t got = in.seek(pos * size) ? in.read(block.data(), size * kBlockRecords) : -1;
      block_first = pos, block_count = got < 0 ? 0 : got / size;
      if (block_count == 0) return Message(layout.messages.scan_failed, kProblem), Walked::Failed;
    }
    const char* record = block.data() + (pos - block_first) * size;
    int32_t category;
    std::memcpy(&category, record + offsetof(FilmRecord, display_category), sizeof category);
    if (job.category >= 0 && category != job.category) continue;
    const size_t from = pieces.size();
    ExportRecord(job, record, pieces);
    piece[wanted[i].order] = {from, pieces.size() - from};
  }
  out.reserve(out.size() + pieces.size() + 64);
  for (const auto& [from, length] : piece) out.append(pieces, from, length);
  return Walked::Done;
}

}  // namespace

std::string ExportHead(const ExportJob& job) {
  std::string out;
  switch (job.format) {
    case ExportFormat::Text:
      if (!job.customers && job.fields.entire)
        out = std::string(
                  "Number,Description,SKU1,SKU2,Cost,DisplayCat,Retail,Quantity,Reorder,Tax,"
                  "Category,Format,Last,MinOrder,SKU3,SKU4,Location,Website,WebImage,Trade,"
                  "OrderCode,Added,Sold,Notes") +
              kEnd;
      break;
    case ExportFormat::Html:
      out = std::string("<HTML><BODY>") + kEnd + "<FONT SIZE='" + std::to_string(job.text_size) +
            "'>" + kEnd;
      break;
    case ExportFormat::Xml:
      out = std::string("<?xml version=\"1.0\" encoding=\"WINDOWS-1252\"?>") + kEnd + "<document>" +
            kEnd;
      break;
  }
  return out;
}

std::string ExportFoot(const ExportJob& job) {
  switch (job.format) {
    case ExportFormat::Html:
      return "</BODY></HTML>";
    case ExportFormat::Xml:
      return "</document>";
    default:
      return {};
  }
}

void ExportRecord(const ExportJob& job, const void* record, std::string& out) {
  switch (job.format) {
    case ExportFormat::Text:
      TextRecord(job, record, out);
      break;
    case ExportFormat::Html:
      HtmlRecord(job, record, out);
      break;
    case ExportFormat::Xml:
      if (job.customers)
        XmlCustomer(*static_cast<const MemberRecord*>(record), out);
      else
        XmlItem(*static_cast<const FilmRecord*>(record), out);
      break;
  }
}

void Exportfile() {
  ExportChoice defaults;
  defaults.finish = std::to_string(HighestItem());
  const auto choice = exchange_view().export_form(defaults);
  if (!choice) return;
  const int64_t start = std::strtoll(choice->start.c_str(), nullptr, 10);
  const int64_t finish = std::strtoll(choice->finish.c_str(), nullptr, 10);
  if (start < 1 || finish < start) return void(Message("Invalid range", kProblem));

  const auto path = platform().prompt(choice->customers ? "Enter the customer file path/name:"
                                                        : "Enter the inventory file path/name:",
                                      "Export", Offered(*choice));
  if (!path || path->empty()) return;
  ExportJob job = JobOf(*choice);
  if (job.format != ExportFormat::Xml) {
    const auto fields = exchange_view().export_fields(job.customers);
    if (!fields) return;
    job.fields = *fields;
  }

  IndexedFile& file = job.customers ? G().members : G().films;
  const size_t slot = Findnumber(file.index, start);
  if (slot == file.index.size() || file.index[slot].number > finish)
    return void(Message("No items in range.", kProblem));
  std::string out = ExportHead(job);
  if (WalkRange(job, file, slot, finish, out) != Walked::Done) return;
  out += ExportFoot(job);
  if (!ReplaceFile(*path, out)) return void(Message("Unable to open file.", kProblem));
  Message("Complete.", "File export");
}

}  // namespace tilo
