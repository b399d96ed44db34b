// SPDX-License-Identifier: MIT
// File reset: the settings back to their defaults, the history deleted, the
// inventory and customer files optionally emptied, and every record file rebuilt.
#pragma once

namespace tilo {

// Resets and rebuilds; `delete_databases` is the form's tick.
void Resetfiles(bool delete_databases);

// The command: the form THERESET, then Resetfiles.
void Filereset();

}  // namespace tilo
