// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/host/qt_process_runner.h"

namespace wib {

std::optional<int> QtProcessRunner::start(const std::string& commandLine) {
    QStringList arguments = QProcess::splitCommand(QString::fromStdString(commandLine));
    if (arguments.isEmpty()) {
        return std::nullopt;
    }
    auto process = std::make_unique<QProcess>();
    process->setProcessChannelMode(QProcess::ForwardedChannels);
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
    processes_.erase(found);
    return false;
}

}  // namespace wib
