// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/openraster.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>

#include "core/document_limits.h"
#include "fileio/file_messages.h"
#include "tests/fileio/image_fixtures.h"
#include "tests/fileio/ora_inspect.h"

namespace wib {
namespace {

namespace ora = testing::ora;

// Pixel (x, y) of layer l in frame f: every channel different, alpha 0 at
// some pixels, and different in every layer and frame.
std::uint8_t Channel(int c, int x, int y, int l, int f) {
    switch (c) {
        case 0:
            return static_cast<std::uint8_t>(x * 7 + l * 40 + f * 3);
        case 1:
            return static_cast<std::uint8_t>(y * 11 + l * 17 + f);
        case 2:
            return static_cast<std::uint8_t>(x * y + l + 5 * f);
        default:
            return static_cast<std::uint8_t>(x + y * 5 + l * 60 + f * 9);
    }
}

LayeredPicture MakePicture(int width, int height, std::vector<LayerProperties> layers,
                           int frameCount = 1) {
    LayeredPicture picture;
    picture.width = width;
    picture.height = height;
    picture.layers = std::move(layers);
    for (int f = 0; f < frameCount; ++f) {
        std::vector<LayerPixels> frame;
        for (std::size_t l = 0; l < picture.layers.size(); ++l) {
            LayerPixels pixels{Plane(width, height), Plane(width, height), Plane(width, height),
                               Plane(width, height)};
            Plane* planes[4] = {&pixels.r, &pixels.g, &pixels.b, &pixels.a};
            for (int c = 0; c < 4; ++c) {
                for (int y = 0; y < height; ++y) {
                    for (int x = 0; x < width; ++x) {
                        planes[c]->at(x, y) = Channel(c, x, y, static_cast<int>(l), f);
                    }
                }
            }
            frame.push_back(std::move(pixels));
        }
        picture.frames.push_back(std::move(frame));
    }
    return picture;
}

std::vector<LayerProperties> ThreeLayers() {
    return {{"Back & ground", 255, BlendMode::Normal, true, false, false},
            {"<ink> \"quoted\"", 128, BlendMode::Multiply, false, true, false},
            {"it's 'glaze' >", 7, BlendMode::Subtract, true, false, true}};
}

std::string Read(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void Save(const std::string& path, const LayeredPicture& picture) {
    std::string error;
    ASSERT_TRUE(WriteOpenRaster(path, picture, error)) << error;
    EXPECT_TRUE(error.empty());
}

// Compares a layer read back with layer l of frame f of the pattern.
void ExpectLayerPixels(const LayerPixels& pixels, int width, int height, int l, int f) {
    const Plane* planes[4] = {&pixels.r, &pixels.g, &pixels.b, &pixels.a};
    for (int c = 0; c < 4; ++c) {
        ASSERT_GE(planes[c]->ubX(), width - 1);
        ASSERT_GE(planes[c]->ubY(), height - 1);
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                // Colour under zero coverage is nothing a reader must keep.
                if (c < 3 && Channel(3, x, y, l, f) == 0) {
                    continue;
                }
                ASSERT_EQ(planes[c]->at(x, y), Channel(c, x, y, l, f))
                    << "channel " << c << " at " << x << "," << y << " layer " << l;
            }
        }
    }
}

TEST(OpenRaster, RoundTripKeepsPixelsNamesAndProperties) {
    testing::TempFolder folder;
    LayeredPicture picture = MakePicture(37, 23, ThreeLayers(), 2);
    picture.currentFrame = 1;
    picture.currentLayer = 1;
    Save(folder.file("three.ora"), picture);

    const OpenRasterRead read = ReadOpenRaster(folder.file("three.ora"));
    ASSERT_TRUE(read.picture) << read.message;
    EXPECT_TRUE(read.log.empty());
    const LayeredPicture& back = *read.picture;
    EXPECT_EQ(back.width, 37);
    EXPECT_EQ(back.height, 23);
    EXPECT_EQ(back.layers, ThreeLayers());
    EXPECT_EQ(back.currentLayer, 1);
    EXPECT_EQ(back.currentFrame, 0);
    ASSERT_EQ(back.frames.size(), 1u);
    ASSERT_EQ(back.frames[0].size(), 3u);
    for (int l = 0; l < 3; ++l) {
        // The file holds the current frame, frame 1.
        ExpectLayerPixels(back.frames[0][static_cast<std::size_t>(l)], 37, 23, l, 1);
    }
}

TEST(OpenRaster, WrittenFileMeetsTheFormatsRules) {
    testing::TempFolder folder;
    std::vector<LayerProperties> layers = ThreeLayers();
    for (int m = 0; m < kBlendModeCount; ++m) {
        layers.push_back({"mode " + std::to_string(m), static_cast<std::uint8_t>(m * 15),
                          *BlendModeFromNumber(m), m % 2 == 0, false, false});
    }
    const LayeredPicture picture = MakePicture(5, 3, layers);
    const std::string path = folder.file("rules.ora");
    Save(path, picture);

    // The mimetype is the first entry, stored, its text at the fixed offset
    // right after the 30-byte local header and the 8-byte name.
    const std::string raw = Read(path);
    ASSERT_GT(raw.size(), 54u);
    EXPECT_EQ(raw.substr(0, 4), std::string("PK\x03\x04", 4));
    EXPECT_EQ(raw.substr(30, 8), "mimetype");
    EXPECT_EQ(raw.substr(38, 16), "image/openraster");

    const auto entries = ora::Unzip(path);
    ASSERT_FALSE(entries.empty());
    EXPECT_EQ(entries[0].name, "mimetype");
    EXPECT_TRUE(entries[0].stored);
    std::map<std::string, std::vector<std::uint8_t>> byName;
    for (const auto& entry : entries) {
        byName[entry.name] = entry.data;
    }
    ASSERT_TRUE(byName.count("stack.xml"));
    ASSERT_TRUE(byName.count("mergedimage.png"));
    ASSERT_TRUE(byName.count("Thumbnails/thumbnail.png"));

    const auto& xml = byName["stack.xml"];
    const ora::XmlElement image = ora::ParseXml(std::string(xml.begin(), xml.end()));
    ASSERT_EQ(image.name, "image");
    EXPECT_TRUE(image.attributes.count("version"));
    EXPECT_EQ(image.attributes.at("w"), "5");
    EXPECT_EQ(image.attributes.at("h"), "3");
    ASSERT_EQ(image.children.size(), 1u);
    const ora::XmlElement& stack = image.children[0];
    ASSERT_EQ(stack.name, "stack");
    ASSERT_EQ(stack.children.size(), layers.size());

    const std::set<std::string> ops = {
        "svg:src-over",   "svg:multiply",    "svg:screen",     "svg:overlay",    "svg:darken",
        "svg:lighten",    "svg:color-dodge", "svg:color-burn", "svg:hard-light", "svg:soft-light",
        "svg:difference", "svg:exclusion",   "svg:hue",        "svg:saturation", "svg:color",
        "svg:luminosity", "svg:plus"};
    // Top first in the file; ours are bottom first.
    for (std::size_t i = 0; i < stack.children.size(); ++i) {
        const std::size_t l = layers.size() - 1 - i;
        const ora::XmlElement& layer = stack.children[i];
        ASSERT_EQ(layer.name, "layer");
        const auto& at = layer.attributes;
        for (const char* required : {"src", "name", "x", "y", "opacity", "visibility"}) {
            ASSERT_TRUE(at.count(required)) << required;
        }
        EXPECT_EQ(at.at("name"), layers[l].name);
        EXPECT_EQ(at.at("x"), "0");
        EXPECT_EQ(at.at("y"), "0");
        const double opacity = std::stod(at.at("opacity"));
        EXPECT_GE(opacity, 0.0);
        EXPECT_LE(opacity, 1.0);
        EXPECT_NEAR(opacity * 255, layers[l].opacity, 0.5);
        EXPECT_EQ(at.at("visibility"), layers[l].visible ? "visible" : "hidden");
        const std::string op = at.at("composite-op");
        if (layers[l].mode == BlendMode::Subtract) {
            EXPECT_EQ(op, "wibbleton:subtract");
        } else {
            EXPECT_TRUE(ops.count(op)) << op;
        }
        if (layers[l].mode == BlendMode::Add) {
            EXPECT_EQ(op, "svg:plus");
        }

        const std::string src = at.at("src");
        EXPECT_EQ(src.rfind("data/", 0), 0u) << src;
        ASSERT_TRUE(byName.count(src)) << src;
        const ora::Image png = ora::DecodePng(byName[src]);
        ASSERT_EQ(png.width, 5);
        ASSERT_EQ(png.height, 3);
        for (int y = 0; y < 3; ++y) {
            for (int x = 0; x < 5; ++x) {
                const std::uint8_t* p = &png.rgba[(std::size_t(y) * 5 + x) * 4];
                const int layer = static_cast<int>(l);
                EXPECT_EQ(p[3], Channel(3, x, y, layer, 0));
                if (p[3] != 0) {
                    EXPECT_EQ(p[0], Channel(0, x, y, layer, 0));
                    EXPECT_EQ(p[1], Channel(1, x, y, layer, 0));
                    EXPECT_EQ(p[2], Channel(2, x, y, layer, 0));
                }
            }
        }
    }
    const ora::Image merged = ora::DecodePng(byName["mergedimage.png"]);
    EXPECT_EQ(merged.width, 5);
    EXPECT_EQ(merged.height, 3);

    // Every mode, opacity and visibility comes back.
    const OpenRasterRead read = ReadOpenRaster(path);
    ASSERT_TRUE(read.picture) << read.message;
    EXPECT_EQ(read.picture->layers, layers);
}

TEST(OpenRaster, NamesOfAnyBytesMakeAFileThatReads) {
    testing::TempFolder folder;
    const std::string odd = "bad \xff byte \xed\xa0\x80 end \xc3\xa9\x01 two\nlines\ttab";
    Save(folder.file("names.ora"), MakePicture(2, 2, {{odd, 255, BlendMode::Normal, true}}));
    const OpenRasterRead read = ReadOpenRaster(folder.file("names.ora"));
    ASSERT_TRUE(read.picture) << read.message;
    // Bytes that are not UTF-8 (a lone 0xff, an encoded surrogate) come back
    // as U+FFFD each, the control character is dropped, line breaks and tabs
    // are kept.
    const std::string replacement = "\xef\xbf\xbd";
    EXPECT_EQ(read.picture->layers[0].name, "bad " + replacement + " byte " + replacement +
                                                replacement + replacement +
                                                " end \xc3\xa9 two\nlines\ttab");
}

void Fill(LayerPixels& pixels, int x0, int x1, int height, ora::Image colour) {
    for (int y = 0; y < height; ++y) {
        for (int x = x0; x < x1; ++x) {
            pixels.r.at(x, y) = colour.rgba[0];
            pixels.g.at(x, y) = colour.rgba[1];
            pixels.b.at(x, y) = colour.rgba[2];
            pixels.a.at(x, y) = colour.rgba[3];
        }
    }
}

TEST(OpenRaster, MergedImageAndThumbnailShowTheVisibleLayers) {
    const int width = 600;
    const int height = 300;
    LayeredPicture picture = MakePicture(width, height,
                                         {{"red", 255, BlendMode::Normal, true},
                                          {"blue", 255, BlendMode::Normal, true},
                                          {"hidden green", 255, BlendMode::Normal, false}});
    auto& frame = picture.frames[0];
    Fill(frame[0], 0, width, height, {1, 1, {200, 0, 0, 255}});
    Fill(frame[1], 0, width / 2, height, {1, 1, {0, 0, 220, 255}});
    Fill(frame[1], width / 2, width, height, {1, 1, {9, 9, 9, 0}});
    Fill(frame[2], 0, width, height, {1, 1, {0, 255, 0, 255}});
    testing::TempFolder folder;
    Save(folder.file("merged.ora"), picture);

    std::map<std::string, std::vector<std::uint8_t>> byName;
    for (const auto& entry : ora::Unzip(folder.file("merged.ora"))) {
        byName[entry.name] = entry.data;
    }
    const ora::Image merged = ora::DecodePng(byName["mergedimage.png"]);
    ASSERT_EQ(merged.width, width);
    ASSERT_EQ(merged.height, height);
    auto pixel = [](const ora::Image& image, int x, int y) {
        const std::uint8_t* p = &image.rgba[(std::size_t(y) * image.width + x) * 4];
        return std::vector<int>{p[0], p[1], p[2], p[3]};
    };
    EXPECT_EQ(pixel(merged, 10, 10), (std::vector<int>{0, 0, 220, 255}));
    EXPECT_EQ(pixel(merged, 590, 290), (std::vector<int>{200, 0, 0, 255}));

    // 600 x 300 fits 256 x 256 as 256 x 128, keeping the halves.
    const ora::Image thumb = ora::DecodePng(byName["Thumbnails/thumbnail.png"]);
    ASSERT_EQ(thumb.width, 256);
    ASSERT_EQ(thumb.height, 128);
    EXPECT_EQ(pixel(thumb, 5, 60), (std::vector<int>{0, 0, 220, 255}));
    EXPECT_EQ(pixel(thumb, 250, 60), (std::vector<int>{200, 0, 0, 255}));
}

ora::Image Solid(int width, int height, std::uint8_t r, std::uint8_t g, std::uint8_t b,
                 std::uint8_t a) {
    ora::Image image{width, height, {}};
    for (int i = 0; i < width * height; ++i) {
        image.rgba.insert(image.rgba.end(), {r, g, b, a});
    }
    return image;
}

std::string StackXml(int width, int height, const std::string& body) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<image version=\"0.0.3\" w=\"" +
           std::to_string(width) + "\" h=\"" + std::to_string(height) + "\"><stack>" + body +
           "</stack></image>";
}

