// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/fileio/layered_fixtures.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <cstring>

namespace wib::testing {

namespace {

constexpr std::uint8_t kSpare = 0xEE;
constexpr std::size_t kHeaderSize = 16;

Plane MakePlane(int width, int height, int frame, int layer, int plane) {
    Plane made(width, height, kSpare);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            made.at(x, y) = LayeredValue(frame, layer, plane, x, y);
        }
    }
    return made;
}

std::uint64_t U64At(const std::vector<std::uint8_t>& file, std::size_t offset) {
    std::uint64_t value = 0;
    for (int i = 7; i >= 0; --i) {
        value = (value << 8) | file.at(offset + static_cast<std::size_t>(i));
    }
    return value;
}

}  // namespace

std::uint8_t LayeredValue(int frame, int layer, int plane, int x, int y) {
    return static_cast<std::uint8_t>(frame * 71 + layer * 37 + plane * 53 + x * 11 + y * 29 +
                                     x * y);
}

LayeredPicture MakeLayeredPicture(int width, int height, int layers, int frames) {
    LayeredPicture picture;
    picture.width = width;
    picture.height = height;
    for (int l = 0; l < layers; ++l) {
        picture.layers.push_back({"layer " + std::to_string(l)});
    }
    for (int f = 0; f < frames; ++f) {
        auto& frame = picture.frames.emplace_back();
        for (int l = 0; l < layers; ++l) {
            frame.push_back({MakePlane(width, height, f, l, 0), MakePlane(width, height, f, l, 1),
                             MakePlane(width, height, f, l, 2), MakePlane(width, height, f, l, 3)});
        }
    }
    return picture;
}

void ExpectSamePicture(const LayeredPicture& read, const LayeredPicture& written) {
    ASSERT_EQ(read.width, written.width);
    ASSERT_EQ(read.height, written.height);
    EXPECT_EQ(read.layers, written.layers);
    EXPECT_EQ(read.currentLayer, written.currentLayer);
    EXPECT_EQ(read.currentFrame, written.currentFrame);
    ASSERT_EQ(read.frames.size(), written.frames.size());
    for (std::size_t f = 0; f < read.frames.size(); ++f) {
        ASSERT_EQ(read.frames[f].size(), written.frames[f].size());
        for (std::size_t l = 0; l < read.frames[f].size(); ++l) {
            const LayerPixels& in = read.frames[f][l];
            const LayerPixels& out = written.frames[f][l];
            const Plane* inPlanes[] = {&in.r, &in.g, &in.b, &in.a};
            const Plane* outPlanes[] = {&out.r, &out.g, &out.b, &out.a};
            for (int p = 0; p < 4; ++p) {
                SCOPED_TRACE("frame " + std::to_string(f) + " layer " + std::to_string(l) +
                             " plane " + std::to_string(p));
                ASSERT_EQ(inPlanes[p]->ubX(), read.width);
                ASSERT_EQ(inPlanes[p]->ubY(), read.height);
                int wrong = 0, spare = 0;
                for (int y = 0; y <= read.height; ++y) {
                    for (int x = 0; x <= read.width; ++x) {
                        const std::uint8_t value = inPlanes[p]->at(x, y);
                        if (x == read.width || y == read.height) {
                            spare += value != 0;
                        } else {
                            wrong += value != outPlanes[p]->at(x, y);
                        }
                    }
                }
                EXPECT_EQ(wrong, 0);
                EXPECT_EQ(spare, 0);
            }
        }
    }
}

std::size_t SectionAt(const std::vector<std::uint8_t>& file, const std::string& tag) {
    std::size_t at = kHeaderSize;
    while (at + 12 <= file.size() - 4) {
        const std::uint64_t length = U64At(file, at + 4);
        if (std::memcmp(file.data() + at, tag.data(), 4) == 0) {
            return at + 12;
        }
        at += 12 + length;
    }
    ADD_FAILURE() << "no section " << tag;
    return 0;
}

void PutU32At(std::vector<std::uint8_t>& file, std::size_t offset, std::uint32_t value) {
    for (std::size_t i = 0; i < 4; ++i) {
        file.at(offset + i) = static_cast<std::uint8_t>(value >> (8 * i));
    }
}

std::uint32_t Crc32(const std::uint8_t* bytes, std::size_t size) {
    return static_cast<std::uint32_t>(crc32(0L, bytes, static_cast<uInt>(size)));
}

void Reseal(std::vector<std::uint8_t>& file) {
    PutU32At(file, file.size() - 4, Crc32(file.data(), file.size() - 4));
}

}  // namespace wib::testing
