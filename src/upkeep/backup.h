// SPDX-License-Identifier: MIT
// Backup and restore of the six files that hold the store: wr.cfg, film.dat,
// member.dat, mans.dat, resn.dat, bun4.dat. A backup is the six files side by
// side in a folder. Either side always holds a whole set, old or new: every file
// is copied under a temporary name, flushed, read back against its source, and
// only then are the six renamed in, the old ones kept aside until all are in.
#pragma once

#include <array>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace tilo {

inline constexpr std::array<const char*, 6> kBackupFiles = {"wr.cfg",   "film.dat", "member.dat",
                                                            "mans.dat", "resn.dat", "bun4.dat"};

// The folder inside the shop where a restore gathers the incoming set.
inline constexpr const char* kRestoreStaging = "restore.tmp";

// The file work of backup and restore; tests replace it to make any step fail.
class UpkeepFiles {
 public:
  virtual ~UpkeepFiles() = default;
  // Copies `from` over `to`, pushes it to disk, drops it from the cache and reads
  // it back against the source. `tick` is called after every block; its false
  // stops the copy. False on any failure or stop.
  virtual bool copy_verified(const std::string& from, const std::string& to,
                             const std::function<bool()>& tick);
  virtual bool rename(const std::string& from, const std::string& to);
};

// Moves each (staged, target) pair into place. The old targets wait aside until
// every staged file is in; any failure puts them all back and returns false.
bool SwapIn(UpkeepFiles& files, const std::vector<std::pair<std::string, std::string>>& moves);

// The backup folder as a path: "~/W2" when none is stored, a leading "~" as the
// home folder, backslashes as slashes.
std::string BackupFolderPath(const std::string& text);

// Finishes a backup cut short between its first and last rename in `folder`
// (ending in "/"), so that the set there is the new one whole. Run by each
// start on the stored backup folder and by backup and restore on theirs; false
// when none was under way.
bool FinishBackupSet(const std::string& folder);

// Finishes a restore cut short between its first rename and its end (the till
// stopped, the power gone): the staged files still waiting go in and the history
// goes. Run at each start before any file is read; false when none was under way.
bool FinishRestore();

void Backup(UpkeepFiles& files);
void Backup();
void Restore(UpkeepFiles& files);
void Restore();

}  // namespace tilo
