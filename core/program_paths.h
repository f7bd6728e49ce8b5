// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>

namespace wib {

// Where the program finds its own files and keeps the user's.
struct ProgramPaths {
    std::filesystem::path appDir;   // the folder of the program itself
    std::filesystem::path dataDir;  // Def_Res.txt, General.dat
    std::filesystem::path userDir;  // files the program writes: Mruds.txt
    std::filesystem::path tempDir;  // temporary files: a folder of this run's own
    // The program's own plug-ins: beside the data files when installed,
    // plugins/ beside the program in a build.
    std::filesystem::path pluginDir;
};

}  // namespace wib
