// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace wib {

// Splits one line of a comma-separated record into its fields. A field that
// opens with a double quote runs to the closing quote and may hold commas;
// unquoted fields are trimmed of blanks.
std::vector<std::string> SplitCsvFields(std::string_view line);

// Blanks and carriage returns trimmed from both ends.
std::string_view TrimBlanks(std::string_view text);

// The text as one field: quoted when it holds a comma, quote or blank edge.
std::string QuoteCsvField(const std::string& text);

// Calls `record` for each non-blank line of `text`, until it returns false.
template <typename Record>
void ForEachCsvRecord(std::string_view text, Record record) {
    std::size_t pos = 0;
    while (pos < text.size()) {
        auto end = text.find('\n', pos);
        if (end == std::string_view::npos) {
            end = text.size();
        }
        const std::string_view line = text.substr(pos, end - pos);
        pos = end + 1;
        if (TrimBlanks(line).empty()) {
            continue;
        }
        if (!record(SplitCsvFields(line))) {
            return;
        }
    }
}

}  // namespace wib
