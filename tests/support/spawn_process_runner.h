// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <string>
#include <vector>

#include "core/host/process_runner.h"

namespace wib::testing {

// Starts real processes for tests that drive real programs (the converter),
// splitting the command line as the program's own runner does: blanks
// separate arguments, double quotes keep blanks in one.
class SpawnProcessRunner : public ProcessRunner {
  public:
    ~SpawnProcessRunner() override;
    std::optional<int> start(const std::string& commandLine) override;
    bool running(int id) override;
    std::optional<ProcessEnd> ended(int id) override;
    std::unique_ptr<PipedProcess> startPiped(const std::string& program,
                                             const std::vector<std::string>& arguments) override;

  private:
    struct Child {
        std::string errorFile;  // where its standard error goes
        std::optional<ProcessEnd> end;
    };
    std::map<int, Child> children_;  // by pid
};

}  // namespace wib::testing
