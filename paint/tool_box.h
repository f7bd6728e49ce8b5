// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

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

    Tool& tool(ToolId id);
    Tool& active();
    void choose(ToolId id);

    // The tool one press uses: Ctrl sets the clone source and Alt picks a
    // colour for that press only; otherwise the active tool.
    Tool& forPress(const ToolModifiers& modifiers);

  private:
    PaintSession& session_;
    std::unique_ptr<Tool> brush_, picker_, cloneSource_;
};

}  // namespace wib
