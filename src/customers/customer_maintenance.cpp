// SPDX-License-Identifier: MIT
#include "customers/customer_maintenance.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "core/activity_log.h"
#include "core/clock.h"
#include "core/inventory.h"
#include "core/state.h"
#include "core/text.h"
#include "platform/sounds.h"
#include "sale/basket.h"
#include "sale/commands.h"
#include "sale/pricing.h"

namespace tilo {
namespace {

constexpr const char* kProblem = "Problem";
constexpr size_t kPromptLength = 29;

CustomerView no_screen;
CustomerView* installed = &no_screen;

void Sound(int id) {
  if (G().settings.sound_off == 0) platform().play_sound(id);
}

std::string Name(const MemberRecord& r) {
  return FieldText(r.name);
}

// "%I64d Name: %s", the title of the boxes that ask about one customer.
std::string NumberAndName(const MemberRecord& r) {
  return std::to_string(r.number) + " Name: " + Cp1252ToUtf8(Name(r));
}

// The customer typed at a "Number / name" prompt, into G().member; 0 when none.
int64_t PromptCustomer(const char* title) {
  auto reply = platform().prompt("Number / name", title);
  if (!reply) return 0;
  std::string text = Utf8ToCp1252(*reply);
  if (text.size() > kPromptLength) text.resize(kPromptLength);
  return Customerfind(text);
}

// The walk over the live customers in number order, reading each record by its
// position; `visit` answers false to stop. Slots are counted from the first
// after the deleted block.
template <class Visit>
void WalkCustomers(Visit visit) {
  IndexedFile& members = G().members;
  MemberRecord record;
  for (size_t slot = 0; slot < members.index.size(); ++slot) {
    const IndexEntry entry = members.index[slot];
    if (entry.number < 1) continue;
    if (!members.ReadAt(entry.position, &record)) return;
    if (!visit(slot, entry.position, record)) return;
  }
}

ListRow DoubleRow(const MemberRecord& r) {
  ListRow row;
  row.number = r.number;
  row.columns = {std::to_string(r.number), Cp1252ToUtf8(Name(r)),
                 Cp1252ToUtf8(FieldText(r.telephone)), MoneyText(r.balance)};
  return row;
}

ListRow AddressRow(const MemberRecord& r) {
  ListRow row;
  row.number = r.number;
  row.columns = {std::to_string(r.number), Cp1252ToUtf8(Name(r)), Cp1252ToUtf8(FieldText(r.road)),
                 Cp1252ToUtf8(FieldText(r.telephone))};
  return row;
}

bool StartsWith(const std::string& text, const std::string& start) {
  return text.compare(0, start.size(), start) == 0;
}

void ShowDoubles(const std::vector<ListRow>& rows, const char* title) {
  if (rows.empty()) return;
  ScreenList list(title, RowsFill(rows), Viewcustomer);
  list.Load();
  if (ScreenListView* view = screen_list_view()) view->show(list);
}

// The lines that an amendment logs for one state of the record.
std::string AuditLines(const MemberRecord& r) {
  return "\r\n" + FieldText(r.road) + ", " + FieldText(r.area) + "\r\n" + FieldText(r.town) + ", " +
         FieldText(r.postcode) + "\r\nTel: " + FieldText(r.telephone) +
         ", Category: " + std::to_string(r.group) + "\r\nComment: " + FieldText(r.comment);
}

bool GroupInRange(int32_t group) {
  return group >= 1 && group <= 2000;
}

// The two digits of the month and the four of the year in a stamp text; 0 for
// what doesn't parse.
int Digits(const char* text, size_t count) {
  return int(LeadingNumber(std::string_view(text, count)));
}

}  // namespace

FormButton CustomerView::edit(CustomerLayout, CustomerEntries&) {
  return FormButton::Cancel;
}

void CustomerView::view(CustomerPage&) {}

CustomerView& customer_view() {
  return *installed;
}

void install_customer_view(CustomerView* view) {
  installed = view ? view : &no_screen;
}

CustomerPage PageOf(const MemberRecord& r) {
  CustomerPage page;
  page.entries = EntriesOf(r);
  page.last_used = StampShown(r.last_used, sizeof r.last_used);
  page.last_payment = StampShown(r.last_payment, sizeof r.last_payment);
  page.origination = Cp1252ToUtf8(FieldText(r.origination));
  page.terms = TermsText(r.terms);
  return page;
}

bool NextCustomerPage(CustomerPage& page) {
  const int64_t number = G().member.number;
  const NumberIndex& index = G().members.index;
  const size_t slot = Findnumber(index, number < 0 ? 1 : number + 1);
  if (slot >= index.size() || Fetchmember(index[slot].number) == 0) return false;
  page = PageOf(G().member);
  return true;
}

const char* CheckNewCustomer(const MemberRecord& r) {
  if (!NumberInRange(r.number)) return "Number outside range.";
  if (std::strlen(r.name) < 2) return "The name must have at least two characters.";
  if (!GroupInRange(r.group)) return "Invalid category (1-2000)";
  return nullptr;
}

Doubles FindDoubles(const MemberRecord& fresh) {
  Doubles d;
  const std::string name = Name(fresh);
  const std::string road = FieldText(fresh.road);
  const NameKey key{fresh.name[0], fresh.name[1]};
  const std::vector<NameKey>& keys = G().members.name_keys;
  WalkCustomers([&](size_t, int64_t position, const MemberRecord& r) {
    const bool key_agrees = size_t(position) < keys.size() && keys[size_t(position)] == key;
    if (d.by_name.size() < size_t(kListRows) && key_agrees && Name(r) == name)
      d.by_name.push_back(DoubleRow(r));
    if (d.by_address.size() < size_t(kListRows) && StartsWith(FieldText(r.road), road))
      d.by_address.push_back(DoubleRow(r));
    return d.by_name.size() < size_t(kListRows) || d.by_address.size() < size_t(kListRows);
  });
  return d;
}

void Addcustomer() {
  State& g = G();
  for (;;) {
    CustomerEntries entries = BlankCustomer();
    CustomerLayout layout = CustomerLayout::New;
    MemberRecord record;
    FormButton button;
    for (;;) {
      button = customer_view().edit(layout, entries);
      if (button == FormButton::Cancel) return;
      // A new record starts as zero bytes; a reopened form keeps the balance typed.
      record = MemberRecord{};
      StoreEntries(entries, record, true);
      const char* problem = CheckNewCustomer(record);
      if (!problem) break;
      Sound(kSoundRefused);
      Message(problem, kProblem);
      layout = CustomerLayout::Reopened;
    }
    CompleteNewMember(record);
    if (g.members.Contains(record.number)) {
      Message("Number in use.", kProblem);
      return;
    }
    if (g.settings.new_customer_listing == 1) {
      const Doubles doubles = FindDoubles(record);
      ShowDoubles(doubles.by_name, "New customer search: name");
      ShowDoubles(doubles.by_address, "New customer search: address");
    }
    if (Message("Store record?", "New customer", Buttons::OkCancel) != Answer::Ok) return;
    if (!Insertmember(record)) return;
    g.member = record;
    ++g.settings.new_customers_today;
    Sound(kSoundAdded);
    if (button != FormButton::Next) return;
  }
}

void Amendfoundcustomer() {
  State& g = G();
  g.member_before = g.member;
  CustomerEntries entries = EntriesOf(g.member);
  if (customer_view().edit(CustomerLayout::Amend, entries) != FormButton::Ok) return;
  MemberRecord record = g.member;
  StoreEntries(entries, record, false);
  if (record.number != g.member_before.number) {
    Message("Number cannot be changed", kProblem);
    return;
  }
  if (std::strlen(record.name) < 2) {
    Sound(kSoundRefused);
    Message("The name must have at least two characters.", kProblem);
    return;
  }
  if (!GroupInRange(record.group)) {
    Message("Invalid category (1-2000)", kProblem);
    return;
  }
  g.member = record;
  if (!Rewritemember()) return;
  Sound(kSoundAdded);

  const MemberRecord& before = g.member_before;
  Timestamp();
  const std::string entry = "\r\n" + LogStamp() + "  Customer " + std::to_string(before.number) +
                            " amended:\r\nBefore: " + Name(before) + AuditLines(before) +
                            "\r\n\r\nAfter: " + Name(record) + AuditLines(record);
  if (!AppendToLog(entry)) Message("Data file: bun4.dat, not present.", "Fatal error");
}

void Amendcustomer() {
  if (PromptCustomer("Amend customer") != 0) Amendfoundcustomer();
}

bool Removecustomer() {
  const int64_t number = G().member.number;
  const std::string name = Name(G().member);
  if (!Removemember()) return false;
  Timestamp();
  const char* t = G().stamp_text;
  const LocalTime& now = G().now;
  char head[64];
  std::snprintf(head, sizeof head, "\r\n%c%c:%c%c %d/%d/%d Customer ", t[0], t[1], t[3], t[4],
                now.day, now.month, now.year);
  const std::string entry = head + std::to_string(number) + ", " + name + " deleted.\r\n";
  if (!AppendToLog(entry)) Message("Data file: film.dat, not present.", "Fatal error");
  return true;
}

void Deletecustomer() {
  if (PromptCustomer("Delete customer") == 0) return;
  if (Message("Are you sure?", NumberAndName(G().member), Buttons::OkCancel) != Answer::Ok) return;
  Removecustomer();
}

MonthYear PruneCutoff(int month, int year) {
  month -= 6;
  if (month < 1) {
    month += 12;
    --year;
  }
  return {month, year};
}

void Prunecustomers() {
  State& g = G();
  auto start = platform().prompt("Enter the start number:", "Prune members", "1");
  if (!start || LeadingNumber(Utf8ToCp1252(*start)) < 1) return;
  const LocalTime now = platform().now();
  const MonthYear cutoff = PruneCutoff(now.month, now.year);
  const bool omit_owing =
      Message("Omit those that owe money?", "Prune members", Buttons::YesNo) == Answer::Yes;

  // The busy box is taken down before each question and put up again after it,
  // so that it never stands over the question.
  std::unique_ptr<Progress> progress;
  IndexedFile& members = g.members;
  MemberRecord r;
  // Slot by slot: a deletion moves the entries below the present one up a place,
  // so the next one still waits one slot further on.
  for (size_t slot = 0; slot < members.index.size(); ++slot) {
    if (!progress)
      progress = platform().begin_progress("Looking through the customers..", "Prune members");
    if (!progress->step(int64_t(slot), int64_t(members.index.size()))) return;
    const IndexEntry entry = members.index[slot];
    if (entry.number < 1) continue;
    if (!members.ReadAt(entry.position, &r)) return;
    if (r.number < 1 || r.tax != 0) continue;
    const int month = Digits(r.last_used + 8, 2);
    const int year = Digits(r.last_used + 11, 4);
    if (month != 0 && year != 0 &&
        (year > cutoff.year || (year == cutoff.year && month > cutoff.month)))
      continue;
    if (omit_owing && Roundmoney(r.balance) != 0) continue;
    char text[96];
    std::snprintf(text, sizeof text, "Last used: %s Balance: %.2f", FieldText(r.last_used).c_str(),
                  double(r.balance));
    progress.reset();
    const Answer a = Message(Cp1252ToUtf8(text), NumberAndName(r), Buttons::YesNoCancel);
    if (a == Answer::Cancel) return;
    if (a != Answer::Yes) continue;
    g.member = r;
    members.position = entry.position;
    Removecustomer();
  }
}

void Viewcustomer(int64_t number) {
  if (Fetchmember(number) == 0) return;
  CustomerPage page = PageOf(G().member);
  customer_view().view(page);
}

void Customersbyaddress() {
  auto reply = platform().prompt("Enter first line of address", "By address");
  if (!reply) return;
  const std::string road = UpperCase(Utf8ToCp1252(*reply));
  ListFill fill = [road](int64_t start, std::vector<ListRow>& rows, bool& at_end) {
    IndexedFile& members = G().members;
    auto progress = platform().begin_progress("Looking through the customers..", "By address");
    MemberRecord r;
    size_t slot = size_t(start);
    for (; slot < members.index.size() && int(rows.size()) < kListRows; ++slot) {
      if (!progress->step(int64_t(slot), int64_t(members.index.size()))) break;
      const IndexEntry entry = members.index[slot];
      if (entry.number < 1) continue;
      if (!members.ReadAt(entry.position, &r)) break;
      if (StartsWith(FieldText(r.road), road)) rows.push_back(AddressRow(r));
    }
    at_end = slot >= members.index.size();
    return int64_t(slot);
  };
  ScreenList list("Customer list by address", fill, Viewcustomer);
  Showscreenlist(list);
}

void InstallCustomerCommands() {
  SetHandler(Command::AddCustomer, [](int) { Addcustomer(); });
  SetHandler(Command::AmendCustomer, [](int) { Amendcustomer(); });
  SetHandler(Command::DeleteCustomer, [](int) { Deletecustomer(); });
  SetHandler(Command::PruneCustomers, [](int) { Prunecustomers(); });
  SetHandler(Command::CustomerListByAddress, [](int) { Customersbyaddress(); });
}

}  // namespace tilo
