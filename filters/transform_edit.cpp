// SPDX-License-Identifier: GPL-3.0-or-later
#include "filters/transform_edit.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "core/cut_and_crop.h"
#include "core/layer_edit.h"
#include "core/workspace.h"
#include "filters/parallel_rows.h"
#include "pixel/lay_over.h"

namespace wib {

namespace {

// The linear part of the inverse: flips, then 1 / scale, then the turn back.
struct Linear {
    double xx, xy, yx, yy;
};

Linear InverseLinear(const TransformSpec& spec) {
    double c = 0;
    double s = 0;
    // Quarter turns are kept exact, so that they stay whole-pixel copies.
    const double quarters = spec.angle / 90.0;
    if (std::abs(quarters - std::round(quarters)) < 1e-12) {
        const int quarter = ((static_cast<int>(std::round(quarters)) % 4) + 4) % 4;
        constexpr double kCos[4] = {1, 0, -1, 0};
        constexpr double kSin[4] = {0, 1, 0, -1};
        c = kCos[quarter];
        s = kSin[quarter];
    } else {
        const double radians = spec.angle * std::numbers::pi / 180.0;
        c = std::cos(radians);
        s = std::sin(radians);
    }
    const double fx = (spec.flipH ? -1.0 : 1.0) / spec.scaleX;
    const double fy = (spec.flipV ? -1.0 : 1.0) / spec.scaleY;
    // Turning back by the angle: [c s; -s c], rows then scaled.
    return {fx * c, fx * s, -fy * s, fy * c};
}

// The target box: where the source box's corners land, within the image.
AlphaBounds TargetBox(const TransformSpec& spec, const AlphaBounds& box, int width, int height) {
    double minX = 1e300, minY = 1e300, maxX = -1e300, maxY = -1e300;
    for (const CornerPoint& corner : TransformedCorners(spec, box)) {
        minX = std::min(minX, corner.x);
        maxX = std::max(maxX, corner.x);
        minY = std::min(minY, corner.y);
        maxY = std::max(maxY, corner.y);
    }
    // One pixel more on each side for the sampling's reach.
    AlphaBounds target;
    target.left = std::max(0, static_cast<int>(std::floor(minX)) - 1);
    target.top = std::max(0, static_cast<int>(std::floor(minY)) - 1);
    target.right = std::min(width - 1, static_cast<int>(std::ceil(maxX)) + 1);
    target.bottom = std::min(height - 1, static_cast<int>(std::ceil(maxY)) + 1);
    return target;
}

// The block to transform: the box's pixels, covered as the layer is and as
// much as they are selected.
struct Block {
    std::array<Plane, 3> colour;
    Plane coverage;  // empty: opaque everywhere
};

Block LiftBlock(const TransformPlanes& p, const AlphaBounds& box) {
    const int w = box.right - box.left + 1;
    const int h = box.bottom - box.top + 1;
    Block block;
    const Plane* planes[3] = {p.r, p.g, p.b};
    for (int c = 0; c < 3; ++c) {
        block.colour[c] = Plane(w - 1, h - 1);
        for (int y = 0; y < h; ++y) {
            std::copy_n(planes[c]->row(box.top + y) + box.left, w, block.colour[c].row(y));
        }
    }
    if (p.coverage == nullptr && p.matte == nullptr) {
        return block;
    }
    block.coverage = Plane(w - 1, h - 1, 255);
    for (int y = 0; y < h; ++y) {
        std::uint8_t* out = block.coverage.row(y);
        for (int x = 0; x < w; ++x) {
            unsigned value = 255;
            if (p.coverage != nullptr) {
                value = p.coverage->row(box.top + y)[box.left + x];
            }
            if (p.matte != nullptr) {
                value = (value * p.matte->row(box.top + y)[box.left + x] + 127) / 255;
            }
            out[x] = static_cast<std::uint8_t>(value);
        }
    }
    return block;
}

// The place the pixels left: cleared as far as they were selected.
void ClearLifted(const TransformPlanes& p) {
    for (int y = 0; y < p.height; ++y) {
        const std::uint8_t* matte = p.matte != nullptr ? p.matte->row(y) : nullptr;
        if (p.coverage != nullptr) {
            std::uint8_t* coverage = p.coverage->row(y);
            for (int x = 0; x < p.width; ++x) {
                const unsigned keep = matte != nullptr ? 255u - matte[x] : 0u;
                coverage[x] = static_cast<std::uint8_t>((coverage[x] * keep + 127) / 255);
            }
            continue;
        }
        const unsigned fill[3] = {p.clearColour.r, p.clearColour.g, p.clearColour.b};
        Plane* planes[3] = {p.r, p.g, p.b};
        for (int c = 0; c < 3; ++c) {
            std::uint8_t* row = planes[c]->row(y);
            for (int x = 0; x < p.width; ++x) {
                const unsigned take = matte != nullptr ? matte[x] : 255u;
                row[x] =
                    static_cast<std::uint8_t>((fill[c] * take + row[x] * (255 - take) + 127) / 255);
            }
        }
    }
}

AffineMatrix ShiftedTo(AffineMatrix m, const AlphaBounds& target) {
    m.x0 += m.xx * target.left + m.xy * target.top;
    m.y0 += m.yx * target.left + m.yy * target.top;
    return m;
}

AffineSource SourceOf(const std::array<const Plane*, 3>& colour, const Plane* coverage) {
    return {{colour[0]->data(), colour[1]->data(), colour[2]->data()},
            coverage != nullptr ? coverage->data() : nullptr,
            colour[0]->stride(),
            colour[0]->ubX() + 1,
            colour[0]->ubY() + 1};
}

// The selection follows the pixels: its lifted part, transformed, is the new selection.
void MoveMatte(Plane& matte, const AlphaBounds& box, const AlphaBounds& target,
               const AffineMatrix& inverse, Sampling sampling, int threads) {
    const int w = box.right - box.left + 1;
    const int h = box.bottom - box.top + 1;
    Plane lifted(w - 1, h - 1);
    for (int y = 0; y < h; ++y) {
        std::copy_n(matte.row(box.top + y) + box.left, w, lifted.row(y));
    }
    matte.fill(0);
    if (target.empty()) {
        return;
    }
    const int tw = target.right - target.left + 1;
    const int th = target.bottom - target.top + 1;
    // Only the coverage is wanted; the colour rows are scratch.
    std::array<Plane, 3> scratch{Plane(tw - 1, th - 1), Plane(tw - 1, th - 1),
                                 Plane(tw - 1, th - 1)};
    Plane moved(tw - 1, th - 1);
    const AffineSource source = SourceOf({&lifted, &lifted, &lifted}, &lifted);
    const AffineTarget into{{scratch[0].data(), scratch[1].data(), scratch[2].data()},
                            moved.data(),
                            moved.stride(),
                            tw};
    const AffineMatrix shifted = ShiftedTo(inverse, target);
    ResampleRows(threads, source, into, shifted, sampling, th);
    for (int y = 0; y < th; ++y) {
        std::copy_n(moved.row(y), tw, matte.row(target.top + y) + target.left);
    }
}

}  // namespace

void ResampleRows(int threads, const AffineSource& source, const AffineTarget& target,
                  const AffineMatrix& inverse, Sampling sampling, int rows) {
    constexpr int kBandsPerThread = 8;
    ParallelRows(
        threads, rows,
        [&](int first, int end) { AffineResample(source, target, inverse, sampling, first, end); },
        kBandsPerThread);
}

std::array<CornerPoint, 4> TransformedCorners(const TransformSpec& spec, const AlphaBounds& box) {
    const double cx = (box.left + box.right + 1) / 2.0;
    const double cy = (box.top + box.bottom + 1) / 2.0;
    const double radians = spec.angle * std::numbers::pi / 180.0;
    const double c = std::cos(radians);
    const double s = std::sin(radians);
    const double xs[4] = {static_cast<double>(box.left), box.right + 1.0, box.right + 1.0,
                          static_cast<double>(box.left)};
    const double ys[4] = {static_cast<double>(box.top), static_cast<double>(box.top),
                          box.bottom + 1.0, box.bottom + 1.0};
    std::array<CornerPoint, 4> corners{};
    for (int i = 0; i < 4; ++i) {
        // A flip mirrors about the centre before the turn.
        const double px = (xs[i] - cx) * spec.scaleX * (spec.flipH ? -1 : 1);
        const double py = (ys[i] - cy) * spec.scaleY * (spec.flipV ? -1 : 1);
        corners[i] = {cx + spec.dx + c * px - s * py, cy + spec.dy + s * px + c * py};
    }
    return corners;
}

AlphaBounds TransformBox(const TransformPlanes& planes) {
    if (planes.matte != nullptr) {
        return ComputeAlphaBounds(*planes.matte, planes.width, planes.height);
    }
    return {0, 0, planes.width - 1, planes.height - 1};
}

AffineMatrix TransformInverse(const TransformSpec& spec, const AlphaBounds& box) {
    const Linear l = InverseLinear(spec);
    const double cx = (box.left + box.right + 1) / 2.0;
    const double cy = (box.top + box.bottom + 1) / 2.0;
    // Pixel centres: target index j sits at j + 0.5, source index i at i + 0.5.
    const double tx = 0.5 - cx - spec.dx;
    const double ty = 0.5 - cy - spec.dy;
    AffineMatrix m{l.xx, l.xy, l.xx * tx + l.xy * ty + cx - 0.5 - box.left,
                   l.yx, l.yy, l.yx * tx + l.yy * ty + cy - 0.5 - box.top};
    // A whole-pixel mapping off by half a pixel (an odd side turned onto an
    // even one) snaps to whole pixels, so that it stays an exact copy.
    AffineMatrix snapped = m;
    snapped.x0 = std::round(m.x0);
    snapped.y0 = std::round(m.y0);
    return IsExactCopy(snapped) ? snapped : m;
}

bool TransformPixels(const TransformPlanes& p, const TransformSpec& spec, int threads) {
    const AlphaBounds box = TransformBox(p);
    if (box.empty()) {
        return false;
    }
    const Block block = LiftBlock(p, box);
    const AffineMatrix inverse = TransformInverse(spec, box);
    ClearLifted(p);

    const AlphaBounds target = TargetBox(spec, box, p.width, p.height);
    if (!target.empty()) {
        const int tw = target.right - target.left + 1;
        const int th = target.bottom - target.top + 1;
        std::array<Plane, 4> out{Plane(tw - 1, th - 1), Plane(tw - 1, th - 1),
                                 Plane(tw - 1, th - 1), Plane(tw - 1, th - 1)};
        const AffineSource source = SourceOf({&block.colour[0], &block.colour[1], &block.colour[2]},
                                             block.coverage.empty() ? nullptr : &block.coverage);
        const AffineTarget into{
            {out[0].data(), out[1].data(), out[2].data()}, out[3].data(), out[0].stride(), tw};
        const AffineMatrix shifted = ShiftedTo(inverse, target);
        ResampleRows(threads, source, into, shifted, spec.sampling, th);
        for (int y = 0; y < th; ++y) {
            const int row = target.top + y;
            std::uint8_t* coverage =
                p.coverage != nullptr ? p.coverage->row(row) + target.left : nullptr;
            LayOverRow(p.r->row(row) + target.left, p.g->row(row) + target.left,
                       p.b->row(row) + target.left, coverage, out[0].row(y), out[1].row(y),
                       out[2].row(y), out[3].row(y), tw);
        }
    }
    if (p.matte != nullptr) {
        MoveMatte(*p.matte, box, target, inverse, spec.sampling, threads);
    }
    return true;
}

TransformPlanes CurrentTransformPlanes(Workspace& workspace) {
    Document& doc = workspace.document;
    const bool bottom = CurrentLayer(workspace) == 0;
    // An upper layer needs coverage to show where its pixels left.
    if (!bottom && doc.Coverage.empty()) {
        doc.Coverage = Plane(doc.width, doc.height, 255);
    }
    return {&doc.RBuffer,
            &doc.GBuffer,
            &doc.BBuffer,
            bottom ? nullptr : &doc.Coverage,
            doc.AlphaBitsFlag == 255 ? &doc.ABuffer : nullptr,
            doc.width,
            doc.height,
            workspace.colours.secondary};
}

bool TransformSelection(Workspace& workspace, const TransformSpec& spec) {
    if (!TransformPixels(CurrentTransformPlanes(workspace), spec, workspace.threadCount)) {
        workspace.host.prompter.message(kNothingSelected);
        return false;
    }
    return true;
}

}  // namespace wib
