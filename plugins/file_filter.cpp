// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugins/file_filter.h"

#include <vector>

namespace wib {

namespace {

std::vector<std::string> Split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    std::size_t start = 0;
    for (std::size_t at = text.find(separator); at != std::string::npos;
         at = text.find(separator, start)) {
        parts.push_back(text.substr(start, at - start));
        start = at + 1;
    }
    parts.push_back(text.substr(start));
    return parts;
}

}  // namespace

std::string DialogFileFilter(const std::string& filter) {
    if (filter.find('|') == std::string::npos || filter.find(";;") != std::string::npos) {
        return filter;
    }
    const std::vector<std::string> parts = Split(filter, '|');
    std::string result;
    for (std::size_t i = 0; i + 1 < parts.size(); i += 2) {
        std::string patterns = parts[i + 1];
        for (char& c : patterns) {
            c = c == ';' ? ' ' : c;
        }
        if (patterns == "*.*") {
            patterns = "*";
        }
        result += (result.empty() ? "" : ";;") + parts[i] + " (" + patterns + ")";
    }
    return result;
}

}  // namespace wib
