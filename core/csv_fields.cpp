// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/csv_fields.h"

namespace wib {

std::string_view TrimBlanks(std::string_view text) {
    const auto first = text.find_first_not_of(" \t\r");
    if (first == std::string_view::npos) {
        return {};
    }
    const auto last = text.find_last_not_of(" \t\r");
    return text.substr(first, last - first + 1);
}

std::vector<std::string> SplitCsvFields(std::string_view line) {
    std::vector<std::string> fields;
    std::size_t pos = 0;
    while (pos <= line.size()) {
        while (pos < line.size() && (line[pos] == ' ' || line[pos] == '\t')) {
            ++pos;
        }
        std::size_t end;
        if (pos < line.size() && line[pos] == '"') {
            const auto close = line.find('"', pos + 1);
            const auto stop = close == std::string_view::npos ? line.size() : close;
            fields.emplace_back(line.substr(pos + 1, stop - pos - 1));
            end = line.find(',', stop);
        } else {
            end = line.find(',', pos);
            const auto length = end == std::string_view::npos ? line.npos : end - pos;
            fields.emplace_back(TrimBlanks(line.substr(pos, length)));
        }
        if (end == std::string_view::npos) {
            break;
        }
        pos = end + 1;
    }
    return fields;
}

std::string QuoteCsvField(const std::string& text) {
    const bool plain =
        text.find_first_of(",\"") == std::string::npos && TrimBlanks(text).size() == text.size();
    return plain ? text : '"' + text + '"';
}

}  // namespace wib
