// SPDX-License-Identifier: MIT
// Reading the activity log on screen: bun4.dat (or bun2.dat, the generation
// before it) in blocks of 31,999 bytes, stepped through with "Next" and
// "Previous". The form only shows what this walk hands it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace tilo {

inline constexpr int64_t kLogBlock = 31999;

// Up to one block of a file from `offset`; nullopt when it can't be opened.
std::optional<std::string> ReadLogBlock(const std::string& path, int64_t offset);
// A block's Windows-1252 text as the screen shows it: UTF-8, with CR LF as one
// line end.
std::string LogBlockText(const std::string& bytes);

// The walk of one viewer. `offset` is the end of the block shown.
struct LogViewer {
  std::string path;
  int64_t offset = 0;
  int64_t shown = 0;  // bytes of the block shown
  int64_t size = 0;   // of the file when it was opened
  std::string text;   // the block shown, as UTF-8
  bool next_enabled = false;
  bool previous_enabled = false;

  // Reads and shows the block that starts at `start`; false when the file
  // can't be read.
  bool Show(int64_t start);
  void Next();
  void Previous();
};

// "Display log file" (bun4.dat) and "Display previous log file" (bun2.dat):
// the first block, or nullopt after the message that says why not.
std::optional<LogViewer> OpenLogViewer(bool previous);

}  // namespace tilo
