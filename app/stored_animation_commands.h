// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace wib {

class CommandRegistry;
class FrameStore;

// anim.save and anim.open: the stored animation file, ".wta", with every
// layer of every frame, the frame rate, exposures and the animation's name.
void RegisterStoredAnimationCommands(CommandRegistry& registry, FrameStore& store);

}  // namespace wib
