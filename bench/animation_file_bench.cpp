// SPDX-License-Identifier: GPL-3.0-or-later
// Saving and opening a stored animation of 100 frames of 1920 x 1080 in
// memory, against LZ4 alone on the same planes in the same run: the
// compressor (LZ4_compress_default, the level the file uses) on each plane's
// pixels already laid out contiguously, and the decompressor
// (LZ4_decompress_safe) of each of the file's blocks into one reused buffer,
// both on one thread. Ours does everything a save or an open does besides the
// disk: the rows gathered, the checksum, the container, fresh planes for the
// picture read; it compresses and decompresses planes on every processor.

#include <benchmark/benchmark.h>
#include <lz4.h>

#include <algorithm>
#include <cstdint>
#include <vector>

#include "bench/figures.h"
#include "fileio/animation_file.h"

namespace {

constexpr int kWidth = 1920;
constexpr int kHeight = 1080;
constexpr int kFrames = 100;
constexpr std::size_t kPixels = static_cast<std::size_t>(kWidth) * kHeight;

// A painting that moves: a sky gradient, a textured ground with grain that
// changes from frame to frame, and a flat figure crossing the picture, over
// full coverage.
void Paint(wib::LayerPixels& layer, int frame, std::uint32_t& seed) {
    const int figureX = 200 + frame * 15;
    for (int y = 0; y < kHeight; ++y) {
        std::uint8_t* r = layer.r.row(y);
        std::uint8_t* g = layer.g.row(y);
        std::uint8_t* b = layer.b.row(y);
        for (int x = 0; x < kWidth; ++x) {
            seed ^= seed << 13;
            seed ^= seed >> 17;
            seed ^= seed << 5;
            const int grain = static_cast<int>(seed & 15);
            const bool figure = x >= figureX && x < figureX + 300 && y >= 500 && y < 900;
            if (figure) {
                r[x] = 200, g[x] = 40, b[x] = 60;
            } else if (y < 600) {
                r[x] = static_cast<std::uint8_t>(80 + y / 6);
                g[x] = static_cast<std::uint8_t>(120 + y / 8);
                b[x] = static_cast<std::uint8_t>(250 - y / 10);
            } else {
                r[x] = static_cast<std::uint8_t>(60 + x / 20 + grain);
                g[x] = static_cast<std::uint8_t>(110 + grain);
                b[x] = static_cast<std::uint8_t>(40 + (x + y) / 40 + grain);
            }
        }
    }
}

const wib::StoredAnimation& Animation() {
    static const wib::StoredAnimation animation = [] {
        wib::StoredAnimation made;
        made.picture.width = kWidth;
        made.picture.height = kHeight;
        made.picture.layers.push_back({"Background"});
        std::uint32_t seed = 12345;
        for (int f = 0; f < kFrames; ++f) {
            wib::LayerPixels layer{wib::Plane(kWidth, kHeight), wib::Plane(kWidth, kHeight),
                                   wib::Plane(kWidth, kHeight), wib::Plane(kWidth, kHeight, 255)};
            Paint(layer, f, seed);
            made.picture.frames.push_back({});
            made.picture.frames.back().push_back(std::move(layer));
            made.exposures.push_back(1);
        }
        made.frameRate = 24;
        made.name = "bench";
        return made;
    }();
    return animation;
}

const std::vector<std::uint8_t>& File() {
    static const std::vector<std::uint8_t> file = [] {
        wib::MemorySink sink;
        wib::EncodeAnimation(Animation(), sink);
        return sink.bytes;
    }();
    return file;
}

// Every plane's pixels without the spare column and row, as the compressor
// alone takes them.
const std::vector<std::vector<std::uint8_t>>& ContiguousPlanes() {
    static const std::vector<std::vector<std::uint8_t>> planes = [] {
        std::vector<std::vector<std::uint8_t>> made;
        for (const auto& frame : Animation().picture.frames) {
            for (const wib::Plane* plane : {&frame[0].r, &frame[0].g, &frame[0].b, &frame[0].a}) {
                auto& pixels = made.emplace_back(kPixels);
                for (int y = 0; y < kHeight; ++y) {
                    std::copy(plane->row(y), plane->row(y) + kWidth,
                              pixels.begin() + static_cast<std::ptrdiff_t>(y) * kWidth);
                }
            }
        }
        return made;
    }();
    return planes;
}

// The file's LZ4 blocks: each frame's section holds the four blocks of its
// one layer, each after its length.
std::vector<std::pair<const char*, int>> Blocks() {
    const std::vector<std::uint8_t>& file = File();
    const auto u32At = [&](std::size_t at) {
        return static_cast<std::uint32_t>(file[at] | file[at + 1] << 8 | file[at + 2] << 16) |
               static_cast<std::uint32_t>(file[at + 3]) << 24;
    };
    std::vector<std::pair<const char*, int>> blocks;
    std::size_t at = wib::kContainerHeaderSize;
    while (at + wib::kChecksumSize < file.size()) {
        const std::uint64_t length = u32At(at + 4) | std::uint64_t{u32At(at + 8)} << 32;
        const std::size_t end = at + wib::kSectionHeaderSize + length;
        if (std::equal(file.begin() + static_cast<std::ptrdiff_t>(at),
                       file.begin() + static_cast<std::ptrdiff_t>(at) + 4, "FRAM")) {
            for (std::size_t block = at + wib::kSectionHeaderSize; block < end;) {
                const auto size = static_cast<int>(u32At(block));
                blocks.emplace_back(reinterpret_cast<const char*>(file.data() + block + 4), size);
                block += 4 + static_cast<std::size_t>(size);
            }
        }
        at = end;
    }
    return blocks;
}

void SetBytes(benchmark::State& state) {
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * kFrames * 4 *
                            static_cast<std::int64_t>(kPixels));
}

