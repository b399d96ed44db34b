// SPDX-License-Identifier: MIT
#include "customers/customer_balance.h"

#include <cstdio>

#include "core/activity_log.h"
#include "core/clock.h"
#include "core/customer_file.h"
#include "core/record_batch.h"
#include "core/state.h"
#include "core/text.h"
#include "core/write_batch.h"
#include "customers/customer_find.h"
#include "platform/platform.h"
#include "tender/account.h"

namespace tilo {
namespace {

std::string Money(float value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.2f", value);
  return text;
}

}  // namespace

std::optional<float> Balanceamount(const std::string& typed) {
  const size_t first = typed.find_first_not_of(" \t");
  if (first == std::string::npos || typed[first] != '-') return Payamount(typed);
  // The minus sits against the digits: "- 5" is not a number.
  const std::string rest = typed.substr(first + 1);
  if (rest.empty() || rest[0] == ' ' || rest[0] == '\t') return std::nullopt;
  const auto amount = Payamount(rest);
  if (!amount) return std::nullopt;
  // "-0" owes nothing, and shows as 0.00 rather than -0.00.
  return *amount == 0 ? 0.0f : -*amount;
}

void Amendbalance() {
  if (PromptCustomer("Amend balance") == 0) return;
  State& g = G();
  const std::string title =
      std::to_string(g.member.number) + " Name: " + Cp1252ToUtf8(FieldText(g.member.name));
  const auto typed = platform().prompt("Balance", title, Money(g.member.balance));
  if (!typed) return;
  const auto amount = Balanceamount(*typed);
  if (!amount) {
    Message("Invalid amount", "Problem");
    return;
  }
  const float before = g.member.balance;
  g.member.balance = *amount;
  Timestamp();
  const std::string entry =
      StampedEntry("Customer " + std::to_string(g.member.number) + " balance amended: before " +
                   Money(before) + " after " + Money(*amount));
  // The balance and its line in the log are written together.
  if (!WriteTogether(g.members, Rewritemember, [&](WriteBatch& batch) {
        batch.Append(kActivityLog, entry, "Data file: bun4.dat, not present.", "Fatal error");
      })) {
    g.member.balance = before;
    return;
  }
  Message("Updated", "Customer");
}

}  // namespace tilo
