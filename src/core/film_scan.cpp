// SPDX-License-Identifier: MIT
#include "core/film_scan.h"

#include <vector>

#include "platform/files.h"
#include "platform/platform.h"

namespace tilo {

ScanEnd Scanfilms(const std::string& busy_title,
                  const std::function<void(const FilmRecord&)>& visit) {
  File file(kFilmFile, File::Mode::Read);
  if (!file) return ScanEnd::Unreadable;
  const int64_t total = file.size() / int64_t(sizeof(FilmRecord));
  constexpr int64_t kBlockRecords = 2048;  // about 4 MB
  std::vector<FilmRecord> block(kBlockRecords);
  std::unique_ptr<Progress> progress = platform().begin_progress("Please wait..", busy_title);
  for (int64_t done = 0;;) {
    const int64_t got = file.read(block.data(), kBlockRecords * int64_t(sizeof(FilmRecord)));
    if (got < 0) return ScanEnd::Unreadable;
    // A short last record is no record.
    const int64_t records = got / int64_t(sizeof(FilmRecord));
    for (int64_t i = 0; i < records; ++i)
      if (block[size_t(i)].number >= 1) visit(block[size_t(i)]);
    done += records;
    if (!progress->step(done, total)) return ScanEnd::Cancelled;
    if (records < kBlockRecords) return ScanEnd::Finished;
  }
}

}  // namespace tilo