void OursSave(benchmark::State& state) {
    const wib::StoredAnimation& animation = Animation();
    wib::MemorySink sink;
    sink.bytes.reserve(File().size());
    for (auto _ : state) {
        sink.bytes.clear();
        wib::EncodeAnimation(animation, sink);
        benchmark::DoNotOptimize(sink.bytes.data());
    }
    SetBytes(state);
}

void CompressorAlone(benchmark::State& state) {
    const auto& planes = ContiguousPlanes();
    std::vector<char> out(static_cast<std::size_t>(LZ4_compressBound(static_cast<int>(kPixels))));
    for (auto _ : state) {
        for (const auto& pixels : planes) {
            benchmark::DoNotOptimize(
                LZ4_compress_default(reinterpret_cast<const char*>(pixels.data()), out.data(),
                                     static_cast<int>(kPixels), static_cast<int>(out.size())));
        }
    }
    SetBytes(state);
}

void OursOpen(benchmark::State& state) {
    const std::vector<std::uint8_t>& file = File();
    for (auto _ : state) {
        auto read = wib::DecodeAnimation(file);
        if (!read) {
            state.SkipWithError(read.message.c_str());
            break;
        }
        benchmark::DoNotOptimize(read.value->picture.frames.data());
    }
    SetBytes(state);
}

void DecompressorAlone(benchmark::State& state) {
    const auto blocks = Blocks();
    std::vector<char> out(kPixels);
    for (auto _ : state) {
        for (const auto& [data, size] : blocks) {
            benchmark::DoNotOptimize(
                LZ4_decompress_safe(data, out.data(), size, static_cast<int>(kPixels)));
        }
    }
    SetBytes(state);
}

BENCHMARK(OursSave)->Name("wta_save_100x1080p")->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(CompressorAlone)
    ->Name("lz4_compress_100x1080p")
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(OursOpen)->Name("wta_open_100x1080p")->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(DecompressorAlone)
    ->Name("lz4_decompress_100x1080p")
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    wib::bench::RegisterFigure("wta_save_100x1080p", "wta_save_100x1080p", "lz4_compress_100x1080p",
                               0.8);
    wib::bench::RegisterFigure("wta_open_100x1080p", "wta_open_100x1080p",
                               "lz4_decompress_100x1080p", 0.8);
    return wib::bench::RunAndReport(argc, argv);
}
