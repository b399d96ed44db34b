// SPDX-License-Identifier: MIT
// The cash drawer: wired to a port, where it opens on a repeated character, or
// daisy-chained behind the receipt printer, where it opens on a control sequence
// sent through the printer as raw data.
#pragma once

namespace tilo {

// Opens the drawer by the route the settings choose. Failures are told to the
// operator and go no further; the caller's sale goes on. It does not look at
// drawer_enabled: the callers do.
void Opendrawer();

}  // namespace tilo
