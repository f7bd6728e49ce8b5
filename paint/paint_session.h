// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "core/image_edit.h"
#include "core/packed_colour.h"
#include "core/plane.h"
#include "paint/paint_state.h"
#include "paint/paper.h"
#include "paint/tool_box.h"

namespace wib {

class Workspace;

// The red, green and blue planes of one animation frame.
using FrameColours = std::array<Plane, 3>;

// Painting as the menus, the panels, the canvas and plug-ins use it: the paint
// state beside the document, with the operations that change it.
class PaintSession {
  public:
    PaintSession(Workspace& workspace, std::filesystem::path tempDir);

    Workspace& workspace() { return workspace_; }
    const Workspace& workspace() const { return workspace_; }
    PaintState& state() { return state_; }
    const PaintState& state() const { return state_; }
    // The canvas's tools; the canvas forwards its pointer input to them.
    ToolBox& tools() { return tools_; }

    // Called after any change of the options (from a panel, a settings file or
    // a command), as each control's change handler would: the brush tip and
    // the paper grain are made anew and the panels, listening to the
    // workspace's paintOptionsChanged, follow the model.
    void optionsChanged();

    // The settings record in the temporary folder, returning its path; empty
    // when it cannot be written (the user is told).
    std::string writeBrushSettings();
    // Reads a settings record and applies it; a missing or short file is
    // reported and changes nothing.
    bool readBrushSettings(const std::string& path);
    BrushType brushType() const { return state_.brushType; }
    // 0 smooth, 1 dab, 2 image dab; anything else changes nothing.
    bool setBrushType(int type);

    void chooseBuiltinBrush(BuiltinBrush brush);
    // The image brush's shape takes the place of built-in brush `slot` (0..3)
    // for the rest of the session; false when there is no image brush.
    bool replaceBuiltinBrush(int slot);
    void choosePaper(PaperKind kind);
    PaperKind paper() const { return paperKind_; }
    // The paper's grain as made or set, before the paper panel's settings.
    const Plane& paperSource() const { return paperSource_; }
    // A grain of a plug-in's own (any size, 128 flat) takes the paper's place.
    void setPaperSource(Plane grain);
    // The selected part of the image (its bounding box, alpha as the shape)
    // becomes the image brush; false, with a message, when nothing is selected.
    bool makeBrushFromSelection();
    // Switches between the image brush and the built-in brush; either way the
    // animated brush stops.
    void setImageBrushActive(bool active);
    // The animated brush from `count` frames: the selected part of each (the
    // selection's bounding box, alpha as the shape), read through `frame`.
    // False, with a message, when there are no frames or nothing is selected.
    bool makeAnimatedBrush(int count, const std::function<FrameColours(int)>& frame);
    // Painting goes back to the image brush or the built-in brush.
    void stopAnimatedBrush();

    // Strokes as plug-ins make them: down and up place the pen, move paints.
    // The plug-in saves undo itself; a move marks the document modified. On a
    // layer whose pixels are locked moves paint nothing and down logs why.
    void brushDown(float x, float y);
    void brushMove(float x, float y);
    void brushUp(float x, float y);

    // The canvas's pointer: press opens the stroke's edit bracket (one undo
    // step) and lays the first dab, drag paints (through the symmetry
    // dispatcher), release ends the stroke and closes the bracket. A press on
    // a layer whose pixels are locked opens nothing and logs why; the drags
    // and the release of that stroke do nothing.
    void penPress(int button, float x, float y, double pressure, bool tablet);
    void penDrag(int button, float x, float y, double pressure, bool tablet);
    void penRelease(float x, float y);

    // The colours live in the workspace; setting them tells the panels.
    void setPrimaryColour(PackedColour colour);
    void setSecondaryColour(PackedColour colour);
    // The colour of an image pixel becomes the primary colour.
    void pickColour(int x, int y);
    // The point (canvas-window units) clone paints from and the pattern tiles
    // from. The next stroke sets the clone offset from it; with "Aligned
    // clone" on the offset then stays for later strokes, off it is measured
    // again from this point at every stroke.
    void setCloneSource(float x, float y);

  private:
    bool layerLocked() const;
    void step(int button, float x, float y);
    // The last stroke's curve starts anew at a press and grows with each move.
    void startCurve(float x, float y);
    void extendCurve(float x, float y);

    Workspace& workspace_;
    std::filesystem::path tempDir_;
    PaintState state_;
    // Open from a canvas press to its release.
    std::optional<ImageEdit> stroke_;
    PaperKind paperKind_ = PaperKind::Canvas;
    Plane paperSource_;
    ToolBox tools_{*this};
};

}  // namespace wib
