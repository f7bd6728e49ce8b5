// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <unistd.h>

#include <filesystem>
#include <optional>

#include "anim/frame_store.h"
#include "core/host/process_runner.h"
#include "fileio/converter_bridge.h"
#include "fileio/image_files.h"
#include "paint/paint_session.h"

namespace wib::testing {

// The parts of the program the automation object serves beside the
// Workspace, as the program builds them; the converter starts nothing.
struct ProgramParts {
    class NoProcesses : public ProcessRunner {
      public:
        std::optional<int> start(const std::string&) override { return std::nullopt; }
        bool running(int) override { return false; }
        std::optional<ProcessEnd> ended(int) override { return std::nullopt; }
    };

    explicit ProgramParts(Workspace& workspace)
        : converter(processes, folder),
          files(converter),
          paint(workspace, folder),
          frames(workspace, folder / "CropAnim.tmp") {}
    ~ProgramParts() {
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }

    // The temporary folder of this test process: tests run side by side.
    const std::filesystem::path folder = [] {
        const auto path =
            std::filesystem::temp_directory_path() / ("wib-plugins-" + std::to_string(::getpid()));
        std::filesystem::create_directories(path);
        return path;
    }();
    NoProcesses processes;
    ConverterBridge converter;
    ImageFiles files;
    PaintSession paint;
    FrameStore frames;
};

}  // namespace wib::testing
