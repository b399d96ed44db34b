// SPDX-License-Identifier: MIT
// The life of the process: the screen rule, the opening of the store, the
// close-down that saves everything held in memory.
#pragma once

#include <string>

#include "platform/platform.h"

namespace tilo {

struct WindowGeometry {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
  bool fixed_size = false;     // no maximise box
  bool default_place = false;  // let the window system place and size it
};

inline constexpr int kWindowWidth = 1024;
inline constexpr int kWindowHeight = 746;
inline constexpr int kSmallWidth = 800;
inline constexpr int kSmallHeight = 600;

// False (after "Program requires desktop of at least 800 by 600") when the
// desktop is too narrow; the height is not tested, in spite of the message.
bool DesktopIsUsable(DesktopSize desktop);
// The main window as created, before the splash.
WindowGeometry CreatedWindow(DesktopSize desktop);
// Where the main window goes when the splash ends; nullopt-like `width == 0`
// when it stays where it was created.
WindowGeometry WindowAfterSplash(DesktopSize desktop);

// Validates the data files, builds the indexes, loads the settings and rolls the
// day over. 1 on success, 0 after its own message.
int Opendata();
// The size tests Opendata makes on film.dat, member.dat and mans.dat, made on the
// files in `folder` (ending in "/", or empty for the working folder), with
// Opendata's own messages.
bool CheckDataFiles(const std::string& folder);

// The logic of the opening sequence: the stamps of the start, Opendata, the first
// writes of the run, the reminders of the day. False when the start failed
// (open_failed is then set and nothing has been written).
bool OpenStore();

// Saves the settings, the heading lines and the wording, logs the switch-off and
// writes the day's summary. Skipped when the start failed.
void Closedown();

}  // namespace tilo
