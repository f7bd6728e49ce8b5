// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "fileio/bitmap_format.h"
#include "fileio/bitmap_reader.h"
#include "fileio/cdib.h"
#include "fileio/file_messages.h"
#include "tests/fileio/image_fixtures.h"
#include "tests/support/test_host.h"

namespace wib {
namespace {

using testing::PatternAt;
using testing::Rgba;
using testing::RgbaAt;

// A bitmap file of the given depth, rows bottom first and padded to 4 bytes,
// with `palette` (blue, green, red, unused) before the bits.
std::vector<std::uint8_t> BitmapFile(int width, int height, int bitCount,
                                     const std::vector<std::uint8_t>& rows,
                                     const std::vector<std::uint8_t>& palette = {},
                                     std::uint32_t compression = 0) {
    std::vector<std::uint8_t> bytes;
    auto put = [&bytes](std::uint32_t value, int size) {
        for (int i = 0; i < size; ++i) {
            bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
        }
    };
    const auto offset = static_cast<std::uint32_t>(54 + palette.size());
    put(0x4D42, 2);
    put(offset + static_cast<std::uint32_t>(rows.size()), 4);
    put(0, 4);
    put(offset, 4);
    put(40, 4);
    put(static_cast<std::uint32_t>(width), 4);
    put(static_cast<std::uint32_t>(height), 4);
    put(1, 2);
    put(static_cast<std::uint32_t>(bitCount), 2);
    put(compression, 4);
    put(static_cast<std::uint32_t>(rows.size()), 4);
    put(2835, 4);
    put(2835, 4);
    put(static_cast<std::uint32_t>(palette.size() / 4), 4);
    put(0, 4);
    bytes.insert(bytes.end(), palette.begin(), palette.end());
    bytes.insert(bytes.end(), rows.begin(), rows.end());
    return bytes;
}

// A bitmap file with the older 12-byte header: 16-bit sizes, a palette of
// (blue, green, red) triples.
std::vector<std::uint8_t> CoreBitmapFile(int width, int height, int bitCount,
                                         const std::vector<std::uint8_t>& rows,
                                         const std::vector<std::uint8_t>& palette = {}) {
    std::vector<std::uint8_t> bytes;
    auto put = [&bytes](std::uint32_t value, int size) {
        for (int i = 0; i < size; ++i) {
            bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
        }
    };
    const auto offset = static_cast<std::uint32_t>(26 + palette.size());
    put(0x4D42, 2);
    put(offset + static_cast<std::uint32_t>(rows.size()), 4);
    put(0, 4);
    put(offset, 4);
    put(12, 4);
    put(static_cast<std::uint32_t>(width), 2);
    put(static_cast<std::uint32_t>(height), 2);
    put(1, 2);
    put(static_cast<std::uint32_t>(bitCount), 2);
    bytes.insert(bytes.end(), palette.begin(), palette.end());
    bytes.insert(bytes.end(), rows.begin(), rows.end());
    return bytes;
}

class Bitmap : public ::testing::Test {
  protected:
    void SetUp() override { host.newDocument(3, 2); }
    bool load(const std::vector<std::uint8_t>& bytes) {
        const std::string path = folder.file("image.bmp");
        testing::WriteFile(path, bytes);
        return LoadBMP(host.workspace, path);
    }

