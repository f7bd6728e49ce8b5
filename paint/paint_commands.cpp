// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/paint_commands.h"

#include "core/commands.h"
#include "core/workspace.h"
#include "paint/paint_session.h"

namespace wib {

void RegisterPaintCommands(CommandRegistry& registry, PaintSession& session) {
    const std::pair<const char*, BuiltinBrush> builtins[] = {
        {"brush.hard_round", BuiltinBrush::HardRound},
        {"brush.airbrush", BuiltinBrush::SoftAirbrush},
        {"brush.bristle", BuiltinBrush::Bristle},
        {"brush.chalk", BuiltinBrush::Chalk},
    };
    const char* shortcuts[] = {"B", "A", "Shift+B", "C"};
    for (std::size_t i = 0; i < std::size(builtins); ++i) {
        const BuiltinBrush brush = builtins[i].second;
        registry.add({builtins[i].first,
                      std::string("&") + BuiltinBrushName(brush),
                      "Brush",
                      shortcuts[i],
                      {},
                      [&session, brush](Workspace&, const ParamValues&) {
                          session.chooseBuiltinBrush(brush);
                          return true;
                      }});
    }
    registry.add(
        {"brush.from_selection",
         "Brush from &selection",
         "Brush",
         "Ctrl+Shift+B",
         {},
         [&session](Workspace&, const ParamValues&) { return session.makeBrushFromSelection(); }});
    registry.add({"brush.image",
                  "Use the &image brush",
                  "Brush",
                  "Ctrl+B",
                  {},
                  [&session](Workspace& workspace, const ParamValues&) {
                      if (workspace.brush.empty()) {
                          workspace.host.prompter.message(
                              "There is no image brush yet: make one from a selection first.");
                          return false;
                      }
                      session.setImageBrushActive(true);
                      session.optionsChanged();
                      return true;
                  }});

    const struct {
        const char* id;
        const char* caption;
        const char* shortcut;
        ToolId tool;
    } tools[] = {
        {"tool.brush", "&Brush", "P", ToolId::Brush},
        {"tool.colour_picker", "Colour &picker", "I", ToolId::ColourPicker},
        {"tool.clone_source", "&Clone source", "Shift+C", ToolId::CloneSource},
        {"tool.move", "&Move", "M", ToolId::Move},
        {"tool.transform", "&Transform", "Ctrl+T", ToolId::Transform},
        {"tool.crop", "C&rop", "K", ToolId::Crop},
        {"tool.text", "Te&xt", "T", ToolId::Text},
    };
    for (const auto& tool : tools) {
        registry.add({tool.id,
                      tool.caption,
                      "Tools",
                      tool.shortcut,
                      {},
                      [&session, id = tool.tool](Workspace&, const ParamValues&) {
                          session.tools().choose(id);
                          return true;
                      }});
    }

    ParamSpec paper;
    paper.name = "paper";
    paper.caption = "Paper";
    paper.type = ParamType::Choice;
    paper.fallback = 0LL;
    for (int kind = 0; kind < kPaperKindCount; ++kind) {
        paper.choices.emplace_back(PaperName(static_cast<PaperKind>(kind)));
    }
    registry.add({"brush.paper",
                  "&Paper...",
                  "Brush",
                  "",
                  {paper},
                  [&session](Workspace&, const ParamValues& values) {
                      session.choosePaper(static_cast<PaperKind>(values.integer("paper")));
                      session.state().options.paperTexture = true;
                      session.optionsChanged();
                      return true;
                  }});
}

}  // namespace wib
