// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QWidget;

namespace wib {

class CommandDialogs;

// The file dialogs of the animation's files: the first file of a sequence to
// import or export (with its save type), and the video to import or export.
void SetAnimationFileDialogs(CommandDialogs& dialogs, QWidget* parent);

}  // namespace wib
