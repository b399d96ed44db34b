// SPDX-License-Identifier: MIT
#include "core/reminders.h"

#include <cstring>
#include <string>

#include "core/state.h"
#include "platform/files.h"
#include "platform/platform.h"

namespace tilo {
namespace {

constexpr int64_t kPageSize = sizeof(ResnRecord);

void SetPageDay(char* page, int32_t day) {
  std::memcpy(page, &day, sizeof day);
}

void BlankWorkPage() {
  ResnRecord blank = BlankReminderPage(0);
  std::memcpy(G().reminder_page.data(), &blank, sizeof blank);
}

}  // namespace

ResnRecord BlankReminderPage(int32_t day) {
  ResnRecord page{};
  page.day = day;
  return page;
}

bool CreateBlankReminderFile() {
  std::string pages(size_t(kPageSize) * kReminderPages, '\0');
  for (int32_t p = 0; p < kReminderPages; ++p) SetPageDay(pages.data() + p * kPageSize, p);
  return ReplaceFile(kReminderFile, pages);
}

bool RollReminderDiary(int days_passed) {
  BlankWorkPage();
  if (days_passed >= 0 && days_passed < kReminderDaysShown) {
    // The whole diary is small: the moved image is built in memory and replaces
    // the file in one step, so a crash leaves the old diary or the new one.
    if (auto old = ReadWholeFile(kReminderFile)) {
      std::string pages(size_t(kPageSize) * kReminderPages, '\0');
      old->resize(pages.size(), '\0');
      const int n = days_passed;
      for (int p = n; p < kReminderDaysShown; ++p) {
        std::memcpy(pages.data() + (p - n) * kPageSize, old->data() + p * kPageSize,
                    size_t(kPageSize));
        SetPageDay(pages.data() + (p - n) * kPageSize, p - n);
      }
      for (int p = kReminderDaysShown - n; p < kReminderPages; ++p)
        SetPageDay(pages.data() + p * kPageSize, p);
      if (ReplaceFile(kReminderFile, pages)) return true;
    }
  }
  if (CreateBlankReminderFile()) return true;
  Message("Unable to open resn.dat for complete update in Opendata.", "Problem");
  return false;
}

int ReadTodaysReminders() {
  auto& page = G().reminder_page;
  File f(kReminderFile, File::Mode::Read);
  if (!f || f.read(page.data(), int64_t(page.size())) < int64_t(sizeof(ResnRecord::day))) return 0;
  ResnRecord today;
  std::memcpy(&today, page.data(), sizeof today);
  return today.count;
}

bool ReadReminderPage(int page, ResnRecord& record) {
  File f(kReminderFile, File::Mode::Read);
  if (!f) {
    Message("Data file: resn.dat.", "Problem");
    return false;
  }
  std::memset(&record, 0, sizeof record);
  return f.seek(page * kPageSize) && f.read(&record, kPageSize) >= 0;
}

bool WriteReminderPage(int page, const ResnRecord& record) {
  File f(kReminderFile, File::Mode::Write);
  if (!f) {
    Message("Data file: resn.dat.", "Problem");
    return false;
  }
  return f.seek(page * kPageSize) && f.write(&record, kPageSize) && f.sync();
}

}  // namespace tilo
