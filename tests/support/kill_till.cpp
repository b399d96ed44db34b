// SPDX-License-Identifier: MIT
#include "support/kill_till.h"

#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <deque>
#include <filesystem>
#include <functional>
#include <random>
#include <set>

#include "core/activity_log.h"
#include "core/customer_file.h"
#include "core/film_record.h"
#include "core/history.h"
#include "core/inventory.h"
#include "core/rollover.h"
#include "core/settings.h"
#include "core/startup.h"
#include "core/state.h"
#include "core/text.h"
#include "customers/customer_form.h"
#include "customers/customer_maintenance.h"
#include "documents/print_service.h"
#include "documents/recording_target.h"
#include "inventory/items.h"
#include "inventory/receiving.h"
#include "platform/files.h"
#include "platform/scripted_platform.h"
#include "sale/basket.h"
#include "tender/account.h"
#include "tender/cash.h"
#include "tender/eft.h"
#include "tender/refund.h"
#include "tender/split.h"
#include "upkeep/backup.h"
#include "upkeep/exchange_view.h"
#include "upkeep/import.h"
#include "upkeep/purge.h"
#include "upkeep/upkeep_view.h"

namespace tilo {

namespace {

constexpr const char* kNames[kKillOps] = {
    "cash",         "card",           "split",           "account",    "refund",
    "balance",      "receive",        "item-add",        "item-amend", "item-delete",
    "customer-add", "customer-amend", "customer-delete", "rollover",   "purge",
    "backup",       "restore",        "import"};

}  // namespace

const char* KillOpName(KillOp op) {
  return kNames[int(op)];
}

std::optional<KillOp> KillOpNamed(const std::string& name) {
  for (int k = 0; k < kKillOps; ++k)
    if (name == kNames[k]) return KillOp(k);
  return std::nullopt;
}

std::string Digest(const std::string& bytes) {
  uint64_t h = 1469598103934665603ull;
  for (unsigned char c : bytes) h = (h ^ c) * 1099511628211ull;
  char text[20];
  std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(h));
  return text;
}

std::map<int64_t, std::string> LiveRecords(const std::string& path, size_t record_size) {
  std::map<int64_t, std::string> live;
  const std::string bytes = ReadWholeFile(path).value_or("");
  for (size_t at = 0; at + record_size <= bytes.size(); at += record_size) {
    int64_t number;
    std::memcpy(&number, bytes.data() + at, sizeof number);
    if (number > 0) live[number] = bytes.substr(at, record_size);
  }
  return live;
}

std::string ItemState(const std::string& record) {
  FilmRecord r;
  std::memcpy(&r, record.data(), sizeof r);
  return Digest(record) + " " + std::to_string(r.quantity);
}

std::string CustomerState(const std::string& record) {
  MemberRecord r;
  std::memcpy(&r, record.data(), sizeof r);
  return Digest(record) + " " + std::to_string(std::lround(double(r.balance) * 100));
}

std::string FileDigest(const std::string& path) {
  const auto bytes = ReadWholeFile(path);
  return bytes ? Digest(*bytes) : "-";
}

