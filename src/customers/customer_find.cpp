// SPDX-License-Identifier: MIT
#include "customers/customer_find.h"

#include "core/customer_file.h"
#include "core/inventory.h"
#include "core/record_match.h"
#include "core/state.h"
#include "core/text.h"
#include "inventory/find_view.h"
#include "inventory/item_find.h"
#include "platform/platform.h"
#include "sale/basket.h"
#include "sale/commands.h"

namespace tilo {
namespace {

constexpr size_t kNameLimit = 29;
constexpr size_t kListRows = 32767;

void NoMatch() {
  Message("No match found", "Finished");
}

int64_t ByNumber(int64_t number, bool display) {
  if (!G().members.Contains(number) || Fetchmember(number) == 0) return 0;
  if (display) find_view().view_customer();
  return number;
}

std::string NameText(const MemberRecord& m) {
  return Cp1252ToUtf8(FieldText(m.name));
}

int64_t NameByForm(const std::string& pattern) {
  WalkOptions o = PatternWalk(pattern, TILO_FIELD(MemberRecord, name));
  o.read_failed = "member.dat";
  RecordWalk walk = G().members.Walk(std::move(o));
  while (walk.Next(&G().member)) {
    switch (find_view().find_customer(G().member)) {
      case FindChoice::Ok:
        return G().member.number;
      case FindChoice::Cancel:
        return 0;
      case FindChoice::Next:
        // The walk goes on inside the form, which words a failed read its own way.
        walk.set_read_failed("Member.dat");
        break;
    }
  }
  if (walk.end() == RecordWalk::End::Finished) NoMatch();
  return 0;
}

int64_t NameByList(const std::string& pattern) {
  WalkOptions o = PatternWalk(pattern, TILO_FIELD(MemberRecord, name));
  o.by_number = true;
  o.read_failed = "member.dat";
  RecordWalk walk = G().members.Walk(std::move(o));
  std::vector<std::string> rows;
  MemberRecord m{};
  while (walk.Next(&m)) {
    if (rows.size() == kListRows) {
      Message("Out of space", "Problem");
      break;
    }
    rows.push_back(std::to_string(m.number) + " " + NameText(m) + ",  " +
                   Cp1252ToUtf8(FieldText(m.road)));
  }
  if (walk.end() == RecordWalk::End::Failed || walk.end() == RecordWalk::End::Cancelled) return 0;
  if (rows.empty()) {
    NoMatch();
    return 0;
  }
  const int chosen = find_view().pick_row(rows);
  if (chosen < 0 || size_t(chosen) >= rows.size()) return 0;
  // The row's leading digits are the number, and the find by number runs on it.
  const int64_t number = LeadingNumber(rows[size_t(chosen)]);
  return NumberInRange(number) ? ByNumber(number, false) : 0;
}

}  // namespace

int64_t Findcustomer(const std::string& text, bool display) {
  const int64_t number = LeadingNumber(text);
  if (NumberInRange(number)) return ByNumber(number, display);
  return Findcustomername(text);
}

int64_t Findcustomerfor(const std::string& text) {
  const int64_t number = LeadingNumber(text);
  if (number > 0) return ByNumber(number, false);
  return Findcustomername(text);
}

int64_t Findcustomername(std::string text) {
  if (text.empty()) {
    auto reply = platform().prompt("Name", "Find customer");
    if (!reply) return 0;
    text = FindText(*reply, kNameLimit);
  }
  text = UpperCase(text.substr(0, kNameLimit));
  // An empty first character and the second become `?`; the text ends there.
  if (text.size() < 2) text = (text.empty() ? "?" : text.substr(0, 1)) + "?";
  if (G().settings.customer_search_list == 1) return NameByList(text);
  return NameByForm(text);
}

int64_t Findcustomerfragment(const std::string& text) {
  if (text.empty()) return 0;
  WalkOptions o = FragmentWalk({{UpperCase(text), {TILO_FIELD(MemberRecord, name)}}}, false);
  o.read_failed = "Member.dat";
  RecordWalk walk = G().members.Walk(std::move(o));
  while (walk.Next(&G().member)) {
    const MemberRecord& m = G().member;
    const Answer a = Message(std::to_string(m.number) + ", " + NameText(m),
                             "Search: No to continue", Buttons::YesNoCancel);
    if (a == Answer::No) continue;
    const int64_t number = m.number;
    if (a == Answer::Yes) find_view().view_customer();
    return number;
  }
  if (walk.end() == RecordWalk::End::Finished) NoMatch();
  return 0;
}

int64_t Findtelephone(const std::string& text) {
  if (text.empty()) return 0;
  const std::string wanted = UpperCase(text);
  WalkOptions o = FragmentWalk(
      {{wanted, {TILO_FIELD(MemberRecord, telephone), TILO_FIELD(MemberRecord, telephone2)}}},
      false);
  // Every record is read, and those numbered below 1 are passed over.
  o.keys = nullptr;
  o.test = [test = std::move(o.test)](const void* record) {
    return static_cast<const MemberRecord*>(record)->number >= 1 && test(record);
  };
  o.read_failed = "Member.dat";
  RecordWalk walk = G().members.Walk(std::move(o));
  while (walk.Next(&G().member)) {
    const MemberRecord& m = G().member;
    const std::string first = FieldText(m.telephone);
    const std::string phone =
        first.find(wanted) != std::string::npos ? first : FieldText(m.telephone2);
    const Answer a =
        Message(std::to_string(m.number) + ", " + NameText(m) + ": " + Cp1252ToUtf8(phone),
                "Search: Yes to halt, No to continue", Buttons::YesNoCancel);
    if (a == Answer::Yes) return m.number;
    if (a == Answer::Cancel) return 0;
  }
  if (walk.end() == RecordWalk::End::Finished) NoMatch();
  return 0;
}

int64_t PromptCustomer(const std::string& title) {
  constexpr size_t kPromptLength = 29;
  auto reply = platform().prompt("Number / name", title);
  if (!reply) return 0;
  std::string text = Utf8ToCp1252(*reply);
  if (text.size() > kPromptLength) text.resize(kPromptLength);
  return Customerfind(text);
}

}  // namespace tilo