TEST(OpenRaster, LayersAtOffsetsArePlacedAndCropped) {
    testing::TempFolder folder;
    // A 4 x 3 layer at (4, -1) of a 6 x 4 image: its columns 0..1 and rows
    // 1..2 land at columns 4..5 and rows 0..1.
    ora::Image small{4, 3, {}};
    for (int y = 0; y < 3; ++y) {
        for (int x = 0; x < 4; ++x) {
            small.rgba.insert(small.rgba.end(),
                              {std::uint8_t(10 * x), std::uint8_t(10 * y), 77, 255});
        }
    }
    // Another lies wholly to the left of the image and covers nothing.
    ora::WriteOra(folder.file("offset.ora"),
                  StackXml(6, 4,
                           "<layer src=\"data/a.png\" name=\"a\" x=\"4\" y=\"-1\"/>"
                           "<layer src=\"data/a.png\" name=\"away\" x=\"-1000\" y=\"2\"/>"),
                  {{"data/a.png", small}});
    const OpenRasterRead read = ReadOpenRaster(folder.file("offset.ora"));
    ASSERT_TRUE(read.picture) << read.message;
    const LayerPixels& away = read.picture->frames[0][0];
    for (int y = 0; y < 4; ++y) {
        for (int x = 0; x < 6; ++x) {
            EXPECT_EQ(away.a.at(x, y), 0);
        }
    }
    const LayerPixels& layer = read.picture->frames[0][1];
    for (int y = 0; y < 4; ++y) {
        for (int x = 0; x < 6; ++x) {
            const bool covered = x >= 4 && y <= 1;
            ASSERT_EQ(layer.a.at(x, y), covered ? 255 : 0) << x << "," << y;
            if (covered) {
                EXPECT_EQ(layer.r.at(x, y), 10 * (x - 4));
                EXPECT_EQ(layer.g.at(x, y), 10 * (y + 1));
                EXPECT_EQ(layer.b.at(x, y), 77);
            }
        }
    }
}

