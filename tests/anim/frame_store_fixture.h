// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <unistd.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "anim/frame_store.h"
#include "anim/playback_display.h"
#include "tests/support/test_host.h"

namespace wib::testing {

// Records what the store shows; the playback loop is kept to be run by hand.
class RecordingDisplay : public PlaybackDisplay {
  public:
    explicit RecordingDisplay(const FrameStore& store) : store_(store) {}
    void animationChanged() override { counters.push_back(store_.FrameCounterText()); }
    void showControls() override { ++shown; }
    void startLoopSoon(std::function<void()> loop) override { loops.push_back(std::move(loop)); }

    std::vector<std::string> counters;
    int shown = 0;
    std::vector<std::function<void()>> loops;

  private:
    const FrameStore& store_;
};

// A small document with a frame store on the fake host. Images are painted a
// flat colour (v, v + 1, v + 2) so that each frame can be told by one value.
class FrameStoreTest : public ::testing::Test {
  protected:
    FrameStoreTest() {
        host.newDocument(8, 6);
        store.attachDisplay(&display);
    }

    void paint(std::uint8_t v) {
        ClearImage(host.workspace.document,
                   {v, static_cast<std::uint8_t>(v + 1), static_cast<std::uint8_t>(v + 2)});
    }

    static bool Uniform(const std::uint8_t* bytes, std::size_t count, std::uint8_t v) {
        for (std::size_t i = 0; i < count; ++i) {
            if (bytes[i] != v) {
                return false;
            }
        }
        return true;
    }

    // Whether stack frame `f` is painted v (black frames are 0, 0, 0).
    bool frameIs(int f, std::uint8_t v) const {
        const std::size_t bytes = store.AnimR().frameBytes();
        const std::uint8_t step = v == 0 ? 0 : 1;
        return Uniform(store.AnimR().frame(f), bytes, v) &&
               Uniform(store.AnimG().frame(f), bytes, static_cast<std::uint8_t>(v + step)) &&
               Uniform(store.AnimB().frame(f), bytes, static_cast<std::uint8_t>(v + 2 * step));
    }

    bool imageIs(std::uint8_t v) const {
        const Document& doc = host.workspace.document;
        return Uniform(doc.RBuffer.data(), doc.RBuffer.byteCount(), v) &&
               Uniform(doc.GBuffer.data(), doc.GBuffer.byteCount(),
                       static_cast<std::uint8_t>(v + 1)) &&
               Uniform(doc.BBuffer.data(), doc.BBuffer.byteCount(),
                       static_cast<std::uint8_t>(v + 2));
    }

    // An animation of `frames` frames painted 10, 20, 30, ... with frame 0 current.
    void makeNumberedFrames(int frames) {
        paint(10);
        ASSERT_TRUE(store.CreateAnimation(frames, 0));
        for (int f = 1; f < frames; ++f) {
            store.GotoFrame(f);
            paint(static_cast<std::uint8_t>(10 * (f + 1)));
        }
        store.GotoFrame(0);
    }

    static std::filesystem::path CropFile() {
        // One per test process: tests run side by side.
        return std::filesystem::temp_directory_path() /
               ("wib-anim-test-CropAnim-" + std::to_string(::getpid()) + ".tmp");
    }

    TestHost host;
    FrameStore store{host.workspace, CropFile()};
    RecordingDisplay display{store};
};

}  // namespace wib::testing
