// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace wib {

// One preset document size of the canvas-size dialog.
struct SizePreset {
    std::string label;
    std::int16_t width;
    std::int16_t height;
};

inline constexpr std::size_t kMaxSizePresets = 80;

// Reads the preset table: one record per line, three comma-separated fields
// (label, width, height), any of them may be quoted. Reading stops quietly at
// the first record that cannot be stored (fewer than three fields, a size that
// is not a number or does not fit a signed 16-bit value) and after 80 presets.
// Blank lines are skipped. Numbers are rounded halves-to-even.
std::vector<SizePreset> ParseSizePresets(std::string_view text);

// The same from a file ("Def_Res.txt"); a missing or unreadable file gives none.
std::vector<SizePreset> ReadSizePresets(const std::filesystem::path& file);

}  // namespace wib
