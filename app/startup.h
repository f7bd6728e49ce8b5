// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>

#include "app/launch_options.h"
#include "core/observer_list.h"
#include "core/program_paths.h"

namespace wib {

class CommandRegistry;
class MDI_MainForm;
class PaintSession;
class ProgramLog;
class ViewList;
class Workspace;

struct StartupContext {
    Workspace& workspace;
    CommandRegistry& commands;
    ViewList& view;
    ProgramLog& log;
    PaintSession& paint;
    ProgramPaths paths;
    LaunchOptions options;
    // The main frame's place among the document's views.
    Subscription viewSubscription;
    // Lists the plug-in folders into the menus, then starts the plug-ins the
    // settings name for start-up; each at its own step.
    std::function<void()> listPlugins;
    std::function<void()> runStartupPlugins;
};

// Prepares the program step by step, each step writing its line to the log,
// and returns the main frame, shown, on its first document.
std::unique_ptr<MDI_MainForm> RunStartup(StartupContext& context);

}  // namespace wib
