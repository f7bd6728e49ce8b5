// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/document_commands.h"

#include "core/canvas_size.h"
#include "core/commands.h"
#include "core/discard_question.h"
#include "core/document_build.h"
#include "core/document_limits.h"
#include "core/undo.h"
#include "core/workspace.h"

namespace wib {

namespace {

constexpr long long kDefaultWidth = 640;
constexpr long long kDefaultHeight = 480;

ParamSpec SizeParam(const char* name, const char* caption,
                    std::function<ParamValue(const Workspace&)> current) {
    return IntegerParam(name, caption, 1, kMaxDocumentSide, 1, std::move(current));
}

// The size a new document starts at: 640 x 480 unless the preferences
// "Settings/NewWidth" and "Settings/NewHeight" name another.
ParamValue PreferredSize(const Workspace& workspace, const char* key, long long fallback) {
    const long long value = workspace.host.preferences.integer("Settings", key, fallback);
    return value >= 1 && value <= kMaxDocumentSide ? value : fallback;
}

}  // namespace

void RegisterDocumentCommands(CommandRegistry& registry) {
    registry.add(
        {"file.new",
         "&New...",
         "File",
         "Ctrl+N",
         {SizeParam("width", "Width",
                    [](const Workspace& w) { return PreferredSize(w, "NewWidth", kDefaultWidth); }),
          SizeParam(
              "height", "Height",
              [](const Workspace& w) { return PreferredSize(w, "NewHeight", kDefaultHeight); })},
         [&registry](Workspace& workspace, const ParamValues& values) {
             return MayDiscardChanges(workspace, registry) &&
                    NewDocument(workspace, static_cast<int>(values.integer("width")),
                                static_cast<int>(values.integer("height")));
         }});

    const ParamSpec anchor =
        ChoiceParam("anchor", "Anchor",
                    {"Top left", "Top centre", "Top right", "Middle left", "Centre", "Middle right",
                     "Bottom left", "Bottom centre", "Bottom right"},
                    4);
    const ParamSpec fill = ColourParam("fill", "Fill colour", 0xFFFFFF);
    registry.add(
        {"image.canvas_size",
         "&Canvas size...",
         "Image",
         "Ctrl+Shift+C",
         {SizeParam("width", "Width",
                    [](const Workspace& w) { return ParamValue{w.document.width * 1LL}; }),
          SizeParam("height", "Height",
                    [](const Workspace& w) { return ParamValue{w.document.height * 1LL}; }),
          anchor, fill},
         [](Workspace& workspace, const ParamValues& values) {
             const auto fill = PackedColour::fromPacked(values.integer("fill"));
             return ChangeCanvasSize(workspace, static_cast<int>(values.integer("width")),
                                     static_cast<int>(values.integer("height")),
                                     fill.value_or(PackedColour{255, 255, 255}),
                                     static_cast<int>(values.integer("anchor")));
         }});

    registry.add(
        {"edit.undo", "&Undo", "Edit", "Ctrl+Z", {}, [](Workspace& workspace, const ParamValues&) {
             return EditUndo(workspace);
         }});
    registry.add(
        {"edit.redo", "&Redo", "Edit", "Ctrl+Y", {}, [](Workspace& workspace, const ParamValues&) {
             return EditRedo(workspace);
         }});
}

}  // namespace wib
