// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/dab_compositor.h"

#include <algorithm>
#include <cmath>

#include "paint/paint_state.h"
#include "paint/paint_surface.h"
#include "pixel/blend.h"
#include "pixel/dab.h"
#include "pixel/rounding.h"

namespace wib {

namespace {

struct Span {
    int left, top;       // the dab's top-left pixel in the image
    int x0, x1, y0, y1;  // the part inside the planes, inclusive
};

int LogicalWidth(const Dab& dab) {
    return dab.maskWidth > 0 ? dab.maskWidth : static_cast<int>(dab.mask->stride());
}

Span ClipDab(const PaintSurface& surface, const Dab& dab) {
    const Plane& mask = *dab.mask;
    const double x = dab.x;
    const double y = dab.y;
    const int width = LogicalWidth(dab);
    const int height = static_cast<int>(mask.rows());
    Span span;
    span.left = static_cast<int>(std::lround(x)) - width / 2;
    span.top = static_cast<int>(std::lround(y)) - height / 2;
    span.x0 = std::max(span.left, 0);
    span.y0 = std::max(span.top, 0);
    span.x1 = std::min(span.left + width - 1, surface.colour[0]->ubX());
    span.y1 = std::min(span.top + height - 1, surface.colour[0]->ubY());
    return span;
}

bool IgnoresAlpha(const PaintState& paint) {
    return paint.options.alphaUse == AlphaUse::IgnoreSelection;
}

bool PaintsOnAlpha(const PaintState& paint) {
    return paint.options.alphaUse == AlphaUse::PaintOnAlpha;
}

void PlainDab(PaintSurface& surface, const PaintState& paint, const Dab& dab, const Span& span) {
    const Plane& mask = *dab.mask;
    Plane& red = *surface.colour[0];
    const int mx = span.x0 - span.left;
    const int my = span.y0 - span.top;
    int count = span.x1 - span.x0 + 1;
    // Round the rows up to whole vectors where the mask has padding there and
    // the image has room: padded pixels are left as they are.
    const int padded = (count + 31) / 32 * 32;
    if (mx + padded <= static_cast<int>(mask.stride()) && span.x0 + padded - 1 <= red.ubX()) {
        count = padded;
    }
    const std::size_t at =
        static_cast<std::size_t>(span.y0) * red.stride() + static_cast<std::size_t>(span.x0);
    const DabBlock block{
        red.data() + at,
        surface.colour[1]->data() + at,
        surface.colour[2]->data() + at,
        surface.alpha->data() + at,
        red.stride(),
        mask.row(my) + mx,
        mask.stride(),
        count,
        span.y1 - span.y0 + 1,
        dab.opacity,
        paint.options.fade,
        my,
        static_cast<int>(mask.rows()) - 1,
        {static_cast<std::uint8_t>(dab.colour[0]), static_cast<std::uint8_t>(dab.colour[1]),
         static_cast<std::uint8_t>(dab.colour[2])},
        IgnoresAlpha(paint),
        PaintsOnAlpha(paint)};
    if (paint.options.paperTexture && !paint.paper.empty()) {
        const PaperBlock paper{paint.paper.data(), static_cast<int>(paint.paper.stride()),
                               static_cast<int>(paint.paper.rows()),
                               span.y0 - paint.paperRowOffset + dab.paperShiftY,
                               span.x0 + dab.paperShiftX};
        medium_model_helper(block, &paper);
    } else {
        small_model_helper(block);
    }
}

// Every mode but plain paint, pixel by pixel.
class ModePixel {
  public:
    ModePixel(PaintSurface& surface, const PaintState& paint, const Dab& dab)
        : surface_(surface),
          paint_(paint),
          dab_(dab),
          mode_(static_cast<PaintMode>(dab.mode)),
          table_(BlendLookup(PaintModeBlend(dab.mode))) {}

