// SPDX-License-Identifier: GPL-3.0-or-later
// A filter repeated over every frame of a 24-frame 1920 x 1080 animation
// against 24 times the same filter on one frame: what the repeat adds (the
// trial taken back, the frame changes) is its cost beyond the filtering.

#include <benchmark/benchmark.h>

#include <filesystem>

#include "anim/frame_store.h"
#include "bench/figures.h"
#include "core/commands.h"
#include "core/workspace.h"
#include "filters/filter_commands.h"
#include "tests/support/test_host.h"

namespace {

constexpr int kFrames = 24;
const std::map<std::string, wib::ParamValue> kRadius5{{"radius", 5LL}};

struct Animation {
    Animation() {
        host.setUndoBudget(64);
        host.newDocument(1920, 1080);
        host.workspace.threadCount = host.system.processorCount();
        wib::RegisterFilterCommands(commands);
        store.CreateAnimation(kFrames, 255);
    }
    wib::testing::TestHost host;
    wib::CommandRegistry commands;
    wib::FrameStore store{host.workspace,
                          std::filesystem::temp_directory_path() / "wib-bench-frames.tmp"};
};

void AllFrames(benchmark::State& state) {
    Animation animation;
    animation.host.prompter.defaultAnswer = 1;  // yes, every frame
    for (auto _ : state) {
        animation.commands.run(animation.host.workspace, "filter.blur.box", kRadius5);
    }
}

void OneFrameTimes24(benchmark::State& state) {
    Animation animation;
    animation.host.prompter.defaultAnswer = 2;  // the current frame only
    for (auto _ : state) {
        for (int i = 0; i < kFrames; ++i) {
            animation.commands.run(animation.host.workspace, "filter.blur.box", kRadius5);
        }
    }
}

}  // namespace

BENCHMARK(AllFrames)->Name("all_frames_box_r5_24x1080p")->Unit(benchmark::kMillisecond);
BENCHMARK(OneFrameTimes24)->Name("one_frame_box_r5_1080p_x24")->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
    wib::bench::RegisterFigure("all_frames_box_r5_24x1080p", "all_frames_box_r5_24x1080p",
                               "one_frame_box_r5_1080p_x24", 0.9);
    return wib::bench::RunAndReport(argc, argv);
}
