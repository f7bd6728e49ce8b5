// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "paint/brush_controls.h"

namespace wib {

inline constexpr const char* kBrushSettingsFileName = "WT_BrushSettings.dat";

// Writes the record (exactly 176 bytes) to `folder`/WT_BrushSettings.dat and
// returns that path, written whole or not at all; nothing when it cannot be
// written, `error` then holding the system's reason.
std::optional<std::filesystem::path> WriteBrushSettingsFile(const std::filesystem::path& folder,
                                                            const BrushSettingsRecord& record,
                                                            std::string& error);

// Reads the first 176 bytes of a settings file. Nothing for a missing or
// shorter file; `error` then holds the message to show.
std::optional<BrushSettingsRecord> ReadBrushSettingsFile(const std::filesystem::path& file,
                                                         std::string& error);

}  // namespace wib
