// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <utility>

#include "core/onion_state.h"

namespace wib {

// How the canvas shows the image: not part of the image, not saved for undo.
// The grid the canvas draws over the image, every spacingX by spacingY image
// pixels from the top left corner.
struct GridState {
    bool shown = false;
    int spacingX = 16;
    int spacingY = 16;
};

struct ViewState {
    int zoom = 100;  // percent; 100 = one image pixel per screen pixel
    // The image point kept in view across a resize; -1 lets the canvas centre it.
    float anchorX = -1.0f;
    float anchorY = -1.0f;

    GridState grid;
    OnionState onion;

    // The view a document gets when its planes are made anew; the grid and
    // the onion skin's settings stay, the pinned frames go with the frames.
    void reset() {
        const GridState keptGrid = grid;
        OnionState keptOnion = onion;
        *this = ViewState{};
        grid = keptGrid;
        onion = std::move(keptOnion);
        onion.pinned.clear();
    }
    float scale() const { return zoom / 100.0f; }
};

}  // namespace wib
