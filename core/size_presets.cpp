// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/size_presets.h"

#include "core/csv_fields.h"
#include "core/text_file.h"
#include "pixel/rounding.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <optional>

namespace wib {

namespace {

std::optional<std::int16_t> ParseSize(std::string_view text) {
    text = TrimBlanks(text);
    if (!text.empty() && text.front() == '+') {
        text.remove_prefix(1);
    }
    double value = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (text.empty() || error != std::errc() || end != text.data() + text.size() ||
        !std::isfinite(value)) {
        return std::nullopt;
    }
    const double rounded = RoundHalfEvenValue(value);
    if (rounded < std::numeric_limits<std::int16_t>::min() ||
        rounded > std::numeric_limits<std::int16_t>::max()) {
        return std::nullopt;
    }
    return static_cast<std::int16_t>(rounded);
}

}  // namespace

std::vector<SizePreset> ParseSizePresets(std::string_view text) {
    std::vector<SizePreset> presets;
    ForEachCsvRecord(text, [&](const std::vector<std::string>& fields) {
        if (presets.size() >= kMaxSizePresets || fields.size() < 3) {
            return false;
        }
        const auto width = ParseSize(fields[1]);
        const auto height = ParseSize(fields[2]);
        if (!width || !height) {
            return false;
        }
        presets.push_back({fields[0], *width, *height});
        return true;
    });
    return presets;
}

std::vector<SizePreset> ReadSizePresets(const std::filesystem::path& file) {
    const auto text = ReadTextFile(file);
    return text ? ParseSizePresets(*text) : std::vector<SizePreset>{};
}

}  // namespace wib
