// SPDX-License-Identifier: MIT
// What every fuzz target shares: a private folder to run in, a fresh program
// state and a scripted platform per input, and the cutting of one input into
// several files.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/scripted_platform.h"

namespace tilo::fuzz {

// Between two files of one input. Absent from an input: the files after the
// last one present are missing (not empty).
inline constexpr std::string_view kFileSeparator = "<<FILE>>";

// Makes the private folder on the first call (under $TMPDIR) and goes into it;
// every call empties it, throws the program state away and installs a fresh
// scripted platform, which answers every question with OK or Yes, cancels every
// prompt and chooser and reads a fixed clock. Returns that platform: `own` when
// given (a target that needs a platform of its own answers), else a plain one.
ScriptedPlatform& StartRun(std::unique_ptr<ScriptedPlatform> own = nullptr);
// A fresh shop in the run folder, opened as the program opens it at start;
// aborts when that fails, since then no input could get any further.
void MakeShop();
// Goes back to the folder the process started in, so that paths given to it
// (libFuzzer's inputs and corpora) keep their meaning between inputs.
void LeaveRun();
// The private folder, ending in "/".
const std::string& RunFolder();

// The input cut at each separator into at most `count` parts; fewer when the
// input holds fewer separators.
std::vector<std::string_view> SplitFiles(const uint8_t* data, size_t size, size_t count);
// Writes `bytes` to `path` (relative to the run folder), making its folder.
void PutFile(const std::string& path, std::string_view bytes);
// The part cut down to a whole number of `record_size` records.
std::string_view WholeRecords(std::string_view bytes, size_t record_size);

}  // namespace tilo::fuzz
