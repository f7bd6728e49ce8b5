// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/program_paths.h"

#include <QCoreApplication>
#include <QStandardPaths>
#include <cstdlib>

namespace wib {

ProgramPaths FindProgramPaths(std::filesystem::path tempDir) {
    ProgramPaths paths;
    paths.appDir = QCoreApplication::applicationDirPath().toStdString();
    if (const char* data = std::getenv("WIBBLETON_DATA_DIR"); data != nullptr && *data != '\0') {
        paths.dataDir = data;
    } else if (const auto installed = paths.appDir / ".." / "share" / "wibbleton";
               std::filesystem::exists(installed / "Def_Res.txt")) {
        paths.dataDir = std::filesystem::weakly_canonical(installed);
    } else {
        paths.dataDir = WIB_SOURCE_DATA_DIR;
    }
    paths.pluginDir = std::filesystem::exists(paths.appDir / "plugins") ? paths.appDir / "plugins"
                                                                        : paths.dataDir / "plugins";
    paths.userDir = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation).toStdString();
    paths.tempDir = std::move(tempDir);
    return paths;
}

}  // namespace wib
