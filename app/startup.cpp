// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/startup.h"

#include <unistd.h>

#include <QApplication>
#include <QLocale>
#include <QStandardPaths>
#include <cmath>
#include <cstdlib>

#include "app/screen_check.h"
#include "core/commands.h"
#include "core/workspace.h"
#include "paint/paint_session.h"
#include "ui/caps_lock.h"
#include "ui/color_sets.h"
#include "ui/error_console_form.h"
#include "ui/mdi_main_form.h"

namespace wib {

namespace {

std::string TrueFalse(bool value) {
    return value ? "True" : "False";
}

std::string Environment(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

void LogEnvironment(Log& log, const SystemInfo& system) {
    // There is no account-control setting here: -1 says it is unknown.
    log.line("Current UAC setting is -1");
    log.line("-1 is unknown, 0 is off, 1 is enabled at the lowest level.");
    log.line("Is run as administrator = " + TrueFalse(geteuid() == 0));
    std::string processors = "Number of processors " + std::to_string(system.processorCount());
    for (const char* name : {"PROCESSOR_ARCHITECTURE", "PROCESSOR_IDENTIFIER", "PROCESSOR_LEVEL"}) {
        if (const std::string value = Environment(name); !value.empty()) {
            processors += " " + value;
        }
    }
    log.line(processors);
}

void LoadTabletCalibration(Workspace& workspace) {
    auto read = [&](const char* key, double fallback) {
        const auto text = workspace.host.preferences.value("Tablet", key);
        if (!text) {
            return fallback;
        }
        try {
            const double value = std::stod(*text);
            return std::isfinite(value) ? std::clamp(value, 0.0, 1.0) : fallback;
        } catch (const std::exception&) {
            return fallback;
        }
    };
    workspace.tablet.minimum = read("PressureMin", 0.0);
    workspace.tablet.maximum = read("PressureMax", 1.0);
}

std::string DefaultMovieFolder() {
    QString folder = QStandardPaths::writableLocation(QStandardPaths::MoviesLocation);
    if (folder.isEmpty()) {
        folder = QStandardPaths::writableLocation(QStandardPaths::HomeLocation);
    }
    return folder.toStdString();
}

}  // namespace

std::unique_ptr<MDI_MainForm> RunStartup(StartupContext& context) {
    Workspace& workspace = context.workspace;
    Log& log = context.log;
    Preferences& preferences = workspace.host.preferences;

    const std::string colorSet =
        ApplyColorSet(preferences.value("Settings", "ColorSet").value_or("Default"));
    log.line("Using color set " + colorSet);

    if (QGuiApplication::primaryScreen() == nullptr) {
        workspace.host.prompter.message("Error loading GDI+!");
    }
    log.line("gdi plus started");

    log.line("Parsing command line...");
    workspace.NoGpuFlag = context.options.noGpu;
    if (workspace.NoGpuFlag) {
        log.line("GPU initialization was cancelled via command line argument.");
    } else {
        log.line("No GPU library is installed; all work runs on the processor.");
    }

    log.line("Decimal separator is comma = " + TrueFalse(QLocale().decimalPoint() == ","));
    LogEnvironment(log, workspace.host.system);
    CheckScreen(log, workspace.host.prompter);

    const auto generalFile = context.paths.dataDir / "General.dat";
    workspace.general = GeneralTable::Load(generalFile);
    if (!workspace.general) {
        log.line("General.dat is missing or damaged (" + generalFile.string() +
                 "); the swatch palettes are not available.");
    }

    auto mainForm =
        std::make_unique<MDI_MainForm>(workspace, context.commands, context.paths, &context.paint);
    context.log.attach(mainForm->logWindow());
    context.viewSubscription = context.view.attach(*mainForm);
    context.commands.run(workspace, "file.new", {});

    workspace.threadCount = workspace.host.system.processorCount();
    log.line("Threads = " + std::to_string(workspace.threadCount));

    log.line("loading calibration settings");
    LoadTabletCalibration(workspace);

    log.line("Opening main form.");
    mainForm->createToolPanel();
    log.line("Enumerating plugins...");
    if (context.listPlugins) {
        context.listPlugins();
    }
    mainForm->restoreWindowPos();
    if (workspace.NoGpuFlag) {
        mainForm->logWindow()->show();
    }
    mainForm->show();

    QApplication::processEvents();

    const bool capsLock = CapsLockIsOn();
    if (capsLock) {
        workspace.host.prompter.message(
            "Check your capslock status.  Capslock is currently on.\n"
            "Capslock may interfere with normal operation of the program.");
    }

    workspace.defaultMoviePath = DefaultMovieFolder() + "/MyAVI.avi";

    workspace.eraseMode = capsLock;
    if (capsLock) {
        mainForm->updateTitle();
        log.line("Caps lock is on.");
        log.line("Caps lock forces erase mode for drawing.");
    }

    log.line("Running startup plugins, if any.");
    if (context.runStartupPlugins) {
        context.runStartupPlugins();
    }

    log.line("Done initializing.");
    return mainForm;
}

}  // namespace wib
