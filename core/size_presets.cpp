#include "core/size_presets.h"

#include <charconv>
#include <cmath>
#include <fstream>
#include <limits>
#include <optional>
#include <sstream>

namespace wib {

namespace {

std::string_view Trim(std::string_view text) {
    const auto first = text.find_first_not_of(" \t\r");
    if (first == std::string_view::npos) {
        return {};
    }
    const auto last = text.find_last_not_of(" \t\r");
    return text.substr(first, last - first + 1);
}

// Splits one line into fields; a field that opens with a quote runs to the
// closing quote and may hold commas.
std::vector<std::string> SplitFields(std::string_view line) {
    std::vector<std::string> fields;
    std::size_t pos = 0;
    while (pos <= line.size()) {
        while (pos < line.size() && (line[pos] == ' ' || line[pos] == '\t')) {
            ++pos;
        }
        std::string field;
        std::size_t end;
        if (pos < line.size() && line[pos] == '"') {
            const auto close = line.find('"', pos + 1);
            const auto stop = close == std::string_view::npos ? line.size() : close;
            field = std::string(line.substr(pos + 1, stop - pos - 1));
            end = line.find(',', stop);
        } else {
            end = line.find(',', pos);
            field = std::string(
                Trim(line.substr(pos, end == std::string_view::npos ? line.npos : end - pos)));
        }
        fields.push_back(std::move(field));
        if (end == std::string_view::npos) {
            break;
        }
        pos = end + 1;
    }
    return fields;
}

std::optional<std::int16_t> ParseSize(std::string_view text) {
    text = Trim(text);
    if (!text.empty() && text.front() == '+') {
        text.remove_prefix(1);
    }
    double value = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (text.empty() || error != std::errc() || end != text.data() + text.size() ||
        !std::isfinite(value)) {
        return std::nullopt;
    }
    const double rounded = std::nearbyint(value);
    if (rounded < std::numeric_limits<std::int16_t>::min() ||
        rounded > std::numeric_limits<std::int16_t>::max()) {
        return std::nullopt;
    }
    return static_cast<std::int16_t>(rounded);
}

}  // namespace

std::vector<SizePreset> ParseSizePresets(std::string_view text) {
    std::vector<SizePreset> presets;
    std::size_t pos = 0;
    while (pos < text.size() && presets.size() < kMaxSizePresets) {
        auto end = text.find('\n', pos);
        if (end == std::string_view::npos) {
            end = text.size();
        }
        const std::string_view line = text.substr(pos, end - pos);
        pos = end + 1;
        if (Trim(line).empty()) {
            continue;
        }
        const auto fields = SplitFields(line);
        if (fields.size() < 3) {
            break;
        }
        const auto width = ParseSize(fields[1]);
        const auto height = ParseSize(fields[2]);
        if (!width || !height) {
            break;
        }
        presets.push_back({fields[0], *width, *height});
    }
    return presets;
}

std::vector<SizePreset> ReadSizePresets(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    if (!in) {
        return {};
    }
    std::ostringstream contents;
    contents << in.rdbuf();
    return ParseSizePresets(contents.str());
}

}  // namespace wib
