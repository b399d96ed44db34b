// SPDX-License-Identifier: MIT
#include "documents/statement.h"

#include <algorithm>
#include <cstring>

#include "core/clock.h"
#include "core/customer_file.h"
#include "core/settings.h"
#include "core/state.h"
#include "core/text.h"
#include "customers/customer_find.h"
#include "documents/debtor_letter.h"
#include "documents/invoice.h"
#include "documents/print_job.h"
#include "platform/files.h"
#include "platform/platform.h"
#include "reports/report_forms.h"
#include "reports/report_view.h"
#include "sale/commands.h"

namespace tilo {
namespace {

StatementView silent_view;
StatementView* current_view = &silent_view;

constexpr size_t kStatementRows = 16;
constexpr const char* kCustomerPrompt = "Please enter the customer";

bool StartsWith(const std::string& text, const char* start) {
  return text.compare(0, std::strlen(start), start) == 0;
}

// The day in the short picture, or day/month/year when it is not a date.
std::string DayText(const CalendarDate& d) {
  if (std::optional<std::string> text = Pictureddate(d)) return *text;
  return Format("%d/%d/%d", d.day, d.month, d.year);
}

// Whether the folders of a walk's day are there, asked once per year and month.
class FolderCache {
 public:
  bool has(const CalendarDate& d) {
    if (d.year != year_) {
      year_ = d.year;
      month_ = 0;
      year_there_ = IsDirectory(YearFolder(d.year));
    }
    if (!year_there_) return false;
    if (d.month != month_) {
      month_ = d.month;
      month_there_ = IsDirectory(MonthFolder(d.year, d.month));
    }
    return month_there_;
  }

