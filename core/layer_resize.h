// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>

#include "core/canvas_size.h"

namespace wib {

class Workspace;

// Follows a canvas-size change with every layer of every frame: the old
// pixels keep their place at the anchor's offset, new area of the bottom
// layer takes the fill colour and of every other layer no coverage. The old
// cells are parked in `cropFile` while the new ones are made, so that both
// sizes are never held at once; without the file they stay in memory.
class LayerCanvasResize : public CanvasResizeStore {
  public:
    // Attaches itself to the workspace's resize stores.
    LayerCanvasResize(Workspace& workspace, std::filesystem::path cropFile);
    ~LayerCanvasResize() override;
    LayerCanvasResize(const LayerCanvasResize&) = delete;
    LayerCanvasResize& operator=(const LayerCanvasResize&) = delete;

    bool resizeBeforePlanes() const override { return false; }
    bool resizeForCanvas(Workspace& workspace, const CanvasChange& change) override;

  private:
    Workspace& workspace_;
    std::filesystem::path cropFile_;
};

}  // namespace wib
