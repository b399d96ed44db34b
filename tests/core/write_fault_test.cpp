// SPDX-License-Identifier: MIT
// Writers on a failing disk: every open, write, fsync and rename a writer makes
// is failed in turn, the writer is killed at each of them, and a real disk is
// filled. Afterwards every file holds the old state or the complete new one, the
// writer has said why, and the shop opens without a word.
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <functional>
#include <map>

#include "core/customer_file.h"
#include "core/startup.h"
#include "core/write_batch.h"
#include "customers/customer_balance.h"
#include "customers/customer_maintenance.h"
#include "inventory/items.h"
#include "platform/file_faults.h"
#include "platform/files.h"
#include "sale/commit.h"
#include "sale/pricing.h"
#include "sale/sale_fixture.h"
#include "tender/account.h"
#include "tender/refund.h"
#include "upkeep/backup.h"

namespace tilo {
namespace {

namespace fs = std::filesystem;
using Snapshot = std::map<std::string, std::string>;

// Every file under the working folder, by path; the journal apart, which
// stays behind empty once a commit is done.
Snapshot Take() {
  Snapshot s;
  for (const auto& e : fs::recursive_directory_iterator("."))
    if (e.is_regular_file() && e.path().filename() != kJournalFile)
      s[e.path().lexically_relative(".").string()] = *ReadWholeFile(e.path());
  return s;
}

void PutBack(const Snapshot& s) {
  for (const auto& e : fs::directory_iterator(".")) fs::remove_all(e.path());
  for (const auto& [path, bytes] : s) {
    fs::create_directories(fs::path(path).parent_path().empty() ? "."
                                                                : fs::path(path).parent_path());
    ShopTest::WriteBytes(path, bytes);
  }
}

// What differs between two snapshots, for the failure text.
std::string Diff(const Snapshot& a, const Snapshot& b) {
  std::string out;
  for (const auto& [path, bytes] : a)
    if (!b.count(path) || b.at(path) != bytes) out += path + " ";
  for (const auto& [path, bytes] : b)
    if (!a.count(path)) out += "+" + path + " ";
  return out;
}

// One writer under test: `ready` loads the shop and sets up its input, `write`
// makes the change and says whether it took.
struct Writer {
  const char* name;
  std::function<void()> stock;  // once, before the snapshot
  std::function<void()> ready;
  std::function<bool()> write;
  std::vector<std::string> messages;  // "title: text" of every failure it may show
};

void StockItem(int64_t number, float retail, int32_t quantity) {
  FilmRecord r{};
  r.number = number;
  SetField(r.description, "ITEM " + std::to_string(number));
  r.retail_price = retail;
  r.cost_price = retail / 2;
  r.quantity = quantity;
  r.display_category = 3;
  EXPECT_TRUE(Insertnumber(r));
}

// What a tender leaves in the basket before the commit.
void Basketof(std::initializer_list<int64_t> items, const char* payment) {
  for (int64_t n : items) Addtobasket(n, kEntryNormal);
  Basket& b = G().basket;
  SetField(b.payment_type, payment);
  SetField(b.sale_time, "14:05");
  b.clerk = 2;
  if (std::strcmp(payment, "Split") == 0) {
    b.tender_cash = 1.0f;
    b.tender_eft = Roundmoney(double(b.total) - 1.0);
  } else {
    b.tender_cash = b.total;
  }
}

const std::vector<std::string> kSaleMessages{"Problem: Unable to open invoice log.",
                                             "Problem: Unable to open sales log.",
                                             "Problem: Unable to open items log.",
                                             "Problem: Film.dat",
                                             "Problem: Data file: bun4.dat, not present.",
                                             "Fatal error: Data file: wr.cfg, not present.",
                                             "Fatal error: Data file: film.dat, not present."};

void StockThree() {
  for (int64_t n = 1; n <= 3; ++n) StockItem(n, 1.25f * float(n), 5);
}

// The three items and a customer with a balance.
void StockAndCustomer() {
  StockThree();
  ASSERT_TRUE(LoadCustomerIndex());
  MemberRecord m{};
  m.number = 7;
  SetField(m.name, "ANN SMITH");
  m.balance = 20.00f;
  m.credit_limit = 2000.00f;
  m.tax = 1;
  CompleteNewMember(m);
  ASSERT_TRUE(Insertmember(m));
}

struct Refunding : RefundView {
  std::optional<RefundChoice> refund_form() override { return RefundChoice{method, false, false}; }
  int method = kCashRefund;
} refunding;

struct Paying : AccountView {
  int customer_transaction(const std::vector<AccountField>&) override { return kTenderCredit; }
  std::optional<PaymentEntry> payment(const PaymentShown&) override {
    return PaymentEntry{"5.25", kPayCash};
  }
} paying;

ScriptedPlatform& Scripted() {
  return static_cast<ScriptedPlatform&>(platform());
}

void ReadyCustomers() {
  ASSERT_TRUE(LoadCustomerIndex());
  install_refund_view(&refunding);
  install_account_view(&paying);
}

// A credit refund asks for its customer each time it is tried.
bool RefundToAccount() {
  Scripted().prompts.clear();
  refunding.method = kCreditRefund;
  Scripted().queue_prompt("7");
  Refundbasket();
  return G().basket.line_count == 0;
}

bool SellOnAccount() {
  Scripted().prompts.clear();
  Scripted().queue_prompt("7");
  Creditsale();
  return G().basket.line_count == 0;
}

bool PayBalance() {
  Scripted().prompts.clear();
  Scripted().queue_prompt("7");
  Balancepayment();
  const auto shown = Scripted().shown();
  return !shown.empty() && shown.back() == "Customer: Updated";
}

std::vector<std::string> With(std::vector<std::string> list, std::vector<std::string> more) {
  list.insert(list.end(), more.begin(), more.end());
  return list;
}
const std::vector<std::string> kMemberMessages{
    "Fatal error: Data file: bun4.dat, not present.", "Problem: Not able to write member.dat",
    "Fatal error: Data file: member.dat, not present.", "Problem: Not able to read member.dat",
    "Problem: Invalid number."};

bool DeleteItem() {
  Scripted().prompts.clear();
  Scripted().queue_prompt("2");
  Deleteinventory();
  return !G().films.Contains(2);
}

bool DeleteCustomer() {
  Scripted().prompts.clear();
  Scripted().queue_prompt("7");
  Deletecustomer();
  return !G().members.Contains(7);
}

bool AmendBalance() {
  Scripted().prompts.clear();
  Scripted().queue_prompt("7");
  Scripted().queue_prompt("12.34");
  Amendbalance();
  const auto shown = Scripted().shown();
  return !shown.empty() && shown.back() == "Customer: Updated";
}

const std::vector<std::string> kRecordMessages{"Fatal error: Data file: film.dat, not present.",
                                               "Problem: Not able to read film.dat",
                                               "Problem: Not able to write film.dat",
                                               "Problem: Not able to write member.dat",
                                               "Fatal error: Data file: member.dat, not present.",
                                               "Problem: Not able to read member.dat",
                                               "Fatal error: Data file: bun4.dat, not present."};

const Writer kWriters[] = {
    {"cash sale", StockThree,
     [] {
       Basketof({1, 2, 1}, "Cash");
     },
     [] { return Finishsale(); }, kSaleMessages},
    {"split sale", StockThree, [] { Basketof({3}, "Split"); }, [] { return Finishsale(); },
     kSaleMessages},
    {"account sale", StockAndCustomer,
     [] {
       ReadyCustomers();
       Addtobasket(1, kEntryNormal);
       Addtobasket(2, kEntryNormal);
     },
     SellOnAccount, With(kSaleMessages, kMemberMessages)},
    {"credit refund", StockAndCustomer,
     [] {
       ReadyCustomers();
       Addtobasket(2, kEntryNormal);
       Addtobasket(2, kEntryNormal);
     },
     RefundToAccount, With(kSaleMessages, kMemberMessages)},
    {"balance payment", StockAndCustomer, ReadyCustomers, PayBalance,
     With(kSaleMessages, kMemberMessages)},
    {"item delete", StockThree, [] {}, DeleteItem, kRecordMessages},
    {"customer delete", StockAndCustomer, ReadyCustomers, DeleteCustomer, kRecordMessages},
    {"balance amended", StockAndCustomer, ReadyCustomers, AmendBalance, kRecordMessages},
};

void PrintTo(const Writer& w, std::ostream* out) {
  *out << w.name;
}

class WriteFaultTest : public SaleTest, public ::testing::WithParamInterface<Writer> {
 protected:
  void SetUp() override {
    platform_.set_now(2026, 3, 9, 14, 5);
    SaleTest::SetUp();
    Makelogdirs();
    GetParam().stock();
    ASSERT_TRUE(Savesettings());
    before_ = Take();
    Ready();
    WatchFileOps();
    ASSERT_TRUE(GetParam().write());
    asked_ = platform_.shown();
    for (int k = 0; k < kFileOpKinds; ++k) counts_[k] = file_faults.count[k];
    StopFileFaults();
    after_ = Take();
    ASSERT_FALSE(before_ == after_);
  }
  void TearDown() override {
    StopFileFaults();
    install_refund_view(nullptr);
    install_account_view(nullptr);
    SaleTest::TearDown();
  }
  void Ready() {
    ResetState();
    ASSERT_TRUE(Opensettings());
    ASSERT_TRUE(G().films.Load());
    GetParam().ready();
    platform_.clear_record();
  }
  // The state opens as a start opens it, and says nothing.
  void OpensQuietly(const std::string& where) {
    ResetState();
    platform_.clear_record();
    EXPECT_TRUE(OpenStore()) << where;
    EXPECT_EQ(platform_.shown(), std::vector<std::string>{}) << where;
    EXPECT_FALSE(JournalPending()) << where;
  }

