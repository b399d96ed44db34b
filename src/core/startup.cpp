// SPDX-License-Identifier: MIT
#include "core/startup.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "core/activity_log.h"
#include "core/clock.h"
#include "core/customer_file.h"
#include "core/history.h"
#include "core/reminders.h"
#include "core/rollover.h"
#include "core/state.h"
#include "core/supplier_file.h"
#include "core/text.h"
#include "core/write_batch.h"
#include "inventory/pictures.h"
#include "platform/files.h"
#include "upkeep/backup.h"

namespace tilo {
namespace {

constexpr const char* kFatal = "Fatal error";
constexpr const char* kProblem = "Problem";
constexpr const char* kPermissions = "Problem, please check folder permissions";

struct SizeCheck {
  const char* path;
  int64_t record_size;
  const char* missing;
  const char* empty;
  const char* corrupt;
};

// The size test of a record file: present, not empty, a whole number of records.
bool CheckRecordFile(const SizeCheck& c, const std::string& folder = {}) {
  auto size = FileSize(folder + c.path);
  if (!size) return Message(c.missing, kFatal), false;
  if (*size == 0) return Message(c.empty, kFatal), false;
  if (*size % c.record_size != 0) return Message(c.corrupt, kFatal), false;
  return true;
}

constexpr SizeCheck kFilmCheck{
    "film.dat", sizeof(FilmRecord), "Unable to open film.dat in Opendata",
    "Film.dat has no data in Opendata.", "Data file film.dat corrupt in Opendata."};
constexpr SizeCheck kMemberCheck{
    "member.dat", kMemberRecordSize, "Data file member.dat not present in Opendata.",
    "Data file member.dat no data in Opendata.", "Data file member.dat corrupt in Opendata."};
constexpr SizeCheck kMansCheck{
    "mans.dat", kMansRecordSize, "Data file mans.dat not present in Opendata.",
    "Data file mans.dat no data in Opendata.", "Data file mans.dat corrupt in Opendata."};

void LoadHeadingLines() {
  if (!ReadHeadingLines(G().heading)) DefaultHeadingLines(G().heading);
}

bool FirstRun() {
  State& g = G();
  SettingsRecord& s = g.settings;
  s.last_day = g.today_day;
  s.till_takings = 0;
  s.previous_takings = 0;
  s.last_used_minute = s.last_used_hour = s.last_used_day = 0;
  s.last_used_month = s.last_used_year = 0;
  s.history_from_day = s.first_day = g.today_day;
  s.history_from_month = s.first_month = g.today_month;
  s.history_from_year = s.first_year = g.today_year;
  const bool dollar = platform().currency_symbol() == "$";
  SetField(s.tax1_name, dollar ? "GST 1" : "VAT 1");
  SetField(s.tax2_name, dollar ? "GST 2" : "VAT 2");
  s.drawer_mode = 2;
  SetField(s.drawer_code, "27,112,0,25,250");
  s.invoice_line_store_name = 7;
  s.invoice_line_store_address1 = 8;
  s.invoice_line_store_address2 = 9;
  s.invoice_line_store_telephone = 11;
  s.invoice_line_date = 15;
  s.invoice_line_items = 18;
  s.invoice_line_customer_detail = 41;
  s.invoice_line_customer_terms = 48;
  s.invoice_line_customer_id = 40;
  s.invoice_line_net_total = 30;
  s.invoice_line_tax = 31;
  s.invoice_line_total = 34;
  s.invoice_line_clerk = 16;
  s.invoice_line_invoice = 13;
  s.invoice_line_balance = 49;
  s.invoice_barcode = 1;
  s.invoice_box = 1;
  s.invoice_logo = 1;
  s.invoice_no_standard_logo = 0;
  if (!CreateBlankReminderFile()) {
    Message("Unable to create resn.dat in first run Opendata.", kPermissions);
    return false;
  }
  // A missing picture only shows nothing, so a folder that refuses them is no reason to stop.
  Placestockpictures();
  return true;
}

// A commit cut short by a kill or a power cut is finished (or, when it had
// failed and could not be taken back, taken back) before any file is read. The
// shop's own log says so; the clerk is told only when it can't be done.
void RepairUnfinishedCommit() {
  if (FinishSwap()) AppendToLog(StampedEntry("Unfinished file swap completed."));
  const char* what = nullptr;
  switch (RepairJournal()) {
    case JournalRepair::None:
      return;
    case JournalRepair::Finished:
      what = "Unfinished save completed.";
      break;
    case JournalRepair::TakenBack:
      what = "Failed save taken back.";
      break;
    case JournalRepair::Discarded:
      what = "Unfinished save discarded before it began.";
      break;
    case JournalRepair::Failed:
      Message("Unable to complete the last save (commit.jnl).", kProblem);
      return;
  }
  AppendToLog(StampedEntry(what));
}

}  // namespace

bool DesktopIsUsable(DesktopSize desktop) {
  if (desktop.width >= kSmallWidth) return true;
  Message("Program requires desktop of at least 800 by 600", kProblem);
  return false;
}

WindowGeometry CreatedWindow(DesktopSize desktop) {
  if (desktop.width >= 1028) return {0, 0, kWindowWidth, kWindowHeight, true, false};
  return {0, 0, kSmallWidth, kSmallHeight, false, true};
}

WindowGeometry WindowAfterSplash(DesktopSize desktop) {
  if (desktop.width < 1028) return {0, 0, kSmallWidth, kSmallHeight, false, false};
  if (desktop.height < 800)
    return {(desktop.width - kWindowWidth) / 2, 2, kWindowWidth, kWindowHeight, true, false};
  return {};
}

bool CheckDataFiles(const std::string& folder) {
  return CheckRecordFile(kFilmCheck, folder) && CheckRecordFile(kMemberCheck, folder) &&
         CheckRecordFile(kMansCheck, folder);
}

int Opendata() {
  State& g = G();
  if (!CheckRecordFile(kFilmCheck)) return 0;
  if (!CheckRecordFile(kMemberCheck)) return 0;
  g.films.slot_count = *FileSize(kFilmCheck.path) / int64_t(sizeof(FilmRecord));
  LoadHeadingLines();
  if (!g.films.Load()) return Message(kFilmCheck.missing, kFatal), 0;
  if (!LoadCustomerIndex()) return Message(kMemberCheck.missing, kFatal), 0;

  if (!FileExists(kMansCheck.path)) return Message(kMansCheck.missing, kFatal), 0;
  UpgradeOldSupplierFile();
  if (!CheckRecordFile(kMansCheck)) return 0;
  if (!LoadSupplierIndex()) return Message(kMansCheck.missing, kFatal), 0;

  if (!Opensettings()) return Message("Data file wr.cfg not present in Opendata.", kFatal), 0;
  Loadwording();
  SettingsRecord& s = g.settings;
  if (s.tax1_name[0] == '\0') {
    SetField(s.tax1_name, "TAX 1");
    SetField(s.tax2_name, "TAX 2");
  }
  if (s.transaction_number > 200000000 || s.transaction_number == 0) s.transaction_number = 1;
  if (s.last_day == 0 && !FirstRun()) return 0;
  if (!Limitlog()) return Message("Unable to manipulate log.", kPermissions), 0;
  std::srand(unsigned(platform().tick_count()));
  std::srand(unsigned(platform().tick_count()));
  days_in_previous_month = PreviousMonthDays(g.today_month, g.today_year);
  if (s.last_day != g.today_day && thenextday(days_in_previous_month) == 0) return 0;
  return 1;
}

bool OpenStore() {
  State& g = G();
  // A restore the last run did not see to its end is finished before the files
  // it replaces are read.
  FinishRestore();
  Timestamp();
  g.start_weekday = g.now.day_of_week;
  g.start_hour = g.now.hour;
  g.start_minute = g.now.minute;
  g.today_day = g.now.day;
  g.today_month = g.now.month;
  g.today_year = g.now.year;
  RepairUnfinishedCommit();
  if (!Opendata()) {
    g.open_failed = true;
    return false;
  }

  SettingsRecord& s = g.settings;
  FinishBackupSet(BackupFolderPath(FieldText(s.backup_folder)) + "/");
  g.previous_run_minute = s.last_used_minute;
  g.previous_run_hour = s.last_used_hour;
  g.previous_run_day = s.last_used_day;
  g.previous_run_month = s.last_used_month;
  g.previous_run_year = s.last_used_year;
  StampLastUsed(s);
  if (!Savesettings()) Message("WR.CFG", kProblem);

  if (!AppendToLog(StampedEntry("Switched on.")))
    Message("Unable to open bun4.dat in WM_CREATE.", kProblem);
  if (!FileExists(kReminderFile)) {
    Message("New", "Reservation file");
    if (!CreateBlankReminderFile()) Message("Unable to create reservation file.", kProblem);
  }
  if (s.currency_set != 2) TakeLocaleCurrency(s);
  Makelogdirs();
  if (s.start_category == 0) s.start_category = s.current_category + 1;
  s.current_category = s.start_category - 1;
  const int today = ReadTodaysReminders();
  if (today != 0) Message("For today: " + std::to_string(today), "Reminders");
  return true;
}

void Closedown() {
  State& g = G();
  if (g.open_failed) return;
  SettingsRecord& s = g.settings;
  StampLastUsed(s);
  // After a restore the restored files are the store: nothing held in memory
  // may be written over them.
  if (!g.no_save_at_close && !Savesettings())
    Message("Unable to create WR.CFG at end of WinMaim", kProblem);
  WriteHeadingLines(g.heading);
  Savewording();

  Timestamp();
  char clerk[128];
  std::snprintf(clerk, sizeof clerk, "Clerk: %lld, %s\r\n", static_cast<long long>(s.clerk_number),
                ClerkName(s, s.clerk_number).c_str());
  if (!AppendToLog(StampedEntry("Switched off.") + clerk))
    Message("Unable to open bun4.dat at end of WinMain.", kProblem);

  Datestamp();
  const std::string folder = DayFolder(g.now.year, g.now.month, g.now.day);
  // Over midnight the new day's folder does not exist yet: no summary then.
  if (!g.no_save_at_close && IsDirectory(folder)) WriteDailySummary(folder + "/thedaily.dat");
}

}  // namespace tilo
