// SPDX-License-Identifier: MIT
// resn.dat, the reminder diary: 30 pages of 12,932 bytes, page p holding the
// reminders for p days from today.
#pragma once

#include <cstdint>

namespace tilo {

#pragma pack(push, 1)
struct ResnRecord {
  int32_t day;
  int32_t used[200];
  int32_t count;
  int32_t zero;
  char customer[202][30];
  char item[202][30];
};
#pragma pack(pop)
static_assert(sizeof(ResnRecord) == 12932);

inline constexpr const char* kReminderFile = "resn.dat";
inline constexpr int kReminderPages = 30;

// Writes resn.dat anew as 30 cleared pages numbered 0 to 29; false on failure.
bool CreateBlankReminderFile();
// Reads page 0 into G().reminder_page; the count of today's reminders, or -1
// when the file can't be read.
int ReadTodaysReminders();

}  // namespace tilo
