// SPDX-License-Identifier: MIT
// A till killed at random moments in every operation that writes. After each
// kill the shop opens with no message, every operation that had returned is in
// every file it wrote, and nothing is half there: the logs hold whole records
// with no number twice, a record being rewritten is its old or its new self,
// and a sale is in all its files or in none.
//
// TILO_KILLS sets the number of kills (100 by default), TILO_KILL_SEED the seed
// (printed at the start; with it the same operations and moments are chosen
// again), TILO_KILL_OPS a comma-separated list of the operations to kill in.
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <map>
#include <random>
#include <set>
#include <sstream>

#include "core/activity_log.h"
#include "core/customer_file.h"
#include "core/history.h"
#include "core/startup.h"
#include "platform/files.h"
#include "sale/sale_fixture.h"
#include "support/kill_till.h"
#include "tender/eft.h"
#include "upkeep/backup.h"

namespace tilo {
namespace {

namespace fs = std::filesystem;

// A record as the test knows it: its digest and the one figure an operation
// in flight may have changed (an item's stock, a customer's balance in pence).
struct Known {
  std::string digest;
  int64_t figure = 0;
};

struct Sale {
  int year, month, day, lines;
};

using Day = std::tuple<int, int, int>;

// What the till said it was doing when the kill came.
struct Flight {
  KillOp op{};
  int32_t number = 0;
  Day day{};
  std::map<int64_t, int64_t> stock, balance;  // the change each would make
  std::map<int64_t, std::string> item_text, customer_text;
  std::set<int64_t> item_gone, customer_gone;
  int64_t stock_in_before = -1;
  std::vector<std::string> digests;
};

Flight ParseBegin(const std::string& line) {
  std::istringstream in(line);
  std::string b, op, token;
  Flight f;
  int y, m, d;
  in >> b >> op >> f.number >> y >> m >> d;
  f.op = *KillOpNamed(op);
  f.day = {y, m, d};
  while (in >> token) {
    const int64_t number = std::atoll(token.c_str() + 1);
    const size_t colon = token.find(':');
    const std::string after = colon == std::string::npos ? "" : token.substr(colon + 1);
    switch (token[0]) {
      case 'i':
        f.stock[number] = std::atoll(after.c_str());
        break;
      case 'c':
        f.balance[number] = std::atoll(after.c_str());
        break;
      case 'a':
        f.item_text[number] = after;
        break;
      case 'm':
        f.customer_text[number] = after;
        break;
      case 'x':
        f.item_gone.insert(number);
        break;
      case 'y':
        f.customer_gone.insert(number);
        break;
      case 'n':
        f.stock_in_before = number;
        break;
      case 'f':
        f.digests.push_back(token.substr(1));
        break;
    }
  }
  return f;
}

// Everything the test holds the shop to.
struct Model {
  std::map<int64_t, Known> items, customers;
  std::map<int32_t, Sale> sales;
  std::map<Day, int64_t> stock_in;
  int64_t log_size = 0;
  std::string log_digest;
  std::vector<std::string> backup;
  Day day{};