  // What a failure showed beyond the questions the writer always asks.
  std::vector<std::string> Reported() const {
    std::vector<std::string> out;
    for (const std::string& shown : platform_.shown())
      if (std::find(asked_.begin(), asked_.end(), shown) == asked_.end()) out.push_back(shown);
    return out;
  }

  Snapshot before_, after_;
  std::vector<std::string> asked_;
  int64_t counts_[kFileOpKinds] = {};
};

const char* const kOpNames[] = {"open", "write", "fsync", "rename"};

TEST_P(WriteFaultTest, EveryFailedCallIsReportedAndTakenBack) {
  const Writer& w = GetParam();
  for (int k = 0; k < kFileOpKinds; ++k) {
    for (int64_t n = 1; n <= counts_[k]; ++n) {
      const std::string where = std::string(w.name) + ", " + kOpNames[k] + " " + std::to_string(n);
      PutBack(before_);
      Ready();
      ArmFileFault(FileOp(k), n, n % 2 ? EIO : ENOSPC);
      const bool took = w.write();
      StopFileFaults();
      const Snapshot now = Take();
      if (took) {
        // A call whose failure the writer may pass over (a read ahead of the change).
        EXPECT_TRUE(now == after_) << where << ": " << Diff(now, after_);
        continue;
      }
      ASSERT_FALSE(Reported().empty()) << where;
      for (const std::string& shown : Reported())
        EXPECT_TRUE(std::find(w.messages.begin(), w.messages.end(), shown) != w.messages.end())
            << where << ": " << shown;
      EXPECT_TRUE(now == before_) << where << ": " << Diff(now, before_);
      // The same change, tried again on a sound disk, goes through whole.
      platform_.clear_record();
      ASSERT_TRUE(w.write()) << where;
      const Snapshot again = Take();
      EXPECT_TRUE(again == after_) << where << ": " << Diff(again, after_);
      OpensQuietly(where);
    }
  }
}

TEST_P(WriteFaultTest, AKillAtAnyCallIsRepairedByTheNextStart) {
  const Writer& w = GetParam();
  for (int k = 0; k < kFileOpKinds; ++k) {
    for (int64_t n = 1; n <= counts_[k]; ++n) {
      const std::string where =
          std::string(w.name) + ", killed at " + kOpNames[k] + " " + std::to_string(n);
      PutBack(before_);
      Ready();
      const pid_t child = fork();
      ASSERT_GE(child, 0);
      if (child == 0) {
        ArmFileFault(FileOp(k), n, kFaultKill);
        w.write();
        _exit(0);
      }
      int status = 0;
      waitpid(child, &status, 0);
      ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 137) << where;
      const JournalRepair repair = RepairJournal();
      EXPECT_NE(repair, JournalRepair::Failed) << where;
      const Snapshot now = Take();
      EXPECT_TRUE(now == before_ || now == after_)
          << where << ": " << Diff(now, before_) << "| " << Diff(now, after_);
      OpensQuietly(where);
    }
  }
}

// A swap of whole files (a restore) killed at each of its renames: the next
// start leaves every file old or every file new, never a mix, and nothing aside.
TEST_F(ShopTest, ASwapKilledAtAnyRenameIsFinishedByTheNextStart) {
  const std::vector<std::pair<std::string, std::string>> moves{{"staged/film.dat", "film.dat"},
                                                               {"staged/member.dat", "member.dat"},
                                                               {"staged/wr.cfg", "wr.cfg"}};
  for (int64_t n = 1;; ++n) {
    PutBack({{"film.dat", "old film"},
             {"member.dat", "old member"},
             {"wr.cfg", "old settings"},
             {"staged/film.dat", "new film"},
             {"staged/member.dat", "new member"},
             {"staged/wr.cfg", "new settings"}});
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      ArmFileFault(FileOp::Rename, n, kFaultKill);
      UpkeepFiles files;
      _exit(SwapIn(files, moves) ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFEXITED(status));
    if (WEXITSTATUS(status) == 0) break;  // every rename passed: the swap is done
    ASSERT_EQ(WEXITSTATUS(status), 137) << "rename " << n;
    FinishSwap();
    Snapshot now = Take();
    const std::string film = now["film.dat"];
    for (const auto& [path, bytes] : now) {
      EXPECT_EQ(path.find("staged/") == 0 ? "new" : film.substr(0, 3), bytes.substr(0, 3))
          << "rename " << n << ": " << path;
      EXPECT_EQ(path.find(".tilo-old"), std::string::npos) << "rename " << n;
    }
    EXPECT_FALSE(FileExists(kSwapJournalFile));
  }
}

INSTANTIATE_TEST_SUITE_P(Writers, WriteFaultTest, ::testing::ValuesIn(kWriters),
                         [](const auto& info) {
                           std::string name = info.param.name;
                           for (char& c : name)
                             if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
                           return name;
                         });

// In the child, on the tmpfs: a shop, and the same sale at every level of free
// space from none to plenty. "ok", or what went wrong.
std::string FullDiskRun(const std::string& dir) {
  ScriptedPlatform platform;
  install_platform(&platform);
  platform.set_now(2026, 3, 9, 14, 5);
  if (chdir(dir.c_str()) != 0) return "cannot enter the tmpfs";
  ResetState();
  if (!Firstrunsettings()) return "no shop on the tmpfs";
  auto load = [] {
    ResetState();
    Opensettings();
    G().films.Load();
  };
  load();
  Makelogdirs();
  StockThree();
  Savesettings();
  const Snapshot before = Take();
  auto sell = [] {
    Basketof({1, 2, 1}, "Cash");
    return Finishsale();
  };
  load();
  if (!sell()) return "the sale fails on an empty disk";
  const Snapshot after = Take();
  int refused = 0, taken = 0;
  for (int64_t free_kb = 0; free_kb <= 200; free_kb += 4) {
    const std::string level = std::to_string(free_kb) + " KB free: ";
    PutBack(before);
    load();
    {
      File filler("filler", File::Mode::Create);
      const std::string block(4096, 'x');
      while (filler.write(block)) {
      }
      filler.truncate(filler.size() - free_kb * 1024);
    }
    platform.clear_record();
    const bool took = sell();
    Snapshot now = Take();
    now.erase("filler");
    if (took) {
      if (now != after) return level + "taken but not whole: " + Diff(now, after);
      ++taken;
      continue;
    }
    ++refused;
    const auto shown = platform.shown();
    if (shown.size() != 1 ||
        std::find(kSaleMessages.begin(), kSaleMessages.end(), shown[0]) == kSaleMessages.end())
      return level + "refused without its one message";
    if (now != before) return level + "refused but not put back: " + Diff(now, before);
    RemoveFile("filler");
    if (!Finishsale()) return level + "the kept sale fails once the disk has room";
    now = Take();
    if (now != after) return level + "taken after freeing but not whole: " + Diff(now, after);
  }
  if (refused == 0 || taken == 0) return "the levels never crossed the sale's need";
  return "ok";
}

// Fills a small tmpfs of its own (in a mount namespace of a child) and sells
// at every level of free space from none to enough.
TEST(WriteFullDiskTest, AFullDiskRefusesTheSaleWholeAndTakesItOnceFreed) {
  int report[2];
  ASSERT_EQ(pipe(report), 0);
  const pid_t child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    close(report[0]);
    auto say = [&](const std::string& text) {
      (void)!write(report[1], text.data(), text.size());
      _exit(0);
    };
    const int flags = geteuid() == 0 ? CLONE_NEWNS : CLONE_NEWUSER | CLONE_NEWNS;
    const std::string dir = fs::temp_directory_path() / ("tilo-full-" + std::to_string(getpid()));
    fs::create_directories(dir);
    if (unshare(flags) != 0 || mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
        mount("tmpfs", dir.c_str(), "tmpfs", 0, "size=1m") != 0)
      say(std::string("SKIP cannot mount a tmpfs here: ") + std::strerror(errno));
    say(FullDiskRun(dir));
  }
  close(report[1]);
  std::string text;
  char buf[512];
  for (ssize_t n; (n = read(report[0], buf, sizeof buf)) > 0;) text.append(buf, size_t(n));
  close(report[0]);
  waitpid(child, nullptr, 0);
  if (text.rfind("SKIP ", 0) == 0) GTEST_SKIP() << text.substr(5);
  EXPECT_EQ(text, "ok");
}

}  // namespace
}  // namespace tilo
