// SPDX-License-Identifier: GPL-3.0-or-later
// Making another layer current against copying the same planes into memory
// that has already been touched.

#include <benchmark/benchmark.h>

#include <cstring>
#include <vector>

#include "bench/figures.h"
#include "core/layer_edit.h"
#include "core/undo.h"
#include "tests/support/test_host.h"

namespace {

// Two switches per iteration, there and back; with `shared` an undo step
// holds every layer's pixels, so that the incoming layer must be copied.
void LayerSwitch(benchmark::State& state, int width, int height, bool shared) {
    wib::testing::TestHost host;
    host.setUndoBudget(64);
    host.newDocument(width, height);
    wib::AddLayer(host.workspace);
    if (shared) {
        wib::SelectLayer(host.workspace, 0);
        wib::SaveUndo(host.workspace);
        wib::SelectLayer(host.workspace, 1);
        wib::SaveUndo(host.workspace);
    }
    for (auto _ : state) {
        wib::SelectLayer(host.workspace, 0);
        wib::SelectLayer(host.workspace, 1);
    }
    state.SetBytesProcessed(state.iterations() * 2 * 4 *
                            static_cast<std::int64_t>(host.workspace.document.RBuffer.byteCount()));
}

// The four planes of a layer copied in and the four of the other copied
// back: the work a switch would do if it copied both ways.
void PlaneCopies(benchmark::State& state, int width, int height) {
    const std::size_t planeBytes = static_cast<std::size_t>(width + 1) * (height + 1);
    std::vector<std::vector<std::uint8_t>> layerA(4, std::vector<std::uint8_t>(planeBytes, 7));
    std::vector<std::vector<std::uint8_t>> layerB(4, std::vector<std::uint8_t>(planeBytes, 9));
    std::vector<std::vector<std::uint8_t>> document(4, std::vector<std::uint8_t>(planeBytes, 0));
    for (auto _ : state) {
        for (int p = 0; p < 4; ++p) {
            std::memcpy(document[p].data(), layerA[p].data(), planeBytes);
        }
        for (int p = 0; p < 4; ++p) {
            std::memcpy(document[p].data(), layerB[p].data(), planeBytes);
        }
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * 2 * 4 * static_cast<std::int64_t>(planeBytes));
}

BENCHMARK_CAPTURE(LayerSwitch, 1080p, 1920, 1080, false)->Name("layer_switch_1080p")->UseRealTime();
BENCHMARK_CAPTURE(LayerSwitch, shared1080p, 1920, 1080, true)
    ->Name("layer_switch_shared_1080p")
    ->UseRealTime();
BENCHMARK_CAPTURE(PlaneCopies, 1080p, 1920, 1080)->Name("memcpy_layer_1080p")->UseRealTime();

}  // namespace

int main(int argc, char** argv) {
    wib::bench::RegisterFigure("layer_switch_1080p", "layer_switch_1080p", "memcpy_layer_1080p",
                               0.8);
    return wib::bench::RunAndReport(argc, argv);
}