  void Apply(const std::vector<std::string>& lines) {
    for (const std::string& line : lines) {
      std::istringstream in(line);
      std::string kind;
      in >> kind;
      if (kind == "I" || kind == "C") {
        int64_t number, figure;
        std::string digest;
        in >> number >> digest >> figure;
        (kind == "I" ? items : customers)[number] = {digest, figure};
      } else if (kind == "S") {
        int32_t number;
        Sale s;
        in >> number >> s.year >> s.month >> s.day >> s.lines;
        sales[number] = s;
      } else if (kind == "N") {
        int y, m, d;
        int64_t size;
        in >> y >> m >> d >> size;
        stock_in[{y, m, d}] = size;
      } else if (kind == "L") {
        in >> log_size >> log_digest;
      } else if (kind == "K") {
        backup.assign(6, "");
        for (std::string& d : backup) in >> d;
      } else if (kind == "ZS") {
        sales.clear();
        stock_in.clear();
      } else if (kind == "ZI") {
        items.clear();
      } else if (kind == "ZC") {
        customers.clear();
      }
    }
  }
};

std::map<int64_t, Known> KnownRecords(const char* path, size_t size) {
  std::map<int64_t, Known> known;
  for (const auto& [number, bytes] : LiveRecords(path, size)) {
    std::istringstream in(size == sizeof(FilmRecord) ? ItemState(bytes) : CustomerState(bytes));
    Known k;
    in >> k.digest >> k.figure;
    known[number] = k;
  }
  return known;
}

std::string TextOf(const std::string& record, size_t offset, size_t width) {
  return FieldText(record.data() + offset, width);
}

// The transaction logs of the whole tree, as read from disk.
struct Logs {
  std::map<int32_t, std::vector<Day>> sales;            // where each number is logged
  std::map<std::pair<Day, int32_t>, int> lines_wanted;  // line_count of each sale
  std::map<std::pair<Day, int32_t>, int> lines_found;
  std::map<int, std::multiset<int32_t>> indexed;  // base.dat of each year
  int32_t highest = 0;
};

int64_t Size(const fs::path& p) {
  std::error_code ec;
  const auto size = fs::file_size(p, ec);
  return ec ? -1 : int64_t(size);
}

bool IsNumber(const std::string& name) {
  return !name.empty() && name.find_first_not_of("0123456789") == std::string::npos;
}

Logs ReadLogs(std::vector<std::string>& problems) {
  Logs logs;
  auto whole = [&](const fs::path& p, int64_t header, int64_t record) {
    const int64_t size = Size(p);
    if (size >= 0 && (size < header || (size - header) % record != 0))
      problems.push_back(p.string() + " holds a part record: " + std::to_string(size) + " bytes");
  };
  for (const auto& y : fs::directory_iterator(".")) {
    const std::string year_name = y.path().filename().string();
    if (!y.is_directory() || !IsNumber(year_name)) continue;
    const int year = std::stoi(year_name);
    whole(y.path() / "base.dat", 4, sizeof(BaseRecord));
    for (const BaseRecord& r : ReadBaseFile(year)) logs.indexed[year].insert(r.transaction_number);
    for (const auto& m : fs::directory_iterator(y.path())) {
      if (!m.is_directory() || !IsNumber(m.path().filename().string())) continue;
      const int month = std::stoi(m.path().filename().string());
      for (const auto& d : fs::directory_iterator(m.path())) {
        if (!d.is_directory() || !IsNumber(d.path().filename().string())) continue;
        const int day = std::stoi(d.path().filename().string());
        const Day when{year, month, day};
        whole(d.path() / "saleslog.dat", 0, sizeof(SalesLogRecord));
        whole(d.path() / "itemslog.dat", 0, sizeof(ItemsLogRecord));
        whole(d.path() / "ininvent.dat", 0, 16);
        for (const SalesLogRecord& s : ReadSalesLog(year, month, day)) {
          const int32_t number = int32_t(s.transaction_number);
          logs.sales[number].push_back(when);
          logs.lines_wanted[{when, number}] = s.line_count;
          logs.highest = std::max(logs.highest, number);
        }
        for (const ItemsLogRecord& l : ReadItemsLog(year, month, day))
          ++logs.lines_found[{when, int32_t(l.transaction_number)}];
      }
    }
  }
  for (const auto& [number, days] : logs.sales)
    if (days.size() > 1)
      problems.push_back("transaction " + std::to_string(number) + " logged twice");
  for (const auto& [where, wanted] : logs.lines_wanted) {
    const auto found = logs.lines_found.find(where);
    const int got = found == logs.lines_found.end() ? 0 : found->second;
    if (got != wanted)
      problems.push_back("transaction " + std::to_string(where.second) + " has " +
                         std::to_string(got) + " of its " + std::to_string(wanted) + " lines");
  }
  for (const auto& [year, numbers] : logs.indexed)
    for (int32_t n : numbers)
      if (numbers.count(n) > 1) {
        problems.push_back(std::to_string(year) + "/base.dat holds " + std::to_string(n) +
                           " twice");
        break;
      }
  return logs;
}

bool Indexed(const Logs& logs, int year, int32_t number) {
  const auto it = logs.indexed.find(year);
  return it != logs.indexed.end() && it->second.count(number);
}

bool Logged(const Logs& logs, int32_t number, const Day& day) {
  const auto it = logs.sales.find(number);
  return it != logs.sales.end() &&
         std::find(it->second.begin(), it->second.end(), day) != it->second.end();
}

std::vector<std::string> Digests(const std::string& folder) {
  std::vector<std::string> d;
  for (const char* name : kBackupFiles) d.push_back(FileDigest(folder + name));
  return d;
}

// Each file of `now` is its `before` or its `after`, and not some of each. The
// files at `skip` (wr.cfg, which a start rewrites, and the activity log, which it
// adds to) are left out.
std::string OldOrNew(const std::vector<std::string>& now, const std::vector<std::string>& before,
                     const std::vector<std::string>& after, const std::set<size_t>& skip) {
  bool some_old = false, some_new = false;
  for (size_t k = 0; k < now.size(); ++k) {
    if (skip.count(k) || before[k] == after[k]) continue;
    if (now[k] == before[k])
      some_old = true;
    else if (now[k] == after[k])
      some_new = true;
    else
      return std::string(kBackupFiles[k]) + " is neither the old nor the new one";
  }
  return some_old && some_new ? "the set is part old, part new" : "";
}

struct Tally {
  int kills = 0, returned = 0;
};

class KillTest : public SaleTest {
 protected:
  void SetUp() override {
    SaleTest::SetUp();
    platform_.set_now(2026, 12, 27, 10, 0);
    Makelogdirs();
    S().negative_stock = 2;
    S().new_customer_listing = 0;
    S().eft_active = 2.0;
    SetField(S().backup_folder, kBackupFolder);
    ASSERT_TRUE(Seteftfolder(folder_ + "/" + kCardFolder));
    ASSERT_EQ(mkdir(kCardFolder, 0700), 0);
    for (int64_t n = 1; n <= kSaleItems; ++n) Stock(n, 1.25f * float(n), 0, 100000);
    ASSERT_TRUE(LoadCustomerIndex());
    for (int64_t n = 1; n <= kAccountCustomers; ++n) {
      MemberRecord m{};
      m.number = n;
      SetField(m.name, "ACCOUNT " + std::to_string(n));
      m.balance = 1000.0f;
      m.credit_limit = 1000000.0f;
      m.tax = 1;
      m.terms = 1;
      CompleteNewMember(m);
      ASSERT_TRUE(Insertmember(m));
    }
    ASSERT_TRUE(Savesettings());
    ResetState();
    ASSERT_TRUE(OpenStore());
    ASSERT_EQ(mkdir(kBackupFolder, 0700), 0);
    platform_.queue_prompt(kBackupFolder);
    Backup();
    ASSERT_EQ(Shown(), std::vector<std::string>{"File backup: Complete"});
    model_.day = {2026, 12, 27};
    Reseed();
    kept_ = folder_ + ".whole";
    Keep();
  }