TEST(OpenRaster, NestedStacksAreFlattenedInPlace) {
    testing::TempFolder folder;
    // Top first: "top", then a hidden half-opaque group at (1, 1) holding
    // "inner", then "bottom".
    const std::string body =
        "<layer src=\"t.png\" name=\"top\" composite-op=\"svg:screen\"/>"
        "<stack x=\"1\" y=\"1\" opacity=\"0.5\" visibility=\"hidden\""
        " composite-op=\"svg:multiply\">"
        "<layer src=\"i.png\" name=\"inner\" opacity=\"0.5\"/></stack>"
        "<layer src=\"b.png\" name=\"bottom\"/>";
    ora::WriteOra(folder.file("nested.ora"), StackXml(3, 3, body),
                  {{"t.png", Solid(3, 3, 1, 2, 3, 255)},
                   {"i.png", Solid(1, 1, 9, 9, 9, 255)},
                   {"b.png", Solid(3, 3, 4, 5, 6, 255)}});
    const OpenRasterRead read = ReadOpenRaster(folder.file("nested.ora"));
    ASSERT_TRUE(read.picture) << read.message;
    const auto& layers = read.picture->layers;
    ASSERT_EQ(layers.size(), 3u);
    EXPECT_EQ(layers[0].name, "bottom");
    EXPECT_EQ(layers[1].name, "inner");
    EXPECT_EQ(layers[2].name, "top");
    EXPECT_EQ(layers[2].mode, BlendMode::Screen);
    EXPECT_FALSE(layers[1].visible);
    EXPECT_EQ(layers[1].opacity, 64);  // 0.5 x 0.5 x 255 = 63.75
    EXPECT_EQ(read.picture->frames[0][1].a.at(0, 0), 0);
    EXPECT_EQ(read.picture->frames[0][1].a.at(1, 1), 255);
    EXPECT_EQ(read.picture->frames[0][1].r.at(1, 1), 9);
    EXPECT_EQ(read.picture->currentLayer, 2);
    // The group's own composite-op cannot be kept and is said so.
    ASSERT_EQ(read.log.size(), 1u);
    EXPECT_NE(read.log[0].find("svg:multiply"), std::string::npos);
}

