// SPDX-License-Identifier: GPL-3.0-or-later
// Flood fill and selection feathering on 3840 x 2160 images against OpenCV's
// floodFill and GaussianBlur on the same pixels.

#include <benchmark/benchmark.h>

#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include <array>
#include <random>
#include <thread>
#include <utility>
#include <vector>

#include "bench/figures.h"
#include "filters/parallel_rows.h"
#include "pixel/flood_fill.h"
#include "pixel/matte_feather.h"
#include "pixel/matte_shapes.h"

namespace {

constexpr int kWidth = 3840;
constexpr int kHeight = 2160;
// Our planes carry the program's spare column and row.
constexpr int kStride = kWidth + 1;
constexpr int kTolerance = 32;
// The maze's cells: three pixels of corridor and a one-pixel wall.
constexpr int kCell = 4;

int Threads() {
    return static_cast<int>(std::max(1u, std::thread::hardware_concurrency()));
}

// One image in both forms: three planes for us, interleaved for OpenCV.
struct FillImage {
    std::array<std::vector<std::uint8_t>, 3> planes;
    std::vector<std::uint8_t> mask;
    cv::Mat theirs;
    cv::Mat theirsMask;

    FillImage() : theirs(kHeight, kWidth, CV_8UC3, cv::Scalar(255, 255, 255)) {
        for (auto& plane : planes) {
            plane.assign(static_cast<std::size_t>(kStride) * (kHeight + 1), 255);
        }
        mask.resize(planes[0].size());
        theirsMask = cv::Mat(kHeight + 2, kWidth + 2, CV_8UC1);
    }
    void wall(int x, int y) {
        for (auto& plane : planes) {
            plane[static_cast<std::size_t>(y) * kStride + x] = 0;
        }
        theirs.at<cv::Vec3b>(y, x) = cv::Vec3b(0, 0, 0);
    }
    wib::RgbPlanes source() const {
        return {{planes[0].data(), planes[1].data(), planes[2].data()}, kStride, kWidth, kHeight};
    }
};

// A perfect maze carved by a depth-first walk with its own stack: every cell
// reachable, corridors three pixels wide between one-pixel walls.
FillImage MakeMaze() {
    FillImage image;
    const int columns = kWidth / kCell;
    const int rows = kHeight / kCell;
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            if (x % kCell == kCell - 1 || y % kCell == kCell - 1) {
                image.wall(x, y);
            }
        }
    }
    std::vector<bool> seen(static_cast<std::size_t>(columns) * rows, false);
    std::vector<std::pair<int, int>> stack{{0, 0}};
    seen[0] = true;
    std::mt19937 random(5);
    const int steps[4][2] = {{1, 0}, {-1, 0}, {0, 1}, {0, -1}};
    while (!stack.empty()) {
        const auto [cx, cy] = stack.back();
        int options[4];
        int count = 0;
        for (int d = 0; d < 4; ++d) {
            const int nx = cx + steps[d][0], ny = cy + steps[d][1];
            if (nx >= 0 && ny >= 0 && nx < columns && ny < rows &&
                !seen[static_cast<std::size_t>(ny) * columns + nx]) {
                options[count++] = d;
            }
        }
        if (count == 0) {
            stack.pop_back();
            continue;
        }
        const int d = options[random() % count];
        const int nx = cx + steps[d][0], ny = cy + steps[d][1];
        // Open the wall between the two cells.
        const int wallX = steps[d][0] == 0 ? -1 : std::max(cx, nx) * kCell - 1;
        const int wallY = steps[d][1] == 0 ? -1 : std::max(cy, ny) * kCell - 1;
        for (int i = 0; i < kCell - 1; ++i) {
            const int x = wallX >= 0 ? wallX : cx * kCell + i;
            const int y = wallY >= 0 ? wallY : cy * kCell + i;
            for (auto& plane : image.planes) {
                plane[static_cast<std::size_t>(y) * kStride + x] = 255;
            }
            image.theirs.at<cv::Vec3b>(y, x) = cv::Vec3b(255, 255, 255);
        }
        seen[static_cast<std::size_t>(ny) * columns + nx] = true;
        stack.emplace_back(nx, ny);
    }
    return image;
}

FillImage& Open() {
    static FillImage image;
    return image;
}

FillImage& Maze() {
    static FillImage image = MakeMaze();
    return image;
}

