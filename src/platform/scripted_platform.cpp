// SPDX-License-Identifier: MIT
#include "platform/scripted_platform.h"

#include <chrono>
#include <cstdio>
#include <thread>

namespace tilo {

int Weekday(int year, int month, int day) {
  // Sakamoto's method.
  static const int t[] = {0, 3, 2, 5, 0, 3, 5, 1, 4, 6, 2, 4};
  if (month < 3) year -= 1;
  return (year + year / 4 - year / 100 + year / 400 + t[month - 1] + day) % 7;
}

namespace {
class ScriptedProgress : public Progress {
 public:
  ScriptedProgress(ScriptedPlatform& owner, bool can_cancel)
      : owner_(owner), can_cancel_(can_cancel) {}
  bool step(int64_t, int64_t) override {
    ++owner_.progress_steps;
    if (!can_cancel_) return true;
    return owner_.cancel_progress_at < 0 || owner_.progress_steps < owner_.cancel_progress_at;
  }

 private:
  ScriptedPlatform& owner_;
  bool can_cancel_;
};
}  // namespace

void ScriptedPlatform::notify(const std::string& text, const std::string& title) {
  std::lock_guard lock(notice_mutex_);
  notices_.push_back(title + ": " + text);
  notice_added_.notify_all();
}

void ScriptedPlatform::notify_details(const std::string& text, const std::string& title,
                                      const std::string& details) {
  {
    std::lock_guard lock(notice_mutex_);
    notice_details_.push_back(details);
  }
  notify(text, title);
}

std::vector<std::string> ScriptedPlatform::notice_details() const {
  std::lock_guard lock(notice_mutex_);
  return notice_details_;
}

bool ScriptedPlatform::wait_notices(size_t count, int timeout_ms) {
  std::unique_lock lock(notice_mutex_);
  return notice_added_.wait_for(lock, std::chrono::milliseconds(timeout_ms),
                                [&] { return notices_.size() >= count; });
}

std::vector<std::string> ScriptedPlatform::notices() const {
  std::lock_guard lock(notice_mutex_);
  return notices_;
}

std::unique_ptr<Progress> ScriptedPlatform::begin_progress(const std::string& text,
                                                           const std::string& title,
                                                           bool can_cancel) {
  progress_shown.push_back(title + ": " + text);
  return std::make_unique<ScriptedProgress>(*this, can_cancel);
}

bool ScriptedPlatform::wait(const std::string& text, const std::string& title, int interval_ms,
                            const std::function<bool()>& poll) {
  waits_shown.push_back(title + ": " + text);
  for (int polls = 0; polls < wait_poll_limit; ++polls) {
    if (wait_cancel_after >= 0 && polls >= wait_cancel_after) return false;
    if (poll()) return true;
    ticks += interval_ms;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return false;
}

ScriptedPlatform::ScriptedPlatform() {
  set_now(2026, 11, 22);
}

void ScriptedPlatform::set_now(int year, int month, int day, int hour, int minute) {
  clock = {year, month, Weekday(year, month, day), day, hour, minute, 0};
}

LocalTime ScriptedPlatform::now() {
  return clock;
}

Answer ScriptedPlatform::message(const std::string& text, const std::string& title,
                                 Buttons buttons) {
  messages.push_back({text, title, buttons});
  if (!answers.empty()) {
    Answer a = answers.front();
    answers.pop_front();
    return a;
  }
  return buttons == Buttons::YesNo || buttons == Buttons::YesNoCancel ? Answer::Yes : Answer::Ok;
}

std::optional<std::string> ScriptedPlatform::prompt(const std::string& text,
                                                    const std::string& title,
                                                    const std::string& initial, bool) {
  prompts_shown.push_back(title + ": " + text);
  prompt_presets.push_back(initial);
  if (prompts.empty()) return std::nullopt;
  auto reply = prompts.front();
  prompts.pop_front();
  return reply;
}

std::string ScriptedPlatform::short_date(int year, int month, int day) {
  static const char* days[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
  static const char* months[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                 "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  char buf[32];
  std::snprintf(buf, sizeof buf, "%s %d %s %02d", days[Weekday(year, month, day)], day,
                months[month - 1], year % 100);
  return buf;
}

std::optional<std::string> ScriptedPlatform::choose_file(const std::string&, bool,
                                                         const std::string&) {
  if (files.empty()) return std::nullopt;
  auto f = files.front();
  files.pop_front();
  return f;
}

std::optional<std::string> ScriptedPlatform::choose_folder(const std::string&, const std::string&) {
  return choose_file({}, false, {});
}

std::vector<std::string> ScriptedPlatform::shown() const {
  std::vector<std::string> out;
  for (const auto& m : messages) out.push_back(m.title + ": " + m.text);
  return out;
}

}  // namespace tilo