 private:
  int year_ = -1, month_ = 0;
  bool year_there_ = false, month_there_ = false;
};

void Frame(PrintTarget& t, int line, int left, int right, int bottom) {
  const int top = 12 * line + line / 2;
  t.line(left + 10, top, right, top);
  t.line(left + 10, top, left + 10, bottom - 10);
  t.line(right, top, right, bottom - 10);
  const int under = 17 * line + line / 2;
  t.line(left + 10, under, right, under);
}

void Logo(PrintTarget& t, int left, int half) {
  std::optional<Bitmap> logo = LoadBitmap(kLetterLogoFile);
  if (!logo || logo->width == 0 || logo->height == 0) return;
  const int width = half / 2;
  t.draw_image(*logo, left + 10, 10, width, int(int64_t(width) * logo->height / logo->width));
}

// The customer the prompt found, copied out of the shared buffer; none when the
// prompt was cancelled or found nobody.
std::optional<MemberRecord> AskCustomer() {
  if (PromptCustomer(kCustomerPrompt) == 0) return std::nullopt;
  return G().member;
}

std::string CustomerLine(const MemberRecord& c) {
  return Format("CUSTOMER: %lld  %s", static_cast<long long>(c.number), FieldText(c.name).c_str());
}

// The walk under the report progress box; none when it was cancelled.
std::optional<std::vector<StatementEntry>> Walk(const std::string& title, int64_t customer,
                                                const CalendarDate& start,
                                                const CalendarDate& end) {
  std::optional<std::vector<StatementEntry>> entries;
  const bool done =
      report_view().run_walk(title, [&entries, customer, start, end](const WalkProgress& progress) {
        entries = Customertransactions(customer, start, end, progress);
        return entries.has_value();
      });
  if (!done) return std::nullopt;
  return entries;
}

}  // namespace

std::optional<std::vector<StatementEntry>> Customertransactions(int64_t customer,
                                                                const CalendarDate& start,
                                                                const CalendarDate& end,
                                                                const WalkProgress& progress) {
  const std::vector<CalendarDate> days = Perioddays(start, end);
  std::vector<StatementEntry> entries;
  FolderCache folders;
  DayLog<SalesLogRecord> log;
  for (size_t i = 0; i < days.size(); ++i) {
    if (progress && !progress(int64_t(i), int64_t(days.size()))) return std::nullopt;
    const CalendarDate& d = days[i];
    if (!folders.has(d) || !log.read(SalesLogPath(d.year, d.month, d.day))) continue;
    for (const SalesLogRecord& r : log)
      if (r.customer_number == customer)
        entries.push_back({d, FieldText(r.payment_type), r.transaction_number, r.total});
  }
  return entries;
}

CalendarDate Historystart() {
  const SettingsRecord& s = G().settings;
  // A history date never set starts on the first of its month or year.
  return {s.history_from_year, std::clamp(int(s.history_from_month), 1, 12),
          std::clamp(int(s.history_from_day), 1, 31)};
}

CalendarDate Today() {
  const LocalTime now = platform().now();
  return {now.year, now.month, now.day};
}

std::string Statementrow(const StatementEntry& e) {
  const std::string day = DayText(e.day);
  const long long number = e.transaction_number;
  // A payment on account is written "Payment (cash)", "Payment (ch)" or
  // "Payment (eft)"; all of them are payments here.
  if (StartsWith(e.payment_type, "Payment"))
    return Format("Payment: %s,  Transaction: %lld, %.2f", day.c_str(), number, double(e.total));
  const char* form = e.payment_type == "Cash" ? "%s paid sale: %s,  Transaction: %lld, Total: %.2f"
                                              : "%s sale: %s,  Transaction: %lld, Total: %.2f";
  return Format(form, e.payment_type.c_str(), day.c_str(), number, double(e.total));
}

std::vector<std::string> Statementrows(const std::vector<StatementEntry>& entries, float balance) {
  std::vector<std::string> rows;
  rows.reserve(entries.size() + 1);
  for (const StatementEntry& e : entries) rows.push_back(Statementrow(e));
  rows.push_back(Format("Balance: %.2f", double(balance)));
  return rows;
}

void Printstatement(PrintTarget& t, const MemberRecord& c, const std::vector<std::string>& rows) {
  State& g = G();
  t.select_font(t.stock_font());
  const int line = Lineheight(t);
  const int half = t.page_width() / 2;
  const int left = t.offset_x();
  const int right = 2 * half - t.offset_x() - 20;
  const int bottom = t.page_height() - t.offset_y();
  auto at = [&](TextAlign align, int x, int row, const std::string& text) {
    t.set_text_align(align);
    t.text_out(x, row * line, text);
  };

  Logo(t, left, half);
  at(TextAlign::Centre, half, 4, "STATEMENT");
  const HeadingLines& h = g.heading;
  const char* heading[] = {h.site_name, h.site_road, h.site_area, h.site_telephone};
  for (int i = 0; i < 4; ++i) at(TextAlign::Centre, half, 7 + i, FieldText(heading[i], 42));
  Frame(t, line, left, right, bottom);

  Timestamp();
  Datestamp();
  const int x = left + 40;
  at(TextAlign::Left, x, 13, Format("%02d:%02d  %s", g.now.hour, g.now.minute, g.date_text));
  at(TextAlign::Left, x, 16, "Ref: " + ClerkName(g.settings, g.settings.clerk_number));

  int k = 0;
  at(TextAlign::Left, x, k + 19, Format("Customer ID: %lld", static_cast<long long>(c.number)));
  // Six lines of customer on five rows: the town and postcode share one.
  const std::string town = FieldText(c.town) + "  " + FieldText(c.postcode);
  const std::string block[] = {FieldText(c.name), FieldText(c.road), FieldText(c.area), town,
                               FieldText(c.telephone)};
  for (int i = 0; i < 5; ++i) at(TextAlign::Left, x, k + 20 + i, block[i]);
  const int rule = (k + 25) * line + line / 2;
  t.line(left + 10, rule, right, rule);
  at(TextAlign::Left, x, k + 26, "Terms: " + Standardterms(g.settings, c.terms));

  const size_t first = rows.size() > kStatementRows ? rows.size() - kStatementRows : 0;
  for (size_t i = first; i < rows.size(); ++i) {
    ++k;
    at(TextAlign::Left, x, k + 26, rows[i]);
  }
}

void Printactivitypage(PrintTarget& target, const std::string& name,
                       const std::vector<std::string>& rows, size_t& next) {
  const std::string header =
      Format("%s   Activity Report  Page: %d", name.c_str(), G().print_job.page_number);
  Printlistpage(target, header, rows, next);
}

std::string Activitytitle(const CalendarDate& start, const CalendarDate& end) {
  std::string text = "Period: ";
  if (std::optional<std::string> from = Pictureddate(start))
    text += *from;
  else
    text = Format("Period: %2d/%2d/%d", start.day, start.month, start.year);
  text += " to ";
  if (std::optional<std::string> to = Pictureddate(end))
    text += *to;
  else
    text += Format("%2d/%2d/%d", end.day, end.month, end.year);
  return text;
}

StatementView& statement_view() {
  return *current_view;
}
void install_statement_view(StatementView* view) {
  current_view = view ? view : &silent_view;
}

void Customerstatement() {
  const std::optional<MemberRecord> customer = AskCustomer();
  if (!customer) return;
  const std::optional<std::vector<StatementEntry>> entries =
      Walk("Statement", customer->number, Historystart(), Today());
  if (!entries) return;
  const std::vector<std::string> rows = Statementrows(*entries, customer->balance);
  const MemberRecord& c = *customer;
  StatementScreen screen{"Statement", CustomerLine(c), rows, [&c, &rows] {
                           Runsinglepagejob(Choosetarget(G().settings.print_confirm != 0),
                                            [&](PrintTarget& t) { Printstatement(t, c, rows); });
                         }};
  statement_view().show_statement(screen);
}

void Customerperiodactivity() {
  const std::optional<MemberRecord> customer = AskCustomer();
  if (!customer) return;
  ReportSelection& s = G().report_selection;
  if (!Choosesalesperiod(s)) return;
  const CalendarDate start{s.start_year, s.start_month, s.start_day};
  const CalendarDate end{s.end_year, s.end_month, s.end_day};
  const std::optional<std::vector<StatementEntry>> entries =
      Walk("Customer period activity", customer->number, start, end);
  if (!entries) return;
  const std::vector<std::string> rows = Statementrows(*entries, customer->balance);
  const std::string name = FieldText(customer->name);
  StatementScreen screen{
      Cp1252ToUtf8(Activitytitle(start, end)), CustomerLine(*customer), rows, [&name, &rows] {
        size_t next = 0;
        Runpagedjob([&](PrintTarget& t) { Printactivitypage(t, name, rows, next); });
      }};
  statement_view().show_statement(screen);
}

void InstallStatementCommands() {
  SetHandler(Command::CustomerStatement, [](int) { Customerstatement(); });
  SetHandler(Command::CustomerPeriodActivity, [](int) { Customerperiodactivity(); });
  SetHandler(Command::DebtorLetter1, [](int) { Debtorletter(kDebtorLetter1); });
  SetHandler(Command::DebtorLetter2, [](int) { Debtorletter(kDebtorLetter2); });
  SetHandler(Command::PrintCustomerDetails, [](int) { Debtorletter(kCustomerDetails); });
}

}  // namespace tilo
