// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/fileio/image_fixtures.h"

#include <fstream>
#include <iterator>
#include <random>

namespace wib::testing {

TempFolder::TempFolder() {
    std::random_device seed;
    path_ = std::filesystem::temp_directory_path() / ("wib-fileio-" + std::to_string(seed()));
    std::filesystem::create_directories(path_);
}

TempFolder::~TempFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

Rgba PatternAt(int x, int y) {
    return {static_cast<std::uint8_t>(30 * x + 5), static_cast<std::uint8_t>(40 * y + 7),
            static_cast<std::uint8_t>(11 * (x + y) + 3), static_cast<std::uint8_t>(50 + x + 9 * y)};
}

void PaintPattern(Document& doc) {
    for (int y = 0; y < doc.height; ++y) {
        for (int x = 0; x < doc.width; ++x) {
            const Rgba colour = PatternAt(x, y);
            doc.RBuffer.at(x, y) = colour.r;
            doc.GBuffer.at(x, y) = colour.g;
            doc.BBuffer.at(x, y) = colour.b;
            doc.ABuffer.at(x, y) = colour.a;
        }
    }
}

Rgba RgbaAt(const Document& doc, int x, int y) {
    return {doc.RBuffer.at(x, y), doc.GBuffer.at(x, y), doc.BBuffer.at(x, y), doc.ABuffer.at(x, y)};
}

std::vector<std::uint8_t> TargaFile(const TargaHeader& header,
                                    const std::vector<std::uint8_t>& body) {
    std::vector<std::uint8_t> bytes(kTargaHeaderSize);
    WriteTargaHeader(header,
                     std::span<std::uint8_t, kTargaHeaderSize>(bytes.data(), kTargaHeaderSize));
    bytes.insert(bytes.end(), body.begin(), body.end());
    return bytes;
}

TargaHeader TrueColorHeader(int width, int height, int depth, std::uint8_t type) {
    TargaHeader header;
    header.imageType = type;
    header.width = static_cast<std::uint16_t>(width);
    header.height = static_cast<std::uint16_t>(height);
    header.pixelDepth = static_cast<std::uint8_t>(depth);
    return header;
}

void WriteFile(const std::string& path, const std::vector<std::uint8_t>& bytes) {
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
}

std::vector<std::uint8_t> ReadFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace wib::testing
