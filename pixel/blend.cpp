// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/blend.h"

namespace wib {

std::uint8_t Blend(BlendOp op, int paint, int image) {
    switch (op) {
        case BlendOp::Add:
            return BlendAdd(paint, image);
        case BlendOp::Screen:
            return BlendScreen(paint, image);
        case BlendOp::Lighten:
            return BlendLighten(paint, image);
        case BlendOp::Subtract:
            return BlendSubtract(paint, image);
        case BlendOp::Difference:
            return BlendDifference(paint, image);
        case BlendOp::Multiply:
            return BlendMultiply(paint, image);
    }
    return static_cast<std::uint8_t>(image);
}

namespace {

std::array<BlendTable, kBlendOpCount> BuildTables() {
    std::array<BlendTable, kBlendOpCount> tables;
    for (int op = 0; op < kBlendOpCount; ++op) {
        for (int p = 0; p < 256; ++p) {
            for (int d = 0; d < 256; ++d) {
                tables[static_cast<std::size_t>(op)][static_cast<std::size_t>(p)]
                      [static_cast<std::size_t>(d)] = Blend(static_cast<BlendOp>(op), p, d);
            }
        }
    }
    return tables;
}

}  // namespace

const BlendTable& BlendLookup(BlendOp op) {
    static const std::array<BlendTable, kBlendOpCount> tables = BuildTables();
    return tables[static_cast<std::size_t>(op)];
}

}  // namespace wib
