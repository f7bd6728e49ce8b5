// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QProcess>
#include <map>
#include <memory>

#include "core/host/process_runner.h"

namespace wib {

// Starts programs as Qt processes, their output passed on to the program's
// own, and tells whether each is still running without an event loop. Their
// standard error is read as well, for the last line a failure wrote.
class QtProcessRunner : public ProcessRunner {
  public:
    std::optional<int> start(const std::string& commandLine) override;
    bool running(int id) override;
    std::optional<ProcessEnd> ended(int id) override;
    std::unique_ptr<PipedProcess> startPiped(const std::string& program,
                                             const std::vector<std::string>& arguments) override;

  private:
    std::map<int, std::unique_ptr<QProcess>> processes_;
    std::map<int, ProcessEnd> ends_;
    int nextId_ = 1;
};

}  // namespace wib
