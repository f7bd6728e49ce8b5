// SPDX-License-Identifier: GPL-3.0-or-later
#include <unistd.h>

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>
#include <cstdio>
#include <memory>

#include "anim/frame_store.h"
#include "app/builtin_commands.h"
#include "app/headless_prompter.h"
#include "app/launch_options.h"
#include "app/program_paths.h"
#include "app/signal_quit.h"
#include "app/startup.h"
#include "app/system_host.h"
#include "core/commands.h"
#include "core/workspace.h"
#include "fileio/converter_bridge.h"
#include "fileio/image_files.h"
#include "paint/paint_session.h"
#include "plugins/automation_server.h"
#include "plugins/token.h"
#include "ui/animation_panels.h"
#include "ui/error_console_form.h"
#include "ui/host/dialog_prompter.h"
#include "ui/host/qt_preferences.h"
#include "ui/host/qt_process_runner.h"
#include "ui/mdi_main_form.h"
#include "ui/qt_controls.h"
#include "ui/window_commands.h"

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
    wib::ViewList view;
    wib::MachineInfo machine;
    wib::ProgramLog log;
    wib::Workspace workspace(wib::HostServices{prompter, preferences, clock, view, machine, log});
    const wib::ProgramPaths paths = wib::FindProgramPaths();
    wib::PaintSession paint(workspace, paths.tempDir);
    paint.state().chalkProfile = wib::LoadEdgeprofile(paths.dataDir / "brushes" / "chalk.profile");
    paint.optionsChanged();

    // Image files: the converter runs as a Qt process; files opened and saved
    // go on the recent-files list once the main frame is there.
    wib::QtProcessRunner processes;
    wib::ConverterBridge converter(processes, paths.tempDir);
    wib::ImageFiles files(converter);

    // The animation frames live beside the Workspace, which resizes them with the canvas.
    wib::FrameStore frameStore(workspace, paths.tempDir / "CropAnim.tmp");

    wib::CommandRegistry commands;
    wib::WindowActions window;
    wib::RegisterBuiltinCommands(commands, {paint, files, frameStore, window});

    wib::StartupContext context{workspace, commands, view, log, paint, paths, *options};
    std::unique_ptr<wib::MDI_MainForm> mainForm = wib::RunStartup(context);
    dialogs.setParent(mainForm.get());
    window = mainForm->windowActions();
    // Headless, nobody answers a dialog: commands take their starting values.
    if (options->headless) {
        commands.setDialog(nullptr);
    }
    const wib::Subscription recentFiles = files.fileUsed.subscribe(
        [&mainForm](const std::string& path) { mainForm->addRecentFile(path); });
    wib::AttachAnimationPanels(*mainForm, frameStore, commands);

    // Plug-ins reach the program through the automation server; the programs
    // it starts find it through the environment.
    wib::QtControls controls;
    wib::AutomationHost automation{workspace,
                                   commands,
                                   controls,
                                   paths.appDir.string(),
                                   paths.tempDir.string(),
                                   workspace.threadCount,
                                   paint,
                                   files,
                                   frameStore};
    wib::AutomationServer server(automation);
    const QString token =
        options->token.empty() ? wib::NewAutomationToken() : QString::fromStdString(options->token);
    // Where the program picks the place, the socket lies in a folder that only
    // the user can enter (QTemporaryDir makes it 0700), removed at exit.
    std::unique_ptr<QTemporaryDir> socketFolder;
    QString name = QString::fromStdString(options->listen);
    if (name.isEmpty()) {
        socketFolder = std::make_unique<QTemporaryDir>(QDir::tempPath() + "/wibbleton-XXXXXX");
        if (socketFolder->isValid()) {
            name = socketFolder->filePath(QStringLiteral("automation"));
        }
    }
    if (server.listen(name, token)) {
        qputenv("WIBBLETON_SERVER", server.fullServerName().toLocal8Bit());
        qputenv("WIBBLETON_TOKEN", token.toUtf8());
        log.line("Serving plug-ins on " + server.fullServerName().toStdString());
    } else {
        log.line("Cannot serve plug-ins: " + server.errorString().toStdString());
    }

    const int result = QApplication::exec();
    server.close();
    mainForm->shutDown();
    context.viewSubscription.reset();
    log.attach(nullptr);
    return result;
}
