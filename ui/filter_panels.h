// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

#include "ui/filter_panel.h"

namespace wib {

class CommandDialogs;

// Every filter asks through its option panel; Levels adds the image's
// histogram to its panel and Curves a curve to drag.
void SetFilterPanels(CommandDialogs& dialogs, PreviewCanvas canvas, QWidget* parent);

}  // namespace wib
