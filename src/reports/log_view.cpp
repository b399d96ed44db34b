// SPDX-License-Identifier: MIT
#include "reports/log_view.h"

#include <algorithm>

#include "core/activity_log.h"
#include "core/text.h"
#include "platform/files.h"
#include "platform/platform.h"

namespace tilo {

std::optional<std::string> ReadLogBlock(const std::string& path, int64_t offset) {
  File f(path, File::Mode::Read);
  if (!f || !f.seek(offset)) return std::nullopt;
  std::string bytes(kLogBlock, '\0');
  const int64_t got = f.read(bytes.data(), kLogBlock);
  if (got < 0) return std::nullopt;
  bytes.resize(size_t(got));
  return bytes;
}

std::string LogBlockText(const std::string& bytes) {
  std::string plain;
  plain.reserve(bytes.size());
  for (size_t i = 0; i < bytes.size(); ++i) {
    if (bytes[i] != '\r') {
      plain += bytes[i];
      continue;
    }
    // A CR of a CR LF goes; one standing alone (or cut off at the block's end)
    // still ends its line.
    const bool pair = i + 1 < bytes.size() && bytes[i + 1] == '\n';
    if (!pair && i + 1 < bytes.size()) plain += '\n';
  }
  // NULs would cut the text short on screen.
  std::replace(plain.begin(), plain.end(), '\0', ' ');
  return Cp1252ToUtf8(plain);
}

bool LogViewer::Show(int64_t start) {
  std::optional<std::string> bytes = ReadLogBlock(path, start);
  if (!bytes) return false;
  shown = int64_t(bytes->size());
  offset = start + shown;
  text = LogBlockText(*bytes);
  // Nothing lies beyond the end of the file.
  next_enabled = offset < size;
  previous_enabled = offset >= kLogBlock + 1;
  return true;
}

void LogViewer::Next() {
  Show(offset);
}

void LogViewer::Previous() {
  const int64_t back = shown < kLogBlock ? kLogBlock : 2 * kLogBlock;
  Show(std::max<int64_t>(0, offset - back));
}

std::optional<LogViewer> OpenLogViewer(bool previous) {
  const std::string path = previous ? kPreviousActivityLog : kActivityLog;
  if (previous && !FileExists(path)) {
    Message("Previous log file does not yet exist.", "Problem");
    return std::nullopt;
  }
  LogViewer viewer;
  viewer.path = path;
  viewer.size = FileSize(path).value_or(0);
  if (!viewer.Show(0)) {
    Message(previous ? "Data file: bun2.dat." : "Data file: bun4.dat.", "Problem");
    return std::nullopt;
  }
  // A file of less than one block has nowhere to go.
  if (viewer.size < kLogBlock) viewer.next_enabled = viewer.previous_enabled = false;
  return viewer;
}

}  // namespace tilo
