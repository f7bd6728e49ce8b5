// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QRect>
#include <map>
#include <vector>

#include "core/layer_stack.h"
#include "core/onion_state.h"

namespace wib {

class FrameStore;
class Workspace;

// The canvas's onion skin and light table: the other frames the settings
// name, tinted and faded, laid over the current picture as it is drawn. The
// pixels of the document are only read. A layered frame's composite is kept
// between redraws and made again only when one of its cells or a layer's
// look changed; a flat frame is read from the frame store as it stands.
class OnionView {
  public:
    explicit OnionView(const Workspace& workspace) : workspace_(workspace) {}

    // The animation's frames; null (the start) shows nothing.
    void attach(const FrameStore* store) { store_ = store; }

    // The frames to lay over the current one now, bottom first; none while
    // the animation plays.
    std::vector<OnionFrame> frames() const;

    // The picture `r`, `g`, `b` (with straight coverage `a`, or opaque when
    // null) within `area`, with `frames` laid over it: planes of the
    // picture's shape, valid within `area` until the next call.
    const LayerPixels& blend(const Plane& r, const Plane& g, const Plane& b, const Plane* a,
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

    const Workspace& workspace_;
    const FrameStore* store_ = nullptr;
    std::map<int, Composite> composites_;
    LayerPixels out_;
};

}  // namespace wib
