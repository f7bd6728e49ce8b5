// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cmath>
#include <fstream>
#include <iterator>
#include <new>

#include "core/document_limits.h"
#include "fileio/file_messages.h"
#include "fileio/openraster.h"
#include "fileio/openraster_modes.h"
#include "fileio/openraster_stack.h"
#include "fileio/png_codec.h"
#include "fileio/zip_archive.h"

namespace wib {
namespace {

constexpr std::string_view kMimetype = "image/openraster";
constexpr std::size_t kMaxStackXmlBytes = std::size_t(16) << 20;

OpenRasterRead Refused(std::string message, std::vector<std::string> log = {}) {
    OpenRasterRead read;
    read.message = std::move(message);
    read.log = std::move(log);
    return read;
}

bool HasOpenRasterMimetype(const ZipReader& zip) {
    const auto bytes = zip.read("mimetype", 256);
    if (!bytes) {
        return false;
    }
    std::string_view text(reinterpret_cast<const char*>(bytes->data()), bytes->size());
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r' || text.back() == ' ')) {
        text.remove_suffix(1);
    }
    return text == kMimetype;
}

// A layer's own image laid into planes of the picture's size, at its offset;
// what lies outside the picture is cut off, what it does not cover is clear.
LayerPixels Placed(const RgbaImage& image, int x, int y, int width, int height) {
    LayerPixels pixels{Plane(width, height), Plane(width, height), Plane(width, height),
                       Plane(width, height)};
    const int left = std::max(0, x);
    const int top = std::max(0, y);
    const auto right = static_cast<int>(std::min<long long>(width, 1LL * x + image.width));
    const auto bottom = static_cast<int>(std::min<long long>(height, 1LL * y + image.height));
    if (left >= right) {
        return pixels;
    }
    for (int row = top; row < bottom; ++row) {
        const std::uint8_t* in =
            &image.pixels[(std::size_t(row - y) * image.width + std::size_t(left - x)) * 4];
        std::uint8_t* r = pixels.r.row(row);
        std::uint8_t* g = pixels.g.row(row);
        std::uint8_t* b = pixels.b.row(row);
        std::uint8_t* a = pixels.a.row(row);
        for (int col = left; col < right; ++col, in += 4) {
            r[col] = in[0];
            g[col] = in[1];
            b[col] = in[2];
            a[col] = in[3];
        }
    }
    return pixels;
}

LayerProperties Properties(const OraLayerEntry& entry, std::vector<std::string>& log) {
    LayerProperties properties;
    properties.name = entry.name;
    properties.opacity =
        static_cast<std::uint8_t>(std::lround(std::clamp(entry.opacity, 0.0, 1.0) * 255.0));
    properties.visible = entry.visible;
    properties.lockPixels = entry.lockPixels;
    properties.lockAlpha = entry.lockAlpha;
    if (const auto mode = BlendModeFromCompositeOp(entry.compositeOp)) {
        properties.mode = *mode;
    } else {
        log.push_back("The layer \"" + entry.name + "\" has the composite-op \"" +
                      entry.compositeOp + "\", which the program does not know; it is read as " +
                      "normal.");
    }
    return properties;
}

OpenRasterRead ReadLayers(const ZipReader& zip, OraStack stack, std::vector<std::string> log,
                          long long maxPixels) {
    const int width = stack.width;
    const int height = stack.height;
    // Every layer's planes have the spare column and row.
    const long long planePixels = (width + 1LL) * (height + 1LL);
    if (static_cast<long long>(stack.layers.size()) > maxPixels / planePixels) {
        return Refused(kOpenRasterTooLarge, std::move(log));
    }
    // A layer image may hold no more than a document's pixels, and its file
    // (PNG at worst barely larger than raw) no more than their bytes.
    const long long imagePixels = std::min(maxPixels, 1LL * kMaxDocumentSide * kMaxDocumentSide);
    const auto maxFileBytes = static_cast<std::size_t>(imagePixels * 5 + (1 << 20));

    LayeredPicture picture;
    picture.width = width;
    picture.height = height;
    picture.frames.resize(1);
    picture.currentLayer = static_cast<int>(stack.layers.size()) - 1;
    for (std::size_t l = 0; l < stack.layers.size(); ++l) {
        const OraLayerEntry& entry = stack.layers[l];
        const std::string damaged = std::string(kOpenRasterBadLayer) + " " + entry.src;
        const auto file = zip.read(entry.src, maxFileBytes);
        if (!file) {
            return Refused(damaged, std::move(log));
        }
        const PngDecode decoded = DecodePng(*file, imagePixels);
        if (!decoded.image) {
            return Refused(decoded.tooLarge ? decoded.error : damaged, std::move(log));
        }
        picture.layers.push_back(Properties(entry, log));
        picture.frames[0].push_back(Placed(*decoded.image, entry.x, entry.y, width, height));
        if (entry.selected) {
            picture.currentLayer = static_cast<int>(l);
        }
    }
    OpenRasterRead read;
    read.picture = std::move(picture);
    read.log = std::move(log);
    return read;
}

}  // namespace

namespace {

OpenRasterRead Decode(std::span<const std::uint8_t> bytes, long long maxPixels) {
    const auto zip = ZipReader::Open(bytes);
    if (!zip) {
        return Refused(kOpenRasterNotZip);
    }
    if (!HasOpenRasterMimetype(*zip)) {
        return Refused(kOpenRasterWrongMimetype);
    }
    if (!zip->contains("stack.xml")) {
        return Refused(kOpenRasterNoStack);
    }
    const auto xml = zip->read("stack.xml", kMaxStackXmlBytes);
    if (!xml) {
        return Refused(kOpenRasterBadStack);
    }
    StackXmlRead parsed = ParseStackXml({reinterpret_cast<const char*>(xml->data()), xml->size()});
    if (!parsed.stack) {
        return Refused(kOpenRasterBadStack, std::move(parsed.log));
    }
    if (const auto problem = DocumentSizeProblem(parsed.stack->width, parsed.stack->height)) {
        return Refused(*problem, std::move(parsed.log));
    }
    if (parsed.stack->layers.empty()) {
        return Refused(kOpenRasterNoLayers, std::move(parsed.log));
    }
    return ReadLayers(*zip, std::move(*parsed.stack), std::move(parsed.log), maxPixels);
}

}  // namespace

OpenRasterRead DecodeOpenRaster(std::span<const std::uint8_t> bytes, long long maxPixels) {
    // The sizes are checked before anything is made; this catches what the
    // system still cannot give.
    try {
        return Decode(bytes, maxPixels);
    } catch (const std::bad_alloc&) {
        return Refused(kOpenRasterTooLarge);
    }
}

OpenRasterRead ReadOpenRaster(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        return Refused(CannotOpenMessage(path));
    }
    const std::vector<std::uint8_t> bytes{std::istreambuf_iterator<char>(in),
                                          std::istreambuf_iterator<char>()};
    if (in.bad()) {
        return Refused(CannotOpenMessage(path));
    }
    return DecodeOpenRaster(bytes);
}

}  // namespace wib
