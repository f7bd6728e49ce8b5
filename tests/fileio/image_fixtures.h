// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "core/document.h"
#include "fileio/targa_header.h"

namespace wib::testing {

// A folder of its own under the system's temporary folder, removed with
// everything in it at the end of the test.
class TempFolder {
  public:
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    std::string file(const std::string& name) const { return (path_ / name).string(); }
    const std::filesystem::path& path() const { return path_; }

  private:
    std::filesystem::path path_;
};

struct Rgba {
    std::uint8_t r, g, b, a;
    bool operator==(const Rgba&) const = default;
};

// Distinct, asymmetric colours and alphas for each pixel of the document, so
// that flips, swapped channels and shifted rows all show: (x, y) gets red
// 30 x + 5, green 40 y + 7, blue 11 (x + y) + 3 and alpha 50 + x + 9 y.
void PaintPattern(Document& doc);
Rgba PatternAt(int x, int y);
Rgba RgbaAt(const Document& doc, int x, int y);

// A Targa file: the header, then `body` as it stands.
std::vector<std::uint8_t> TargaFile(const TargaHeader& header,
                                    const std::vector<std::uint8_t>& body);
TargaHeader TrueColorHeader(int width, int height, int depth, std::uint8_t type = kTargaTrueColor);

void WriteFile(const std::string& path, const std::vector<std::uint8_t>& bytes);
std::vector<std::uint8_t> ReadFile(const std::string& path);

}  // namespace wib::testing
