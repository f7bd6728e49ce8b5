// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace wib {

class CommandRegistry;
class FrameStore;

// The Animation menu: anim.create, anim.free, anim.insert_frame,
// anim.delete_frame, anim.goto_frame, anim.first_frame, anim.previous_frame,
// anim.next_frame, anim.last_frame, anim.play, anim.stop, anim.frame_rate and
// anim.show_controls. `store` must outlive the registry's use. "Clear to
// secondary color" clears to the workspace's secondary colour unless the
// command is given another.
void RegisterAnimationCommands(CommandRegistry& registry, FrameStore& store);

// What the starting-contents list of the creation panel offers, in order.
enum class StartingContents : long long {
    CopyImage = 0,       // every frame starts as the current image
    FirstFrameOnly = 1,  // frame 0 is the image, the rest black
    ClearToSecondary = 2,
};

}  // namespace wib
