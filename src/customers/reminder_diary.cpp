// SPDX-License-Identifier: MIT
#include "customers/reminder_diary.h"

#include <chrono>
#include <cstring>

#include "core/customer_file.h"
#include "core/inventory.h"
#include "core/state.h"
#include "core/text.h"
#include "customers/customer_find.h"
#include "inventory/item_find.h"
#include "platform/files.h"
#include "reports/listings.h"
#include "reports/report_walk.h"
#include "sale/commands.h"

namespace tilo {
namespace {

constexpr const char* kDayNames[7] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                      "Thursday", "Friday", "Saturday"};

ReminderView*& installed_view() {
  static ReminderView* view = nullptr;
  return view;
}

// At most `width` characters of a typed text, in the file's encoding.
std::string Cut(const std::string& utf8, size_t width) {
  std::string bytes = Utf8ToCp1252(utf8);
  if (bytes.size() > width) bytes.resize(width);
  return bytes;
}

std::string Slottext(const char (&slot)[kReminderTextWidth]) {
  return Cp1252ToUtf8(FieldText(slot));
}

// The page at `offset`, read for a command; none after the file's message, or
// when the day is empty and the command needs entries.
std::optional<ResnRecord> Openday(int offset, bool adding) {
  ResnRecord page;
  if (!ReadReminderPage(offset, page)) return std::nullopt;
  if (!adding && page.count == 0) {
    Message("No reminders recorded.", "Reminders");
    return std::nullopt;
  }
  return page;
}

// "Select day:" over the 28 days shown, or today straight away.
std::optional<int> Chooseday(bool today) {
  if (today) return 0;
  auto diary = ReadWholeFile(kReminderFile);
  if (!diary) {
    Message("Data file: resn.dat, not present.", "Fatal error");
    return std::nullopt;
  }
  diary->resize(sizeof(ResnRecord) * kReminderPages, '\0');
  const LocalTime now = platform().now();
  std::vector<std::string> rows;
  for (int p = 0; p < kReminderDaysShown; ++p) {
    ResnRecord page;
    std::memcpy(&page, diary->data() + p * sizeof(ResnRecord), sizeof page);
    rows.push_back(Reminderdayrow(now, p, page.count));
  }
  auto chosen = listing_view().choose_row("Select day:", rows);
  if (!chosen) return std::nullopt;
  return int(*chosen);
}

// The entry chosen in a list titled `title`, checked as a slot in use.
std::optional<int> Chooseentry(const ResnRecord& page, const std::string& title,
                               const std::string& refusal_title) {
  std::vector<std::string> rows;
  for (int slot = 0; slot < kReminderEntries && Reminderinuse(page, slot); ++slot)
    rows.push_back(Reminderentryrow(page, slot));
  auto chosen = listing_view().choose_row(title, rows);
  if (!chosen) return std::nullopt;
  const int slot = int(*chosen);
  if (slot + 1 < 1 || slot + 1 > kReminderEntries || !Reminderinuse(page, slot)) {
    Message("No reminders held", refusal_title);
    return std::nullopt;
  }
  return slot;
}

// A text for Amend: the present one offered, at most 29 characters accepted.
std::optional<std::string> Asktext(const std::string& prompt, const std::string& refusal_title,
                                   const char (&present)[kReminderTextWidth]) {
  auto reply = platform().prompt(prompt, "Amend Reminder", Slottext(present));
  if (!reply) return std::nullopt;
  std::string bytes = Utf8ToCp1252(*reply);
  if (bytes.size() > size_t(kReminderAmendWidth)) {
    Message("30 characters", refusal_title);
    return std::nullopt;
  }
  return bytes;
}

}  // namespace

LocalTime Reminderdate(const LocalTime& today, int offset) {
  using namespace std::chrono;
  const sys_days start =
      year_month_day{year{today.year}, month{unsigned(today.month)}, day{unsigned(today.day)}};
  const sys_days then = start + days{offset};
  const year_month_day ymd{then};
  LocalTime t;
  t.year = int(ymd.year());
  t.month = int(unsigned(ymd.month()));
  t.day = int(unsigned(ymd.day()));
  t.day_of_week = int(weekday{then}.c_encoding());
  return t;
}

