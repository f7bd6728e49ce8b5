// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <memory>

#include "paint/tool.h"

namespace wib {

class PaintSession;

// Owns one object of each tool; the paint state names the active one.
class ToolBox {
  public:
    explicit ToolBox(PaintSession& session);
    ~ToolBox();
    ToolBox(const ToolBox&) = delete;
    ToolBox& operator=(const ToolBox&) = delete;

    // Tools made outside the paint library (they need the interface) are
    // installed by the window; an id with no tool installed means the brush.
    void install(ToolId id, std::unique_ptr<Tool> tool);

    Tool& tool(ToolId id);
    Tool& active();
    void choose(ToolId id);

    // The tool one press uses: Ctrl sets the clone source and Alt picks a
    // colour for that press only; otherwise the active tool.
    Tool& forPress(const ToolModifiers& modifiers);

  private:
    PaintSession& session_;
    std::unique_ptr<Tool> brush_, picker_, cloneSource_;
    std::map<ToolId, std::unique_ptr<Tool>> installed_;
};

}  // namespace wib
