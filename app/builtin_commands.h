// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace wib {

class CommandRegistry;
class FrameStore;
class ImageFiles;
class PaintSession;
class PluginCommands;
class ProcessRunner;
struct WindowActions;

// What the built-in commands act on; each must outlive the registry's use.
struct BuiltinCommandTargets {
    PaintSession& paint;
    ImageFiles& files;
    FrameStore& frames;
    const WindowActions& window;
    PluginCommands& plugins;
    ProcessRunner& processes;  // ffmpeg for the animation's videos
};

// Registers every built-in command of the program, menu by menu. The program
// and the command reference (docs/commands.md) are both made from this.
void RegisterBuiltinCommands(CommandRegistry& registry, const BuiltinCommandTargets& targets);

}  // namespace wib
