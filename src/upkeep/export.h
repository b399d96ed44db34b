// SPDX-License-Identifier: MIT
// Export: a range of items or customers as comma-separated text (the form the
// import reads back), as an HTML page or as XML. The file is built whole and
// written aside, then renamed over any old one.
#pragma once

#include <string>

#include "upkeep/exchange_view.h"

namespace tilo {

struct ExportJob {
  bool customers = false;
  ExportFormat format = ExportFormat::Text;
  int category = -1;  // inventory only: -1 all, else one display category
  bool bold_number = true;
  bool bold_title = true;
  int text_size = 1;
  ExportFields fields;
};

// The lines before the first record, and after the last.
std::string ExportHead(const ExportJob& job);
std::string ExportFoot(const ExportJob& job);
// Appends one record (a FilmRecord or a MemberRecord, as the job says).
void ExportRecord(const ExportJob& job, const void* record, std::string& out);

// The "Export" command: the form, the file name, the field selection, the file.
void Exportfile();

}  // namespace tilo