namespace {

// The card application, answering every request at once with an approval.
struct TillPlatform : ScriptedPlatform {
  bool wait(const std::string& text, const std::string& title, int interval_ms,
            const std::function<bool()>& poll) override {
    const std::string folder = Eftfolder();
    if (FileExists(folder + "/input.txt")) {
      RemoveFile(folder + "/input.txt");
      ReplaceFile(folder + "/output.txt", std::string_view("1=0\n3=0\n"));
    }
    return ScriptedPlatform::wait(text, title, interval_ms, poll);
  }
};

struct TillRefund : RefundView {
  std::optional<RefundChoice> refund_form() override { return RefundChoice{kCashRefund}; }
};

struct TillAccount : AccountView {
  int customer_transaction(const std::vector<AccountField>&) override { return kTenderCredit; }
  std::optional<PaymentEntry> payment(const PaymentShown&) override {
    return PaymentEntry{"1.25", kPayCash};
  }
};

struct TillInventory : InventoryView {
  ItemButton edit_item(ItemForm& form) override {
    if (!item) return ItemButton::Cancel;
    auto step = std::move(item);
    item = nullptr;
    step(form.record);
    return ItemButton::Ok;
  }
  ReceiveButton receive_item(ReceiveForm& form) override {
    form.quantity = "5";
    return ReceiveButton::Ok;
  }
  std::function<void(FilmRecord&)> item;
};

struct TillCustomers : CustomerView {
  FormButton edit(CustomerLayout, CustomerEntries& e) override {
    if (!card) return FormButton::Cancel;
    auto step = std::move(card);
    card = nullptr;
    step(e);
    return FormButton::Ok;
  }
  void view(CustomerPage&) override {}
  std::function<void(CustomerEntries&)> card;
};

struct TillUpkeep : UpkeepView {
  bool confirm_restore() override { return true; }
};

struct TillExchange : ExchangeView {
  std::optional<ImportColumns> import_columns(bool, const std::string&,
                                              const ImportColumns& defaults) override {
    ImportColumns merged = defaults;
    merged.merge = true;
    return merged;
  }
};

class Till {
 public:
  Till(int report, uint64_t seed) : report_(report), rng_(seed) {}

  void Open(int year, int month, int day) {
    install_platform(&platform_);
    install_refund_view(&refund_);
    install_account_view(&account_);
    install_inventory_view(&inventory_);
    install_customer_view(&customers_);
    install_upkeep_view(&upkeep_);
    install_exchange_view(&exchange_);
    install_print_service(&printers_);
    platform_.set_now(year, month, day, 10, 0);
    Restart();
  }

  [[noreturn]] void Run(KillOp focus) {
    for (;;) {
      Do(focus);
      // Now and then a sale between, so that every kind of file keeps growing.
      if (rng_() % 4 == 0) Do(KillOp::Cash);
    }
  }

 private:
  void Send(const std::string& line) {
    const std::string whole = line + "\n";
    if (write(report_, whole.data(), whole.size()) != ssize_t(whole.size())) _exit(4);
  }
  [[noreturn]] void Fail(const std::string& why) {
    Send("E " + why);
    _exit(3);
  }
  static int64_t Micros() {
    timespec t;
    clock_gettime(CLOCK_MONOTONIC, &t);
    return int64_t(t.tv_sec) * 1000000 + t.tv_nsec / 1000;
  }
  std::string Date() const {
    const LocalTime& t = platform_.clock;
    return std::to_string(t.year) + " " + std::to_string(t.month) + " " + std::to_string(t.day);
  }

  // A start, as after the program closed down: the store opened afresh.
  void Restart() {
    ResetState();
    platform_.clear_record();
    if (!OpenStore()) Fail("the store did not open");
  }

  int64_t AnySaleItem() { return int64_t(rng_() % kSaleItems) + 1; }

  // Numbers of the live records of a kind within [from, to).
  std::vector<int64_t> Live(const IndexedFile& file, int64_t from, int64_t to) const {
    std::vector<int64_t> numbers;
    for (const IndexEntry& e : file.index)
      if (e.number >= from && e.number < to) numbers.push_back(e.number);
    return numbers;
  }
  int64_t Pick(const std::vector<int64_t>& numbers) {
    return numbers[size_t(rng_() % numbers.size())];
  }