  // After the checks, what is on disk is what the next till starts from.
  void Reseed() {
    model_.items = KnownRecords(kFilmFile, sizeof(FilmRecord));
    model_.customers = KnownRecords(kMemberFile, sizeof(MemberRecord));
    const std::string log = Bytes(kActivityLog);
    model_.log_size = int64_t(log.size());
    model_.log_digest = Digest(log);
    model_.backup = Digests(std::string(kBackupFolder) + "/");
  }

  // A copy of the shop and of what the test knows of it, taken while whole.
  void Keep() {
    fs::remove_all(kept_);
    fs::copy(".", kept_, fs::copy_options::recursive);
    kept_model_ = model_;
  }
  void TakeBack() {
    for (const auto& e : fs::directory_iterator(".")) fs::remove_all(e.path());
    fs::copy(kept_, ".", fs::copy_options::recursive);
    model_ = kept_model_;
    ResetState();
    ASSERT_TRUE(OpenStore());
    platform_.clear_record();
  }

  // Reads the till's lines for up to `timeout_ms`; true as soon as a "B" of
  // `focus` has come (when asked), false when the time is up or the till gone.
  bool Drain(int fd, int timeout_ms, std::optional<KillOp> focus = std::nullopt) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(timeout_ms);
    for (;;) {
      const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
          deadline - std::chrono::steady_clock::now());
      pollfd p{fd, POLLIN, 0};
      if (poll(&p, 1, int(std::max<int64_t>(left.count(), 0))) != 1) return false;
      char buffer[65536];
      const ssize_t n = read(fd, buffer, sizeof buffer);
      if (n <= 0) return false;
      partial_.append(buffer, size_t(n));
      bool seen = false;
      for (size_t end; (end = partial_.find('\n')) != std::string::npos;) {
        const std::string line = partial_.substr(0, end);
        partial_.erase(0, end + 1);
        if (Take(line, focus)) seen = true;
      }
      if (seen) return true;
    }
  }

