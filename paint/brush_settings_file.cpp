// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/brush_settings_file.h"

#include <array>
#include <fstream>

#include "core/atomic_file.h"

namespace wib {

std::optional<std::filesystem::path> WriteBrushSettingsFile(const std::filesystem::path& folder,
                                                            const BrushSettingsRecord& record,
                                                            std::string& error) {
    std::array<char, kBrushSettingsBytes> bytes{};
    for (std::size_t i = 0; i < record.size(); ++i) {
        const auto value = static_cast<std::uint32_t>(record[i]);
        for (std::size_t b = 0; b < 4; ++b) {
            bytes[i * 4 + b] = static_cast<char>((value >> (8 * b)) & 0xFF);
        }
    }
    const auto path = folder / kBrushSettingsFileName;
    if (!WriteFileAtomically(path, {bytes.data(), bytes.size()}, error)) {
        return std::nullopt;
    }
    return path;
}

std::optional<BrushSettingsRecord> ReadBrushSettingsFile(const std::filesystem::path& file,
                                                         std::string& error) {
    std::ifstream in(file, std::ios::binary);
    if (!in) {
        error = "The brush settings file " + file.string() + " could not be opened.";
        return std::nullopt;
    }
    std::array<char, kBrushSettingsBytes> bytes{};
    in.read(bytes.data(), bytes.size());
    if (in.gcount() != kBrushSettingsBytes) {
        error = "The brush settings file " + file.string() + " is too short: it holds " +
                std::to_string(in.gcount()) + " bytes instead of " +
                std::to_string(kBrushSettingsBytes) + ".";
        return std::nullopt;
    }
    BrushSettingsRecord record{};
    for (std::size_t i = 0; i < record.size(); ++i) {
        std::uint32_t value = 0;
        for (std::size_t b = 0; b < 4; ++b) {
            value |= static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[i * 4 + b]))
                     << (8 * b);
        }
        record[i] = static_cast<std::int32_t>(value);
    }
    return record;
}

}  // namespace wib