  void ReportItem(int64_t number) {
    const auto live = LiveRecords(kFilmFile, sizeof(FilmRecord));
    const auto it = live.find(number);
    Send("I " + std::to_string(number) + " " + (it == live.end() ? "- 0" : ItemState(it->second)));
  }
  void ReportCustomer(int64_t number) {
    const auto live = LiveRecords(kMemberFile, sizeof(MemberRecord));
    const auto it = live.find(number);
    Send("C " + std::to_string(number) + " " +
         (it == live.end() ? "- 0" : CustomerState(it->second)));
  }
  // Every record of both files, after a job that replaced them whole.
  void ReportAll() {
    Send("ZI");
    for (const auto& [number, bytes] : LiveRecords(kFilmFile, sizeof(FilmRecord)))
      Send("I " + std::to_string(number) + " " + ItemState(bytes));
    Send("ZC");
    for (const auto& [number, bytes] : LiveRecords(kMemberFile, sizeof(MemberRecord)))
      Send("C " + std::to_string(number) + " " + CustomerState(bytes));
  }
  void ReportLog() {
    const std::string log = ReadWholeFile(kActivityLog).value_or("");
    Send("L " + std::to_string(log.size()) + " " + Digest(log));
  }
  void Begin(KillOp op, const std::string& detail) {
    Send(std::string("B ") + KillOpName(op) + " " + detail);
    started_ = Micros();
  }
  void Done(KillOp op) {
    ReportLog();
    Send(std::string("D ") + KillOpName(op) + " " + std::to_string(Micros() - started_));
  }

  void Do(KillOp op) {
    switch (op) {
      case KillOp::Cash:
      case KillOp::Card:
      case KillOp::Split:
      case KillOp::Account:
      case KillOp::Refund:
        return Sale(op);
      case KillOp::BalancePayment:
        return Payment();
      case KillOp::Receive:
        return Receive();
      case KillOp::ItemAdd:
        return void(ItemAdd());
      case KillOp::ItemAmend:
        return ItemAmend();
      case KillOp::ItemDelete:
        return ItemDelete();
      case KillOp::CustomerAdd:
        return void(CustomerAdd());
      case KillOp::CustomerAmend:
        return CustomerAmend();
      case KillOp::CustomerDelete:
        return CustomerDelete();
      case KillOp::Rollover:
        return Rollover();
      case KillOp::Purge:
        return Purge();
      case KillOp::Backup:
        return TakeBackup();
      case KillOp::Restore:
        return RestoreBackup();
      case KillOp::Import:
        return Import();
    }
  }

  // A basket of one to four lines paid (or refunded) the way `op` says.
  void Sale(KillOp op) {
    const int32_t number = G().settings.transaction_number;
    const int lines = int(rng_() % 4) + 1;
    std::map<int64_t, int> sold;
    for (int k = 0; k < lines; ++k) ++sold[AnySaleItem()];
    const int sign = op == KillOp::Refund ? 1 : -1;
    const int64_t customer = int64_t(rng_() % kAccountCustomers) + 1;
    for (const auto& [item, count] : sold)
      for (int k = 0; k < count; ++k) Addtobasket(item, kEntryNormal);
    std::string detail = std::to_string(number) + " " + Date();
    for (const auto& [item, count] : sold)
      detail += " i" + std::to_string(item) + ":" + std::to_string(sign * count);
    if (op == KillOp::Account) {
      detail += " c" + std::to_string(customer) + ":" +
                std::to_string(int64_t(G().basket.total * 100 + 0.5f));
    }
    Begin(op, detail);
    switch (op) {
      case KillOp::Cash:
        if (!Starttender()) Fail("cash form refused");
        Finishcash(Cashexact(G().basket.total));
        break;
      case KillOp::Card:
        Eftsale();
        break;
      case KillOp::Split:
        if (!Startsplit() || !Splitok("100", SplitOther::Cheque)) Fail("split refused");
        Paysplit(Cashexact(G().basket.tender_cash));
        break;
      case KillOp::Account:
        platform_.queue_prompt(std::to_string(customer));
        Creditsale();
        break;
      default:
        Refundbasket();
        break;
    }
    if (G().settings.transaction_number != number + 1 || G().basket.line_count != 0)
      Fail(std::string(KillOpName(op)) + " did not commit");
    for (const auto& item : sold) ReportItem(item.first);
    if (op == KillOp::Account) ReportCustomer(customer);
    Send("S " + std::to_string(number) + " " + Date() + " " + std::to_string(lines));
    Done(op);
  }

