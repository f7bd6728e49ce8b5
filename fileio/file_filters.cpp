// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/file_filters.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <utility>

namespace wib {

namespace {

// Where the word is not the extension in capitals.
constexpr std::array<std::pair<const char*, const char*>, 2> kFormatWords{
    {{"Jpg", "JPEG"}, {"Tiff", "TIFF"}}};

}  // namespace

std::vector<FilterEntry> ParseFilter(const std::string& filter) {
    std::vector<std::string> parts;
    std::size_t start = 0;
    while (start <= filter.size()) {
        const std::size_t bar = std::min(filter.find('|', start), filter.size());
        parts.push_back(filter.substr(start, bar - start));
        start = bar + 1;
    }
    std::vector<FilterEntry> entries;
    for (std::size_t i = 0; i + 1 < parts.size(); i += 2) {
        FilterEntry entry{parts[i], parts[i + 1], parts[i], {}};
        const std::string suffix = " (" + entry.pattern + ")";
        if (entry.name.size() > suffix.size() &&
            entry.name.compare(entry.name.size() - suffix.size(), suffix.size(), suffix) == 0) {
            entry.name.erase(entry.name.size() - suffix.size());
        }
        if (entry.pattern.rfind("*.", 0) == 0 && entry.pattern != "*.*") {
            entry.extension = entry.pattern.substr(1);
        }
        entries.push_back(std::move(entry));
    }
    return entries;
}

std::optional<FilterEntry> SaveType(const std::string& name) {
    const std::string wanted = name == "Layered" ? kSaveTypeLayered : name;
    for (FilterEntry& entry : ParseFilter(kSaveFilter)) {
        if (entry.name == wanted) {
            return std::move(entry);
        }
    }
    return std::nullopt;
}

std::optional<FilterEntry> SaveTypeForExtension(const std::string& extension) {
    for (FilterEntry& entry : ParseFilter(kSaveFilter)) {
        if (entry.extension == extension) {
            return std::move(entry);
        }
    }
    return std::nullopt;
}

std::string FormatWord(const FilterEntry& type) {
    for (const auto& [name, word] : kFormatWords) {
        if (type.name == name) {
            return word;
        }
    }
    std::string word = type.extension.empty() ? std::string() : type.extension.substr(1);
    std::transform(word.begin(), word.end(), word.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return word;
}

}  // namespace wib
