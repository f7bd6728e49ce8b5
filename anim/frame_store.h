// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "anim/brush_keyframer.h"
#include "anim/frame_array.h"
#include "anim/frame_pins.h"
#include "anim/frame_rate.h"
#include "anim/frame_transfer.h"
#include "anim/playback.h"
#include "anim/timeline_records.h"
#include "core/canvas_size.h"
#include "core/frame_sequence.h"
#include "core/observer_list.h"
#include "core/plane.h"

namespace wib {

class PlaybackDisplay;
class Workspace;

inline constexpr const char* kAnimationExistsQuestion = "An animation already exists.  Free it?";
inline constexpr const char* kNoFramesMessage = "An animation needs at least one frame.";
inline constexpr const char* kInsertFrameMemoryMessage =
    "Not enough memory to insert a frame. Free some memory or delete frames first.";
inline constexpr const char* kNothingCopiedMessage = "No frames have been copied.";
inline constexpr const char* kLayersChangedMessage =
    "The layers have changed since the frames were copied.";
inline constexpr const char* kSizeChangedMessage =
    "The image size has changed, so the animation no longer fits it and was freed.";

enum class FrameColour { Red, Green, Blue };

// What a go-to may leave out.
struct GotoOptions {
    bool frameUpdate = true;  // the per-frame update before the load
    bool redraw = true;       // the canvas redraw after it
};

// The animation: a stack of full-size colour frames beside the main buffer.
// The current frame's pixels live in the main buffer while it is current and
// go back into the stack whenever another frame is loaded. The alpha plane is
// shared by all frames.
//
// With no animation (FrameCount() 0) every operation but creation does
// nothing. Every operation that changes the stack stops playback first.
class FrameStore : public CanvasResizeStore, public FrameSequence {
  public:
    // Attaches itself to the workspace's frames and resize stores. Canvas-size
    // changes park the frames in `cropFile` while they are resized.
    FrameStore(Workspace& workspace, std::filesystem::path cropFile);
    ~FrameStore() override;
    FrameStore(const FrameStore&) = delete;
    FrameStore& operator=(const FrameStore&) = delete;

    void attachDisplay(PlaybackDisplay* display) { display_ = display; }
    Workspace& workspace() { return workspace_; }

    std::int32_t FrameCount() const { return frameCount_; }
    std::int32_t CurrentFrame() const { return currentFrame_; }
    const FrameArray& AnimR() const { return animR_; }
    const FrameArray& AnimG() const { return animG_; }
    const FrameArray& AnimB() const { return animB_; }
    const FrameTransferRecord& transferRecord() const { return transfer_; }
    // "3 of 10", with " playing" appended while playback runs.
    std::string FrameCounterText() const;

    // Asks before replacing an animation (unless `askFirst` is false, as for
    // a plug-in that said so); refuses, with a message and nothing changed,
    // the held animation included, a count below 1 or a stack the memory
    // cannot hold. Frame 0 takes the current image, and so does every other
    // frame when copyImage > 0; otherwise they are black. Returns whether it
    // was made.
    bool CreateAnimation(int frames, int copyImage, bool askFirst = true);
    void FreeAnimation();
    // The current image into the frame of CurrentFrame.
    void StoreCurrentFrame();
    // The frame of CurrentFrame into the main buffer.
    void LoadCurrentFrame();
    // Copies the current image into every frame.
    void CopyImageToEveryFrame();

    // Stores the current image, then shows frame `index`, clamped to
    // 0..FrameCount(). Position FrameCount(), one past the last frame, shows
    // the last frame and stores back into it.
    void GotoFrame(int index, GotoOptions options = {});
    // Stores the current image, then doubles frame `index` and makes the copy,
    // index + 1, current. An index outside 0..FrameCount() - 1 is ignored.
    void InsertFrame(int index);
    // Stores the current image, then removes frame `index` (ignored outside
    // 0..FrameCount() - 1, or when only one frame is left); a current frame
    // beyond the new last one becomes the last.
    void DeleteFrame(int index);

