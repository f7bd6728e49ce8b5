// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "core/undo.h"
#include "fileio/file_messages.h"
#include "fileio/targa_reader.h"
#include "fileio/targa_writer.h"
#include "tests/fileio/image_fixtures.h"
#include "tests/support/pixels.h"
#include "tests/support/test_host.h"

namespace wib {
namespace {

using testing::PatternAt;
using testing::Rgba;
using testing::RgbaAt;
using testing::TargaFile;
using testing::TrueColorHeader;

class Targa : public ::testing::Test {
  protected:
    void SetUp() override { host.newDocument(3, 2); }

    // Writes `bytes` to a file and opens it as the File menu does.
    std::optional<TargaHeader> load(const std::vector<std::uint8_t>& bytes, int keepSize = 0) {
        const std::string path = folder.file("image.tga");
        testing::WriteFile(path, bytes);
        return LoadTarga(host.workspace, path, keepSize);
    }

    // The document is still the white 3 x 2 image it started as.
    void expectUntouched() {
        EXPECT_EQ(doc.width, 3);
        EXPECT_EQ(doc.height, 2);
        EXPECT_EQ(RgbaAt(doc, 0, 0), (Rgba{255, 255, 255, 255}));
        EXPECT_TRUE(doc.FileName.empty());
    }

