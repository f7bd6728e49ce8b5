// SPDX-License-Identifier: GPL-3.0-or-later
// The window kernels on a 3840 x 2160 image of three planes against OpenCV's
// filters on the same planes, both sides on the same number of threads.

#include <benchmark/benchmark.h>

#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include <array>
#include <functional>
#include <random>
#include <thread>
#include <vector>

#include "bench/figures.h"
#include "filters/parallel_rows.h"
#include "pixel/box_blur.h"
#include "pixel/convolve.h"
#include "pixel/gaussian.h"
#include "pixel/rank.h"

namespace {

constexpr int kWidth = 3840;
constexpr int kHeight = 2160;
// Our planes carry the program's spare column and row.
constexpr int kStride = kWidth + 1;

int Threads() {
    return static_cast<int>(std::max(1u, std::thread::hardware_concurrency()));
}

// Three planes of smooth random texture: neither flat (which flatters
// median searches) nor pure noise.
struct Planes {
    Planes() {
        std::mt19937 random(1);
        for (int c = 0; c < 3; ++c) {
            ours[c].resize(static_cast<std::size_t>(kStride) * (kHeight + 1));
            out[c].resize(ours[c].size());
            theirs[c] = cv::Mat(kHeight, kWidth, CV_8UC1);
            theirsOut[c] = cv::Mat(kHeight, kWidth, CV_8UC1);
            for (int y = 0; y <= kHeight; ++y) {
                for (int x = 0; x <= kWidth; ++x) {
                    const int v = (x * (c + 1) / 7 + y / 5 + static_cast<int>(random() % 40)) % 256;
                    ours[c][static_cast<std::size_t>(y) * kStride + x] =
                        static_cast<std::uint8_t>(v);
                    if (x < kWidth && y < kHeight) {
                        theirs[c].at<std::uint8_t>(y, x) = static_cast<std::uint8_t>(v);
                    }
                }
            }
        }
    }
    std::array<std::vector<std::uint8_t>, 3> ours;
    std::array<std::vector<std::uint8_t>, 3> out;
    std::array<cv::Mat, 3> theirs;
    std::array<cv::Mat, 3> theirsOut;
};

Planes& Image() {
    static Planes planes;
    return planes;
}

void Ours(benchmark::State& state, const std::function<void(const wib::PlaneBand&)>& kernel) {
    Planes& image = Image();
    const int threads = Threads();
    for (auto _ : state) {
        wib::ParallelRows(threads, kHeight, [&](int first, int end) {
            for (int c = 0; c < 3; ++c) {
                kernel({image.ours[c].data(), image.out[c].data(), kStride, kWidth, kHeight, first,
                        end});
            }
        });
        benchmark::DoNotOptimize(image.out[0].data());
    }
    state.SetBytesProcessed(state.iterations() * 3LL * kWidth * kHeight);
}

void Theirs(benchmark::State& state, const std::function<void(const cv::Mat&, cv::Mat&)>& filter) {
    Planes& image = Image();
    cv::setNumThreads(Threads());
    for (auto _ : state) {
        for (int c = 0; c < 3; ++c) {
            filter(image.theirs[c], image.theirsOut[c]);
        }
        benchmark::DoNotOptimize(image.theirsOut[0].data);
    }
    state.SetBytesProcessed(state.iterations() * 3LL * kWidth * kHeight);
}

constexpr int kSharpen[9] = {0, -1, 0, -1, 5, -1, 0, -1, 0};

}  // namespace

BENCHMARK_CAPTURE(Ours, box_r5, [](const wib::PlaneBand& b) { wib::BoxBlur(b, 5); })
    ->Name("box_r5")
    ->UseRealTime();
BENCHMARK_CAPTURE(Theirs, box_r5,
                  [](const cv::Mat& in, cv::Mat& out) {
                      cv::blur(in, out, {11, 11}, {-1, -1}, cv::BORDER_REPLICATE);
                  })
    ->Name("cv_blur_11")
    ->UseRealTime();
BENCHMARK_CAPTURE(Ours, gaussian_s2, [](const wib::PlaneBand& b) { wib::GaussianBlur(b, 2); })
    ->Name("gaussian_s2")
    ->UseRealTime();
BENCHMARK_CAPTURE(Theirs, gaussian_s2,
                  [](const cv::Mat& in, cv::Mat& out) {
                      cv::GaussianBlur(in, out, {0, 0}, 2, 2, cv::BORDER_REPLICATE);
                  })
    ->Name("cv_gaussian_s2")
    ->UseRealTime();
BENCHMARK_CAPTURE(Ours, gaussian_s20, [](const wib::PlaneBand& b) { wib::GaussianBlur(b, 20); })
    ->Name("gaussian_s20")
    ->UseRealTime();
BENCHMARK_CAPTURE(Theirs, gaussian_s20,
                  [](const cv::Mat& in, cv::Mat& out) {
                      cv::GaussianBlur(in, out, {0, 0}, 20, 20, cv::BORDER_REPLICATE);
                  })
    ->Name("cv_gaussian_s20")
    ->UseRealTime();
BENCHMARK_CAPTURE(Ours, conv3x3,
                  [](const wib::PlaneBand& b) { wib::Convolve(b, kSharpen, 3, 1, 0); })
    ->Name("conv3x3")
    ->UseRealTime();
BENCHMARK_CAPTURE(Theirs, conv3x3,
                  [](const cv::Mat& in, cv::Mat& out) {
                      const cv::Mat kernel =
                          (cv::Mat_<float>(3, 3) << 0, -1, 0, -1, 5, -1, 0, -1, 0);
                      cv::filter2D(in, out, -1, kernel, {-1, -1}, 0, cv::BORDER_REPLICATE);
                  })
    ->Name("cv_filter2d_3x3")
    ->UseRealTime();
BENCHMARK_CAPTURE(Ours, median_r2, [](const wib::PlaneBand& b) { wib::MedianFilter(b, 2); })
    ->Name("median_r2")
    ->UseRealTime();
BENCHMARK_CAPTURE(Theirs, median_r2,
                  [](const cv::Mat& in, cv::Mat& out) { cv::medianBlur(in, out, 5); })
    ->Name("cv_median_5")
    ->UseRealTime();
BENCHMARK_CAPTURE(Ours, median_r7, [](const wib::PlaneBand& b) { wib::MedianFilter(b, 7); })
    ->Name("median_r7")
    ->UseRealTime();
BENCHMARK_CAPTURE(Theirs, median_r7,
                  [](const cv::Mat& in, cv::Mat& out) { cv::medianBlur(in, out, 15); })
    ->Name("cv_median_15")
    ->UseRealTime();

int main(int argc, char** argv) {
    using wib::bench::RegisterFigure;
    RegisterFigure("box_blur_r5_2160p", "box_r5", "cv_blur_11", 1.0);
    RegisterFigure("gaussian_s2_2160p", "gaussian_s2", "cv_gaussian_s2", 1.0);
    RegisterFigure("gaussian_s20_2160p", "gaussian_s20", "cv_gaussian_s20", 3.0);
    RegisterFigure("conv3x3_2160p", "conv3x3", "cv_filter2d_3x3", 1.0);
    RegisterFigure("median_r2_2160p", "median_r2", "cv_median_5", 1.0);
    RegisterFigure("median_r7_2160p", "median_r7", "cv_median_15", 1.0);
    return wib::bench::RunAndReport(argc, argv);
}
