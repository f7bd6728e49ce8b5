// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/general_table.h"

#include "core/text_file.h"

namespace wib {

std::optional<GeneralTable> GeneralTable::Load(const std::filesystem::path& file) {
    const auto contents = ReadTextFile(file);
    if (!contents || contents->size() != static_cast<std::size_t>(kColumns) * kRows) {
        return std::nullopt;
    }
    GeneralTable table;
    table.bytes_.assign(contents->begin(), contents->end());
    return table;
}

std::array<std::uint8_t, 3> GeneralTable::colour(int palette, int index) const {
    const int column = index * 3;
    return {at(column, palette), at(column + 1, palette), at(column + 2, palette)};
}

}  // namespace wib
