// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/spawn_process_runner.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "tests/support/spawn_piped_process.h"

extern char** environ;

namespace wib::testing {

namespace {

std::vector<std::string> SplitCommandLine(const std::string& commandLine) {
    std::vector<std::string> arguments;
    std::string current;
    bool quoted = false;
    bool any = false;
    for (char c : commandLine) {
        if (c == '"') {
            quoted = !quoted;
            any = true;
        } else if (c == ' ' && !quoted) {
            if (any) {
                arguments.push_back(current);
            }
            current.clear();
            any = false;
        } else {
            current += c;
            any = true;
        }
    }
    if (any) {
        arguments.push_back(current);
    }
    return arguments;
}

}  // namespace

SpawnProcessRunner::~SpawnProcessRunner() {
    for (const auto& [pid, child] : children_) {
        if (!child.end) {
            waitpid(pid, nullptr, 0);
        }
        std::filesystem::remove(child.errorFile);
    }
}

std::optional<int> SpawnProcessRunner::start(const std::string& commandLine) {
    std::vector<std::string> arguments = SplitCommandLine(commandLine);
    if (arguments.empty()) {
        return std::nullopt;
    }
    std::vector<char*> argv;
    for (std::string& argument : arguments) {
        argv.push_back(argument.data());
    }
    argv.push_back(nullptr);
    static int started = 0;
    const std::string errorFile =
        (std::filesystem::temp_directory_path() /
         ("wib-spawn-" + std::to_string(::getpid()) + "-" + std::to_string(++started) + ".err"))
            .string();
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 2, errorFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC,
                                     0600);
    pid_t pid = 0;
    const int spawned = posix_spawnp(&pid, argv[0], &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (spawned != 0) {
        return std::nullopt;
    }
    children_[pid] = Child{errorFile, std::nullopt};
    return pid;
}

bool SpawnProcessRunner::running(int id) {
    auto child = children_.find(id);
    if (child == children_.end() || child->second.end) {
        return false;
    }
    int status = 0;
    if (waitpid(id, &status, WNOHANG) == 0) {
        return true;
    }
    ProcessEnd end;
    end.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    std::ifstream errors(child->second.errorFile);
    for (std::string line; std::getline(errors, line);) {
        if (!line.empty()) {
            end.lastErrorLine = line;
        }
    }
    child->second.end = end;
    return false;
}

std::optional<ProcessEnd> SpawnProcessRunner::ended(int id) {
    const auto child = children_.find(id);
    return child == children_.end() ? std::nullopt : child->second.end;
}

std::unique_ptr<PipedProcess> SpawnProcessRunner::startPiped(
    const std::string& program, const std::vector<std::string>& arguments) {
    return SpawnPipedProcess::start(program, arguments);
}

}  // namespace wib::testing
