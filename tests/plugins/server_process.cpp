// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/plugins/server_process.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <random>
#include <sstream>
#include <stdexcept>
#include <thread>
#include <vector>

extern char** environ;

namespace wib::testing {

namespace {

constexpr auto kPatience = std::chrono::seconds(10);
constexpr auto kPoll = std::chrono::milliseconds(20);

std::string RandomToken() {
    std::random_device device;
    std::ostringstream token;
    for (int i = 0; i < 4; ++i) {
        token << std::hex << device();
    }
    return token.str();
}

bool CanConnect(const std::string& path) {
    const int fd = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path.c_str(), sizeof address.sun_path - 1);
    const bool connected =
        connect(fd, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    close(fd);
    return connected;
}

}  // namespace

ServerProcess::ServerProcess(const std::string& program) : token_(RandomToken()) {
    std::string folderTemplate = "/tmp/wib-e2e-XXXXXX";
    if (mkdtemp(folderTemplate.data()) == nullptr) {
        throw std::runtime_error("cannot make a temporary folder");
    }
    folder_ = folderTemplate;
    socketPath_ = folder_ + "/automation.sock";
    errorPath_ = folder_ + "/stderr.txt";

    int input[2];
    if (pipe2(input, O_CLOEXEC) != 0) {
        throw std::runtime_error("cannot make a pipe");
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input[0], STDIN_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errorPath_.c_str(),
                                     O_WRONLY | O_CREAT | O_TRUNC, 0600);
    std::vector<std::string> args = {program,     "--headless", "--listen",
                                     socketPath_, "--token",    token_};
    std::vector<char*> argv;
    for (std::string& arg : args) {
        argv.push_back(arg.data());
    }
    argv.push_back(nullptr);
    const int spawned =
        posix_spawn(&pid_, program.c_str(), &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(input[0]);
    input_ = input[1];
    if (spawned != 0) {
        throw std::runtime_error("cannot start " + program);
    }
    const auto deadline = std::chrono::steady_clock::now() + kPatience;
    while (!CanConnect(socketPath_)) {
        if (std::chrono::steady_clock::now() > deadline || waitpid(pid_, nullptr, WNOHANG) != 0) {
            throw std::runtime_error("the server did not start: " + standardError());
        }
        std::this_thread::sleep_for(kPoll);
    }
}

ServerProcess::~ServerProcess() {
    if (pid_ > 0) {
        kill(pid_, SIGTERM);
        const auto deadline = std::chrono::steady_clock::now() + kPatience;
        while (waitpid(pid_, nullptr, WNOHANG) == 0) {
            if (std::chrono::steady_clock::now() > deadline) {
                kill(pid_, SIGKILL);
                waitpid(pid_, nullptr, 0);
                break;
            }
            std::this_thread::sleep_for(kPoll);
        }
    }
    close(input_);
    unlink(socketPath_.c_str());
    unlink(errorPath_.c_str());
    rmdir(folder_.c_str());
}

std::string ServerProcess::standardError() const {
    std::ifstream file(errorPath_);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

bool ServerProcess::waitForOutput(const std::string& text) const {
    const auto deadline = std::chrono::steady_clock::now() + kPatience;
    while (standardError().find(text) == std::string::npos) {
        if (std::chrono::steady_clock::now() > deadline) {
            return false;
        }
        std::this_thread::sleep_for(kPoll);
    }
    return true;
}

}  // namespace wib::testing
