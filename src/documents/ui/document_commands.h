// SPDX-License-Identifier: MIT
// The commands of the print shell and the wording on the main window's menu.
#pragma once

namespace tilo {

// "Customize language" and "Listing font size".
void InstallDocumentHandlers();

}  // namespace tilo
