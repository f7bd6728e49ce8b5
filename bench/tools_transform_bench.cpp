// SPDX-License-Identifier: GPL-3.0-or-later
// Turning a 1920 x 1080 picture about its centre with bilinear sampling,
// against OpenCV's warpAffine of the same pixels by the same angle.

#include <benchmark/benchmark.h>

#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include <array>
#include <cmath>
#include <numbers>
#include <random>
#include <thread>
#include <vector>

#include "bench/figures.h"
#include "filters/transform_edit.h"
#include "pixel/affine.h"

namespace {

constexpr int kWidth = 1920;
constexpr int kHeight = 1080;
// Our planes carry the program's spare column and row.
constexpr int kStride = kWidth + 1;
constexpr double kAngle = 17.0;

int Threads() {
    return static_cast<int>(std::max(1u, std::thread::hardware_concurrency()));
}

// One noisy picture in both forms: three planes for us, interleaved for OpenCV.
struct Picture {
    std::array<std::vector<std::uint8_t>, 3> planes;
    std::array<std::vector<std::uint8_t>, 4> out;
    cv::Mat theirs;
    cv::Mat theirsOut;

    Picture() : theirs(kHeight, kWidth, CV_8UC3), theirsOut(kHeight, kWidth, CV_8UC3) {
        const std::size_t size = static_cast<std::size_t>(kStride) * (kHeight + 1);
        for (auto& plane : planes) {
            plane.assign(size, 0);
        }
        for (auto& plane : out) {
            plane.assign(size, 0);
        }
        std::mt19937 random(3);
        for (int y = 0; y < kHeight; ++y) {
            for (int x = 0; x < kWidth; ++x) {
                cv::Vec3b& pixel = theirs.at<cv::Vec3b>(y, x);
                for (int c = 0; c < 3; ++c) {
                    const auto value = static_cast<std::uint8_t>(random() & 255);
                    planes[c][static_cast<std::size_t>(y) * kStride + x] = value;
                    pixel[c] = value;
                }
            }
        }
    }
};

Picture& Shared() {
    static Picture picture;
    return picture;
}

// Target pixel centres turned back about the picture's centre onto the source.
wib::AffineMatrix Inverse() {
    const double radians = kAngle * std::numbers::pi / 180.0;
    const double c = std::cos(radians);
    const double s = std::sin(radians);
    const double cx = kWidth / 2.0;
    const double cy = kHeight / 2.0;
    return {c,  s, cx - 0.5 - c * (cx - 0.5) - s * (cy - 0.5),
            -s, c, cy - 0.5 + s * (cx - 0.5) - c * (cy - 0.5)};
}

void OursRotate(benchmark::State& state) {
    Picture& picture = Shared();
    const wib::AffineSource source{
        {picture.planes[0].data(), picture.planes[1].data(), picture.planes[2].data()},
        nullptr,
        kStride,
        kWidth,
        kHeight};
    const wib::AffineTarget target{
        {picture.out[0].data(), picture.out[1].data(), picture.out[2].data()},
        picture.out[3].data(),
        kStride,
        kWidth};
    const wib::AffineMatrix inverse = Inverse();
    for (auto _ : state) {
        wib::ResampleRows(Threads(), source, target, inverse, wib::Sampling::Bilinear, kHeight);
        benchmark::DoNotOptimize(picture.out[0].data());
    }
    state.SetItemsProcessed(state.iterations() * kWidth * kHeight);
}

void TheirsRotate(benchmark::State& state) {
    Picture& picture = Shared();
    cv::setNumThreads(Threads());
    const cv::Mat turn = cv::getRotationMatrix2D(
        cv::Point2f((kWidth - 1) / 2.0f, (kHeight - 1) / 2.0f), -kAngle, 1.0);
    for (auto _ : state) {
        cv::warpAffine(picture.theirs, picture.theirsOut, turn, picture.theirs.size(),
                       cv::INTER_LINEAR, cv::BORDER_CONSTANT);
        benchmark::DoNotOptimize(picture.theirsOut.data);
    }
    state.SetItemsProcessed(state.iterations() * kWidth * kHeight);
}

}  // namespace

BENCHMARK(OursRotate)->Name("rotate_1080p")->UseRealTime();
BENCHMARK(TheirsRotate)->Name("cv_warp_affine_1080p")->UseRealTime();

int main(int argc, char** argv) {
    wib::bench::RegisterFigure("transform_rotate_1080p", "rotate_1080p", "cv_warp_affine_1080p",
                               1.0);
    return wib::bench::RunAndReport(argc, argv);
}