    void apply(int x, int y, int m, int s) {
        const int w = 255 - m;
        const std::array<Plane*, 3>& planes = surface_.colour;
        int source[3];
        for (int c = 0; c < 3; ++c) {
            const int d = planes[c]->row(y)[x];
            const int p = paintColour(c, x, y);
            switch (mode_) {
                case PaintMode::Multiply:
                    source[c] = MaskMix(BlendMultiply(p, d), d, m);
                    break;
                case PaintMode::FromSwap:
                    source[c] = MaskMix(surface_.swap[c]->row(y)[x], d, m);
                    break;
                case PaintMode::Clone:
                case PaintMode::Smear: {
                    int sx = 0, sy = 0;
                    if (!sourcePixel(x, y, sx, sy)) {
                        return;  // the source lies outside the image: leave the pixel
                    }
                    source[c] = MaskMix(planes[c]->row(sy)[sx], d, m);
                    break;
                }
                case PaintMode::Pattern:
                case PaintMode::PatternOffset:
                    source[c] = MaskMix(patternColour(c, x, y, p), d, m);
                    break;
                default:
                    source[c] =
                        table_[static_cast<std::size_t>(w * p / 255)][static_cast<std::size_t>(d)];
                    break;
            }
        }
        if (!IgnoresAlpha(paint_)) {
            s = surface_.alpha->row(y)[x] * s / 255;
        }
        for (int c = 0; c < 3; ++c) {
            std::uint8_t& d = planes[c]->row(y)[x];
            d = static_cast<std::uint8_t>((s * source[c] + (255 - s) * d) / 255);
        }
        if (PaintsOnAlpha(paint_)) {
            std::uint8_t& a = surface_.alpha->row(y)[x];
            a = static_cast<std::uint8_t>((a * 255 + (255 - a) * s + 127) / 255);
        }
    }

  private:
    int paintColour(int c, int x, int y) const {
        if (!paint_.options.paperTexture || paint_.paper.empty()) {
            return dab_.colour[c];
        }
        const int pw = static_cast<int>(paint_.paper.stride());
        const int ph = static_cast<int>(paint_.paper.rows());
        const int py = (((y - paint_.paperRowOffset + dab_.paperShiftY) % ph) + ph) % ph;
        const int px = (x + dab_.paperShiftX) % pw;
        return std::clamp(dab_.colour[c] + paint_.paper.row(py)[px] - 128, 0, 255);
    }

    bool sourcePixel(int x, int y, int& sx, int& sy) const {
        if (mode_ == PaintMode::Clone) {
            sx = x - paint_.cloneOffsetX;
            sy = y - paint_.cloneOffsetY;
        } else {
            sx = RoundHalfEven(x - (dab_.x - paint_.stroke.previousDabX));
            sy = RoundHalfEven(y - (dab_.y - paint_.stroke.previousDabY));
        }
        return sx >= 0 && sy >= 0 && sx < surface_.width && sy < surface_.height;
    }

    int patternColour(int c, int x, int y, int fallback) const {
        const Plane* const* brush = surface_.pattern.data();
        if (brush[c] == nullptr || brush[c]->empty()) {
            return fallback;
        }
        const bool offset = mode_ == PaintMode::PatternOffset;
        const int bw = static_cast<int>(brush[c]->stride());
        const int bh = static_cast<int>(brush[c]->rows());
        const int px = x + (offset ? paint_.patternOffsetX : 0);
        const int py = y + (offset ? paint_.patternOffsetY : 0);
        return brush[c]->row(((py % bh) + bh) % bh)[((px % bw) + bw) % bw];
    }

