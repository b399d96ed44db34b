// SPDX-License-Identifier: MIT
// Work that runs beside the till on a thread of its own (the mail, the head-office
// upload), so the till never waits on the network. Each job gets a control it
// checks for cancellation and through which it says how to wake it when it is
// blocked (the shutdown of its socket). Close-down cancels every live job and
// waits for it to end.
#pragma once

#include <chrono>
#include <functional>
#include <mutex>

namespace tilo {

class JobControl {
 public:
  bool cancelled() const;
  // While set, a cancel calls `wake` to unblock the job (under the control's lock,
  // so the job can't free what `wake` touches in between); when the job is
  // already cancelled it runs at once. The job clears it (an empty function)
  // before it lets go of the resource.
  void set_wake(std::function<void()> wake);
  void cancel();

 private:
  mutable std::mutex mutex_;
  bool cancelled_ = false;
  std::function<void()> wake_;
};

using JobWork = std::function<void(JobControl& control)>;
// Starts `work` on a new thread; false when the system refuses the thread.
bool StartJob(JobWork work);
// Jobs started and not yet ended.
int LiveJobs();
// Cancels every live job and waits up to `grace` for them all to end. A job
// still blocked after that (a name lookup can't be interrupted) is left to end
// with the process. Returns the number left behind.
int StopJobs(std::chrono::milliseconds grace = std::chrono::milliseconds(1500));
// Waits up to `limit` for every live job to end of its own accord (tests).
bool WaitForJobs(std::chrono::milliseconds limit);

}  // namespace tilo
