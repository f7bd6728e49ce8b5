// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace wib {

// The whole file, or nothing when it is missing or unreadable.
std::optional<std::string> ReadTextFile(const std::filesystem::path& file);

// Replaces the file's contents whole or not at all; false when it cannot be
// written, the old contents then staying.
bool WriteTextFile(const std::filesystem::path& file, const std::string& text);

}  // namespace wib
