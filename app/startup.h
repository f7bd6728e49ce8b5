#pragma once

#include <memory>

#include "app/launch_options.h"
#include "core/program_paths.h"

namespace wib {

class CommandRegistry;
class MDI_MainForm;
class PaintSession;
class ProgramLog;
class ViewRelay;
class Workspace;

struct StartupContext {
    Workspace& workspace;
    CommandRegistry& commands;
    ViewRelay& view;
    ProgramLog& log;
    PaintSession& paint;
    ProgramPaths paths;
    LaunchOptions options;
};

// Prepares the program step by step, each step writing its line to the log,
// and returns the main frame, shown, on its first document.
std::unique_ptr<MDI_MainForm> RunStartup(StartupContext& context);

}  // namespace wib
