// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/document.h"

#include <algorithm>

namespace wib {

RefreshScope CurrentRefreshScope(const Document& document) {
    if (document.NoRefreshFlag == -1) {
        return RefreshScope::None;
    }
    if (document.TitleOnlyRefreshFlag == 255) {
        return RefreshScope::TitleOnly;
    }
    if (document.SimpleRefreshFlag == 255) {
        return RefreshScope::CanvasOnly;
    }
    return RefreshScope::Complete;
}

AlphaBounds ComputeAlphaBounds(const Plane& alpha, int width, int height) {
    AlphaBounds box{width, height, -1, -1};
    const int columns = std::min(width, alpha.ubX() + 1);
    const int rows = std::min(height, alpha.ubY() + 1);
    for (int y = 0; y < rows; ++y) {
        const std::uint8_t* line = alpha.row(y);
        const std::uint8_t* end = line + columns;
        const auto first = std::find_if(line, end, [](std::uint8_t a) { return a != 0; });
        if (first == end) {
            continue;
        }
        const auto last =
            std::find_if(std::make_reverse_iterator(end), std::make_reverse_iterator(line),
                         [](std::uint8_t a) { return a != 0; });
        box.left = std::min(box.left, static_cast<int>(first - line));
        box.right = std::max(box.right, static_cast<int>(last.base() - line) - 1);
        box.top = std::min(box.top, y);
        box.bottom = y;
    }
    if (box.right < 0) {
        return AlphaBounds{};
    }
    return box;
}

AlphaBounds SelectionBounds(const Document& document) {
    return ComputeAlphaBounds(document.ABuffer, document.width, document.height);
}

void ClearImage(Document& document, PackedColour colour) {
    document.RBuffer.fill(colour.r);
    document.GBuffer.fill(colour.g);
    document.BBuffer.fill(colour.b);
}

bool ReplacePlane(Plane& target, Plane&& incoming) {
    if (!target.sameShape(incoming)) {
        return false;
    }
    target = std::move(incoming);
    return true;
}

}  // namespace wib
