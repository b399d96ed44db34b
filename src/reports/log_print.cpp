// SPDX-License-Identifier: MIT
#include "reports/log_print.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "core/activity_log.h"
#include "core/state.h"
#include "core/text.h"
#include "documents/print_job.h"
#include "platform/files.h"
#include "platform/platform.h"

namespace tilo {
namespace {

constexpr int kLongestLine = 253;

// Byte-by-byte reading of a file through a buffer of its own.
class ByteReader {
 public:
  ByteReader(File& file, int64_t position) : file_(file), position_(position) {
    file_.seek(position);
  }
  // The next byte, or -1 at the end.
  int next() {
    if (at_ == got_) {
      got_ = file_.read(buffer_, sizeof buffer_);
      at_ = 0;
      if (got_ <= 0) {
        got_ = 0;
        return -1;
      }
    }
    ++position_;
    return static_cast<unsigned char>(buffer_[at_++]);
  }
  int64_t position() const { return position_; }

 private:
  File& file_;
  int64_t position_;
  char buffer_[65536];
  int64_t got_ = 0;
  int64_t at_ = 0;
};

}  // namespace

std::optional<int64_t> Findlogdate(const std::string& path, const std::string& date_text) {
  File f(path, File::Mode::Read);
  if (!f) return std::nullopt;
  ByteReader reader(f, 0);
  char last[10] = {};
  const size_t width = std::min<size_t>(date_text.size(), sizeof last);
  for (int c; (c = reader.next()) >= 0;) {
    std::memmove(last, last + 1, sizeof last - 1);
    last[sizeof last - 1] = char(c);
    if (reader.position() >= 13 &&
        std::memcmp(last + sizeof last - width, date_text.data(), width) == 0)
      return std::max<int64_t>(0, reader.position() - 16);
  }
  return std::nullopt;
}

void Printlogpage(LogPrint& job, PrintTarget& target) {
  int32_t& page_number = G().print_job.page_number;
  char header[256];
  std::snprintf(header, sizeof header, "%s Log file: %s      Page: %d",
                FieldText(G().heading.site_name).c_str(), job.date_text.c_str(), page_number);
  ListingPage page = Startlistingpage(target, header);
  File f(job.path, File::Mode::Read);
  if (!f) {
    Message("Unable to open file.", "Problem");
    return;
  }
  ByteReader reader(f, page_number == 1 ? job.start : job.resume);
  std::string line;
  auto draw = [&] {
    target.text_out(0, page.y(), line);
    line.clear();
    ++page.row;
  };
  for (int c; (c = reader.next()) >= 0;) {
    if (c > 30) line += char(c);
    if (c != '\r' && line.size() < size_t(kLongestLine)) continue;
    draw();
    if ((page.line_height + 2) * page.row > page.page_height) {
      // The next page steps back over the last bytes of the first one.
      job.resume = reader.position() - (page_number == 1 ? 15 : 0);
      ++page_number;
      return;
    }
  }
  // A last line with no line end is printed all the same.
  if (!line.empty()) draw();
  target.text_out(0, page.y(), "  ");
}

void Printlog(int mode) {
  LogPrint job;
  job.path = mode == kLogPrevious ? kPreviousActivityLog : kActivityLog;
  const LocalTime now = platform().now();
  char today[16];
  std::snprintf(today, sizeof today, "%02d/%02d/%d", now.day, now.month, now.year);
  job.date_text = today;
  if (mode == kLogFromDay) {
    std::optional<std::string> typed =
        platform().prompt("Enter day (DD/MM/YYYY):", "Print log", today);
    if (!typed) return;
    if (typed->size() != 10 || (*typed)[2] != '/' || (*typed)[5] != '/') {
      Message("Invalid date", "Problem");
      return;
    }
    job.date_text = *typed;
  }
  // Nothing is printed, not even a header, for a log that isn't there or that
  // holds nothing of the day.
  if (!FileExists(job.path)) {
    Message("Unable to open file.", "Problem");
    return;
  }
  if (mode == kLogToday || mode == kLogFromDay) {
    std::optional<int64_t> start = Findlogdate(job.path, job.date_text);
    if (!start) {
      Message("Please check 'old log file' for prior operations",
              "Problem, no transactions found for that date");
      return;
    }
    job.start = *start;
  }
  Runpagedjob([&job](PrintTarget& target) { Printlogpage(job, target); });
}

}  // namespace tilo
