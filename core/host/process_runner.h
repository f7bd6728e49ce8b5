// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>

namespace wib {

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
};

}  // namespace wib
