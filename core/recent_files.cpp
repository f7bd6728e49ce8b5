// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/recent_files.h"

#include <algorithm>

#include "core/csv_fields.h"
#include "core/text_file.h"

namespace wib {

std::vector<std::string> LoadMruds(const std::filesystem::path& file) {
    std::vector<std::string> entries;
    if (const auto text = ReadTextFile(file)) {
        ForEachCsvRecord(*text, [&](const std::vector<std::string>& fields) {
            if (!fields.empty() && !fields[0].empty() && entries.size() < kMaxRecentFiles) {
                entries.push_back(fields[0]);
            }
            return true;
        });
    }
    return entries;
}

bool SaveMRuds(const std::filesystem::path& file, const std::vector<std::string>& entries) {
    std::string text;
    for (const std::string& entry : entries) {
        text += QuoteCsvField(entry);
        text += '\n';
    }
    return WriteTextFile(file, text);
}

void AddRecentFile(std::vector<std::string>& entries, const std::string& entry) {
    std::erase(entries, entry);
    entries.insert(entries.begin(), entry);
    if (entries.size() > kMaxRecentFiles) {
        entries.resize(kMaxRecentFiles);
    }
}

}  // namespace wib