  bool Take(const std::string& line, std::optional<KillOp> focus) {
    if (line.empty()) return false;
    if (line[0] == 'B') {
      flight_ = ParseBegin(line);
      model_.day = flight_->day;
      pending_.clear();
      begun_at_ = std::chrono::steady_clock::now();
      return focus && flight_->op == *focus;
    }
    if (line[0] == 'D') {
      model_.Apply(pending_);
      pending_.clear();
      const int64_t micros = std::atoll(line.substr(line.rfind(' ') + 1).c_str());
      double& mean = duration_[int(flight_->op)];
      mean = mean * 0.8 + double(micros) * 0.2;
      ++tally_[int(flight_->op)].returned;
      flight_.reset();
      return false;
    }
    if (line[0] == 'E') till_error_ = line.substr(2);
    pending_.push_back(line);
    return false;
  }

  // The checks after a kill; the problems found.
  std::vector<std::string> Check() {
    std::vector<std::string> problems;
    const std::string settings = Bytes(kSettingsFile);
    if (settings.size() != sizeof(SettingsRecord))
      problems.push_back("wr.cfg is " + std::to_string(settings.size()) + " bytes");
    // The shop's files as the kill left them: a backup under way was copying these.
    const std::vector<std::string> shop_files = Digests("");
    const std::string film_before_open = FileDigest(kFilmFile);

    const auto& [year, month, day] = model_.day;
    platform_.set_now(year, month, day, 10, 0);
    platform_.clear_record();
    ResetState();
    if (!OpenStore()) {
      problems.push_back("the shop does not open");
      return problems;
    }
    // A restored wr.cfg carries the day of its backup: the start after a restore
    // asks about the gap, whether the restore was finished by the till or by it.
    const bool restoring = flight_ && flight_->op == KillOp::Restore;
    for (const std::string& shown : platform_.shown())
      if (!(restoring && shown.rfind("If system date", 0) == 0))
        problems.push_back("shown: " + shown);
    platform_.clear_record();
    // A start finishes a backup or restore cut short: the sets are judged after it.
    const std::vector<std::string> backup = Digests(std::string(kBackupFolder) + "/");
    const std::vector<std::string> opened = Digests("");

    Logs logs = ReadLogs(problems);
    if (G().settings.transaction_number <= logs.highest)
      problems.push_back("wr.cfg counts " + std::to_string(G().settings.transaction_number) +
                         " with " + std::to_string(logs.highest) + " logged");

    const std::optional<Flight>& f = flight_;
    const bool wiped = f && (f->op == KillOp::Purge || f->op == KillOp::Restore);
    const bool replaced = f && (f->op == KillOp::Restore || f->op == KillOp::Import);
    if (wiped) model_.sales.clear(), model_.stock_in.clear();
    for (const auto& [number, s] : model_.sales) {
      const Day when{s.year, s.month, s.day};
      if (!Logged(logs, number, when) || !Indexed(logs, s.year, number))
        problems.push_back("returned transaction " + std::to_string(number) + " is lost");
    }
    for (const auto& [when, size] : model_.stock_in) {
      const auto& [y, m, d] = when;
      if (Size(StockInPath(y, m, d)) < size)
        problems.push_back("a returned receipt is lost from " + StockInPath(y, m, d));
    }

    // The operation in flight: all of it or none of it.
    bool took = false;
    if (f && f->number > 0) {
      took = Logged(logs, f->number, f->day);
      const bool indexed = Indexed(logs, std::get<0>(f->day), f->number);
      if (took != indexed)
        problems.push_back(std::string(KillOpName(f->op)) + " " + std::to_string(f->number) +
                           (took ? " logged but not indexed" : " indexed but not logged"));
      if (took)
        model_.sales[f->number] = {std::get<0>(f->day), std::get<1>(f->day), std::get<2>(f->day),
                                   0};
    }
    if (f && f->op == KillOp::Receive) {
      const auto& [y, m, d] = f->day;
      took = Size(StockInPath(y, m, d)) > std::max<int64_t>(f->stock_in_before, 0);
    }
    const auto items = KnownRecords(kFilmFile, sizeof(FilmRecord));
    const auto customers = KnownRecords(kMemberFile, sizeof(MemberRecord));
    CheckRecords("item", items, model_.items, f ? f->stock : Changes{}, took,
                 f ? f->item_text : Texts{}, f ? f->item_gone : std::set<int64_t>{},
                 offsetof(FilmRecord, description), sizeof FilmRecord::description, replaced,
                 problems);
    CheckRecords("customer", customers, model_.customers, f ? f->balance : Changes{}, took,
                 f ? f->customer_text : Texts{}, f ? f->customer_gone : std::set<int64_t>{},
                 offsetof(MemberRecord, name), sizeof MemberRecord::name, replaced, problems);

    // What returned is at the head of bun4.dat, or of bun2.dat once a start has
    // moved the grown log there.
    auto holds = [&](const std::string& log) {
      return int64_t(log.size()) >= model_.log_size &&
             Digest(log.substr(0, size_t(model_.log_size))) == model_.log_digest;
    };
    if (!(f && f->op == KillOp::Restore) && !holds(Bytes(kActivityLog)) &&
        !holds(Bytes(kPreviousActivityLog)))
      problems.push_back("bun4.dat lost what returned operations wrote");
    for (size_t k = 0; k < backup.size(); ++k)
      if (backup[k] == "-") problems.push_back(std::string("backup lacks ") + kBackupFiles[k]);
    if (f && f->op == KillOp::Backup) {
      const std::string mixed = OldOrNew(backup, model_.backup, shop_files, {0});
      if (!mixed.empty()) problems.push_back("backup: " + mixed);
    } else if (backup != model_.backup) {
      problems.push_back("the backup set changed");
    }
    if (f && f->op == KillOp::Restore) {
      const std::string mixed = OldOrNew(opened, f->digests, model_.backup, {0, 5});
      if (!mixed.empty()) problems.push_back("restore: " + mixed);
    }
    if (f && f->op == KillOp::Import) {
      int present = 0;
      for (const auto& [number, text] : f->item_text) present += items.count(number);
      if (present != 0 && present != int(f->item_text.size()))
        problems.push_back("import: " + std::to_string(present) + " of its rows are in");
      if (present == 0 && film_before_open != f->digests.at(0))
        problems.push_back("import: film.dat changed without its rows");
    }
    return problems;
  }

