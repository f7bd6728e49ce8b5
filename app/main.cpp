#include <unistd.h>

#include <QApplication>
#include <cstdio>
#include <memory>

#include "anim/animation_commands.h"
#include "anim/frame_store.h"
#include "app/headless_prompter.h"
#include "app/launch_options.h"
#include "app/program_paths.h"
#include "app/signal_quit.h"
#include "app/startup.h"
#include "app/system_host.h"
#include "core/commands.h"
#include "core/document_commands.h"
#include "core/workspace.h"
#include "ui/animation_panels.h"
#include "ui/error_console_form.h"
#include "ui/host/dialog_prompter.h"
#include "ui/host/qt_preferences.h"
#include "ui/mdi_main_form.h"

int main(int argc, char* argv[]) {
    std::vector<std::string> arguments(argv + 1, argv + argc);
    std::string error;
    const auto options = wib::ParseLaunchOptions(arguments, error);
    if (!options) {
        std::fprintf(stderr, "wibbleton: %s\n%s\n", error.c_str(), wib::kUsage);
        return 2;
    }
    if (options->headless) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }

    QApplication application(argc, argv);
    QApplication::setOrganizationName("Wibbleton");
    QApplication::setApplicationName("Wibbleton");
    wib::QuitOnTerminationSignals();

    wib::DialogPrompter dialogs;
    wib::HeadlessPrompter headless(options->answer);
    wib::Prompter& prompter = options->headless ? static_cast<wib::Prompter&>(headless) : dialogs;
    wib::QtPreferences preferences;
    wib::SteadyClock clock;
    wib::ViewRelay view;
    wib::MachineInfo machine;
    wib::ProgramLog log;
    wib::Workspace workspace(wib::HostServices{prompter, preferences, clock, view, machine, log});
    wib::CommandRegistry commands;
    wib::RegisterDocumentCommands(commands);
    const wib::ProgramPaths paths = wib::FindProgramPaths();

    // The animation frames live beside the Workspace, which resizes them with the canvas.
    wib::FrameStore frameStore(workspace, paths.tempDir / "CropAnim.tmp");
    wib::RegisterAnimationCommands(commands, frameStore);

    wib::StartupContext context{workspace, commands, view, log, paths, *options};
    std::unique_ptr<wib::MDI_MainForm> mainForm = wib::RunStartup(context);
    dialogs.setParent(mainForm.get());
    wib::AttachAnimationPanels(*mainForm, frameStore, commands);

    const int result = QApplication::exec();
    mainForm->shutDown();
    view.attach(nullptr);
    log.attach(nullptr);
    return result;
}
