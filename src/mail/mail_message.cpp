// SPDX-License-Identifier: MIT
#include "mail/mail_message.h"

#include <unistd.h>

#include <cinttypes>
#include <cstdio>
#include <cstring>
#include <filesystem>

#include "core/state.h"
#include "platform/files.h"

namespace tilo {
namespace {

template <size_t N>
std::string Field(const char (&field)[N]) {
  return std::string(field, strnlen(field, N));
}

template <typename... Args>
std::string Format(const char* picture, Args... args) {
  char buf[512];
  std::snprintf(buf, sizeof buf, picture, args...);
  return buf;
}

std::string CurrentFolderFile(const char* name) {
  std::error_code error;
  auto folder = std::filesystem::current_path(error);
  return error ? std::string(name) : (folder / name).string();
}

// The day's item rows: every byte above 30 joins the line, a CR or a full line of
// 253 sends it with CR LF; what follows the last CR is left out.
bool SendItemsFile(const std::string& path,
                   const std::function<void(std::string_view piece)>& send) {
  File file(path, File::Mode::Read);
  if (!file) return false;
  constexpr size_t kLongestLine = 253;
  std::string line;
  char block[4096];
  int64_t got;
  while ((got = file.read(block, sizeof block)) > 0) {
    for (int64_t i = 0; i < got; ++i) {
      const auto byte = static_cast<unsigned char>(block[i]);
      if (byte > 30) line.push_back(char(byte));
      if (byte == '\r' || line.size() == kLongestLine) {
        line += "\r\n";
        send(line);
        line.clear();
      }
    }
  }
  return true;
}

}  // namespace

MailJob SnapshotMailJob(MailKind kind, const MailSetup& setup) {
  const State& g = G();
  MailJob job;
  job.kind = kind;
  job.setup = setup;
  job.heading1 = Field(g.heading.site_name);
  job.heading2 = Field(g.heading.site_road);
  const SettingsRecord& s = g.settings;
  job.till_takings = s.till_takings;
  job.transactions = s.today_transactions;
  job.items = s.today_items;
  job.cash_sales = s.cash_sales;
  job.ch_sales = s.ch_sales;
  job.eft_sales = s.eft_sales;
  job.credit_sales = s.credit_sales;
  job.customer_number = g.member.number;
  job.balance = g.member.balance;
  job.items_file = CurrentFolderFile("ES.CSV");
  return job;
}

std::string MailDate(const LocalTime& t) {
  static const char* days[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
  static const char* months[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                 "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  if (t.month < 1 || t.month > 12 || t.day_of_week < 0 || t.day_of_week > 6) return {};
  return Format("%s %s %02d %02d", days[t.day_of_week], months[t.month - 1], t.day, t.year % 100);
}

bool ComposeMessage(const MailJob& job, const LocalTime& now,
                    const std::function<void(std::string_view piece)>& send) {
  const MailSetup& m = job.setup;
  const char* from = m.your_email.c_str();
  const char* to = m.target_email.c_str();
  auto headings = [&] {
    send(Format("%s\r\n", job.heading1.c_str()));
    send(Format("%s\r\n\r\n", job.heading2.c_str()));
  };
  auto stamp = [&](const char* picture) {
    send(Format(picture, now.hour, now.minute));
    send(MailDate(now));
    send("\r\n\r\n");
  };

  if (job.kind == MailKind::Debtor) {
    send(Format("FROM: %s\r\nTO: %s\r\nSUBJECT: Overdue balance\r\n\r\n", from, to));
    headings();
    stamp("Overdue reminder: %d:%02d ");
    send(Format("Dear Sir / Madam,  Customer reference: %" PRId64 "\r\n", job.customer_number));
    send("According to our records the following balance is overdue:\r\n\r\n");
    send(Format("%.2f\r\n", double(job.balance)));
    send("\r\nPlease remit at your earliest convenience. Thank you.");
    return true;
  }

  const bool items = job.kind == MailKind::DailyItems;
  send(Format(items ? "FROM: %s\r\nTO: %s\r\nSUBJECT: TILO Daily items\r\n\r\n"
                    : "FROM: %s\r\nTO: %s\r\nSUBJECT: TILO report\r\n\r\n",
              from, to));
  stamp(items ? "TILO Daily items: %d:%02d " : "TILO report: %d:%02d ");
  headings();
  send(Format("Today's takings: %.2f\r\n", job.till_takings));
  send(Format("Today Transactions: %" PRId64 " Items: %" PRId64 "\r\n", job.transactions,
              job.items));
  send(Format("Cash: %.2f, CH: %.2f\r\n", job.cash_sales, job.ch_sales));
  send(Format("EFT: %.2f, Credit sales: %.2f\r\n", job.eft_sales, job.credit_sales));
  if (items && !SendItemsFile(job.items_file, send)) return false;
  send("End report");
  return true;
}

}  // namespace tilo