  using Changes = std::map<int64_t, int64_t>;
  using Texts = std::map<int64_t, std::string>;

  // Records not in flight are as the till last reported them; one in flight is
  // its old self or carries the change under way.
  static void CheckRecords(const char* kind, const std::map<int64_t, Known>& disk,
                           const std::map<int64_t, Known>& known, const Changes& figures, bool took,
                           const Texts& texts, const std::set<int64_t>& gone, size_t text_at,
                           size_t text_width, bool replaced, std::vector<std::string>& problems) {
    if (replaced) return;
    auto name = [&](int64_t n) { return std::string(kind) + " " + std::to_string(n); };
    std::set<int64_t> numbers;
    for (const auto& e : disk) numbers.insert(e.first);
    for (const auto& e : known)
      if (e.second.digest != "-") numbers.insert(e.first);
    for (int64_t n : numbers) {
      const auto now = disk.find(n);
      const auto was = known.find(n);
      const bool there = now != disk.end();
      const bool expected = was != known.end() && was->second.digest != "-";
      if (figures.count(n)) {
        if (!there || !expected) {
          problems.push_back(name(n) + " vanished");
        } else if (now->second.figure != was->second.figure + (took ? figures.at(n) : 0)) {
          problems.push_back(name(n) + " holds " + std::to_string(now->second.figure) + ", was " +
                             std::to_string(was->second.figure) +
                             (took ? ": the logged operation did not change it"
                                   : ": the operation not logged changed it"));
        }
      } else if (texts.count(n)) {
        if (there && !(expected && now->second.digest == was->second.digest)) {
          const std::string record = ReadRecordText(kind, n, text_at, text_width);
          if (record != texts.at(n)) problems.push_back(name(n) + " is neither old nor new");
        }
      } else if (gone.count(n)) {
        if (there && !(expected && now->second.digest == was->second.digest))
          problems.push_back(name(n) + " is torn while being deleted");
      } else if (there != expected) {
        problems.push_back(name(n) + (there ? " appeared" : " is lost"));
      } else if (now->second.digest != was->second.digest) {
        problems.push_back(name(n) + " changed");
      }
    }
  }

