// SPDX-License-Identifier: MIT
#include "reports/log_print.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <vector>
#if defined(__x86_64__)
#include <immintrin.h>
#endif

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

// The first place of `needle` (2 to 10 bytes) in `bytes` at or after `from`, or
// npos. Many places are tried at once on three of the needle's bytes (the
// first, the second and the last), and only the places that pass all three are
// compared in full. The wide form runs where the processor has it.
#if defined(__x86_64__)
__attribute__((target("avx2"))) size_t FindFromWide(std::string_view bytes, std::string_view needle,
                                                    size_t at) {
  const size_t width = needle.size();
  const size_t last_start = bytes.size() - width;
  const __m256i first = _mm256_set1_epi8(needle[0]);
  const __m256i second = _mm256_set1_epi8(needle[1]);
  const __m256i last = _mm256_set1_epi8(needle[width - 1]);
  for (; at + 32 <= last_start + 1; at += 32) {
    const char* p = bytes.data() + at;
    const __m256i a = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
    const __m256i b = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p + 1));
    const __m256i c = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p + width - 1));
    unsigned mask = unsigned(_mm256_movemask_epi8(_mm256_and_si256(
        _mm256_and_si256(_mm256_cmpeq_epi8(a, first), _mm256_cmpeq_epi8(b, second)),
        _mm256_cmpeq_epi8(c, last))));
    while (mask != 0) {
      const int bit = __builtin_ctz(mask);
      if (std::memcmp(p + bit, needle.data(), width) == 0) return at + size_t(bit);
      mask &= mask - 1;
    }
  }
  for (; at <= last_start; ++at)
    if (std::memcmp(bytes.data() + at, needle.data(), width) == 0) return at;
  return std::string_view::npos;
}
#endif

size_t FindFrom(std::string_view bytes, std::string_view needle, size_t from) {
  const size_t width = needle.size();
  if (bytes.size() < width || from > bytes.size() - width) return std::string_view::npos;
#if defined(__x86_64__)
  static const bool wide = __builtin_cpu_supports("avx2");
  if (wide) return FindFromWide(bytes, needle, from);
#endif
  const size_t last_start = bytes.size() - width;
  for (size_t at = from;; ++at) {
    const void* hit = std::memchr(bytes.data() + at, needle[0], last_start + 1 - at);
    if (!hit) return std::string_view::npos;
    at = size_t(static_cast<const char*>(hit) - bytes.data());
    if (std::memcmp(bytes.data() + at, needle.data(), width) == 0) return at;
  }
}

}  // namespace

std::optional<int64_t> Findlogdate(const std::string& path, const std::string& date_text) {
  File f(path, File::Mode::Read);
  const size_t width = date_text.size();
  if (!f || width < 2 || width > 10) return std::nullopt;
  // The same answer as comparing the last bytes read after every byte from the
  // 13th on: the first match that ends at byte 13 or later. The file is read in
  // pieces small enough to be searched while they are still in the cache, each
  // keeping the tail of the one before so that a date across the seam is found.
  std::vector<char> buffer(width + 65536);
  size_t kept = 0;           // bytes carried over at the front of the buffer
  int64_t buffer_start = 0;  // file offset of buffer[0]
  for (int64_t got; (got = f.read(buffer.data() + kept, int64_t(buffer.size() - kept))) > 0;) {
    const std::string_view piece(buffer.data(), kept + size_t(got));
    for (size_t from = 0;;) {
      const size_t at = FindFrom(piece, date_text, from);
      if (at == std::string_view::npos) break;
      const int64_t end = buffer_start + int64_t(at + width);
      if (end >= 13) return std::max<int64_t>(0, end - 16);
      from = at + 1;
    }
    kept = std::min(piece.size(), width - 1);
    std::memmove(buffer.data(), piece.data() + piece.size() - kept, kept);
    buffer_start += int64_t(piece.size() - kept);
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
