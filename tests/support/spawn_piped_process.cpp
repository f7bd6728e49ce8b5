// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/spawn_piped_process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>

extern char** environ;

namespace wib::testing {

std::unique_ptr<PipedProcess> SpawnPipedProcess::start(const std::string& program,
                                                       const std::vector<std::string>& arguments) {
    // A child that ends early must fail our next write, not end the test.
    std::signal(SIGPIPE, SIG_IGN);
    int toChild[2];
    int fromChild[2];
    if (pipe2(toChild, O_CLOEXEC) != 0) {
        return nullptr;
    }
    if (pipe2(fromChild, O_CLOEXEC) != 0) {
        close(toChild[0]);
        close(toChild[1]);
        return nullptr;
    }
    static int started = 0;
    const std::string errorFile =
        (std::filesystem::temp_directory_path() /
         ("wib-piped-" + std::to_string(::getpid()) + "-" + std::to_string(++started) + ".err"))
            .string();
    std::vector<std::string> all{program};
    all.insert(all.end(), arguments.begin(), arguments.end());
    std::vector<char*> argv;
    for (std::string& argument : all) {
        argv.push_back(argument.data());
    }
    argv.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, toChild[0], 0);
    posix_spawn_file_actions_adddup2(&actions, fromChild[1], 1);
    posix_spawn_file_actions_addopen(&actions, 2, errorFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC,
                                     0600);
    pid_t pid = 0;
    const int spawned =
        posix_spawnp(&pid, program.c_str(), &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(toChild[0]);
    close(fromChild[1]);
    if (spawned != 0) {
        close(toChild[1]);
        close(fromChild[0]);
        return nullptr;
    }
    return std::unique_ptr<PipedProcess>(
        new SpawnPipedProcess(pid, toChild[1], fromChild[0], errorFile));
}

SpawnPipedProcess::SpawnPipedProcess(pid_t pid, int input, int output, std::string errorFile)
    : pid_(pid), input_(input), output_(output), errorFile_(std::move(errorFile)) {}

SpawnPipedProcess::~SpawnPipedProcess() {
    if (!waited_) {
        kill();
    }
    if (output_ >= 0) {
        close(output_);
    }
    std::filesystem::remove(errorFile_);
}

bool SpawnPipedProcess::write(const std::uint8_t* data, std::size_t size) {
    while (size > 0 && input_ >= 0) {
        const ssize_t written = ::write(input_, data, size);
        if (written < 0) {
            return false;
        }
        data += written;
        size -= static_cast<std::size_t>(written);
    }
    return size == 0;
}

std::size_t SpawnPipedProcess::read(std::uint8_t* data, std::size_t size) {
    const ssize_t got = ::read(output_, data, size);
    return got > 0 ? static_cast<std::size_t>(got) : 0;
}

void SpawnPipedProcess::closeInput() {
    if (input_ >= 0) {
        close(input_);
        input_ = -1;
    }
}

ProcessEnd SpawnPipedProcess::wait() {
    closeInput();
    int status = 0;
    waitpid(pid_, &status, 0);
    waited_ = true;
    ProcessEnd end;
    end.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    std::ifstream errors(errorFile_);
    for (std::string line; std::getline(errors, line);) {
        if (!line.empty()) {
            end.lastErrorLine = line;
        }
    }
    return end;
}

ProcessEnd SpawnPipedProcess::finish() {
    return wait();
}

void SpawnPipedProcess::kill() {
    ::kill(pid_, SIGKILL);
    wait();
}

}  // namespace wib::testing
