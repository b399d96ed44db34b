// SPDX-License-Identifier: MIT
#include "core/reminders.h"

#include <cstring>
#include <string>

#include "core/state.h"
#include "platform/files.h"

namespace tilo {

bool CreateBlankReminderFile() {
  std::string pages(sizeof(ResnRecord) * kReminderPages, '\0');
  for (int32_t p = 0; p < kReminderPages; ++p)
    std::memcpy(pages.data() + p * sizeof(ResnRecord), &p, sizeof p);
  return ReplaceFile(kReminderFile, pages);
}

int ReadTodaysReminders() {
  File f(kReminderFile, File::Mode::Read);
  auto& page = G().reminder_page;
  if (!f || f.read(page.data(), int64_t(page.size())) < 0) return -1;
  ResnRecord header;
  std::memcpy(&header, page.data(), sizeof header);
  return header.count;
}

}  // namespace tilo