const char* Reminderdayname(int day_of_week) {
  return kDayNames[((day_of_week % 7) + 7) % 7];
}

std::string Reminderdayrow(const LocalTime& today, int offset, int count) {
  const LocalTime d = Reminderdate(today, offset);
  std::string row = platform().long_date(d.year, d.month, d.day);
  if (row.empty())
    row = Format("%s %d/%d/%d", Reminderdayname(d.day_of_week), d.day, d.month, d.year);
  if (count != 0) row += Format(" (%d)", count);
  return row;
}

std::string Reminderentryrow(const ResnRecord& page, int slot) {
  return Cp1252ToUtf8(FieldText(page.customer[slot]).substr(0, 10) + " - " +
                      FieldText(page.item[slot]).substr(0, 10));
}

int Placereminder(ResnRecord& page, const std::string& customer, const std::string& item) {
  int slot = 0;
  while (slot < kReminderEntries && page.used[slot] != 0) ++slot;
  if (slot == kReminderEntries) return -1;
  SetField(page.customer[slot], UpperCase(Cut(customer, kReminderFormWidth)));
  SetField(page.item[slot], UpperCase(Cut(item, kReminderFormWidth)));
  page.used[slot] = 2;
  ++page.count;
  return slot;
}

bool Reminderinuse(const ResnRecord& page, int slot) {
  return slot >= 0 && slot < kReminderEntries && page.used[slot] != 0;
}

void Removereminder(ResnRecord& page, int slot) {
  // The text slots run two past the last entry, so the move always has a
  // neighbour to read.
  for (int i = slot; i < kReminderEntries - 1; ++i) {
    page.used[i] = page.used[i + 1];
    std::memcpy(page.customer[i], page.customer[i + 1], kReminderTextWidth);
    std::memcpy(page.item[i], page.item[i + 1], kReminderTextWidth);
  }
  std::memcpy(page.customer[kReminderEntries - 1], page.customer[kReminderEntries],
              kReminderTextWidth);
  std::memcpy(page.item[kReminderEntries - 1], page.item[kReminderEntries], kReminderTextWidth);
  page.used[kReminderEntries - 1] = 0;
  --page.count;
}

std::vector<ListRow> Reminderlistrows(const ResnRecord& page) {
  std::vector<ListRow> rows;
  for (int slot = 0; slot < kReminderEntries; ++slot) {
    if (!Reminderinuse(page, slot)) continue;
    ListRow row;
    row.number = slot + 1;
    row.columns = {std::to_string(slot + 1), Slottext(page.customer[slot]),
                   Slottext(page.item[slot]), ""};
    rows.push_back(std::move(row));
  }
  return rows;
}

std::vector<std::string> Reminderprintrows(const ResnRecord& page) {
  std::vector<std::string> rows;
  int n = 0;
  for (int slot = 0; slot < kReminderEntries; ++slot) {
    if (!Reminderinuse(page, slot)) continue;
    rows.push_back(Format("%-16d %-30s %s", ++n, FieldText(page.customer[slot]).c_str(),
                          FieldText(page.item[slot]).c_str()));
  }
  return rows;
}

std::string Reminderheading(const LocalTime& today, int offset, int count) {
  const LocalTime d = Reminderdate(today, offset);
  return Format("Reminders: %s %d/%d/%d  Total: %d", Reminderdayname(d.day_of_week), d.day, d.month,
                d.year, count);
}

ReminderAdd::ReminderAdd(int offset, const ResnRecord& page) : offset_(offset), page_(page) {}

std::string ReminderAdd::date_text() const {
  const LocalTime d = Reminderdate(platform().now(), offset_);
  return Format("Day: %d Month: %d Year: %d", d.day, d.month, d.year);
}

std::vector<std::string> ReminderAdd::by_item() const {
  std::vector<std::string> rows;
  for (int slot = 0; slot < kReminderEntries; ++slot)
    if (Reminderinuse(page_, slot))
      rows.push_back(Slottext(page_.item[slot]) + " (by: " + Slottext(page_.customer[slot]) + ")");
  return rows;
}

