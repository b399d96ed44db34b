// SPDX-License-Identifier: MIT
#include "platform/jobs.h"

#include <condition_variable>
#include <list>
#include <memory>
#include <system_error>
#include <thread>

namespace tilo {

bool JobControl::cancelled() const {
  std::lock_guard lock(mutex_);
  return cancelled_;
}

void JobControl::set_wake(std::function<void()> wake) {
  std::lock_guard lock(mutex_);
  wake_ = std::move(wake);
  if (cancelled_ && wake_) wake_();
}

void JobControl::cancel() {
  std::lock_guard lock(mutex_);
  cancelled_ = true;
  if (wake_) wake_();
}

namespace {

struct Job {
  JobControl control;
  std::thread thread;
  bool done = false;
};

// The live jobs of the process: like the platform itself, one per process and
// outside the state tests reset, since threads outlive any one test's state.
struct Registry {
  std::mutex mutex;
  std::condition_variable ended;
  std::list<std::shared_ptr<Job>> jobs;

  // Joins the jobs that have ended. Called with the lock held.
  void reap() {
    for (auto it = jobs.begin(); it != jobs.end();) {
      if ((*it)->done) {
        (*it)->thread.join();
        it = jobs.erase(it);
      } else {
        ++it;
      }
    }
  }
};

// Never destroyed: a job left running at exit may still reach it.
Registry& registry() {
  static Registry* r = new Registry;
  return *r;
}

}  // namespace

bool StartJob(JobWork work) {
  Registry& r = registry();
  auto job = std::make_shared<Job>();
  std::lock_guard lock(r.mutex);
  r.reap();
  try {
    job->thread = std::thread([job, work = std::move(work)] {
      work(job->control);
      Registry& reg = registry();
      std::lock_guard done_lock(reg.mutex);
      job->done = true;
      reg.ended.notify_all();
    });
  } catch (const std::system_error&) {
    return false;
  }
  r.jobs.push_back(std::move(job));
  return true;
}

int LiveJobs() {
  Registry& r = registry();
  std::lock_guard lock(r.mutex);
  int live = 0;
  for (const auto& job : r.jobs) live += job->done ? 0 : 1;
  return live;
}

bool WaitForJobs(std::chrono::milliseconds limit) {
  Registry& r = registry();
  std::unique_lock lock(r.mutex);
  auto all_done = [&r] {
    for (const auto& job : r.jobs)
      if (!job->done) return false;
    return true;
  };
  bool ok = r.ended.wait_for(lock, limit, all_done);
  r.reap();
  return ok;
}

int StopJobs(std::chrono::milliseconds grace) {
  Registry& r = registry();
  {
    std::lock_guard lock(r.mutex);
    for (const auto& job : r.jobs) job->control.cancel();
  }
  WaitForJobs(grace);
  std::lock_guard lock(r.mutex);
  int left = 0;
  for (auto& job : r.jobs) {
    job->thread.detach();
    ++left;
  }
  r.jobs.clear();
  return left;
}

}  // namespace tilo
