// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace wib {

// How a process ended.
struct ProcessEnd {
    int exitCode = 0;           // -1 when it did not exit by itself (a crash, a kill)
    std::string lastErrorLine;  // the last line it wrote to standard error
};

// A program running with pipes on its standard input and output (the video
// encoder fed frames, the decoder giving them back). Its standard error is
// kept for the last line it wrote.
class PipedProcess {
  public:
    virtual ~PipedProcess() = default;
    // Writes all `size` bytes to its input, waiting while the pipe is full;
    // false once it takes no more (it ended or closed its input).
    virtual bool write(const std::uint8_t* data, std::size_t size) = 0;
    // Reads up to `size` bytes of its output, waiting until some come; 0 once
    // it has closed its output.
    virtual std::size_t read(std::uint8_t* data, std::size_t size) = 0;
    // Closes its input and waits for it to end.
    virtual ProcessEnd finish() = 0;
    // Ends it at once and waits until it has gone.
    virtual void kill() = 0;
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
    // Starts `program` (found on the PATH unless it names a folder) with
    // `arguments`, each passed as it stands, and pipes to its input and
    // output; nothing when it could not be started. A runner that cannot
    // offer pipes starts nothing.
    virtual std::unique_ptr<PipedProcess> startPiped(
        const std::string& /*program*/, const std::vector<std::string>& /*arguments*/) {
        return nullptr;
    }
};

}  // namespace wib
