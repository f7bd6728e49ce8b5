// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/onion_picture.h"

#include <algorithm>
#include <cstring>

#include "filters/parallel_rows.h"

namespace wib {

namespace {

// Smaller areas (a stroke's few dabs) are not worth starting threads for.
constexpr long long kBandPixels = 1 << 16;

int BandsFor(const QRect& area, int threads) {
    return static_cast<long long>(area.width()) * area.height() >= kBandPixels ? threads : 1;
}

}  // namespace

OnionWords OnionPicture::words() {
    return {reinterpret_cast<std::uint32_t*>(image_.bits()),
            static_cast<std::size_t>(image_.bytesPerLine()) / sizeof(std::uint32_t)};
}

void OnionPicture::remake(const OnionPlanes& current, int width, int height,
                          const std::vector<OnionLayer>& layers, int threads) {
    if (image_.size() != QSize(width, height) || image_.format() != QImage::Format_RGB32) {
        image_ = QImage(width, height, QImage::Format_RGB32);
    }
    const std::size_t bytes = current.stride * static_cast<std::size_t>(height);
    const std::uint8_t* planes[3] = {current.r, current.g, current.b};
    for (int c = 0; c < 3; ++c) {
        seen_[c].assign(planes[c], planes[c] + bytes);
    }
    const OnionWords out = words();
    ParallelRows(BandsFor({0, 0, width, height}, threads), height, [&](int first, int end) {
        BlendOnionOpaque(current, layers, out, 0, first, width - 1, end - 1);
    });
}

void OnionPicture::refreshRow(const OnionPlanes& current, const std::vector<OnionLayer>& layers,
                              const OnionWords& out, int y, int left, int right) {
    const std::size_t row = static_cast<std::size_t>(y) * current.stride;
    const std::uint8_t* const now[3] = {current.r + row, current.g + row, current.b + row};
    int first = right + 1;
    int last = left - 1;
    for (int c = 0; c < 3; ++c) {
        const std::uint8_t* seen = seen_[c].data() + row;
        const auto count = static_cast<std::size_t>(right - left + 1);
        if (std::memcmp(now[c] + left, seen + left, count) == 0) {
            continue;
        }
        int x = left;
        while (now[c][x] == seen[x]) {
            ++x;
        }
        first = std::min(first, x);
        x = right;
        while (now[c][x] == seen[x]) {
            --x;
        }
        last = std::max(last, x);
    }
    if (first > last) {
        return;
    }
    BlendOnionOpaque(current, layers, out, first, y, last, y);
    for (int c = 0; c < 3; ++c) {
        std::copy(now[c] + first, now[c] + last + 1, seen_[c].data() + row + first);
    }
}

const QImage& OnionPicture::update(const OnionPlanes& current, int width, int height,
                                   const std::vector<OnionLayer>& layers,
                                   const OnionPictureKey& key, const QRect& area, int threads) {
    if (key_ != key || image_.size() != QSize(width, height) ||
        seen_[0].size() != current.stride * static_cast<std::size_t>(height)) {
        key_ = key;
        remake(current, width, height, layers, threads);
        return image_;
    }
    const QRect clipped = area.intersected({0, 0, width, height});
    if (clipped.isEmpty()) {
        return image_;
    }
    // Taken once: the threads must not each ask the image for its pixels.
    const OnionWords out = words();
    ParallelRows(BandsFor(clipped, threads), clipped.height(), [&](int first, int end) {
        for (int y = clipped.top() + first; y < clipped.top() + end; ++y) {
            refreshRow(current, layers, out, y, clipped.left(), clipped.right());
        }
    });
    return image_;
}

}  // namespace wib
