// SPDX-License-Identifier: MIT
// The platform seen through Qt: real message boxes, the real clock and screen.
#pragma once

#include "platform/platform.h"

namespace tilo {

class QtPlatform : public Platform {
 public:
  Answer message(const std::string& text, const std::string& title, Buttons buttons) override;
  std::optional<std::string> prompt(const std::string& text, const std::string& title,
                                    const std::string& initial, bool hidden) override;
  LocalTime now() override;
  uint64_t tick_count() override;
  void play_sound(int sound_id) override;
  DesktopSize desktop() override;
  std::string currency_symbol() override;
  std::string short_date(int year, int month, int day) override;
  std::string long_date(int year, int month, int day) override;
  std::string month_date(int year, int month, int day) override;
  std::optional<std::string> choose_file(const std::string& title, bool for_saving,
                                         const std::string& filter) override;
  std::optional<std::string> choose_folder(const std::string& title,
                                           const std::string& initial) override;
  std::unique_ptr<Progress> begin_progress(const std::string& text, const std::string& title,
                                           bool can_cancel) override;
  bool wait(const std::string& text, const std::string& title, int interval_ms,
            const std::function<bool()>& poll) override;
  void notify(const std::string& text, const std::string& title) override;
  void notify_details(const std::string& text, const std::string& title,
                      const std::string& details) override;
};

}  // namespace tilo
