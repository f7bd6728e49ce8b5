// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/onion_view.h"

#include <algorithm>

#include "anim/frame_store.h"
#include "core/frame_composite.h"
#include "core/layer_edit.h"
#include "core/workspace.h"
#include "pixel/onion.h"

namespace wib {

namespace {

OnionPlanes PlanesOf(const Plane& r, const Plane& g, const Plane& b, const Plane* a) {
    return {r.data(), g.data(), b.data(), a ? a->data() : nullptr, r.stride()};
}

}  // namespace

std::vector<OnionFrame> OnionView::frames() const {
    if (store_ == nullptr || store_->PlayingFlag() != 0 || store_->FrameCount() < 2) {
        return {};
    }
    const int count = store_->FrameCount();
    const int current = std::min(store_->CurrentFrame(), count - 1);
    return OnionFrames(workspace_.view.onion, current, count);
}

const LayerPixels* OnionView::layeredFrame(int frame) {
    const LayerStack& stack = workspace_.layers;
    std::vector<LayerCell> cells;
    std::vector<LayerProperties> looks;
    for (const Layer& layer : stack.layers) {
        cells.push_back(static_cast<std::size_t>(frame) < layer.frames.size()
                            ? layer.frames[static_cast<std::size_t>(frame)]
                            : nullptr);
        looks.push_back(layer.properties);
    }
    Composite& kept = composites_[frame];
    const Document& doc = workspace_.document;
    if (kept.cells != cells || kept.looks != looks || !kept.pixels.r.sameShape(doc.RBuffer)) {
        kept.pixels = TransparentPixels(doc.width, doc.height);
        CompositeSources(FrameSources(workspace_, frame), {0, 0, doc.width - 1, doc.height - 1},
                         kept.pixels);
        // Held, so that a cell is never freed and another made at its address
        // while the composite is kept.
        kept.cells = std::move(cells);
        kept.looks = std::move(looks);
    }
    return &kept.pixels;
}

void OnionView::keepOnly(const std::vector<OnionFrame>& frames) {
    std::erase_if(composites_, [&frames](const auto& entry) {
        return std::none_of(frames.begin(), frames.end(),
                            [&entry](const OnionFrame& f) { return f.frame == entry.first; });
    });
}

OnionLayer OnionView::layerOf(const OnionPlanes& planes, const OnionFrame& frame) const {
    const OnionState& state = workspace_.view.onion;
    OnionLayer layer;
    layer.planes = planes;
    layer.tinted = frame.side != OnionSide::Pinned;
    const PackedColour tint = frame.side == OnionSide::Before ? state.tintBefore : state.tintAfter;
    layer.tint[0] = tint.r;
    layer.tint[1] = tint.g;
    layer.tint[2] = tint.b;
    layer.opacity = static_cast<std::uint8_t>(std::clamp(frame.opacity, 0, 255));
    return layer;
}

const QImage& OnionView::blendFlat(const Plane& r, const Plane& g, const Plane& b,
                                   const std::vector<OnionFrame>& frames, const QRect& area) {
    composites_.clear();
    const OnionState& state = workspace_.view.onion;
    OnionPictureKey key{{}, state.tintBefore, state.tintAfter, store_->pixelsRevision()};
    // Frames made for another size are on their way out; they are not shown.
    if (store_->AnimR().frameBytes() == r.byteCount()) {
        key.frames = frames;
    }
    std::vector<OnionLayer> layers;
    for (const OnionFrame& frame : key.frames) {
        // Every frame lies in the store laid out as the document's planes.
        const auto at = [&frame](const FrameArray& array) { return array.frame(frame.frame); };
        layers.push_back(layerOf(
            {at(store_->AnimR()), at(store_->AnimG()), at(store_->AnimB()), nullptr, r.stride()},
            frame));
    }
    return flat_.update(PlanesOf(r, g, b, nullptr), r.ubX(), r.ubY(), layers, key, area,
                        workspace_.threadCount);
}

const LayerPixels& OnionView::blendLayered(const LayerPixels& picture,
                                           const std::vector<OnionFrame>& frames,
                                           const QRect& area) {
    keepOnly(frames);
    std::vector<OnionLayer> layers;
    for (const OnionFrame& frame : frames) {
        const LayerPixels* pixels = layeredFrame(frame.frame);
        layers.push_back(layerOf(PlanesOf(pixels->r, pixels->g, pixels->b, &pixels->a), frame));
    }
    if (!out_.r.sameShape(picture.r)) {
        out_ = TransparentPixels(picture.r.ubX(), picture.r.ubY());
    }
    BlendOnionCovered(PlanesOf(picture.r, picture.g, picture.b, &picture.a), layers,
                      {out_.r.data(), out_.g.data(), out_.b.data(), out_.a.data(), out_.r.stride()},
                      area.left(), area.top(), area.right(), area.bottom());
    return out_;
}

}  // namespace wib
