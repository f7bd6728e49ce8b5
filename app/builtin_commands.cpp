// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/builtin_commands.h"

#include "anim/animation_commands.h"
#include "anim/onion_commands.h"
#include "anim/timeline_commands.h"
#include "app/animated_brush_commands.h"
#include "app/animation_file_commands.h"
#include "app/brush_file_commands.h"
#include "app/brush_keyframes.h"
#include "app/stored_animation_commands.h"
#include "core/cut_and_crop.h"
#include "core/document_commands.h"
#include "core/layer_commands.h"
#include "fileio/file_commands.h"
#include "fileio/image_files.h"
#include "filters/fill_commands.h"
#include "filters/filter_commands.h"
#include "filters/selection_commands.h"
#include "filters/transform_commands.h"
#include "paint/paint_commands.h"
#include "paint/paint_session.h"
#include "paint/shape_commands.h"
#include "plugins/plugin_commands.h"
#include "ui/clipboard_commands.h"
#include "ui/text_command.h"
#include "ui/view_commands.h"
#include "ui/window_commands.h"

namespace wib {

void RegisterBuiltinCommands(CommandRegistry& registry, const BuiltinCommandTargets& targets) {
    PaintSession& paint = targets.paint;
    RegisterDocumentCommands(registry);
    RegisterLayerCommands(registry);
    RegisterFileCommands(registry, targets.files);
    RegisterClipboardCommands(registry);
    RegisterCropCommands(registry);
    RegisterFillCommands(registry);
    RegisterSelectionCommands(registry);
    RegisterTransformCommands(registry);
    RegisterPaintCommands(registry, paint);
    RegisterShapeCommands(registry, paint);
    RegisterTextCommands(registry);
    RegisterBrushFileCommands(registry, paint);
    RegisterAnimationCommands(registry, targets.frames);
    RegisterAnimationFileCommands(registry, targets.frames, targets.files.converter(),
                                  targets.processes);
    RegisterStoredAnimationCommands(registry, targets.frames);
    RegisterOnionCommands(registry, targets.frames);
    RegisterTimelineCommands(registry, targets.frames);
    RegisterAnimatedBrushCommands(registry, paint, targets.frames);
    RegisterBrushKeyCommands(registry, paint, targets.frames);
    RegisterFilterCommands(registry);
    RegisterWindowCommands(registry, targets.window);
    RegisterViewCommands(registry);
    targets.plugins.registerCommands();
}

}  // namespace wib
