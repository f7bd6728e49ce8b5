#pragma once

#include <cstdint>
#include <string>

#include "core/plane.h"

namespace wib {

class FrameStore;

// The animation frames as plug-ins reach them, one function per automation
// method of the family, named after it. Booleans and flags follow the
// automation conventions; indices outside the frames are ignored, clamped or
// refused as each says, and never harm the document.

// copyImage 255: every frame starts as the current image.
void Wib_CreateAnim(FrameStore& store, int frames);
// flags bit 0: copy the image into every frame; bit 1: free an existing
// animation first, without asking.
void Wib_CreateAnimAdv(FrameStore& store, int frames, int flags);
void Wib_FreeAnim(FrameStore& store);
// Stops playback, then inserts with the index unchanged.
void Wib_InsertFrame(FrameStore& store, int index);
void Wib_DeleteFrame(FrameStore& store, int index);
// Stop playback, then go to the index clamped to 0..frame count.
void Wib_GotoFrame(FrameStore& store, int index);
// flags bit 0: no canvas redraw for this call; bit 1: no per-frame update.
void Wib_GotoFrameAdv(FrameStore& store, int index, int flags);
// Loads the current frame into the main buffer / stores the main buffer
// into the current frame.
void Wib_GetFrame(FrameStore& store);
void Wib_StoreFrame(FrameStore& store);
std::int32_t Wib_GetTotalFrames(const FrameStore& store);
std::int32_t Wib_GetCurrentFrame(const FrameStore& store);
// A copy of one colour of a frame in the document's shape; an empty plane
// (upper bounds -1) with no animation; SubscriptError for an index outside
// the frames.
Plane Wib_GetRFrame(const FrameStore& store, int index);
Plane Wib_GetGFrame(const FrameStore& store, int index);
Plane Wib_GetBFrame(const FrameStore& store, int index);
// Copies the plane into one colour of a frame byte for byte, its shape not
// compared with the document's, as much as the frame holds.
void Wib_SetRFrame(FrameStore& store, const Plane& plane, int index);
void Wib_SetGFrame(FrameStore& store, const Plane& plane, int index);
void Wib_SetBFrame(FrameStore& store, const Plane& plane, int index);
void Wib_AnimToMain(FrameStore& store, int index);
// Starts playback and returns at once; it runs from the event loop.
void Wib_PlayAnimation(FrameStore& store);
void Wib_StopAnimation(FrameStore& store);
// Writes the rate into the frame-rate field, which recomputes the delay.
void Wib_SetFrameRate(FrameStore& store, double rate);
std::int32_t Wib_GetFrameRate(const FrameStore& store);
// Brings the playback controls with the frame slider into view.
void Wib_ShowScrub(FrameStore& store);
void Anim_Set_Name(FrameStore& store, const std::string& name);
std::string Anim_Get_Name(const FrameStore& store);

}  // namespace wib
