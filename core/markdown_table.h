// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace wib {

// Text made safe for one cell of a Markdown table, as the generated
// references write them: a bar would end the cell, so it is escaped.
inline std::string MarkdownCell(const std::string& text) {
    std::string escaped;
    for (char c : text) {
        if (c == '|') {
            escaped += '\\';
        }
        escaped += c;
    }
    return escaped;
}

}  // namespace wib
