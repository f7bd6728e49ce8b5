// SPDX-License-Identifier: GPL-3.0-or-later
// Saving one undo step against two threads copying the same bytes into
// memory that has already been touched.

#include <benchmark/benchmark.h>

#include <cstring>
#include <memory>
#include <thread>
#include <vector>

#include "bench/figures.h"
#include "core/undo.h"
#include "tests/support/test_host.h"

namespace {

constexpr long long kBudgetMB = 256;

void UndoSave(benchmark::State& state, int width, int height) {
    wib::testing::TestHost host;
    host.setUndoBudget(kBudgetMB);
    host.newDocument(width, height);
    for (auto _ : state) {
        wib::SaveUndo(host.workspace);
    }
    state.SetBytesProcessed(state.iterations() * 4 *
                            static_cast<std::int64_t>(host.workspace.document.RBuffer.byteCount()));
}

// The same four plane copies, two per thread, into as many touched slots as
// the ring has, taken in turn.
void TwoThreadCopy(benchmark::State& state, int width, int height) {
    const std::size_t planeBytes = static_cast<std::size_t>(width + 1) * (height + 1);
    const int slots = wib::UndoRing::SlotCountValue(kBudgetMB, width, height) + 1;
    std::vector<std::vector<std::uint8_t>> sources(4, std::vector<std::uint8_t>(planeBytes, 7));
    std::vector<std::unique_ptr<std::uint8_t[]>> destinations;
    for (int p = 0; p < 4; ++p) {
        destinations.emplace_back(new std::uint8_t[planeBytes * slots]);
        std::memset(destinations.back().get(), 0, planeBytes * slots);
    }
    int slot = 0;
    for (auto _ : state) {
        slot = slot == 0 ? slots - 1 : slot - 1;
        const std::size_t offset = planeBytes * static_cast<std::size_t>(slot);
        auto copyPair = [&](int first) {
            for (int p = first; p < first + 2; ++p) {
                std::memcpy(destinations[p].get() + offset, sources[p].data(), planeBytes);
            }
        };
        std::jthread a(copyPair, 0);
        std::jthread b(copyPair, 2);
    }
    state.SetBytesProcessed(state.iterations() * 4 * static_cast<std::int64_t>(planeBytes));
}

BENCHMARK_CAPTURE(UndoSave, 1080p, 1920, 1080)->Name("undo_save_1080p")->UseRealTime();
BENCHMARK_CAPTURE(TwoThreadCopy, 1080p, 1920, 1080)->Name("memcpy2t_1080p")->UseRealTime();
BENCHMARK_CAPTURE(UndoSave, 2160p, 3840, 2160)->Name("undo_save_2160p")->UseRealTime();
BENCHMARK_CAPTURE(TwoThreadCopy, 2160p, 3840, 2160)->Name("memcpy2t_2160p")->UseRealTime();

}  // namespace

int main(int argc, char** argv) {
    wib::bench::RegisterFigure("undo_save_1080p", "undo_save_1080p", "memcpy2t_1080p", 0.80);
    wib::bench::RegisterFigure("undo_save_2160p", "undo_save_2160p", "memcpy2t_2160p", 0.80);
    return wib::bench::RunAndReport(argc, argv);
}
