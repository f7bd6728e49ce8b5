// SPDX-License-Identifier: GPL-3.0-or-later
#include "filters/combine_filters.h"

#include <array>
#include <utility>

#include "core/commands.h"
#include "core/workspace.h"
#include "filters/filter_bands.h"
#include "pixel/blend.h"
#include "pixel/combine.h"

namespace wib {

namespace {

constexpr const char* kMenu = "Filter/Combine";
constexpr const char* kSwapMenu = "Image/Swap image";

std::array<Plane*, 3> SwapPlanes(Document& doc) {
    return {&doc.SwapR, &doc.SwapG, &doc.SwapB};
}

// A combine that acts on the planes exactly as its formula says, whatever
// the selection: `row(doc, y)` runs for every row, the rows split into bands.
CommandSpec ExactCombine(std::string id, std::string caption, bool repeats,
                         void (*row)(Document& doc, int y)) {
    CommandSpec spec{std::move(id), std::move(caption), kMenu, "", {}};
    spec.run = [row](Workspace& workspace, const ParamValues&) {
        Document& doc = workspace.document;
        ParallelRows(workspace.threadCount, doc.height, [&doc, row](int first, int end) {
            for (int y = first; y < end; ++y) {
                row(doc, y);
            }
        });
        return true;
    };
    spec.changesImage = true;
    spec.repeatQuestion = repeats ? kRepeatCombineQuestion : "";
    return spec;
}

// A per-channel combine through the selection: target = op(swap, main).
CommandSpec ChannelCombine(std::string id, std::string caption,
                           std::uint8_t (*op)(int swap, int main)) {
    return FilterRow(
        std::move(id), std::move(caption), kMenu, {},
        [op](const FilterContext& context) {
            const auto swap = SwapPlanes(context.workspace.document);
            ForEachRow(context, [&](int y) {
                for (int c = 0; c < 3; ++c) {
                    const std::uint8_t* m = context.source[c].row(y);
                    const std::uint8_t* s = swap[static_cast<std::size_t>(c)]->row(y);
                    std::uint8_t* out = context.target[c].row(y);
                    for (int x = 0; x < context.source.width; ++x) {
                        out[x] = op(s[x], m[x]);
                    }
                }
            });
        },
        kRepeatCombineQuestion);
}

void DifferenceRow(Document& doc, int y) {
    const auto swap = SwapPlanes(doc);
    Plane* main[3] = {&doc.RBuffer, &doc.GBuffer, &doc.BBuffer};
    for (int c = 0; c < 3; ++c) {
        std::uint8_t* m = main[c]->row(y);
        const std::uint8_t* s = swap[static_cast<std::size_t>(c)]->row(y);
        for (int x = 0; x < doc.width; ++x) {
            m[x] = BlendDifference(s[x], m[x]);
        }
    }
}

void MaskRow(Document& doc, int y) {
    BrighterThanSwapMaskRow(doc.RBuffer.row(y), doc.GBuffer.row(y), doc.BBuffer.row(y),
                            doc.SwapR.row(y), doc.SwapG.row(y), doc.SwapB.row(y), doc.width);
}

void SwapToAlphaRow(Document& doc, int y) {
    SwapBrightnessToAlphaRow(doc.ABuffer.row(y), doc.SwapR.row(y), doc.SwapG.row(y),
                             doc.SwapB.row(y), doc.width);
}

void MergeThroughAlphaRow(Document& doc, int y) {
    const auto swap = SwapPlanes(doc);
    Plane* main[3] = {&doc.RBuffer, &doc.GBuffer, &doc.BBuffer};
    for (int c = 0; c < 3; ++c) {
        MergeSwapThroughAlphaRow(main[c]->row(y), swap[static_cast<std::size_t>(c)]->row(y),
                                 doc.ABuffer.row(y), doc.width);
    }
}

CommandSpec SwapCommand(std::string id, std::string caption, std::string menu, std::string shortcut,
                        void (*act)(Document& doc)) {
    CommandSpec spec{std::move(id), std::move(caption), std::move(menu), std::move(shortcut), {}};
    spec.run = [act](Workspace& workspace, const ParamValues&) {
        act(workspace.document);
        return true;
    };
    spec.changesImage = true;
    return spec;
}

}  // namespace

void RegisterCombineCommands(CommandRegistry& registry) {
    // These two write the swap buffer and the selection only: a locked layer
    // may be copied and selected from.
    CommandSpec copy =
        SwapCommand("combine.copy_to_swap", "&Copy to swap", kMenu, "", [](Document& doc) {
            doc.SwapR = doc.RBuffer;
            doc.SwapG = doc.GBuffer;
            doc.SwapB = doc.BBuffer;
        });
    copy.keepsLayerPixels = true;
    registry.add(std::move(copy));
    registry.add(ExactCombine("combine.difference", "&Difference", true, DifferenceRow));
    registry.add(ExactCombine("combine.mask", "Brighter-than-swap &mask", true, MaskRow));
    CommandSpec toAlpha =
        ExactCombine("combine.swap_to_alpha", "Swap brightness to &alpha", false, SwapToAlphaRow);
    toAlpha.keepsLayerPixels = true;
    registry.add(std::move(toAlpha));
    registry.add(ExactCombine("combine.merge_alpha", "Merge swap through alpha", true,
                              MergeThroughAlphaRow));

    const std::pair<const char*, std::uint8_t (*)(int, int)> channels[] = {
        {"add", BlendAdd},       {"subtract", BlendSubtract},      {"multiply", BlendMultiply},
        {"divide", BlendDivide}, {"screen", BlendScreen},          {"lighter", BlendLighten},
        {"darker", BlendDarken}, {"around_grey", BlendAroundGrey}, {"bool", BlendExclusiveOr},
        {"mix", BlendMix},
    };
    const char* captions[] = {"Add",    "Subtract",    "Multiply",
                              "Divide", "Screen",      "Lighter",
                              "Darker", "Around grey", "Bool (exclusive or)",
                              "Mix"};
    for (std::size_t i = 0; i < std::size(channels); ++i) {
        registry.add(ChannelCombine(std::string("combine.") + channels[i].first, captions[i],
                                    channels[i].second));
    }

    registry.add(SwapCommand("swap.exchange", "&Exchange main and swap", kSwapMenu, "Ctrl+Shift+X",
                             [](Document& doc) {
                                 std::swap(doc.RBuffer, doc.SwapR);
                                 std::swap(doc.GBuffer, doc.SwapG);
                                 std::swap(doc.BBuffer, doc.SwapB);
                             }));
    registry.add(
        SwapCommand("swap.to_main", "Copy swap to &main", kSwapMenu, "", [](Document& doc) {
            doc.RBuffer = doc.SwapR;
            doc.GBuffer = doc.SwapG;
            doc.BBuffer = doc.SwapB;
        }));
}

}  // namespace wib
