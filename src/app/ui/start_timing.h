// SPDX-License-Identifier: MIT
// Timing the start from outside (the big-shop benchmark): with the environment
// variable TILO_QUIT_AT_SALE_SCREEN set, once the sale screen has been shown and
// painted the program writes the monotonic clock in nanoseconds on standard
// output and closes as the Exit command would. Unset, nothing changes.
#pragma once

class QWidget;

namespace tilo {

// True when the run is being timed and will now end; the caller skips the log-on.
bool QuitOnceShownForTiming(QWidget* window);

}  // namespace tilo
