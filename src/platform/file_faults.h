// SPDX-License-Identifier: MIT
// The fault seam of platform/files: every open, write, fsync and rename that
// File and the replace helpers make passes here, and a test can count them or
// make one fail.
#pragma once

#include <cstdint>
#include <string>

namespace tilo {

// A seam for tests of what a failing disk does to a writer. Once watching, every
// open, write (truncation included), fsync and rename of the record files is
// counted from zero; an armed kind fails its Nth call with the chosen errno, once.
// An errno of kFaultKill ends the process there instead, as a pulled plug would.
enum class FileOp { Open, Write, Sync, Rename };
inline constexpr int kFileOpKinds = 4;
inline constexpr int kFaultKill = -1;
struct FileFaults {
  bool watching = false;
  int64_t count[kFileOpKinds] = {};
  int64_t fail_at[kFileOpKinds] = {};  // 0: never
  int error = 0;
};
extern FileFaults file_faults;
// Starts counting from zero, with nothing armed.
void WatchFileOps();
// Fails the nth (from 1) call of `op` from now with `error`.
void ArmFileFault(FileOp op, int64_t nth, int error);
// Stops counting and failing.
void StopFileFaults();
// True when this call is the one to fail (errno is set then); counts it.
bool FileFaultHits(FileOp op);
inline bool FileFault(FileOp op) {
  return file_faults.watching && FileFaultHits(op);
}
// rename(2) through the seam.
bool RenameFile(const std::string& from, const std::string& to);

}  // namespace tilo
