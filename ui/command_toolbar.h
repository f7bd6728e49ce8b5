// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>

class QToolBar;
class QWidget;

namespace wib {

class CommandRegistry;

// The tool bar of everyday commands (New, Undo, Zoom...); `run` runs one by id
// as its menu item would.
QToolBar* MakeCommandToolBar(const CommandRegistry& commands,
                             std::function<void(const std::string&)> run, QWidget* parent);

}  // namespace wib
