// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/host/qt_process_runner.h"

#include <cstdio>

#include "ui/host/qt_piped_process.h"

namespace wib {

std::optional<int> QtProcessRunner::start(const std::string& commandLine) {
    QStringList arguments = QProcess::splitCommand(QString::fromStdString(commandLine));
    if (arguments.isEmpty()) {
        return std::nullopt;
    }
    auto process = std::make_unique<QProcess>();
    process->setProcessChannelMode(QProcess::ForwardedOutputChannel);
    const QString program = arguments.takeFirst();
    process->start(program, arguments);
    if (!process->waitForStarted()) {
        return std::nullopt;
    }
    const int id = nextId_++;
    processes_[id] = std::move(process);
    return id;
}

bool QtProcessRunner::running(int id) {
    const auto found = processes_.find(id);
    if (found == processes_.end()) {
        return false;
    }
    // A zero wait looks at the process once, with no event loop needed.
    if (found->second->state() != QProcess::NotRunning && !found->second->waitForFinished(0)) {
        return true;
    }
    QProcess& process = *found->second;
    const QByteArray errors = process.readAllStandardError();
    std::fwrite(errors.constData(), 1, static_cast<std::size_t>(errors.size()), stderr);
    ProcessEnd end;
    end.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    const QList<QByteArray> lines = errors.trimmed().split('\n');
    end.lastErrorLine = lines.back().trimmed().toStdString();
    ends_[id] = end;
    processes_.erase(found);
    return false;
}

std::optional<ProcessEnd> QtProcessRunner::ended(int id) {
    const auto found = ends_.find(id);
    if (found == ends_.end()) {
        return std::nullopt;
    }
    return found->second;
}

std::unique_ptr<PipedProcess> QtProcessRunner::startPiped(
    const std::string& program, const std::vector<std::string>& arguments) {
    QStringList list;
    for (const std::string& argument : arguments) {
        list.push_back(QString::fromStdString(argument));
    }
    auto process = std::make_unique<QtPipedProcess>(QString::fromStdString(program), list);
    if (!process->started()) {
        return nullptr;
    }
    return process;
}

}  // namespace wib
