// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugins/plugin_launcher.h"

#include <QDeadlineTimer>
#include <QProcess>
#include <QTimer>

#include <algorithm>
#include <system_error>

namespace wib {

namespace {

// How long a child has to end after SIGTERM before it gets SIGKILL.
constexpr int kTerminateGraceMs = 2000;

}  // namespace

PluginLauncher::PluginLauncher(QObject* parent)
    : QObject(parent), environment_(QProcessEnvironment::systemEnvironment()) {}

PluginLauncher::~PluginLauncher() {
    shutDown();
}

void PluginLauncher::setServer(const QString& server, const QString& token) {
    environment_.insert(QStringLiteral("WIBBLETON_SERVER"), server);
    environment_.insert(QStringLiteral("WIBBLETON_TOKEN"), token);
}

long long PluginLauncher::start(const std::filesystem::path& file, WindowStyle style) {
    const std::size_t index = children_.size();
    children_.push_back({file.filename().string()});
    auto process = std::make_unique<QProcess>();
    QProcessEnvironment environment = environment_;
    // The desktop decides about focus; a plug-in that makes windows reads the
    // style here and shows them with or without activating them.
    environment.insert(QStringLiteral("WIBBLETON_WINDOW_STYLE"),
                       QString::number(static_cast<int>(style)));
    process->setProcessEnvironment(environment);
    // The child starts in the plug-in's folder, where a relative path (from
    // a relative --plugin-dir) would no longer lead to the file.
    std::error_code ignored;
    const std::filesystem::path program = std::filesystem::absolute(file, ignored);
    process->setWorkingDirectory(QString::fromStdString(program.parent_path().string()));
    // What a plug-in prints shows where the program's own output goes.
    process->setProcessChannelMode(QProcess::ForwardedChannels);
    process->start(QString::fromStdString(program.string()), {});
    if (!process->waitForStarted()) {
        processes_.push_back(nullptr);
        changed.notify();
        return 0;
    }
    ChildPlugin& child = children_[index];
    child.pid = process->processId();
    child.state = ChildPlugin::State::Running;
    connect(process.get(), &QProcess::finished, this,
            [this, index](int exitCode, QProcess::ExitStatus status) {
                finished(index, exitCode, status == QProcess::CrashExit);
            });
    processes_.push_back(std::move(process));
    changed.notify();
    started.notify(style);
    return children_[index].pid;
}

void PluginLauncher::finished(std::size_t index, int exitCode, bool crashed) {
    ChildPlugin& child = children_[index];
    child.state = ChildPlugin::State::Ended;
    child.exitCode = exitCode;
    child.crashed = crashed;
    changed.notify();
}

void PluginLauncher::stop(std::size_t index) {
    if (index >= children_.size() || children_[index].state != ChildPlugin::State::Running) {
        return;
    }
    QProcess* process = processes_[index].get();
    process->terminate();
    QTimer::singleShot(kTerminateGraceMs, process, [process] {
        if (process->state() != QProcess::NotRunning) {
            process->kill();
        }
    });
}

void PluginLauncher::shutDown() {
    std::vector<QProcess*> running;
    for (const auto& process : processes_) {
        if (process && process->state() != QProcess::NotRunning) {
            process->terminate();
            running.push_back(process.get());
        }
    }
    const QDeadlineTimer grace(kTerminateGraceMs);
    for (QProcess* process : running) {
        if (!process->waitForFinished(
                static_cast<int>(std::max<qint64>(grace.remainingTime(), 0)))) {
            process->kill();
            process->waitForFinished();
        }
    }
}

}  // namespace wib
