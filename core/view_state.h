// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <utility>

#include "core/onion_state.h"
#include "core/view_transform.h"

namespace wib {

// How the canvas shows the image: not part of the image, not saved for undo.
// The grid the canvas draws over the image, every spacingX by spacingY image
// pixels from the top left corner.
struct GridState {
    bool shown = false;
    int spacingX = 16;
    int spacingY = 16;
};

// An angle in degrees brought into [0, 360).
double NormalisedAngle(double degrees);

struct ViewState {
    int zoom = 100;  // percent; 100 = one image pixel per screen pixel
    // The picture is shown turned clockwise by `rotation` degrees, [0, 360),
    // and flipped left-right first when `mirrored`; the pixels stay as they are.
    double rotation = 0;
    bool mirrored = false;
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

    // The one mapping from image pixels of a width x height image to canvas
    // window units: zoomed, mirrored and turned, with the turned image's
    // bounding box at the window's top left corner. Every point the canvas
    // shows or takes goes through it.
    ViewTransform imageToWindow(int width, int height) const;
    // The canvas window's size: that bounding box in whole window units.
    std::array<int, 2> windowSize(int width, int height) const;
};

}  // namespace wib
