// SPDX-License-Identifier: MIT
// A platform whose answers are scripted and whose every message is recorded:
// tests check the exact words and titles the operator would see, and a fixed
// clock lets them start the program "on" any date.
#pragma once

#include <condition_variable>
#include <deque>
#include <mutex>
#include <string>
#include <vector>

#include "platform/platform.h"

namespace tilo {

struct ShownMessage {
  std::string text;
  std::string title;
  Buttons buttons;
};

class ScriptedPlatform : public Platform {
 public:
  ScriptedPlatform();

  Answer message(const std::string& text, const std::string& title, Buttons buttons) override;
  std::optional<std::string> prompt(const std::string& text, const std::string& title,
                                    const std::string& initial, bool hidden) override;
  LocalTime now() override;
  uint64_t tick_count() override { return ticks += 16; }
  void play_sound(int sound_id) override { sounds.push_back(sound_id); }
  DesktopSize desktop() override { return desktop_size; }
  std::string currency_symbol() override { return currency; }
  std::string short_date(int year, int month, int day) override;
  std::optional<std::string> choose_file(const std::string& title, bool for_saving,
                                         const std::string& filter) override;
  std::optional<std::string> choose_folder(const std::string& title,
                                           const std::string& initial) override;

  std::unique_ptr<Progress> begin_progress(const std::string& text, const std::string& title,
                                           bool can_cancel) override;
  // Polls without sleeping, advancing the tick count by the interval each time;
  // cancels after `wait_cancel_after` polls when that is 0 or more, and gives up
  // (as a cancel) after `wait_poll_limit` polls, sleeping 1 ms between polls
  // so that a peer process or thread can answer.
  bool wait(const std::string& text, const std::string& title, int interval_ms,
            const std::function<bool()>& poll) override;

  // Recorded under a lock, from whatever thread calls it.
  void notify(const std::string& text, const std::string& title) override;
  // Recorded as a notice; the details apart, in `notice_details()`.
  void notify_details(const std::string& text, const std::string& title,
                      const std::string& details) override;
  std::vector<std::string> notice_details() const;
  // Waits up to `timeout_ms` until `count` notices in all have come; false on
  // the time-out.
  bool wait_notices(size_t count, int timeout_ms = 10000);
  // The notices so far, "title: text" each.
  std::vector<std::string> notices() const;

  // Sets the clock; the weekday is worked out from the date.
  void set_now(int year, int month, int day, int hour = 9, int minute = 30);
  // Answers given to the next message boxes, in order; when none is queued a box
  // gets OK (or Yes).
  void queue_answer(Answer a) { answers.push_back(a); }
  void queue_prompt(std::optional<std::string> reply) { prompts.push_back(std::move(reply)); }
  void queue_file(std::optional<std::string> path) { files.push_back(std::move(path)); }

  // The texts shown, "title: text" each, for compact assertions.
  std::vector<std::string> shown() const;
  void clear_record() {
    messages.clear();
    sounds.clear();
    std::lock_guard lock(notice_mutex_);
    notices_.clear();
    notice_details_.clear();
  }

  std::vector<ShownMessage> messages;
  // "title: text" of every progress begun and every wait shown.
  std::vector<std::string> progress_shown;
  std::vector<std::string> waits_shown;
  // The progress presses Cancel at this step (counting step() calls from 1 over
  // the whole run); -1 never.
  int64_t cancel_progress_at = -1;
  int64_t progress_steps = 0;
  int wait_cancel_after = -1;
  int wait_poll_limit = 20000;
  std::vector<std::string> prompts_shown;
  // The text each prompt opened with, in the same order.
  std::vector<std::string> prompt_presets;
  std::vector<int> sounds;
  std::deque<Answer> answers;
  std::deque<std::optional<std::string>> prompts;
  std::deque<std::optional<std::string>> files;
  LocalTime clock;
  DesktopSize desktop_size{1280, 1024};
  std::string currency = "£";
  uint64_t ticks = 1000;

 private:
  mutable std::mutex notice_mutex_;
  std::condition_variable notice_added_;
  std::vector<std::string> notices_;
  std::vector<std::string> notice_details_;
};

// Day of the week (0 = Sunday) of a Gregorian date.
int Weekday(int year, int month, int day);

}  // namespace tilo
