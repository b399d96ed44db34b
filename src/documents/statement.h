// SPDX-License-Identifier: MIT
// What the shop prints for one customer from the history: the statement (the
// customer's transactions since the history begins, on one page) and the
// period activity report (the same list over a chosen period, on as many
// listing pages as it needs). The list is walked from the day logs.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/history.h"
#include "documents/print_target.h"
#include "reports/report_walk.h"

namespace tilo {

struct MemberRecord;

// A transaction of the customer as the list shows it.
struct StatementEntry {
  CalendarDate day;
  std::string payment_type;  // Windows-1252
  int64_t transaction_number = 0;
  float total = 0;
};

// The transactions of `customer` from `start` to `end`, walked as the period
// reports walk, each day's saleslog.dat read once; a year or month with no
// folder is passed over whole. None when the progress said stop. The walk
// touches no shared state, so it may run off the interface thread.
std::optional<std::vector<StatementEntry>> Customertransactions(int64_t customer,
                                                                const CalendarDate& start,
                                                                const CalendarDate& end,
                                                                const WalkProgress& progress = {});
// The first day of the history (the settings' history_from date) and today.
CalendarDate Historystart();
CalendarDate Today();

// One row of the list: a sale, a paid sale or a payment on account, with the
// day in the short date picture.
std::string Statementrow(const StatementEntry& entry);
// The rows of the entries and the balance row that ends them.
std::vector<std::string> Statementrows(const std::vector<StatementEntry>& entries, float balance);

// The statement page for `customer` with its list (balance row included): only
// the last 16 rows are printed.
void Printstatement(PrintTarget& target, const MemberRecord& customer,
                    const std::vector<std::string>& rows);

// One page of the period report: the header with the page number, the rows
// from `next` on until the page is full. Each copy starts from the first row.
void Printactivitypage(PrintTarget& target, const std::string& name,
                       const std::vector<std::string>& rows, size_t& next);

// "Period: <start> to <end>", the period report's title.
std::string Activitytitle(const CalendarDate& start, const CalendarDate& end);

// The STATEMENT dialog as the logic sees it: the title, "CUSTOMER: ..." in the
// top field, the rows under " Detail:", and the print button's work.
struct StatementScreen {
  std::string title;     // UTF-8
  std::string customer;  // Windows-1252
  std::vector<std::string> rows;
  std::function<void()> print;
};

class StatementView {
 public:
  virtual ~StatementView() = default;
  // Modal. Without a screen nothing is shown.
  virtual void show_statement(const StatementScreen&) {}
};
StatementView& statement_view();
// nullptr puts back the one without a screen.
void install_statement_view(StatementView* view);

// The commands "Customer statement" and "Customer period activity".
void Customerstatement();
void Customerperiodactivity();
// Installs the work of those two, the debtor letters and "Customer details".
void InstallStatementCommands();

}  // namespace tilo
