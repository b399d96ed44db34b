// SPDX-License-Identifier: MIT
// Opening a big shop, timed from process start so that start-up costs count:
// the index build next to a plain read of the same film.dat, each in a fresh
// process, and the real program from its start to the sale screen.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <string>
#include <vector>

#include "bench_shop.h"
#include "platform/files.h"

extern char** environ;

namespace tilo {
namespace {

double MonotonicMs() {
  timespec t;
  clock_gettime(CLOCK_MONOTONIC, &t);
  return double(t.tv_sec) * 1e3 + double(t.tv_nsec) / 1e6;
}

// Starts `args` in `folder` with `extra` added to the environment and returns
// the milliseconds from just before the start to the monotonic clock reading
// (in nanoseconds) the program writes on its standard output; -1 on failure.
double TimedRun(const std::vector<std::string>& args, const std::string& folder,
                const std::vector<std::string>& extra = {}) {
  std::vector<std::string> env_text(extra);
  for (char** e = environ; *e; ++e) env_text.push_back(*e);
  std::vector<char*> env, argv;
  for (auto& s : env_text) env.push_back(s.data());
  env.push_back(nullptr);
  std::vector<std::string> args_copy(args);
  for (auto& s : args_copy) argv.push_back(s.data());
  argv.push_back(nullptr);

  int out[2];
  if (pipe(out) != 0) return -1;
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, out[1], 1);
  posix_spawn_file_actions_addclose(&actions, out[0]);
  posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
  posix_spawn_file_actions_addchdir_np(&actions, folder.c_str());
  const double start = MonotonicMs();
  pid_t pid;
  const int spawned = posix_spawn(&pid, argv[0], &actions, nullptr, argv.data(), env.data());
  posix_spawn_file_actions_destroy(&actions);
  close(out[1]);
  std::string text;
  char buffer[256];
  for (ssize_t n; (n = read(out[0], buffer, sizeof buffer)) > 0;) text.append(buffer, size_t(n));
  close(out[0]);
  if (spawned != 0) return -1;
  int status = 0;
  waitpid(pid, &status, 0);
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0 || text.empty()) return -1;
  return std::strtod(text.c_str(), nullptr) / 1e6 - start;
}

// A fresh process reads film.dat end to end, another builds its index; the two
// take turns, so that the machine's load falls on both alike. The iteration time
// is the index build's; `ratio` is index over read for the whole run.
void BM_IndexLoadFromProcessStart(benchmark::State& state) {
  const std::string& shop = bench::ShopWithItems(state.range(0));
  double read_total = 0, index_total = 0;
  int64_t turn = 0;
  for (auto _ : state) {
    double read = -1, index = -1;
    for (int k = 0; k < 2; ++k) {
      if ((k + turn) % 2 == 0)
        read = TimedRun({TILO_INDEXLOAD, "read", shop}, shop);
      else
        index = TimedRun({TILO_INDEXLOAD, "index", shop}, shop);
    }
    ++turn;
    if (read < 0 || index < 0) {
      state.SkipWithError("tilo-indexload failed");
      return;
    }
    read_total += read;
    index_total += index;
    state.SetIterationTime(index / 1e3);
  }
  state.counters["read_ms"] = benchmark::Counter(read_total, benchmark::Counter::kAvgIterations);
  state.counters["index_ms"] = benchmark::Counter(index_total, benchmark::Counter::kAvgIterations);
  state.counters["ratio"] = index_total / read_total;
}
BENCHMARK(BM_IndexLoadFromProcessStart)
    ->Arg(100000)
    ->Arg(1000000)
    ->UseManualTime()
    ->Iterations(7)
    ->Unit(benchmark::kMillisecond);

// A whole shop (the demo's customers, suppliers and settings) whose film.dat is
// the big one; made once per size and kept, as the item files are.
std::string SaleShop(int64_t records) {
  const std::string& items = bench::ShopWithItems(records);
  namespace fs = std::filesystem;
  const std::string folder =
      (fs::temp_directory_path() / ("tilo-bench-saleshop-" + std::to_string(records))).string();
  const std::string film = folder + "/film.dat";
  auto size = FileSize(film);
  if (!size || *size != *FileSize(items + "/film.dat")) {
    fs::remove_all(folder);
    const std::string make = std::string(TILO_NEWSHOP) + " " + folder + " --demo >/dev/null";
    if (std::system(make.c_str()) != 0) return {};
    fs::copy_file(items + "/film.dat", film, fs::copy_options::overwrite_existing);
  }
  fs::create_directories(folder + "/run");
  fs::permissions(folder + "/run", fs::perms::owner_all, fs::perm_options::replace);
  return folder;
}

// The real program, offscreen, from its start until the sale screen is shown
// and painted (it then quits by itself). The splash stands for two seconds of
// that by design; `before_splash_ms` is the rest: the store opened, the screen
// built, the window up.
void BM_SaleScreenFromProcessStart(benchmark::State& state) {
  const std::string shop = SaleShop(state.range(0));
  const std::vector<std::string> env{"QT_QPA_PLATFORM=offscreen", "TILO_QUIT_AT_SALE_SCREEN=1",
                                     "XDG_RUNTIME_DIR=" + shop + "/run"};
  // The first start of a day rolls the shop over; that is not what is timed.
  if (shop.empty() || TimedRun({TILO_PROGRAM}, shop, env) < 0) {
    state.SkipWithError("the shop could not be made or opened");
    return;
  }
  double total = 0;
  for (auto _ : state) {
    const double ms = TimedRun({TILO_PROGRAM}, shop, env);
    if (ms < 0) {
      state.SkipWithError("tilo did not reach its sale screen");
      return;
    }
    total += ms;
    state.SetIterationTime(ms / 1e3);
  }
  state.counters["before_splash_ms"] = benchmark::Counter(
      total - 2000.0 * double(state.iterations()), benchmark::Counter::kAvgIterations);
}
BENCHMARK(BM_SaleScreenFromProcessStart)
    ->Arg(1000000)
    ->UseManualTime()
    ->Iterations(3)
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tilo
