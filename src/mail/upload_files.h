// SPDX-License-Identifier: MIT
// The head office's text files: the day's overview, the day's item rows and the
// reorder list, written in the working folder before the upload starts. CR LF
// line ends, Windows-1252 text, each file replaced whole so an upload still
// running sends a complete file.
#pragma once

#include <optional>
#include <string>

#include "mail/upload_settings.h"
#include "platform/platform.h"
#include "reports/item_export.h"

namespace tilo {

// Which files go, as the settings record's three ticks say.
struct UploadFlags {
  bool send[3] = {false, false, false};  // by UploadFile

  bool operator[](UploadFile f) const { return send[int(f)]; }
  bool any() const { return send[0] || send[1] || send[2]; }
};
UploadFlags CurrentUploadFlags();

// The overview: the day's running totals as the printed activity summary has
// them, at `now`.
std::string UploadOverviewText(const LocalTime& now);
// The day's item rows under their heading; fails as the rows do.
ExportDay UploadItemsText(const CalendarDate& day, std::string& out);
// Every live item at or below its reorder level, in file order; none (after
// its message) when film.dat is missing, or when the walk failed or was cancelled.
std::optional<std::string> UploadReorderText();

// Writes the files whose ticks are set, in the working folder under their
// names: 0 when all were written, 2 (after the message) when one was not, and
// then no upload may start.
int Writeuploadfiles(const UploadSetup& setup, const UploadFlags& flags);

}  // namespace tilo
