// SPDX-License-Identifier: MIT
// The reminder diary's commands: Add, Add today, List, Print, Amend and Delete
// on one day's page of resn.dat. A day keeps up to 200 entries packed from slot
// 0, so a row chosen in a list is its slot. The 200th entry (slot 199) is held
// in the open page only and never reaches the file.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/reminders.h"
#include "platform/platform.h"
#include "reports/screen_list.h"

namespace tilo {

inline constexpr int kReminderFormWidth = 28;   // the add form's fields
inline constexpr int kReminderAmendWidth = 29;  // what Amend accepts
inline constexpr int kReminderLastWritten = 198;

// The date `offset` days after `today`.
LocalTime Reminderdate(const LocalTime& today, int offset);
// "Sunday" ... "Saturday".
const char* Reminderdayname(int day_of_week);
// A row of "Select day:": the long date (UTF-8), " (%d)" when the day has entries.
std::string Reminderdayrow(const LocalTime& today, int offset, int count);
// A row of the amend and delete lists: the first 10 characters of each text.
std::string Reminderentryrow(const ResnRecord& page, int slot);

// Puts an entry in the first free slot (texts as typed, UTF-8: cut to 28
// characters, folded to upper case); the slot, or -1 when the page is full.
int Placereminder(ResnRecord& page, const std::string& customer, const std::string& item);
// True when `slot` holds an entry.
bool Reminderinuse(const ResnRecord& page, int slot);
// Removes the entry at `slot`; the entries above it move down one.
void Removereminder(ResnRecord& page, int slot);

// The rows of the screen list (entry, customer, item) and of the printout.
std::vector<ListRow> Reminderlistrows(const ResnRecord& page);
std::vector<std::string> Reminderprintrows(const ResnRecord& page);
// "Reminders: %s %d/%d/%d  Total: %d" for the page `offset` days ahead.
std::string Reminderheading(const LocalTime& today, int offset, int count);

// Form INVES2 as it sees the day being added to.
class ReminderAdd {
 public:
  ReminderAdd(int offset, const ResnRecord& page);
  // "Day: %d Month: %d Year: %d", or the long date (UTF-8).
  std::string date_text() const;
  // "%s (by: %s)" (item, customer) and "%s (item: %s)" (customer, item), UTF-8.
  std::vector<std::string> by_item() const;
  std::vector<std::string> by_customer() const;
  // The add button and OK: stores the entry; false when nothing was stored.
  bool Add(const std::string& customer, const std::string& item);
  // The search buttons: the text to put into the field, "" when nothing found.
  std::string FindCustomer();
  std::string FindItem();
  const ResnRecord& page() const { return page_; }

 private:
  int offset_;
  ResnRecord page_;
};

// The forms of the diary as the logic sees them. Without a screen the add form
// closes at once.
class ReminderView {
 public:
  virtual ~ReminderView() = default;
  virtual void add_form(ReminderAdd& /*add*/) {}
};
ReminderView& reminder_view();
void install_reminder_view(ReminderView* view);

// The commands.
void Addreminder(bool today);
void Listreminders();
void Printreminders();
void Amendreminder();
void Deletereminder();
void InstallReminderHandlers();

}  // namespace tilo