    // Frame `index` into the main buffer, leaving CurrentFrame and the stack
    // as they are. Ignored outside 0..FrameCount() - 1.
    void AnimToMain(int index);
    // A copy of one colour of frame `index` in the document's shape; empty
    // with no animation. Throws SubscriptError outside 0..FrameCount() - 1.
    Plane framePlane(FrameColour colour, int index) const;
    // Copies `plane` into one colour of frame `index` byte for byte whatever
    // its shape, as much of it as the frame holds. Ignored outside
    // 0..FrameCount() - 1.
    void setFramePlane(FrameColour colour, const Plane& plane, int index);

    // Ticks of the frame rate frame `index` is shown for (1 outside the
    // frames), and its change, clamped to 1 or more.
    std::int32_t exposure(int index) const;
    const std::vector<std::int32_t>& exposures() const { return exposures_; }
    void setExposure(int index, int ticks);
    // Every frame's exposure at once, as a file gives them; ignored unless
    // there is one per frame.
    void setExposures(const std::vector<std::int32_t>& ticks);

    // Timeline edits of the frame range first..last (clamped, in either
    // order): each an undo step, run inside the edit bracket by the
    // commands. False, changing nothing, without an animation or memory.
    // The range moves so that its first frame lands at `to` (counted in the
    // frames without it).
    bool MoveFrames(int first, int last, int to);
    // Copies of the range go in just after it.
    bool DuplicateFrames(int first, int last);
    bool ReverseFrames(int first, int last);
    // A black frame (the upper layers clear) goes in after frame `index`
    // and is shown.
    bool InsertBlankFrame(int index);
    // Keeps copies of the range (not an edit), which PasteFrames inserts
    // before frame `at` (FrameCount(): after the last).
    bool CopyFrames(int first, int last);
    bool PasteFrames(int at);
    int copiedFrames() const { return static_cast<int>(clipboard_.size()); }

    // The play range and its loop and ping-pong modes.
    PlayRange& playRange() { return playRange_; }
    const PlayRange& playRange() const { return playRange_; }

    // The brush's keys over the frames, saved with the animation.
    BrushKeyframer& brushKeys() { return brushKeys_; }
    const BrushKeyframer& brushKeys() const { return brushKeys_; }

    // The frames' order and timing kept with each undo slot.
    void saveTimeline(int slot) override;
    void restoreTimeline(int slot) override;
    bool timelineMatches(int slot) const override;
    void showSavedFrame(int slot) override;

    // Playback and the frame-rate field, each an object of its own.
    Playback& playback() { return playback_; }
    FrameRateField& rateField() { return rateField_; }
    const FrameRateField& rateField() const { return rateField_; }
    std::int16_t PlayingFlag() const { return playback_.PlayingFlag(); }
    void PlayAnimation() { playback_.play(); }
    void StopAnimation() { playback_.stop(); }
    std::int32_t FrameDelayMs() const { return rateField_.delayMs(); }

    const std::string& name() const { return name_; }
    void setName(const std::string& name);

    // Tells the playback controls, and every listener to `changed`, that
    // something they show has changed.
    void showChanges();
    ObserverList<> changed;
    // Each frame's id, given when it was made and kept while it moves: views
    // that cache something per frame key it by this.
    const std::vector<std::uint32_t>& frameIds() const { return ids_; }
    // Counts the changes that may have touched the stored frames' pixels
    // (every `changed`, and every plane written into a frame): views that
    // keep something made from those pixels make it again when it moves.
    std::uint64_t pixelsRevision() const { return pixelsRevision_; }
    PlaybackDisplay* display() const { return display_; }

    // Resizes every frame as the canvas-size change resizes the image, by way
    // of the crop file, before the document planes are rebuilt.
    bool resizeBeforePlanes() const override { return true; }
    bool resizeForCanvas(Workspace& workspace, const CanvasChange& change) override;

