// SPDX-License-Identifier: MIT
// The start of the program over any set of data files: the size tests, the
// three indexes, the settings, the heading lines, the wording, the activity log
// and the day's roll-over with the reminder diary; then the stock summary over
// the items and the close-down.
#include <cstring>

#include "core/customer_file.h"
#include "core/film_record.h"
#include "core/startup.h"
#include "core/supplier_file.h"
#include "fuzz_support.h"
#include "reports/stock_summary.h"
#include "targets.h"

namespace tilo::fuzz {

// The input: one byte of flags, then the files below in this order. Flag bit n
// cuts the nth record file down to whole records, so that most inputs get past
// the size tests and on into the reading.
void FuzzStartup(const uint8_t* data, size_t size) {
  static constexpr const char* kFiles[] = {"film.dat", "member.dat",   "mans.dat",   "wr.cfg",
                                           "resn.dat", "language.ini", "ADDRESS.VT", "bun4.dat"};
  static constexpr size_t kRecordSizes[] = {sizeof(FilmRecord), kMemberRecordSize, kMansRecordSize};
  if (size == 0) return;
  const uint8_t flags = data[0];
  StartRun();
  const auto parts = SplitFiles(data + 1, size - 1, std::size(kFiles));
  for (size_t i = 0; i < parts.size(); ++i) {
    std::string_view bytes = parts[i];
    if (i < std::size(kRecordSizes) && (flags >> i & 1))
      bytes = WholeRecords(bytes, kRecordSizes[i]);
    PutFile(kFiles[i], bytes);
  }
  if (!OpenStore()) return;
  // The stock summary reads every record the start let through.
  if (auto summary = Stocksummary()) Stocksummaryrows(*summary);
  Closedown();
}

}  // namespace tilo::fuzz
