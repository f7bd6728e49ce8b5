// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cmath>
#include <string_view>

#include "core/atomic_file.h"
#include "core/document_limits.h"
#include "fileio/file_messages.h"
#include "fileio/openraster.h"
#include "fileio/openraster_modes.h"
#include "fileio/openraster_stack.h"
#include "fileio/png_codec.h"
#include "fileio/zip_archive.h"
#include "pixel/layer_blend.h"

namespace wib {
namespace {

constexpr int kThumbnailSide = 256;

bool Covers(const Plane& plane, int width, int height) {
    return plane.ubX() >= width - 1 && plane.ubY() >= height - 1;
}

bool Whole(const LayeredPicture& picture) {
    if (DocumentSizeProblem(picture.width, picture.height) || picture.layers.empty() ||
        picture.currentFrame < 0 ||
        static_cast<std::size_t>(picture.currentFrame) >= picture.frames.size()) {
        return false;
    }
    const auto& frame = picture.frames[static_cast<std::size_t>(picture.currentFrame)];
    if (frame.size() != picture.layers.size()) {
        return false;
    }
    return std::all_of(frame.begin(), frame.end(), [&](const LayerPixels& p) {
        return Covers(p.r, picture.width, picture.height) &&
               Covers(p.g, picture.width, picture.height) &&
               Covers(p.b, picture.width, picture.height) &&
               Covers(p.a, picture.width, picture.height);
    });
}

RgbaImage Interleaved(const LayerPixels& pixels, int width, int height) {
    RgbaImage image{width, height, std::vector<std::uint8_t>(std::size_t(width) * height * 4)};
    std::uint8_t* out = image.pixels.data();
    for (int y = 0; y < height; ++y) {
        const std::uint8_t* r = pixels.r.row(y);
        const std::uint8_t* g = pixels.g.row(y);
        const std::uint8_t* b = pixels.b.row(y);
        const std::uint8_t* a = pixels.a.row(y);
        for (int x = 0; x < width; ++x) {
            *out++ = r[x];
            *out++ = g[x];
            *out++ = b[x];
            *out++ = a[x];
        }
    }
    return image;
}

// The visible layers laid bottom up over transparency, as every reader that
// does not composite the layers itself shows the file.
RgbaImage Composite(const LayeredPicture& picture) {
    const int width = picture.width;
    const int height = picture.height;
    const auto& frame = picture.frames[static_cast<std::size_t>(picture.currentFrame)];
    const std::size_t count = std::size_t(width) * height;
    std::vector<std::uint8_t> r(count), g(count), b(count), a(count);
    for (std::size_t l = 0; l < picture.layers.size(); ++l) {
        const LayerProperties& layer = picture.layers[l];
        if (!layer.visible) {
            continue;
        }
        const LayerPixels& pixels = frame[l];
        for (int y = 0; y < height; ++y) {
            const std::size_t at = std::size_t(y) * width;
            CompositeLayerRow(layer.mode, layer.opacity,
                              {pixels.r.row(y), pixels.g.row(y), pixels.b.row(y), pixels.a.row(y)},
                              {&r[at], &g[at], &b[at], &a[at]}, width);
        }
    }
    RgbaImage image{width, height, std::vector<std::uint8_t>(count * 4)};
    for (std::size_t i = 0; i < count; ++i) {
        image.pixels[i * 4] = r[i];
        image.pixels[i * 4 + 1] = g[i];
        image.pixels[i * 4 + 2] = b[i];
        image.pixels[i * 4 + 3] = a[i];
    }
    return image;
}

// The image shrunk to fit 256 x 256 keeping its shape, each pixel the mean of
// the box it covers, colour weighted by coverage so that transparent pixels
// lend it none of theirs. Smaller images are kept as they are.
RgbaImage Thumbnail(const RgbaImage& image) {
    const int longest = std::max(image.width, image.height);
    if (longest <= kThumbnailSide) {
        return image;
    }
    auto scaled = [&](int side) {
        return std::max(1, static_cast<int>(std::lround(double(side) * kThumbnailSide / longest)));
    };
    RgbaImage thumb{scaled(image.width), scaled(image.height), {}};
    thumb.pixels.resize(std::size_t(thumb.width) * thumb.height * 4);
    for (int ty = 0; ty < thumb.height; ++ty) {
        const int y0 = int(std::int64_t(ty) * image.height / thumb.height);
        const int y1 = std::max(y0 + 1, int(std::int64_t(ty + 1) * image.height / thumb.height));
        for (int tx = 0; tx < thumb.width; ++tx) {
            const int x0 = int(std::int64_t(tx) * image.width / thumb.width);
            const int x1 = std::max(x0 + 1, int(std::int64_t(tx + 1) * image.width / thumb.width));
            std::uint64_t sum[3] = {0, 0, 0};
            std::uint64_t alpha = 0;
            for (int y = y0; y < y1; ++y) {
                const std::uint8_t* p = &image.pixels[(std::size_t(y) * image.width + x0) * 4];
                for (int x = x0; x < x1; ++x, p += 4) {
                    for (int c = 0; c < 3; ++c) {
                        sum[c] += std::uint64_t(p[c]) * p[3];
                    }
                    alpha += p[3];
                }
            }
            const std::uint64_t n = std::uint64_t(x1 - x0) * (y1 - y0);
            std::uint8_t* out = &thumb.pixels[(std::size_t(ty) * thumb.width + tx) * 4];
            for (int c = 0; c < 3; ++c) {
                out[c] = alpha == 0 ? 0 : std::uint8_t((sum[c] + alpha / 2) / alpha);
            }
            out[3] = std::uint8_t((alpha + n / 2) / n);
        }
    }
    return thumb;
}

std::span<const std::uint8_t> Bytes(std::string_view text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

}  // namespace

std::optional<std::vector<std::uint8_t>> EncodeOpenRaster(const LayeredPicture& picture,
                                                          std::string& error) {
    if (!Whole(picture)) {
        error = kOpenRasterIncompletePicture;
        return std::nullopt;
    }
    error = "The OpenRaster file could not be encoded.";
    ZipBuilder zip;
    // The mimetype comes first and uncompressed, so that the file's type can
    // be read at a fixed offset.
    zip.add("mimetype", Bytes("image/openraster"), ZipBuilder::Method::Store);

    OraStack stack{picture.width, picture.height, {}};
    const auto& frame = picture.frames[static_cast<std::size_t>(picture.currentFrame)];
    for (std::size_t l = 0; l < picture.layers.size(); ++l) {
        const LayerProperties& properties = picture.layers[l];
        OraLayerEntry entry;
        entry.name = properties.name;
        entry.src = "data/layer" + std::to_string(l) + ".png";
        entry.opacity = properties.opacity / 255.0;
        entry.visible = properties.visible;
        entry.compositeOp = OpenRasterCompositeOp(properties.mode);
        entry.selected = static_cast<int>(l) == picture.currentLayer;
        entry.lockPixels = properties.lockPixels;
        entry.lockAlpha = properties.lockAlpha;
        const auto png = EncodePng(Interleaved(frame[l], picture.width, picture.height));
        if (!png) {
            return std::nullopt;
        }
        // PNG data is compressed already; deflating it again only costs time.
        zip.add(entry.src, *png, ZipBuilder::Method::Store);
        stack.layers.push_back(std::move(entry));
    }
    zip.add("stack.xml", Bytes(WriteStackXml(stack)), ZipBuilder::Method::Deflate);

    const RgbaImage merged = Composite(picture);
    const auto mergedPng = EncodePng(merged);
    const auto thumbPng = EncodePng(Thumbnail(merged));
    if (!mergedPng || !thumbPng) {
        return std::nullopt;
    }
    zip.add("mergedimage.png", *mergedPng, ZipBuilder::Method::Store);
    zip.add("Thumbnails/thumbnail.png", *thumbPng, ZipBuilder::Method::Store);
    auto bytes = zip.finish();
    if (bytes) {
        error.clear();
    }
    return bytes;
}

bool WriteOpenRaster(const std::string& path, const LayeredPicture& picture, std::string& error) {
    const auto bytes = EncodeOpenRaster(picture, error);
    if (!bytes) {
        return false;
    }
    std::string reason;
    const std::string_view view(reinterpret_cast<const char*>(bytes->data()), bytes->size());
    if (!WriteFileAtomically(path, view, reason)) {
        error = CannotWriteMessage(path, reason);
        return false;
    }
    return true;
}

}  // namespace wib