  void Payment() {
    const int32_t number = G().settings.transaction_number;
    const int64_t customer = int64_t(rng_() % kAccountCustomers) + 1;
    Begin(KillOp::BalancePayment,
          std::to_string(number) + " " + Date() + " c" + std::to_string(customer) + ":-125");
    platform_.queue_prompt(std::to_string(customer));
    Balancepayment();
    if (G().settings.transaction_number != number + 1) Fail("balance payment did not commit");
    ReportCustomer(customer);
    Send("S " + std::to_string(number) + " " + Date() + " 0");
    Done(KillOp::BalancePayment);
  }

  void Receive() {
    const int64_t item = AnySaleItem();
    const LocalTime& t = platform_.clock;
    const std::string log = StockInPath(t.year, t.month, t.day);
    const int64_t before = int64_t(ReadWholeFile(log).value_or("").size());
    Begin(KillOp::Receive,
          "0 " + Date() + " i" + std::to_string(item) + ":5 n" + std::to_string(before));
    platform_.queue_prompt(std::to_string(item));
    Inventoryreceived();
    platform_.prompts.clear();
    ReportItem(item);
    Send("N " + Date() + " " + std::to_string(ReadWholeFile(log).value_or("").size()));
    Done(KillOp::Receive);
  }

  // The description an added or amended item gets: unique in the run.
  std::string Tag(const char* kind) {
    return std::string(kind) + std::to_string(rng_() % 1000000000);
  }

  int64_t ItemAdd() {
    int64_t number;
    do number = kFirstAddedItem + int64_t(rng_() % 1000000);
    while (G().films.Contains(number));
    const std::string tag = Tag("ADD");
    Begin(KillOp::ItemAdd, "0 " + Date() + " a" + std::to_string(number) + ":" + tag);
    inventory_.item = [&](FilmRecord& r) {
      r.number = number;
      SetField(r.description, tag);
      r.cost_price = 1.0f;
      r.retail_price = 2.5f;
    };
    Newline();
    if (!G().films.Contains(number)) Fail("item " + std::to_string(number) + " not added");
    ReportItem(number);
    Done(KillOp::ItemAdd);
    return number;
  }

  int64_t AddedItem() {
    std::vector<int64_t> added = Live(G().films, kFirstAddedItem, INT64_MAX);
    return added.empty() ? ItemAdd() : Pick(added);
  }

  void ItemAmend() {
    const int64_t number = AddedItem();
    const std::string tag = Tag("AMD");
    Begin(KillOp::ItemAmend, "0 " + Date() + " a" + std::to_string(number) + ":" + tag);
    platform_.queue_prompt(std::to_string(number));
    inventory_.item = [&](FilmRecord& r) { SetField(r.description, tag); };
    Amendinventory();
    ReportItem(number);
    Done(KillOp::ItemAmend);
  }

  void ItemDelete() {
    const int64_t number = AddedItem();
    Begin(KillOp::ItemDelete, "0 " + Date() + " x" + std::to_string(number));
    platform_.queue_prompt(std::to_string(number));
    Deleteinventory();
    if (G().films.Contains(number)) Fail("item " + std::to_string(number) + " not deleted");
    ReportItem(number);
    Done(KillOp::ItemDelete);
  }

  int64_t CustomerAdd() {
    int64_t number;
    do number = kFirstAddedCustomer + int64_t(rng_() % 1000000);
    while (G().members.Contains(number));
    const std::string tag = Tag("NEW");
    Begin(KillOp::CustomerAdd, "0 " + Date() + " m" + std::to_string(number) + ":" + tag);
    customers_.card = [&](CustomerEntries& e) {
      e[kBoxNumber] = std::to_string(number);
      e[kBoxName] = tag;
      e[kBoxGroup] = "1";
    };
    Addcustomer();
    if (!G().members.Contains(number)) Fail("customer " + std::to_string(number) + " not added");
    ReportCustomer(number);
    Done(KillOp::CustomerAdd);
    return number;
  }

  int64_t AddedCustomer() {
    std::vector<int64_t> added = Live(G().members, kFirstAddedCustomer, INT64_MAX);
    return added.empty() ? CustomerAdd() : Pick(added);
  }

