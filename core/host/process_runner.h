// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>

namespace wib {

// How a process ended.
struct ProcessEnd {
    int exitCode = 0;           // -1 when it did not exit by itself (a crash, a kill)
    std::string lastErrorLine;  // the last line it wrote to standard error
};

// Starts other programs (the image converter) on behalf of the Qt-free
// libraries. The program uses Qt's processes; tests start real ones or fake them.
class ProcessRunner {
  public:
    virtual ~ProcessRunner() = default;
    // Starts `commandLine` (the program and its arguments separated by blanks,
    // double quotes around an argument that holds blanks) without waiting for
    // it. An id for `running`, or nothing when it could not be started.
    virtual std::optional<int> start(const std::string& commandLine) = 0;
    // Whether the process `start` gave `id` is still running.
    virtual bool running(int id) = 0;
    // How the process ended, once `running` has said it no longer runs;
    // nothing for an id never started or still running.
    virtual std::optional<ProcessEnd> ended(int id) = 0;
};

}  // namespace wib