std::vector<std::string> ReminderAdd::by_customer() const {
  std::vector<std::string> rows;
  for (int slot = 0; slot < kReminderEntries; ++slot)
    if (Reminderinuse(page_, slot))
      rows.push_back(Slottext(page_.customer[slot]) + " (item: " + Slottext(page_.item[slot]) +
                     ")");
  return rows;
}

bool ReminderAdd::Add(const std::string& customer, const std::string& item) {
  const int slot = Placereminder(page_, customer, item);
  if (slot >= 0 && slot <= kReminderLastWritten) {
    WriteReminderPage(page_.day, page_);
    return true;
  }
  // The last slot is held on the open page only: the day is full.
  Message("Total reached", "Reminders");
  return slot >= 0;
}

std::string ReminderAdd::FindCustomer() {
  const int64_t number = PromptCustomer("Find customer");
  if (number <= 0 || Fetchmember(number) == 0) return "";
  const MemberRecord& m = G().member;
  return Cp1252ToUtf8(Format("%lld, %s %s", (long long)m.number, FieldText(m.initials).c_str(),
                             FieldText(m.name).c_str()));
}

std::string ReminderAdd::FindItem() {
  auto reply = platform().prompt("Find item number / description / fragment", "Find");
  if (!reply) return "";
  const int64_t number = Finditem(FindText(*reply, 29), false, false);
  if (number <= 0 || Fetchfilm(number) == 0) return "";
  return Cp1252ToUtf8(FieldText(G().film.description));
}

ReminderView& reminder_view() {
  static ReminderView headless;
  return installed_view() ? *installed_view() : headless;
}

void install_reminder_view(ReminderView* view) {
  installed_view() = view;
}

void Addreminder(bool today) {
  auto offset = Chooseday(today);
  if (!offset) return;
  auto page = Openday(*offset, true);
  if (!page) return;
  if (page->count >= kReminderEntries) {
    Message("Total reached", "Reminders");
    return;
  }
  ReminderAdd add(*offset, *page);
  reminder_view().add_form(add);
}

void Listreminders() {
  auto offset = Chooseday(false);
  if (!offset) return;
  auto page = Openday(*offset, false);
  if (!page) return;
  ScreenList list(Reminderheading(platform().now(), *offset, page->count),
                  RowsFill(Reminderlistrows(*page)));
  Showscreenlist(list);
}

void Printreminders() {
  auto offset = Chooseday(false);
  if (!offset) return;
  auto page = Openday(*offset, false);
  if (!page) return;
  const std::string header = FieldText(G().heading.site_name) + " " +
                             Reminderheading(platform().now(), *offset, page->count);
  auto rows = Rowsource(Reminderprintrows(*page));
  Printlisting(header, "", *rows);
}

void Amendreminder() {
  auto offset = Chooseday(false);
  if (!offset) return;
  auto page = Openday(*offset, false);
  if (!page) return;
  auto slot = Chooseentry(*page, "Amend reservation", "Amend Reminder");
  if (!slot) return;
  auto customer =
      Asktext("Customer details:", "Input exceeds aloowed length", page->customer[*slot]);
  if (!customer) return;
  auto item = Asktext("Item:", "Input exceeds allowed length", page->item[*slot]);
  if (!item) return;
  SetField(page->customer[*slot], *customer);
  SetField(page->item[*slot], *item);
  if (WriteReminderPage(*offset, *page)) Message("Updated", "Reminders");
}

void Deletereminder() {
  auto offset = Chooseday(false);
  if (!offset) return;
  auto page = Openday(*offset, false);
  if (!page) return;
  auto slot = Chooseentry(*page, "Delete reservation", "Amend Reminders");
  if (!slot) return;
  Removereminder(*page, *slot);
  if (WriteReminderPage(*offset, *page)) Message("Updated", "Reminders");
}

void InstallReminderHandlers() {
  using C = Command;
  SetHandler(C::AddReminder, [](int) { Addreminder(false); });
  SetHandler(C::AddReminderToday, [](int) { Addreminder(true); });
  SetHandler(C::ListReminders, [](int) { Listreminders(); });
  SetHandler(C::PrintReminders, [](int) { Printreminders(); });
  SetHandler(C::AmendReminder, [](int) { Amendreminder(); });
  SetHandler(C::DeleteReminder, [](int) { Deletereminder(); });
}

}  // namespace tilo
