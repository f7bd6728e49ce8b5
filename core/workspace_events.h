// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/observer_list.h"

namespace wib {

// What views and panels listen to. Each list takes any number of listeners.
struct WorkspaceEvents {
    // The document's modified state changed (the title shows it).
    ObserverList<> modifiedChanged;
    // The brush options, the brush image or the colours changed; panels show
    // the model again.
    ObserverList<> paintOptionsChanged;
    // During a frame go-to, once the current frame holds the new index and
    // before its pixels move; frame-dependent settings follow it here and
    // must not touch the planes.
    ObserverList<int> beforeFrameLoad;
    // A stroke is about to start (a canvas press or a plug-in's pen down),
    // before the stroke reads the brush options: settings that depend on the
    // frame are put in place here.
    ObserverList<> strokeStarting;
    // An edit of the image ended having changed it (a stroke, a filter, a
    // timeline edit): views of the frames bring the current one up to date.
    ObserverList<> imageEdited;
    // The document was renamed or saved under another name.
    ObserverList<> fileNameChanged;
    // The layer list, a layer's properties or the current layer changed.
    ObserverList<> layersChanged;
    // The selection's marching ants start again from their first position.
    ObserverList<> marqueeRestarted;
    // The onion skin or light table settings changed.
    ObserverList<> onionChanged;
};

}  // namespace wib
