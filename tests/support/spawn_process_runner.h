// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>

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

  private:
    std::map<int, bool> children_;  // pid, and whether it has been reaped
};

}  // namespace wib::testing
