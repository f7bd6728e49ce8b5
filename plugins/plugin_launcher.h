// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QProcessEnvironment>
#include <QString>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "core/observer_list.h"

class QProcess;

namespace wib {

// How a plug-in's window is to behave: 1 takes the focus (plug-ins that take
// over the interaction), 4 leaves it with the program (companions that run
// beside it, and filters).
enum class WindowStyle : int { TakesFocus = 1, KeepsProgramFocus = 4 };

// One plug-in the program started, or tried to.
struct ChildPlugin {
    enum class State { Running, Ended, NotStarted };
    std::string name;  // the file name
    long long pid = 0;
    State state = State::NotStarted;
    int exitCode = 0;
    bool crashed = false;  // ended by a signal
};

// Starts plug-in files as child processes, the file itself and no shell, in
// the file's own folder, with the server's name and token in the environment,
// and keeps the list of every child it started. A child that is still running
// when the program shuts down gets SIGTERM and, two seconds later, SIGKILL.
class PluginLauncher : public QObject {
    Q_OBJECT

  public:
    explicit PluginLauncher(QObject* parent = nullptr);
    ~PluginLauncher() override;

    // What children are given in WIBBLETON_SERVER and WIBBLETON_TOKEN.
    void setServer(const QString& server, const QString& token);

    // Starts the file; answers its process id, or 0 (silently) when it could
    // not be started. Either way the child list gains an entry.
    long long start(const std::filesystem::path& file, WindowStyle style);

    const std::vector<ChildPlugin>& children() const { return children_; }
    // Asks a running child to end: SIGTERM, SIGKILL two seconds later.
    void stop(std::size_t index);
    // The shut-down policy for every child still running; returns once all have ended.
    void shutDown();

    // Told when a child starts, ends or is added.
    ObserverList<> changed;
    // Told when a child has started, with the style it was started with: the
    // window that is to keep the focus takes it back.
    ObserverList<WindowStyle> started;

  private:
    void finished(std::size_t index, int exitCode, bool crashed);

    QProcessEnvironment environment_;
    std::vector<ChildPlugin> children_;
    std::vector<std::unique_ptr<QProcess>> processes_;  // one per child, null when not started
};

}  // namespace wib