void OursFill(benchmark::State& state, FillImage& (*image)()) {
    FillImage& fill = image();
    std::size_t filled = 0;
    for (auto _ : state) {
        filled = wib::FindRegion(fill.source(), 1, 1, {.tolerance = kTolerance}, fill.mask.data(),
                                 kStride);
        benchmark::DoNotOptimize(fill.mask.data());
    }
    state.counters["pixels"] = static_cast<double>(filled);
    state.SetItemsProcessed(state.iterations() * kWidth * kHeight);
}

void TheirsFill(benchmark::State& state, FillImage& (*image)()) {
    FillImage& fill = image();
    const cv::Scalar range(kTolerance, kTolerance, kTolerance);
    int filled = 0;
    for (auto _ : state) {
        // The mask holds the region, as ours does; it must start clear.
        fill.theirsMask.setTo(0);
        filled =
            cv::floodFill(fill.theirs, fill.theirsMask, {1, 1}, cv::Scalar(), nullptr, range, range,
                          4 | cv::FLOODFILL_FIXED_RANGE | cv::FLOODFILL_MASK_ONLY | (255 << 8));
        benchmark::DoNotOptimize(fill.theirsMask.data);
    }
    state.counters["pixels"] = filled;
    state.SetItemsProcessed(state.iterations() * kWidth * kHeight);
}

// A soft-edged ellipse matte, the shape a feathered selection starts from.
struct Matte {
    Matte() : ours(static_cast<std::size_t>(kStride) * (kHeight + 1)), out(ours.size()) {
        wib::EllipseMatte({ours.data(), kStride, kWidth, kHeight}, {400, 200, 3000, 1700}, true);
        theirs = cv::Mat(kHeight, kWidth, CV_8UC1);
        for (int y = 0; y < kHeight; ++y) {
            for (int x = 0; x < kWidth; ++x) {
                theirs.at<std::uint8_t>(y, x) = ours[static_cast<std::size_t>(y) * kStride + x];
            }
        }
    }
    std::vector<std::uint8_t> ours;
    std::vector<std::uint8_t> out;
    cv::Mat theirs;
    cv::Mat theirsOut;
};

Matte& SelectionMatte() {
    static Matte matte;
    return matte;
}

constexpr double kFeatherRadius = 20;

void OursFeather(benchmark::State& state) {
    Matte& matte = SelectionMatte();
    const int threads = Threads();
    for (auto _ : state) {
        wib::ParallelRows(threads, kHeight, [&](int first, int end) {
            wib::FeatherMatte({matte.ours.data(), kStride, kWidth, kHeight},
                              {matte.out.data(), kStride, kWidth, kHeight}, kFeatherRadius, first,
                              end);
        });
        benchmark::DoNotOptimize(matte.out.data());
    }
    state.SetBytesProcessed(state.iterations() * kWidth * kHeight);
}

void TheirsFeather(benchmark::State& state) {
    Matte& matte = SelectionMatte();
    cv::setNumThreads(Threads());
    const double sigma = kFeatherRadius / 2;
    for (auto _ : state) {
        cv::GaussianBlur(matte.theirs, matte.theirsOut, {0, 0}, sigma, sigma, cv::BORDER_REPLICATE);
        benchmark::DoNotOptimize(matte.theirsOut.data);
    }
    state.SetBytesProcessed(state.iterations() * kWidth * kHeight);
}

}  // namespace

BENCHMARK_CAPTURE(OursFill, open, Open)->Name("fill_open")->UseRealTime();
BENCHMARK_CAPTURE(TheirsFill, open, Open)->Name("cv_fill_open")->UseRealTime();
BENCHMARK_CAPTURE(OursFill, maze, Maze)->Name("fill_maze")->UseRealTime();
BENCHMARK_CAPTURE(TheirsFill, maze, Maze)->Name("cv_fill_maze")->UseRealTime();
BENCHMARK(OursFeather)->Name("feather_r20")->UseRealTime();
BENCHMARK(TheirsFeather)->Name("cv_gaussian_s10")->UseRealTime();

int main(int argc, char** argv) {
    using wib::bench::RegisterFigure;
    RegisterFigure("flood_fill_open_2160p", "fill_open", "cv_fill_open", 1.0);
    RegisterFigure("flood_fill_maze_2160p", "fill_maze", "cv_fill_maze", 1.0);
    RegisterFigure("select_feather_r20_2160p", "feather_r20", "cv_gaussian_s10", 2.0);
    return wib::bench::RunAndReport(argc, argv);
}
