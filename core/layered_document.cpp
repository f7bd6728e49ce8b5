// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/layered_document.h"

#include <algorithm>
#include <new>

#include "core/document_build.h"
#include "core/layer_edit.h"
#include "core/undo.h"
#include "core/workspace.h"

namespace wib {

namespace {

bool AllOpaque(const Plane& coverage, int width, int height) {
    for (int y = 0; y < height; ++y) {
        const std::uint8_t* row = coverage.row(y);
        if (!std::all_of(row, row + width, [](std::uint8_t a) { return a == 255; })) {
            return false;
        }
    }
    return true;
}

}  // namespace

LayeredPicture PictureOfDocument(Workspace& workspace) {
    PrepareLayerCells(workspace);
    StoreCurrentLayerCell(workspace);
    const Document& doc = workspace.document;
    const LayerStack& stack = workspace.layers;
    LayeredPicture picture;
    picture.width = doc.width;
    picture.height = doc.height;
    picture.currentLayer = stack.current;
    picture.currentFrame = stack.frame;
    for (const Layer& layer : stack.layers) {
        picture.layers.push_back(layer.properties);
    }
    const std::size_t frames = stack.layers.front().frames.size();
    picture.frames.resize(frames);
    for (std::size_t f = 0; f < frames; ++f) {
        for (const Layer& layer : stack.layers) {
            LayerPixels pixels = *layer.frames[f];
            if (pixels.a.empty()) {
                pixels.a = Plane(doc.width, doc.height, 255);
            }
            picture.frames[f].push_back(std::move(pixels));
        }
    }
    return picture;
}

bool InstallPicture(Workspace& workspace, LayeredPicture&& picture) {
    const int frames = static_cast<int>(picture.frames.size());
    try {
        BuildDocumentPlanes(workspace, picture.width, picture.height);
    } catch (const std::bad_alloc&) {
        workspace.host.prompter.message(kImageMemoryMessage);
        return false;
    }
    if (!workspace.frames().replaceFrames(frames)) {
        return false;
    }
    LayerStack& stack = workspace.layers;
    stack.layers.clear();
    for (std::size_t l = 0; l < picture.layers.size(); ++l) {
        Layer layer;
        layer.properties = picture.layers[l];
        for (auto& frame : picture.frames) {
            LayerPixels& pixels = frame[l];
            if (AllOpaque(pixels.a, picture.width, picture.height)) {
                pixels.a = Plane();
            }
            layer.frames.push_back(MakeLayerCell(std::move(pixels)));
        }
        stack.layers.push_back(std::move(layer));
    }
    stack.current = std::clamp(picture.currentLayer, 0, static_cast<int>(stack.layers.size()) - 1);
    stack.frame = 0;
    LoadCurrentLayerCell(workspace);
    if (frames > 1) {
        LoadLayerFramesIntoStore(workspace);
    }
    SaveUndo(workspace);
    workspace.events.layersChanged.notify();
    workspace.host.view.completeRefresh();
    return true;
}

}  // namespace wib
