// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QRect>
#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "core/onion_state.h"
#include "pixel/onion.h"

namespace wib {

// What a kept onion picture was made from besides the current picture: the
// frames laid over it, their tints and how far the stored frames' pixels
// had changed. When any of it changes, every pixel is laid over again.
struct OnionPictureKey {
    std::vector<OnionFrame> frames;
    PackedColour tintBefore;
    PackedColour tintAfter;
    std::uint64_t framesRevision = 0;

    friend bool operator==(const OnionPictureKey&, const OnionPictureKey&) = default;
};

// The onion skin over a flat picture as the canvas draws it, kept whole
// between redraws. The other frames do not change while the user paints on
// the current one, so while the key stays the same only the pixels of the
// current picture that changed since they were last laid over are laid over
// again; a copy of the current picture as last laid over tells which.
class OnionPicture {
  public:
    // The opaque picture `current`, `width` x `height`, with `layers` over
    // it, made from `key`: the whole picture, valid within `area` until the
    // next call. A large area is done in bands of rows on `threads` threads.
    const QImage& update(const OnionPlanes& current, int width, int height,
                         const std::vector<OnionLayer>& layers, const OnionPictureKey& key,
                         const QRect& area, int threads);

  private:
    // Lays the layers over every pixel again.
    void remake(const OnionPlanes& current, int width, int height,
                const std::vector<OnionLayer>& layers, int threads);
    // Lays the layers over the pixels of row `y` within left..right that
    // changed since they were last laid over.
    void refreshRow(const OnionPlanes& current, const std::vector<OnionLayer>& layers,
                    const OnionWords& out, int y, int left, int right);
    OnionWords words();

    QImage image_;
    std::array<std::vector<std::uint8_t>, 3> seen_;  // the current picture as last laid over
    std::optional<OnionPictureKey> key_;
};

}  // namespace wib
