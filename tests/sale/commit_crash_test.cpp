// SPDX-License-Identifier: MIT
// A till killed at random moments while it commits sales: after every kill the
// data set opens, and every sale whose commit had returned is in the logs.
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <random>
#include <set>

#include "core/history.h"
#include "core/startup.h"
#include "sale/commit.h"
#include "sale/sale_fixture.h"

namespace tilo {
namespace {

using CommitCrashTest = SaleTest;

// The child: opens the store as a start does and sells until it is killed,
// reporting each transaction number once its commit has returned.
[[noreturn]] void SellUntilKilled(int report, uint64_t seed) {
  ResetState();
  if (!OpenStore()) _exit(2);
  std::mt19937_64 rng(seed);
  for (;;) {
    const int lines = int(rng() % 5) + 1;
    for (int k = 0; k < lines; ++k) Addtobasket(int64_t(rng() % 3) + 1, kEntryNormal);
    SetField(G().basket.payment_type, "Cash");
    G().basket.tender_cash = G().basket.total;
    const int32_t number = G().settings.transaction_number;
    Finishsale();
    if (write(report, &number, sizeof number) != sizeof number) _exit(3);
  }
}

TEST_F(CommitCrashTest, EveryReturnedSaleSurvivesAKill) {
  platform_.set_now(2026, 5, 4, 10, 0);
  S().negative_stock = 2;
  for (int64_t n = 1; n <= 3; ++n) Stock(n, 1.25f * float(n));
  ASSERT_TRUE(Savesettings());
  ASSERT_TRUE(OpenStore());

  std::mt19937_64 rng(99);
  std::set<int32_t> returned;
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(15);
  int kills = 0;
  while (kills < 30 && std::chrono::steady_clock::now() < deadline) {
    int pipe_ends[2];
    ASSERT_EQ(pipe(pipe_ends), 0);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      close(pipe_ends[0]);
      SellUntilKilled(pipe_ends[1], rng());
    }
    close(pipe_ends[1]);
    // Now and then a kill while the store opens; otherwise after a first sale,
    // somewhere among the ones that follow.
    bool sold = true;
    if (rng() % 4 == 0) {
      usleep(useconds_t(rng() % 60000));
    } else {
      pollfd first{pipe_ends[0], POLLIN, 0};
      sold = poll(&first, 1, 10000) == 1;
      usleep(useconds_t(rng() % 100000));
    }
    kill(child, SIGKILL);
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(sold) << "no sale within ten seconds";
    ASSERT_TRUE(WIFSIGNALED(status)) << "the till stopped by itself: " << status;
    int32_t number = 0;
    while (read(pipe_ends[0], &number, sizeof number) == sizeof number) returned.insert(number);
    close(pipe_ends[0]);
    ++kills;

    ResetState();
    ASSERT_TRUE(OpenStore()) << "after kill " << kills;
    std::set<int32_t> indexed, logged, lined;
    for (const BaseRecord& r : ReadBaseFile(2026)) indexed.insert(r.transaction_number);
    for (const SalesLogRecord& r : ReadSalesLog(2026, 5, 4))
      logged.insert(int32_t(r.transaction_number));
    for (const ItemsLogRecord& r : ReadItemsLog(2026, 5, 4))
      lined.insert(int32_t(r.transaction_number));
    for (int32_t n : returned) {
      ASSERT_TRUE(indexed.count(n) && logged.count(n) && lined.count(n))
          << "sale " << n << " lost after kill " << kills;
    }
  }
  RecordProperty("kills", kills);
  RecordProperty("sales", int(returned.size()));
  EXPECT_GE(kills, 10);
  EXPECT_GE(returned.size(), 10u);  // the kills did fall among finished sales
}

}  // namespace
}  // namespace tilo