    testing::TestHost host;
    testing::TempFolder folder;
    Document& doc = host.workspace.document;
};

TEST_F(Targa, EveryPixelFormatRoundTripsAnOddSizedImage) {
    struct Case {
        int choice;
        bool colour;
        bool alpha;
    };
    for (const Case c :
         {Case{1, true, false}, Case{2, true, true}, Case{3, false, false}, Case{4, true, false}}) {
        SCOPED_TRACE(c.choice);
        host.newDocument(7, 5);
        testing::PaintPattern(doc);
        const std::string path = folder.file("round.tga");
        ASSERT_TRUE(SaveTarga(host.workspace, path, *TargaFormatCode(c.choice)));
        host.newDocument(2, 2);
        ASSERT_TRUE(LoadTarga(host.workspace, path, 0));
        ASSERT_EQ(doc.width, 7);
        ASSERT_EQ(doc.height, 5);
        EXPECT_EQ(doc.FileName, path);
        for (int y = 0; y < 5; ++y) {
            for (int x = 0; x < 7; ++x) {
                Rgba expected = PatternAt(x, y);
                if (!c.colour) {
                    const auto grey = static_cast<std::uint8_t>(
                        (299 * expected.r + 587 * expected.g + 114 * expected.b + 500) / 1000);
                    expected.r = expected.g = expected.b = grey;
                }
                if (!c.alpha) {
                    expected.a = 255;
                }
                ASSERT_EQ(RgbaAt(doc, x, y), expected) << x << "," << y;
            }
        }
    }
}

TEST_F(Targa, WrittenFilesAreUncompressedBottomLeftOfTheDocumentedTypes) {
    host.newDocument(7, 5);
    testing::PaintPattern(doc);
    struct Case {
        int code;
        std::uint8_t type, depth, descriptor;
        std::size_t size;
    };
    for (const Case c : {Case{0, 2, 24, 0, 18 + 105}, Case{1, 2, 32, 8, 18 + 140},
                         Case{2, 3, 8, 0, 18 + 35}, Case{6, 1, 8, 0, 18 + 768 + 35}}) {
        const std::string path = folder.file("layout.tga");
        ASSERT_TRUE(SaveTarga(host.workspace, path, c.code));
        const auto bytes = testing::ReadFile(path);
        ASSERT_EQ(bytes.size(), c.size);
        const TargaHeader header =
            ParseTargaHeader(std::span<const std::uint8_t>(bytes).first<kTargaHeaderSize>());
        EXPECT_EQ(header.imageType, c.type);
        EXPECT_EQ(header.pixelDepth, c.depth);
        EXPECT_EQ(header.descriptor, c.descriptor);
        EXPECT_EQ(header.width, 7);
        EXPECT_EQ(header.height, 5);
        if (c.code == 0) {
            // The first pixel stored is the bottom-left one, blue first.
            const Rgba bottomLeft = PatternAt(0, 4);
            EXPECT_EQ(bytes[18], bottomLeft.b);
            EXPECT_EQ(bytes[20], bottomLeft.r);
        }
    }
    EXPECT_FALSE(SaveTarga(host.workspace, folder.file("bad.tga"), 5));
}

TEST_F(Targa, TrueColourRowsComeBottomFirstWithBlueFirstAndAlphaOnlyAtThirtyTwoBits) {
    // 2 x 2, bottom row first: blue, green, red, alpha.
    const std::vector<std::uint8_t> body{1, 2, 3, 40, 4, 5, 6, 0, 7, 8, 9, 0, 10, 11, 12, 0};
    ASSERT_TRUE(load(TargaFile(TrueColorHeader(2, 2, 32), body)));
    EXPECT_EQ(RgbaAt(doc, 0, 1), (Rgba{3, 2, 1, 40}));
    EXPECT_EQ(RgbaAt(doc, 1, 1), (Rgba{6, 5, 4, 0}));
    EXPECT_EQ(RgbaAt(doc, 0, 0), (Rgba{9, 8, 7, 0}));
    EXPECT_EQ(host.prompter.statusLog[1], std::string("text:") + kTargaLoadingUncompressed);
    EXPECT_EQ(host.prompter.progressLog, (std::vector<int>{0, 100}));

    // The same bytes as 24 bits: alpha 255 everywhere, spare column included.
    const std::vector<std::uint8_t> rgb{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
    ASSERT_TRUE(load(TargaFile(TrueColorHeader(2, 2, 24), rgb)));
    EXPECT_EQ(RgbaAt(doc, 0, 1), (Rgba{3, 2, 1, 255}));
    EXPECT_EQ(doc.ABuffer.at(2, 2), 255);
}

TEST_F(Targa, AThirtyTwoBitFileWithNoAlphaAtAllComesInUnmasked) {
    const std::vector<std::uint8_t> body(2 * 2 * 4, 0);
    ASSERT_TRUE(load(TargaFile(TrueColorHeader(2, 2, 32), body)));
    for (int y = 0; y < 2; ++y) {
        for (int x = 0; x < 2; ++x) {
            EXPECT_EQ(RgbaAt(doc, x, y), (Rgba{0, 0, 0, 255}));
        }
    }
    EXPECT_FALSE(SelectionBounds(doc).empty());
}

TEST_F(Targa, TheDescriptorIsNotReadSoATopLeftFileComesInUpsideDown) {
    TargaHeader header = TrueColorHeader(1, 2, 24);
    header.descriptor = kTargaTopOrigin;
    ASSERT_TRUE(load(TargaFile(header, {0, 0, 255, 255, 0, 0})));
    EXPECT_EQ(RgbaAt(doc, 0, 0).b, 255);  // the second row stored is on top
    EXPECT_EQ(RgbaAt(doc, 0, 1).r, 255);
}

TEST_F(Targa, RlePacketsRepeatOrCarryPixelsAndNeverCrossARowEnd) {
    // 130 x 2: row 1 (bottom) is a run of 128 (header 255) then two literal
    // packets of one pixel (header 0); row 0 is a run of 3 that ends past
    // the row (the rest of it is dropped) and a literal pair.
    std::vector<std::uint8_t> body{255, 10, 20, 30, 0, 1, 2, 3, 0, 4, 5, 6};
    body.insert(body.end(), {254, 7, 8, 9});     // run of 127
    body.insert(body.end(), {130, 40, 41, 42});  // run of 3 from x = 127: x 130 is dropped
    body.insert(body.end(), {1, 50, 51, 52, 53, 54, 55});  // not reached: the row is full
    ASSERT_TRUE(load(TargaFile(TrueColorHeader(130, 2, 24, kTargaTrueColorRle), body)));
    EXPECT_EQ(RgbaAt(doc, 0, 1), (Rgba{30, 20, 10, 255}));
    EXPECT_EQ(RgbaAt(doc, 127, 1), (Rgba{30, 20, 10, 255}));
    EXPECT_EQ(RgbaAt(doc, 128, 1), (Rgba{3, 2, 1, 255}));
    EXPECT_EQ(RgbaAt(doc, 129, 1), (Rgba{6, 5, 4, 255}));
    EXPECT_EQ(RgbaAt(doc, 126, 0), (Rgba{9, 8, 7, 255}));
    EXPECT_EQ(RgbaAt(doc, 129, 0), (Rgba{42, 41, 40, 255}));
    EXPECT_EQ(doc.RBuffer.at(130, 0), 255);  // the spare column is untouched
    EXPECT_EQ(host.prompter.statusLog[1], std::string("text:") + kTargaLoadingCompressed);
}

TEST_F(Targa, LiteralPacketsEndRowsAndDropOnlyWhatLiesPastTheEdge) {
    // 3 x 3, rows decoded from the bottom. Row 2: a literal packet of 4 whose
    // last pixel lies past the edge: read, then dropped. Row 1: a literal
    // pair, then a literal single that ends the row exactly. Row 0: a run.
    std::vector<std::uint8_t> body{3, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21};
    body.insert(body.end(), {1, 1, 2, 3, 4, 5, 6, 0, 7, 8, 9});
    body.insert(body.end(), {130, 30, 31, 32});
    ASSERT_TRUE(load(TargaFile(TrueColorHeader(3, 3, 24, kTargaTrueColorRle), body)));
    EXPECT_EQ(RgbaAt(doc, 0, 2), (Rgba{12, 11, 10, 255}));
    EXPECT_EQ(RgbaAt(doc, 2, 2), (Rgba{18, 17, 16, 255}));
    EXPECT_EQ(doc.RBuffer.at(3, 2), 255) << "the dropped pixel lands nowhere";
    EXPECT_EQ(RgbaAt(doc, 0, 1), (Rgba{3, 2, 1, 255}));
    EXPECT_EQ(RgbaAt(doc, 1, 1), (Rgba{6, 5, 4, 255}));
    EXPECT_EQ(RgbaAt(doc, 2, 1), (Rgba{9, 8, 7, 255}));
    EXPECT_EQ(RgbaAt(doc, 2, 0), (Rgba{32, 31, 30, 255}));
}

TEST_F(Targa, ThirtyTwoBitRleCarriesAlpha) {
    const std::vector<std::uint8_t> body{129, 1, 2, 3, 77, 1, 4, 5, 6, 0, 7, 8, 9, 0};
    ASSERT_TRUE(load(TargaFile(TrueColorHeader(2, 2, 32, kTargaTrueColorRle), body)));
    EXPECT_EQ(RgbaAt(doc, 1, 1), (Rgba{3, 2, 1, 77}));
    EXPECT_EQ(RgbaAt(doc, 1, 0), (Rgba{9, 8, 7, 0}));
}

TEST_F(Targa, GreyscaleGoesThroughTheRampAndColourMapsKeepTheFirstEntryOffset) {
    TargaHeader grey = TrueColorHeader(2, 1, 8, kTargaGreyscale);
    ASSERT_TRUE(load(TargaFile(grey, {0, 200})));
    EXPECT_EQ(RgbaAt(doc, 1, 0), (Rgba{200, 200, 200, 255}));

    TargaHeader mapped = TrueColorHeader(2, 1, 8, kTargaColorMapped);
    mapped.colorMapType = 1;
    mapped.colorMapLength = 2;
    mapped.colorMapEntrySize = 24;
    const std::vector<std::uint8_t> body{10, 20, 30, 40, 50, 60, 1, 0};
    ASSERT_TRUE(load(TargaFile(mapped, body)));
    EXPECT_EQ(RgbaAt(doc, 0, 0), (Rgba{60, 50, 40, 255}));
    EXPECT_EQ(RgbaAt(doc, 1, 0), (Rgba{30, 20, 10, 255}));
    EXPECT_EQ(host.prompter.statusLog.back(), "close");

    // A first entry of 1 shifts the palette by one byte, not one entry.
    mapped.colorMapFirstEntry = 1;
    ASSERT_TRUE(load(TargaFile(mapped, body)));
    EXPECT_EQ(RgbaAt(doc, 1, 0), (Rgba{20, 10, 0, 255}));
    // A first entry past the palette leaves it black; an index past the
    // entries reads the unused (black) rest of the palette.
    mapped.colorMapFirstEntry = 60000;
    ASSERT_TRUE(load(TargaFile(mapped, {10, 20, 30, 40, 50, 60, 255, 0})));
    EXPECT_EQ(RgbaAt(doc, 0, 0), (Rgba{0, 0, 0, 255}));
}

TEST_F(Targa, EveryRefusalIsItsMessageAndLeavesTheDocumentAlone) {
    SaveUndo(host.workspace);
    const int undoSteps = host.workspace.undo.UndoSteps;
    struct Case {
        TargaHeader header;
        std::string message;
    };
    TargaHeader huge = TrueColorHeader(20000, 2, 24);
    TargaHeader empty = TrueColorHeader(0, 2, 24);
    const Case cases[] = {
        {TrueColorHeader(2, 2, 24, kTargaNone), kTargaNoImageMessage},
        {TrueColorHeader(2, 2, 8, kTargaColorMappedRle), kTargaColorMappedRleMessage},
        {TrueColorHeader(2, 2, 8, kTargaGreyscaleRle), kTargaGreyscaleRleMessage},
        {TrueColorHeader(2, 2, 16), "16 bit Targas not currently supported"},
        {TrueColorHeader(2, 2, 15, kTargaTrueColorRle), "15 bit Targas not currently supported"},
        {TrueColorHeader(2, 2, 16, kTargaColorMapped), "16 bit Targas not currently supported"},
        {TrueColorHeader(2, 2, 24, 32), kCorruptFileMessage},
        {huge, kCorruptFileMessage},
        {empty, kCorruptFileMessage},
    };
    for (const Case& c : cases) {
        host.prompter.messages.clear();
        EXPECT_FALSE(load(TargaFile(c.header, std::vector<std::uint8_t>(64, 9))));
        EXPECT_EQ(host.prompter.messages, std::vector<std::string>{c.message});
        expectUntouched();
    }
    host.prompter.messages.clear();
    EXPECT_FALSE(load({0, 0, 2, 0}));  // shorter than a header
    EXPECT_EQ(host.prompter.messages, std::vector<std::string>{kCorruptFileMessage});
    // Keeping the size: a file of another size is refused.
    EXPECT_FALSE(load(TargaFile(TrueColorHeader(2, 2, 24), std::vector<std::uint8_t>(12, 0)), 1));
    expectUntouched();
    EXPECT_EQ(host.workspace.undo.UndoSteps, undoSteps);
    EXPECT_FALSE(LoadTarga(host.workspace, folder.file("missing.tga"), 0));
    expectUntouched();
}

TEST_F(Targa, ATruncatedFileKeepsTheRowsReadAndSaysItIsDamaged) {
    // 2 x 3 at 24 bits needs 18 bytes; 13 give two whole rows (the bottom two).
    std::vector<std::uint8_t> body(13, 0);
    ASSERT_FALSE(load(TargaFile(TrueColorHeader(2, 3, 24), body)));
    EXPECT_EQ(host.prompter.messages, std::vector<std::string>{kCorruptFileMessage});
    EXPECT_EQ(doc.height, 3);
    EXPECT_EQ(RgbaAt(doc, 0, 2), (Rgba{0, 0, 0, 255}));
    EXPECT_EQ(RgbaAt(doc, 0, 0), (Rgba{255, 255, 255, 255}));
    EXPECT_TRUE(doc.FileName.empty());

    host.prompter.messages.clear();
    // An RLE run whose pixel is cut short, and a literal packet cut short.
    EXPECT_FALSE(load(TargaFile(TrueColorHeader(2, 1, 24, kTargaTrueColorRle), {129, 1, 2})));
    EXPECT_FALSE(load(TargaFile(TrueColorHeader(2, 1, 24, kTargaTrueColorRle), {1, 1, 2, 3, 4})));
    EXPECT_EQ(RgbaAt(doc, 0, 0), (Rgba{3, 2, 1, 255}));
    EXPECT_EQ(host.prompter.messages.size(), 2u);
}

TEST_F(Targa, KeepSizeReadsIntoTheDocumentAsItIsAndOpeningCanBeUndone) {
    const std::vector<std::uint8_t> body(3 * 2 * 3, 0);
    ASSERT_TRUE(load(TargaFile(TrueColorHeader(3, 2, 24), body), 1));
    EXPECT_EQ(RgbaAt(doc, 2, 1), (Rgba{0, 0, 0, 255}));
    ASSERT_TRUE(EditUndo(host.workspace));
    EXPECT_EQ(RgbaAt(doc, 2, 1), (Rgba{255, 255, 255, 255}));
}

TEST_F(Targa, ABrushTakesTheFilesOwnSizeAndBecomesTheCustomBrush) {
    const std::string path = folder.file("brush.tga");
    testing::WriteFile(path, TargaFile(TrueColorHeader(2, 1, 32), {1, 2, 3, 0, 4, 5, 6, 255}));
    ASSERT_TRUE(LoadTargaToBrush(host.workspace, path));
    const BrushImage& brush = host.workspace.brush;
    EXPECT_EQ(brush.R.ubX(), 1);
    EXPECT_EQ(brush.R.ubY(), 0);
    EXPECT_EQ(brush.R.at(1, 0), 6);
    EXPECT_EQ(brush.mask().at(0, 0), 255);
    EXPECT_EQ(brush.mask().at(1, 0), 0);
    EXPECT_TRUE(brush.active());
    expectUntouched();
}

TEST_F(Targa, EightBitColourOfARichImageStaysCloseThroughTheMedianCut) {
    host.newDocument(64, 64);
    for (int y = 0; y < 64; ++y) {
        for (int x = 0; x < 64; ++x) {
            SetPixel(doc, x, y,
                     {static_cast<std::uint8_t>(4 * x), static_cast<std::uint8_t>(4 * y),
                      static_cast<std::uint8_t>(2 * (x + y))});
        }
    }
    const Document before = doc;
    const std::string path = folder.file("rich.tga");
    ASSERT_TRUE(SaveTarga(host.workspace, path, kTargaFormatIndexed));
    ASSERT_TRUE(LoadTarga(host.workspace, path, 0));
    int worst = 0;
    for (int y = 0; y < 64; ++y) {
        for (int x = 0; x < 64; ++x) {
            worst = std::max({worst, std::abs(doc.RBuffer.at(x, y) - before.RBuffer.at(x, y)),
                              std::abs(doc.GBuffer.at(x, y) - before.GBuffer.at(x, y)),
                              std::abs(doc.BBuffer.at(x, y) - before.BBuffer.at(x, y))});
        }
    }
    // 4096 colours in 256 entries: each entry stands for a box of about 16.
    EXPECT_LE(worst, 24);
}

}  // namespace
}  // namespace wib