TEST(OpenRaster, UnknownCompositeOpIsReadAsNormalWithALogLine) {
    testing::TempFolder folder;
    ora::WriteOra(folder.file("xor.ora"),
                  StackXml(2, 2,
                           "<layer src=\"a.png\" name=\"odd\" composite-op=\"svg:xor\"/>"
                           "<layer src=\"b.png\" name=\"plus\" composite-op=\"svg:plus\"/>"),
                  {{"a.png", Solid(2, 2, 1, 1, 1, 255)}, {"b.png", Solid(2, 2, 2, 2, 2, 255)}});
    const OpenRasterRead read = ReadOpenRaster(folder.file("xor.ora"));
    ASSERT_TRUE(read.picture) << read.message;
    EXPECT_EQ(read.picture->layers[1].name, "odd");
    EXPECT_EQ(read.picture->layers[1].mode, BlendMode::Normal);
    EXPECT_EQ(read.picture->layers[0].mode, BlendMode::Add);
    ASSERT_EQ(read.log.size(), 1u);
    EXPECT_NE(read.log[0].find("svg:xor"), std::string::npos);
    EXPECT_NE(read.log[0].find("odd"), std::string::npos);
}

// Reads a file that must be refused and returns the message.
std::string Refusal(const std::string& path) {
    const OpenRasterRead read = ReadOpenRaster(path);
    EXPECT_FALSE(read.picture);
    return read.message;
}

