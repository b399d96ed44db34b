// SPDX-License-Identifier: MIT
// Ties a libcurl transfer to the job that runs it, so that close-down can stop it.
#pragma once

#include <curl/curl.h>

#include "platform/jobs.h"

namespace tilo {

// The transfer asks `control` as it goes and ends once the job is cancelled; the
// sockets it opens are the ones close-down shuts down to wake a blocked read.
void Stopwithjob(CURL* curl, JobControl& control);

}  // namespace tilo
