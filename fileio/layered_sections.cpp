// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/layered_sections.h"

#include <algorithm>
#include <stdexcept>
#include <thread>

#include "core/byte_fields.h"
#include "fileio/layered_messages.h"
#include "fileio/parallel_jobs.h"
#include "fileio/plane_blocks.h"

namespace wib {

namespace {

constexpr std::size_t kPlanesPerLayer = 4;
// A layer entry's least size: an empty name's length, opacity, mode, flags.
constexpr std::size_t kShortestLayerEntry = 4 + 3;
// Planes compressed ahead of the frame being written, per processor: enough
// to keep every processor busy while planes differ in cost, few enough to
// hold little memory.
constexpr std::size_t kPlanesPerProcessor = 2;

std::vector<const Plane*> PlanesInOrder(const LayeredPicture& picture) {
    std::vector<const Plane*> planes;
    planes.reserve(picture.frames.size() * picture.layers.size() * kPlanesPerLayer);
    for (const auto& frame : picture.frames) {
        for (const LayerPixels& layer : frame) {
            for (const Plane* plane : {&layer.r, &layer.g, &layer.b, &layer.a}) {
                planes.push_back(plane);
            }
        }
    }
    return planes;
}

void CheckWhole(const LayeredPicture& picture) {
    const bool sized = picture.width >= 1 && picture.height >= 1;
    const auto layers = static_cast<int>(picture.layers.size());
    const auto frames = static_cast<int>(picture.frames.size());
    bool whole = sized && picture.currentLayer >= 0 && picture.currentLayer < layers &&
                 picture.currentFrame >= 0 && picture.currentFrame < frames;
    for (const auto& frame : picture.frames) {
        whole = whole && frame.size() == picture.layers.size();
    }
    for (const Plane* plane : PlanesInOrder(picture)) {
        whole = whole && plane->ubX() == picture.width && plane->ubY() == picture.height;
    }
    if (!whole) {
        throw std::invalid_argument("layered picture with missing layers, frames or pixels");
    }
}

std::vector<std::uint8_t> LayerList(const LayeredPicture& picture) {
    std::vector<std::uint8_t> out;
    PutU32(out, static_cast<std::uint32_t>(picture.layers.size()));
    PutU32(out, static_cast<std::uint32_t>(picture.currentLayer));
    for (const LayerProperties& layer : picture.layers) {
        PutText(out, layer.name);
        PutU8(out, layer.opacity);
        PutU8(out, static_cast<std::uint8_t>(layer.mode));
        PutU8(out, static_cast<std::uint8_t>((layer.visible ? kLayerVisible : 0) |
                                             (layer.lockPixels ? kLayerLockPixels : 0) |
                                             (layer.lockAlpha ? kLayerLockAlpha : 0)));
    }
    return out;
}

bool ReadLayerList(std::span<const std::uint8_t> bytes, LayeredPicture& picture) {
    ByteFieldReader reader(bytes);
    std::uint32_t count = 0, current = 0;
    if (!reader.u32(count) || !reader.u32(current) || count < 1 || current >= count ||
        count > reader.left() / kShortestLayerEntry) {
        return false;
    }
    picture.layers.resize(count);
    picture.currentLayer = static_cast<int>(current);
    for (LayerProperties& layer : picture.layers) {
        std::uint8_t mode = 0, flags = 0;
        if (!reader.text(layer.name) || !reader.u8(layer.opacity) || !reader.u8(mode) ||
            !reader.u8(flags) || (flags & ~(kLayerVisible | kLayerLockPixels | kLayerLockAlpha))) {
            return false;
        }
        const auto blend = BlendModeFromNumber(mode);
        if (!blend) {
            return false;
        }
        layer.mode = *blend;
        layer.visible = (flags & kLayerVisible) != 0;
        layer.lockPixels = (flags & kLayerLockPixels) != 0;
        layer.lockAlpha = (flags & kLayerLockAlpha) != 0;
    }
    return reader.left() == 0;
}

bool ReadPixels(const Container& container, LayeredPicture& picture) {
    const auto counts = container.section(kFramesSection);
    if (!counts) {
        return false;
    }
    ByteFieldReader reader(*counts);
    std::uint32_t frameCount = 0, current = 0;
    const auto frames = container.sectionsTagged(kFrameSection);
    if (!reader.u32(frameCount) || !reader.u32(current) || reader.left() != 0 || frameCount < 1 ||
        current >= frameCount || frameCount != frames.size()) {
        return false;
    }
    // Every frame's blocks are found sound before any plane is made.
    const std::size_t layerPlanes = picture.layers.size() * kPlanesPerLayer;
    std::vector<std::span<const std::uint8_t>> blocks;
    blocks.reserve(frames.size() * layerPlanes);
    std::vector<std::span<const std::uint8_t>> frameBlocks;
    for (const auto frame : frames) {
        std::size_t used = 0;
        if (!SplitBlocks(frame, layerPlanes, picture.width, picture.height, frameBlocks, used) ||
            used != frame.size()) {
            return false;
        }
        blocks.insert(blocks.end(), frameBlocks.begin(), frameBlocks.end());
    }
    picture.currentFrame = static_cast<int>(current);
    picture.frames.assign(frameCount, std::vector<LayerPixels>(picture.layers.size()));
    std::vector<Plane*> planes;
    planes.reserve(blocks.size());
    for (auto& frame : picture.frames) {
        for (LayerPixels& layer : frame) {
            for (Plane* plane : {&layer.r, &layer.g, &layer.b, &layer.a}) {
                planes.push_back(plane);
            }
        }
    }
    return DecompressPlanes(blocks, planes, picture.width, picture.height);
}

}  // namespace

void AddPictureSections(ContainerWriter& container, const LayeredPicture& picture) {
    CheckWhole(picture);
    container.section(kLayersSection, LayerList(picture));
    std::vector<std::uint8_t> counts;
    PutU32(counts, static_cast<std::uint32_t>(picture.frames.size()));
    PutU32(counts, static_cast<std::uint32_t>(picture.currentFrame));
    container.section(kFramesSection, counts);

    // Workers compress planes a little ahead while this thread writes each
    // frame as soon as its planes are done. Plane i is compressed only once
    // plane i - ahead is finished, so every frame ending there or before is
    // written; plane i - slots lies in such a frame, and its slot is free.
    const std::vector<const Plane*> planes = PlanesInOrder(picture);
    const std::size_t framePlanes = picture.layers.size() * kPlanesPerLayer;
    const std::size_t ahead =
        kPlanesPerProcessor * std::max(1u, std::thread::hardware_concurrency());
    const std::size_t slots = ahead + framePlanes - 1;
    PlaneCompressor compressor(picture.width, picture.height, slots);
    std::vector<ContainerPiece> pieces(planes.size());
    RunJobsInOrder(
        planes.size(), ahead,
        [&](std::size_t i) { pieces[i] = compressor.compress(*planes[i], i % slots); },
        [&](std::size_t i) {
            if ((i + 1) % framePlanes == 0) {
                container.section(kFrameSection,
                                  std::span(pieces).subspan(i + 1 - framePlanes, framePlanes));
            }
        });
}

ReadResult<LayeredPicture> ReadPictureSections(const Container& container) {
    using Result = ReadResult<LayeredPicture>;
    const auto layers = container.section(kLayersSection);
    LayeredPicture picture;
    picture.width = container.width;
    picture.height = container.height;
    if (!layers || !ReadLayerList(*layers, picture) || !ReadPixels(container, picture)) {
        return Result::Failed(kContainerInconsistent);
    }
    return {std::move(picture), {}};
}

}  // namespace wib
