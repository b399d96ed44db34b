// SPDX-License-Identifier: MIT
#include "platform/platform.h"

#include <chrono>
#include <cstdio>
#include <ctime>
#include <thread>

namespace tilo {
namespace {

// Used by command-line tools and before the GUI installs its own: prints messages
// to stderr, answers OK, reads the real clock.
class HeadlessPlatform : public Platform {
 public:
  Answer message(const std::string& text, const std::string& title, Buttons buttons) override {
    std::fprintf(stderr, "%s: %s\n", title.c_str(), text.c_str());
    return buttons == Buttons::YesNo || buttons == Buttons::YesNoCancel ? Answer::Yes : Answer::Ok;
  }
  std::optional<std::string> prompt(const std::string&, const std::string&, const std::string&,
                                    bool) override {
    return std::nullopt;
  }
  LocalTime now() override {
    std::time_t t = std::time(nullptr);
    std::tm tm{};
    localtime_r(&t, &tm);
    return {tm.tm_year + 1900, tm.tm_mon + 1, tm.tm_wday, tm.tm_mday,
            tm.tm_hour,        tm.tm_min,     tm.tm_sec};
  }
  uint64_t tick_count() override {
    return std::chrono::duration_cast<std::chrono::milliseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
  }
  void play_sound(int) override {}
  DesktopSize desktop() override { return {1280, 1024}; }
  std::string currency_symbol() override { return "£"; }
  std::string short_date(int year, int month, int day) override {
    static const char* days[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    static const char* months[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                   "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    std::tm tm{};
    tm.tm_year = year - 1900;
    tm.tm_mon = month - 1;
    tm.tm_mday = day;
    tm.tm_hour = 12;
    std::mktime(&tm);
    char buf[32];
    std::snprintf(buf, sizeof buf, "%s %d %s %02d", days[tm.tm_wday], day, months[month - 1],
                  year % 100);
    return buf;
  }
  std::optional<std::string> choose_file(const std::string&, bool, const std::string&) override {
    return std::nullopt;
  }
  std::optional<std::string> choose_folder(const std::string&, const std::string&) override {
    return std::nullopt;
  }
};

HeadlessPlatform headless;
Platform* current = &headless;

}  // namespace

namespace {
class SilentProgress : public Progress {
 public:
  bool step(int64_t, int64_t) override { return true; }
};
}  // namespace

std::unique_ptr<Progress> Platform::begin_progress(const std::string&, const std::string&, bool) {
  return std::make_unique<SilentProgress>();
}

bool Platform::wait(const std::string&, const std::string&, int interval_ms,
                    const std::function<bool()>& poll) {
  while (!poll()) std::this_thread::sleep_for(std::chrono::milliseconds(interval_ms));
  return true;
}

void Platform::notify(const std::string& text, const std::string& title) {
  std::fprintf(stderr, "%s: %s\n", title.c_str(), text.c_str());
}

void Platform::notify_details(const std::string& text, const std::string& title,
                              const std::string&) {
  notify(text, title);
}

std::string Platform::long_date(int year, int month, int day) {
  static const char* days[] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                               "Thursday", "Friday", "Saturday"};
  static const char* months[] = {"January",   "February", "March",    "April",
                                 "May",       "June",     "July",     "August",
                                 "September", "October",  "November", "December"};
  if (month < 1 || month > 12) return {};
  // Sakamoto's rule for the day of the week of a Gregorian date.
  static const int offsets[] = {0, 3, 2, 5, 0, 3, 5, 1, 4, 6, 2, 4};
  int y = month < 3 ? year - 1 : year;
  int weekday = (y + y / 4 - y / 100 + y / 400 + offsets[month - 1] + day) % 7;
  char buf[64];
  std::snprintf(buf, sizeof buf, "%s %s %d %d", days[weekday], months[month - 1], day, year);
  return buf;
}

std::string Platform::month_date(int year, int month, int day) {
  static const char* months[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                 "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  if (month < 1 || month > 12) return {};
  char buf[32];
  std::snprintf(buf, sizeof buf, "%s %d %d", months[month - 1], day, year);
  return buf;
}

Platform& platform() {
  return *current;
}
void install_platform(Platform* p) {
  current = p ? p : &headless;
}

}  // namespace tilo