TEST(OpenRaster, DamagedFilesAreRefusedWithTheirMessage) {
    testing::TempFolder folder;
    const ora::Image pixel = Solid(1, 1, 1, 2, 3, 255);
    const std::string layer = "<layer src=\"a.png\" name=\"a\"/>";

    ora::WriteZip(folder.file("no_stack.ora"),
                  {{"mimetype", ora::Bytes("image/openraster")}, {"a.png", ora::EncodePng(pixel)}});
    EXPECT_EQ(Refusal(folder.file("no_stack.ora")), kOpenRasterNoStack);

    ora::WriteZip(folder.file("wrong_type.ora"), {{"mimetype", ora::Bytes("image/png")}});
    EXPECT_EQ(Refusal(folder.file("wrong_type.ora")), kOpenRasterWrongMimetype);

    ora::WriteOra(folder.file("bad_xml.ora"), "<image w=\"1\" h=\"1\"><stack>", {});
    EXPECT_EQ(Refusal(folder.file("bad_xml.ora")), kOpenRasterBadStack);
    ora::WriteOra(folder.file("no_src.ora"), StackXml(1, 1, "<layer name=\"a\"/>"), {});
    EXPECT_EQ(Refusal(folder.file("no_src.ora")), kOpenRasterBadStack);
    ora::WriteOra(folder.file("no_size.ora"), "<image><stack/></image>", {});
    EXPECT_EQ(Refusal(folder.file("no_size.ora")), kOpenRasterBadStack);
    ora::WriteOra(folder.file("empty.ora"), StackXml(1, 1, ""), {});
    EXPECT_EQ(Refusal(folder.file("empty.ora")), kOpenRasterNoLayers);

    ora::WriteOra(folder.file("missing_png.ora"), StackXml(1, 1, layer), {});
    EXPECT_EQ(Refusal(folder.file("missing_png.ora")), std::string(kOpenRasterBadLayer) + " a.png");
    ora::WriteZip(folder.file("not_png.ora"), {{"mimetype", ora::Bytes("image/openraster")},
                                               {"stack.xml", ora::Bytes(StackXml(1, 1, layer))},
                                               {"a.png", ora::Bytes("\x89PNG not really")}});
    EXPECT_EQ(Refusal(folder.file("not_png.ora")), std::string(kOpenRasterBadLayer) + " a.png");

    ora::WriteOra(folder.file("huge_image.ora"), StackXml(kMaxDocumentSide + 1, 1, layer),
                  {{"a.png", pixel}});
    EXPECT_EQ(Refusal(folder.file("huge_image.ora")), DocumentSizeLimitMessage());
    // A layer image over the largest document is refused before it is decoded.
    ora::WriteOra(folder.file("huge_png.ora"), StackXml(1, 1, layer),
                  {{"a.png", Solid(kMaxDocumentSide + 1, 1, 0, 0, 0, 0)}});
    EXPECT_EQ(Refusal(folder.file("huge_png.ora")), DocumentSizeLimitMessage());

    EXPECT_EQ(Refusal(folder.file("absent.ora")), CannotOpenMessage(folder.file("absent.ora")));
}

