// SPDX-License-Identifier: MIT
// The one seam between TILO's logic and the machine it runs on: message boxes,
// prompts, the clock, sounds, the desktop, the locale. The real program installs
// the Qt implementation; tests install a scripted one that records every message.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tilo {

enum class Buttons { Ok, OkCancel, YesNo, YesNoCancel };
enum class Answer { Ok, Cancel, Yes, No };

// One reading of the local clock. day_of_week: 0 is Sunday.
struct LocalTime {
  int year = 0;
  int month = 0;
  int day_of_week = 0;
  int day = 0;
  int hour = 0;
  int minute = 0;
  int second = 0;
};

struct DesktopSize {
  int width = 0;
  int height = 0;
};

// Long work (a walk over a big record file, a year of history) reports its
// steps here. The box shows only once the work has run 0.3 s: the text, a bar and
// Cancel; while it is up the screen keeps painting.
class Progress {
 public:
  virtual ~Progress() = default;
  // `done` of `total` (a total of 0: not known). False once the operator has
  // pressed Cancel: the work stops and leaves what it would have written unwritten.
  virtual bool step(int64_t done, int64_t total) = 0;
};

class Platform {
 public:
  virtual ~Platform() = default;

  // A modal message box: text first, title second. Returns the button pressed.
  virtual Answer message(const std::string& text, const std::string& title,
                         Buttons buttons = Buttons::Ok) = 0;
  // A one-line prompt; nullopt when the operator cancels. `hidden` masks the typing.
  virtual std::optional<std::string> prompt(const std::string& text, const std::string& title,
                                            const std::string& initial = {},
                                            bool hidden = false) = 0;
  virtual LocalTime now() = 0;
  // Milliseconds since some fixed point; only differences mean anything.
  virtual uint64_t tick_count() = 0;
  // Plays one of the wave sounds (8002, 8003, 8004) without blocking.
  virtual void play_sound(int sound_id) = 0;
  virtual DesktopSize desktop() = 0;
  // The locale's own currency symbol, e.g. "£" or "$", as UTF-8.
  virtual std::string currency_symbol() = 0;
  // A date in the locale's "ddd d MMM yy" picture, as UTF-8.
  virtual std::string short_date(int year, int month, int day) = 0;
  // A date in the locale's long "dddd MMMM d yyyy" picture, as UTF-8. The
  // default gives the English names.
  virtual std::string long_date(int year, int month, int day);
  // A date in the locale's "MMM d yyyy" picture, as UTF-8. The default gives
  // the English names.
  virtual std::string month_date(int year, int month, int day);
  // A file chooser; nullopt when cancelled.
  virtual std::optional<std::string> choose_file(const std::string& title, bool for_saving,
                                                 const std::string& filter = {}) = 0;
  virtual std::optional<std::string> choose_folder(const std::string& title,
                                                   const std::string& initial = {}) = 0;
  // Starts the progress of one piece of long work; it ends when the object goes.
  // Without `can_cancel` the box has no Cancel and step() is always true. The
  // default never shows anything and never cancels.
  virtual std::unique_ptr<Progress> begin_progress(const std::string& text,
                                                   const std::string& title,
                                                   bool can_cancel = true);
  // A modal wait: a box with `text` and Cancel stays painted while `poll` is
  // called every `interval_ms`; returns true as soon as `poll` does, false when
  // the operator cancels first. The default polls, sleeping between calls.
  virtual bool wait(const std::string& text, const std::string& title, int interval_ms,
                    const std::function<bool()>& poll);
  // A message from work running beside the till (the mail): callable from any
  // thread, it returns at once and the box blocks nothing. The default writes
  // it to the error stream.
  virtual void notify(const std::string& text, const std::string& title);
  // The same with `details` the box shows on request (the network's own reason);
  // empty details: a plain notice. The default drops the details.
  virtual void notify_details(const std::string& text, const std::string& title,
                              const std::string& details);
};

// The platform in force. Until one is installed a headless default answers OK to
// every message and reads the real clock, so command-line tools work too.
Platform& platform();
void install_platform(Platform* p);

// Shorthands for the common calls.
inline Answer Message(const std::string& text, const std::string& title,
                      Buttons buttons = Buttons::Ok) {
  return platform().message(text, title, buttons);
}

}  // namespace tilo
