// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/animation_file.h"

#include <cmath>
#include <stdexcept>

#include "core/byte_fields.h"
#include "fileio/container_file.h"
#include "fileio/layered_messages.h"
#include "fileio/layered_sections.h"

namespace wib {

namespace {

// The least sizes of a track (empty name, interpolation, no keys) and of a key
// (frame, no values).
constexpr std::size_t kShortestTrack = 4 + 1 + 4;
constexpr std::size_t kShortestKey = 4 + 4;
constexpr std::size_t kValueSize = 4;

void CheckTiming(const StoredAnimation& animation) {
    bool sound = animation.exposures.size() == animation.picture.frames.size() &&
                 std::isfinite(animation.frameRate) && animation.frameRate > 0;
    for (const std::int32_t exposure : animation.exposures) {
        sound = sound && exposure >= 1;
    }
    if (!sound) {
        throw std::invalid_argument("stored animation without a rate or an exposure per frame");
    }
}

std::vector<std::uint8_t> Timing(const StoredAnimation& animation) {
    std::vector<std::uint8_t> out;
    PutF64(out, animation.frameRate);
    PutText(out, animation.name);
    PutU32(out, static_cast<std::uint32_t>(animation.exposures.size()));
    for (const std::int32_t exposure : animation.exposures) {
        PutU32(out, static_cast<std::uint32_t>(exposure));
    }
    return out;
}

std::vector<std::uint8_t> Tracks(const StoredAnimation& animation) {
    std::vector<std::uint8_t> out;
    PutU32(out, static_cast<std::uint32_t>(animation.tracks.size()));
    for (const KeyframeTrack& track : animation.tracks) {
        PutText(out, track.name);
        PutU8(out, static_cast<std::uint8_t>(track.interpolation));
        PutU32(out, static_cast<std::uint32_t>(track.keys.size()));
        for (const TrackKey& key : track.keys) {
            PutF32(out, key.frame);
            PutU32(out, static_cast<std::uint32_t>(key.values.size()));
            for (const float value : key.values) {
                PutF32(out, value);
            }
        }
    }
    return out;
}

void AddAnimationSections(ContainerWriter& container, const StoredAnimation& animation) {
    AddPictureSections(container, animation.picture);
    container.section(kAnimationSection, Timing(animation));
    container.section(kKeysSection, Tracks(animation));
}

bool ReadTiming(std::span<const std::uint8_t> bytes, StoredAnimation& animation) {
    ByteFieldReader reader(bytes);
    std::uint32_t count = 0;
    if (!reader.f64(animation.frameRate) || !std::isfinite(animation.frameRate) ||
        animation.frameRate <= 0 || !reader.text(animation.name) || !reader.u32(count) ||
        count != animation.picture.frames.size()) {
        return false;
    }
    animation.exposures.resize(count);
    for (std::int32_t& exposure : animation.exposures) {
        std::uint32_t ticks = 0;
        if (!reader.u32(ticks) || ticks < 1 || ticks > INT32_MAX) {
            return false;
        }
        exposure = static_cast<std::int32_t>(ticks);
    }
    return reader.left() == 0;
}

bool ReadKey(ByteFieldReader& reader, TrackKey& key) {
    std::uint32_t count = 0;
    if (!reader.f32(key.frame) || !std::isfinite(key.frame) || !reader.u32(count) ||
        count > reader.left() / kValueSize) {
        return false;
    }
    key.values.resize(count);
    for (float& value : key.values) {
        reader.f32(value);
    }
    return true;
}

bool ReadTracks(std::span<const std::uint8_t> bytes, StoredAnimation& animation) {
    ByteFieldReader reader(bytes);
    std::uint32_t count = 0;
    if (!reader.u32(count) || count > reader.left() / kShortestTrack) {
        return false;
    }
    animation.tracks.resize(count);
    for (KeyframeTrack& track : animation.tracks) {
        std::uint8_t interpolation = 0;
        std::uint32_t keys = 0;
        if (!reader.text(track.name) || !reader.u8(interpolation) ||
            interpolation > static_cast<std::uint8_t>(KeyInterpolation::CatmullRom) ||
            !reader.u32(keys) || keys > reader.left() / kShortestKey) {
            return false;
        }
        track.interpolation = static_cast<KeyInterpolation>(interpolation);
        track.keys.resize(keys);
        for (TrackKey& key : track.keys) {
            if (!ReadKey(reader, key)) {
                return false;
            }
        }
    }
    return reader.left() == 0;
}

ReadResult<StoredAnimation> ReadAnimationSections(const Container& container) {
    using Result = ReadResult<StoredAnimation>;
    ReadResult<LayeredPicture> picture = ReadPictureSections(container);
    if (!picture) {
        return Result::Failed(picture.message);
    }
    StoredAnimation animation;
    animation.picture = std::move(*picture.value);
    const auto timing = container.section(kAnimationSection);
    const auto tracks = container.section(kKeysSection);
    if (!timing || !tracks || !ReadTiming(*timing, animation) || !ReadTracks(*tracks, animation)) {
        return Result::Failed(kContainerInconsistent);
    }
    return {std::move(animation), {}};
}

}  // namespace

std::optional<std::string> WriteAnimationFile(const std::string& path,
                                              const StoredAnimation& animation) {
    CheckTiming(animation);
    return WriteContainerFile(
        path, kAnimationMagic, animation.picture.width, animation.picture.height,
        [&](ContainerWriter& container) { AddAnimationSections(container, animation); });
}

bool EncodeAnimation(const StoredAnimation& animation, ByteSink& sink) {
    CheckTiming(animation);
    ContainerWriter container(sink, kAnimationMagic, animation.picture.width,
                              animation.picture.height);
    AddAnimationSections(container, animation);
    return container.finish();
}

ReadResult<StoredAnimation> DecodeAnimation(std::span<const std::uint8_t> bytes) {
    return DecodeContainer<StoredAnimation>(bytes, kAnimationMagic, kAnimationWrongType,
                                            ReadAnimationSections);
}

ReadResult<StoredAnimation> ReadAnimationFile(const std::string& path) {
    return ReadContainerFile<StoredAnimation>(path, DecodeAnimation);
}

}  // namespace wib
