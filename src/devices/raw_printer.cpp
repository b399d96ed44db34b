// SPDX-License-Identifier: MIT
#include "devices/raw_printer.h"

#include <cups/cups.h>

namespace tilo {

RawJobResult SendRawJob(const std::string& printer, const std::string& job_name,
                        const std::vector<uint8_t>& bytes) {
  cups_dest_t* dest =
      cupsGetNamedDest(CUPS_HTTP_DEFAULT, printer.empty() ? nullptr : printer.c_str(), nullptr);
  if (!dest) return RawJobResult::NoPrinter;
  const std::string name = dest->name;
  cupsFreeDests(1, dest);

  int job = cupsCreateJob(CUPS_HTTP_DEFAULT, name.c_str(), job_name.c_str(), 0, nullptr);
  if (job <= 0) return RawJobResult::NotStarted;
  if (cupsStartDocument(CUPS_HTTP_DEFAULT, name.c_str(), job, job_name.c_str(), CUPS_FORMAT_RAW,
                        1) != HTTP_STATUS_CONTINUE) {
    cupsCancelJob2(CUPS_HTTP_DEFAULT, name.c_str(), job, 0);
    return RawJobResult::NotStarted;
  }
  if (!bytes.empty())
    cupsWriteRequestData(CUPS_HTTP_DEFAULT, reinterpret_cast<const char*>(bytes.data()),
                         bytes.size());
  if (cupsFinishDocument(CUPS_HTTP_DEFAULT, name.c_str()) != IPP_STATUS_OK)
    return RawJobResult::NotStarted;
  return RawJobResult::Sent;
}

}  // namespace tilo