    PaintSurface& surface_;
    const PaintState& paint_;
    const Dab& dab_;
    PaintMode mode_;
    const BlendTable& table_;
};

void ModeDab(PaintSurface& surface, const PaintState& paint, const Dab& dab, const Span& span) {
    const Plane& mask = *dab.mask;
    ModePixel pixel(surface, paint, dab);
    const DabBlock fade{nullptr,
                        nullptr,
                        nullptr,
                        nullptr,
                        0,
                        nullptr,
                        0,
                        0,
                        0,
                        dab.opacity,
                        paint.options.fade,
                        0,
                        static_cast<int>(mask.rows()) - 1,
                        {0, 0, 0},
                        false,
                        false};
    // Smear reads pixels it may already have written: it walks away from the
    // last dab so that it reads image that this dab has not touched yet.
    const bool smear = dab.mode == static_cast<int>(PaintMode::Smear);
    const bool rightToLeft = smear && std::lround(dab.x) > paint.stroke.previousDabX;
    const bool bottomToTop = smear && std::lround(dab.y) > paint.stroke.previousDabY;
    const int rows = span.y1 - span.y0 + 1;
    const int columns = span.x1 - span.x0 + 1;
    for (int j = 0; j < rows; ++j) {
        const int y = bottomToTop ? span.y1 - j : span.y0 + j;
        const int my = y - span.top;
        const int s = DabRowOpacity(fade, my);
        for (int i = 0; i < columns; ++i) {
            const int x = rightToLeft ? span.x1 - i : span.x0 + i;
            const int m = mask.row(my)[x - span.left];
            if (m < 255) {
                pixel.apply(x, y, m, s);
            }
        }
    }
}

// Where the layer under the dab has no coverage its colour means nothing:
// the dab starts from its own colour there, so that the blend below gives the
// paint's colour and not a mix with whatever the empty pixels held.
void PrepareUncovered(PaintSurface& surface, const Dab& dab, const Span& span) {
    const Plane& mask = *dab.mask;
    for (int y = span.y0; y <= span.y1; ++y) {
        const std::uint8_t* m = mask.row(y - span.top) - span.left;
        const std::uint8_t* cover = surface.coverage->row(y);
        for (int x = span.x0; x <= span.x1; ++x) {
            if (m[x] < 255 && cover[x] == 0) {
                for (int c = 0; c < 3; ++c) {
                    surface.colour[static_cast<std::size_t>(c)]->row(y)[x] =
                        static_cast<std::uint8_t>(
                            std::clamp(dab.colour[static_cast<std::size_t>(c)], 0, 255));
                }
            }
        }
    }
}

// Walks the dab over the layer's coverage with the dab's strength at each
// pixel, weighted by the selection like any paint, and lets `update` give the
// new coverage from the old one and that strength.
template <typename Update>
void AdjustCoverage(PaintSurface& surface, const PaintState& paint, const Dab& dab,
                    const Span& span, Update update) {
    const Plane& mask = *dab.mask;
    const bool weighted = !IgnoresAlpha(paint);
    const int opacity = std::clamp(dab.opacity, 0, 255);
    for (int y = span.y0; y <= span.y1; ++y) {
        const std::uint8_t* m = mask.row(y - span.top) - span.left;
        const std::uint8_t* matte = surface.alpha->row(y);
        std::uint8_t* cover = surface.coverage->row(y);
        for (int x = span.x0; x <= span.x1; ++x) {
            int s = (255 - m[x]) * opacity / 255;
            if (weighted) {
                s = matte[x] * s / 255;
            }
            cover[x] = static_cast<std::uint8_t>(update(cover[x], s));
        }
    }
}

// Painting raises coverage by the same rule as painting on the matte:
// a + (255 - a) * s / 255, rounded.
int RaisedCoverage(int a, int s) {
    return (a * 255 + (255 - a) * s + 127) / 255;
}

// The eraser lowers it: a (255 - s) / 255, rounded.
int LoweredCoverage(int a, int s) {
    return (a * (255 - s) + 127) / 255;
}

}  // namespace

void CompositeDab(PaintSurface& surface, const PaintState& paint, const Dab& dab) {
    if (dab.mask == nullptr || dab.mask->empty() || surface.empty()) {
        return;
    }
    const Span span = ClipDab(surface, dab);
    if (span.x1 < span.x0 || span.y1 < span.y0) {
        return;
    }
    if (dab.erasesCoverage && surface.coverage != nullptr) {
        AdjustCoverage(surface, paint, dab, span, LoweredCoverage);
        return;
    }
    if (surface.coverage != nullptr) {
        PrepareUncovered(surface, dab, span);
    }
    if (dab.mode == static_cast<int>(PaintMode::Plain)) {
        PlainDab(surface, paint, dab, span);
    } else {
        ModeDab(surface, paint, dab, span);
    }
    if (surface.coverage != nullptr) {
        AdjustCoverage(surface, paint, dab, span, RaisedCoverage);
    }
}

}  // namespace wib