  static std::string ReadRecordText(const char* kind, int64_t number, size_t at, size_t width) {
    const bool item = std::string(kind) == "item";
    const auto live = LiveRecords(item ? kFilmFile : kMemberFile,
                                  item ? sizeof(FilmRecord) : sizeof(MemberRecord));
    const auto it = live.find(number);
    return it == live.end() ? "" : TextOf(it->second, at, width);
  }

  Model model_, kept_model_;
  std::string kept_;
  std::optional<Flight> flight_;
  std::vector<std::string> pending_;
  std::string partial_, till_error_;
  double duration_[kKillOps];
  std::chrono::steady_clock::time_point begun_at_;
  Tally tally_[kKillOps + 1];
};

uint64_t EnvNumber(const char* name, uint64_t fallback) {
  const char* text = std::getenv(name);
  return text && *text ? std::strtoull(text, nullptr, 10) : fallback;
}

std::vector<KillOp> ChosenOps() {
  std::vector<KillOp> ops;
  const char* text = std::getenv("TILO_KILL_OPS");
  std::istringstream in(text ? text : "");
  for (std::string name; std::getline(in, name, ',');)
    if (auto op = KillOpNamed(name)) ops.push_back(*op);
  if (ops.empty())
    for (int k = 0; k < kKillOps; ++k) ops.push_back(KillOp(k));
  return ops;
}

