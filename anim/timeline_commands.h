// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace wib {

class CommandRegistry;
class FrameStore;

// The timeline's commands: exposures, moving, duplicating, reversing,
// copying and pasting ranges of frames, inserting a blank frame, the play
// range, loop and ping-pong.
void RegisterTimelineCommands(CommandRegistry& registry, FrameStore& store);

}  // namespace wib
