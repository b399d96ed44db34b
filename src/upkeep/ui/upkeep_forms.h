// SPDX-License-Identifier: MIT
// The forms of the upkeep commands (File reset, the restore's warning) and the
// installation of the purge, reset, backup and restore commands.
#pragma once

namespace tilo {

void InstallUpkeepHandlers();

}  // namespace tilo
