// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace wib {

class CommandRegistry;
class ConverterBridge;
class FrameStore;
class ProcessRunner;

// The Animation menu's files: anim.export_sequence and anim.import_sequence
// (numbered image files), anim.export_video and anim.import_video (through
// ffmpeg). Each target must outlive the registry's use.
void RegisterAnimationFileCommands(CommandRegistry& registry, FrameStore& store,
                                   ConverterBridge& converter, ProcessRunner& processes);

}  // namespace wib
