// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIcon>

#include "paint/tool.h"

namespace wib {

// A small drawn picture of each tool for the tool box.
QIcon ToolIcon(ToolId tool);

}  // namespace wib
