// SPDX-License-Identifier: MIT
// resn.dat, the reminder diary: 30 pages of 12,932 bytes, page p holding the
// reminders for p days from today. The diary offers 28 days (pages 0 to 27);
// pages 28 and 29 exist on disk and are blanked at every change of day.
#pragma once

#include <cstddef>
#include <cstdint>

namespace tilo {

inline constexpr int kReminderEntries = 200;
inline constexpr int kReminderTextSlots = 202;  // two spare, so a shift down has something to read
inline constexpr int kReminderTextWidth = 30;

#pragma pack(push, 1)
struct ResnRecord {
  int32_t day;                     // the page's own position, rewritten whenever it moves
  int32_t used[kReminderEntries];  // 2 in use, 0 free
  int32_t count;                   // entries in use
  int32_t zero;
  char customer[kReminderTextSlots][kReminderTextWidth];
  char item[kReminderTextSlots][kReminderTextWidth];
};
#pragma pack(pop)
static_assert(sizeof(ResnRecord) == 12932);
static_assert(offsetof(ResnRecord, day) == 0);
static_assert(offsetof(ResnRecord, used) == 4);
static_assert(offsetof(ResnRecord, count) == 804);
static_assert(offsetof(ResnRecord, zero) == 808);
static_assert(offsetof(ResnRecord, customer) == 812);
static_assert(offsetof(ResnRecord, item) == 6872);

inline constexpr const char* kReminderFile = "resn.dat";
inline constexpr int kReminderPages = 30;
inline constexpr int kReminderDaysShown = 28;

// A page with nothing on it, numbered `day`.
ResnRecord BlankReminderPage(int32_t day);
// Writes resn.dat anew as 30 blank pages numbered 0 to 29; false on failure.
bool CreateBlankReminderFile();

// Moves the diary forward by `days_passed` days at a change of day: page p goes
// to p - days_passed (renumbered) for p up to 27, the pages behind them are
// blank. From 28 days on, or when the file can't be read, the diary is made
// anew. Also blanks G().reminder_page. False (after "Unable to open resn.dat
// for complete update in Opendata.") when the file can't be made.
bool RollReminderDiary(int days_passed);

// Reads page 0 into G().reminder_page and returns its count of reminders; 0
// when the file can't be read.
int ReadTodaysReminders();

// One page of the diary; false (after "Data file: resn.dat.") when the file
// can't be opened.
bool ReadReminderPage(int page, ResnRecord& record);
bool WriteReminderPage(int page, const ResnRecord& record);

}  // namespace tilo
