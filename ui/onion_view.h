// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QRect>
#include <map>
#include <vector>

#include "core/layer_stack.h"
#include "core/onion_state.h"
#include "ui/onion_picture.h"

namespace wib {

class FrameStore;
class Workspace;

// The canvas's onion skin and light table: the other frames the settings
// name, tinted and faded, laid over the current picture as it is drawn. The
// pixels of the document are only read. A flat picture's onion picture is
// kept between redraws, and only what the user painted since is laid over
// again, until the frames shown, their tints or the stored frames change. A
// layered frame's composite is kept between redraws and made again only when
// one of its cells or a layer's look changed.
class OnionView {
  public:
    explicit OnionView(const Workspace& workspace) : workspace_(workspace) {}

    // The animation's frames; null (the start) shows nothing.
    void attach(const FrameStore* store) { store_ = store; }

    // The frames to lay over the current one now, bottom first; none while
    // the animation plays.
    std::vector<OnionFrame> frames() const;

    // The flat picture `r`, `g`, `b` with `frames` laid over it, as the
    // whole picture the canvas draws, valid within `area` until the next call.
    const QImage& blendFlat(const Plane& r, const Plane& g, const Plane& b,
                            const std::vector<OnionFrame>& frames, const QRect& area);
    // The layers' composite `picture` (straight colour and coverage) within
    // `area`, with `frames` laid over it: planes of the picture's shape,
    // valid within `area` until the next call.
    const LayerPixels& blendLayered(const LayerPixels& picture,
                                    const std::vector<OnionFrame>& frames, const QRect& area);

  private:
    struct Composite {
        std::vector<LayerCell> cells;
        std::vector<LayerProperties> looks;
        LayerPixels pixels;
    };

    // Frame `frame` as a whole picture: the frame store's planes for a flat
    // picture, else the composite of the layers' cells there.
    const LayerPixels* layeredFrame(int frame);
    // Forgets the composites of frames not in `frames`.
    void keepOnly(const std::vector<OnionFrame>& frames);
    // Frame `frame` shown with the look the settings give it.
    OnionLayer layerOf(const OnionPlanes& planes, const OnionFrame& frame) const;

    const Workspace& workspace_;
    const FrameStore* store_ = nullptr;
    std::map<int, Composite> composites_;
    LayerPixels out_;
    OnionPicture flat_;
};

}  // namespace wib
