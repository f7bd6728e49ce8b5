// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/program_paths.h"

namespace wib {

// The program's folders: data from $WIBBLETON_DATA_DIR, the installed
// share/wibbleton, or the source tree's data/ when run from a build; user
// files in the per-user data folder; temporary files in `tempDir`;
// plug-ins in plugins/ beside the program (a build) or beside the data.
ProgramPaths FindProgramPaths(std::filesystem::path tempDir);

}  // namespace wib
