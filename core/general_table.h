// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

namespace wib {

// "General.dat": the program's swatch palettes, read whole at start-up into a
// table of 97 rows of 1092 bytes. Row p is palette p: 364 colours as red,
// green, blue byte triples. Palette 0 is the default swatch set the colour
// choosers offer.
class GeneralTable {
  public:
    static constexpr int kColumns = 1092;
    static constexpr int kRows = 97;
    static constexpr int kColoursPerPalette = kColumns / 3;

    // Nothing when the file is missing or is not exactly 97 x 1092 bytes.
    static std::optional<GeneralTable> Load(const std::filesystem::path& file);

    std::uint8_t at(int column, int row) const {
        return bytes_[static_cast<std::size_t>(row) * kColumns + column];
    }
    // Colour `index` (0..363) of palette `palette` (0..96) as {r, g, b}.
    std::array<std::uint8_t, 3> colour(int palette, int index) const;

  private:
    std::vector<std::uint8_t> bytes_;
};

}  // namespace wib
