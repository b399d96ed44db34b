// SPDX-License-Identifier: MIT
// The tool bar's pictures, drawn by the program: one colour for each group of
// buttons and a white symbol for each command.
#pragma once

#include <QIcon>

#include "sale/commands.h"

namespace tilo {

QIcon ToolIcon(Command command);

}  // namespace tilo