TEST(OpenRaster, DamagedZipIsRefused) {
    testing::TempFolder folder;
    const std::string path = folder.file("whole.ora");
    Save(path, MakePicture(9, 7, ThreeLayers()));
    const std::string whole = Read(path);

    std::ofstream(folder.file("cut.ora"), std::ios::binary) << whole.substr(0, whole.size() / 2);
    EXPECT_EQ(Refusal(folder.file("cut.ora")), kOpenRasterNotZip);
    std::ofstream(folder.file("text.ora"), std::ios::binary) << "just some text";
    EXPECT_EQ(Refusal(folder.file("text.ora")), kOpenRasterNotZip);

    // A changed byte inside the first layer's stored PNG fails its checksum.
    std::string flipped = whole;
    const std::size_t png = flipped.find("IDAT");
    ASSERT_NE(png, std::string::npos);
    flipped[png + 8] = static_cast<char>(flipped[png + 8] ^ 0x55);
    std::ofstream(folder.file("flipped.ora"), std::ios::binary) << flipped;
    EXPECT_EQ(Refusal(folder.file("flipped.ora")).rfind(kOpenRasterBadLayer, 0), 0u);
}

TEST(OpenRaster, PictureThatIsNotWholeIsNotWritten) {
    testing::TempFolder folder;
    LayeredPicture picture = MakePicture(4, 4, ThreeLayers());
    picture.frames[0][1].a = Plane(2, 2);
    std::string error;
    EXPECT_FALSE(WriteOpenRaster(folder.file("short.ora"), picture, error));
    EXPECT_EQ(error, kOpenRasterIncompletePicture);
    EXPECT_FALSE(std::filesystem::exists(folder.file("short.ora")));

    picture = MakePicture(4, 4, ThreeLayers());
    picture.currentFrame = 1;
    EXPECT_FALSE(WriteOpenRaster(folder.file("frame.ora"), picture, error));

    const std::string nowhere = folder.file("missing/folder.ora");
    EXPECT_FALSE(WriteOpenRaster(nowhere, MakePicture(2, 2, ThreeLayers()), error));
    EXPECT_EQ(error.rfind(CannotWriteMessage(nowhere), 0), 0u);
}

}  // namespace
}  // namespace wib
