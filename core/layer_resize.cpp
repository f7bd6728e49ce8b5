// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/layer_resize.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <memory>

#include "core/layer_edit.h"
#include "core/workspace.h"

namespace wib {

namespace {

// One old plane into the new size: the fill where the old image is not.
Plane Placed(const Plane& old, const CanvasChange& change, std::uint8_t fill) {
    Plane placed(change.newWidth, change.newHeight, fill);
    PlaceOldPixels(old.data(), placed.data(), change);
    return placed;
}

LayerPixels PlacedPixels(const LayerPixels& old, const CanvasChange& change, bool bottom) {
    // Colour: the fill colour on the bottom layer, where coverage shows it.
    LayerPixels placed{Placed(old.r, change, bottom ? change.fillR : 0),
                       Placed(old.g, change, bottom ? change.fillG : 0),
                       Placed(old.b, change, bottom ? change.fillB : 0), Plane()};
    if (!old.a.empty()) {
        placed.a = Placed(old.a, change, bottom ? 255 : 0);
    } else if (!bottom) {
        placed.a = Placed(Plane(change.oldWidth, change.oldHeight, 255), change, 0);
    }
    return placed;
}

void WritePlane(std::ofstream& out, const Plane& plane) {
    const std::array<int, 2> bounds{plane.ubX(), plane.ubY()};
    out.write(reinterpret_cast<const char*>(bounds.data()), sizeof bounds);
    out.write(reinterpret_cast<const char*>(plane.data()),
              static_cast<std::streamsize>(plane.byteCount()));
}

Plane ReadPlane(std::ifstream& in) {
    std::array<int, 2> bounds{};
    in.read(reinterpret_cast<char*>(bounds.data()), sizeof bounds);
    Plane plane = Plane::Uninitialized(bounds[0], bounds[1]);
    in.read(reinterpret_cast<char*>(plane.data()), static_cast<std::streamsize>(plane.byteCount()));
    return plane;
}

}  // namespace

LayerCanvasResize::LayerCanvasResize(Workspace& workspace, std::filesystem::path cropFile)
    : workspace_(workspace), cropFile_(std::move(cropFile)) {
    workspace_.resizeStores.push_back(this);
}

LayerCanvasResize::~LayerCanvasResize() {
    std::erase(workspace_.resizeStores, this);
}

bool LayerCanvasResize::resizeForCanvas(Workspace& workspace, const CanvasChange& change) {
    LayerStack& stack = workspace.layers;
    Document& doc = workspace.document;
    // The current layer's colour was placed with the document's planes; its
    // coverage follows here.
    if (!doc.Coverage.empty() || stack.current != 0) {
        const Plane old =
            doc.Coverage.empty() ? Plane(change.oldWidth, change.oldHeight, 255) : doc.Coverage;
        doc.Coverage = Placed(old, change, stack.current == 0 ? 255 : 0);
    }
    // Park every distinct cell, drop the old ones, then bring each back at
    // the new size; a cell shared by several frames stays shared.
    std::ofstream park(cropFile_, std::ios::binary | std::ios::trunc);
    std::vector<std::pair<const LayerPixels*, LayerCell>> made;
    auto placedOf = [&](const LayerPixels* old, bool bottom) -> LayerCell {
        for (const auto& [from, to] : made) {
            if (from == old)
                return to;
        }
        LayerCell cell = MakeLayerCell(PlacedPixels(*old, change, bottom));
        made.emplace_back(old, cell);
        return cell;
    };
    const bool parked = park.good();
    for (std::size_t i = 0; i < stack.layers.size() && parked; ++i) {
        for (const LayerCell& cell : stack.layers[i].frames) {
            if (cell) {
                for (const Plane* plane : {&cell->r, &cell->g, &cell->b, &cell->a}) {
                    WritePlane(park, *plane);
                }
            }
        }
    }
    park.close();
    if (parked && park.good()) {
        std::ifstream back(cropFile_, std::ios::binary);
        std::vector<std::vector<bool>> present;
        for (Layer& layer : stack.layers) {
            std::vector<bool> has;
            for (LayerCell& cell : layer.frames) {
                has.push_back(cell != nullptr);
                cell.reset();
            }
            present.push_back(std::move(has));
        }
        for (std::size_t i = 0; i < stack.layers.size(); ++i) {
            for (std::size_t f = 0; f < stack.layers[i].frames.size(); ++f) {
                if (!present[i][f])
                    continue;
                LayerPixels old;
                old.r = ReadPlane(back);
                old.g = ReadPlane(back);
                old.b = ReadPlane(back);
                old.a = ReadPlane(back);
                stack.layers[i].frames[f] = MakeLayerCell(PlacedPixels(old, change, i == 0));
            }
        }
        std::error_code ignored;
        std::filesystem::remove(cropFile_, ignored);
    } else {
        for (std::size_t i = 0; i < stack.layers.size(); ++i) {
            for (LayerCell& cell : stack.layers[i].frames) {
                if (cell)
                    cell = placedOf(cell.get(), i == 0);
            }
        }
    }
    workspace.events.layersChanged.notify();
    return true;
}

}  // namespace wib
