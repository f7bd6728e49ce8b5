// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <sys/types.h>

#include <memory>
#include <string>
#include <vector>

#include "core/host/process_runner.h"

namespace wib::testing {

// A real process with pipes on its standard input and output, its standard
// error going to a file of its own, for tests that drive real programs.
class SpawnPipedProcess : public PipedProcess {
  public:
    // Nothing when the program could not be started.
    static std::unique_ptr<PipedProcess> start(const std::string& program,
                                               const std::vector<std::string>& arguments);
    ~SpawnPipedProcess() override;

    bool write(const std::uint8_t* data, std::size_t size) override;
    std::size_t read(std::uint8_t* data, std::size_t size) override;
    ProcessEnd finish() override;
    void kill() override;

  private:
    SpawnPipedProcess(pid_t pid, int input, int output, std::string errorFile);
    ProcessEnd wait();
    void closeInput();

    pid_t pid_;
    int input_;
    int output_;
    std::string errorFile_;
    bool waited_ = false;
};

}  // namespace wib::testing
