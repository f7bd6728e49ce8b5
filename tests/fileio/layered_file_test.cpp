// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <random>
#include <stdexcept>

#include "core/document_limits.h"
#include "fileio/file_messages.h"
#include "fileio/layered_file.h"
#include "fileio/layered_messages.h"
#include "tests/fileio/image_fixtures.h"
#include "tests/fileio/layered_fixtures.h"

namespace wib {
namespace {

using testing::MakeLayeredPicture;
using testing::PutU32At;
using testing::Reseal;
using testing::SectionAt;

// Three layers with every property set apart from its default, two frames,
// odd sizes, the second layer and frame current.
LayeredPicture EveryProperty() {
    LayeredPicture picture = MakeLayeredPicture(7, 5, 3, 2);
    picture.layers[0] = {"Background", 255, BlendMode::Normal, true, false, false};
    picture.layers[1] = {"Ink \xc3\xa9t\xc3\xa9", 128, BlendMode::SoftLight, false, true, false};
    picture.layers[2] = {"", 0, BlendMode::Subtract, true, false, true};
    picture.currentLayer = 1;
    picture.currentFrame = 1;
    return picture;
}

std::vector<std::uint8_t> Encoded(const LayeredPicture& picture) {
    MemorySink sink;
    EXPECT_TRUE(EncodeLayered(picture, sink));
    return sink.bytes;
}

std::uint32_t U32At(const std::vector<std::uint8_t>& bytes, std::size_t at) {
    return bytes[at] | bytes[at + 1] << 8 | bytes[at + 2] << 16 |
           static_cast<std::uint32_t>(bytes[at + 3]) << 24;
}

void ExpectRefused(const std::vector<std::uint8_t>& bytes, const std::string& message) {
    const auto read = DecodeLayered(bytes);
    EXPECT_FALSE(read.value.has_value());
    EXPECT_EQ(read.message, message);
}

TEST(LayeredFile, RoundTripsEveryPropertyAndFrameThroughAFile) {
    const LayeredPicture picture = EveryProperty();
    testing::TempFolder folder;
    const std::string path = folder.file("picture.lyr");
    ASSERT_EQ(WriteLayeredFile(path, picture), std::nullopt);
    const auto read = ReadLayeredFile(path);
    ASSERT_TRUE(read) << read.message;
    testing::ExpectSamePicture(*read.value, picture);
}

TEST(LayeredFile, HeaderIsLittleEndianAndTheLastFourBytesAreTheCrcOfTheRest) {
    const auto bytes = Encoded(EveryProperty());
    ASSERT_GT(bytes.size(), 40u);
    EXPECT_EQ(std::string(bytes.begin(), bytes.begin() + 4), "WLYR");
    EXPECT_EQ(U32At(bytes, 4), 1u);
    EXPECT_EQ(U32At(bytes, 8), 7u);
    EXPECT_EQ(U32At(bytes, 12), 5u);
    EXPECT_EQ(std::string(bytes.begin() + 16, bytes.begin() + 20), "LAYR");
    EXPECT_EQ(U32At(bytes, bytes.size() - 4), testing::Crc32(bytes.data(), bytes.size() - 4));
    const std::size_t layers = SectionAt(bytes, "LAYR");
    EXPECT_EQ(U32At(bytes, layers), 3u);
    EXPECT_EQ(U32At(bytes, layers + 4), 1u);
    const std::size_t frames = SectionAt(bytes, "FRMS");
    EXPECT_EQ(U32At(bytes, frames), 2u);
    EXPECT_EQ(U32At(bytes, frames + 4), 1u);
    EXPECT_EQ(std::string(bytes.begin() + static_cast<std::ptrdiff_t>(frames) + 8,
                          bytes.begin() + static_cast<std::ptrdiff_t>(frames) + 12),
              "FRAM");
}

// Large enough for several compression threads and for the checksum to be
// computed in parts and combined; noise keeps the file near its raw size.
TEST(LayeredFile, LargeNoisyPictureRoundTripsAndItsChecksumIsTheWholeFiles) {
    LayeredPicture picture = MakeLayeredPicture(2049, 1031, 2, 3);
    std::mt19937 random(3);
    for (auto& frame : picture.frames) {
        for (LayerPixels& layer : frame) {
            for (int y = 0; y < picture.height; ++y) {
                for (int x = 0; x < picture.width; ++x) {
                    layer.g.at(x, y) = static_cast<std::uint8_t>(random());
                    layer.b.at(x, y) = static_cast<std::uint8_t>(random());
                }
            }
        }
    }
    const auto bytes = Encoded(picture);
    ASSERT_GT(bytes.size(), std::size_t{1} << 24);
    EXPECT_EQ(U32At(bytes, bytes.size() - 4), testing::Crc32(bytes.data(), bytes.size() - 4));
    const auto read = DecodeLayered(bytes);
    ASSERT_TRUE(read) << read.message;
    testing::ExpectSamePicture(*read.value, picture);
}

TEST(LayeredFile, EveryShortenedFileIsRefusedAsEndingEarlyOrDamaged) {
    const auto bytes = Encoded(MakeLayeredPicture(3, 2, 2, 2));
    for (std::size_t size = 4; size < bytes.size(); ++size) {
        SCOPED_TRACE(size);
        const auto read = DecodeLayered(std::span(bytes).first(size));
        EXPECT_FALSE(read.value.has_value());
        EXPECT_TRUE(read.message == kContainerTruncated || read.message == kContainerChecksum)
            << read.message;
    }
    ExpectRefused({bytes.begin(), bytes.begin() + 24}, kContainerTruncated);
    ExpectRefused({}, kLayeredWrongType);
}

TEST(LayeredFile, AFlippedByteAnywhereAfterTheHeaderIsRefused) {
    const auto bytes = Encoded(MakeLayeredPicture(3, 2, 2, 2));
    for (std::size_t at = 16; at < bytes.size(); ++at) {
        SCOPED_TRACE(at);
        auto flipped = bytes;
        flipped[at] ^= 0x10;
        EXPECT_FALSE(DecodeLayered(flipped).value.has_value());
    }
    auto pixel = bytes;
    pixel[SectionAt(bytes, "FRAM") + 6] ^= 1;
    ExpectRefused(pixel, kContainerChecksum);
}

TEST(LayeredFile, WrongMagicAndWrongVersionAreNamed) {
    const auto bytes = Encoded(MakeLayeredPicture(3, 2, 1, 1));
    auto magic = bytes;
    magic[1] = 'X';
    ExpectRefused(magic, kLayeredWrongType);
    for (const std::uint32_t version : {0u, 2u, 0xFFFFFFFFu}) {
        auto other = bytes;
        PutU32At(other, 4, version);
        Reseal(other);
        ExpectRefused(other, kContainerNewerVersion);
    }
}

TEST(LayeredFile, SizesOutsideTheDocumentLimitsAreRefused) {
    const auto bytes = Encoded(MakeLayeredPicture(3, 2, 1, 1));
    for (const std::uint32_t width : {0u, 16385u, 0x80000000u, 0xFFFFFFFFu}) {
        auto wide = bytes;
        PutU32At(wide, 8, width);
        Reseal(wide);
        ExpectRefused(wide, DocumentSizeLimitMessage());
        auto tall = bytes;
        PutU32At(tall, 12, width);
        Reseal(tall);
        ExpectRefused(tall, DocumentSizeLimitMessage());
    }
}

// Counts and sizes that the file's length cannot hold, with a checksum that
// matches, so that only the reader's own checks stand in the way.
TEST(LayeredFile, CountsTheFileCannotHoldAreRefusedAsInconsistent) {
    const auto bytes = Encoded(MakeLayeredPicture(3, 2, 2, 2));
    const std::size_t layers = SectionAt(bytes, "LAYR");
    const std::size_t frames = SectionAt(bytes, "FRMS");
    const std::size_t block = SectionAt(bytes, "FRAM");
    struct Patch {
        std::size_t at;
        std::uint32_t value;
    };
    for (const Patch patch :
         {Patch{layers, 0xFFFFFFFFu}, Patch{layers, 0}, Patch{layers + 4, 2},
          Patch{frames, 0xFFFFFFFFu}, Patch{frames, 3}, Patch{frames, 1}, Patch{frames, 0},
          Patch{frames + 4, 2}, Patch{block, 0xFFFFFFF0u}, Patch{block, 0}}) {
        SCOPED_TRACE(patch.at);
        auto patched = bytes;
        PutU32At(patched, patch.at, patch.value);
        Reseal(patched);
        ExpectRefused(patched, kContainerInconsistent);
    }
    // A picture as wide and tall as allowed, whose one block is far too
    // short to hold it.
    auto huge = bytes;
    PutU32At(huge, 8, 16384);
    PutU32At(huge, 12, 16384);
    Reseal(huge);
    ExpectRefused(huge, kContainerInconsistent);
}

TEST(LayeredFile, UnknownModesAndFlagsAreRefused) {
    LayeredPicture picture = MakeLayeredPicture(3, 2, 1, 1);
    picture.layers[0].name = "";
    const auto bytes = Encoded(picture);
    const std::size_t entry = SectionAt(bytes, "LAYR") + 8 + 4;
    auto mode = bytes;
    mode[entry + 1] = kBlendModeCount;
    Reseal(mode);
    ExpectRefused(mode, kContainerInconsistent);
    auto flags = bytes;
    flags[entry + 2] = 8;
    Reseal(flags);
    ExpectRefused(flags, kContainerInconsistent);
}

TEST(LayeredFile, MissingAndUnwritableFilesGiveTheirMessages) {
    testing::TempFolder folder;
    const std::string missing = folder.file("none.lyr");
    EXPECT_EQ(ReadLayeredFile(missing).message, CannotOpenMessage(missing));
    const std::string unwritable = folder.file("no/such/folder/picture.lyr");
    const auto written = WriteLayeredFile(unwritable, MakeLayeredPicture(3, 2, 1, 1));
    ASSERT_TRUE(written.has_value());
    EXPECT_EQ(written->rfind(CannotWriteMessage(unwritable), 0), 0u);
}

TEST(LayeredFile, AnIncompletePictureIsACallersFault) {
    LayeredPicture noFrames = MakeLayeredPicture(3, 2, 1, 1);
    noFrames.frames.clear();
    LayeredPicture missingLayer = MakeLayeredPicture(3, 2, 2, 2);
    missingLayer.frames[1].pop_back();
    LayeredPicture wrongPlane = MakeLayeredPicture(3, 2, 1, 1);
    wrongPlane.frames[0][0].b = Plane(2, 2);
    LayeredPicture badCurrent = MakeLayeredPicture(3, 2, 2, 1);
    badCurrent.currentLayer = 2;
    for (const LayeredPicture* picture : {&noFrames, &missingLayer, &wrongPlane, &badCurrent}) {
        MemorySink sink;
        EXPECT_THROW(EncodeLayered(*picture, sink), std::invalid_argument);
    }
}

}  // namespace
}  // namespace wib
