// SPDX-License-Identifier: GPL-3.0-or-later
// Targa decoding straight into the planes and encoding from them, against
// stb_image's decode plus the split into planes and stb_image_write's writer
// fed from the planes, all in memory, on a 3840 x 2160 picture.

#include <benchmark/benchmark.h>
#include <stb/stb_image.h>
#include <stb/stb_image_write.h>

#include <random>
#include <vector>

#include "bench/figures.h"
#include "fileio/byte_source.h"
#include "fileio/image_load.h"
#include "fileio/targa_decode.h"
#include "fileio/targa_writer.h"

namespace {

constexpr int kWidth = 3840;
constexpr int kHeight = 2160;

struct Picture {
    wib::Plane r{kWidth, kHeight}, g{kWidth, kHeight}, b{kWidth, kHeight}, a{kWidth, kHeight, 255};
};

// Something like a painting: flat areas, gradients and grain, so that the
// RLE file has runs and literal stretches alike.
const Picture& Source() {
    static const Picture picture = [] {
        Picture p;
        std::mt19937 random(7);
        for (int y = 0; y < kHeight; ++y) {
            for (int x = 0; x < kWidth; ++x) {
                const bool flat = ((x / 240) + (y / 270)) % 2 == 0;
                const int grain = flat ? 0 : static_cast<int>(random() % 24);
                p.r.row(y)[x] = static_cast<std::uint8_t>(flat ? 40 : (x / 16 + grain) & 255);
                p.g.row(y)[x] = static_cast<std::uint8_t>(flat ? 90 : (y / 9 + grain) & 255);
                p.b.row(y)[x] = static_cast<std::uint8_t>(flat ? 160 : (x + y) / 24 + grain);
            }
        }
        return p;
    }();
    return picture;
}

std::vector<std::uint8_t> Interleaved(const Picture& p) {
    std::vector<std::uint8_t> rgb(static_cast<std::size_t>(kWidth) * kHeight * 3);
    for (int y = 0; y < kHeight; ++y) {
        std::uint8_t* out = rgb.data() + static_cast<std::size_t>(y) * kWidth * 3;
        for (int x = 0; x < kWidth; ++x) {
            out[3 * x] = p.r.row(y)[x];
            out[3 * x + 1] = p.g.row(y)[x];
            out[3 * x + 2] = p.b.row(y)[x];
        }
    }
    return rgb;
}

void Append(void* context, void* data, int size) {
    auto* bytes = static_cast<std::vector<std::uint8_t>*>(context);
    const auto* begin = static_cast<const std::uint8_t*>(data);
    bytes->insert(bytes->end(), begin, begin + size);
}

const std::vector<std::uint8_t>& RawFile() {
    static const std::vector<std::uint8_t> file = [] {
        const Picture& p = Source();
        wib::MemorySink sink;
        wib::EncodeTarga({p.r, p.g, p.b, p.a}, kWidth, kHeight, wib::kTargaFormat24,
                         wib::TargaRowOrder::BottomFirst, sink);
        return sink.bytes;
    }();
    return file;
}

const std::vector<std::uint8_t>& RleFile() {
    static const std::vector<std::uint8_t> file = [] {
        std::vector<std::uint8_t> bytes;
        stbi_write_tga_with_rle = 1;
        stbi_write_tga_to_func(Append, &bytes, kWidth, kHeight, 3, Interleaved(Source()).data());
        return bytes;
    }();
    return file;
}

void OursDecode(benchmark::State& state, const std::vector<std::uint8_t>& file) {
    Picture out;
    const auto header =
        wib::ParseTargaHeader(std::span<const std::uint8_t>(file).first<wib::kTargaHeaderSize>());
    for (auto _ : state) {
        wib::MemorySource source(
            std::span<const std::uint8_t>(file).subspan(wib::kTargaHeaderSize + header.idLength));
        wib::DecodeTarga(header, source, {out.r, out.g, out.b, out.a},
                         wib::TargaRowOrder::BottomFirst, {});
        wib::ApplyLoadedAlpha(out.a, kWidth, kHeight, false);
        benchmark::DoNotOptimize(out.r.data());
    }
}

void StbDecode(benchmark::State& state, const std::vector<std::uint8_t>& file) {
    Picture out;
    for (auto _ : state) {
        int width = 0, height = 0, channels = 0;
        stbi_uc* rgb = stbi_load_from_memory(file.data(), static_cast<int>(file.size()), &width,
                                             &height, &channels, 3);
        for (int y = 0; y < height; ++y) {
            const stbi_uc* in = rgb + static_cast<std::size_t>(y) * width * 3;
            std::uint8_t* r = out.r.row(y);
            std::uint8_t* g = out.g.row(y);
            std::uint8_t* b = out.b.row(y);
            for (int x = 0; x < width; ++x) {
                r[x] = in[3 * x];
                g[x] = in[3 * x + 1];
                b[x] = in[3 * x + 2];
            }
        }
        out.a.fill(255);
        stbi_image_free(rgb);
        benchmark::DoNotOptimize(out.r.data());
    }
}

void OursEncode(benchmark::State& state) {
    const Picture& p = Source();
    wib::MemorySink sink;
    sink.bytes.reserve(RawFile().size());
    for (auto _ : state) {
        sink.bytes.clear();
        wib::EncodeTarga({p.r, p.g, p.b, p.a}, kWidth, kHeight, wib::kTargaFormat24,
                         wib::TargaRowOrder::BottomFirst, sink);
        benchmark::DoNotOptimize(sink.bytes.data());
    }
}

void StbEncode(benchmark::State& state) {
    const Picture& p = Source();
    std::vector<std::uint8_t> bytes;
    bytes.reserve(RawFile().size());
    for (auto _ : state) {
        bytes.clear();
        stbi_write_tga_with_rle = 0;
        const std::vector<std::uint8_t> rgb = Interleaved(p);
        stbi_write_tga_to_func(Append, &bytes, kWidth, kHeight, 3, rgb.data());
        benchmark::DoNotOptimize(bytes.data());
    }
}

BENCHMARK_CAPTURE(OursDecode, raw, RawFile())->Name("tga_raw_decode_2160p")->UseRealTime();
BENCHMARK_CAPTURE(StbDecode, raw, RawFile())->Name("stb_raw_decode_2160p")->UseRealTime();
BENCHMARK_CAPTURE(OursDecode, rle, RleFile())->Name("tga_rle_decode_2160p")->UseRealTime();
BENCHMARK_CAPTURE(StbDecode, rle, RleFile())->Name("stb_rle_decode_2160p")->UseRealTime();
BENCHMARK(OursEncode)->Name("tga_raw_encode_2160p")->UseRealTime();
BENCHMARK(StbEncode)->Name("stb_raw_encode_2160p")->UseRealTime();

}  // namespace

int main(int argc, char** argv) {
    wib::bench::RegisterFigure("tga_raw_decode_2160p", "tga_raw_decode_2160p",
                               "stb_raw_decode_2160p", 2.0);
    wib::bench::RegisterFigure("tga_rle_decode_2160p", "tga_rle_decode_2160p",
                               "stb_rle_decode_2160p", 2.0);
    wib::bench::RegisterFigure("tga_raw_encode_2160p", "tga_raw_encode_2160p",
                               "stb_raw_encode_2160p", 1.0);
    return wib::bench::RunAndReport(argc, argv);
}