TEST_F(KillTest, EveryReturnedOperationSurvivesAKillAndNothingIsHalfThere) {
  const int kills = int(EnvNumber("TILO_KILLS", 100));
  const uint64_t seed = EnvNumber("TILO_KILL_SEED", std::random_device{}());
  const std::vector<KillOp> ops = ChosenOps();
  const bool verbose = EnvNumber("TILO_KILL_VERBOSE", 0) != 0;
  std::printf("kill test: %d kills, TILO_KILL_SEED=%llu\n", kills,
              static_cast<unsigned long long>(seed));
  std::fflush(stdout);
  for (double& d : duration_) d = 20000;
  std::mt19937_64 rng(seed);
  std::vector<std::string> failures;
  std::map<std::string, int> kinds;  // the problems by operation and kind, numbers as N
  const auto started = std::chrono::steady_clock::now();

  for (int k = 1; k <= kills; ++k) {
    const KillOp focus = ops[size_t(k - 1) % ops.size()];
    const uint64_t till_seed = rng();
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const auto& [year, month, day] = model_.day;
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      close(ends[0]);
      RunTill(ends[1], till_seed, focus, year, month, day);
    }
    close(ends[1]);
    partial_.clear();
    pending_.clear();
    flight_.reset();
    till_error_.clear();
    // The kill falls somewhere within the focus operation, or just after it.
    const bool begun = Drain(ends[0], 20000, focus);
    const auto delay = std::chrono::microseconds(
        int64_t(std::uniform_real_distribution<double>(0, 1.3)(rng) * duration_[int(focus)]));
    const auto kill_at = std::chrono::steady_clock::now() + delay;
    if (begun) {
      Drain(ends[0], int(std::chrono::duration_cast<std::chrono::milliseconds>(
                             kill_at - std::chrono::steady_clock::now())
                             .count()));
    }
    const auto rest = std::chrono::duration_cast<std::chrono::microseconds>(
        kill_at - std::chrono::steady_clock::now());
    if (begun && rest.count() > 0) usleep(useconds_t(rest.count()));
    kill(child, SIGKILL);
    int status = 0;
    waitpid(child, &status, 0);
    Drain(ends[0], 0);
    close(ends[0]);

    if (flight_ && flight_->op == focus) {
      // Killed before the end: the operation takes longer than was thought.
      const double elapsed = double(std::chrono::duration_cast<std::chrono::microseconds>(
                                        std::chrono::steady_clock::now() - begun_at_)
                                        .count());
      duration_[int(focus)] = std::min(std::max(duration_[int(focus)] * 1.2, elapsed * 1.25), 5e6);
    }
    const std::string where = std::string(flight_ ? KillOpName(flight_->op) : "between");
    ++tally_[flight_ ? int(flight_->op) : kKillOps].kills;
    if (verbose)
      std::printf("kill %d: focus %s, in %s, after %.1f ms\n", k, KillOpName(focus), where.c_str(),
                  double(delay.count()) / 1000);
    std::fflush(stdout);
    std::vector<std::string> problems;
    if (!till_error_.empty()) problems.push_back("the till stopped: " + till_error_);
    if (!begun && till_error_.empty()) problems.push_back("the till never began its work");
    for (const std::string& p : Check()) problems.push_back(p);
    for (const std::string& p : problems) {
      std::string kind = where + ": ";
      for (char c : p)
        if (!std::isdigit(static_cast<unsigned char>(c)) || kind.back() != 'N')
          kind += std::isdigit(static_cast<unsigned char>(c)) ? 'N' : c;
      ++kinds[kind];
      failures.push_back("kill " + std::to_string(k) + " in " + where + " (focus " +
                         KillOpName(focus) + ", TILO_KILL_SEED=" + std::to_string(seed) +
                         " TILO_KILLS=" + std::to_string(k) + "): " + p);
    }
    if (problems.empty()) {
      Reseed();
      Keep();
    } else {
      // The next kill starts again from the last shop found whole, so that one
      // fault is counted once and not in every kill after it.
      TakeBack();
    }
  }
  fs::remove_all(kept_);

  const double seconds =
      std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
  std::printf("%-16s %6s %9s\n", "operation", "kills", "returned");
  for (int k = 0; k <= kKillOps; ++k)
    std::printf("%-16s %6d %9d\n", k == kKillOps ? "between" : KillOpName(KillOp(k)),
                tally_[k].kills, tally_[k].returned);
  std::printf("%d kills in %.1f s, %zu problems\n", kills, seconds, failures.size());
  for (const auto& [kind, count] : kinds) std::printf("%5d x %s\n", count, kind.c_str());
  for (size_t k = 0; k < failures.size() && k < 40; ++k) std::printf("%s\n", failures[k].c_str());
  std::fflush(stdout);
  EXPECT_TRUE(failures.empty()) << failures.size() << " problems; the first: " << failures[0];
}

}  // namespace
}  // namespace tilo
