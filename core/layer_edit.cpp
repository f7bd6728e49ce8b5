// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/layer_edit.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "core/cut_and_crop.h"
#include "core/layer_composite.h"
#include "core/workspace.h"

namespace wib {

namespace {

LayerStack& Stack(Workspace& workspace) {
    return workspace.layers;
}

std::size_t FrameSlot(const LayerStack& stack) {
    return static_cast<std::size_t>(stack.frame);
}

LayerCell MakeCell(LayerPixels&& pixels) {
    return MakeLayerCell(std::move(pixels));
}

LayerCell TransparentCell(const Document& doc) {
    return MakeCell(TransparentPixels(doc.width, doc.height));
}

// Every cell of a new layer: transparent in every frame.
Layer TransparentLayer(const Workspace& workspace, std::string name) {
    const LayerStack& stack = workspace.layers;
    Layer layer;
    layer.properties.name = std::move(name);
    const LayerCell blank = TransparentCell(workspace.document);
    layer.frames.assign(stack.layers.empty() ? 1 : stack.layers.front().frames.size(), blank);
    return layer;
}

// "Layer N" with the first N no layer is called yet.
std::string FreshLayerName(const LayerStack& stack) {
    for (int n = 1;; ++n) {
        const std::string name = "Layer " + std::to_string(n);
        if (std::none_of(stack.layers.begin(), stack.layers.end(),
                         [&](const Layer& l) { return l.properties.name == name; })) {
            return name;
        }
    }
}

void Changed(Workspace& workspace) {
    workspace.events.layersChanged.notify();
}

int AnimationFrames(Workspace& workspace) {
    return workspace.frames().frameCount();
}

// Whether each layer keeps its frames as cells: as soon as there is more
// than one layer or the one layer is not opaque.
bool CellsKept(const Workspace& workspace) {
    return workspace.layers.layers.size() > 1 || !workspace.document.Coverage.empty();
}

Layer& CurrentEntry(Workspace& workspace) {
    return workspace.layers.layers[static_cast<std::size_t>(workspace.layers.current)];
}

// The current layer's other frames into the frame store, which shows and
// plays them.
void LoadFramesIntoStore(Workspace& workspace) {
    const int frames = AnimationFrames(workspace);
    const Layer& layer = CurrentEntry(workspace);
    for (int f = 0; f < frames && f < static_cast<int>(layer.frames.size()); ++f) {
        if (f != workspace.layers.frame && layer.frames[static_cast<std::size_t>(f)]) {
            workspace.frames().setStoredColour(f, *layer.frames[static_cast<std::size_t>(f)]);
        }
    }
}

// The main planes and coverage of the document into the current cell,
// leaving the document's planes empty until a cell is loaded.
void MoveCurrentIntoCell(Workspace& workspace) {
    Document& doc = workspace.document;
    LayerStack& stack = Stack(workspace);
    stack.layers[static_cast<std::size_t>(stack.current)].frames[FrameSlot(stack)] =
        MakeCell({std::move(doc.RBuffer), std::move(doc.GBuffer), std::move(doc.BBuffer),
                  std::move(doc.Coverage)});
}

// Composites `sources` over a transparent start into a new cell.
LayerCell CompositeCell(const Document& doc, const std::vector<CompositeSource>& sources) {
    LayerPixels out = TransparentPixels(doc.width, doc.height);
    CompositeSources(sources, {0, 0, doc.width, doc.height}, out);
    return MakeCell(std::move(out));
}

CompositeSource SourceOf(const LayerPixels& pixels, const LayerProperties& properties) {
    return {&pixels.r,       &pixels.g,         &pixels.b, pixels.a.empty() ? nullptr : &pixels.a,
            properties.mode, properties.opacity};
}

// Works on cells only: stores the current layer first and loads the (new)
// current one after.
template <typename Change>
bool WithStoredCurrent(Workspace& workspace, Change change) {
    PrepareLayerCells(workspace);
    MoveCurrentIntoCell(workspace);
    const bool done = change(Stack(workspace));
    LoadCurrentLayerCell(workspace);
    if (AnimationFrames(workspace) > 0) {
        LoadFramesIntoStore(workspace);
    }
    Changed(workspace);
    return done;
}

// Merges the layers [first, last] whose properties `take` accepts into one
// cell per frame, laid over transparency as the canvas lays them.
template <typename Take>
std::vector<LayerCell> MergedFrames(const Workspace& workspace, int first, int last, Take take) {
    const LayerStack& stack = workspace.layers;
    std::vector<LayerCell> merged;
    for (std::size_t f = 0; f < stack.layers.front().frames.size(); ++f) {
        std::vector<CompositeSource> sources;
        for (int i = first; i <= last; ++i) {
            const Layer& layer = stack.layers[static_cast<std::size_t>(i)];
            if (take(layer.properties)) {
                sources.push_back(SourceOf(*layer.frames[f], layer.properties));
            }
        }
        merged.push_back(CompositeCell(workspace.document, sources));
    }
    return merged;
}

}  // namespace

void ResetLayers(Workspace& workspace, int frames) {
    LayerStack& stack = Stack(workspace);
    Document& doc = workspace.document;
    doc.Coverage = Plane();
    Layer background;
    background.properties.name = kBackgroundLayerName;
    background.frames.assign(static_cast<std::size_t>(std::max(frames, 1)), nullptr);
    stack.layers.assign(1, std::move(background));
    stack.current = 0;
    stack.frame = 0;
    Changed(workspace);
}

int LayerCount(const Workspace& workspace) {
    return std::max<int>(1, static_cast<int>(workspace.layers.layers.size()));
}

int CurrentLayer(const Workspace& workspace) {
    return workspace.layers.current;
}

const LayerProperties& LayerAt(const Workspace& workspace, int index) {
    static const LayerProperties background{kBackgroundLayerName};
    if (!ValidLayer(workspace, index) || workspace.layers.layers.empty()) {
        return background;
    }
    return workspace.layers.layers[static_cast<std::size_t>(index)].properties;
}

bool ValidLayer(const Workspace& workspace, int index) {
    return index >= 0 && index < LayerCount(workspace);
}

bool IsFlatPicture(const Workspace& workspace) {
    const LayerProperties& only = LayerAt(workspace, 0);
    return LayerCount(workspace) == 1 && workspace.document.Coverage.empty() && only.visible &&
           only.opacity == 255;
}

LayerPlanesView LayerPlanesOf(const Workspace& workspace, int index) {
    const Document& doc = workspace.document;
    const LayerStack& stack = workspace.layers;
    if (index == stack.current || stack.layers.empty()) {
        return {&doc.RBuffer, &doc.GBuffer, &doc.BBuffer,
                doc.Coverage.empty() ? nullptr : &doc.Coverage};
    }
    const LayerPixels& cell =
        *stack.layers[static_cast<std::size_t>(index)].frames[FrameSlot(stack)];
    return {&cell.r, &cell.g, &cell.b, cell.a.empty() ? nullptr : &cell.a};
}

LayerCell CopyCurrentLayer(const Workspace& workspace) {
    const Document& doc = workspace.document;
    return MakeCell({doc.RBuffer, doc.GBuffer, doc.BBuffer, doc.Coverage});
}

void StoreCurrentLayerCell(Workspace& workspace) {
    LayerStack& stack = Stack(workspace);
    if (stack.layers.empty()) {
        return;
    }
    stack.layers[static_cast<std::size_t>(stack.current)].frames[FrameSlot(stack)] =
        CopyCurrentLayer(workspace);
}

void LoadCurrentLayerCell(Workspace& workspace) {
    LayerStack& stack = Stack(workspace);
    Document& doc = workspace.document;
    LayerCell& cell =
        stack.layers[static_cast<std::size_t>(stack.current)].frames[FrameSlot(stack)];
    if (cell.use_count() == 1) {
        // Nothing else (no undo step) holds the cell: its planes move into
        // the document instead of being copied. The current cell is out of
        // date from here on anyway.
        auto& owned = const_cast<LayerPixels&>(*cell);
        doc.RBuffer = std::move(owned.r);
        doc.GBuffer = std::move(owned.g);
        doc.BBuffer = std::move(owned.b);
        doc.Coverage = std::move(owned.a);
        cell.reset();
        return;
    }
    doc.RBuffer = cell->r;
    doc.GBuffer = cell->g;
    doc.BBuffer = cell->b;
    doc.Coverage = cell->a;
}

bool SelectLayer(Workspace& workspace, int index) {
    LayerStack& stack = Stack(workspace);
    if (!ValidLayer(workspace, index)) {
        return false;
    }
    if (index != stack.current) {
        WithStoredCurrent(workspace, [&](LayerStack& s) {
            s.current = index;
            return true;
        });
    }
    return true;
}

bool AddLayer(Workspace& workspace) {
    Layer layer = TransparentLayer(workspace, FreshLayerName(workspace.layers));
    return WithStoredCurrent(workspace, [&](LayerStack& s) {
        s.layers.insert(s.layers.begin() + s.current + 1, std::move(layer));
        s.current += 1;
        return true;
    });
}

bool DuplicateLayer(Workspace& workspace) {
    return WithStoredCurrent(workspace, [&](LayerStack& s) {
        Layer copy = s.layers[static_cast<std::size_t>(s.current)];
        copy.properties.name += " copy";
        s.layers.insert(s.layers.begin() + s.current + 1, std::move(copy));
        s.current += 1;
        return true;
    });
}

bool DeleteLayer(Workspace& workspace, int index) {
    if (!ValidLayer(workspace, index)) {
        return false;
    }
    if (LayerCount(workspace) == 1) {
        workspace.host.prompter.message(kLastLayerMessage);
        return false;
    }
    return WithStoredCurrent(workspace, [&](LayerStack& s) {
        s.layers.erase(s.layers.begin() + index);
        if (s.current > index || s.current == static_cast<int>(s.layers.size())) {
            s.current -= 1;
        }
        return true;
    });
}

bool MoveLayer(Workspace& workspace, int index, int step) {
    return MoveLayerTo(workspace, index, index + step);
}

bool MoveLayerTo(Workspace& workspace, int index, int to) {
    if (!ValidLayer(workspace, index) || !ValidLayer(workspace, to) || index == to) {
        return false;
    }
    return WithStoredCurrent(workspace, [&](LayerStack& s) {
        Layer moving = std::move(s.layers[static_cast<std::size_t>(index)]);
        s.layers.erase(s.layers.begin() + index);
        s.layers.insert(s.layers.begin() + to, std::move(moving));
        // The current layer stays the same layer: the moved one goes to `to`,
        // those it passed shift one place towards where it came from.
        if (s.current == index) {
            s.current = to;
        } else if (index < s.current && s.current <= to) {
            s.current -= 1;
        } else if (to <= s.current && s.current < index) {
            s.current += 1;
        }
        return true;
    });
}

bool MergeDown(Workspace& workspace) {
    const int upper = CurrentLayer(workspace);
    if (upper == 0) {
        workspace.host.prompter.message(kNoLayerBelowMessage);
        return false;
    }
    return WithStoredCurrent(workspace, [&](LayerStack& s) {
        // The lower layer keeps its name and visibility; its opacity goes into
        // its coverage and the result is a plain layer. A hidden layer adds
        // nothing to the result.
        std::vector<LayerCell> merged = MergedFrames(
            workspace, upper - 1, upper, [](const LayerProperties& p) { return p.visible; });
        Layer& lower = s.layers[static_cast<std::size_t>(upper - 1)];
        lower.frames = std::move(merged);
        lower.properties.opacity = 255;
        lower.properties.mode = BlendMode::Normal;
        s.layers.erase(s.layers.begin() + upper);
        s.current = upper - 1;
        return true;
    });
}

bool MergeVisible(Workspace& workspace) {
    const LayerStack& stack = workspace.layers;
    std::vector<int> visible;
    for (int i = 0; i < LayerCount(workspace); ++i) {
        if (stack.layers[static_cast<std::size_t>(i)].properties.visible) {
            visible.push_back(i);
        }
    }
    if (visible.size() < 2) {
        return false;
    }
    return WithStoredCurrent(workspace, [&](LayerStack& s) {
        std::vector<LayerCell> merged =
            MergedFrames(workspace, visible.front(), visible.back(),
                         [](const LayerProperties& p) { return p.visible; });
        Layer& into = s.layers[static_cast<std::size_t>(visible.front())];
        into.frames = std::move(merged);
        into.properties.opacity = 255;
        into.properties.mode = BlendMode::Normal;
        for (auto it = visible.rbegin(); it != visible.rend() - 1; ++it) {
            s.layers.erase(s.layers.begin() + *it);
        }
        s.current = visible.front();
        return true;
    });
}

bool Flatten(Workspace& workspace) {
    return WithStoredCurrent(workspace, [&](LayerStack& s) {
        const Document& doc = workspace.document;
        // The visible layers over opaque white: one plain background layer.
        LayerPixels white{Plane(doc.width, doc.height, 255), Plane(doc.width, doc.height, 255),
                          Plane(doc.width, doc.height, 255), Plane()};
        const LayerProperties plain;
        Layer flat;
        flat.properties.name = kBackgroundLayerName;
        for (std::size_t f = 0; f < s.layers.front().frames.size(); ++f) {
            std::vector<CompositeSource> sources{SourceOf(white, plain)};
            for (const Layer& layer : s.layers) {
                if (layer.properties.visible) {
                    sources.push_back(SourceOf(*layer.frames[f], layer.properties));
                }
            }
            LayerPixels out = TransparentPixels(doc.width, doc.height);
            CompositeSources(sources, {0, 0, doc.width, doc.height}, out);
            out.a = Plane();
            flat.frames.push_back(MakeCell(std::move(out)));
        }
        s.layers.assign(1, std::move(flat));
        s.current = 0;
        return true;
    });
}

bool ClearLayer(Workspace& workspace) {
    if (LayerAt(workspace, CurrentLayer(workspace)).lockPixels) {
        workspace.host.prompter.message(kLayerLockedMessage);
        return false;
    }
    ClearSelectedPixels(workspace);
    Changed(workspace);
    return true;
}

bool LayerFromSelection(Workspace& workspace) {
    const Document& doc = workspace.document;
    LayerPixels pixels{doc.RBuffer, doc.GBuffer, doc.BBuffer, Plane(doc.width, doc.height, 0)};
    const bool selection = doc.AlphaBitsFlag != 0;
    for (int y = 0; y < doc.height; ++y) {
        for (int x = 0; x < doc.width; ++x) {
            const int cover = doc.Coverage.empty() ? 255 : doc.Coverage.row(y)[x];
            const int w = selection ? doc.ABuffer.row(y)[x] : 255;
            pixels.a.row(y)[x] = static_cast<std::uint8_t>((cover * w + 127) / 255);
        }
    }
    Layer layer = TransparentLayer(workspace, FreshLayerName(workspace.layers));
    layer.frames[FrameSlot(workspace.layers)] = MakeCell(std::move(pixels));
    return WithStoredCurrent(workspace, [&](LayerStack& s) {
        s.layers.insert(s.layers.begin() + s.current + 1, std::move(layer));
        s.current += 1;
        return true;
    });
}

bool ChangeLayer(Workspace& workspace, int index, const LayerChange& change) {
    if (!ValidLayer(workspace, index) || workspace.layers.layers.empty()) {
        return false;
    }
    LayerProperties& p = Stack(workspace).layers[static_cast<std::size_t>(index)].properties;
    if (change.name)
        p.name = *change.name;
    if (change.opacity)
        p.opacity = static_cast<std::uint8_t>(std::clamp(*change.opacity, 0, 255));
    if (change.mode)
        p.mode = *change.mode;
    if (change.visible)
        p.visible = *change.visible;
    if (change.lockPixels)
        p.lockPixels = *change.lockPixels;
    if (change.lockAlpha)
        p.lockAlpha = *change.lockAlpha;
    Changed(workspace);
    return true;
}

bool SetLayerPlane(Workspace& workspace, int index, int channel, const Plane& plane) {
    Document& doc = workspace.document;
    if (!ValidLayer(workspace, index) || channel < 0 || channel > 3 ||
        !plane.sameShape(doc.RBuffer)) {
        return false;
    }
    if (index == CurrentLayer(workspace)) {
        std::array<Plane*, 4> planes{&doc.RBuffer, &doc.GBuffer, &doc.BBuffer, &doc.Coverage};
        *planes[static_cast<std::size_t>(channel)] = plane;
    } else {
        LayerStack& stack = Stack(workspace);
        LayerCell& cell = stack.layers[static_cast<std::size_t>(index)].frames[FrameSlot(stack)];
        LayerPixels changed = *cell;
        std::array<Plane*, 4> planes{&changed.r, &changed.g, &changed.b, &changed.a};
        *planes[static_cast<std::size_t>(channel)] = plane;
        cell = MakeCell(std::move(changed));
    }
    Changed(workspace);
    return true;
}

void LoadLayerFramesIntoStore(Workspace& workspace) {
    LoadFramesIntoStore(workspace);
}

void PrepareLayerCells(Workspace& workspace) {
    const int frames = AnimationFrames(workspace);
    Layer& layer = CurrentEntry(workspace);
    if (frames == 0) {
        return;
    }
    layer.frames.resize(static_cast<std::size_t>(frames));
    const bool kept = CellsKept(workspace);
    for (int f = 0; f < frames; ++f) {
        LayerCell& cell = layer.frames[static_cast<std::size_t>(f)];
        if (f == workspace.layers.frame || (kept && cell)) {
            continue;
        }
        LayerPixels pixels = workspace.frames().storedColour(f);
        pixels.a = cell ? cell->a : Plane();
        cell = MakeCell(std::move(pixels));
    }
}

void LayersLeavingFrame(Workspace& workspace) {
    if (CellsKept(workspace)) {
        StoreCurrentLayerCell(workspace);
    }
}

void LayersEnteredFrame(Workspace& workspace, int index) {
    const bool kept = CellsKept(workspace);
    Stack(workspace).frame = index;
    const LayerCell& cell = CurrentEntry(workspace).frames[static_cast<std::size_t>(index)];
    if (kept && cell) {
        workspace.document.Coverage = cell->a;
    }
}

void LayersFrameInserted(Workspace& workspace, int index) {
    for (Layer& layer : Stack(workspace).layers) {
        const LayerCell copy = layer.frames[static_cast<std::size_t>(index)];
        layer.frames.insert(layer.frames.begin() + index + 1, copy);
    }
}

void LayersFrameDeleted(Workspace& workspace, int index) {
    for (Layer& layer : Stack(workspace).layers) {
        layer.frames.erase(layer.frames.begin() + index);
    }
}

void LayersFramesMapped(Workspace& workspace, const std::vector<int>& sources,
                        const std::vector<std::vector<LayerCell>>& given) {
    LayerStack& stack = Stack(workspace);
    for (std::size_t l = 0; l < stack.layers.size(); ++l) {
        Layer& layer = stack.layers[l];
        std::vector<LayerCell> cells(sources.size());
        for (std::size_t i = 0; i < sources.size(); ++i) {
            if (sources[i] >= 0) {
                cells[i] = layer.frames[static_cast<std::size_t>(sources[i])];
            } else {
                cells[i] =
                    i < given.size() && l < given[i].size() ? given[i][l] : layer.frames.front();
            }
        }
        layer.frames = std::move(cells);
    }
}

std::vector<LayerCell> LayerCellsOfFrame(Workspace& workspace, int frame) {
    std::vector<LayerCell> cells;
    for (const Layer& layer : Stack(workspace).layers) {
        cells.push_back(layer.frames[static_cast<std::size_t>(frame)]);
    }
    return cells;
}

std::vector<LayerCell> BlankFrameCells(const Workspace& workspace) {
    const std::size_t layers = workspace.layers.layers.size();
    if (!CellsKept(workspace)) {
        return std::vector<LayerCell>(layers);
    }
    const Document& doc = workspace.document;
    std::vector<LayerCell> cells(layers, TransparentCell(doc));
    cells[0] = MakeCell({Plane(doc.width, doc.height, 0), Plane(doc.width, doc.height, 0),
                         Plane(doc.width, doc.height, 0), Plane()});
    return cells;
}

void LayersFramesMade(Workspace& workspace, int frames, bool copyImage) {
    LayerStack& stack = Stack(workspace);
    const bool kept = CellsKept(workspace);
    const std::vector<LayerCell> blank = BlankFrameCells(workspace);
    for (std::size_t i = 0; i < stack.layers.size(); ++i) {
        Layer& layer = stack.layers[i];
        const LayerCell first = !kept ? nullptr
                                : static_cast<int>(i) == stack.current
                                    ? CopyCurrentLayer(workspace)
                                    : layer.frames[FrameSlot(stack)];
        const LayerCell rest = copyImage ? first : blank[i];
        layer.frames.assign(static_cast<std::size_t>(std::max(frames, 1)), rest);
        layer.frames[0] = first;
    }
    stack.frame = 0;
}

void LayersFramesFreed(Workspace& workspace) {
    LayerStack& stack = Stack(workspace);
    for (Layer& layer : stack.layers) {
        layer.frames = {layer.frames[std::min(FrameSlot(stack), layer.frames.size() - 1)]};
    }
    stack.frame = 0;
}

void LayersFrameRewritten(Workspace& workspace, int index) {
    if (!CellsKept(workspace)) {
        return;
    }
    Layer& layer = CurrentEntry(workspace);
    if (index < 0) {
        const LayerCell copy = CopyCurrentLayer(workspace);
        layer.frames.assign(layer.frames.size(), copy);
        return;
    }
    if (index == workspace.layers.frame || static_cast<std::size_t>(index) >= layer.frames.size()) {
        return;
    }
    LayerCell& cell = layer.frames[static_cast<std::size_t>(index)];
    LayerPixels pixels = workspace.frames().storedColour(index);
    pixels.a = cell ? cell->a : Plane();
    cell = MakeCell(std::move(pixels));
}

void SaveLayerState(Workspace& workspace, int slot) {
    auto& states = workspace.undo.LayerStates;
    if (slot < 0 || static_cast<std::size_t>(slot) >= states.size()) {
        return;
    }
    states[static_cast<std::size_t>(slot)] = std::make_shared<const LayerSnapshot>(
        LayerSnapshot{workspace.layers, workspace.document.Coverage});
}

void RestoreLayerState(Workspace& workspace, int slot) {
    const auto& states = workspace.undo.LayerStates;
    if (slot < 0 || static_cast<std::size_t>(slot) >= states.size() ||
        !states[static_cast<std::size_t>(slot)]) {
        return;
    }
    const LayerSnapshot& snapshot = *states[static_cast<std::size_t>(slot)];
    const bool keptBefore = CellsKept(workspace);
    const int frame = workspace.layers.frame;
    workspace.layers = snapshot.stack;
    workspace.layers.frame = frame;
    // Frames inserted or deleted since are no undo steps: every layer keeps
    // one cell per frame there is now.
    const auto frames = static_cast<std::size_t>(std::max(AnimationFrames(workspace), 1));
    for (Layer& layer : workspace.layers.layers) {
        layer.frames.resize(frames, layer.frames.front());
    }
    workspace.document.Coverage = snapshot.coverage;
    // The frame store may hold another layer's frames than the restored
    // current one; with one opaque layer on both sides it holds the right ones.
    if (AnimationFrames(workspace) > 0 && (keptBefore || CellsKept(workspace))) {
        LoadFramesIntoStore(workspace);
    }
    Changed(workspace);
}

bool LayerStateMatches(const Workspace& workspace, int slot) {
    const auto& states = workspace.undo.LayerStates;
    if (slot < 0 || static_cast<std::size_t>(slot) >= states.size() ||
        !states[static_cast<std::size_t>(slot)]) {
        return true;
    }
    const LayerSnapshot& snapshot = *states[static_cast<std::size_t>(slot)];
    const LayerStack& live = workspace.layers;
    if (snapshot.stack.current != live.current ||
        snapshot.stack.layers.size() != live.layers.size()) {
        return false;
    }
    for (std::size_t i = 0; i < live.layers.size(); ++i) {
        const Layer& a = snapshot.stack.layers[i];
        const Layer& b = live.layers[i];
        if (!(a.properties == b.properties)) {
            return false;
        }
        if (static_cast<int>(i) != live.current && a.frames != b.frames) {
            return false;
        }
    }
    const Plane& coverage = workspace.document.Coverage;
    return snapshot.coverage.sameShape(coverage) &&
           (coverage.empty() ||
            std::memcmp(snapshot.coverage.data(), coverage.data(), coverage.byteCount()) == 0);
}

}  // namespace wib
