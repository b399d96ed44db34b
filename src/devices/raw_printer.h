// SPDX-License-Identifier: MIT
// Raw bytes to a named printer as a one-page job, bypassing every driver: the
// way a drawer behind the receipt printer is kicked. The spooler is CUPS.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tilo {

enum class RawJobResult {
  Sent,        // the job was queued with its bytes
  NoPrinter,   // no such printer (or no spooler to ask)
  NotStarted,  // the printer exists but the job could not be started or finished
};

// Sends `bytes` as a job named `job_name` of type raw to `printer` (the default
// printer when `printer` is empty). An empty byte list still makes a job.
RawJobResult SendRawJob(const std::string& printer, const std::string& job_name,
                        const std::vector<uint8_t>& bytes);

}  // namespace tilo