  void CustomerAmend() {
    const int64_t number = AddedCustomer();
    const std::string tag = Tag("AMD");
    Begin(KillOp::CustomerAmend, "0 " + Date() + " m" + std::to_string(number) + ":" + tag);
    platform_.queue_prompt(std::to_string(number));
    customers_.card = [&](CustomerEntries& e) { e[kBoxName] = tag; };
    Amendcustomer();
    ReportCustomer(number);
    Done(KillOp::CustomerAmend);
  }

  void CustomerDelete() {
    const int64_t number = AddedCustomer();
    Begin(KillOp::CustomerDelete, "0 " + Date() + " y" + std::to_string(number));
    platform_.queue_prompt(std::to_string(number));
    Deletecustomer();
    ReportCustomer(number);
    Done(KillOp::CustomerDelete);
  }

  // The next day, as the first start on it finds it.
  void Rollover() {
    LocalTime next = platform_.clock;
    const int last = PreviousMonthDays(next.month == 12 ? 1 : next.month + 1, next.year);
    if (++next.day > last) {
      next.day = 1;
      if (++next.month > 12) next.month = 1, ++next.year;
    }
    platform_.set_now(next.year, next.month, next.day, 10, 0);
    Begin(KillOp::Rollover, "0 " + Date());
    Restart();
    Done(KillOp::Rollover);
  }

  void Purge() {
    Begin(KillOp::Purge, "0 " + Date());
    Purgehistory();
    if (G().settings.transaction_number != 1) Fail("purge did not renumber");
    Send("ZS");
    Done(KillOp::Purge);
  }

  void TakeBackup() {
    Begin(KillOp::Backup, "0 " + Date());
    platform_.queue_prompt(std::string(kBackupFolder));
    Backup();
    platform_.prompts.clear();
    std::string set = "K";
    for (const char* name : kBackupFiles)
      set += " " + FileDigest(std::string(kBackupFolder) + "/" + name);
    Send(set);
    Done(KillOp::Backup);
  }

  void RestoreBackup() {
    std::string before;
    for (const char* name : kBackupFiles) before += " f" + FileDigest(name);
    Begin(KillOp::Restore, "0 " + Date() + before);
    platform_.queue_file(std::string(kBackupFolder) + "/wr.cfg");
    Restore();
    platform_.files.clear();
    Restart();
    Send("ZS");
    ReportAll();
    Done(KillOp::Restore);
  }

  // A merge of three new items from a spreadsheet's file.
  void Import() {
    std::string csv, rows;
    for (int k = 0; k < 3; ++k) {
      int64_t number;
      do number = kFirstAddedItem + int64_t(rng_() % 1000000);
      while (G().films.Contains(number) || csv.find(std::to_string(number)) != std::string::npos);
      const std::string tag = Tag("IMP");
      csv += std::to_string(number) + "," + tag + ",1.50\r\n";
      rows += " a" + std::to_string(number) + ":" + tag;
    }
    WriteWholeFile("import.csv", csv);
    Begin(KillOp::Import, "0 " + Date() + " f" + FileDigest(kFilmFile) + rows);
    platform_.queue_prompt("1");
    platform_.queue_file("import.csv");
    Importfile();
    platform_.prompts.clear();
    platform_.files.clear();
    Restart();
    ReportAll();
    Done(KillOp::Import);
  }

  static void WriteWholeFile(const std::string& path, const std::string& bytes) {
    if (!ReplaceFile(path, bytes)) _exit(5);
  }

  int report_;
  std::mt19937_64 rng_;
  int64_t started_ = 0;
  TillPlatform platform_;
  TillRefund refund_;
  TillAccount account_;
  TillInventory inventory_;
  TillCustomers customers_;
  TillUpkeep upkeep_;
  TillExchange exchange_;
  RecordingPrintService printers_;
};

}  // namespace

void RunTill(int report, uint64_t seed, KillOp focus, int year, int month, int day) {
  static Till* till = new Till(report, seed);
  till->Open(year, month, day);
  till->Run(focus);
}

}  // namespace tilo
