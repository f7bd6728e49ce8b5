// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace wib {

inline constexpr std::size_t kMaxRecentFiles = 8;

// The most-recently-used list ("Mruds.txt"): one entry per comma-separated
// record, newest first, read until the end of the file.
std::vector<std::string> LoadMruds(const std::filesystem::path& file);
bool SaveMRuds(const std::filesystem::path& file, const std::vector<std::string>& entries);

// Puts `entry` first, dropping an earlier copy and anything past the limit.
void AddRecentFile(std::vector<std::string>& entries, const std::string& entry);

}  // namespace wib