    // The frames as the edit bracket's repeat over frames steps through them.
    int frameCount() const override { return frameCount_; }
    void gotoFrame(int index) override { GotoFrame(index); }
    LayerPixels storedColour(int index) const override;
    void setStoredColour(int index, const LayerPixels& pixels) override;
    bool replaceFrames(int count) override;

    // Stops playback, then shows frame `index` clamped to 0..FrameCount().
    void showFrame(int index, GotoOptions options = {});
    // Shows the playback controls.
    void showControls();

  private:
    // Where one frame of a rebuilt stack comes from: the old frame `index`,
    // or, when that is negative, `loose`.
    struct FrameSource {
        int index = -1;
        const LooseFrame* loose = nullptr;
        std::uint32_t id = 0;
        std::int32_t exposure = 1;
    };

    struct Fill {
        std::uint8_t r, g, b;
    };

    // False, doing nothing, with no animation; an animation that no longer
    // fits the document (a new image of another size) is freed with a message.
    bool ready();
    bool fitsDocument() const;
    // The stack frame that position CurrentFrame refers to.
    int storedIndex() const;
    FramePlanes imagePlanes();
    FramePlanes stackPlanes(int index);
    FrameArray& array(FrameColour colour);
    const FrameArray& array(FrameColour colour) const;
    void refreshTransferRecord();
    // The stack rebuilt in the order of `sources`, showing frame `current`;
    // frames left out that a kept record names wait in the history. False
    // with a message, nothing changed, when memory runs out.
    bool rebuildFrames(const std::vector<FrameSource>& sources, int current);
    FrameSource sourceOf(int index) const;
    LooseFrame looseCopy(int index);
    TimelineRecord timelineRecord() const;
    // Gives made frames fresh ids and exposures of 1.
    void resetTimeline();
    // After the frames' ids changed from `before`: the light table's pins
    // move with their frames.
    void followPins(const std::vector<std::uint32_t>& before);
    // first..last clamped into the frames and put in order.
    std::pair<int, int> clampRange(int first, int last) const;
    // Bytes the three arrays hold now.
    std::uint64_t heldBytes() const;
    void releaseFrames();
    // Throws std::bad_alloc; the caller releases what was made.
    void allocateFrames(int width, int height, int frames, const Fill& fill);
    // All three arrays to `frames` frames, or none when memory runs out.
    bool resizeFrames(int frames);
    // Writes every frame to the crop file; false when it could not.
    bool parkFrames() const;
    // Places every old frame, read back from the crop file or taken from
    // `old`, into the new arrays; false when the file could not be read.
    bool placeFrames(const CanvasChange& change, FrameArray* old);
    void abandonResize();
    // After a failed resize: the old frames back, from memory or the crop file.
    bool restoreFrames(FrameArray* old);
    bool unparkFrames(const CanvasChange& change);

    Workspace& workspace_;
    std::filesystem::path cropFile_;
    PlaybackDisplay* display_ = nullptr;
    FrameArray animR_, animG_, animB_;
    std::int32_t frameCount_ = 0;
    std::int32_t currentFrame_ = 0;
    int width_ = 0;  // document size the frames were made for
    int height_ = 0;
    FrameTransferRecord transfer_;
    FrameRateField rateField_;
    Playback playback_{*this};
    Subscription rateShown_;
    std::string name_;
    std::vector<std::uint32_t> ids_;
    std::vector<std::int32_t> exposures_;
    std::uint32_t nextId_ = 1;
    std::uint64_t pixelsRevision_ = 0;
    TimelineHistory history_;
    FramePins pins_;
    std::vector<LooseFrame> clipboard_;
    std::size_t clipboardLayers_ = 0;
    PlayRange playRange_;
    BrushKeyframer brushKeys_;
};

}  // namespace wib
