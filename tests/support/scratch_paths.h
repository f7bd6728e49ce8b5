// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTemporaryDir>
#include <filesystem>

#include "core/program_paths.h"

namespace wib::testing {

// The program's folders for one test: the data shipped with the sources, and
// user and temporary folders of the test's own, so that tests running side by
// side never read or remove each other's files.
struct ScratchPaths {
    ScratchPaths() {
        const std::filesystem::path root = folder.path().toStdString();
        paths.dataDir = WIB_DATA_DIR;
        paths.userDir = root / "user";
        paths.tempDir = root / "temp";
        std::filesystem::create_directories(paths.userDir);
        std::filesystem::create_directories(paths.tempDir);
    }
    QTemporaryDir folder;
    ProgramPaths paths;
};

}  // namespace wib::testing
