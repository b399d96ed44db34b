// SPDX-License-Identifier: MIT
#include "upkeep/file_reset.h"

#include "core/customer_file.h"
#include "core/film_record.h"
#include "core/history.h"
#include "core/reminders.h"
#include "core/settings.h"
#include "core/state.h"
#include "platform/files.h"
#include "platform/platform.h"
#include "sale/screen.h"
#include "upkeep/purge.h"
#include "upkeep/rebuild.h"
#include "upkeep/upkeep_view.h"

namespace tilo {
namespace {

// A file holding one deleted record with an empty first field.
bool CreateEmptyFile(const char* path, size_t record_size) {
  std::string record(record_size, '\0');
  const int64_t deleted = -1;
  record.replace(0, sizeof deleted, reinterpret_cast<const char*>(&deleted), sizeof deleted);
  if (ReplaceFile(path, record)) return true;
  Message(std::string("Data file: ") + path + ", not present.", "Problem");
  return false;
}

}  // namespace

void Resetfiles(bool delete_databases) {
  State& g = G();
  // The purge starts where the old settings say the till was last used.
  const int purge_from = PurgeStartYear();
  Resetsettings();
  PurgeHistoryTree(purge_from);
  g.settings.transaction_number = 1;
  if (!Savesettings()) Message("Data file: wr.cfg, not present.", "Fatal error");
  Makelogdirs();
  if (!CreateBlankReminderFile()) Message("Data file: resn.dat.", "Problem");
  g.films.Clear();
  g.members.Clear();
  g.suppliers.Clear();
  if (delete_databases) {
    CreateEmptyFile(kFilmFile, sizeof(FilmRecord));
    CreateEmptyFile(kMemberFile, kMemberRecordSize);
  }
  Rebuildfiles();
  screen_view().settings_changed();
}

void Filereset() {
  if (auto tick = upkeep_view().file_reset()) Resetfiles(*tick);
}

}  // namespace tilo
