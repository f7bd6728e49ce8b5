// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <stdexcept>

#include "fileio/animation_file.h"
#include "fileio/layered_file.h"
#include "fileio/layered_messages.h"
#include "tests/fileio/image_fixtures.h"
#include "tests/fileio/layered_fixtures.h"

namespace wib {
namespace {

using testing::PutU32At;
using testing::Reseal;
using testing::SectionAt;

StoredAnimation Sample() {
    StoredAnimation animation;
    animation.picture = testing::MakeLayeredPicture(5, 3, 2, 3);
    animation.picture.layers[1].mode = BlendMode::Screen;
    animation.picture.layers[1].opacity = 77;
    animation.picture.currentFrame = 2;
    animation.frameRate = 29.97;
    animation.exposures = {1, 3, 2};
    animation.name = "Walk cycle \xe2\x80\x94 take 2";
    animation.tracks = {
        {"size", KeyInterpolation::Linear, {{0, {4}}, {10.5f, {32}}}},
        {"colour", KeyInterpolation::CatmullRom, {{1, {255, 0, 0}}, {4, {0, 128, 255}}, {9, {}}}},
        {"angle", KeyInterpolation::CatmullRom, {}},
    };
    return animation;
}

std::vector<std::uint8_t> Encoded(const StoredAnimation& animation) {
    MemorySink sink;
    EXPECT_TRUE(EncodeAnimation(animation, sink));
    return sink.bytes;
}

void ExpectRefused(const std::vector<std::uint8_t>& bytes, const std::string& message) {
    const auto read = DecodeAnimation(bytes);
    EXPECT_FALSE(read.value.has_value());
    EXPECT_EQ(read.message, message);
}

TEST(AnimationFile, RoundTripsFramesTimingNameAndTracksThroughAFile) {
    const StoredAnimation animation = Sample();
    testing::TempFolder folder;
    const std::string path = folder.file("walk.wta");
    ASSERT_EQ(WriteAnimationFile(path, animation), std::nullopt);
    const auto read = ReadAnimationFile(path);
    ASSERT_TRUE(read) << read.message;
    testing::ExpectSamePicture(read.value->picture, animation.picture);
    EXPECT_EQ(read.value->frameRate, 29.97);
    EXPECT_EQ(read.value->exposures, animation.exposures);
    EXPECT_EQ(read.value->name, animation.name);
    EXPECT_EQ(read.value->tracks, animation.tracks);
}

TEST(AnimationFile, TheTwoFormatsDoNotOpenEachOther) {
    const auto animation = Encoded(Sample());
    EXPECT_EQ(std::string(animation.begin(), animation.begin() + 4), "WWTA");
    EXPECT_EQ(DecodeLayered(animation).message, kLayeredWrongType);
    MemorySink picture;
    ASSERT_TRUE(EncodeLayered(Sample().picture, picture));
    ExpectRefused(picture.bytes, kAnimationWrongType);
}

TEST(AnimationFile, DamagedTimingAndTracksAreRefused) {
    const auto bytes = Encoded(Sample());
    const std::size_t timing = SectionAt(bytes, "ANIM");
    const std::size_t nameSize = Sample().name.size();
    const std::size_t exposures = timing + 8 + 4 + nameSize;
    const std::size_t tracks = SectionAt(bytes, "KEYS");
    struct Patch {
        std::size_t at;
        std::uint32_t value;
    };
    // An exposure of 0 or beyond 32 bits signed, a count other than the
    // frames', a name longer than the section, a track count, key count and
    // value count the section cannot hold.
    for (const Patch patch :
         {Patch{exposures + 4, 0}, Patch{exposures + 8, 0x80000000u}, Patch{exposures, 2},
          Patch{exposures, 0xFFFFFFFFu}, Patch{timing + 8, 0xFFFFu}, Patch{tracks, 0x10000000u},
          Patch{tracks + 4 + 4 + 4 + 1, 0xFFFFFFFFu},
          Patch{tracks + 4 + 4 + 4 + 1 + 4 + 4, 0x40000000u}}) {
        SCOPED_TRACE(patch.at);
        auto patched = bytes;
        PutU32At(patched, patch.at, patch.value);
        Reseal(patched);
        ExpectRefused(patched, kContainerInconsistent);
    }
    auto interpolation = bytes;
    interpolation[tracks + 4 + 4 + 4] = 2;
    Reseal(interpolation);
    ExpectRefused(interpolation, kContainerInconsistent);
    for (const double rate : {0.0, -24.0, std::numeric_limits<double>::quiet_NaN()}) {
        auto patched = bytes;
        const auto bits = std::bit_cast<std::uint64_t>(rate);
        PutU32At(patched, timing, static_cast<std::uint32_t>(bits));
        PutU32At(patched, timing + 4, static_cast<std::uint32_t>(bits >> 32));
        Reseal(patched);
        ExpectRefused(patched, kContainerInconsistent);
    }
}

TEST(AnimationFile, TimingThatCannotBeStoredIsACallersFault) {
    StoredAnimation missing = Sample();
    missing.exposures.pop_back();
    StoredAnimation zero = Sample();
    zero.exposures[1] = 0;
    StoredAnimation still = Sample();
    still.frameRate = 0;
    for (const StoredAnimation* animation : {&missing, &zero, &still}) {
        MemorySink sink;
        EXPECT_THROW(EncodeAnimation(*animation, sink), std::invalid_argument);
    }
}

}  // namespace
}  // namespace wib
