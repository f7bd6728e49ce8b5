// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/spawn_process_runner.h"

#include <spawn.h>
#include <sys/wait.h>

#include <string>
#include <vector>

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
    for (const auto& [pid, reaped] : children_) {
        if (!reaped) {
            waitpid(pid, nullptr, 0);
        }
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
    pid_t pid = 0;
    if (posix_spawnp(&pid, argv[0], nullptr, nullptr, argv.data(), environ) != 0) {
        return std::nullopt;
    }
    children_[pid] = false;
    return pid;
}

bool SpawnProcessRunner::running(int id) {
    auto child = children_.find(id);
    if (child == children_.end() || child->second) {
        return false;
    }
    if (waitpid(id, nullptr, WNOHANG) == 0) {
        return true;
    }
    child->second = true;
    return false;
}

}  // namespace wib::testing
