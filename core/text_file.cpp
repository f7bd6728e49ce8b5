// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/text_file.h"

#include <fstream>
#include <sstream>

#include "core/atomic_file.h"

namespace wib {

std::optional<std::string> ReadTextFile(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    if (!in) {
        return std::nullopt;
    }
    std::ostringstream contents;
    contents << in.rdbuf();
    return contents.str();
}

bool WriteTextFile(const std::filesystem::path& file, const std::string& text) {
    std::string error;
    return WriteFileAtomically(file, text, error);
}

}  // namespace wib
