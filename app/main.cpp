// SPDX-License-Identifier: GPL-3.0-or-later
#include <unistd.h>

#include <QApplication>
#include <QDir>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTimer>
#include <cstdio>
#include <functional>
#include <memory>

#include "anim/frame_store.h"
#include "app/autosave.h"
#include "app/brush_keyframes.h"
#include "app/builtin_commands.h"
#include "app/headless_prompter.h"
#include "app/launch_options.h"
#include "app/program_paths.h"
#include "app/signal_quit.h"
#include "app/startup.h"
#include "app/system_host.h"
#include "core/commands.h"
#include "core/layer_resize.h"
#include "core/recovery_folder.h"
#include "core/workspace.h"
#include "fileio/converter_bridge.h"
#include "fileio/image_files.h"
#include "paint/paint_session.h"
#include "plugins/automation_server.h"
#include "plugins/canvas_events.h"
#include "plugins/plugin_commands.h"
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
    // Set once the main frame exists; a signal before that just quits.
    std::function<void()> onTerminationSignal;
    wib::QuitOnTerminationSignals([&onTerminationSignal] {
        if (onTerminationSignal) {
            onTerminationSignal();
        }
    });

    wib::DialogPrompter dialogs;
    wib::HeadlessPrompter headless(options->answer);
    wib::Prompter& prompter = options->headless ? static_cast<wib::Prompter&>(headless) : dialogs;
    wib::QtPreferences preferences;
    wib::SteadyClock clock;
    wib::ViewList view;
    wib::MachineInfo machine;
    wib::ProgramLog log;
    wib::Workspace workspace(wib::HostServices{prompter, preferences, clock, view, machine, log});
    // Temporary files live in a folder of this run's own, removed at exit, so
    // that two copies of the program never share one.
    const QTemporaryDir privateTemp(QDir::tempPath() + "/wibbleton-XXXXXX");
    if (!privateTemp.isValid()) {
        std::fprintf(stderr, "wibbleton: cannot make a temporary folder: %s\n",
                     privateTemp.errorString().toLocal8Bit().constData());
        return 1;
    }
    const wib::ProgramPaths paths = wib::FindProgramPaths(privateTemp.path().toStdString());
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
    workspace.view.onion = wib::LoadOnionState(preferences);
    // Keyframed brush values are put in place as each stroke starts.
    wib::BrushKeyHook brushKeyHook(paint, frameStore);
    wib::LayerCanvasResize layerResize(workspace, paths.tempDir / "CropLayers.tmp");

    // Recovery snapshots of unsaved work, in the per-user state folder.
    wib::RecoveryFolder recovery(
        QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation).toStdString() +
        "/recovery");
    wib::Autosave autosave({workspace, frameStore, files}, recovery);

    // Plug-ins are commands too; the launcher starts them and keeps the list
    // of children.
    wib::CommandRegistry commands;
    wib::PluginLauncher launcher;
    wib::PluginCommands plugins(commands, launcher);
    plugins.setFolders(wib::PluginFolders(
        {options->pluginDir, preferences.value("Settings", "PluginFolder").value_or(""),
         paths.pluginDir, paths.userDir / "plugins"}));

    wib::WindowActions window;
    wib::RegisterBuiltinCommands(commands, {paint, files, frameStore, window, plugins, processes});

    // Plug-ins reach the program through the automation server; the programs
    // it starts find it through their environment.
    wib::QtControls controls;
    wib::CanvasEvents canvasEvents;
    wib::AutomationHost automation{workspace,
                                   commands,
                                   controls,
                                   paths.appDir.string(),
                                   paths.tempDir.string(),
                                   workspace.threadCount,
                                   paint,
                                   files,
                                   frameStore,
                                   &canvasEvents};
    wib::AutomationServer server(automation);
    const QString token =
        options->token.empty() ? wib::NewAutomationToken() : QString::fromStdString(options->token);
    // Where the program picks the place, the socket lies in this run's own
    // folder, which only the user can enter (QTemporaryDir makes it 0700).
    QString name = QString::fromStdString(options->listen);
    if (name.isEmpty()) {
        name = privateTemp.filePath(QStringLiteral("automation"));
    }
    if (server.listen(name, token)) {
        launcher.setServer(server.fullServerName(), token);
        log.line("Serving plug-ins on " + server.fullServerName().toStdString());
    } else {
        log.line("Cannot serve plug-ins: " + server.errorString().toStdString());
    }

    wib::StartupContext context{workspace, commands, view, log, paint, paths, *options};
    context.listPlugins = [&plugins] { plugins.rescan(); };
    context.runStartupPlugins = [&plugins, &preferences] {
        plugins.runStartupPlugins(preferences);
    };
    std::unique_ptr<wib::MDI_MainForm> mainForm = wib::RunStartup(context);
    // Start-up counts the processors.
    automation.threadCount = workspace.threadCount;
    dialogs.setParent(mainForm.get());
    window = mainForm->windowActions();
    window.autosave = [&autosave] {
        autosave.snapshotNow();
        autosave.waitIdle();
    };
    mainForm->attachPlugins(plugins, launcher, canvasEvents);
    // A signal keeps the work for the next start; only Exit after the
    // question lets go of it.
    onTerminationSignal = [&workspace, &mainForm, &autosave] {
        workspace.quitPending = true;
        mainForm->closeWithoutQuestion();
        autosave.snapshotAndWait();
    };
    const wib::Subscription exited =
        mainForm->closedByUser.subscribe([&autosave] { autosave.discard(); });
    // Headless, nobody answers a dialog: commands take their starting values.
    if (options->headless) {
        commands.setDialog(nullptr);
    }
    const wib::Subscription recentFiles = files.fileUsed.subscribe(
        [&mainForm](const std::string& path) { mainForm->addRecentFile(path); });
    wib::AttachAnimationPanels(*mainForm, frameStore, commands);
    autosave.offerRecovery();
    QTimer autosaveTimer;
    QObject::connect(&autosaveTimer, &QTimer::timeout, [&autosave] { autosave.tick(); });
    autosaveTimer.start(1000);

    // A signal taken during start-up found no event loop to end.
    int result = 0;
    if (wib::TerminationRequested()) {
        onTerminationSignal();
    } else {
        result = QApplication::exec();
    }
    server.close();
    launcher.shutDown();
    mainForm->shutDown();
    context.viewSubscription.reset();
    log.attach(nullptr);
    return result;
}
