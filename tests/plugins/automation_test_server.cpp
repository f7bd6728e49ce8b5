// A stand-in for the program's headless mode in the end-to-end plug-in tests:
// the automation server over a workspace of test fakes, with the document
// commands and a few panel controls.
//
//   automation_test_server [--headless] --listen NAME --token T
//
// Like the headless program it writes message boxes ("MessageBox: <text>"),
// questions (answered with the second button) and log lines to standard
// error, and prints "listening <path>" there once plug-ins can connect. It
// stops on SIGTERM or SIGINT, or when its standard input closes.

#include <sys/socket.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QSocketNotifier>
#include <QThread>

#include <csignal>
#include <iostream>
#include <string>

#include "core/document_build.h"
#include "core/document_commands.h"
#include "plugins/automation_server.h"
#include "tests/plugins/map_controls.h"
#include "tests/support/test_host.h"

namespace {

using wib::testing::RecordingPrompter;

// Texts go to standard error the way the headless program writes them.
class StandardErrorPrompter : public RecordingPrompter {
  public:
    void messageBox(const std::string& text, const std::string& title) override {
        RecordingPrompter::messageBox(text, title);
        std::cerr << "MessageBox: " << text << std::endl;
    }
    int questionBox(const std::string& text, const std::string& title) override {
        const int answer = RecordingPrompter::questionBox(text, title);
        std::cerr << "Question: " << text << " -> " << (answer == 1 ? "first" : "second")
                  << std::endl;
        return answer;
    }
};

class StandardErrorLog : public wib::Log {
  public:
    void line(const std::string& text) override { std::cerr << text << std::endl; }
};

int stopPipe[2] = {-1, -1};

void OnStopSignal(int) {
    const char byte = 1;
    [[maybe_unused]] const ssize_t written = write(stopPipe[1], &byte, 1);
}

QString Option(const QStringList& arguments, const QString& name) {
    const qsizetype at = arguments.indexOf(name);
    return at >= 0 && at + 1 < arguments.size() ? arguments[at + 1] : QString();
}

}  // namespace

int main(int argc, char* argv[]) {
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const QString name = Option(arguments, "--listen");
    const QString token = Option(arguments, "--token");
    if (name.isEmpty() || token.isEmpty()) {
        std::cerr << "usage: automation_test_server [--headless] --listen NAME --token T\n";
        return 2;
    }

    wib::testing::TestHost fakes;
    StandardErrorPrompter prompter;
    StandardErrorLog log;
    wib::Workspace workspace(
        wib::HostServices{prompter, fakes.preferences, fakes.clock, fakes.view, fakes.system, log});
    fakes.setUndoBudget(64);
    wib::Wib_NewBuffer(workspace, 640, 480);

    wib::CommandRegistry commands;
    wib::RegisterDocumentCommands(commands);
    wib::testing::MapControls controls;
    controls.values[{"BrushOptions", "HScroll1"}] = 10LL;

    wib::AutomationHost host{workspace,
                             commands,
                             controls,
                             QCoreApplication::applicationDirPath().toStdString(),
                             QDir::tempPath().toStdString(),
                             QThread::idealThreadCount()};
    wib::AutomationServer server(host);
    if (!server.listen(name, token)) {
        std::cerr << "cannot listen on " << name.toStdString() << ": "
                  << server.errorString().toStdString() << std::endl;
        return 1;
    }

    if (socketpair(AF_UNIX, SOCK_STREAM, 0, stopPipe) != 0) {
        return 1;
    }
    std::signal(SIGTERM, OnStopSignal);
    std::signal(SIGINT, OnStopSignal);
    QSocketNotifier stopSignal(stopPipe[0], QSocketNotifier::Read);
    QObject::connect(&stopSignal, &QSocketNotifier::activated, &application,
                     &QCoreApplication::quit);
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &application, [&application] {
        char buffer[256];
        if (read(STDIN_FILENO, buffer, sizeof buffer) <= 0) {
            application.quit();
        }
    });

    std::cerr << "listening " << server.fullServerName().toStdString() << std::endl;
    const int result = QCoreApplication::exec();
    server.close();
    return result;
}
