// SPDX-License-Identifier: MIT
// A backup set of any bytes, restored over a fresh shop as the operator does
// it, and then the next start over whatever the restore let in.
#include "core/customer_file.h"
#include "core/film_record.h"
#include "core/startup.h"
#include "core/state.h"
#include "core/supplier_file.h"
#include "fuzz_support.h"
#include "targets.h"
#include "upkeep/backup.h"
#include "upkeep/upkeep_view.h"

namespace tilo::fuzz {
namespace {

class ConfirmRestore : public UpkeepView {
 public:
  bool confirm_restore() override { return true; }
};

}  // namespace

// The input: a byte of flags, then the backup's files in the order the backup
// writes them (wr.cfg, film.dat, member.dat, mans.dat, resn.dat, bun4.dat).
// Flag bits 1 to 3 cut film.dat, member.dat and mans.dat down to whole records.
void FuzzRestore(const uint8_t* data, size_t size) {
  static constexpr size_t kRecordSizes[] = {0, sizeof(FilmRecord), kMemberRecordSize,
                                            kMansRecordSize};
  if (size == 0) return;
  const uint8_t flags = data[0];
  ScriptedPlatform& p = StartRun();
  MakeShop();
  const auto parts = SplitFiles(data + 1, size - 1, kBackupFiles.size());
  for (size_t i = 0; i < parts.size(); ++i) {
    std::string_view bytes = parts[i];
    if (i >= 1 && i <= 3 && (flags >> i & 1)) bytes = WholeRecords(bytes, kRecordSizes[i]);
    PutFile(std::string("backup/") + kBackupFiles[i], bytes);
  }
  p.queue_file(RunFolder() + "backup/wr.cfg");
  ConfirmRestore confirm;
  install_upkeep_view(&confirm);
  Restore();
  install_upkeep_view(nullptr);
  if (!G().no_save_at_close) return;
  // The program closes after a restore; the next start reads what came in.
  ResetState();
  if (OpenStore()) Closedown();
}

}  // namespace tilo::fuzz
