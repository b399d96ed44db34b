// SPDX-License-Identifier: MIT
#include "customers/customer_maintenance.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "core/activity_log.h"
#include "core/clock.h"
#include "core/inventory.h"
#include "core/record_batch.h"
#include "core/state.h"
#include "core/text.h"
#include "core/write_batch.h"
#include "customers/customer_balance.h"
#include "customers/customer_find.h"
#include "inventory/find_view.h"
#include "platform/sounds.h"
#include "sale/basket.h"
#include "sale/commands.h"
#include "sale/pricing.h"

namespace tilo {
namespace {

constexpr const char* kProblem = "Problem";

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

// The walks over member.dat: deleted records are passed over unread.
WalkOptions CustomerWalk(bool by_number, const char* title) {
  WalkOptions options;
  options.by_number = by_number;
  options.read_failed = "Member.dat";
  options.keys = LiveKey;
  options.busy_text = "Looking through the customers..";
  options.busy_title = title;
  return options;
}

// Keeps the `kListRows` lowest numbers offered, in number order.
void KeepLowest(std::vector<ListRow>& rows, ListRow row) {
  auto at = std::upper_bound(rows.begin(), rows.end(), row.number,
                             [](int64_t n, const ListRow& r) { return n < r.number; });
  if (at - rows.begin() >= kListRows) return;
  rows.insert(at, std::move(row));
  if (rows.size() > size_t(kListRows)) rows.pop_back();
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
  // One pass in file order over every live record (the road test needs them
  // all); the rows are gathered as the records go by, and none is handed back.
  WalkOptions options = CustomerWalk(false, "New customer");
  options.test = [&](const void* record) {
    const auto& r = *static_cast<const MemberRecord*>(record);
    if (r.number < 1) return false;
    const bool key_agrees = NameKey{r.name[0], r.name[1]} == key;
    if (key_agrees && Name(r) == name) KeepLowest(d.by_name, DoubleRow(r));
    // Compared in place: this runs for every customer in the file.
    if (std::strncmp(r.road, road.c_str(), road.size()) == 0)
      KeepLowest(d.by_address, DoubleRow(r));
    return false;
  };
  MemberRecord unused;
  G().members.Walk(std::move(options)).Next(&unused);
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
    if (!WriteTogether(g.members, [&] { return Insertmember(record); })) return;
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
  const MemberRecord& before = g.member_before;
  Timestamp();
  const std::string entry = "\r\n" + LogStamp() + "  Customer " + std::to_string(before.number) +
                            " amended:\r\nBefore: " + Name(before) + AuditLines(before) +
                            "\r\n\r\nAfter: " + Name(record) + AuditLines(record);
  // The record and its before-and-after in the log are written together.
  if (!WriteTogether(g.members, Rewritemember, [&](WriteBatch& batch) {
        batch.Append(kActivityLog, entry, "Data file: bun4.dat, not present.", "Fatal error");
      }))
    return;
  Sound(kSoundAdded);
}

void Amendcustomer() {
  if (PromptCustomer("Amend customer") != 0) Amendfoundcustomer();
}

bool Removecustomer() {
  const int64_t number = G().member.number;
  const std::string name = Name(G().member);
  Timestamp();
  const char* t = G().stamp_text;
  const LocalTime& now = G().now;
  char head[64];
  std::snprintf(head, sizeof head, "\r\n%c%c:%c%c %d/%d/%d Customer ", t[0], t[1], t[3], t[4],
                now.day, now.month, now.year);
  const std::string entry = head + std::to_string(number) + ", " + name + " deleted.\r\n";
  return WriteTogether(G().members, Removemember, [&](WriteBatch& batch) {
    batch.Append(kActivityLog, entry, "Data file: film.dat, not present.", "Fatal error");
  });
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

  // In number order; between records the file is closed and the busy box down,
  // so a deletion (which moves index entries) is safe and the walk goes on from
  // the next number.
  WalkOptions options = CustomerWalk(true, "Prune members");
  options.test = [&](const void* record) {
    const auto& r = *static_cast<const MemberRecord*>(record);
    if (r.number < 1 || r.tax != 0) return false;
    const int month = Digits(r.last_used + 8, 2);
    const int year = Digits(r.last_used + 11, 4);
    if (month != 0 && year != 0 &&
        (year > cutoff.year || (year == cutoff.year && month > cutoff.month)))
      return false;
    return !(omit_owing && Roundmoney(r.balance) != 0);
  };
  RecordWalk walk = g.members.Walk(std::move(options));
  MemberRecord r;
  while (walk.Next(&r)) {
    char text[96];
    std::snprintf(text, sizeof text, "Last used: %s Balance: %.2f", FieldText(r.last_used).c_str(),
                  double(r.balance));
    const Answer a = Message(Cp1252ToUtf8(text), NumberAndName(r), Buttons::YesNoCancel);
    if (a == Answer::Cancel) return;
    if (a != Answer::Yes) continue;
    g.member = r;  // the walk left its position in the file's
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
  // A page starts at a number (0 for the first); the walk goes in number order
  // and stops at the fourteenth match, whose number starts the next page.
  ListFill fill = [road](int64_t start, std::vector<ListRow>& rows, bool& at_end) {
    WalkOptions options = CustomerWalk(true, "By address");
    options.test = [&](const void* record) {
      const auto& r = *static_cast<const MemberRecord*>(record);
      return r.number >= start && StartsWith(FieldText(r.road), road);
    };
    RecordWalk walk = G().members.Walk(std::move(options));
    MemberRecord r;
    while (walk.Next(&r)) {
      if (int(rows.size()) == kListRows) {
        at_end = false;
        return r.number;
      }
      rows.push_back(AddressRow(r));
    }
    at_end = true;
    return int64_t(0);
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
  SetHandler(Command::AmendBalance, [](int) { Amendbalance(); });
  // A customer found from the menus shows in view 803.
  SetCustomerView([] {
    CustomerPage page = PageOf(G().member);
    customer_view().view(page);
  });
}

}  // namespace tilo
