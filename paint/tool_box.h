// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <map>
#include <memory>
#include <string>

#include "paint/tool.h"
#include "paint/tool_context.h"

namespace wib {

class PaintSession;

// Owns one object of each tool; the paint state names the active one.
class ToolBox {
  public:
    explicit ToolBox(PaintSession& session);
    ~ToolBox();
    ToolBox(const ToolBox&) = delete;
    ToolBox& operator=(const ToolBox&) = delete;

    // Tools that need the window (a live preview, a text editor on the
    // canvas) are installed by it; until then their ids mean the brush.
    void install(ToolId id, std::unique_ptr<Tool> tool);

    Tool& tool(ToolId id);
    Tool& active();
    // Ends what the active tool had begun (an open polygon), then changes tool.
    void choose(ToolId id);

    // The tool one press uses: with a painting tool active, Ctrl sets the
    // clone source and Alt picks a colour for that press only; otherwise the
    // active tool (selection tools read Shift and Alt themselves).
    Tool& forPress(const ToolModifiers& modifiers);

    // Tools that change the picture run the command that does the same, so
    // that tools, menus and scripts share one path. Without a runner (no
    // command table) they change nothing.
    void setCommandRunner(ToolCommandRunner run) { run_ = std::move(run); }
    bool runCommand(const std::string& id, const std::map<std::string, ParamValue>& values) const;

  private:
    PaintSession& session_;
    std::array<std::unique_ptr<Tool>, kToolCount> tools_;
    ToolCommandRunner run_;
};

}  // namespace wib
