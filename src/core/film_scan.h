// SPDX-License-Identifier: MIT
// One pass over every live item of film.dat in file order, a large block at a
// time, under the busy box with Cancel: for lists that look at every item and
// keep many of them, where a record walk would hand the records back one by one.
#pragma once

#include <functional>
#include <string>

#include "core/film_record.h"

namespace tilo {

enum class ScanEnd { Finished, Unreadable, Cancelled };

// Calls `visit` for each record whose number is 1 or more. Unreadable when the
// file can't be opened or read (the caller words the message).
ScanEnd Scanfilms(const std::string& busy_title,
                  const std::function<void(const FilmRecord&)>& visit);

}  // namespace tilo
