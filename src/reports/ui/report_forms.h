// SPDX-License-Identifier: MIT
// The report forms on the screen: the period dialogs, the sales report's fifteen
// lists, the item summary window, and the progress box a walk runs under.
#pragma once

#include "reports/report_view.h"

namespace tilo {

// Installs the screen's report forms and the work of every report command.
void InstallReportHandlers();

}  // namespace tilo
