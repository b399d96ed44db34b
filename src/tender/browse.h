// SPDX-License-Identifier: MIT
// The transaction browser: any past transaction in the history range found by
// number or picked from a list (a day, a month, a year, the discounted ones, or
// all), shown on one form, stepped through with "&Next" and reprinted. It reads
// the history tree and writes nothing. The shown transaction is loaded into the
// live basket so the document printers work unchanged; whatever way the form
// closes, the basket is emptied again, so a past sale is never tendered twice.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/history.h"
#include "sale/commands.h"

namespace tilo {

// The lines of the invoice list stop past this many.
inline constexpr size_t kListLimit = 31000;

// Which entries of the transaction index a list keeps; 0 keeps any.
struct BrowseFilter {
  int day = 0;
  int month = 0;
  int year = 0;
};

// The list of the transaction index from the start of the history to this
// year, in file order, "%d on day %d of month %d, %d" a line. nullopt when the
// list grew past the limit (after its message) or the operator cancelled.
std::optional<std::vector<std::string>> Transactionlist(const BrowseFilter& filter);
// Every transaction with a discount, day by day from the start of the history
// to today, from the sales logs.
std::optional<std::vector<std::string>> Discountedlist();

// A transaction as the form shows it (UTF-8).
struct TransactionShown {
  std::string type, number, clerk, date, time, items, discount, customer, payment;
  std::string non_taxable, taxable, subtotal, tax1, tax2, total, cash_back, notes;
  std::vector<std::string> lines;  // "%I64d %s  %.2f": number, description, line total
};
TransactionShown Showntransaction(const TransactionRecords& t);

// Copies a transaction into the live basket, as the printers read it. No log
// keeps the money handed over, so it reads as paid exactly, with no change.
void Loadtransaction(const TransactionRecords& t);

// One browse: the transaction on the form, and the reading of the history that
// "&Next" walks on from. Its end empties the basket.
class TransactionBrowser {
 public:
  explicit TransactionBrowser(bool discounted) : discounted_(discounted) {}
  ~TransactionBrowser();
  TransactionBrowser(const TransactionBrowser&) = delete;
  TransactionBrowser& operator=(const TransactionBrowser&) = delete;

  // Finds a transaction by number and loads it; false (the browse ends) when
  // it is not on file.
  bool Open(int32_t number);
  // The next transaction on file (a discounted one when the browse lists
  // those); false with "End of list." past the newest, or on Cancel, the
  // current one staying.
  bool Next();
  const TransactionShown& shown() const { return shown_; }
  int32_t number() const { return number_; }

 private:
  struct Entry {
    int32_t number;
    int16_t year;
    int8_t month, day;
  };
  bool BuildIndex();
  const SalesLogRecord* DaySale(const Entry& e, int32_t number);
  void Show(const TransactionRecords& t);

  bool discounted_;
  int32_t number_ = 0;
  TransactionShown shown_;
  // Built at the first "&Next": every number on file once, at its first place.
  std::vector<Entry> index_;
  bool indexed_ = false;
  // The sales log of the day last read.
  int cached_year_ = 0, cached_month_ = 0, cached_day_ = 0;
  std::vector<SalesLogRecord> day_;
};

// The browser's forms as the logic sees them. Without a screen the list is given
// up and the form closes at once.
class BrowseView {
 public:
  virtual ~BrowseView() = default;
  // "Invoice list": the selected line's text, nullopt for Cancel.
  virtual std::optional<std::string> invoice_list(const std::vector<std::string>&) {
    return std::nullopt;
  }
  // "Transaction", modal, until "OK".
  virtual void transaction_form(TransactionBrowser&) {}
};

BrowseView& browse_view();
void install_browse_view(BrowseView* view);

// Find transaction, Display transaction, In specific day / month / year,
// Discounted and Reprint last receipt invoice.
void Browse(Command command);

}  // namespace tilo
