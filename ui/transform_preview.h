// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QRect>

#include "core/document.h"
#include "filters/transform_edit.h"

namespace wib {

class Form1;
class Workspace;

// Shows a transform of the selected pixels on the canvas without touching the
// document: the transform runs on a copy of the current layer and the part it
// changed is drawn over the picture, with the new outline.
class TransformPreview {
  public:
    TransformPreview(Workspace& workspace, Form1& canvas)
        : workspace_(workspace), canvas_(canvas) {}

    // The box the transform starts from: the selection's, or the whole image;
    // empty when a selection is in force but selects nothing.
    AlphaBounds box() const;
    void show(const TransformSpec& spec);
    void clear();

  private:
    Workspace& workspace_;
    Form1& canvas_;
};

}  // namespace wib
