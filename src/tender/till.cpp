// SPDX-License-Identifier: MIT
#include "tender/till.h"

#include <charconv>
#include <cstdio>

#include "core/activity_log.h"
#include "core/clock.h"
#include "core/settings.h"
#include "core/state.h"
#include "core/text.h"
#include "documents/print_job.h"
#include "platform/platform.h"
#include "sale/commands.h"
#include "sale/pricing.h"

namespace tilo {
namespace {

std::string ClerkLine() {
  const SettingsRecord& s = G().settings;
  return "Assoc: " + std::to_string(s.clerk_number) + ", " + ClerkName(s, s.clerk_number);
}

// The leading decimal number of a typed amount, in any locale; 0 when there is none.
double TypedAmount(const std::string& text) {
  size_t at = text.find_first_not_of(" \t");
  if (at == std::string::npos) return 0;
  if (text[at] == '+') ++at;
  double value = 0;
  const char* begin = text.data() + at;
  const auto [end, error] = std::from_chars(begin, text.data() + text.size(), value);
  if (error != std::errc() || end == begin) return 0;
  return value;
}

}  // namespace

TillFigures Tillfigures() {
  const SettingsRecord& s = G().settings;
  TillFigures f;
  f.initial = s.till_float;
  f.cash = s.cash_sales + s.balance_cash;
  f.cash_refunds = s.cash_refunds;
  f.petty_cash = s.petty_cash_today;
  f.cash_back = s.cashback_today;
  f.total_cash = s.till_float + s.cash_sales + s.balance_cash + s.cash_refunds -
                 s.petty_cash_today - s.cashback_today;
  f.ch = s.ch_sales + s.balance_ch;
  f.ch_refunds = s.ch_refunds;
  f.eft = s.eft_sales + s.balance_eft;
  f.eft_refunds = s.eft_refunds;
  f.till_total = f.total_cash + s.ch_sales + s.balance_ch + s.ch_refunds + s.eft_sales +
                 s.balance_eft + s.eft_refunds;
  return f;
}

TillRows Tillrows(bool paid_out_negative) {
  const TillFigures f = Tillfigures();
  // 0 - x rather than -x, so that nothing paid out reads 0.00 and not -0.00.
  const double petty = paid_out_negative ? 0.0 - f.petty_cash : f.petty_cash;
  const double back = paid_out_negative ? 0.0 - f.cash_back : f.cash_back;
  return {
      {"Initial till", MoneyText(f.initial)},
      {"Cash", MoneyText(f.cash)},
      {"Cash refunds", MoneyText(f.cash_refunds)},
      {"Petty cash", MoneyText(petty)},
      {"Cash back", MoneyText(back)},
      {"Total cash", MoneyText(f.total_cash)},
      {"Ch", MoneyText(f.ch)},
      {"Ch refunds", MoneyText(f.ch_refunds)},
      {"EFT", MoneyText(f.eft)},
      {"EFT refunds", MoneyText(f.eft_refunds)},
      {"Till total", MoneyText(f.till_total)},
  };
}

std::string Closeoutmoment() {
  Timestamp();
  State& g = G();
  const LocalTime now = g.now;
  std::snprintf(g.pretty_date, sizeof g.pretty_date, "00:00%2d/%2d/%d", now.day, now.month,
                now.year);
  if (Shortdate() == 0)
    std::snprintf(g.pretty_date, sizeof g.pretty_date, "%2d/%2d/%d", now.day, now.month, now.year);
  char time[8];
  std::snprintf(time, sizeof time, "%02d:%02d", now.hour, now.minute);
  return std::string(time) + " " + g.pretty_date;
}

bool Logcloseout() {
  std::string entry = "\r\nTill closeout: " + Closeoutmoment() + "\r\n" + ClerkLine() + "\r\n";
  for (const auto& [label, value] : Tillrows(false)) entry += label + ": " + value + "\r\n";
  if (!AppendToLog(entry)) {
    Message("Data file: bun4.dat, not present.", "Fatal error");
    return false;
  }
  return true;
}

void Printcloseout(PrintTarget& target) {
  const std::string heading = FieldText(G().heading.site_name) + "  Till closeout";
  ListingPage page = Startlistingpage(target, heading);
  page.text(0, Closeoutmoment());
  ++page.row;
  page.text(0, ClerkLine());
  page.row += 2;
  for (const auto& [label, value] : Tillrows(false)) {
    page.text(0, label + ": " + value);
    ++page.row;
  }
}

bool Printcloseoutjob() {
  std::unique_ptr<PrintTarget> target = Choosetarget(true);
  if (!target) return false;
  if (!Runsinglepagejob(std::move(target), Printcloseout))
    Message("Unable to release printer", "Problem");
  return true;
}

void Tillcloseout(const CloseoutFormRunner& form) {
  if (G().tender_form_open == 2) return;
  if (form() == CloseoutChoice::Cancel) return;
  // Without the log the clerk stays on.
  if (!Logcloseout()) return;
  Dispatch(Command::LogOff);
}

void Pettycash() {
  std::optional<std::string> reply =
      platform().prompt("Please enter the amount", "Petty cash payment");
  if (!reply) return;
  const double amount = TypedAmount(*reply);
  if (amount < 0) {
    Message("Negative amount", "Problem");
    return;
  }
  // Taken at two decimals, as the amount would print.
  G().settings.petty_cash_today += TypedAmount(MoneyText(amount));
  Message("Recorded", "Petty cash payment");
}

}  // namespace tilo