    testing::TestHost host;
    testing::TempFolder folder;
    Document& doc = host.workspace.document;
};

TEST_F(Bitmap, TwentyFourAndThirtyTwoBitsRoundTripAnOddSizedImage) {
    host.newDocument(7, 5);
    testing::PaintPattern(doc);
    const std::string path = folder.file("round.bmp");
    ASSERT_TRUE(SaveBMP(host.workspace, path));
    EXPECT_EQ(testing::ReadFile(path).size(), 54u + 5 * 24);  // rows of 21 padded to 24
    host.newDocument(2, 2);
    ASSERT_TRUE(LoadBMP(host.workspace, path));
    ASSERT_EQ(doc.width, 7);
    for (int y = 0; y < 5; ++y) {
        for (int x = 0; x < 7; ++x) {
            Rgba expected = PatternAt(x, y);
            expected.a = 255;
            ASSERT_EQ(RgbaAt(doc, x, y), expected);
        }
    }

    // The brush goes out at 32 bits and keeps its alpha.
    ASSERT_TRUE(LoadBMPToBrush(host.workspace, path));
    BrushImage& brush = host.workspace.brush;
    brush.setAlpha(6, 0, 9);
    ASSERT_TRUE(SaveBrushToBMP(host.workspace, folder.file("brush.bmp")));
    brush.setAlpha(6, 0, 255);
    ASSERT_TRUE(LoadBMPToBrush(host.workspace, folder.file("brush.bmp")));
    EXPECT_EQ(brush.A().at(6, 0), 9);
    EXPECT_EQ(brush.mask().at(6, 0), 246);
    EXPECT_EQ(brush.R.at(6, 4), PatternAt(6, 4).r);
}

TEST_F(Bitmap, EightBitPixelsAreLookedUpInTheFilesPalette) {
    // 3 x 1: indices 1, 0, 5 (past the two entries: black), padded to 4.
    const std::vector<std::uint8_t> palette{10, 20, 30, 0, 40, 50, 60, 0};
    ASSERT_TRUE(load(BitmapFile(3, 1, 8, {1, 0, 5, 0}, palette)));
    EXPECT_EQ(RgbaAt(doc, 0, 0), (Rgba{60, 50, 40, 255}));
    EXPECT_EQ(RgbaAt(doc, 1, 0), (Rgba{30, 20, 10, 255}));
    EXPECT_EQ(RgbaAt(doc, 2, 0), (Rgba{0, 0, 0, 255}));
}

TEST_F(Bitmap, TheOlderTwelveByteHeaderReadsAtEightAndTwentyFourBits) {
    // 2 x 2, bottom row first: bottom (1,2,3) (4,5,6), top (7,8,9) (10,11,12) as BGR.
    ASSERT_TRUE(
        load(CoreBitmapFile(2, 2, 24, {3, 2, 1, 6, 5, 4, 0, 0, 9, 8, 7, 12, 11, 10, 0, 0})));
    EXPECT_EQ(doc.width, 2);
    EXPECT_EQ(RgbaAt(doc, 0, 1), (Rgba{1, 2, 3, 255}));
    EXPECT_EQ(RgbaAt(doc, 1, 1), (Rgba{4, 5, 6, 255}));
    EXPECT_EQ(RgbaAt(doc, 1, 0), (Rgba{10, 11, 12, 255}));

    // Three palette entries of three bytes each; index 3 lies past them.
    const std::vector<std::uint8_t> palette{10, 20, 30, 40, 50, 60, 70, 80, 90};
    ASSERT_TRUE(load(CoreBitmapFile(4, 1, 8, {2, 0, 1, 3}, palette)));
    EXPECT_EQ(RgbaAt(doc, 0, 0), (Rgba{90, 80, 70, 255}));
    EXPECT_EQ(RgbaAt(doc, 1, 0), (Rgba{30, 20, 10, 255}));
    EXPECT_EQ(RgbaAt(doc, 2, 0), (Rgba{60, 50, 40, 255}));
    EXPECT_EQ(RgbaAt(doc, 3, 0), (Rgba{0, 0, 0, 255}));
}

TEST_F(Bitmap, EachRefusalHasItsMessageAndChangesNothing) {
    struct Case {
        std::vector<std::uint8_t> bytes;
        std::string message;
    };
    auto notBitmap = BitmapFile(1, 1, 24, {1, 2, 3, 0});
    notBitmap[0] = 'X';
    const Case cases[] = {
        {notBitmap, kBitmapNotBmp},
        {BitmapFile(1, 1, 4, {0, 0, 0, 0}), kBitmapDepthUnsupported},
        {BitmapFile(1, 1, 16, {0, 0, 0, 0}), kBitmapDepthUnsupported},
        {BitmapFile(1, 1, 24, {0, 0, 0, 0}, {}, 1), kBitmapCompressed},
        {BitmapFile(40000, 1, 24, {}),
         "The image size must be from 1 x 1 to 16384 x 16384 pixels."},
        {BitmapFile(1, 0, 24, {}), kBitmapNotBmp},
        {{'B', 'M', 0}, kBitmapNotBmp},
    };
    for (const Case& c : cases) {
        host.prompter.messages.clear();
        EXPECT_FALSE(load(c.bytes));
        EXPECT_EQ(host.prompter.messages, std::vector<std::string>{c.message});
        EXPECT_EQ(doc.width, 3);
        EXPECT_EQ(RgbaAt(doc, 0, 0), (Rgba{255, 255, 255, 255}));
    }
    // Bits cut short: the whole rows read stay, and the file is called damaged.
    host.prompter.messages.clear();
    EXPECT_FALSE(load(BitmapFile(1, 2, 24, {1, 2, 3, 0, 4})));
    EXPECT_EQ(RgbaAt(doc, 0, 1), (Rgba{3, 2, 1, 255}));
    EXPECT_EQ(host.prompter.messages, std::vector<std::string>{kCorruptFileMessage});
}

TEST_F(Bitmap, CDibRefusesWithTheNameAndExposesTheHeaders) {
    cDIB dib;
    const std::string missing = folder.file("missing.bmp");
    EXPECT_FALSE(dib.CreateFromFile(host.prompter, missing));
    const std::string junk = folder.file("junk.bmp");
    testing::WriteFile(junk, {1, 2, 3});
    EXPECT_FALSE(dib.CreateFromFile(host.prompter, junk));
    EXPECT_EQ(host.prompter.messages,
              (std::vector<std::string>{std::string(kDibMissing) + " " + missing,
                                        std::string(kDibNotBitmap) + " " + junk}));
    EXPECT_TRUE(dib.empty());

    const std::string path = folder.file("two.bmp");
    testing::WriteFile(path, BitmapFile(1, 2, 32, {1, 2, 3, 4, 5, 6, 7, 8}));
    ASSERT_TRUE(dib.CreateFromFile(host.prompter, path));
    EXPECT_EQ(dib.BitCount(), 32);
    EXPECT_EQ(dib.Width(), 1);
    EXPECT_EQ(dib.Height(), 2);
    EXPECT_EQ(dib.filetype(), 0x4D42);
    EXPECT_EQ(dib.SizeFileHeader(), 14);
    EXPECT_EQ(dib.SizeInfoHeader(), 40);
    EXPECT_EQ(dib.BitOffset(), 54);
    EXPECT_EQ(dib.PLANES(), 1);
    EXPECT_EQ(dib.XPPM(), 2835);
    EXPECT_EQ(dib.SizeImage(), 8);
    EXPECT_EQ(dib.PointerToBits()[0], 1);
    EXPECT_EQ(dib.PointerToBitmapInfo()[0], 40);
    EXPECT_EQ(dib.SizeBitmapInfo(), 40);

    ASSERT_TRUE(dib.WriteToBuffs(host.workspace));
    EXPECT_EQ(doc.width, 1);
    EXPECT_EQ(RgbaAt(doc, 0, 1), (Rgba{3, 2, 1, 4}));
    EXPECT_EQ(doc.modified, true);

    Plane r(0, 1), g(0, 1), b(0, 1);
    ASSERT_TRUE(dib.WriteToFrames(r, g, b));
    EXPECT_EQ(r.at(0, 0), 7);
    Plane small(0, 0);
    EXPECT_FALSE(dib.WriteToFrames(small, small, small));
}

TEST_F(Bitmap, APackedBitmapFromTheClipboardHasNoFileHeader) {
    const auto file = BitmapFile(2, 1, 24, {1, 2, 3, 4, 5, 6, 0, 0});
    const std::vector<std::uint8_t> packed(file.begin() + 14, file.end());
    cDIB dib;
    ASSERT_TRUE(dib.CreateFromPackedDIBPointer(packed.data(), packed.size()));
    EXPECT_EQ(dib.filetype(), 0);
    EXPECT_EQ(dib.SizeFileHeader(), 0);
    ASSERT_TRUE(dib.WriteToBuffs(host.workspace));
    EXPECT_EQ(RgbaAt(doc, 1, 0), (Rgba{6, 5, 4, 255}));

    cDIB refused;
    EXPECT_FALSE(refused.CreateFromPackedDIBPointer(packed.data(), 20));
    EXPECT_FALSE(refused.CreateFromPackedDIBPointer(nullptr, 0));
    EXPECT_FALSE(refused.WriteToBuffs(host.workspace));
}

}  // namespace
}  // namespace wib
