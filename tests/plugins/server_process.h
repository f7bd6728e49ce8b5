// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <sys/types.h>

#include <string>

namespace wib::testing {

// The server program of the end-to-end tests, run as a child process the way
// the program's headless mode runs: PROGRAM --headless --listen PATH --token T,
// with its standard error kept in a file. Construction returns once plug-ins
// can connect; destruction stops it with SIGTERM.
class ServerProcess {
  public:
    explicit ServerProcess(const std::string& program);
    ServerProcess(const ServerProcess&) = delete;
    ServerProcess& operator=(const ServerProcess&) = delete;
    ~ServerProcess();

    const std::string& socketPath() const { return socketPath_; }
    const std::string& token() const { return token_; }
    // Everything the server has written to standard error so far.
    std::string standardError() const;
    // Waits (up to ten seconds) until standard error holds `text`.
    bool waitForOutput(const std::string& text) const;

  private:
    std::string folder_;
    std::string socketPath_;
    std::string token_;
    std::string errorPath_;
    pid_t pid_ = -1;
    int input_ = -1;  // the write end of the child's standard input
};

}  // namespace wib::testing
