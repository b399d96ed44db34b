// SPDX-License-Identifier: MIT
// The forms of Export (EXPORT and the field selections) and Import (the column
// forms), and the installation of both commands.
#pragma once

namespace tilo {

void InstallExchangeHandlers();

}  // namespace tilo
