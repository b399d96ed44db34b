// SPDX-License-Identifier: MIT
// A till that works until it is killed, and what it tells the test about its
// work. The till runs in a forked child; before each operation it writes a line
// "B <op> ..." saying what it is about to change, after it the new state of
// everything it wrote and a closing "D <op>". Only an operation whose "D" line
// arrived counts as returned. Lines stay under PIPE_BUF, so each arrives whole.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tilo {

enum class KillOp {
  Cash,
  Card,
  Split,
  Account,
  Refund,
  BalancePayment,
  Receive,
  ItemAdd,
  ItemAmend,
  ItemDelete,
  CustomerAdd,
  CustomerAmend,
  CustomerDelete,
  Rollover,
  Purge,
  Backup,
  Restore,
  Import,
};
inline constexpr int kKillOps = 18;
const char* KillOpName(KillOp op);
std::optional<KillOp> KillOpNamed(const std::string& name);

// The shop the till works in: sale items 1 to 20, account customers 1 to 5;
// items from 1000 and customers from 100 are added, amended and deleted.
inline constexpr int64_t kSaleItems = 20;
inline constexpr int64_t kAccountCustomers = 5;
inline constexpr int64_t kFirstAddedItem = 1000;
inline constexpr int64_t kFirstAddedCustomer = 100;
// The card application's folder and the backup folder, inside the shop folder.
inline constexpr const char* kCardFolder = "card";
inline constexpr const char* kBackupFolder = "backupset";

// A 64-bit FNV-1a digest, as hex.
std::string Digest(const std::string& bytes);
// The live records of a record file (number above 0), by number.
std::map<int64_t, std::string> LiveRecords(const std::string& path, size_t record_size);
// "<digest> <quantity>" of an item record, "<digest> <balance in pence>" of a
// customer record: what the till reports and the test compares.
std::string ItemState(const std::string& record);
std::string CustomerState(const std::string& record);
// The digest of a whole file, "-" when it is missing.
std::string FileDigest(const std::string& path);

// Runs in the child: opens the store (at the date given) and repeats `focus`,
// with other operations where it needs them, until killed. Never returns.
[[noreturn]] void RunTill(int report, uint64_t seed, KillOp focus, int year, int month, int day);

}  // namespace tilo
