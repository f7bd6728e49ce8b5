#include "anim/frame_methods.h"

#include <algorithm>

#include "anim/frame_rate.h"
#include "anim/frame_store.h"
#include "anim/playback_display.h"

namespace wib {

void Wib_CreateAnim(FrameStore& store, int frames) {
    store.CreateAnimation(frames, 255);
}

void Wib_CreateAnimAdv(FrameStore& store, int frames, int flags) {
    if ((flags & 2) != 0) {
        store.FreeAnimation();
    }
    store.CreateAnimation(frames, (flags & 1) != 0 ? 255 : 0);
}

void Wib_FreeAnim(FrameStore& store) {
    store.FreeAnimation();
}

void Wib_InsertFrame(FrameStore& store, int index) {
    store.InsertFrame(index);
}

void Wib_DeleteFrame(FrameStore& store, int index) {
    store.DeleteFrame(index);
}

void Wib_GotoFrame(FrameStore& store, int index) {
    Wib_GotoFrameAdv(store, index, 0);
}

void Wib_GotoFrameAdv(FrameStore& store, int index, int flags) {
    store.StopAnimation();
    GotoOptions options;
    options.redraw = (flags & 1) == 0;
    options.frameUpdate = (flags & 2) == 0;
    store.GotoFrame(std::clamp(index, 0, store.FrameCount()), options);
}

void Wib_GetFrame(FrameStore& store) {
    store.LoadCurrentFrame();
}

void Wib_StoreFrame(FrameStore& store) {
    store.StoreCurrentFrame();
}

std::int32_t Wib_GetTotalFrames(const FrameStore& store) {
    return store.FrameCount();
}

std::int32_t Wib_GetCurrentFrame(const FrameStore& store) {
    return store.CurrentFrame();
}

Plane Wib_GetRFrame(const FrameStore& store, int index) {
    return store.framePlane(FrameColour::Red, index);
}

Plane Wib_GetGFrame(const FrameStore& store, int index) {
    return store.framePlane(FrameColour::Green, index);
}

Plane Wib_GetBFrame(const FrameStore& store, int index) {
    return store.framePlane(FrameColour::Blue, index);
}

void Wib_SetRFrame(FrameStore& store, const Plane& plane, int index) {
    store.setFramePlane(FrameColour::Red, plane, index);
}

void Wib_SetGFrame(FrameStore& store, const Plane& plane, int index) {
    store.setFramePlane(FrameColour::Green, plane, index);
}

void Wib_SetBFrame(FrameStore& store, const Plane& plane, int index) {
    store.setFramePlane(FrameColour::Blue, plane, index);
}

void Wib_AnimToMain(FrameStore& store, int index) {
    store.AnimToMain(index);
}

void Wib_PlayAnimation(FrameStore& store) {
    store.PlayAnimation();
}

void Wib_StopAnimation(FrameStore& store) {
    store.StopAnimation();
}

void Wib_SetFrameRate(FrameStore& store, double rate) {
    store.setFrameRateField(FrameRateText(rate));
}

std::int32_t Wib_GetFrameRate(const FrameStore& store) {
    return FrameRateFieldValue(store.frameRateField());
}

void Wib_ShowScrub(FrameStore& store) {
    if (store.display() != nullptr) {
        store.display()->showControls();
    }
}

void Anim_Set_Name(FrameStore& store, const std::string& name) {
    store.setName(name);
}

std::string Anim_Get_Name(const FrameStore& store) {
    return store.name();
}

}  // namespace wib
