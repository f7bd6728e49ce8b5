// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "core/packed_colour.h"
#include "core/plane.h"

namespace wib {

// The part of the selection plane that is selected (alpha above 0), inclusive;
// `empty` when nothing is.
struct AlphaBounds {
    int left = 0;
    int top = 0;
    int right = -1;
    int bottom = -1;
    bool empty() const { return right < left || bottom < top; }
};

// The extra planes of depth painting: a height field in single precision,
// -20000.0 where nothing has been laid, and the colour and coverage of the
// wet paint on it. Present only while that option is in use.
struct DepthLayer {
    FloatPlane Height;
    Plane R, G, B, A;
};

// How much of the display the next refresh redraws, from the refresh flags.
enum class RefreshScope { Complete, CanvasOnly, TitleOnly, None };

// The one current image: the planes every tool, filter and plug-in reads and
// writes in place, and the state that travels with them. The brush image, the
// view and the interface lock are kept beside it in the Workspace.
struct Document {
    // Document size in pixels; every main, alpha and swap plane has upper
    // bounds (width, height).
    int width = 0;
    int height = 0;

    Plane RBuffer, GBuffer, BBuffer;  // main buffer
    Plane ABuffer;                    // alpha buffer: selection / matte
    Plane SwapR, SwapG, SwapB;        // swap buffer
    // The current layer's coverage (0 transparent, 255 opaque); empty while
    // the layer is opaque everywhere, as a one-layer picture is.
    Plane Coverage;

    std::optional<DepthLayer> Depth;

    std::uint8_t AlphaBitsFlag = 0;  // 255 while the alpha buffer is in force
    // The image holds changes not yet written to a file.
    bool modified = false;
    // The file the image was opened from or last saved to; empty for a new image.
    std::string FileName;

    std::uint8_t SimpleRefreshFlag = 0;     // 255 = set
    int NoRefreshFlag = 0;                  // -1 = set
    std::uint8_t TitleOnlyRefreshFlag = 0;  // 255 = set
};

RefreshScope CurrentRefreshScope(const Document& document);

// The inclusive box of alpha values above 0 within the image.
AlphaBounds ComputeAlphaBounds(const Plane& alpha, int width, int height);
// The selected part of the document, computed from its alpha buffer now.
AlphaBounds SelectionBounds(const Document& document);

// Fills every pixel of the main planes with the colour.
void ClearImage(Document& document, PackedColour colour);

// Takes `incoming` over in place of `target` without copying, but only when
// both upper bounds match; otherwise changes nothing and returns false.
bool ReplacePlane(Plane& target, Plane&& incoming);

}  // namespace wib
