// SPDX-License-Identifier: MIT
// All-or-nothing writes across several files. A writer that touches more than one
// file, or rewrites records in place, collects its appends, record writes and
// whole-file replacements in a WriteBatch and commits them at once. The commit
// first puts a journal beside the data (commit.jnl: the size of every appended
// file before, the image of every record and file after and before, its length
// and checksum), then writes the files, flushes each once and empties the
// journal. A kill in between leaves the journal, and the next start finishes
// the job; a write that fails takes back what was written before it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tilo {

inline constexpr const char* kJournalFile = "commit.jnl";

class WriteBatch {
 public:
  // Bytes added at the end of a file, which is created if missing.
  void Append(std::string path, std::string_view bytes, std::string message = {},
              std::string title = {});
  // Bytes written over a file at `offset` (a record rewritten in place, or one
  // added at the end of a record file). The file must exist.
  void Put(std::string path, int64_t offset, std::string_view bytes, std::string message = {},
           std::string title = {});
  void Put(std::string path, int64_t offset, const void* data, int64_t size,
           std::string message = {}, std::string title = {}) {
    Put(std::move(path), offset, std::string_view(static_cast<const char*>(data), size_t(size)),
        std::move(message), std::move(title));
  }
  // A file written whole (through a temporary renamed over it).
  void Replace(std::string path, std::string_view bytes, std::string message = {},
               std::string title = {});

  bool empty() const { return pieces_.empty(); }
  // The message shown when the journal itself can't be written; by default the
  // first piece's.
  void set_message(std::string message, std::string title) {
    message_ = std::move(message);
    title_ = std::move(title);
  }

  // Writes everything or nothing. On failure every file is put back as it was,
  // the message of the piece that failed is shown (under "Problem" unless the
  // piece names a title) and false comes back.
  bool Commit();

  enum class Kind : uint8_t { Append = 1, Put = 2, Replace = 3 };
  struct Piece {
    Kind kind;
    std::string path;
    int64_t offset = 0;    // Put
    int64_t pre_size = 0;  // the file's size before; -1: it did not exist
    std::string after;
    std::string before;  // Put: the bytes written over; Replace: the old file
    std::string message, title;
  };

 private:
  void Fail(size_t piece);

  std::vector<Piece> pieces_;
  std::string message_, title_;
};

// True when commit.jnl holds a commit not yet finished or taken back.
bool JournalPending();

// What the start found of an unfinished commit.
enum class JournalRepair { None, Finished, TakenBack, Discarded, Failed };

// Finishes a journal left by a kill (or takes it back when a failed commit
// could not), and removes it; a torn journal was cut before anything was
// written, and is simply removed. `take_back` undoes a whole journal whatever it
// says (a commit in a running till whose memory never took the new state).
JournalRepair RepairJournal(bool take_back = false);

// A swap of whole files (a restore or a backup putting its finished copies in
// place): the (staged, target) moves are noted in swap.jnl before the first
// rename, so that a kill half way is finished at the next start: every staged
// file still there is moved in and the old ones set aside are removed.
inline constexpr const char* kSwapJournalFile = "swap.jnl";
bool BeginSwap(const std::vector<std::pair<std::string, std::string>>& moves,
               const std::string& aside_suffix);
void EndSwap();
// True when there was a swap to finish; false when there was none.
bool FinishSwap();

}  // namespace tilo
