// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

// A reader of OpenRaster files written for the tests with the libraries
// themselves, sharing nothing with the program's own codec, so that the
// files are checked as another program would read them; and a maker of
// hand-built files for the reader's tests.
namespace wib::testing::ora {

struct ZipEntry {
    std::string name;
    bool stored = false;  // kept uncompressed
    std::vector<std::uint8_t> data;
};

// Every entry in the archive's own order; fails the test when it cannot.
std::vector<ZipEntry> Unzip(const std::string& path);

struct XmlElement {
    std::string name;
    std::map<std::string, std::string> attributes;
    std::vector<XmlElement> children;
};

// The document element; an element named "" when the text does not parse.
XmlElement ParseXml(const std::string& text);

struct Image {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> rgba;  // straight alpha, rows top first
};

Image DecodePng(const std::vector<std::uint8_t>& file);
std::vector<std::uint8_t> EncodePng(const Image& image);

// Writes a zip of the entries in order, each deflated; the first is stored
// when it is named "mimetype".
void WriteZip(const std::string& path,
              const std::vector<std::pair<std::string, std::vector<std::uint8_t>>>& entries);

std::vector<std::uint8_t> Bytes(const std::string& text);

// An OpenRaster file of a stack.xml text and named PNGs.
void WriteOra(const std::string& path, const std::string& stackXml,
              const std::vector<std::pair<std::string, Image>>& pngs);

}  // namespace wib::testing::ora
